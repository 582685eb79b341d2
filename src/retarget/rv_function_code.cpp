#include "retarget/rv_function_code.h"

#include <algorithm>

#include "codegen/frame.h"

namespace vorc {
namespace {

constexpr size_t kMostLabels = 512;
constexpr int kArgumentRegisters = 8;
constexpr int64_t kFrameStep = 16;
constexpr int64_t kReturnAddressBytes = 4;
constexpr uint32_t kBreakpoint = 0x00100073;

}  // namespace

bool RvFunctionCode::Open(Procedure& procedure) {
  procedure_ = &procedure;
  proto_ = procedure.proto;
  name_ = procedure.name;
  epilogue_ = has_call = false;
  const PassedValue result = PassedOf(procedure.slot, ValueType::OfType(proto_->ReturnType));
  result_is_uint32_ = result.bytes == 4 && result.is_unsigned && !result.is_real;
  slot_words_ = 0;
  slots_.clear();
  labels_.clear();
  residents_.clear();
  pending.clear();
  frame_sites_.clear();
  return_address_sites_.clear();
  first_fixup_ = enc_.fixups.size();
  vrv_align(enc_, 4);
  number_ = unit_.FunctionNumber(name_);
  start_ = enc_.code.size();
  if (number_ != RvUnitCode::kNone)
    vrv_place_label(enc_, unit_.unit.functions[static_cast<size_t>(number_)].label);
  frame_sites_.push_back(start_);
  vrv_addi(enc_, kSp, kSp, 0);
  return_address_sites_.push_back(enc_.code.size());
  vrv_nop(enc_);
  return StoreParameters() && number_ != RvUnitCode::kNone;
}

bool RvFunctionCode::StoreParameters() {
  int position = 0;
  bool stored = true;
  if (proto_->OwnerClass != nullptr) {
    stored = rv32_store_var(kA0, {RvVariable::kThis, kNoTemp, nullptr});
    ++position;
  }
  for (const SYM_REC* parameter : proto_->ParametersHeader.Symbols) {
    if (IsVoidParameter(parameter)) continue;
    if (position == kArgumentRegisters) return false;
    const uint32_t reg = kA0 + static_cast<uint32_t>(position++);
    if (parameter->name != nullptr && !parameter->name->Text.empty())
      stored = StoreParameter(reg, parameter) && stored;
  }
  return stored;
}

bool RvFunctionCode::StoreParameter(uint32_t reg, const SYM_REC* parameter) {
  if (IsStructParameter(parameter)) return rv32_store_var(reg, {RvVariable::kIncoming, kNoTemp, parameter});
  if (IsTooWide(parameter)) return false;
  const AccessWidth width = AccessOfSymbol(procedure_->slot, parameter);
  // The calling convention extends 32 bits with their sign, whatever the type.
  const bool is_uint32 = width.bytes == 4 && width.is_unsigned && !width.is_address;
  if (unit_.is_rv64() && is_uint32 && !ZeroExtend(reg)) return false;
  return rv32_store_var(reg, RvVariable::Symbol(parameter));
}

int RvFunctionCode::BeginBlock(Procedure& procedure, const BasicBlock& block) {
  procedure_ = &procedure;
  residents_.clear();
  for (const LiveRange& range : block.ranges) {
    if (residents_.size() == RV32_REGPOOL.size()) break;
    const Variable& described = procedure.variables[static_cast<size_t>(range.variable)];
    // What changes without being named stays in memory.
    if (described.shared) continue;
    const RvVariable variable =
        described.symbol == nullptr ? RvVariable::Temp(described.temp) : RvVariable::Symbol(described.symbol);
    if (!IsResident(variable))
      residents_.push_back({variable, RV32_REGPOOL[residents_.size()], false, false});
  }
  return static_cast<int>(residents_.size());
}

bool RvFunctionCode::FinishResult() {
  return !unit_.is_rv64() || !result_is_uint32_ || vrv_addiw(enc_, kA0, kA0, 0) == 0;
}

bool RvFunctionCode::IsComplete() const {
  return epilogue_ && std::all_of(labels_.begin(), labels_.end(), [this](const auto& entry) {
           return entry.second < 0 || unit_.IsPlaced(entry.second);
         });
}

bool RvFunctionCode::WriteEpilogue() {
  epilogue_ = true;
  return_address_sites_.push_back(enc_.code.size());
  vrv_nop(enc_);
  frame_sites_.push_back(enc_.code.size());
  vrv_addi(enc_, kSp, kSp, 0);
  return vrv_ret(enc_) == 0;
}

int32_t RvFunctionCode::frame_bytes() const {
  const int64_t used = slot_words_ * unit_.word_bytes() + (has_call ? kReturnAddressBytes : 0);
  const int64_t rounded = (used + kFrameStep - 1) / kFrameStep * kFrameStep;
  return static_cast<int32_t>(std::clamp<int64_t>(rounded, kFrameStep, INT32_MAX - kFrameStep + 1));
}

void RvFunctionCode::PatchReturnAddress() {
  if (!has_call || return_address_sites_.size() != 2) return;
  const auto offset = static_cast<int32_t>(std::min<int64_t>(slot_words_ * unit_.word_bytes(), INT32_MAX));
  const uint32_t save = vrv_word_sw(kSp, offset, kRa);
  if (save == 0) return;
  vrv_poke_word(enc_, return_address_sites_[0], save);
  vrv_poke_word(enc_, return_address_sites_[1], vrv_word_lw(kRa, kSp, offset));
}

bool RvFunctionCode::PatchFrame(int32_t frame) {
  for (size_t i = 0; i < frame_sites_.size(); ++i) {
    const uint32_t word = vrv_word_addi(kSp, kSp, i == 0 ? -frame : frame);
    if (word == 0) return false;
    vrv_poke_word(enc_, frame_sites_[i], word);
  }
  return true;
}

// The labels serve the next function. The branches of one that nobody sees are of no account.
void RvFunctionCode::ReleaseLabels(bool emitted) {
  if (!emitted) enc_.fixups.resize(std::min(first_fixup_, enc_.fixups.size()));
  std::vector<int32_t> labels;
  for (const auto& entry : labels_) {
    if (entry.second >= 0) labels.push_back(entry.second);
  }
  vrv_release_labels(enc_, first_fixup_, labels);
}

bool RvFunctionCode::rv32_flush_function(bool emitted) {
  const int32_t frame = frame_bytes();
  bool settled = true;
  if (!enc_.error) {
    PatchReturnAddress();
    settled = PatchFrame(frame);
  }
  ReleaseLabels(emitted && settled);
  // A call of what could not be translated stops there instead of computing something else.
  if ((!emitted || !settled) && enc_.code.HoldsWord(start_)) enc_.code.SetWord(start_, kBreakpoint);
  if (number_ != RvUnitCode::kNone) {
    RvFunction& function = unit_.unit.functions[static_cast<size_t>(number_)];
    function.start = start_;
    function.size = enc_.code.size() - start_;
    function.frame = frame;
    function.emitted = emitted && settled;
  }
  proto_ = nullptr;
  return settled;
}

int32_t RvFunctionCode::rv32_label_for(std::string_view text) {
  const size_t end = text.find_last_not_of(" \t\r\n:");
  const auto [entry, is_new] = labels_.try_emplace(std::string(text.substr(0, end + 1)), -1);
  if (is_new && labels_.size() <= kMostLabels) entry->second = vrv_new_label(enc_);
  return entry->second;
}

}  // namespace vorc
