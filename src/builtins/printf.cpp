#include "builtins/printf.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace vorc {

namespace {

constexpr size_t kLongestOutput = 511;  // of one directive, texts under %s apart
constexpr size_t kMostFlags = 20;
constexpr size_t kWidthEnd = 30;
constexpr size_t kPrecisionEnd = 40;
// Past the cut of 511 bytes a larger number changes nothing that is seen.
constexpr long kLargestNumberField = 1200;
constexpr long kLargestTextField = 1'000'000;

bool IsOneOf(char c, std::string_view set) {
  return set.find(c) != std::string_view::npos;
}
bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

struct LineBuffer {
  std::string line;
};

class Formatter {
 public:
  /// `line` is empty memory for the line in hand.
  Formatter(std::string_view format, const BuiltinCall& call, void (*put_line)(std::string_view),
            std::string* line)
      : format_(format), call_(call), put_line_(put_line), line_(*line) {}

  void Run();

 private:
  struct Directive {
    std::string flags;
    std::string width;
    std::string precision;  ///< with its point
  };

  void Character();
  void ParseDirective();
  void ParseNumber(std::string* digits, size_t end);
  bool Convert(char letter);
  void ConvertReal(char letter);
  void ConvertInteger(char letter);
  void ConvertText();
  void PutText(const char* text);
  std::string FormatOf(const char* suffix, long largest) const;
  template <typename Value>
  void Put(const char* suffix, Value value);
  void Flush();
  bool AtEnd() const { return at_ >= format_.size(); }
  const BuiltinValue& NextArgument() { return call_.Argument(next_argument_++); }

