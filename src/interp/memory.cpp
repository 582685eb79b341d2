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
// What runs over the end of the stack reads zeros too.
constexpr size_t kStackGap = size_t{64} * 1024;
constexpr size_t kAlignment = 16;

size_t Aligned(size_t size) {
  return (size + kAlignment - 1) & ~(kAlignment - 1);
}

char* CopyInto(char* copy, std::string_view text) {
  if (copy == nullptr) return nullptr;
  if (!text.empty()) std::memcpy(copy, text.data(), text.size());
  copy[text.size()] = '\0';
  return copy;
}

}  // namespace

ScriptMemory::ScriptMemory()
    : data_(kDataSizes, kWantedAddress),
      script_data_(data_.data() == nullptr ? nullptr : data_.data() + kShadowSize),
      data_used_(kShadowSize + kStackWords * kWordSize + kStackGap) {}

char* ScriptMemory::Allocate(size_t size) {
  const size_t needed = Aligned(size == 0 ? 1 : size);
  if (data_.data() == nullptr || needed + kGuard > data_.size() - data_used_) return nullptr;
  char* memory = data_.data() + data_used_;
  data_used_ += needed;
  return memory;
}

char* ScriptMemory::CopyText(std::string_view text) {
  return CopyInto(texts_.Allocate(text.size() + 1), text);
}

char* ScriptMemory::CopyLiteral(std::string_view text) {
  return CopyInto(Allocate(text.size() + 1), text);
}

}  // namespace vorc
