#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "lib/base64.h"

namespace {

void Require(bool holds) {
  if (!holds) std::abort();
}

// One digit at a time, with nothing clever: what the fast decoder must agree with.
std::string PlainDecode(std::string_view text) {
  constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string bits;
  for (const char character : text) {
    const size_t value = kDigits.find(character);
    if (value == std::string_view::npos &&
        std::string_view("\t\n\r ").find(character) == std::string_view::npos)
      break;
    if (value == std::string_view::npos) continue;
    for (int bit = 5; bit >= 0; --bit) bits += (value >> bit & 1) != 0 ? '1' : '0';
  }
  std::string bytes;
  for (size_t i = 0; i + 8 <= bits.size(); i += 8) {
    bytes += static_cast<char>(std::stoi(bits.substr(i, 8), nullptr, 2));
  }
  return bytes;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  const std::string encoded = vorc::MorvBase64Encode(input);
  Require(encoded.size() % 4 == 0);
  Require(vorc::MorvBase64Decode(encoded) == input);
  Require(vorc::MorvBase64Encode(input, encoded.size() + 1) == encoded);
  Require(vorc::MorvBase64Encode(input, encoded.size()).empty());
  Require(vorc::MorvBase64Decode(input) == PlainDecode(input));
  return 0;
}
