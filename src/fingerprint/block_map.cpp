#include "fingerprint/block_map.h"

namespace vorc {

namespace {

std::vector<int> DivideEvenly(int size, int block_size) {
  const int blocks = (size + block_size - 1) / block_size;
  std::vector<int> corners;
  for (int i = 0; i <= blocks; ++i) {
    corners.push_back(static_cast<int>(static_cast<int64_t>(i) * size / blocks));
  }
  return corners;
}

std::vector<int> CentresAndEdges(const std::vector<int>& corners) {
  std::vector<int> centres{corners.front()};
  for (size_t i = 1; i < corners.size(); ++i) centres.push_back((corners[i - 1] + corners[i]) / 2);
  centres.push_back(corners.back());
  return centres;
}

}  // namespace

saf_int_rect saf_block_grid::Block(int column, int row) const {
  const size_t i = static_cast<size_t>(column);
  const size_t j = static_cast<size_t>(row);
  return {x[i], y[j], x[i + 1] - x[i], y[j + 1] - y[j]};
}

saf_block_map saf_block_map_create(int width, int height, int block_size) {
  saf_block_map map{width, height, {DivideEvenly(width, block_size), DivideEvenly(height, block_size)}, {}};
  map.secondary = {CentresAndEdges(map.primary.x), CentresAndEdges(map.primary.y)};
  return map;
}

}  // namespace vorc
