#include "output/pic_rewrite.h"

#include <gtest/gtest.h>

#include "../lib/temp_folder.h"

namespace {

using namespace vorc;

// Counters in the order of the struct.
std::string Counts(const PicCounts& c) {
  std::string text;
  for (const int count : {c.rel_loads, c.abs_loads, c.rel_calls, c.abs_calls, c.extern_loads}) {
    text += std::to_string(count) + ' ';
  }
  return text;
}

std::string Rewritten(std::string_view text, int pointer_bytes, PicCounts& counts) {
  std::string result;
  PicRewrite(text, pointer_bytes, counts, [&](std::string_view piece) { result += piece; });
  return result;
}

constexpr std::string_view kHead = "/*000001:*/ EXTERN outside;\n/*000002:*/ PROCEDURE inside\n";

TEST(PicRewrite, Lines) {
  const std::string long_name(600, 'n');
  const struct {
    std::string line, result;
    const char* counts;
  } cases[] = {
      {"loadaddr rr61, var", "loadaddr rr61, var\nadd8 rr61,rr61,CODEBASE\n", "1 0 0 0 0 "},
      {"/*000007:*/ \tLoadAddr GPR3 ,\tvar // x, y\r\n",
       "/*000007:*/ \tLoadAddr GPR3 ,\tvar // x, y\r\n/*000007:*/ \tadd8 GPR3,GPR3,CODEBASE\n", "1 0 0 0 0 "},
      {"loadaddr frameptr,x/*y*/\n", "loadaddr frameptr,x/*y*/\nadd8 frameptr,frameptr,CODEBASE\n",
       "1 0 0 0 0 "},
      {"loadaddr rr1, " + long_name + "\n", "loadaddr rr1, " + long_name + "\nadd8 rr1,rr1,CODEBASE\n",
       "1 0 0 0 0 "},
      {"loadaddr rr1, outside // why\n", "", "0 0 0 0 1 "},
      {"loadaddr rr1, Outside\n", "loadaddr rr1, Outside\nadd8 rr1,rr1,CODEBASE\n", "1 0 0 0 0 "},
      {"loadaddr rr63, r5\n", "", "0 1 0 0 0 "},
      {"loadaddr rr63, Address_Break_Point3\n", "", "0 1 0 0 0 "},
      {"loadaddr r, var\n", "", "0 1 0 0 0 "},
      {"loadaddr rr1,\n", "", "0 0 0 0 0 "},
      {"loadaddr " + long_name + ", var\n", "", "0 0 0 0 0 "},
      {"loadaddress rr1, var\n", "", "0 0 0 0 0 "},
      {"// loadaddr rr1, var\n", "", "0 0 0 0 0 "},
      {"/*000001:*//*2:*/ call inside\n", "", "0 0 0 0 0 "},
      {"/*000001: call inside\n", "", "0 0 0 0 0 "},
      {"\tCALL inside ; so\n",
       "\tloadaddr rr63, inside\n\tadd8 rr63,rr63,CODEBASE\n\tloadaddr LR, vorc_picret_0\n"
       "\tadd8 LR,LR,CODEBASE\n\tmove8 PC,rr63\n\tvorc_picret_0:\n",
       "0 0 1 0 0 "},
      {"call outside\n", "", "0 0 0 1 0 "},
      {"call gpr3 // by pointer\n", "", "0 0 0 1 0 "},
      {"call inside, rr1\n", "", "0 0 0 0 0 "},
      {"call " + long_name + "\n", "", "0 0 0 0 0 "},
      {std::string(10000, 'x') + " call inside\n", "", "0 0 0 0 0 "},
  };
  for (const auto& test : cases) {
    PicCounts counts;
    const std::string head(kHead);
    EXPECT_EQ(Rewritten(head + test.line, 8, counts), head + (test.result.empty() ? test.line : test.result));
    EXPECT_EQ(Counts(counts), test.counts) << test.line;
  }
}

TEST(PicRewrite, TheReturnLabelsAreNumbered) {
  PicCounts counts;
  const std::string text = Rewritten("call f\ncall f\nPROCEDURE f\n", 4, counts);
  EXPECT_NE(text.find("add4 LR,LR,CODEBASE\nmove4 PC,rr63\nvorc_picret_1:\nPROCEDURE f\n"), text.npos)
      << text;
}

TEST(PicRewrite, Summary) {
  EXPECT_EQ(
      PicSummary({1, 0, 2, 1, 0}),
      "vorc: -pic: 1 address load and 2 intra-module calls made CODEBASE-relative; 1 call and 0 address "
      "loads left absolute (outside the module)\n");
  EXPECT_NE(PicSummary({0, 1, 0, 0, 0}).find("(outside the module); register-operand loadaddr left alone\n"),
            std::string::npos);
}

TEST(PicRewriteAsmFile, ReplacesTheFileOrLeavesIt) {
  const TempFolder folder;
  const std::string path = folder.Write("x.asm", "loadaddr r1,v");
  PicCounts counts;
  EXPECT_FALSE(PicRewriteAsmFile(path, 2, counts));
  EXPECT_FALSE(PicRewriteAsmFile("", 8, counts));
  EXPECT_FALSE(PicRewriteAsmFile(folder.path(), 8, counts));
  std::filesystem::create_directory(path + ".pictmp");
  EXPECT_FALSE(PicRewriteAsmFile(path, 8, counts));
  EXPECT_EQ(FileText(path), "loadaddr r1,v");
  std::filesystem::remove(path + ".pictmp");
  EXPECT_TRUE(PicRewriteAsmFile(path, 8, counts));
  EXPECT_EQ(FileText(path), "loadaddr r1,v\nadd8 r1,r1,CODEBASE\n");
  EXPECT_EQ(counts.rel_loads, 1);
  EXPECT_FALSE(std::filesystem::exists(path + ".pictmp"));
}

}  // namespace
