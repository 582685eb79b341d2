#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "fingerprint/search_template.h"

namespace vorc {

/// An edge between any two minutiae of the probe.
struct saf_indexed_edge {
  saf_edge_shape shape;
  uint16_t reference = 0;
  uint16_t neighbor = 0;
};

/// True if two edges may be the same: lengths at most 13 apart, both angles less than 10 degrees.
bool saf_edge_shapes_matching(const saf_edge_shape& a, const saf_edge_shape& b);

/// A print to be compared with many, with its edges in a hash table by their quantized shape.
class saf_probe {
 public:
  explicit saf_probe(const saf_search_template& prepared);

  const saf_search_template& search_template() const { return template_; }

  /// Indices into `Edge` of the edges that a shape could match, in order of their minutiae.
  std::span<const uint16_t> Candidates(const saf_edge_shape& shape) const;
  const saf_indexed_edge& Edge(uint16_t index) const { return edges_[index]; }

 private:
  struct Slot {
    uint32_t key = kFree;
    /// While keys are counted, how many edges the list will have; then where it starts.
    uint32_t list = 0;
  };

  static constexpr uint32_t kFree = 0xffffffff;

  void CountKeys();
  void FillLists();
  size_t SlotCount() const { return size_t{1} << size_bits_; }
  size_t Place(uint32_t key) const;
  void Grow();

  saf_search_template template_;
  std::vector<saf_indexed_edge> edges_;
  /// Open addressing; the number is a power of two. A list ends where the next slot's starts, so that one
  /// more slot stands at the end.
  std::vector<Slot> slots_;
  int size_bits_ = 0;
  size_t used_ = 0;
  std::vector<uint16_t> lists_;
};

saf_probe saf_probe_create(const saf_search_template& prepared);

}  // namespace vorc
