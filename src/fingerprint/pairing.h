#pragma once

#include <cstdint>
#include <vector>

#include "fingerprint/search_template.h"

namespace vorc {

/// A minutia of the probe and the one of the candidate that is taken for the same.
struct saf_minutia_pair {
  int probe = 0;
  int candidate = 0;
};

/// A pair, and the edges of both prints that it was reached along; none for the root.
struct saf_paired {
  saf_minutia_pair pair;
  const saf_edge_shape* probe_edge = nullptr;
  const saf_edge_shape* candidate_edge = nullptr;
  /// How many more edges speak for it.
  int support = 0;
};

/// A set of pairs in which no minutia occurs twice, grown from a root along edges that both prints
/// share. Made once and grown anew for each root.
class saf_pairing {
 public:
  saf_pairing(const saf_search_template& probe, const saf_search_template& candidate);

  /// Starts over from `root` and takes in all that can be reached, along shorter edges first.
  void Grow(saf_minutia_pair root);

  /// The pairs in the order in which they were found; the root is the first.
  const std::vector<saf_paired>& pairs() const { return pairs_; }

 private:
  static constexpr int kFree = -1;

  /// An edge that leads from one pair to another, as it is in both prints.
  struct SharedEdge {
    saf_minutia_pair to;
    const saf_edge_shape* probe_edge;
    const saf_edge_shape* candidate_edge;
  };
  /// Where in `shared_` the edges from a pair stand.
  struct SharedRange {
    uint32_t start = 0;
    uint32_t end = kUnknown;
  };
  static constexpr uint32_t kUnknown = 0xffffffff;

  void StartOver();
  void Add(const SharedEdge& edge);
  /// Weighs the edges from a pair that was just added.
  void CollectEdges(saf_minutia_pair from);
  SharedRange EdgesFrom(saf_minutia_pair from);
  void FindShared(saf_minutia_pair from);
  bool IsFree(saf_minutia_pair pair) const;
  void saf_pairing_support(saf_minutia_pair pair);
  void saf_heap_push(uint32_t edge);
  const SharedEdge& saf_heap_pop();

  const saf_search_template& probe_;
  const saf_search_template& candidate_;
  std::vector<saf_paired> pairs_;
  /// Places in `pairs_`, or kFree.
  std::vector<int> by_probe_;
  std::vector<int> by_candidate_;
  /// The roots of one finger lead to the same pairs again and again, so that what they share is kept.
  std::vector<SharedRange> ranges_;
  std::vector<SharedEdge> shared_;
  /// Edges yet to be followed: length, order of arrival and place in `shared_`, from the highest bit.
  std::vector<uint64_t> heap_;
  uint64_t arrivals_ = 0;
};

}  // namespace vorc
