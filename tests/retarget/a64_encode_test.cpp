#include "retarget/a64_encode.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace vorc;

TEST(A64Encode, FirstFaultIsKept) {
  const struct {
    int (*emit)(Va64Encoder&);
    const char* message;
  } cases[] = {
      {[](Va64Encoder& e) { return va64_movz(e, 1, 0, 8); }, "MOV shift must be 0/16/32/48, got 8"},
      {[](Va64Encoder& e) { return va64_movz(e, 1, 0, 64); }, "MOV shift must be 0/16/32/48, got 64"},
      {[](Va64Encoder& e) { return va64_movk(e, 1, 65536, 0); }, "movk immediate 65536 exceeds 16 bits"},
      {[](Va64Encoder& e) { return va64_add_imm(e, 1, 1, 4096, 0); },
       "immediate 4096 exceeds 12 bits - load it into a register first"},
      {[](Va64Encoder& e) { return va64_cmp_imm(e, 1, -1); },
       "immediate -1 exceeds 12 bits - load it into a register first"},
      {[](Va64Encoder& e) { return va64_sub_imm(e, 1, 1, 1, 12); }, "lsl12 must be 0 or 1, got 12"},
      {[](Va64Encoder& e) { return va64_cset(e, 1, 14); },
       "cset with an always/never condition (14) is meaningless"},
      {[](Va64Encoder& e) { return va64_str(e, 1, 2, 4); },
       "str: 8-byte access at offset 4 is not naturally aligned"},
      {[](Va64Encoder& e) { return va64_ldrsh(e, 1, 2, 3); },
       "ldrsh: 2-byte access at offset 3 is not naturally aligned"},
      {[](Va64Encoder& e) { return va64_str(e, 1, 2, 32768); },
       "offset 32768 does not fit the scaled 12-bit field"},
      {[](Va64Encoder& e) { return va64_ldrb(e, 1, 2, -1); },
       "offset -1 does not fit the scaled 12-bit field"},
      {[](Va64Encoder& e) { return va64_svc(e, 65536); }, "svc immediate 65536 exceeds 16 bits"},
      {[](Va64Encoder& e) { return va64_adrp(e, 1, uint64_t{1} << 32); },
       "adrp target is more than +-4GB away"},
      {[](Va64Encoder& e) { return va64_place_label(e, 3); }, "bad label 3"},
      {[](Va64Encoder& e) {
         const int32_t label = va64_new_label(e);
         return va64_place_label(e, label) + va64_place_label(e, label);
       },
       "label 0 placed twice"},
      {[](Va64Encoder& e) { return va64_b(e, va64_new_label(e)) + va64_resolve(e); }, "label 0 never placed"},
      {[](Va64Encoder& e) { return va64_bl(e, 5) + va64_resolve(e); }, "fixup names bad label 5"},
      {[](Va64Encoder& e) {
         const int32_t label = va64_new_label(e);
         va64_b(e, label);
         va64_string(e, "");
         return va64_place_label(e, label) + va64_resolve(e);
       },
       "branch target at 5 is not 4-aligned"},
      {[](Va64Encoder& e) {
         const int32_t label = va64_new_label(e);
         va64_cbz(e, 1, label);
         va64_align(e, 1 << 20);
         return va64_place_label(e, label) + va64_resolve(e);
       },
       "conditional branch out of +-1MB range (262144)"},
      {[](Va64Encoder& e) {
         const int32_t label = va64_new_label(e);
         va64_b(e, label);
         va64_align(e, 1 << 27);
         return va64_place_label(e, label) + va64_resolve(e);
       },
       "branch out of +-128MB range (33554432 instructions)"},
      {[](Va64Encoder& e) {
         for (int i = 0; i < 4096; ++i) va64_new_label(e);
         return va64_new_label(e) < 0 ? 1 : 0;
       },
       "out of labels"},
      {[](Va64Encoder& e) {
         for (int i = 0; i < 8192; ++i) va64_b(e, 0);
         return va64_b(e, 0);
       },
       "out of fixups"},
      {[](Va64Encoder& e) { return va64_nop(e) + va64_poke_word(e, 1, 0); }, "no word at 1"},
  };
  for (const auto& test : cases) {
    Va64Encoder enc;
    EXPECT_STREQ(va64_error(&enc), "ok");
    EXPECT_EQ(test.emit(enc), 1);
    EXPECT_STREQ(va64_error(&enc), test.message);
    const uint32_t length = va64_here(enc);
    EXPECT_EQ(va64_nop(enc) & va64_movz(enc, 1, 0, 8), 1);
    EXPECT_EQ(va64_here(enc), length);
    EXPECT_STREQ(va64_error(&enc), test.message);
  }
  EXPECT_STREQ(va64_error(nullptr), "no emitter");
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

TEST(A64Encode, BaseCountsForPages) {
  Va64Encoder enc;
  va64_init(enc, 0x1FFC);
  va64_nop(enc);
  EXPECT_EQ(va64_addr(enc), 0x2000U);
  va64_adrp(enc, 3, 0x1000);
  EXPECT_EQ(enc.code.Word(4), 0xF0FFFFE3);
}

}  // namespace
