#include "interp/vm_states.h"

#include <algorithm>

#include "interp/frame.h"
#include "program/statement_tree.h"

namespace vorc {

namespace {

void AddFunction(FUNCPROTO_REC* function, CalledFunctions* called) {
  FUNCPROTO_REC* first = function->FirstOverload != nullptr ? function->FirstOverload : function;
  for (FUNCPROTO_REC* at = first; at != nullptr; at = at->NextOverload) {
    if (at->PrototypeOnly || at->ProcBody == nullptr)
      called->unknown = true;
    else if (std::find(called->functions.begin(), called->functions.end(), at) == called->functions.end())
      called->functions.push_back(at);
  }
}

}  // namespace

void CallGraph::CollectOp(const Op& op, CalledFunctions* called) {
  switch (op.code) {
    case OpCode::kUserCall: AddFunction(op.function, called); break;
    case OpCode::kNameCall:
      if (op.symbol != nullptr || op.builtin == nullptr) called->unknown = true;
      break;
    case OpCode::kValueCall:
    case OpCode::kMemberCall: called->unknown = true; break;
    default: break;
  }
  Collect(op.sub, called);
  Collect(op.other, called);
  for (int i = 0; op.list != nullptr && i < std::max(op.argument_count, op.index_count); ++i) {
    if (op.code == OpCode::kNameCall && i >= op.argument_count) break;
    Collect(op.list[i], called);
  }
  for (int i = 0; op.indices != nullptr && i < op.index_count; ++i) Collect(op.indices[i], called);
}

void CallGraph::Collect(const Code* code, CalledFunctions* called) {
  if (code == nullptr) return;
  for (int i = 0; i < code->count; ++i) CollectOp(code->ops[i], called);
}

void CallGraph::CollectStatements(const STATEMENT_BLOCK* first, CalledFunctions* called) {
  for (const STATEMENT_BLOCK* at = first; at != nullptr; at = at->Next) {
    Collect(decoder_.Decode(at->Expression), called);
    if (at->Expression == nullptr && at->Symbol != nullptr && at->Symbol->Initializer.First != nullptr)
      called->unknown = true;
    CollectStatements(at->ChildStatements.First, called);
    if (at->Block != nullptr) CollectStatements(at->Block->Statements.First, called);
  }
}

const CalledFunctions& CallGraph::CalledBy(FUNCPROTO_REC* function) {
  const auto found = known_.find(function);
  if (found != known_.end()) return found->second;
  // Places in the frame are settled before anything is decoded.
  if (function->ProcBody->ArgSize < 0) PlaceParameters(slot_, function);
  if (function->ProcBody->LocalSize < 0) PlaceLocals(slot_, function);
  CalledFunctions called;
  CollectStatements(function->ProcBody->Statements.First, &called);
  return known_[function] = std::move(called);
}

bool CallGraph::Reaches(EXPR_NODE* expression, const FUNCPROTO_REC* function) {
  CalledFunctions reached;
  Collect(decoder_.Decode(expression), &reached);
  for (size_t i = 0; i < reached.functions.size() && !reached.unknown; ++i) {
    if (reached.functions[i] == function) return true;
    const CalledFunctions& next = CalledBy(reached.functions[i]);
    reached.unknown = next.unknown;
    for (FUNCPROTO_REC* callee : next.functions) AddFunction(callee, &reached);
  }
  return reached.unknown;
}

void StateAnalysis::Run(const STATEMENT_BLOCK* first) {
  VisitAll(first);
  for (const STATEMENT_BLOCK* at = first; at != nullptr; at = at->Next) {
    const bool never_reset =
        at->StatementType == STATEMENT_TYPE_FOR || at->StatementType == STATEMENT_TYPE_NEWBLOCK;
    StateFacts& facts = facts_[at];
    facts.kept = facts.kept || (never_reset && facts.returns);
  }
}

bool StateAnalysis::VisitAll(const STATEMENT_BLOCK* first) {
  bool comes_back = false;
  for (const STATEMENT_BLOCK* at = first; at != nullptr; at = at->Next) comes_back |= Visit(at);
  return comes_back;
}

// Answers whether a call in the statement may come back here.
bool StateAnalysis::Visit(const STATEMENT_BLOCK* statement) {
  bool comes_back = false;
  if (statement->Expression != nullptr)
    comes_back = graph_.Reaches(statement->Expression, function_);
  else if (statement->Symbol != nullptr && statement->Symbol->Initializer.First != nullptr)
    comes_back = true;
  MarkSetters(statement);
  comes_back |= VisitAll(statement->ChildStatements.First);
  if (statement->Block != nullptr) comes_back |= VisitAll(statement->Block->Statements.First);
  facts_[statement].comes_back = comes_back;
  Decide(statement);
  return comes_back;
}

void StateAnalysis::MarkSetters(const STATEMENT_BLOCK* statement) {
  const bool returns = statement->StatementType == STATEMENT_TYPE_RETURN;
  if (!returns && statement->StatementType != STATEMENT_TYPE_BREAK &&
      statement->StatementType != STATEMENT_TYPE_CONTINUE)
    return;
  const STATEMENT_BLOCK* target = nullptr;
  if (statement->StatementType == STATEMENT_TYPE_BREAK) target = FindLoopSwitchStatement(statement);
  if (statement->StatementType == STATEMENT_TYPE_CONTINUE) target = FindLoopStatement(statement);
  if (!returns && target == nullptr) return;
  for (const STATEMENT_BLOCK* at = statement; at != nullptr; at = Enclosing(at)) {
    facts_[at].set = true;
    facts_[at].returns |= returns;
    if (at == target) break;
  }
}

// Called when all that lies in the statement has been visited.
void StateAnalysis::Decide(const STATEMENT_BLOCK* statement) {
  StateFacts& facts = facts_[statement];
  const bool leaf = statement->StatementType == STATEMENT_TYPE_RETURN;
  if (facts.set && facts.comes_back && !leaf) facts.kept = true;
  if (statement->StatementType == STATEMENT_TYPE_FOR) {
    const STATEMENT_BLOCK* body = PartsOfFor(statement).body;
    const bool reset_by_itself =
        body->StatementType == STATEMENT_TYPE_IF || body->StatementType == STATEMENT_TYPE_WHILE;
    StateFacts& of_body = facts_[body];
    if (of_body.set && !reset_by_itself) of_body.kept = true;
  }
  const bool in_block = statement->ParentStatement == nullptr && statement->ParentCodeBlock != nullptr &&
                        statement->ParentCodeBlock->ParentStatement != nullptr &&
                        statement->ParentCodeBlock->ParentStatement->StatementType == STATEMENT_TYPE_NEWBLOCK;
  const bool keeps_after =
      statement->StatementType == STATEMENT_TYPE_FOR || statement->StatementType == STATEMENT_TYPE_DO;
  if (in_block && keeps_after && facts.set) facts.kept = true;
}

}  // namespace vorc
