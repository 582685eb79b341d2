#include "interp/basic_builtins.h"

#include <cstdio>
#include <cstdlib>

#include "base/format.h"
#include "frontend/diagnostics.h"
#include "interp/memory.h"
#include "interp/printf.h"
#include "lib/files.h"

namespace vorc {

namespace {

constexpr size_t kQueryLimit = 1023;
constexpr BuiltinBinding kBindings[] = {
    {"printf", PrintfBuiltin},
    {"malloc", MallocBuiltin},
    {"iprint", IprintBuiltin},
    {"ifprint", IfprintBuiltin},
    {"isprint", IsprintBuiltin},
    {"morv_concat", IsprintBuiltin},
    {"morv_getparam", MorvGetparamBuiltin},
};

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

std::string DecodeQueryValue(std::string_view value) {
  std::string text;
  for (size_t i = 0; i < value.size() && text.size() < kQueryLimit; ++i) {
    if (value[i] == '%' && i + 2 < value.size() && HexDigit(value[i + 1]) >= 0 &&
        HexDigit(value[i + 2]) >= 0) {
      text += static_cast<char>(HexDigit(value[i + 1]) * 16 + HexDigit(value[i + 2]));
      i += 2;
    } else {
      text += value[i] == '+' ? ' ' : value[i];
    }
  }
  return text;
}

}  // namespace

std::span<const BuiltinBinding> BasicBuiltins() {
  return kBindings;
}

std::string MorvGetQueryParam(std::string_view query, std::string_view name) {
  if (name.empty()) return "";
  while (!query.empty()) {
    if (query.starts_with(name) && query.substr(name.size()).starts_with('=')) {
      query.remove_prefix(name.size() + 1);
      return DecodeQueryValue(query.substr(0, query.find('&')));
    }
    const size_t end = query.find('&');
    if (end == std::string_view::npos) break;
    query.remove_prefix(end + 1);
  }
  return "";
}

std::string RenderArguments(const BuiltinCall& call, size_t first) {
  std::string text;
  for (size_t i = first; i < call.Count(); ++i) {
    const BuiltinValue& value = call.Argument(i);
    switch (value.kind) {
      case BuiltinValue::Kind::kText: text += value.text; break;
      case BuiltinValue::Kind::kDouble: text += Format("%g", value.real); break;
      case BuiltinValue::Kind::kNone:
      case BuiltinValue::Kind::kInteger: text += Format("%d", static_cast<int32_t>(value.integer)); break;
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
  char* memory = size && *size > 0 ? ScriptMemory::Instance().Allocate(static_cast<size_t>(*size)) : nullptr;
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

}  // namespace vorc
