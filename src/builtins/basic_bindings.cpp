#include <charconv>
#include <cstdlib>
#include <cstring>
#include <span>
#include <string>

#include "base/console.h"
#include "base/format.h"
#include "builtins/bindings.h"
#include "builtins/printf.h"
#include "lib/files.h"
#include "lib/query.h"

namespace vorc {

namespace {

/// Arguments of a call, written one behind the other, and as long as there is room for it where the text is
/// wanted.
class RenderedArguments {
 public:
  /// Those from number `first` on.
  RenderedArguments(BuiltinCall& call, size_t first) : room_(call.RoomForText(own_room_)) {
    for (size_t i = first; i < call.Count(); ++i) {
      const BuiltinValue& value = call.Argument(i);
      switch (value.kind) {
        case BuiltinValue::Kind::kText: Put(value.View()); break;
        case BuiltinValue::Kind::kDouble: Put(Format("%g", value.real)); break;
        case BuiltinValue::Kind::kNone:
        case BuiltinValue::Kind::kInteger: Put(static_cast<int32_t>(value.integer)); break;
      }
    }
  }

  std::string_view View() const { return long_.empty() ? std::string_view(room_.data(), used_) : long_; }

 private:
  static constexpr size_t kLongestInteger = 11;

  void Put(std::string_view text) {
    if (!long_.empty() || text.size() > room_.size() - used_) {
      if (long_.empty()) long_.assign(room_.data(), used_);
      long_ += text;
    } else if (!text.empty()) {
      std::memcpy(room_.data() + used_, text.data(), text.size());
      used_ += text.size();
    }
  }
  void Put(int32_t number) {
    char digits[kLongestInteger];
    const bool in_place = long_.empty() && room_.size() - used_ >= kLongestInteger;
    char* start = in_place ? room_.data() + used_ : digits;
    const auto length =
        static_cast<size_t>(std::to_chars(start, start + kLongestInteger, number).ptr - start);
    if (in_place)
      used_ += length;
    else
      Put(std::string_view(digits, length));
  }

  char own_room_[TextLoan::kRoom];
  std::span<char> room_;
  size_t used_ = 0;
  std::string long_;  ///< all of it, where it outgrew the room
};

void PrintfBuiltin(BuiltinCall& call) {
  const auto format = call.Text(0);
  if (format) MorvPrintfFormat(*format, call, SendOutput);
}

void MallocBuiltin(BuiltinCall& call) {
  const auto size = call.Int(0);
  char* memory = size && *size > 0 ? call.runtime().texts().Allocate(static_cast<size_t>(*size)) : nullptr;
  call.ReturnInt64(reinterpret_cast<int64_t>(memory));
}

void IprintBuiltin(BuiltinCall& call) {
  const RenderedArguments text(call, 0);
  if (!text.View().empty()) SendOutput(text.View());
}

void IfprintBuiltin(BuiltinCall& call) {
  const auto path = call.Text(0);
  if (path) MorvFileAppendLine(std::string(*path), RenderedArguments(call, 1).View());
}

void IsprintBuiltin(BuiltinCall& call) {
  call.ReturnText(RenderedArguments(call, 0).View(), BuiltinCall::kNoLimit);
}

void MorvGetparamBuiltin(BuiltinCall& call) {
  const auto name = call.Text(0);
  const char* query = std::getenv("QUERY_STRING");
  call.ReturnText(name && query != nullptr ? MorvGetQueryParam(query, *name) : "");
}

constexpr BuiltinBinding kBindings[] = {
    {"printf", PrintfBuiltin},
    {"malloc", MallocBuiltin},
    {"iprint", IprintBuiltin},
    {"ifprint", IfprintBuiltin},
    {"isprint", IsprintBuiltin},
    {"morv_concat", IsprintBuiltin},
    {"morv_getparam", MorvGetparamBuiltin},
};

}  // namespace

std::span<const BuiltinBinding> BasicBuiltins() {
  return kBindings;
}

}  // namespace vorc
