#pragma once

#include <cstdint>

namespace vorc {

/// The registers that selection uses, by their numbers. Nothing stays in one from one statement to the next.
enum A64Register : uint32_t {
  kX0 = 0,    ///< first argument, and the result
  kX9 = 9,    ///< first operand
  kX10,       ///< second operand
  kX11,       ///< result
  kX12,       ///< address of a variable outside of the frame
  kX16 = 16,  ///< target of a call through a pointer
  kX29 = 29,
  kX30,
  kXzr,  ///< zero where it isn't an address
  kSp = kXzr,
};

inline constexpr uint32_t kArgumentRegisters = 8;

}  // namespace vorc
