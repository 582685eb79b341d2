#include <algorithm>
#include <array>

#include "codec/checksums.h"
#include "codec/inflate.h"
#include "codec/little_endian.h"
#include "codec/vzip.h"

// The formats around a raw stream: zlib (RFC 1950) and gzip (RFC 1952).
namespace vorc {
namespace {

constexpr uint8_t kMethodDeflate = 8;

constexpr std::array<uint8_t, 2> kZlibHead = {0x78, 0x01};
constexpr size_t kZlibTail = 4;
constexpr size_t kZlibSmallestTarget = 8;
constexpr uint8_t kZlibDictionary = 0x20;

constexpr std::array<uint8_t, 10> kGzipHead = {0x1F, 0x8B, kMethodDeflate, 0, 0, 0, 0, 0, 0, 0xFF};
constexpr size_t kGzipTail = 8;

enum GzipFlags : uint8_t {
  kHeaderCrc = 0x02,
  kExtraField = 0x04,
  kFileName = 0x08,
  kComment = 0x10,
  kReservedFlags = 0xE0,
};

/// Deflates between a head and a tail of the given size. `written` counts all three.
VzStatus DeflateInside(std::span<const uint8_t> source, std::span<uint8_t> target,
                       std::span<const uint8_t> head, size_t tail, size_t& written) {
  const VzStatus status =
      vz_deflate(source, target.subspan(head.size(), target.size() - head.size() - tail), written);
  if (status != kVzOk) return status;
  std::copy(head.begin(), head.end(), target.begin());
  written += head.size() + tail;
  return kVzOk;
}

/// Inflates a stream that must take up the whole source.
VzStatus InflateAll(std::span<const uint8_t> source, std::span<uint8_t> target, size_t& written) {
  const InflateResult result = Inflate(source, target);
  written = result.written;
  if (result.status != kVzOk) return result.status;
  return result.consumed == source.size() ? kVzOk : kVzMalformed;
}

uint32_t BigEndian32(uint32_t value) {
  return __builtin_bswap32(value);
}

/// Drops `count` bytes. False if there are fewer.
bool Drop(std::span<const uint8_t>& bytes, size_t count) {
  if (bytes.size() < count) return false;
  bytes = bytes.subspan(count);
  return true;
}

/// Drops a text and its final zero. False if there is no zero.
bool DropText(std::span<const uint8_t>& bytes) {
  const auto end = std::find(bytes.begin(), bytes.end(), 0);
  return end != bytes.end() && Drop(bytes, static_cast<size_t>(end - bytes.begin()) + 1);
}

bool DropExtraField(std::span<const uint8_t>& bytes) {
  if (bytes.size() < 2) return false;
  return Drop(bytes, size_t{2} + bytes[0] + (size_t{bytes[1]} << 8));
}

/// Drops a gzip header with all its fields. False if it is none.
bool DropGzipHead(std::span<const uint8_t>& bytes) {
  if (!std::equal(kGzipHead.begin(), kGzipHead.begin() + 3, bytes.begin())) return false;
  const uint8_t flags = bytes[3];
  if ((flags & kReservedFlags) != 0) return false;
  bytes = bytes.subspan(kGzipHead.size());
  if ((flags & kExtraField) != 0 && !DropExtraField(bytes)) return false;
  if ((flags & kFileName) != 0 && !DropText(bytes)) return false;
  if ((flags & kComment) != 0 && !DropText(bytes)) return false;
  return (flags & kHeaderCrc) == 0 || Drop(bytes, 2);
}

}  // namespace

VzStatus vz_zlib_compress(std::span<const uint8_t> source, std::span<uint8_t> target, size_t& written) {
  written = 0;
  if (target.data() == nullptr) return kVzBadArgument;
  if (target.size() < kZlibSmallestTarget) return kVzNoRoom;
  const VzStatus status = DeflateInside(source, target, kZlibHead, kZlibTail, written);
  if (status != kVzOk) return status;
  StoreLittle(&target[written - kZlibTail], BigEndian32(vz_adler32(1, source)), kZlibTail);
  return kVzOk;
}

VzStatus vz_zlib_decompress(std::span<const uint8_t> source, std::span<uint8_t> target, size_t& written) {
  written = 0;
  if (target.data() == nullptr) return kVzBadArgument;
  if (source.size() < kZlibHead.size() + kZlibTail) return kVzMalformed;
  const bool checked = (source[0] << 8 | source[1]) % 31 == 0;
  if ((source[0] & 0x0F) != kMethodDeflate || !checked || (source[1] & kZlibDictionary) != 0) {
    return kVzMalformed;
  }
  const size_t tail = source.size() - kZlibTail;
  const VzStatus status = InflateAll(source.first(tail).subspan(kZlibHead.size()), target, written);
  if (status != kVzOk) return status;
  const uint32_t expected = BigEndian32(LoadLittle32(&source[tail]));
  return vz_adler32(1, target.first(written)) == expected ? kVzOk : kVzMalformed;
}

VzStatus vz_gzip_compress(std::span<const uint8_t> source, std::span<uint8_t> target, size_t& written) {
  written = 0;
  if (target.data() == nullptr) return kVzBadArgument;
  if (target.size() < kGzipHead.size() + kGzipTail) return kVzNoRoom;
  const VzStatus status = DeflateInside(source, target, kGzipHead, kGzipTail, written);
  if (status != kVzOk) return status;
  StoreLittle(&target[written - 8], vz_crc32(0, source), 4);
  StoreLittle(&target[written - 4], source.size(), 4);
  return kVzOk;
}

VzStatus vz_gzip_decompress(std::span<const uint8_t> source, std::span<uint8_t> target, size_t& written) {
  written = 0;
  if (target.data() == nullptr) return kVzBadArgument;
  if (source.size() < kGzipHead.size() + kGzipTail) return kVzMalformed;
  const size_t tail = source.size() - kGzipTail;
  std::span<const uint8_t> stream = source.first(tail);
  if (!DropGzipHead(stream)) return kVzMalformed;
  const VzStatus status = InflateAll(stream, target, written);
  if (status != kVzOk) return status;
  const bool same = vz_crc32(0, target.first(written)) == LoadLittle32(&source[tail]) &&
                    static_cast<uint32_t>(written) == LoadLittle32(&source[tail + 4]);
  return same ? kVzOk : kVzMalformed;
}

const char* vz_strerror(int status) {
  switch (status) {
    case kVzOk: return "ok";
    case kVzMalformed: return "malformed compressed data";
    case kVzNoRoom: return "destination buffer too small";
    case kVzBadArgument: return "bad argument";
    case kVzNoMemory: return "out of memory";
    default: return "unknown error";
  }
}

}  // namespace vorc
