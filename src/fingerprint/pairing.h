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

/// A pair together with the pair that it was reached from, itself for the root.
struct saf_paired {
  saf_minutia_pair pair;
  saf_minutia_pair from;
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

  struct Pending {
    saf_minutia_pair pair;
    saf_minutia_pair from;
    int length;
    int sequence;
  };
  struct Later {
    bool operator()(const Pending& a, const Pending& b) const {
      return a.length != b.length ? a.length > b.length : a.sequence > b.sequence;
    }
  };

  void Clear();
  void Add(const Pending& pending);
  void CollectEdges(saf_minutia_pair from);
  void Consider(const Pending& pending);
  bool IsFree(saf_minutia_pair pair) const;
  void saf_pairing_support(saf_minutia_pair pair);
  void saf_heap_push(Pending pending);
  Pending saf_heap_pop();

  const saf_search_template& probe_;
  const saf_search_template& candidate_;
  std::vector<saf_paired> pairs_;
  /// Places in `pairs_`, or kFree.
  std::vector<int> by_probe_;
  std::vector<int> by_candidate_;
  std::vector<Pending> heap_;
  int sequence_ = 0;
};

}  // namespace vorc
