#include "netstore/rows.h"

#include <strings.h>

#include <algorithm>
#include <utility>

namespace vorc {

namespace {

constexpr uint32_t kNull = UINT32_MAX;

}  // namespace

void Rows::Clear() {
  *this = Rows();
}

void Rows::Begin(std::vector<std::string> columns) {
  Clear();
  columns_ = std::move(columns);
  any_null_.resize(columns_.size());
}

// Notes where a value of so many bytes will begin.
bool Rows::Start(size_t bytes) {
  const size_t taken = bytes_.size() + starts_.size() * sizeof(starts_[0]);
  if (bytes > kLimit || taken + bytes > kLimit) return false;
  starts_.push_back(static_cast<uint32_t>(bytes_.size()));
  return true;
}

bool Rows::AddText(std::string_view text) {
  if (!Start(text.size() + 1)) return false;
  bytes_.insert(bytes_.end(), text.begin(), text.end());
  bytes_.push_back('\0');
  return true;
}

bool Rows::AddHexadecimal(const void* bytes, size_t size) {
  static constexpr char kDigits[] = "0123456789abcdef";
  if (!Start(2 * size + 1)) return false;
  const auto* from = static_cast<const unsigned char*>(bytes);
  for (size_t i = 0; i < size; ++i) {
    bytes_.push_back(kDigits[from[i] >> 4]);
    bytes_.push_back(kDigits[from[i] & 15]);
  }
  bytes_.push_back('\0');
  return true;
}

bool Rows::AddNull() {
  any_null_[starts_.size() % columns_.size()] = true;
  if (!Start(0)) return false;
  starts_.back() = kNull;
  return true;
}

bool Rows::Next() {
  if (next_ <= Count()) ++next_;
  return Begun();
}

const char* Rows::Value(int64_t column) const {
  if (!Begun() || column < 0 || static_cast<uint64_t>(column) >= columns_.size()) return nullptr;
  const uint32_t start = starts_[(next_ - 1) * columns_.size() + static_cast<size_t>(column)];
  return start == kNull ? "" : &bytes_[start];
}

const char* Rows::Value(std::string_view column) const {
  auto found = std::ranges::find(columns_, column);
  if (found == columns_.end()) {
    found = std::ranges::find_if(columns_, [=](const std::string& name) {
      return name.size() == column.size() && strncasecmp(name.data(), column.data(), name.size()) == 0;
    });
  }
  return found == columns_.end() ? nullptr : Value(found - columns_.begin());
}

std::string Rows::NullColumns() const {
  std::string names;
  for (size_t i = 0; i < columns_.size(); ++i) {
    const bool null = Begun() ? starts_[(next_ - 1) * columns_.size() + i] == kNull : any_null_[i];
    if (null) names.append(names.empty() ? "" : ", ").append(columns_[i]);
  }
  return names;
}

}  // namespace vorc
