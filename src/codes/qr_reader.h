#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vorc::codes {

/// The text of one QR code in a picture, given as the bytes of its file (any that DecodeGrayPicture
/// takes). Nothing if none is found that can be read. With the environment variable MORV_CODE_DEBUG,
/// the steps are told on standard error.
std::optional<std::string> MorvQrcodeRead(std::string_view file_bytes);

}  // namespace vorc::codes
