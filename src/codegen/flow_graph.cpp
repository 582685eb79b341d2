#include "codegen/flow_graph.h"

#include "base/format.h"
#include "codegen/frame.h"
#include "codegen/passes.h"
#include "codegen/rendering.h"
#include "codegen/walk.h"

namespace vorc {

namespace {

constexpr const char* kInterferenceRule = "/==================================================/\n";

void CaptureFrameLine(Walk& walk, AsmOp op, std::string_view text) {
  CaptureAssembly(walk, op, text).no_translation = true;
}

void EmitProcName(Walk& walk) {
  Procedure& procedure = walk.procedure;
  CaptureAssembly(walk, ASMOP_FUNCTION_HEADER, Compose(procedure, "PROCEDURE ", procedure.name));
  CaptureAssembly(walk, ASMOP_FUNCTION_HEADER, "BEGIN");
  CaptureFrameLine(walk, ASMOP_PLAIN_TEXT,
                   Compose(procedure, walk.mnemonics.frame_move, " FRAMEPTR,STACKPTR"));
}

void EmitProcEnd(Walk& walk) {
  Procedure& procedure = walk.procedure;
  CaptureFrameLine(walk, ASMOP_PLAIN_TEXT, Compose(procedure, procedure.name, "_return:"));
  CaptureFrameLine(walk, ASMOP_PLAIN_TEXT,
                   Compose(procedure, walk.mnemonics.frame_move, " STACKPTR,FRAMEPTR"));
  CaptureFrameLine(walk, ASMOP_PLAIN_TEXT, Compose(procedure, walk.mnemonics.frame_move, " PC,LR"));
  CaptureAssembly(walk, ASMOP_FUNCTION_FOOTER, Compose(procedure, "END //", procedure.name, "\n\n\n"));
}

// A struct parameter is the address of the caller's struct; the callee works on a copy.
void CopyStructParameters(Walk& walk) {
  Procedure& procedure = walk.procedure;
  int32_t offset = procedure.total_arg_size;
  for (const SYM_REC* parameter : procedure.proto->ParametersHeader.Symbols) {
    if (IsVoidParameter(parameter)) continue;
    offset -= ParameterSlotWidth(walk.slot, parameter);
    if (!IsStructParameter(parameter)) continue;
    const int32_t address = procedure.NewTemp();
    CaptureAddressInFrame(walk, address, -offset,
                          std::string("address of parameter '") + parameter->name->c_str() + "'", parameter)
        .is_incoming = true;
    const int32_t pointer = procedure.NewTemp();
    CaptureLoad(walk, pointer, address, {walk.mnemonics.address_bytes, true, true});
    Operand copy;
    copy.kind = Operand::Kind::kSymbol;
    copy.symbol = parameter;
    copy.type = ValueType::OfSymbol(*parameter);
    CopyBytes(walk, AddressOf(walk, copy), pointer, copy.type.Size(walk.slot));
  }
}

bool IsEntry(const Procedure& procedure) {
  return procedure.context.entry == procedure.proto;
}

void WalkStatements(Walk& walk) {
  Procedure& procedure = walk.procedure;
  bool returned = false;
  for (const STATEMENT_BLOCK* at = procedure.proto->ProcBody->Statements.First; at != nullptr;
       at = at->Next) {
    if (returned) {
      walk.slot.WarningAt(at->Line,
                          Format("Code has no effect in function '%s'", std::string(procedure.name).c_str()));
    }
    returned |= at->StatementType == STATEMENT_TYPE_RETURN;
    ExecStatement(walk, at);
  }
}

void WalkBody(Walk& walk) {
  Procedure& procedure = walk.procedure;
  const PROC_TABLE* body = procedure.proto->ProcBody;
  procedure.current_bb = procedure.AddBlock();
  EmitProcName(walk);
  CopyStructParameters(walk);
  if (IsEntry(procedure)) CallConstructors(walk, walk.slot.Globals, false, "global object constructor");
  CallConstructors(walk, body->LocalsHeader, false, "local object constructor");
  if (body->Statements.First != nullptr) {
    const std::string_view text =
        Compose(procedure, ">>>>>>>>>>> New Basic Block Start here , Block Number_",
                procedure.current_bb->bb_no, ": First Basic Block of the Function\n");
    CaptureAssembly(walk, ASMOP_BASIC_BLOCK_BEGIN_LABEL, text);
    procedure.log().Write("00000000: ", text, '\n');
    WalkStatements(walk);
  }
  walk.line = body->EndLine;
  CallConstructors(walk, body->LocalsHeader, true, "local object destructor");
  if (IsEntry(procedure)) CallConstructors(walk, walk.slot.Globals, true, "global object destructor");
  EmitProcEnd(walk);
}

void ResolveJumps(Procedure& procedure) {
  if (!procedure.return_jump_chain.empty()) {
    procedure.return_bb = procedure.current_bb;
    for (BasicBlock* from : procedure.return_jump_chain) AddJumpEdge(from, procedure.return_bb);
  }
  for (const ForwardGoto& jump : procedure.forward_goto_chain) {
    for (const LabelGroup& group : procedure.label_groups) {
      for (const STATEMENT_BLOCK* label : group.labels) {
        if (label->Symbol->name == jump.label && group.block != nullptr) AddJumpEdge(jump.from, group.block);
      }
    }
  }
}

void Analyse(Procedure& procedure) {
  PrintFlattenedThreeAddressCode(procedure);
  CreateVariableNameList(procedure);
  PrintVariableNameList(procedure);
  print_basic_blocks(procedure);
  DumpSuccessorsPredecessors(procedure);
  procedure.scratch.assign(procedure.variables.size(), -1);
  for (BasicBlock& block : procedure.blocks) three_address_code_identify_def_and_use_vars(procedure, block);
  ThreeAddress_PerformVariableLivenessAnalysis(procedure);
  print_in_out_vars_summary(procedure);
}

void CreateCodeFlowGraph(Procedure& procedure) {
  Walk walk{procedure, procedure.slot, procedure.proto->ProcBody->Line, procedure.context.mnemonics};
  create_consecutive_label_group(procedure);
  WalkBody(walk);
  if (procedure.too_deep) return;
  ResolveJumps(procedure);
  Analyse(procedure);
  procedure.log().Write(kInterferenceRule, "/* \tGenerateInterferenceGraph for function: '", procedure.name,
                        "' */\n", "/************* IdentifyCriticalEdge BEGIN    *************/\n",
                        "/************* IdentifyCriticalEdge END    *************/\n");
  CreateDominance(procedure);
  CreateLivenessRange(procedure);
}

}  // namespace

void EmitFuncAssmblyCode(CodegenContext& context, FUNCPROTO_REC* function) {
  if (function->ProcBody == nullptr || function->PrototypeOnly) return;
  Procedure procedure(context, function, AsmNameOf(context, function));
  ++context.procedures;
  UpdateArgSpOffset(procedure);
  if (!UpdateLocalVarAddress(procedure)) {
    context.slot.ErrorAt(function->Line, 0,
                         Format("The locals of function '%s' need more than 1 GB.", function->name->c_str()));
    return;
  }
  CreateCodeFlowGraph(procedure);
}

}  // namespace vorc
