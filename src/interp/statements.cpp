#include "base/format.h"
#include "base/trace.h"
#include "interp/frame.h"
#include "interp/interpreter.h"
#include "interp/vm_compiler.h"
#include "program/statement_tree.h"

namespace vorc {

namespace {

constexpr int32_t kReturnRegister = 60;  // what a function without `return` leaves to its first caller

}  // namespace

void Interpreter::SetBreakContinueExecutionState(STATEMENT_BLOCK* target, STATEMENT_BLOCK* statement,
                                                 uint8_t state) {
  for (STATEMENT_BLOCK* at = statement; at != nullptr && at != target; at = Enclosing(at))
    ExecState(at) = state;
  ExecState(target) = state;
}

bool Interpreter::InterpretScript() {
  VORC_TRACE("DIAG: InterpretScript entry\n");
  host_stack_top_ = __builtin_frame_address(0);
  frame_.return_reg = kReturnRegister;
  FUNCPROTO_REC* entry = FindProgramEntryLabel(slot_);
  if (entry == nullptr) {
    slot_.ErrorAt({slot_.Place.File, 0}, 0, "File has no 'main' ");
    return false;
  }
  if (entry->ProcBody == nullptr) return true;
  frame_.base = frame_.stack_pointer;
  PlaceParameters(slot_, entry);
  const int64_t locals = PlaceLocals(slot_, entry);
  if (locals + 1 > frame_.stack_pointer) {
    slot_.ErrorAt(entry->Line, 0,
                  Format("The script's stack of %d words is used up in function 'main'.",
                         static_cast<int>(ScriptMemory::kStackWords)));
    return false;
  }
  frame_.stack_pointer -= locals + 1;
  if (!walks_) {
    entry_code_.function = entry;
    Compile(&entry_code_);
    if (!entry_code_.walked) return RunCode(entry_code_) && !failed();
  }
  for (STATEMENT_BLOCK* statement = entry->ProcBody->Statements.First; statement != nullptr;
       statement = statement->Next) {
    ExecState(statement) = kNone;
    if (!ExecStatement(statement)) return false;
    if (ExecState(statement) == kExit || ExecState(statement) == kReturn) break;
  }
  return true;
}

// A statement of the file level runs as soon as it has been read, in a frame at the stack's top.
void Interpreter::RunStatement(STATEMENT_BLOCK* statement) {
  const int64_t top = static_cast<int64_t>(ScriptMemory::kStackWords) - 1;
  const int64_t locals = PlaceNewLocals(slot_, statement->OwnerFunction, &file_level_locals_);
  if (locals + 1 > top) {
    slot_.ErrorAt(statement->Line, 0,
                  Format("The script's stack of %d words is used up at file level.",
                         static_cast<int>(ScriptMemory::kStackWords)));
    return;
  }
  host_stack_top_ = __builtin_frame_address(0);
  frame_.base = top;
  frame_.stack_pointer = top - locals - 1;
  RunFileStatement(statement);
  frame_.stack_pointer = top;
}

// What runs just once is not worth compiling; a loop is.
void Interpreter::RunFileStatement(STATEMENT_BLOCK* statement) {
  const bool loops = statement->ChildStatements.First != nullptr || statement->Block != nullptr;
  if (loops && !walks_) {
    FunctionCode code;
    code.function = statement->OwnerFunction;
    VmCompiler(*this, code).CompileStatement(statement);
    if (!code.walked) {
      RunCode(code);
      return;
    }
  }
  ExecStatement(statement);
}

bool Interpreter::ExecStatement(STATEMENT_BLOCK* statement) {
  current_line_ = statement->Line;
  SweepIfDue();
  switch (statement->StatementType) {
    case STATEMENT_TYPE_PLAIN: return ExecPlain(statement);
    case STATEMENT_TYPE_RETURN: return ExecReturn(statement);
    case STATEMENT_TYPE_GOTO: return ExecGoto(statement);
    case STATEMENT_TYPE_IF: return ExecIf(statement);
    case STATEMENT_TYPE_NEWBLOCK: return ExecBlock(statement);
    case STATEMENT_TYPE_WHILE: return ExecWhile(statement);
    case STATEMENT_TYPE_DO: return ExecDo(statement);
    case STATEMENT_TYPE_FOR: return ExecFor(statement);
    case STATEMENT_TYPE_SWITCH: return ExecSwitch(statement);
    case STATEMENT_TYPE_BREAK: return ExecBreak(statement);
    case STATEMENT_TYPE_CONTINUE: return ExecContinue(statement);
    default: return true;
  }
}

bool Interpreter::ExecPlain(STATEMENT_BLOCK* statement) {
  if (statement->Expression == nullptr) return statement->Symbol == nullptr || FillLocal(statement);
  if (statement->IsDelete) return true;
  Entry result;
  return EvaluateObject(decoder_.Decode(statement->Expression), Mode::kNormal, &result) && !failed();
}

// All conditions are tested by the low 32 bits of what they give, whatever its type.
bool Interpreter::EvaluateCondition(STATEMENT_BLOCK* statement, bool* holds) {
  SweepIfDue();
  int32_t low = 0;
  if (!EvaluateLow(decoder_.Decode(statement->Expression), Mode::kNormal, &low)) return false;
  *holds = low != 0;
  return !failed();
}

bool Interpreter::ExecIf(STATEMENT_BLOCK* statement) {
  const IfParts parts = PartsOfIf(statement);
  if (parts.then_arm == nullptr) return true;
  ExecState(statement) = kNone;
  bool holds = false;
  if (!EvaluateCondition(statement, &holds)) return false;
  STATEMENT_BLOCK* arm = holds ? parts.then_arm : parts.else_arm;
  return arm == nullptr || ExecStatement(arm);
}

bool Interpreter::ExecWhile(STATEMENT_BLOCK* statement) {
  STATEMENT_BLOCK* body = BodyOfLoop(statement);
  while (true) {
    ExecState(statement) = kNone;
    bool holds = false;
    if (!EvaluateCondition(statement, &holds)) return false;
    if (!holds) return true;
    if (!ExecStatement(body)) return false;
    if (ExecState(statement) == kBreak) {
      ExecState(statement) = kNone;
      return true;
    }
    if (ExecState(statement) == kExit || ExecState(statement) == kReturn) return true;
  }
}

bool Interpreter::ExecDo(STATEMENT_BLOCK* statement) {
  STATEMENT_BLOCK* body = BodyOfLoop(statement);
  bool holds = true;
  while (holds) {
    ExecState(statement) = kNone;
    if (!ExecStatement(body)) return false;
    if (ExecState(statement) >= kBreak && ExecState(statement) <= kReturn) return true;
    if (!EvaluateCondition(statement, &holds)) return false;
  }
  return true;
}

// Runs every clause of a group; `any_true` tells whether one of them held.
bool Interpreter::ExecForClauses(const STATEMENT_BLOCK* first, bool* any_true) {
  SweepIfDue();
  for (const STATEMENT_BLOCK* clause = first; clause != nullptr; clause = clause->Next) {
    if (clause->Symbol != nullptr && clause->Expression == nullptr) {
      if (!FillLocal(clause)) return false;
      continue;
    }
    int32_t low = 0;
    if (!EvaluateLow(decoder_.Decode(clause->Expression), Mode::kNormal, &low)) return false;
    if (any_true != nullptr && low != 0) *any_true = true;
  }
  return !failed();
}

bool Interpreter::ExecFor(STATEMENT_BLOCK* statement) {
  const ForParts parts = PartsOfFor(statement);
  if (!ExecForClauses(parts.first, nullptr)) return false;
  while (parts.conditions != nullptr) {
    bool goes_on = false;
    if (!ExecForClauses(parts.conditions, &goes_on)) return false;
    if (!goes_on) return true;
    if (!ExecStatement(parts.body)) return false;
    // The body's state, not the loop's own: it is what an earlier run of this loop may have left.
    if (ExecState(parts.body) >= kBreak && ExecState(parts.body) <= kReturn) return true;
    if (!ExecForClauses(parts.steps, nullptr)) return false;
  }
  return true;
}

bool Interpreter::ExecSwitch(STATEMENT_BLOCK* statement) {
  int32_t value = 0;
  if (!EvaluateLow(decoder_.Decode(statement->Expression), Mode::kNormal, &value)) return false;
  ExecState(statement) = kNone;
  STATEMENT_BLOCK* label = nullptr;
  STATEMENT_BLOCK* fallback = nullptr;
  for (STATEMENT_BLOCK* at = statement->Block->Statements.First; at != nullptr && label == nullptr;
       at = at->Next) {
    if (at->StatementType == STATEMENT_TYPE_DEFAULT) fallback = at;
    if (at->StatementType == STATEMENT_TYPE_CASE && static_cast<int32_t>(at->CaseValue) == value) label = at;
  }
  if (label == nullptr) label = fallback;
  if (label == nullptr) return true;
  for (STATEMENT_BLOCK* at = label->Next; at != nullptr; at = at->Next) {
    if (!ExecStatement(at)) return false;
    if (ExecState(statement) == kBreak) {
      ExecState(statement) = kNone;
      return true;
    }
    if (ExecState(statement) != kNone) return true;
  }
  return true;
}

bool Interpreter::ExecBlock(STATEMENT_BLOCK* statement) {
  if (statement->Block == nullptr) return true;
  for (STATEMENT_BLOCK* at = statement->Block->Statements.First; at != nullptr; at = at->Next) {
    ExecState(at) = kNone;
    if (!ExecStatement(at)) return false;
    if (ExecState(at) != kNone) return true;
  }
  return true;
}

bool Interpreter::ExecBreak(STATEMENT_BLOCK* statement) {
  STATEMENT_BLOCK* target = FindLoopSwitchStatement(statement);
  if (target == nullptr) return false;
  SetBreakContinueExecutionState(target, statement, kBreak);
  return true;
}

bool Interpreter::ExecContinue(STATEMENT_BLOCK* statement) {
  STATEMENT_BLOCK* target = FindLoopStatement(statement);
  if (target == nullptr) return false;
  SetBreakContinueExecutionState(target, statement, kContinue);
  return true;
}

// A script's `goto` only has its label checked; control goes on with the next statement.
bool Interpreter::ExecGoto(STATEMENT_BLOCK* statement) {
  if (FindLabel(statement->OwnerFunction->ProcBody, statement->GotoLabel) != nullptr) return true;
  slot_.ErrorAt(statement->Line, 75,
                Format("goto: target label not found '%s'.", statement->GotoLabel->c_str()));
  return false;
}

}  // namespace vorc
