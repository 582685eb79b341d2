#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/descriptor.h"
#include "base/file.h"

namespace vorc {

/// Confines file access to a folder. An empty path lifts the confinement. Without a call, the
/// root is read once from the environment variable MORV_FILE_ROOT, at the first question.
void MorvSandboxSetRoot(std::string_view path);

/// True while a root is set.
bool MorvSandboxActive();

/// The root, a path without links; empty for none.
std::string MorvSandboxRoot();

/// True if a file of this name may be opened. Judged by the real path, also for a file that is
/// about to be created and for a symbolic link, dangling or not.
bool MorvSandboxAllows(const std::string& path);

/// fopen below the sandbox root. Null if refused (with a line on standard error) or not openable.
File MorvSafeFopen(const std::string& path, const char* mode);

/// Where a file stands: its folder, held open, and its name there. No link that is swapped later can
/// turn it elsewhere.
struct FilePlace {
  Descriptor folder;
  std::string name;
};

/// The place of the existing file to which `path` leads, links followed. Nothing if there is none or
/// it is refused, which isn't told: ask by MorvSafeFopen first.
std::optional<FilePlace> MorvSafePlace(const std::string& path);

/// Opens a folder for listing. Empty if it is refused (without a line), missing or no folder.
Descriptor MorvSafeFolder(const std::string& path);

/// True if `path`, a name that was found in a folder, stands for no folder, links followed. With a
/// root set it must stand below, and a link must lead there.
bool MorvSafeIsFile(const std::string& path);

/// Renames within one folder or between two. With a root set, nothing passes its border in either
/// direction, and neither the root nor a folder around it moves: that is told on standard error.
bool MorvSafeRename(const std::string& from, const std::string& to);

/// True if a process may start. Inside a sandbox none may; the refusal is told on standard error.
bool MorvSandboxAllowsExec(std::string_view command);

/// All bytes of a file, opened by MorvSafeFopen. Nothing on any failure, a short read included.
std::optional<std::string> MorvReadWholeFile(const std::string& path);

}  // namespace vorc
