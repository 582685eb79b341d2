#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vorc {

/// The most words that a command line started without a shell may have.
inline constexpr size_t kMaxCommandWords = 127;

/// True if one of `| & < >` stands outside double quotes, so that only a shell can run the line.
bool CommandNeedsShell(std::string_view command);

/// The words of a command line: blanks and tabs separate, double quotes group and are dropped, and
/// within them `\"` and `\\` stand for the bare character. An open quote runs to the end. Nothing
/// if there is no word, or more than kMaxCommandWords.
std::optional<std::vector<std::string>> SplitCommand(std::string_view command);

}  // namespace vorc
