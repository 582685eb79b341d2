#include "builtins/call.h"

#include <cstdlib>
#include <cstring>

namespace vorc {

namespace {

constexpr size_t kLongestResult = size_t{1} << 30;

}  // namespace

const BuiltinValue BuiltinCall::kMissing{};

std::optional<int64_t> BuiltinCall::Int64(size_t i) const {
  const std::optional<int32_t> low = Int(i);
  if (!low) return std::nullopt;
  return Argument(i).wide ? Argument(i).integer : int64_t{*low};
}

double BuiltinCall::Double(size_t i) const {
  const BuiltinValue& value = Argument(i);
  switch (value.kind) {
    case BuiltinValue::Kind::kNone: return 0.0;
    case BuiltinValue::Kind::kInteger: return static_cast<int32_t>(value.integer);
    case BuiltinValue::Kind::kDouble: return value.real;
    case BuiltinValue::Kind::kText: return value.text == nullptr ? 0.0 : std::strtod(value.text, nullptr);
  }
  return 0.0;
}

void BuiltinCall::ReturnInt64(int64_t value) {
  ReturnInt(0);
  result_.wide = true;
  result_.integer = value;
}

void BuiltinCall::ReturnDouble(double value) {
  result_ = {};
  result_.kind = BuiltinValue::Kind::kDouble;
  result_.wide = true;
  result_.real = value;
}

void BuiltinCall::ReturnStoredText(std::string_view text) {
  if (loan_ == nullptr || !loan_->at_once || text.size() >= kTextLimit) return ReturnText(text);
  loan_->stored = text.data();
  loan_->length = static_cast<uint32_t>(text.size());
  result_ = {};
  result_.kind = BuiltinValue::Kind::kText;
  result_.text = text.data();
}

void BuiltinCall::ReturnText(std::string_view text, size_t limit) {
  result_ = {};
  result_.kind = BuiltinValue::Kind::kText;
  if (limit != kNoLimit && limit > 0) text = text.substr(0, limit - 1);
  if (loan_ != nullptr && text.size() <= TextLoan::kRoom) {
    if (!text.empty() && text.data() != loan_->bytes) std::memcpy(loan_->bytes, text.data(), text.size());
    loan_->bytes[text.size()] = '\0';
    loan_->stored = nullptr;
    result_.text = loan_->bytes;
    return;
  }
  result_.text = text.size() <= kLongestResult ? runtime_.texts().CopyText(text) : nullptr;
  if (result_.text == nullptr) out_of_memory_ = true;
}

}  // namespace vorc
