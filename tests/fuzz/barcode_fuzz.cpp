#include <cstddef>
#include <cstdint>
#include <string_view>

#include "base/picture.h"
#include "codes/barcode_reader.h"

// The bytes of a picture file. Large ones only take time.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  constexpr int64_t kMaxPixels = 300'000;
  const std::string_view file(reinterpret_cast<const char*>(data), size);
  if (vorc::DecodeGrayPicture(file, kMaxPixels)) vorc::codes::MorvBarcodeRead(file);
  return 0;
}
