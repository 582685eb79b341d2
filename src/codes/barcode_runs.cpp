#include "codes/barcode_runs.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <numeric>
#include <utility>
#include <vector>

#include "codes/barcode_tables.h"

namespace vorc::codes {

namespace {

using Runs = std::span<const double>;

// Share of the new measure when the module estimate follows the symbol.
constexpr double kModuleShare = 0.3;

constexpr size_t kEanRuns = 59;
constexpr size_t kGuardRuns = 3;
constexpr size_t kCentreRuns = 5;
constexpr size_t kDigitRuns = 4;
constexpr int kDigitModules = 7;
constexpr double kDigitTolerance = 0.35;
constexpr size_t kHalfDigits = 6;
constexpr double kEanQuiet = 3;  // in modules

constexpr size_t kSymbolRuns = 6;
constexpr size_t kMaxSymbols = 298;
constexpr double kCode128Quiet = 5;
constexpr int kCharacters = 96;  // values of sets A and B below the control values
constexpr int kPairs = 100;      // values of set C below them

double Sum(Runs runs) {
  return std::accumulate(runs.begin(), runs.end(), 0.0);
}

bool QuietBefore(Runs runs, size_t start, double modules) {
  return start > 0 && runs[start - 1] >= modules;
}

void Follow(double& module, double measured) {
  module += kModuleShare * (measured - module);
}

bool IsGuard(Runs guard, double module) {
  return std::all_of(guard.begin(), guard.end(),
                     [&](double run) { return std::abs(run - module) <= 0.5 * module + 0.5; });
}

// Whole modules of each run, at least one, which make `modules` in all: while they don't, the run with
// the largest rounding error gives way. False if that leads nowhere.
template <size_t kCount>
bool RoundRuns(Runs runs, int modules, std::array<int, kCount>& widths) {
  const double module = Sum(runs) / modules;
  if (module <= 0) return false;
  std::array<double, kCount> errors;
  int total = 0;
  for (size_t i = 0; i < kCount; ++i) {
    widths[i] = std::max(1, static_cast<int>(std::lround(runs[i] / module)));
    errors[i] = runs[i] / module - widths[i];
    total += widths[i];
  }
  if (std::abs(total - modules) > 1) return false;
  if (total == modules) return true;
  const bool too_few = total < modules;
  const auto largest = too_few ? std::max_element(errors.begin(), errors.end())
                               : std::min_element(errors.begin(), errors.end());
  int& width = widths[static_cast<size_t>(largest - errors.begin())];
  width += too_few ? 1 : -1;
  return width >= 1;
}

// The modules of an EAN digit as "0" and "1", its first run of colour `polarity`.
bool runs_to_pattern(Runs runs, char polarity, std::string& out, double module) {
  if (std::abs(Sum(runs) - kDigitModules * module) > kDigitTolerance * kDigitModules * module) return false;
  std::array<int, kDigitRuns> widths;
  if (!RoundRuns(runs, kDigitModules, widths)) return false;
  out.clear();
  for (const int width : widths) {
    out.append(static_cast<size_t>(width), polarity);
    polarity = polarity == '0' ? '1' : '0';
  }
  return true;
}

int DigitIn(const char* const (&set)[10], const std::string& pattern) {
  const auto digit = std::find(std::begin(set), std::end(set), pattern);
  return digit == std::end(set) ? -1 : static_cast<int>(digit - std::begin(set));
}

// Reads the digits of one half, from run `at` on, which moves behind them. `parity` gets a "1" for
// each digit of the G set in the left half, and is null for the right one.
bool ReadHalf(Runs runs, size_t& at, double& module, std::string* parity, std::string& digits) {
  std::string pattern;
  for (size_t i = 0; i < kHalfDigits; ++i, at += kDigitRuns) {
    const Runs digit_runs = runs.subspan(at, kDigitRuns);
    if (!runs_to_pattern(digit_runs, parity != nullptr ? '0' : '1', pattern, module)) return false;
    int digit = DigitIn(parity != nullptr ? ean_L : ean_R, pattern);
    const bool even = digit < 0 && parity != nullptr;
    if (even) digit = DigitIn(ean_G, pattern);
    if (digit < 0) return false;
    if (parity != nullptr) *parity += even ? '1' : '0';
    digits += static_cast<char>('0' + digit);
    Follow(module, Sum(digit_runs) / kDigitModules);
  }
  return true;
}

// The value whose widths the six runs have, or -1.
int SymbolValue(const std::array<int, kSymbolRuns>& widths) {
  constexpr int kWidths = 4;  // a run is one to four modules wide
  constexpr size_t kKeys = size_t{1} << 2 * kSymbolRuns;
  static const std::vector<int8_t> values = [] {
    std::vector<int8_t> by_key(kKeys, -1);
    for (int value = 0; value < kCode128Symbols; ++value) {
      size_t key = 0;
      for (size_t i = 0; i < kSymbolRuns; ++i)
        key = key * kWidths + static_cast<size_t>(code128_widths[value][i] - '1');
      by_key[key] = static_cast<int8_t>(value);
    }
    return by_key;
  }();
  size_t key = 0;
  for (const int width : widths) {
    if (width > kWidths) return -1;
    key = key * kWidths + static_cast<size_t>(width - 1);
  }
  return values[key];
}

bool runs_to_widths(Runs runs, std::array<int, kSymbolRuns>& widths) {
  return RoundRuns(runs, kCode128Modules, widths);
}

// True if the stop's last bar stands at `at`, and a quiet zone or the line's end behind it: the widths of
// a stop may come up inside a damaged symbol too.
bool EndsBehind(Runs runs, size_t at, double module) {
  constexpr double kLastBar = 2;
  if (at >= runs.size() || std::abs(runs[at] - kLastBar * module) > module + 0.5) return false;
  return at + 2 >= runs.size() || runs[at + 1] >= kCode128Quiet * module;
}

// The symbols' values from the start to the check value, without the stop; empty if they aren't right.
std::vector<int> Code128Values(Runs runs, size_t start) {
  std::vector<int> values;
  double module = Sum(runs.subspan(start, kSymbolRuns)) / kCode128Modules;
  if (module < 1 || !QuietBefore(runs, start, kCode128Quiet * module)) return {};
  std::array<int, kSymbolRuns> widths;
  for (size_t at = start; at + kSymbolRuns <= runs.size(); at += kSymbolRuns) {
    const Runs symbol = runs.subspan(at, kSymbolRuns);
    const double total = Sum(symbol);
    if (std::abs(total - kCode128Modules * module) > kDigitTolerance * kCode128Modules * module) return {};
    const int value = runs_to_widths(symbol, widths) ? SymbolValue(widths) : -1;
    const bool is_start = value >= kCode128StartA && value <= kCode128StartC;
    if (value < 0 || (at == start) != is_start) return {};
    if (value == kCode128Stop)
      return EndsBehind(runs, at + kSymbolRuns, module) ? values : std::vector<int>();
    if (values.size() == kMaxSymbols) return {};
    values.push_back(value);
    Follow(module, total / kCode128Modules);
  }
  return {};
}

bool ChecksOut(std::span<const int> values) {
  if (values.size() < 3) return false;
  int sum = values[0];
  for (size_t i = 1; i + 1 < values.size(); ++i) sum += values[i] * static_cast<int>(i);
  return sum % kCode128CheckModulus == values.back();
}

// Turns symbol values into text, going from set to set.
class Code128Decoder {
 public:
  explicit Code128Decoder(int start) : set_(start) {}

