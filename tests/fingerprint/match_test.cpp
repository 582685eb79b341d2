#include "fingerprint/match.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>

#include "fingerprint/afis.h"
#include "fingerprint/angles.h"
#include "prints/synthetic_print.h"

namespace vorc {
namespace {

using synthetic::Impression;

saf_feature_template ScatteredMinutiae(int count, uint64_t seed) {
  synthetic::Random random(seed);
  saf_feature_template features{300, 400, {}};
  for (int i = 0; i < count; ++i) {
    features.minutiae.push_back({static_cast<int16_t>(random.Between(0, 300)),
                                 static_cast<int16_t>(random.Between(0, 400)),
                                 static_cast<float>(random.Between(0, 6.28)),
                                 random.Between(0, 1) < 0.5 ? kRidgeEnding : kValleyEnding});
  }
  return features;
}

/// The same minutiae on a finger that lies turned and shifted.
saf_feature_template Moved(saf_feature_template features, double turn, int x, int y) {
  for (saf_minutia& m : features.minutiae) {
    const double turned_x = std::cos(turn) * m.x - std::sin(turn) * m.y;
    const double turned_y = std::sin(turn) * m.x + std::cos(turn) * m.y;
    const double direction = std::fmod(m.direction + turn + kFullCircle, kFullCircle);
    m = {static_cast<int16_t>(std::lround(turned_x) + x), static_cast<int16_t>(std::lround(turned_y) + y),
         static_cast<float>(direction), m.type};
  }
  return features;
}

double Score(const saf_feature_template& probe, const saf_feature_template& candidate) {
  return saf_match(saf_probe(saf_search_template_create(probe)), saf_search_template_create(candidate));
}

TEST(Score, IsShapedByStraightPieces) {
  const double points[][2] = {{-5, 0},     {0, 0},      {8.47, 0},   {8.48, 0},   {9.8, 1.5},
                              {11.12, 3},  {14.15, 10}, {18.22, 20}, {22.39, 30}, {27.24, 40},
                              {32.01, 50}, {45.8, 80},  {59.59, 110}};
  for (const auto& [raw, shaped] : points) EXPECT_NEAR(saf_shaped_score(raw), shaped, 1e-9) << raw;
}

TEST(Score, AddsUpWhatSpeaksForAPairing) {
  // Three pairs that agree in place; one has support, one is of two types.
  saf_feature_template features{
      300, 300, {{10, 10, 0, kRidgeEnding}, {80, 20, 1, kRidgeEnding}, {40, 90, 2, kRidgeEnding}}};
  saf_search_template a{300, 300, features.minutiae, {}};
  saf_search_template b = a;
  b.minutiae[2].type = kValleyEnding;
  b.minutiae.push_back({200, 200, 0, kRidgeEnding});
  const saf_edge_shape edge{70, 1, 2}, near{82, 1.1f, 2};
  const std::vector<saf_paired> pairs{
      {{0, 0}, nullptr, nullptr, 0}, {{1, 1}, &edge, &edge, 4}, {{2, 2}, &edge, &near, 0}};
  const double fine_angle = (4 * 0.17453292 - 3 * 0.047123887 - 0.1) / (4 * 0.17453292);
  const double expected = 0.193 + 2 * 0.629 + (4 + 3) * 0.265 + 3 * 0.032 + (1 + 0.75) / 2 * 8.98 +
                          (2 * 13 - 9 - 12) / 26.0 * 9.9 + fine_angle * 2.79;
  EXPECT_NEAR(saf_raw_score(pairs, a, b), expected, 1e-6);
  EXPECT_EQ(saf_raw_score(pairs, a, b), saf_raw_score(pairs, b, a));
  const double lone = 0.629 + 0.265 + 0.032 + (1 / 3.0 + 0.25) / 2 * 8.98;
  EXPECT_NEAR(saf_raw_score({{{0, 0}, nullptr, nullptr, 0}}, a, b), lone, 1e-9);
}

TEST(SearchTemplate, KnowsTheNearestOfEachMinutia) {
  saf_feature_template features = ScatteredMinutiae(40, 1);
  const saf_search_template prepared = saf_search_template_create(features);
  std::reverse(features.minutiae.begin(), features.minutiae.end());
  EXPECT_EQ(saf_search_template_create(features).minutiae, prepared.minutiae);
  for (const auto& edges : prepared.edges) {
    EXPECT_GE(edges.size(), 9u);
    EXPECT_TRUE(std::is_sorted(edges.begin(), edges.end(), saf_neighbor_edge_compare));
  }
  features.minutiae.resize(10);
  for (const auto& edges : saf_search_template_create(features).edges) EXPECT_EQ(edges.size(), 9u);
}

TEST(Probe, FindsEveryEdgeThatMatches) {
  const saf_search_template prepared = saf_search_template_create(ScatteredMinutiae(40, 2));
  const saf_search_template other = saf_search_template_create(ScatteredMinutiae(40, 3));
  const saf_probe probe(prepared);
  for (size_t i = 0; i < 40; ++i) {
    const saf_edge_shape shape = saf_edge_shape_between(other.minutiae[i], other.minutiae[(i + 7) % 40]);
    std::set<std::pair<int, int>> expected, found;
    for (int from = 0; from < 40; ++from) {
      for (int to = 0; to < 40; ++to) {
        if (from == to) continue;
        const auto& minutiae = prepared.minutiae;
        if (saf_edge_shapes_matching(saf_edge_shape_between(minutiae[from], minutiae[to]), shape))
          expected.insert({from, to});
      }
    }
    for (const uint16_t index : probe.Candidates(shape)) {
      const saf_indexed_edge& edge = probe.Edge(index);
      if (saf_edge_shapes_matching(edge.shape, shape)) found.insert({edge.reference, edge.neighbor});
    }
    EXPECT_EQ(found, expected);
  }
}

TEST(RootPairs, AreDistinctAndBounded) {
  const saf_search_template prepared = saf_search_template_create(ScatteredMinutiae(100, 4));
  const auto roots = saf_root_pairs(saf_probe(prepared), prepared);
  std::set<std::pair<int, int>> seen;
  for (const saf_minutia_pair root : roots) EXPECT_TRUE(seen.insert({root.probe, root.candidate}).second);
  EXPECT_GT(roots.size(), 30u);
  EXPECT_LE(roots.size(), 70u);
}

TEST(Match, DoesNotMindHowTheFingerLay) {
  const saf_feature_template features = ScatteredMinutiae(35, 5);
  const double same = Score(features, features);
  EXPECT_GT(same, 200);
  for (int i = 0; i < 12; ++i) {
    const saf_feature_template moved = Moved(features, i * 0.5, 37 * i - 200, 150 - 23 * i);
    EXPECT_NEAR(Score(features, moved), same, same / 10) << i;
    EXPECT_NEAR(Score(moved, features), same, same / 10) << i;
  }
}

TEST(Match, NothingMatchesNothing) {
  const saf_feature_template features = ScatteredMinutiae(30, 6);
  for (const int count : {0, 1}) {
    const saf_feature_template poor = ScatteredMinutiae(count, 6);
    EXPECT_EQ(Score(features, poor), 0);
    EXPECT_EQ(Score(poor, features), 0);
    EXPECT_EQ(Score(poor, poor), 0);
  }
  // All minutiae in one place.
  saf_feature_template heap{300, 300, std::vector<saf_minutia>(100, {150, 150, 0, kRidgeEnding})};
  EXPECT_TRUE(std::isfinite(Score(heap, heap)));
  AfisPrint print(features);
  EXPECT_EQ(MorvAfisMatch(&print, nullptr), 0);
  EXPECT_EQ(MorvAfisMatch(nullptr, &print), 0);
}

// The rates that the documentation tells, on a smaller sample: no stranger reaches 40, and of the same
// finger's prints nearly all do.
TEST(Match, TellsFingersApart) {
  constexpr int kFingers = 6, kImpressions = 3;
  std::vector<std::unique_ptr<AfisPrint>> prints;
  for (int i = 0; i < kFingers; ++i) {
    const synthetic::Finger finger = synthetic::GrowFinger(500 + i);
    synthetic::Random random(i);
    for (int j = 0; j < kImpressions; ++j) {
      Impression impression = synthetic::RandomImpression(random);
      impression.visible *= 0.9;
      prints.push_back(MorvAfisExtract(synthetic::ToPgm(Scan(finger, impression, i * 10 + j))));
      ASSERT_NE(prints.back(), nullptr);
    }
  }
  for (size_t i = 0; i < prints.size(); ++i) {
    for (size_t j = 0; j < prints.size(); ++j) {
      const double score = MorvAfisMatch(prints[i].get(), prints[j].get());
      EXPECT_EQ(MorvAfisMatch(prints[i].get(), prints[j].get()), score);
      if (i / kImpressions == j / kImpressions) {
        EXPECT_GE(score, 40) << i << ' ' << j;
      } else {
        EXPECT_LT(score, 40) << i << ' ' << j;
      }
    }
  }
}

}  // namespace
}  // namespace vorc
