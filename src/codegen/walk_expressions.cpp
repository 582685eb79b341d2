#include <cstdlib>
#include <unordered_map>
#include <vector>

#include "base/format.h"
#include "codegen/block_hook.h"
#include "codegen/walk.h"
#include "program/operators.h"
#include "program/static_size.h"

namespace vorc {

namespace {

Operand RealValue(const EXPR_NODE* node) {
  Operand operand;
  operand.kind = Operand::Kind::kReal;
  operand.real = std::strtod(node->Literal, nullptr);
  operand.type = ValueType::Basic(Tok::double_);
  return operand;
}

Operand TextValue(const EXPR_NODE* node) {
  Operand operand;
  operand.kind = Operand::Kind::kText;
  operand.text = node->Text();
  operand.type = ValueType::Basic(Tok::char_).Pointer();
  return operand;
}

// What `?:` gives: the arithmetic type of both arms, or the pointer or struct that one of them is.
ValueType TypeOfArms(const Walk& walk, const EXPR_NODE* node) {
  const int register_bytes = walk.procedure.RegisterBytes();
  ValueType then_type = StaticType(walk.slot, node->ThenExpression, register_bytes);
  ValueType else_type = StaticType(walk.slot, node->ElseExpression, register_bytes);
  if (then_type.IsArray()) then_type = then_type.Element().Pointer();
  if (else_type.IsArray()) else_type = else_type.Element().Pointer();
  if (then_type.IsPointer() || then_type.IsStruct() || then_type.IsReal()) return then_type;
  if (else_type.IsPointer() || else_type.IsReal()) return else_type;
  return WorkType(walk, then_type, else_type);
}

Operand ThisValue(Walk& walk) {
  const STRUCT_REC* owner = walk.procedure.proto->OwnerClass;
  if (owner == nullptr) {
    WalkError(walk, 0, "'this' is pointing to invalid object");
    return NumberValue(0);
  }
  ValueType type;
  type.basic = Tok::struct_;
  type.record = owner;
  type.depth = 1;
  return TempValue(ThisPointer(walk), type);
}

bool IsLogic(const EXPR_NODE* node) {
  return node->Token == Tok::AND || node->Token == Tok::OR;
}

/// Where the right sides of a chain's `&&` and `||` begin: the first node of each, and the operator's.
using RightSides = std::unordered_map<const EXPR_NODE*, const EXPR_NODE*>;

// Finds them by keeping the first node of every operand that lies on the stack. Empty for a chain that is
// none.
RightSides FindRightSides(const EXPR_NODE* head) {
  RightSides found;
  std::vector<const EXPR_NODE*> starts;
  for (const EXPR_NODE* node = head; node != nullptr; node = node->Next) {
    size_t taken = 0;
    switch (node->Token) {
      case Tok::NUMBER:
      case Tok::HEXNUMBER:
      case Tok::REAL_NUMBER:
      case Tok::STRING:
      case Tok::LPAREN:
      case Tok::this_:
      case Tok::new_: break;
      case Tok::IDENTIFIER:
      case Tok::DOLLAR_IDENTIFIER:
      case Tok::FUNCTION_CALL: taken = node->IsMember ? 1 : 0; break;
      case Tok::FUNCTION_ARGUMENT:
      case Tok::QUESTION_MARK:
      case Tok::TYPE_CAST: taken = 1; break;
      default: {
        const OperatorKind kind = OperatorOf(node->Token).kind;
        if (kind == OperatorKind::kNone) continue;  // of a member, taken with its name
        const bool one = kind == OperatorKind::kUnary || kind == OperatorKind::kPlace ||
                         kind == OperatorKind::kStep || kind == OperatorKind::kPostStep;
        taken = one ? 1 : 2;
      }
    }
    if (starts.size() < taken) return {};
    if (IsLogic(node)) found[starts.back()] = node;
    const EXPR_NODE* start = taken == 0 ? node : starts[starts.size() - taken];
    starts.resize(starts.size() - taken);
    starts.push_back(start);
  }
  return found;
}

constexpr size_t kMostOperands = 33;  // that wait for their operators
constexpr size_t kLongestHex = 18;    // "0x" and 64 bits
constexpr std::string_view kForCondition =
    "  //dereference struct/union pointer-member address for bare condition";
constexpr std::string_view kForPointerCondition = "  //dereference plain pointer for bare condition";

/// An `&&` or `||` whose left side is known: the result so far, and where its end lies.
struct OpenLogic {
  const EXPR_NODE* operation;
  int32_t result;
  int32_t end_label;
  BasicBlock* decided;
};

/// One chain: operands first, then their operator.
class ChainWalk {
 public:
  ChainWalk(Walk& walk, bool value_wanted) : walk_(walk), value_wanted_(value_wanted) {}

