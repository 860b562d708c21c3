// SSE2 block SAD kernels. They are defined inline in this header so that each
// export compiles into one function: at a few nanoseconds per block a second
// call would show. Byte SADs use psadbw on whole rows (two 8- or four
// 4-sample rows packed into one register); the diagonal half-sample position
// is formed exactly in 16-bit lanes, since averaging two byte averages would
// round twice. Every load stays inside the rows and columns the block, its
// half-sample neighbours or its candidate line cover.
#pragma once

#include <emmintrin.h>

#include "huxvc.h"
#include "me/sad_kernels.h"

namespace hux::me::sse2 {
namespace detail {

inline __m128i loadu(const void* p) { return _mm_loadu_si128(static_cast<const __m128i*>(p)); }
inline __m128i load8(const void* p) { return _mm_loadl_epi64(static_cast<const __m128i*>(p)); }
inline __m128i load4(const void* p) { return _mm_cvtsi32_si128(hux::load<int32_t>(p)); }
template <bool Aligned>
inline __m128i load_cur(const void* p) {
  if constexpr (Aligned) return _mm_load_si128(static_cast<const __m128i*>(p));
  return loadu(p);
}
inline int32_t hsum64(__m128i v) { return _mm_cvtsi128_si32(_mm_add_epi32(v, _mm_srli_si128(v, 8))); }
inline int32_t hsum32(__m128i v) {
  v = _mm_add_epi32(v, _mm_srli_si128(v, 8));
  v = _mm_add_epi32(v, _mm_srli_si128(v, 4));
  return _mm_cvtsi128_si32(v);
}

// Exact (a + b + c + d + 2) >> 2 for 16 bytes, given the horizontal pair sums
// of two rows as 16-bit halves.
inline __m128i diag_from_pairs(__m128i top_lo, __m128i top_hi, __m128i bot_lo, __m128i bot_hi) {
  const __m128i two = _mm_set1_epi16(2);
  const __m128i lo = _mm_srli_epi16(_mm_add_epi16(_mm_add_epi16(top_lo, bot_lo), two), 2);
  const __m128i hi = _mm_srli_epi16(_mm_add_epi16(_mm_add_epi16(top_hi, bot_hi), two), 2);
  return _mm_packus_epi16(lo, hi);
}
inline void pair_sums16(const uint8_t* p, __m128i& lo, __m128i& hi) {
  const __m128i z = _mm_setzero_si128();
  const __m128i a = loadu(p), b = loadu(p + 1);
  lo = _mm_add_epi16(_mm_unpacklo_epi8(a, z), _mm_unpacklo_epi8(b, z));
  hi = _mm_add_epi16(_mm_unpackhi_epi8(a, z), _mm_unpackhi_epi8(b, z));
}
inline void pair_sums8(const uint8_t* p, __m128i& s) {
  const __m128i z = _mm_setzero_si128();
  s = _mm_add_epi16(_mm_unpacklo_epi8(load8(p), z), _mm_unpacklo_epi8(load8(p + 1), z));
}

template <int H, int Mode, bool Aligned>
int32_t sad16xH(const uint8_t* cur, int32_t cs, const uint8_t* ref, int32_t rs) {
  __m128i acc = _mm_setzero_si128();
  if constexpr (Mode == kInteger) {
    // Four rows a step with base + {1,2,3} x step addressing: the loop is
    // bound by instruction throughput, so pointer updates are kept to one per
    // four rows, and the current rows fold into psadbw as memory operands.
    const intptr_t c1 = cs, c2 = 2 * c1, c3 = 3 * c1, r1 = rs, r2 = 2 * r1, r3 = 3 * r1;
    __m128i acc2 = _mm_setzero_si128();
    for (int y = 0; y < H; y += 4) {
      const __m128i a = _mm_add_epi32(_mm_sad_epu8(loadu(ref), load_cur<Aligned>(cur)),
                                      _mm_sad_epu8(loadu(ref + r1), load_cur<Aligned>(cur + c1)));
      const __m128i b = _mm_add_epi32(_mm_sad_epu8(loadu(ref + r2), load_cur<Aligned>(cur + c2)),
                                      _mm_sad_epu8(loadu(ref + r3), load_cur<Aligned>(cur + c3)));
      acc = _mm_add_epi32(acc, a);
      acc2 = _mm_add_epi32(acc2, b);
      cur += 4 * c1;
      ref += 4 * r1;
    }
    acc = _mm_add_epi32(acc, acc2);
  } else if constexpr (Mode == kVertical) {
    const intptr_t c1 = cs, c2 = 2 * c1, c3 = 3 * c1, r1 = rs, r2 = 2 * r1, r3 = 3 * r1;
    __m128i top = loadu(ref), acc2 = _mm_setzero_si128();
    for (int y = 0; y < H; y += 4) {
      const __m128i a = loadu(ref + r1), b = loadu(ref + r2), c = loadu(ref + r3), d = loadu(ref + 4 * r1);
      acc = _mm_add_epi32(acc, _mm_add_epi32(_mm_sad_epu8(_mm_avg_epu8(top, a), load_cur<Aligned>(cur)),
                                             _mm_sad_epu8(_mm_avg_epu8(a, b), load_cur<Aligned>(cur + c1))));
      acc2 = _mm_add_epi32(acc2, _mm_add_epi32(_mm_sad_epu8(_mm_avg_epu8(b, c), load_cur<Aligned>(cur + c2)),
                                               _mm_sad_epu8(_mm_avg_epu8(c, d), load_cur<Aligned>(cur + c3))));
      top = d;
      cur += 4 * c1;
      ref += 4 * r1;
    }
    acc = _mm_add_epi32(acc, acc2);
  } else if constexpr (Mode == kHorizontal) {
    const intptr_t c1 = cs, c2 = 2 * c1, c3 = 3 * c1, r1 = rs, r2 = 2 * r1, r3 = 3 * r1;
    __m128i acc2 = _mm_setzero_si128();
    auto h = [](const uint8_t* r) { return _mm_avg_epu8(loadu(r), loadu(r + 1)); };
    for (int y = 0; y < H; y += 4) {
      acc = _mm_add_epi32(acc, _mm_add_epi32(_mm_sad_epu8(h(ref), load_cur<Aligned>(cur)),
                                             _mm_sad_epu8(h(ref + r1), load_cur<Aligned>(cur + c1))));
      acc2 = _mm_add_epi32(acc2, _mm_add_epi32(_mm_sad_epu8(h(ref + r2), load_cur<Aligned>(cur + c2)),
                                               _mm_sad_epu8(h(ref + r3), load_cur<Aligned>(cur + c3))));
      cur += 4 * c1;
      ref += 4 * r1;
    }
    acc = _mm_add_epi32(acc, acc2);
  } else {
    __m128i tl, th;
    pair_sums16(ref, tl, th);
    for (int y = 0; y < H; ++y) {
      __m128i bl, bh;
      pair_sums16(row(ref, rs, y + 1), bl, bh);
      acc = _mm_add_epi32(acc, _mm_sad_epu8(load_cur<Aligned>(row(cur, cs, y)), diag_from_pairs(tl, th, bl, bh)));
      tl = bl;
      th = bh;
    }
  }
  return hsum64(acc);
}

// 8-wide rows, two per register.
template <int H, int Mode>
int32_t sad8xH(const uint8_t* cur, int32_t cs, const uint8_t* ref, int32_t rs) {
  __m128i acc = _mm_setzero_si128();
  auto pred = [&](int y) -> __m128i {
    const uint8_t* r = row(ref, rs, y);
    if constexpr (Mode == kInteger) return load8(r);
    if constexpr (Mode == kVertical) return _mm_avg_epu8(load8(r), load8(row(r, rs, 1)));
    if constexpr (Mode == kHorizontal) return _mm_avg_epu8(load8(r), load8(r + 1));
    return _mm_setzero_si128();
  };
  if constexpr (Mode == kDiagonal) {
    __m128i top;
    pair_sums8(ref, top);
    const __m128i two = _mm_set1_epi16(2);
    for (int y = 0; y < H; y += 2) {
      __m128i mid, bot;
      pair_sums8(row(ref, rs, y + 1), mid);
      pair_sums8(row(ref, rs, y + 2), bot);
      const __m128i p0 = _mm_srli_epi16(_mm_add_epi16(_mm_add_epi16(top, mid), two), 2);
      const __m128i p1 = _mm_srli_epi16(_mm_add_epi16(_mm_add_epi16(mid, bot), two), 2);
      const __m128i c = _mm_unpacklo_epi64(load8(row(cur, cs, y)), load8(row(cur, cs, y + 1)));
      acc = _mm_add_epi32(acc, _mm_sad_epu8(c, _mm_packus_epi16(p0, p1)));
      top = bot;
    }
  } else if constexpr (Mode == kInteger) {
    const intptr_t c1 = cs, c2 = 2 * c1, c3 = 3 * c1, r1 = rs, r2 = 2 * r1, r3 = 3 * r1;
    __m128i acc2 = _mm_setzero_si128();
    // One row per psadbw: the 8-byte loads clear the upper halves, so the sums
    // stay in the low lane and need no final fold.
    auto two = [](const uint8_t* a, const uint8_t* b) {
      return _mm_castps_si128(_mm_loadh_pi(_mm_castsi128_ps(load8(a)), reinterpret_cast<const __m64*>(b)));
    };
    for (int y = 0; y < H; y += 4) {
      acc = _mm_add_epi32(acc, _mm_sad_epu8(two(cur, cur + c1), two(ref, ref + r1)));
      acc2 = _mm_add_epi32(acc2, _mm_sad_epu8(two(cur + c2, cur + c3), two(ref + r2, ref + r3)));
      cur += 4 * c1;
      ref += 4 * r1;
    }
    return hsum64(_mm_add_epi32(acc, acc2));
  } else {
    for (int y = 0; y < H; y += 2) {
      const __m128i c = _mm_unpacklo_epi64(load8(row(cur, cs, y)), load8(row(cur, cs, y + 1)));
      acc = _mm_add_epi32(acc, _mm_sad_epu8(c, _mm_unpacklo_epi64(pred(y), pred(y + 1))));
    }
  }
  return hsum64(acc);
}

// Four 4-sample rows in one register.
inline __m128i rows4x4(const uint8_t* p, int32_t step) {
  const __m128i r01 = _mm_unpacklo_epi32(load4(p), load4(row(p, step, 1)));
  const __m128i r23 = _mm_unpacklo_epi32(load4(row(p, step, 2)), load4(row(p, step, 3)));
  return _mm_unpacklo_epi64(r01, r23);
}

template <int H>
int32_t sad4xH(const uint8_t* cur, int32_t cs, const uint8_t* ref, int32_t rs) {
  __m128i acc = _mm_setzero_si128();
  for (int y = 0; y < H; y += 4)
    acc = _mm_add_epi32(acc, _mm_sad_epu8(rows4x4(row(cur, cs, y), cs), rows4x4(row(ref, rs, y), rs)));
  return hsum64(acc);
}

// |a - b| of unsigned 16-bit lanes, exact.
inline __m128i absdiff_u16(__m128i a, __m128i b) { return _mm_or_si128(_mm_subs_epu16(a, b), _mm_subs_epu16(b, a)); }
inline __m128i widen_add(__m128i acc, __m128i v) {
  const __m128i z = _mm_setzero_si128();
  return _mm_add_epi32(acc, _mm_add_epi32(_mm_unpacklo_epi16(v, z), _mm_unpackhi_epi16(v, z)));
}

// Reference samples of 16-bit data with saturating interpolation; n = 8 or 4 lanes.
template <int Mode, int N>
inline __m128i pred16(const uint16_t* r, int32_t rs) {
  auto ld = [](const uint16_t* p) { return N == 8 ? loadu(p) : load8(p); };
  if constexpr (Mode == kInteger) return ld(r);
  const __m128i one = _mm_set1_epi16(1);
  if constexpr (Mode == kVertical) return _mm_srli_epi16(_mm_adds_epu16(_mm_adds_epu16(ld(r), ld(row(r, rs, 1))), one), 1);
  if constexpr (Mode == kHorizontal) return _mm_srli_epi16(_mm_adds_epu16(_mm_adds_epu16(ld(r), ld(r + 1)), one), 1);
  const __m128i s = _mm_adds_epu16(_mm_adds_epu16(ld(r), ld(r + 1)), _mm_adds_epu16(ld(row(r, rs, 1)), ld(row(r, rs, 1) + 1)));
  return _mm_srli_epi16(_mm_adds_epu16(s, _mm_set1_epi16(2)), 2);
}

}  // namespace detail
using namespace detail;

template <int W, int H, int Mode>
HUX_INLINE int32_t sad(const uint8_t* cur, int32_t cs, const uint8_t* ref, int32_t rs) {
  if constexpr (W == 16) {
    return aligned16(cur, cs) ? sad16xH<H, Mode, true>(cur, cs, ref, rs) : sad16xH<H, Mode, false>(cur, cs, ref, rs);
  } else if constexpr (W == 8) {
    return sad8xH<H, Mode>(cur, cs, ref, rs);
  } else {
    static_assert(Mode == kInteger, "4-wide blocks are compared at integer positions only");
    return sad4xH<H>(cur, cs, ref, rs);
  }
}

template <int W, int H, int Mode>
HUX_INLINE int32_t sad16u(const uint16_t* cur, int32_t cs, const uint16_t* ref, int32_t rs) {
  constexpr int N = W < 8 ? W : 8;  // lanes per load
  __m128i acc = _mm_setzero_si128();
  for (int y = 0; y < H; ++y) {
    const uint16_t* c = row(cur, cs, y);
    const uint16_t* r = row(ref, rs, y);
    for (int x = 0; x < W; x += N) {
      const __m128i cv = N == 8 ? loadu(c + x) : load8(c + x);
      acc = widen_add(acc, absdiff_u16(cv, pred16<Mode, N>(r + x, rs)));
    }
  }
  return hsum32(acc);
}

#if HUX_ASM
// The assembly exports (x86/sad_asm.cpp) through the kernel signature, so the
// checker holds them to the reference kernels beside the intrinsics ones:
// the integer position of 16x16, 16x8, 8x8, 8x4 and 4x4, and on 64-bit x86
// the vertical and horizontal half-sample positions of 16x16, 16x8 and 8x8.
template <int W, int H>
constexpr auto asm_export() {
  if constexpr (W == 16 && H == 16) return &huxiSAD16x16_8u32s;
  else if constexpr (W == 16 && H == 8) return &huxiSAD16x8_8u32s_C1R;
  else if constexpr (W == 8 && H == 8) return &huxiSAD8x8_8u32s_C1R;
  else if constexpr (W == 8 && H == 4) return &huxiSAD8x4_8u32s_C1R;
  else return &huxiSAD4x4_8u32s;
}
template <int W, int H, int Mode>
int32_t sad_export(const uint8_t* cur, int32_t cs, const uint8_t* ref, int32_t rs) {
  int32_t s = -1;
  asm_export<W, H>()(cur, cs, ref, rs, &s, Mode << 2);
  return s;
}
#endif

template <int B>
HUX_INLINE void sad_blocks(const uint8_t* cur, int32_t cs, const uint8_t* ref, int32_t rs, uint16_t* out) {
  if constexpr (B == 8) {
    __m128i top = _mm_setzero_si128(), bottom = _mm_setzero_si128();
    for (int y = 0; y < 8; ++y) top = _mm_add_epi32(top, _mm_sad_epu8(loadu(row(cur, cs, y)), loadu(row(ref, rs, y))));
    for (int y = 8; y < 16; ++y)
      bottom = _mm_add_epi32(bottom, _mm_sad_epu8(loadu(row(cur, cs, y)), loadu(row(ref, rs, y))));
    // psadbw leaves the left and right halves' sums in 16-bit lanes 0 and 4.
    const __m128i both = _mm_unpacklo_epi32(_mm_unpacklo_epi16(top, _mm_srli_si128(top, 8)),
                                            _mm_unpacklo_epi16(bottom, _mm_srli_si128(bottom, 8)));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(out), both);
  } else {
    // Absolute byte differences, then psadbw over alternate 4-byte groups.
    const __m128i even = _mm_set_epi32(0, -1, 0, -1);
    const __m128i odd = _mm_set_epi32(-1, 0, -1, 0);
    const __m128i z = _mm_setzero_si128();
    for (int band = 0; band < 4; ++band) {
      __m128i e = z, o = z;
      for (int y = band * 4; y < band * 4 + 4; ++y) {
        const __m128i c = loadu(row(cur, cs, y)), r = loadu(row(ref, rs, y));
        const __m128i d = _mm_or_si128(_mm_subs_epu8(c, r), _mm_subs_epu8(r, c));
        e = _mm_add_epi32(e, _mm_sad_epu8(_mm_and_si128(d, even), z));
        o = _mm_add_epi32(o, _mm_sad_epu8(_mm_and_si128(d, odd), z));
      }
      // e: blocks 0 and 2 of the band in lanes 0 and 4; o: blocks 1 and 3.
      const __m128i lo = _mm_unpacklo_epi16(e, o);            // b0 b1 . .
      const __m128i hi = _mm_unpacklo_epi16(_mm_srli_si128(e, 8), _mm_srli_si128(o, 8));  // b2 b3
      _mm_storel_epi64(reinterpret_cast<__m128i*>(out + band * 4), _mm_unpacklo_epi32(lo, hi));
    }
  }
}

