#include "base/format.h"
#include "codegen/frame.h"
#include "codegen/walk.h"
#include "program/members.h"
#include "program/overloads.h"
#include "program/symtab.h"

namespace vorc {

namespace {

constexpr std::string_view kReturnRegister = "GPR26";
constexpr size_t kShownText = 15;  // of a text in a comment
constexpr int kMemberArgumentWidth = 8;

struct Argument {
  const EXPR_NODE* head;
  const SYM_REC* parameter;  ///< null in the tail of a variadic call
};

/// How many arguments a call has, and how many of them, pushed first, are beyond the parameters.
struct ArgumentCounts {
  int32_t all = 0;
  int32_t variadic = 0;
};

// Arguments in the order in which they are pushed: those that have no parameter go first.
std::vector<Argument> VorcBuildArgSlotWidthTable(const FUNCPROTO_REC* function, const EXPR_NODE* arguments) {
  std::vector<Argument> named;
  std::vector<Argument> variadic;
  const SYM_REC* parameter = function == nullptr ? nullptr : function->ParametersHeader.Symbols.First;
  if (parameter != nullptr && IsVoidParameter(parameter)) parameter = nullptr;
  for (const EXPR_NODE* at = arguments; at != nullptr; at = at->NextArgument) {
    (parameter != nullptr || function == nullptr ? named : variadic).push_back({at, parameter});
    if (parameter != nullptr) parameter = parameter->Next;
  }
  variadic.insert(variadic.end(), named.begin(), named.end());
  return variadic;
}

void PushCallersRegisters(Walk& walk) {
  CapturePushRegister(walk, kReturnRegister);
  CapturePushRegister(walk, "FRAMEPTR");
  CapturePushRegister(walk, "LR");
}

// What a push takes: a variable, or the constant or address in a temporary.
TacOperand PushedValue(Walk& walk, const Operand& value) {
  if (value.type.IsArray() && value.kind == Operand::Kind::kSymbol)
    return TempOperand(AddressOf(walk, value, AddressUse::kArrayArgument));
  const TacOperand operand = ValueOf(walk, value);
  if (operand.IsVariable()) return operand;
  const int32_t temp = walk.procedure.NewTemp();
  CaptureLoadImmediate(walk, temp, operand.text, "loadimm8");
  return TempOperand(temp);
}

int32_t PushArgument(Walk& walk, const Argument& argument, std::string_view function_name) {
  Procedure& procedure = walk.procedure;
  const std::string comment = " //for argument of function '" + std::string(function_name) + "' ";
  Operand value = EvalExpression(walk, argument.head);
  int32_t width = 0;
  ValueType type = value.type;
  if (argument.parameter != nullptr) {
    width = ParameterSlotWidth(walk.slot, argument.parameter);
    type = ValueType::OfSymbol(*argument.parameter);
    if (!type.IsArray() && !type.IsStruct()) value = Converted(walk, value, type);
  } else {
    const bool whole = value.type.IsArray() || value.type.IsStruct() || value.type.IsPointer();
    width = VorcPromoteArgWidth(walk.slot, whole ? walk.slot.Target.AddressBytes()
                                                 : static_cast<int32_t>(value.type.Size(walk.slot)));
  }
  if (value.kind == Operand::Kind::kText) {
    const auto label = procedure.context.strings.AddUnnamedStringToDataSection(value.text, walk.line);
    const int32_t temp = procedure.NewTemp();
    CaptureAddressOfLabel(
        walk, temp, label,
        Format(" //for argument of function '%s' loading address of string \"%s\"..",
               std::string(function_name).c_str(), std::string(value.text.substr(0, kShownText)).c_str()));
    CapturePush(walk, TempOperand(temp), width, comment, type);
    return width;
  }
  CapturePush(walk, PushedValue(walk, value), width, comment, type);
  return width;
}

// A member function that names another one calls it on its own object.
int32_t PushOwnObject(Walk& walk, const FUNCPROTO_REC* function, ArgumentCounts* counts) {
  if (function == nullptr || function->OwnerClass == nullptr) return 0;
  const STRUCT_REC* home = walk.procedure.proto->OwnerClass;
  const MemberResult member =
      home == nullptr ? MemberResult() : FindStructMember(walk.slot, home, function->name);
  walk.is_inexact |= member.Function == nullptr || function->HasVarArgs;
  const int32_t object = walk.procedure.NewTemp();
  CaptureAddNumber(walk, object, ThisPointer(walk), member.BaseOffset);
  ValueType pointer = ValueType::Basic(Tok::void_).Pointer();
  CapturePush(walk, TempOperand(object), kMemberArgumentWidth, "this", pointer);
  ++counts->all;
  return kMemberArgumentWidth;
}

// Behind the call: the arguments go, and the caller's registers come back.
void CleanUp(Walk& walk, int32_t pushed_bytes) {
  CaptureAssembly(walk, ASMOP_PLAIN_TEXT,
                  Compose(walk.procedure, walk.mnemonics.alu_add, " STACKPTR,STACKPTR,", pushed_bytes));
  CapturePopRegister(walk, "LR");
  CapturePopRegister(walk, "FRAMEPTR");
}

void StartNewBasicBlockAfterCall(Walk& walk) {
  BasicBlock* before = walk.procedure.current_bb;
  BasicBlock* block = StartBlock(walk, "after call - a call ends a basic block");
  ThreeAddress_AddBasicBlockPredecesor(before, block);
}

Operand TakeResult(Walk& walk, const ValueType& type) {
  const bool is_void = type.basic == Tok::void_ && type.depth == 0;
  if (is_void) return {};
  const int32_t temp = walk.procedure.NewTemp();
  CaptureMoveRegToVar(walk, temp, "return_reg");
  walk.procedure.last->passed = PassedOf(walk.slot, type);
  walk.procedure.last->is_wide = IsWideNumber(walk, type);
  return TempValue(temp, type);
}

void MarkCall(Instruction* call, ArgumentCounts counts) {
  call->is_call = true;
  call->arguments = counts.all;
  call->variadic = counts.variadic;
}

void GenCallInstruction(Walk& walk, std::string_view name, ArgumentCounts counts, std::string_view comment) {
  Instruction& call =
      CaptureAssembly(walk, ASMOP_CALL, Compose(walk.procedure, " call  ", name, " "), comment);
  call.label = walk.procedure.Keep(name);
  MarkCall(&call, counts);
}

void JumpThroughPointer(Walk& walk, int32_t pointer, ArgumentCounts counts) {
  Procedure& procedure = walk.procedure;
  const std::string label = Format("indirect_call_return_%06d", ++procedure.context.indirect_calls);
  CaptureAssembly(walk, ASMOP_PLAIN_TEXT, Compose(procedure, "loadaddr LR, ", label));
  CaptureMoveVarToReg(walk, "PC", TempOperand(pointer), "move8");
  MarkCall(procedure.current_bb->last, counts);
  StartNewBasicBlockAfterCall(walk);
  CaptureAssembly(walk, ASMOP_PLAIN_TEXT, Compose(procedure, label, ":"));
}

Operand AsmCall(Walk& walk, const EXPR_NODE* arguments) {
  if (arguments == nullptr || arguments->NextArgument != nullptr) {
    WalkError(walk, 0, "Incorrect number of arguments too function _asm");
  } else if (arguments->Token != Tok::STRING || arguments->Next != nullptr) {
    WalkError(walk, 0, "Argument of function _asm must be a character string");
  } else {
    Procedure& procedure = walk.procedure;
    CaptureAssembly(walk, ASMOP_PLAIN_TEXT, Compose(procedure, " ", arguments->Text())).is_source_text = true;
  }
  return {};
}

FUNCPROTO_REC* FunctionOfCall(Walk& walk, const EXPR_NODE* node, const EXPR_NODE* arguments) {
  FUNCPROTO_REC* function = node->Function;
  if (function == nullptr) function = FindFunction(walk.slot, &walk.slot.Globals, node->name);
  if (function == nullptr) return nullptr;
  function = CurrentFunction(walk.slot, function);
  int count = 0;
  for (const EXPR_NODE* at = arguments; at != nullptr; at = at->NextArgument) ++count;
  FUNCPROTO_REC* chosen = ChooseOverload(function, count);
  if (chosen == nullptr) {
    WalkError(walk, 0,
              Format("No overloaded function '%s' takes %d parameters.", node->name->c_str(), count));
    return function;
  }
  if (!ArgumentCountFits(chosen, count)) walk.slot.WarningAt(walk.line, "Argument count mismatch");
  return chosen;
}

}  // namespace

Operand ExecFuncPointer(Walk& walk, const EXPR_NODE* node, const EXPR_NODE* arguments,
                        const Operand* target) {
  if (target == nullptr && node->name != nullptr && node->name->Text == "_asm")
    return AsmCall(walk, arguments);
  const bool by_name = target == nullptr || target->kind == Operand::Kind::kFunction;
  FUNCPROTO_REC* function = nullptr;
  if (target == nullptr)
    function = FunctionOfCall(walk, node, arguments);
  else if (by_name)
    function = CurrentFunction(walk.slot, target->function);
  // What scripts have built in is no unknown function, though its code must come from elsewhere.
  if (by_name && function == nullptr && !walk.slot.Services->IsBuiltin(node->name))
    walk.slot.WarningAt(walk.line, Format("Undefined function '%s'.", node->name->c_str()));
  const std::string name(
      by_name ? (function == nullptr ? node->name->Text : AsmNameOf(walk.procedure.context, function))
      : target->symbol == nullptr ? ""
                                  : target->symbol->name->Text);
  const FUNCPROTO_REC* signature = by_name ? function : target->type.function;
  PushCallersRegisters(walk);
  int32_t pushed_bytes = 0;
  ArgumentCounts counts;
  if (walk.procedure.context.hook != nullptr && by_name)
    pushed_bytes = PushOwnObject(walk, function, &counts);
  for (const Argument& argument : VorcBuildArgSlotWidthTable(signature, arguments)) {
    pushed_bytes += PushArgument(walk, argument, name);
    walk.procedure.last->argument = counts.all++;
    if (signature != nullptr && argument.parameter == nullptr) ++counts.variadic;
  }
  if (by_name) {
    // The object stands in front of arguments that would have to come last.
    walk.is_inexact |= counts.variadic > 0 && function->OwnerClass != nullptr;
    GenCallInstruction(walk, name, counts,
                       function == nullptr
                           ? Format(" //calling an external function '%s' that has no protype or "
                                    "function definition",
                                    name.c_str())
                           : std::string());
    StartNewBasicBlockAfterCall(walk);
  } else {
    JumpThroughPointer(walk, ValueInTemp(walk, *target), counts);
  }
  CleanUp(walk, pushed_bytes);
  const ValueType type = signature == nullptr ? ValueType::Basic(Tok::int_) : [&] {
    ValueType result = ValueType::OfFunction(*signature);
    result.function = nullptr;
    return result;
  }();
  if (type.IsStruct())
    WalkError(
        walk, 0,
        Format("Function '%s' gives a whole struct back, which compiled code can't do: hand over a pointer.",
               name.c_str()));
  const Operand result = TakeResult(walk, type);
  CapturePopRegister(walk, kReturnRegister);
  return result;
}

Operand ExecMemberFunc(Walk& walk, const Operand& object, const EXPR_NODE* node) {
  const char* name = node->name->c_str();
  if (object.type.record == nullptr) {
    WalkError(walk, 0, Format("Cannot resolve the object of member '%s'.", name));
    return NumberValue(0);
  }
  const MemberResult member = FindMember(walk, *object.type.record, node->name);
  if (!member) return NumberValue(0);
  const bool pointer_to_it = object.type.depth > 0;
  if (pointer_to_it != (node->Next->Token == Tok::POINTER)) {
    WalkError(walk, 0, pointer_to_it ? "Use of '->' instead of '.'" : "Use of '.' instead of '->'");
    return NumberValue(0);
  }
  if (member.Function == nullptr) {
    if (!member.Symbol->IsFunctionPointer) {
      WalkError(walk, 0, Format("Member '%s' is not a function", name));
      return NumberValue(0);
    }
    const Operand pointer = VerifyMember(walk, object, node);
    return ExecFuncPointer(walk, node, node->Arguments, &pointer);
  }
  int32_t address =
      object.type.depth > 0 ? ValueInTemp(walk, object) : AddressOf(walk, object, AddressUse::kObject);
  if (member.BaseOffset != 0) {
    const int32_t base = walk.procedure.NewTemp();
    CaptureAddNumber(walk, base, address, member.BaseOffset);
    address = base;
  }
  const ValueType pointer = object.type.depth > 0 ? object.type : object.type.Pointer();
  CapturePush(walk, TempOperand(address), kMemberArgumentWidth, "this", pointer);
  ArgumentCounts counts{1, 0};
  for (const EXPR_NODE* at = node->Arguments; at != nullptr; at = at->NextArgument) {
    const Operand value = EvalExpression(walk, at);
    CapturePush(walk, PushedValue(walk, value), kMemberArgumentWidth, name, value.type);
    walk.procedure.last->argument = counts.all++;
  }
  FUNCPROTO_REC* function = CurrentFunction(walk.slot, member.Function);
  GenCallInstruction(walk, AsmNameOf(walk.procedure.context, function), counts, {});
  StartNewBasicBlockAfterCall(walk);
  CleanUp(walk, counts.all * kMemberArgumentWidth);
  ValueType type = ValueType::OfFunction(*function);
  type.function = nullptr;
  return TakeResult(walk, type);
}

void CallConstructors(Walk& walk, const SYMBOLS_HEADER& header, bool destructors, std::string_view comment) {
  for (const SYM_REC* symbol : header.Symbols) {
    const bool object =
        symbol->Struct != nullptr && symbol->TotalDepth == 0 && symbol->Shape.DimensionCount == 0;
    if (!object || symbol->IsParameter || (symbol->StorageType & EXTERN_VAR) != 0) continue;
    FUNCPROTO_REC* function = destructors ? symbol->Struct->Destructor : symbol->Struct->Constructor;
    if (function == nullptr || CurrentFunction(walk.slot, function)->ProcBody == nullptr) continue;
    function = CurrentFunction(walk.slot, function);
    Operand place;
    place.kind = Operand::Kind::kSymbol;
    place.symbol = symbol;
    place.type = ValueType::OfSymbol(*symbol);
    CapturePush(walk, TempOperand(AddressOf(walk, place, AddressUse::kObject)), walk.mnemonics.cpu_bytes,
                comment, place.type.Pointer());
    GenCallInstruction(walk, AsmNameOf(walk.procedure.context, function), {1, 0}, comment);
    StartNewBasicBlockAfterCall(walk);
    CleanUp(walk, walk.mnemonics.cpu_bytes);
  }
}

}  // namespace vorc
