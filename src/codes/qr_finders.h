#pragma once

#include <array>
#include <optional>
#include <vector>

#include "codes/geometry.h"
#include "codes/qr_image.h"

namespace vorc::codes {

/// A finder pattern in a picture.
struct Finder {
  Point centre;
  double m = 0;  ///< module size in pixels
  int n = 0;     ///< scan lines that confirmed it
};

/// Lengths of five runs, dark first.
using FiveRuns = std::array<int, 5>;

/// True if the runs are near 1 : 1 : 3 : 1 : 1.
bool finder_ratio(const FiveRuns& runs);

struct CrossRuns {
  FiveRuns runs;
  double offset;  ///< from the start to the middle of the centre run, in steps
};

/// The five runs through a dark pixel, in steps of (dx, dy); nothing if a run is longer than `limit`,
/// or if they are no finder's.
std::optional<CrossRuns> cross_runs(const MorvQrImage& image, int x, int y, int dx, int dy, int limit);

/// The finders of a binary picture, at most 64.
std::vector<Finder> FindFinders(const MorvQrImage& image);

/// Three finders that may be those of one symbol.
struct Triple {
  size_t corner;
  size_t second;  ///< in the symbol's first row
  size_t third;   ///< in its first column
  double score;   ///< lower is better
};

/// At most six triples, the best first.
std::vector<Triple> RankTriples(const std::vector<Finder>& finders);

}  // namespace vorc::codes
