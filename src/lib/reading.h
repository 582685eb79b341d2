#pragma once

#include <cstddef>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>

#include "base/file.h"

namespace vorc {

/// No text and no line that is read from a file may be longer.
constexpr size_t kMostBytesRead = size_t{1} << 30;

/// Opens a file below the sandbox root for reading. Null for a refused or missing file and for a
/// directory.
File OpenForReading(const std::string& path);

/// Size of a regular file; nothing for a pipe, a device or the like.
std::optional<size_t> RegularFileSize(std::FILE* file);

/// The bytes from the stream's position to its end. Nothing on a read error or if there are more
/// than kMostBytesRead.
std::optional<std::string> ReadToEnd(std::FILE* file);

/// Reads a file by lines of any length. Views stay valid until the next call of a reading function.
class LineReader {
 public:
  static constexpr size_t kBlockSize = size_t{64} * 1024;

  explicit LineReader(File file, size_t block_size = kBlockSize);

  /// The next line with its line end; the last one may have none. Nothing at the end of the file.
  std::optional<std::string_view> NextLine();

  /// At least one whole line, and all further ones that are in memory already.
  std::optional<std::string_view> NextLines();

  /// The next line without its line end, CR bytes in front of it included. A line of more than
  /// `most` bytes comes in several pieces, which together are the line. `most` must be smaller
  /// than the block size.
  std::optional<std::string_view> NextPiece(size_t most);

  /// True after a read error, or at a line longer than kMostBytesRead.
  bool failed() const { return failed_; }

 private:
  std::string_view Available() const { return std::string_view(buffer_).substr(begin_, end_ - begin_); }
  std::string_view Take(size_t count);
  bool Fill();
  std::optional<size_t> LineEnd(bool last_of_block);

  File file_;
  std::string buffer_;
  size_t begin_ = 0;
  size_t end_ = 0;
  bool at_end_ = false;
  bool failed_ = false;
};

}  // namespace vorc
