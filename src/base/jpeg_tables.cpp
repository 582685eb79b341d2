#include "base/jpeg_tables.h"

#include <cstddef>
#include <cstdint>

namespace vorc {

namespace {

constexpr int kMarkerStart = 0xFF;
constexpr int kStuffedByte = 0x00;
constexpr int kHuffmanTables = 0xC4;
constexpr int kFirstRestart = 0xD0;
constexpr int kStartOfImage = 0xD8;
constexpr int kEndOfImage = 0xD9;
constexpr int kMaxValues = 256;
constexpr size_t kLengths = 16;

class Bytes {
 public:
  explicit Bytes(std::string_view bytes) : bytes_(bytes) {}

  size_t size() const { return bytes_.size(); }
  // Behind the end all is zero, as the decoder sees it.
  int At(size_t at) const { return at < bytes_.size() ? static_cast<uint8_t>(bytes_[at]) : 0; }
  int Word(size_t at) const { return At(at) << 8 | At(at + 1); }

 private:
  std::string_view bytes_;
};

// Checks the tables of a segment of `length` bytes, its length field included.
bool SegmentFits(const Bytes& bytes, size_t at, int length) {
  size_t table = at + 2;
  for (int left = length - 2; left > 0;) {
    int values = 0;
    for (size_t i = 1; i <= kLengths; ++i) values += bytes.At(table + i);
    if (values > kMaxValues) return false;
    const int table_length = 1 + static_cast<int>(kLengths) + values;
    table += static_cast<size_t>(table_length);
    left -= table_length;
  }
  return true;
}

}  // namespace

bool JpegTablesFit(std::string_view file) {
  const Bytes bytes(file);
  if (bytes.At(0) != kMarkerStart) return true;
  for (size_t at = 0; at < bytes.size();) {
    // Between segments, and in compressed data, all is passed over up to the next marker.
    at = file.find(static_cast<char>(kMarkerStart), at);
    if (at == std::string_view::npos) return true;
    while (bytes.At(at) == kMarkerStart) ++at;
    const int marker = bytes.At(at++);
    if (marker == kEndOfImage) return true;
    if (marker == kStuffedByte || (marker >= kFirstRestart && marker <= kStartOfImage)) continue;
    const int length = bytes.Word(at);
    if (length < 2) return true;  // where the decoder gives up
    if (marker == kHuffmanTables && !SegmentFits(bytes, at, length)) return false;
    at += static_cast<size_t>(length);
  }
  return true;
}

}  // namespace vorc
