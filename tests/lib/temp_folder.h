#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace vorc {

/// A fresh folder that is removed at the end of its scope.
class TempFolder {
 public:
  TempFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "vorc_XXXXXX").string();
    path_ = std::filesystem::canonical(mkdtemp(name.data()));
  }
  TempFolder(const TempFolder&) = delete;
  ~TempFolder() { std::filesystem::remove_all(path_); }

  std::string operator/(std::string_view name) const { return (path_ / name).string(); }
  std::string path() const { return path_.string(); }

  /// Writes a file and answers its path.
  std::string Write(std::string_view name, std::string_view text) const {
    std::ofstream(path_ / name, std::ios::binary) << text;
    return *this / name;
  }

 private:
  std::filesystem::path path_;
};

inline std::string FileText(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// How many descriptors this process has open.
inline long OpenDescriptors() {
  return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

}  // namespace vorc
