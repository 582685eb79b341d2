#include "sim/data_section.h"

#include <algorithm>
#include <charconv>

#include "base/ascii.h"
#include "base/format.h"

namespace vorc::sim {
namespace {

constexpr size_t kLongDigits = 16;  // of a number that is hexadecimal without saying so

bool Fail(AssemblyError* error, uint32_t line, std::string message) {
  *error = {line, std::move(message)};
  return false;
}

std::string Quoted(std::string_view text) {
  return "'" + std::string(text.substr(0, 80)) + "'";
}

/// Bytes of one element of BYTE1 to BYTE32, 0 for any other word.
int ElementWidth(std::string_view directive) {
  if (directive.size() < 5 || !EqualIgnoringCase(directive.substr(0, 4), "BYTE")) return 0;
  const std::string_view digits = directive.substr(4);
  for (const int width : {1, 2, 4, 8, 16, 32}) {
    if (digits == std::to_string(width)) return width;
  }
  return 0;
}

bool AllHexadecimal(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) { return HexDigitValue(c) >= 0; });
}

bool LooksLikeNumber(std::string_view text) {
  const char first = text.size() > 1 && (text[0] == '-' || text[0] == '+') ? text[1] : text[0];
  return IsAsciiDigit(first) || first == '.';
}

bool Fits(int64_t value, int width) {
  if (width >= 8) return true;
  const int64_t limit = int64_t{1} << (8 * width);
  return value >= -limit / 2 && value < limit;
}

Token NextBehindLines(Scanner* scanner) {
  Token token = scanner->Next();
  while (token.kind == Token::kEndOfLine) token = scanner->Next();
  return token;
}

const Token& PeekBehindLines(Scanner* scanner) {
  while (scanner->Peek().kind == Token::kEndOfLine) scanner->Next();
  return scanner->Peek();
}

}  // namespace

void SplitAddend(std::string_view text, std::string_view* name, int64_t* addend) {
  *name = text;
  *addend = 0;
  const size_t sign = text.find_last_of("+-");
  if (sign == std::string_view::npos || sign == 0) return;
  if (ParseNumber(text.substr(sign), 8, addend)) *name = text.substr(0, sign);
}

bool DataSection::Read(Scanner* scanner, AssemblyError* error) {
  while (true) {
    const Token token = NextBehindLines(scanner);
    if (token.Is(';') || token.IsWord("GLOBAL")) continue;
    if (token.IsWord("END")) return true;
    if (token.kind == Token::kEndOfFile) return Fail(error, token.line, "the section has no END");
    if (token.IsWord("EXTERN")) {
      if (!ReadExtern(scanner, error)) return false;
    } else if (token.kind != Token::kWord || ElementWidth(token.text) == 0) {
      return Fail(error, token.line, "unknown directive " + Quoted(token.text));
    } else if (!ReadVariable(scanner, token.text, error)) {
      return false;
    }
  }
}

bool DataSection::ReadExtern(Scanner* scanner, AssemblyError* error) {
  const Token name = scanner->Next();
  if (name.kind != Token::kWord) return Fail(error, name.line, "EXTERN wants a name");
  externs.insert(name.text);
  return true;
}

bool DataSection::ReadVariable(Scanner* scanner, std::string_view directive, AssemblyError* error) {
  const Token name = scanner->Next();
  if (name.kind != Token::kWord) return Fail(error, name.line, std::string(directive) + " wants a name");
  DataSymbol symbol;
  symbol.name = name.text;
  symbol.width = ElementWidth(directive);
  const uint64_t alignment = static_cast<uint64_t>(std::min(symbol.width, 8));
  if (!Fill((bytes.size() + alignment - 1) / alignment * alignment, name.line, error)) return false;
  symbol.address = bytes.size();
  symbol.count = 1;
  if (!ReadDimensions(scanner, &symbol, error)) return false;
  if (PeekBehindLines(scanner).Is('=') && !ReadValues(scanner, symbol, error)) return false;
  const uint64_t width = static_cast<uint64_t>(symbol.width);
  // A list may be longer than the brackets say.
  symbol.count = std::max(symbol.count, (bytes.size() - symbol.address + width - 1) / width);
  if (!Fill(symbol.address + symbol.count * width + gap_, name.line, error)) return false;
  symbols.push_back(std::move(symbol));
  lines.push_back(name.line);
  return true;
}

