#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "base/reserved_memory.h"
#include "builtins/runtime.h"

namespace vorc {

/// An address some bytes further; it may be none that exists, and is checked before it is used.
inline char* Displaced(const char* address, int64_t bytes) {
  return reinterpret_cast<char*>(reinterpret_cast<uintptr_t>(address) + static_cast<uintptr_t>(bytes));
}

/// All memory that a script can reach by an address: its stack, its data and its texts. Addresses
/// are checked against these ranges, so that a wild pointer is an error of the script and never one
/// of the program. Data lies low enough for an address to survive in 32 bits.
class ScriptMemory final : public ScriptTexts {
 public:
  static constexpr size_t kStackWords = 65536;
  static constexpr size_t kWordSize = 8;

  ScriptMemory();

  char* stack() const { return data_.data(); }
  /// Zeroed memory for data, or null when all is used up.
  char* Allocate(size_t size) override;
  /// A NUL-terminated copy that lives to the end of the run. Null when all is used up.
  char* CopyText(std::string_view text) override;
  char* AllocateText(size_t size);

  /// True if `size` bytes at `address` belong to the script.
  bool Contains(const char* address, size_t size) const {
    return Inside(data_, address, size) || Inside(texts_, address, size);
  }

 private:
  static bool Inside(const ReservedMemory& memory, const char* address, size_t size) {
    const size_t offset = reinterpret_cast<uintptr_t>(address) - reinterpret_cast<uintptr_t>(memory.data());
    return offset < memory.size() && size <= memory.size() - offset;
  }

  ReservedMemory data_;
  ReservedMemory texts_;
  size_t data_used_;
  size_t texts_used_ = 0;
};

}  // namespace vorc
