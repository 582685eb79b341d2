#include <string>

#include "builtins/bindings.h"
#include "lib/system.h"

namespace vorc {

namespace {

void MorvGetenvBuiltin(BuiltinCall& call) {
  const auto name = call.Text(0);
  call.ReturnText(name ? MorvGetenv(std::string(*name)) : std::string());
}

void MorvSetenvBuiltin(BuiltinCall& call) {
  const auto name = call.Text(0);
  call.ReturnInt(name && MorvSetenv(std::string(*name), std::string(call.Text(1).value_or(""))));
}

void MorvTimeBuiltin(BuiltinCall& call) {
  call.ReturnInt(MorvTime());
}

void MorvDateStringBuiltin(BuiltinCall& call) {
  call.ReturnText(MorvDateString());
}

void MorvElapsedMsBuiltin(BuiltinCall& call) {
  call.ReturnInt(MorvElapsedMs());
}

void MorvCwdBuiltin(BuiltinCall& call) {
  call.ReturnText(MorvCwd());
}

void MorvChdirBuiltin(BuiltinCall& call) {
  const auto path = call.Text(0);
  call.ReturnInt(path && MorvChdir(std::string(*path)));
}

constexpr BuiltinBinding kBindings[] = {
    {"morv_getenv", MorvGetenvBuiltin},
    {"igetenv", MorvGetenvBuiltin},
    {"morv_setenv", MorvSetenvBuiltin},
    {"isetenv", MorvSetenvBuiltin},
    {"morv_time", MorvTimeBuiltin},
    {"morv_date_string", MorvDateStringBuiltin},
    {"morv_elapsed_ms", MorvElapsedMsBuiltin},
    {"morv_cwd", MorvCwdBuiltin},
    {"icwd", MorvCwdBuiltin},
    {"morv_chdir", MorvChdirBuiltin},
    {"ichdir", MorvChdirBuiltin},
};

}  // namespace

std::span<const BuiltinBinding> SystemBuiltins() {
  return kBindings;
}

}  // namespace vorc
