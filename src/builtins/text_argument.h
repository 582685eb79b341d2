#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "builtins/call.h"

namespace vorc {

/// The text of argument `i`, where a text variable that holds nothing yet reads as empty text.
/// Nothing if the argument is missing or no text.
inline std::optional<std::string_view> TextOrUnset(const BuiltinCall& call, size_t i) {
  if (call.Argument(i).kind != BuiltinValue::Kind::kText) return std::nullopt;
  return call.Text(i).value_or(std::string_view());
}

}  // namespace vorc
