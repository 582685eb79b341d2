#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "lib/sed.h"

// The first line is a command, the rest is the text it edits. Lines are edited one by one, so two
// texts edited together must come out as each alone.

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  const std::string_view script = input.substr(0, input.find('\n'));
  const std::string_view text = input.substr(std::min(script.size() + 1, input.size()));
  const std::string whole = vorc::MorvSed(text, script);
  const size_t cut = std::min(text.find('\n', text.size() / 2), text.size() - 1) + 1;
  if (whole != vorc::MorvSed(text.substr(0, cut), script) + vorc::MorvSed(text.substr(cut), script))
    std::abort();
  return 0;
}
