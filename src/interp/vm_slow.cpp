#include <bit>
#include <cstring>

#include "base/format.h"
#include "base/host_stack.h"
#include "interp/frame.h"
#include "interp/interpreter.h"
#include "interp/vm_compiler.h"

// What the register machine does out of line: compiling, checks that fail, the general road.

namespace vorc {

FunctionCode* Interpreter::CodeOf(FUNCPROTO_REC* function) {
  auto& code = codes_[function];
  if (code == nullptr) {
    code = std::make_unique<FunctionCode>();
    code->function = function;
  }
  return code.get();
}

void Interpreter::Compile(FunctionCode* code) {
  PROC_TABLE* body = code->function->ProcBody;
  if (body->ArgSize < 0) PlaceParameters(slot_, code->function);
  if (body->LocalSize < 0) PlaceLocals(slot_, code->function);
  code->local_bytes = (int64_t{body->LocalSize} + 1) * static_cast<int64_t>(ScriptMemory::kWordSize);
  VmCompiler(*this, *code).CompileBody(code == &entry_code_);
  if (std::getenv("VORC_DISASSEMBLE") != nullptr) std::fputs(Disassemble(*code).c_str(), stderr);
}

int32_t Interpreter::CaseOf(const SwitchTable& table, int32_t value) {
  const int64_t index = value - table.lowest;
  if (static_cast<uint64_t>(index) < table.dense.size()) return table.dense[static_cast<size_t>(index)];
  if (table.sparse.empty()) return table.otherwise;
  const auto found = table.sparse.find(value);
  return found == table.sparse.end() ? table.otherwise : found->second;
}

bool Interpreter::KeepTemps(const char* fp, int32_t count) {
  const auto size = static_cast<size_t>(count) * ScriptMemory::kWordSize;
  if (size > static_cast<size_t>(save_end_ - save_top_)) return false;
  std::memcpy(save_top_, fp - ScriptMemory::kShadowDistance - size, size);
  save_top_ += size;
  return true;
}

void Interpreter::BringTempsBack(char* fp, int32_t count) {
  const auto size = static_cast<size_t>(count) * ScriptMemory::kWordSize;
  save_top_ -= size;
  std::memcpy(fp - ScriptMemory::kShadowDistance - size, save_top_, size);
}

void Interpreter::ReportFullStack(const Site& site) {
  const char* name = site.callee == nullptr ? "?" : site.callee->function->name->c_str();
  Fail(site.op == nullptr ? nullptr : site.op->node,
       Format("The script's stack of %d words is used up in function '%s'.",
              static_cast<int>(ScriptMemory::kStackWords), name));
}

// An index outside of its array: a warning, and only an error where it leaves the script's memory.
bool Interpreter::ReportElement(const Site& site, int32_t index, char* address) {
  const EXPR_NODE* node = site.op->node;
  if (index >= site.length) slot_.WarningAt(node->Line, "Array index out of range!!");
  if (memory_.Reach(address, static_cast<size_t>(site.stride > 0 ? site.stride : 1))) return true;
  ReportPointer(site, address);
  return false;
}

void Interpreter::ReportPointer(const Site& site, const char* pointer) {
  Entry entry;
  entry.symbol = site.symbol;
  NullPointer(site.op->node, entry, pointer);
}

void Interpreter::ReportPointed(const Site& site, const char* pointer, int32_t index) {
  const bool told_as_null = pointer == nullptr && site.length >= 0;
  ReportPointer(site, told_as_null ? nullptr : Displaced(pointer, int64_t{index} * site.stride));
}

void Interpreter::StartGeneral(const Site& site) {
  current_line_ = site.statement->Line;
  SweepIfDue();
}

bool Interpreter::RunGeneral(const Site& site) {
  StartGeneral(site);
  Entry result;
  return EvaluateObject(site.code, Mode::kNormal, &result) && !failed();
}

bool Interpreter::RunGeneralLow(const Site& site, int32_t* low) {
  StartGeneral(site);
  return EvaluateLow(site.code, Mode::kNormal, low) && !failed();
}

bool Interpreter::RunGeneralReturn(const Site& site) {
  StartGeneral(site);
  return SetReturnValue(site.statement) && !failed();
}

// The result of a built-in as the machine keeps it: a text's address, a real number or an integer.
static void PlaceResult(BuiltinResult wanted, const BuiltinValue& value, char* place) {
  const bool text = value.kind == BuiltinValue::Kind::kText;
  int64_t bits = value.integer;
  if (wanted == BuiltinResult::kText || text) {
    if (wanted != BuiltinResult::kText || !text) bits = 0;
  } else if (value.kind != BuiltinValue::Kind::kDouble) {
    const auto low = static_cast<int32_t>(bits);
    if (!value.wide) bits = low;
    if (wanted == BuiltinResult::kDouble) bits = std::bit_cast<int64_t>(static_cast<double>(low));
  }
  std::memcpy(place, &bits, sizeof bits);
}

// Since the call was compiled, a function of the script has taken the name.
bool Interpreter::RunTakenName(const Site& site, char* result) {
  Entry* at = operands_;
  if (!NameCall(*site.op, Mode::kNormal, at)) return false;
  BuiltinValue value = ToBuiltinValue(*at);
  value.wide = true;
  value.integer = at->value;
  PlaceResult(site.op->builtin->result, value, result);
  return !failed();
}

// A call of a built-in whose arguments lie in the frame, but for those that only the general road gives.
bool Interpreter::RunBuiltinSite(const Site& site, char* fp, char* result) {
  const bool functions_added = static_cast<int64_t>(slot_.FuncPrototypes.count()) != site.length;
  if (functions_added && FindFunction(slot_, &slot_.Globals, site.op->node->name) != nullptr)
    return RunTakenName(site, result);
  SweepIfDue();
  for (const BuiltinArgument& argument : site.arguments) {
    const char* place = fp + argument.place;
    BuiltinValue& value = site.values[argument.position];
    if (argument.from == BuiltinArgument::From::kNumber) {
      std::memcpy(&value.integer, place, sizeof value.integer);
    } else if (argument.from == BuiltinArgument::From::kTextAt) {
      std::memcpy(&value.text, place, sizeof value.text);
      value.kind = value.text == nullptr ? BuiltinValue::Kind::kInteger : BuiltinValue::Kind::kText;
    } else if (!FetchArgument(argument, place, &value)) {
      return false;
    }
  }
  // An added function could run this call again, ahead of the first text's use.
  TextLoan* loan = functions_added ? nullptr : site.loan.get();
  BuiltinCall call(runtime_, {site.values.get(), static_cast<size_t>(site.op->argument_count)}, loan);
  if (!RunHandler(*site.op, call)) return false;
  PlaceResult(site.op->builtin->result, call.result(), result);
  return !failed();
}

bool Interpreter::FetchArgument(const BuiltinArgument& argument, const char* place, BuiltinValue* value) {
  if (argument.symbol != nullptr && TextOfVariable(argument.symbol, place, value)) return true;
  Entry entry;
  if (!Evaluate(argument.code, Mode::kNormal, &entry)) return false;
  *value = ToBuiltinValue(entry);
  return true;
}

// False if the variable holds none.
bool Interpreter::TextOfVariable(const SYM_REC* symbol, const char* place, BuiltinValue* value) const {
  const bool typeless = symbol->ValueType == Tok::dollar;
  if (typeless && StateOf(symbol).holds != Tok::STRING) return false;
  const char* text = nullptr;
  std::memcpy(&text, place, sizeof text);
  if (text == nullptr || !memory_.Contains(text, 1)) return false;
  const KnownText& known = StateOf(symbol).known;
  value->SetText(typeless && Holds(known, text) ? std::string_view(text, known.length) : text);
  return true;
}

void Interpreter::StoreText(SYM_REC* symbol, char* address, const char* text) {
  if (text != nullptr) return StoreDollarText(symbol, address, text);
  std::memset(address, 0, ScriptMemory::kWordSize);
  StateOf(symbol).holds = Tok::int_;
}

std::string Disassemble(const FunctionCode& code) {
  static constexpr const char* kNames[] = {
#define X(name, meaning) #name,
#include "interp/vm_instructions.def"
#undef X
  };
  std::string text = Format("%s:\n", code.function->name->c_str());
  for (size_t i = 0; i < code.insns.size(); ++i) {
    const Insn& insn = code.insns[i];
    text += Format("%5zu  %-18s %9d %9d %9d  #%d\n", i, kNames[static_cast<size_t>(insn.op)], insn.a, insn.b,
                   insn.c, insn.d);
  }
  return text;
}

}  // namespace vorc