  std::string_view format_;
  const BuiltinCall& call_;
  void (*put_line_)(std::string_view);
  size_t at_ = 0;
  size_t start_ = 0;  ///< where the directive in hand began
  size_t next_argument_ = 1;
  Directive directive_;
  std::string& line_;
};

// An integer as the directives take it: all 64 bits of a wide value, else the signed low 32.
int64_t MorvPrintfArgInt(const BuiltinValue& value) {
  switch (value.kind) {
    case BuiltinValue::Kind::kInteger:
      return value.wide ? value.integer : static_cast<int32_t>(value.integer);
    case BuiltinValue::Kind::kDouble:
      if (!(value.real > -9.3e18 && value.real < 9.3e18)) return 0;
      return static_cast<int64_t>(std::clamp(value.real, -9223372036854775808.0, 9223372036854774784.0));
    default: return 0;
  }
}

void Formatter::Run() {
  while (!AtEnd()) Character();
  if (!line_.empty()) Flush();
}

void Formatter::Flush() {
  // A line ends at a zero byte, like every text.
  put_line_(std::string_view(line_.c_str()));
  line_.clear();
}

void Formatter::Character() {
  const char c = format_[at_];
  const char next = at_ + 1 < format_.size() ? format_[at_ + 1] : '\0';
  if (c == '\n' || c == '\r') {
    ++at_;
    return Flush();
  }
  if (c == '\\' && IsOneOf(next, "nrt\\\"") && next != '\0') {
    at_ += 2;
    if (next == 'n' || next == 'r') return Flush();
    line_ += next == 't' ? '\t' : next;
    return;
  }
  if (c != '%') {
    line_ += c;
    ++at_;
    return;
  }
  if (next == '%') {
    line_ += '%';
    at_ += 2;
    return;
  }
  ParseDirective();
}

void Formatter::ParseNumber(std::string* digits, size_t end) {
  if (!AtEnd() && format_[at_] == '*') {
    ++at_;
    *digits += std::to_string(static_cast<int32_t>(MorvPrintfArgInt(NextArgument())));
    return;
  }
  while (!AtEnd() && IsDigit(format_[at_])) {
    if (at_ - start_ < end) *digits += format_[at_];
    ++at_;
  }
}

void Formatter::ParseDirective() {
  start_ = at_++;
  directive_ = {};
  while (!AtEnd() && IsOneOf(format_[at_], "-+ #0") && directive_.flags.size() < kMostFlags) {
    directive_.flags += format_[at_++];
  }
  ParseNumber(&directive_.width, kWidthEnd);
  if (!AtEnd() && format_[at_] == '.') {
    ++at_;
    directive_.precision = ".";
    ParseNumber(&directive_.precision, kPrecisionEnd);
  }
  while (!AtEnd() && IsOneOf(format_[at_], "hlLqjzt")) ++at_;
  if (AtEnd()) {
    line_ += format_.substr(start_);
    return;
  }
  const char letter = format_[at_++];
  if (!Convert(letter)) line_ += format_.substr(start_, at_ - start_);
}

bool Formatter::Convert(char letter) {
  if (IsOneOf(letter, "aAeEfFgG"))
    ConvertReal(letter);
  else if (IsOneOf(letter, "xXoudicp"))
    ConvertInteger(letter);
  else if (letter == 's')
    ConvertText();
  else
    return false;
  return true;
}

std::string Formatter::FormatOf(const char* suffix, long largest) const {
  std::string text = "%" + directive_.flags;
  const auto add = [&](std::string_view prefix, const std::string& digits) {
    const long value = std::clamp(std::strtol(digits.c_str(), nullptr, 10), -largest, largest);
    text += prefix;
    if (!digits.empty()) text += std::to_string(value);
  };
  add("", directive_.width);
  // As in C, a negative precision counts as none.
  const bool precise = !directive_.precision.empty() && directive_.precision.find('-') == std::string::npos;
  if (precise) add(".", directive_.precision.substr(1));
  return text + suffix;
}

template <typename Value>
void Formatter::Put(const char* suffix, Value value) {
  char output[kLongestOutput + 1];
  const int length =
      std::snprintf(output, sizeof output, FormatOf(suffix, kLargestNumberField).c_str(), value);
  if (length > 0) line_.append(output, std::min(static_cast<size_t>(length), kLongestOutput));
}

void Formatter::ConvertReal(char letter) {
  const BuiltinValue& value = NextArgument();
  double real = 0.0;
  if (value.kind == BuiltinValue::Kind::kDouble) real = value.real;
  if (value.kind == BuiltinValue::Kind::kInteger) real = static_cast<int32_t>(value.integer);
  const char suffix[] = {letter, '\0'};
  Put(suffix, real);
}

void Formatter::ConvertInteger(char letter) {
  const int64_t value = MorvPrintfArgInt(NextArgument());
  switch (letter) {
    case 'c': return Put("c", static_cast<int>(value));
    case 'd':
    case 'i': return Put("lld", static_cast<long long>(value));
    case 'p': return Put("p", reinterpret_cast<void*>(value));
    default: break;
  }
  constexpr int64_t kLowest32 = -2147483648LL;
  constexpr int64_t kMask32 = 0xffffffffLL;
  const char suffix[] = {'l', 'l', letter, '\0'};
  Put(suffix, static_cast<unsigned long long>(value >= kLowest32 ? value & kMask32 : value));
}

void Formatter::ConvertText() {
  const BuiltinValue& value = NextArgument();
  switch (value.kind) {
    case BuiltinValue::Kind::kNone: return PutText("");
    case BuiltinValue::Kind::kInteger: return Put("s", std::to_string(MorvPrintfArgInt(value)).c_str());
    case BuiltinValue::Kind::kDouble: {
      char number[64];
      std::snprintf(number, sizeof number, "%g", value.real);
      return Put("s", static_cast<const char*>(number));
    }
    case BuiltinValue::Kind::kText: return PutText(value.text);
  }
}

void Formatter::PutText(const char* text) {
  if (directive_.flags.empty() && directive_.width.empty() && directive_.precision.empty()) {
    line_ += text;
    return;
  }
  const std::string format = FormatOf("s", kLargestTextField);
  const int length = std::snprintf(nullptr, 0, format.c_str(), text);
  if (length <= 0) return;
  const size_t before = line_.size();
  line_.resize(before + static_cast<size_t>(length));
  std::snprintf(line_.data() + before, static_cast<size_t>(length) + 1, format.c_str(), text);
}

}  // namespace

void MorvPrintfFormat(std::string_view format, const BuiltinCall& call,
                      void (*put_line)(std::string_view line)) {
  // Kept between calls, so that printing allocates nothing.
  std::string& line = call.runtime().State<LineBuffer>().line;
  line.clear();
  Formatter(format, call, put_line, &line).Run();
}

}  // namespace vorc
