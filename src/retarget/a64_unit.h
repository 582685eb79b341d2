#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "retarget/a64_data.h"
#include "retarget/a64_encode.h"

namespace vorc {

/// What the functions of one compilation share: the code, the names in it, the data.
class A64Unit {
 public:
  A64Unit() { va64_init(enc, 0); }

  /// A fresh label that reports know by a name; -1 if there is none left.
  int32_t NewLabel(std::string_view name);
  /// The label at which a function begins.
  int32_t FunctionLabel(std::string_view name);
  /// The routine that makes the addresses in initial values right for where the image lies.
  int32_t SettleLabel() { return FunctionLabel(kSettle); }
  /// Puts the address of a function, variable or text into a register.
  int AddressOf(uint32_t rd, std::string_view name);

  /// Appends the data and all that the code asked for. To be called once, behind the last function.
  void Finish();
  /// Fills in all distances. False with the reason in the encoder.
  bool Resolve();
  /// One line for each label that is branched to and never placed.
  std::string MissingLabels() const;

  Va64Encoder enc;
  A64Data data;

 private:
  struct AddressSite {
    uint32_t offset;
    std::string name;
  };

  static constexpr std::string_view kSettle = "(settle addresses)";

  uint32_t PlaceOfFunction(std::string_view name) const;
  void EmitSettle();

  std::vector<std::string> label_names_;
  std::unordered_map<std::string, int32_t> function_labels_;
  std::vector<AddressSite> sites_;
  std::string lost_address_;  ///< the first name that leads nowhere
};

}  // namespace vorc
