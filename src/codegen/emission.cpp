#include "codegen/emission.h"

#include <algorithm>
#include <array>

#include "codegen/passes.h"
#include "program/members.h"

namespace vorc {

namespace {

constexpr std::array<std::string_view, 64> kRegisterNames = {
    "gpr0",  "gpr1",  "gpr2",  "gpr3",  "gpr4",  "gpr5",  "gpr6",  "gpr7",  "gpr8",  "gpr9",  "gpr10",
    "gpr11", "gpr12", "gpr13", "gpr14", "gpr15", "gpr16", "gpr17", "gpr18", "gpr19", "gpr20", "gpr21",
    "gpr22", "gpr23", "gpr24", "gpr25", "gpr26", "",      "",      "",      "",      "",      "",
    "",      "",      "",      "",      "",      "",      "",      "",      "",      "",      "",
    "",      "",      "",      "",      "",      "",      "",      "",      "",      "",      "",
    "",      "",      "",      "",      "",      "",      "rr61",  "rr62",  "rr63"};

bool IsCompare(const Instruction& instruction) {
  return instruction.is_asm && instruction.asmop >= ASMOP_CMP_SYMVAR_WITH_SYMVAR &&
         instruction.asmop <= ASMOP_CMP_TMPVAR_WITH_TMPVAR;
}

constexpr int kResultColour = 26;

constexpr std::string_view kStoreRule =
    "================================ store_bb_live_out_from_register_to_memory ";
constexpr std::string_view kStoreRuleEnd = "===============================================\n";

}  // namespace

std::string_view RegisterName(int number) {
  return kRegisterNames[static_cast<size_t>(number)];
}

BlockEmitter::BlockEmitter(Procedure& procedure, BasicBlock& block)
    : procedure_(procedure),
      block_(block),
      mnemonics_(procedure.context.mnemonics),
      assembly_(procedure.context.assembly),
      log_(procedure.context.analysis),
      reuse_(procedure.slot.Target.optimization_level >= 1) {
  for (const Instruction* at = block.first; at != nullptr; at = at->next_in_block) {
    has_call_ |= at->is_call;
  }
  line_ = block.first == nullptr ? 0 : block.first->line.Line;
}

// What must stand ahead of the loads of live-in values: the procedure's first lines, labels, and what
// brings the stack and FRAMEPTR back behind a call.
bool BlockEmitter::IsLeading(const Instruction& instruction) const {
  if (instruction.is_marker) return true;
  if (!instruction.is_asm) return false;
  switch (instruction.asmop) {
    case ASMOP_BASIC_BLOCK_BEGIN_LABEL:
    case ASMOP_LABEL:
    case ASMOP_GOTO_LABEL:
    case ASMOP_FUNCTION_HEADER:
    case ASMOP_PLAIN_TEXT:
    case ASMOP_COMMENT:
    case ASMOP_POP_REG:
    case ASMOP_MOVE_REG_TO_VAR: return true;
    default: return false;
  }
}

// The first of the instructions that leave the block: live-out values are in memory before it.
const Instruction* BlockEmitter::ClosingInstruction() const {
  const Instruction* closing = nullptr;
  const Instruction* before = nullptr;
  for (const Instruction* at = block_.first; at != nullptr; at = at->next_in_block) {
    if (at->is_marker) continue;
    const bool jump = at->Is(ASMOP_JMP) || at->Is(ASMOP_JE) || at->Is(ASMOP_JNE);
    const bool belongs = before != nullptr &&
                         (IsCompare(*before) || before->Is(ASMOP_MOVE_VAR_TO_REG) || before->sets_return_reg);
    closing = !jump ? nullptr : belongs ? before : at;
    before = at;
  }
  return closing;
}

void BlockEmitter::Run() {
  const Instruction* closing = ClosingInstruction();
  const Instruction* at = block_.first;
  log_.Write("------------------- Generate register allocated Assembly code -------------------------\n");
  for (; at != nullptr && at != closing && IsLeading(*at); at = at->next_in_block) Emit(*at);
  LoadInVars();
  for (; at != nullptr && at != closing; at = at->next_in_block) Emit(*at);
  StoreOutVars();
  for (; at != nullptr; at = at->next_in_block) Emit(*at);
  log_.Write("Block no = ", block_.bb_no, "  Code Analysis and code generaion END\n",
             "*************************=========================*************************\n");
}

void BlockEmitter::LoadInVars() {
  for (const int32_t variable : block_.IN) {
    for (const int32_t number : procedure_.ranges_of[static_cast<size_t>(variable)]) {
      LiveRange& range = block_.ranges[static_cast<size_t>(number)];
      if (!range.live_on_entry || !range.register_assigned) continue;
      const Variable& described = VariableOf(variable);
      if (described.symbol != nullptr && described.symbol->OwnerStruct != nullptr) continue;
      const std::string_view reg = RegisterName(range.register_position);
      const auto slot =
          described.symbol == nullptr ? procedure_.frame.end() : procedure_.frame.find(described.symbol);
      if (described.temp != kNoTemp) {
        Line(mnemonics_.addr_sub, " rr61, FRAMEPTR, ", procedure_.HomeOf(described.temp));
        Line("load8 ", reg, " ,[rr61]  // load value of generated local var  tmpreg_", described.temp,
             " from stack");
      } else if (slot == procedure_.frame.end()) {
        Line("loadaddr rr61, ", described.symbol->name->Text);
        Line(LoadMnemonicOf(variable), ' ', reg, " ,[rr61]");
      } else {
        const bool parameter = slot->second.is_parameter;
        Line(parameter ? mnemonics_.addr_add : mnemonics_.addr_sub, " rr61, FRAMEPTR, ", slot->second.offset);
        Line(LoadMnemonicOf(variable), ' ', reg, " ,[rr61]  // load  value of ",
             parameter ? "parameter" : "local", " variable '", described.symbol->name->Text, "' from stack");
      }
      range.value_loaded = true;
    }
  }
}

void BlockEmitter::StoreOutVars() {
  log_.Write(kStoreRule, "BEGIN", kStoreRuleEnd);
  if (has_call_) {
    assembly_.Write("//block contains a CALL - registers clobbered, live-out spill suppressed\n");
    log_.Write(kStoreRule, "END", kStoreRuleEnd);
    return;
  }
  assembly_.Write("//", kStoreRule, "BEGIN", kStoreRuleEnd);
  for (const int32_t variable : block_.OUT) {
    LiveRange* furthest = nullptr;
    for (const int32_t number : procedure_.ranges_of[static_cast<size_t>(variable)]) {
      LiveRange& range = block_.ranges[static_cast<size_t>(number)];
      if (!range.register_assigned) continue;
      if (furthest == nullptr || range.live_range_end > furthest->live_range_end) furthest = &range;
    }
    if (furthest == nullptr || !furthest->value_loaded) continue;
    const Variable& described = VariableOf(variable);
    if (described.symbol != nullptr && described.symbol->OwnerStruct != nullptr) continue;
    log_.Write("LIVE_OUT_PICK: spilling the live range of '");
    WriteVariable(log_, procedure_, variable);
    log_.Write("' that reaches furthest (ends at ", furthest->live_range_end, ", colour ",
               furthest->register_position, ")\n");
    const std::string_view reg = RegisterName(furthest->register_position);
    const auto slot =
        described.symbol == nullptr ? procedure_.frame.end() : procedure_.frame.find(described.symbol);
    if (described.temp != kNoTemp) {
      Line(mnemonics_.addr_sub, " rr61, FRAMEPTR, ", procedure_.HomeOf(described.temp));
      Line("store8 ", reg, " ,[rr61]  // store value of tmpreg_", described.temp, " on to stack");
    } else if (slot == procedure_.frame.end()) {
      const std::string_view name = described.symbol->name->Text;
      Line("loadaddr rr61, ", name);
      Line(StoreMnemonicOf(variable), ' ', reg, " ,[rr61]  // store  value of global variable '", name, "' ");
    } else {
      const bool parameter = slot->second.is_parameter;
      Line(parameter ? mnemonics_.addr_add : mnemonics_.addr_sub, " rr61, FRAMEPTR, ", slot->second.offset);
      Line(StoreMnemonicOf(variable), ' ', reg, " ,[rr61]  // store  value of ",
           parameter ? "parameter" : "local", " variable '", described.symbol->name->Text, "' on to stack");
    }
  }
  log_.Write(kStoreRule, "END", kStoreRuleEnd);
  assembly_.Write("//", kStoreRule, "END", kStoreRuleEnd);
}

// Puts the address of a variable's memory into a register.
void BlockEmitter::WriteAddress(int32_t number, int reg) {
  const std::string_view name = RegisterName(reg);
  const Variable& variable = VariableOf(number);
  if (variable.temp != kNoTemp) {
    log_.Write("//loadvariable_address: Generated Local Var 'tmpreg_", variable.temp, "' is of type 'int'\n");
    return Line(mnemonics_.addr_sub, ' ', name, " , FRAMEPTR ,", procedure_.HomeOf(variable.temp));
  }
  const SYM_REC* symbol = variable.symbol;
  const std::string_view type = TokenName(symbol->ValueType);
  if (symbol->OwnerStruct != nullptr) {
    const STRUCT_REC* home = procedure_.proto->OwnerClass;
    const MemberResult member =
        FindStructMember(procedure_.slot, home == nullptr ? symbol->OwnerStruct : home, symbol->name);
    const int32_t offset = member.Symbol == nullptr ? symbol->MemberOffset : MemberDataOffset(member);
    log_.Write("//loadvariable_address: implicit this->", symbol->name->Text, " (member_offset=", offset,
               ") is of type '", type, "'\n");
    Line(mnemonics_.addr_add, ' ', name, " , FRAMEPTR , ", procedure_.total_arg_size);
    Line(mnemonics_.word_load, ' ', name, " ,[", name, ']');
    return Line(mnemonics_.addr_add, ' ', name, " , ", name, " , ", offset);
  }
  const auto slot = procedure_.frame.find(symbol);
  if (slot == procedure_.frame.end()) {
    log_.Write("//loadvariable_address: Global Var '", symbol->name->Text, "' is of type '", type, "'\n");
    return Line("loadaddr ", name, ", ", symbol->name->Text);
  }
  const bool parameter = slot->second.is_parameter;
  log_.Write("//loadvariable_address: ", parameter ? "Parameter" : "Local", " Var '", symbol->name->Text,
             "' is of type '", type, "'\n");
  Line(parameter ? mnemonics_.addr_add : mnemonics_.addr_sub, ' ', name, " , FRAMEPTR , ",
       slot->second.offset);
}

std::string_view BlockEmitter::LoadMnemonicOf(int32_t variable) const {
  const SYM_REC* symbol = VariableOf(variable).symbol;
  return symbol == nullptr ? mnemonics_.word_load : LoadMnemonic(AccessOfSymbol(procedure_.slot, symbol));
}

std::string_view BlockEmitter::StoreMnemonicOf(int32_t variable) const {
  const SYM_REC* symbol = VariableOf(variable).symbol;
  return symbol == nullptr ? mnemonics_.word_store : StoreMnemonic(AccessOfSymbol(procedure_.slot, symbol));
}

// The ranges of a variable follow each other in the block.
LiveRange* BlockEmitter::RangeAt(int32_t variable, int32_t index) {
  const std::vector<int32_t>& numbers = procedure_.ranges_of[static_cast<size_t>(variable)];
  const auto begins_later = [this](int32_t at, int32_t number) {
    return at < block_.ranges[static_cast<size_t>(number)].live_range_begin;
  };
  const auto behind = std::upper_bound(numbers.begin(), numbers.end(), index, begins_later);
  if (behind == numbers.begin()) return nullptr;
  LiveRange& range = block_.ranges[static_cast<size_t>(*std::prev(behind))];
  return index <= range.live_range_end ? &range : nullptr;
}

LiveRange* BlockEmitter::ColouredAt(int32_t variable, int32_t index) {
  LiveRange* range = RangeAt(variable, index);
  return range != nullptr && range->register_assigned ? range : nullptr;
}

bool BlockEmitter::MustReload(int32_t variable, const LiveRange& range) const {
  if (!reuse_ || !range.value_loaded) return true;
  const SYM_REC* symbol = VariableOf(variable).symbol;
  return symbol != nullptr && (symbol->StorageType & VOLATILE_VAR) != 0;
}

bool BlockEmitter::MustStore(int32_t variable) const {
  const Variable& described = VariableOf(variable);
  if (!reuse_ || described.shared) return true;
  return described.symbol != nullptr && (described.symbol->StorageType & VOLATILE_VAR) != 0;
}

void BlockEmitter::ForgetAll() {
  for (LiveRange& range : block_.ranges) range.value_loaded = false;
}

void BlockEmitter::ForgetShared() {
  for (LiveRange& range : block_.ranges) {
    if (VariableOf(range.variable).shared) range.value_loaded = false;
  }
}

// The result register is a general one as well: what a pop brings back takes the place of its value.
void BlockEmitter::ForgetRegister(std::string_view reg) {
  if (reg != "GPR26") return;
  for (LiveRange& range : block_.ranges) range.value_loaded &= range.register_position != kResultColour;
}

void EmitBlock(Procedure& procedure, BasicBlock& block) {
  BlockEmitter(procedure, block).Run();
}

}  // namespace vorc
