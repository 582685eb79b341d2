#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <vector>

#include "codec/vzip.h"

namespace {

using namespace vorc;

using Bytes = std::vector<uint8_t>;
using Work = VzStatus (*)(std::span<const uint8_t>, std::span<uint8_t>, size_t&);

struct Answer {
  VzStatus status;
  Bytes bytes;
};

void Require(bool holds) {
  if (!holds) std::abort();
}

// Each answer lies in storage of its own size, for the sanitizer to see a byte beyond it.
Answer Apply(Work work, std::span<const uint8_t> source, size_t capacity) {
  Bytes target(std::max<size_t>(capacity, 1));
  size_t written = 0;
  const VzStatus status = work(source, std::span(target).first(capacity), written);
  Require(written <= capacity);
  target.resize(written);
  return {status, target};
}

void ComesBack(Work pack, Work unpack, std::span<const uint8_t> text) {
  const Answer packed = Apply(pack, text, vz_bound(text.size()));
  Require(packed.status == kVzOk);
  const Answer unpacked = Apply(unpack, packed.bytes, text.size());
  Require(unpacked.status == kVzOk && std::ranges::equal(unpacked.bytes, text));
  if (packed.bytes.size() > 18) Require(Apply(pack, text, packed.bytes.size()).bytes == packed.bytes);
}

void SmallerRoomGivesTheSameStart(Work unpack, std::span<const uint8_t> stream) {
  constexpr size_t kRoom = 100000;
  const Answer whole = Apply(unpack, stream, kRoom);
  for (const size_t room : {whole.bytes.size(), whole.bytes.size() / 2, size_t{0}}) {
    const Answer part = Apply(unpack, stream, room);
    Require(part.bytes.size() <= whole.bytes.size());
    Require(std::equal(part.bytes.begin(), part.bytes.end(), whole.bytes.begin()));
    Require(part.status == kVzNoRoom || part.status == whole.status);
  }
}

}  // namespace

// Takes its input for a text to pack and for a stream to unpack.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::span<const uint8_t> input(data, size);
  ComesBack(vz_deflate, vz_inflate, input);
  ComesBack(vz_zlib_compress, vz_zlib_decompress, input);
  ComesBack(vz_gzip_compress, vz_gzip_decompress, input);
  SmallerRoomGivesTheSameStart(vz_inflate, input);
  SmallerRoomGivesTheSameStart(vz_zlib_decompress, input);
  SmallerRoomGivesTheSameStart(vz_gzip_decompress, input);
  return 0;
}
