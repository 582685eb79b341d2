#include "program/target_options.h"

#include <cctype>

namespace vorc {
namespace {

constexpr size_t kLongestFormatName = 15;

struct FormatName {
  std::string_view name;
  int format;
};
// The first name of a format is the one that is shown.
constexpr FormatName kFormatNames[] = {{"native", 0}, {"vx", 0},      {"elf", 1},
                                       {"pe", 2},     {"eldopic", 3}, {"picfmt2", 3}};

}  // namespace

std::string_view ExeFormatName(uint64_t format) {
  for (const FormatName& known : kFormatNames) {
    if (static_cast<uint64_t>(known.format) == format) return known.name;
  }
  return "unknown";
}

int ExeFormatFromName(std::string_view name) {
  std::string folded(name.substr(0, kLongestFormatName));
  for (char& c : folded) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  for (const FormatName& known : kFormatNames) {
    if (known.name == folded) return known.format;
  }
  return -1;
}

}  // namespace vorc
