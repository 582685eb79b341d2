#include "fingerprint/probe.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "fingerprint/tolerance.h"

namespace vorc {

namespace {

constexpr int kAngleBuckets = 36;
constexpr int kFirstSizeBits = 12;

int AngleBucket(float angle) {
  return std::min(static_cast<int>(angle / kAngleTolerance), kAngleBuckets - 1);
}

uint32_t Key(int reference_bucket, int neighbor_bucket, int length_bucket) {
  return static_cast<uint32_t>(reference_bucket << 24 | neighbor_bucket << 16 | length_bucket);
}

/// Calls `visit` with the key of each bucket that edges matching `shape` may fall into.
template <typename Visit>
void ForEachKey(const saf_edge_shape& shape, Visit visit) {
  const int first_length = std::max(shape.length - kLengthTolerance, 0) / kLengthTolerance;
  const int last_length = (shape.length + kLengthTolerance) / kLengthTolerance;
  for (int i = -1; i <= 1; ++i) {
    const int reference = (AngleBucket(shape.reference_angle) + i + kAngleBuckets) % kAngleBuckets;
    for (int j = -1; j <= 1; ++j) {
      const int neighbor = (AngleBucket(shape.neighbor_angle) + j + kAngleBuckets) % kAngleBuckets;
      for (int length = first_length; length <= last_length; ++length)
        visit(Key(reference, neighbor, length));
    }
  }
}

std::vector<saf_indexed_edge> AllEdges(const std::vector<saf_minutia>& minutiae) {
  std::vector<saf_indexed_edge> edges;
  edges.reserve(minutiae.size() * minutiae.size());
  for (size_t from = 0; from < minutiae.size(); ++from) {
    for (size_t to = 0; to < minutiae.size(); ++to) {
      if (from == to) continue;
      edges.push_back({saf_edge_shape_between(minutiae[from], minutiae[to]), static_cast<uint16_t>(from),
                       static_cast<uint16_t>(to)});
    }
  }
  return edges;
}

}  // namespace

bool saf_edge_shapes_matching(const saf_edge_shape& a, const saf_edge_shape& b) {
  return std::abs(a.length - b.length) <= kLengthTolerance &&
         saf_angle_distance(a.reference_angle, b.reference_angle) < kAngleTolerance &&
         saf_angle_distance(a.neighbor_angle, b.neighbor_angle) < kAngleTolerance;
}

saf_probe::saf_probe(const saf_search_template& prepared)
    : template_(prepared),
      edges_(AllEdges(prepared.minutiae)),
      slots_((size_t{1} << kFirstSizeBits) + 1),
      size_bits_(kFirstSizeBits) {
  CountKeys();
  FillLists();
}

void saf_probe::CountKeys() {
  for (const saf_indexed_edge& edge : edges_) {
    ForEachKey(edge.shape, [&](uint32_t key) {
      if (4 * used_ >= 3 * SlotCount()) Grow();
      Slot& slot = slots_[Place(key)];
      used_ += slot.key == kFree;
      slot.key = key;
      ++slot.list;
    });
  }
}

// Each list is filled from its end, which leaves its start in the slot.
void saf_probe::FillLists() {
  uint32_t total = 0;
  for (Slot& slot : slots_) slot.list = total += slot.list;
  lists_.resize(total);
  for (size_t i = edges_.size(); i-- > 0;) {
    ForEachKey(edges_[i].shape,
               [&](uint32_t key) { lists_[--slots_[Place(key)].list] = static_cast<uint16_t>(i); });
  }
}

/// Where the key is, or would be put.
size_t saf_probe::Place(uint32_t key) const {
  constexpr uint32_t kMultiplier = 0x9e3779b1;
  size_t place = (key * kMultiplier) >> (32 - size_bits_);
  while (slots_[place].key != key && slots_[place].key != kFree) place = (place + 1) & (SlotCount() - 1);
  return place;
}

void saf_probe::Grow() {
  ++size_bits_;
  const std::vector<Slot> old = std::exchange(slots_, std::vector<Slot>(SlotCount() + 1));
  for (const Slot& slot : old) {
    if (slot.key != kFree) slots_[Place(slot.key)] = slot;
  }
}

std::span<const uint16_t> saf_probe::Candidates(const saf_edge_shape& shape) const {
  const size_t place = Place(Key(AngleBucket(shape.reference_angle), AngleBucket(shape.neighbor_angle),
                                 shape.length / kLengthTolerance));
  const uint32_t start = slots_[place].list;
  return std::span(lists_).subspan(start, slots_[place + 1].list - start);
}

saf_probe saf_probe_create(const saf_search_template& prepared) {
  return saf_probe(prepared);
}

}  // namespace vorc
