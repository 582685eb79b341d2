// How fast prints are read, prepared, compared and searched for.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <memory>
#include <vector>

#include "fingerprint/afis.h"
#include "fingerprint/feature_extract.h"
#include "fingerprint/match.h"
#include "prints/synthetic_print.h"

namespace {

using namespace vorc;
using namespace vorc::synthetic;

saf_double_matrix Print(uint64_t finger, const Impression& impression, int width = 340, int height = 400,
                        int margin = 30) {
  const GrayPicture scan = Scan(GrowFinger(finger, width, height), impression, finger, margin);
  return saf_image_load_grayscale(ToPgm(scan)).value();
}

AfisPrint Enrol(uint64_t finger, const Impression& impression = {}) {
  return AfisPrint(saf_feature_extract(Print(finger, impression), 500).value());
}

void BM_Extract500x500(benchmark::State& state) {
  const saf_double_matrix image = Print(1, {.noise = 0.3, .cuts = 3}, 480, 480, 10);
  for (auto _ : state) benchmark::DoNotOptimize(saf_feature_extract(image, 500));
}
BENCHMARK(BM_Extract500x500)->Unit(benchmark::kMillisecond);

void BM_ExtractNoise(benchmark::State& state) {
  const int side = static_cast<int>(state.range(0));
  Random random(1);
  saf_double_matrix image(side, side);
  for (double& cell : image.cells()) cell = random.Between(0, 1);
  for (auto _ : state) benchmark::DoNotOptimize(saf_feature_extract(image, 500));
}
BENCHMARK(BM_ExtractNoise)->Arg(500)->Arg(4500)->Unit(benchmark::kMillisecond);

void BM_MakeProbe(benchmark::State& state) {
  const AfisPrint print = Enrol(1);
  for (auto _ : state) benchmark::DoNotOptimize(saf_probe_create(print.search_template()));
  state.counters["minutiae"] = MorvAfisMinutiae(&print);
}
BENCHMARK(BM_MakeProbe)->Unit(benchmark::kMillisecond);

void BM_Match(benchmark::State& state, uint64_t finger) {
  AfisPrint probe = Enrol(1);
  const AfisPrint candidate = Enrol(finger, {.turn = 0.2, .shift_x = 9, .pressure = 0.1, .noise = 0.3});
  MorvAfisMatch(&probe, &candidate);
  for (auto _ : state) benchmark::DoNotOptimize(MorvAfisMatch(&probe, &candidate));
  state.counters["score"] = MorvAfisMatch(&probe, &candidate);
}
BENCHMARK_CAPTURE(BM_Match, same_finger, 1)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BM_Match, other_finger, 2)->Unit(benchmark::kMicrosecond);

// One print against a thousand: forty fingers, each in twenty-five positions.
void BM_SearchOneThousand(benchmark::State& state) {
  std::vector<AfisPrint> enrolled;
  Random random(1);
  for (uint64_t finger = 1; finger <= 40; ++finger) {
    const Finger skin = GrowFinger(finger);
    for (uint64_t scan = 0; scan < 25; ++scan) {
      enrolled.push_back(std::move(*MorvAfisExtract(ToPgm(Scan(skin, RandomImpression(random), scan)))));
    }
  }
  AfisPrint probe = Enrol(17);
  for (auto _ : state) {
    double best = 0;
    for (const AfisPrint& candidate : enrolled) best = std::max(best, MorvAfisMatch(&probe, &candidate));
    benchmark::DoNotOptimize(best);
  }
}
BENCHMARK(BM_SearchOneThousand)->Unit(benchmark::kMillisecond);

}  // namespace
