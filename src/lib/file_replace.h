#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vorc {

/// Replaces every occurrence of the bytes `from` in a regular file, taken from the left. Answers
/// their count; 0 leaves the file alone; -1 for an empty `from` or any failure.
/// The file is replaced in one step, as FileRewrite does it.
int32_t MorvFileReplace(const std::string& path, std::string_view from, std::string_view to);

}  // namespace vorc
