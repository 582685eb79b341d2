// How fast 100 MB of assembly text are made position-independent, in memory and from file to file.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "base/file.h"
#include "output/pic_rewrite.h"

namespace {

using namespace vorc;

std::string AssemblyText() {
  static const char* const kForms[] = {
      "add8 gpr3,gpr4,gpr5",        "load8 gpr7 ,[rr62]  // load value of a variable",
      "loadaddr rr61, some_symbol", "store8 gpr9 ,[rr62]  // store  value of local variable 'v' on to stack",
      "call a_procedure",           "loadimm8 gpr1,0x0000002a"};
  std::string text = "/*000001:*/ PROCEDURE a_procedure\n";
  for (uint32_t number = 1, random = 1; text.size() < 100U << 20; ++number) {
    random = random * 1664525 + 1013904223;
    char line[120];
    std::snprintf(line, sizeof line, "/*%06u:*/ \t%s\n", number / 5,
                  kForms[(random >> 28) % std::size(kForms)]);
    text += line;
  }
  return text;
}

void BM_Text(benchmark::State& state) {
  const std::string text = AssemblyText();
  for (auto _ : state) {
    PicCounts counts;
    size_t size = 0;
    PicRewrite(text, 8, counts, [&](std::string_view piece) { size += piece.size(); });
    benchmark::DoNotOptimize(size);
  }
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(text.size()));
}
BENCHMARK(BM_Text)->Unit(benchmark::kMillisecond);

void BM_File(benchmark::State& state) {
  const std::string text = AssemblyText();
  const std::string path = "pic_bench.asm";
  for (auto _ : state) {
    state.PauseTiming();
    std::fwrite(text.data(), 1, text.size(), File(std::fopen(path.c_str(), "wb")).get());
    state.ResumeTiming();
    PicCounts counts;
    if (!PicRewriteAsmFile(path, 8, counts)) std::abort();
  }
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(text.size()));
  std::remove(path.c_str());
}
BENCHMARK(BM_File)->Unit(benchmark::kMillisecond);

}  // namespace
