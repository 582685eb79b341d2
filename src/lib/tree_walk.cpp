#include "lib/tree_walk.h"

#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <vector>

#include "lib/sandbox.h"

namespace vorc {

namespace {

constexpr int kDeepestLevel = 65;

std::vector<std::string> SortedNames(const std::string& dir) {
  std::vector<std::string> names;
  std::error_code error;
  for (std::filesystem::directory_iterator entry(dir, error), end; !error && entry != end;
       entry.increment(error)) {
    names.push_back(entry->path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

void WalkLevel(const std::string& dir, const TreeVisitor& visit, int level) {
  for (const std::string& name : SortedNames(dir)) {
    const std::string path = JoinedPath(dir, name);
    struct stat status;
    if (lstat(path.c_str(), &status) != 0) continue;
    if (!S_ISDIR(status.st_mode)) {
      visit(path, name, status.st_mode);
    } else if (level < kDeepestLevel) {
      WalkLevel(path, visit, level + 1);
    }
  }
}

}  // namespace

std::string JoinedPath(const std::string& dir, const std::string& name) {
  return dir.ends_with('/') ? dir + name : dir + "/" + name;
}

void WalkTree(const std::string& dir, const TreeVisitor& visit) {
  if (MorvSandboxAllows(dir)) WalkLevel(dir, visit, 1);
}

}  // namespace vorc
