// SSE2 H.264 interpolation kernels. A luma kernel works on 16 output bytes
// at a time, a "unit": one row of a 16-wide block, two rows of an 8-wide
// block, four rows of a 4-wide block, so that every width runs the same
// 8-lane 16-bit arithmetic on two registers. Loads cover exactly the columns
// and rows the filter taps reach (see interp_kernels.h), never more.
//
// The 6-tap sums of 8-bit samples lie in -2550 .. 10710 and fit 16-bit lanes.
// The centre position filters those sums again; the second sum
// a - 5b + 20c (a, b, c the sums of the outer, inner and middle tap pairs)
// is brought down to floor(sum / 16) in 16 bits as
// floor((floor((a - b) / 4) - b + c) / 4) + c, which is exact. The middle
// term can leave the 16-bit range only where the result clamps to 0 or 255
// either way, so it is added with saturation.
#pragma once

#include <emmintrin.h>

#include "h264/interp_kernels.h"

#define HUX_INTERP_ISA sse2
#define HUX_INTERP_SSSE3 0
#include "h264/x86/interp_body.inc"
#undef HUX_INTERP_ISA
#undef HUX_INTERP_SSSE3
