#pragma once

#include <string>
#include <string_view>

namespace vorc {

/// A text as the interpreter keeps it: characters beyond 16 bits as two halves of three bytes each. What
/// isn't UTF-8 becomes U+FFFD.
std::string ToInterpreter(std::string_view text);

/// The same text as UTF-8. A half without its other half becomes U+FFFD.
std::string FromInterpreter(std::string_view text);

}  // namespace vorc
