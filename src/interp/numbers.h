#pragma once

#include <cstdint>

#include "program/tokens.h"

namespace vorc {

/// What an arithmetic operator makes of two integers, in 64 bits that wrap. `plain` is the operator itself,
/// or what a compound assignment does before it assigns. Shifts see 32 bits and a count modulo 32. A divisor
/// is not zero.
inline int64_t IntegerResult(Tok plain, int64_t a, int64_t b) {
  const auto ua = static_cast<uint64_t>(a);
  const auto ub = static_cast<uint64_t>(b);
  const auto shift = static_cast<uint32_t>(ub) & 31;
  switch (plain) {
    case Tok::PLUS: return static_cast<int64_t>(ua + ub);
    case Tok::MINUS: return static_cast<int64_t>(ua - ub);
    case Tok::STAR: return static_cast<int64_t>(ua * ub);
    case Tok::SLASH:
    case Tok::DIV: return b == -1 ? static_cast<int64_t>(0 - ua) : a / b;
    case Tok::MOD: return b == -1 ? 0 : a % b;
    case Tok::XOR: return a ^ b;
    case Tok::BITAND: return a & b;
    case Tok::BITOR: return a | b;
    case Tok::LEFTSHIFT: return static_cast<int32_t>(static_cast<uint32_t>(ua) << shift);
    default: return static_cast<int32_t>(a) >> shift;
  }
}

}  // namespace vorc
