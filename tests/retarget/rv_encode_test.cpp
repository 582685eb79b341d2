#include "retarget/rv_encode.h"

#include <gtest/gtest.h>

#include <string>

#include "retarget/rv_disassemble.h"

namespace {

using namespace vorc;

constexpr uint32_t kA0 = 10, kA1 = 11;

std::string Listing(const VrvEncoder& enc) {
  std::string text;
  for (uint32_t at = 0; at + 4 <= enc.code.size(); at += 4) {
    std::string line;
    vrv_disasm_one(enc.code.Word(at), enc.base + at, line);
    text += (text.empty() ? "" : "; ") + line;
  }
  return text;
}

template <typename Emit>
std::string Emitted(Emit emit) {
  VrvEncoder enc;
  emit(enc);
  EXPECT_FALSE(enc.error);
  return Listing(enc);
}

TEST(RvEncode, LoadsOfNumbers) {
  EXPECT_EQ(Emitted([](VrvEncoder& enc) {
              for (const int32_t value :
                   {2047, -2048, 2048, -2049, 0x12345000, 0x12345800, 0x7FFFFFFF, INT32_MIN}) {
                vrv_li(enc, kA0, value);
              }
            }),
            "li     a0,2047; li     a0,-2048; lui    a0,0x1; addi   a0,a0,-2048; lui    a0,0xfffff; "
            "addi   a0,a0,2047; lui    a0,0x12345; lui    a0,0x12346; addi   a0,a0,-2048; "
            "lui    a0,0x80000; addi   a0,a0,-1; lui    a0,0x80000");
  EXPECT_EQ(Emitted([](VrvEncoder& enc) { vrv_li64(enc, kA0, 0x7FFFFFFF); }),
            "lui    a0,0x80000; .word  0xfff5051b");
}

TEST(RvEncode, LoadsOfAddresses) {
  VrvEncoder enc;
  vrv_init(enc, 0x1000);
  vrv_nop(enc);
  EXPECT_EQ(vrv_la_pcrel(enc, kA0, 0x1004 + 0x12345801), 0);
  EXPECT_EQ(Listing(enc), "nop; auipc  a0,0x12346; addi   a0,a0,-2047");
  const uint32_t length = enc.code.size();
  EXPECT_EQ(vrv_la_pcrel(enc, kA0, int64_t{1} << 33), 1);
  EXPECT_EQ(enc.code.size(), length);
  EXPECT_FALSE(enc.error);
}

// The distance from a branch or jump at 0 to a label behind so many bytes.
bool Reaches(bool jump, uint32_t distance, bool back = false) {
  VrvEncoder enc;
  const int32_t label = vrv_new_label(enc);
  const auto go = [&] { jump ? vrv_j(enc, label) : vrv_branch(enc, kBeq, kA0, kA1, label); };
  if (back)
    vrv_place_label(enc, label);
  else
    go();
  enc.code.AppendZeros(distance - enc.code.size());
  if (back)
    go();
  else
    vrv_place_label(enc, label);
  return vrv_resolve(enc) == 0 && !enc.error;
}

TEST(RvEncode, ReachOfLabels) {
  EXPECT_TRUE(Reaches(false, 4094) && !Reaches(false, 4096) && !Reaches(false, 4093));
  EXPECT_TRUE(Reaches(false, 4096, true) && !Reaches(false, 4098, true));
  EXPECT_TRUE(Reaches(true, 1048574) && !Reaches(true, 1048576));
  EXPECT_TRUE(Reaches(true, 1048576, true) && !Reaches(true, 1048578, true));
}

TEST(RvEncode, WhatSetsTheError) {
  const struct {
    const char* what;
    int (*emit)(VrvEncoder&);
  } cases[] = {
      {"addi 2048", [](VrvEncoder& e) { return vrv_addi(e, 1, 1, 2048); }},
      {"sw 2048", [](VrvEncoder& e) { return vrv_sw(e, 1, 2048, 1); }},
      {"slli 32", [](VrvEncoder& e) { return vrv_slli(e, 1, 1, 32); }},
      {"register 32", [](VrvEncoder& e) { return vrv_add(e, 32, 1, 1); }},
      {"branch 4096", [](VrvEncoder& e) { return vrv_b_type(e, kOpBranch, 0, 1, 1, 4096); }},
      {"jump 1048575", [](VrvEncoder& e) { return vrv_j_type(e, kOpJal, 1, 1048575); }},
      {"jump to no label", [](VrvEncoder& e) { return vrv_j(e, 0) + vrv_resolve(e); }},
      {"label never placed", [](VrvEncoder& e) { return vrv_j(e, vrv_new_label(e)) + vrv_resolve(e); }},
      {"poke beyond", [](VrvEncoder& e) { return vrv_nop(e) + vrv_poke_word(e, 1, 0); }},
  };
  for (const auto& test : cases) {
    VrvEncoder enc;
    EXPECT_EQ(test.emit(enc), 1) << test.what;
    EXPECT_TRUE(enc.error) << test.what;
    const uint32_t length = enc.code.size();
    EXPECT_EQ(vrv_nop(enc), 1);
    EXPECT_EQ(enc.code.size(), length);
  }
  VrvEncoder enc;
  EXPECT_EQ(vrv_slli64(enc, 1, 1, 64), 1);
  EXPECT_FALSE(enc.error);
  EXPECT_EQ(vrv_word_addi(2, 2, 2048) | vrv_word_sw(2, -2049, 1) | vrv_word_lw(1, 2, 2048), 0U);
}

TEST(RvEncode, TablesHaveAnEnd) {
  VrvEncoder labels, fixups;
  for (int i = 0; i < 4096; ++i) EXPECT_EQ(vrv_new_label(labels), i);
  EXPECT_EQ(vrv_new_label(labels), -1);
  EXPECT_TRUE(labels.error);
  const int32_t label = vrv_new_label(fixups);
  for (int i = 0; i < 8192; ++i) EXPECT_EQ(vrv_j(fixups, label), 0);
  EXPECT_EQ(vrv_j(fixups, label), 1);
  EXPECT_TRUE(fixups.error);
}

}  // namespace
