#include "retarget/a64_unit.h"

#include "base/format.h"
#include "retarget/a64_registers.h"

namespace vorc {

int32_t A64Unit::NewLabel(std::string_view name) {
  const int32_t label = va64_new_label(enc);
  if (label < 0) return label;
  const auto number = static_cast<size_t>(label);
  if (number >= label_names_.size()) label_names_.resize(number + 1);
  label_names_[number] = name;
  return label;
}

int32_t A64Unit::FunctionLabel(std::string_view name) {
  const auto [entry, is_new] = function_labels_.try_emplace(std::string(name), -1);
  if (is_new) entry->second = NewLabel(name);
  return entry->second;
}

int A64Unit::AddressOf(uint32_t rd, std::string_view name) {
  if (!data.Has(name) && !data.IsText(name)) FunctionLabel(name);
  sites_.push_back({va64_here(enc), std::string(name)});
  return va64_address(enc, rd);
}

uint32_t A64Unit::PlaceOfFunction(std::string_view name) const {
  const auto found = function_labels_.find(std::string(name));
  if (found == function_labels_.end() || found->second < 0) return A64Data::kNowhere;
  const CodeLabel& label = enc.labels[static_cast<size_t>(found->second)];
  return label.placed ? label.offset : A64Data::kNowhere;
}

// x9 is where the image lies, x10 the list, x11 and x12 a place and what it leads to; x16 is where the
// image lay when this was done before.
void A64Unit::EmitSettle() {
  va64_align(enc, 4);
  va64_place_label(enc, SettleLabel());
  const int32_t again = NewLabel("settle");
  const int32_t settled = NewLabel("settled");
  const int32_t done = NewLabel("settled before");
  const uint32_t image = va64_here(enc);
  va64_address(enc, kX9);
  const uint32_t list = va64_here(enc);
  va64_address(enc, kX10);
  va64_sub_imm(enc, kX16, kX10, 8, 0);
  va64_ldr(enc, kX11, kX16, 0);
  va64_cmp(enc, kX11, kX9);
  va64_bcond(enc, kEq, done);
  va64_place_label(enc, again);
  va64_ldr32(enc, kX11, kX10, 0);
  va64_cbz(enc, kX11, settled);
  va64_ldr32(enc, kX12, kX10, 4);
  va64_add(enc, kX11, kX11, kX9);
  va64_add(enc, kX12, kX12, kX9);
  va64_str(enc, kX12, kX11, 0);
  va64_add_imm(enc, kX10, kX10, 8, 0);
  va64_b(enc, again);
  va64_place_label(enc, settled);
  va64_str(enc, kX9, kX16, 0);
  va64_place_label(enc, done);
  va64_ret(enc);
  if (!data.Append(enc, [this](std::string_view name) { return PlaceOfFunction(name); }))
    lost_address_ = "an initial value";
  va64_poke_address(enc, image, 0);
  va64_poke_address(enc, list, data.address_list());
}

void A64Unit::Finish() {
  if (data.holds_any_address())
    EmitSettle();
  else
    data.Append(enc, [this](std::string_view name) { return PlaceOfFunction(name); });
  if (enc.error) return;
  for (const AddressSite& site : sites_) {
    uint32_t place = data.PlaceOf(site.name);
    if (place == A64Data::kNowhere) place = PlaceOfFunction(site.name);
    if (place == A64Data::kNowhere)
      lost_address_ = site.name;
    else
      va64_poke_address(enc, site.offset, place);
  }
}

bool A64Unit::Resolve() {
  if (va64_resolve(enc) != 0) return false;
  if (lost_address_.empty()) return true;
  enc.error = true;
  enc.message = Format("the address of %s is taken but never defined", lost_address_.c_str());
  return false;
}

std::string A64Unit::MissingLabels() const {
  std::string lines;
  for (size_t i = 0; i < enc.labels.size(); ++i) {
    if (!enc.labels[i].placed)
      lines += Format("vorc:   label %d '%s' is branched to but never defined\n", static_cast<int>(i),
                      label_names_[i].c_str());
  }
  return lines;
}

}  // namespace vorc
