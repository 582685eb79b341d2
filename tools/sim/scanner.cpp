#include "sim/scanner.h"

#include <bit>
#include <charconv>
#include <cstring>

#include "base/ascii.h"

namespace vorc::sim {
namespace {

bool IsBlank(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\f' || c == '\v';
}

bool IsPunctuation(char c) {
  return c != 0 && std::strchr(",;={}[]", c) != nullptr;
}

// Where a comment that begins at `start` ends; `start` itself if none begins there.
size_t EndOfComment(const std::vector<char>& text, size_t start) {
  if (start + 1 >= text.size() || text[start] != '/') return start;
  size_t end = start + 2;
  if (text[start + 1] == '/') {
    while (end < text.size() && text[end] != '\n') ++end;
    return end;
  }
  if (text[start + 1] != '*') return start;
  while (end + 1 < text.size() && !(text[end] == '*' && text[end + 1] == '/')) ++end;
  return end + 1 < text.size() ? end + 2 : text.size();
}

bool ParseReal(std::string_view text, int width, int64_t* value) {
  double real = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), real);
  const std::string_view rest = text.substr(static_cast<size_t>(end - text.data()));
  if (error != std::errc() || !(rest.empty() || rest == "f" || rest == "F")) return false;
  *value = width == 4 ? static_cast<int64_t>(std::bit_cast<int32_t>(static_cast<float>(real)))
                      : std::bit_cast<int64_t>(real);
  return true;
}

}  // namespace

std::string_view Trim(std::string_view text) {
  while (!text.empty() && (IsBlank(text.front()) || text.front() == '\n')) text.remove_prefix(1);
  while (!text.empty() && (IsBlank(text.back()) || text.back() == '\n')) text.remove_suffix(1);
  return text;
}

void BlankComments(std::vector<char>* text) {
  bool quoted = false;
  for (size_t i = 0; i < text->size(); ++i) {
    const size_t end = quoted ? i : EndOfComment(*text, i);
    if (end > i) {
      for (; i < end; ++i) {
        if ((*text)[i] != '\n') (*text)[i] = ' ';
      }
      --i;
      continue;
    }
    const char c = (*text)[i];
    if (c == '\n') quoted = false;
    if (c == '"') quoted = !quoted;
    if (c == '\\' && quoted && i + 1 < text->size() && (*text)[i + 1] != '\n') ++i;
  }
}

uint32_t SourceLineOf(std::string_view line) {
  line = Trim(line);
  if (!line.starts_with("/*")) return 0;
  uint32_t number = 0;
  const auto [end, error] = std::from_chars(line.data() + 2, line.data() + line.size(), number);
  return error == std::errc() && end != line.data() + line.size() && *end == ':' ? number : 0;
}

bool Token::IsWord(std::string_view word) const {
  return kind == kWord && EqualIgnoringCase(text, word);
}

const Token& Scanner::Peek() {
  if (!has_peeked_) peeked_ = Scan();
  has_peeked_ = true;
  return peeked_;
}

Token Scanner::Next() {
  const Token token = Peek();
  has_peeked_ = false;
  return token;
}

Token Scanner::Scan() {
  while (position_ < text_.size() && IsBlank(text_[position_])) ++position_;
  if (position_ == text_.size()) return {Token::kEndOfFile, {}, line_};
  const size_t start = position_;
  const char c = text_[position_++];
  if (c == '\n') return {Token::kEndOfLine, {}, line_++};
  if (IsPunctuation(c)) return {Token::kPunctuation, text_.substr(start, 1), line_};
  if (c == '"') {
    while (position_ < text_.size() && text_[position_] != '"' && text_[position_] != '\n') {
      const bool escape =
          text_[position_] == '\\' && position_ + 1 < text_.size() && text_[position_ + 1] != '\n';
      position_ += escape ? 2 : 1;
    }
    const std::string_view inside = text_.substr(start + 1, position_ - start - 1);
    if (position_ < text_.size() && text_[position_] == '"') ++position_;
    return {Token::kText, inside, line_};
  }
  const auto in_word = [](char next) {
    return !IsBlank(next) && !IsPunctuation(next) && next != '\n' && next != '"';
  };
  while (position_ < text_.size() && in_word(text_[position_])) ++position_;
  return {Token::kWord, text_.substr(start, position_ - start), line_};
}

std::string_view Scanner::RestOfLine() {
  const size_t start = has_peeked_ && peeked_.kind != Token::kEndOfLine && peeked_.kind != Token::kEndOfFile
                           ? static_cast<size_t>(peeked_.text.data() - text_.data())
                           : position_;
  if (has_peeked_ && (peeked_.kind == Token::kEndOfLine || peeked_.kind == Token::kEndOfFile)) return {};
  has_peeked_ = false;
  while (position_ < text_.size() && text_[position_] != '\n') ++position_;
  return Trim(text_.substr(start, position_ - start));
}

bool ParseNumber(std::string_view text, int width, int64_t* value) {
  if (text.find('.') != std::string_view::npos) return ParseReal(text, width, value);
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  const bool hexadecimal = text.starts_with("0x") || text.starts_with("0X");
  if (hexadecimal) text.remove_prefix(2);
  uint64_t magnitude = 0;
  const auto [end, error] =
      std::from_chars(text.data(), text.data() + text.size(), magnitude, hexadecimal ? 16 : 10);
  if (error != std::errc()) return false;
  for (const char* c = end; c != text.data() + text.size(); ++c) {
    if (*c != 'L' && *c != 'l' && *c != 'U' && *c != 'u') return false;
  }
  *value = static_cast<int64_t>(negative ? 0 - magnitude : magnitude);
  return true;
}

std::string Unescape(std::string_view text) {
  std::string bytes;
  for (size_t i = 0; i < text.size(); ++i) {
    char c = text[i];
    if (c == '\\' && i + 1 < text.size()) {
      c = text[++i];
      if (c == 't')
        c = '\t';
      else if (c == 'n')
        c = '\n';
      else if (c == 'r')
        c = '\r';
      else if (c == '0')
        c = '\0';
    }
    bytes += c;
  }
  return bytes;
}

}  // namespace vorc::sim