template <int B>
HUX_INLINE void sad_blocks16u(const uint16_t* cur, int32_t cs, const uint16_t* ref, int32_t rs, uint32_t* out) {
  cs &= ~1;
  rs &= ~1;
  const __m128i z = _mm_setzero_si128();
  // Differences wrap to 16 bits; max(d, -d) then read as unsigned gives
  // |d| for every d, 32768 for -32768 included.
  auto absdiff = [&](const uint16_t* c, const uint16_t* r) {
    const __m128i d = _mm_sub_epi16(loadu(c), loadu(r));
    return _mm_max_epi16(d, _mm_sub_epi16(z, d));
  };
  if constexpr (B == 8) {
    for (int band = 0; band < 2; ++band) {
      __m128i left = z, right = z;
      for (int y = band * 8; y < band * 8 + 8; ++y) {
        const uint16_t* c = row(cur, cs, y);
        const uint16_t* r = row(ref, rs, y);
        left = widen_add(left, absdiff(c, r));
        right = widen_add(right, absdiff(c + 8, r + 8));
      }
      out[band * 2] = static_cast<uint32_t>(hsum32(left));
      out[band * 2 + 1] = static_cast<uint32_t>(hsum32(right));
    }
  } else {
    for (int band = 0; band < 4; ++band) {
      __m128i a[4] = {z, z, z, z};
      for (int y = band * 4; y < band * 4 + 4; ++y) {
        const uint16_t* c = row(cur, cs, y);
        const uint16_t* r = row(ref, rs, y);
        const __m128i d0 = absdiff(c, r), d1 = absdiff(c + 8, r + 8);
        a[0] = _mm_add_epi32(a[0], _mm_unpacklo_epi16(d0, z));
        a[1] = _mm_add_epi32(a[1], _mm_unpackhi_epi16(d0, z));
        a[2] = _mm_add_epi32(a[2], _mm_unpacklo_epi16(d1, z));
        a[3] = _mm_add_epi32(a[3], _mm_unpackhi_epi16(d1, z));
      }
      // Transpose-and-add the four accumulators into one vector of block sums.
      const __m128i t0 = _mm_add_epi32(_mm_unpacklo_epi32(a[0], a[1]), _mm_unpackhi_epi32(a[0], a[1]));
      const __m128i t1 = _mm_add_epi32(_mm_unpacklo_epi32(a[2], a[3]), _mm_unpackhi_epi32(a[2], a[3]));
      const __m128i s = _mm_add_epi32(_mm_unpacklo_epi64(t0, t1), _mm_unpackhi_epi64(t0, t1));
      _mm_storeu_si128(reinterpret_cast<__m128i*>(out + band * 4), s);
    }
  }
}

