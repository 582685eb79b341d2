#include "program/constants.h"

#include <cstdlib>
#include <limits>
#include <vector>

#include "base/format.h"
#include "base/truncate.h"
#include "program/layout.h"
#include "program/members.h"

namespace vorc {

namespace {

using Kind = ConstantValue::Kind;

class Evaluator {
 public:
  explicit Evaluator(C_SLOT& slot) : slot_(slot) {}

  bool Run(const EXPR_NODE* head, ConstantValue* value);

 private:
  bool Push(const EXPR_NODE* node);
  bool PushName(const EXPR_NODE* node);
  bool Select(const EXPR_NODE* node);
  bool ApplyIndices(const EXPR_NODE* node, ConstantValue* value);
  void Displace(ConstantValue* value, int64_t count, const ValueType& type);
  bool Cast(const EXPR_NODE* node);
  bool Unary(const EXPR_NODE* node);
  bool Binary(const EXPR_NODE* node);
  bool RealBinary(const EXPR_NODE* node, double a, double b, ConstantValue* result);
  bool IntegerBinary(const EXPR_NODE* node, int64_t a, int64_t b, ConstantValue* result);
  bool AddressBinary(const EXPR_NODE* node, const ConstantValue& a, const ConstantValue& b,
                     ConstantValue* result);
  bool Choose(const EXPR_NODE* node);
  bool Settle(const EXPR_NODE* node, ConstantValue* value);
  bool Fail(const EXPR_NODE* node, const std::string& text) {
    slot_.ErrorAt(node->Line, 0, text);
    return false;
  }

