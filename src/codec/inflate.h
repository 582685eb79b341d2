#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "codec/vzip.h"

namespace vorc {

struct InflateResult {
  VzStatus status = kVzOk;
  /// Bytes of the source up to the end of the final block, counted only where all is well.
  size_t consumed = 0;
  /// Bytes of the target that were filled.
  size_t written = 0;
};

/// Expands one raw stream (RFC 1951) at the start of the source.
InflateResult Inflate(std::span<const uint8_t> source, std::span<uint8_t> target);

}  // namespace vorc
