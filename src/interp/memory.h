#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "base/reserved_memory.h"
#include "builtins/runtime.h"
#include "interp/text_heap.h"

namespace vorc {

/// An address some bytes further; it may be none that exists, and is checked before it is used.
inline char* Displaced(const char* address, int64_t bytes) {
  return reinterpret_cast<char*>(reinterpret_cast<uintptr_t>(address) + static_cast<uintptr_t>(bytes));
}

/// All memory that a script can reach by an address: its stack, its data and its texts. Addresses
/// are checked against these ranges, so that a wild pointer is an error of the script and never one
/// of the program. Data lies low enough for an address to survive in 32 bits.
///
/// Behind each range lies a guard of zeros that no script can write: a text that isn't ended ends
/// there, and so does a number that is read wider than it was checked.
class ScriptMemory final : public ScriptTexts {
 public:
  static constexpr size_t kStackWords = 65536;
  static constexpr size_t kWordSize = 8;
  /// A frame's temporaries lie this far below its base, in front of all that a script can reach.
  static constexpr size_t kShadowDistance = kStackWords * kWordSize;

  ScriptMemory();

  bool ready() const { return data_.data() != nullptr && texts_.data() != nullptr; }
  char* stack() const { return script_data_; }
  /// Zeroed memory for data, or null when all is used up.
  char* Allocate(size_t size) override;
  /// A NUL-terminated copy that lives as long as something refers to it. Null when all is used up.
  char* CopyText(std::string_view text) override;
  /// One that lives to the end of the run.
  char* CopyLiteral(std::string_view text);
  char* AllocateText(size_t size) { return texts_.Allocate(size); }

  /// True if `size` bytes at `address` belong to the script.
  bool Contains(const char* address, size_t size) const {
    return InData(address, size) || Inside(texts_.data(), texts_.size(), address, size);
  }

  /// The same for the stack and the data, where most of what a script reaches lies.
  bool InData(const char* address, size_t size) const {
    return Inside(script_data_, data_.size() - kShadowSize, address, size);
  }

  /// The same for an address that a script reads or writes behind. Counted where that is in a text.
  bool Reach(const char* address, size_t size) const {
    if (InData(address, size)) return true;
    if (!Inside(texts_.data(), texts_.size(), address, size)) return false;
    ++texts_reached_;
    return true;
  }
  /// Grows whenever a text may have been changed through a pointer.
  uint64_t texts_reached() const { return texts_reached_; }

  bool WantsSweep() const { return texts_.WantsSweep(); }
  /// Gives back all texts that neither the script's memory nor one of the given stretches refers to.
  /// `keep` is called with the heap, to keep what else is referred to.
  template <typename KeepRoots>
  void SweepTexts(KeepRoots keep) {
    texts_.BeginSweep();
    texts_.KeepFrom(data_.data(), data_.data() + data_used_);
    keep(texts_);
    texts_.EndSweep(data_used_);
  }

 private:
  static constexpr size_t kGuard = size_t{64} * 1024;
  // Temporaries of the lowest frame, and arguments of a call that the stack has no room for.
  static constexpr size_t kShadowSize = kShadowDistance + size_t{128} * 1024;

  static bool Inside(const char* start, size_t whole, const char* address, size_t size) {
    const size_t offset = reinterpret_cast<uintptr_t>(address) - reinterpret_cast<uintptr_t>(start);
    const size_t usable = whole - (whole < kGuard ? whole : kGuard);
    return offset < usable && size <= usable - offset;
  }

  ReservedMemory data_;
  char* script_data_;  ///< behind the temporaries
  TextHeap texts_;
  size_t data_used_;
  mutable uint64_t texts_reached_ = 0;
};

}  // namespace vorc