  Operand Run(const EXPR_NODE* head);

 private:
  const EXPR_NODE* Step(const EXPR_NODE* node);
  void Push(Operand operand);
  void StackError(const char* text);
  Operand Pop();
  const EXPR_NODE* Name(const EXPR_NODE* node);
  const EXPR_NODE* Member(const EXPR_NODE* node);
  void Operator(const EXPR_NODE* node);
  Operand QuestionMark(const EXPR_NODE* node);
  void BeginRightSide(const EXPR_NODE* operation);
  void EndRightSide();

  Walk& walk_;
  bool value_wanted_;
  std::vector<Operand> stack_;
  std::vector<OpenLogic> open_logic_;
};

// Such an error concerns no line.
void ChainWalk::StackError(const char* text) {
  walk_.failed = true;
  walk_.slot.ErrorAt({walk_.line.File, 0}, 0, text);
}

void ChainWalk::Push(Operand operand) {
  if (stack_.size() == kMostOperands) return StackError("Stack Overflow Error.");
  stack_.push_back(std::move(operand));
}

Operand ChainWalk::Pop() {
  if (stack_.empty()) {
    StackError("Stack Underflow Error.");
    return NumberValue(0);
  }
  Operand operand = std::move(stack_.back());
  stack_.pop_back();
  return operand;
}

Operand ChainWalk::Run(const EXPR_NODE* head) {
  const BlockHook* hook = walk_.procedure.context.hook;
  RightSides right_sides;
  if (hook != nullptr && hook->WantsShortCircuit()) right_sides = FindRightSides(head);
  if (walk_.chains++ == 0) walk_.failed = false;
  for (const EXPR_NODE* node = head; node != nullptr && !(walk_.failed && open_logic_.empty());) {
    const auto begins = right_sides.find(node);
    if (begins != right_sides.end()) BeginRightSide(begins->second);
    node = Step(node);
  }
  --walk_.chains;
  return stack_.empty() ? Operand() : Pop();
}

// The left side lies on the stack. Where it decides, the right side is jumped over.
void ChainWalk::BeginRightSide(const EXPR_NODE* operation) {
  Procedure& procedure = walk_.procedure;
  const TacOperand left = ValueOf(walk_, Boolean(walk_, Pop()));
  const OpenLogic logic{operation, procedure.NewTemp(), procedure.context.label_counter++,
                        procedure.current_bb};
  const TacOperand result = TempOperand(logic.result);
  CapturePlain(walk_, Tok::ASSIGN, result, left, kNoTemp);
  CaptureCompareWithNumber(walk_, result, 0);
  const bool is_and = operation->Token == Tok::AND;
  CaptureJump(walk_, is_and ? ASMOP_JE : ASMOP_JNE, LabelString(procedure, logic.end_label));
  ThreeAddress_AddBasicBlockPredecesor(logic.decided,
                                       StartBlock(walk_, is_and ? "right side of &&" : "right side of ||"));
  open_logic_.push_back(logic);
}

void ChainWalk::EndRightSide() {
  const OpenLogic logic = open_logic_.back();
  open_logic_.pop_back();
  const TacOperand right = ValueOf(walk_, Boolean(walk_, Pop()));
  CapturePlain(walk_, Tok::ASSIGN, TempOperand(logic.result), right, kNoTemp);
  BasicBlock* right_end = walk_.procedure.current_bb;
  BasicBlock* end = StartBlock(walk_, "logic decided");
  ThreeAddress_AddBasicBlockPredecesor(right_end, end);
  AddJumpEdge(logic.decided, end);
  CaptureLabel(walk_, logic.end_label);
  Push(TempValue(logic.result, ValueType::Basic(Tok::int_)));
  stack_.back().is_boolean = true;
}

// Lowers a node and answers the next one.
const EXPR_NODE* ChainWalk::Step(const EXPR_NODE* node) {
  switch (node->Token) {
    case Tok::NUMBER:
    case Tok::HEXNUMBER:
      Push(NumberValue(node->NumberValue, ValueType::OfNumber(*node).basic));
      // A hexadecimal constant stands in the code as the source spells it.
      if (node->Token == Tok::HEXNUMBER && node->NumberValue >= 0 && node->LiteralLength <= kLongestHex &&
          walk_.procedure.context.hook == nullptr)
        stack_.back().text = node->Text();
      return node->Next;
    case Tok::REAL_NUMBER: Push(RealValue(node)); return node->Next;
    case Tok::STRING: Push(TextValue(node)); return node->Next;
    case Tok::LPAREN: Push(EvalExpression(walk_, node->SubExpression)); return node->Next;
    case Tok::this_: Push(ThisValue(walk_)); return node->Next;
    case Tok::IDENTIFIER:
    case Tok::DOLLAR_IDENTIFIER:
    case Tok::FUNCTION_CALL: return node->IsMember ? Member(node) : Name(node);
    case Tok::FUNCTION_ARGUMENT: {
      const Operand target = Pop();
      Push(ExecFuncPointer(walk_, node, node->Arguments, &target));
      return node->Next;
    }
    case Tok::QUESTION_MARK: Push(QuestionMark(node)); return node->Next;
    case Tok::new_:
      WalkError(walk_, 0, "'new' needs a run-time library that compiled programs don't have.");
      Push(NumberValue(0));
      return node->Next;
    default: Operator(node); return node->Next;
  }
}

const EXPR_NODE* ChainWalk::Name(const EXPR_NODE* node) {
  if (node->Token == Tok::FUNCTION_CALL) {
    Push(ExecFuncPointer(walk_, node, node->Arguments, nullptr));
    return node->Next;
  }
  const bool external = node->Symbol == nullptr || node->Symbol->ImplicitExtern;
  if (node->HasCall && external) {
    Push(ExecFuncPointer(walk_, node, node->Next->Arguments, nullptr));
    return node->Next->Next;
  }
  Operand operand = ResolveIdentifier(walk_, node);
  if (node->IndexExpression != nullptr) operand = ResolveIndirection(walk_, operand, node->IndexExpression);
  Push(operand);
  return node->Next;
}

// The object lies on the stack; the operator behind the member's name is taken with it.
const EXPR_NODE* ChainWalk::Member(const EXPR_NODE* node) {
  const Operand object = Pop();
  if (node->Token == Tok::FUNCTION_CALL) {
    Push(ExecMemberFunc(walk_, object, node));
    return node->Next->Next;
  }
  Operand member = VerifyMember(walk_, object, node);
  if (node->IndexExpression != nullptr) member = ResolveIndirection(walk_, member, node->IndexExpression);
  Push(member);
  return node->Next->Next;
}

void ChainWalk::Operator(const EXPR_NODE* node) {
  const Tok op = node->Token;
  if (!open_logic_.empty() && open_logic_.back().operation == node) return EndRightSide();
  switch (OperatorOf(op).kind) {
    case OperatorKind::kAssign:
    case OperatorKind::kCompound: {
      const Operand right = Pop();
      return Push(Assignment(walk_, op, Pop(), right));
    }
    case OperatorKind::kUnary: return Push(UnaryOperation(walk_, op, Pop()));
    case OperatorKind::kPlace:
      return Push(op == Tok::STAR_REF ? ResolveStarRef(walk_, Pop(), node->StarRefCount)
                                      : ResolveBitAnd_Address(walk_, Pop()));
    case OperatorKind::kStep:
    case OperatorKind::kPostStep:
      return Push(StepOperation(walk_, op, Pop(), value_wanted_ || node->Next != nullptr));
    case OperatorKind::kNone: break;
    default: {
      const Operand right = Pop();
      return Push(BinaryOperation(walk_, op, Pop(), right));
    }
  }
  if (op == Tok::TYPE_CAST) {
    const ValueType type = ValueType::OfCast(*node->Cast);
    Operand value = Converted(walk_, Pop(), type);
    if (value.IsPlace() && !type.IsStruct()) value = TempValue(CopyOf(walk_, value), type);
    value.type = type;
    return Push(value);
  }
  WalkError(walk_, 0,
            Format("EvalExpression:  return unknown token type %s", std::string(TokenName(op)).c_str()));
}

Operand ChainWalk::QuestionMark(const EXPR_NODE* node) {
  Procedure& procedure = walk_.procedure;
  const int32_t false_label = procedure.context.label_counter++;
  const int32_t end_label = procedure.context.label_counter++;
  CompareConditionWithZero(walk_, Pop(), {});
  const int32_t result = procedure.NewTemp();
  CaptureJump(walk_, ASMOP_JE, LabelString(procedure, false_label),
              "ternary: condition false, goto false branch");
  BasicBlock* head = procedure.current_bb;
  BasicBlock* true_block = StartBlock(walk_, "ternary true branch");
  ThreeAddress_AddBasicBlockPredecesor(head, true_block);
  const ValueType type = TypeOfArms(walk_, node);
  const auto copy = [&](const EXPR_NODE* arm) {
    const Operand value = Converted(walk_, EvalExpression(walk_, arm), type);
    CapturePlain(walk_, Tok::ASSIGN, TempOperand(result), ValueOf(walk_, value), kNoTemp);
  };
  copy(node->ThenExpression);
  CaptureJump(walk_, ASMOP_JMP, LabelString(procedure, end_label), "ternary: skip false branch");
  BasicBlock* true_end = procedure.current_bb;
  true_end->fall_through_successor_next_basic_block_not_used_for_out_var_calc_because_of_absoulte_jump = true;
  BasicBlock* false_block = StartBlock(walk_, "ternary false branch");
  AddJumpEdge(head, false_block);
  CaptureLabel(walk_, false_label, "ternary: right-of-colon label");
  copy(node->ElseExpression);
  BasicBlock* false_end = procedure.current_bb;
  BasicBlock* end = StartBlock(walk_, "ternary end (merge)");
  ThreeAddress_AddBasicBlockPredecesor(false_end, end);
  AddJumpEdge(true_end, end);
  CaptureLabel(walk_, end_label, "ternary end label");
  Operand value = TempValue(result, type);
  if (type.IsStruct()) value.kind = Operand::Kind::kPlace;
  return value;
}

}  // namespace

Operand EvalExpression(Walk& walk, const EXPR_NODE* head, bool value_wanted) {
  return ChainWalk(walk, value_wanted).Run(head);
}

void CompareConditionWithZero(Walk& walk, const EXPR_NODE* head, std::string_view comment) {
  CompareConditionWithZero(walk, EvalExpression(walk, head), comment);
}

void CompareConditionWithZero(Walk& walk, Operand condition, std::string_view comment) {
  if (condition.kind == Operand::Kind::kVoid) condition = NumberValue(0);
  if (condition.may_be_wide) condition = Boolean(walk, condition);
  const bool member = condition.symbol != nullptr && condition.symbol->OwnerStruct != nullptr;
  TacOperand value = ValueOf(walk, condition, member ? kForCondition : kForPointerCondition);
  const bool is_real = IsFloatingScalar(condition.type);
  if (!value.IsVariable()) {
    const int32_t temp = walk.procedure.NewTemp();
    CaptureLoadImmediate(walk, temp, value.text);
    value = TempOperand(temp);
  }
  walk.is_inexact |= is_real;
  CaptureCompareWithNumber(walk, value, 0, comment);
}

}  // namespace vorc
