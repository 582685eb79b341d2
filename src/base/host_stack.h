#pragma once

#include <cstddef>

namespace vorc {

/// Tells that the calling thread runs on a stack of its own making, of `size` bytes from `start` on.
void UseHostStack(const char* start, size_t size);
/// True once the calling thread has used up so much of its stack that nothing may nest deeper.
bool HostStackLow();

}  // namespace vorc
