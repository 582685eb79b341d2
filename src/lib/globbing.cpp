#include "lib/globbing.h"

#include <glob.h>

#include "lib/sandbox.h"
#include "lib/tree_walk.h"
#include "lib/wildcard.h"

namespace vorc {

namespace {

constexpr size_t kPathLimit = 1024;

class HostGlob {
 public:
  explicit HostGlob(const std::string& pattern) {
    found_ = glob(pattern.c_str(), 0, nullptr, &matches_) == 0;
  }
  ~HostGlob() { globfree(&matches_); }
  HostGlob(const HostGlob&) = delete;
  HostGlob& operator=(const HostGlob&) = delete;

  size_t Count() const { return found_ ? matches_.gl_pathc : 0; }
  std::string Path(size_t i) const { return matches_.gl_pathv[i]; }

 private:
  glob_t matches_{};
  bool found_;
};

}  // namespace

std::vector<std::string> MorvGlob(const std::string& pattern) {
  const HostGlob matches(pattern);
  std::vector<std::string> names;
  for (size_t i = 0; i < matches.Count(); ++i) {
    const std::string path = matches.Path(i);
    // Asked again below the root, since a link may have led the host's glob out of it.
    if (MorvSafeIsFile(path)) names.push_back(path.substr(path.rfind('/') + 1));
  }
  return names;
}

std::vector<std::string> MorvGlobR(const std::string& dir, std::string_view pattern) {
  std::vector<std::string> paths;
  WalkTree(dir, [&](const std::string& path, const std::string& name, mode_t) {
    if (path.size() < kPathLimit && morv_util_wild(pattern, name)) paths.push_back(path);
  });
  return paths;
}

}  // namespace vorc
