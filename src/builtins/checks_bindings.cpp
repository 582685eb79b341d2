#include "builtins/bindings.h"
#include "builtins/commands.h"
#include "lib/checks.h"

namespace vorc {

namespace {

// A condition or number of the wrong type counts as 0 and a text as empty: a check always reports.
int32_t NumberOrZero(const BuiltinCall& call, size_t i) {
  return call.Int(i).value_or(0);
}

std::string_view TextOrEmpty(const BuiltinCall& call, size_t i) {
  return call.Text(i).value_or("");
}

void MorvAssertBuiltin(BuiltinCall& call) {
  call.ReturnInt(call.runtime().State<Checks>().MorvAssert(NumberOrZero(call, 0), TextOrEmpty(call, 1)));
}

void MorvAssertEqIntBuiltin(BuiltinCall& call) {
  call.ReturnInt(call.runtime().State<Checks>().MorvAssertEqInt(NumberOrZero(call, 0), NumberOrZero(call, 1),
                                                                TextOrEmpty(call, 2)));
}

void MorvAssertEqStrBuiltin(BuiltinCall& call) {
  call.ReturnInt(call.runtime().State<Checks>().MorvAssertEqStr(TextOrEmpty(call, 0), TextOrEmpty(call, 1),
                                                                TextOrEmpty(call, 2)));
}

void MorvTestSummaryBuiltin(BuiltinCall& call) {
  call.ReturnInt(call.runtime().State<Checks>().MorvTestSummary());
}

void MorvExitBuiltin(BuiltinCall& call) {
  ThreadsOf(call).MorvThreadBarrier();
  MorvExit(NumberOrZero(call, 0));
}

constexpr BuiltinBinding kBuiltins[] = {
    {"morv_assert", MorvAssertBuiltin},
    {"morv_assert_eq_int", MorvAssertEqIntBuiltin},
    {"morv_assert_eq_str", MorvAssertEqStrBuiltin},
    {"morv_test_summary", MorvTestSummaryBuiltin},
    {"morv_exit", MorvExitBuiltin},
};

}  // namespace

std::span<const BuiltinBinding> CheckBuiltins() {
  return kBuiltins;
}

}  // namespace vorc
