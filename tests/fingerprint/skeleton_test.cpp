#include "fingerprint/skeleton.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <sstream>

#include "fingerprint/skeleton_filters.h"
#include "fingerprint/skeleton_trace.h"
#include "fingerprint/thinning.h"
#include "prints/synthetic_print.h"

namespace vorc {
namespace {

/// The number of areas of cells with `value`; set cells touch by corners too, clear ones don't.
int CountAreas(saf_boolean_matrix matrix, uint8_t value) {
  int areas = 0;
  std::vector<saf_int_point> open;
  const auto take = [&](saf_int_point p) {
    if (!matrix.Contains(p) || matrix.At(p) != value) return false;
    matrix.At(p) = 2;
    open.push_back(p);
    return true;
  };
  for (int y = 0; y < matrix.height(); ++y) {
    for (int x = 0; x < matrix.width(); ++x) {
      areas += take({x, y});
      while (!open.empty()) {
        const saf_int_point p = open.back();
        open.pop_back();
        for (int i = 0; i < 8; i += 2 - value) take(p + kNeighbours[i]);
      }
    }
  }
  return areas;
}

TEST(Thinning, KeepsWhatHangsTogetherAndWhatIsHollow) {
  for (uint64_t seed = 0; seed < 20; ++seed) {
    synthetic::Random random(seed);
    saf_boolean_matrix blobs(80, 60);
    for (int i = 0; i < 40; ++i) {
      const int x = static_cast<int>(random.Between(1, 66)), y = static_cast<int>(random.Between(1, 46));
      const int width = static_cast<int>(random.Between(1, 12)),
                height = static_cast<int>(random.Between(1, 12));
      for (int j = y; j < y + height; ++j)
        std::fill_n(blobs.Row(j) + x, width, static_cast<uint8_t>(i % 4 != 0));
    }
    const saf_boolean_matrix thin = saf_binary_thin(blobs);
    EXPECT_EQ(CountAreas(thin, 1), CountAreas(blobs, 1));
    EXPECT_EQ(CountAreas(thin, 0), CountAreas(blobs, 0));
    EXPECT_EQ(saf_binary_thin(thin).cells(), thin.cells());
    for (size_t i = 0; i < thin.cells().size(); ++i) EXPECT_LE(thin.cells()[i], blobs.cells()[i]);
  }
}

// Draws lines, each told by the four coordinates of its ends.
saf_skeleton Draw(const std::string& lines) {
  saf_boolean_matrix canvas(160, 100);
  std::istringstream numbers(lines);
  for (saf_int_point from, to; numbers >> from.x >> from.y >> to.x >> to.y;) {
    for (const saf_int_point p : saf_line_points(from, to)) canvas.At(p) = 1;
  }
  return saf_skeletons_create(canvas, kRidgeEnding);
}

TEST(SkeletonFilters, KeepRidgesAndDropArtefacts) {
  const struct {
    const char *what, *lines;
    int endings, branchings;
  } cases[] = {
      {"line", "10 50 150 50", 2, 0},
      {"closed line", "50 50 80 20  80 20 110 50  110 50 80 80  80 80 50 50", 0, 0},
      {"fork", "10 50 80 50  80 50 150 10  80 50 150 90", 3, 1},
      {"narrow gap", "10 50 75 50  90 53 150 53", 2, 0},
      {"wide gap", "10 50 65 50  90 50 150 50", 4, 0},
      {"gap around a corner", "10 50 75 50  80 56 80 95", 4, 0},
      {"gap with a ridge in it", "10 50 75 50  90 50 150 50  83 5 83 95", 6, 0},
      {"short tail", "10 50 150 50  80 50 80 65", 2, 0},
      {"long tail", "10 50 150 50  80 50 80 75", 3, 1},
      {"short fragment", "10 50 150 50  70 80 85 80", 2, 0},
      {"long fragment", "10 50 150 50  70 80 95 80", 4, 0},
      {"dot", "10 50 10 50", 0, 0},
      {"pore", "10 50 70 50  70 50 80 40  70 50 80 60  80 40 90 50  80 60 90 50  90 50 150 50", 2, 0},
      {"island", "10 50 50 50  50 50 80 20  50 50 80 80  80 20 110 50  80 80 110 50  110 50 150 50", 2, 2},
  };
  for (const auto& c : cases) {
    const saf_skeleton skeleton = Draw(c.lines);
    int endings = 0, branchings = 0;
    for (const saf_skeleton_minutia& minutia : skeleton.minutiae) {
      endings += minutia.ridges.size() == 1;
      branchings += minutia.ridges.size() > 2;
    }
    EXPECT_EQ(endings, c.endings) << c.what;
    EXPECT_EQ(branchings, c.branchings) << c.what;
  }
}

TEST(Skeleton, DirectionLeadsIntoTheRidge) {
  const saf_skeleton skeleton = Draw("20 80 100 20");
  ASSERT_EQ(skeleton.minutiae.size(), 2u);
  for (const saf_skeleton_minutia& minutia : skeleton.minutiae) {
    const saf_int_point other = skeleton.minutiae[&minutia == &skeleton.minutiae[0]].position;
    double expected = std::atan2(other.y - minutia.position.y, other.x - minutia.position.x);
    if (expected < 0) expected += 2 * std::acos(-1);
    EXPECT_NEAR(saf_skeleton_ridge_direction(skeleton, minutia.ridges[0]), expected, 0.05);
  }
  saf_skeleton empty;
  empty.minutiae.resize(2);
  empty.Connect(0, 1, {});
  EXPECT_EQ(saf_skeleton_ridge_direction(empty, 0), 0);
}

}  // namespace
}  // namespace vorc
