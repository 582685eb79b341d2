#include "codec/match_finder.h"

#include <algorithm>
#include <bit>
#include <new>

#include "codec/deflate_codes.h"
#include "codec/little_endian.h"

namespace vorc {
namespace {

constexpr size_t kHashes = 32768;
constexpr uint32_t kCandidates = 128;

size_t Hash(const uint8_t* at) {
  return (uint32_t{at[0]} << 10 ^ uint32_t{at[1]} << 5 ^ at[2]) & (kHashes - 1);
}

// What a candidate must share with the text here to give a match of more than some length: the eight
// bytes that end with the first one gained, or, early on, all from the first.
struct Sample {
  ptrdiff_t offset;
  uint64_t mask;

  uint64_t Of(const uint8_t* at) const { return LoadLittle64(at + offset) & mask; }
};

Sample SampleBeyond(size_t length) {
  if (length + 1 >= 8) return {static_cast<ptrdiff_t>(length) - 7, ~uint64_t{0}};
  return {0, (uint64_t{1} << (8 * (length + 1))) - 1};
}

size_t CommonLength(const uint8_t* left, const uint8_t* right, size_t limit) {
  size_t length = 0;
  while (length + 8 <= limit) {
    const uint64_t difference = LoadLittle64(left + length) ^ LoadLittle64(right + length);
    if (difference != 0) return length + static_cast<size_t>(std::countr_zero(difference)) / 8;
    length += 8;
  }
  while (length < limit && left[length] == right[length]) ++length;
  return length;
}

}  // namespace

bool MatchFinder::Start(std::span<const uint8_t> text) {
  text_ = text;
  buckets_.reset(new (std::nothrow) Bucket[kHashes]);
  rings_.reset(new (std::nothrow) uint32_t[(std::min(text.size(), kHashes) + 1) * kCandidates]);
  return buckets_ != nullptr && rings_ != nullptr;
}

template <typename Visit>
void MatchFinder::VisitCandidates(size_t position, Visit visit) const {
  const Bucket bucket = buckets_[Hash(text_.data() + position)];
  const uint32_t* ring = &rings_[bucket.ring * kCandidates];
  const uint32_t newest = bucket.inserted % kCandidates;
  const auto here = static_cast<uint32_t>(position);
  const auto walk = [&](const uint32_t* end, const uint32_t* begin) {
    while (end != begin) {
      // The distance, negative.
      const uint32_t behind = *--end - here;
      if (behind < uint32_t{0} - static_cast<uint32_t>(kWindowSize)) return false;
      if (!visit(static_cast<ptrdiff_t>(static_cast<int32_t>(behind)))) return false;
    }
    return true;
  };
  if (walk(ring + newest, ring) && bucket.inserted >= kCandidates) walk(ring + kCandidates, ring + newest);
}

Match MatchFinder::Find(size_t position) const {
  const uint8_t* here = text_.data() + position;
  const size_t limit = std::min(kMaxMatch, text_.size() - position);
  if (limit < sizeof(uint64_t)) return FindNearEnd(position);
  Match best;
  Sample sample = SampleBeyond(kMinMatch - 1);
  const uint8_t* sampled = here + sample.offset;
  uint64_t wanted = sample.Of(here);
  VisitCandidates(position, [&](ptrdiff_t behind) {
    if ((LoadLittle64(sampled + behind) & sample.mask) != wanted) return true;
    const size_t length = CommonLength(here + behind, here, limit);
    if (length <= best.length) return true;
    best = {length, static_cast<size_t>(-behind)};
    if (length == limit) return false;
    sample = SampleBeyond(length);
    sampled = here + sample.offset;
    wanted = sample.Of(here);
    return true;
  });
  return best;
}

Match MatchFinder::FindNearEnd(size_t position) const {
  const uint8_t* here = text_.data() + position;
  Match best;
  VisitCandidates(position, [&](ptrdiff_t behind) {
    const size_t length = CommonLength(here + behind, here, text_.size() - position);
    if (length >= kMinMatch && length > best.length) best = {length, static_cast<size_t>(-behind)};
    return true;
  });
  return best;
}

void MatchFinder::Prefetch(size_t position) const {
  if (text_.size() - position < kMinMatch) return;
  const Bucket& bucket = buckets_[Hash(text_.data() + position)];
  __builtin_prefetch(&rings_[bucket.ring * kCandidates + (bucket.inserted - 1) % kCandidates]);
}

void MatchFinder::Insert(size_t first, size_t end) {
  Prefetch(end);
  const uint8_t* text = text_.data();
  Bucket* buckets = buckets_.get();
  uint32_t* rings = rings_.get();
  for (size_t position = first; position < end && text_.size() - position >= kMinMatch; ++position) {
    Bucket& bucket = buckets[Hash(text + position)];
    if (bucket.ring == 0) bucket.ring = ++rings_used_;
    rings[bucket.ring * kCandidates + bucket.inserted++ % kCandidates] = static_cast<uint32_t>(position);
  }
}

}  // namespace vorc
