#include "interp/memory.h"

#include <cstring>

namespace vorc {

namespace {

// Below 2 GiB, where nothing else of a position-independent program lives.
void* const kWantedAddress = reinterpret_cast<void*>(0x10000000);
constexpr size_t kDataSize = size_t{0x60000000};
constexpr size_t kTextSize = size_t{64} << 30;
constexpr size_t kSmallTextSize = size_t{1} << 30;
// What runs over the end of the stack or of the data reads zeros, and so ends as a text.
constexpr size_t kGap = size_t{64} * 1024;
constexpr size_t kAlignment = 16;

size_t Aligned(size_t size) {
  return (size + kAlignment - 1) & ~(kAlignment - 1);
}

size_t TextSize() {
  // A host that counts reservations as use may refuse the large one.
  const ReservedMemory probe(kTextSize);
  return probe.data() != nullptr ? kTextSize : kSmallTextSize;
}

}  // namespace

ScriptMemory& ScriptMemory::Instance() {
  static ScriptMemory memory;
  return memory;
}

ScriptMemory::ScriptMemory()
    : data_(kDataSize, kWantedAddress), texts_(TextSize()), data_used_(kStackWords * kWordSize + kGap) {}

char* ScriptMemory::Allocate(size_t size) {
  const size_t needed = Aligned(size == 0 ? 1 : size);
  if (data_.data() == nullptr || needed + kGap > data_.size() - data_used_) return nullptr;
  char* memory = data_.data() + data_used_;
  data_used_ += needed;
  return memory;
}

char* ScriptMemory::AllocateText(size_t size) {
  if (texts_.data() == nullptr || size + kGap > texts_.size() - texts_used_) return nullptr;
  char* memory = texts_.data() + texts_used_;
  texts_used_ += size;
  return memory;
}

char* ScriptMemory::CopyText(std::string_view text) {
  char* copy = AllocateText(text.size() + 1);
  if (copy == nullptr) return nullptr;
  if (!text.empty()) std::memcpy(copy, text.data(), text.size());
  copy[text.size()] = '\0';
  return copy;
}

}  // namespace vorc
