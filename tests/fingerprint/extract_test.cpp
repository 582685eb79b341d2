#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

#include "fingerprint/afis.h"
#include "fingerprint/feature_extract.h"
#include "fingerprint/minutiae.h"
#include "prints/synthetic_print.h"

namespace vorc {
namespace {

/// The number of minutiae in a picture whose pixels `grey(x, y)` gives.
template <typename Grey>
int CountMinutiae(int width, int height, Grey grey) {
  GrayPicture picture{width, height, {}};
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) picture.pixels.push_back(static_cast<uint8_t>(grey(x, y)));
  }
  return MorvAfisMinutiae(MorvAfisExtract(synthetic::ToPgm(picture)).get());
}

TEST(Extract, FindsLittleWhereNoPrintIs) {
  synthetic::Random random(1);
  EXPECT_EQ(CountMinutiae(300, 300, [](int, int) { return 255; }), 0);
  EXPECT_EQ(CountMinutiae(300, 300, [](int, int) { return 0; }), 0);
  for (const int size : {1, 2, 3, 14, 16, 60, 119}) {
    EXPECT_LE(CountMinutiae(size, size, [](int x, int y) { return x + y; }), 20) << size;
    EXPECT_LE(CountMinutiae(1, size, [](int, int y) { return y * 99; }), 0) << size;
  }
  EXPECT_LE(CountMinutiae(400, 300, [](int x, int y) { return (x + y) / 3; }), 5);
  EXPECT_LE(CountMinutiae(300, 300, [](int x, int) { return x % 9 < 5 ? 0 : 255; }), 5);
  EXPECT_EQ(CountMinutiae(900, 900, [&](int, int) { return random.Between(0, 256); }), kMaxMinutiae);
  EXPECT_EQ(MorvAfisMinutiae(nullptr), -1);
}

TEST(Extract, RefusesWhatIsNoPicture) {
  const std::string whole = synthetic::ToPgm({40, 40, std::vector<uint8_t>(1600, 128)});
  EXPECT_NE(MorvAfisExtract(whole), nullptr);
  for (const std::string& bytes :
       {std::string(), std::string("no picture"), whole.substr(0, 5), std::string("P5 9000 7200 255\n"),
        std::string("P5 40000 1 255\n") + std::string(40000, 'x')}) {
    EXPECT_EQ(MorvAfisExtract(bytes), nullptr) << bytes.substr(0, 20);
  }
}

TEST(Extract, IsTheSameEachTimeAndTellsItsStages) {
  const auto picture = synthetic::Scan(synthetic::GrowFinger(3, 200, 240), {}, 1);
  const saf_double_matrix image = saf_image_load_grayscale(synthetic::ToPgm(picture)).value();
  const auto features = saf_feature_extract(image, 500);
  ASSERT_TRUE(features);
  EXPECT_EQ(features->width, picture.width);
  EXPECT_GT(features->minutiae.size(), 15u);
  setenv("SAF_DIAG", "1", 1);
  testing::internal::CaptureStderr();
  EXPECT_EQ(saf_feature_extract(image, 500), features);
  unsetenv("SAF_DIAG");
  std::string expected;
  for (const char* stage :
       {"resize", "blockmap", "histograms", "segmentation", "equalize", "orientations", "smoothing-parallel",
        "smoothing-orthogonal", "binarize", "pixelwise-mask", "cleanup", "inner mask", "ridge-skeleton",
        "valley-skeleton", "minutiae+filters", "  extract done"}) {
    expected += "[saf] stage: " + std::string(stage) + "\n";
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr(), expected);
}

std::vector<saf_minutia> Row(int count, int distance) {
  std::vector<saf_minutia> minutiae;
  for (int i = 0; i < count; ++i)
    minutiae.push_back({static_cast<int16_t>(100 + i * distance), 50, 0, kRidgeEnding});
  return minutiae;
}

TEST(MinutiaFilters, DropCrowdsAndKeepTheMostLonely) {
  const struct {
    int count;
    int distance;
    size_t left;
  } clouds[] = {{5, 1, 5}, {6, 1, 0}, {6, 4, 0}, {6, 5, 2}, {11, 10, 11}, {11, 8, 11}, {1, 0, 1}, {0, 0, 0}};
  for (const auto& c : clouds) {
    auto minutiae = Row(c.count, c.distance);
    saf_minutia_cloud_filter(minutiae);
    EXPECT_EQ(minutiae.size(), c.left) << c.count << ' ' << c.distance;
  }
  auto minutiae = Row(103, 30);
  for (int i = 0; i < 7; ++i) minutiae[static_cast<size_t>(50 + i)].x = static_cast<int16_t>(1600 + i);
  const auto all = minutiae;
  saf_top_minutiae_filter(minutiae);
  EXPECT_EQ(minutiae.size(), 100u);
  const auto crowded = std::count_if(minutiae.begin(), minutiae.end(),
                                     [](const auto& m) { return m.x >= 1600 && m.x <= 1606; });
  EXPECT_EQ(crowded, 4);
  auto few = Row(100, 1);
  saf_top_minutiae_filter(few);
  EXPECT_EQ(few, Row(100, 1));
}

TEST(MinutiaFilters, DropWhatEndsAtTheEdge) {
  saf_boolean_matrix mask(100, 100);
  for (int y = 0; y < 100; ++y) std::fill_n(mask.Row(y) + 30, 70, uint8_t{1});
  std::vector<saf_minutia> minutiae{{40, 50, 0, kRidgeEnding},
                                    {39, 50, 0, kRidgeEnding},
                                    {31, 50, 3.14f, kRidgeEnding},
                                    {95, 50, 3.14f, kRidgeEnding},
                                    {50, 5, 1.57f, kRidgeEnding}};
  saf_inner_minutiae_filter(minutiae, mask);
  ASSERT_EQ(minutiae.size(), 2u);
  EXPECT_EQ(minutiae[0].x, 40);
  EXPECT_EQ(minutiae[1].x, 31);
}

}  // namespace
}  // namespace vorc
