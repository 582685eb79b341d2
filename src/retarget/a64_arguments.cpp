#include "retarget/a64_arguments.h"

#include "program/layout.h"
#include "retarget/a64_registers.h"

namespace vorc {

namespace {

constexpr int32_t kMostBytesByValue = 16;
constexpr int32_t kMostBytesOfReals = 32;  // four doubles go in registers of their own
constexpr uint32_t kWord = 8;

bool HoldsReals(const STRUCT_REC* record) {
  for (const SYM_REC* member : record->MembersHeader.Symbols) {
    const bool is_this = member == record->This || member->Struct == record;
    if (is_this || member->TotalDepth > 0 || member->IsFunctionPointer) continue;
    if (member->ValueType == Tok::float_ || member->ValueType == Tok::double_) return true;
    if (member->Struct != nullptr && GetObjectStructSize(member->Struct) > 0 && HoldsReals(member->Struct))
      return true;
  }
  for (const PARENT_NODE* parent = record->Parents.First; parent != nullptr; parent = parent->Next) {
    if (HoldsReals(parent->Struct)) return true;
  }
  return false;
}

}  // namespace

bool CrossesByValue(const PassedValue& value) {
  return value.record != nullptr && value.bytes <= kMostBytesByValue;
}

ArgumentPlace ArgumentPlacer::Place(const PassedValue& value) {
  using Kind = ArgumentPlace::Kind;
  if (value.bytes <= 0) return {};
  if (value.record != nullptr && value.bytes <= kMostBytesOfReals && HoldsReals(value.record)) return {};
  if (value.is_real && real_ < kArgumentRegisters) return {Kind::kReal, real_++, 1};
  const uint32_t words = CrossesByValue(value) ? (static_cast<uint32_t>(value.bytes) + kWord - 1) / kWord : 1;
  ArgumentPlace place;
  place.words = words;
  if (!value.is_real && general_ + words <= kArgumentRegisters) {
    place.kind = Kind::kGeneral;
    place.first = general_;
    general_ += words;
    return place;
  }
  // What doesn't fit whole leaves no register for those behind it.
  if (!value.is_real) general_ = kArgumentRegisters;
  place.kind = Kind::kStack;
  place.first = stack_;
  stack_ += words * kWord;
  return place;
}

}  // namespace vorc
