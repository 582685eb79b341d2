#pragma once

#include <cstddef>
#include <string>

namespace vorc {

/// The content of a script file between <script> and </script>, and its hash remembered. Empty text
/// if the file can't be read.
std::string MorvScriptTag(const std::string& file);

/// The hash of a script file as a content security policy takes it, 'sha256-...', and remembered.
/// Empty text if the file can't be read.
std::string MorvScriptSrc(const std::string& file);

/// The distinct hashes remembered so far, the first 16 of them, with blanks between; as many as fit
/// into `capacity` bytes with a NUL.
std::string MorvScriptSrcs(size_t capacity);

}  // namespace vorc
