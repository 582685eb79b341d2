#include "lib/file_rewrite.h"

#include <fcntl.h>
#include <unistd.h>

#include <utility>

#include "lib/reading.h"

namespace vorc {

namespace {

constexpr mode_t kPrivate = 0600;

// Owner first: changing it drops the set-user-ID bit. Only the superuser may give a file away, so
// anybody else becomes the owner of the new file, as with any editor that writes a new one.
bool CopyPermissions(const struct stat& status, int to) {
  [[maybe_unused]] const int given = fchown(to, status.st_uid, status.st_gid);
  return fchmod(to, status.st_mode & 07777) == 0;
}

}  // namespace

FileRewrite::FileRewrite(File old, FilePlace place, const struct stat& status)
    : old_(std::move(old)), place_(std::move(place)), status_(status), temporary_(place_.name + ".vztmp") {}

FileRewrite::~FileRewrite() {
  if (place_.folder) RemoveNamed();
}

std::optional<FileRewrite> FileRewrite::Open(const std::string& path) {
  struct stat status {};
  struct stat found {};
  File old = OpenForReading(path);
  if (!old || fstat(fileno(old.get()), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
  auto place = MorvSafePlace(path);
  // The file that is read must be the one that will be replaced.
  if (!place || fstatat(place->folder.get(), place->name.c_str(), &found, AT_SYMLINK_NOFOLLOW) != 0 ||
      found.st_dev != status.st_dev || found.st_ino != status.st_ino) {
    return std::nullopt;
  }
  return FileRewrite(std::move(old), *std::move(place), status);
}

bool FileRewrite::Writable() const {
  return faccessat(place_.folder.get(), place_.name.c_str(), W_OK, AT_EACCESS) == 0;
}

std::optional<std::string> FileRewrite::Read() {
  return ReadToEnd(old_.get());
}

// A file without a name goes with its last descriptor. Where the file system has no such files, the
// new one has its name from the start.
bool FileRewrite::OpenNew() {
  const int folder = place_.folder.get();
  new_ = Descriptor(openat(folder, ".", O_TMPFILE | O_WRONLY | O_CLOEXEC, kPrivate));
  if (new_) return true;
  unlinkat(folder, temporary_.c_str(), 0);
  new_ = Descriptor(
      openat(folder, temporary_.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_NOFOLLOW | O_CLOEXEC, kPrivate));
  named_ = static_cast<bool>(new_);
  return named_;
}

bool FileRewrite::Begin() {
  return OpenNew() && CopyPermissions(status_, new_.get());
}

bool FileRewrite::Append(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = RetryInterrupted([&] { return write(new_.get(), bytes.data(), bytes.size()); });
    if (count < 0) return false;
    bytes.remove_prefix(static_cast<size_t>(count));
  }
  return true;
}

bool FileRewrite::GiveName() {
  if (named_) return true;
  const int folder = place_.folder.get();
  const std::string unnamed = "/proc/self/fd/" + std::to_string(new_.get());
  // A left-over may be a link or a file nobody may write: it goes first.
  unlinkat(folder, temporary_.c_str(), 0);
  named_ = linkat(AT_FDCWD, unnamed.c_str(), folder, temporary_.c_str(), AT_SYMLINK_FOLLOW) == 0;
  return named_;
}

bool FileRewrite::Commit() {
  if (!GiveName()) return false;
  const int folder = place_.folder.get();
  const bool complete = close(new_.Release()) == 0;
  if (complete && renameat(folder, temporary_.c_str(), folder, place_.name.c_str()) == 0) {
    named_ = false;
    return true;
  }
  RemoveNamed();
  return false;
}

void FileRewrite::RemoveNamed() {
  if (named_) unlinkat(place_.folder.get(), temporary_.c_str(), 0);
  named_ = false;
}

}  // namespace vorc
