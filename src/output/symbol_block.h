#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace vorc {

enum VsymStatus : int {
  kVsymOk = 0,
  kVsymNoMemory = -1,
  kVsymIo = -2,
  kVsymRefused = -3,
  kVsymWrongSize = -4,
};

/// The status in words. Any number gives a text.
const char* vsym_strerror(int status);

// Where the header of a symbol or object file tells of its block: whether it is deflated, its length before
// that and its length in the file, 0 if it isn't deflated, each in eight bytes; where it begins, in four.
inline constexpr size_t kVsymCompressedAt = 824;
inline constexpr size_t kVsymLengthAt = 832;
inline constexpr size_t kVsymStoredAt = 840;
inline constexpr size_t kVsymOffsetAt = 908;
inline constexpr size_t kVsymHeaderSize = 912;

/// A block of tables that is gathered in memory before it is written.
struct VsymBuilder {
  struct Free {
    void operator()(uint8_t* bytes) const;
  };

  std::unique_ptr<uint8_t[], Free> data;
  uint64_t used = 0;
  uint64_t capacity = 0;
  /// The place of the block in its file.
  uint64_t base = 0;
  /// Set when memory ran out, and never cleared: nothing is appended any more.
  bool failed = false;
};

/// Starts an empty block.
VsymStatus vsym_builder_init(VsymBuilder& builder, uint64_t base);

/// Appends bytes.
void vsym_write(VsymBuilder& builder, std::span<const uint8_t> bytes);

/// Where the next byte goes, counted in the file as if nothing were deflated.
uint64_t vsym_tell(const VsymBuilder& builder);

/// A block as it goes to a file, one or several.
struct VsymPacked {
  std::span<const uint8_t> bytes;
  uint64_t length = 0;  ///< before deflation
  bool deflated = false;
  std::unique_ptr<uint8_t[], VsymBuilder::Free> own;
};

/// Prepares what the builder holds: with `compress` deflated if that makes it smaller. The plain bytes stay
/// the builder's.
VsymStatus vsym_pack(const VsymBuilder& builder, bool compress, VsymPacked& packed);

/// Tells of a block in the header of its file.
void vsym_describe(std::span<uint8_t> header, uint64_t length, uint64_t stored, bool deflated);

/// Writes all bytes where the file stands.
VsymStatus vsym_put(int fd, std::span<const uint8_t> bytes);

/// Writes the block where the file stands and tells of it in the header. With `compress` it is deflated if
/// that makes it smaller.
VsymStatus vsym_emit(int fd, const VsymBuilder& builder, std::span<uint8_t> header, bool compress);

/// Reads the block that a header tells of, as it was before deflation. Needs no more memory than a file of
/// this size can justify.
VsymStatus vsym_read_block_at(int fd, std::span<const uint8_t> header, uint64_t offset,
                              std::vector<uint8_t>& block);

/// The same, at the place that the header tells.
VsymStatus vsym_read_block(int fd, std::span<const uint8_t> header, std::vector<uint8_t>& block);

}  // namespace vorc
