#include "codes/qr_sampling.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "codes/homography.h"

namespace vorc::codes {

namespace {

constexpr double kWalkStep = 0.25;
constexpr double kDiagonalReach = 6.5;  // in modules
constexpr double kEdgeReach = 5.5;
constexpr double kFinderCentre = 3.5;  // in modules from the symbol's border
constexpr double kFinderEnd = 7;
constexpr double kAlignmentInset = 6.5;

constexpr int kPatternCells = 25;
constexpr int kHitsOfFirstAlignment = 22;
constexpr int kHitsOfAlignment = 23;
constexpr size_t kMaxMarks = 57;
constexpr int kRefineRounds = 3;

// The pixel that a coordinate lies in, -1 for all that no picture reaches.
int Pixel(double coordinate) {
  constexpr double kBeyondPictures = 1e6;
  return coordinate >= 0 && coordinate < kBeyondPictures ? static_cast<int>(coordinate) : -1;
}

bool DarkAt(const MorvQrImage& image, Point at) {
  return dark_at(image, Pixel(at.x), Pixel(at.y));
}

// How far from `start` along `way` (of length 1) the second change from dark to light is.
std::optional<double> BorderDistance(const MorvQrImage& image, Point start, Point way, double reach) {
  bool dark = true;
  int changes = 0;
  for (double distance = kWalkStep; distance <= reach; distance += kWalkStep) {
    const bool now = DarkAt(image, start + way * distance);
    if (dark && !now && ++changes == 2) return distance - kWalkStep / 2;
    dark = now;
  }
  return std::nullopt;
}

// The directions of the symbol's rows and columns in the picture, of length 1.
struct Axes {
  Point along;
  Point down;
};

// Which corner of a finder: the signs of its direction from the centre, along and down.
struct CornerSide {
  int along;
  int down;
};

std::optional<Point> finder_corner_diag(const MorvQrImage& image, const Finder& finder, const Axes& axes,
                                        CornerSide side) {
  const Point diagonal = axes.along * side.along + axes.down * side.down;
  const double length = Length(diagonal);
  if (length < 1e-9) return std::nullopt;
  const Point way = diagonal * (1.0 / length);
  const auto distance = BorderDistance(image, finder.centre, way, kDiagonalReach * finder.m);
  if (!distance) return std::nullopt;
  return finder.centre + way * *distance;
}

// The way from the finder's centre to its border.
std::optional<Point> finder_edge(const MorvQrImage& image, const Finder& finder, Point way) {
  const auto distance = BorderDistance(image, finder.centre, way, kEdgeReach * finder.m);
  if (!distance) return std::nullopt;
  return way * *distance;
}

std::optional<Point> finder_corner(const MorvQrImage& image, const Finder& finder, const Axes& axes,
                                   CornerSide side) {
  const auto along = finder_edge(image, finder, axes.along * side.along);
  const auto down = finder_edge(image, finder, axes.down * side.down);
  if (!along || !down) return std::nullopt;
  return finder.centre + *along + *down;
}

std::optional<Point> Intersection(Point a1, Point a2, Point b1, Point b2) {
  constexpr double kParallel = 1e-9;
  const Point a = a2 - a1, b = b2 - b1;
  const double determinant = Cross(a, b);
  if (std::abs(determinant) < kParallel) return std::nullopt;
  return a1 + a * (Cross(b1 - a1, b) / determinant);
}

// Hits of an alignment pattern's 25 cells around `centre`; counting ends below `enough`.
int PatternHits(const MorvQrImage& image, Point centre, Point along, Point down, int enough) {
  int misses = 0;
  for (int row = -2; row <= 2; ++row) {
    for (int column = -2; column <= 2; ++column) {
      const bool dark = std::max(std::abs(row), std::abs(column)) != 1;
      if (DarkAt(image, centre + along * column + down * row) == dark) continue;
      if (++misses > kPatternCells - enough) return 0;
    }
  }
  return kPatternCells - misses;
}

// The place of the best pattern in a square around `estimate`, the nearest of equals.
std::optional<Point> FindPattern(const MorvQrImage& image, Point estimate, Point along, Point down,
                                 double radius, double step, int enough) {
  std::optional<Point> best;
  int best_hits = enough;
  double best_distance = 0;
  for (double dy = -radius; dy <= radius; dy += step) {
    for (double dx = -radius; dx <= radius; dx += step) {
      const Point place = estimate + Point{dx, dy};
      const int hits = PatternHits(image, place, along, down, best_hits);
      if (hits < best_hits) continue;
      const double distance = dx * dx + dy * dy;
      if (best && hits == best_hits && distance >= best_distance) continue;
      best = place;
      best_hits = hits;
      best_distance = distance;
    }
  }
  return best;
}

std::array<PointPair, 4> AlignmentPairs(const MorvQrImage& image, const SymbolFinders& finders, int version) {
  const double size = QrSize(version);
  const double between = size - 2 * kFinderCentre;  // modules from centre to centre
  const Point along = (finders.second.centre - finders.corner.centre) * (1.0 / between);
  const Point down = (finders.third.centre - finders.corner.centre) * (1.0 / between);
  const double inset = size - kAlignmentInset;
  Point alignment = finders.corner.centre + (along + down) * (inset - kFinderCentre);
  if (version > 1) {
    const double a = finders.ModuleSize();
    const auto found =
        FindPattern(image, alignment, along, down, 2.5 * a + 4, std::max(0.75, a / 3), kHitsOfFirstAlignment);
    alignment = found.value_or(alignment);
  }
  return {{{{kFinderCentre, kFinderCentre}, finders.corner.centre},
           {{size - kFinderCentre, kFinderCentre}, finders.second.centre},
           {{kFinderCentre, size - kFinderCentre}, finders.third.centre},
           {{inset, inset}, alignment}}};
}

std::vector<PointPair> CornerPairs(const SymbolFinders& finders, const SymbolCorners& corners, int version) {
  const double size = QrSize(version);
  return {{{kFinderCentre, kFinderCentre}, finders.corner.centre},
          {{size - kFinderCentre, kFinderCentre}, finders.second.centre},
          {{kFinderCentre, size - kFinderCentre}, finders.third.centre},
          {{0, 0}, corners.top_left},
          {{size, 0}, corners.top_right},
          {{0, size}, corners.bottom_left},
          {{size, size}, corners.bottom_right},
          {{kFinderEnd, size}, corners.right_of_third},
          {{size, kFinderEnd}, corners.below_second}};
}

// The place of an alignment pattern near where `h` expects it.
std::optional<Point> FindMark(const MorvQrImage& image, const Homography& h, Point module) {
  const Point centre = project(h, module);
  if (!image.Inside(Pixel(centre.x), Pixel(centre.y))) return std::nullopt;
  const Point along = project(h, module + Point{1, 0}) - centre;
  const Point down = project(h, module + Point{0, 1}) - centre;
  const double longest = std::max(image.width, image.height);
  const double s = std::clamp((Length(along) + Length(down)) / 2, 1.5, longest);
  return FindPattern(image, centre, along, down, 1.5 * s, std::max(0.5, 0.25 * s), kHitsOfAlignment);
}

// Centres of the alignment patterns that stand apart from finders, in modules.
std::vector<Point> MarkCentres(int version) {
  std::vector<Point> centres;
  const std::vector<int> positions = qr_align_positions(version);
  for (const int y : positions) {
    for (const int x : positions) {
      const bool first_x = x == positions.front(), first_y = y == positions.front();
      const bool at_finder =
          (first_x && first_y) || (first_x && y == positions.back()) || (first_y && x == positions.back());
      if (!at_finder) centres.push_back({x + 0.5, y + 0.5});
    }
  }
  return centres;
}

// Takes in the alignment patterns that are found, and with the better map those farther away.
void refine_with_alignments(const MorvQrImage& image, int version, int rounds, std::vector<PointPair> pairs,
                            Homography& h) {
  std::vector<Point> missing = MarkCentres(version);
  size_t marks = 0;
  for (int round = 0; round < rounds && !missing.empty(); ++round) {
    const size_t before = marks;
    std::vector<Point> still_missing;
    for (const Point& module : missing) {
      const auto pixel = marks < kMaxMarks ? FindMark(image, h, module) : std::nullopt;
      if (!pixel) {
        still_missing.push_back(module);
        continue;
      }
      pairs.push_back({module, *pixel});
      ++marks;
    }
    if (marks == before) return;
    const auto better = homography_ls(pairs);
    if (!better) return;
    h = *better;
    missing = std::move(still_missing);
  }
}

// 1 dark, 0 light, -1 if the module isn't wholly in the picture.
int module_dark(const MorvQrImage& image, const Homography& h, int column, int row) {
  constexpr Point kProbes[] = {{0.5, 0.5}, {0.25, 0.5}, {0.75, 0.5}, {0.5, 0.25}, {0.5, 0.75}};
  int dark = 0;
  for (const Point& probe : kProbes) {
    const Point at = project(h, Point{static_cast<double>(column), static_cast<double>(row)} + probe);
    if (!(at.x >= 0 && at.y >= 0 && at.x < image.width && at.y < image.height)) return -1;
    dark += image.binary[image.At(static_cast<int>(at.x), static_cast<int>(at.y))];
  }
  return dark >= 3 ? 1 : 0;
}

}  // namespace

std::optional<SymbolCorners> symbol_corners(const MorvQrImage& image, const SymbolFinders& finders,
                                            CornerMode mode) {
  const Point row = finders.second.centre - finders.corner.centre;
  const Point column = finders.third.centre - finders.corner.centre;
  const Axes axes{row * (1.0 / Length(row)), column * (1.0 / Length(column))};
  const auto corner_of = [&](const Finder& finder, CornerSide side) {
    return mode == kCornersByDiagonals ? finder_corner_diag(image, finder, axes, side)
                                       : finder_corner(image, finder, axes, side);
  };
  const auto top_left = corner_of(finders.corner, {-1, -1});
  const auto top_right = corner_of(finders.second, {1, -1});
  const auto below_second = corner_of(finders.second, {1, 1});
  const auto bottom_left = corner_of(finders.third, {-1, 1});
  const auto right_of_third = corner_of(finders.third, {1, 1});
  if (!top_left || !top_right || !below_second || !bottom_left || !right_of_third) return std::nullopt;
  const auto bottom_right = Intersection(*top_right, *below_second, *bottom_left, *right_of_third);
  if (!bottom_right) return std::nullopt;
  return SymbolCorners{*top_left, *top_right, *bottom_left, *bottom_right, *below_second, *right_of_third};
}

bool sample_grid(const MorvQrImage& image, const SymbolFinders& finders, int version, SamplingMode mode,
                 const SymbolCorners* corners, MorvQrSymbol& out) {
  std::vector<PointPair> pairs;
  std::optional<Homography> h;
  if (mode == kSampleByCorners && corners != nullptr) {
    pairs = CornerPairs(finders, *corners, version);
    h = homography_ls(pairs);
  } else {
    const auto four = AlignmentPairs(image, finders, version);
    h = ExactHomography(four);
    pairs.assign(four.begin(), four.end());
  }
  if (!h) return false;
  refine_with_alignments(image, version, kRefineRounds, std::move(pairs), *h);
  out.version = version;
  out.size = QrSize(version);
  for (int y = 0; y < out.size; ++y) {
    for (int x = 0; x < out.size; ++x) {
      const int dark = module_dark(image, *h, x, y);
      if (dark < 0) return false;
      out.modules[MorvQrSymbol::At(x, y)] = static_cast<uint8_t>(dark);
    }
  }
  return true;
}

}  // namespace vorc::codes
