#include "fingerprint/search_template.h"

#include <array>
#include <cmath>
#include <limits>
#include <tuple>

#include "fingerprint/angles.h"

namespace vorc {

namespace {

constexpr size_t kNearestRank = 9;

uint16_t RoundedRoot(int64_t square) {
  return static_cast<uint16_t>(std::sqrt(static_cast<double>(square)) + 0.5);
}

/// Distances for offsets below 256 pixels, rounded.
class saf_polar_distance_cache {
 public:
  static constexpr int kSize = 256;

  saf_polar_distance_cache() {
    for (int y = 0; y < kSize; ++y) {
      for (int x = 0; x < kSize; ++x) distances_[Index(x, y)] = RoundedRoot(x * x + y * y);
    }
  }

  uint16_t Distance(int x, int y) const { return distances_[Index(x, y)]; }

 private:
  static size_t Index(int x, int y) { return static_cast<size_t>(y * kSize + x); }

  std::array<uint16_t, size_t{kSize} * kSize> distances_;
};

uint16_t Distance(int x, int y) {
  static const saf_polar_distance_cache cache;
  constexpr int kSize = saf_polar_distance_cache::kSize;
  const int across = std::abs(x);
  const int up = std::abs(y);
  if (across < kSize && up < kSize) return cache.Distance(across, up);
  return RoundedRoot(SquaredLength({across, up}));
}

/// Orders minutiae by a scrambled key, so that neighbours in the list are anywhere on the finger.
bool saf_shuffle_compare(const saf_minutia& a, const saf_minutia& b) {
  constexpr uint32_t kMultiplier = 0x60000005;
  const auto key = [](const saf_minutia& minutia) {
    return (static_cast<uint32_t>(minutia.x) * kMultiplier + static_cast<uint32_t>(minutia.y)) * kMultiplier;
  };
  return std::tuple(key(a), a.x, a.y, a.direction, a.type) <
         std::tuple(key(b), b.x, b.y, b.direction, b.type);
}

int64_t SquaredDistance(const saf_minutia& a, const saf_minutia& b) {
  return SquaredLength(saf_int_point{b.x, b.y} - saf_int_point{a.x, a.y});
}

/// The squared length that edges from minutia `from` may have.
int64_t LengthLimit(const std::vector<saf_minutia>& minutiae, const saf_minutia& from) {
  if (minutiae.size() <= kNearestRank + 1) return std::numeric_limits<int64_t>::max();
  std::vector<int64_t> distances;
  for (const saf_minutia& to : minutiae) distances.push_back(SquaredDistance(from, to));
  const auto nth = distances.begin() + kNearestRank;
  std::nth_element(distances.begin(), nth, distances.end());
  return *nth;
}

std::vector<saf_neighbor_edge> EdgesFrom(const std::vector<saf_minutia>& minutiae, size_t from) {
  const int64_t limit = LengthLimit(minutiae, minutiae[from]);
  std::vector<saf_neighbor_edge> edges;
  for (size_t to = 0; to < minutiae.size(); ++to) {
    if (to == from || SquaredDistance(minutiae[from], minutiae[to]) > limit) continue;
    edges.push_back({saf_edge_shape_between(minutiae[from], minutiae[to]), static_cast<uint16_t>(to)});
  }
  std::sort(edges.begin(), edges.end(), saf_neighbor_edge_compare);
  return edges;
}

}  // namespace

int saf_edge_length(const saf_minutia& a, const saf_minutia& b) {
  return Distance(b.x - a.x, b.y - a.y);
}

saf_edge_shape saf_edge_shape_between(const saf_minutia& a, const saf_minutia& b) {
  const int x = b.x - a.x;
  const int y = b.y - a.y;
  const float angle = static_cast<float>(saf_angle_of(x, y));
  return {Distance(x, y), saf_angle_difference(a.direction, angle),
          saf_angle_difference(b.direction, saf_angle_opposite(angle))};
}

bool saf_neighbor_edge_compare(const saf_neighbor_edge& a, const saf_neighbor_edge& b) {
  return std::tie(a.shape.length, a.neighbor) < std::tie(b.shape.length, b.neighbor);
}

saf_search_template saf_search_template_create(const saf_feature_template& features) {
  saf_search_template prepared{features.width, features.height, features.minutiae, {}};
  std::sort(prepared.minutiae.begin(), prepared.minutiae.end(), saf_shuffle_compare);
  for (size_t i = 0; i < prepared.minutiae.size(); ++i) {
    prepared.edges.push_back(EdgesFrom(prepared.minutiae, i));
  }
  return prepared;
}

}  // namespace vorc
