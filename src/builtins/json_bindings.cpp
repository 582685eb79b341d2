#include "builtins/bindings.h"
#include "lib/json.h"

namespace vorc {

namespace {

void MorvJsonGetBuiltin(BuiltinCall& call) {
  const auto json = call.Text(0);
  const auto path = call.Text(1);
  if (!json || !path) return call.ReturnText("");
  call.ReturnText(MorvJsonGet(*json, *path, BuiltinCall::kTextLimit));
}

constexpr BuiltinBinding kBindings[] = {{"morv_json_get", MorvJsonGetBuiltin}};

}  // namespace

std::span<const BuiltinBinding> JsonBuiltins() {
  return kBindings;
}

}  // namespace vorc
