#include <string>

#include "builtins/bindings.h"
#include "builtins/text_argument.h"
#include "lib/versions.h"

namespace vorc {

namespace {

void MorvLibFieldBuiltin(BuiltinCall& call) {
  const auto file = call.Text(0);
  const auto name = call.Text(1);
  if (!file || !name) return call.ReturnText("");
  call.ReturnText(MorvLibField(std::string(*file), *name));
}

void MorvLibVersionBuiltin(BuiltinCall& call) {
  const auto file = call.Text(0);
  call.ReturnText(file ? MorvLibVersion(std::string(*file)) : "");
}

void MorvVersionCmpBuiltin(BuiltinCall& call) {
  const auto a = TextOrUnset(call, 0);
  const auto b = TextOrUnset(call, 1);
  call.ReturnInt(a && b ? MorvVersionCmp(*a, *b) : 0);
}

constexpr BuiltinBinding kBindings[] = {
    {"morv_lib_field", MorvLibFieldBuiltin},
    {"morv_lib_version", MorvLibVersionBuiltin},
    {"morv_version_cmp", MorvVersionCmpBuiltin},
};

}  // namespace

std::span<const BuiltinBinding> VersionBuiltins() {
  return kBindings;
}

}  // namespace vorc
