#pragma once

#include <array>
#include <string>

#include "codegen/instruction.h"

namespace vorc {

/// How much of a compilation was translated, and what was not.
class RvCoverage {
 public:
  void CountBlock(int registers) {
    ++blocks_;
    registers_ += registers;
  }
  void CountEmitted() { ++emitted_; }
  /// A record that could not be translated, by its operation or its opcode.
  void CountUnhandled(const Instruction& record);
  /// A fault that belongs to no record.
  void CountUnhandled() { ++unhandled_; }

  /// The summary of many lines, with the number of registers that variables may get.
  std::string Summary(int pool) const;

 private:
  static constexpr size_t kTokens = 256;
  static constexpr size_t kAsmOps = 64;

  void AddMissing(std::string* text) const;

  int blocks_ = 0;
  int emitted_ = 0;
  int unhandled_ = 0;
  int registers_ = 0;
  std::array<int, kTokens> operations_{};
  std::array<int, kAsmOps> opcodes_{};
};

}  // namespace vorc
