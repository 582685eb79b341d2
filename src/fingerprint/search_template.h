#pragma once

#include <cstdint>
#include <vector>

#include "fingerprint/feature_template.h"

namespace vorc {

/// How two minutiae lie to each other, wherever the finger lay and however it was turned.
struct saf_edge_shape {
  uint16_t length = 0;
  /// From the line between both to the direction of either, in [0, 2 pi).
  float reference_angle = 0;
  float neighbor_angle = 0;
};

/// The shape of the edge from `a` to `b`.
saf_edge_shape saf_edge_shape_between(const saf_minutia& a, const saf_minutia& b);

/// What `saf_edge_shape_between` rounds the distance of two minutiae to.
int saf_edge_length(const saf_minutia& a, const saf_minutia& b);

struct saf_neighbor_edge {
  saf_edge_shape shape;
  uint16_t neighbor = 0;
};

/// Shorter edges first, then the neighbour of lower index.
bool saf_neighbor_edge_compare(const saf_neighbor_edge& a, const saf_neighbor_edge& b);

/// A print made ready to be compared: its minutiae in an order of their own, and for each the edges
/// to those near it.
struct saf_search_template {
  int width = 0;
  int height = 0;
  std::vector<saf_minutia> minutiae;
  std::vector<std::vector<saf_neighbor_edge>> edges;
};

saf_search_template saf_search_template_create(const saf_feature_template& features);

}  // namespace vorc
