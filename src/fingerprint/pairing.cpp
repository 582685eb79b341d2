#include "fingerprint/pairing.h"

#include <algorithm>

#include "fingerprint/tolerance.h"

namespace vorc {

saf_pairing::saf_pairing(const saf_search_template& probe, const saf_search_template& candidate)
    : probe_(probe),
      candidate_(candidate),
      by_probe_(probe.minutiae.size(), kFree),
      by_candidate_(candidate.minutiae.size(), kFree) {}

void saf_pairing::Grow(saf_minutia_pair root) {
  Clear();
  saf_heap_push({root, root, 0, 0});
  while (!heap_.empty()) {
    const Pending next = saf_heap_pop();
    if (!IsFree(next.pair)) {
      saf_pairing_support(next.pair);
      continue;
    }
    Add(next);
    CollectEdges(next.pair);
  }
}

void saf_pairing::Clear() {
  for (const saf_paired& paired : pairs_) {
    by_probe_[static_cast<size_t>(paired.pair.probe)] = kFree;
    by_candidate_[static_cast<size_t>(paired.pair.candidate)] = kFree;
  }
  pairs_.clear();
  sequence_ = 0;
}

void saf_pairing::Add(const Pending& pending) {
  const int place = static_cast<int>(pairs_.size());
  by_probe_[static_cast<size_t>(pending.pair.probe)] = place;
  by_candidate_[static_cast<size_t>(pending.pair.candidate)] = place;
  pairs_.push_back({pending.pair, pending.from, 0});
}

/// Both lists are sorted by length, so that the edges of like length form a window that slides.
void saf_pairing::CollectEdges(saf_minutia_pair from) {
  const auto& probe_edges = probe_.edges[static_cast<size_t>(from.probe)];
  size_t start = 0;
  for (const saf_neighbor_edge& edge : candidate_.edges[static_cast<size_t>(from.candidate)]) {
    const int length = edge.shape.length;
    while (start < probe_edges.size() && probe_edges[start].shape.length < length - kLengthTolerance) ++start;
    for (size_t i = start; i < probe_edges.size(); ++i) {
      const saf_neighbor_edge& probe_edge = probe_edges[i];
      if (probe_edge.shape.length > length + kLengthTolerance) break;
      if (WithinAngleTolerance(
              saf_angle_difference(probe_edge.shape.reference_angle, edge.shape.reference_angle)) &&
          WithinAngleTolerance(
              saf_angle_difference(probe_edge.shape.neighbor_angle, edge.shape.neighbor_angle))) {
        Consider({{probe_edge.neighbor, edge.neighbor}, from, length, 0});
      }
    }
  }
}

void saf_pairing::Consider(const Pending& pending) {
  if (IsFree(pending.pair)) {
    saf_heap_push(pending);
  } else {
    saf_pairing_support(pending.pair);
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

void saf_pairing::saf_heap_push(Pending pending) {
  pending.sequence = sequence_++;
  heap_.push_back(pending);
  std::push_heap(heap_.begin(), heap_.end(), Later{});
}

saf_pairing::Pending saf_pairing::saf_heap_pop() {
  std::pop_heap(heap_.begin(), heap_.end(), Later{});
  const Pending top = heap_.back();
  heap_.pop_back();
  return top;
}

}  // namespace vorc
