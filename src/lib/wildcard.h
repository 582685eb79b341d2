#pragma once

#include <string_view>

namespace vorc {

/// True if a file name fits a pattern: `*` stands for any run of characters, `?` for any one
/// character, everything else for itself without regard to case. An empty pattern fits every name.
/// Takes at most length of the pattern times length of the name.
bool morv_util_wild(std::string_view pattern, std::string_view name);

}  // namespace vorc
