#include "lib/json_builtins.h"

#include "lib/json.h"

namespace vorc {

void MorvJsonGetBuiltin(BuiltinCall& call) {
  const auto json = call.Text(0);
  const auto path = call.Text(1);
  if (!json || !path) return call.ReturnText("");
  call.ReturnText(MorvJsonGet(*json, *path, BuiltinCall::kTextLimit));
}

namespace {

constexpr BuiltinBinding kBindings[] = {{"morv_json_get", MorvJsonGetBuiltin}};

}  // namespace

std::span<const BuiltinBinding> JsonBuiltins() {
  return kBindings;
}

}  // namespace vorc
