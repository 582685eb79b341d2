#include <algorithm>
#include <tuple>

#include "fingerprint/angles.h"
#include "fingerprint/point_grid.h"
#include "fingerprint/skeleton_filters.h"

namespace vorc {

namespace {

constexpr int kMaxGap = 20;
constexpr int kMinJoinedLength = 7;
constexpr int kDirectionSample = 22;
constexpr int kToleratedOverlap = 2;
constexpr double kMaxGapAngle = 0.7853981633974483;

/// Two minutiae, both ends of one ridge each, between which a ridge may be missing.
struct Gap {
  int64_t squared_length;
  int first;
  int second;
};

/// Shorter gaps first.
bool saf_skeleton_gap_compare(const Gap& a, const Gap& b) {
  return std::tie(a.squared_length, a.first, a.second) < std::tie(b.squared_length, b.first, b.second);
}

bool IsJoinableEnd(const saf_skeleton& skeleton, const saf_skeleton_minutia& minutia) {
  return minutia.ridges.size() == 1 && skeleton.Length(minutia.ridges[0]) >= kMinJoinedLength;
}

double AngleBetween(saf_int_point from, saf_int_point to) {
  return saf_angle_of(to.x - from.x, to.y - from.y);
}

/// True if the ridge that ends at `from` runs on towards `to`.
bool LeadsTo(const saf_skeleton& skeleton, const saf_skeleton_minutia& from, const saf_skeleton_minutia& to) {
  const saf_ridge_way way = from.ridges[0];
  const int sample = std::min(kDirectionSample, skeleton.Length(way) - 1);
  const double back = AngleBetween(from.position, skeleton.Point(way, sample));
  const double ahead = AngleBetween(from.position, to.position);
  return saf_angle_distance(saf_angle_opposite(back), ahead) <= kMaxGapAngle;
}

std::vector<Gap> FindGaps(const saf_skeleton& skeleton) {
  PointGrid ends(skeleton.width, skeleton.height, kMaxGap);
  for (size_t i = 0; i < skeleton.minutiae.size(); ++i) {
    const saf_skeleton_minutia& minutia = skeleton.minutiae[i];
    if (IsJoinableEnd(skeleton, minutia)) ends.Add(minutia.position, static_cast<int>(i));
  }
  std::vector<Gap> gaps;
  for (size_t i = 0; i < skeleton.minutiae.size(); ++i) {
    const saf_skeleton_minutia& minutia = skeleton.minutiae[i];
    if (!IsJoinableEnd(skeleton, minutia)) continue;
    ends.ForEachWithin(minutia.position, kMaxGap, [&](int index, int64_t squared_length) {
      const saf_skeleton_minutia& other = skeleton.minutiae[static_cast<size_t>(index)];
      if (index <= static_cast<int>(i) || skeleton.End(minutia.ridges[0]) == index) return;
      if (!LeadsTo(skeleton, minutia, other) || !LeadsTo(skeleton, other, minutia)) return;
      gaps.push_back({squared_length, static_cast<int>(i), index});
    });
  }
  std::sort(gaps.begin(), gaps.end(), saf_skeleton_gap_compare);
  return gaps;
}

saf_boolean_matrix Shadow(const saf_skeleton& skeleton) {
  saf_boolean_matrix shadow(skeleton.width, skeleton.height);
  for (const saf_skeleton_ridge& ridge : skeleton.ridges) {
    for (int i = 0; i < ridge.points.size(); ++i) shadow.At(ridge.points[i]) = 1;
  }
  return shadow;
}

bool Crosses(const saf_boolean_matrix& shadow, const std::vector<saf_int_point>& line) {
  const int last = static_cast<int>(line.size()) - kToleratedOverlap;
  for (int i = kToleratedOverlap; i < last; ++i) {
    if (shadow.At(line[static_cast<size_t>(i)])) return true;
  }
  return false;
}

}  // namespace

void saf_skeleton_gap_filter(saf_skeleton& skeleton) {
  saf_boolean_matrix shadow = Shadow(skeleton);
  for (const Gap& gap : FindGaps(skeleton)) {
    const saf_skeleton_minutia& first = skeleton.Minutia(gap.first);
    const saf_skeleton_minutia& second = skeleton.Minutia(gap.second);
    if (first.ridges.size() != 1 || second.ridges.size() != 1) continue;
    const auto line = saf_line_points(first.position, second.position);
    if (Crosses(shadow, line)) continue;
    saf_point_ring points;
    for (const saf_int_point p : line) {
      points.PushBack(p);
      shadow.At(p) = 1;
    }
    skeleton.Connect(gap.first, gap.second, std::move(points));
  }
  saf_skeleton_knot_filter(skeleton);
}

}  // namespace vorc
