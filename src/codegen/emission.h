#pragma once

#include <string_view>

#include "codegen/mnemonics.h"
#include "codegen/procedure.h"

namespace vorc {

/// Numbers of registers as emission knows them: general ones from 0 on, and three for scratch.
enum ScratchRegister : int { kRr61 = 61, kRr62 = 62, kRr63 = 63 };
/// "gpr5" or "rr62".
std::string_view RegisterName(int number);

/// Writes the code of one coloured block.
///
/// Memory is every variable's home. Without optimization a register is loaded before each use and
/// stored after each definition; with it, a value that a register of the block already holds is not
/// loaded again, and a coloured variable is stored at the block's end. A variable whose memory may
/// change without being named (a global, or one whose address is taken) is stored at once, and its
/// register counts as stale behind a write through an address.
class BlockEmitter {
 public:
  BlockEmitter(Procedure& procedure, BasicBlock& block);
  void Run();

 private:
  // --- emission.cpp
  template <typename... Parts>
  void Line(const Parts&... parts) {
    assembly_.Write("/*", Padded{line_, 6}, ":*/", parts..., '\n');
    log_.Write(parts..., '\n');
  }
  void LoadInVars();
  void StoreOutVars();
  bool IsLeading(const Instruction& instruction) const;
  const Instruction* ClosingInstruction() const;
  void WriteAddress(int32_t variable, int reg);
  std::string_view LoadMnemonicOf(int32_t variable) const;
  std::string_view StoreMnemonicOf(int32_t variable) const;
  LiveRange* RangeAt(int32_t variable, int32_t index);
  LiveRange* ColouredAt(int32_t variable, int32_t index);
  const Variable& VariableOf(int32_t number) const {
    return procedure_.variables[static_cast<size_t>(number)];
  }
  bool MustReload(int32_t variable, const LiveRange& range) const;
  bool MustStore(int32_t variable) const;
  void ForgetAll();
  void ForgetShared();
  void ForgetRegister(std::string_view reg);

  // --- emission_instructions.cpp
  void Emit(const Instruction& instruction);
  int Read(const Instruction& instruction, const TacOperand& operand, int scratch);
  int ColourOf(const Instruction& instruction, const TacOperand& operand);
  int Target(const Instruction& instruction, const TacOperand& operand);
  void Finish(const Instruction& instruction, const TacOperand& operand, int reg, bool store = false,
              std::string_view before_address = " , ");
  void StoreScratch(const TacOperand& operand);
  void EmitPlain(const Instruction& instruction);
  void EmitAssign(const Instruction& instruction);
  bool NeedsUnsignedForm(const Instruction& instruction) const;
  void EmitBinary(const Instruction& instruction);
  void EmitUnary(const Instruction& instruction);
  void EmitStep(const Instruction& instruction);
  void EmitAssembly(const Instruction& instruction);
  void EmitCompare(const Instruction& instruction);
  void EmitPush(const Instruction& instruction);
  void EmitLoadAddress(const Instruction& instruction);
  void EmitMemory(const Instruction& instruction);
  void EmitArithmetic(const Instruction& instruction);
  void EmitText(const Instruction& instruction);

  Procedure& procedure_;
  BasicBlock& block_;
  const Mnemonics& mnemonics_;
  TextWriter& assembly_;
  TextWriter& log_;
  const bool reuse_;  ///< values in registers are used again
  bool has_call_ = false;
  int32_t line_ = 0;
};

}  // namespace vorc
