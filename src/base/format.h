#pragma once

#include <string>

namespace vorc {

/// printf into a string.
[[gnu::format(printf, 1, 2)]] std::string Format(const char* format, ...);

/// Text longer than `limit` bytes is cut there and gets the tail behind it.
std::string Clip(std::string text, size_t limit, const char* tail);

}  // namespace vorc
