#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "codegen/mnemonics.h"
#include "codegen/procedure.h"
#include "retarget/a64_arguments.h"
#include "retarget/a64_frame.h"
#include "retarget/a64_registers.h"
#include "retarget/a64_unit.h"

namespace vorc {

/// "PLUS" for the token of an addition; empty for an operation that has no name here.
std::string_view a64_optype_name(Tok op);

/// The code of one function, statement by statement. Every variable is read from its place into a scratch
/// register and written back at once.
class A64Function {
 public:
  /// Begins the function where the code ends.
  A64Function(A64Unit& unit, const Procedure& procedure);

  /// Translates one record. False, with the function unfit to run, where that can't be done right.
  bool a64_select(const Instruction& instruction);
  /// Ends the code. Of a function that isn't `kept` nothing runs: whoever calls it meets a trap.
  void Close(bool kept);

  const std::string& name() const { return name_; }
  uint32_t start() const { return start_; }
  const A64Frame& frame() const { return frame_; }

 private:
  /// Memory of a value: behind a register, so many bytes.
  struct Place {
    uint32_t base = kSp;
    int32_t offset = 0;
    AccessWidth width;
  };
  struct Pending {
    int32_t place;
    PassedValue passed;
  };
  struct IncomingWord {
    uint32_t site;
    uint32_t distance;
  };
  using Select = bool (A64Function::*)(const Instruction& instruction);

  // --- a64_function.cpp
  bool PlaceOf(const TacOperand& operand, Place* place);
  bool Read(const TacOperand& operand, uint32_t reg);
  bool Write(const TacOperand& operand, uint32_t reg);
  void Load(uint32_t reg, const Place& place);
  void Store(uint32_t reg, const Place& place);
  void AddNumber(uint32_t rd, uint32_t rn, int64_t number);
  void Extend(uint32_t reg, const PassedValue& value);
  bool KnowsName(std::string_view name) const;
  bool NamesAddresses(const TacOperand& operand) const;
  int32_t LabelOf(std::string_view text);
  bool PlaceLabel(std::string_view text);
  void BeginFrame();
  void ReleaseLabels();

  // --- a64_select.cpp
  static Select SelectionOf(AsmOp op);
  bool SelectPlain(const Instruction& instruction);
  bool SelectAssign(const Instruction& instruction);
  bool SelectUnary(const Instruction& instruction);
  bool SelectBinary(const Instruction& instruction);
  bool SelectStep(const Instruction& instruction);
  bool SelectNothing(const Instruction&) { return true; }
  bool SelectCompare(const Instruction& instruction);
  bool SelectJump(const Instruction& instruction);
  bool SelectLabel(const Instruction& instruction);
  bool SelectHeader(const Instruction& instruction);
  bool SelectFooter(const Instruction& instruction);
  bool SelectText(const Instruction& instruction);
  bool SelectNumber(const Instruction& instruction);
  bool SelectClear(const Instruction& instruction);
  bool SelectAddressOfName(const Instruction& instruction);
  bool SelectAddressInFrame(const Instruction& instruction);
  bool SelectMemory(const Instruction& instruction);
  bool SelectArithmetic(const Instruction& instruction);

  // --- a64_calls.cpp
  bool TakeParameters();
  bool TakeParameter(const PassedValue& value, const SYM_REC* symbol, int32_t distance,
                     ArgumentPlacer* placer);
  void TakeWord(const ArgumentPlace& from, uint32_t word, const PassedValue& value, const Place& to);
  bool SelectPush(const Instruction& instruction);
  bool SelectCall(const Instruction& instruction);
  bool SelectMoveToRegister(const Instruction& instruction);
  bool SelectMoveFromRegister(const Instruction& instruction);
  bool PassArguments(const Instruction& call, bool through_pointer, uint32_t* stack_bytes);
  void PassWord(const ArgumentPlace& to, uint32_t word, const Pending& argument, int32_t shift);
  void CopyIntoFrame(int32_t place, int32_t bytes);
  void GiveResult();

  A64Unit& unit_;
  Va64Encoder& enc_;
  const Procedure& procedure_;  ///< until the last block has been taken
  const std::string name_;
  const uint32_t start_;
  const size_t first_fixup_;
  A64Frame frame_;
  int32_t end_label_;
  bool parameters_taken_ = false;
  PassedValue result_;
  std::vector<uint32_t> adjustment_sites_;
  std::vector<IncomingWord> incoming_;
  std::vector<Pending> pending_;  ///< pushed, and not taken by a call yet
  std::unordered_map<std::string, int32_t> labels_;
};

}  // namespace vorc
