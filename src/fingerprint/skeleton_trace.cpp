#include "fingerprint/skeleton_trace.h"

#include <bit>
#include <utility>

#include "fingerprint/thinning.h"

namespace vorc {

namespace {

/// What the cells of the map hold, besides the indices of minutiae.
enum : int { kClear = -1, kLine = -2, kTracedLine = -3, kUngrouped = -4 };

/// What each pixel of the thinned picture belongs to.
saf_int_matrix Classify(const saf_boolean_matrix& thinned) {
  saf_int_matrix map(thinned.width(), thinned.height(), kClear);
  for (int y = 1; y < thinned.height() - 1; ++y) {
    for (int x = 1; x < thinned.width() - 1; ++x) {
      if (!thinned.At(x, y)) continue;
      const int neighbours = std::popcount(saf_neighbour_pattern(thinned, x, y));
      if (neighbours == 2) map.At(x, y) = kLine;
      if (neighbours == 1 || neighbours >= 3) map.At(x, y) = kUngrouped;
    }
  }
  return map;
}

/// Marks all ungrouped pixels around `seed` with the index, and answers them.
std::vector<saf_int_point> MarkGroup(saf_int_matrix& map, saf_int_point seed, int index) {
  std::vector<saf_int_point> group{seed};
  map.At(seed) = index;
  for (size_t i = 0; i < group.size(); ++i) {
    for (const saf_int_point step : kNeighbours) {
      const saf_int_point neighbour = group[i] + step;
      if (map.At(neighbour) != kUngrouped) continue;
      map.At(neighbour) = index;
      group.push_back(neighbour);
    }
  }
  return group;
}

saf_int_point Centre(const std::vector<saf_int_point>& group) {
  int64_t x = 0, y = 0;
  for (const saf_int_point p : group) {
    x += p.x;
    y += p.y;
  }
  const int64_t count = static_cast<int64_t>(group.size());
  return {static_cast<int>(x / count), static_cast<int>(y / count)};
}

/// A ridge as it is traced: from a pixel of one minutia to a pixel of another, or of the same.
struct Trace {
  int start;
  int end;
  saf_point_ring points;
};

/// Follows a line from a minutia's pixel through `next`, marking it as traced.
Trace Follow(saf_int_matrix& map, saf_int_point from, saf_int_point next) {
  Trace trace{map.At(from), kClear, {}};
  trace.points.PushBack(from);
  saf_int_point previous = from;
  while (map.At(next) == kLine) {
    map.At(next) = kTracedLine;
    trace.points.PushBack(next);
    for (const saf_int_point step : kNeighbours) {
      const saf_int_point candidate = next + step;
      if (candidate == previous || map.At(candidate) == kClear) continue;
      previous = std::exchange(next, candidate);
      break;
    }
  }
  trace.points.PushBack(next);
  trace.end = map.At(next);
  return trace;
}

/// A traced line starts and ends at some pixel of a merged minutia; leads it on to the minutia's place.
void saf_skeleton_tracing_fix_linking_gaps(const saf_skeleton& skeleton, Trace& trace) {
  const saf_int_point start = skeleton.minutiae[static_cast<size_t>(trace.start)].position;
  const saf_int_point end = skeleton.minutiae[static_cast<size_t>(trace.end)].position;
  const auto to_start = saf_line_points(trace.points[0], start);
  for (size_t i = 1; i < to_start.size(); ++i) trace.points.PushFront(to_start[i]);
  const auto to_end = saf_line_points(trace.points[trace.points.size() - 1], end);
  for (size_t i = 1; i < to_end.size(); ++i) trace.points.PushBack(to_end[i]);
}

}  // namespace

saf_skeleton saf_skeleton_trace(const saf_boolean_matrix& thinned) {
  saf_skeleton skeleton;
  skeleton.width = thinned.width();
  skeleton.height = thinned.height();
  saf_int_matrix map = Classify(thinned);
  std::vector<saf_int_point> ends;
  for (int y = 1; y < map.height() - 1; ++y) {
    for (int x = 1; x < map.width() - 1; ++x) {
      if (map.At(x, y) != kUngrouped) continue;
      const auto group = MarkGroup(map, {x, y}, static_cast<int>(skeleton.minutiae.size()));
      skeleton.minutiae.push_back({Centre(group), {}});
      ends.insert(ends.end(), group.begin(), group.end());
    }
  }
  for (const saf_int_point end : ends) {
    for (const saf_int_point step : kNeighbours) {
      if (map.At(end + step) != kLine) continue;
      Trace trace = Follow(map, end, end + step);
      saf_skeleton_tracing_fix_linking_gaps(skeleton, trace);
      skeleton.Connect(trace.start, trace.end, std::move(trace.points));
    }
  }
  return skeleton;
}

}  // namespace vorc
