#include "fingerprint/pairing.h"

#include <algorithm>
#include <functional>

#include "fingerprint/tolerance.h"

namespace vorc {

namespace {

// How the keys in the heap are made up. A growth follows at most 100 pairs with 99 x 99 edges each.
constexpr int kLengthShift = 48;
constexpr int kArrivalShift = 24;
constexpr uint64_t kEdgeMask = (uint64_t{1} << kArrivalShift) - 1;
constexpr size_t kMaxKept = size_t{1} << 20;

}  // namespace

saf_pairing::saf_pairing(const saf_search_template& probe, const saf_search_template& candidate)
    : probe_(probe),
      candidate_(candidate),
      by_probe_(probe.minutiae.size(), kFree),
      by_candidate_(candidate.minutiae.size(), kFree) {}

void saf_pairing::Grow(saf_minutia_pair root) {
  StartOver();
  Add({root, nullptr, nullptr});
  CollectEdges(root);
  while (!heap_.empty()) {
    const SharedEdge next = saf_heap_pop();
    if (IsFree(next.to)) {
      Add(next);
      CollectEdges(next.to);
    } else {
      saf_pairing_support(next.to);
    }
  }
}

void saf_pairing::StartOver() {
  for (const saf_paired& paired : pairs_) {
    by_probe_[static_cast<size_t>(paired.pair.probe)] = kFree;
    by_candidate_[static_cast<size_t>(paired.pair.candidate)] = kFree;
  }
  pairs_.clear();
  arrivals_ = 0;
  if (ranges_.empty() || shared_.size() > kMaxKept) {
    ranges_.assign(by_probe_.size() * by_candidate_.size(), {});
    shared_.clear();
  }
}

void saf_pairing::Add(const SharedEdge& edge) {
  const int place = static_cast<int>(pairs_.size());
  by_probe_[static_cast<size_t>(edge.to.probe)] = place;
  by_candidate_[static_cast<size_t>(edge.to.candidate)] = place;
  pairs_.push_back({edge.to, edge.probe_edge, edge.candidate_edge, 0});
}

void saf_pairing::CollectEdges(saf_minutia_pair from) {
  const SharedRange range = EdgesFrom(from);
  for (uint32_t i = range.start; i < range.end; ++i) {
    const saf_minutia_pair to = shared_[i].to;
    if (IsFree(to)) {
      saf_heap_push(i);
    } else {
      saf_pairing_support(to);
    }
  }
}

saf_pairing::SharedRange saf_pairing::EdgesFrom(saf_minutia_pair from) {
  SharedRange& range =
      ranges_[static_cast<size_t>(from.probe) * by_candidate_.size() + static_cast<size_t>(from.candidate)];
  if (range.end == kUnknown) {
    range.start = static_cast<uint32_t>(shared_.size());
    FindShared(from);
    range.end = static_cast<uint32_t>(shared_.size());
  }
  return range;
}

/// Both lists are sorted by length, so that the edges of like length form a window that slides.
void saf_pairing::FindShared(saf_minutia_pair from) {
  const auto& probe_edges = probe_.edges[static_cast<size_t>(from.probe)];
  size_t start = 0;
  for (const saf_neighbor_edge& edge : candidate_.edges[static_cast<size_t>(from.candidate)]) {
    const int length = edge.shape.length;
    while (start < probe_edges.size() && probe_edges[start].shape.length < length - kLengthTolerance) ++start;
    for (size_t i = start; i < probe_edges.size(); ++i) {
      const saf_edge_shape& shape = probe_edges[i].shape;
      if (shape.length > length + kLengthTolerance) break;
      if (WithinAngleTolerance(saf_angle_difference(shape.reference_angle, edge.shape.reference_angle)) &&
          WithinAngleTolerance(saf_angle_difference(shape.neighbor_angle, edge.shape.neighbor_angle))) {
        shared_.push_back({{probe_edges[i].neighbor, edge.neighbor}, &shape, &edge.shape});
      }
    }
  }
}

bool saf_pairing::IsFree(saf_minutia_pair pair) const {
  return by_probe_[static_cast<size_t>(pair.probe)] == kFree &&
         by_candidate_[static_cast<size_t>(pair.candidate)] == kFree;
}

/// One more edge speaks for a pair, if both are paired to each other.
void saf_pairing::saf_pairing_support(saf_minutia_pair pair) {
  const int place = by_probe_[static_cast<size_t>(pair.probe)];
  if (place != kFree && place == by_candidate_[static_cast<size_t>(pair.candidate)]) {
    ++pairs_[static_cast<size_t>(place)].support;
  }
}

void saf_pairing::saf_heap_push(uint32_t edge) {
  const uint64_t length = shared_[edge].candidate_edge->length;
  heap_.push_back(length << kLengthShift | arrivals_++ << kArrivalShift | edge);
  std::push_heap(heap_.begin(), heap_.end(), std::greater<>());
}

const saf_pairing::SharedEdge& saf_pairing::saf_heap_pop() {
  std::pop_heap(heap_.begin(), heap_.end(), std::greater<>());
  const uint64_t key = heap_.back();
  heap_.pop_back();
  return shared_[key & kEdgeMask];
}

}  // namespace vorc
