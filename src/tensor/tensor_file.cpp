#include "tensor/tensor_file.h"

#include <charconv>
#include <cstdlib>
#include <optional>
#include <string>

#include "base/format.h"

namespace vorc {

namespace {

constexpr std::string_view kWord = "MORVTENSOR";
constexpr int kDigits = 17;
constexpr size_t kLongestValue = 32;
constexpr size_t kPiece = size_t{64} * 1024;

bool IsBlank(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

/// Reads words and numbers as the formatted reader of the host does: blanks in front don't count.
class Reader {
 public:
  explicit Reader(std::string_view text) : rest_(text) {}

  size_t Left() const { return rest_.size(); }

  std::string_view Word() {
    SkipBlanks();
    size_t length = 0;
    while (length < rest_.size() && !IsBlank(rest_[length])) ++length;
    return Take(length);
  }

  template <typename Number>
  std::optional<Number> Next() {
    SkipBlanks();
    if (rest_.starts_with('+') && !rest_.starts_with("+-")) rest_.remove_prefix(1);
    Number number{};
    const auto [end, error] = std::from_chars(rest_.data(), rest_.data() + rest_.size(), number);
    const auto length = static_cast<size_t>(end - rest_.data());
    if (error == std::errc() && !IsHexPrefix(length)) {
      Take(length);
      return number;
    }
    if constexpr (std::is_same_v<Number, double>) return Unusual();
    return std::nullopt;
  }

 private:
  void SkipBlanks() {
    size_t length = 0;
    while (length < rest_.size() && IsBlank(rest_[length])) ++length;
    Take(length);
  }

  std::string_view Take(size_t length) {
    const std::string_view taken = rest_.substr(0, length);
    rest_.remove_prefix(length);
    return taken;
  }

  bool IsHexPrefix(size_t length) const {
    return length < rest_.size() && (rest_[length] == 'x' || rest_[length] == 'X');
  }

  // Hexadecimal digits, and what is too large or too small for a double.
  std::optional<double> Unusual() {
    size_t length = 0;
    while (length < rest_.size() && !IsBlank(rest_[length])) ++length;
    const std::string word(rest_.substr(0, length));
    char* end = nullptr;
    const double number = std::strtod(word.c_str(), &end);
    if (end == word.c_str()) return std::nullopt;
    Take(static_cast<size_t>(end - word.c_str()));
    return number;
  }

  std::string_view rest_;
};

}  // namespace

bool MorvTensorSave(const MorvTensorRec& t, FunctionRef<bool(std::string_view)> write) {
  std::string piece = Format("%s %d %d\n", kWord.data(), t.rows(), t.cols());
  for (const double value : t.values()) {
    char digits[kLongestValue];
    const auto result =
        std::to_chars(digits, digits + sizeof digits, value, std::chars_format::general, kDigits);
    piece.append(digits, result.ptr).push_back('\n');
    if (piece.size() < kPiece) continue;
    if (!write(piece)) return false;
    piece.clear();
  }
  return write(piece);
}

TensorPtr MorvTensorLoad(std::string_view text) {
  Reader reader(text);
  if (reader.Word() != kWord) return nullptr;
  const auto rows = reader.Next<int32_t>();
  const auto cols = rows ? reader.Next<int32_t>() : std::nullopt;
  if (!cols || *rows < 1 || *cols < 1) return nullptr;
  // A value takes two bytes at least, so a short text needs no memory to be found out.
  if (static_cast<uint64_t>(*rows) * static_cast<uint64_t>(*cols) > reader.Left() / 2) return nullptr;
  TensorPtr t = MorvTensorNew(*rows, *cols);
  if (!t) return nullptr;
  for (double& cell : t->values()) {
    const auto value = reader.Next<double>();
    if (!value) return nullptr;
    cell = *value;
  }
  return t;
}

}  // namespace vorc
