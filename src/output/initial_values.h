#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "codegen/procedure.h"

namespace vorc {

/// A number of some bytes, or the address of a name.
struct InitialCell {
  int64_t bytes = 1;
  uint64_t number = 0;
  uint64_t high = 0;     ///< of what is wider than eight bytes; its sign fills what is wider still
  std::string name{};    ///< as the assembler knows it; empty for a number
  int64_t distance = 0;  ///< bytes behind the name
  bool is_text = false;  ///< the name is that of a text without a variable
};

/// A byte of a cell's number, from the lowest on.
uint8_t ByteOf(const InitialCell& cell, int64_t index);

using InitialCells = std::map<int64_t, InitialCell>;  ///< by their distance from the variable's start

/// The scalars of a variable's initial value that aren't left out. Texts without a variable go to `strings`.
InitialCells CollectInitialCells(CodegenContext& context, UnnamedStrings& strings, const SYM_REC* symbol);

/// Writes the initial value of a variable behind its "= ", with the line's end.
void WriteInitialValue(CodegenContext& context, const SYM_REC* symbol);
/// How many elements, all dimensions multiplied; an open first one is as long as its list.
int64_t ElementCount(CodegenContext& context, const SYM_REC* symbol);

}  // namespace vorc
