#include "lib/sha256_blocks.h"

#include <bit>

#include "base/processor.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace vorc {

namespace {

alignas(16) constexpr std::array<uint32_t, 64> MORV_SHA_K = {
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};

uint32_t LoadBigEndian(const uint8_t* bytes) {
  return uint32_t{bytes[0]} << 24 | uint32_t{bytes[1]} << 16 | uint32_t{bytes[2]} << 8 | uint32_t{bytes[3]};
}

// Only `d` and `h` change; the caller renames the other words instead of moving them.
inline void Round(uint32_t a, uint32_t b, uint32_t c, uint32_t& d, uint32_t e, uint32_t f, uint32_t g,
                  uint32_t& h, uint32_t word) {
  const uint32_t choice = g ^ (e & (f ^ g));
  const uint32_t majority = (a & b) | (c & (a | b));
  h += (std::rotr(e, 6) ^ std::rotr(e, 11) ^ std::rotr(e, 25)) + choice + word;
  d += h;
  h += (std::rotr(a, 2) ^ std::rotr(a, 13) ^ std::rotr(a, 22)) + majority;
}

using Schedule = std::array<uint32_t, 64>;

// The words of a block, extended to one for each round, each with its round constant added.
inline void FillSchedule(Schedule& words, const uint8_t* block) {
  for (size_t i = 0; i < 16; ++i) words[i] = LoadBigEndian(block + 4 * i);
  for (size_t i = 16; i < 64; ++i) {
    const uint32_t old = words[i - 15];
    const uint32_t recent = words[i - 2];
    words[i] = words[i - 16] + words[i - 7] + (std::rotr(old, 7) ^ std::rotr(old, 18) ^ old >> 3) +
               (std::rotr(recent, 17) ^ std::rotr(recent, 19) ^ recent >> 10);
  }
  for (size_t i = 0; i < 64; ++i) words[i] += MORV_SHA_K[i];
}

#if defined(__x86_64__)

#define VORC_SHA_TARGET __attribute__((target("sha,sse4.1")))

struct ShaRegisters {
  __m128i abef;
  __m128i cdgh;
};

VORC_SHA_TARGET inline __m128i LoadWords(const uint8_t* bytes) {
  const __m128i reversed = _mm_set_epi64x(0x0c0d0e0f08090a0b, 0x0405060700010203);
  return _mm_shuffle_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes)), reversed);
}

VORC_SHA_TARGET inline void FourRounds(ShaRegisters& state, __m128i words, size_t round) {
  const auto* constants = reinterpret_cast<const __m128i*>(&MORV_SHA_K[round]);
  const __m128i sum = _mm_add_epi32(words, _mm_load_si128(constants));
  state.cdgh = _mm_sha256rnds2_epu32(state.cdgh, state.abef, sum);
  state.abef = _mm_sha256rnds2_epu32(state.abef, state.cdgh, _mm_shuffle_epi32(sum, 0x0e));
}

// The four words that follow the sixteen in a, b, c and d.
VORC_SHA_TARGET inline __m128i NextWords(__m128i a, __m128i b, __m128i c, __m128i d) {
  return _mm_sha256msg2_epu32(_mm_add_epi32(_mm_sha256msg1_epu32(a, b), _mm_alignr_epi8(d, c, 4)), d);
}

VORC_SHA_TARGET inline void WorkBlock(ShaRegisters& state, const uint8_t* block) {
  const ShaRegisters before = state;
  __m128i a = LoadWords(block);
  __m128i b = LoadWords(block + 16);
  __m128i c = LoadWords(block + 32);
  __m128i d = LoadWords(block + 48);
  FourRounds(state, a, 0);
  FourRounds(state, b, 4);
  FourRounds(state, c, 8);
  FourRounds(state, d, 12);
  for (size_t round = 16; round < 64; round += 16) {
    FourRounds(state, a = NextWords(a, b, c, d), round);
    FourRounds(state, b = NextWords(b, c, d, a), round + 4);
    FourRounds(state, c = NextWords(c, d, a, b), round + 8);
    FourRounds(state, d = NextWords(d, a, b, c), round + 12);
  }
  state.abef = _mm_add_epi32(state.abef, before.abef);
  state.cdgh = _mm_add_epi32(state.cdgh, before.cdgh);
}

// The instructions want the eight words in the order a b e f, c d g h, highest first.
VORC_SHA_TARGET void Sha256BlocksX86(Sha256State& state, const uint8_t* blocks, size_t count) {
  auto* words = reinterpret_cast<__m128i*>(state.data());
  const __m128i badc = _mm_shuffle_epi32(_mm_loadu_si128(words), 0xb1);
  const __m128i efgh = _mm_shuffle_epi32(_mm_loadu_si128(words + 1), 0x1b);
  ShaRegisters registers{_mm_alignr_epi8(badc, efgh, 8), _mm_blend_epi16(efgh, badc, 0xf0)};
  for (size_t i = 0; i < count; ++i) WorkBlock(registers, blocks + i * kSha256BlockSize);
  const __m128i feba = _mm_shuffle_epi32(registers.abef, 0x1b);
  const __m128i dchg = _mm_shuffle_epi32(registers.cdgh, 0xb1);
  _mm_storeu_si128(words, _mm_blend_epi16(feba, dchg, 0xf0));
  _mm_storeu_si128(words + 1, _mm_alignr_epi8(dchg, feba, 8));
}

#endif

Sha256BlockFunction ChooseBlockFunction() {
#if defined(__x86_64__)
  if (ProcessorHasSha()) return Sha256BlocksX86;
#endif
  return Sha256BlocksPortable;
}

}  // namespace

void Sha256BlocksPortable(Sha256State& state, const uint8_t* blocks, size_t count) {
  Schedule words;
  for (; count > 0; --count, blocks += kSha256BlockSize) {
    FillSchedule(words, blocks);
    auto [a, b, c, d, e, f, g, h] = state;
    for (size_t i = 0; i < 64; i += 8) {
      Round(a, b, c, d, e, f, g, h, words[i]);
      Round(h, a, b, c, d, e, f, g, words[i + 1]);
      Round(g, h, a, b, c, d, e, f, words[i + 2]);
      Round(f, g, h, a, b, c, d, e, words[i + 3]);
      Round(e, f, g, h, a, b, c, d, words[i + 4]);
      Round(d, e, f, g, h, a, b, c, words[i + 5]);
      Round(c, d, e, f, g, h, a, b, words[i + 6]);
      Round(b, c, d, e, f, g, h, a, words[i + 7]);
    }
    const Sha256State worked = {a, b, c, d, e, f, g, h};
    for (size_t i = 0; i < worked.size(); ++i) state[i] += worked[i];
  }
}

Sha256BlockFunction FastestSha256Blocks() {
  static const Sha256BlockFunction chosen = ChooseBlockFunction();
  return chosen;
}

}  // namespace vorc
