#include <algorithm>
#include <array>

#include "codec/bit_writer.h"
#include "codec/deflate_codes.h"
#include "codec/match_finder.h"
#include "codec/vzip.h"

namespace vorc {
namespace {

struct Code {
  uint32_t bits = 0;
  uint8_t count = 0;
};

constexpr Code WithExtra(Code code, uint32_t extra, uint8_t extra_count) {
  return {code.bits | extra << code.count, static_cast<uint8_t>(code.count + extra_count)};
}

using LiteralCodes = std::array<Code, kFixedLiteralCodes>;

// Codes of one length follow each other, and those of each length follow the shorter ones.
constexpr LiteralCodes MakeLiteralCodes() {
  LiteralCodes codes;
  uint32_t next = 0;
  for (uint8_t count = 7; count <= 9; ++count) {
    for (size_t symbol = 0; symbol < codes.size(); ++symbol) {
      if (FixedLiteralBits(symbol) == count) codes[symbol] = {ReverseBits(next++, count), count};
    }
    next <<= 1;
  }
  return codes;
}

constexpr LiteralCodes kLiteralCodes = MakeLiteralCodes();

using LengthCodes = std::array<Code, kMaxMatch + 1>;

// By length, extra bits included. A later base overrides what an earlier one reaches: 258 has a code of
// its own.
constexpr LengthCodes MakeLengthCodes() {
  LengthCodes codes;
  for (size_t i = 0; i < vz_len_base.size(); ++i) {
    for (uint32_t extra = 0; extra < 1U << vz_len_extra[i]; ++extra) {
      codes[vz_len_base[i] + extra] = WithExtra(kLiteralCodes[kFirstLengthCode + i], extra, vz_len_extra[i]);
    }
  }
  return codes;
}

constexpr LengthCodes kLengthCodes = MakeLengthCodes();

constexpr size_t kNearDistances = 256;
constexpr unsigned kFarShift = 7;

// The index of a distance's code: of near ones by distance, of far ones by distance / 128, since all
// their bases stand at multiples of 128.
struct DistanceIndexes {
  std::array<uint8_t, kNearDistances + 1> near{};
  std::array<uint8_t, (kWindowSize >> kFarShift) + 1> far{};
};

constexpr DistanceIndexes MakeDistanceIndexes() {
  DistanceIndexes indexes;
  for (uint8_t i = 0; i < vz_dist_base.size(); ++i) {
    const size_t first = vz_dist_base[i];
    const size_t end = first + (size_t{1} << vz_dist_extra[i]);
    for (size_t distance = first; distance < end; ++distance) {
      if (distance <= kNearDistances)
        indexes.near[distance] = i;
      else
        indexes.far[(distance - 1) >> kFarShift] = i;
    }
  }
  return indexes;
}

constexpr DistanceIndexes kDistanceIndexes = MakeDistanceIndexes();

void PutMatch(BitWriter& out, Match match) {
  const size_t distance = match.distance;
  const size_t index = distance <= kNearDistances ? kDistanceIndexes.near[distance]
                                                  : kDistanceIndexes.far[(distance - 1) >> kFarShift];
  const Code length = kLengthCodes[match.length];
  const Code code = {ReverseBits(static_cast<uint32_t>(index), kFixedDistanceBits), kFixedDistanceBits};
  const Code whole =
      WithExtra(code, static_cast<uint32_t>(distance - vz_dist_base[index]), vz_dist_extra[index]);
  out.Put(length.bits | uint64_t{whole.bits} << length.count, unsigned{length.count} + whole.count);
}

// Greedy: takes each match as it comes. Ends early once the target is full.
VzStatus PutFixedBlock(std::span<const uint8_t> source, BitWriter& out) {
  MatchFinder finder;
  if (!finder.Start(source)) return kVzNoMemory;
  out.Put(1 | kFixedBlock << 1, 3);
  size_t position = 0;
  while (position < source.size() && !out.full()) {
    const bool searched = source.size() - position >= kMinMatch;
    const Match match = searched ? finder.Find(position) : Match();
    const size_t next = position + std::max<size_t>(match.length, 1);
    if (match.length == 0) {
      const Code literal = kLiteralCodes[source[position]];
      out.Put(literal.bits, literal.count);
    } else {
      PutMatch(out, match);
    }
    finder.Insert(position, next);
    position = next;
  }
  out.Put(kLiteralCodes[kEndOfBlock].bits, kLiteralCodes[kEndOfBlock].count);
  out.Finish();
  return kVzOk;
}

VzStatus PutStoredBlocks(std::span<const uint8_t> source, std::span<uint8_t> target, size_t& written) {
  constexpr size_t kHead = 5;
  do {
    const std::span<const uint8_t> piece = source.first(std::min(source.size(), kMaxStoredBlock));
    source = source.subspan(piece.size());
    if (target.size() < kHead + piece.size()) {
      written = 0;
      return kVzNoRoom;
    }
    target[0] = source.empty() ? 1 : 0;
    StoreLittle(&target[1], piece.size(), 2);
    StoreLittle(&target[3], ~piece.size(), 2);
    std::copy(piece.begin(), piece.end(), target.begin() + kHead);
    target = target.subspan(kHead + piece.size());
    written += kHead + piece.size();
  } while (!source.empty());
  return kVzOk;
}

}  // namespace

VzStatus vz_deflate(std::span<const uint8_t> source, std::span<uint8_t> target, size_t& written) {
  written = 0;
  if (target.data() == nullptr) return kVzBadArgument;
  if (source.empty()) return PutStoredBlocks(source, target, written);
  const size_t largest_worthwhile = source.size() + source.size() / 1000 + 15;
  BitWriter out(target.first(std::min(target.size(), largest_worthwhile)));
  const VzStatus status = PutFixedBlock(source, out);
  if (status != kVzOk) return status;
  if (out.full()) return PutStoredBlocks(source, target, written);
  written = out.size();
  return kVzOk;
}

}  // namespace vorc
