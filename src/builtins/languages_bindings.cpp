#include <string>

#include "base/console.h"
#include "builtins/bindings.h"
#include "net/language_runtimes.h"

namespace vorc {

namespace {

using Kind = LanguageRuntimes::Kind;

// For asking whether a variable is there; what fits of its text doesn't matter.
constexpr size_t kProbeSize = 64;
constexpr int32_t kBadHandle = 0;

LanguageRuntimes& RuntimesOf(const BuiltinCall& call) {
  return call.runtime().State<LanguageRuntimes>();
}

int32_t HandleOf(const BuiltinCall& call) {
  return call.Int(0).value_or(kBadHandle);
}

template <Kind kKind, auto kRun>
void RunOnceBuiltin(BuiltinCall& call) {
  const auto text = call.Text(0);
  std::string answer = "expected one string argument\n";
  if (text) (RuntimesOf(call).*kRun)(kKind, std::string(*text), answer);
  call.ReturnText(answer, LanguageRuntimes::kTextSize);
}

void JscriptBuiltin(BuiltinCall& call) {
  const auto text = call.Text(0);
  std::string answer = "expected one string argument\n";
  if (text) {
    LanguageRuntimes& runtimes = RuntimesOf(call);
    runtimes.MorvLangRunSource(runtimes.JavaScriptKind(), std::string(*text), answer);
  }
  call.ReturnText(answer, LanguageRuntimes::kTextSize);
}

void MorvLangOpenBuiltin(BuiltinCall& call) {
  const auto name = call.Text(0);
  if (!name) return call.ReturnInt(kBadHandle);
  std::string error;
  const int32_t handle = RuntimesOf(call).MorvLangOpen(LanguageRuntimes::KindOf(*name), error);
  if (handle == kBadHandle) WriteErrors(error + "\n");
  call.ReturnInt(handle);
}

void MorvLangRunBuiltin(BuiltinCall& call) {
  const auto text = call.Text(1);
  std::string answer;
  if (text) RuntimesOf(call).MorvLangRunIn(HandleOf(call), std::string(*text), answer);
  call.ReturnText(answer, LanguageRuntimes::kTextSize);
}

void MorvLangGetBuiltin(BuiltinCall& call) {
  const auto name = call.Text(1);
  std::string answer;
  if (name) RuntimesOf(call).MorvLangGetText(HandleOf(call), std::string(*name), answer);
  call.ReturnText(answer, LanguageRuntimes::kTextSize);
}

void MorvLangGetnumBuiltin(BuiltinCall& call) {
  const auto name = call.Text(1);
  double number = 0;
  if (name) RuntimesOf(call).MorvLangGetNumber(HandleOf(call), std::string(*name), number);
  call.ReturnDouble(number);
}

void MorvLangSetBuiltin(BuiltinCall& call) {
  const auto name = call.Text(1);
  if (!name) return call.ReturnInt(0);
  if (const auto text = call.Text(2)) {
    call.ReturnInt(RuntimesOf(call).MorvLangSetText(HandleOf(call), std::string(*name), std::string(*text)));
  } else if (call.Int(2)) {
    call.ReturnInt(RuntimesOf(call).MorvLangSetNumber(HandleOf(call), std::string(*name), call.Double(2)));
  } else {
    call.ReturnInt(0);
  }
}

void MorvLangNamesBuiltin(BuiltinCall& call) {
  std::string names;
  RuntimesOf(call).MorvLangVarNames(HandleOf(call), names);
  call.ReturnText(names, LanguageRuntimes::kTextSize);
}

void MorvLangHasBuiltin(BuiltinCall& call) {
  const auto name = call.Text(1);
  std::string ignored;
  const bool has =
      name && RuntimesOf(call).MorvLangGetText(HandleOf(call), std::string(*name), ignored, kProbeSize) != 0;
  call.ReturnInt(has ? 1 : 0);
}

void MorvLangKindBuiltin(BuiltinCall& call) {
  static constexpr std::string_view kKindNames[] = {"none", "bool", "int", "real", "text", "list"};
  const auto name = call.Text(1);
  const int32_t kind = name ? RuntimesOf(call).MorvLangGetKind(HandleOf(call), std::string(*name)) : -1;
  const bool known = kind >= 0 && kind < static_cast<int32_t>(std::size(kKindNames));
  call.ReturnText(known ? kKindNames[static_cast<size_t>(kind)] : "missing");
}

void MorvLangLimitBuiltin(BuiltinCall& call) {
  const auto milliseconds = call.Int(1);
  call.ReturnInt(milliseconds ? RuntimesOf(call).MorvLangSetLimitMs(HandleOf(call), *milliseconds) : 0);
}

void MorvLangCloseBuiltin(BuiltinCall& call) {
  RuntimesOf(call).MorvLangClose(HandleOf(call));
  call.ReturnInt(0);
}

constexpr BuiltinBinding kBuiltins[] = {
    {"python", RunOnceBuiltin<Kind::kPython, &LanguageRuntimes::MorvLangRunFile>},
    {"java", RunOnceBuiltin<Kind::kJava, &LanguageRuntimes::MorvLangRunFile>},
    {"pscript", RunOnceBuiltin<Kind::kPython, &LanguageRuntimes::MorvLangRunSource>},
    {"jscript", JscriptBuiltin},
    {"morv_lang_open", MorvLangOpenBuiltin},
    {"morv_lang_run", MorvLangRunBuiltin},
    {"morv_lang_get", MorvLangGetBuiltin},
    {"morv_lang_getnum", MorvLangGetnumBuiltin},
    {"morv_lang_set", MorvLangSetBuiltin},
    {"morv_lang_names", MorvLangNamesBuiltin},
    {"morv_lang_has", MorvLangHasBuiltin},
    {"morv_lang_kind", MorvLangKindBuiltin},
    {"morv_lang_limit", MorvLangLimitBuiltin},
    {"morv_lang_close", MorvLangCloseBuiltin},
};

}  // namespace

std::span<const BuiltinBinding> LanguageBuiltins() {
  return kBuiltins;
}

}  // namespace vorc
