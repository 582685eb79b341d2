#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "sim/assembler.h"
#include "sim/machine.h"

// Assembles arbitrary text and runs each of its procedures for a while. Whatever doesn't work has to say why.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  vorc::sim::AssemblyOptions options;
  options.data_bytes = 1 << 16;
  vorc::sim::AssemblyError error;
  const auto program =
      vorc::sim::Assemble(std::string_view(reinterpret_cast<const char*>(data), size), options, &error);
  if (!program) {
    if (error.message.empty() || error.line == 0) std::abort();
    return 0;
  }
  vorc::sim::Limits limits;
  limits.stack_bytes = 1024;
  limits.steps = 5000;
  vorc::sim::Machine machine(*program, limits);
  const vorc::sim::Argument arguments[] = {{3, 0}, {static_cast<uint64_t>(-1), 8}};
  for (const vorc::sim::Procedure& procedure : program->procedures) {
    std::string fault;
    const auto result = machine.Call(procedure.name, arguments, &fault);
    if (result.has_value() != fault.empty()) std::abort();
  }
  return 0;
}
