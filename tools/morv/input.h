#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vorc {

/// True if statements that end here go on for certain: a bracket, a comment or a conditional is open, a
/// loop has no body, an operator waits for its right side. Then more lines belong to the input.
bool IsUnfinished(std::string_view text);

/// An input that may be one expression whose value can be shown.
struct Expression {
  std::string text;    ///< without comments and the `;` behind it
  std::string word;    ///< the first word, empty if it begins otherwise
  std::string called;  ///< the function, where the whole text is one call
};

/// The input as an expression: one statement that neither assigns nor steps. Whether its first word is a
/// type, and whether the call has a value, is for the caller to find out.
std::optional<Expression> AsExpression(std::string_view text);

}  // namespace vorc
