#include "retarget/a64_data.h"

#include <algorithm>

#include "program/layout.h"
#include "program/value_type.h"

namespace vorc {

namespace {

constexpr int64_t kMostData = int64_t{64} * 1024 * 1024;
constexpr uint32_t kPage = 4096;
constexpr uint32_t kAlignment = 8;
constexpr std::string_view kTextLabel = "lfnnnnnn_unnamed_label_";

bool HasStorage(const SYM_REC* symbol) {
  return !symbol->IsLabel && !symbol->OnlyCalled && !symbol->ImplicitExtern &&
         (symbol->StorageType & EXTERN_VAR) == 0;
}

int64_t SizeOf(CodegenContext& context, const SYM_REC* symbol) {
  ValueType type = ValueType::OfSymbol(*symbol);
  while (type.IsArray()) type = type.Element();
  return SizeProduct(type.Size(context.slot), ElementCount(context, symbol));
}

void AppendNumber(Va64Encoder& enc, const InitialCell& cell) {
  constexpr int64_t kWidest = 32;
  const int64_t count = std::min(cell.bytes, kWidest);
  uint8_t bytes[kWidest] = {};
  for (int64_t i = 0; i < count; ++i) bytes[i] = ByteOf(cell, i);
  va64_bytes(enc, {bytes, static_cast<size_t>(count)});
}

}  // namespace

void A64Data::Collect(CodegenContext& context) {
  const auto place = [&](const SYM_REC* symbol) {
    if (!HasStorage(symbol)) return;
    const int64_t size = SizeOf(context, symbol);
    if (size <= 0 || size > kMostData - int64_t{size_}) return;
    Variable variable;
    variable.name = symbol->name->Text;
    variable.offset = size_;
    variable.size = static_cast<uint32_t>(size);
    if (symbol->Initializer.First != nullptr)
      variable.cells = CollectInitialCells(context, cell_texts_, symbol);
    for (const auto& [offset, cell] : variable.cells) variable.holds_addresses |= !cell.name.empty();
    holds_any_address_ |= variable.holds_addresses;
    if (!by_name_.emplace(variable.name, variables_.size()).second) return;
    size_ = (size_ + variable.size + kAlignment - 1) & ~(kAlignment - 1);
    variables_.push_back(std::move(variable));
  };
  for (const SYM_REC* symbol : context.slot.Globals.Symbols) place(symbol);
  for (const SYM_REC* symbol : context.slot.ProcStatics) place(symbol);
}

bool A64Data::HoldsAddresses(std::string_view name) const {
  const auto found = by_name_.find(std::string(name));
  return found != by_name_.end() && variables_[found->second].holds_addresses;
}

bool A64Data::IsText(std::string_view name) const {
  return name.starts_with(kTextLabel);
}

void A64Data::TakeTexts(const UnnamedStrings& texts) {
  for (const UnnamedStrings::Record& record : texts.records()) texts_.emplace(record.label, record.text);
}

void A64Data::AppendVariable(Va64Encoder& enc, const Variable& variable) {
  const uint32_t start = base_ + variable.offset;
  for (const auto& [offset, cell] : variable.cells) {
    if (offset >= variable.size || !cell.name.empty()) continue;
    const uint32_t at = start + static_cast<uint32_t>(offset);
    // A value may reach into what one before it left, as a union's members do.
    if (va64_here(enc) > at) continue;
    enc.code.AppendZeros(at - va64_here(enc));
    AppendNumber(enc, cell);
  }
  const uint32_t end = start + variable.size;
  if (va64_here(enc) < end) enc.code.AppendZeros(end - va64_here(enc));
}

bool A64Data::Append(Va64Encoder& enc, FunctionPlace function) {
  if (variables_.empty() && texts_.empty()) return true;
  va64_align(enc, kPage);
  base_ = va64_here(enc);
  for (const Variable& variable : variables_) {
    va64_align(enc, kAlignment);
    AppendVariable(enc, variable);
  }
  for (const auto& [label, text] : texts_) {
    text_places_[label] = va64_here(enc);
    va64_string(enc, text);
  }
  for (const UnnamedStrings::Record& record : cell_texts_.records()) {
    cell_text_places_[record.label] = va64_here(enc);
    va64_string(enc, record.text);
  }
  return !holds_any_address_ || AppendAddressList(enc, function);
}

uint32_t A64Data::PlaceOf(std::string_view name) const {
  const auto variable = by_name_.find(std::string(name));
  if (variable != by_name_.end()) return base_ + variables_[variable->second].offset;
  const auto text = text_places_.find(std::string(name));
  return text == text_places_.end() ? kNowhere : text->second;
}

uint32_t A64Data::TargetOf(const InitialCell& cell, FunctionPlace function) const {
  if (cell.is_text) return cell_text_places_.at(cell.name);
  const uint32_t place = by_name_.contains(cell.name) ? PlaceOf(cell.name) : function(cell.name);
  return place == kNowhere ? kNowhere : place + static_cast<uint32_t>(cell.distance);
}

bool A64Data::AppendAddressList(Va64Encoder& enc, FunctionPlace function) {
  va64_align(enc, kAlignment);
  AppendNumber(enc, InitialCell{8});
  address_list_ = va64_here(enc);
  bool complete = true;
  for (const Variable& variable : variables_) {
    for (const auto& [offset, cell] : variable.cells) {
      if (cell.name.empty()) continue;
      const uint32_t target = TargetOf(cell, function);
      complete &= target != kNowhere;
      va64_word(enc, base_ + variable.offset + static_cast<uint32_t>(offset));
      va64_word(enc, target);
    }
  }
  va64_word(enc, 0);
  return complete;
}

}  // namespace vorc
