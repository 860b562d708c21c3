// The x86 H.264 interpolation kernels compiled for SSSE3, in namespace
// ssse3 (interp_body.inc with HUX_INTERP_SSSE3 1), chosen at run time where
// the processor has SSSE3 (common/cpu.h). They read and write exactly what
// the SSE2 kernels do and give the same results.
#pragma once

#include <tmmintrin.h>

#include "common/cpu.h"
#include "h264/x86/interp_sse2.h"

#if HUX_CPU_FLAGS
#if defined(__clang__)
#pragma clang attribute push(__attribute__((target("ssse3"))), apply_to = function)
#else
#pragma GCC push_options
#pragma GCC target("ssse3")
#endif
#define HUX_INTERP_ISA ssse3
#define HUX_INTERP_SSSE3 1
#include "h264/x86/interp_body.inc"
#undef HUX_INTERP_ISA
#undef HUX_INTERP_SSSE3
#if defined(__clang__)
#pragma clang attribute pop
#else
#pragma GCC pop_options
#endif
#endif
