#include "output/assembly.h"

#include <strings.h>

#include <algorithm>

#include "codegen/block_hook.h"
#include "codegen/flow_graph.h"
#include "codegen/mnemonics.h"
#include "codegen/passes.h"
#include "output/data_sections.h"
#include "program/symtab.h"

namespace vorc {

namespace {

constexpr const char* kStars = "/************************************/\n";
constexpr const char* kExecutableFormats[] = {"native", "elf", "pe", "picfmt2"};

void EmitAssemblyHeaders(CodegenContext& context, const VorcReference128& reference,
                         const std::string& source) {
  const TargetOptions& target = context.slot.Target;
  TextWriter& out = context.assembly;
  out.Write(kStars, "//ASSEMBLY OUTPUT \n", "//FROM: ", source, '\n',
            "//VORC_REFERENCE:", FormatVorcReference128(reference), '\n',
            "/************************************/\n\n");
  out.Write("CPUSIZE ", target.cpu_size, "\nADDRSIZE ", target.address_size, '\n');
  if (target.pic) out.Write("PIC\n");
  if (target.exe_format != 0) out.Write("EXEFORMAT ", kExecutableFormats[target.exe_format & 3], '\n');
}

// The source's file name as it stands in labels.
std::string LabelStem(const std::string& source) {
  std::string stem = source.substr(source.find_last_of("/\\") + 1);
  std::replace_if(
      stem.begin(), stem.end(), [](char c) { return c == ' ' || c == '-'; }, '_');
  return stem;
}

void EmitMemberFunctions(CodegenContext& context, const SYMBOLS_HEADER& header) {
  for (STRUCT_REC* record : header.Structs) {
    for (FUNCPROTO_REC* function : record->MembersHeader.Functions) EmitFuncAssmblyCode(context, function);
    EmitMemberFunctions(context, record->MembersHeader);
  }
}

// What stands alone under the name of a script's own function is no program.
bool IsScriptAlone(const List<FUNCPROTO_REC>& functions) {
  return functions.First != nullptr && functions.First == functions.Last &&
         strcasecmp(functions.First->name->c_str(), "MorvMain") == 0;
}

void EmitProcedures(CodegenContext& context) {
  EmitMemberFunctions(context, context.slot.Globals);
  if (IsScriptAlone(context.slot.Globals.Functions)) return;
  for (FUNCPROTO_REC* function : context.slot.Globals.Functions) {
    if (function->ProcBody == nullptr || function->PrototypeOnly) continue;
    EmitMemberFunctions(context, function->ProcBody->LocalsHeader);
    EmitFuncAssmblyCode(context, function);
  }
}

// The names of plain functions are theirs; member functions and later overloads make do.
void ReserveNames(CodegenContext& context) {
  for (FUNCPROTO_REC* function : context.slot.Globals.Functions) AsmNameOf(context, function);
}

}  // namespace

void EmitAssembly(C_SLOT& slot, OutputFiles& files, const std::string& source, BlockHook* hook) {
  const Mnemonics mnemonics(slot.Target);
  CodegenContext context(slot, mnemonics, files.assembly, files.analysis, files.tac, files.ai_input, hook);
  context.entry = FindProgramEntryLabel(slot);
  context.label_stem = LabelStem(source);
  ReserveNames(context);
  RenameProcStatics(context);
  EmitAssemblyHeaders(context, files.Reference(), source);
  EmitAssemblyBssSection(context);
  EmitAssemblyDataSection(context);
  context.assembly.Write(kStars, "/*********** SECTION CODE ************/\n", kStars,
                         "SECTION   CODE\nBEGIN\n");
  CreateThreeAddressSamplesForVerificationFileHeader(context, source, SetFileExt(source, "asm"));
  EmitProcedures(context);
  end_write_tac_sample(context);
  context.assembly.Write("END   //SECTION CODE\n/* * * */\n");
  EmitAssemblyUnnamedStringDataSection(context);
  if (hook != nullptr) hook->EndOfUnit(context);
}

}  // namespace vorc
