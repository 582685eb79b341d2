#pragma once

#include <sys/stat.h>

#include <cstdio>
#include <string>

#include "base/function_ref.h"

namespace vorc {

/// Writes a new file, which takes the place of `path` only when it is complete. The new text goes to
/// a file named "%s.vztmp" beside the old one, with the owner and permission bits of `old`, if that
/// isn't null. False if `write` answers false or anything fails, up to the closing; the old file is
/// then as it was. `path` must not be a symbolic link, which would be replaced itself.
bool ReplaceWholeFile(const std::string& path, const struct stat* old, FunctionRef<bool(std::FILE*)> write);

/// The same through MorvSafeFopen's eyes, for a path that may be new, a link, or no regular file at
/// all; what can't be replaced, a device for example, is written to directly.
bool MorvWriteWholeFile(const std::string& path, FunctionRef<bool(std::FILE*)> write);

}  // namespace vorc
