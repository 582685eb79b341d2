#include "base/format.h"
#include "frontend/parser.h"
#include "program/layout.h"
#include "program/static_size.h"

namespace vorc {

namespace {

constexpr TokenList kNoOperand = {Tok::RPAREN, Tok::COMMA, Tok::RBRACKET, Tok::SEMICOLON,
                                  Tok::SLASH,  Tok::MOD,   Tok::PLUS,     Tok::ASSIGN};

constexpr TokenList kPartsOfByte = {Tok::INT4, Tok::UINT4, Tok::BIT};

// What takes less than a byte is stored in one of its own, and yet `sizeof` has none to tell.
bool IsPartOfByte(const ValueType& type) {
  return type.record == nullptr && !type.IsPointer() && kPartsOfByte.Has(type.basic);
}

}  // namespace

bool Parser::AtCastType(const ExprContext& context) const {
  if (scan_.TokenIn(BasicTypeList) || scan_.TokenIn(TagList)) return true;
  switch (Token()) {
    case Tok::void_:
    case Tok::enum_:
    case Tok::const_:
    case Tok::volatile_: return true;
    case Tok::IDENTIFIER:
      return FindVisible(slot_, context.proc, context.statement, context.block, scan_.WordName()).IsType();
    default: return false;
  }
}

// Reads a type and its stars, up to the `)` or to a function pointer's `(`.
bool Parser::ParseCastType(const ExprContext& context, CAST* cast) {
  TypeSpec type;
  if (scan_.TokenIn(TagList)) {
    Next();
    if (!AtName()) return Fail(0, "Missing: struct/class/union name");
    type.Struct =
        FindVisible(slot_, context.proc, context.statement, context.block, scan_.WordName()).Tagged();
    if (type.Struct == nullptr) {
      return Fail(54, Format("'%s' is not a struct/class/union", scan_.ClipTok().c_str()));
    }
    type.BasicType = type.Struct->DeclType;
    Next();
  } else {
    Scope scope;
    scope.kind = Scope::Kind::kBlock;
    scope.header = &slot_.Globals;
    scope.proc = context.proc;
    scope.block = context.block;
    if (!ParseSpecifiers(scope, &type)) return false;
  }
  ParseStars(&cast->PointerDepth);
  cast->TypeToken =
      type.BasicType == Tok::int_ && (type.StorageType & UNSIGNED_VAR) != 0 ? Tok::UINT32 : type.BasicType;
  cast->Typedef = type.Typedef;
  cast->Struct = type.Struct;
  for (const TYPEDEF_REC* at = type.Typedef; at != nullptr; at = at->Typedef) {
    if (at->Struct != nullptr) cast->Struct = at->Struct;
    cast->PointerDepth = static_cast<int16_t>(cast->PointerDepth + at->PointerDepth);
  }
  cast->CastType = cast->Struct != nullptr ? CAST_TYPE_STRUCT : CAST_BASIC_TYPE;
  if (!At(Tok::LPAREN)) return true;
  Next();
  if (!Expect(Tok::STAR, 0, "Syntax error.")) return false;
  if (!Expect(Tok::RPAREN, 0, "Missing ')' in funcion pointer cast")) return false;
  if (!At(Tok::LPAREN)) return Fail(0, "Missing '(' in funcion pointer cast");
  cast->CastType = CAST_FUNC_PTR_TYPE;
  cast->Function = InsertFuncName(slot_, nullptr, slot_.Names.Intern(""), type);
  return ParseProcedureArgs(cast->Function, MainScope());
}

bool Parser::ParseTypeCastNew(const ExprContext& context, ExprChain* chain) {
  const Nesting nesting(*this);
  if (!nesting) return false;
  CAST* cast = slot_.New(slot_.Casts, "casts");
  if (!ParseCastType(context, cast)) return false;
  if (!At(Tok::RPAREN)) return Fail(7, Format("Cast error near '%s'", scan_.ClipTok().c_str()));
  Next();
  if (!AtOperand()) return Fail(1, Format("Cast item error. '%s'", scan_.ClipTok().c_str()));
  if (!CTerm(context, chain)) return false;
  Append(context, chain, Tok::TYPE_CAST)->Cast = cast;
  return true;
}

bool Parser::ParseSizeof(const ExprContext& context, int64_t* size) {
  Next();
  if (!At(Tok::LPAREN)) return Fail(53, "Missing '('  ");
  Next();
  if (At(Tok::IDENTIFIER)) {
    const FoundName found =
        FindVisible(slot_, context.proc, context.statement, context.block, scan_.WordName());
    if (!found && !slot_.Services->IsBuiltin(scan_.WordName())) {
      return Fail(55, Format("'%s' is not a data type or a variable name", scan_.ClipTok().c_str()));
    }
  }
  if (!AtCastType(context)) return SizeofExpression(context, size);
  CAST cast;
  if (!ParseCastType(context, &cast)) return false;
  std::vector<int64_t> dimensions;
  Scope scope = MainScope();
  scope.proc = context.proc;
  if (At(Tok::LBRACKET) && !ParseArrayDimension(scope, &dimensions)) return false;
  const ValueType type = ValueType::OfCast(cast);
  *size = IsPartOfByte(type) ? 0 : type.Size(slot_);
  for (const int64_t dimension : dimensions) *size = SizeProduct(*size, dimension);
  if (*size > kLargestType && !FailTypeSize(slot_.Names.Intern("sizeof"))) *size = 1;
  return Expect(Tok::RPAREN, 79, "Missing ')' . ");
}

bool Parser::SizeofExpression(const ExprContext& context, int64_t* size) {
  EXPR_NODE* head = nullptr;
  if (scan_.TokenIn(kNoOperand)) return Fail(56, "Improper sizeof operand.");
  if (!ParseFullExpression(context, &head)) return false;
  if (head == nullptr) return Fail(56, "Improper sizeof operand.");
  *size = IsPartOfByte(StaticType(slot_, head)) ? 0 : StaticSize(slot_, head);
  return Expect(Tok::RPAREN, 79, "Missing ')' . ");
}

}  // namespace vorc
