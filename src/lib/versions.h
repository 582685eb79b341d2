#pragma once

#include <string>
#include <string_view>

namespace vorc {

/// The value of the first "@morv-NAME: VALUE;" in a file's first 200 lines, such as a header
/// comment has. It ends before a semicolon or at the line's end. Lines are read in pieces of at
/// most 1023 bytes, each of which counts as a line. Empty if there is none or no such file.
std::string MorvLibField(const std::string& file, std::string_view name);

/// The field "version" of a file.
std::string MorvLibVersion(const std::string& file);

/// -1, 0 or 1 as version `a` is below, equal to or above `b`, by their numbers in turn. Missing
/// numbers count as 0, everything between numbers is ignored.
int MorvVersionCmp(std::string_view a, std::string_view b);

}  // namespace vorc
