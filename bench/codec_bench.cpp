// The codec beside zlib, in one run, on text like the assembly that it compresses. Each row carries our
// speed divided by zlib's as "of_zlib".

#include <benchmark/benchmark.h>
#include <zlib.h>

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "codec/checksums.h"
#include "codec/vzip.h"

namespace {

using namespace vorc;

using Bytes = std::vector<uint8_t>;

constexpr size_t kTextSize = 50 << 20;

std::string Line(uint32_t number, uint32_t random) {
  static const char* const kForms[] = {
      "add8 gpr%u,gpr%u,gpr%u",
      "load8 gpr%u ,[rr%u]  // load value of t%u",
      "loadaddr rr%u, symbol_%u_%u",
      "store8 gpr%u ,[rr%u]  // store  value of local variable 'v%u' on to stack",
      "cmp8 gpr%u,gpr%u //%u",
      "loadimm8 gpr%u,0x%02x%04x",
      "sub8 rr%u, FRAMEPTR, %u //%u"};
  char text[160];
  const char* form = kForms[random % std::size(kForms)];
  const int head = std::snprintf(text, sizeof text, "/*%06u:*/ \t", number / 5);
  std::snprintf(text + head, sizeof text - static_cast<size_t>(head), form, random >> 8 & 15,
                random >> 12 & 63, random >> 18 & 255);
  return std::string(text) + "\n";
}

const Bytes& AssemblyText() {
  static const Bytes text = [] {
    std::string lines;
    uint32_t random = 1;
    for (uint32_t number = 0; lines.size() < kTextSize; ++number) {
      random = random * 1664525 + 1013904223;
      lines += Line(number, random >> 4);
    }
    return Bytes(lines.begin(), lines.end());
  }();
  return text;
}

template <typename Work>
double Seconds(Work work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void Require(bool holds) {
  if (!holds) std::abort();
}

// Runs both in turn, so that whatever slows the machine down slows both.
template <typename Ours, typename Zlibs>
void Compare(benchmark::State& state, size_t bytes, Ours ours, Zlibs zlibs) {
  double our_seconds = 0;
  double zlib_seconds = 0;
  for (auto _ : state) {
    const double seconds = Seconds(ours);
    our_seconds += seconds;
    zlib_seconds += Seconds(zlibs);
    state.SetIterationTime(seconds);
  }
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(bytes));
  state.counters["of_zlib"] = zlib_seconds / our_seconds;
}

void BM_Deflate(benchmark::State& state) {
  const Bytes& text = AssemblyText();
  Bytes target(vz_bound(text.size()));
  size_t size = 0;
  uLongf zlib_size = 0;
  Compare(
      state, text.size(), [&] { Require(vz_zlib_compress(text, target, size) == kVzOk); },
      [&] {
        zlib_size = target.size();
        Require(compress2(target.data(), &zlib_size, text.data(), text.size(), 1) == Z_OK);
      });
  state.counters["size"] = static_cast<double>(size) / static_cast<double>(text.size());
  state.counters["zlib_size"] = static_cast<double>(zlib_size) / static_cast<double>(text.size());
}
BENCHMARK(BM_Deflate)->UseManualTime()->Unit(benchmark::kMillisecond)->MinTime(2);

// The argument is the level at which zlib packed what both unpack; 0 stands for our own stream.
void BM_Inflate(benchmark::State& state) {
  const Bytes& text = AssemblyText();
  Bytes packed(compressBound(text.size()));
  uLongf packed_size = packed.size();
  if (state.range(0) == 0) {
    Require(vz_zlib_compress(text, packed, packed_size) == kVzOk);
  } else {
    Require(compress2(packed.data(), &packed_size, text.data(), text.size(),
                      static_cast<int>(state.range(0))) == Z_OK);
  }
  packed.resize(packed_size);
  Bytes target(text.size());
  Compare(
      state, text.size(),
      [&] {
        size_t size = 0;
        Require(vz_zlib_decompress(packed, target, size) == kVzOk && size == text.size());
      },
      [&] {
        uLongf size = target.size();
        Require(uncompress(target.data(), &size, packed.data(), packed.size()) == Z_OK);
      });
}
BENCHMARK(BM_Inflate)->Arg(0)->Arg(1)->Arg(6)->UseManualTime()->Unit(benchmark::kMillisecond)->MinTime(1);

void BM_Crc32(benchmark::State& state) {
  const Bytes& text = AssemblyText();
  Compare(
      state, text.size(), [&] { benchmark::DoNotOptimize(vz_crc32(0, text)); },
      [&] { benchmark::DoNotOptimize(crc32(0, text.data(), static_cast<uInt>(text.size()))); });
}
BENCHMARK(BM_Crc32)->UseManualTime()->Unit(benchmark::kMillisecond);

void BM_Adler32(benchmark::State& state) {
  const Bytes& text = AssemblyText();
  Compare(
      state, text.size(), [&] { benchmark::DoNotOptimize(vz_adler32(1, text)); },
      [&] { benchmark::DoNotOptimize(adler32(1, text.data(), static_cast<uInt>(text.size()))); });
}
BENCHMARK(BM_Adler32)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
