#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vorc::sim {

/// Replaces comments by blanks, in place, so that lines and columns stay. Texts in quotes are left alone.
void BlankComments(std::vector<char>* text);

/// The number in a line's prefix such as /*000012:*/, 0 if there is none.
uint32_t SourceLineOf(std::string_view line);

struct Token {
  enum Kind { kWord, kPunctuation, kText, kEndOfLine, kEndOfFile };
  Kind kind = kEndOfFile;
  std::string_view text;  // of a text without its quotes, escapes as they stand
  uint32_t line = 0;

  bool Is(char punctuation) const { return kind == kPunctuation && text[0] == punctuation; }
  bool IsWord(std::string_view word) const;  // in either case
};

/// Cuts text without comments into tokens. Everything that isn't a blank, a quote or one of , ; = { } [ ]
/// belongs to a word.
class Scanner {
 public:
  explicit Scanner(std::string_view text) : text_(text) {}

  Token Next();
  const Token& Peek();
  /// What is left of the line, without blanks around it; the next token is the end of the line.
  std::string_view RestOfLine();

 private:
  Token Scan();

  std::string_view text_;
  size_t position_ = 0;
  uint32_t line_ = 1;
  Token peeked_;
  bool has_peeked_ = false;
};

std::string_view Trim(std::string_view text);

/// A whole number: decimal or 0x, with a sign, with letters L and U behind it. A number with a point gives
/// its IEEE 754 bits in `width` bytes, 4 or 8. False if the text is no number that fits 64 bits.
bool ParseNumber(std::string_view text, int width, int64_t* value);

/// The bytes of a text with the escapes \t \n \r \" \\ \0.
std::string Unescape(std::string_view text);

}  // namespace vorc::sim
