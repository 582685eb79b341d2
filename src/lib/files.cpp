#include "lib/files.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <limits>
#include <optional>
#include <utility>

#include "base/console.h"
#include "base/format.h"
#include "base/text_search.h"
#include "lib/reading.h"
#include "lib/sandbox.h"

namespace vorc {

namespace {

constexpr size_t kSearchWindow = 8191;
constexpr size_t kLongestNeedle = 4096;

void ReportTooLarge(const std::string& path, size_t size, size_t limit) {
  WriteErrors(
      Format("morv_file_read: '%s' is %ld bytes but the limit is %d - returning \"\" rather than a truncated "
             "copy.\n"
             "                Writing a truncated read back to disk would destroy the rest of the file.\n"
             "                Use morv_fopen/morv_fgets/morv_feof to stream a file of any size.\n",
             path.c_str(), static_cast<long>(size), static_cast<int>(limit)));
}

bool Put(std::string_view bytes, std::FILE* file) {
  return bytes.empty() || std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
}

// A full disk may show only when the last buffered bytes leave for it, at the close.
bool WriteAndClose(File file, std::string_view text, std::string_view end) {
  if (!file) return false;
  const bool written = Put(text, file.get()) && Put(end, file.get());
  return std::fclose(file.release()) == 0 && written;
}

// What may be the beginning of a match that goes on in the next window. No match spans a NUL.
std::string_view OverlapForNextWindow(std::string_view window, size_t needle_size) {
  const std::string_view tail = window.substr(window.size() - std::min(window.size(), needle_size - 1));
  return tail.substr(tail.rfind('\0') + 1);
}

}  // namespace

std::string MorvFileRead(const std::string& path, size_t limit) {
  const File file = OpenForReading(path);
  if (!file) return {};
  size_t size = RegularFileSize(file.get()).value_or(0);
  std::string text;
  if (size < limit) {
    text.resize(limit);
    text.resize(std::fread(text.data(), 1, limit, file.get()));
    size = text.size();
  }
  if (size >= limit) {
    ReportTooLarge(path, size, limit);
    return {};
  }
  return std::ferror(file.get()) ? std::string() : text;
}

bool MorvFileWrite(const std::string& path, std::string_view text) {
  return WriteAndClose(MorvSafeFopen(path, "wb"), text, "");
}

bool MorvFileAppendLine(const std::string& path, std::string_view text) {
  return WriteAndClose(MorvSafeFopen(path, "ab"), text, "\n");
}

int32_t MorvFileContains(const std::string& path, std::string_view needle) {
  if (needle.size() > kLongestNeedle) return -1;
  if (needle.empty()) return 1;
  const File file = OpenForReading(path);
  if (!file) return -1;
  std::string window;
  while (true) {
    const size_t kept = window.size();
    window.resize(kSearchWindow);
    window.resize(kept + std::fread(window.data() + kept, 1, kSearchWindow - kept, file.get()));
    if (std::ferror(file.get())) return -1;
    if (window.size() == kept) return 0;
    const std::string_view visible = std::string_view(window).substr(0, window.find('\0'));
    if (FindBytes(visible, needle) != std::string_view::npos) return 1;
    window = std::string(OverlapForNextWindow(window, needle.size()));
  }
}

int32_t MorvFileDiff(const std::string& path_a, const std::string& path_b) {
  File file_a = OpenForReading(path_a);
  File file_b = OpenForReading(path_b);
  if (!file_a || !file_b) return -1;
  LineReader a(std::move(file_a));
  LineReader b(std::move(file_b));
  for (int32_t number = 1;; ++number) {
    const std::optional<std::string_view> line_a = a.NextLine();
    const std::optional<std::string_view> line_b = b.NextLine();
    if (a.failed() || b.failed()) return -1;
    if (!line_a && !line_b) return 0;
    if (!line_a || !line_b || WithoutLineEnd(*line_a) != WithoutLineEnd(*line_b)) return number;
  }
}

int32_t MorvFileLines(const std::string& path) {
  const File file = OpenForReading(path);
  if (!file) return -1;
  std::string block(LineReader::kBlockSize, '\0');
  size_t lines = 0;
  char last = '\n';
  while (const size_t got = std::fread(block.data(), 1, block.size(), file.get())) {
    lines += CountByte(std::string_view(block).substr(0, got), '\n');
    last = block[got - 1];
  }
  if (std::ferror(file.get())) return -1;
  return static_cast<int32_t>(lines + (last == '\n' ? 0 : 1));
}

std::string MorvFileLine(const std::string& path, int32_t number) {
  if (number < 1) return {};
  File file = OpenForReading(path);
  if (!file) return {};
  LineReader reader(std::move(file));
  std::optional<std::string_view> line = reader.NextLine();
  for (int32_t i = 1; line && i < number; ++i) line = reader.NextLine();
  return line ? std::string(WithoutLineEnd(*line)) : std::string();
}

int32_t MorvFileSize(const std::string& path) {
  const File file = OpenForReading(path);
  const size_t size = file ? RegularFileSize(file.get()).value_or(0) : 0;
  return static_cast<int32_t>(std::min<size_t>(size, std::numeric_limits<int32_t>::max()));
}

bool MorvFileExists(const std::string& path) {
  struct stat status;
  return stat(path.c_str(), &status) == 0;
}

int32_t MorvFileMtime(const std::string& path) {
  struct stat status;
  return stat(path.c_str(), &status) == 0 ? static_cast<int32_t>(status.st_mtime) : -1;
}

bool MorvMkdir(const std::string& path) {
  return mkdir(path.c_str(), 0777) == 0 || errno == EEXIST;
}

bool MorvRemove(const std::string& path) {
  return std::remove(path.c_str()) == 0;
}

bool MorvRename(const std::string& from, const std::string& to) {
  return MorvSafeRename(from, to);
}

}  // namespace vorc
