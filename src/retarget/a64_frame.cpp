#include "retarget/a64_frame.h"

#include <algorithm>

namespace vorc {

A64Frame::A64Frame(const Procedure& procedure)
    : procedure_(procedure), temporaries_(static_cast<size_t>(procedure.tmpvar_count)) {
  for (const Instruction* at = procedure.first; at != nullptr; at = at->next) {
    Mention(at->result, *at);
    Mention(at->operand1, *at);
    Mention(at->operand2, *at);
  }
  for (const auto& [symbol, slot] : procedure.frame) {
    if (!slot.is_parameter && slot.width > 0) local_at_.emplace(slot.offset, symbol);
  }
  is_tight_ = BytesFor(MostSlots()) > kMostBytes;
}

// What the frame takes at most if nothing is given back.
int64_t A64Frame::MostSlots() const {
  constexpr int64_t kParameterSlots = 3;  // the address of a struct, and two words of it
  const auto words = [](int64_t bytes) { return std::max<int64_t>(1, (bytes + 7) / 8); };
  int64_t count = 0;
  for (const Temporary& temporary : temporaries_) count += temporary.block == nullptr ? 0 : 1;
  for (const auto& [symbol, slot] : procedure_.frame)
    count += slot.is_parameter ? kParameterSlots : words(slot.width);
  for (const Instruction* at = procedure_.first; at != nullptr; at = at->next) {
    if (at->Is(ASMOP_PUSH_SYMBOL_PTR) || at->Is(ASMOP_PUSH_TMPVAR)) count += words(at->passed.bytes);
  }
  return count;
}

void A64Frame::Mention(const TacOperand& operand, const Instruction& instruction) {
  if (operand.kind != TacOperand::Kind::kTemp) return;
  Temporary& temporary = temporaries_[static_cast<size_t>(operand.temp)];
  const bool first = temporary.block == nullptr;
  // What is read before it is written comes from somewhere else.
  const bool begins = first && VariablesOf(instruction).defined == &operand;
  const bool goes_on = temporary.last != nullptr && temporary.block == instruction.block;
  temporary.block = instruction.block;
  temporary.last = begins || goes_on ? &instruction : nullptr;
}

// Beyond the frame's reach all places are the first one: such a function isn't kept.
int32_t A64Frame::Take(int64_t count) {
  const int64_t place = kSaved + slots_ * 8;
  slots_ += count;
  return fits() ? static_cast<int32_t>(place) : kSaved;
}

int32_t A64Frame::TakeOne() {
  if (free_.empty()) return Take(1);
  const int32_t place = free_.back();
  free_.pop_back();
  return place;
}

int32_t A64Frame::OfTemp(int32_t temp) {
  Temporary& temporary = temporaries_[static_cast<size_t>(temp)];
  if (temporary.place == kUnknown) temporary.place = temporary.last != nullptr ? TakeOne() : Take(1);
  return temporary.place;
}

int32_t A64Frame::OfSymbol(const SYM_REC* symbol) {
  const auto known = symbols_.find(symbol);
  if (known != symbols_.end()) return known->second;
  const auto slot = procedure_.frame.find(symbol);
  if (slot == procedure_.frame.end() || slot->second.is_parameter) return -1;
  const int32_t place = Take((int64_t{slot->second.width} + 7) / 8);
  symbols_.emplace(symbol, place);
  return place;
}

int32_t A64Frame::OfDistance(int32_t distance) {
  const auto local = local_at_.find(distance);
  if (local != local_at_.end()) return OfSymbol(local->second);
  const auto parameter = parameter_at_.find(distance);
  return parameter == parameter_at_.end() ? -1 : parameter->second;
}

int32_t A64Frame::AddParameter(const SYM_REC* symbol, int32_t distance) {
  const int32_t place = Take(1);
  if (symbol != nullptr) symbols_.emplace(symbol, place);
  parameter_at_.emplace(distance, place);
  return place;
}

void A64Frame::Done(const Instruction& instruction) {
  if (!is_tight_) return;
  for (const TacOperand* operand : {&instruction.result, &instruction.operand1, &instruction.operand2}) {
    if (operand->kind != TacOperand::Kind::kTemp) continue;
    Temporary& temporary = temporaries_[static_cast<size_t>(operand->temp)];
    if (temporary.last != &instruction || temporary.place == kUnknown) continue;
    free_.push_back(temporary.place);
    temporary.last = nullptr;
    temporary.place = kUnknown;
  }
}

}  // namespace vorc
