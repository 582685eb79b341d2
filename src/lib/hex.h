#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vorc {

/// Two lower-case digits for each byte.
std::string HexText(std::span<const uint8_t> bytes);

/// The bytes that hexadecimal digits of either case stand for. Nothing if the text is empty, of odd
/// length, longer than `max` bytes need, or holds another character.
std::optional<std::vector<uint8_t>> MorvHexToBytes(std::string_view text, size_t max);

}  // namespace vorc
