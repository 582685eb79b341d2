#include "javascript/text.h"

#include <cstddef>
#include <cstdint>

namespace vorc {

namespace {

constexpr uint32_t kReplacement = 0xFFFD;
constexpr uint32_t kHalves = 0xD800;
constexpr uint32_t kLowHalves = 0xDC00;
constexpr uint32_t kBehindHalves = 0xE000;
constexpr uint32_t kBeyond16Bits = 0x10000;
constexpr uint32_t kLast = 0x10FFFF;

struct Character {
  uint32_t code = kReplacement;
  size_t size = 1;
};

unsigned Byte(std::string_view text, size_t at) {
  return at < text.size() ? static_cast<unsigned char>(text[at]) : 0U;
}

// The character at a place, halves included. A byte that begins none is a replacement.
Character Decode(std::string_view text, size_t at) {
  const unsigned first = Byte(text, at);
  if (first < 0x80) return {first, 1};
  const size_t size = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
  if (first < 0xC2 || first > 0xF4) return {};
  uint32_t code = first & (0x7FU >> size);
  for (size_t i = 1; i < size; ++i) {
    const unsigned byte = Byte(text, at + i);
    if ((byte & 0xC0) != 0x80) return {};
    code = code << 6 | (byte & 0x3F);
  }
  constexpr uint32_t kSmallest[] = {0, 0, 0x80, 0x800, kBeyond16Bits};
  return code < kSmallest[size] || code > kLast ? Character{} : Character{code, size};
}

void Encode(uint32_t code, std::string& out) {
  const auto put = [&](uint32_t bits) { out += static_cast<char>(bits); };
  if (code < 0x80) return put(code);
  if (code < 0x800) {
    put(0xC0 | code >> 6);
  } else {
    if (code < kBeyond16Bits) {
      put(0xE0 | code >> 12);
    } else {
      put(0xF0 | code >> 18);
      put(0x80 | (code >> 12 & 0x3F));
    }
    put(0x80 | (code >> 6 & 0x3F));
  }
  put(0x80 | (code & 0x3F));
}

bool IsHalf(uint32_t code) {
  return code >= kHalves && code < kBehindHalves;
}

}  // namespace

std::string ToInterpreter(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (size_t at = 0; at < text.size();) {
    const Character next = Decode(text, at);
    at += next.size;
    if (next.code >= kBeyond16Bits) {
      Encode(kHalves + ((next.code - kBeyond16Bits) >> 10), out);
      Encode(kLowHalves + ((next.code - kBeyond16Bits) & 0x3FF), out);
    } else {
      Encode(IsHalf(next.code) ? kReplacement : next.code, out);
    }
  }
  return out;
}

std::string FromInterpreter(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (size_t at = 0; at < text.size();) {
    Character next = Decode(text, at);
    at += next.size;
    const Character low = Decode(text, at);
    if (IsHalf(next.code) && next.code < kLowHalves && IsHalf(low.code) && low.code >= kLowHalves) {
      next.code = kBeyond16Bits + ((next.code - kHalves) << 10) + (low.code - kLowHalves);
      at += low.size;
    }
    Encode(IsHalf(next.code) ? kReplacement : next.code, out);
  }
  return out;
}

}  // namespace vorc
