#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/text_hash.h"

namespace vorc {

/// Entries found by their text `key` in constant time and visited in the order they came. `Entry`
/// is an aggregate whose first member is `std::string key`.
///
/// Entries stand in one vector in that order; a separate table of slots, probed linearly, leads
/// from a key's hash to its place. An erased entry leaves a gap that a later rebuild closes, so
/// erasing moves nothing and a run of erasures stays linear.
template <typename Entry>
class OrderedTable {
 public:
  size_t Count() const { return live_; }

  /// The entry of `key`, or null.
  const Entry* Find(std::string_view key) const {
    if (live_ == 0) return nullptr;
    const size_t slot = FindSlot(key, Hash(key));
    return slots_[slot].place < kErased ? &places_[slots_[slot].place].entry : nullptr;
  }

  /// The entry of `key`, appended with nothing but its key if there was none.
  Entry& FindOrAdd(std::string_view key) {
    if ((places_.size() + 1) * 3 > slots_.size() * 2) Rebuild();
    const uint32_t hash = Hash(key);
    Slot& slot = slots_[FindSlot(key, hash)];
    if (slot.place == kEmpty) {
      slot = {hash, static_cast<uint32_t>(places_.size())};
      places_.push_back({Entry{.key = std::string(key)}, hash, true});
      ++live_;
    }
    return places_[slot.place].entry;
  }

  /// False if there was no such key.
  bool Erase(std::string_view key) {
    if (live_ == 0) return false;
    Slot& slot = slots_[FindSlot(key, Hash(key))];
    if (slot.place == kEmpty) return false;
    places_[slot.place] = {};
    slot.place = kErased;
    --live_;
    if (places_.size() > live_ * 2 + kFewGaps) Rebuild();
    return true;
  }

  /// Copies of all keys, in the order in which they were added.
  std::vector<std::string> Keys() const {
    std::vector<std::string> keys;
    keys.reserve(live_);
    for (const Place& place : places_) {
      if (place.live) keys.push_back(place.entry.key);
    }
    return keys;
  }

 private:
  struct Place {
    Entry entry{};
    uint32_t hash = 0;
    bool live = false;
  };
  struct Slot {
    uint32_t hash = 0;
    uint32_t place = kEmpty;
  };

  static constexpr uint32_t kEmpty = UINT32_MAX;
  static constexpr uint32_t kErased = kEmpty - 1;
  static constexpr size_t kFewGaps = 16;
  static constexpr size_t kFewestSlots = 16;

  static uint32_t Hash(std::string_view key) { return static_cast<uint32_t>(HashOf(key)); }

  /// The slot that leads to `key`, or the empty one that ends the search for it. An empty one
  /// exists, as each slot ever taken since the last rebuild has its place, gap or not.
  size_t FindSlot(std::string_view key, uint32_t hash) const {
    const size_t mask = slots_.size() - 1;
    for (size_t i = hash & mask;; i = (i + 1) & mask) {
      const Slot& slot = slots_[i];
      if (slot.place == kEmpty) return i;
      if (slot.place != kErased && slot.hash == hash && places_[slot.place].entry.key == key) return i;
    }
  }

  void Rebuild() {
    std::erase_if(places_, [](const Place& place) { return !place.live; });
    slots_.assign(std::bit_ceil(std::max(kFewestSlots, live_ * 3)), Slot{});
    const size_t mask = slots_.size() - 1;
    for (size_t place = 0; place < places_.size(); ++place) {
      size_t i = places_[place].hash & mask;
      while (slots_[i].place != kEmpty) i = (i + 1) & mask;
      slots_[i] = {places_[place].hash, static_cast<uint32_t>(place)};
    }
  }

  std::vector<Place> places_;
  std::vector<Slot> slots_;
  size_t live_ = 0;
};

}  // namespace vorc
