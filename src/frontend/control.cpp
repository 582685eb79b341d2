#include "base/format.h"
#include "frontend/parser.h"
#include "program/constants.h"
#include "program/statement_tree.h"

namespace vorc {

namespace {

// Directly in a function's body these words have numbers of their own.
bool InBody(const STATEMENT_BLOCK* statement) {
  return statement->ParentCodeBlock == nullptr && statement->ParentStatement == nullptr;
}

void SetForScope(STATEMENT_BLOCK* part, STATEMENT_BLOCK* first) {
  part->ForScope = part->EnclosingFor = first;
}

}  // namespace

bool Parser::ParseCondition(STATEMENT_BLOCK* statement, const char* word) {
  if (!At(Tok::LPAREN)) return Fail(0, Format("Missing '(' in '%s' statement.", word));
  Next();
  if (!ParseFullExpression(ContextOf(statement), &statement->Expression)) return false;
  if (!At(Tok::RPAREN)) return Fail(0, Format("Missing ')' in '%s' statement.", word));
  Next();
  return true;
}

bool Parser::ParseIF(STATEMENT_BLOCK* statement) {
  Next();
  if (!ParseCondition(statement, "if")) return false;
  STATEMENT_BLOCK* arm = NewDerivedStatementBlock(slot_, statement, "derived as THEN of IF statement");
  if (!ParseArm(arm, "Syntax error in 'if' statement.", 0)) return false;
  if (!At(Tok::else_)) return true;
  Next();
  arm = NewDerivedStatementBlock(slot_, statement, "derived as ELSE of IF statement");
  return ParseArm(arm, "Syntax error in 'if' statement.", 0);
}

bool Parser::ParseWHILE(STATEMENT_BLOCK* statement) {
  Next();
  if (!ParseCondition(statement, "while")) return false;
  STATEMENT_BLOCK* body =
      NewDerivedStatementBlock(slot_, statement, "derived as all statements for  the while loop");
  return ParseArm(body, "Misuse of '%s' in 'while' statement.", 70);
}

bool Parser::ParseDO(STATEMENT_BLOCK* statement) {
  Next();
  STATEMENT_BLOCK* body =
      NewDerivedStatementBlock(slot_, statement, "derived as all statements for  the do loop");
  if (!ParseArm(body, "Misuse of '%s' in 'do' statement.", 70)) return false;
  if (!Expect(Tok::while_, 0, "Missing 'while' in 'do' statement.")) return false;
  if (!ParseCondition(statement, "while")) return false;
  return Expect(Tok::SEMICOLON, 0, "Missing ';'.");
}

bool Parser::ParseFOR(STATEMENT_BLOCK* statement) {
  STATEMENT_BLOCK* first =
      NewDerivedStatementBlock(slot_, statement, "derived as first_for_clause_statement");
  STATEMENT_BLOCK* second =
      NewDerivedStatementBlock(slot_, statement, "derived as second_for_clause_statement");
  STATEMENT_BLOCK* third =
      NewDerivedStatementBlock(slot_, statement, "derived as third_for_clause_statement");
  Next();
  if (!Expect(Tok::LPAREN, 0, "Missing '(' in 'for' statement.")) return false;
  if (!ParseFirstForClause(first)) return false;
  if (!ParseForClauses(second, first, "SecondForClause expression", Tok::SEMICOLON)) return false;
  if (!Expect(Tok::SEMICOLON, 0, "Missing ';' in 'for' statement.")) return false;
  if (!ParseForClauses(third, first, "ThirdForClause expression", Tok::RPAREN)) return false;
  if (!Expect(Tok::RPAREN, 0, "Missing ')' in 'for' statement.")) return false;
  STATEMENT_BLOCK* body =
      NewDerivedStatementBlock(slot_, statement, "derived as all statements for  the for loop");
  SetForScope(body, first);
  return ParseArm(body, "Misuse of '%s' in 'for' statement.", 69);
}

// Declarations or expressions up to the first `;`, which is passed.
bool Parser::ParseFirstForClause(STATEMENT_BLOCK* clause) {
  clause->StatementType = STATEMENT_TYPE_NEWBLOCK;
  CODE_BLOCK* block = NewCodeBlock(slot_, clause->OwnerFunction, clause);
  block->IsForClause = true;
  Scope scope;
  scope.kind = Scope::Kind::kForClause;
  scope.proc = clause->OwnerFunction;
  scope.block = block;
  scope.header = &block->LocalsHeader;
  scope.statements = &block->Statements;
  if (At(Tok::SEMICOLON)) {
    Next();
    return true;
  }
  if (AtTypeStart(scope)) return ParseDeclaration(scope);
  while (true) {
    STATEMENT_BLOCK* part = NewStatementBlock(slot_, scope.proc, scope.statements, block);
    if (!ParseFullExpression(ContextOf(part), &part->Expression)) return false;
    if (Accept(Tok::COMMA)) continue;
    return Expect(Tok::SEMICOLON, 0, "Missing ';' in 'for' statement.");
  }
}

// Comma-separated expressions up to `end`, each in a statement of its own.
bool Parser::ParseForClauses(STATEMENT_BLOCK* group, STATEMENT_BLOCK* scope, const char* name, Tok end) {
  SetForScope(group, scope);
  while (!At(end)) {
    STATEMENT_BLOCK* part = NewDerivedStatementBlock(slot_, group, name);
    SetForScope(part, scope);
    if (!ParseFullExpression(ContextOf(part), &part->Expression)) return false;
    if (!Accept(Tok::COMMA)) break;
  }
  return true;
}

bool Parser::ParseSWITCH(STATEMENT_BLOCK* statement) {
  Next();
  if (!ParseCondition(statement, "switch")) return false;
  if (!At(Tok::LSECONDBRACKET)) return Fail(0, "Missing '{' in 'switch' statement.");
  CODE_BLOCK* block = NewCodeBlock(slot_, statement->OwnerFunction, statement);
  Next();
  const SourceLine line = scan_.Place();
  if (!ParseCodeBlock(statement->OwnerFunction, block)) return FailBrace(block->Line, 0, "Missing '}'");
  if (block->Statements.First == nullptr) {
    slot_.ErrorAt(line, 0, "Empty 'switch' statement body not allowed.");
  }
  return ExpectBrace(block->Line, 0, "Missing '}'");
}

bool Parser::ParseCase(const Scope& scope) {
  STATEMENT_BLOCK* statement = NewStatementBlock(slot_, scope.proc, scope.statements, scope.block);
  statement->StatementType = STATEMENT_TYPE_CASE;
  const bool in_switch = FindParentSwitchStatement(statement) != nullptr;
  if (!in_switch) slot_.Error(68, "Invalid use of 'case'. It must be used in 'switch' statement.");
  Next();
  // The value is a constant, but `?` needs its `:` first, so only what stands before one is read.
  ExprChain chain;
  if (!BinaryExpression(ContextOf(statement), &chain, 1)) return false;
  if (At(Tok::QUESTION_MARK) && !ParseQuestionMark(ContextOf(statement), &chain)) return false;
  statement->Expression = chain.First;
  if (!Expect(Tok::COLON, 0, "Missing ':' in 'case' statement.")) return false;
  if (in_switch && slot_.Display.ErrorCount == 0 &&
      !EvalConstantInteger(slot_, statement->Expression, &statement->CaseValue)) {
    slot_.ErrorAt(statement->Line, 84, "Case value is not a constant");
  }
  return true;
}

bool Parser::ParseDefaultType(const Scope& scope) {
  STATEMENT_BLOCK* statement = NewStatementBlock(slot_, scope.proc, scope.statements, scope.block);
  statement->StatementType = STATEMENT_TYPE_DEFAULT;
  if (FindParentSwitchStatement(statement) == nullptr) {
    slot_.Error(InBody(statement) ? 73 : 68,
                "Invalid use of 'default'. It must be used in 'switch' statement.");
  }
  Next();
  if (InBody(statement)) {
    if (!At(Tok::SEMICOLON)) slot_.Error(74, "Missing ';'");
    Next();
    return true;
  }
  return Expect(Tok::COLON, 0, "Missing ':' ");
}

bool Parser::ParseGotoType(STATEMENT_BLOCK* statement) {
  Next();
  if (!AtName()) return Fail(75, "goto: target label expected.");
  statement->GotoLabel = scan_.WordName();
  Next();
  return Expect(Tok::SEMICOLON, 76, "Missing ';'.");
}

bool Parser::ParseBreakType(STATEMENT_BLOCK* statement) {
  if (FindLoopSwitchStatement(statement) == nullptr) {
    slot_.Error(InBody(statement) ? 72 : 67,
                "Invalid use of 'break'. It must be used in for/do/while loops or in 'switch' statements.");
  }
  Next();
  return InBody(statement) ? Expect(Tok::SEMICOLON, 74, "Missing ';'")
                           : Expect(Tok::SEMICOLON, 0, "Missing ';' .");
}

bool Parser::ParseContinueType(STATEMENT_BLOCK* statement) {
  if (FindLoopStatement(statement) == nullptr) {
    slot_.Error(InBody(statement) ? 71 : 66,
                "Invalid use of 'continue'. It must be used in for/do/while loops.");
  }
  Next();
  return InBody(statement) ? Expect(Tok::SEMICOLON, 74, "Missing ';'")
                           : Expect(Tok::SEMICOLON, 0, "Missing ';' .");
}

bool Parser::ParseReturnType(STATEMENT_BLOCK* statement) {
  Next();
  if (AtOperand() && !ParseFullExpression(ContextOf(statement), &statement->Expression)) return false;
  return Expect(Tok::SEMICOLON, 59, "Missing ';'");
}

}  // namespace vorc
