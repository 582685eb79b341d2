#include "program/statement_tree.h"

#include <unordered_set>

#include "base/format.h"

namespace vorc {

namespace {

STATEMENT_BLOCK* LabelIn(const StatementList& list, const Name* name) {
  for (STATEMENT_BLOCK* at = list.First; at != nullptr; at = at->Next) {
    if (at->StatementType == STATEMENT_TYPE_LABEL && at->Symbol != nullptr && at->Symbol->name == name)
      return at;
  }
  return nullptr;
}

}  // namespace

STATEMENT_BLOCK* Enclosing(const STATEMENT_BLOCK* statement) {
  if (statement->ParentStatement != nullptr) return statement->ParentStatement;
  return statement->ParentCodeBlock == nullptr ? nullptr : statement->ParentCodeBlock->ParentStatement;
}

bool IsLoop(const STATEMENT_BLOCK* statement) {
  const StatementKind kind = statement->StatementType;
  return kind == STATEMENT_TYPE_WHILE || kind == STATEMENT_TYPE_DO || kind == STATEMENT_TYPE_FOR;
}

STATEMENT_BLOCK* FindLoopStatement(const STATEMENT_BLOCK* statement) {
  STATEMENT_BLOCK* at = Enclosing(statement);
  while (at != nullptr && !IsLoop(at)) at = Enclosing(at);
  return at;
}

STATEMENT_BLOCK* FindLoopSwitchStatement(const STATEMENT_BLOCK* statement) {
  STATEMENT_BLOCK* at = Enclosing(statement);
  while (at != nullptr && !IsLoop(at) && at->StatementType != STATEMENT_TYPE_SWITCH) at = Enclosing(at);
  return at;
}

STATEMENT_BLOCK* FindParentSwitchStatement(const STATEMENT_BLOCK* statement) {
  STATEMENT_BLOCK* at = Enclosing(statement);
  while (at != nullptr && at->StatementType != STATEMENT_TYPE_SWITCH) at = Enclosing(at);
  return at;
}

IfParts PartsOfIf(const STATEMENT_BLOCK* statement) {
  IfParts parts;
  parts.then_arm = statement->ChildStatements.First;
  if (parts.then_arm != nullptr) parts.else_arm = parts.then_arm->Next;
  return parts;
}

ForParts PartsOfFor(const STATEMENT_BLOCK* statement) {
  const STATEMENT_BLOCK* first = statement->ChildStatements.First;
  const STATEMENT_BLOCK* second = first->Next;
  const STATEMENT_BLOCK* third = second->Next;
  ForParts parts;
  if (first->Block != nullptr) parts.first = first->Block->Statements.First;
  parts.conditions = second->ChildStatements.First;
  parts.steps = third->ChildStatements.First;
  parts.body = third->Next;
  return parts;
}

STATEMENT_BLOCK* BodyOfLoop(const STATEMENT_BLOCK* statement) {
  return statement->ChildStatements.First;
}

STATEMENT_BLOCK* FindLabel(const PROC_TABLE* body, const Name* name) {
  STATEMENT_BLOCK* found = LabelIn(body->Statements, name);
  for (const CODE_BLOCK* block : body->Blocks) {
    if (found == nullptr) found = LabelIn(block->Statements, name);
  }
  return found;
}

void CheckSwitchStatementDuplicateCaseValues(C_SLOT& slot, const STATEMENT_BLOCK* statement) {
  if (statement->Block == nullptr) return;
  std::unordered_set<int64_t> seen;
  bool has_default = false;
  for (const STATEMENT_BLOCK* at = statement->Block->Statements.First; at != nullptr; at = at->Next) {
    if (at->StatementType == STATEMENT_TYPE_DEFAULT) {
      if (has_default) slot.ErrorAt(at->Line, 85, "Duplicate case value 'default' ");
      has_default = true;
    }
    if (at->StatementType != STATEMENT_TYPE_CASE || seen.insert(at->CaseValue).second) continue;
    slot.ErrorAt(at->Line, 85, Format("Duplicate case value '%d' found\n", static_cast<int>(at->CaseValue)));
  }
}

}  // namespace vorc
