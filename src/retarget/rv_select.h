#pragma once

#include "codegen/instruction.h"
#include "retarget/rv_function_code.h"

namespace vorc {

/// Turns records of three-address code into machine code of the open function.
class RvSelector {
 public:
  RvSelector(RvUnitCode& unit, RvFunctionCode& function) : unit_(unit), enc_(unit.enc), function_(function) {}

  /// Translates one record. False if it can't be: what was written so far is of no use then.
  bool rv32_select(const C_SLOT& slot, const Instruction& record);
  /// Forgets what only holds within a function.
  void Reset() { compare_ = nullptr; }

 private:
  struct Operand {
    RvVariable variable;  ///< kUnnamed for a number
    int64_t number = 0;

    bool IsName() const { return variable.kind != RvVariable::kUnnamed; }
    bool IsSmallNumber() const { return !IsName() && FitsImm12(number); }
  };
  using Handler = bool (RvSelector::*)(const Instruction&);
  struct OpcodeRow;
  static const OpcodeRow kOpcodes[];

  static bool rv32_resolve_operand(const TacOperand& operand, Operand& out);
  static bool rv32_dest_name(const Instruction& record, RvVariable& out);
  bool rv32_operand_is_unsigned(const TacOperand& operand) const;
  int32_t ReadOperand(const Operand& operand, uint32_t scratch);
  bool PlaceLabel(std::string_view text);
  bool TakeAddress(const Instruction& record, const RvVariable& variable);
  bool MultiplyBy(uint32_t target, uint32_t source, int64_t factor);

  // rv_select_operations.cpp
  bool Operation(const Instruction& record);
  bool Assign(const Instruction& record);
  bool Step(const Instruction& record);

  bool Nothing(const Instruction&) { return true; }
  bool Jump(const Instruction& record);
  bool Branch(const Instruction& record);
  bool Compare(const Instruction& record);
  bool Push(const Instruction& record);
  bool MoveRegToVar(const Instruction& record);
  bool MoveVarToReg(const Instruction& record);
  bool Call(const Instruction& record);
  bool Label(const Instruction& record);
  bool PlainText(const Instruction& record);
  bool LoadImmediate(const Instruction& record);
  bool LoadAddress(const Instruction& record);
  bool Add(const Instruction& record);
  bool Multiply(const Instruction& record);
  bool AddNumber(const Instruction& record);
  bool Load(const Instruction& record);
  bool Store(const Instruction& record);

  RvUnitCode& unit_;
  VrvEncoder& enc_;
  RvFunctionCode& function_;
  const C_SLOT* slot_ = nullptr;
  const Instruction* compare_ = nullptr;  ///< what the next branch goes by
};

}  // namespace vorc
