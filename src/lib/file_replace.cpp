#include "lib/file_replace.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <memory>
#include <optional>

#include "base/text_search.h"
#include "lib/reading.h"
#include "lib/sandbox.h"

namespace vorc {

namespace {

constexpr size_t kOutputBlock = size_t{256} * 1024;

struct HeapFree {
  void operator()(char* text) const { std::free(text); }
};

struct Source {
  std::string path;  ///< resolved, so that the new file lands beside the real one
  std::string text;
  struct stat status;
};

std::optional<Source> ReadSource(const std::string& path) {
  Source source;
  const File file = OpenForReading(path);
  if (!file || fstat(fileno(file.get()), &source.status) != 0 || !S_ISREG(source.status.st_mode)) {
    return std::nullopt;
  }
  const std::unique_ptr<char, HeapFree> real(realpath(path.c_str(), nullptr));
  std::optional<std::string> text = ReadToEnd(file.get());
  if (!real || !text) return std::nullopt;
  source.path = real.get();
  source.text = *std::move(text);
  return source;
}

// Owner first: changing it drops the set-user-ID bit. Only the superuser may give a file away, so
// anybody else becomes the owner of the new file, as with any editor that writes a new one.
bool CopyPermissions(const struct stat& status, std::FILE* to) {
  const int descriptor = fileno(to);
  [[maybe_unused]] const int given = fchown(descriptor, status.st_uid, status.st_gid);
  return fchmod(descriptor, status.st_mode & 07777) == 0;
}

bool Flush(std::string& pending, std::FILE* to) {
  const bool written = std::fwrite(pending.data(), 1, pending.size(), to) == pending.size();
  pending.clear();
  return written;
}

// Writes the text with `from` replaced by `to`; answers the count of replacements.
std::optional<int32_t> WriteReplaced(std::string_view text, std::string_view from, std::string_view to,
                                     std::FILE* out) {
  std::string pending;
  int32_t count = 0;
  size_t at = 0;
  for (size_t hit; (hit = FindBytes(text, from, at)) != std::string_view::npos; at = hit + from.size()) {
    pending.append(text, at, hit - at).append(to);
    ++count;
    if (pending.size() >= kOutputBlock && !Flush(pending, out)) return std::nullopt;
  }
  pending.append(text, at);
  if (!Flush(pending, out)) return std::nullopt;
  return count;
}

std::optional<int32_t> WriteTemporary(const Source& source, std::string_view from, std::string_view to,
                                      const std::string& path) {
  File file = MorvSafeFopen(path, "wb");
  if (!file) return std::nullopt;
  std::optional<int32_t> count;
  if (CopyPermissions(source.status, file.get())) {
    std::setvbuf(file.get(), nullptr, _IONBF, 0);
    count = WriteReplaced(source.text, from, to, file.get());
  }
  return std::fclose(file.release()) == 0 ? count : std::nullopt;
}

}  // namespace

int32_t MorvFileReplace(const std::string& path, std::string_view from, std::string_view to) {
  if (from.empty()) return -1;
  const std::optional<Source> source = ReadSource(path);
  if (!source) return -1;
  if (FindBytes(source->text, from) == std::string_view::npos) return 0;

  const std::string temporary = source->path + ".vztmp";
  // A left-over may be a link or a file nobody may write: it goes first.
  unlink(temporary.c_str());
  const std::optional<int32_t> count = WriteTemporary(*source, from, to, temporary);
  if (count && std::rename(temporary.c_str(), source->path.c_str()) == 0) return *count;
  unlink(temporary.c_str());
  return -1;
}

}  // namespace vorc
