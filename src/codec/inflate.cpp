#include "codec/inflate.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "codec/bit_reader.h"
#include "codec/deflate_codes.h"
#include "codec/huffman.h"

namespace vorc {
namespace {

constexpr size_t kLengthCodes = 19;
constexpr size_t kMaxLiteralCodes = 286;
constexpr size_t kMaxDistanceCodes = 30;

struct Decoders {
  HuffmanDecoder literals;
  HuffmanDecoder distances;
};

const Decoders& FixedDecoders() {
  static const Decoders decoders = [] {
    std::array<uint8_t, kFixedLiteralCodes> literals;
    for (size_t i = 0; i < literals.size(); ++i) literals[i] = FixedLiteralBits(i);
    std::array<uint8_t, kFixedDistanceCodes> distances;
    distances.fill(kFixedDistanceBits);
    Decoders made;
    made.literals.Build(literals);
    made.distances.Build(distances);
    return made;
  }();
  return decoders;
}

class Inflater {
 public:
  Inflater(std::span<const uint8_t> source, std::span<uint8_t> target)
      : source_size_(source.size()), in_(source), target_(target) {}

  InflateResult Run() {
    uint32_t final = 0;
    VzStatus status = kVzOk;
    while (status == kVzOk && final == 0) status = Block(final);
    const size_t consumed = status == kVzOk ? source_size_ - in_.RestOfBytes().size() : 0;
    return {status, consumed, used_};
  }

 private:
  VzStatus Block(uint32_t& final) {
    uint32_t type = 0;
    if (!in_.Take(1, final) || !in_.Take(2, type)) return kVzMalformed;
    switch (type) {
      case kStoredBlock: return Stored();
      case kFixedBlock: return Compressed(FixedDecoders());
      case kDynamicBlock: return ReadCodes() ? Compressed(dynamic_) : kVzMalformed;
      default: return kVzMalformed;
    }
  }

  VzStatus Stored() {
    constexpr size_t kHead = 4;
    const std::span<const uint8_t> bytes = in_.RestOfBytes();
    if (bytes.size() < kHead) return kVzMalformed;
    const uint32_t head = LoadLittle32(bytes.data());
    const size_t length = head & 0xFFFF;
    if (length != (~head >> 16) || bytes.size() - kHead < length) return kVzMalformed;
    const size_t fitting = std::min(length, target_.size() - used_);
    if (fitting > 0) std::memcpy(&target_[used_], &bytes[kHead], fitting);
    used_ += fitting;
    in_.SkipBytes(kHead + length);
    return fitting == length ? kVzOk : kVzNoRoom;
  }

  bool ReadCodes() {
    uint32_t literal_count = 0;
    uint32_t distance_count = 0;
    if (!in_.Take(5, literal_count) || !in_.Take(5, distance_count)) return false;
    literal_count += 257;
    distance_count += 1;
    if (literal_count > kMaxLiteralCodes || distance_count > kMaxDistanceCodes) return false;
    std::array<uint8_t, kMaxLiteralCodes + kMaxDistanceCodes> all{};
    const std::span<uint8_t> lengths = std::span(all).first(literal_count + distance_count);
    return ReadLengthCodes() && ReadLengths(lengths) && lengths[kEndOfBlock] != 0 &&
           dynamic_.literals.Build(lengths.first(literal_count)) &&
           dynamic_.distances.Build(lengths.subspan(literal_count));
  }

  // The codes in which the lengths of the others are told.
  bool ReadLengthCodes() {
    static constexpr std::array<uint8_t, kLengthCodes> kOrder = {16, 17, 18, 0, 8,  7, 9,  6, 10, 5,
                                                                 11, 4,  12, 3, 13, 2, 14, 1, 15};
    uint32_t count = 0;
    if (!in_.Take(4, count)) return false;
    count += 4;
    std::array<uint8_t, kLengthCodes> lengths{};
    for (uint32_t i = 0; i < count; ++i) {
      uint32_t length = 0;
      if (!in_.Take(3, length)) return false;
      lengths[kOrder[i]] = static_cast<uint8_t>(length);
    }
    return dynamic_.literals.Build(lengths);
  }

