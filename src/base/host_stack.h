#pragma once

namespace vorc {

/// True once the calling thread has used up so much of its stack that nothing may nest deeper.
bool HostStackLow();

}  // namespace vorc
