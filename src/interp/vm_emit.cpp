#include "interp/interpreter.h"
#include "interp/vm_compiler.h"

namespace vorc {

VmCompiler::VmCompiler(Interpreter& interpreter, FunctionCode& code)
    : host_(interpreter),
      slot_(interpreter.slot_),
      code_(code),
      graph_(interpreter.call_graph_),
      states_(graph_, code.function) {}

Insn& VmCompiler::Emit(VmOp op, int32_t a, int32_t b, int32_t c, int d) {
  code_.insns.push_back({op, static_cast<uint16_t>(d), a, b, c});
  return code_.insns.back();
}

Site& VmCompiler::NewSite(int* number) {
  *number = static_cast<int>(code_.sites.size());
  if (code_.sites.size() >= kMostSites) code_.walked = true;
  return code_.sites.emplace_back();
}

VmCompiler::Label VmCompiler::NewLabel() {
  labels_.push_back(-1);
  return static_cast<Label>(labels_.size() - 1);
}

void VmCompiler::Bind(Label label) {
  labels_[static_cast<size_t>(label)] = static_cast<int32_t>(code_.insns.size());
  barrier_ = code_.insns.size();
}

void VmCompiler::EmitJump(VmOp op, int32_t a, int32_t b, Label target, int d) {
  jumps_.push_back({code_.insns.size(), target});
  Emit(op, a, b, 0, d);
}

// Below the base by a constant, and below each other.
int32_t VmCompiler::NewTemp() {
  if (temps_ < kMostTemps)
    ++temps_;
  else
    code_.walked = true;
  return -static_cast<int32_t>(ScriptMemory::kShadowDistance) - 8 * temps_;
}

// Only what an operand still refers to is kept.
void VmCompiler::ReleaseTemps() {
  int used = 0;
  const auto use = [&used](int32_t place) {
    const int number = (-place - static_cast<int32_t>(ScriptMemory::kShadowDistance)) / 8;
    // A local of a frame that no stack holds lies further down still.
    const bool temp = place < -static_cast<int32_t>(ScriptMemory::kShadowDistance) && number <= kMostTemps;
    if (temp && number > used) used = number;
  };
  const auto use_item = [&use](const Item& item) {
    use(item.place);
    use(item.index);
    use(item.index2);
  };
  for (const Item& item : items_) use_item(item);
  for (const Pending& pending : pending_) use_item(pending.item);
  temps_ = used;
}

VmCompiler::Mark VmCompiler::Here() const {
  return {code_.insns.size(), code_.sites.size(), items_.size(), labels_.size(), jumps_.size(),
          fails_at_.size(),   roads_.size(),      temps_,        barrier_};
}

void VmCompiler::Back(const Mark& mark) {
  code_.insns.resize(mark.insns);
  code_.sites.resize(mark.sites);
  items_.resize(mark.items);
  labels_.resize(mark.labels);
  jumps_.resize(mark.jumps);
  fails_at_.resize(mark.fails);
  roads_.resize(mark.roads);
  temps_ = mark.temps;
  barrier_ = mark.barrier;
  pending_.clear();
}

// The general roads of checks that fail, and then the targets of all jumps.
void VmCompiler::Finish() {
  for (size_t i = 0; i < roads_.size(); ++i) {
    const Road road = roads_[i];
    Bind(road.start);
    General(road.op, road.a, road.code, road.statement);
    if (road.leaves) Emit(VmOp::kLeave);
    if (road.target != kNoLabel)
      EmitJump(road.jump_if ? VmOp::kJumpNeImm : VmOp::kJumpEqImm, road.a, 0, road.target);
    EmitJump(VmOp::kJump, 0, 0, road.back);
  }
  const auto target = [this](Label label) { return labels_[static_cast<size_t>(label)]; };
  for (const LabelUse& use : jumps_) {
    const auto at = static_cast<int32_t>(use.at);
    code_.insns[use.at].c = target(use.label) - at;
  }
  for (const LabelUse& use : fails_at_) code_.sites[use.at].fail = target(use.label);
  for (SwitchTable& table : code_.tables) {
    for (int32_t& at : table.dense) at = target(at);
    for (auto& entry : table.sparse) entry.second = target(entry.second);
    table.otherwise = target(table.otherwise);
  }
  code_.compiled = true;
}

}  // namespace vorc
