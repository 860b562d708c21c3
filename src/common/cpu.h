// Processor features some kernels are chosen by at run time, on x86 builds
// with the SSE2 kernels and GCC or Clang (HUX_CPU_FLAGS). Each flag is set
// once, while the library loads, from CPUID; until then, and on processors
// without the feature, it is 0 and the SSE2 kernels run. The exports read the
// flags on each call, so tests may clear and restore them to exercise both
// kernels.
#pragma once

#include "common/simd.h"

#if defined(HUX_SSE2) && HUX_SSE2 && (defined(__GNUC__) || defined(__clang__)) && \
    (defined(__i386__) || defined(__x86_64__))
#define HUX_CPU_FLAGS 1
extern "C" {
// 1 when the processor has SSSE3 (CPUID leaf 1, ECX bit 9).
[[gnu::visibility("hidden")]] extern unsigned char hux_cpu_ssse3;
// 1 when the processor has SSE4.1 (CPUID leaf 1, ECX bit 19).
[[gnu::visibility("hidden")]] extern unsigned char hux_cpu_sse41;
}
#else
#define HUX_CPU_FLAGS 0
#endif
