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

// How long a text is, if that was told with it.
static uint32_t LentLength(const TextLoan* loan, const char* text) {
  return loan != nullptr && loan->stored == text ? loan->length : BuiltinValue::kUnmeasured;
}

// The result of a built-in as the machine keeps it: a text's address, a real number or an integer.
[[gnu::noinline]] static void PlaceResult(BuiltinResult wanted, const BuiltinValue& value, char* place) {
  const bool text = value.kind == BuiltinValue::Kind::kText;
  int64_t bits = value.kind == BuiltinValue::Kind::kNone ? 0 : value.integer;
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
bool Interpreter::RunTakenName(const Op& op, char* result) {
  Entry* at = operands_;
  if (!NameCall(op, Mode::kNormal, at)) return false;
  BuiltinValue value = ToBuiltinValue(*at);
  value.wide = true;
  value.integer = at->value;
  PlaceResult(op.builtin->result, value, result);
  return !failed();
}

// False if only the general road gives this argument.
inline bool Interpreter::FetchReady(const BuiltinArgument& argument, const char* fp) const {
  BuiltinValue& value = *argument.value;
  const char* place = fp + argument.place;
  if (argument.from == BuiltinArgument::From::kInt) {
    // Read as it was written: a wider read would have to wait until that has reached the cache.
    int32_t number = 0;
    std::memcpy(&number, place, sizeof number);
    value.integer = number;
    return true;
  }
  if (argument.from == BuiltinArgument::From::kReal) {
    std::memcpy(&value.real, place, sizeof value.real);
    return true;
  }
  const char* text = nullptr;
  std::memcpy(&text, place, sizeof text);
  if (argument.from == BuiltinArgument::From::kTextAt) {
    value.kind = text == nullptr ? BuiltinValue::Kind::kInteger : BuiltinValue::Kind::kText;
    value.text = text;
    value.length = LentLength(argument.loan, text);
    return true;
  }
  const SymbolState* state = argument.state;
  if (state == nullptr || state->holds != Tok::STRING || !Holds(state->known, text)) return false;
  value.SetText({text, state->known.length});
  return true;
}

inline bool Interpreter::Invoke(BuiltinSite& site, char* result) {
  site.call.Begin();
  if (!RunHandler(site.op, site.call)) return false;
  const BuiltinValue& answer = site.call.result();
  std::memcpy(result, &answer.integer, sizeof answer.integer);
  if (answer.kind != site.wanted) PlaceResult(site.op.builtin->result, answer, result);
  return !failed();
}

// A call of a built-in whose arguments lie in the frame. It needs nothing of the general road.
Interpreter::Called Interpreter::RunBuiltinSite(BuiltinSite& site, const char* fp, char* result) {
  if (slot_.FuncPrototypes.count() != site.functions || memory_.WantsSweep()) return Called::kNotYet;
  for (const BuiltinArgument& argument : site.arguments) {
    if (!FetchReady(argument, fp)) return Called::kNotYet;
  }
  return Invoke(site, result) ? Called::kDone : Called::kFailed;
}

// Any such call.
bool Interpreter::RunBuiltinSlowly(BuiltinSite& site, const char* fp, char* result) {
  if (slot_.FuncPrototypes.count() != site.functions) {
    if (FindFunction(slot_, &slot_.Globals, site.op.node->name) != nullptr)
      return RunTakenName(site.op, result);
    // An added function could run this call again, ahead of the first text's use.
    site.call.set_loan(nullptr);
  }
  SweepIfDue();
  for (const BuiltinArgument& argument : site.arguments) {
    if (!FetchReady(argument, fp) && !FetchArgument(argument, fp)) return false;
  }
  return Invoke(site, result);
}

bool Interpreter::FetchArgument(const BuiltinArgument& argument, const char* fp) {
  if (argument.often_text && TextOfVariable(argument, fp)) return true;
  Entry entry;
  if (!Evaluate(argument.code, Mode::kNormal, &entry)) return false;
  *argument.value = ToBuiltinValue(entry);
  return true;
}

// False if the variable holds none.
bool Interpreter::TextOfVariable(const BuiltinArgument& argument, const char* fp) const {
  if (argument.state != nullptr && argument.state->holds != Tok::STRING) return false;
  const char* text = nullptr;
  std::memcpy(&text, fp + argument.place, sizeof text);
  if (text == nullptr || !memory_.Contains(text, 1)) return false;
  argument.value->SetText(text);
  return true;
}

void Interpreter::StoreText(const Site& site, char* address, const char* text) {
  if (text != nullptr) {
    BuiltinValue value;
    value.text = text;
    value.length = LentLength(site.loan, text);
    return StoreDollarText(site.symbol, address, value.View());
  }
  std::memset(address, 0, ScriptMemory::kWordSize);
  StateOf(site.symbol).holds = Tok::int_;
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
