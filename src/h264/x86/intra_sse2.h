// SSE2 H.264 intra prediction. The edge of a 4x4 block is gathered with scalar
// loads (only the samples the availability word allows), packed into one
// register in the order the mode walks it, and filtered once for all its rows:
// the two-tap filter is pavgb, the three-tap filter pavgb(pavgb(a, c) minus the
// rounding bit of a ^ c, b), which is exactly (a + 2b + c + 2) >> 2. Each row is
// then a byte shift of the filtered edge (or of the two filters interleaved).
// The 16x16 and chroma plane modes step each row by c in 16-bit lanes: every
// partial sum stays within +-20000, so nothing wraps.
#pragma once

#include <emmintrin.h>

#include "h264/intra_kernels.h"

namespace hux::h264::sse2 {
namespace intra {

inline __m128i avg3v(__m128i a, __m128i b, __m128i c) {
  const __m128i ac = _mm_subs_epu8(_mm_avg_epu8(a, c), _mm_and_si128(_mm_xor_si128(a, c), _mm_set1_epi8(1)));
  return _mm_avg_epu8(ac, b);
}
// Three-tap and two-tap filters of an edge e: f[i] centred on e[i + 1], a[i] of e[i], e[i + 1].
inline __m128i taps3(__m128i e) { return avg3v(e, _mm_srli_si128(e, 1), _mm_srli_si128(e, 2)); }
inline __m128i taps2(__m128i e) { return _mm_avg_epu8(e, _mm_srli_si128(e, 1)); }

inline uint32_t ld32(const uint8_t* p) { return hux::load<uint32_t>(p); }
inline void st32(uint8_t* p, int32_t step, int y, uint32_t v) { hux::store<uint32_t>(row(p, step, y), v); }
inline uint32_t lo32(__m128i v) { return static_cast<uint32_t>(_mm_cvtsi128_si32(v)); }
template <int N>
inline uint32_t at32(__m128i v) { return lo32(_mm_srli_si128(v, N)); }
inline __m128i pair32(uint32_t lo, uint32_t hi) {
  return _mm_unpacklo_epi32(_mm_cvtsi32_si128(static_cast<int32_t>(lo)), _mm_cvtsi32_si128(static_cast<int32_t>(hi)));
}
inline uint32_t bytesum(uint32_t v) {
  const uint32_t s = (v & 0x00FF00FFu) + ((v >> 8) & 0x00FF00FFu);
  return (s + (s >> 16)) & 0xFFFFu;
}

// The 4x4 edge with the substitutions of the reference, loaded piece by piece
// as a mode needs it: above, above-right, left (L0 in the low byte), above-left.
HUX_INLINE uint32_t above4(const uint8_t* p, int32_t step, uint32_t avail) {
  return (avail & kAvailAbove) ? ld32(row(p, step, -1)) : 0x80808080u;
}
HUX_INLINE uint32_t above_right4(const uint8_t* p, int32_t step, uint32_t avail, uint32_t t) {
  return (avail & kAvailAboveRight) ? ld32(row(p, step, -1) + 4) : (t >> 24) * 0x01010101u;
}
HUX_INLINE uint32_t left4(const uint8_t* p, int32_t step, uint32_t avail) {
  if (!(avail & kAvailLeft)) return 0x80808080u;
  return uint32_t{p[-1]} | uint32_t{row(p, step, 1)[-1]} << 8 | uint32_t{row(p, step, 2)[-1]} << 16 |
         uint32_t{row(p, step, 3)[-1]} << 24;
}
HUX_INLINE uint32_t corner4(const uint8_t* p, int32_t step, uint32_t avail) {
  return (avail & kAvailAboveLeft) ? row(p, step, -1)[-1] : 128u;
}
struct Edge4 {
  uint32_t t, l, q;
};
// Left column from the bottom, the corner, the row above: L3 L2 L1 L0 Q T0 T1 T2 T3.
inline __m128i down_right_edge(const Edge4& g) {
  const uint32_t lrev = __builtin_bswap32(g.l);
  const __m128i e = pair32(lrev, g.q | g.t << 8);
  return _mm_or_si128(e, _mm_slli_si128(_mm_cvtsi32_si128(static_cast<int32_t>(g.t >> 24)), 8));
}
inline void rows4(uint8_t* p, int32_t step, uint32_t r0, uint32_t r1, uint32_t r2, uint32_t r3) {
  st32(p, step, 0, r0);
  st32(p, step, 1, r1);
  st32(p, step, 2, r2);
  st32(p, step, 3, r3);
}

}  // namespace intra

// One mode; the exports reach each through a table, so that the simple modes
// compile without the setup of the directional ones.
template <uint32_t M>
HUX_INLINE int32_t pred4x4_mode(uint8_t* p, int32_t step, uint32_t avail) {
  using namespace intra;
  constexpr uint32_t mode = M;
  switch (mode) {
    case 0: {
      const uint32_t t = above4(p, step, avail);
      rows4(p, step, t, t, t, t);
      break;
    }
    case 1: {
      if (!(avail & kAvailLeft)) {
        rows4(p, step, 0x80808080u, 0x80808080u, 0x80808080u, 0x80808080u);
        return kWarnMissing;
      }
      const uint8_t* l = p - 1;
      rows4(p, step, l[0] * 0x01010101u, *row(l, step, 1) * 0x01010101u, *row(l, step, 2) * 0x01010101u,
            *row(l, step, 3) * 0x01010101u);
      return kPredOk;
    }
    case 2: {
      const uint8_t* l = p - 1;
      const uint32_t sl = (avail & kAvailLeft) ? (l[0] + *row(l, step, 1)) + (*row(l, step, 2) + *row(l, step, 3)) : 0;
      uint32_t dc;
      if (avail & kAvailAbove) {
        const uint32_t st = bytesum(ld32(row(p, step, -1)));
        dc = (avail & kAvailLeft) ? (st + sl + 4) >> 3 : (st + 2) >> 2;
      } else {
        dc = (avail & kAvailLeft) ? (sl + 2) >> 2 : 128;
      }
      const uint32_t v = dc * 0x01010101u;
      rows4(p, step, v, v, v, v);
      return kPredOk;
    }
    case 3:
    case 7: {
      // T0..T7 and T7 again behind them.
      const uint32_t t = above4(p, step, avail), tr = above_right4(p, step, avail, t);
      const __m128i e = _mm_unpacklo_epi64(pair32(t, tr), _mm_set1_epi8(static_cast<char>(tr >> 24)));
      const __m128i f = taps3(e);
      if (mode == 3) {
        rows4(p, step, lo32(f), at32<1>(f), at32<2>(f), at32<3>(f));
      } else {
        const __m128i a = taps2(e);
        rows4(p, step, lo32(a), lo32(f), at32<1>(a), at32<1>(f));
      }
      break;
    }
    case 4: {
      const Edge4 g{above4(p, step, avail), left4(p, step, avail), corner4(p, step, avail)};
      const __m128i f = taps3(down_right_edge(g));
      rows4(p, step, at32<3>(f), at32<2>(f), at32<1>(f), lo32(f));
      break;
    }
    case 5: {
      const Edge4 g{above4(p, step, avail), left4(p, step, avail), corner4(p, step, avail)};
      const __m128i e = down_right_edge(g);
      const __m128i f = taps3(e), a = taps2(e);
      const uint32_t r0 = at32<4>(a), r1 = at32<3>(f), f0 = lo32(f);
      rows4(p, step, r0, r1, (r0 << 8) | ((f0 >> 16) & 0xFF), (r1 << 8) | ((f0 >> 8) & 0xFF));
      break;
    }
    case 6: {
      const Edge4 g{above4(p, step, avail), left4(p, step, avail), corner4(p, step, avail)};
      const __m128i e = down_right_edge(g);
      const __m128i f = taps3(e);
      const __m128i z = _mm_unpacklo_epi8(taps2(e), f);
      rows4(p, step, (at32<4>(z) >> 16) | (at32<4>(f) << 16), at32<4>(z), at32<2>(z), lo32(z));
      break;
    }
    default: {  // 8: L0 L1 L2 L3, then L3 repeated
      const uint32_t l = left4(p, step, avail);
      const __m128i e = pair32(l, (l >> 24) * 0x01010101u);
      const __m128i z = _mm_unpacklo_epi8(taps2(e), taps3(e));
      rows4(p, step, lo32(z), at32<2>(z), at32<4>(z), at32<6>(z));
      break;
    }
  }
  return (kNeeds4x4[mode] & ~avail) ? kWarnMissing : kPredOk;
}
HUX_INLINE int32_t pred4x4(uint8_t* p, int32_t step, uint32_t mode, uint32_t avail) {
  switch (mode) {
    case 0: return pred4x4_mode<0>(p, step, avail);
    case 1: return pred4x4_mode<1>(p, step, avail);
    case 2: return pred4x4_mode<2>(p, step, avail);
    case 3: return pred4x4_mode<3>(p, step, avail);
    case 4: return pred4x4_mode<4>(p, step, avail);
    case 5: return pred4x4_mode<5>(p, step, avail);
    case 6: return pred4x4_mode<6>(p, step, avail);
    case 7: return pred4x4_mode<7>(p, step, avail);
    default: return pred4x4_mode<8>(p, step, avail);
  }
}

namespace intra {

template <int N>
inline void fill(uint8_t* p, int32_t step, __m128i v) {
  for (int y = 0; y < N; ++y) {
    if constexpr (N == 16) _mm_storeu_si128(reinterpret_cast<__m128i*>(row(p, step, y)), v);
    else _mm_storel_epi64(reinterpret_cast<__m128i*>(row(p, step, y)), v);
  }
}
// Each row the sample to its left: a byte times 0x01010101 spread by pshufd.
template <int N>
inline void fill_left(uint8_t* p, int32_t step) {
  for (int y = 0; y < N; ++y) {
    uint8_t* d = row(p, step, y);
    const __m128i v = _mm_shuffle_epi32(_mm_cvtsi32_si128(static_cast<int32_t>(d[-1] * 0x01010101u)), 0);
    if constexpr (N == 16) _mm_storeu_si128(reinterpret_cast<__m128i*>(d), v);
    else _mm_storel_epi64(reinterpret_cast<__m128i*>(d), v);
  }
}
// Sum of n (a multiple of 4) samples to the left, in four independent chains.
inline int left_sum(const uint8_t* p, int32_t step, int y0, int n) {
  const uint8_t* l = row(p, step, y0) - 1;
  int s0 = 0, s1 = 0, s2 = 0, s3 = 0;
  for (int y = 0; y < n; y += 4) {
    s0 += *row(l, step, y);
    s1 += *row(l, step, y + 1);
    s2 += *row(l, step, y + 2);
    s3 += *row(l, step, y + 3);
  }
  return (s0 + s1) + (s2 + s3);
}
// Plane rows: lanes hold a + 16 + b (x - centre) + c (y - centre); each row adds c.
template <int N>
inline void plane(uint8_t* p, int32_t step, int a, int b, int c) {
  constexpr int centre = N == 16 ? 7 : 3;
  const __m128i ramp = _mm_setr_epi16(0, 1, 2, 3, 4, 5, 6, 7);
  const __m128i bv = _mm_set1_epi16(static_cast<int16_t>(b)), cv = _mm_set1_epi16(static_cast<int16_t>(c));
  __m128i lo = _mm_add_epi16(_mm_set1_epi16(static_cast<int16_t>(a + 16 - centre * b - centre * c)), _mm_mullo_epi16(ramp, bv));
  __m128i hi = _mm_add_epi16(lo, _mm_slli_epi16(bv, 3));
  for (int y = 0; y < N; ++y) {
    const __m128i l5 = _mm_srai_epi16(lo, 5);
    if constexpr (N == 16) {
      _mm_storeu_si128(reinterpret_cast<__m128i*>(row(p, step, y)), _mm_packus_epi16(l5, _mm_srai_epi16(hi, 5)));
      hi = _mm_add_epi16(hi, cv);
    } else {
      _mm_storel_epi64(reinterpret_cast<__m128i*>(row(p, step, y)), _mm_packus_epi16(l5, l5));
    }
    lo = _mm_add_epi16(lo, cv);
  }
}

}  // namespace intra

template <uint32_t M>
HUX_INLINE int32_t pred16x16_mode(uint8_t* p, int32_t step, uint32_t avail) {
  using namespace intra;
  constexpr uint32_t mode = M;
  if (kNeeds16x16[mode] & ~avail) return kNoNeighbour;
  const uint8_t* up = row(p, step, -1);
  if constexpr (mode == 0) {
    fill<16>(p, step, _mm_loadu_si128(reinterpret_cast<const __m128i*>(up)));
  } else if constexpr (mode == 1) {
    fill_left<16>(p, step);
  } else if constexpr (mode == 2) {
    const bool a = avail & kAvailAbove, l = avail & kAvailLeft;
    int st = 0;
    if (a) {
      const __m128i s = _mm_sad_epu8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(up)), _mm_setzero_si128());
      st = _mm_cvtsi128_si32(_mm_add_epi32(s, _mm_srli_si128(s, 8)));
    }
    const int sl = l ? left_sum(p, step, 0, 16) : 0;
    const int dc = a && l ? (st + sl + 16) >> 5 : a ? (st + 8) >> 4 : l ? (sl + 8) >> 4 : 128;
    fill<16>(p, step, _mm_set1_epi8(static_cast<char>(dc)));
  } else {
    int h = 0, v = 0;
    const uint8_t* l = p - 1;
    for (int i = 0; i < 8; ++i) {
      h += (i + 1) * (up[8 + i] - up[6 - i]);
      v += (i + 1) * (*row(l, step, 8 + i) - *row(l, step, 6 - i));
    }
    plane<16>(p, step, 16 * (*row(l, step, 15) + up[15]), (5 * h + 32) >> 6, (5 * v + 32) >> 6);
  }
  return kPredOk;
}

