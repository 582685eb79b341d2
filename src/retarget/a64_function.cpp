#include "retarget/a64_function.h"

#include <charconv>

#include "codegen/frame.h"
#include "program/members.h"

namespace vorc {

namespace {

constexpr int64_t kMostImmediate = 4095;
constexpr uint32_t kTrap = 0xD4200020;  // BRK #1

using Access = int (*)(Va64Encoder& enc, uint32_t rt, uint32_t base, int32_t offset);
struct AccessRow {
  int bytes;
  Access load;
  Access load_unsigned;
  Access store;
};
constexpr AccessRow kAccess[] = {
    {1, va64_ldrsb, va64_ldrb, va64_strb},
    {2, va64_ldrsh, va64_ldrh, va64_strh},
    {4, va64_ldrsw, va64_ldr32, va64_str32},
    {8, va64_ldr, va64_ldr, va64_str},
};

using Conversion = int (*)(Va64Encoder& enc, uint32_t rd, uint32_t rn);
struct ConversionRow {
  int bytes;
  Conversion with_sign;
  Conversion with_zeros;
};
constexpr ConversionRow kConversions[] = {
    {1, va64_sxtb, va64_uxtb}, {2, va64_sxth, va64_uxth}, {4, va64_sxtw, va64_uxtw}};

const AccessRow& AccessOfBytes(int bytes) {
  for (const AccessRow& row : kAccess) {
    if (row.bytes == bytes) return row;
  }
  return kAccess[3];
}

bool ParseNumber(std::string_view text, uint64_t* number) {
  const bool negative = text.starts_with('-');
  const char* first = text.data() + (negative ? 1 : 0);
  const char* last = text.data() + text.size();
  const auto [end, error] = std::from_chars(first, last, *number);
  if (negative) *number = 0 - *number;
  return error == std::errc() && end == last;
}

bool IsScalar(const SYM_REC* symbol) {
  const ValueType type = ValueType::OfSymbol(*symbol);
  return (symbol->IsParameter || !type.IsArray()) && !type.IsStruct();
}

}  // namespace

A64Function::A64Function(A64Unit& unit, const Procedure& procedure)
    : unit_(unit),
      enc_(unit.enc),
      procedure_(procedure),
      name_(procedure.name),
      start_(va64_here(unit.enc)),
      first_fixup_(unit.enc.fixups.size()),
      frame_(procedure),
      end_label_(unit.NewLabel(name_ + "_end")),
      result_(PassedOf(procedure.slot, ValueType::OfType(procedure.proto->ReturnType))) {
  va64_place_label(enc_, unit_.FunctionLabel(name_));
  BeginFrame();
  parameters_taken_ = TakeParameters();
  for (const Instruction* at = procedure.first; at != nullptr; at = at->next) {
    if (!NamesAddresses(at->operand1) && !NamesAddresses(at->operand2)) continue;
    va64_bl(enc_, unit_.SettleLabel());
    break;
  }
}

// The frame's size is filled in when the function is closed.
void A64Function::BeginFrame() {
  adjustment_sites_.push_back(va64_here(enc_));
  va64_sub_imm(enc_, kSp, kSp, 16, 0);
  va64_str(enc_, kX29, kSp, 0);
  va64_str(enc_, kX30, kSp, 8);
}

void A64Function::Close(bool kept) {
  va64_place_label(enc_, end_label_);
  va64_ldr(enc_, kX29, kSp, 0);
  va64_ldr(enc_, kX30, kSp, 8);
  adjustment_sites_.push_back(va64_here(enc_));
  va64_add_imm(enc_, kSp, kSp, 16, 0);
  va64_ret(enc_);
  ReleaseLabels();
  if (enc_.error) return;
  constexpr uint32_t kImmediateField = 0xFFF << 10;
  const auto fill = [this](uint32_t site, uint32_t field) {
    enc_.code.SetWord(site, (enc_.code.Word(site) & ~kImmediateField) | field << 10);
  };
  if (!kept) return enc_.code.SetWord(start_, kTrap);
  for (const uint32_t site : adjustment_sites_) fill(site, frame_.bytes());
  for (const IncomingWord& word : incoming_) fill(word.site, (frame_.bytes() + word.distance) / 8);
}

// Nothing outside of the function branches to its labels.
void A64Function::ReleaseLabels() {
  std::vector<int32_t> labels = {end_label_};
  for (const auto& [text, label] : labels_) labels.push_back(label);
  std::erase_if(
      labels, [this](int32_t label) { return label < 0 || !enc_.labels[static_cast<size_t>(label)].placed; });
  va64_release_labels(enc_, first_fixup_, labels);
}

bool A64Function::KnowsName(std::string_view name) const {
  return unit_.data.Has(name) || unit_.data.IsText(name) ||
         procedure_.context.taken_names.contains(std::string(name));
}

bool A64Function::NamesAddresses(const TacOperand& operand) const {
  if (!unit_.data.holds_any_address()) return false;
  if (operand.kind == TacOperand::Kind::kLabel) return unit_.data.HoldsAddresses(operand.text);
  if (operand.kind != TacOperand::Kind::kSymbol || procedure_.frame.contains(operand.symbol)) return false;
  return unit_.data.HoldsAddresses(operand.symbol->name->Text);
}

bool A64Function::PlaceOf(const TacOperand& operand, Place* place) {
  if (operand.kind == TacOperand::Kind::kTemp) {
    *place = {kSp, frame_.OfTemp(operand.temp), {8, true}};
    return true;
  }
  if (operand.kind != TacOperand::Kind::kSymbol || !IsScalar(operand.symbol)) return false;
  const SYM_REC* symbol = operand.symbol;
  const AccessWidth width = AccessOfSymbol(procedure_.slot, symbol);
  const int32_t in_frame = frame_.OfSymbol(symbol);
  if (in_frame >= 0) {
    *place = {kSp, in_frame, width};
    return true;
  }
  *place = {kX12, 0, width};
  if (symbol->OwnerStruct != nullptr) {
    const STRUCT_REC* home = procedure_.proto->OwnerClass;
    const int32_t pointer = frame_.OfDistance(-procedure_.total_arg_size);
    if (home == nullptr || pointer < 0) return false;
    va64_ldr(enc_, kX12, kSp, pointer);
    AddNumber(kX12, kX12, MemberDataOffset(FindStructMember(procedure_.slot, home, symbol->name)));
    return true;
  }
  const std::string_view name = symbol->name->Text;
  return unit_.data.Has(name) && unit_.AddressOf(kX12, name) == 0;
}

void A64Function::Load(uint32_t reg, const Place& place) {
  const AccessRow& row = AccessOfBytes(place.width.bytes);
  (place.width.is_unsigned ? row.load_unsigned : row.load)(enc_, reg, place.base, place.offset);
}

void A64Function::Store(uint32_t reg, const Place& place) {
  AccessOfBytes(place.width.bytes).store(enc_, reg, place.base, place.offset);
}

bool A64Function::Read(const TacOperand& operand, uint32_t reg) {
  if (operand.kind == TacOperand::Kind::kNumber) {
    uint64_t number = 0;
    return ParseNumber(operand.text, &number) && va64_mov_imm64(enc_, reg, number) == 0;
  }
  if (operand.kind == TacOperand::Kind::kLabel)
    return KnowsName(operand.text) && unit_.AddressOf(reg, operand.text) == 0;
  Place place;
  if (!PlaceOf(operand, &place)) return false;
  Load(reg, place);
  return true;
}

bool A64Function::Write(const TacOperand& operand, uint32_t reg) {
  Place place;
  if (!PlaceOf(operand, &place)) return false;
  Store(reg, place);
  return true;
}

void A64Function::AddNumber(uint32_t rd, uint32_t rn, int64_t number) {
  if (number >= 0 && number <= kMostImmediate) {
    va64_add_imm(enc_, rd, rn, static_cast<int32_t>(number), 0);
  } else if (number < 0 && number >= -kMostImmediate) {
    va64_sub_imm(enc_, rd, rn, static_cast<int32_t>(-number), 0);
  } else {
    va64_mov_imm64(enc_, kX10, static_cast<uint64_t>(number));
    va64_add(enc_, rd, rn, kX10);
  }
}

void A64Function::Extend(uint32_t reg, const PassedValue& value) {
  for (const ConversionRow& row : kConversions) {
    if (row.bytes == value.bytes) (value.is_unsigned ? row.with_zeros : row.with_sign)(enc_, reg, reg);
  }
}

int32_t A64Function::LabelOf(std::string_view text) {
  const auto [entry, is_new] = labels_.try_emplace(std::string(text), -1);
  if (is_new) entry->second = unit_.NewLabel(text);
  return entry->second;
}

bool A64Function::PlaceLabel(std::string_view text) {
  const int32_t label = LabelOf(text);
  if (label < 0 || enc_.labels[static_cast<size_t>(label)].placed) return false;
  return va64_place_label(enc_, label) == 0;
}

}  // namespace vorc
