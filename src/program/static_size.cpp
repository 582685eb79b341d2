#include "program/static_size.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "program/layout.h"
#include "program/symtab.h"

namespace vorc {

namespace {

constexpr TokenList kBinary = {Tok::OR,   Tok::AND,       Tok::LT,         Tok::GT,     Tok::NE,
                               Tok::LE,   Tok::GE,        Tok::EQ,         Tok::BITAND, Tok::BITOR,
                               Tok::XOR,  Tok::LEFTSHIFT, Tok::RIGHTSHIFT, Tok::PLUS,   Tok::MINUS,
                               Tok::STAR, Tok::SLASH,     Tok::DIV,        Tok::MOD};
constexpr int64_t kIntSize = 4;
constexpr int64_t kDoubleSize = 8;

/// What is known of an operand without evaluating it.
struct Operand {
  const SYM_REC* symbol = nullptr;
  int used_dimensions = 0;
  int used_pointers = 0;
  int64_t plain_size = 0;  ///< where no variable stands behind the operand

  void Dereference(int levels) {
    const int dimensions = symbol == nullptr ? 0 : symbol->Shape.DimensionCount - used_dimensions;
    const int arrays = std::min(levels, dimensions);
    used_dimensions += arrays;
    used_pointers += levels - arrays;
  }
};

int CountIndices(const EXPR_NODE* node) {
  int count = 0;
  for (const EXPR_NODE* index = node->IndexExpression; index != nullptr; index = index->NextDimension)
    ++count;
  return count;
}

class Sizer {
 public:
  explicit Sizer(C_SLOT& slot) : slot_(slot), address_size_(slot.Target.ADDRSIZE / 8) {}

  int64_t Run(const EXPR_NODE* head) {
    for (const EXPR_NODE* node = head; node != nullptr; node = node->Next) Step(node);
    return stack_.empty() ? 0 : SizeOf(stack_.back());
  }

 private:
  void Step(const EXPR_NODE* node);
  void PushName(const EXPR_NODE* node);
  void PushCall(const EXPR_NODE* node);
  void Cast(const CAST* cast);
  void Combine();
  void PushSize(int64_t size) { stack_.push_back({nullptr, 0, 0, size}); }
  int64_t SizeOf(const Operand& operand);

  C_SLOT& slot_;
  int64_t address_size_;
  std::vector<Operand> stack_;
};

void Sizer::Step(const EXPR_NODE* node) {
  switch (node->Token) {
    case Tok::IDENTIFIER:
    case Tok::DOLLAR_IDENTIFIER: return PushName(node);
    case Tok::STRING: return PushSize(static_cast<int64_t>(std::string_view(node->Literal).size()) + 1);
    case Tok::REAL_NUMBER: return PushSize(kDoubleSize);
    case Tok::NUMBER:
    case Tok::HEXNUMBER: return PushSize(node->NumberSize == 8 ? kDoubleSize : kIntSize);
    case Tok::FUNCTION_CALL: return PushCall(node);
    case Tok::LPAREN: return PushSize(Sizer(slot_).Run(node->SubExpression));
    default: break;
  }
  if (stack_.empty()) return;
  switch (node->Token) {
    case Tok::STAR_REF: return stack_.back().Dereference(node->StarRefCount);
    case Tok::BITAND_ADDRESS: stack_.back() = {nullptr, 0, 0, address_size_}; return;
    case Tok::TYPE_CAST: return Cast(node->Cast);
    case Tok::DOT:
    case Tok::POINTER:
      if (stack_.size() >= 2) stack_.erase(stack_.end() - 2);
      return;
    default:
      if (kBinary.Has(node->Token) && stack_.size() >= 2) Combine();
  }
}

void Sizer::PushName(const EXPR_NODE* node) {
  Operand operand;
  operand.symbol = node->IsMember || node->CallWithoutParens ? nullptr : node->Symbol;
  operand.plain_size = address_size_;
  const SYM_REC* left = stack_.empty() ? nullptr : stack_.back().symbol;
  if (node->IsMember && left != nullptr && left->Struct != nullptr) {
    operand.symbol = FindStructMember(slot_, left->Struct, node->name).Symbol;
  }
  operand.Dereference(CountIndices(node));
  stack_.push_back(operand);
}

void Sizer::PushCall(const EXPR_NODE* node) {
  const FUNCPROTO_REC* function = node->Function;
  if (function == nullptr) return PushSize(kIntSize);
  PushSize(function->ReturnType.PointerDepth > 0 ? address_size_ : GetTypeSize(slot_, function->ReturnType));
}

void Sizer::Cast(const CAST* cast) {
  TypeSpec target;
  target.BasicType = cast->TypeToken;
  target.Typedef = cast->Typedef;
  target.Struct = cast->Struct;
  stack_.back() = {nullptr, 0, 0, cast->PointerDepth > 0 ? address_size_ : GetTypeSize(slot_, target)};
}

// Two operands make one that is as wide as the wider, and at least an int.
void Sizer::Combine() {
  const int64_t right = SizeOf(stack_.back());
  stack_.pop_back();
  stack_.back() = {nullptr, 0, 0, std::max({SizeOf(stack_.back()), right, kIntSize})};
}

int64_t Sizer::SizeOf(const Operand& operand) {
  if (operand.symbol == nullptr) return operand.plain_size;
  const SYM_REC* symbol = operand.symbol;
  int64_t size = address_size_;
  if (operand.used_pointers > 0 && operand.used_pointers >= symbol->TotalDepth) {
    SYM_REC pointee = *symbol;
    pointee.TotalDepth = 0;
    size = GetObjectSize(slot_, &pointee);
  } else if (operand.used_pointers == 0) {
    size = GetObjectSize(slot_, symbol);
  }
  for (int i = operand.used_dimensions; i < symbol->Shape.DimensionCount; ++i)
    size = SizeProduct(size, symbol->Shape.Dimensions[i]);
  return size;
}

}  // namespace

int64_t StaticSize(C_SLOT& slot, const EXPR_NODE* head) {
  return Sizer(slot).Run(head);
}

}  // namespace vorc
