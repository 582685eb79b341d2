#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

#include "base/handle_table.h"
#include "lib/reading.h"

namespace vorc {

/// A script's files that are read by lines, behind handles.
class Streams {
 public:
  /// Opens a file for reading by lines. Its handle, or 0.
  int32_t MorvFopen(const std::string& path);

  /// The next line without the CR and LF bytes at its end. A line of `limit` bytes or more comes in
  /// pieces of `limit` - 1 bytes. Empty for a bad handle, and at the end, which sets the end flag.
  std::string MorvFgets(int32_t handle, size_t limit);

  /// True once a read has failed at the end of the file, and for a bad handle.
  bool MorvFeof(int32_t handle) const;

  /// Closes the file; from then on its handle is a bad one.
  void MorvFclose(int32_t handle);

 private:
  struct Stream {
    static constexpr const char* kKind = "file handle";
    explicit Stream(File file);
    LineReader reader;
    bool at_end = false;
  };

  HandleTable<Stream> streams_;
};

}  // namespace vorc
