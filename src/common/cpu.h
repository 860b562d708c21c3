// Processor features the x86-64 assembly exports choose their kernels by at
// run time. Each flag is set once, while the library loads, from CPUID; until
// then, and on processors without the feature, it is 0 and the exports take
// their SSE2 kernels. The exports read the flag on each call, so tests may
// clear and restore it to exercise both kernels.
#pragma once

#include "common/simd.h"

#if HUX_ASM && defined(__x86_64__)
extern "C" {
// 1 when the processor has SSSE3 (CPUID leaf 1, ECX bit 9).
[[gnu::visibility("hidden")]] extern unsigned char hux_cpu_ssse3;
// 1 when the processor has SSE4.1 (CPUID leaf 1, ECX bit 19).
[[gnu::visibility("hidden")]] extern unsigned char hux_cpu_sse41;
}
#endif
