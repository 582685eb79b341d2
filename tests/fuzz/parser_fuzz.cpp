#include "compile_buffer.h"

// Any text is a source: it is parsed to its end, as a program and as a script, whatever is wrong
// with it. In a script, statements outside of functions run while it is parsed.

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const bool disarmed = (vorc::fuzz::DisarmBuiltins(), true);
  (void)disarmed;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  if (text.find("goto") != std::string_view::npos) return 0;  // may loop without an expression
  vorc::fuzz::RunWithLargeStack([text] {
    for (const bool script : {false, true}) {
      vorc::fuzz::BufferCompilation compilation(text, script);
      const vorc::fuzz::ScriptTimer timer(compilation.slot());
      compilation.Parse();
    }
  });
  return 0;
}
