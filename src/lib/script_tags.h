#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vorc {

/// The scripts that a page embeds, and the hashes by which its content security policy lets them run.
class ScriptTags {
 public:
  /// The content of a script file between <script> and </script>, and its hash remembered. Empty
  /// text if the file can't be read.
  std::string MorvScriptTag(const std::string& file);

  /// The hash of a script file as a content security policy takes it, 'sha256-...', and remembered.
  /// Empty text if the file can't be read.
  std::string MorvScriptSrc(const std::string& file);

  /// The distinct hashes remembered so far, the first 16 of them, with blanks between; as many as
  /// fit into `capacity` bytes with a NUL.
  std::string MorvScriptSrcs(size_t capacity) const;

 private:
  std::string Remembered(std::string_view printed);
  void MorvRememberScript(const std::string& source);

  std::vector<std::string> sources_;
};

}  // namespace vorc
