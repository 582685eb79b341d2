#pragma once

#include <array>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "sim/program.h"

namespace vorc::sim {

struct Limits {
  uint64_t stack_bytes = uint64_t{1} << 20;
  uint64_t steps = 1'000'000'000;  // of one call
};

inline constexpr uint64_t kMaxStackBytes = uint64_t{256} << 20;

struct Argument {
  uint64_t value = 0;
  int width = 0;  // bytes to push, 0 for the width of an address
};

/// Runs an assembled program. Memory and registers live on from call to call.
class Machine {
 public:
  /// `program` must outlive the machine.
  Machine(const Program& program, const Limits& limits);

  /// Calls a procedure as compiled code does: pushes the return value register, FRAMEPTR, LR and the
  /// arguments in their order, and runs until the procedure comes back. The answer is the return value
  /// register. Nothing after a fault, told in one line in `fault`.
  std::optional<int64_t> Call(std::string_view procedure, std::span<const Argument> arguments,
                              std::string* fault);

  /// Instructions executed so far.
  uint64_t Steps() const { return steps_; }

  /// Writes each executed instruction, with what it left in its register, to a stream; null turns it off.
  void TraceTo(std::FILE* stream) { trace_ = stream; }

  /// The address of a procedure or a variable.
  std::optional<uint64_t> FindAddress(std::string_view name) const;

  /// The bytes of a variable as they stand now.
  std::span<const uint8_t> Bytes(const DataSymbol& symbol) const;

 private:
  // Why a run stopped.
  enum class Stop { kReturned, kFault };

  template <bool kTraced>
  Stop Run(uint64_t index);
  uint8_t* Find(uint64_t address, uint64_t width);
  bool Push(uint64_t value, int width);
  bool Enter(std::string_view procedure, std::span<const Argument> arguments, uint64_t* index);
  void Trace(const Instruction& instruction) const;

  // Each notes a fault of the instruction at hand; the answer is Stop::kFault.
  Stop Fault(std::string reason);
  Stop MemoryFault(const Instruction& instruction, uint64_t address);
  Stop JumpFault(uint64_t address);
  Stop NamedFault(const Instruction& instruction);
  bool CheckReturn();

  const Program& program_;
  Limits limits_;
  std::vector<Instruction> code_;  // the program's, and where calls come back to
  std::vector<uint8_t> data_;
  std::vector<uint8_t> stack_;
  uint64_t stack_begin_;
  uint64_t address_mask_;
  std::array<uint64_t, kRegisterCount + 2> registers_{};
  uint64_t steps_ = 0;
  uint64_t stack_at_call_ = 0;
  uint64_t index_ = 0;  // of the instruction at hand when a run stopped
  uint8_t ordering_ = kEqual;
  std::FILE* trace_ = nullptr;
  std::string fault_;
};

}  // namespace vorc::sim
