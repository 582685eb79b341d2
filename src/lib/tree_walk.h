#pragma once

#include <sys/types.h>

#include <functional>
#include <string>
#include <vector>

#include "base/descriptor.h"

namespace vorc {

/// A name in a folder.
struct FolderEntry {
  std::string name;
  mode_t mode;  ///< its kind as in st_mode, of a link itself; 0 if it can't be told
};

/// All names in an open folder but "." and "..", in the folder's order.
std::vector<FolderEntry> ListFolder(const Descriptor& folder);

/// Takes a file below the tree: its path, its base name, and its kind as in st_mode.
using TreeVisitor = std::function<void(const std::string& path, const std::string& name, mode_t mode)>;

/// Visits all that is no directory below `dir`, names in byte order, 65 levels deep. Symbolic links
/// are visited, never followed. What can't be read, or lies outside the sandbox, is left out.
void WalkTree(const std::string& dir, const TreeVisitor& visit);

/// The path of `name` within `dir`.
std::string JoinedPath(const std::string& dir, const std::string& name);

}  // namespace vorc
