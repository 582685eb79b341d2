#pragma once

#include <array>
#include <optional>

#include "codes/geometry.h"
#include "codes/qr_finders.h"
#include "codes/qr_image.h"
#include "codes/qr_symbol.h"

namespace vorc::codes {

/// The finders of one symbol: at its corner, in its first row, in its first column.
struct SymbolFinders {
  Finder corner;
  Finder second;
  Finder third;

  double ModuleSize() const { return (corner.m + second.m + third.m) / 3; }
  double Side() const {
    return (Length(second.centre - corner.centre) + Length(third.centre - corner.centre)) / 2;
  }
};

/// Corners in a picture: the symbol's four, the right one below the second finder, and the lower one
/// right of the third.
struct SymbolCorners {
  Point top_left;
  Point top_right;
  Point bottom_left;
  Point bottom_right;
  Point below_second;
  Point right_of_third;

  double Side() const { return (Length(top_right - top_left) + Length(bottom_left - top_left)) / 2; }
  /// The border of a finder, as seen at the second and the third.
  double FinderSide() const {
    return (Length(below_second - top_right) + Length(right_of_third - bottom_left)) / 2;
  }
};

/// How the corners of a finder are found: by walks along the axes, or along the diagonal.
enum CornerMode : int { kCornersByEdges, kCornersByDiagonals };

/// The symbol's corners as its finders show them; nothing if a border isn't met or lines are parallel.
std::optional<SymbolCorners> symbol_corners(const MorvQrImage& image, const SymbolFinders& finders,
                                            CornerMode mode);

/// From what a grid is laid: centres of finders and one alignment pattern, or finders and corners.
enum SamplingMode : int { kSampleByAlignment = 1, kSampleByCorners = 2 };

/// Reads the grid of a symbol of `version`; `corners` are needed in the mode by corners. False if
/// the grid leaves the picture or can't be laid.
bool sample_grid(const MorvQrImage& image, const SymbolFinders& finders, int version, SamplingMode mode,
                 const SymbolCorners* corners, MorvQrSymbol& out);

}  // namespace vorc::codes
