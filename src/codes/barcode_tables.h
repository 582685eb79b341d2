#pragma once

#include <string_view>

namespace vorc::codes {

/// Modules of EAN digits, "1" dark: left digits of odd and even parity, right digits.
extern const char* const ean_L[10];
extern const char* const ean_G[10];
extern const char* const ean_R[10];
/// Parities of the six left digits by first digit, "1" for the G set.
extern const char* const ean_parity[10];

/// The check digit for the first twelve digits of `digits`.
int EanCheckDigit(std::string_view digits);

constexpr int kCode128Symbols = 107;
constexpr int kCode128Modules = 11;  ///< of every symbol but the stop
constexpr int kCode128CheckModulus = 103;

/// Values of Code 128 symbols (ISO/IEC 15417) with a meaning of their own.
enum Code128Value : int {
  kCode128Shift = 98,
  kCode128SetC = 99,
  kCode128SetB = 100,
  kCode128SetA = 101,
  kCode128StartA = 103,
  kCode128StartB = 104,
  kCode128StartC = 105,
  kCode128Stop = 106,
};

/// Widths of bars and spaces in turn, by value; the stop has a seventh.
extern const char* const code128_widths[kCode128Symbols];

}  // namespace vorc::codes
