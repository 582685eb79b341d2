#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/file.h"

namespace vorc {

/// Confines file access to a folder. An empty path lifts the confinement. Without a call, the
/// root is read once from the environment variable MORV_FILE_ROOT, at the first question.
void MorvSandboxSetRoot(std::string_view path);

/// True while a root is set.
bool MorvSandboxActive();

/// True if a file of this name may be opened. Judged by the real path, also for a file that is
/// about to be created and for a symbolic link, dangling or not.
bool MorvSandboxAllows(const std::string& path);

/// fopen below the sandbox root. Null if refused (with a line on standard error) or not openable.
File MorvSafeFopen(const std::string& path, const char* mode);

/// True if a process may start. Inside a sandbox none may; the refusal is told on standard error.
bool MorvSandboxAllowsExec(std::string_view command);

/// All bytes of a file, opened by MorvSafeFopen. Nothing on any failure, a short read included.
std::optional<std::string> MorvReadWholeFile(const std::string& path);

}  // namespace vorc
