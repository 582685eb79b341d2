#include "output/symbol_block.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "base/descriptor.h"
#include "codec/vzip.h"

namespace vorc {
namespace {

constexpr uint64_t kFirstCapacity = 65536;
// No byte of a deflated stream stands for more: two bits can give a match of 258 bytes.
constexpr uint64_t kLargestRatio = 1032;

uint64_t ReadLittle(std::span<const uint8_t> bytes, size_t at, int count) {
  uint64_t value = 0;
  for (int i = count - 1; i >= 0; --i) value = value << 8 | bytes[at + static_cast<size_t>(i)];
  return value;
}

void PutLittle64(std::span<uint8_t> bytes, size_t at, uint64_t value) {
  for (size_t i = 0; i < 8; ++i) bytes[at + i] = static_cast<uint8_t>(value >> (8 * i));
}

bool Grow(VsymBuilder& builder, uint64_t capacity) {
  auto* larger = static_cast<uint8_t*>(std::realloc(builder.data.get(), capacity));
  if (larger == nullptr) return false;
  static_cast<void>(builder.data.release());
  builder.data.reset(larger);
  builder.capacity = capacity;
  return true;
}

/// Reads so many bytes from a place. False if the file has fewer, and then without asking for the memory.
bool ReadAll(int fd, uint64_t offset, uint64_t rest, uint64_t count, std::vector<uint8_t>& bytes) {
  if (count > rest) return false;
  bytes.resize(count);
  for (size_t got = 0; got < count;) {
    const auto at = static_cast<off_t>(offset + got);
    const ssize_t more = RetryInterrupted([&] { return pread(fd, &bytes[got], count - got, at); });
    if (more <= 0) return false;
    got += static_cast<size_t>(more);
  }
  return true;
}

VsymStatus Inflated(const std::vector<uint8_t>& stored, uint64_t length, std::vector<uint8_t>& block) {
  block.resize(std::min<uint64_t>(length, stored.size() * kLargestRatio));
  size_t written = 0;
  if (vz_zlib_decompress(stored, block, written) != kVzOk) return kVsymRefused;
  return written == length ? kVsymOk : kVsymWrongSize;
}

}  // namespace

const char* vsym_strerror(int status) {
  switch (status) {
    case kVsymOk: return "ok";
    case kVsymNoMemory: return "out of memory building the symbol block";
    case kVsymIo: return "read/write failed on the symbol block";
    case kVsymRefused: return "vzip refused the symbol stream";
    case kVsymWrongSize: return "symbol block size disagrees with the header";
    default: return "unknown vsymcomp error";
  }
}

void VsymBuilder::Free::operator()(uint8_t* bytes) const {
  std::free(bytes);
}

VsymStatus vsym_builder_init(VsymBuilder& builder, uint64_t base) {
  builder = {};
  builder.base = base;
  builder.failed = !Grow(builder, kFirstCapacity);
  return builder.failed ? kVsymNoMemory : kVsymOk;
}

void vsym_write(VsymBuilder& builder, std::span<const uint8_t> bytes) {
  if (builder.failed || bytes.empty()) return;
  uint64_t capacity = builder.capacity;
  while (capacity != 0 && capacity - builder.used < bytes.size()) capacity *= 2;
  if (capacity == 0 || (capacity != builder.capacity && !Grow(builder, capacity))) {
    builder.failed = true;
    return;
  }
  std::memcpy(&builder.data[builder.used], bytes.data(), bytes.size());
  builder.used += bytes.size();
}

uint64_t vsym_tell(const VsymBuilder& builder) {
  return builder.used + builder.base;
}

VsymStatus vsym_pack(const VsymBuilder& builder, bool compress, VsymPacked& packed) {
  if (builder.failed) return kVsymNoMemory;
  packed = {{builder.data.get(), builder.used}, builder.used, false, nullptr};
  if (!compress || builder.used == 0) return kVsymOk;
  const size_t bound = vz_bound(builder.used);
  packed.own.reset(static_cast<uint8_t*>(std::malloc(bound)));
  if (!packed.own) return kVsymNoMemory;
  size_t size = 0;
  if (vz_zlib_compress(packed.bytes, {packed.own.get(), bound}, size) != kVzOk) return kVsymRefused;
  packed.deflated = size < builder.used;
  if (packed.deflated) packed.bytes = {packed.own.get(), size};
  return kVsymOk;
}

void vsym_describe(std::span<uint8_t> header, uint64_t length, uint64_t stored, bool deflated) {
  PutLittle64(header, kVsymCompressedAt, deflated ? 1 : 0);
  PutLittle64(header, kVsymLengthAt, length);
  PutLittle64(header, kVsymStoredAt, deflated ? stored : 0);
}

VsymStatus vsym_put(int fd, std::span<const uint8_t> bytes) {
  while (!bytes.empty()) {
    const ssize_t written = RetryInterrupted([&] { return write(fd, bytes.data(), bytes.size()); });
    if (written <= 0) return kVsymIo;
    bytes = bytes.subspan(static_cast<size_t>(written));
  }
  return kVsymOk;
}

VsymStatus vsym_emit(int fd, const VsymBuilder& builder, std::span<uint8_t> header, bool compress) {
  if (header.size() < kVsymHeaderSize) return kVsymNoMemory;
  VsymPacked packed;
  const VsymStatus status = vsym_pack(builder, compress, packed);
  if (status != kVsymOk) return status;
  vsym_describe(header, packed.length, packed.bytes.size(), packed.deflated);
  return vsym_put(fd, packed.bytes);
}

VsymStatus vsym_read_block_at(int fd, std::span<const uint8_t> header, uint64_t offset,
                              std::vector<uint8_t>& block) {
  block.clear();
  struct stat about {};
  if (header.size() < kVsymHeaderSize || fstat(fd, &about) != 0) return kVsymIo;
  const auto size = static_cast<uint64_t>(about.st_size);
  if (offset > size) return kVsymIo;
  const uint64_t rest = size - offset;
  const auto length = static_cast<int64_t>(ReadLittle(header, kVsymLengthAt, 8));
  const auto stored = static_cast<int64_t>(ReadLittle(header, kVsymStoredAt, 8));
  if (ReadLittle(header, kVsymCompressedAt, 8) == 0) {
    const uint64_t count = length < 1 ? rest : static_cast<uint64_t>(length);
    return ReadAll(fd, offset, rest, count, block) ? kVsymOk : kVsymIo;
  }
  if (length < 1 || stored < 1) return kVsymWrongSize;
  std::vector<uint8_t> packed;
  if (!ReadAll(fd, offset, rest, static_cast<uint64_t>(stored), packed)) return kVsymIo;
  return Inflated(packed, static_cast<uint64_t>(length), block);
}

VsymStatus vsym_read_block(int fd, std::span<const uint8_t> header, std::vector<uint8_t>& block) {
  if (header.size() < kVsymHeaderSize) return kVsymIo;
  return vsym_read_block_at(fd, header, ReadLittle(header, kVsymOffsetAt, 4), block);
}

}  // namespace vorc
