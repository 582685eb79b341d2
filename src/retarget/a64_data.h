#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/function_ref.h"
#include "codegen/procedure.h"
#include "output/initial_values.h"
#include "retarget/a64_encode.h"

namespace vorc {

/// The variables and texts of a unit that live outside of frames. They stand behind the code, from the next
/// multiple of 4096 on, each on a multiple of 8.
class A64Data {
 public:
  struct Variable {
    std::string name;
    uint32_t offset = 0;  ///< from the start of the data
    uint32_t size = 0;
    bool holds_addresses = false;  ///< its initial value does
    InitialCells cells;
  };

  /// Places all variables of the compilation. One that is too large gets no place.
  void Collect(CodegenContext& context);
  /// Takes the texts that the code names.
  void TakeTexts(const UnnamedStrings& texts);

  bool Has(std::string_view name) const { return by_name_.contains(std::string(name)); }
  bool HoldsAddresses(std::string_view name) const;
  bool holds_any_address() const { return holds_any_address_; }
  const std::vector<Variable>& variables() const { return variables_; }
  bool IsText(std::string_view name) const;

  /// Where a function stands in the code, or `kNowhere`.
  static constexpr uint32_t kNowhere = UINT32_MAX;
  using FunctionPlace = FunctionRef<uint32_t(std::string_view name)>;
  /// Appends all data to the code. False if an address leads nowhere.
  bool Append(Va64Encoder& enc, FunctionPlace function);
  /// Where a variable or text stands in the image, once the data is appended.
  uint32_t PlaceOf(std::string_view name) const;
  /// Where the list of addresses to settle stands: pairs of a place and what it leads to, then a zero. In
  /// front of it stands the address at which they were settled last.
  uint32_t address_list() const { return address_list_; }

 private:
  void AppendVariable(Va64Encoder& enc, const Variable& variable);
  uint32_t TargetOf(const InitialCell& cell, FunctionPlace function) const;
  bool AppendAddressList(Va64Encoder& enc, FunctionPlace function);

  std::vector<Variable> variables_;
  std::unordered_map<std::string, size_t> by_name_;
  std::map<std::string, std::string_view, std::less<>> texts_;  ///< of the code, by their labels
  std::unordered_map<std::string, uint32_t> text_places_;
  UnnamedStrings cell_texts_;
  std::unordered_map<std::string, uint32_t> cell_text_places_;
  bool holds_any_address_ = false;
  uint32_t size_ = 0;
  uint32_t base_ = 0;
  uint32_t address_list_ = 0;
};

}  // namespace vorc