  bool ReadLengths(std::span<uint8_t> lengths) {
    struct Repeat {
      uint8_t extra_bits, base;
    };
    static constexpr uint32_t kFirstRepeat = 16;
    static constexpr std::array<Repeat, 3> kRepeats = {{{2, 3}, {3, 3}, {7, 11}}};
    for (size_t i = 0; i < lengths.size();) {
      in_.Refill();
      const int symbol = dynamic_.literals.Decode(in_);
      if (symbol < 0) return false;
      if (symbol < static_cast<int>(kFirstRepeat)) {
        lengths[i++] = static_cast<uint8_t>(symbol);
        continue;
      }
      const bool previous = symbol == static_cast<int>(kFirstRepeat);
      if (previous && i == 0) return false;
      const Repeat repeat = kRepeats[static_cast<size_t>(symbol) - kFirstRepeat];
      uint32_t count = 0;
      if (!in_.Take(repeat.extra_bits, count)) return false;
      count += repeat.base;
      if (count > lengths.size() - i) return false;
      std::fill_n(&lengths[i], count, previous ? lengths[i - 1] : uint8_t{0});
      i += count;
    }
    return true;
  }

  VzStatus Compressed(const Decoders& decoders) {
    for (;;) {
      in_.Refill();
      const int symbol = decoders.literals.Decode(in_);
      if (symbol < 0) return kVzMalformed;
      if (symbol < static_cast<int>(kEndOfBlock)) {
        if (used_ == target_.size()) return kVzNoRoom;
        target_[used_++] = static_cast<uint8_t>(symbol);
        continue;
      }
      if (symbol == static_cast<int>(kEndOfBlock)) return kVzOk;
      const VzStatus status = CopyMatch(static_cast<size_t>(symbol) - kFirstLengthCode, decoders.distances);
      if (status != kVzOk) return status;
    }
  }

  // The bits of a whole match are ready here: 15 + 5 + 15 + 13 at most.
  VzStatus CopyMatch(size_t length_code, const HuffmanDecoder& distances) {
    if (length_code >= vz_len_base.size()) return kVzMalformed;
    size_t length = vz_len_base[length_code];
    if (!AddExtra(vz_len_extra[length_code], length)) return kVzMalformed;
    const int distance_code = distances.Decode(in_);
    if (distance_code < 0 || static_cast<size_t>(distance_code) >= vz_dist_base.size()) return kVzMalformed;
    size_t distance = vz_dist_base[static_cast<size_t>(distance_code)];
    if (!AddExtra(vz_dist_extra[static_cast<size_t>(distance_code)], distance)) return kVzMalformed;
    if (distance > used_) return kVzMalformed;
    return Copy(length, distance);
  }

  bool AddExtra(unsigned count, size_t& value) {
    if (count > in_.ready()) return false;
    value += in_.peek() & ((uint64_t{1} << count) - 1);
    in_.Skip(count);
    return true;
  }

  VzStatus Copy(size_t length, size_t distance) {
    constexpr size_t kWord = 8;
    const size_t room = target_.size() - used_;
    uint8_t* to = target_.data() + used_;
    const uint8_t* from = to - distance;
    if (distance >= kWord && room >= length + kWord) {
      // In words, the last of which may write beyond the match into what comes next.
      for (size_t i = 0; i < length; i += kWord) std::memcpy(to + i, from + i, kWord);
      used_ += length;
      return kVzOk;
    }
    const size_t fitting = std::min(length, room);
    for (size_t i = 0; i < fitting; ++i) to[i] = from[i];
    used_ += fitting;
    return fitting == length ? kVzOk : kVzNoRoom;
  }

  size_t source_size_;
  BitReader in_;
  std::span<uint8_t> target_;
  size_t used_ = 0;
  Decoders dynamic_;
};

}  // namespace

InflateResult Inflate(std::span<const uint8_t> source, std::span<uint8_t> target) {
  return Inflater(source, target).Run();
}

VzStatus vz_inflate(std::span<const uint8_t> source, std::span<uint8_t> target, size_t& written) {
  written = 0;
  if (target.data() == nullptr) return kVzBadArgument;
  const InflateResult result = Inflate(source, target);
  written = result.written;
  return result.status;
}

}  // namespace vorc