namespace detail {
// Eight 32-bit totals (lane 0 of each psadbw accumulator pair summed) to eight
// unsigned 16-bit values; the bias keeps values above 32767 through packs.
inline __m128i pack_totals(const int32_t (&t)[8]) {
  const __m128i bias = _mm_set1_epi32(32768);
  const __m128i lo = _mm_sub_epi32(_mm_setr_epi32(t[0], t[1], t[2], t[3]), bias);
  const __m128i hi = _mm_sub_epi32(_mm_setr_epi32(t[4], t[5], t[6], t[7]), bias);
  return _mm_xor_si128(_mm_packs_epi32(lo, hi), _mm_set1_epi16(-32768));
}
inline void store8(uint16_t* out, const int32_t (&t)[8]) {
  _mm_storeu_si128(reinterpret_cast<__m128i*>(out), pack_totals(t));
}
}  // namespace detail
using namespace detail;

template <int B>
HUX_INLINE void sad_line(const uint8_t* cur, int32_t cs, const uint8_t* ref, int32_t rs, uint16_t* out, int32_t m) {
  const __m128i z = _mm_setzero_si128();
  if constexpr (B == 2) {
    // Candidate k costs |c00 - r0[k]| + |c01 - r0[k+1]| + |c10 - r1[k]| +
    // |c11 - r1[k+1]|: the four current samples are broadcast once and eight
    // candidates are formed per pair of row loads.
    const uint8_t* c1 = row(cur, cs, 1);
    const __m128i b00 = _mm_set1_epi8(static_cast<char>(cur[0])), b01 = _mm_set1_epi8(static_cast<char>(cur[1]));
    const __m128i b10 = _mm_set1_epi8(static_cast<char>(c1[0])), b11 = _mm_set1_epi8(static_cast<char>(c1[1]));
    const uint8_t* r1 = row(ref, rs, 1);
    auto ad = [](__m128i a, __m128i b) { return _mm_or_si128(_mm_subs_epu8(a, b), _mm_subs_epu8(b, a)); };
    int32_t k0 = 0;
    // Sixteen candidates a step while the line's columns (0 .. m) allow
    // 16-byte loads at k0 and k0 + 1.
    for (; k0 + 16 <= m; k0 += 16) {
      const __m128i t0 = ad(loadu(ref + k0), b00), t1 = ad(loadu(ref + k0 + 1), b01);
      const __m128i u0 = ad(loadu(r1 + k0), b10), u1 = ad(loadu(r1 + k0 + 1), b11);
      const __m128i lo = _mm_add_epi16(_mm_add_epi16(_mm_unpacklo_epi8(t0, z), _mm_unpacklo_epi8(t1, z)),
                                       _mm_add_epi16(_mm_unpacklo_epi8(u0, z), _mm_unpacklo_epi8(u1, z)));
      const __m128i hi = _mm_add_epi16(_mm_add_epi16(_mm_unpackhi_epi8(t0, z), _mm_unpackhi_epi8(t1, z)),
                                       _mm_add_epi16(_mm_unpackhi_epi8(u0, z), _mm_unpackhi_epi8(u1, z)));
      _mm_storeu_si128(reinterpret_cast<__m128i*>(out + k0), lo);
      _mm_storeu_si128(reinterpret_cast<__m128i*>(out + k0 + 8), hi);
    }
    for (; k0 < m; k0 += 8) {
      const __m128i top = _mm_unpacklo_epi64(ad(load8(ref + k0), b00), ad(load8(ref + k0 + 1), b01));
      const __m128i bot = _mm_unpacklo_epi64(ad(load8(r1 + k0), b10), ad(load8(r1 + k0 + 1), b11));
      const __m128i s0 = _mm_add_epi16(_mm_unpacklo_epi8(top, z), _mm_unpackhi_epi8(top, z));
      const __m128i s1 = _mm_add_epi16(_mm_unpacklo_epi8(bot, z), _mm_unpackhi_epi8(bot, z));
      _mm_storeu_si128(reinterpret_cast<__m128i*>(out + k0), _mm_add_epi16(s0, s1));
    }
    return;
  }
  for (int32_t k0 = 0; k0 < m; k0 += 8) {
    const uint8_t* r0 = ref + k0;
    int32_t t[8];
    if constexpr (B == 16) {
      __m128i acc[8] = {z, z, z, z, z, z, z, z};
      for (int y = 0; y < 16; ++y) {
        const __m128i c = loadu(row(cur, cs, y));
        const uint8_t* r = row(r0, rs, y);
        for (int j = 0; j < 8; ++j) acc[j] = _mm_add_epi32(acc[j], _mm_sad_epu8(c, loadu(r + j)));
      }
      for (int j = 0; j < 8; ++j) t[j] = hsum64(acc[j]);
    } else if constexpr (B == 8) {
      // Candidates j and j+1 side by side against the current row twice.
      __m128i acc[4] = {z, z, z, z};
      for (int y = 0; y < 8; ++y) {
        const __m128i c = load8(row(cur, cs, y));
        const __m128i cc = _mm_unpacklo_epi64(c, c);
        const uint8_t* r = row(r0, rs, y);
        for (int j = 0; j < 4; ++j)
          acc[j] = _mm_add_epi32(acc[j], _mm_sad_epu8(cc, _mm_unpacklo_epi64(load8(r + 2 * j), load8(r + 2 * j + 1))));
      }
      for (int j = 0; j < 4; ++j) {
        t[2 * j] = _mm_cvtsi128_si32(acc[j]);
        t[2 * j + 1] = _mm_cvtsi128_si32(_mm_srli_si128(acc[j], 8));
      }
    } else if constexpr (B == 4) {
      __m128i acc[4] = {z, z, z, z};
      for (int y = 0; y < 4; ++y) {
        const __m128i c = load4(row(cur, cs, y));
        const __m128i cc = _mm_unpacklo_epi64(c, c);
        const uint8_t* r = row(r0, rs, y);
        for (int j = 0; j < 4; ++j)
          acc[j] = _mm_add_epi32(acc[j], _mm_sad_epu8(cc, _mm_unpacklo_epi64(load4(r + 2 * j), load4(r + 2 * j + 1))));
      }
      for (int j = 0; j < 4; ++j) {
        t[2 * j] = _mm_cvtsi128_si32(acc[j]);
        t[2 * j + 1] = _mm_cvtsi128_si32(_mm_srli_si128(acc[j], 8));
      }
    } else {
      break;  // 2x2 lines are handled below
    }
    store8(out + k0, t);
  }
}