  void Take(int value) {
    const int set = std::exchange(shifted_, 0) != 0 ? Other(set_) : set_;
    if (set == kCode128StartC)
      TakePair(value);
    else if (value < kCharacters)
      text_ += Character(set, value);
    else
      TakeControl(value);
  }
  std::string& text() { return text_; }

 private:
  static int Other(int set) { return set == kCode128StartA ? kCode128StartB : kCode128StartA; }

  static char Character(int set, int value) {
    return static_cast<char>(set == kCode128StartA && value >= 64 ? value - 64 : value + 32);
  }

  void TakePair(int value) {
    if (value >= kPairs) return TakeControl(value);
    text_ += static_cast<char>('0' + value / 10);
    text_ += static_cast<char>('0' + value % 10);
  }

  void TakeControl(int value) {
    if (value == kCode128Shift && set_ != kCode128StartC) shifted_ = 1;
    if (value == kCode128SetC) set_ = kCode128StartC;
    if (value == kCode128SetB) set_ = kCode128StartB;
    if (value == kCode128SetA) set_ = kCode128StartA;
  }

  int set_;
  int shifted_ = 0;
  std::string text_;
};

}  // namespace

std::optional<std::string> ean_at(Runs runs, size_t start) {
  if (start + kEanRuns > runs.size()) return std::nullopt;
  const Runs guard = runs.subspan(start, kGuardRuns);
  double module = Sum(guard) / kGuardRuns;
  if (module < 1 || !IsGuard(guard, module) || !QuietBefore(runs, start, kEanQuiet * module))
    return std::nullopt;
  std::string parity, digits;
  size_t at = start + kGuardRuns;
  if (!ReadHalf(runs, at, module, &parity, digits)) return std::nullopt;
  if (!IsGuard(runs.subspan(at, kCentreRuns), module)) return std::nullopt;
  at += kCentreRuns;
  if (!ReadHalf(runs, at, module, nullptr, digits)) return std::nullopt;
  if (!IsGuard(runs.subspan(at, kGuardRuns), module)) return std::nullopt;
  const int first = DigitIn(ean_parity, parity);
  if (first < 0) return std::nullopt;
  digits.insert(digits.begin(), static_cast<char>('0' + first));
  if (digits.back() != '0' + EanCheckDigit(digits)) return std::nullopt;
  return digits;
}

std::optional<std::string> code128_at(Runs runs, size_t start) {
  if (start + kSymbolRuns > runs.size()) return std::nullopt;
  const std::vector<int> values = Code128Values(runs, start);
  if (!ChecksOut(values)) return std::nullopt;
  Code128Decoder decoder(values[0]);
  for (size_t i = 1; i + 1 < values.size(); ++i) decoder.Take(values[i]);
  if (decoder.text().empty()) return std::nullopt;
  return std::move(decoder.text());
}

}  // namespace vorc::codes
