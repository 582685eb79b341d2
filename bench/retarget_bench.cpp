// How many records of three-address code a second become machine code, and what the trace of it costs.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <memory>
#include <string>

#include "base/console.h"
#include "codegen/procedure.h"
#include "frontend/parser.h"
#include "frontend/scanner.h"
#include "output/assembly.h"
#include "retarget/back_end.h"

namespace {

using namespace vorc;

constexpr int kFunctions = 100;
constexpr int kStatements = 25;

std::string Source() {
  std::string text;
  for (int f = 0; f < kFunctions; ++f) {
    text += "int f" + std::to_string(f) + "(int a, int b, int *p)\n{\n  int i; int s; s = a;\n";
    text +=
        "  for (i = 0; i < b; i++) {\n    p[i] = s; s = s * 3 + i;\n    if (s > 1000) s = s - 1000;\n  }\n";
    for (int i = 0; i < kStatements; ++i) text += "  s = s + (a ^ " + std::to_string(i) + ");\n";
    text += "  return s;\n}\n";
  }
  return text;
}

// Of the processor, so that what else the machine does doesn't count.
double Seconds() {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

/// Measures the time that a back end spends on blocks, and counts their records.
class Timed : public BlockHook {
 public:
  explicit Timed(BlockHook& inner) : inner_(inner) {}

  void GenerateBasicBlock(Procedure& procedure, BasicBlock& block) override {
    for (const Instruction* at = block.first; at != nullptr; at = at->next_in_block)
      records += !at->is_marker;
    const double start = Seconds();
    inner_.GenerateBasicBlock(procedure, block);
    seconds += Seconds() - start;
  }
  int RegisterBytes() const override { return inner_.RegisterBytes(); }
  void EndOfUnit(CodegenContext& context) override { inner_.EndOfUnit(context); }
  bool WantsShortCircuit() const override { return inner_.WantsShortCircuit(); }

  double seconds = 0.0;
  int64_t records = 0;

 private:
  BlockHook& inner_;
};

void BM_Selection(benchmark::State& state) {
  const auto core = static_cast<Core>(state.range(0));
  const bool traced = state.range(1) != 0;
  const auto folder = std::filesystem::temp_directory_path() / "vorc-retarget-bench";
  std::filesystem::create_directories(folder);
  const std::string source = Source();
  int64_t records = 0;
  for (auto _ : state) {
    const auto slot = std::make_unique<C_SLOT>();
    slot->Target.core = core;
    slot->Display.set_quiet(true);
    Scanner scanner(*slot);
    scanner.AddSource("x.c", std::string(source));
    scanner.OpenSourceCodeFile("x.c");
    Parser(*slot, scanner).ParseCsyntax();
    // Where there is no folder the files of the back end are done without.
    const auto back_end = InstallBackEnd(*slot, (traced ? folder / "x.c" : folder / "none" / "x.c").string());
    Timed timed(*back_end);
    OutputFiles files;
    EmitAssembly(*slot, files, "x.c", &timed);
    state.SetIterationTime(timed.seconds);
    records += timed.records;
  }
  std::filesystem::remove_all(folder);
  state.SetItemsProcessed(records);
}
BENCHMARK(BM_Selection)
    ->ArgNames({"core", "traced"})
    ->ArgsProduct({{static_cast<int>(Core::kRiscV), static_cast<int>(Core::kAArch64)}, {0, 1}})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