template <uint32_t M>
HUX_INLINE int32_t pred_chroma8x8_mode(uint8_t* p, int32_t step, uint32_t avail) {
  using namespace intra;
  constexpr uint32_t mode = M;
  if (kNeedsChroma[mode] & ~avail) return kNoNeighbour;
  const uint8_t* up = row(p, step, -1);
  if constexpr (mode == 2) {
    fill<8>(p, step, _mm_loadl_epi64(reinterpret_cast<const __m128i*>(up)));
  } else if constexpr (mode == 1) {
    fill_left<8>(p, step);
  } else if constexpr (mode == 0) {
    const bool a = avail & kAvailAbove, l = avail & kAvailLeft;
    const int t0 = a ? static_cast<int>(bytesum(ld32(up))) : 0, t1 = a ? static_cast<int>(bytesum(ld32(up + 4))) : 0;
    const int l0 = l ? left_sum(p, step, 0, 4) : 0, l1 = l ? left_sum(p, step, 4, 4) : 0;
    const uint32_t d00 = static_cast<uint32_t>(ref::chroma_dc(t0, l0, a, l, 0, 0));
    const uint32_t d01 = static_cast<uint32_t>(ref::chroma_dc(t1, l0, a, l, 1, 0));
    const uint32_t d10 = static_cast<uint32_t>(ref::chroma_dc(t0, l1, a, l, 0, 1));
    const uint32_t d11 = static_cast<uint32_t>(ref::chroma_dc(t1, l1, a, l, 1, 1));
    const __m128i top = pair32(d00 * 0x01010101u, d01 * 0x01010101u);
    const __m128i bot = pair32(d10 * 0x01010101u, d11 * 0x01010101u);
    for (int y = 0; y < 4; ++y) _mm_storel_epi64(reinterpret_cast<__m128i*>(row(p, step, y)), top);
    for (int y = 4; y < 8; ++y) _mm_storel_epi64(reinterpret_cast<__m128i*>(row(p, step, y)), bot);
  } else {
    int h = 0, v = 0;
    const uint8_t* l = p - 1;
    for (int i = 0; i < 4; ++i) {
      h += (i + 1) * (up[4 + i] - up[2 - i]);
      v += (i + 1) * (*row(l, step, 4 + i) - *row(l, step, 2 - i));
    }
    plane<8>(p, step, 16 * (*row(l, step, 7) + up[7]), (17 * h + 16) >> 5, (17 * v + 16) >> 5);
  }
  return kPredOk;
}

HUX_INLINE int32_t pred16x16(uint8_t* p, int32_t step, uint32_t mode, uint32_t avail) {
  switch (mode) {
    case 0: return pred16x16_mode<0>(p, step, avail);
    case 1: return pred16x16_mode<1>(p, step, avail);
    case 2: return pred16x16_mode<2>(p, step, avail);
    case 3: return pred16x16_mode<3>(p, step, avail);
    default: return kBadMode;
  }
}
HUX_INLINE int32_t pred_chroma8x8(uint8_t* p, int32_t step, uint32_t mode, uint32_t avail) {
  switch (mode) {
    case 0: return pred_chroma8x8_mode<0>(p, step, avail);
    case 1: return pred_chroma8x8_mode<1>(p, step, avail);
    case 2: return pred_chroma8x8_mode<2>(p, step, avail);
    case 3: return pred_chroma8x8_mode<3>(p, step, avail);
    default: return kBadMode;
  }
}

// The 8x8 luma prediction runs once per quadrant of a macroblock, after its
// filtering; the portable kernel serves both sets.
using ref::pred8x8;

}  // namespace hux::h264::sse2
