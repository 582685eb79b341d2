#pragma once

#include "fingerprint/matrix.h"

namespace vorc {

/// Thins the set areas to lines of one pixel's width that keep their connections and their ends.
/// Pixels in the outermost rows and columns are cleared.
saf_boolean_matrix saf_binary_thin(saf_boolean_matrix binary);

/// The eight neighbours of a pixel, clockwise from the one above; bit i of a pattern is neighbour i.
inline constexpr saf_int_point kNeighbours[8] = {{0, -1}, {1, -1}, {1, 0},  {1, 1},
                                                 {0, 1},  {-1, 1}, {-1, 0}, {-1, -1}};

/// The set neighbours of a pixel that isn't in the outermost rows or columns, as a pattern.
inline unsigned saf_neighbour_pattern(const saf_boolean_matrix& binary, int x, int y) {
  const uint8_t* above = binary.Row(y - 1) + x;
  const uint8_t* row = binary.Row(y) + x;
  const uint8_t* below = binary.Row(y + 1) + x;
  return static_cast<unsigned>(above[0] | above[1] << 1 | row[1] << 2 | below[1] << 3 | below[0] << 4 |
                               below[-1] << 5 | row[-1] << 6 | above[-1] << 7);
}

}  // namespace vorc
