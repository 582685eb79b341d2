#pragma once

#include <string_view>

#include "builtins/call.h"

namespace vorc {

/// What a built-in answers, for reading and for the empty answer.
enum class BuiltinResult : uint8_t { kVoid, kInt, kDouble, kText, kPointer };

/// A row of the table of built-ins.
struct SysFunc {
  const char* name;
  int argument_count;  ///< -1 where the count is free
  BuiltinResult result;
  bool any_count;          ///< called with any number of arguments, whatever the count says
  BuiltinHandler handler;  ///< null for a built-in whose library is not part of this program
};

/// The row of a name, or null.
const SysFunc* FindSystemFunction(std::string_view name);

}  // namespace vorc
