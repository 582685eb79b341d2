#include "fingerprint/match.h"

#include <algorithm>

namespace vorc {

namespace {

constexpr int kLongEdge = 58;
constexpr int kMaxHits = 69;
constexpr int kMaxLookups = 1632;

/// Finds edges that both prints have; what they start from are the roots.
class RootSearch {
 public:
  RootSearch(const saf_probe& probe, const saf_search_template& candidate)
      : probe_(probe),
        candidate_(candidate.minutiae),
        seen_(probe.search_template().minutiae.size() * candidate.minutiae.size()) {}

  std::vector<saf_minutia_pair> Run() {
    VisitPairs(true);
    if (!done_) VisitPairs(false);
    return std::move(roots_);
  }

 private:
  /// All pairs of minutiae, each minutia with its next in the list, then with the one behind that, and
  /// so on, so that a search that ends early has seen all parts of the finger.
  void VisitPairs(bool long_edges) {
    const size_t count = candidate_.size();
    for (size_t step = 1; step < count; ++step) {
      for (size_t from = 0; from < count; ++from) {
        const size_t to = from + step < count ? from + step : from + step - count;
        if ((saf_edge_length(candidate_[from], candidate_[to]) >= kLongEdge) != long_edges) continue;
        LookUp(from, saf_edge_shape_between(candidate_[from], candidate_[to]));
        if (done_) return;
      }
    }
  }

  void LookUp(size_t from, const saf_edge_shape& shape) {
    for (const uint16_t index : probe_.Candidates(shape)) {
      const saf_indexed_edge& edge = probe_.Edge(index);
      if (!saf_edge_shapes_matching(edge.shape, shape)) continue;
      AddRoot(edge.reference, from);
      if (++hits_ > kMaxHits) done_ = true;
      if (done_) return;
    }
    if (++lookups_ > kMaxLookups) done_ = true;
  }

  void AddRoot(size_t probe, size_t candidate) {
    uint8_t& seen = seen_[probe * candidate_.size() + candidate];
    if (seen == 0) roots_.push_back({static_cast<int>(probe), static_cast<int>(candidate)});
    seen = 1;
  }

  const saf_probe& probe_;
  const std::vector<saf_minutia>& candidate_;
  std::vector<uint8_t> seen_;
  std::vector<saf_minutia_pair> roots_;
  int hits_ = 0;
  int lookups_ = 0;
  bool done_ = false;
};

}  // namespace

std::vector<saf_minutia_pair> saf_root_pairs(const saf_probe& probe, const saf_search_template& candidate) {
  return RootSearch(probe, candidate).Run();
}

double saf_match(const saf_probe& probe, const saf_search_template& candidate) {
  double best = 0;
  saf_pairing pairing(probe.search_template(), candidate);
  for (const saf_minutia_pair root : saf_root_pairs(probe, candidate)) {
    pairing.Grow(root);
    const double raw = saf_raw_score(pairing.pairs(), probe.search_template(), candidate);
    best = std::max(best, saf_shaped_score(raw));
  }
  return best;
}

}  // namespace vorc
