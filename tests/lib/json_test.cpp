#include "lib/json.h"

#include <gtest/gtest.h>

namespace vorc {
namespace {

constexpr const char* kSample = R"( { "a" : [ 1 , { "b" : "x" } , [ ] , null ] , "c\u0064" : "\u00e9\n\/\"" ,
  "0" : 1, "a" : 2, "deep" : { "list" : [ [ 10, 20 ], -1.5e3 ] }, "last" : true } )";

TEST(MorvJsonGet, FollowsThePath) {
  const struct {
    const char* path;
    const char* value;
  } cases[] = {
      {"a.0", "1"},
      {"a.1.b", "x"},
      {"a.1", R"({ "b" : "x" })"},
      {"a.2", "[ ]"},
      {"a.2.0", ""},
      {"a.3", "null"},
      {"a.4", ""},
      {"a.18446744073709551616", ""},
      {"a.00001.b", "x"},
      {"a.b", ""},
      {"cd", "?\n/\""},
      {"0", ""},
      {"deep.list.0.1", "20"},
      {"deep.list.1", "-1.5e3"},
      {"deep.list.1.0", ""},
      {"last", "true"},
      {"last.", "true"},
      {"none", ""},
      {".a", ""},
      {"a..0", ""},
  };
  for (const auto& c : cases) EXPECT_EQ(MorvJsonGet(kSample, c.path), c.value) << c.path;
}

TEST(MorvJsonGet, EndsAtBrokenText) {
  const struct {
    const char* json;
    const char* path;
    const char* value;
  } cases[] = {
      {"", "", ""},
      {"  7  ", "", "7"},
      {"\"open", "", "open"},
      {"\"open\\\"", "", "open\""},
      {"{\"a\":[1,\"cut\\", "a.1", "cut"},
      {"{\"a\":\"cut,\"b\":1}", "b", ""},
      {"{\"a\":{\"b\":1}", "", ""},
      {"{\"a\":{\"b\":1}", "a.b", "1"},
      {"[1 2]", "1", ""},
      {"[1,]", "1", ""},
      {"[,5]", "1", "5"},
      {"{\"a\" 1}", "a", ""},
      {"{\"a\":1 \"b\":2}", "b", ""},
      {"{a:1,\"b\":2}", "b", ""},
      {"[{]},2]", "1", "2"},
      {"[\"]\",{\"k\":\"}\"},3]", "2", "3"},
      {"[\v1]", "0", "\v1"},
  };
  for (const auto& c : cases) EXPECT_EQ(MorvJsonGet(c.json, c.path), c.value) << c.json;
}

TEST(MorvJsonGet, UnescapesOneByteForEachEscape) {
  EXPECT_EQ(MorvJsonGet(R"("\b\f\n\r\t\q\\\u0041\u007F\u0080\u0000\ud83d\ude00")", ""),
            "\b\f\n\r\tq\\A\x7f????");
  EXPECT_EQ(MorvJsonGet(R"("\u00zz\u4")", ""), "?zz?");
  EXPECT_EQ(MorvJsonGet(R"("a\tbc")", "", 3), "a\t");
  EXPECT_EQ(MorvJsonGet("123456", "", 4), "123");
  EXPECT_EQ(MorvJsonGet("123456", "", 0), "");
}

TEST(MorvJsonGet, KnowsKeysBy127Bytes) {
  const std::string key(127, 'k');
  const std::string json = "{\"" + key + "and more\":1,\"k\\u006b\":2}";
  EXPECT_EQ(MorvJsonGet(json, key), "1");
  EXPECT_EQ(MorvJsonGet(json, key + "a"), "");
  EXPECT_EQ(MorvJsonGet(json, "kk"), "2");
  EXPECT_EQ(MorvJsonGet("{\"" + std::string(126, 'k') + "\\u006b!\":1}", key), "1");
}

TEST(MorvJsonGet, SurvivesEveryCutAndAnyDepth) {
  const std::string sample = kSample;
  for (size_t length = 0; length < sample.size(); ++length) {
    const std::string found = MorvJsonGet(std::string_view(sample).substr(0, length), "deep.list.1");
    EXPECT_TRUE(std::string_view("-1.5e3").starts_with(found)) << length;
    EXPECT_EQ(MorvJsonGet(std::string_view(sample).substr(0, length), "last").empty(),
              length <= sample.find("true"));
  }
  constexpr size_t kDepth = 5'000'000;
  const std::string nested = std::string(kDepth, '[') + std::string(kDepth, ']');
  EXPECT_EQ(MorvJsonGet("[" + nested + ",7]", "1"), "7");
  EXPECT_EQ(MorvJsonGet(nested.substr(1), ""), nested.substr(1, 2 * kDepth - 2));
  EXPECT_EQ(MorvJsonGet(nested.substr(0, kDepth), ""), "");
}

TEST(MorvJsonEscape, EscapesWhatJsonForbids) {
  EXPECT_EQ(MorvJsonEscape("a\t\n\r\"\\\b\x1f\x7f/\xc3\xa9"),
            "a\\t\\n\\r\\\"\\\\\\u0008\\u001f\x7f/\xc3\xa9");
}

TEST(MorvJsonEscape, StopsWhereAnEscapeMightNotFit) {
  EXPECT_EQ(MorvJsonEscape("abc", 7), "");
  EXPECT_EQ(MorvJsonEscape("abc", 8), "a");
  EXPECT_EQ(MorvJsonEscape("abc", 9), "ab");
  EXPECT_EQ(MorvJsonEscape("\x01\x01", 13), "\\u0001");
  EXPECT_EQ(MorvJsonEscape("\x01\x01", 14), "\\u0001\\u0001");
}

}  // namespace
}  // namespace vorc
