#pragma once

#include <cstddef>
#include <string_view>

namespace vorc {

/// Offset of the first occurrence of `needle` at or behind `from`, or npos. An empty needle is
/// found at `from`. Takes linear time for every needle, NUL bytes are bytes like any other.
size_t FindBytes(std::string_view text, std::string_view needle, size_t from = 0);

/// How many bytes of `text` are `byte`.
size_t CountByte(std::string_view text, char byte);

/// The text without the CR and LF bytes at its end.
std::string_view WithoutLineEnd(std::string_view line);

}  // namespace vorc
