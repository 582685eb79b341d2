#pragma once

#include <cstdint>

#include "base/function_ref.h"
#include "program/slot.h"

namespace vorc {

/// One value of an initializer and the place in the variable that it fills.
struct InitializerLeaf {
  const SYM_REC* symbol = nullptr;  ///< gives the type: the variable, or a member of its struct
  int64_t offset = 0;               ///< bytes from the start of the variable
  int64_t text_room = 0;            ///< elements of a char array that a text fills, else 0
  const INITIALIZER* element = nullptr;
};

/// Matches the values of an initializer with the scalars of a variable, in order: nested lists
/// open a row, a member or a struct, bare values run on. Behind the parser every list fits.
class InitializerWalk {
 public:
  using Visitor = FunctionRef<void(const InitializerLeaf& leaf)>;
  /// Told of a value that doesn't fit. The format takes the variable's name.
  using Complaint = FunctionRef<void(const INITIALIZER* misfit, const char* format)>;

  InitializerWalk(C_SLOT& slot, Visitor visit) : InitializerWalk(slot, visit, kSilent) {}
  InitializerWalk(C_SLOT& slot, Visitor visit, Complaint complain)
      : slot_(slot), visit_(visit), complain_(complain) {}

  /// Visits every value. Answers how many rows an open first dimension takes.
  int64_t Run(const SYM_REC* symbol);
  bool good() const { return good_; }

 private:
  void FillArray(const SYM_REC* symbol, int dimension, int64_t offset, const INITIALIZER** at);
  void FillStruct(STRUCT_REC* record, int64_t offset, const INITIALIZER** at);
  void FillMembers(STRUCT_REC* record, int64_t offset, const INITIALIZER** at);
  void FillElement(const SYM_REC* symbol, int64_t offset, const INITIALIZER** at);
  int64_t FillRows(const SYM_REC* symbol, int dimension, int64_t offset, const INITIALIZER** at);
  int64_t RowSize(const SYM_REC* symbol, int dimension) const;
  void Fail(const INITIALIZER* element, const char* format) {
    good_ = false;
    complain_(element, format);
  }

  static constexpr auto kSilent = [](const INITIALIZER*, const char*) {};

  C_SLOT& slot_;
  Visitor visit_;
  Complaint complain_;
  bool good_ = true;
};

}  // namespace vorc
