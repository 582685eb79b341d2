#include "lib/base64.h"

#include <array>
#include <cstdint>

namespace vorc {

namespace {

constexpr char MORV_B64[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

constexpr uint8_t kBlank = 64;
constexpr uint8_t kStop = 65;

// What each byte means to the decoder: six bits, a blank, or the end.
constexpr std::array<uint8_t, 256> kMeanings = [] {
  std::array<uint8_t, 256> meanings{};
  meanings.fill(kStop);
  for (uint8_t i = 0; i < 64; ++i) meanings[static_cast<uint8_t>(MORV_B64[i])] = i;
  for (const char blank : {'\t', '\n', '\r', ' '}) meanings[static_cast<uint8_t>(blank)] = kBlank;
  return meanings;
}();

uint32_t ByteAt(std::string_view bytes, size_t i) {
  return static_cast<uint8_t>(bytes[i]);
}

// The `index`-th digit of 24 bits.
char DigitOf(uint32_t bits, int index) {
  return MORV_B64[bits >> (18 - 6 * index) & 63];
}

uint8_t MeaningAt(std::string_view text, size_t i) {
  return kMeanings[static_cast<uint8_t>(text[i])];
}

// Decodes whole groups of four digits for as long as nothing stands between them, and moves `to`
// behind the bytes. Answers how much of the text that took.
size_t DecodeGroups(std::string_view text, char*& to) {
  size_t i = 0;
  for (; i + 4 <= text.size(); i += 4) {
    const uint32_t a = MeaningAt(text, i), b = MeaningAt(text, i + 1);
    const uint32_t c = MeaningAt(text, i + 2), d = MeaningAt(text, i + 3);
    if ((a | b | c | d) >= kBlank) break;
    const uint32_t bits = a << 18 | b << 12 | c << 6 | d;
    *to++ = static_cast<char>(bits >> 16);
    *to++ = static_cast<char>(bits >> 8);
    *to++ = static_cast<char>(bits);
  }
  return i;
}

}  // namespace

std::string MorvBase64Encode(std::string_view bytes, size_t capacity) {
  const size_t length = (bytes.size() + 2) / 3 * 4;
  if (length >= capacity) return {};
  std::string text(length, '=');
  char* to = text.data();
  size_t i = 0;
  for (; i + 2 < bytes.size(); i += 3) {
    const uint32_t bits = ByteAt(bytes, i) << 16 | ByteAt(bytes, i + 1) << 8 | ByteAt(bytes, i + 2);
    *to++ = DigitOf(bits, 0);
    *to++ = DigitOf(bits, 1);
    *to++ = DigitOf(bits, 2);
    *to++ = DigitOf(bits, 3);
  }
  const size_t left = bytes.size() - i;
  if (left == 0) return text;
  const uint32_t bits = ByteAt(bytes, i) << 16 | (left == 2 ? ByteAt(bytes, i + 1) << 8 : 0);
  for (int digit = 0; digit <= static_cast<int>(left); ++digit) to[digit] = DigitOf(bits, digit);
  return text;
}

std::string MorvBase64Decode(std::string_view text) {
  std::string bytes(text.size() / 4 * 3 + 3, '\0');
  char* to = bytes.data();
  uint32_t bits = 0;
  int waiting = 0;
  for (size_t i = DecodeGroups(text, to); i < text.size(); ++i) {
    const uint8_t meaning = MeaningAt(text, i);
    if (meaning == kStop) break;
    if (meaning == kBlank) continue;
    bits = bits << 6 | meaning;
    waiting += 6;
    if (waiting < 8) continue;
    waiting -= 8;
    *to++ = static_cast<char>(bits >> waiting);
    if (waiting == 0) i += DecodeGroups(text.substr(i + 1), to);
  }
  bytes.resize(static_cast<size_t>(to - bytes.data()));
  return bytes;
}

}  // namespace vorc
