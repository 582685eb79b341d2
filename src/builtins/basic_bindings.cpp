#include <charconv>
#include <cstdlib>
#include <string>

#include "base/console.h"
#include "base/format.h"
#include "builtins/bindings.h"
#include "builtins/printf.h"
#include "lib/files.h"
#include "lib/query.h"

namespace vorc {

namespace {

void AppendInteger(std::string& text, int32_t number) {
  char digits[12];
  text.append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
}

/// All arguments of a call from number `first` on, written one behind the other.
std::string RenderArguments(const BuiltinCall& call, size_t first) {
  std::string text;
  for (size_t i = first; i < call.Count(); ++i) {
    const BuiltinValue& value = call.Argument(i);
    switch (value.kind) {
      case BuiltinValue::Kind::kText: text += value.text; break;
      case BuiltinValue::Kind::kDouble: text += Format("%g", value.real); break;
      case BuiltinValue::Kind::kNone:
      case BuiltinValue::Kind::kInteger: AppendInteger(text, static_cast<int32_t>(value.integer)); break;
    }
  }
  return text;
}

void PrintfBuiltin(BuiltinCall& call) {
  const auto format = call.Text(0);
  if (format) MorvPrintfFormat(*format, call, SendOutput);
}

void MallocBuiltin(BuiltinCall& call) {
  const auto size = call.Int(0);
  char* memory = size && *size > 0 ? call.runtime().texts().Allocate(static_cast<size_t>(*size)) : nullptr;
  call.ReturnInt64(reinterpret_cast<int64_t>(memory));
}

void IprintBuiltin(BuiltinCall& call) {
  const std::string text = RenderArguments(call, 0);
  if (!text.empty()) SendOutput(text);
}

void IfprintBuiltin(BuiltinCall& call) {
  const auto path = call.Text(0);
  if (path) MorvFileAppendLine(std::string(*path), RenderArguments(call, 1));
}

void IsprintBuiltin(BuiltinCall& call) {
  call.ReturnText(RenderArguments(call, 0), BuiltinCall::kNoLimit);
}

void MorvGetparamBuiltin(BuiltinCall& call) {
  const auto name = call.Text(0);
  const char* query = std::getenv("QUERY_STRING");
  call.ReturnText(name && query != nullptr ? MorvGetQueryParam(query, *name) : "");
}

constexpr BuiltinBinding kBindings[] = {
    {"printf", PrintfBuiltin},
    {"malloc", MallocBuiltin},
    {"iprint", IprintBuiltin},
    {"ifprint", IfprintBuiltin},
    {"isprint", IsprintBuiltin},
    {"morv_concat", IsprintBuiltin},
    {"morv_getparam", MorvGetparamBuiltin},
};

}  // namespace

std::span<const BuiltinBinding> BasicBuiltins() {
  return kBindings;
}

}  // namespace vorc
