#include <string>

#include "builtins/bindings.h"
#include "builtins/commands.h"

namespace vorc {

namespace {

void MorvExecBuiltin(BuiltinCall& call) {
  call.ReturnInt(ProcessesOf(call).MorvExec(call.Text(0).value_or(std::string_view())));
}

void MorvExecCaptureBuiltin(BuiltinCall& call) {
  const std::string_view command = call.Text(0).value_or(std::string_view());
  call.ReturnText(ProcessesOf(call).MorvExecCapture(command, BuiltinCall::kTextLimit));
}

void MorvExecToFileBuiltin(BuiltinCall& call) {
  const auto command = call.Text(0);
  const auto path = call.Text(1);
  call.ReturnInt(command && path ? ProcessesOf(call).MorvExecToFile(*command, std::string(*path)) : -1);
}

void MorvExecStatusBuiltin(BuiltinCall& call) {
  call.ReturnInt(ProcessesOf(call).MorvExecStatus());
}

constexpr BuiltinBinding kBuiltins[] = {
    {"morv_exec", MorvExecBuiltin},
    {"morv_exec_capture", MorvExecCaptureBuiltin},
    {"morv_exec_to_file", MorvExecToFileBuiltin},
    {"morv_exec_status", MorvExecStatusBuiltin},
};

}  // namespace

std::span<const BuiltinBinding> ProcessBuiltins() {
  return kBuiltins;
}

}  // namespace vorc