bool DataSection::ReadDimensions(Scanner* scanner, DataSymbol* symbol, AssemblyError* error) {
  while (PeekBehindLines(scanner).Is('[')) {
    scanner->Next();
    Token token = scanner->Next();
    int64_t count = 0;
    if (token.kind == Token::kWord) {
      if (!ParseNumber(token.text, 8, &count) || count < 0 || static_cast<uint64_t>(count) > kMaxDataBytes) {
        return Fail(error, token.line, "bad array size " + Quoted(token.text));
      }
      token = scanner->Next();
    }
    if (!token.Is(']')) return Fail(error, token.line, "an array size wants a ']'");
    symbol->is_array = true;
    symbol->count *= static_cast<uint64_t>(count);
    if (symbol->count * static_cast<uint64_t>(symbol->width) > limit_) {
      return TooLarge(token.line, error);
    }
  }
  return true;
}

bool DataSection::ReadValues(Scanner* scanner, const DataSymbol& symbol, AssemblyError* error) {
  scanner->Next();  // =
  int depth = 0;
  while (true) {
    const Token token = NextBehindLines(scanner);
    if (token.Is('{')) {
      ++depth;
    } else if (token.Is('}')) {
      if (--depth < 0) return Fail(error, token.line, "'}' without a '{'");
    } else if (token.kind == Token::kWord || token.kind == Token::kText) {
      if (!ReadValue(token, symbol, error)) return false;
    } else {
      return Fail(error, token.line, "a value is missing for " + Quoted(symbol.name));
    }
    const bool comma = PeekBehindLines(scanner).Is(',');
    if (comma) scanner->Next();
    if (depth == 0 && !comma) return true;
  }
}

bool DataSection::ReadValue(const Token& token, const DataSymbol& symbol, AssemblyError* error) {
  if (bytes.size() > limit_) return TooLarge(token.line, error);
  if (token.kind == Token::kText) {
    if (symbol.width != 1) return Fail(error, token.line, "a text stands in bytes only");
    const std::string text = Unescape(token.text);
    bytes.insert(bytes.end(), text.begin(), text.end());
    bytes.push_back(0);
    return true;
  }
  if (LooksLikeNumber(token.text) || (token.text.size() == kLongDigits && AllHexadecimal(token.text))) {
    return AppendNumber(token, symbol.width, error);
  }
  DataFixup fixup{bytes.size(), symbol.width == 1 ? address_bytes_ : symbol.width, {}, 0, token.line};
  if (fixup.width < address_bytes_)
    return Fail(error, token.line, "an address doesn't fit " + Quoted(symbol.name));
  SplitAddend(token.text, &fixup.name, &fixup.addend);
  bytes.resize(bytes.size() + static_cast<size_t>(fixup.width));
  fixups.push_back(fixup);
  return true;
}

bool DataSection::AppendNumber(const Token& token, int width, AssemblyError* error) {
  std::string_view text = token.text;
  const bool marked = text.starts_with("0x") || text.starts_with("0X");
  if (marked || text.size() == kLongDigits) {
    std::string_view digits = text.substr(marked ? 2 : 0);
    while (digits.size() > 1 && digits[0] == '0') digits.remove_prefix(1);
    if (!AllHexadecimal(digits)) return Fail(error, token.line, "bad number " + Quoted(text));
    if (digits.size() > static_cast<size_t>(2 * width)) {
      return Fail(error, token.line, Format("%s doesn't fit %d bytes", Quoted(text).c_str(), width));
    }
    for (size_t i = 0; i < static_cast<size_t>(width); ++i) {
      const auto digit = [&](size_t n) {
        return n < digits.size() ? HexDigitValue(digits[digits.size() - 1 - n]) : 0;
      };
      bytes.push_back(static_cast<uint8_t>(digit(2 * i) + 16 * digit(2 * i + 1)));
    }
    return true;
  }
  int64_t value = 0;
  if (!ParseNumber(text, width, &value)) return Fail(error, token.line, "bad number " + Quoted(text));
  if (!Fits(value, width)) {
    return Fail(error, token.line, Format("%s doesn't fit %d bytes", Quoted(text).c_str(), width));
  }
  for (int i = 0; i < width; ++i) bytes.push_back(static_cast<uint8_t>(value >> std::min(8 * i, 63)));
  return true;
}

bool DataSection::TooLarge(uint32_t line, AssemblyError* error) const {
  return Fail(error, line, "the variables take more than " + std::to_string(limit_) + " bytes");
}

bool DataSection::Fill(uint64_t size, uint32_t line, AssemblyError* error) {
  if (size > limit_) return TooLarge(line, error);
  if (size > bytes.size()) bytes.resize(size);
  return true;
}

}  // namespace vorc::sim
