#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vorc {

/// The rows of one result, all values as texts in one piece of memory.
class Rows {
 public:
  /// What a result may take; a statement that gives more fails.
  static constexpr size_t kLimit = size_t{512} << 20;

  void Clear();
  /// Begins a result with these columns; what was there goes.
  void Begin(std::vector<std::string> columns);
  /// Appends the next value, row by row. Each answers false when the result has become too large.
  bool AddText(std::string_view text);
  bool AddHexadecimal(const void* bytes, size_t size);
  bool AddNull();

  bool HasColumns() const { return !columns_.empty(); }
  size_t Count() const { return columns_.empty() ? 0 : starts_.size() / columns_.size(); }

  /// Steps to the next row. False behind the last.
  bool Next();
  /// A value of the row that was stepped to: columns count from 0; a name that no column has to the
  /// letter may differ in case. NULL is the empty text. Null without a row or such a column.
  const char* Value(int64_t column) const;
  const char* Value(std::string_view column) const;
  /// Which columns hold NULL in the row that was stepped to, before the first step in any row: their
  /// names, joined by commas. Empty for none.
  std::string NullColumns() const;

 private:
  bool Begun() const { return next_ > 0 && next_ <= Count(); }
  bool Start(size_t bytes);

  std::vector<std::string> columns_;
  std::vector<char> bytes_;
  std::vector<uint32_t> starts_;
  std::vector<bool> any_null_;
  size_t next_ = 0;
};

}  // namespace vorc
