#pragma once

namespace vorc {

// Asked when first needed: the compiler's own question is asked at every start of the program, and under a
// hypervisor each answer is slow.

/// The instructions for SHA-256, and those that go with them.
bool ProcessorHasSha();
/// AVX2, with a system that keeps its registers.
bool ProcessorHasAvx2();

}  // namespace vorc
