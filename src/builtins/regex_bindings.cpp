#include <string>

#include "builtins/bindings.h"
#include "lib/regex_apply.h"
#include "lib/sed.h"

namespace vorc {

namespace {

void MorvReBuiltin(BuiltinCall& call) {
  const auto pattern = call.Text(0);
  const auto text = call.Text(1);
  if (!pattern || !text) return call.ReturnText("");
  call.ReturnText(MorvRegexApply(*pattern, *text, BuiltinCall::kTextLimit));
}

void IsedBuiltin(BuiltinCall& call) {
  const auto text = call.Text(0);
  const auto script = call.Text(1);
  if (!text || !script) return call.ReturnText("");
  call.ReturnText(MorvSed(*text, *script), BuiltinCall::kNoLimit);
}

void IsedFileBuiltin(BuiltinCall& call) {
  const auto path = call.Text(0);
  const auto script = call.Text(1);
  call.ReturnInt(path && script ? MorvSedFile(std::string(*path), *script) : -1);
}

constexpr BuiltinBinding kBindings[] = {
    {"morv_re", MorvReBuiltin},
    {"ised", IsedBuiltin},
    {"ised_file", IsedFileBuiltin},
};

}  // namespace

std::span<const BuiltinBinding> RegexBuiltins() {
  return kBindings;
}

}  // namespace vorc
