#pragma once

#include "program/records.h"

// How statements lie in one another.

namespace vorc {

/// What a statement's state says about how it ended.
enum ExecStateValue : uint8_t { kNone = 0, kBreak = 1, kExit = 2, kReturn = 3, kContinue = 4 };

/// The statement around one, or null at a function's top.
inline STATEMENT_BLOCK* Enclosing(const STATEMENT_BLOCK* statement) {
  if (statement->ParentStatement != nullptr) return statement->ParentStatement;
  return statement->ParentCodeBlock == nullptr ? nullptr : statement->ParentCodeBlock->ParentStatement;
}

inline bool IsLoop(const STATEMENT_BLOCK* statement) {
  return statement->StatementType == STATEMENT_TYPE_WHILE || statement->StatementType == STATEMENT_TYPE_DO ||
         statement->StatementType == STATEMENT_TYPE_FOR;
}

/// The nearest loop (or `switch`) around a statement, or null.
inline STATEMENT_BLOCK* FindParentLoop(const STATEMENT_BLOCK* statement, bool or_switch) {
  STATEMENT_BLOCK* at = Enclosing(statement);
  while (at != nullptr && !IsLoop(at) && !(or_switch && at->StatementType == STATEMENT_TYPE_SWITCH))
    at = Enclosing(at);
  return at;
}

/// What `break` and `continue` leave, null outside a loop.
inline STATEMENT_BLOCK* FindTarget(const STATEMENT_BLOCK* statement) {
  return FindParentLoop(statement, statement->StatementType == STATEMENT_TYPE_BREAK);
}

/// The four parts of a `for`.
struct ForParts {
  const STATEMENT_BLOCK* first;       ///< clauses that run once, or null
  const STATEMENT_BLOCK* conditions;  ///< null if there is none: the body never runs
  const STATEMENT_BLOCK* steps;
  STATEMENT_BLOCK* body;

  explicit ForParts(const STATEMENT_BLOCK* loop) {
    const STATEMENT_BLOCK* group = loop->ChildStatements.First;
    first = group->Block == nullptr ? nullptr : group->Block->Statements.First;
    conditions = group->Next->ChildStatements.First;
    steps = group->Next->Next->ChildStatements.First;
    body = group->Next->Next->Next;
  }
};

}  // namespace vorc
