#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace vorc {

enum VzStatus : int {
  kVzOk = 0,
  kVzMalformed = -1,
  kVzNoRoom = -2,
  kVzBadArgument = -3,
  kVzNoMemory = -4,
};

/// The status in words. Any number gives a text.
const char* vz_strerror(int status);

/// The room that `vz_deflate` can need for `size` bytes.
constexpr size_t vz_bound(size_t size) {
  return size + 5 * (size / 65535 + 1) + 64;
}

// All of the following take a source and a target that don't overlap, and leave in `written` how many
// bytes of the target hold a result, also where they fail. A target without storage is a bad argument.

/// Compresses into a raw stream (RFC 1951): one block of fixed codes, or stored blocks where that is
/// shorter. Equal input gives equal output.
VzStatus vz_deflate(std::span<const uint8_t> source, std::span<uint8_t> target, size_t& written);

/// Expands a raw stream (RFC 1951). The target's size bounds what comes out. Bytes behind the final
/// block are not looked at.
VzStatus vz_inflate(std::span<const uint8_t> source, std::span<uint8_t> target, size_t& written);

/// Compresses into a zlib stream (RFC 1950).
VzStatus vz_zlib_compress(std::span<const uint8_t> source, std::span<uint8_t> target, size_t& written);

/// Expands a zlib stream (RFC 1950) that fills the source and needs no preset dictionary.
VzStatus vz_zlib_decompress(std::span<const uint8_t> source, std::span<uint8_t> target, size_t& written);

/// Compresses into a gzip file of one member (RFC 1952), with no name and no time.
VzStatus vz_gzip_compress(std::span<const uint8_t> source, std::span<uint8_t> target, size_t& written);

/// Expands a gzip file (RFC 1952) whose one member fills the source.
VzStatus vz_gzip_decompress(std::span<const uint8_t> source, std::span<uint8_t> target, size_t& written);

}  // namespace vorc
