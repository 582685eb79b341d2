#include "retarget/rv_unit_code.h"

#include <algorithm>

#include "program/layout.h"

namespace vorc {
namespace {

constexpr size_t kMostFunctions = 256;
constexpr size_t kMostGlobals = 128;
constexpr size_t kMostSites = 512;
constexpr size_t kLongestName = 127;
// The image holds every byte of the data.
constexpr int64_t kMostData = int64_t{1} << 27;

// Only the lower half of a longer pointer counts, so it takes a register's width.
bool IsPointer(const SYM_REC* symbol) {
  return symbol->Shape.DimensionCount == 0 && (symbol->TotalDepth > 0 || symbol->IsFunctionPointer);
}

// Elements of a variable, 0 where a dimension isn't known.
int64_t ElementCount(const SYM_REC* symbol) {
  int64_t count = 1;
  for (int i = 0; i < symbol->Shape.DimensionCount; ++i) {
    const int64_t dimension = symbol->Shape.Dimensions[i];
    if (dimension < 1 || dimension > kMostData) return 0;
    count = std::min(count * dimension, kMostData);
  }
  return count;
}

}  // namespace

int32_t RvUnitCode::FunctionNumber(std::string_view name) {
  const auto [entry, is_new] = function_numbers_.try_emplace(std::string(name), kNone);
  if (!is_new || unit.functions.size() == kMostFunctions) return entry->second;
  entry->second = static_cast<int32_t>(unit.functions.size());
  RvFunction& function = unit.functions.emplace_back();
  function.name = name.substr(0, kLongestName);
  function.label = vrv_new_label(enc);
  return entry->second;
}

int32_t RvUnitCode::rv32_func_label(std::string_view name) {
  const int32_t number = FunctionNumber(name);
  return number == kNone ? kNone : unit.functions[static_cast<size_t>(number)].label;
}

int32_t RvUnitCode::rv32_global_for(const C_SLOT& slot, const SYM_REC* symbol, std::string_view name) {
  const auto [entry, is_new] = global_numbers_.try_emplace(symbol, kNone);
  if (!is_new || unit.globals.size() == kMostGlobals) return entry->second;
  const int64_t count = ElementCount(symbol);
  const int64_t needed = count == 0 || IsPointer(symbol) ? 0 : GetDeclaredDataSize(slot, symbol);
  const int64_t words = std::max(count, (needed + word_bytes_ - 1) / word_bytes_);
  if (count == 0 || unit.data_size + words * word_bytes_ > kMostData) return kNone;
  entry->second = static_cast<int32_t>(unit.globals.size());
  const auto size = static_cast<uint32_t>(words * word_bytes_);
  unit.globals.push_back({std::string(name.substr(0, kLongestName)), unit.data_size, size});
  unit.data_size += size;
  return entry->second;
}

int32_t RvUnitCode::GlobalOf(const SYM_REC* symbol) const {
  const auto entry = global_numbers_.find(symbol);
  return entry == global_numbers_.end() ? kNone : entry->second;
}

bool RvUnitCode::rv32_emit_global_addr(uint32_t reg, int32_t global) {
  if (global == kNone || unit.sites.size() == kMostSites) return false;
  unit.sites.push_back({enc.code.size(), global});
  return vrv_auipc(enc, reg, 0) == 0 && vrv_addi(enc, reg, reg, 0) == 0;
}

bool RvUnitCode::IsPlaced(int32_t label) const {
  return label >= 0 && enc.labels[static_cast<size_t>(label)].placed;
}

}  // namespace vorc
