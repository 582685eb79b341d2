#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string_view>

namespace vorc {

/// Token numbers. Expression nodes use the same numbers for their kinds.
enum class Tok : uint8_t {
#define TOKEN(name, text) name,
#include "program/tokens.def"
};

inline constexpr size_t kTokenCount = 0
#define TOKEN(name, text) +1
#include "program/tokens.def"
    ;
static_assert(kTokenCount == 168, "symbol files hold these numbers");

/// The text of every token, by number.
extern const std::array<std::string_view, kTokenCount> TokenString;

inline std::string_view TokenName(Tok token) {
  return TokenString[static_cast<size_t>(token)];
}

/// A set of tokens, for tests and for error recovery.
class TokenList {
 public:
  constexpr TokenList(std::initializer_list<Tok> tokens) {
    for (Tok token : tokens) words_[Word(token)] |= Bit(token);
  }
  constexpr TokenList With(std::initializer_list<Tok> tokens) const {
    TokenList result = *this;
    for (Tok token : tokens) result.words_[Word(token)] |= Bit(token);
    return result;
  }
  constexpr TokenList With(const TokenList& other) const {
    TokenList result = *this;
    for (size_t i = 0; i < words_.size(); ++i) result.words_[i] |= other.words_[i];
    return result;
  }
  constexpr bool Has(Tok token) const { return (words_[Word(token)] & Bit(token)) != 0; }

 private:
  static constexpr size_t Word(Tok token) { return static_cast<size_t>(token) / 64; }
  static constexpr uint64_t Bit(Tok token) { return uint64_t{1} << (static_cast<size_t>(token) % 64); }

  std::array<uint64_t, 3> words_{};
};

// Words that name a basic type by themselves.
extern const TokenList BasicTypeList;
// Types named for their size; a program may define such a name itself.
extern const TokenList SizeNamedTypeList;
// `struct`, `class` and `union`.
extern const TokenList TagList;
// Words that can stand in front of a type.
extern const TokenList StorageList;

extern const TokenList EofList;
extern const TokenList EofProcList;
extern const TokenList DollarListAndFunctionList;
extern const TokenList ValidVarList;
extern const TokenList ValidBitFieldType;
extern const TokenList ValidInitializerList;
extern const TokenList ValidTypeDefList;
extern const TokenList ArgumentTypesList;
extern const TokenList StructBodyList;
extern const TokenList ProcBodyList;
extern const TokenList BeginList;
extern const TokenList MorvBeginList;
extern const TokenList OverloadableOperators;

/// A reserved word and its token.
struct ReservedWord {
  std::string_view text;
  Tok token;
};

/// The reserved words of the language.
std::span<const ReservedWord> ReservedWords();

/// The token of a directive word such as "define", or NOTOKEN.
Tok PreProcessReserveWord(std::string_view word);

}  // namespace vorc
