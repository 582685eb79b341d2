// Feeds every file of the given folders to a fuzz target, so that inputs that once were trouble are
// tried by each build, with any compiler.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {

std::vector<std::filesystem::path> FilesBelow(const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    if (entry.is_regular_file()) files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

void RunFile(const std::filesystem::path& path) {
  std::printf("%s\n", path.c_str());
  std::fflush(stdout);
  std::ifstream in(path, std::ios::binary);
  const std::string content{std::istreambuf_iterator<char>(in), {}};
  LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(content.data()), content.size());
}

}  // namespace

int main(int argc, char** argv) {
  size_t count = 0;
  for (int i = 1; i < argc; ++i) {
    for (const std::filesystem::path& path : FilesBelow(argv[i])) {
      RunFile(path);
      ++count;
    }
  }
  return count > 0 ? 0 : 1;
}
