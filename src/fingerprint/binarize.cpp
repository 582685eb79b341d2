#include "fingerprint/binarize.h"

#include "fingerprint/vote_filter.h"

namespace vorc {

namespace {

constexpr VoteRule kBinarizedVote{2, 17, 0.61};

/// If the 2 x 2 window with this top left corner has its pixels in one diagonal alone, clears them.
bool ClearDiagonal(saf_boolean_matrix& binary, int x, int y) {
  uint8_t* top = binary.Row(y) + x;
  uint8_t* bottom = binary.Row(y + 1) + x;
  if (top[0] != bottom[1] || top[1] != bottom[0] || top[0] == top[1]) return false;
  top[0] = top[1] = bottom[0] = bottom[1] = 0;
  return true;
}

/// Clears a window's diagonal, and those that clearing leaves in the windows around.
void ClearDiagonalsFrom(saf_boolean_matrix& binary, saf_int_point window, std::vector<saf_int_point>& open) {
  open.assign(1, window);
  while (!open.empty()) {
    const saf_int_point p = open.back();
    open.pop_back();
    if (!ClearDiagonal(binary, p.x, p.y)) continue;
    for (int y = std::max(p.y - 1, 0); y <= std::min(p.y + 1, binary.height() - 2); ++y) {
      for (int x = std::max(p.x - 1, 0); x <= std::min(p.x + 1, binary.width() - 2); ++x)
        open.push_back({x, y});
    }
  }
}

void RemoveCrosses(saf_boolean_matrix& binary) {
  std::vector<saf_int_point> open;
  for (int y = 0; y < binary.height() - 1; ++y) {
    const uint8_t* top = binary.Row(y);
    const uint8_t* bottom = binary.Row(y + 1);
    for (int x = 0; x < binary.width() - 1; ++x) {
      const bool diagonal = top[x] == bottom[x + 1] && top[x + 1] == bottom[x] && top[x] != top[x + 1];
      if (diagonal) ClearDiagonalsFrom(binary, {x, y}, open);
    }
  }
}

}  // namespace

saf_boolean_matrix saf_binarize(const saf_double_matrix& parallel, const saf_double_matrix& orthogonal,
                                const saf_boolean_matrix& block_mask, const saf_block_map& blocks) {
  saf_boolean_matrix binary(parallel.width(), parallel.height());
  for (int row = 0; row < block_mask.height(); ++row) {
    for (int column = 0; column < block_mask.width(); ++column) {
      if (!block_mask.At(column, row)) continue;
      const saf_int_rect area = blocks.primary.Block(column, row);
      for (int y = area.y; y < area.bottom(); ++y) {
        for (int x = area.x; x < area.right(); ++x) {
          binary.At(x, y) = parallel.At(x, y) - orthogonal.At(x, y) > 0;
        }
      }
    }
  }
  return binary;
}

saf_boolean_matrix saf_binarized_cleanup(saf_boolean_matrix binary, const saf_boolean_matrix& pixel_mask) {
  saf_boolean_matrix inverse = binary;
  for (uint8_t& cell : inverse.cells()) cell = !cell;
  const saf_boolean_matrix islands = saf_vote_filter(inverse, &pixel_mask, kBinarizedVote);
  const saf_boolean_matrix holes = saf_vote_filter(binary, &pixel_mask, kBinarizedVote);
  for (size_t i = 0; i < binary.cells().size(); ++i) {
    uint8_t& cell = binary.cells()[i];
    cell = cell ? !islands.cells()[i] : holes.cells()[i];
  }
  RemoveCrosses(binary);
  return binary;
}

saf_boolean_matrix saf_binarized_invert(const saf_boolean_matrix& binary,
                                        const saf_boolean_matrix& pixel_mask) {
  saf_boolean_matrix valleys(binary.width(), binary.height());
  for (size_t i = 0; i < binary.cells().size(); ++i) {
    valleys.cells()[i] = pixel_mask.cells()[i] && !binary.cells()[i];
  }
  return valleys;
}

}  // namespace vorc
