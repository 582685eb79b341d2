#include "lib/strings.h"

#include <gtest/gtest.h>

namespace vorc {
namespace {

TEST(Strings, OrderIsByUnsignedBytesAndNothingComesFirst) {
  EXPECT_EQ(MorvStrCmp("b", "a"), 1);
  EXPECT_EQ(MorvStrCmp("a", "ab"), -1);
  EXPECT_EQ(MorvStrCmp("\xff", "a"), 1);
  EXPECT_EQ(MorvStrCmp("", std::nullopt), 1);
  EXPECT_EQ(MorvStrCmp(std::nullopt, ""), -1);
  EXPECT_EQ(MorvStrCmp(std::nullopt, std::nullopt), 0);
}

TEST(Strings, SearchFindsTheFirstOccurrence) {
  EXPECT_EQ(MorvStrStr("abcabc", "ca"), 2);
  EXPECT_EQ(MorvStrStr("abc", "abcd"), -1);
  EXPECT_EQ(MorvStrStr("", ""), 0);
  EXPECT_EQ(MorvSearchTxt("The ERROR log", "error LOG"), 4);
  EXPECT_EQ(MorvSearchTxt("", ""), 0);
  // Only A to Z fold: not the bytes next to the letters, not letters beyond ASCII.
  EXPECT_EQ(MorvSearchTxt("[{@`", "{["), -1);
  EXPECT_EQ(MorvSearchTxt("\xc4", "\xe4"), -1);
}

TEST(Strings, SearchStaysLinearOnRepeats) {
  const std::string text(2'000'000, 'a');
  EXPECT_EQ(MorvSearchTxt(text, std::string(100'000, 'A') + "b"), -1);
}

TEST(Strings, SubstrTakesEveryNumber) {
  struct Case {
    int32_t start, length;
    std::string_view expected;
  };
  for (const Case& c : {Case{1, 2, "bc"},
                        {-5, 2, "ab"},
                        {3, -1, "de"},
                        {4, 2147483647, "e"},
                        {5, 1, ""},
                        {2147483647, -1, ""},
                        {-2147483647 - 1, -2147483647 - 1, "abcde"},
                        {2, 0, ""}}) {
    EXPECT_EQ(MorvSubstr("abcde", c.start, c.length), c.expected) << c.start << ' ' << c.length;
  }
}

TEST(Strings, CaseAndTrimLeaveOtherBytes) {
  EXPECT_EQ(MorvUpper("az{`\xe4 09"), "AZ{`\xe4 09");
  EXPECT_EQ(MorvLower("AZ[@\xc4 09"), "az[@\xc4 09");
  EXPECT_EQ(MorvTrim("\r\n\t x y \t"), "x y");
  EXPECT_EQ(MorvTrim("\v x \f"), "\v x \f");
  EXPECT_EQ(MorvTrim(" \n"), "");
}

TEST(Strings, ReplaceAllTakesMatchesFromTheLeftAndKeepsTheLimit) {
  EXPECT_EQ(MorvReplaceAll("aaaaa", "aa", "b", 100), "bba");
  EXPECT_EQ(MorvReplaceAll("abab", "ab", "", 100), "");
  EXPECT_EQ(MorvReplaceAll("abc", "", "x", 100), "abc");
  EXPECT_EQ(MorvReplaceAll("a.a", "a", "aa", 100), "aa.aa");
  EXPECT_EQ(MorvReplaceAll("aaaa", "a", "xyz", 6), "xyzxy");
  EXPECT_EQ(MorvReplaceAll("abcdef", "z", "", 4), "abc");
  EXPECT_EQ(MorvReplaceAll("abcdef", "", "x", 4), "abc");
}

TEST(Strings, HtmlEscapeNeverSplitsAReference) {
  EXPECT_EQ(MorvHtmlEscape("<a href=\"x\">'&", 100), "&lt;a href=&quot;x&quot;&gt;&#39;&amp;");
  EXPECT_EQ(MorvHtmlEscape("ab<c", 7), "ab&lt;");
  EXPECT_EQ(MorvHtmlEscape("ab<c", 6), "ab");
  EXPECT_EQ(MorvHtmlEscape("abcdef", 4), "abc");
}

TEST(Strings, DigitsArePadded) {
  EXPECT_EQ(MorvHex(255, 0), "ff");
  EXPECT_EQ(MorvHex(255, 4), "00ff");
  EXPECT_EQ(MorvHex(0xdeadbeef, 3), "deadbeef");
  EXPECT_EQ(MorvHex(1, 2147483647), "00000001");
  EXPECT_EQ(MorvHex(1, -1), "");
  EXPECT_EQ(MorvBin(5, 0), "101");
  EXPECT_EQ(MorvBin(0, 0), "0");
  EXPECT_EQ(MorvBin(5, 40), std::string(29, '0') + "101");
  EXPECT_EQ(MorvBin(0xffffffff, 1), std::string(32, '1'));
  EXPECT_EQ(MorvBin(1, -1), "");
}

TEST(Strings, NumbersAreReadUpToTheFirstOtherByte) {
  EXPECT_EQ(MorvParseHex(" \t0xFfz1"), 0xffu);
  EXPECT_EQ(MorvParseHex("123456789a"), 0x3456789au);
  EXPECT_EQ(MorvParseHex("0x"), 0u);
  EXPECT_EQ(MorvParseHex("-1"), 0u);
  EXPECT_EQ(MorvAtoi(" \n-42abc"), -42);
  EXPECT_EQ(MorvAtoi("4294967297"), 1);
  EXPECT_EQ(MorvAtoi("0x10"), 0);
  EXPECT_EQ(MorvAtoi(""), 0);
}

TEST(Strings, BitsOutsideTheWordAreZero) {
  EXPECT_EQ(MorvBits(0xabcd1234, 8, 8), 0x12u);
  EXPECT_EQ(MorvBits(0xffffffff, 0, 32), 0xffffffffu);
  EXPECT_EQ(MorvBits(0xffffffff, 28, 31), 0xfu);
  EXPECT_EQ(MorvBits(0xffffffff, 31, 2147483647), 1u);
  EXPECT_EQ(MorvBits(0xffffffff, 32, 1), 0u);
  EXPECT_EQ(MorvBits(0xffffffff, -1, 4), 0u);
  EXPECT_EQ(MorvBits(0xffffffff, 0, -1), 0u);
}

}  // namespace
}  // namespace vorc
