#include "codegen/procedure.h"

#include "base/format.h"
#include "codegen/block_hook.h"
#include "codegen/mnemonics.h"

namespace vorc {

namespace {

constexpr size_t kLongestQuote = 1024;

}  // namespace

std::string_view QuotedLine(const C_SLOT& slot, SourceLine line) {
  return slot.Sources.LineText(line).substr(0, kLongestQuote);
}

int Procedure::RegisterBytes() const {
  return context.hook == nullptr ? context.mnemonics.cpu_bytes : context.hook->RegisterBytes();
}

bool Procedure::KeepsValuesInRegisters() const {
  return context.hook != nullptr || slot.Target.optimization_level >= 1;
}

BasicBlock* Procedure::AddBlock() {
  BasicBlock& block = blocks.emplace_back();
  block.bb_no = static_cast<int32_t>(blocks.size()) - 1;
  return &block;
}

void WriteVariable(TextWriter& out, const Procedure& procedure, int32_t number) {
  const Variable& variable = procedure.variables[static_cast<size_t>(number)];
  if (variable.symbol != nullptr)
    out.Write(variable.symbol->name->Text);
  else
    out.Write("tmpreg_", variable.temp);
}

// Overloads and members of different classes may have one name; the assembler's names are all different.
std::string_view AsmNameOf(CodegenContext& context, const FUNCPROTO_REC* function) {
  const auto known = context.asm_names.find(function);
  if (known != context.asm_names.end()) return known->second;
  std::string name(function->name->Text);
  if (function->IsDestructor && !name.starts_with('~')) name += "_destructor";
  for (char& c : name) {
    if (c == '~') c = '_';
  }
  if (context.taken_names.contains(name) && function->OwnerClass != nullptr)
    name = std::string(function->OwnerClass->name->Text) + "_" + name;
  const std::string stem = name;
  for (int n = 2; context.taken_names.contains(name); ++n) name = Format("%s_%d", stem.c_str(), n);
  context.taken_names.insert(name);
  return context.asm_names.emplace(function, std::move(name)).first->second;
}

void ThreeAddress_AddBasicBlockPredecesor(BasicBlock* from, BasicBlock* to) {
  to->predecessors.push_back(from);
}

void AddJumpEdge(BasicBlock* from, BasicBlock* to) {
  from->jump_successors.push_back(to);
  ThreeAddress_AddBasicBlockPredecesor(from, to);
}

}  // namespace vorc
