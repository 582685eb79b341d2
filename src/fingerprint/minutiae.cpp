#include "fingerprint/minutiae.h"

#include <numeric>

#include "fingerprint/angles.h"
#include "fingerprint/point_grid.h"

namespace vorc {

namespace {

constexpr double kMaskDisplacement = 10.06;
constexpr int kCloudRadius = 20;
constexpr int kMaxCloud = 5;
constexpr size_t kNearestRank = 5;

void Collect(const saf_skeleton& skeleton, std::vector<saf_minutia>& minutiae) {
  for (const saf_skeleton_minutia& minutia : skeleton.minutiae) {
    if (minutia.ridges.size() != 1) continue;
    minutiae.push_back({static_cast<int16_t>(minutia.position.x), static_cast<int16_t>(minutia.position.y),
                        static_cast<float>(saf_skeleton_ridge_direction(skeleton, minutia.ridges[0])),
                        skeleton.type});
  }
}

saf_int_point Position(const saf_minutia& minutia) {
  return {minutia.x, minutia.y};
}

PointGrid MakeGrid(const std::vector<saf_minutia>& minutiae) {
  saf_int_point corner;
  for (const saf_minutia& minutia : minutiae) {
    corner = {std::max<int>(corner.x, minutia.x), std::max<int>(corner.y, minutia.y)};
  }
  PointGrid grid(corner.x + 1, corner.y + 1, kCloudRadius);
  for (size_t i = 0; i < minutiae.size(); ++i) grid.Add(Position(minutiae[i]), static_cast<int>(i));
  return grid;
}

/// The squared distance of the sixth nearest minutia, itself counted. There must be as many.
int64_t SixthNearest(const PointGrid& grid, saf_int_point place) {
  std::vector<int64_t> distances;
  for (int radius = 2 * kCloudRadius; distances.size() <= kNearestRank; radius *= 2) {
    distances.clear();
    grid.ForEachWithin(place, radius, [&](int, int64_t distance) { distances.push_back(distance); });
  }
  const auto nth = distances.begin() + kNearestRank;
  std::nth_element(distances.begin(), nth, distances.end());
  return *nth;
}

}  // namespace

std::vector<saf_minutia> saf_minutiae_collect_both(const saf_skeleton& ridges, const saf_skeleton& valleys) {
  std::vector<saf_minutia> minutiae;
  Collect(ridges, minutiae);
  Collect(valleys, minutiae);
  return minutiae;
}

void saf_inner_minutiae_filter(std::vector<saf_minutia>& minutiae, const saf_boolean_matrix& mask) {
  std::erase_if(minutiae, [&](const saf_minutia& minutia) {
    const saf_double_point direction = saf_angle_to_vector(minutia.direction);
    const saf_int_point beyond =
        Position(minutia) + saf_int_point{saf_round(direction.x * -kMaskDisplacement),
                                          saf_round(direction.y * -kMaskDisplacement)};
    return !mask.Contains(beyond) || !mask.At(beyond);
  });
}

void saf_minutia_cloud_filter(std::vector<saf_minutia>& minutiae) {
  const PointGrid grid = MakeGrid(minutiae);
  std::erase_if(minutiae, [&](const saf_minutia& minutia) {
    int near = 0;
    grid.ForEachWithin(Position(minutia), kCloudRadius, [&](int, int64_t) { ++near; });
    return near > kMaxCloud;
  });
}

void saf_top_minutiae_filter(std::vector<saf_minutia>& minutiae) {
  if (minutiae.size() <= kMaxMinutiae) return;
  const PointGrid grid = MakeGrid(minutiae);
  std::vector<int64_t> distances;
  for (const saf_minutia& minutia : minutiae) distances.push_back(SixthNearest(grid, Position(minutia)));
  std::vector<size_t> order(minutiae.size());
  std::iota(order.begin(), order.end(), size_t{0});
  std::stable_sort(order.begin(), order.end(),
                   [&](size_t a, size_t b) { return distances[a] > distances[b]; });
  std::vector<saf_minutia> kept;
  for (size_t i = 0; i < kMaxMinutiae; ++i) kept.push_back(minutiae[order[i]]);
  minutiae = std::move(kept);
}

}  // namespace vorc
