#include "lib/sandbox.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <mutex>

#include "base/console.h"
#include "base/format.h"

namespace vorc {

namespace {

// As many links in a row as the kernel follows before it calls them a loop.
constexpr int kMaxLinks = 40;

struct Root {
  std::mutex lock;
  bool known = false;
  std::string path;
};

// Never destroyed: script threads may still ask while the process ends.
Root& TheRoot() {
  static Root& root = *new Root;
  return root;
}

std::optional<std::string> RealPath(const std::string& path) {
  char* resolved = realpath(path.c_str(), nullptr);
  if (resolved == nullptr) return std::nullopt;
  std::string text(resolved);
  std::free(resolved);
  return text;
}

std::optional<std::string> LinkTarget(const std::string& path) {
  std::string target(4096, '\0');
  const ssize_t length = readlink(path.c_str(), target.data(), target.size());
  if (length < 0 || static_cast<size_t>(length) == target.size()) return std::nullopt;
  target.resize(static_cast<size_t>(length));
  return target;
}

void SetRootLocked(Root& root, std::string_view path) {
  root.known = true;
  root.path.clear();
  if (path.empty()) return;
  const std::string given(path);
  root.path = RealPath(given).value_or(given);
  while (root.path.size() > 1 && (root.path.back() == '/' || root.path.back() == '\\')) root.path.pop_back();
}

std::string CurrentRoot() {
  Root& root = TheRoot();
  const std::lock_guard guard(root.lock);
  if (!root.known) {
    const char* path = std::getenv("MORV_FILE_ROOT");
    SetRootLocked(root, path == nullptr ? "" : path);
  }
  return root.path;
}

std::string Join(const std::string& folder, const std::string& name) {
  return folder.ends_with('/') ? folder + name : folder + "/" + name;
}

std::string FolderPart(const std::string& path, size_t slash) {
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

// Where opening `path` leads, without any link left in it. The last component need not exist; if
// it is a link to nothing, the place counts where the link would create its file.
std::optional<std::string> ResolveForOpen(std::string path) {
  for (int links = 0; links < kMaxLinks; ++links) {
    if (auto real = RealPath(path)) return real;
    const size_t slash = path.rfind('/');
    const std::string name = path.substr(slash + 1);
    if (name == "." || name == "..") return std::nullopt;
    const auto folder = RealPath(FolderPart(path, slash));
    if (!folder) return std::nullopt;
    const auto target = LinkTarget(Join(*folder, name));
    if (!target) return Join(*folder, name);
    path = target->starts_with('/') ? *target : Join(*folder, *target);
  }
  return std::nullopt;
}

bool IsBelow(const std::string& root, const std::string& path) {
  if (root == "/") return true;
  if (!path.starts_with(root)) return false;
  return path.size() == root.size() || path[root.size()] == '/' || path[root.size()] == '\\';
}

// The link-free form of `path` if it lies below the root.
std::optional<std::string> ResolveBelow(const std::string& root, const std::string& path) {
  if (path.empty() || path.find('\0') != std::string::npos) return std::nullopt;
  auto real = ResolveForOpen(path);
  if (!real || !IsBelow(root, *real)) return std::nullopt;
  return real;
}

// The folder of an absolute path, reached one component at a time without following a link, so that
// what was judged is what is opened, even if somebody puts a link there in between.
std::optional<FilePlace> PlaceWithoutLinks(const std::string& path) {
  FilePlace place{Descriptor(open("/", O_PATH | O_DIRECTORY | O_CLOEXEC)), "."};
  size_t start = 1;
  for (size_t slash; place.folder && (slash = path.find('/', start)) != std::string::npos;
       start = slash + 1) {
    const std::string name = path.substr(start, slash - start);
    place.folder =
        Descriptor(openat(place.folder.get(), name.c_str(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
  }
  if (!place.folder) return std::nullopt;
  if (path.size() > 1) place.name = path.substr(start);
  return place;
}

int OpenWithoutLinks(const std::string& path, int flags) {
  const auto place = PlaceWithoutLinks(path);
  if (!place) return -1;
  return RetryInterrupted(
      [&] { return openat(place->folder.get(), place->name.c_str(), flags | O_NOFOLLOW, 0666); });
}

bool StatusWithoutLinks(const std::string& path, struct stat* status) {
  const auto place = PlaceWithoutLinks(path);
  return place && fstatat(place->folder.get(), place->name.c_str(), status, AT_SYMLINK_NOFOLLOW) == 0;
}

std::optional<int> OpenFlags(std::string_view mode) {
  if (mode.empty()) return std::nullopt;
  const bool both = mode.find('+') != std::string_view::npos;
  const int exclusive = mode.find('x') != std::string_view::npos ? O_EXCL : 0;
  const int access = O_CLOEXEC | (both ? O_RDWR : mode[0] == 'r' ? O_RDONLY : O_WRONLY);
  switch (mode[0]) {
    case 'r': return access;
    case 'w': return access | O_CREAT | O_TRUNC | exclusive;
    case 'a': return access | O_CREAT | O_APPEND | exclusive;
    default: return std::nullopt;
  }
}

void Refuse(const std::string& root, const std::string& path) {
  WriteErrors(Format("morv: refused '%s' - outside MORV_FILE_ROOT (%s)\n", path.c_str(), root.c_str()));
}

int OpenInRoot(const std::string& root, const std::string& path, int flags) {
  if (root.empty()) {
    return RetryInterrupted([&] { return open(path.c_str(), flags, 0666); });
  }
  const auto real = ResolveBelow(root, path);
  if (real) return OpenWithoutLinks(*real, flags);
  Refuse(root, path);
  errno = EACCES;
  return -1;
}

// What a rename moves: an entry of a folder, which may be a link and is then not followed.
struct Entry {
  std::string folder;  ///< without links
  std::string name;
  bool as_folder;  ///< a slash behind the name asks for a folder

  std::string path() const { return Join(folder, name); }
};

std::optional<Entry> EntryOf(std::string path) {
  Entry entry{"", "", path.ends_with('/')};
  while (path.size() > 1 && path.ends_with('/')) path.pop_back();
  const size_t slash = path.rfind('/');
  entry.name = path.substr(slash + 1);
  const auto folder = RealPath(FolderPart(path, slash));
  if (!folder || entry.name.empty() || entry.name == "." || entry.name == "..") return std::nullopt;
  entry.folder = *folder;
  return entry;
}

enum class Side { kInside, kOutside, kBorder };

Side SideOf(const std::string& root, const std::string& path) {
  if (path != root && IsBelow(root, path)) return Side::kInside;
  return IsBelow(path, root) ? Side::kBorder : Side::kOutside;
}

// Renames in folders that are held open, where no link can be put in the way any more.
bool RenameEntries(const Entry& from, const Entry& to) {
  const auto old_place = PlaceWithoutLinks(from.path());
  const auto new_place = PlaceWithoutLinks(to.path());
  if (!old_place || !new_place) return false;
  struct stat status {};
  const bool must_be_folder = from.as_folder || to.as_folder;
  if (must_be_folder &&
      (fstatat(old_place->folder.get(), from.name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0 ||
       !S_ISDIR(status.st_mode))) {
    return false;
  }
  return renameat(old_place->folder.get(), from.name.c_str(), new_place->folder.get(), to.name.c_str()) == 0;
}

// How many bytes a file must yield at least: nothing for what has no size, folders and pipes.
std::optional<size_t> PromisedSize(int descriptor, const struct stat& status) {
  if (S_ISREG(status.st_mode)) return static_cast<size_t>(status.st_size);
  if (S_ISDIR(status.st_mode)) return std::nullopt;
  const off_t end = lseek(descriptor, 0, SEEK_END);
  if (end < 0 || lseek(descriptor, 0, SEEK_SET) != 0) return std::nullopt;
  return static_cast<size_t>(end);
}

// Reads until `text` is full or the file ends, and cuts `text` to what was there.
bool FillFrom(int descriptor, std::string& text, size_t filled) {
  while (filled < text.size()) {
    const ssize_t count =
        RetryInterrupted([&] { return read(descriptor, text.data() + filled, text.size() - filled); });
    if (count < 0) return false;
    if (count == 0) break;
    filled += static_cast<size_t>(count);
  }
  text.resize(filled);
  return true;
}

std::optional<std::string> ReadAll(int descriptor) {
  struct stat status {};
  if (fstat(descriptor, &status) != 0) return std::nullopt;
  const auto promised = PromisedSize(descriptor, status);
  if (!promised) return std::nullopt;
  std::string text(*promised, '\0');
  if (!FillFrom(descriptor, text, 0) || text.size() < *promised) return std::nullopt;
  // Files that the kernel makes up as they are read call themselves empty.
  constexpr size_t kPiece = size_t{64} * 1024;
  while (S_ISREG(status.st_mode) && status.st_size == 0) {
    const size_t before = text.size();
    text.resize(before + kPiece);
    if (!FillFrom(descriptor, text, before)) return std::nullopt;
    if (text.size() == before) break;
  }
  return text;
}

}  // namespace

void MorvSandboxSetRoot(std::string_view path) {
  Root& root = TheRoot();
  const std::lock_guard guard(root.lock);
  SetRootLocked(root, path);
}

bool MorvSandboxActive() {
  return !CurrentRoot().empty();
}

std::string MorvSandboxRoot() {
  return CurrentRoot();
}

bool MorvSandboxAllows(const std::string& path) {
  const std::string root = CurrentRoot();
  return root.empty() || ResolveBelow(root, path).has_value();
}

File MorvSafeFopen(const std::string& path, const char* mode) {
  const auto flags = OpenFlags(mode);
  if (!flags) return nullptr;
  Descriptor descriptor(OpenInRoot(CurrentRoot(), path, *flags));
  if (!descriptor) return nullptr;
  File file(fdopen(descriptor.get(), mode));
  if (file != nullptr) descriptor.Release();
  return file;
}

std::optional<FilePlace> MorvSafePlace(const std::string& path) {
  const std::string root = CurrentRoot();
  const auto real = root.empty() ? RealPath(path) : ResolveBelow(root, path);
  return real ? PlaceWithoutLinks(*real) : std::nullopt;
}

Descriptor MorvSafeFolder(const std::string& path) {
  constexpr int kFlags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;
  const std::string root = CurrentRoot();
  if (root.empty()) return Descriptor(open(path.c_str(), kFlags));
  const auto real = ResolveBelow(root, path);
  return Descriptor(real ? OpenWithoutLinks(*real, kFlags) : -1);
}

bool MorvSafeIsFile(const std::string& path) {
  struct stat status {};
  const std::string root = CurrentRoot();
  if (root.empty()) return stat(path.c_str(), &status) != 0 || !S_ISDIR(status.st_mode);
  const auto entry = EntryOf(path);
  if (!entry || !IsBelow(root, entry->path()) || !StatusWithoutLinks(entry->path(), &status)) return false;
  if (!S_ISLNK(status.st_mode)) return !S_ISDIR(status.st_mode);
  const auto real = ResolveBelow(root, path);
  return real && (!StatusWithoutLinks(*real, &status) || !S_ISDIR(status.st_mode));
}

bool MorvSafeRename(const std::string& from, const std::string& to) {
  const std::string root = CurrentRoot();
  if (root.empty()) return std::rename(from.c_str(), to.c_str()) == 0;
  const auto old_entry = EntryOf(from);
  const auto new_entry = EntryOf(to);
  if (!old_entry || !new_entry) return false;
  const Side old_side = SideOf(root, old_entry->path());
  const Side new_side = SideOf(root, new_entry->path());
  if (old_side == new_side && old_side != Side::kBorder) return RenameEntries(*old_entry, *new_entry);
  Refuse(root, old_side == Side::kInside ? to : from);
  return false;
}

bool MorvSandboxAllowsExec(std::string_view command) {
  const std::string root = CurrentRoot();
  if (root.empty()) return true;
  const std::string shown = command.data() == nullptr ? "(a command)" : std::string(command);
  WriteErrors(Format("morv: refused to run '%s' - no process may start inside MORV_FILE_ROOT (%s)\n",
                     shown.c_str(), root.c_str()));
  return false;
}

std::optional<std::string> MorvReadWholeFile(const std::string& path) {
  const File file = MorvSafeFopen(path, "rb");
  if (file == nullptr) return std::nullopt;
  try {
    return ReadAll(fileno(file.get()));
  } catch (const std::exception&) {  // larger than memory
    return std::nullopt;
  }
}

}  // namespace vorc
