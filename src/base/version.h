#pragma once

namespace vorc {

/// Number of the release, and the commit that the program was built from: "1.0.0+0123abc", with
/// "-dirty" behind it where the tree held changes of its own.
extern const char* const kVersion;

}  // namespace vorc
