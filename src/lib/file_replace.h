#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vorc {

/// Replaces every occurrence of the bytes `from` in a regular file, taken from the left. Answers
/// their count; 0 leaves the file alone; -1 for an empty `from` or any failure.
///
/// The new text is written to a file named "%s.vztmp" beside the old one, which it replaces only
/// when complete, keeping its permission bits. Through a symbolic link the file behind it is
/// replaced and the link stays; further hard links keep the old text.
int32_t MorvFileReplace(const std::string& path, std::string_view from, std::string_view to);

}  // namespace vorc
