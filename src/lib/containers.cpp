#include "lib/containers.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace vorc {

namespace {

bool IsBlank(char c) {
  return c == ' ' || c == '\t';
}
bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

std::string_view TrimBlanks(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

/// A sign at most, then digits with a point at most, at least one digit; blanks around.
bool LooksNumeric(std::string_view text) {
  text = TrimBlanks(text);
  if (!text.empty() && (text.front() == '+' || text.front() == '-')) text.remove_prefix(1);
  const auto digits = std::count_if(text.begin(), text.end(), IsDigit);
  const auto points = std::count(text.begin(), text.end(), '.');
  return digits > 0 && points <= 1 && static_cast<size_t>(digits + points) == text.size();
}

/// Moves the items into the order of their keys.
template <typename Key>
void Reorder(TextList::Items& items, const std::vector<Key>& keys) {
  std::vector<std::string_view> sorted;
  sorted.reserve(keys.size());
  for (const Key& key : keys) sorted.push_back(items[key.item]);
  for (size_t i = 0; i < sorted.size(); ++i) items[i] = sorted[i];
}

struct NumberKey {
  double value;
  size_t item;
};

void SortByValue(TextList::Items& items) {
  std::vector<NumberKey> keys(items.size());
  for (size_t i = 0; i < items.size(); ++i) keys[i] = {std::strtod(items[i].data(), nullptr), i};
  std::stable_sort(keys.begin(), keys.end(),
                   [](const NumberKey& a, const NumberKey& b) { return a.value < b.value; });
  Reorder(items, keys);
}

/// The first eight bytes, as a number that compares like them, settle most comparisons without a
/// look at the text.
struct BytesKey {
  uint64_t head;
  size_t item;
};

uint64_t Head(std::string_view text) {
  uint64_t head = 0;
  for (size_t i = 0; i < sizeof head; ++i) {
    head = head << 8 | (i < text.size() ? static_cast<unsigned char>(text[i]) : 0U);
  }
  return head;
}

void SortByBytes(TextList::Items& items) {
  std::vector<BytesKey> keys(items.size());
  for (size_t i = 0; i < items.size(); ++i) keys[i] = {Head(items[i]), i};
  std::stable_sort(keys.begin(), keys.end(), [&items](const BytesKey& a, const BytesKey& b) {
    return a.head != b.head ? a.head < b.head : items[a.item] < items[b.item];
  });
  Reorder(items, keys);
}

/// Like std::string_view::find, but in linear time whatever the needle looks like.
size_t FindBytes(std::string_view bytes, std::string_view needle, size_t from = 0) {
  if (needle.empty()) return from;
  if (bytes.size() - from < needle.size()) return std::string_view::npos;
  const void* found = memmem(bytes.data() + from, bytes.size() - from, needle.data(), needle.size());
  if (found == nullptr) return std::string_view::npos;
  return static_cast<size_t>(static_cast<const char*>(found) - bytes.data());
}

size_t CountOf(std::string_view text, std::string_view needle) {
  size_t count = 0;
  for (size_t at = FindBytes(text, needle); at != std::string_view::npos;
       at = FindBytes(text, needle, at + needle.size())) {
    ++count;
  }
  return count;
}

template <typename T>
T ReadAt(std::string_view bytes, int64_t offset) {
  T value{};
  if (offset < 0 || offset + static_cast<int64_t>(sizeof value) > static_cast<int64_t>(bytes.size())) {
    return value;
  }
  std::memcpy(&value, bytes.data() + offset, sizeof value);
  return value;
}

}  // namespace

void TextList::Sort() {
  bool numbers = true;
  for (size_t i = 0; i < items_.size() && numbers; ++i) numbers = LooksNumeric(items_[i]);
  if (numbers) {
    SortByValue(items_);
  } else {
    SortByBytes(items_);
  }
}

std::string TextList::Join(std::string_view separator, size_t limit) const {
  std::string joined;
  for (size_t i = 0; i < items_.size() && joined.size() < limit; ++i) {
    if (i > 0) joined += separator;
    joined += items_[i];
  }
  if (joined.size() > limit) joined.resize(limit);
  return joined;
}

std::vector<std::string> SplitText(std::string_view text, std::string_view separator) {
  if (separator.empty()) return {std::string(text)};
  std::vector<std::string> parts;
  parts.reserve(CountOf(text, separator) + 1);
  size_t start = 0;
  for (size_t end = FindBytes(text, separator); end != std::string_view::npos;
       end = FindBytes(text, separator, start)) {
    parts.emplace_back(text.substr(start, end - start));
    start = end + separator.size();
  }
  parts.emplace_back(text.substr(start));
  return parts;
}

const std::string* TextMap::Get(std::string_view key) const {
  const Entry* entry = entries_.Find(key);
  return entry == nullptr ? nullptr : &entry->value;
}

size_t TextSet::Add(std::string_view text) {
  entries_.FindOrAdd(text);
  return entries_.Count();
}

std::optional<size_t> TextTuple::Add(std::string_view text) {
  if (sealed_) return std::nullopt;
  return items_.Add(text);
}

std::optional<std::string_view> TextTuple::Get(int64_t index) {
  const std::optional<std::string_view> element = items_.Get(index);
  if (element) sealed_ = true;
  return element;
}

int32_t Blob::Byte(int64_t index) const {
  if (index < 0 || static_cast<uint64_t>(index) >= bytes_.size()) return -1;
  return static_cast<unsigned char>(bytes_[static_cast<size_t>(index)]);
}

int32_t Blob::Int32(int64_t offset) const {
  return ReadAt<int32_t>(bytes_, offset);
}

double Blob::Float(int64_t offset) const {
  return ReadAt<float>(bytes_, offset);
}

int64_t Blob::Find(std::string_view bytes) const {
  const size_t found = FindBytes(bytes_, bytes);
  return found == std::string_view::npos ? -1 : static_cast<int64_t>(found);
}

}  // namespace vorc
