#pragma once

#include <algorithm>
#include <string_view>

namespace vorc {

// Character classes of the C locale, whatever locale the process runs in.

constexpr bool IsAsciiDigit(char c) {
  return c >= '0' && c <= '9';
}

constexpr char AsciiLower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

constexpr char AsciiUpper(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
}

/// The value of a hexadecimal digit of either case, -1 for any other character.
constexpr int HexDigitValue(char c) {
  if (IsAsciiDigit(c)) return c - '0';
  const char lower = AsciiLower(c);
  return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

/// True if both texts are equal apart from the case of A to Z.
constexpr bool EqualIgnoringCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return AsciiLower(x) == AsciiLower(y); });
}

}  // namespace vorc
