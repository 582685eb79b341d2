#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vorc {

/// Searches or substitutes once: "s/A/B" or "s/A/B/" answers the text with the first match of A
/// replaced by B (the text itself when nothing matches); "m/A/", or a bare pattern up to its first
/// slash, answers what was matched, or empty text. Cut to `capacity` - 1 bytes.
std::string MorvRegexApply(std::string_view pattern, std::string_view text, size_t capacity);

}  // namespace vorc
