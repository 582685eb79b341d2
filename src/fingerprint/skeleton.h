#pragma once

#include <array>
#include <vector>

#include "fingerprint/feature_template.h"
#include "fingerprint/matrix.h"
#include "fingerprint/point_ring.h"

namespace vorc {

/// One way along a ridge: twice its place in the skeleton, plus 1 for the way from its end to its start.
using saf_ridge_way = int;

inline saf_ridge_way saf_reversed(saf_ridge_way way) {
  return way ^ 1;
}

/// A line of the skeleton between two of its minutiae, whose positions are its first and last points.
struct saf_skeleton_ridge {
  std::array<int, 2> ends{-1, -1};
  saf_point_ring points;
};

/// An ending or a branching of the skeleton, with the ways that lead from it.
struct saf_skeleton_minutia {
  saf_int_point position;
  std::vector<saf_ridge_way> ridges;
};

/// A thinned picture as a graph.
struct saf_skeleton {
  int width = 0;
  int height = 0;
  saf_minutia_type type = kRidgeEnding;
  std::vector<saf_skeleton_minutia> minutiae;
  std::vector<saf_skeleton_ridge> ridges;

  saf_skeleton_ridge& Ridge(saf_ridge_way way) { return ridges[static_cast<size_t>(way / 2)]; }
  const saf_skeleton_ridge& Ridge(saf_ridge_way way) const { return ridges[static_cast<size_t>(way / 2)]; }
  saf_skeleton_minutia& Minutia(int index) { return minutiae[static_cast<size_t>(index)]; }

  /// The minutiae that a way leads from and to.
  int Start(saf_ridge_way way) const { return Ridge(way).ends[static_cast<size_t>(way & 1)]; }
  int End(saf_ridge_way way) const { return Ridge(way).ends[static_cast<size_t>(~way & 1)]; }

  int Length(saf_ridge_way way) const { return Ridge(way).points.size(); }
  /// The `i`-th point along a way.
  saf_int_point Point(saf_ridge_way way, int i) const;

  /// Adds a ridge; its points go from the position of minutia `start` to that of `end`.
  void Connect(int start, int end, saf_point_ring points);
  void Detach(saf_ridge_way way);
  /// Makes one ridge of the two at a minutia, which stays without any.
  void Dissolve(int minutia);
  /// Forgets the minutiae without ridges.
  void DropLoneMinutiae();
};

/// Thins a picture and makes a clean graph of it.
saf_skeleton saf_skeletons_create(const saf_boolean_matrix& binary, saf_minutia_type type);

/// The direction in which a way starts out, over its first points. 0 for an empty ridge.
double saf_skeleton_ridge_direction(const saf_skeleton& skeleton, saf_ridge_way way);

/// The points of a straight line, both ends included.
std::vector<saf_int_point> saf_line_points(saf_int_point from, saf_int_point to);

}  // namespace vorc
