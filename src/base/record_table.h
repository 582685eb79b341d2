#pragma once

#include <cstddef>
#include <cstdint>
#include <new>
#include <type_traits>

#include "base/reserved_memory.h"

namespace vorc {

/// Records of one kind: fixed capacity, stable addresses, numbered from 0 in order of creation.
/// Address space is taken once; a page is touched when its first record is made.
template <typename T>
class RecordTable {
  static_assert(std::is_trivially_destructible_v<T>, "records live until their table is released");

 public:
  RecordTable(size_t capacity, ReservedPieces& memory)
      : memory_(memory.Take(capacity * sizeof(T))), capacity_(capacity) {}

  /// A cleared record that knows its own index, or null when the table is full.
  T* Create() {
    if (count_ >= capacity_ || memory_ == nullptr) return nullptr;
    T* record = new (memory_ + count_ * sizeof(T)) T();
    record->Index = static_cast<decltype(record->Index)>(count_++);
    return record;
  }

  T* At(size_t index) const { return index < count_ ? Records() + index : nullptr; }
  /// True for the address of a record of this table.
  bool Holds(const void* address) const {
    const size_t offset = reinterpret_cast<uintptr_t>(address) - reinterpret_cast<uintptr_t>(memory_);
    return offset < count_ * sizeof(T) && offset % sizeof(T) == 0;
  }
  size_t count() const { return count_; }
  size_t capacity() const { return capacity_; }
  bool full() const { return count_ >= capacity_; }
  bool reserved() const { return memory_ != nullptr; }

 private:
  T* Records() const { return std::launder(reinterpret_cast<T*>(memory_)); }

  char* memory_;
  size_t capacity_;
  size_t count_ = 0;
};

/// A singly linked chain of records through their `Next` field.
template <typename T>
struct List {
  T* First = nullptr;
  T* Last = nullptr;

  void Append(T* record) {
    if (Last == nullptr)
      First = record;
    else
      Last->Next = record;
    Last = record;
  }

  bool empty() const { return First == nullptr; }

  struct Iterator {
    T* record;
    T* operator*() const { return record; }
    Iterator& operator++() {
      record = record->Next;
      return *this;
    }
    bool operator!=(const Iterator& other) const { return record != other.record; }
  };
  Iterator begin() const { return {First}; }
  Iterator end() const { return {nullptr}; }
};

}  // namespace vorc
