#pragma once

#include "program/slot.h"

// Shapes of statements: what stands around one, and which of its derived statements is which part.

namespace vorc {

/// The statement around another: its parent, or the one whose block holds it. Null in a body.
STATEMENT_BLOCK* Enclosing(const STATEMENT_BLOCK* statement);
bool IsLoop(const STATEMENT_BLOCK* statement);
/// The nearest loop around a statement, which `continue` goes on with.
STATEMENT_BLOCK* FindLoopStatement(const STATEMENT_BLOCK* statement);
/// The nearest loop or switch around a statement, which `break` leaves.
STATEMENT_BLOCK* FindLoopSwitchStatement(const STATEMENT_BLOCK* statement);
STATEMENT_BLOCK* FindParentSwitchStatement(const STATEMENT_BLOCK* statement);

/// The arms of an `if`. Null where one is missing.
struct IfParts {
  STATEMENT_BLOCK* then_arm = nullptr;
  STATEMENT_BLOCK* else_arm = nullptr;
};
IfParts PartsOfIf(const STATEMENT_BLOCK* statement);

/// The parts of a `for`. Each clause is a list of statements; an empty one is null.
struct ForParts {
  STATEMENT_BLOCK* first = nullptr;       ///< of the first clause: declarations or expressions
  STATEMENT_BLOCK* conditions = nullptr;  ///< of the second clause
  STATEMENT_BLOCK* steps = nullptr;       ///< of the third clause
  STATEMENT_BLOCK* body = nullptr;
};
ForParts PartsOfFor(const STATEMENT_BLOCK* statement);

/// The body of a `while` or `do`.
STATEMENT_BLOCK* BodyOfLoop(const STATEMENT_BLOCK* statement);

/// The label of a name anywhere in a function's body, or null.
STATEMENT_BLOCK* FindLabel(const PROC_TABLE* body, const Name* name);

/// Reports each case value and each `default` that a switch has more than once.
void CheckSwitchStatementDuplicateCaseValues(C_SLOT& slot, const STATEMENT_BLOCK* statement);

}  // namespace vorc