  C_SLOT& slot_;
  std::vector<ConstantValue> stack_;
};

ConstantValue Integer(int64_t value) {
  ConstantValue result;
  result.integer = value;
  return result;
}

ConstantValue Real(double value) {
  ConstantValue result;
  result.kind = Kind::kReal;
  result.real = value;
  return result;
}

double AsReal(const ConstantValue& value) {
  return value.kind == Kind::kReal ? value.real : static_cast<double>(value.integer);
}

bool IsTrue(const ConstantValue& value) {
  if (value.kind == Kind::kReal) return value.real != 0.0;
  return value.kind != Kind::kInteger || value.integer != 0;
}

int64_t Wrap(uint64_t value) {
  return static_cast<int64_t>(value);
}

bool Evaluator::Run(const EXPR_NODE* head, ConstantValue* value) {
  const size_t base = stack_.size();
  const EXPR_NODE* last = head;
  for (const EXPR_NODE* node = head; node != nullptr; node = node->Next) {
    last = node;
    if (!Push(node)) return false;
  }
  if (stack_.size() <= base || !Settle(last, &stack_.back())) return false;
  *value = stack_.back();
  stack_.resize(base);
  return true;
}

bool Evaluator::Push(const EXPR_NODE* node) {
  switch (node->Token) {
    case Tok::NUMBER:
    case Tok::HEXNUMBER: stack_.push_back(Integer(node->NumberValue)); return true;
    case Tok::REAL_NUMBER: stack_.push_back(Real(std::strtod(node->Literal, nullptr))); return true;
    case Tok::STRING: {
      ConstantValue text;
      text.kind = Kind::kText;
      text.text = node->Literal;
      stack_.push_back(text);
      return true;
    }
    case Tok::LPAREN: {
      ConstantValue inner;
      if (!Run(node->SubExpression, &inner)) return false;
      stack_.push_back(inner);
      return true;
    }
    case Tok::IDENTIFIER:
    case Tok::DOLLAR_IDENTIFIER:
    case Tok::FUNCTION_CALL: return node->IsMember ? Select(node) : PushName(node);
    case Tok::DOT:
    case Tok::POINTER: return true;
    case Tok::QUESTION_MARK: return Choose(node);
    case Tok::TYPE_CAST: return Cast(node);
    case Tok::UNARYPLUS:
    case Tok::UNARYMINUS:
    case Tok::NOT:
    case Tok::TILDA:
    case Tok::BITAND_ADDRESS: return Unary(node);
    default: return Binary(node);
  }
}

bool Evaluator::PushName(const EXPR_NODE* node) {
  ConstantValue value;
  if (node->Function != nullptr && node->CallWithoutParens) {
    value.kind = Kind::kFunction;
    value.function = node->Function;
    stack_.push_back(value);
    return true;
  }
  SYM_REC* symbol = node->Symbol;
  if (symbol == nullptr || symbol->ImplicitExtern || node->Token == Tok::FUNCTION_CALL) {
    const bool undeclared = node->Token != Tok::FUNCTION_CALL && !node->HasCall;
    return Fail(node, Format(undeclared ? "Initializing symbol '%s' must be declared."
                                        : "Initializing symbol '%s' must be constant number.",
                             node->Literal));
  }
  if (node->IndexExpression == nullptr && symbol->Constant != nullptr) {
    stack_.push_back(*symbol->Constant);
    return true;
  }
  value.kind = Kind::kVariable;
  value.symbol = symbol;
  value.type = ValueType::OfSymbol(*symbol);
  if (!ApplyIndices(node, &value)) return false;
  stack_.push_back(value);
  return true;
}

bool Evaluator::ApplyIndices(const EXPR_NODE* node, ConstantValue* value) {
  for (const EXPR_NODE* index = node->IndexExpression; index != nullptr; index = index->NextDimension) {
    int64_t at = 0;
    if (!EvalConstantInteger(slot_, index, &at)) return false;
    if (!value->type.IsArray()) break;
    value->type = value->type.Element();
    Displace(value, at, value->type);
  }
  return true;
}

// A member of the variable on top.
bool Evaluator::Select(const EXPR_NODE* node) {
  ConstantValue* value = stack_.empty() ? nullptr : &stack_.back();
  const bool object = value != nullptr && value->kind == Kind::kVariable && value->type.IsStruct();
  const MemberResult member =
      object ? FindStructMember(slot_, value->type.record, node->name) : MemberResult();
  if (member.Symbol == nullptr || node->Token == Tok::FUNCTION_CALL) {
    return Fail(node, Format("Initializing symbol '%s' must be constant number.", node->Literal));
  }
  value->integer += MemberDataOffset(member);
  value->type = ValueType::OfSymbol(*member.Symbol);
  return ApplyIndices(node, value);
}

// Moves an address by `count` values of a type.
void Evaluator::Displace(ConstantValue* value, int64_t count, const ValueType& type) {
  value->integer = Wrap(static_cast<uint64_t>(value->integer) +
                        static_cast<uint64_t>(count) * static_cast<uint64_t>(type.Size(slot_)));
}

// A variable's own value is not known before the program runs; an array's is its address.
bool Evaluator::Settle(const EXPR_NODE* node, ConstantValue* value) {
  if (value->kind != Kind::kVariable) return true;
  if (value->type.IsArray()) {
    value->kind = Kind::kAddress;
    value->type = value->type.Element();
    return true;
  }
  return Fail(node,
              Format("Initializing symbol '%s' must be constant number.", value->symbol->name->c_str()));
}

// A cast changes no number, but what an address counts in.
bool Evaluator::Cast(const EXPR_NODE* node) {
  if (stack_.empty()) return Fail(node, "Stack Underflow Error.");
  ConstantValue& value = stack_.back();
  if (value.kind == Kind::kVariable && value.type.IsArray() && !Settle(node, &value)) return false;
  if (value.kind != Kind::kAddress) return true;
  const ValueType target = ValueType::OfCast(*node->Cast);
  value.type = target.IsPointer() ? target.Element() : ValueType::Basic(Tok::char_);
  return true;
}

bool Evaluator::Unary(const EXPR_NODE* node) {
  if (stack_.empty()) return Fail(node, "Stack Underflow Error.");
  ConstantValue& value = stack_.back();
  if (node->Token == Tok::BITAND_ADDRESS) {
    if (value.kind == Kind::kVariable || value.kind == Kind::kAddress)
      value.kind = Kind::kAddress;
    else if (value.kind != Kind::kFunction)
      return Fail(node, "Improper use of '&' in the expression.");
    return true;
  }
  if (!Settle(node, &value)) return false;
  if (node->Token == Tok::NOT) {
    value = Integer(IsTrue(value) ? 0 : 1);
    return true;
  }
  if (!value.IsNumber()) return Fail(node, "Incompatible data types in arithmatic expression.");
  if (node->Token == Tok::UNARYMINUS) {
    value = value.kind == Kind::kReal ? Real(-value.real)
                                      : Integer(Wrap(0 - static_cast<uint64_t>(value.integer)));
  } else if (node->Token == Tok::TILDA) {
    value = Integer(~(value.kind == Kind::kReal ? TruncatedToInteger(value.real) : value.integer));
  }
  return true;
}

bool Evaluator::Binary(const EXPR_NODE* node) {
  if (stack_.size() < 2) return Fail(node, "Stack Underflow Error.");
  ConstantValue b = stack_.back();
  stack_.pop_back();
  ConstantValue& a = stack_.back();
  if (!Settle(node, &a) || !Settle(node, &b)) return false;
  ConstantValue result;
  if (!a.IsNumber() || !b.IsNumber()) {
    if (!AddressBinary(node, a, b, &result)) return false;
  } else if (a.kind == Kind::kReal || b.kind == Kind::kReal) {
    if (!RealBinary(node, AsReal(a), AsReal(b), &result)) return false;
  } else if (!IntegerBinary(node, a.integer, b.integer, &result)) {
    return false;
  }
  a = result;
  return true;
}

bool Evaluator::AddressBinary(const EXPR_NODE* node, const ConstantValue& a, const ConstantValue& b,
                              ConstantValue* result) {
  const bool plus = node->Token == Tok::PLUS;
  const bool offset =
      a.kind == Kind::kAddress && b.kind == Kind::kInteger && (plus || node->Token == Tok::MINUS);
  const bool swapped = a.kind == Kind::kInteger && b.kind == Kind::kAddress && plus;
  if (!offset && !swapped) return Fail(node, "Incompatible data types in arithmatic expression.");
  *result = offset ? a : b;
  const int64_t count = offset ? b.integer : a.integer;
  Displace(result, plus ? count : Wrap(0 - static_cast<uint64_t>(count)), result->type);
  return true;
}

bool Evaluator::RealBinary(const EXPR_NODE* node, double a, double b, ConstantValue* result) {
  switch (node->Token) {
    case Tok::PLUS: *result = Real(a + b); return true;
    case Tok::MINUS: *result = Real(a - b); return true;
    case Tok::STAR: *result = Real(a * b); return true;
    case Tok::SLASH:
    case Tok::DIV:
      if (b == 0.0) return Fail(node, "Division by zero");
      *result = Real(a / b);
      return true;
    case Tok::LT: *result = Integer(a < b); return true;
    case Tok::GT: *result = Integer(a > b); return true;
    case Tok::LE: *result = Integer(a <= b); return true;
    case Tok::GE: *result = Integer(a >= b); return true;
    case Tok::EQ: *result = Integer(a == b); return true;
    case Tok::NE: *result = Integer(a != b); return true;
    case Tok::AND: *result = Integer(a != 0.0 && b != 0.0); return true;
    case Tok::OR: *result = Integer(a != 0.0 || b != 0.0); return true;
    default: return Fail(node, "Invalid operation on a double operand");
  }
}

bool Evaluator::IntegerBinary(const EXPR_NODE* node, int64_t a, int64_t b, ConstantValue* result) {
  const auto ua = static_cast<uint64_t>(a);
  const auto ub = static_cast<uint64_t>(b);
  int64_t value = 0;
  switch (node->Token) {
    case Tok::PLUS: value = Wrap(ua + ub); break;
    case Tok::MINUS: value = Wrap(ua - ub); break;
    case Tok::STAR: value = Wrap(ua * ub); break;
    case Tok::SLASH:
    case Tok::DIV:
    case Tok::MOD:
      if (b == 0) return Fail(node, "Division by zero");
      if (b == -1)
        value = node->Token == Tok::MOD ? 0 : Wrap(0 - ua);
      else
        value = node->Token == Tok::MOD ? a % b : a / b;
      break;
    case Tok::XOR: value = a ^ b; break;
    case Tok::BITAND: value = a & b; break;
    case Tok::BITOR: value = a | b; break;
    case Tok::LEFTSHIFT: value = Wrap(ua << (ub & 63)); break;
    case Tok::RIGHTSHIFT: value = a >> (ub & 63); break;
    case Tok::LT: value = a < b; break;
    case Tok::GT: value = a > b; break;
    case Tok::LE: value = a <= b; break;
    case Tok::GE: value = a >= b; break;
    case Tok::EQ: value = a == b; break;
    case Tok::NE: value = a != b; break;
    case Tok::AND: value = a != 0 && b != 0; break;
    case Tok::OR: value = a != 0 || b != 0; break;
    default: return Fail(node, "Invalid initializer.");
  }
  *result = Integer(value);
  return true;
}

bool Evaluator::Choose(const EXPR_NODE* node) {
  if (stack_.empty()) return Fail(node, "Stack Underflow Error.");
  if (!Settle(node, &stack_.back())) return false;
  const EXPR_NODE* arm = IsTrue(stack_.back()) ? node->ThenExpression : node->ElseExpression;
  ConstantValue value;
  if (!Run(arm, &value)) return false;
  stack_.back() = value;
  return true;
}

}  // namespace

bool EvalConstantExpression(C_SLOT& slot, const EXPR_NODE* head, ConstantValue* value) {
  return Evaluator(slot).Run(head, value);
}

bool EvalConstantInteger(C_SLOT& slot, const EXPR_NODE* head, int64_t* value) {
  ConstantValue result;
  if (!EvalConstantExpression(slot, head, &result) || result.kind != Kind::kInteger) return false;
  *value = result.integer;
  return true;
}

}  // namespace vorc
