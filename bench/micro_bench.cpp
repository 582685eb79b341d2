// How fast the parts are that scripts lean on, each on its own.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "frontend/parser.h"
#include "frontend/scanner.h"
#include "interp/interpreter.h"
#include "lib/base64.h"
#include "lib/containers.h"
#include "lib/regex.h"
#include "lib/sha256.h"
#include "program/slot.h"

namespace {

using namespace vorc;

void CountBytes(benchmark::State& state, size_t each) {
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(each));
}

std::string Bytes(size_t size) {
  std::string bytes(size, '\0');
  uint32_t n = 1;
  for (char& byte : bytes) byte = static_cast<char>((n = n * 1664525 + 1013904223) >> 24);
  return bytes;
}

void BM_Sha256(benchmark::State& state) {
  const std::string bytes = Bytes(static_cast<size_t>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(Sha256Of(bytes));
  CountBytes(state, bytes.size());
}
BENCHMARK(BM_Sha256)->Arg(64)->Arg(1 << 20);

void BM_Base64Encode(benchmark::State& state) {
  const std::string bytes = Bytes(1 << 20);
  for (auto _ : state) benchmark::DoNotOptimize(MorvBase64Encode(bytes));
  CountBytes(state, bytes.size());
}
BENCHMARK(BM_Base64Encode);

void BM_Base64Decode(benchmark::State& state) {
  const std::string text = MorvBase64Encode(Bytes(1 << 20));
  for (auto _ : state) benchmark::DoNotOptimize(MorvBase64Decode(text));
  CountBytes(state, text.size());
}
BENCHMARK(BM_Base64Decode);

// The wanted text stands at the end. The third pattern is one that backtracking can't finish.
void BM_Regex(benchmark::State& state, const char* pattern) {
  std::string text;
  for (int i = 0; text.size() < (1 << 20); ++i) text += "item " + std::to_string(i) + " costs aaaaaaaaaa\n";
  text += "total: 1234 euro";
  Regex regex(pattern);
  RegexMatch match;
  for (auto _ : state) benchmark::DoNotOptimize(regex.FindFirst(text, match));
  CountBytes(state, text.size());
}
BENCHMARK_CAPTURE(BM_Regex, literal, "total: ");
BENCHMARK_CAPTURE(BM_Regex, groups, "(\\w+): ([0-9]+) euro");
BENCHMARK_CAPTURE(BM_Regex, nested_loops, "(a*)*b");

void BM_MapSetAndGet(benchmark::State& state) {
  std::vector<std::string> keys;
  for (int i = 0; i < 100'000; ++i) keys.push_back("key" + std::to_string(i));
  for (auto _ : state) {
    TextMap map;
    for (const std::string& key : keys) map.Set(key, key);
    for (const std::string& key : keys) benchmark::DoNotOptimize(map.Get(key));
  }
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(keys.size()) * 2);
}
BENCHMARK(BM_MapSetAndGet)->Unit(benchmark::kMillisecond);

void BM_ListSort(benchmark::State& state) {
  std::vector<std::string> words;
  uint32_t n = 12345;
  for (int i = 0; i < 100'000; ++i) words.push_back("word " + std::to_string(n = (n * 75 + 74) % 65537));
  for (auto _ : state) {
    state.PauseTiming();
    TextList list(words);
    state.ResumeTiming();
    list.Sort();
  }
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(words.size()));
}
BENCHMARK(BM_ListSort)->Unit(benchmark::kMillisecond);

std::string PlainSource(int functions) {
  std::string text = "int table[8];\n";
  for (int i = 0; i < functions; ++i) {
    const std::string number = std::to_string(i);
    text += "int function_" + number + "(int a, int b)\n{\n  int i;\n  int sum;\n  sum = a * " + number +
            ";\n  for (i = 0; i < b; i++)\n  {\n    if (i % 2 == 0) sum = sum + i;\n    else sum = sum - 1;\n"
            "  }\n  return sum + table[" +
            number + " % 8];\n}\n\n";
  }
  return text;
}

int64_t CountLines(const std::string& text) {
  return std::count(text.begin(), text.end(), '\n');
}

void BM_Scanner(benchmark::State& state) {
  const std::string text = PlainSource(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    C_SLOT slot;
    slot.Display.set_quiet(true);
    Scanner scanner(slot);
    scanner.LoadSrcFromBuffer("bench.c", text);
    scanner.OpenSourceCodeFile("bench.c");
    while (scanner.Token() != Tok::END_OF_FILE) scanner.GetComboTokenSkipEol();
  }
  CountBytes(state, text.size());
  state.counters["lines/s"] = benchmark::Counter(static_cast<double>(CountLines(text)),
                                                 benchmark::Counter::kIsIterationInvariantRate);
}
BENCHMARK(BM_Scanner)->Arg(2000)->Unit(benchmark::kMillisecond);

void BM_Parser(benchmark::State& state) {
  const std::string text = PlainSource(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    const auto slot = std::make_unique<C_SLOT>();
    slot->Display.set_quiet(true);
    Interpreter interpreter(*slot);
    slot->Services = &interpreter;
    Scanner scanner(*slot);
    scanner.LoadSrcFromBuffer("bench.c", text);
    scanner.OpenSourceCodeFile("bench.c");
    Parser(*slot, scanner).ParseCsyntax();
  }
  CountBytes(state, text.size());
  state.counters["lines/s"] = benchmark::Counter(static_cast<double>(CountLines(text)),
                                                 benchmark::Counter::kIsIterationInvariantRate);
}
BENCHMARK(BM_Parser)->Arg(750)->Arg(1500)->Arg(3000)->Unit(benchmark::kMillisecond);

}  // namespace
