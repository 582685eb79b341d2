#include "compile_buffer.h"
#include "lib/sandbox.h"

// Any text that parses is run as a script, and ends: by itself, by an error, or by the timer.

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const bool confined = [] {
    vorc::fuzz::DisarmBuiltins();
    vorc::MorvSandboxSetRoot("/proc/self/fdinfo");  // nothing can be made there
    return true;
  }();
  (void)confined;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  if (text.find("goto") != std::string_view::npos) return 0;  // may loop without an expression
  vorc::fuzz::RunWithLargeStack([text] {
    vorc::fuzz::BufferCompilation compilation(text, true);
    const vorc::fuzz::ScriptTimer timer(compilation.slot());
    compilation.Parse();
    compilation.RunMain();
  });
  return 0;
}