namespace detail {
// Best of at most 65,536 candidates (m a multiple of 8): the indices ride in
// 16-bit lanes beside the values, so a chunk must not hold more than a lane
// can count. Returns the value in the high half and the index in the low.
HUX_INLINE uint32_t min_index_chunk(const uint16_t* v, int32_t m) {
  // Lane l follows candidates l, l+8, l+16, ...: values compared as unsigned
  // through a 0x8000 bias; a lane's minimum is replaced only by a strictly
  // smaller value, so each lane keeps its earliest minimum.
  const __m128i bias = _mm_set1_epi16(-32768);
  __m128i best = _mm_xor_si128(loadu(v), bias);
  __m128i idx = _mm_setr_epi16(0, 1, 2, 3, 4, 5, 6, 7);
  __m128i cand = idx;
  const __m128i eight = _mm_set1_epi16(8);
  for (int32_t k = 8; k < m; k += 8) {
    cand = _mm_add_epi16(cand, eight);
    const __m128i x = _mm_xor_si128(loadu(v + k), bias);
    const __m128i gt = _mm_cmpgt_epi16(best, x);
    best = _mm_or_si128(_mm_and_si128(gt, x), _mm_andnot_si128(gt, best));
    idx = _mm_or_si128(_mm_and_si128(gt, cand), _mm_andnot_si128(gt, idx));
  }
  alignas(16) int16_t bv[8];
  alignas(16) uint16_t bi[8];
  _mm_store_si128(reinterpret_cast<__m128i*>(bv), best);
  _mm_store_si128(reinterpret_cast<__m128i*>(bi), idx);
  int lane = 0;
  for (int l = 1; l < 8; ++l)
    if (bv[l] < bv[lane] || (bv[l] == bv[lane] && bi[l] < bi[lane])) lane = l;
  return (static_cast<uint32_t>(static_cast<uint16_t>(bv[lane] ^ -32768)) << 16) | bi[lane];
}
}  // namespace detail

