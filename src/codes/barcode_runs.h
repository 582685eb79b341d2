#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>

namespace vorc::codes {

/// The 13 digits of an EAN-13 symbol whose first bar is the dark run `start`. `runs` are lengths in pixels,
/// of dark and light in turn, dark first. Nothing if the runs, the parities or the check digit aren't right.
std::optional<std::string> ean_at(std::span<const double> runs, size_t start);

/// The text of a Code 128 symbol whose first bar is the dark run `start`; nothing if it isn't right.
std::optional<std::string> code128_at(std::span<const double> runs, size_t start);

}  // namespace vorc::codes
