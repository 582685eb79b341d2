#include "rtl/expression.h"

#include <cstdio>
#include <cstdlib>

#include "base/format.h"

namespace vorc {

namespace {

constexpr size_t kStackRoom = 63;
// Each level of parentheses takes two characters of a text, so nothing that nests deeper would fit.
constexpr int kDeepestGroup = kRtlTextLimit / 2;
constexpr int64_t kWidestShift = 31;

struct Operator {
  Tok token;
  std::string_view text;
};
constexpr Operator kOperators[] = {
    {Tok::AND, "&&"}, {Tok::OR, "||"},    {Tok::LT, "<"},    {Tok::GT, ">"},         {Tok::NE, "!="},
    {Tok::LE, "<="},  {Tok::GE, ">="},    {Tok::EQ, "=="},   {Tok::PLUS, "+"},       {Tok::MINUS, "-"},
    {Tok::STAR, "*"}, {Tok::SLASH, "/"},  {Tok::DIV, "/"},   {Tok::MOD, "%"},        {Tok::XOR, "^"},
    {Tok::HAT, "^"},  {Tok::BITAND, "&"}, {Tok::BITOR, "|"}, {Tok::LEFTSHIFT, "<<"}, {Tok::RIGHTSHIFT, ">>>"},
};

// By the token's number.
constexpr auto kOperatorOf = [] {
  std::array<std::string_view, 256> texts{};
  for (const Operator& op : kOperators) texts[static_cast<size_t>(op.token)] = op.text;
  return texts;
}();

bool IsName(const EXPR_NODE* node) {
  return node->Token == Tok::IDENTIFIER || node->Token == Tok::DOLLAR_IDENTIFIER;
}

bool IsPassedOver(const EXPR_NODE* node) {
  return node->Token == Tok::NOTOKEN || node->Token == Tok::RPAREN ||
         (node->Token == Tok::LPAREN && node->SubExpression == nullptr);
}

// What a name with something hanging off it is, seen as an operator.
Tok TokenOf(const EXPR_NODE* node) {
  if (!IsName(node)) return node->Token;
  if (node->IndexExpression != nullptr) return Tok::ARRAY_ELEMENT;
  return node->Function != nullptr ? Tok::FUNCTION_CALL : node->Token;
}

std::string Shown(const EXPR_NODE* node) {
  if (node->name != nullptr) return std::string(node->name->Text);
  return "?";
}

// The trace's number for what a node draws its value from, 0 for a plain operand or operator.
int ExtractType(const EXPR_NODE* node) {
  constexpr int kElement = 4;
  constexpr int kCast = 5;
  constexpr int kMember = 6;
  constexpr int kCall = 7;
  switch (TokenOf(node)) {
    case Tok::ARRAY_ELEMENT: return kElement;
    case Tok::TYPE_CAST: return kCast;
    case Tok::FUNCTION_CALL: return kCall;
    default: return node->IsMember ? kMember : 0;
  }
}

void TraceNode(const EXPR_NODE* node) {
  static const bool on = std::getenv("VORC_DIAG_RTL") != nullptr;
  if (!on) return;
  const std::string name = node->name == nullptr ? "" : std::string(node->name->Text);
  std::fprintf(stderr, "[rtl] node token=%d name='%s' str='%s' extract=%d\n", static_cast<int>(node->Token),
               name.c_str(), std::string(node->Text()).c_str(), ExtractType(node));
}

/// One translation, groups included.
class Translation {
 public:
  explicit Translation(std::string* error) : error_(*error) {}

  std::optional<std::string> Run(RtlExpression expression, int depth) {
    std::vector<std::string> stack;
    for (const EXPR_NODE* node = expression.first; node != expression.end; node = node->Next) {
      TraceNode(node);
      if (!Step(node, &stack, depth)) return std::nullopt;
    }
    if (stack.size() == 1) return std::move(stack.front());
    Fail("expression did not reduce to a single value");
    return std::nullopt;
  }

 private:
  bool Fail(std::string text) {
    error_ = std::move(text);
    return false;
  }

  bool Push(std::vector<std::string>* stack, std::string text) {
    if (stack->size() >= kStackRoom) return Fail("expression too deep");
    if (text.size() > kRtlTextLimit)
      return Fail(Format("expression text too long (max %zu characters)", kRtlTextLimit));
    stack->push_back(std::move(text));
    return true;
  }

  bool Step(const EXPR_NODE* node, std::vector<std::string>* stack, int depth) {
    const Tok token = TokenOf(node);
    if (const std::string_view op = morv_rtl_verilog_op(token); !op.empty()) return Join(node, op, stack);
    if (IsPassedOver(node)) return true;
    switch (token) {
      case Tok::IDENTIFIER:
      case Tok::DOLLAR_IDENTIFIER: return PushName(node, stack);
      case Tok::NUMBER:
      case Tok::HEXNUMBER: return Push(stack, Format("32'sd%lld", static_cast<long long>(node->NumberValue)));
      case Tok::REAL_NUMBER:
        return Fail("floating-point literal is not synthesizable in v1 (integer subset only)");
      case Tok::ASSIGN: return Fail("assignment inside an expression is not supported in v1");
      case Tok::LPAREN: return PushGroup(node, stack, depth);
      default:
        return Fail(
            Format("unsupported operator/'%s' (token %d) - v1 covers integer arithmetic, bitwise, shift and "
                   "comparison only",
                   Shown(node).c_str(), static_cast<int>(token)));
    }
  }

