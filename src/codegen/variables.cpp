#include "base/format.h"
#include "codegen/frame.h"
#include "codegen/passes.h"
#include "codegen/rendering.h"
#include "program/layout.h"

namespace vorc {

namespace {

constexpr const char* kLastModified = "02/10/2006 : 12.34.50";
constexpr const char* kRule40 = "========================================";

int64_t KeyOf(const TacOperand& operand) {
  return operand.kind == TacOperand::Kind::kTemp ? operand.temp : reinterpret_cast<int64_t>(operand.symbol);
}

// A global, or a variable whose address is known elsewhere, changes without being named.
bool IsShared(const Procedure& procedure, const SYM_REC* symbol) {
  return symbol != nullptr && (!procedure.frame.contains(symbol) || procedure.address_taken.contains(symbol));
}

void insert_generated_variable(Procedure& procedure, TacOperand* operand) {
  if (!operand->IsVariable()) return;
  TextWriter& log = procedure.log();
  const auto next = static_cast<int32_t>(procedure.variables.size());
  const auto [entry, is_new] = procedure.variable_numbers.try_emplace(KeyOf(*operand), next);
  const bool is_temp = operand->kind == TacOperand::Kind::kTemp;
  if (is_new) {
    const SYM_REC* symbol = is_temp ? nullptr : operand->symbol;
    procedure.variables.push_back(
        {is_temp ? operand->temp : kNoTemp, symbol, 0, IsShared(procedure, symbol)});
  } else if (is_temp) {
    log.Write("insert_generated_variable:Inserting  3: TAGV TEMPREGISTER-var=tmpreg_", operand->temp,
              " already listed, adding to same variable use chain\n");
  } else {
    log.Write("insert_generated_variable:TAGV Symptr-var=", operand->symbol->name->Text,
              " already listed, adding to same variable use chain\n");
  }
  operand->variable = entry->second;
  operand->occurrence = procedure.occurrences++;
  ++procedure.variables[static_cast<size_t>(operand->variable)].mentions;
}

void WriteHead(Procedure& procedure) {
  procedure.context.ai_input.Write(
      "=======================================\n",
      "SOURCE FILE NAME : ", procedure.slot.Sources.FileName(procedure.proto->Line),
      "\nSOURCE FILE LAST MODIFIED : ", kLastModified, '\n', kRule40,
      "\n**\nBEGIN Three address code for function: '", procedure.name,
      "'\n**\nsource line number           instruction index   variable tags     instruction            "
      "comment\n------------------           -----------------   -------------     -----------            "
      "-------\n");
}

void WriteInstruction(Procedure& procedure, const Instruction& instruction) {
  TextWriter& out = procedure.context.ai_input;
  const TacOperand* defined = VariablesOf(instruction).defined;
  const bool assigns = !instruction.is_asm && instruction.op == Tok::ASSIGN;
  const char* prefix = "";
  if (instruction.Is(ASMOP_PLAIN_TEXT)) prefix = ";;RAW-ASM ";
  if (instruction.Is(INVALID_ASMOP)) prefix = ";;NOT-LOWERED ";
  out.Write("source_line:", Padded{instruction.line.Line, 8},
            " instruction_index:", Padded{instruction.index, 8}, " (",
            defined == nullptr ? -1 : defined->occurrence, ',',
            assigns ? -1 : instruction.operand1.occurrence, ',', instruction.operand2.occurrence, ") ",
            prefix, three_address_instruction_str(procedure, instruction), '\n');
}

int ArgumentNumber(const Procedure& procedure, const SYM_REC* symbol) {
  int number = 0;
  for (const SYM_REC* parameter : procedure.proto->ParametersHeader.Symbols) {
    if (parameter == symbol) return number;
    ++number;
  }
  return -1;
}

void WriteOneVariableClass(Procedure& procedure, size_t number) {
  TextWriter& out = procedure.context.ai_input;
  const Variable& variable = procedure.variables[number];
  out.Write("VAR:", number, " class=");
  if (variable.temp != kNoTemp) {
    out.Write("tmp argno=-1 offset=", procedure.HomeOf(variable.temp), " size=8 name=tmpreg_", variable.temp,
              '\n');
    return;
  }
  const auto slot = procedure.frame.find(variable.symbol);
  const int32_t size = GetDeclaredDataSize(procedure.slot, variable.symbol);
  const std::string_view name = variable.symbol->name->Text;
  if (slot == procedure.frame.end())
    out.Write("global argno=-1 offset=0 size=", size, " name=", name, '\n');
  else if (slot->second.is_parameter)
    out.Write("param argno=", ArgumentNumber(procedure, variable.symbol), " offset=", -slot->second.offset,
              " size=", size, " name=", name, '\n');
  else
    out.Write("local argno=-1 offset=", slot->second.offset, " size=", size, " name=", name, '\n');
}

void WriteVariableClasses(Procedure& procedure) {
  TextWriter& out = procedure.context.ai_input;
  out.Write("BEGIN variable classes for function: '", procedure.name, "'\n");
  int number = 0;
  for (const SYM_REC* parameter : procedure.proto->ParametersHeader.Symbols) {
    if (IsVoidParameter(parameter)) continue;
    const FrameSlot& slot = procedure.frame[parameter];
    out.Write("DECL:param argno=", number++, " offset=", slot.offset, " size=", slot.width,
              " name=", parameter->name->Text, '\n');
  }
  for (size_t i = 0; i < procedure.variables.size(); ++i) WriteOneVariableClass(procedure, i);
  out.Write("END variable classes for function: '", procedure.name, "'\n");
}

}  // namespace

void CreateVariableNameList(Procedure& procedure) {
  WriteHead(procedure);
  for (Instruction* at = procedure.first; at != nullptr; at = at->next) {
    if (at->is_marker) continue;
    insert_generated_variable(procedure, &at->result);
    insert_generated_variable(procedure, &at->operand1);
    insert_generated_variable(procedure, &at->operand2);
    if (at->operand2.kind == TacOperand::Kind::kString) {
      at->operand2.text =
          procedure.context.strings.AddUnnamedStringToDataSection(at->operand2.text, at->line);
    }
    WriteInstruction(procedure, *at);
  }
  procedure.context.ai_input.Write("END Three address code for function: '", procedure.name, "'\n++\n");
  WriteVariableClasses(procedure);
}

void PrintVariableNameList(Procedure& procedure) {
  TextWriter& log = procedure.log();
  log.Write("********************PrintVariableNameList BEGIN***********************\n");
  for (size_t i = 0; i < procedure.variables.size(); ++i) {
    WriteVariable(log, procedure, static_cast<int32_t>(i));
    log.Write("(addr=", Format("%8zX", i + 1), ")\n");
  }
  log.Write("********************PrintVariableNameList END***********************\n");
}

}  // namespace vorc
