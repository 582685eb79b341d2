#include "netstore/confinement.h"

#include <limits.h>
#include <strings.h>
#include <sys/stat.h>

#include <array>
#include <cstdlib>
#include <cstring>

namespace vorc {

namespace {

constexpr const char* kName = "confined";

std::string& Root() {
  static std::string root;
  return root;
}

sqlite3_vfs* Base() {
  static sqlite3_vfs* const base = sqlite3_vfs_find(nullptr);
  return base;
}

int Open(sqlite3_vfs*, const char* path, sqlite3_file* file, int flags, int* told) {
  file->pMethods = nullptr;
  // Without a name it would be a file in a folder for temporary files.
  if (path == nullptr || !IsConfined(Root(), path)) return SQLITE_CANTOPEN;
  return Base()->xOpen(Base(), path, file, flags | SQLITE_OPEN_NOFOLLOW, told);
}

int Delete(sqlite3_vfs*, const char* path, int synchronize) {
  if (!IsConfined(Root(), path)) return SQLITE_IOERR_DELETE;
  return Base()->xDelete(Base(), path, synchronize);
}

int Access(sqlite3_vfs*, const char* path, int flags, int* result) {
  *result = 0;
  return IsConfined(Root(), path) ? Base()->xAccess(Base(), path, flags, result) : SQLITE_OK;
}

int FullPathname(sqlite3_vfs*, const char* path, int size, char* out) {
  return Base()->xFullPathname(Base(), path, size, out);
}

void* NoLibrary(sqlite3_vfs*, const char*) {
  return nullptr;
}

int Randomness(sqlite3_vfs*, int size, char* out) {
  return Base()->xRandomness(Base(), size, out);
}

int Sleep(sqlite3_vfs*, int microseconds) {
  return Base()->xSleep(Base(), microseconds);
}

int CurrentTime(sqlite3_vfs*, double* now) {
  return Base()->xCurrentTime(Base(), now);
}

int GetLastError(sqlite3_vfs*, int size, char* out) {
  return Base()->xGetLastError(Base(), size, out);
}

int CurrentTimeInt64(sqlite3_vfs*, sqlite3_int64* now) {
  return Base()->xCurrentTimeInt64(Base(), now);
}

bool StartsWith(const char* text, const char* start) {
  return strncasecmp(text, start, std::strlen(start)) == 0;
}

// An empty name is a file without one, which lives in memory here.
bool AttachAllowed(const char* name) {
  if (name == nullptr || StartsWith(name, "file:")) return false;
  return *name == '\0' || std::strcmp(name, ":memory:") == 0 || IsConfined(Root(), name);
}

bool PragmaAllowed(const char* name) {
  return !StartsWith(name, "temp_store") && !StartsWith(name, "data_store_directory");
}

}  // namespace

bool IsConfined(const std::string& root, const std::string& path) {
  const size_t slash = path.rfind('/');
  const std::string folder = slash == std::string::npos ? "." : path.substr(0, slash + 1);
  const std::string name = path.substr(slash + 1);
  if (name.empty() || name == "." || name == "..") return false;
  std::array<char, PATH_MAX> real{};
  if (realpath(folder.c_str(), real.data()) == nullptr) return false;
  const std::string place = std::string(real.data()) + "/";
  if (!place.starts_with(root == "/" ? root : root + "/")) return false;
  struct stat status {};
  return lstat((place + name).c_str(), &status) != 0 || !S_ISLNK(status.st_mode);
}

const char* ConfinedFileSystem(const std::string& root) {
  static sqlite3_vfs confined{};
  if (confined.zName != nullptr) return kName;
  Root() = root;
  confined.iVersion = 2;
  confined.szOsFile = Base()->szOsFile;
  confined.mxPathname = Base()->mxPathname;
  confined.zName = kName;
  confined.xOpen = Open;
  confined.xDelete = Delete;
  confined.xAccess = Access;
  confined.xFullPathname = FullPathname;
  confined.xDlOpen = NoLibrary;
  confined.xRandomness = Randomness;
  confined.xSleep = Sleep;
  confined.xCurrentTime = CurrentTime;
  confined.xGetLastError = GetLastError;
  confined.xCurrentTimeInt64 = CurrentTimeInt64;
  sqlite3_vfs_register(&confined, 0);
  return kName;
}

bool ConfinedActionAllowed(int action, const char* first, const char* second) {
  switch (action) {
    case SQLITE_ATTACH: return AttachAllowed(first);
    case SQLITE_PRAGMA: return PragmaAllowed(first);
    case SQLITE_FUNCTION: return strcasecmp(second, "load_extension") != 0;
    default: return true;
  }
}

}  // namespace vorc
