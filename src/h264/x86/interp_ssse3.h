// SSSE3 H.264 chroma kernels for 8- and 4-wide blocks, chosen at run time
// (common/cpu.h). Each output sample's taps are laid out as byte pairs, the
// sample and its right-hand or lower neighbour, and one pmaddubsw multiplies
// and sums a pair against the weight pair. The weights of one output sample
// sum to 8 (one direction) or 64 (both), so every pair sum lies within
// 0..64 * 255 and the instruction's saturation never acts. Loads reach exactly
// the columns and rows the SSE2 kernels read. Copies (dx = dy = 0) and the
// 2-wide blocks stay with the SSE2 kernels.
#pragma once

#include <tmmintrin.h>

#include "common/cpu.h"
#include "h264/x86/interp_sse2.h"

#if HUX_CPU_FLAGS
namespace hux::h264::ssse3 {
namespace ip {

using sse2::ip::load8;
using sse2::ip::rows2;
using sse2::ip::store_rows2;

// The 16-bit lanes each hold the weight pair (a, b) as bytes.
HUX_INLINE __m128i pair_weights(int a, int b) { return _mm_set1_epi16(static_cast<int16_t>(a | b << 8)); }

// A row's samples paired with their right-hand (pairs_h) or lower (pairs_v)
// neighbours: one row per register at W = 8, two rows (p and p + s) at W = 4.
template <int W>
HUX_INLINE __m128i pairs_h(const uint8_t* p, intptr_t s) {
  if constexpr (W == 8) return _mm_unpacklo_epi8(load8(p), load8(p + 1));
  else return _mm_unpacklo_epi8(rows2<W>(p, s), rows2<W>(p + 1, s));
}
template <int W>
HUX_INLINE __m128i pairs_v(const uint8_t* p, intptr_t s) {
  if constexpr (W == 8) return _mm_unpacklo_epi8(load8(p), load8(p + s));
  else return _mm_unpacklo_epi8(rows2<W>(p, s), rows2<W>(p + s, s));
}

// One direction's output: ((8 - f) * a + f * b + 4) >> 3 from pairs x.
[[gnu::target("ssse3")]] HUX_INLINE __m128i one_dir(__m128i x, __m128i w) {
  return _mm_srli_epi16(_mm_add_epi16(_mm_maddubs_epi16(x, w), _mm_set1_epi16(4)), 3);
}
// Both directions' output: the row's pairs against (A, B) plus the next
// row's against (C, D), (sum + 32) >> 6.
[[gnu::target("ssse3")]] HUX_INLINE __m128i both_dir(__m128i top, __m128i bottom, __m128i ab, __m128i cd) {
  const __m128i sum = _mm_add_epi16(_mm_maddubs_epi16(top, ab), _mm_maddubs_epi16(bottom, cd));
  return _mm_srli_epi16(_mm_add_epi16(sum, _mm_set1_epi16(32)), 6);
}

}  // namespace ip

template <int W, int Case>
[[gnu::target("ssse3")]] int32_t chroma(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                        int32_t dx, int32_t dy, int32_t height) {
  static_assert((W == 8 || W == 4) && Case >= 1 && Case <= 3);
  using namespace ip;
  const intptr_t s = srcStep, d = dstStep;
  if constexpr (Case != 3) {
    const int f = Case == 1 ? dx : dy;
    const __m128i w = pair_weights(8 - f, f);
    for (int y = 0; y < height; y += 2, src += 2 * s, dst += 2 * d) {
      const __m128i o = one_dir(Case == 1 ? pairs_h<W>(src, s) : pairs_v<W>(src, s), w);
      if constexpr (W == 8) {
        const __m128i o1 = one_dir(Case == 1 ? pairs_h<W>(src + s, s) : pairs_v<W>(src + s, s), w);
        store_rows2<W>(dst, d, _mm_packus_epi16(o, o1));
      } else {
        store_rows2<W>(dst, d, _mm_packus_epi16(o, o));
      }
    }
  } else {
    const __m128i ab = pair_weights((8 - dx) * (8 - dy), dx * (8 - dy));
    const __m128i cd = pair_weights((8 - dx) * dy, dx * dy);
    if constexpr (W == 8) {
      __m128i p0 = pairs_h<W>(src, s);
      for (int y = 0; y < height; y += 2, src += 2 * s, dst += 2 * d) {
        const __m128i p1 = pairs_h<W>(src + s, s), p2 = pairs_h<W>(src + 2 * s, s);
        store_rows2<W>(dst, d, _mm_packus_epi16(both_dir(p0, p1, ab, cd), both_dir(p1, p2, ab, cd)));
        p0 = p2;
      }
    } else {
      for (int y = 0; y < height; y += 2, src += 2 * s, dst += 2 * d) {
        const __m128i o = both_dir(pairs_h<W>(src, s), pairs_h<W>(src + s, s), ab, cd);
        store_rows2<W>(dst, d, _mm_packus_epi16(o, o));
      }
    }
  }
  return 0;
}

}  // namespace hux::h264::ssse3
#endif
