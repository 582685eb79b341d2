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
/// open a row, a member or a struct, bare values run on. Reports lists that don't fit.
class InitializerWalk {
 public:
  using Visitor = FunctionRef<void(const InitializerLeaf& leaf)>;

  InitializerWalk(C_SLOT& slot, Visitor visit) : slot_(slot), visit_(visit) {}

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
  void Fail(const INITIALIZER* element, const char* format);

  C_SLOT& slot_;
  Visitor visit_;
  const SYM_REC* variable_ = nullptr;
  bool good_ = true;
};

}  // namespace vorc
