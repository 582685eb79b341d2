#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vorc {

/// A stretch of a block in which a variable's value is wanted, by numbers of instructions.
struct LiveRange {
  std::string variable;
  int begin = 0;  ///< 0 where the value comes from another block
  int end = 0;
  int colour = -1;  ///< number of the general register, -1 where the value stays in memory
};

struct CodeLine {
  int index = 0;  ///< of the instruction
  std::string text;
};

struct FlowBlock {
  std::string purpose;  ///< what the log says that it is for
  std::vector<CodeLine> code;
  std::vector<int> successors;
  std::string live_in;  ///< variables, with commas between
  std::string live_out;
  std::vector<LiveRange> ranges;
};

/// One line of assembly, and the line of the source that it was made for.
struct AssemblyLine {
  int source_line = 0;
  std::string source;  ///< text of the source, where this line shows one; the assembly is empty then
  std::string assembly;
};

struct CompiledFunction {
  std::string name;
  std::vector<FlowBlock> blocks;
  std::vector<AssemblyLine> assembly;
};

/// Reads the log of code generation. What doesn't look like one gives no functions.
std::vector<CompiledFunction> ReadAnalysisLog(std::string_view log);

/// Adds to each function what stands between its first and last line in the assembly text.
void AddAssembly(std::string_view assembly, std::vector<CompiledFunction>* functions);

}  // namespace vorc
