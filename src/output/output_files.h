#pragma once

#include <optional>
#include <string>

#include "base/text_writer.h"
#include "output/build_reference.h"

namespace vorc {

/// `path` with another extension in place of its own, or with one behind it.
std::string SetFileExt(const std::string& path, const std::string& extension);

/// The files that a compilation writes beside its source.
struct OutputFiles {
  TextWriter assembly;
  TextWriter analysis;
  TextWriter tac;
  TextWriter ai_input;

  /// Removes what an earlier run left and makes all of them anew. False if one can't be made.
  bool Open(const std::string& source);
  /// False if anything could not be written.
  bool Close();
  /// What all outputs of one compilation bear, made at its first use.
  const VorcReference128& Reference();

 private:
  std::optional<VorcReference128> reference_;
};

}  // namespace vorc
