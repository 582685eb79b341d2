#include "program/name_table.h"

#include <new>
#include <utility>

#include "base/text_hash.h"

namespace vorc {

namespace {

constexpr size_t kFirstNameCapacity = 1024;

uint64_t Mix(uint64_t key) {
  key ^= key >> 31;
  key *= 0x9e3779b97f4a7c15U;
  return key ^ (key >> 29);
}

}  // namespace

NameTable::NameTable() : slots_(kFirstNameCapacity) {
  for (const ReservedWord& word : ReservedWords()) Intern(word.text)->Reserved = word.token;
}

Name* NameTable::Intern(std::string_view text) {
  const size_t mask = slots_.size() - 1;
  size_t i = HashOf(text) & mask;
  while (slots_[i] != nullptr) {
    if (slots_[i]->Text == text) return slots_[i];
    i = (i + 1) & mask;
  }
  Name* name = new (arena_.Allocate(sizeof(Name), alignof(Name))) Name();
  name->Text = {arena_.Copy(text), text.size()};
  name->Id = ++count_;
  slots_[i] = name;
  if (size_t{count_} * 2 > slots_.size()) Grow();
  return name;
}

void NameTable::Grow() {
  std::vector<Name*> old = std::exchange(slots_, std::vector<Name*>(slots_.size() * 2));
  const size_t mask = slots_.size() - 1;
  for (Name* name : old) {
    if (name == nullptr) continue;
    size_t i = HashOf(name->Text) & mask;
    while (slots_[i] != nullptr) i = (i + 1) & mask;
    slots_[i] = name;
  }
}

void NameIndex::Add(SYMBOLS_HEADER* header, const Name* name, BindingKind kind, void* record) {
  if (header->Id == 0) header->Id = ++headers_;
  const uint64_t key = Key(header->Id, name->Id);
  Slot& slot = slots_[Probe(key)];
  Binding* binding = new (arena_.Allocate(sizeof(Binding), alignof(Binding))) Binding{kind, record, nullptr};
  if (slot.first == nullptr) {
    slot = {key, binding, binding};
    if (++used_ * 2 > slots_.size()) Grow();
    return;
  }
  slot.last->Next = binding;
  slot.last = binding;
}

size_t NameIndex::Probe(uint64_t key) const {
  const size_t mask = slots_.size() - 1;
  size_t i = Mix(key) & mask;
  while (slots_[i].first != nullptr && slots_[i].key != key) i = (i + 1) & mask;
  return i;
}

void NameIndex::Grow() {
  std::vector<Slot> old = std::exchange(slots_, std::vector<Slot>(slots_.size() * 2));
  for (const Slot& slot : old) {
    if (slot.first != nullptr) slots_[Probe(slot.key)] = slot;
  }
}

}  // namespace vorc
