#include "lib/reading.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include "base/text_search.h"
#include "lib/sandbox.h"

namespace vorc {

File OpenForReading(const std::string& path) {
  File file = MorvSafeFopen(path, "rb");
  struct stat status;
  if (file && fstat(fileno(file.get()), &status) == 0 && !S_ISDIR(status.st_mode)) return file;
  return nullptr;
}

std::optional<size_t> RegularFileSize(std::FILE* file) {
  struct stat status;
  if (fstat(fileno(file), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
  return static_cast<size_t>(status.st_size);
}

std::optional<std::string> ReadToEnd(std::FILE* file) {
  constexpr size_t kFirstPiece = 4096;
  std::string bytes;
  // One byte more than the file has left, so that the first read meets the end of the file.
  const size_t size = RegularFileSize(file).value_or(0);
  const off_t position = size > 0 ? ftello(file) : 0;
  size_t piece = size - std::min(size, static_cast<size_t>(std::max(position, off_t{0}))) + 1;
  while (bytes.size() <= kMostBytesRead) {
    const size_t have = bytes.size();
    piece = std::min(std::max(piece, kFirstPiece), kMostBytesRead + 1 - have);
    bytes.resize(have + piece);
    const size_t got = std::fread(bytes.data() + have, 1, piece, file);
    bytes.resize(have + got);
    if (std::ferror(file)) return std::nullopt;
    if (got < piece) return bytes;
    piece = bytes.size();
  }
  return std::nullopt;
}

LineReader::LineReader(File file, size_t block_size) : file_(std::move(file)), buffer_(block_size, '\0') {}

std::string_view LineReader::Take(size_t count) {
  const std::string_view taken = Available().substr(0, count);
  begin_ += taken.size();
  return taken;
}

// Reads behind the bytes that are not taken yet. A full buffer grows, so that one line fits. The
// descriptor is read directly, since fread would wait for a whole block from a pipe.
bool LineReader::Fill() {
  if (at_end_ || failed_) return false;
  std::memmove(buffer_.data(), buffer_.data() + begin_, end_ - begin_);
  end_ -= begin_;
  begin_ = 0;
  if (end_ > kMostBytesRead) {
    failed_ = true;
    return false;
  }
  if (end_ == buffer_.size()) buffer_.resize(buffer_.size() * 2);
  ssize_t got;
  do {
    got = read(fileno(file_.get()), buffer_.data() + end_, buffer_.size() - end_);
  } while (got < 0 && errno == EINTR);
  failed_ = got < 0;
  at_end_ = got == 0;
  end_ += got > 0 ? static_cast<size_t>(got) : 0;
  return got > 0;
}

// Length of what runs up to the first or the last line end in memory, or to the end of the file.
std::optional<size_t> LineReader::LineEnd(bool last_of_block) {
  size_t searched = 0;
  do {
    const std::string_view fresh = Available().substr(searched);
    const void* end = last_of_block ? memrchr(fresh.data(), '\n', fresh.size())
                                    : std::memchr(fresh.data(), '\n', fresh.size());
    if (end != nullptr) return static_cast<size_t>(static_cast<const char*>(end) - Available().data()) + 1;
    searched += fresh.size();
  } while (Fill());
  if (searched == 0 || failed_) return std::nullopt;
  return searched;
}

std::optional<std::string_view> LineReader::NextLine() {
  const std::optional<size_t> end = LineEnd(false);
  return end ? std::optional(Take(*end)) : std::nullopt;
}

std::optional<std::string_view> LineReader::NextLines() {
  const std::optional<size_t> end = LineEnd(true);
  return end ? std::optional(Take(*end)) : std::nullopt;
}

std::optional<std::string_view> LineReader::NextPiece(size_t most) {
  size_t end;
  while ((end = Available().find('\n')) == std::string_view::npos && Available().size() <= most + 1) {
    if (!Fill()) break;
  }
  if (Available().empty()) return std::nullopt;
  const bool whole = end != std::string_view::npos || at_end_;
  const std::string_view line = WithoutLineEnd(Available().substr(0, end));
  if (!whole || line.size() > most) return Take(most);
  const std::string_view piece = Available().substr(0, line.size());
  Take(end == std::string_view::npos ? end : end + 1);
  return piece;
}

}  // namespace vorc