HUX_INLINE uint32_t min_index(const uint16_t* v, int32_t m) {
  constexpr int32_t kChunk = 65536;
  const uint32_t first = detail::min_index_chunk(v, m < kChunk ? m : kChunk);
  if (__builtin_expect(m <= kChunk, 1)) return first & 0xFFFF;
  // Longer lines: chunk by chunk, a later chunk wins only with a strictly
  // smaller value, so equal values keep the lowest index.
  uint32_t bestValue = first >> 16, bestIndex = first & 0xFFFF;
  for (int32_t base = kChunk; base < m; base += kChunk) {
    const int32_t n = m - base < kChunk ? m - base : kChunk;
    const uint32_t r = detail::min_index_chunk(v + base, n);
    if ((r >> 16) < bestValue) {
      bestValue = r >> 16;
      bestIndex = static_cast<uint32_t>(base) + (r & 0xFFFF);
    }
  }
  return bestIndex;
}

HUX_INLINE void frame_field(const uint8_t* src, int32_t step, int32_t* frame, int32_t* field) {
  __m128i r[16];
  for (int y = 0; y < 16; ++y) r[y] = loadu(row(src, step, y));
  __m128i fr = _mm_setzero_si128(), fi = _mm_setzero_si128();
  for (int y = 0; y < 15; ++y)
    if (y != 7) fr = _mm_add_epi32(fr, _mm_sad_epu8(r[y], r[y + 1]));
  for (int y = 0; y < 14; ++y) fi = _mm_add_epi32(fi, _mm_sad_epu8(r[y], r[y + 2]));
  *frame = hsum64(fr);
  *field = hsum64(fi);
}

