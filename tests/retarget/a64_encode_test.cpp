#include "retarget/a64_encode.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace {

using namespace vorc;

using E = Va64Encoder&;

// A branch, so many bytes behind it, then its label.
int Reach(E e, int (*branch)(E, int32_t), uint32_t bytes) {
  const int32_t label = va64_new_label(e);
  branch(e, label);
  e.code.AppendZeros(bytes);
  return va64_place_label(e, label) + va64_resolve(e);
}

TEST(A64Encode, FirstFaultIsKept) {
  const struct {
    int (*emit)(E);
    const char* message;
  } cases[] = {
      {[](E e) { return va64_movz(e, 1, 0, 8); }, "MOV shift must be 0/16/32/48, got 8"},
      {[](E e) { return va64_movz(e, 1, 0, 64); }, "MOV shift must be 0/16/32/48, got 64"},
      {[](E e) { return va64_movk(e, 1, 65536, 0); }, "movk immediate 65536 exceeds 16 bits"},
      {[](E e) { return va64_cmp_imm(e, 1, -1); },
       "immediate -1 exceeds 12 bits - load it into a register first"},
      {[](E e) { return va64_sub_imm(e, 1, 1, 1, 12); }, "lsl12 must be 0 or 1, got 12"},
      {[](E e) { return va64_cset(e, 1, 14); }, "cset with an always/never condition (14) is meaningless"},
      {[](E e) { return va64_str(e, 1, 2, 4); }, "str: 8-byte access at offset 4 is not naturally aligned"},
      {[](E e) { return va64_str(e, 1, 2, 32768); }, "offset 32768 does not fit the scaled 12-bit field"},
      {[](E e) { return va64_ldrb(e, 1, 2, -1); }, "offset -1 does not fit the scaled 12-bit field"},
      {[](E e) { return va64_svc(e, 65536); }, "svc immediate 65536 exceeds 16 bits"},
      {[](E e) { return va64_adrp(e, 1, uint64_t{1} << 32); }, "adrp target is more than +-4GB away"},
      {[](E e) { return va64_place_label(e, 0); }, "bad label 0"},
      {[](E e) { return va64_place_label(e, va64_new_label(e)) + va64_place_label(e, 0); },
       "label 0 placed twice"},
      {[](E e) { return va64_b(e, va64_new_label(e)) + va64_resolve(e); }, "label 0 never placed"},
      {[](E e) { return va64_bl(e, 0) + va64_resolve(e); }, "fixup names bad label 0"},
      {[](E e) { return Reach(e, va64_b, 1); }, "branch target at 5 is not 4-aligned"},
      {[](E e) { return Reach(e, va64_b, (1 << 27) - 4); },
       "branch out of +-128MB range (33554432 instructions)"},
      {[](E e) {
         return Reach(
             e, [](E f, int32_t label) { return va64_cbz(f, 1, label); }, (1 << 20) - 4);
       },
       "conditional branch out of +-1MB range (262144)"},
      {[](E e) {
         for (int i = 0; i < 4096; ++i) va64_new_label(e);
         return va64_new_label(e) < 0 ? 1 : 0;
       },
       "out of labels"},
      {[](E e) {
         for (size_t i = 0; i < kVa64MaxFixups; ++i) va64_b(e, 0);
         return va64_b(e, 0);
       },
       "out of fixups"},
  };
  for (const auto& test : cases) {
    Va64Encoder enc;
    EXPECT_STREQ(va64_error(&enc), "ok");
    EXPECT_EQ(test.emit(enc), 1);
    const uint32_t length = va64_here(enc);
    EXPECT_EQ(va64_nop(enc) & va64_movz(enc, 1, 0, 8), 1);
    EXPECT_EQ(va64_here(enc), length);
    EXPECT_STREQ(va64_error(&enc), test.message);
  }
  Va64Encoder far;
  EXPECT_EQ(Reach(far, va64_b, (1 << 27) - 8), 0);
}

// What a row of MOVZ, MOVN and MOVK leaves in register 7.
uint64_t Moved(const Va64Encoder& enc) {
  uint64_t value = 0;
  for (uint32_t at = 0; at < enc.code.size(); at += 4) {
    const uint32_t word = enc.code.Word(at);
    EXPECT_EQ(word & 31, 7U);
    const uint32_t shift = (word >> 21 & 3) * 16;
    const uint64_t group = uint64_t{word >> 5 & 0xFFFF} << shift;
    switch (word >> 23) {
      case 0x1A5: value = group; break;
      case 0x125: value = ~group; break;
      case 0x1E5: value = (value & ~(uint64_t{0xFFFF} << shift)) | group; break;
      default: ADD_FAILURE() << word;
    }
  }
  return value;
}

TEST(A64Encode, LoadsOfNumbers) {
  const struct {
    uint64_t value;
    uint32_t words;
  } cases[] = {{0, 1},          {1, 1},          {0xFFFF, 1},         {0x10000, 1},
               {0x10001, 2},    {~0ULL, 1},      {~0xFFFFULL, 1},     {~0x10000ULL, 4},
               {1ULL << 63, 1}, {~0ULL >> 1, 4}, {0x100000001ULL, 2}, {0x123456789ABCDEF0ULL, 4}};
  for (const auto& test : cases) {
    Va64Encoder enc;
    EXPECT_EQ(va64_mov_imm64(enc, 7, test.value), 0);
    EXPECT_EQ(Moved(enc), test.value);
    EXPECT_EQ(enc.code.size(), test.words * 4) << test.value;
  }
}

// Labels that are done serve again, and what still waits for others is kept.
TEST(A64Encode, ReleasedLabels) {
  Va64Encoder enc;
  const int32_t outside = va64_new_label(enc);
  for (int round = 0; round < 3 * static_cast<int>(kVa64MaxLabels); ++round) {
    const size_t first = enc.fixups.size();
    const int32_t label = va64_new_label(enc);
    va64_bcond(enc, kEq, label);
    if (round < 2) va64_bl(enc, outside);
    EXPECT_EQ(va64_place_label(enc, label), 0);
    ASSERT_EQ(va64_release_labels(enc, first, std::array{label}), 0) << va64_error(&enc);
  }
  EXPECT_EQ(enc.fixups.size(), 2U);
  EXPECT_EQ(enc.code.Word(0), 0x54000040U);
  EXPECT_EQ(enc.code.Word(16), 0x54000020U);
  va64_place_label(enc, outside);
  ASSERT_EQ(va64_resolve(enc), 0);
  EXPECT_EQ(enc.code.Word(4), 0x94000000U | (enc.code.size() - 4) / 4);
  const int32_t lost = va64_new_label(enc);
  va64_b(enc, lost);
  EXPECT_EQ(va64_release_labels(enc, 0, std::array{lost}), 1);
}

}  // namespace
