#include "lib/whole_file.h"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <memory>

#include "lib/sandbox.h"

namespace vorc {

namespace {

struct HeapFree {
  void operator()(char* text) const { std::free(text); }
};

// Owner first: changing it drops the set-user-ID bit. Only the superuser may give a file away, so
// anybody else becomes the owner of the new file, as with any editor that writes a new one.
bool CopyPermissions(const struct stat& status, std::FILE* to) {
  const int descriptor = fileno(to);
  [[maybe_unused]] const int given = fchown(descriptor, status.st_uid, status.st_gid);
  return fchmod(descriptor, status.st_mode & 07777) == 0;
}

bool WriteAndClose(File file, const struct stat* old, FunctionRef<bool(std::FILE*)> write) {
  if (!file) return false;
  const bool written = (old == nullptr || CopyPermissions(*old, file.get())) && write(file.get());
  return std::fclose(file.release()) == 0 && written;
}

bool IsLink(const std::string& path) {
  struct stat status;
  return lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode);
}

}  // namespace

bool ReplaceWholeFile(const std::string& path, const struct stat* old, FunctionRef<bool(std::FILE*)> write) {
  const std::string temporary = path + ".vztmp";
  // A left-over may be a link or a file nobody may write: it goes first.
  unlink(temporary.c_str());
  if (WriteAndClose(MorvSafeFopen(temporary, "wb"), old, write) &&
      std::rename(temporary.c_str(), path.c_str()) == 0) {
    return true;
  }
  unlink(temporary.c_str());
  return false;
}

bool MorvWriteWholeFile(const std::string& path, FunctionRef<bool(std::FILE*)> write) {
  const File old = MorvSafeFopen(path, "r+b");
  if (!old) {
    if (errno != ENOENT) return false;
    // A link to nothing: what it creates can't be told apart by its name.
    if (IsLink(path)) return WriteAndClose(MorvSafeFopen(path, "wb"), nullptr, write);
    return ReplaceWholeFile(path, nullptr, write);
  }
  struct stat status;
  const std::unique_ptr<char, HeapFree> real(realpath(path.c_str(), nullptr));
  if (fstat(fileno(old.get()), &status) != 0 || !real) return false;
  if (!S_ISREG(status.st_mode)) return WriteAndClose(MorvSafeFopen(path, "wb"), nullptr, write);
  return ReplaceWholeFile(real.get(), &status, write);
}

}  // namespace vorc
