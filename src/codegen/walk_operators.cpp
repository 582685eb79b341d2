#include "base/format.h"
#include "base/wrapping.h"
#include "codegen/walk.h"
#include "program/operators.h"

namespace vorc {

namespace {

constexpr int kFloatingError = 87;
constexpr int kDoubleError = 88;

bool IsPointerLike(const Operand& operand) {
  return operand.type.IsPointer() || operand.type.IsArray() || operand.kind == Operand::Kind::kText;
}

bool IsDouble(const ValueType& type) {
  return type.basic == Tok::double_ && IsFloatingScalar(type);
}

void RefuseDoubles(Walk& walk, const Operand& left, const Operand& right) {
  if (walk.slot.Target.cpu_size != 32 || (!IsDouble(left.type) && !IsDouble(right.type))) return;
  WalkError(walk, kDoubleError,
            "'double' (8 bytes) is not supported under -cpu32 - the 32-bit datapath cannot perform an 8-byte "
            "load/store.");
}

bool IsArithmetic(Tok op) {
  const OperatorKind kind = OperatorOf(op).kind;
  return kind == OperatorKind::kSum || kind == OperatorKind::kProduct || op == Tok::UNARYMINUS;
}

void RefuseReals(Walk& walk, Tok op, const Operand& left, const Operand& right) {
  const bool real = IsFloatingScalar(left.type) || IsFloatingScalar(right.type);
  if (real && IsArithmetic(op)) {
    const std::string sign = op == Tok::UNARYMINUS ? "unary -" : std::string(OperatorOf(op).sign);
    WalkError(
        walk, kFloatingError,
        Format("floating-point arithmetic ('%s') is not supported on this target - the QLX ISA has no FP "
               "instructions and this would silently emit an integer operation on the IEEE-754 bit "
               "pattern. Use fixed-point (Q15/Q16) integer arithmetic instead.",
               sign.c_str()));
  }
  RefuseDoubles(walk, left, right);
}

bool IsTrue(const Operand& constant) {
  return constant.kind == Operand::Kind::kReal ? constant.real != 0.0 : constant.number != 0;
}

Operand RealConstant(double real) {
  Operand operand;
  operand.kind = Operand::Kind::kReal;
  operand.real = real;
  operand.type = ValueType::Basic(Tok::double_);
  return operand;
}

// Two constants, one of them a real number at least.
Operand FoldReals(Walk& walk, Tok op, const Operand& left, const Operand& right) {
  const double a = left.IsNumber() ? static_cast<double>(left.number) : left.real;
  const double b = right.IsNumber() ? static_cast<double>(right.number) : right.real;
  switch (op) {
    case Tok::PLUS: return RealConstant(a + b);
    case Tok::MINUS: return RealConstant(a - b);
    case Tok::STAR: return RealConstant(a * b);
    case Tok::LT: return NumberValue(a < b);
    case Tok::GT: return NumberValue(a > b);
    case Tok::LE: return NumberValue(a <= b);
    case Tok::GE: return NumberValue(a >= b);
    case Tok::EQ: return NumberValue(a == b);
    case Tok::NE: return NumberValue(a != b);
    default: break;
  }
  const bool divide = op == Tok::SLASH || op == Tok::DIV;
  if (divide && b != 0.0) return RealConstant(a / b);
  WalkError(walk, 0, divide ? "Division by zero" : "Invalid operation on a double operand");
  return RealConstant(0.0);
}

bool IsWide(const Walk& walk, const ValueType& type) {
  return AccessOf(walk, type).bytes > 4;
}

bool NeedsExactOperands(Tok op) {
  const OperatorKind kind = OperatorOf(op).kind;
  return kind == OperatorKind::kCompare || op == Tok::SLASH || op == Tok::DIV || op == Tok::MOD ||
         op == Tok::RIGHTSHIFT;
}

// False where the operation has no value.
bool Fold(Tok op, int64_t a, int64_t b, bool is_unsigned, bool wide, int64_t* result) {
  const auto ua = static_cast<uint64_t>(a);
  const auto ub = static_cast<uint64_t>(b);
  const uint64_t shift = ub & (wide ? 63 : 31);
  switch (op) {
    case Tok::PLUS: *result = static_cast<int64_t>(ua + ub); return true;
    case Tok::MINUS: *result = static_cast<int64_t>(ua - ub); return true;
    case Tok::STAR: *result = static_cast<int64_t>(ua * ub); return true;
    case Tok::XOR: *result = a ^ b; return true;
    case Tok::BITAND: *result = a & b; return true;
    case Tok::BITOR: *result = a | b; return true;
    case Tok::LEFTSHIFT: *result = static_cast<int64_t>(ua << shift); return true;
    case Tok::RIGHTSHIFT: *result = is_unsigned ? static_cast<int64_t>(ua >> shift) : a >> shift; return true;
    case Tok::LT: *result = is_unsigned ? ua < ub : a < b; return true;
    case Tok::GT: *result = is_unsigned ? ua > ub : a > b; return true;
    case Tok::LE: *result = is_unsigned ? ua <= ub : a <= b; return true;
    case Tok::GE: *result = is_unsigned ? ua >= ub : a >= b; return true;
    case Tok::EQ: *result = a == b; return true;
    case Tok::NE: *result = a != b; return true;
    default: break;
  }
  if (b == 0) return false;
  const bool divide = op == Tok::SLASH;
  if (is_unsigned)
    *result = static_cast<int64_t>(divide ? ua / ub : ua % ub);
  else if (b == -1)
    *result = divide ? static_cast<int64_t>(0 - ua) : 0;
  else
    *result = divide ? a / b : a % b;
  return true;
}

Operand PointerSum(Walk& walk, Tok op, const Operand& pointer, const Operand& offset) {
  const int64_t size = pointer.type.Element().Size(walk.slot);
  ValueType type = pointer.type.IsArray() ? pointer.type.Element().Pointer() : pointer.type;
  if (pointer.kind == Operand::Kind::kText) type = ValueType::Basic(Tok::char_).Pointer();
  Operand scaled = offset;
  if (offset.IsNumber()) {
    scaled = NumberValue(WrappingProduct(offset.number, size == 0 ? 1 : size), Tok::INT64);
  } else if (size > 1) {
    const int32_t product = walk.procedure.NewTemp();
    const Operand exact = Converted(walk, offset, ValueType::Basic(Tok::INT64));
    CaptureMultiplyNumber(walk, product, ValueOf(walk, exact), size, AccessOf(walk, offset.type).is_unsigned);
    scaled = TempValue(product, ValueType::Basic(Tok::INT64));
  }
  const int32_t result = walk.procedure.NewTemp();
  CapturePlain(walk, op, ValueOf(walk, pointer), ValueOf(walk, scaled), result);
  return TempValue(result, type);
}

Operand PointerDifference(Walk& walk, const Operand& left, const Operand& right) {
  const int32_t bytes = walk.procedure.NewTemp();
  CapturePlain(walk, Tok::MINUS, ValueOf(walk, left), ValueOf(walk, right), bytes);
  const ValueType type = ValueType::Basic(walk.procedure.RegisterBytes() == 4 ? Tok::int_ : Tok::INT64);
  const Operand difference = TempValue(bytes, type);
  const int64_t size = left.type.Element().Size(walk.slot);
  if (size <= 1) return difference;
  const int32_t result = walk.procedure.NewTemp();
  CapturePlain(walk, Tok::SLASH, TempOperand(bytes), NumberOperand(walk.procedure, size), result);
  return TempValue(result, type);
}

Operand Logical(Walk& walk, Tok op, const Operand& left, const Operand& right) {
  if (left.IsConstant() && right.IsConstant())
    return NumberValue(op == Tok::AND ? IsTrue(left) && IsTrue(right) : IsTrue(left) || IsTrue(right));
  const Operand a = Boolean(walk, left, kForLogicOperand);
  const Operand b = Boolean(walk, right, kForLogicOperand);
  const int32_t result = walk.procedure.NewTemp();
  CapturePlain(walk, op, ValueOf(walk, a), ValueOf(walk, b), result);
  Operand boolean = TempValue(result, ValueType::Basic(Tok::int_));
  boolean.is_boolean = true;
  return boolean;
}

// What an operation on unsigned or shifted 32 bits leaves above them is cut off.
Operand Finished(Walk& walk, Tok op, int32_t result, const ValueType& work, bool wide_operand) {
  Operand value = TempValue(result, work);
  value.may_be_wide = wide_operand && !IsWide(walk, work) && !NeedsExactOperands(op);
  const bool grows = OperatorOf(op).kind == OperatorKind::kSum || op == Tok::STAR || op == Tok::LEFTSHIFT ||
                     op == Tok::UNARYMINUS || op == Tok::TILDA || op == Tok::XOR || op == Tok::BITOR;
  if (!grows || IsWide(walk, work) || walk.procedure.RegisterBytes() == 4) return value;
  if (!work.is_unsigned) {
    value.may_be_wide |= op == Tok::LEFTSHIFT;
    return value;
  }
  const int32_t cut = walk.procedure.NewTemp();
  CapturePlain(walk, Tok::BITAND, TempOperand(result), NumberOperand(walk.procedure, 0xffffffff), cut);
  value.temp = cut;
  value.may_be_wide = false;
  return value;
}

// --- assignment

std::string_view NameOfOperand(const Operand& operand) {
  return operand.symbol == nullptr ? std::string_view() : operand.symbol->name->Text;
}

std::string TypeNameOf(const ValueType& type) {
  std::string name =
      type.record != nullptr ? std::string(type.record->name->Text) : std::string(TokenName(type.basic));
  // The names of the sized types tell it themselves.
  if (type.is_unsigned && type.record == nullptr && name[0] != 'U') name = "unsigned " + name;
  return name + std::string(static_cast<size_t>(type.depth), '*');
}

void Warn(Walk& walk, const std::string& text) {
  walk.slot.WarningAt(walk.line, text);
}

bool SamePointee(const ValueType& a, const ValueType& b) {
  return a.basic == b.basic && a.record == b.record && a.depth == b.depth;
}

void CheckAssignmentTypeCompatibility(Walk& walk, const Operand& left, const Operand& right) {
  if (NameOfOperand(left).empty() || NameOfOperand(right).empty()) return;
  const std::string to(NameOfOperand(left));
  const std::string from(NameOfOperand(right));
  const ValueType a = left.type;
  const ValueType b = right.type.IsArray() ? right.type.Element().Pointer() : right.type;
  if (a.function != nullptr || b.function != nullptr || a.IsArray()) return;
  if (a.IsStruct() || b.IsStruct()) {
    if (a.record == b.record && a.IsStruct() == b.IsStruct()) return;
    return Warn(walk, Format("assignment to '%s' from incompatible struct/union/class type '%s'", to.c_str(),
                             TypeNameOf(b).c_str()));
  }
  if (a.IsPointer() != b.IsPointer()) {
    return Warn(walk,
                Format(a.IsPointer() ? "assignment to '%s' makes pointer from integer '%s' without a cast"
                                     : "assignment to '%s' makes integer from pointer '%s' without a cast",
                       to.c_str(), from.c_str()));
  }
  if (a.IsPointer()) {
    const bool any = (a.basic == Tok::void_ && a.depth == 1) || (b.basic == Tok::void_ && b.depth == 1);
    if (any || SamePointee(a, b)) return;
    return Warn(walk, Format("assignment to '%s' from incompatible pointer type '%s'", to.c_str(),
                             TypeNameOf(b).c_str()));
  }
  const AccessWidth wide = AccessOf(walk, b);
  const AccessWidth narrow = AccessOf(walk, a);
  const char* reason = nullptr;
  if (wide.bytes > narrow.bytes || (b.IsReal() && !a.IsReal()))
    reason = "may lose precision - narrowing conversion";
  else if (wide.bytes == narrow.bytes && wide.is_unsigned != narrow.is_unsigned && !a.IsReal() && !b.IsReal())
    reason = "- signed/unsigned mismatch";
  if (reason == nullptr) return;
  Warn(walk, Format("assignment to '%s' (%s) from '%s' (%s) %s", to.c_str(), TypeNameOf(a).c_str(),
                    from.c_str(), TypeNameOf(b).c_str(), reason));
}

}  // namespace

ValueType WorkType(const Walk& walk, const ValueType& left, const ValueType& right) {
  const auto promoted = [&](const ValueType& type) {
    return AccessOf(walk, type.IsNarrowField() ? ValueType::Basic(Tok::int_) : type);
  };
  const AccessWidth a = promoted(left);
  const AccessWidth b = promoted(right);
  const bool wide = a.bytes > 4 || b.bytes > 4;
  const int rank = wide ? 8 : 4;
  const bool is_unsigned = (a.is_unsigned && a.bytes == rank) || (b.is_unsigned && b.bytes == rank);
  ValueType type = ValueType::Basic(wide ? (is_unsigned ? Tok::UINT64 : Tok::INT64)
                                         : (is_unsigned ? Tok::UINT32 : Tok::int_));
  type.is_unsigned = is_unsigned;
  return type;
}

Operand BinaryOperation(Walk& walk, Tok op, const Operand& left, const Operand& right) {
  if (op == Tok::AND || op == Tok::OR) return Logical(walk, op, left, right);
  const bool is_sum = OperatorOf(op).kind == OperatorKind::kSum;
  if (is_sum && IsPointerLike(left) && IsPointerLike(right)) return PointerDifference(walk, left, right);
  if (is_sum && IsPointerLike(left)) return PointerSum(walk, op, left, right);
  if (is_sum && IsPointerLike(right)) return PointerSum(walk, op, right, left);
  if (left.IsConstant() && right.IsConstant() && !(left.IsNumber() && right.IsNumber()))
    return FoldReals(walk, op, left, right);
  RefuseReals(walk, op, left, right);
  const bool shift = OperatorOf(op).kind == OperatorKind::kShift;
  const ValueType work = WorkType(walk, left.type, shift ? ValueType::Basic(Tok::int_) : right.type);
  const bool wide = IsWide(walk, work);
  const bool compare = OperatorOf(op).kind == OperatorKind::kCompare;
  Operand a = left;
  Operand b = right;
  const bool plain = !IsPointerLike(left) && !IsPointerLike(right);
  if (plain && (NeedsExactOperands(op) || wide)) {
    a = Converted(walk, left, work);
    if (!shift) b = Converted(walk, right, work);
  }
  if (a.IsNumber() && b.IsNumber()) {
    int64_t number = 0;
    if (!Fold(op, a.number, b.number, work.is_unsigned, wide, &number)) {
      WalkError(walk, 0, "Division by zero");
      return NumberValue(0);
    }
    return compare ? NumberValue(number) : Converted(walk, NumberValue(number, Tok::INT64), work);
  }
  const int32_t result = walk.procedure.NewTemp();
  const TacOperand first = ValueOf(walk, a, kForOperand);
  const TacOperand second = ValueOf(walk, b, kForOperand);
  walk.is_inexact |= IsFloatingScalar(left.type) || IsFloatingScalar(right.type);
  Instruction& instruction = CapturePlain(walk, op, first, second, result);
  instruction.is_wide = wide && plain;
  instruction.is_int32 = !wide && !work.is_unsigned && !compare;
  // Zero-extended 32 bits compare and divide alike in either way; a full register does not.
  const bool full = wide || walk.procedure.RegisterBytes() == 4;
  instruction.is_unsigned = (work.is_unsigned && full) || (work.is_unsigned && !compare) || !plain;
  if (!compare) return Finished(walk, op, result, work, a.may_be_wide || (b.may_be_wide && !shift));
  Operand boolean = TempValue(result, ValueType::Basic(Tok::int_));
  boolean.is_boolean = true;
  return boolean;
}

Operand UnaryOperation(Walk& walk, Tok op, const Operand& operand) {
  if (op == Tok::UNARYPLUS) return operand;
  if (op == Tok::UNARYMINUS && operand.kind == Operand::Kind::kReal) {
    Operand negative = operand;
    negative.real = -operand.real;
    return negative;
  }
  if (op == Tok::NOT && operand.IsConstant()) return NumberValue(!IsTrue(operand));
  RefuseReals(walk, op, operand, operand);
  if (operand.IsNumber()) {
    const auto bits = static_cast<uint64_t>(operand.number);
    return Converted(walk,
                     NumberValue(static_cast<int64_t>(op == Tok::UNARYMINUS ? 0 - bits : ~bits), Tok::INT64),
                     operand.type);
  }
  const ValueType work = WorkType(walk, operand.type, ValueType::Basic(Tok::int_));
  const Operand exact = op == Tok::NOT && operand.may_be_wide ? Boolean(walk, operand) : operand;
  const TacOperand value = ValueOf(walk, exact, kForOperand);
  const int32_t result = walk.procedure.NewTemp();
  walk.is_inexact |= IsFloatingScalar(operand.type);
  Instruction& instruction = CapturePlain(walk, op, value, {}, result);
  instruction.is_wide = IsWideNumber(walk, work);
  instruction.is_int32 = op != Tok::NOT && !IsWide(walk, work) && !work.is_unsigned;
  if (op != Tok::NOT) return Finished(walk, op, result, work, operand.may_be_wide);
  Operand boolean = TempValue(result, ValueType::Basic(Tok::int_));
  boolean.is_boolean = true;
  return boolean;
}

Operand Assignment(Walk& walk, Tok op, const Operand& left, const Operand& right) {
  if (!left.IsPlace() || left.type.IsArray()) {
    WalkError(walk, 0, "Address Constant cannot be changed.");
    return left;
  }
  CheckAssignmentTypeCompatibility(walk, left, right);
  if (op == Tok::ASSIGN) {
    if (left.kind == Operand::Kind::kSymbol && right.kind != Operand::Kind::kPlace)
      RefuseDoubles(walk, left, right);
    return StoreInto(walk, left, right);
  }
  return StoreInto(walk, left, BinaryOperation(walk, OperatorOf(op).plain, left, right));
}

Operand StepOperation(Walk& walk, Tok op, const Operand& operand, bool old_value_wanted) {
  if (!operand.IsPlace()) {
    WalkError(walk, 0, "Invalid operation on a constant number");
    return operand;
  }
  if (operand.type.IsArray() || operand.type.IsStruct()) {
    WalkError(walk, 0, "Address Constant cannot be changed.");
    return operand;
  }
  const bool post = OperatorOf(op).kind == OperatorKind::kPostStep;
  const Tok plain = OperatorOf(op).plain;
  Operand old = operand;
  if (post && old_value_wanted) old = TempValue(CopyOf(walk, operand), operand.type);
  const bool pointer = operand.type.IsPointer();
  const AccessWidth width = AccessOf(walk, operand.type);
  const bool narrow = !pointer && width.bytes < walk.procedure.RegisterBytes() &&
                      (width.bytes < 4 || width.is_unsigned) && walk.procedure.KeepsValuesInRegisters();
  if (operand.kind == Operand::Kind::kSymbol && !narrow && !IsFloatingScalar(operand.type)) {
    TacOperand variable = SymbolOperand(operand.symbol);
    variable.indirection = pointer ? kByObject : kByOne;
    Instruction& instruction = CapturePlain(walk, op, variable, {}, kNoTemp);
    if (pointer) instruction.number = operand.type.Element().Size(walk.slot);
  } else {
    StoreInto(walk, operand, BinaryOperation(walk, plain, old, NumberValue(1)));
  }
  return post && old_value_wanted ? old : operand;
}

}  // namespace vorc
