#include "builtins/bindings.h"
#include "lib/strings.h"

namespace vorc {

namespace {

using Digits = std::string (*)(uint32_t value, int32_t width);

void ReturnDigits(BuiltinCall& call, Digits digits) {
  const auto value = call.Int(0);
  const auto width = call.Int(1);
  call.ReturnText(value && width ? digits(static_cast<uint32_t>(*value), *width) : std::string());
}

using Search = int32_t (*)(std::string_view text, std::string_view needle);

void ReturnPosition(BuiltinCall& call, Search search) {
  const auto text = call.Text(0);
  const auto needle = call.Text(1);
  call.ReturnInt(text && needle ? search(*text, *needle) : -1);
}

// Beyond this, no byte of an argument can reach the result.
std::string_view Visible(std::string_view text) {
  return text.substr(0, BuiltinCall::kTextLimit);
}

void MorvStrCmpBuiltin(BuiltinCall& call) {
  call.ReturnInt(MorvStrCmp(call.Text(0), call.Text(1)));
}

void MorvStrStrBuiltin(BuiltinCall& call) {
  ReturnPosition(call, MorvStrStr);
}

void MorvSearchTxtBuiltin(BuiltinCall& call) {
  ReturnPosition(call, MorvSearchTxt);
}

void MorvStrLenBuiltin(BuiltinCall& call) {
  call.ReturnInt(MorvStrLen(call.Text(0).value_or("")));
}

void MorvStartsWithBuiltin(BuiltinCall& call) {
  const auto text = call.Text(0);
  const auto start = call.Text(1);
  call.ReturnInt(text && start && MorvStartsWith(*text, *start));
}

void MorvEndsWithBuiltin(BuiltinCall& call) {
  const auto text = call.Text(0);
  const auto end = call.Text(1);
  call.ReturnInt(text && end && MorvEndsWith(*text, *end));
}

void MorvSubstrBuiltin(BuiltinCall& call) {
  const auto text = call.Text(0);
  const auto start = call.Int(1);
  const auto length = call.Int(2);
  call.ReturnText(text && start && length ? MorvSubstr(*text, *start, *length) : "");
}

void MorvUpperBuiltin(BuiltinCall& call) {
  call.ReturnText(MorvUpper(Visible(call.Text(0).value_or(""))));
}

void MorvLowerBuiltin(BuiltinCall& call) {
  call.ReturnText(MorvLower(Visible(call.Text(0).value_or(""))));
}

void MorvTrimBuiltin(BuiltinCall& call) {
  call.ReturnText(MorvTrim(call.Text(0).value_or("")));
}

void MorvReplaceAllBuiltin(BuiltinCall& call) {
  const auto source = call.Text(0);
  const auto search = call.Text(1);
  if (!source || !search) return call.ReturnText("");
  call.ReturnText(MorvReplaceAll(*source, *search, call.Text(2).value_or(""), BuiltinCall::kTextLimit));
}

void MorvHtmlEscapeBuiltin(BuiltinCall& call) {
  call.ReturnText(MorvHtmlEscape(call.Text(0).value_or(""), BuiltinCall::kTextLimit));
}

void MorvHexBuiltin(BuiltinCall& call) {
  ReturnDigits(call, MorvHex);
}

void MorvBinBuiltin(BuiltinCall& call) {
  ReturnDigits(call, MorvBin);
}

void MorvParseHexBuiltin(BuiltinCall& call) {
  call.ReturnInt(static_cast<int32_t>(MorvParseHex(call.Text(0).value_or(""))));
}

void MorvAtoiBuiltin(BuiltinCall& call) {
  call.ReturnInt(MorvAtoi(call.Text(0).value_or("")));
}

void MorvBitsBuiltin(BuiltinCall& call) {
  const auto value = call.Int(0);
  const auto low = call.Int(1);
  const auto count = call.Int(2);
  if (!value || !low || !count) return call.ReturnInt(0);
  call.ReturnInt(static_cast<int32_t>(MorvBits(static_cast<uint32_t>(*value), *low, *count)));
}

constexpr BuiltinBinding kBindings[] = {
    {"morv_strcmp", MorvStrCmpBuiltin},
    {"morv_strstr", MorvStrStrBuiltin},
    {"morv_search_txt", MorvSearchTxtBuiltin},
    {"morv_strlen", MorvStrLenBuiltin},
    {"morv_starts_with", MorvStartsWithBuiltin},
    {"morv_ends_with", MorvEndsWithBuiltin},
    {"morv_substr", MorvSubstrBuiltin},
    {"morv_upper", MorvUpperBuiltin},
    {"morv_lower", MorvLowerBuiltin},
    {"morv_trim", MorvTrimBuiltin},
    {"morv_replace_all", MorvReplaceAllBuiltin},
    {"morv_html_escape", MorvHtmlEscapeBuiltin},
    {"morv_hex", MorvHexBuiltin},
    {"morv_bin", MorvBinBuiltin},
    {"morv_parse_hex", MorvParseHexBuiltin},
    {"morv_atoi", MorvAtoiBuiltin},
    {"morv_bits", MorvBitsBuiltin},
};

}  // namespace

std::span<const BuiltinBinding> StringBuiltins() {
  return kBindings;
}

}  // namespace vorc
