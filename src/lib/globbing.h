#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vorc {

/// Base names of the files that the host's glob finds, in its order. Directories and what lies
/// outside the sandbox are left out.
std::vector<std::string> MorvGlob(const std::string& pattern);

/// Paths of all that is no directory below `dir` and whose base name fits by `morv_util_wild`.
/// 65 levels deep, links not followed; paths of 1024 bytes or more are left out.
std::vector<std::string> MorvGlobR(const std::string& dir, std::string_view pattern);

}  // namespace vorc
