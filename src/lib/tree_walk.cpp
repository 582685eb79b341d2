#include "lib/tree_walk.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <memory>
#include <string_view>

#include "lib/sandbox.h"

namespace vorc {

namespace {

constexpr int kDeepestLevel = 65;

struct FolderCloser {
  void operator()(DIR* folder) const { closedir(folder); }
};

// Most file systems tell a name's kind with the name; the others are asked.
mode_t KindOf(int folder, const dirent& entry) {
  if (entry.d_type != DT_UNKNOWN) return DTTOIF(entry.d_type);
  struct stat status {};
  return fstatat(folder, entry.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0 ? status.st_mode : 0;
}

// Each folder is opened from the one above, so that no link put in the way leads the walk elsewhere.
void WalkLevel(const Descriptor& folder, const std::string& dir, const TreeVisitor& visit, int level) {
  std::vector<FolderEntry> entries = ListFolder(folder);
  std::sort(entries.begin(), entries.end(),
            [](const FolderEntry& a, const FolderEntry& b) { return a.name < b.name; });
  for (const FolderEntry& entry : entries) {
    const std::string path = JoinedPath(dir, entry.name);
    if (entry.mode != 0 && !S_ISDIR(entry.mode)) {
      visit(path, entry.name, entry.mode);
    } else if (level < kDeepestLevel) {
      const Descriptor below(
          openat(folder.get(), entry.name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
      if (below) WalkLevel(below, path, visit, level + 1);
    }
  }
}

}  // namespace

std::vector<FolderEntry> ListFolder(const Descriptor& folder) {
  std::vector<FolderEntry> entries;
  Descriptor copy(fcntl(folder.get(), F_DUPFD_CLOEXEC, 0));
  const std::unique_ptr<DIR, FolderCloser> list(copy ? fdopendir(copy.get()) : nullptr);
  if (list == nullptr) return entries;
  copy.Release();
  while (const dirent* entry = readdir(list.get())) {
    const std::string_view name = entry->d_name;
    if (name != "." && name != "..") entries.push_back({std::string(name), KindOf(folder.get(), *entry)});
  }
  return entries;
}

std::string JoinedPath(const std::string& dir, const std::string& name) {
  return dir.ends_with('/') ? dir + name : dir + "/" + name;
}

void WalkTree(const std::string& dir, const TreeVisitor& visit) {
  if (const Descriptor folder = MorvSafeFolder(dir)) WalkLevel(folder, dir, visit, 1);
}

}  // namespace vorc
