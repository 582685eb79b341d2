#include "retarget/rv_select.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <utility>

namespace vorc {
namespace {

constexpr int kArgumentRegisters = 8;
constexpr size_t kAsmOps = ASMOP_SOURCE_LINE + 1;
constexpr int64_t kMostShift = 32;
constexpr std::string_view kReturnRegister = "return_reg";
constexpr std::string_view kProgramCounter = "PC";

// Bytes of memory that a mnemonic moves, and whether a load leaves the sign out: "uload2".
AccessWidth WidthOf(std::string_view mnemonic) {
  const int bytes = mnemonic.empty() ? 0 : mnemonic.back() - '0';
  return {bytes, mnemonic.starts_with('u')};
}

}  // namespace

struct RvSelector::OpcodeRow {
  AsmOp asmop;
  Handler handler;
};

const RvSelector::OpcodeRow RvSelector::kOpcodes[] = {
    {INVALID_ASMOP, &RvSelector::Nothing},
    {ASMOP_JMP, &RvSelector::Jump},
    {ASMOP_JNE, &RvSelector::Branch},
    {ASMOP_JE, &RvSelector::Branch},
    {ASMOP_CMP_SYMVAR_WITH_SYMVAR, &RvSelector::Compare},
    {ASMOP_CMP_SYMVAR_WITH_NUMBER, &RvSelector::Compare},
    {ASMOP_CMP_TMPVAR_WITH_NUMBER, &RvSelector::Compare},
    {ASMOP_CMP_SYMVAR_WITH_TMPVAR, &RvSelector::Compare},
    {ASMOP_CMP_TMPVAR_WITH_SYMVAR, &RvSelector::Compare},
    {ASMOP_CMP_TMPVAR_WITH_TMPVAR, &RvSelector::Compare},
    {ASMOP_PUSH_SYMBOL_PTR, &RvSelector::Push},
    {ASMOP_PUSH_TMPVAR, &RvSelector::Push},
    {ASMOP_PUSH_REG, &RvSelector::Nothing},
    {ASMOP_POP_REG, &RvSelector::Nothing},
    {ASMOP_MOVE_REG_TO_VAR, &RvSelector::MoveRegToVar},
    {ASMOP_MOVE_VAR_TO_REG, &RvSelector::MoveVarToReg},
    {ASMOP_CALL, &RvSelector::Call},
    {ASMOP_LABEL, &RvSelector::Label},
    {ASMOP_GOTO_LABEL, &RvSelector::Label},
    {ASMOP_LOADIMMED, &RvSelector::LoadImmediate},
    // Nothing branches to the beginning of a block as such.
    {ASMOP_BASIC_BLOCK_BEGIN_LABEL, &RvSelector::Nothing},
    {ASMOP_FUNCTION_HEADER, &RvSelector::Nothing},
    {ASMOP_FUNCTION_FOOTER, &RvSelector::Nothing},
    {ASMOP_PLAIN_TEXT, &RvSelector::PlainText},
    {ASMOP_OPCODE_LOADADDR_TMPVAR_SYMVAR, &RvSelector::LoadAddress},
    {ASMOP_OPCODE_ADD_TMPVAR_TMPVAR_TMPVAR, &RvSelector::Add},
    {ASMOP_OPCODE_MUL_TMPVAR_SYMVAR_NUMBER, &RvSelector::Multiply},
    {ASMOP_OPCODE_MUL_TMPVAR_TMPVAR_NUMBER, &RvSelector::Multiply},
    {ASMOP_OPCODE_ADD_TMPVAR_TMPVAR_NUMBER, &RvSelector::AddNumber},
    {ASMOP_OPCODE_LOAD_TMPVAR_TMPVAR_NUMBER, &RvSelector::Load},
    {ASMOP_OPCODE_LOAD_TMPVAR_TMPVAR, &RvSelector::Load},
    {ASMOP_LOADIMMED_TMPVAR_NUMBER, &RvSelector::LoadImmediate},
    {ASMOP_OPCODE_CLR_TMPVAR, &RvSelector::LoadImmediate},
    {ASMOP_OPCODE_STORE_TMPVAR_TMPVAR_TMPVAR, &RvSelector::Store},
    {ASMOP_OPCODE_STORE_TMPVAR_TMPVAR_NUMBER, &RvSelector::Store},
    {ASMOP_OPCODE_STORE_TMPVAR_TMPVAR, &RvSelector::Store},
    {ASMOP_OPCODE_SUB_TMPVAR_REG_NUMBER, &RvSelector::LoadAddress},
    {ASMOP_COMMENT, &RvSelector::Nothing},
    {ASMOP_SOURCE_LINE, &RvSelector::Nothing},
};

bool RvSelector::rv32_select(const C_SLOT& slot, const Instruction& record) {
  slot_ = &slot;
  if (record.is_inexact || (record.is_wide && !unit_.is_rv64())) return false;
  if (!record.is_asm) return Operation(record);
  static const auto handlers = [] {
    std::array<Handler, kAsmOps> table{};
    for (const OpcodeRow& row : kOpcodes) table[row.asmop] = row.handler;
    return table;
  }();
  const Handler handler = handlers[record.asmop];
  return handler != nullptr && (this->*handler)(record);
}

bool RvSelector::rv32_resolve_operand(const TacOperand& operand, Operand& out) {
  switch (operand.kind) {
    case TacOperand::Kind::kTemp: out.variable = RvVariable::Temp(operand.temp); return true;
    case TacOperand::Kind::kSymbol: out.variable = RvVariable::Symbol(operand.symbol); return true;
    case TacOperand::Kind::kNumber: {
      const char* end = operand.text.data() + operand.text.size();
      const auto read = std::from_chars(operand.text.data(), end, out.number);
      return read.ec == std::errc() && read.ptr == end;
    }
    default: return false;
  }
}

bool RvSelector::rv32_dest_name(const Instruction& record, RvVariable& out) {
  Operand result;
  if (!rv32_resolve_operand(record.result, result) || !result.IsName()) return false;
  out = result.variable;
  return true;
}

bool RvSelector::rv32_operand_is_unsigned(const TacOperand& operand) const {
  return operand.kind == TacOperand::Kind::kSymbol && AccessOfSymbol(*slot_, operand.symbol).is_unsigned;
}

// The register that holds an operand: a variable's own, or the scratch register. -1 if there is none.
int32_t RvSelector::ReadOperand(const Operand& operand, uint32_t scratch) {
  if (operand.IsName()) return function_.rv32_read_reg(operand.variable, scratch);
  return function_.LoadNumber(scratch, operand.number) ? static_cast<int32_t>(scratch) : -1;
}

// --- jumps and labels

bool RvSelector::Jump(const Instruction& record) {
  const int32_t label = function_.rv32_label_for(record.label);
  return label >= 0 && function_.rv32_flush_residents() && vrv_j(enc_, label) == 0;
}

bool RvSelector::Compare(const Instruction& record) {
  compare_ = &record;
  return true;
}

bool RvSelector::Branch(const Instruction& record) {
  Operand left;
  Operand right;
  const Instruction* compare = std::exchange(compare_, nullptr);
  if (compare == nullptr || !rv32_resolve_operand(compare->operand1, left) ||
      !rv32_resolve_operand(compare->operand2, right))
    return false;
  const int32_t label = function_.rv32_label_for(record.label);
  const int32_t first = ReadOperand(left, kT0);
  const bool zero = !right.IsName() && right.number == 0;
  const int32_t second = zero ? static_cast<int32_t>(kX0) : ReadOperand(right, kT1);
  if (label < 0 || first < 0 || second < 0 || !function_.rv32_flush_residents()) return false;
  return vrv_branch(enc_, record.asmop == ASMOP_JNE ? kBne : kBeq, static_cast<uint32_t>(first),
                    static_cast<uint32_t>(second), label) == 0;
}

// Other ways lead to a label: what registers hold there is not known.
bool RvSelector::PlaceLabel(std::string_view text) {
  const int32_t label = function_.rv32_label_for(text);
  if (label < 0 || unit_.IsPlaced(label) || !function_.rv32_flush_residents()) return false;
  function_.ForgetResidents();
  return vrv_place_label(enc_, label) == 0;
}

bool RvSelector::Label(const Instruction& record) {
  return PlaceLabel(record.label);
}

// Most of it frames procedures and calls in a way of their own.
bool RvSelector::PlainText(const Instruction& record) {
  if (record.is_source_text) return false;
  if (record.sets_return_reg) return function_.LoadNumber(kA0, record.number) && function_.FinishResult();
  if (!record.no_translation || !record.text.ends_with(':')) return true;
  if (!PlaceLabel(record.text)) return false;
  return function_.epilogue_seen() || function_.WriteEpilogue();
}

// --- calls

bool RvSelector::Push(const Instruction& record) {
  Operand operand;
  const bool resolved = rv32_resolve_operand(record.operand1, operand);
  if (record.argument >= kArgumentRegisters) return false;
  function_.pending.push_back({operand.variable, operand.number});
  return resolved;
}

// Takes what was queued for this call; what stands ahead of it in the queue belongs to a call around it.
bool RvSelector::Call(const Instruction& record) {
  const int32_t label = unit_.rv32_func_label(record.label);
  bool done = function_.rv32_flush_residents();
  function_.ForgetResidents();
  const auto count = static_cast<size_t>(std::min(record.arguments, kArgumentRegisters));
  auto& pending = function_.pending;
  if (count > pending.size()) return false;
  const size_t first = pending.size() - count;
  const auto variadic = static_cast<size_t>(record.variadic);
  for (size_t i = 0; i < count && done; ++i) {
    // Arguments without a parameter are queued first and come last.
    const size_t position = i < variadic ? count - variadic + i : i - variadic;
    const auto reg = static_cast<uint32_t>(kA0 + position);
    const RvFunctionCode::Argument& argument = pending[first + i];
    done = argument.variable.kind == RvVariable::kUnnamed ? function_.LoadNumber(reg, argument.number)
                                                          : function_.rv32_load_var(reg, argument.variable);
  }
  pending.resize(first);
  function_.has_call = true;
  return done && label >= 0 && vrv_call(enc_, label) == 0;
}

bool RvSelector::MoveRegToVar(const Instruction& record) {
  RvVariable result;
  if (record.reg != kReturnRegister || !rv32_dest_name(record, result)) return false;
  const uint32_t target = function_.TargetOf(result, kT0);
  if (vrv_mv(enc_, target, kA0) != 0) return false;
  const PassedValue& passed = record.passed;
  const bool is_uint32 = passed.bytes == 4 && passed.is_unsigned && !passed.is_real;
  if (unit_.is_rv64() && is_uint32 && !function_.ZeroExtend(target)) return false;
  return function_.rv32_write_done(result, target);
}

bool RvSelector::MoveVarToReg(const Instruction& record) {
  // A call through a pointer: its arguments are of no use to the next call.
  if (record.reg == kProgramCounter) {
    auto& pending = function_.pending;
    pending.resize(pending.size() - std::min(pending.size(), static_cast<size_t>(record.arguments)));
  }
  Operand value;
  if (record.reg != kReturnRegister || !rv32_resolve_operand(record.operand1, value)) return false;
  const int32_t reg = ReadOperand(value, kA0);
  return reg >= 0 && (reg == kA0 || vrv_mv(enc_, kA0, static_cast<uint32_t>(reg)) == 0) &&
         function_.FinishResult();
}

// --- numbers and addresses

// The number goes to memory; a register of the variable's own reads it from there.
bool RvSelector::LoadImmediate(const Instruction& record) {
  RvVariable result;
  Operand value;
  const bool clear = record.asmop == ASMOP_OPCODE_CLR_TMPVAR;
  if (!rv32_dest_name(record, result)) return false;
  if (!clear && !rv32_resolve_operand(record.operand2, value)) return false;
  if (!clear && !function_.LoadNumber(kT0, value.number)) return false;
  function_.ForgetResident(result);
  return function_.rv32_store_var(clear ? uint32_t{kX0} : uint32_t{kT0}, result);
}

bool RvSelector::LoadAddress(const Instruction& record) {
  RvVariable variable = RvVariable::Symbol(record.addressed);
  if (record.is_incoming) variable.kind = RvVariable::kIncoming;
  if (record.addressed == nullptr) {
    // Functions and texts have no place in the data; only the object of a member function has one else.
    if (record.asmop != ASMOP_OPCODE_SUB_TMPVAR_REG_NUMBER) return false;
    variable.kind = RvVariable::kThis;
  }
  return TakeAddress(record, variable);
}

bool RvSelector::TakeAddress(const Instruction& record, const RvVariable& variable) {
  RvVariable result;
  if (!rv32_dest_name(record, result) || function_.IsResident(variable)) return false;
  if (record.asmop == ASMOP_OPCODE_SUB_TMPVAR_REG_NUMBER) {
    if (function_.rv32_slot_for(variable) < 0 || !function_.rv32_flush_residents()) return false;
    function_.ForgetResidents();
  }
  const uint32_t target = function_.TargetOf(result, kT0);
  return function_.LoadAddress(target, variable) && function_.rv32_write_done(result, target);
}

bool RvSelector::Add(const Instruction& record) {
  RvVariable result;
  Operand first;
  Operand second;
  if (!rv32_dest_name(record, result) || !rv32_resolve_operand(record.operand1, first) ||
      !rv32_resolve_operand(record.operand2, second))
    return false;
  const int32_t a = ReadOperand(first, kT0);
  const int32_t b = ReadOperand(second, kT1);
  const uint32_t target = function_.TargetOf(result, kT2);
  return a >= 0 && b >= 0 && vrv_add(enc_, target, static_cast<uint32_t>(a), static_cast<uint32_t>(b)) == 0 &&
         function_.rv32_write_done(result, target);
}

bool RvSelector::MultiplyBy(uint32_t target, uint32_t source, int64_t factor) {
  if (std::has_single_bit(static_cast<uint64_t>(factor))) {
    const auto shift = static_cast<uint32_t>(std::countr_zero(static_cast<uint64_t>(factor)));
    return shift < kMostShift && vrv_slli(enc_, target, source, shift) == 0;
  }
  return unit_.multiply_divide() && function_.LoadNumber(kT2, factor) &&
         vrv_mul(enc_, target, source, kT2) == 0;
}

bool RvSelector::Multiply(const Instruction& record) {
  RvVariable result;
  Operand value;
  if (!rv32_dest_name(record, result) || !rv32_resolve_operand(record.operand1, value)) return false;
  const int32_t source = ReadOperand(value, kT0);
  const uint32_t target = function_.TargetOf(result, kT1);
  return source >= 0 &&
         MultiplyBy(target, static_cast<uint32_t>(source), std::max<int64_t>(record.number, 1)) &&
         function_.rv32_write_done(result, target);
}

bool RvSelector::AddNumber(const Instruction& record) {
  RvVariable result;
  Operand value;
  if (!rv32_dest_name(record, result) || !rv32_resolve_operand(record.operand1, value)) return false;
  const int32_t source = ReadOperand(value, kT0);
  if (source < 0) return false;
  const uint32_t target = function_.TargetOf(result, kT2);
  const auto from = static_cast<uint32_t>(source);
  const bool added = FitsImm12(record.number)
                         ? vrv_addi(enc_, target, from, static_cast<int32_t>(record.number)) == 0
                         : function_.LoadNumber(kT1, record.number) && vrv_add(enc_, target, from, kT1) == 0;
  return added && function_.rv32_write_done(result, target);
}

// --- memory behind a register

bool RvSelector::Load(const Instruction& record) {
  RvVariable result;
  Operand base;
  if (!rv32_dest_name(record, result) || !rv32_resolve_operand(record.operand1, base)) return false;
  const int32_t from = ReadOperand(base, kT0);
  if (from < 0 || !FitsImm12(record.number)) return false;
  const uint32_t target = function_.TargetOf(result, kT1);
  return function_.LoadMemory(WidthOf(record.mnemonic), target, static_cast<uint32_t>(from),
                              static_cast<int32_t>(record.number)) &&
         function_.rv32_write_done(result, target);
}

bool RvSelector::Store(const Instruction& record) {
  Operand value;
  Operand base;
  Operand index;
  if (!rv32_resolve_operand(record.result, value) || !rv32_resolve_operand(record.operand1, base) ||
      !FitsImm12(record.number))
    return false;
  const int32_t to = ReadOperand(base, kT0);
  if (to < 0) return false;
  auto address = static_cast<uint32_t>(to);
  if (rv32_resolve_operand(record.operand2, index)) {
    const int32_t distance = ReadOperand(index, kT1);
    if (distance < 0 || vrv_add(enc_, kT0, address, static_cast<uint32_t>(distance)) != 0) return false;
    address = kT0;
  }
  const int32_t from = ReadOperand(value, index.IsName() ? kT2 : kT1);
  return from >= 0 && function_.StoreMemory(WidthOf(record.mnemonic).bytes, address,
                                            static_cast<int32_t>(record.number), static_cast<uint32_t>(from));
}

}  // namespace vorc
