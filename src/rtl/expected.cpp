#include <span>

#include "rtl/function.h"

namespace vorc {

namespace {

constexpr int kMostTurns = 100'001;

// Binds what each assignment answers, one after the other.
bool morv_rtl_run_assigns(std::span<const RtlAssign> assigns, RtlEnvironment* environment) {
  for (const RtlAssign& assign : assigns) {
    const std::optional<int64_t> value = morv_rtl_expr_eval(assign.value, *environment);
    if (!value || !environment->Bind(assign.name, *value)) return false;
  }
  return true;
}

bool RunLoop(const RtlLoop& loop, RtlEnvironment* environment) {
  if (loop.is_do && !morv_rtl_run_assigns(loop.body, environment)) return false;
  for (int turn = 0; turn < kMostTurns; ++turn) {
    const std::optional<int64_t> condition = morv_rtl_expr_eval(loop.condition_value, *environment);
    if (!condition) return false;
    if (*condition == 0) return true;
    if (!morv_rtl_run_assigns(loop.body, environment)) return false;
  }
  return false;
}

}  // namespace

std::optional<int64_t> ExpectedResult(const RtlFunction& function, const RtlVector& arguments) {
  RtlEnvironment environment;
  for (size_t i = 0; i < function.parameters.size(); ++i) {
    if (!environment.Bind(function.parameters[i], arguments[i])) return std::nullopt;
  }
  const std::span<const RtlAssign> all(function.assigns);
  const size_t before = function.loop ? function.loop->position : all.size();
  if (!morv_rtl_run_assigns(all.first(before), &environment)) return std::nullopt;
  if (function.loop && !RunLoop(*function.loop, &environment)) return std::nullopt;
  if (!morv_rtl_run_assigns(all.subspan(before), &environment)) return std::nullopt;
  return morv_rtl_expr_eval(function.result_value, environment);
}

}  // namespace vorc