HUX_INLINE void frame_field(const int16_t* src, int32_t step, int32_t* frame, int32_t* field) {
  // |a - b| of signed samples is max - min, at most 65535: exact as an
  // unsigned 16-bit lane, widened before summing.
  auto ad = [](__m128i a, __m128i b) { return _mm_sub_epi16(_mm_max_epi16(a, b), _mm_min_epi16(a, b)); };
  __m128i fr = _mm_setzero_si128(), fi = _mm_setzero_si128();
  for (int half = 0; half < 2; ++half) {
    const int x = half * 8;
    __m128i r[16];
    for (int y = 0; y < 16; ++y) r[y] = loadu(row(src, step, y) + x);
    for (int y = 0; y < 15; ++y)
      if (y != 7) fr = widen_add(fr, ad(r[y], r[y + 1]));
    for (int y = 0; y < 14; ++y) fi = widen_add(fi, ad(r[y], r[y + 2]));
  }
  *frame = hsum32(fr);
  *field = hsum32(fi);
}

namespace detail {
template <bool Aligned>
int32_t sub_sad8x8_impl(const uint8_t* cur, int32_t cs, const uint8_t* ref, int32_t rs, int16_t* diff, int32_t ds) {
  const __m128i z = _mm_setzero_si128();
  __m128i acc = z;
  for (int y = 0; y < 8; y += 2) {
    const __m128i c0 = load8(row(cur, cs, y)), c1 = load8(row(cur, cs, y + 1));
    const __m128i r0 = load8(row(ref, rs, y)), r1 = load8(row(ref, rs, y + 1));
    const __m128i d0 = _mm_sub_epi16(_mm_unpacklo_epi8(c0, z), _mm_unpacklo_epi8(r0, z));
    const __m128i d1 = _mm_sub_epi16(_mm_unpacklo_epi8(c1, z), _mm_unpacklo_epi8(r1, z));
    auto* o0 = reinterpret_cast<__m128i*>(row(diff, ds, y));
    auto* o1 = reinterpret_cast<__m128i*>(row(diff, ds, y + 1));
    if constexpr (Aligned) {
      _mm_store_si128(o0, d0);
      _mm_store_si128(o1, d1);
    } else {
      _mm_storeu_si128(o0, d0);
      _mm_storeu_si128(o1, d1);
    }
    acc = _mm_add_epi32(acc, _mm_sad_epu8(_mm_unpacklo_epi64(c0, c1), _mm_unpacklo_epi64(r0, r1)));
  }
  return hsum64(acc);
}
}  // namespace detail
using namespace detail;

HUX_INLINE int32_t sub_sad8x8(const uint8_t* cur, int32_t cs, const uint8_t* ref, int32_t rs, int16_t* diff, int32_t ds) {
  return aligned16(diff, ds) ? sub_sad8x8_impl<true>(cur, cs, ref, rs, diff, ds)
                             : sub_sad8x8_impl<false>(cur, cs, ref, rs, diff, ds);
}

}  // namespace hux::me::sse2
