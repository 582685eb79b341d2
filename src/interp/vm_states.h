#pragma once

#include <unordered_map>
#include <vector>

#include "interp/decode.h"
#include "interp/exec_state.h"

namespace vorc {

/// Which functions a function can get to.
struct CalledFunctions {
  std::vector<FUNCPROTO_REC*> functions;
  bool unknown = false;  ///< calls something that is only known when it runs
};

/// Finds out whether calls in a function may come back to it.
class CallGraph {
 public:
  CallGraph(C_SLOT& slot, Decoder& decoder) : slot_(slot), decoder_(decoder) {}

  /// True if evaluating the expression may run `function`.
  bool Reaches(EXPR_NODE* expression, const FUNCPROTO_REC* function);

 private:
  void Collect(const Code* code, CalledFunctions* called);
  void CollectOp(const Op& op, CalledFunctions* called);
  void CollectStatements(const STATEMENT_BLOCK* first, CalledFunctions* called);
  const CalledFunctions& CalledBy(FUNCPROTO_REC* function);

  C_SLOT& slot_;
  Decoder& decoder_;
  std::unordered_map<const FUNCPROTO_REC*, CalledFunctions> known_;
};

/// What a statement's state can do.
struct StateFacts {
  bool set = false;         ///< a `break`, `continue` or `return` sets it
  bool returns = false;     ///< a `return` does
  bool comes_back = false;  ///< a call in the statement may run its function again
  bool kept = false;        ///< the state must lie in memory, as it may be seen later
};

/// Tells which statements of a function keep their state in memory. All others leave by plain jumps:
/// whoever looks at their state would find what the jump already knows.
class StateAnalysis {
 public:
  StateAnalysis(CallGraph& graph, const FUNCPROTO_REC* function) : graph_(graph), function_(function) {}

  void Run(const STATEMENT_BLOCK* first);
  /// The same for one statement that stands alone.
  void RunOne(STATEMENT_BLOCK* statement) { Visit(statement); }
  const StateFacts& Of(const STATEMENT_BLOCK* statement) { return facts_[statement]; }

 private:
  bool Visit(const STATEMENT_BLOCK* statement);
  bool VisitAll(const STATEMENT_BLOCK* first);
  void MarkSetters(const STATEMENT_BLOCK* statement);
  void Decide(const STATEMENT_BLOCK* statement);

  CallGraph& graph_;
  const FUNCPROTO_REC* function_;
  std::unordered_map<const STATEMENT_BLOCK*, StateFacts> facts_;
};

}  // namespace vorc
