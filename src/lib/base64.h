#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vorc {

inline constexpr size_t kUnlimited = static_cast<size_t>(-1);

/// Standard base64 with `=` padding (RFC 4648). Empty if the text and its NUL would not fit into
/// `capacity` bytes.
std::string MorvBase64Encode(std::string_view bytes, size_t capacity = kUnlimited);

/// The bytes that base64 stands for. Blanks, tabs and line ends are passed over; reading stops at
/// `=`, NUL or any other character, so broken input gives what was decoded up to there.
std::string MorvBase64Decode(std::string_view text);

}  // namespace vorc
