#include "interp/text_heap.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace vorc {
namespace {

// Random texts of all sizes, some of which stay referred to: by their start, by a byte inside, or
// only by another text. Whatever is kept must keep its content over many sweeps.
TEST(TextHeap, KeepsWhatIsReferredToAndNothingElse) {
  TextHeap heap;
  std::mt19937 random(7);
  struct Kept {
    char* text;
    size_t size;
    char fill;
  };
  std::vector<Kept> kept;
  std::vector<const char*> roots;
  const char* highest = heap.data();
  for (int round = 0; round < 40; ++round) {
    for (int i = 0; i < 2000; ++i) {
      const size_t size = 1 + (i % 97 == 0 ? random() % 300'000 : random() % 2000);
      char* text = heap.Allocate(size);
      ASSERT_NE(text, nullptr);
      for (const Kept& other : kept)
        ASSERT_TRUE(text + size <= other.text || other.text + other.size <= text);
      const auto fill = static_cast<char>('a' + i % 26);
      std::memset(text, fill, size);
      highest = std::max<const char*>(highest, text + size);
      if (i % 200 == 0) {
        kept.push_back({text, size, fill});
        roots.push_back(text + random() % size);
      }
    }
    if (kept.size() > 150) {
      kept.erase(kept.begin(), kept.begin() + 100);
      roots.erase(roots.begin(), roots.begin() + 100);
    }
    heap.BeginSweep();
    heap.KeepFrom(roots.data(), roots.data() + roots.size());
    heap.EndSweep(0);
    for (const Kept& text : kept) {
      ASSERT_EQ(std::string_view(text.text, text.size).find_first_not_of(text.fill), std::string_view::npos);
    }
  }
  EXPECT_LT(highest - heap.data(), 150 << 20) << "nothing is used again";
}

TEST(TextHeap, ATextIsKeptByAnAddressInAnotherText) {
  TextHeap heap;
  char* inner = heap.Allocate(100'000);
  std::memset(inner, 'x', 100'000);
  char* outer = heap.Allocate(64);
  const char* address = inner + 70'000;
  std::memcpy(outer + 3, &address, sizeof address);
  heap.BeginSweep();
  heap.Keep(outer);
  heap.EndSweep(0);
  for (int i = 0; i < 50; ++i) std::memset(heap.Allocate(100'000), 'y', 100'000);
  EXPECT_EQ(std::string_view(inner, 100'000).find('y'), std::string_view::npos);
}

}  // namespace
}  // namespace vorc
