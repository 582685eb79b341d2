#include "fingerprint/skeleton_filters.h"

namespace vorc {

namespace {

constexpr int kMaxPorePath = 41;
constexpr int kMaxTail = 20;
constexpr int kMinFragment = 22;

saf_point_ring StraightRidge(saf_int_point from, saf_int_point to) {
  saf_point_ring points;
  for (const saf_int_point p : saf_line_points(from, to)) points.PushBack(p);
  return points;
}

/// True if two ways from a minutia of three ridges enclose a pore: they meet again in another minutia
/// of three ridges, and the third way doesn't end there as well.
bool EnclosePore(const saf_skeleton& skeleton, saf_ridge_way exit, saf_ridge_way left, saf_ridge_way right) {
  const int start = skeleton.Start(exit);
  const int end = skeleton.End(left);
  if (end != skeleton.End(right) || end == start) return false;
  if (skeleton.End(exit) == end || skeleton.End(exit) == start) return false;
  return skeleton.minutiae[static_cast<size_t>(end)].ridges.size() == 3 &&
         skeleton.Length(left) <= kMaxPorePath && skeleton.Length(right) <= kMaxPorePath;
}

bool ClosePore(saf_skeleton& skeleton, int minutia) {
  const std::vector<saf_ridge_way> ways = skeleton.Minutia(minutia).ridges;
  for (size_t exit = 0; exit < 3; ++exit) {
    const saf_ridge_way left = ways[(exit + 1) % 3];
    const saf_ridge_way right = ways[(exit + 2) % 3];
    if (!EnclosePore(skeleton, ways[exit], left, right)) continue;
    const int end = skeleton.End(left);
    skeleton.Detach(left);
    skeleton.Detach(right);
    skeleton.Connect(minutia, end,
                     StraightRidge(skeleton.Minutia(minutia).position, skeleton.Minutia(end).position));
    return true;
  }
  return false;
}

}  // namespace

void saf_skeleton_filters_apply(saf_skeleton& skeleton) {
  saf_skeleton_dot_filter(skeleton);
  saf_skeleton_pore_filter(skeleton);
  saf_skeleton_gap_filter(skeleton);
  saf_skeleton_tail_filter(skeleton);
  saf_skeleton_fragment_filter(skeleton);
}

void saf_skeleton_dot_filter(saf_skeleton& skeleton) {
  skeleton.DropLoneMinutiae();
}

void saf_skeleton_knot_filter(saf_skeleton& skeleton) {
  for (size_t i = 0; i < skeleton.minutiae.size(); ++i) {
    const auto& ridges = skeleton.minutiae[i].ridges;
    // Both ways of a closed line can't be joined any further.
    if (ridges.size() == 2 && ridges[0] != saf_reversed(ridges[1])) skeleton.Dissolve(static_cast<int>(i));
  }
  skeleton.DropLoneMinutiae();
}

void saf_skeleton_pore_filter(saf_skeleton& skeleton) {
  for (size_t i = 0; i < skeleton.minutiae.size(); ++i) {
    if (skeleton.minutiae[i].ridges.size() == 3) ClosePore(skeleton, static_cast<int>(i));
  }
  saf_skeleton_knot_filter(skeleton);
}

void saf_skeleton_tail_filter(saf_skeleton& skeleton) {
  for (size_t i = 0; i < skeleton.minutiae.size(); ++i) {
    const auto& ridges = skeleton.minutiae[i].ridges;
    if (ridges.size() != 1) continue;
    const saf_ridge_way way = ridges[0];
    const bool at_branching = skeleton.Minutia(skeleton.End(way)).ridges.size() > 2;
    if (at_branching && skeleton.Length(way) <= kMaxTail) skeleton.Detach(way);
  }
  saf_skeleton_dot_filter(skeleton);
  saf_skeleton_knot_filter(skeleton);
}

void saf_skeleton_fragment_filter(saf_skeleton& skeleton) {
  for (size_t i = 0; i < skeleton.minutiae.size(); ++i) {
    const auto& ridges = skeleton.minutiae[i].ridges;
    if (ridges.size() != 1) continue;
    const saf_ridge_way way = ridges[0];
    const bool alone = skeleton.Minutia(skeleton.End(way)).ridges.size() == 1;
    if (alone && skeleton.Length(way) < kMinFragment) skeleton.Detach(way);
  }
  saf_skeleton_dot_filter(skeleton);
}

}  // namespace vorc
