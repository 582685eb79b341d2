#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "program/tokens.h"

namespace vorc {

/// Families of operators that are treated alike.
enum class OperatorKind : uint8_t {
  kNone,  ///< the token is no operator
  kAssign,
  kCompound,
  kLogic,
  kCompare,
  kBits,
  kShift,
  kSum,
  kProduct,
  kUnary,
  kPlace,     ///< `*` and `&` in front of an operand
  kStep,      ///< `++` and `--` in front
  kPostStep,  ///< `++` and `--` behind
};

struct OperatorInfo {
  std::string_view sign;
  uint8_t level = 0;  ///< of a binary operator: 1 binds loosest, 7 tightest; 0 for others
  Tok plain = Tok::NOTOKEN;
  OperatorKind kind = OperatorKind::kNone;
};

namespace detail {

constexpr std::array<OperatorInfo, kTokenCount> MakeOperators() {
  std::array<OperatorInfo, kTokenCount> operators{};
#define OPERATOR(token, sign, level, plain, kind) \
  operators[static_cast<size_t>(Tok::token)] = {sign, level, Tok::plain, OperatorKind::kind};
#include "program/operators.def"
#undef OPERATOR
  return operators;
}

inline constexpr std::array<OperatorInfo, kTokenCount> kOperators = MakeOperators();

}  // namespace detail

/// What is known of an operator; of any other token, that it is none.
constexpr const OperatorInfo& OperatorOf(Tok token) {
  return detail::kOperators[static_cast<size_t>(token)];
}

constexpr bool IsAssignment(Tok token) {
  const OperatorKind kind = OperatorOf(token).kind;
  return kind == OperatorKind::kAssign || kind == OperatorKind::kCompound;
}

}  // namespace vorc
