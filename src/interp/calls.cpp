#include <cstring>
#include <new>

#include "base/format.h"
#include "base/host_stack.h"
#include "base/trace.h"
#include "base/truncate.h"
#include "interp/frame.h"
#include "interp/interpreter.h"
#include "program/overloads.h"
#include "program/statement_tree.h"

namespace vorc {

namespace {

constexpr int kSavedWords = 2;
constexpr int kSavedMemberWords = 4;
constexpr int kMostArguments = 30'000;
constexpr int kBuiltinArgumentsAtHand = 16;

}  // namespace

BuiltinValue Interpreter::ToBuiltinValue(const Entry& entry) {
  BuiltinValue value;
  if (entry.token == Tok::STRING) {
    value.kind = BuiltinValue::Kind::kText;
    value.text = entry.text == nullptr ? "" : entry.text;
  } else if (entry.token == Tok::NUMBER) {
    value.kind = entry.IsDouble() ? BuiltinValue::Kind::kDouble : BuiltinValue::Kind::kInteger;
    value.integer = entry.value;
    value.wide = entry.width >= 8 && entry.number_type != Tok::int_;
  }
  return value;
}

void Interpreter::FromBuiltinValue(const BuiltinValue& value, Entry* entry) {
  switch (value.kind) {
    case BuiltinValue::Kind::kText: entry->SetText(value.text); break;
    case BuiltinValue::Kind::kDouble: entry->SetDouble(value.real); break;
    default:
      entry->SetInt(static_cast<int32_t>(value.integer));
      if (value.wide) {
        entry->value = value.integer;
        entry->width = 8;
        entry->number_type = Tok::INT64;
      }
  }
}

// Arguments lie on the operand stack, so every activation has its own.
bool Interpreter::EvaluateArguments(const Op& op, Mode mode, Entry* arguments) {
  for (int i = 0; i < op.argument_count; ++i) {
    operands_ = arguments + i;
    if (operands_ >= operands_end_ || i >= kMostArguments) return Fail(op.node, "Too many arguments.");
    Entry value;
    if (!Evaluate(op.list[i], mode, &value)) return false;
    arguments[i] = value;
  }
  operands_ = arguments + op.argument_count;
  return true;
}

FUNCPROTO_REC* Interpreter::ChooseOverload(FUNCPROTO_REC* function, int count, const EXPR_NODE* node) {
  FUNCPROTO_REC* chosen = vorc::ChooseOverload(function, count);
  if (chosen == nullptr)
    Fail(node, Format("No overloaded function '%s' takes %d parameters.", function->name->c_str(), count));
  return chosen;
}

void Interpreter::WarnCount(const FUNCPROTO_REC* function, int count, const EXPR_NODE* node) {
  if (!ArgumentCountFits(function, count)) slot_.WarningAt(node->Line, "Argument count mismatch");
}

// A function that was known by name when the call was read.
bool Interpreter::UserCall(const Op& op, Entry* result) {
  const EXPR_NODE* node = op.node;
  FUNCPROTO_REC* function = CurrentFunction(slot_, op.function);
  Entry* arguments = result + 1;
  if (!EvaluateArguments(op, Mode::kArgument, arguments)) return false;
  function = ChooseOverload(function, op.argument_count, node);
  if (function == nullptr) return false;
  if (function->ProcBody == nullptr) {
    if (op.builtin == nullptr) return Fail(node, Format("Undefined function '%s'.", function->name->c_str()));
    std::vector<BuiltinValue> values;
    for (int i = 0; i < op.argument_count; ++i) values.push_back(ToBuiltinValue(arguments[i]));
    if (!RunBuiltin(op, values.data(), values.size(), result)) return false;
    // A prototype hides the text that the built-in would give.
    if (result->token == Tok::STRING) result->SetInt(0);
    return true;
  }
  if (function->OwnerClass != nullptr) {
    const STRUCT_REC* home = node->OwnerFunction == nullptr ? nullptr : node->OwnerFunction->OwnerClass;
    const MemberResult member =
        home == nullptr ? MemberResult() : FindStructMember(slot_, home, function->name);
    const bool has_object = member.Function != nullptr && frame_.this_base != nullptr;
    return CallMember(function, has_object ? frame_.this_base + member.BaseOffset : nullptr, node,
                      op.argument_count, result);
  }
  WarnCount(function, op.argument_count, node);
  return CallFunction(function, arguments, op.argument_count,
                      function->ParameterCount > 0 || function->HasVarArgs, node, result);
}

// A name that was no function when the call was read: a function pointer, a function that has come
// since, or a built-in.
bool Interpreter::NameCall(const Op& op, Mode mode, Entry* result) {
  const EXPR_NODE* node = op.node;
  if (op.symbol != nullptr) {
    *result = Entry();
    result->token = Tok::IDENTIFIER;
    PlaceVariable(op, result);
    if (op.index_count > 0 && !ApplyIndices(op.indices, op.index_count, node, result)) return false;
    return ValueCall(op, result);
  }
  FUNCPROTO_REC* function = FindFunction(slot_, &slot_.Globals, node->name);
  if (function != nullptr) {
    if (op.argument_count > 0) {
      return Fail(
          node,
          Format("'%s' is called with arguments before it is defined. MORV has no forward declarations: "
                 "move the definition of '%s' above this call.",
                 node->Literal, node->Literal));
    }
    function = ChooseOverload(function, 0, node);
    if (function == nullptr) return false;
    if (function->ProcBody == nullptr) return Fail(node, Format("Undefined function '%s'.", node->Literal));
    WarnCount(function, 0, node);
    return CallFunction(function, nullptr, 0, true, node, result);
  }
  if (node->name->Text == "_asm") return AsmCall(op, result);
  if (op.builtin == nullptr) return Fail(node, Format("Undefined function '%s'.", node->Literal));
  (void)mode;
  return CallBuiltin(op, result);
}

bool Interpreter::AsmCall(const Op& op, Entry* result) {
  if (op.argument_count != 1) return Fail(op.node, "Incorrect number of arguments too function _asm");
  Entry argument;
  operands_ = result + 1;
  if (!Evaluate(op.list[0], Mode::kNormal, &argument)) return false;
  if (argument.token != Tok::STRING)
    return Fail(op.node, "Argument of function _asm must be a character string");
  result->SetInt(0);
  return true;
}

// A call through what `target` holds.
bool Interpreter::ValueCall(const Op& op, Entry* target) {
  Materialize(target);
  auto* function = reinterpret_cast<FUNCPROTO_REC*>(target->value);
  if (!slot_.FuncPrototypes.Holds(function)) {
    const char* name = op.node->Literal != nullptr ? op.node->Literal : "?";
    return Fail(op.node, Format("Undefined function '%s'.", name));
  }
  function = CurrentFunction(slot_, function);
  Entry* arguments = target + 1;
  if (!EvaluateArguments(op, Mode::kArgument, arguments)) return false;
  function = ChooseOverload(function, op.argument_count, op.node);
  if (function == nullptr) return false;
  if (function->ProcBody == nullptr)
    return Fail(op.node, Format("Undefined function '%s'.", function->name->c_str()));
  WarnCount(function, op.argument_count, op.node);
  return CallFunction(function, arguments, op.argument_count, true, op.node, target);
}

bool Interpreter::CallBuiltin(const Op& op, Entry* result) {
  BuiltinValue at_hand[kBuiltinArgumentsAtHand];
  std::vector<BuiltinValue> many;
  if (op.argument_count > kBuiltinArgumentsAtHand) {
    // Operands keep their texts alive; a vector would hide them.
    Entry* arguments = result + 1;
    if (!EvaluateArguments(op, Mode::kNormal, arguments)) return false;
    for (int i = 0; i < op.argument_count; ++i) many.push_back(ToBuiltinValue(arguments[i]));
    return RunBuiltin(op, many.data(), many.size(), result);
  }
  for (int i = 0; i < op.argument_count; ++i) {
    Entry value;
    operands_ = result + 1;
    if (!Evaluate(op.list[i], Mode::kNormal, &value)) return false;
    at_hand[i] = ToBuiltinValue(value);
  }
  return RunBuiltin(op, at_hand, static_cast<size_t>(op.argument_count), result);
}

bool Interpreter::FailForMemory(const Op& op) {
  return Fail(op.node, "ExecSystemFunction: Not enough system memory");
}

bool Interpreter::RunBuiltin(const Op& op, const BuiltinValue* arguments, size_t count, Entry* result) {
  const SysFunc& row = *op.builtin;
  if (!row.any_count && count != static_cast<size_t>(row.argument_count)) {
    return Fail(op.node, Format("Wrong number of arguments passed in function '%s'.", row.name));
  }
  if (row.handler == nullptr)
    return Fail(op.node, Format("Built-in function '%s' is not available.", row.name));
  BuiltinCall call(runtime_, {arguments, count});
  if (!RunHandler(op, call)) return false;
  FromBuiltinValue(call.result(), result);
  return true;
}

// --- frames

bool Interpreter::CallFunction(FUNCPROTO_REC* function, const Entry* arguments, int count, bool own_frame,
                               const EXPR_NODE* node, Entry* result) {
  PROC_TABLE* body = function->ProcBody;
  if (body->ArgSize < 0) PlaceParameters(slot_, function);
  const Frame caller = frame_;
  frame_.stack_pointer -= kSavedWords + (own_frame ? body->ArgSize : count);
  bool good = frame_.stack_pointer >= 0;
  if (good && own_frame) {
    BindArguments(function, arguments, count, frame_.stack_pointer);
    frame_.base = frame_.stack_pointer;
    // Reached without an object, as through a pointer, a member function has none.
    if (function->OwnerClass != nullptr) frame_.this_base = nullptr;
    VORC_TRACE("DIAG: new_frame_base=%d arg_units=%d remember_exec_stack_ptr=%d\n",
               static_cast<int>(frame_.base), body->ArgSize, static_cast<int>(caller.stack_pointer));
  }
  good = good && RunBody(function);
  return Leave(function, caller, good, node, result);
}

// Hands the result over and goes back to the caller's frame.
bool Interpreter::Leave(const FUNCPROTO_REC* function, const Frame& caller, bool good, const EXPR_NODE* node,
                        Entry* result) {
  if (!good && !failed()) {
    Fail(node, Format("The script's stack of %d words is used up in function '%s'.",
                      static_cast<int>(ScriptMemory::kStackWords), function->name->c_str()));
  }
  CopyReturnedData(function, result);
  frame_ = caller;
  return !failed();
}

// Walks a function's statements in the frame that the caller prepared. False, without a report, if
// its locals don't fit into the stack.
bool Interpreter::RunBody(FUNCPROTO_REC* function) {
  PROC_TABLE* body = function->ProcBody;
  if (body->LocalSize < 0) PlaceLocals(slot_, function);
  frame_.stack_pointer -= int64_t{body->LocalSize} + 1;
  if (frame_.stack_pointer < 0 || HostStackLow()) return false;
  if (!walks_) {
    FunctionCode* code = CodeOf(function);
    if (!code->compiled) Compile(code);
    if (!code->walked) {
      RunCode(*code);
      return true;
    }
  }
  WalkBody(function);
  return true;
}

void Interpreter::WalkBody(const FUNCPROTO_REC* function) {
  for (STATEMENT_BLOCK* statement = function->ProcBody->Statements.First; statement != nullptr;
       statement = statement->Next) {
    if (!ExecStatement(statement)) return;
    if (ExecState(statement) == kExit || ExecState(statement) == kReturn) return;
  }
}

void Interpreter::BindArguments(FUNCPROTO_REC* function, const Entry* arguments, int count, int64_t base) {
  int next = 0;
  for (SYM_REC* parameter : function->ParametersHeader.Symbols) {
    if (next >= count) break;
    BindArgument(parameter, arguments[next++], Word(base + parameter->FrameOffset));
  }
}

void Interpreter::BindArgument(SYM_REC* parameter, const Entry& argument, char* word) {
  const bool pointer =
      parameter->TotalDepth > 0 || parameter->Shape.DimensionCount > 0 || parameter->IsFunctionPointer;
  VORC_TRACE("DIAG: bind arg '%s' offset=%d slot=%d width=%d (ReturnedExpr->token=%d)\n",
             parameter->name->c_str(), parameter->FrameOffset, static_cast<int>((word - memory_.stack()) / 8),
             argument.width, static_cast<int>(argument.token));
  const bool no_value =
      argument.token != Tok::NUMBER && argument.token != Tok::STRING && !argument.IsVariable();
  if ((parameter->Struct != nullptr && !pointer) || parameter->ValueType == Tok::void_ || no_value) {
    if (!pointer || argument.token != Tok::this_) return;
  }
  std::memset(word, 0, ScriptMemory::kWordSize);
  Entry target;
  target.token = Tok::IDENTIFIER;
  target.symbol = parameter;
  target.address = word;
  target.type = parameter->ValueType;
  target.kind = 2;
  if (argument.token == Tok::STRING && argument.text != nullptr) {
    if (!pointer && parameter->BasicType != Tok::dollar) return;
    std::memcpy(word, &argument.text, sizeof argument.text);
    if (!pointer) StateOf(parameter).holds = Tok::STRING;
    return;
  }
  if (pointer) {
    const bool address = argument.kind == 1 && argument.address != nullptr;
    const int64_t value = address ? reinterpret_cast<int64_t>(argument.address) : argument.value;
    std::memcpy(word, &value, sizeof value);
    return;
  }
  StoreNumber(target, argument);
}

void Interpreter::CopyReturnedData(const FUNCPROTO_REC* function, Entry* result) {
  *result = Entry();
  if (function->ReturnKind != FUNC_RETTYPE_BASICTYPE) return;
  switch (function->ReturnType.BasicType) {
    case Tok::int_: result->SetInt(frame_.return_reg); break;
    case Tok::float_:
    case Tok::double_: result->SetDouble(return_reg_double_); break;
    case Tok::char_:
      if (return_reg_is_string_) result->SetText(RetainReturnedString(return_reg_string_));
      break;
    case Tok::dollar:
      if (return_reg_is_string_)
        result->SetText(RetainReturnedString(return_reg_string_));
      else if (return_reg_is_double_)
        result->SetDouble(return_reg_double_);
      else
        result->SetInt(frame_.return_reg);
      break;
    default: break;
  }
}

bool Interpreter::ExecReturn(STATEMENT_BLOCK* statement) {
  for (STATEMENT_BLOCK* at = statement; at != nullptr; at = Enclosing(at)) ExecState(at) = kReturn;
  return SetReturnValue(statement);
}

bool Interpreter::SetReturnValue(const STATEMENT_BLOCK* statement) {
  Entry value;
  if (!Evaluate(decoder_.Decode(statement->Expression), Mode::kNormal, &value)) return false;
  if (value.IsVariable()) Materialize(&value);
  if (value.token == Tok::STRING && value.text != nullptr) {
    return_reg_string_ = value.text;
    return_reg_is_string_ = true;
    return_reg_is_double_ = false;
    return true;
  }
  return_reg_is_string_ = return_reg_is_double_ = false;
  if (value.token != Tok::NUMBER && !value.IsVariable()) return true;
  const FUNCPROTO_REC* function = statement->OwnerFunction;
  const Tok declared = function == nullptr ? Tok::dollar : function->ReturnType.BasicType;
  const bool real_result = declared == Tok::float_ || declared == Tok::double_;
  const bool keeps_type = declared == Tok::void_ || declared == Tok::dollar ||
                          (declared == Tok::char_ && function->ReturnType.PointerDepth > 0);
  if (real_result && !value.IsDouble()) value.SetDouble(static_cast<double>(value.Low()));
  if (value.IsDouble() && !real_result && !keeps_type) {
    value.SetInt(static_cast<int32_t>(TruncatedToInteger(value.real)));
  }
  if (value.IsDouble()) {
    return_reg_double_ =
        declared == Tok::float_ ? static_cast<double>(static_cast<float>(value.real)) : value.real;
    return_reg_is_double_ = true;
  } else {
    frame_.return_reg = value.Low();
    VORC_TRACE("DIAG: InterpretExecReturnStatement set return_reg=%d\n", frame_.return_reg);
  }
  return true;
}

// --- member calls

bool Interpreter::MemberCall(const Op& op, Entry* object) {
  const EXPR_NODE* node = op.node;
  const char* name = node->name->c_str();
  MemberResult member;
  if (!FindMember(node, *object, &member)) return false;
  if (object->token != Tok::this_) {
    const bool arrow = op.token == Tok::POINTER;
    if (object->kind == 2 && arrow) return Fail(node, "Use of '.' instead of '->'");
    if (object->kind == 3 && !arrow) return Fail(node, "Use of '->' instead of '.'");
    if (object->kind == 1) return Fail(node, "Invalid use of '->' in the statement");
  }
  char* base = nullptr;
  if (!ObjectAddress(op, object, name, &base)) return false;
  if (member.Function == nullptr) {
    if (!member.Symbol->IsFunctionPointer) return Fail(node, Format("Member '%s' is not a function", name));
    object->token = Tok::IDENTIFIER;
    object->symbol = member.Symbol;
    object->address = base + MemberDataOffset(member);
    object->kind = 3;
    object->depth = 1;
    object->dimensions = 0;
    return ValueCall(op, object);
  }
  FUNCPROTO_REC* function = member.Function;
  while (function->NextOverload != nullptr) function = function->NextOverload;
  if (!EvaluateArguments(op, Mode::kArgument, object + 1)) return false;
  return CallMember(function, base + member.BaseOffset, node, op.argument_count, object);
}

// A member function runs on its object without receiving its arguments: its parameters read 0.
bool Interpreter::CallMember(FUNCPROTO_REC* function, char* object, const EXPR_NODE* node, int argument_count,
                             Entry* result) {
  PROC_TABLE* body = function->ProcBody;
  if (body == nullptr) return Fail(node, Format("Undefined function '%s'.", function->name->c_str()));
  WarnCount(function, argument_count, node);
  if (body->ArgSize < 0) PlaceParameters(slot_, function);
  const Frame caller = frame_;
  frame_.stack_pointer -= kSavedMemberWords + body->ArgSize;
  bool good = frame_.stack_pointer >= 0;
  if (good) {
    frame_.base = frame_.stack_pointer;
    frame_.this_base = object;
    for (const SYM_REC* parameter : function->ParametersHeader.Symbols) {
      if (parameter->ValueType != Tok::void_ || parameter->TotalDepth > 0) {
        std::memset(Word(frame_.base + parameter->FrameOffset), 0, ScriptMemory::kWordSize);
      }
    }
  }
  good = good && RunBody(function);
  return Leave(function, caller, good, node, result);
}

}  // namespace vorc
