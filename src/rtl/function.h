#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "program/slot.h"
#include "rtl/expression.h"

// A function of the subset, taken from its records.

namespace vorc {

inline constexpr size_t kRtlParameters = 16;
inline constexpr size_t kRtlAssignments = 64;
inline constexpr size_t kRtlRegisters = 64;

/// One `name = expr;`.
struct RtlAssign {
  const Name* name = nullptr;
  std::string target;
  std::string text;  ///< the value as Verilog
  RtlExpression value;
};

struct RtlLoop {
  bool is_do = false;
  std::string condition;
  RtlExpression condition_value;
  std::vector<RtlAssign> body;
  size_t position = 0;  ///< how many of the function's assignments stand in front of it
};

struct RtlFunction {
  std::string name;
  bool typeless = false;
  std::vector<const Name*> parameters;
  std::vector<RtlAssign> assigns;  ///< those outside of the loop, in source order
  std::optional<RtlLoop> loop;
  std::string result;
  RtlExpression result_value;
  std::vector<std::string> registers;  ///< all targets, each once
  /// Parameters that a function with a loop assigns to. Their registers have other names than the ports, and
  /// those stand in all texts.
  std::vector<std::string> loaded;
};

/// Splits `name = expr` into the target's node and what is assigned. False if it is something else.
bool morv_rtl_split_assign(const EXPR_NODE* expression, const EXPR_NODE** name_out, RtlExpression* rest_out);

/// Adds the assignment of a statement to a list; an empty statement adds nothing. False leaves the reason.
bool morv_rtl_take_assign(const STATEMENT_BLOCK* statement, std::vector<RtlAssign>* list, std::string* error);

/// Adds the assignments of a loop's body, those of nested blocks included. False leaves the reason.
bool morv_rtl_collect_block(const STATEMENT_BLOCK* first, std::vector<RtlAssign>* list, std::string* error);

/// Adds a name that isn't in the list. False if the list is full.
bool morv_rtl_reg_add(std::vector<std::string>* registers, const std::string& name);

/// The function behind a body. Nothing if it lies outside of the subset; `skip` then holds the line to print.
std::optional<RtlFunction> CollectFunction(const PROC_TABLE& body, std::string* skip);

/// One call's arguments, by the position of a parameter.
using RtlVector = std::array<int64_t, kRtlParameters>;

/// What the function answers for the arguments, worked out in 64 bits. Nothing where that can't be told:
/// division by zero, an unbound name, a loop without an end.
std::optional<int64_t> ExpectedResult(const RtlFunction& function, const RtlVector& arguments);

}  // namespace vorc
