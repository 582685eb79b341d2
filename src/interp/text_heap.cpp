#include "interp/text_heap.h"

#include <sys/mman.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <initializer_list>

namespace vorc {

namespace {

// A host that limits address space gets by with less.
constexpr std::initializer_list<size_t> kSizes = {size_t{64} << 30, size_t{1} << 30, size_t{128} << 20,
                                                  size_t{32} << 20};
constexpr size_t kFirstThreshold = size_t{32} << 20;
// A word wherever it stands.
struct [[gnu::packed, gnu::may_alias]] AnyWord {
  uintptr_t value;
};

// A script with few texts pays only for those that it has.
constexpr size_t kPagesOnDemand = 4;
constexpr size_t kNoPage = static_cast<size_t>(-1);

}  // namespace

TextHeap::TextHeap()
    : memory_(kSizes),
      size_(memory_.size() / (kPageSize + sizeof(Page)) * kPageSize),
      pages_(reinterpret_cast<Page*>(memory_.data() + size_)),
      // The last page stays zero, so that a text that runs over all others ends there.
      page_count_(size_ == 0 ? 0 : size_ / kPageSize - 1),
      threshold_(std::min(kFirstThreshold, size_ / 4)) {
  std::fill(std::begin(current_), std::end(current_), kNoPage);
  std::fill(std::begin(cursor_), std::end(cursor_), size_t{0});
}

bool TextHeap::FindSlots(int size_class) {
  size_t& current = current_[size_class];
  while (true) {
    if (current != kNoPage && TakeSlots(size_class)) return true;
    cursor_[size_class] = 0;
    std::vector<size_t>& partly = partly_[size_class];
    if (!partly.empty()) {
      current = partly.back();
      partly.pop_back();
      continue;
    }
    size_t page = 0;
    if (!TakePages(1, &page)) return false;
    // One call of the system for what would be sixteen faults; where it knows no such call, those follow.
    if (page >= kPagesOnDemand) madvise(PageStart(page), kPageSize, MADV_POPULATE_WRITE);
    At(page).use = Use::kSmall;
    At(page).size_class = static_cast<uint8_t>(size_class);
    std::memset(At(page).used, 0, sizeof At(page).used);
    current = page;
  }
}

// The next word of the current page that has free slots; all of them count as used from here on.
bool TextHeap::TakeSlots(int size_class) {
  Page& page = At(current_[size_class]);
  const size_t count = kPageSize / SizeOf(size_class);
  for (size_t& word = cursor_[size_class]; word * 64 < count; ++word) {
    const uint64_t there = count < 64 ? (uint64_t{1} << count) - 1 : ~uint64_t{0};
    const uint64_t free = there & ~page.used[word];
    if (free == 0) continue;
    page.used[word] |= free;
    slots_[size_class] = {free, PageStart(current_[size_class]) + word * 64 * SizeOf(size_class)};
    return true;
  }
  return false;
}

char* TextHeap::AllocateLarge(size_t size) {
  if (size > page_count_ * kPageSize) return nullptr;
  const size_t count = (size + kPageSize - 1) / kPageSize;
  size_t first = 0;
  if (!TakePages(count, &first)) return nullptr;
  At(first).use = Use::kLarge;
  At(first).pages = static_cast<uint32_t>(count);
  for (size_t i = 1; i < count; ++i) {
    At(first + i).use = Use::kLargeTail;
    At(first + i).pages = static_cast<uint32_t>(i);
  }
  UseLargePages(PageStart(first), size);
  return PageStart(first);
}

bool TextHeap::TakePages(size_t count, size_t* first) {
  for (Run& run : free_runs_) {
    if (run.count < count) continue;
    *first = run.first;
    run.first += count;
    run.count -= count;
    return true;
  }
  if (count > page_count_ - next_page_) return false;
  *first = next_page_;
  next_page_ += count;
  return true;
}

void TextHeap::BeginSweep() {
  for (size_t page = 0; page < next_page_; ++page) {
    At(page).kept = false;
    if (At(page).use == Use::kSmall) std::memset(At(page).marked, 0, sizeof At(page).marked);
  }
}

void TextHeap::Keep(const void* address) {
  const size_t offset = reinterpret_cast<uintptr_t>(address) - reinterpret_cast<uintptr_t>(memory_.data());
  size_t number = offset / kPageSize;
  if (number >= next_page_) return;
  if (At(number).use == Use::kLargeTail) number -= At(number).pages;
  Page& page = At(number);
  if (page.use == Use::kLarge) {
    if (!page.kept) to_scan_.push_back({number * kPageSize, page.pages * kPageSize});
    page.kept = true;
  } else if (page.use == Use::kSmall) {
    const size_t size = SizeOf(page.size_class);
    const size_t slot = offset % kPageSize / size;
    const uint64_t bit = uint64_t{1} << slot % 64;
    if ((page.used[slot / 64] & bit) == 0 || (page.marked[slot / 64] & bit) != 0) return;
    page.marked[slot / 64] |= bit;
    to_scan_.push_back({number * kPageSize + slot * size, size});
  }
}

__attribute__((no_sanitize("address"))) void TextHeap::KeepFrom(const void* begin, const void* end) {
  const auto base = reinterpret_cast<uintptr_t>(memory_.data());
  const size_t used = next_page_ * kPageSize;
  if (begin == nullptr) return;
  const char* last = static_cast<const char*>(end) - sizeof(uintptr_t);
  for (const char* at = static_cast<const char*>(begin); at <= last; ++at) {
    const uintptr_t value = reinterpret_cast<const AnyWord*>(at)->value;
    if (value - base < used) Keep(reinterpret_cast<const void*>(value));
  }
  Scan();
}

void TextHeap::Scan() {
  while (!to_scan_.empty()) {
    const Run text = to_scan_.back();
    to_scan_.pop_back();
    live_ += text.count;
    const auto base = reinterpret_cast<uintptr_t>(memory_.data());
    const char* at = memory_.data() + text.first;
    for (const char* last = at + text.count - sizeof(uintptr_t); at <= last; ++at) {
      const uintptr_t value = reinterpret_cast<const AnyWord*>(at)->value;
      if (value - base < next_page_ * kPageSize) Keep(reinterpret_cast<const void*>(value));
    }
  }
}

void TextHeap::EndSweep(size_t scanned) {
  Scan();
  free_runs_.clear();
  for (auto& partly : partly_) partly.clear();
  std::fill(std::begin(current_), std::end(current_), kNoPage);
  std::fill(std::begin(slots_), std::end(slots_), Slots{});
  for (size_t number = 0; number < next_page_;) {
    const Page& page = At(number);
    const size_t count = page.use == Use::kLarge ? page.pages : 1;
    if (page.use == Use::kSmall)
      SweepSmall(number);
    else if (page.use == Use::kFree || !page.kept)
      Release(number, count);
    number += count;
  }
  since_sweep_ = 0;
  threshold_ = std::min(std::max({kFirstThreshold, live_, scanned / 4}), size_ / 4);
  live_ = 0;
}

void TextHeap::SweepSmall(size_t number) {
  Page& page = At(number);
  const size_t slots = kPageSize / SizeOf(page.size_class);
  size_t used = 0;
  for (size_t word = 0; word * 64 < slots; ++word)
    used += static_cast<size_t>(std::popcount(page.marked[word]));
  if (used == 0) return Release(number, 1);
  std::memcpy(page.used, page.marked, sizeof page.used);
  if (used < slots) partly_[page.size_class].push_back(number);
}

void TextHeap::Release(size_t first, size_t count) {
  if (At(first).use != Use::kFree) madvise(PageStart(first), count * kPageSize, MADV_DONTNEED);
  for (size_t i = 0; i < count; ++i) At(first + i).use = Use::kFree;
  if (!free_runs_.empty() && free_runs_.back().first + free_runs_.back().count == first)
    free_runs_.back().count += count;
  else
    free_runs_.push_back({first, count});
}

}  // namespace vorc
