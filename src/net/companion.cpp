#include "net/companion.h"

#include <dlfcn.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <string_view>

namespace vorc {

namespace {

constexpr size_t kProgramLimit = 767;
constexpr size_t kPathSize = 1024;

// With a slash at the end; empty if it can't be told.
std::string ProgramFolder() {
  std::array<char, kProgramLimit> program{};
  const ssize_t length = readlink("/proc/self/exe", program.data(), program.size());
  if (length <= 0) return "";
  const std::string_view path(program.data(), static_cast<size_t>(length));
  const size_t slash = path.rfind('/');
  return slash == std::string_view::npos ? "" : std::string(path.substr(0, slash + 1));
}

void* OpenIn(const std::string& folder, const std::string& file) {
  const std::string path = folder + file;
  return folder.empty() || path.size() >= kPathSize ? nullptr : dlopen(path.c_str(), RTLD_NOW);
}

}  // namespace

void* OpenBesideProgram(const std::string& file) {
  return OpenIn(ProgramFolder(), file);
}

void* OpenCompanion(const std::string& file) {
  // The linker goes by what the variable held when the program began, whatever a script made of it.
  const char* told = std::getenv("LD_LIBRARY_PATH");
  if (told != nullptr && *told != '\0') {
    if (void* library = dlopen(file.c_str(), RTLD_NOW)) return library;
  }
  const std::string folder = ProgramFolder();
  for (const char* place : {"companions/", "../lib/vorc/companions/"}) {
    if (folder.empty()) break;
    if (void* library = OpenIn(folder + place, file)) return library;
  }
  return dlopen(file.c_str(), RTLD_NOW);
}

}  // namespace vorc
