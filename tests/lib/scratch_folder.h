#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace vorc {

/// A folder of its own for each test, removed behind it.
class ScratchFolder : public testing::Test {
 protected:
  ScratchFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "vorc-test-XXXXXX").string();
    folder_ = mkdtemp(pattern.data());
  }
  ~ScratchFolder() override { std::filesystem::remove_all(folder_); }

  std::string At(const std::string& name) const { return folder_ + "/" + name; }

  /// Writes a file and answers its path.
  std::string Put(const std::string& name, std::string_view bytes) const {
    std::ofstream(At(name), std::ios::binary) << bytes;
    return At(name);
  }

  static std::string Get(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  std::string folder_;
};

}  // namespace vorc
