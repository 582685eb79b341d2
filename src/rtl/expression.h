#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "program/records.h"

// Expressions of the integer subset: as Verilog text, and as a value. Both read the same chain of records.

namespace vorc {

/// Characters that the text of one expression may have.
inline constexpr size_t kRtlTextLimit = 1023;
/// Names that one evaluation may bind.
inline constexpr size_t kRtlNameLimit = 80;

/// A part of a chain: from `first` up to `end`, which is no longer a part of it. Null is the chain's end.
struct RtlExpression {
  const EXPR_NODE* first = nullptr;
  const EXPR_NODE* end = nullptr;
};

/// Values of names, signed 64-bit, and how much may still be worked out with them.
class RtlEnvironment {
 public:
  /// False if a new name finds no room.
  bool Bind(const Name* name, int64_t value);
  std::optional<int64_t> Value(const Name* name) const;

  /// Counts a node that is evaluated. False once there were too many: far beyond what a simulation gets
  /// through, and before anybody grows tired of waiting.
  bool Step() { return steps_left_ > 0 && steps_left_-- > 0; }

 private:
  static constexpr size_t kPlaces = 256;
  static constexpr int64_t kMostSteps = 10'000'000;

  struct Entry {
    const Name* name = nullptr;
    int64_t value = 0;
  };

  /// Where a name is, or may be put.
  size_t PlaceOf(const Name* name) const;

  std::array<Entry, kPlaces> entries_;  ///< by a hash of the name's address; never full
  size_t names_ = 0;
  int64_t steps_left_ = kMostSteps;
};

/// The Verilog operator (IEEE 1364-2001) for a token, empty where there is none.
std::string_view morv_rtl_verilog_op(Tok token);

/// True for what IEEE 1364-2001 takes as a simple identifier, its reserved words excepted.
bool IsVerilogName(std::string_view name);
/// The reason why a name was refused.
std::string RefusedName(std::string_view name);

/// The name that a node stands for, null if it has none.
const Name* NameOfNode(const EXPR_NODE* node);

/// The expression as Verilog-2001. Nothing if it lies outside of the subset; `error` then holds the reason.
std::optional<std::string> morv_rtl_expr_to_verilog(RtlExpression expression, std::string* error);

/// The value of an expression that can be translated, worked out in 64 bits. Nothing for an unbound name, a
/// division by zero, a shift by more than 31, and once too many nodes were evaluated.
std::optional<int64_t> morv_rtl_expr_eval(RtlExpression expression, RtlEnvironment& environment);

}  // namespace vorc
