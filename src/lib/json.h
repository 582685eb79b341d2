#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vorc {

inline constexpr size_t kAnyJsonCapacity = static_cast<size_t>(-1);

/// The value that a dotted path leads to: "users.0.name". A segment of digits only is an index
/// into an array, any other a key of an object; an empty path is the whole text. A string answers
/// unescaped, with "?" for each escape outside ASCII; any other value as it stands. At most
/// `capacity` - 1 bytes. Empty if the path leads nowhere or the text is broken on the way.
std::string MorvJsonGet(std::string_view json, std::string_view path, size_t capacity = kAnyJsonCapacity);

/// The text as the inside of a JSON string. Stops where fewer than 8 bytes of `capacity` remain,
/// so an escape is never split; nothing marks the cut.
std::string MorvJsonEscape(std::string_view text, size_t capacity = kAnyJsonCapacity);

}  // namespace vorc
