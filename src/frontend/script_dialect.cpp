#include "base/format.h"
#include "frontend/parser.h"
#include "program/layout.h"

namespace vorc {

namespace {

constexpr size_t kLongestDollarName = 257;

struct ScriptWord {
  Tok token;
  StatementKind kind;
};
constexpr ScriptWord kScriptWords[] = {
    {Tok::STAR, STATEMENT_TYPE_PLAIN},      {Tok::LPAREN, STATEMENT_TYPE_PLAIN},
    {Tok::PLUS_PLUS, STATEMENT_TYPE_PLAIN}, {Tok::MINUS_MINUS, STATEMENT_TYPE_PLAIN},
    {Tok::for_, STATEMENT_TYPE_FOR},        {Tok::do_, STATEMENT_TYPE_DO},
    {Tok::while_, STATEMENT_TYPE_WHILE},    {Tok::if_, STATEMENT_TYPE_IF},
    {Tok::switch_, STATEMENT_TYPE_SWITCH},  {Tok::LSECONDBRACKET, STATEMENT_TYPE_NEWBLOCK},
    {Tok::goto_, STATEMENT_TYPE_GOTO},
};

}  // namespace

// The function that holds what a script says outside of any function.
void Parser::CreateMorvMain() {
  TypeSpec type;
  type.BasicType = Tok::int_;
  type.StorageType = SIGNED_VAR;
  slot_.MorvFuncProto = InsertFuncName(slot_, &slot_.Globals, slot_.Names.Intern("MorvMain"), type);
  AttachProcBody(slot_, slot_.MorvFuncProto);
}

Parser::Scope Parser::MorvScope() {
  return ProcScope(slot_.MorvFuncProto);
}

bool Parser::RunMorvStatement(STATEMENT_BLOCK* statement) {
  if (slot_.Display.ErrorCount == 0) slot_.Services->RunStatement(statement);
  return true;
}

bool Parser::ParseMorvScript() {
  for (const ScriptWord& word : kScriptWords) {
    if (At(word.token)) return MorvPROC_ParseStatement(word.kind);
  }
  return false;
}

bool Parser::MorvPROC_ParseStatement(StatementKind kind) {
  const Scope scope = MorvScope();
  STATEMENT_BLOCK* statement = NewStatementBlock(slot_, scope.proc, scope.statements, nullptr);
  statement->StatementType = kind;
  const bool good =
      kind == STATEMENT_TYPE_PLAIN ? ParseExpressionStatement(statement) : ParseStatementOfType(statement);
  if (!good) return Synchronize(Begin(), EofList);
  return RunMorvStatement(statement);
}

bool Parser::MorvPROC_ParseIdentifier() {
  const Scope scope = MorvScope();
  STATEMENT_BLOCK* statement = NewStatementBlock(slot_, scope.proc, scope.statements, nullptr);
  if (!ParseFullExpression(ContextOf(statement), &statement->Expression)) return false;
  // The statement runs before its end is looked for.
  RunMorvStatement(statement);
  return Expect(Tok::SEMICOLON, 0, "Missing ';'");
}

FoundName Parser::FindDollarFactorIdentifier(const ExprContext& context, const Name* name) const {
  return FindVisible(slot_, context.proc, context.statement, context.block, name);
}

// The name under which `$word` is kept: with its sign where a typed variable has taken the word.
Name* Parser::MorvSplitDollarVarName(const ExprContext& context, Name* word) {
  if (context.proc == nullptr || word->Text.empty() || word->Text.size() > kLongestDollarName) return word;
  Name* with_sign = slot_.Names.Intern(std::string("$").append(word->Text));
  if (FindDollarFactorIdentifier(context, with_sign).Symbol() != nullptr) return with_sign;
  const SYM_REC* plain = FindDollarFactorIdentifier(context, word).Symbol();
  const bool typed = plain != nullptr && plain->Struct == nullptr && plain->BasicType != Tok::dollar;
  return typed ? with_sign : word;
}

SYM_REC* Parser::FindOrCreateDollar(const ExprContext& context, Name* word) {
  Name* name = MorvSplitDollarVarName(context, word);
  if (SYM_REC* known = FindDollarFactorIdentifier(context, name).Symbol()) return known;
  TypeSpec type;
  type.BasicType = Tok::dollar;
  type.StorageType = DOLLAR_VAR;
  SYMBOLS_HEADER* header = &slot_.Globals;
  if (context.block != nullptr)
    header = &context.block->LocalsHeader;
  else if (context.proc != nullptr && context.proc->ProcBody != nullptr)
    header = &context.proc->ProcBody->LocalsHeader;
  SYM_REC* symbol = InsertVarName(slot_, header, name, type, false);
  if (header == &slot_.Globals) slot_.Services->AllocateData(symbol);
  return symbol;
}

// A statement that starts with `$name`.
bool Parser::ParseDollarVar(const Scope& scope) {
  const bool named = LookAhead([&] {
    const long line = scan_.LineNumber();
    Peek();
    return scan_.WordName() != nullptr && scan_.LineNumber() == line;
  });
  if (!named) {
    Next();
    return Fail(0, "Missing variable name after '$'.");
  }
  return ParsePlainStatement(scope);
}

bool Parser::PROC_ParseIObjectDecl(const Scope& scope) {
  Next();
  const auto fail = [&](const char* text) {
    slot_.Error(0, text);
    while (!At(Tok::SEMICOLON) && !At(Tok::LSECONDBRACKET) && !At(Tok::END_OF_FILE)) Next();
    if (At(Tok::LSECONDBRACKET)) SkipToMatchingBrace();
    Accept(Tok::SEMICOLON);
    return true;
  };
  if (!Accept(Tok::dollar)) return fail("Missing '$' after 'IOBJECT' - expected 'IOBJECT $name{ ... };'.");
  if (scan_.WordName() == nullptr) return fail("Missing object name after '$' in 'IOBJECT' declaration.");
  if (!scan_.Touching()) return fail("No space allowed between '$' and the object name.");
  Name* name = scan_.WordName();
  Next();
  if (!At(Tok::LSECONDBRACKET)) return fail("Missing '{' in 'IOBJECT' declaration.");
  if (slot_.Structs.full())
    return fail("Could not create the type for this 'IOBJECT' declaration (out of struct records).");
  if (slot_.SymbolRecords.full())
    return fail("Could not declare this 'IOBJECT' instance (out of symbol records).");

  Name* tag = slot_.Names.Intern(std::string("__iobject_type_").append(name->Text));
  STRUCT_REC* record = InsertNewStruct(slot_, scope.header, tag, Tok::struct_, 0);
  TypeSpec self;
  self.BasicType = Tok::this_;
  self.Struct = record;
  record->This = InsertVarName(slot_, &record->MembersHeader, slot_.Names.Intern("this"), self, false);
  Next();
  const bool good = ParseIObjectMembers(record);
  record->IsForwardDeclared = false;
  if (!SettleLayout(slot_, record)) FailTypeSize(record->name);
  if (!good) return false;

  const FoundName clash = FindInScope(slot_, scope.header, name);
  if (clash.Symbol() != nullptr && !clash.Symbol()->ImplicitExtern) ShowConflict(clash, name, false);
  TypeSpec type;
  type.BasicType = Tok::struct_;
  type.Struct = record;
  SYM_REC* object = InsertVarName(slot_, scope.header, name, type, false);
  if (scope.kind == Scope::Kind::kMain) slot_.Services->AllocateData(object);
  return Expect(Tok::SEMICOLON, 0, "Missing ';' after 'IOBJECT' declaration.");
}

bool Parser::ParseIObjectMembers(STRUCT_REC* record) {
  while (!At(Tok::RSECONDBRACKET)) {
    switch (Token()) {
      case Tok::END_OF_FILE: return Fail(38, "Unexpected end-of-file..");
      case Tok::SEMICOLON: Next(); break;
      case Tok::function_:
      case Tok::subroutine_:
        if (!ParseFunctionSubroutineNamed(&record->MembersHeader)) return false;
        break;
      case Tok::dollar:
      case Tok::IDENTIFIER:
        if (!ParseIObjectVariables(record)) {
          SkipToSemicolon();
          return false;
        }
        break;
      default:
        slot_.Error(0,
                    "Inside an IOBJECT, expected a member-variable list, a 'function' definition, or '}'.");
        Next();
    }
  }
  Next();
  return true;
}

bool Parser::ParseIObjectVariables(STRUCT_REC* record) {
  TypeSpec type;
  type.BasicType = Tok::dollar;
  type.StorageType = DOLLAR_VAR;
  do {
    Accept(Tok::dollar);
    if (!AtName()) return Fail(0, "Expected a member variable name in 'IOBJECT' declaration.");
    SYM_REC* member = InsertVarName(slot_, &record->MembersHeader, scan_.WordName(), type, false);
    member->MemberType = MEMBER_TYPE_PUBLIC;
    Next();
  } while (Accept(Tok::COMMA));
  return Expect(Tok::SEMICOLON, 0, "Missing ';' after member variable list in 'IOBJECT' declaration.");
}

}  // namespace vorc
