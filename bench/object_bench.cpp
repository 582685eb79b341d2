// What a compilation of 50,000 lines spends on its symbol and object files, beside all of its work:
// processor time, medians of five.

#include <stdlib.h>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <string>
#include <vector>

#include "../tests/fuzz/compile_buffer.h"
#include "output/assembly.h"
#include "output/object_writer.h"

namespace {

constexpr int kRounds = 5;
constexpr int kFunctions = 5000;

std::string Source() {
  std::string text;
  for (int i = 0; i < kFunctions; ++i) {
    text += "int f" + std::to_string(i) +
            "(int a, int b)\n{\n  int i; int s;\n  s = a;\n  for (i = 0; i < b; i++) {\n    s = s * 3 + i;\n"
            "    if (s > 1000) s = s - 1000;\n  }\n  return s;\n}\n";
  }
  return text;
}

double Seconds() {
  return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

double Median(std::vector<double> times) {
  std::nth_element(times.begin(), times.begin() + kRounds / 2, times.end());
  return times[kRounds / 2];
}

}  // namespace

int main() {
  char folder[] = "/tmp/object_bench_XXXXXX";
  if (mkdtemp(folder) == nullptr) return 1;
  const std::string source = std::string(folder) + "/x.c";
  const std::string text = Source();
  for (const bool compress : {false, true}) {
    std::vector<double> records;
    std::vector<double> whole;
    for (int i = 0; i < kRounds; ++i) {
      const double start = Seconds();
      vorc::fuzz::BufferCompilation compilation(text, false);
      vorc::OutputFiles outputs;
      compilation.slot().Target.compress = compress;
      if (!outputs.Open(source)) return 1;
      compilation.Parse();
      const double parsed = Seconds();
      if (!vorc::WriteSymbolAndObjectFiles(compilation.slot(), source, outputs.Reference())) return 1;
      records.push_back(Seconds() - parsed);
      vorc::EmitAssembly(compilation.slot(), outputs, source, nullptr);
      if (!outputs.Close()) return 1;
      whole.push_back(Seconds() - start);
    }
    std::printf("%-9s records %.3f s of %.3f s: %.2f\n", compress ? "deflated" : "plain", Median(records),
                Median(whole), Median(records) / Median(whole));
  }
  std::filesystem::remove_all(folder);
}
