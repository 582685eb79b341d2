#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vorc::codes {

struct Barcode {
  std::string text;
  const char* kind;  ///< "ean13" or "code128"
};

/// One barcode of a picture, given as the bytes of its file (any that DecodeGrayPicture takes): EAN-13,
/// UPC-A as EAN-13 with a leading zero, or Code 128. Nothing if none is found that can be read.
std::optional<Barcode> MorvBarcodeRead(std::string_view file_bytes);

}  // namespace vorc::codes
