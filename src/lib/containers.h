#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/arena.h"
#include "base/steady_vector.h"
#include "lib/ordered_table.h"

namespace vorc {

/// Texts by position.
class TextList {
 public:
  static constexpr const char* kKind = "list";
  using Items = SteadyVector<std::string_view>;

  TextList() = default;
  TextList(const TextList&) = delete;
  TextList& operator=(const TextList&) = delete;
  /// Of texts that end at their first NUL, like all that a script sees.
  explicit TextList(const std::vector<std::string>& items) {
    for (const std::string& item : items) Add(item.c_str());
  }

  /// Appends, and answers the new count. The text holds no NUL.
  size_t Add(std::string_view text) {
    items_.Add({arena_.Copy(text), text.size()});
    return items_.size();
  }
  /// The element at `index` from 0, or nothing out of range.
  std::optional<std::string_view> Get(int64_t index) const {
    if (static_cast<uint64_t>(index) >= items_.size()) return std::nullopt;
    return items_[static_cast<size_t>(index)];
  }
  size_t Count() const { return items_.size(); }
  /// By value if every element looks like a plain decimal number, else by bytes. Equal elements
  /// keep their order.
  void Sort();
  /// The elements with `separator` between them, cut after `limit` bytes.
  std::string Join(std::string_view separator, size_t limit = std::string::npos) const;

 private:
  static constexpr size_t kFewTexts = 240;

  Arena arena_{kFewTexts};
  Items items_{arena_};  ///< NUL-terminated texts
};

/// All parts of `text` between separators, empty ones included. An empty separator gives the
/// whole text as the only part.
std::vector<std::string> SplitText(std::string_view text, std::string_view separator);

/// Texts by key, in the order in which the keys were first set.
class TextMap {
 public:
  static constexpr const char* kKind = "map";

  /// Appends a new key; a key that is there keeps its place and takes the new value.
  void Set(std::string_view key, std::string_view value) { entries_.FindOrAdd(key).value = value; }
  /// Null if there is no such key.
  const std::string* Get(std::string_view key) const;
  bool Has(std::string_view key) const { return entries_.Find(key) != nullptr; }
  size_t Count() const { return entries_.Count(); }
  std::vector<std::string> Keys() const { return entries_.Keys(); }
  /// False if there was no such key. The other keys keep their order.
  bool Delete(std::string_view key) { return entries_.Erase(key); }

 private:
  struct Entry {
    std::string key{};
    std::string value{};
  };
  OrderedTable<Entry> entries_;
};

/// Different texts, in the order in which they were first added.
class TextSet {
 public:
  static constexpr const char* kKind = "set";

  /// Appends a text that is not there yet. Answers the count either way.
  size_t Add(std::string_view text);
  bool Has(std::string_view text) const { return entries_.Find(text) != nullptr; }
  size_t Count() const { return entries_.Count(); }
  std::vector<std::string> Items() const { return entries_.Keys(); }
  /// False if the text wasn't there. The others keep their order.
  bool Remove(std::string_view text) { return entries_.Erase(text); }

 private:
  struct Entry {
    std::string key{};
  };
  OrderedTable<Entry> entries_;
};

/// Texts by position that can only be added until the first one is read.
class TextTuple {
 public:
  static constexpr const char* kKind = "tuple";

  /// Appends, and answers the new count, or nothing once the tuple is sealed.
  std::optional<size_t> Add(std::string_view text);
  /// The element at `index` from 0, which seals the tuple, or nothing out of range.
  std::optional<std::string_view> Get(int64_t index);
  size_t Count() const { return items_.Count(); }

 private:
  TextList items_;
  bool sealed_ = false;
};

/// The bytes of a file.
class Blob {
 public:
  static constexpr const char* kKind = "blob";

  explicit Blob(std::string bytes) : bytes_(std::move(bytes)) {}

  size_t Size() const { return bytes_.size(); }
  /// The byte at `index`, 0 to 255, or -1 out of range.
  int32_t Byte(int64_t index) const;
  /// Four bytes from `offset` in this machine's order, or 0 unless all four are there.
  int32_t Int32(int64_t offset) const;
  /// The same for a single-precision number.
  double Float(int64_t offset) const;
  /// Where `bytes` first occur, or -1. No bytes occur at 0.
  int64_t Find(std::string_view bytes) const;

 private:
  std::string bytes_;
};

}  // namespace vorc
