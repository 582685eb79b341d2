#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "builtins/runtime.h"

namespace vorc {

/// A value as built-ins see it: nothing, a number (integer bits or double) or text.
struct BuiltinValue {
  enum class Kind : uint8_t { kNone, kInteger, kDouble, kText };
  static constexpr uint32_t kUnmeasured = UINT32_MAX;

  Kind kind = Kind::kNone;
  bool wide = false;              ///< the integer fills 64 bits
  uint32_t length = kUnmeasured;  ///< of the text, where that is known
  union {
    int64_t integer = 0;  ///< integer bits; of a double, its bit pattern
    double real;
    const char* text;  ///< NUL-terminated
  };

  std::string_view View() const {
    return length == kUnmeasured ? std::string_view(text) : std::string_view(text, length);
  }
  void SetText(std::string_view measured) {
    kind = Kind::kText;
    text = measured.data();
    length = measured.size() < kUnmeasured ? static_cast<uint32_t>(measured.size()) : kUnmeasured;
  }
};

/// A short text that is used up before the same call is made again.
struct TextLoan {
  static constexpr size_t kRoom = 255;

  bool at_once = false;          ///< even before any other built-in is called
  uint32_t length = 0;           ///< of `stored`
  const char* stored = nullptr;  ///< a text that was answered where it is stored
  char bytes[kRoom + 1];         ///< room for any other
};

/// One call of a built-in: typed access to its arguments, and the place for its result.
/// Arguments are never converted: a wrong type reads as nullopt, and the built-in then gives the
/// empty answer of its family.
class BuiltinCall {
 public:
  static constexpr size_t kTextLimit = 4096;
  static constexpr size_t kNoLimit = static_cast<size_t>(-1);

  /// With a `loan`, a short text is answered in that: for a caller who copies it at once.
  BuiltinCall(ScriptRuntime& runtime, std::span<const BuiltinValue> arguments, TextLoan* loan = nullptr)
      : runtime_(runtime), arguments_(arguments), loan_(loan) {}

  ScriptRuntime& runtime() const { return runtime_; }

  size_t Count() const { return arguments_.size(); }
  const BuiltinValue& Argument(size_t i) const { return i < arguments_.size() ? arguments_[i] : kMissing; }

  /// The text of argument `i`, or nullopt if it is missing or no text.
  std::optional<std::string_view> Text(size_t i) const {
    const BuiltinValue& value = Argument(i);
    if (value.kind != BuiltinValue::Kind::kText || value.text == nullptr) return std::nullopt;
    return value.View();
  }
  /// The low 32 bits of a number (of the bit pattern, for a double), or nullopt.
  std::optional<int32_t> Int(size_t i) const {
    const BuiltinValue& value = Argument(i);
    const bool number =
        value.kind == BuiltinValue::Kind::kInteger || value.kind == BuiltinValue::Kind::kDouble;
    return number ? std::optional(static_cast<int32_t>(value.integer)) : std::nullopt;
  }
  /// All 64 bits of a wide number, else the signed low 32 bits, or nullopt.
  std::optional<int64_t> Int64(size_t i) const;
  /// A number as double: text through strtod, integers from their signed low 32 bits, 0 if missing.
  double Double(size_t i) const;

  void ReturnInt(int32_t value) {
    result_ = {};
    result_.kind = BuiltinValue::Kind::kInteger;
    result_.integer = value;
  }
  void ReturnInt64(int64_t value);
  void ReturnDouble(double value);
  /// The text, cut to `limit` - 1 bytes. Copied into storage that lives as long as the script can see it.
  void ReturnText(std::string_view text, size_t limit = kTextLimit);
  /// Where a short text is best made: where it would be copied to, else in `own`.
  std::span<char> RoomForText(std::span<char> own) {
    return loan_ == nullptr ? own : std::span(loan_->bytes, TextLoan::kRoom);
  }
  /// The same for a NUL-terminated text that stays where it is at least until the next built-in is called.
  void ReturnStoredText(std::string_view text);

  /// Makes the same call ready for its next run.
  void Begin() {
    result_.kind = BuiltinValue::Kind::kNone;
    out_of_memory_ = false;
  }
  void set_loan(TextLoan* loan) { loan_ = loan; }

  const BuiltinValue& result() const { return result_; }
  bool out_of_memory() const { return out_of_memory_; }

 private:
  static const BuiltinValue kMissing;

  ScriptRuntime& runtime_;
  std::span<const BuiltinValue> arguments_;
  TextLoan* loan_;
  BuiltinValue result_;
  bool out_of_memory_ = false;
};

/// A built-in: reads the call's arguments, sets its result.
using BuiltinHandler = void (*)(BuiltinCall& call);

}  // namespace vorc
