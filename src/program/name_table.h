#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "base/arena.h"
#include "program/records.h"

namespace vorc {

/// Interned words. Reserved words stand in it from the start.
class NameTable {
 public:
  NameTable();

  /// The one record of a spelling.
  Name* Intern(std::string_view text);

 private:
  void Grow();

  Arena arena_;
  std::vector<Name*> slots_;
  uint32_t count_ = 0;
};

/// What a name stands for in a scope.
enum class BindingKind : uint8_t {
  kNone = 0,
  kSymbol = 1,
  kFunction = 2,
  kTypedef = 3,
  kEnum = 4,
  kStruct = 5,
  kEnumElement = 8,
};

/// One declaration of a name in one scope, linked in declaration order.
struct Binding {
  BindingKind Kind = BindingKind::kNone;
  void* Record = nullptr;
  Binding* Next = nullptr;
};

/// Finds the declarations of a name in a scope without walking the scope's lists.
class NameIndex {
 public:
  NameIndex() : slots_(kFirstCapacity) {}

  void Add(SYMBOLS_HEADER* header, const Name* name, BindingKind kind, void* record);

  /// The declarations of `name` in `header` in order, or null.
  const Binding* Find(const SYMBOLS_HEADER* header, const Name* name) const {
    if (header->Id == 0 || name == nullptr) return nullptr;
    return slots_[Probe(Key(header->Id, name->Id))].first;
  }

 private:
  struct Slot {
    uint64_t key = 0;
    Binding* first = nullptr;
    Binding* last = nullptr;
  };
  static constexpr size_t kFirstCapacity = 256;

  static uint64_t Key(uint32_t header, uint32_t name) { return (uint64_t{header} << 32) | name; }
  size_t Probe(uint64_t key) const;
  void Grow();

  Arena arena_;
  std::vector<Slot> slots_;
  size_t used_ = 0;
  uint32_t headers_ = 0;
};

}  // namespace vorc
