#pragma once

#include <string>
#include <string_view>

namespace vorc {

/// Value of a parameter in a query such as "a=1&b=x%20y": the first of that name, decoded, at most
/// 1023 bytes; empty if there is none.
std::string MorvGetQueryParam(std::string_view query, std::string_view name);

}  // namespace vorc
