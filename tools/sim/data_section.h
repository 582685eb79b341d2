#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "sim/program.h"
#include "sim/scanner.h"

namespace vorc::sim {

/// What is wrong with an assembly text, and in which of its lines (from 1).
struct AssemblyError {
  uint32_t line = 0;
  std::string message;
};

/// An address that stands in the data and is known only when all names are.
struct DataFixup {
  size_t offset = 0;
  int width = 8;
  std::string_view name;
  int64_t addend = 0;
  uint32_t line = 0;
};

/// Splits "name+12" or "name-4" at its last sign.
void SplitAddend(std::string_view text, std::string_view* name, int64_t* addend);

/// The variables of all BSS and DATA sections of a text, one behind the other.
class DataSection {
 public:
  /// `gap` bytes stay free behind each variable; `limit` is what all may take together; `address_bytes` is
  /// the width of an address among bytes.
  DataSection(uint64_t gap, uint64_t limit, int address_bytes)
      : gap_(gap), limit_(limit), address_bytes_(address_bytes) {}

  /// Reads from behind BEGIN to END. False with an error for what it doesn't understand.
  bool Read(Scanner* scanner, AssemblyError* error);
  /// EXTERN name, the word EXTERN having been read.
  bool ReadExtern(Scanner* scanner, AssemblyError* error);

  std::vector<uint8_t> bytes;
  std::vector<DataSymbol> symbols;  // addresses count from the section's begin
  std::vector<uint32_t> lines;      // of the symbols
  std::vector<DataFixup> fixups;
  std::unordered_set<std::string_view> externs;

 private:
  bool ReadVariable(Scanner* scanner, std::string_view directive, AssemblyError* error);
  bool ReadDimensions(Scanner* scanner, DataSymbol* symbol, AssemblyError* error);
  bool ReadValues(Scanner* scanner, const DataSymbol& symbol, AssemblyError* error);
  bool ReadValue(const Token& token, const DataSymbol& symbol, AssemblyError* error);
  bool AppendNumber(const Token& token, int width, AssemblyError* error);
  bool Fill(uint64_t size, uint32_t line, AssemblyError* error);
  bool TooLarge(uint32_t line, AssemblyError* error) const;

  uint64_t gap_;
  uint64_t limit_;
  int address_bytes_;
};

}  // namespace vorc::sim
