#include "base/format.h"
#include "frontend/parser.h"
#include "program/statement_tree.h"

namespace vorc {

namespace {

struct StatementWord {
  Tok token;
  StatementKind kind;
};
constexpr StatementWord kControlWords[] = {
    {Tok::if_, STATEMENT_TYPE_IF},
    {Tok::while_, STATEMENT_TYPE_WHILE},
    {Tok::do_, STATEMENT_TYPE_DO},
    {Tok::for_, STATEMENT_TYPE_FOR},
    {Tok::switch_, STATEMENT_TYPE_SWITCH},
    {Tok::goto_, STATEMENT_TYPE_GOTO},
    {Tok::return_, STATEMENT_TYPE_RETURN},
    {Tok::break_, STATEMENT_TYPE_BREAK},
    {Tok::continue_, STATEMENT_TYPE_CONTINUE},
};

constexpr TokenList kExpressionStart = {Tok::STAR,      Tok::LPAREN,      Tok::PLUS_PLUS, Tok::MINUS_MINUS,
                                        Tok::this_,     Tok::BITAND,      Tok::NOT,       Tok::TILDA,
                                        Tok::MINUS,     Tok::NUMBER,      Tok::STRING,    Tok::SINGLEQUOTE,
                                        Tok::HEXNUMBER, Tok::REAL_NUMBER, Tok::sizeof_,   Tok::new_};

}  // namespace

Parser::ExprContext Parser::ContextOf(STATEMENT_BLOCK* statement) const {
  ExprContext context;
  context.proc = statement->OwnerFunction;
  context.statement = statement;
  context.block = statement->ParentCodeBlock;
  return context;
}

bool Parser::ParseProcBody(FUNCPROTO_REC* proto) {
  const Nesting nesting(*this);
  const Scope scope = ProcScope(proto);
  while (!At(Tok::RSECONDBRACKET)) {
    if (At(Tok::END_OF_FILE)) return Fail(38, "Unexpected end-of-file..");
    const ScanPosition position = scan_.Position();
    if (!ParseBodyItem(scope)) Synchronize(ProcBodyList, EofProcList);
    if (scan_.Position() == position && !At(Tok::RSECONDBRACKET) && !At(Tok::END_OF_FILE)) Next();
  }
  return true;
}

// Statements up to the block's `}`, which is left to the caller.
bool Parser::ParseCodeBlock(FUNCPROTO_REC* proto, CODE_BLOCK* block) {
  Scope scope;
  scope.kind = Scope::Kind::kBlock;
  scope.proc = proto;
  scope.block = block;
  scope.header = &block->LocalsHeader;
  scope.statements = &block->Statements;
  while (!At(Tok::RSECONDBRACKET)) {
    if (At(Tok::END_OF_FILE)) return Fail(38, "Unexpected end-of-file..");
    const ScanPosition position = scan_.Position();
    if (!ParseBodyItem(scope)) Synchronize(ProcBodyList.With({Tok::case_, Tok::default_}), EofProcList);
    if (scan_.Position() == position && !At(Tok::RSECONDBRACKET) && !At(Tok::END_OF_FILE)) Next();
  }
  return true;
}

// One declaration or statement of a function's body or of a block.
bool Parser::ParseBodyItem(const Scope& scope) {
  for (const StatementWord& word : kControlWords) {
    if (At(word.token)) return ParseNested(scope, word.kind);
  }
  switch (Token()) {
    case Tok::LSECONDBRACKET: return ParseNested(scope, STATEMENT_TYPE_NEWBLOCK);
    case Tok::SEMICOLON: Next(); return true;
    case Tok::typedef_: return ParseTypeDef(scope);
    case Tok::delete_:
      return ParseDeleteStatement(NewStatementBlock(slot_, scope.proc, scope.statements, scope.block));
    case Tok::case_: return ParseCase(scope);
    case Tok::default_: return ParseDefaultType(scope);
    case Tok::dollar: return ParseDollarVar(scope);
    case Tok::IOBJECT: return PROC_ParseIObjectDecl(scope);
    case Tok::rtlbegin: return SkipRtlBlock();
    case Tok::try_: return SkipTryBlock();
    case Tok::throw_:
    case Tok::template_:
    case Tok::using_:
    case Tok::namespace_: SkipUnsupported(); return true;
    case Tok::IDENTIFIER: return ParseBodyIdentifier(scope);
    default: break;
  }
  if (scan_.TokenIn(kExpressionStart)) return ParsePlainStatement(scope);
  if (AtTypeStart(scope)) return ParseDeclaration(scope);
  return false;
}

bool Parser::ParseBodyIdentifier(const Scope& scope) {
  if (AtTypeStart(scope)) {
    const bool declares = LookAhead([&] {
      Peek();
      return scan_.TokenIn(ValidVarList) || At(Tok::BITAND) || scan_.TokenIn(StorageList) || AtDeclaredName();
    });
    if (declares) return ParseDeclaration(scope);
    Next();
    return Fail(45, Format("Invalid variable name: '%s'", scan_.ClipTok().c_str()));
  }
  if (AtMisspeltType(scope)) return SkipMisspeltType(57, kUndeclaredVariable);
  const bool label = LookAhead([&] {
    Peek();
    return At(Tok::COLON);
  });
  return label ? ParseLabel(scope) : ParsePlainStatement(scope);
}

bool Parser::ParseLabel(const Scope& scope) {
  Name* name = scan_.WordName();
  SYMBOLS_HEADER* labels = &scope.proc->ProcBody->LocalsHeader;
  if (FindInScope(slot_, scope.header, name) || FindInScope(slot_, labels, name)) {
    slot_.Error(0, Format("Label name conflicts with other symbol names: '%s'", name->c_str()));
  }
  TypeSpec type;
  type.StorageType = LABEL_VAR;
  SYM_REC* symbol = InsertVarName(slot_, labels, name, type, false);
  symbol->IsLabel = true;
  STATEMENT_BLOCK* statement = NewStatementBlock(slot_, scope.proc, scope.statements, scope.block);
  statement->StatementType = STATEMENT_TYPE_LABEL;
  statement->Symbol = symbol;
  Next();
  Next();
  return true;
}

bool Parser::ParseExpressionStatement(STATEMENT_BLOCK* statement) {
  if (!ParseFullExpression(ContextOf(statement), &statement->Expression)) return false;
  if (!At(Tok::SEMICOLON)) return Fail(3, Format("Missing ';' before %s", scan_.ClipTok().c_str()));
  Next();
  return true;
}

bool Parser::ParsePlainStatement(const Scope& scope) {
  return ParseExpressionStatement(NewStatementBlock(slot_, scope.proc, scope.statements, scope.block));
}

bool Parser::ParseNested(const Scope& scope, StatementKind kind) {
  STATEMENT_BLOCK* statement = NewStatementBlock(slot_, scope.proc, scope.statements, scope.block);
  statement->StatementType = kind;
  const bool good = ParseStatementOfType(statement);
  statement->EndLine = scan_.Place();
  return good;
}

// The statement's own word is current.
bool Parser::ParseStatementOfType(STATEMENT_BLOCK* statement) {
  const Nesting nesting(*this);
  if (!nesting) return false;
  switch (statement->StatementType) {
    case STATEMENT_TYPE_IF: return ParseIF(statement);
    case STATEMENT_TYPE_WHILE: return ParseWHILE(statement);
    case STATEMENT_TYPE_DO: return ParseDO(statement);
    case STATEMENT_TYPE_FOR: return ParseFOR(statement);
    case STATEMENT_TYPE_SWITCH: return ParseSWITCH(statement);
    case STATEMENT_TYPE_GOTO: return ParseGotoType(statement);
    case STATEMENT_TYPE_BREAK: return ParseBreakType(statement);
    case STATEMENT_TYPE_CONTINUE: return ParseContinueType(statement);
    case STATEMENT_TYPE_RETURN: return ParseReturnType(statement);
    case STATEMENT_TYPE_NEWBLOCK: return ParseArmBlock(statement);
    default: return false;
  }
}

bool Parser::ParseArmBlock(STATEMENT_BLOCK* arm) {
  arm->StatementType = STATEMENT_TYPE_NEWBLOCK;
  CODE_BLOCK* block = NewCodeBlock(slot_, arm->OwnerFunction, arm);
  Next();
  if (!ParseCodeBlock(arm->OwnerFunction, block)) return FailBrace(block->Line, 0, "Missing '}'");
  return ExpectBrace(block->Line, 0, "Missing '}'");
}

// The statement behind a condition or a loop's head. A declaration is none.
bool Parser::ParseArm(STATEMENT_BLOCK* arm, const char* misuse, long code) {
  arm->Line = scan_.Place();
  for (const StatementWord& word : kControlWords) {
    if (!At(word.token)) continue;
    arm->StatementType = word.kind;
    if (!ParseStatementOfType(arm)) return false;
    const bool in_loop = arm->ParentStatement->StatementType != STATEMENT_TYPE_IF;
    // A script takes the first of two equal cases.
    const bool checked = word.kind == STATEMENT_TYPE_SWITCH && in_loop && !slot_.IsScript();
    if (checked && slot_.Display.ErrorCount == 0) CheckSwitchStatementDuplicateCaseValues(slot_, arm);
    return true;
  }
  switch (Token()) {
    case Tok::SEMICOLON: Next(); return true;
    case Tok::LSECONDBRACKET: return ParseArmBlock(arm);
    case Tok::try_: return SkipTryBlock();
    case Tok::IDENTIFIER:
    case Tok::dollar: return ParseExpressionStatement(arm);
    case Tok::delete_: return ParseDeleteStatement(arm);
    default: break;
  }
  if (scan_.TokenIn(kExpressionStart)) {
    if (!ParseFullExpression(ContextOf(arm), &arm->Expression)) return false;
    return Expect(Tok::SEMICOLON, 0, "Missing ';'.");
  }
  return Fail(code, Format(misuse, scan_.ClipTok().c_str()));  // NOLINT(clang-diagnostic-format-nonliteral)
}

bool Parser::ParseDeleteStatement(STATEMENT_BLOCK* statement) {
  statement->IsDelete = true;
  Next();
  if (Accept(Tok::LBRACKET)) {
    statement->IsDeleteArray = true;
    if (!Expect(Tok::RBRACKET, 0, "Missing ']' after 'delete['")) return false;
  }
  return ParseExpressionStatement(statement);
}

// `try { }` and every `catch ( ) { }` behind it are passed over unread.
bool Parser::SkipTryBlock() {
  Next();
  if (At(Tok::LSECONDBRACKET)) SkipToMatchingBrace();
  while (At(Tok::catch_)) {
    Next();
    int depth = 0;
    do {
      if (At(Tok::LPAREN)) ++depth;
      if (At(Tok::RPAREN)) --depth;
      if (depth == 0 && !At(Tok::RPAREN)) break;
      Next();
    } while (depth > 0 && !At(Tok::END_OF_FILE));
    if (At(Tok::LSECONDBRACKET)) SkipToMatchingBrace();
  }
  return true;
}

bool Parser::SkipRtlBlock() {
  const long line = scan_.LineNumber();
  const bool closed = scan_.ReadRtlBlock();
  if (!closed) slot_.Error(0, Format("'rtlbegin' at line %ld has no matching 'rtlend'.", line));
  Next();
  return closed;
}

}  // namespace vorc
