#pragma once

#include <functional>
#include <string_view>

#include "builtins/call.h"

namespace vorc {

/// Formats the arguments of a call behind the first. Output is made of lines: every line feed and
/// the end of the format hand one to `put_line`, without its line feed.
void MorvPrintfFormat(std::string_view format, const BuiltinCall& call,
                      void (*put_line)(std::string_view line));

}  // namespace vorc
