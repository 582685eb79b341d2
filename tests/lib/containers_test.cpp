#include "lib/containers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>

namespace vorc {
namespace {

using Texts = std::vector<std::string>;

TextList Listed(const Texts& items) {
  return TextList(items);
}

TEST(TextList, SortsByValueOnlyIfEveryElementIsNumeric) {
  const struct {
    Texts items;
    const char* sorted;
  } cases[] = {
      {{"10", "9"}, "9|10"},
      {{"10", "9", "a"}, "10|9|a"},
      {{"10", "9", ""}, "|10|9"},
      {{"10", "9", "."}, ".|10|9"},
      {{"10", "9", "-"}, "-|10|9"},
      {{"10", "9", "1e1"}, "10|1e1|9"},
      {{"10", "9", "0x1"}, "0x1|10|9"},
      {{"10", "9", "1.2.3"}, "1.2.3|10|9"},
      {{"10", "9", "- 1"}, "- 1|10|9"},
      {{"10", "9", "8\n"}, "10|8\n|9"},
      {{" 10\t", "9.", "-.5", "+1"}, "-.5|+1|9.| 10\t"},
      {{"1.0", "-0", "1", "0", "01"}, "-0|0|1.0|1|01"},
      {{"prefixed-b", "prefixed-", "prefixed-a", "\xff", "~", ""}, "|prefixed-|prefixed-a|prefixed-b|~|\xff"},
  };
  for (const auto& c : cases) {
    TextList list = Listed(c.items);
    list.Sort();
    EXPECT_EQ(list.Join("|"), c.sorted);
  }
}

TEST(TextList, JoinStopsAtItsLimit) {
  const TextList list = Listed({"ab", "cd", "ef"});
  EXPECT_EQ(list.Join("--"), "ab--cd--ef");
  EXPECT_EQ(list.Join("--", 3), "ab-");
  EXPECT_EQ(list.Join("--", 0), "");
  EXPECT_EQ(TextList().Join("--"), "");
}

TEST(SplitText, KeepsEmptyParts) {
  EXPECT_EQ(SplitText("a,b,", ","), (Texts{"a", "b", ""}));
  EXPECT_EQ(SplitText(",", ","), (Texts{"", ""}));
  EXPECT_EQ(SplitText("", ","), (Texts{""}));
  EXPECT_EQ(SplitText({}, ","), (Texts{""}));
  EXPECT_EQ(SplitText("a,b", ""), (Texts{"a,b"}));
  EXPECT_EQ(SplitText("aaaa", "aaa"), (Texts{"", "a"}));
}

TEST(SplitText, SurvivesASeparatorThatNearlyMatchesEverywhere) {
  const std::string text(1'000'000, 'a');
  const std::string separator = std::string(500'000, 'a') + "b";
  EXPECT_EQ(SplitText(text, separator).size(), 1U);
}

// Random sets and deletions side by side with a plain vector of pairs.
TEST(TextMap, BehavesLikeALinearWalk) {
  std::mt19937 random(7);
  TextMap map;
  std::vector<std::pair<std::string, std::string>> model;
  const auto find = [&model](const std::string& key) {
    return std::find_if(model.begin(), model.end(), [&](const auto& pair) { return pair.first == key; });
  };
  for (int step = 0; step < 20'000; ++step) {
    const std::string key = std::to_string(random() % (step < 10'000 ? 200 : 20));
    const auto at = find(key);
    ASSERT_EQ(map.Has(key), at != model.end());
    if (random() % 2 == 0) {
      ASSERT_EQ(map.Delete(key), at != model.end());
      if (at != model.end()) model.erase(at);
    } else {
      map.Set(key, std::to_string(step));
      at == model.end() ? model.emplace_back(key, std::to_string(step)).second
                        : at->second = std::to_string(step);
    }
    ASSERT_EQ(map.Count(), model.size());
  }
  Texts keys;
  for (const auto& [key, value] : model) {
    keys.push_back(key);
    EXPECT_EQ(*map.Get(key), value);
  }
  EXPECT_EQ(map.Keys(), keys);
}

// Each of these takes minutes if erasing moves the rest or gaps pile up.
TEST(TextSet, ManyDeletionsStayLinear) {
  constexpr int kMany = 200'000;
  TextSet set;
  for (int i = 0; i < kMany; ++i) set.Add(std::to_string(i));
  for (int i = 0; i < kMany - 1; ++i) ASSERT_TRUE(set.Remove(std::to_string(i)));
  for (int i = 0; i < kMany; ++i) ASSERT_EQ(set.Items().size(), 1U);
  for (int i = 0; i < kMany; ++i) {
    ASSERT_EQ(set.Add("passing"), 2U);
    ASSERT_TRUE(set.Remove("passing"));
  }
  EXPECT_EQ(set.Items(), Texts{std::to_string(kMany - 1)});
}

TEST(TextSet, AddOfAPresentTextAnswersTheCount) {
  TextSet set;
  EXPECT_FALSE(set.Remove(""));
  EXPECT_EQ(set.Add(""), 1U);
  EXPECT_EQ(set.Add("a"), 2U);
  EXPECT_EQ(set.Add(""), 2U);
  EXPECT_EQ(set.Items(), (Texts{"", "a"}));
}

TEST(TextTuple, IsSealedByTheFirstReadInRange) {
  TextTuple tuple;
  EXPECT_FALSE(tuple.Get(0));
  EXPECT_EQ(tuple.Add("a"), 1U);
  EXPECT_FALSE(tuple.Get(-1));
  EXPECT_FALSE(tuple.Get(1));
  EXPECT_EQ(tuple.Add("b"), 2U);
  EXPECT_EQ(tuple.Get(1), "b");
  EXPECT_FALSE(tuple.Add("c"));
  EXPECT_EQ(tuple.Count(), 2U);
}

TEST(Blob, ReadsOnlyWhatIsThere) {
  const float number = -2.5F;
  std::string bytes("\xff\0ab", 4);
  bytes.append(reinterpret_cast<const char*>(&number), sizeof number);
  const Blob blob(bytes);
  EXPECT_EQ(blob.Byte(0), 255);
  EXPECT_EQ(blob.Byte(-1), -1);
  EXPECT_EQ(blob.Byte(8), -1);
  int32_t first = 0;
  std::memcpy(&first, bytes.data(), sizeof first);
  EXPECT_EQ(blob.Int32(0), first);
  EXPECT_EQ(blob.Float(4), -2.5);
  for (const int64_t outside : {int64_t{-1}, int64_t{5}, int64_t{INT32_MAX}}) {
    EXPECT_EQ(blob.Int32(outside), 0);
    EXPECT_EQ(blob.Float(outside), 0.0);
  }
  EXPECT_EQ(blob.Find("ab"), 2);
  EXPECT_EQ(blob.Find("abc"), -1);
  EXPECT_EQ(blob.Find(""), 0);
  EXPECT_EQ(Blob("").Find(""), 0);
  EXPECT_EQ(Blob("").Int32(0), 0);
}

}  // namespace
}  // namespace vorc
