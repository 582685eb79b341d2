#include "lib/file_fingerprint.h"

#include <algorithm>
#include <array>
#include <optional>

#include "base/ascii.h"
#include "lib/reading.h"

namespace vorc {

namespace {

// Min-wise hashing with one hash function (Li, Owen and Zhang, "One Permutation Hashing"): a hash
// names a slot and a value, each slot keeps its smallest value, and the share of equal slots
// estimates the share of equal runs.
constexpr size_t kSlots = 128;
constexpr int kSlotBits = 7;
constexpr size_t kRun = 6;
constexpr uint64_t kRunMask = (uint64_t{1} << (8 * kRun)) - 1;
constexpr uint64_t kEmptySlot = ~uint64_t{0};
constexpr std::string_view kPrefix = "morvfp1:";
constexpr std::string_view kHexDigits = "0123456789abcdef";

using Slots = std::array<uint64_t, kSlots>;

// The finalizer of MurmurHash3: every input bit reaches every output bit.
uint64_t Mixed(uint64_t x) {
  x = (x ^ x >> 33) * 0xff51afd7ed558ccd;
  x = (x ^ x >> 33) * 0xc4ceb9fe1a85ec53;
  return x ^ x >> 33;
}

void Enter(Slots& slots, uint64_t run) {
  const uint64_t hash = Mixed(run);
  uint64_t& slot = slots[hash >> (64 - kSlotBits)];
  slot = std::min(slot, hash & (kEmptySlot >> kSlotBits));
}

Slots SmallestHashes(std::string_view content) {
  Slots slots;
  slots.fill(kEmptySlot);
  uint64_t run = 0;
  size_t length = 0;
  for (const char c : content) {
    run = (run << 8 | static_cast<unsigned char>(c)) & kRunMask;
    if (++length >= kRun) Enter(slots, run);
  }
  // Shorter contents are one run; the length keeps them apart from each other and from full runs.
  if (length < kRun) Enter(slots, run | uint64_t{length + 1} << 56);
  return slots;
}

// Small files leave slots empty. Each borrows from a slot that is filled, chosen by its own number
// alone, so that equal sets borrow alike (Shrivastava, "Optimal Densification").
uint64_t Borrowed(const Slots& slots, size_t empty) {
  for (uint64_t attempt = 1;; ++attempt) {
    const uint64_t value = slots[Mixed(empty << 32 | attempt) % kSlots];
    if (value != kEmptySlot) return value;
  }
}

bool IsFingerprint(std::string_view text) {
  if (text.size() != kPrefix.size() + 2 * kSlots || !text.starts_with(kPrefix)) return false;
  return text.find_first_not_of(kHexDigits, kPrefix.size()) == std::string_view::npos;
}

}  // namespace

std::string FingerprintOf(std::string_view content) {
  const Slots slots = SmallestHashes(content);
  std::string text(kPrefix);
  for (size_t i = 0; i < kSlots; ++i) {
    const uint64_t value = slots[i] != kEmptySlot ? slots[i] : Borrowed(slots, i);
    text += kHexDigits[value >> 4 & 15];
    text += kHexDigits[value & 15];
  }
  return text;
}

std::string MorvFileFingerprint(const std::string& path) {
  const File file = OpenForReading(path);
  const std::optional<std::string> content = file ? ReadToEnd(file.get()) : std::nullopt;
  return content ? FingerprintOf(*content) : std::string();
}

int32_t MorvFingerprintSimilarity(std::string_view a, std::string_view b) {
  if (!IsFingerprint(a) || !IsFingerprint(b)) return -1;
  if (a == b) return 100;
  double equal = 0;
  for (size_t i = kPrefix.size(); i < a.size(); i += 2) equal += a.substr(i, 2) == b.substr(i, 2);
  // One pair in 256 agrees by chance.
  const double shared = std::max(0.0, (equal / kSlots - 1.0 / 256) / (1 - 1.0 / 256));
  // From the share of the union to the share of one file.
  return std::min(99, static_cast<int32_t>(100 * 2 * shared / (1 + shared)));
}

}  // namespace vorc
