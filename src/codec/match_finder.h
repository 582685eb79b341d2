#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace vorc {

struct Match {
  size_t length = 0;
  size_t distance = 0;
};

/// Finds for a position the longest run of bytes seen before, among the last 128 positions in the
/// window whose next three bytes hash alike; of equal lengths the nearest.
class MatchFinder {
 public:
  /// False if there is no memory for the tables.
  bool Start(std::span<const uint8_t> text);

  /// The best match at `position`, at least three bytes long, or one of length 0. At least three bytes
  /// must be left.
  Match Find(size_t position) const;

  /// Makes the positions from `first` up to before `end` candidates for those to come. One with fewer than
  /// three bytes left is passed over. Expects a search at `end` next.
  void Insert(size_t first, size_t end);

 private:
  /// Calls `visit` with where each candidate lies from here, a negative number, nearest first, until it
  /// gives false.
  template <typename Visit>
  void VisitCandidates(size_t position, Visit visit) const;

  Match FindNearEnd(size_t position) const;
  void Prefetch(size_t position) const;

  // The candidates of one hash: how many positions were inserted, and which ring holds the last of them, 0
  // for none yet.
  // A ring, not a chain of links, since the addresses of all candidates are then known at once.
  struct Bucket {
    uint32_t inserted = 0;
    uint32_t ring = 0;
  };

  std::span<const uint8_t> text_;
  std::unique_ptr<Bucket[]> buckets_;
  std::unique_ptr<uint32_t[]> rings_;
  // Rings are handed out in order of first use, so that those of a text lie close together.
  uint32_t rings_used_ = 0;
};

}  // namespace vorc
