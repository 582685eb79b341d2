#include "interp/memory.h"

#include <cstring>
#include <initializer_list>

namespace vorc {

namespace {

// Below 2 GiB, where nothing else of a position-independent program lives.
void* const kWantedAddress = reinterpret_cast<void*>(0x10000000);
// A host that limits address space gets by with less.
constexpr std::initializer_list<size_t> kDataSizes = {size_t{0x60000000}, size_t{256} << 20,
                                                      size_t{32} << 20};
constexpr std::initializer_list<size_t> kTextSizes = {size_t{64} << 30, size_t{1} << 30, size_t{128} << 20,
                                                      size_t{32} << 20};
// What runs over the end of the stack or of the data reads zeros, and so ends as a text.
constexpr size_t kGap = size_t{64} * 1024;
constexpr size_t kAlignment = 16;

size_t Aligned(size_t size) {
  return (size + kAlignment - 1) & ~(kAlignment - 1);
}

}  // namespace

ScriptMemory::ScriptMemory()
    : data_(kDataSizes, kWantedAddress), texts_(kTextSizes), data_used_(kStackWords * kWordSize + kGap) {}

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
