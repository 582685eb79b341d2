#include "program/static_size.h"

#include <vector>

#include "program/operators.h"
#include "program/value_type.h"

namespace vorc {

namespace {

bool IsAddress(const ValueType& type) {
  return type.IsPointer() || type.IsArray();
}

/// Works out the type of an expression without evaluating it.
class TypeWalk {
 public:
  TypeWalk(const C_SLOT& slot, Tok difference) : slot_(slot), difference_(difference) {}

  ValueType Run(const EXPR_NODE* head) {
    for (const EXPR_NODE* node = head; node != nullptr; node = node->Next) Step(node);
    return stack_.empty() ? ValueType() : stack_.back();
  }

 private:
  void Step(const EXPR_NODE* node);
  void StepOperator(const EXPR_NODE* node);
  void PushName(const EXPR_NODE* node);
  void PushCall(const EXPR_NODE* node);
  void Choose(const EXPR_NODE* node);
  void Binary(const EXPR_NODE* node);
  ValueType Left() const { return stack_.empty() ? ValueType() : stack_.back(); }

  const C_SLOT& slot_;
  Tok difference_;  // what two pointers are apart
  std::vector<ValueType> stack_;
};

void TypeWalk::Step(const EXPR_NODE* node) {
  switch (node->Token) {
    case Tok::IDENTIFIER:
    case Tok::DOLLAR_IDENTIFIER:
    case Tok::this_: return PushName(node);
    case Tok::STRING: return stack_.push_back(ValueType::OfText(node->Literal));
    case Tok::REAL_NUMBER: return stack_.push_back(ValueType::Basic(Tok::double_));
    case Tok::NUMBER:
    case Tok::HEXNUMBER: return stack_.push_back(ValueType::OfNumber(*node));
    case Tok::FUNCTION_CALL: return PushCall(node);
    case Tok::LPAREN: return stack_.push_back(TypeWalk(slot_, difference_).Run(node->SubExpression));
    default: break;
  }
  if (!stack_.empty()) StepOperator(node);
}

void TypeWalk::StepOperator(const EXPR_NODE* node) {
  ValueType& top = stack_.back();
  switch (node->Token) {
    case Tok::STAR_REF:
      for (int i = 0; i < node->StarRefCount; ++i) top = top.Element();
      return;
    case Tok::BITAND_ADDRESS: top = top.Pointer(); return;
    case Tok::TYPE_CAST: top = ValueType::OfCast(*node->Cast); return;
    case Tok::DOT:
    case Tok::POINTER:
      if (stack_.size() >= 2) stack_.erase(stack_.end() - 2);
      return;
    case Tok::FUNCTION_ARGUMENT:
      if (top.function != nullptr) top = ValueType::OfType(top.function->ReturnType);
      return;
    case Tok::QUESTION_MARK: return Choose(node);
    case Tok::NOT: top = ValueType::Basic(Tok::int_); return;
    default: break;
  }
  const OperatorKind kind = OperatorOf(node->Token).kind;
  if (kind == OperatorKind::kUnary)
    top = CommonType(slot_, top, top);
  else if (OperatorOf(node->Token).level > 0 || IsAssignment(node->Token))
    Binary(node);
}

void TypeWalk::Binary(const EXPR_NODE* node) {
  if (stack_.size() < 2) return;
  const OperatorKind kind = OperatorOf(node->Token).kind;
  const ValueType right = stack_.back();
  stack_.pop_back();
  ValueType& left = stack_.back();
  if (kind == OperatorKind::kAssign || kind == OperatorKind::kCompound) return;
  if (kind == OperatorKind::kCompare || kind == OperatorKind::kLogic)
    left = ValueType::Basic(Tok::int_);
  else if (node->Token == Tok::MINUS && IsAddress(left) && IsAddress(right))
    left = ValueType::Basic(difference_);
  else
    left = CommonType(slot_, left, kind == OperatorKind::kShift ? left : right);
}

void TypeWalk::Choose(const EXPR_NODE* node) {
  const ValueType left = TypeWalk(slot_, difference_).Run(node->ThenExpression);
  const ValueType right = TypeWalk(slot_, difference_).Run(node->ElseExpression);
  stack_.back() = left.IsStruct() ? left : CommonType(slot_, left, right);
}

void TypeWalk::PushName(const EXPR_NODE* node) {
  ValueType type;
  if (node->IsMember)
    type = Left().Member(slot_, node->name);
  else if (node->CallWithoutParens)
    type = ValueType::OfFunction(*node->Function);
  else if (node->Symbol != nullptr)
    type = ValueType::OfSymbol(*node->Symbol);
  if (node->Token == Tok::this_) type.depth = 1;
  for (const EXPR_NODE* index = node->IndexExpression; index != nullptr; index = index->NextDimension)
    type = type.Element();
  stack_.push_back(type);
}

void TypeWalk::PushCall(const EXPR_NODE* node) {
  const FUNCPROTO_REC* function = node->Function;
  if (node->IsMember && Left().record != nullptr)
    function = FindStructMember(slot_, Left().record, node->name).Function;
  stack_.push_back(function == nullptr ? ValueType::Basic(Tok::int_)
                                       : ValueType::OfType(function->ReturnType));
}

}  // namespace

ValueType StaticType(const C_SLOT& slot, const EXPR_NODE* head, int register_bytes) {
  if (register_bytes == 0) register_bytes = slot.Target.cpu_size / 8;
  return TypeWalk(slot, register_bytes == 4 ? Tok::int_ : Tok::INT64).Run(head);
}

int64_t StaticSize(const C_SLOT& slot, const EXPR_NODE* head) {
  const ValueType type = StaticType(slot, head);
  const bool unknown = type.basic == Tok::NOTOKEN && !type.IsPointer();
  return unknown ? slot.Target.AddressBytes() : type.Size(slot);
}

}  // namespace vorc
