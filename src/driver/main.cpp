#include <cstdlib>
#include <string>
#include <vector>

#include "base/console.h"
#include "base/version.h"
#include "driver/compile.h"
#include "driver/options.h"
#include "driver/process.h"

namespace {

// The command line's words, and what they ask for.
int RunProgram(const std::vector<std::string>& arguments) {
  vorc::Options options;
  if (arguments.empty()) {
    vorc::PrintUsage();
    return vorc::kExitFailure;
  }
  if (const auto status = vorc::ParseOptions(arguments, &options)) return *status;
  if (options.version) {
    vorc::SendOutput(std::string("vorc ") + vorc::kVersion);
    return vorc::OutputStatus(vorc::kExitSuccess);
  }
  if (const auto status = vorc::SettleWidths(&options)) return *status;
  if (options.llmtrace) setenv("VORC_LLMTRACE", "1", 1);
  if (!options.script_arguments.empty()) {
    setenv("QUERY_STRING", vorc::BuildQueryString(options.script_arguments).c_str(), 0);
  }
  if (!options.has_source) {
    vorc::PrintUsage();
    return vorc::kExitFailure;
  }
  return vorc::Leave(
      vorc::OutputStatus(vorc::RunWithLargeStack([&options] { return vorc::RunCompilation(options); })));
}

}  // namespace

int main(int argc, char** argv) {
  if (!vorc::PrepareProcess()) return vorc::kExitFailure;
  return vorc::WithMemory([&] { return RunProgram(std::vector<std::string>(argv + 1, argv + argc)); });
}
