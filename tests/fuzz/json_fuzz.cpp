#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "lib/json.h"

namespace {

void Require(bool holds) {
  if (!holds) std::abort();
}

void GetIsCutNotChanged(std::string_view json, std::string_view path) {
  const std::string whole = vorc::MorvJsonGet(json, path);
  for (const size_t capacity : {0U, 1U, 2U, 7U, 64U}) {
    const std::string cut = vorc::MorvJsonGet(json, path, capacity);
    Require(cut == whole.substr(0, capacity == 0 ? 0 : capacity - 1));
  }
}

void EscapedTextComesBack(std::string text) {
  const std::string quoted = "[1,{\"k\":\"" + vorc::MorvJsonEscape(text) + "\"}]";
  std::replace(text.begin(), text.end(), '\0', '?');
  Require(vorc::MorvJsonGet(quoted, "1.k") == text);
}

void EscapeStaysInItsCapacity(std::string_view text) {
  const std::string whole = vorc::MorvJsonEscape(text);
  for (const size_t capacity : {0U, 7U, 8U, 20U}) {
    const std::string cut = vorc::MorvJsonEscape(text, capacity);
    Require(cut.size() < capacity || cut.empty());
    Require(whole.starts_with(cut));
  }
}

}  // namespace

// The first line is the path, the rest the JSON text.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  const size_t line = std::min(input.find('\n'), size);
  const std::string_view json = input.substr(std::min(line + 1, size));
  GetIsCutNotChanged(json, input.substr(0, line));
  EscapedTextComesBack(std::string(json));
  EscapeStaysInItsCapacity(json);
  return 0;
}
