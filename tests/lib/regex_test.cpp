#include "lib/regex.h"

#include <gtest/gtest.h>

#include <ctime>
#include <random>
#include <string>
#include <vector>

#include "regex_reference.h"

namespace vorc {
namespace {

std::string Show(bool found, const RegexMatch& match) {
  if (!found) return "none";
  const auto show = [](RegexSpan span) {
    return span.start < 0 ? std::string("-") : std::to_string(span.start) + "+" + std::to_string(span.length);
  };
  std::string shown = show(match.whole);
  size_t groups = match.groups.size();
  while (groups > 0 && match.groups[groups - 1].start < 0) --groups;
  for (size_t i = 0; i < groups; ++i) shown += " " + show(match.groups[i]);
  return shown;
}

template <typename Matcher>
std::string Search(Matcher&& matcher, std::string_view text) {
  RegexMatch match;
  const bool found = matcher.FindFirst(text, match);
  return Show(found, match);
}

struct Case {
  std::string pattern;
  std::string text;
  std::string expected;  ///< start+length of the match, then of the groups
};

void Check(const std::vector<Case>& cases) {
  for (const Case& c : cases) {
    EXPECT_EQ(Search(Regex(c.pattern), c.text), c.expected) << "/" << c.pattern << "/ on '" << c.text << "'";
  }
}

TEST(RegexTest, Grammar) {
  Check({
      {"", "abc", "0+0"},
      {"a.c", "a\nc", "0+3"},
      {"a.", "a", "none"},
      {"*a", "x*a", "1+2"},
      {"a**", "aa*", "0+3"},
      {"a**", "aa", "none"},
      {"a***", "a**", "0+3"},
      {"(+|?)", "?", "0+1 0+1"},
      {"a|", "b", "0+0"},
      {"|a", "a", "0+0"},
      {"()a", "a", "0+1 0+0"},
      {"a{2}", "aaa{2}", "2+4"},
      {"a\\.b\\\\", "axb a.b\\", "4+4"},
      {"a\\", "a\\", "0+2"},
      {"\\n", "\nn", "1+1"},
      {"x^", "x", "none"},
      {"^*a$+", "ba", "1+1"},
      {"(^|,)b", "ab,b", "2+2 2+1"},
      {"a$|b", "ab", "1+1"},
      {std::string("a\0b", 3), "xa", "1+1"},
      {"a.b", std::string("a\0b", 3), "0+3"},
  });
}

TEST(RegexTest, Sets) {
  Check({
      {"[b-d]+", "abcde", "1+3"},
      {"[^b-d]", "bce", "2+1"},
      {"[a-]+", "b-a-", "1+3"},
      {"[-a]+", "b-a", "1+2"},
      {"[ab", "xb", "1+1"},
      {"[a-", "x-", "1+1"},
      {"[", "a", "none"},
      {"[]a]", "a]", "none"},
      {"[^]", "\n", "0+1"},
      {"[z-a]", "amz", "none"},
      {"[\\]x]+", "a]x", "1+2"},
      {"[\\d_]+", "ab1_2", "2+3"},
      {"[^\\W_]+", "_-a1_", "2+2"},
      {"[+-\\d]+", "a1-+", "1+3"},
      {"[!-\\]]+", "a]Z", "1+2"},
      {"[a\\", "\\", "0+1"},
      {"\\D\\d\\S\\s\\W\\w", "1a2b\v._", "1+6"},
      {"\\w", "\xe9\xff", "none"},
      {"\\W\\S\\D", "\xe9\xff\x80", "0+3"},
      {"[\x80-\xff]+", "a\xc3\xa9z", "1+2"},
  });
}

TEST(RegexTest, GreedyLeftmostAndByPriority) {
  Check({
      {"(a|ab)(c|bcd)", "abcd", "0+4 0+1 1+3"},
      {"(a)|(b)", "b", "0+1 - 0+1"},
      {"((a)|b)*", "ab", "0+2 1+1 0+1"},
      {"(a|b*)*c", "abbc", "0+4 3+0"},
  });
}

TEST(RegexTest, UnbalancedParenthesesMatchNothing) {
  for (const char* pattern : {"(", ")", "a)", "(a", "(a|", "((a)", "a|)", "(]"}) {
    EXPECT_EQ(Search(Regex(pattern), "a()"), "none") << pattern;
  }
  EXPECT_EQ(Search(Regex("[(]\\)"), "()"), "0+2");
}

TEST(RegexTest, NodesAreLimited) {
  const auto nested = [](size_t depth) { return std::string(depth, '(') + "a" + std::string(depth, ')'); };
  EXPECT_EQ(Search(Regex(std::string(128, 'a')), std::string(130, 'a')), "0+128");
  EXPECT_EQ(Search(Regex(std::string(129, 'a')), std::string(130, 'a')), "none");
  EXPECT_EQ(Search(Regex(nested(127)), "ba").substr(0, 7), "1+1 1+1");
  EXPECT_EQ(Search(Regex(nested(128)), "ba"), "none");
  EXPECT_EQ(Search(Regex(std::string(10'000'000, '(')), "("), "none");
  EXPECT_EQ(Search(Regex(std::string(1000, '|')), ""), "none");
}

TEST(RegexTest, TenGroupsAreStored) {
  EXPECT_EQ(Search(Regex("(a)(b)(c)(d)(e)(f)(g)(h)(i)(j)(k)l"), "abcdefghijkl"),
            "0+12 0+1 1+1 2+1 3+1 4+1 5+1 6+1 7+1 8+1 9+1");
  RegexSpan match;
  std::vector<RegexSpan> groups(12, RegexSpan{5, 5});
  ASSERT_TRUE(MorvRegexFindFirst("(a)|(b)", "xb", match, groups));
  EXPECT_EQ(match.start, 1);
  EXPECT_EQ(groups[0].start, -1);
  EXPECT_EQ(groups[1].start, 1);
  EXPECT_EQ(groups[11].length, -1);
  EXPECT_FALSE(MorvRegexFindFirst("c", "xb", match, {}));
}

// False if the reference took too long to say.
bool Compare(const std::string& pattern, const std::vector<std::string>& texts) {
  Regex regex(pattern);
  ReferenceRegex reference(pattern);
  for (const std::string& text : texts) {
    const std::string expected = Search(reference, text);
    if (reference.gave_up()) return false;
    EXPECT_EQ(Search(regex, text), expected) << "/" << pattern << "/ on '" << text << "'";
  }
  return true;
}

// Every pattern over a small alphabet, on every short text.
void CompareAll(const std::string& alphabet, size_t pattern_length, size_t text_length) {
  const auto grow = [](const std::string& bytes, size_t length) {
    std::vector<std::string> all{""};
    for (size_t i = 0; i < all.size(); ++i) {
      for (size_t j = 0; j < bytes.size() && all[i].size() < length; ++j) all.push_back(all[i] + bytes[j]);
    }
    return all;
  };
  const std::vector<std::string> texts = grow("ab", text_length);
  for (const std::string& pattern : grow(alphabet, pattern_length)) {
    if (ParseRegex(pattern).ok) {
      ASSERT_TRUE(Compare(pattern, texts)) << pattern;
    }
    if (testing::Test::HasFailure()) return;
  }
}

TEST(RegexTest, AgreesWithTheReferenceOnAllShortPatterns) {
  CompareAll("ab()|*+?", 5, 3);
  CompareAll("a(b)*^$.", 5, 3);
}

std::string RandomPattern(std::mt19937& random, int depth) {
  static const char* const kAtoms[] = {"a", "b", ".", "[ab]", "[^a]", "^", "$", "\\w", ""};
  static const char* const kQuantifiers[] = {"", "", "*", "+", "?"};
  const auto pick = [&](size_t count) { return static_cast<size_t>(random()) % count; };
  std::string pattern;
  for (size_t i = pick(3) + 1; i > 0; --i) {
    if (depth == 0 || pick(3) == 0) {
      pattern += kAtoms[pick(std::size(kAtoms))];
    } else {
      pattern += "(" + RandomPattern(random, depth - 1) + ")";
    }
    if (!pattern.empty()) pattern += kQuantifiers[pick(std::size(kQuantifiers))];
    if (pick(4) == 0) pattern += "|";
  }
  return pattern;
}

TEST(RegexTest, AgreesWithTheReferenceOnNestedPatterns) {
  std::mt19937 random(20240229);
  int compared = 0;
  for (int round = 0; round < 4000 && !HasFailure(); ++round) {
    compared += Compare(RandomPattern(random, 3), {"", "a", "b", "ab", "ba", "aab", "abba", "babab"});
  }
  EXPECT_GT(compared, 3000);
}

// Searches from every offset, prepared for and not, in texts that end on and around the end of a block.
TEST(RegexTest, ForesightChangesNoAnswer) {
  std::mt19937 random(77);
  for (int round = 0; round < 600 && !HasFailure(); ++round) {
    const std::string pattern = round == 0 ? "x*y|x" : RandomPattern(random, 3);
    std::string text(round < 40 ? 4090 + static_cast<size_t>(round) : random() % 12, 'a');
    for (char& byte : text) byte = static_cast<char>("aab\n"[random() % 4]);
    Regex plain(pattern);
    Regex foreseeing(pattern);
    foreseeing.Foresee(text);
    for (size_t i = text.size() > 100 ? text.size() - 20 : 0; i <= text.size(); ++i) {
      EXPECT_EQ(Search(foreseeing, text.substr(i)), Search(plain, text.substr(i))) << pattern << " " << text;
    }
    EXPECT_EQ(Search(foreseeing, text), Search(plain, text)) << pattern << " " << text;
  }
}

TEST(RegexTest, LongTextsAnswerQuickly) {
  const std::clock_t begin = std::clock();
  const std::string text(100'000, 'a');
  for (const char* pattern : {"(a*)*b", "(a|a)*b", "(a|b)*c", "(a+)+(a+)+b", "(a?a?)*b", "a*a*a*a*b"}) {
    EXPECT_EQ(Search(Regex(pattern), text), "none") << pattern;
  }
  EXPECT_EQ(Search(Regex("(a|b)*c"), text + "c"), "0+100001 99999+1");
  std::string nested = "a";
  for (int i = 0; i < 80; ++i) nested = "(" + nested + ")*";
  EXPECT_EQ(Search(Regex(nested + "b", 0), text.substr(0, 1000)), "none");
  EXPECT_LT(std::clock() - begin, 20 * CLOCKS_PER_SEC);
}

}  // namespace
}  // namespace vorc
