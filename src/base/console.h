#pragma once

#include <string_view>

namespace vorc {

/// One line on standard output, written at once so that everything interleaves in call order.
void SendOutput(std::string_view text);

/// A message box of old: title and text on standard error.
void MessageBox(const char* text, const char* title);

}  // namespace vorc
