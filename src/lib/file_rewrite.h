#pragma once

#include <sys/stat.h>

#include <optional>
#include <string>
#include <string_view>

#include "base/descriptor.h"
#include "base/file.h"
#include "lib/sandbox.h"

namespace vorc {

/// Gives a regular file a new content in one step: it is written to a new file, which takes the old
/// one's place once complete. Until then nobody sees it, and no end of the process leaves it behind.
/// Permission bits stay, and the owner as far as the host lets it; through a symbolic link the file
/// behind it is replaced and the link stays; further hard links keep the old content.
class FileRewrite {
 public:
  /// The file at `path`, open for reading. Nothing if it is refused (with a line on standard error),
  /// missing or not regular.
  static std::optional<FileRewrite> Open(const std::string& path);

  FileRewrite(FileRewrite&&) = default;
  ~FileRewrite();

  /// True if the old file itself may be written.
  bool Writable() const;

  /// The old content. Nothing on a read error.
  std::optional<std::string> Read();

  /// Makes the new file, empty. False if the folder doesn't take one.
  bool Begin();
  bool Append(std::string_view bytes);
  /// Puts the new file, named "%s.vztmp" for a moment, in the old one's place. After a failure
  /// nothing of it is left, and the old file is as it was.
  bool Commit();

 private:
  FileRewrite(File old, FilePlace place, const struct stat& status);

  bool OpenNew();
  bool GiveName();
  void RemoveNamed();

  File old_;
  FilePlace place_;
  struct stat status_;
  std::string temporary_;
  Descriptor new_;
  bool named_ = false;  ///< the new file can be seen
};

}  // namespace vorc
