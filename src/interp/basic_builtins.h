#pragma once

#include <span>
#include <string>
#include <string_view>

#include "lib/builtin_binding.h"

namespace vorc {

/// Output, text building, memory and query parameters.
std::span<const BuiltinBinding> BasicBuiltins();

/// Value of a parameter in a query such as "a=1&b=x%20y": the first of that name, decoded, at most
/// 1023 bytes; empty if there is none.
std::string MorvGetQueryParam(std::string_view query, std::string_view name);

/// All arguments of a call from number `first` on, written one behind the other.
std::string RenderArguments(const BuiltinCall& call, size_t first);

void PrintfBuiltin(BuiltinCall& call);
void MallocBuiltin(BuiltinCall& call);
void IprintBuiltin(BuiltinCall& call);
void IfprintBuiltin(BuiltinCall& call);
void IsprintBuiltin(BuiltinCall& call);
void MorvGetparamBuiltin(BuiltinCall& call);

}  // namespace vorc