  bool Join(const EXPR_NODE* node, std::string_view op, std::vector<std::string>* stack) {
    if (stack->size() < 2) return Fail(Format("malformed expression near '%s'", Shown(node).c_str()));
    const std::string right = std::move(stack->back());
    stack->pop_back();
    const std::string left = std::move(stack->back());
    stack->pop_back();
    return Push(stack, "(" + left + " " + std::string(op) + " " + right + ")");
  }

  bool PushName(const EXPR_NODE* node, std::vector<std::string>* stack) {
    const Name* name = NameOfNode(node);
    if (name == nullptr) return Fail("unnamed identifier node");
    return IsVerilogName(name->Text) ? Push(stack, std::string(name->Text)) : Fail(RefusedName(name->Text));
  }

  bool PushGroup(const EXPR_NODE* node, std::vector<std::string>* stack, int depth) {
    if (depth >= kDeepestGroup) return Fail("expression too deep");
    std::optional<std::string> inner = Run({node->SubExpression, nullptr}, depth + 1);
    return inner && Push(stack, "(" + *inner + ")");
  }

  std::string& error_;
};

// Two's complement arithmetic that wraps at 64 bits.
int64_t Wrapping(Tok op, int64_t left, int64_t right) {
  const auto a = static_cast<uint64_t>(left);
  const auto b = static_cast<uint64_t>(right);
  switch (op) {
    case Tok::PLUS: return static_cast<int64_t>(a + b);
    case Tok::MINUS: return static_cast<int64_t>(a - b);
    case Tok::STAR: return static_cast<int64_t>(a * b);
    default: return static_cast<int64_t>(a << b);
  }
}

std::optional<int64_t> Divided(Tok op, int64_t left, int64_t right) {
  if (right == 0) return std::nullopt;
  // The one quotient that 64 bits can't hold.
  if (right == -1) return op == Tok::MOD ? 0 : Wrapping(Tok::MINUS, 0, left);
  return op == Tok::MOD ? left % right : left / right;
}

std::optional<int64_t> Shifted(Tok op, int64_t left, int64_t right) {
  if (right < 0 || right > kWidestShift) return std::nullopt;
  return op == Tok::LEFTSHIFT ? Wrapping(op, left, right) : left >> right;
}

std::optional<int64_t> Apply(Tok op, int64_t left, int64_t right) {
  switch (op) {
    case Tok::AND: return left != 0 && right != 0;
    case Tok::OR: return left != 0 || right != 0;
    case Tok::LT: return left < right;
    case Tok::GT: return left > right;
    case Tok::NE: return left != right;
    case Tok::LE: return left <= right;
    case Tok::GE: return left >= right;
    case Tok::EQ: return left == right;
    case Tok::SLASH:
    case Tok::DIV:
    case Tok::MOD: return Divided(op, left, right);
    case Tok::XOR:
    case Tok::HAT: return left ^ right;
    case Tok::BITAND: return left & right;
    case Tok::BITOR: return left | right;
    case Tok::LEFTSHIFT:
    case Tok::RIGHTSHIFT: return Shifted(op, left, right);
    default: return Wrapping(op, left, right);
  }
}

std::optional<int64_t> Operand(const EXPR_NODE* node, RtlEnvironment& environment) {
  if (IsName(node)) return environment.Value(NameOfNode(node));
  if (node->Token == Tok::LPAREN) return morv_rtl_expr_eval({node->SubExpression, nullptr}, environment);
  return node->NumberValue;
}

}  // namespace

size_t RtlEnvironment::PlaceOf(const Name* name) const {
  constexpr uint64_t kSpread = 0x9e3779b97f4a7c15;
  size_t place = reinterpret_cast<uintptr_t>(name) * kSpread >> 56;
  while (entries_[place].name != nullptr && entries_[place].name != name) place = (place + 1) % kPlaces;
  return place;
}

bool RtlEnvironment::Bind(const Name* name, int64_t value) {
  Entry& entry = entries_[PlaceOf(name)];
  if (entry.name == nullptr && names_++ >= kRtlNameLimit) return false;
  entry = {name, value};
  return true;
}

std::optional<int64_t> RtlEnvironment::Value(const Name* name) const {
  const Entry& entry = entries_[PlaceOf(name)];
  return entry.name == nullptr ? std::nullopt : std::optional(entry.value);
}

std::string_view morv_rtl_verilog_op(Tok token) {
  return kOperatorOf[static_cast<size_t>(token)];
}

const Name* NameOfNode(const EXPR_NODE* node) {
  return node->Symbol != nullptr && node->Symbol->name != nullptr ? node->Symbol->name : node->name;
}

std::optional<std::string> morv_rtl_expr_to_verilog(RtlExpression expression, std::string* error) {
  return Translation(error).Run(expression, 0);
}

std::optional<int64_t> morv_rtl_expr_eval(RtlExpression expression, RtlEnvironment& environment) {
  int64_t stack[kStackRoom];
  size_t depth = 0;
  for (const EXPR_NODE* node = expression.first; node != expression.end; node = node->Next) {
    if (!environment.Step()) return std::nullopt;
    if (IsPassedOver(node)) continue;
    const bool is_operator = !morv_rtl_verilog_op(node->Token).empty();
    if (is_operator ? depth < 2 : depth >= kStackRoom) return std::nullopt;
    const std::optional<int64_t> value =
        is_operator ? Apply(node->Token, stack[depth - 2], stack[depth - 1]) : Operand(node, environment);
    if (!value) return std::nullopt;
    if (is_operator) depth -= 2;
    stack[depth++] = *value;
  }
  return depth == 1 ? std::optional(stack[0]) : std::nullopt;
}

}  // namespace vorc
