#include "interp/decode.h"

#include <algorithm>
#include <cstdlib>
#include <new>

#include "interp/memory.h"
#include "program/layout.h"
#include "program/members.h"
#include "program/operators.h"

namespace vorc {

namespace {

OpCode CodeOf(Tok token) {
  switch (token) {
    case Tok::PLUS: return OpCode::kPlus;
    case Tok::MINUS: return OpCode::kMinus;
    case Tok::UNARYMINUS: return OpCode::kNegate;
    case Tok::UNARYPLUS: return OpCode::kUnaryPlus;
    case Tok::STAR_REF: return OpCode::kStar;
    case Tok::BITAND_ADDRESS: return OpCode::kAddressOf;
    case Tok::TYPE_CAST: return OpCode::kCast;
    case Tok::new_: return OpCode::kNew;
    default: break;
  }
  switch (OperatorOf(token).kind) {
    case OperatorKind::kProduct:
    case OperatorKind::kBits:
    case OperatorKind::kShift: return OpCode::kArithmetic;
    case OperatorKind::kCompare: return OpCode::kCompare;
    case OperatorKind::kLogic: return OpCode::kAndOr;
    case OperatorKind::kUnary: return OpCode::kNotInvert;
    case OperatorKind::kAssign: return OpCode::kAssign;
    case OperatorKind::kCompound: return OpCode::kCompoundAssign;
    case OperatorKind::kStep: return OpCode::kStepBefore;
    case OperatorKind::kPostStep: return OpCode::kStepAfter;
    default: return OpCode::kMissingOperand;
  }
}

enum IndirectionKind : uint8_t { kAddressKind = 1, kValueKind = 2, kPointerKind = 3 };

bool IsMemberOperator(const EXPR_NODE* node) {
  return node != nullptr && (node->Token == Tok::DOT || node->Token == Tok::POINTER);
}

}  // namespace

Code* Decoder::DecodeChain(EXPR_NODE* head) {
  Code* code = new (arena_.Allocate(sizeof(Code))) Code();
  code->count = CountSteps(head);
  code->ops = static_cast<Op*>(arena_.Allocate(sizeof(Op) * static_cast<size_t>(code->count)));
  int next = 0;
  for (EXPR_NODE* node = head; node != nullptr; node = node->Next) {
    // A member's name, and the arguments behind a name that is called, belong to the step before.
    if (IsMemberOperator(node)) continue;
    if (node->Token == Tok::FUNCTION_ARGUMENT && node->Prev != nullptr && node->Prev->HasCall) continue;
    Op* op = new (&code->ops[next++]) Op();
    op->node = node;
    op->token = node->Token;
    DecodeNode(node, op);
  }
  code->ops[code->count - 1].last = true;
  chains_[head->Index + 1] = code;
  return code;
}

int Decoder::CountSteps(const EXPR_NODE* head) const {
  int count = 0;
  for (const EXPR_NODE* node = head; node != nullptr; node = node->Next) {
    if (IsMemberOperator(node)) continue;
    if (node->Token == Tok::FUNCTION_ARGUMENT && node->Prev != nullptr && node->Prev->HasCall) continue;
    ++count;
  }
  return count;
}

void Decoder::DecodeNode(EXPR_NODE* node, Op* op) {
  switch (node->Token) {
    case Tok::NUMBER:
    case Tok::HEXNUMBER:
      op->code = OpCode::kNumber;
      op->number = node->NumberValue;
      return;
    case Tok::REAL_NUMBER:
      op->code = OpCode::kReal;
      op->real = std::strtod(node->Literal, nullptr);
      return;
    case Tok::STRING:
      op->code = OpCode::kString;
      op->text = memory_.CopyLiteral(node->Literal);
      return;
    case Tok::LPAREN:
      op->code = node->IsObject ? OpCode::kGroupObject : OpCode::kGroup;
      op->sub = Decode(node->SubExpression);
      return;
    case Tok::this_:
      op->code = OpCode::kThis;
      op->symbol = node->Symbol;
      return;
    case Tok::QUESTION_MARK:
      op->code = OpCode::kChoose;
      op->sub = Decode(node->ThenExpression);
      op->other = Decode(node->ElseExpression);
      return;
    case Tok::IDENTIFIER:
    case Tok::DOLLAR_IDENTIFIER:
    case Tok::FUNCTION_CALL: return DecodeName(node, op);
    case Tok::FUNCTION_ARGUMENT:
      op->code = OpCode::kValueCall;
      op->list = DecodeList(node->Arguments, &EXPR_NODE::NextArgument, &op->argument_count);
      return;
    default: return DecodeOperator(node, op);
  }
}

void Decoder::DecodeOperator(EXPR_NODE* node, Op* op) {
  op->code = CodeOf(node->Token);
}

void Decoder::DecodeName(EXPR_NODE* node, Op* op) {
  op->indexed = node->IndexExpression != nullptr;
  if (node->IsMember) {
    op->code = node->Token == Tok::FUNCTION_CALL ? OpCode::kMemberCall : OpCode::kMember;
    op->token = node->Next->Token;
    if (op->code == OpCode::kMemberCall)
      op->list = DecodeList(node->Arguments, &EXPR_NODE::NextArgument, &op->argument_count);
    else
      op->list = DecodeList(node->IndexExpression, &EXPR_NODE::NextDimension, &op->index_count);
    return;
  }
  if (node->Token == Tok::FUNCTION_CALL) {
    op->code = OpCode::kUserCall;
    op->function = node->Function;
    op->builtin = FindSystemFunction(node->name->Text);
    op->list = DecodeList(node->Arguments, &EXPR_NODE::NextArgument, &op->argument_count);
    return;
  }
  if (node->CallWithoutParens) {
    op->code = OpCode::kFunctionName;
    op->function = node->Function;
    return;
  }
  SYM_REC* symbol = node->Symbol;
  if (node->HasCall) {
    op->code = OpCode::kNameCall;
    op->builtin = FindSystemFunction(node->name->Text);
    op->list = DecodeList(node->Next->Arguments, &EXPR_NODE::NextArgument, &op->argument_count);
    if (symbol != nullptr && !symbol->ImplicitExtern) DecodeVariable(symbol, node, op);
    op->indices = DecodeList(node->IndexExpression, &EXPR_NODE::NextDimension, &op->index_count);
    return;
  }
  op->code = OpCode::kVariable;
  op->list = DecodeList(node->IndexExpression, &EXPR_NODE::NextDimension, &op->index_count);
  if (symbol != nullptr) DecodeVariable(symbol, node, op);
}

// Where a name's variable lives and what it is before its indices are applied.
void Decoder::DecodeVariable(SYM_REC* symbol, EXPR_NODE* node, Op* op) {
  op->symbol = symbol;
  op->record = symbol->Struct;
  op->type = symbol->ValueType;
  op->depth = static_cast<int16_t>(symbol->IsFunctionPointer ? 1 : symbol->TotalDepth);
  op->dimensions = symbol->Shape.DimensionCount;
  op->kind = op->dimensions > 0 ? kAddressKind : op->depth > 0 ? kPointerKind : kValueKind;
  if (symbol->OwnerStruct != nullptr) {
    op->storage = Storage::kMember;
    STRUCT_REC* owner = node->OwnerFunction == nullptr ? nullptr : node->OwnerFunction->OwnerClass;
    const MemberResult member =
        FindStructMember(slot_, owner == nullptr ? symbol->OwnerStruct : owner, symbol->name);
    if (member.Symbol != nullptr) op->offset = MemberDataOffset(member);
  } else if (symbol->IsParameter) {
    op->storage = Storage::kParameter;
    op->offset = symbol->FrameOffset;
  } else if (symbol->IsLocal) {
    op->storage = Storage::kLocal;
    op->offset = symbol->FrameOffset;
  } else {
    op->storage = Storage::kGlobal;
  }
  op->plain_int = op->type == Tok::int_ && op->kind == kValueKind && symbol->BitFieldWidth == 0 &&
                  op->storage != Storage::kMember && node->IndexExpression == nullptr;
}

// The chains of a list whose heads are linked through `next`.
Code** Decoder::DecodeList(EXPR_NODE* first, EXPR_NODE* EXPR_NODE::*next, int16_t* count) {
  size_t length = 0;
  for (const EXPR_NODE* at = first; at != nullptr; at = at->*next) ++length;
  auto** list = static_cast<Code**>(arena_.Allocate(sizeof(Code*) * (length + 1)));
  size_t position = 0;
  for (EXPR_NODE* at = first; at != nullptr; at = at->*next) list[position++] = Decode(at);
  *count = static_cast<int16_t>(std::min<size_t>(length, INT16_MAX));
  return list;
}

}  // namespace vorc
