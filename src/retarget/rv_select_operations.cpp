#include <algorithm>

#include "retarget/rv_select.h"

namespace vorc {
namespace {

using ThreeRegisters = int (*)(VrvEncoder& enc, uint32_t rd, uint32_t rs1, uint32_t rs2);

struct RegisterRow {
  Tok op;
  ThreeRegisters emit;
  ThreeRegisters emit_unsigned;
  bool needs_multiply_divide;
};
// Comparisons take their operands with their sign, whatever the types are.
constexpr RegisterRow kRegisterForms[] = {
    {Tok::LT, vrv_cmp_lt, vrv_cmp_lt, false},  {Tok::GT, vrv_cmp_gt, vrv_cmp_gt, false},
    {Tok::NE, vrv_cmp_ne, vrv_cmp_ne, false},  {Tok::LE, vrv_cmp_le, vrv_cmp_le, false},
    {Tok::GE, vrv_cmp_ge, vrv_cmp_ge, false},  {Tok::EQ, vrv_cmp_eq, vrv_cmp_eq, false},
    {Tok::PLUS, vrv_add, vrv_add, false},      {Tok::MINUS, vrv_sub, vrv_sub, false},
    {Tok::STAR, vrv_mul, vrv_mul, true},       {Tok::SLASH, vrv_div, vrv_divu, true},
    {Tok::DIV, vrv_div, vrv_divu, true},       {Tok::MOD, vrv_rem, vrv_remu, true},
    {Tok::XOR, vrv_xor, vrv_xor, false},       {Tok::HAT, vrv_xor, vrv_xor, false},
    {Tok::BITAND, vrv_and, vrv_and, false},    {Tok::BITOR, vrv_or, vrv_or, false},
    {Tok::LEFTSHIFT, vrv_sll, vrv_sll, false}, {Tok::RIGHTSHIFT, vrv_sra, vrv_srl, false},
};

using WithNumber = int (*)(VrvEncoder& enc, uint32_t rd, uint32_t rs, int32_t number);

int ShiftLeft(VrvEncoder& enc, uint32_t rd, uint32_t rs, int32_t count) {
  return vrv_slli(enc, rd, rs, static_cast<uint32_t>(count));
}
int ShiftRight(VrvEncoder& enc, uint32_t rd, uint32_t rs, int32_t count) {
  return vrv_srai(enc, rd, rs, static_cast<uint32_t>(count));
}
int ShiftRightUnsigned(VrvEncoder& enc, uint32_t rd, uint32_t rs, int32_t count) {
  return vrv_srli(enc, rd, rs, static_cast<uint32_t>(count));
}
int Subtract(VrvEncoder& enc, uint32_t rd, uint32_t rs, int32_t number) {
  return vrv_addi(enc, rd, rs, -number);
}

constexpr int32_t kLowest = -2048;
constexpr int32_t kHighest = 2047;
constexpr int32_t kMostShift = 31;

struct NumberRow {
  Tok op;
  WithNumber emit;
  WithNumber emit_unsigned;
  int32_t lowest;
  int32_t highest;
};
constexpr NumberRow kNumberForms[] = {
    {Tok::HAT, vrv_xori, vrv_xori, kLowest, kHighest},
    {Tok::XOR, vrv_xori, vrv_xori, kLowest, kHighest},
    {Tok::PLUS, vrv_addi, vrv_addi, kLowest, kHighest},
    {Tok::MINUS, Subtract, Subtract, kLowest + 1, kHighest},
    {Tok::BITAND, vrv_andi, vrv_andi, kLowest, kHighest},
    {Tok::BITOR, vrv_ori, vrv_ori, kLowest, kHighest},
    {Tok::LEFTSHIFT, ShiftLeft, ShiftLeft, 0, kMostShift},
    {Tok::RIGHTSHIFT, ShiftRight, ShiftRightUnsigned, 0, kMostShift},
};

template <typename Row, size_t count>
const Row* RowOf(const Row (&rows)[count], Tok op) {
  const auto row = std::find_if(std::begin(rows), std::end(rows), [op](const Row& r) { return r.op == op; });
  return row == std::end(rows) ? nullptr : row;
}

bool IsUp(Tok op) {
  return op == Tok::PLUS_PLUS || op == Tok::POST_PLUS_PLUS;
}

bool IsPost(Tok op) {
  return op == Tok::POST_PLUS_PLUS || op == Tok::POST_MINUS_MINUS;
}

}  // namespace

bool RvSelector::Operation(const Instruction& record) {
  switch (record.op) {
    case Tok::ASSIGN: return Assign(record);
    case Tok::PLUS_PLUS:
    case Tok::MINUS_MINUS:
    case Tok::POST_PLUS_PLUS:
    case Tok::POST_MINUS_MINUS: return Step(record);
    default: break;
  }
  const RegisterRow* row = RowOf(kRegisterForms, record.op);
  RvVariable result;
  Operand first;
  Operand second;
  if (row == nullptr || (row->needs_multiply_divide && !unit_.multiply_divide()) ||
      !rv32_dest_name(record, result) || !rv32_resolve_operand(record.operand1, first) ||
      !rv32_resolve_operand(record.operand2, second))
    return false;
  const int32_t a = ReadOperand(first, kT0);
  if (a < 0) return false;
  const uint32_t target = function_.TargetOf(result, kT2);
  const NumberRow* form = second.IsSmallNumber() ? RowOf(kNumberForms, record.op) : nullptr;
  if (form != nullptr && second.number >= form->lowest && second.number <= form->highest) {
    const WithNumber emit = rv32_operand_is_unsigned(record.operand1) ? form->emit_unsigned : form->emit;
    return emit(enc_, target, static_cast<uint32_t>(a), static_cast<int32_t>(second.number)) == 0 &&
           function_.rv32_write_done(result, target);
  }
  const int32_t b = ReadOperand(second, kT1);
  // A shift goes by its left operand, a division by the type that both have become.
  const bool is_unsigned =
      record.op == Tok::RIGHTSHIFT ? rv32_operand_is_unsigned(record.operand1) : record.is_unsigned;
  const ThreeRegisters emit = is_unsigned ? row->emit_unsigned : row->emit;
  return b >= 0 && emit(enc_, target, static_cast<uint32_t>(a), static_cast<uint32_t>(b)) == 0 &&
         function_.rv32_write_done(result, target);
}

bool RvSelector::Assign(const Instruction& record) {
  Operand place;
  Operand value;
  if (!rv32_resolve_operand(record.operand1, place) || !place.IsName() ||
      !rv32_resolve_operand(record.operand2, value))
    return false;
  const int32_t read = ReadOperand(value, kT0);
  if (read < 0) return false;
  const auto source = static_cast<uint32_t>(read);
  const uint32_t target = function_.TargetOf(place.variable, source);
  if (target != source && vrv_mv(enc_, target, source) != 0) return false;
  return function_.rv32_write_done(place.variable, target);
}

bool RvSelector::Step(const Instruction& record) {
  Operand place;
  if (!rv32_resolve_operand(record.operand1, place) || !place.IsName()) return false;
  const int32_t read = function_.rv32_read_reg(place.variable, kT0);
  if (read < 0) return false;
  const auto source = static_cast<uint32_t>(read);
  const int64_t size = record.operand1.indirection == kByObject ? record.number : 1;
  const int64_t distance = IsUp(record.op) ? size : -size;
  const uint32_t target = function_.TargetOf(place.variable, kT2);
  const auto copy = [&](uint32_t from) {
    RvVariable result;
    if (!rv32_dest_name(record, result)) return true;
    const uint32_t to = function_.TargetOf(result, kT1);
    return vrv_mv(enc_, to, from) == 0 && function_.rv32_write_done(result, to);
  };
  if (IsPost(record.op) && !copy(source)) return false;
  const bool stepped = FitsImm12(distance)
                           ? vrv_addi(enc_, target, source, static_cast<int32_t>(distance)) == 0
                           : function_.LoadNumber(kT1, distance) && vrv_add(enc_, target, source, kT1) == 0;
  return stepped && function_.rv32_write_done(place.variable, target) && (IsPost(record.op) || copy(target));
}

}  // namespace vorc
