#include <benchmark/benchmark.h>

#include <string>

#include "codes/qr_writer.h"

namespace {

// Bytes of text; 2331 is the longest that is written.
void WriteQr(benchmark::State& state) {
  const std::string text(static_cast<size_t>(state.range(0)), 'x');
  for (auto _ : state) benchmark::DoNotOptimize(vorc::codes::MorvQrcodeSvg(text, 4));
}
BENCHMARK(WriteQr)->Arg(20)->Arg(300)->Arg(2331)->Unit(benchmark::kMillisecond);

// A symbol of version 40, mask choice included.
void DrawVersion40(benchmark::State& state) {
  static vorc::codes::MorvQrSymbol symbol;
  const std::vector<uint8_t> data(
      static_cast<size_t>(vorc::codes::QrDataCodewords(40, vorc::codes::kQrLevelL)), 0x5A);
  for (auto _ : state) vorc::codes::DrawQrSymbol(symbol, 40, vorc::codes::kQrLevelL, data);
}
BENCHMARK(DrawVersion40)->Unit(benchmark::kMillisecond);

}  // namespace
