#include "fingerprint/skeleton.h"

#include <cmath>
#include <cstdlib>
#include <utility>

#include "fingerprint/angles.h"
#include "fingerprint/diagnostics.h"
#include "fingerprint/skeleton_filters.h"
#include "fingerprint/skeleton_trace.h"
#include "fingerprint/thinning.h"

namespace vorc {

saf_int_point saf_skeleton::Point(saf_ridge_way way, int i) const {
  const saf_point_ring& points = Ridge(way).points;
  return (way & 1) == 0 ? points[i] : points[points.size() - 1 - i];
}

void saf_skeleton::Connect(int start, int end, saf_point_ring points) {
  const saf_ridge_way way = static_cast<saf_ridge_way>(2 * ridges.size());
  ridges.push_back({{start, end}, std::move(points)});
  Minutia(start).ridges.push_back(way);
  Minutia(end).ridges.push_back(saf_reversed(way));
}

void saf_skeleton::Detach(saf_ridge_way way) {
  std::erase(Minutia(Start(way)).ridges, way);
  std::erase(Minutia(End(way)).ridges, saf_reversed(way));
  Ridge(way) = {};
}

// The longer ridge takes in the shorter one's points, so that a chain of joints stays cheap.
void saf_skeleton::Dissolve(int minutia) {
  saf_ridge_way longer = Minutia(minutia).ridges[0];
  saf_ridge_way shorter = Minutia(minutia).ridges[1];
  if (Length(longer) < Length(shorter)) std::swap(longer, shorter);
  const bool at_front = (longer & 1) == 0;
  saf_skeleton_ridge& ridge = Ridge(longer);
  for (int i = 1; i < Length(shorter); ++i) {
    if (at_front) {
      ridge.points.PushFront(Point(shorter, i));
    } else {
      ridge.points.PushBack(Point(shorter, i));
    }
  }
  const int new_start = End(shorter);
  ridge.ends[at_front ? 0 : 1] = new_start;
  for (saf_ridge_way& way : Minutia(new_start).ridges) {
    if (way == saf_reversed(shorter)) way = longer;
  }
  Ridge(shorter) = {};
  Minutia(minutia).ridges.clear();
}

void saf_skeleton::DropLoneMinutiae() {
  std::vector<int> new_index(minutiae.size(), -1);
  int kept = 0;
  for (size_t i = 0; i < minutiae.size(); ++i) {
    if (minutiae[i].ridges.empty()) continue;
    new_index[i] = kept;
    if (static_cast<size_t>(kept) != i) minutiae[static_cast<size_t>(kept)] = std::move(minutiae[i]);
    ++kept;
  }
  minutiae.resize(static_cast<size_t>(kept));
  for (saf_skeleton_ridge& ridge : ridges) {
    for (int& end : ridge.ends) {
      if (end >= 0) end = new_index[static_cast<size_t>(end)];
    }
  }
}

saf_skeleton saf_skeletons_create(const saf_boolean_matrix& binary, saf_minutia_type type) {
  saf_skeleton skeleton = saf_skeleton_trace(saf_binary_thin(binary));
  skeleton.type = type;
  saf_skeleton_filters_apply(skeleton);
  return skeleton;
}

double saf_skeleton_ridge_direction(const saf_skeleton& skeleton, saf_ridge_way way) {
  constexpr int kSkipped = 1;
  constexpr int kSampled = 21;
  const int length = skeleton.Length(way);
  if (length == 0) {
    saf_diagnose("[saf] ridge_direction on an EMPTY ridge - returning 0\n");
    return 0;
  }
  const int last = std::min(kSkipped + kSampled - 1, length - 1);
  const int first = std::max(last - kSampled + 1, 0);
  const saf_int_point step = skeleton.Point(way, last) - skeleton.Point(way, first);
  return saf_angle_of(step.x, step.y);
}

std::vector<saf_int_point> saf_line_points(saf_int_point from, saf_int_point to) {
  const saf_int_point span = to - from;
  const int steps = std::max(std::abs(span.x), std::abs(span.y));
  std::vector<saf_int_point> points{from};
  for (int i = 1; i <= steps; ++i) {
    const double share = static_cast<double>(i) / steps;
    points.push_back({from.x + saf_round(share * span.x), from.y + saf_round(share * span.y)});
  }
  return points;
}

}  // namespace vorc
