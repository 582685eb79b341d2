#include "base/processor.h"

#if defined(__x86_64__)
#include <cpuid.h>
#endif

#include <cstdint>

namespace vorc {

#if defined(__x86_64__)

namespace {

constexpr unsigned kVectorRegisters = 6;  // XMM and YMM, as the system says which ones it keeps

struct Leaf {
  unsigned a = 0, b = 0, c = 0, d = 0;
};

Leaf Ask(unsigned leaf) {
  Leaf answer;
  __get_cpuid_count(leaf, 0, &answer.a, &answer.b, &answer.c, &answer.d);
  return answer;
}

bool SystemKeepsVectors() {
  uint32_t low = 0;
  uint32_t high = 0;
  __asm__("xgetbv" : "=a"(low), "=d"(high) : "c"(0));
  return (low & kVectorRegisters) == kVectorRegisters;
}

}  // namespace

bool ProcessorHasSha() {
  const unsigned basic = Ask(1).c;
  return (basic & bit_SSE4_1) != 0 && (basic & bit_SSSE3) != 0 && (Ask(7).b & bit_SHA) != 0;
}

bool ProcessorHasAvx2() {
  const unsigned basic = Ask(1).c;
  if ((basic & bit_OSXSAVE) == 0 || (basic & bit_AVX) == 0) return false;
  return (Ask(7).b & bit_AVX2) != 0 && SystemKeepsVectors();
}

#else

bool ProcessorHasSha() {
  return false;
}
bool ProcessorHasAvx2() {
  return false;
}

#endif

}  // namespace vorc
