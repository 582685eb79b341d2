#include <cstdlib>

#include "base/format.h"
#include "frontend/parser.h"
#include "program/operators.h"

namespace vorc {

namespace {

// What a `.` or `->` can follow that is no name.
constexpr TokenList kMayBeObject = {Tok::LPAREN, Tok::FUNCTION_CALL, Tok::FUNCTION_ARGUMENT};

void SetName(EXPR_NODE* node, Name* name) {
  node->name = name;
  node->Literal = name->c_str();
  node->LiteralLength = static_cast<uint32_t>(name->Text.size());
}

// Where an argument ends, and where its call has ended without a parenthesis.
constexpr TokenList kEndsArgument = {Tok::COMMA, Tok::RPAREN};
constexpr TokenList kEndsStatement = {Tok::SEMICOLON, Tok::LSECONDBRACKET, Tok::RSECONDBRACKET,
                                      Tok::END_OF_FILE};

constexpr TokenList kBeginsOperand = {Tok::IDENTIFIER, Tok::NUMBER,      Tok::HEXNUMBER,   Tok::REAL_NUMBER,
                                      Tok::STRING,     Tok::SINGLEQUOTE, Tok::LPAREN,      Tok::STAR,
                                      Tok::BITAND,     Tok::PLUS,        Tok::MINUS,       Tok::NOT,
                                      Tok::TILDA,      Tok::PLUS_PLUS,   Tok::MINUS_MINUS, Tok::sizeof_,
                                      Tok::this_,      Tok::new_,        Tok::dollar};

struct ImmediateForm {
  uint8_t immediate_class;
  uint8_t size;
};

ImmediateForm ClassifyImmediate(int64_t value) {
  const auto bits = static_cast<uint64_t>(value);
  if (bits > 0xffffffffU) return {6, 8};
  if (bits >= (1U << 20)) return {5, 4};
  if (bits >= 16384) return {2, 4};
  if (bits < 256) return {4, 1};
  return {3, 4};
}

}  // namespace

// --- nodes

EXPR_NODE* Parser::CreateNewExprNode(const ExprContext& context, Tok token) {
  EXPR_NODE* node = slot_.New(slot_.Expressions, "expression nodes");
  node->Token = token;
  node->Line = scan_.Place();
  node->Statement = context.statement;
  node->OwnerFunction = context.proc;
  return node;
}

EXPR_NODE* Parser::Append(const ExprContext& context, ExprChain* chain, Tok token) {
  EXPR_NODE* node = CreateNewExprNode(context, token);
  node->Prev = chain->Last;
  if (chain->Last == nullptr)
    chain->First = node;
  else
    chain->Last->Next = node;
  chain->Last = node;
  return node;
}

void Parser::SetLiteral(EXPR_NODE* node, std::string_view text) {
  node->Literal = slot_.Texts.Copy(text);
  node->LiteralLength = static_cast<uint32_t>(text.size());
}

EXPR_NODE* Parser::AddNumber(const ExprContext& context, ExprChain* chain, Tok token, std::string_view text) {
  EXPR_NODE* node = Append(context, chain, token);
  SetLiteral(node, text);
  if (token == Tok::HEXNUMBER) {
    node->NumberValue = static_cast<int64_t>(std::strtoull(node->Literal + 2, nullptr, 16));
  } else {
    node->NumberValue = static_cast<int64_t>(std::strtoull(node->Literal, nullptr, 10));
  }
  const ImmediateForm form = ClassifyImmediate(node->NumberValue);
  node->ImmediateClass = form.immediate_class;
  node->NumberSize = form.size;
  return node;
}

EXPR_NODE* Parser::AddNumberValue(const ExprContext& context, ExprChain* chain, int64_t value) {
  return AddNumber(context, chain, Tok::NUMBER, Format("%lld", static_cast<long long>(value)));
}

EXPR_NODE* Parser::AddRealNumber(const ExprContext& context, ExprChain* chain) {
  EXPR_NODE* node = Append(context, chain, Tok::REAL_NUMBER);
  SetLiteral(node, scan_.Word());
  node->NumberValue = std::strtol(node->Literal, nullptr, 10);
  node->NumberSize = node->NumberValue < 256 ? 1 : node->NumberValue < 65536 ? 2 : 4;
  return node;
}

EXPR_NODE* Parser::AddString(const ExprContext& context, ExprChain* chain) {
  EXPR_NODE* node = Append(context, chain, Tok::STRING);
  node->Literal = scan_.Word().data();
  node->LiteralLength = static_cast<uint32_t>(scan_.Word().size());
  return node;
}

EXPR_NODE* Parser::AddIdentifier(const ExprContext& context, ExprChain* chain, Name* name, SYM_REC* symbol) {
  EXPR_NODE* node = Append(context, chain, Tok::IDENTIFIER);
  SetName(node, name);
  node->Symbol = symbol;
  return node;
}

// --- the ladder

bool Parser::ParseFullExpression(const ExprContext& context, EXPR_NODE** head) {
  ExprChain chain;
  const bool good = AssignmentExpression(context, &chain);
  *head = chain.First;
  return good;
}

bool Parser::AssignmentExpression(const ExprContext& context, ExprChain* chain) {
  const Nesting nesting(*this);
  if (!nesting) return false;
  if (!BinaryExpression(context, chain, 1)) return false;
  if (At(Tok::QUESTION_MARK)) return ParseQuestionMark(context, chain);
  if (!IsAssignment(Token())) return true;
  const Tok op = Token();
  for (EXPR_NODE* node = chain->Last; node != nullptr && !node->IsLvalue; node = node->Prev)
    node->IsLvalue = true;
  Next();
  if (!AssignmentExpression(context, chain)) return false;
  Append(context, chain, op);
  return true;
}

bool Parser::ParseQuestionMark(const ExprContext& context, ExprChain* chain) {
  EXPR_NODE* node = Append(context, chain, Tok::QUESTION_MARK);
  Next();
  if (!ParseFullExpression(context, &node->ThenExpression)) return false;
  if (!Expect(Tok::COLON, 0, "Missing ':'. in ? statement")) return false;
  return ParseFullExpression(context, &node->ElseExpression);
}

// Operators of `level` and tighter ones, all from left to right.
bool Parser::BinaryExpression(const ExprContext& context, ExprChain* chain, int level) {
  if (!CTerm(context, chain)) return false;
  for (int found = OperatorOf(Token()).level; found >= level; found = OperatorOf(Token()).level) {
    const Tok op = Token();
    Next();
    if (!BinaryExpression(context, chain, found + 1)) return false;
    Append(context, chain, op);
  }
  return true;
}

bool Parser::ParseUnary(const ExprContext& context, ExprChain* chain, Tok op) {
  const Nesting nesting(*this);
  if (!nesting) return false;
  Next();
  if (!BitAnd_Star(context, chain)) return false;
  Append(context, chain, op);
  return true;
}

bool Parser::CTerm(const ExprContext& context, ExprChain* chain) {
  switch (Token()) {
    case Tok::PLUS_PLUS:
    case Tok::MINUS_MINUS:
    case Tok::TILDA: return ParseUnary(context, chain, Token());
    case Tok::MINUS: return ParseUnary(context, chain, Tok::UNARYMINUS);
    case Tok::PLUS: return ParseUnary(context, chain, Tok::UNARYPLUS);
    default: return BitAnd_Star(context, chain);
  }
}

bool Parser::BitAnd_Star(const ExprContext& context, ExprChain* chain) {
  int stars = 0;
  bool address = false;
  if (At(Tok::BITAND)) {
    address = true;
    Next();
  }
  for (; At(Tok::STAR); ++stars) Next();
  if (!CFactor(context, chain)) return false;
  const bool object = chain->Last != nullptr && kMayBeObject.Has(chain->Last->Token);
  if (object && (At(Tok::POINTER) || At(Tok::DOT)) && !ParseMemberChain(context, chain, nullptr))
    return false;
  if (At(Tok::PLUS_PLUS) || At(Tok::MINUS_MINUS)) {
    Append(context, chain, At(Tok::PLUS_PLUS) ? Tok::POST_PLUS_PLUS : Tok::POST_MINUS_MINUS);
    Next();
  }
  if (stars > 0) Append(context, chain, Tok::STAR_REF)->StarRefCount = stars;
  if (address) Append(context, chain, Tok::BITAND_ADDRESS);
  return true;
}

bool Parser::AtOperand() const {
  return scan_.TokenIn(kBeginsOperand);
}

bool Parser::CFactor(const ExprContext& context, ExprChain* chain) {
  switch (Token()) {
    case Tok::IDENTIFIER:
    case Tok::this_: return ParseComplexIdentifier(context, chain);
    case Tok::NUMBER:
    case Tok::HEXNUMBER: AddNumber(context, chain, Token(), scan_.Word()); break;
    case Tok::REAL_NUMBER: AddRealNumber(context, chain); break;
    case Tok::STRING: AddString(context, chain); break;
    case Tok::SINGLEQUOTE: AddNumberValue(context, chain, scan_.ParseSingleQuote()); break;
    case Tok::sizeof_: {
      int64_t size = 0;
      if (!ParseSizeof(context, &size)) return false;
      AddNumberValue(context, chain, size);
      return true;
    }
    case Tok::NOT:
    case Tok::PLUS_PLUS:
    case Tok::MINUS_MINUS:
    case Tok::TILDA: return ParseUnary(context, chain, Token());
    case Tok::MINUS: return ParseUnary(context, chain, Tok::UNARYMINUS);
    case Tok::PLUS: return ParseUnary(context, chain, Tok::UNARYPLUS);
    case Tok::BITAND:
    case Tok::STAR: {
      const Nesting nesting(*this);
      return nesting && BitAnd_Star(context, chain);
    }
    case Tok::SEMICOLON: return true;
    case Tok::dollar: return ParseDollarFactor(context, chain);
    case Tok::new_: return ParseCppNewCall(context, chain);
    case Tok::LPAREN: return ParseGroupOrCast(context, chain);
    default: return Fail(77, Format("Invalid operand: '%s'", scan_.ClipTok().c_str()));
  }
  Next();
  return true;
}

bool Parser::ParseGroupOrCast(const ExprContext& context, ExprChain* chain) {
  Next();
  if (AtCastType(context)) return ParseTypeCastNew(context, chain);
  const bool text_alone = At(Tok::STRING) && LookAhead([&] {
                            Peek();
                            return At(Tok::RPAREN);
                          });
  if (!text_alone) return ParseGroup(context, chain);
  const std::string word = scan_.ClipTok();
  Next();
  return Fail(4, Format("Syntax error. '%s'", word.c_str()));
}

bool Parser::ParseGroup(const ExprContext& context, ExprChain* chain) {
  EXPR_NODE* group = Append(context, chain, Tok::LPAREN);
  if (!ParseFullExpression(context, &group->SubExpression)) return false;
  if (!At(Tok::RPAREN)) return Fail(2, Format("Missing ')' before %s", scan_.ClipTok().c_str()));
  Next();
  if (At(Tok::LPAREN)) {
    EXPR_NODE* call = Append(context, chain, Tok::FUNCTION_ARGUMENT);
    return ParseFunctionCall(context, call);
  }
  return true;
}

// --- names

// A name that nothing declared stands as an external from its first use on, so that it is
// reported once.
SYM_REC* Parser::InsertUndeclared(Name* name) {
  TypeSpec type;
  type.BasicType = Tok::int_;
  type.StorageType = EXTERN_VAR;
  SYM_REC* symbol = InsertVarName(slot_, &slot_.Globals, name, type, false);
  symbol->ImplicitExtern = true;
  return symbol;
}

bool Parser::ParseComplexIdentifier(const ExprContext& context, ExprChain* chain) {
  if (At(Tok::this_)) {
    EXPR_NODE* node = Append(context, chain, Tok::this_);
    SetName(node, scan_.WordName());
    if (context.proc != nullptr && context.proc->OwnerClass != nullptr)
      node->Symbol = context.proc->OwnerClass->This;
    Next();
    return At(Tok::DOT) || At(Tok::POINTER) ? ParseMemberChain(context, chain, node) : true;
  }
  Name* name = scan_.WordName();
  const FoundName found = FindVisible(slot_, context.proc, context.statement, context.block, name);
  Next();
  if (At(Tok::LPAREN)) return ParseCallBehindName(context, chain, name, found);
  if (found.Kind == BindingKind::kEnumElement) {
    AddNumberValue(context, chain, static_cast<ENUM_ELEMENT*>(found.Record)->Value);
    return true;
  }
  if (FUNCPROTO_REC* function = found.Function()) {
    EXPR_NODE* node = AddIdentifier(context, chain, name, nullptr);
    node->Function = function;
    node->CallWithoutParens = true;
    return true;
  }
  SYM_REC* symbol = found.Symbol();
  if (symbol == nullptr || symbol->OnlyCalled) {
    slot_.Error(57, Format("Undeclared variable '%s'", name->c_str()));
    if (symbol == nullptr) symbol = InsertUndeclared(name);
    symbol->OnlyCalled = false;
  }
  return ParseIdentifierTail(context, chain, AddIdentifier(context, chain, name, symbol));
}

// Indices, member chains and calls through what they select.
bool Parser::ParseIdentifierTail(const ExprContext& context, ExprChain* chain, EXPR_NODE* node) {
  if (At(Tok::LBRACKET) && !ParseIndices(context, node)) return false;
  if (At(Tok::LPAREN)) {
    node->HasCall = true;
    return ParseFunctionCall(context, Append(context, chain, Tok::FUNCTION_ARGUMENT));
  }
  return At(Tok::DOT) || At(Tok::POINTER) ? ParseMemberChain(context, chain, node) : true;
}

bool Parser::ParseCallBehindName(const ExprContext& context, ExprChain* chain, Name* name,
                                 const FoundName& found) {
  FUNCPROTO_REC* function = found.Function();
  SYM_REC* symbol = found.Symbol();
  if (function == nullptr && (symbol == nullptr || symbol->ImplicitExtern)) {
    function = FindFunction(slot_, &slot_.Globals, name);
  }
  if (function != nullptr) {
    EXPR_NODE* call = Append(context, chain, Tok::FUNCTION_CALL);
    SetName(call, name);
    call->Function = function;
    if (!ParseFunctionCall(context, call)) return false;
  } else {
    if (symbol == nullptr) {
      symbol = InsertUndeclared(name);
      symbol->OnlyCalled = true;
    }
    EXPR_NODE* node = AddIdentifier(context, chain, name, symbol);
    node->HasCall = true;
    if (!ParseFunctionCall(context, Append(context, chain, Tok::FUNCTION_ARGUMENT))) return false;
  }
  return At(Tok::DOT) || At(Tok::POINTER) ? ParseMemberChain(context, chain, nullptr) : true;
}

bool Parser::ParseIndices(const ExprContext& context, EXPR_NODE* node) {
  EXPR_NODE** link = &node->IndexExpression;
  while (At(Tok::LBRACKET)) {
    Next();
    EXPR_NODE* head = nullptr;
    if (!ParseFullExpression(context, &head)) return false;
    if (head == nullptr) return Fail(58, "Missing ']'");
    *link = head;
    link = &head->NextDimension;
    if (!Expect(Tok::RBRACKET, 58, "Missing ']'")) return false;
  }
  return true;
}

// `.member` and `->member`, as long as they go on. `owner` is the node on the left, if it is a name.
bool Parser::ParseMemberChain(const ExprContext& context, ExprChain* chain, EXPR_NODE* owner) {
  EXPR_NODE* left = owner != nullptr ? owner : chain->Last;
  while (At(Tok::DOT) || At(Tok::POINTER)) {
    const Tok op = Token();
    if (left->Symbol != nullptr && left->Symbol->ImplicitExtern) {
      return Fail(
          58, Format("Left side of '%s' must be a struct or class or union.", op == Tok::DOT ? "." : "->"));
    }
    Next();
    if (scan_.WordName() == nullptr) return Fail(58, Format("Unexpected '%s'", scan_.ClipTok().c_str()));
    Name* name = scan_.WordName();
    Next();
    EXPR_NODE* member = nullptr;
    if (At(Tok::LPAREN)) {
      member = Append(context, chain, Tok::FUNCTION_CALL);
      SetName(member, name);
      member->IsMember = true;
      if (!ParseFunctionCall(context, member)) return false;
    } else {
      member = AddIdentifier(context, chain, name, nullptr);
      member->IsMember = true;
      if (At(Tok::LBRACKET) && !ParseIndices(context, member)) return false;
    }
    member->OwnerObject = left->Symbol;
    left->IsObject = true;
    Append(context, chain, op);
    left = member;
  }
  return true;
}

bool Parser::ParseFunctionCall(const ExprContext& context, EXPR_NODE* call) {
  Next();
  EXPR_NODE** link = &call->Arguments;
  while (!At(Tok::RPAREN)) {
    EXPR_NODE* head = nullptr;
    if (!ParseFullExpression(context, &head)) return false;
    if (head == nullptr) break;
    *link = head;
    link = &head->NextArgument;
    if (!kEndsStatement.Has(Token()) && !Synchronize(kEndsArgument, kEndsStatement)) return false;
    if (!At(Tok::COMMA)) break;
    Next();
  }
  return Expect(Tok::RPAREN, 0, "Missing ')'. Procedure did not close its argument list.");
}

bool Parser::ParseCppNewCall(const ExprContext& context, ExprChain* chain) {
  Next();
  if (!AtName()) return Fail(0, "Missing class/struct/union name after 'new'");
  STRUCT_REC* record = FindInScope(slot_, &slot_.Globals, scan_.WordName()).Struct();
  if (record == nullptr) return Fail(0, Format("'%s' is not a class/struct/union", scan_.ClipTok().c_str()));
  EXPR_NODE* node = Append(context, chain, Tok::new_);
  node->NewObject = true;
  node->NewClass = record;
  node->name = record->name;
  Next();
  if (At(Tok::LBRACKET)) {
    node->NewArray = true;
    Next();
    if (!ParseFullExpression(context, &node->IndexExpression)) return false;
    return Expect(Tok::RBRACKET, 0, "Missing ']'");
  }
  return At(Tok::LPAREN) ? ParseFunctionCall(context, node) : true;
}

bool Parser::ParseDollarFactor(const ExprContext& context, ExprChain* chain) {
  if (!slot_.IsScript()) return Fail(0, "'$var' is only available in MORV (-morv) mode.");
  const long line = scan_.LineNumber();
  Next();
  if (scan_.WordName() == nullptr || scan_.LineNumber() != line)
    return Fail(0, "Missing variable name after '$'.");
  if (!scan_.Touching()) return Fail(0, "No space allowed between '$' and the variable name.");
  SYM_REC* symbol = FindOrCreateDollar(context, scan_.WordName());
  Next();
  EXPR_NODE* node = AddIdentifier(context, chain, symbol->name, symbol);
  if (symbol->Struct == nullptr) {
    node->Token = Tok::DOLLAR_IDENTIFIER;
    return true;
  }
  return ParseIdentifierTail(context, chain, node);
}

}  // namespace vorc
