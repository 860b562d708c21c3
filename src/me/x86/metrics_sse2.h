// SSE2 difference, SATD, SSD and activity kernels. Differences of 8-bit
// samples are formed in 16-bit lanes; squares and plain sums go through
// pmaddwd; the half-sample references come from the motion-compensation row
// generator (Rows), so every metric forms them exactly as MC does.
//
// Hadamard sums: the last butterfly stage is not formed, since
// |a + b| + |a - b| = 2 max(|a|, |b|): the kernels add the larger magnitude of
// each final pair and double the total. With 8-bit samples no stage can
// saturate (a 4x4 coefficient is at most 16 x 255, an 8x8 one 64 x 255), so
// 16-bit lanes are exact and the order of the passes does not matter.
#pragma once

#include <emmintrin.h>

#include "me/metrics_kernels.h"
#include "me/x86/mc_sse2.h"

namespace hux::me::sse2 {
namespace detail {

HUX_INLINE __m128i abs16(__m128i x) { return _mm_max_epi16(x, _mm_sub_epi16(_mm_setzero_si128(), x)); }
HUX_INLINE __m128i abs32(__m128i x) {
  const __m128i s = _mm_srai_epi32(x, 31);
  return _mm_sub_epi32(_mm_xor_si128(x, s), s);
}
// max(|a|, |b|) = max(max(a, b), -min(a, b)): four operations.
HUX_INLINE __m128i maxabs16(__m128i a, __m128i b) {
  return _mm_max_epi16(_mm_max_epi16(a, b), _mm_sub_epi16(_mm_setzero_si128(), _mm_min_epi16(a, b)));
}
// Sum of eight unsigned 16-bit lanes.
HUX_INLINE int32_t hsum_u16(__m128i v) {
  const __m128i z = _mm_setzero_si128();
  return hsum32(_mm_add_epi32(_mm_unpacklo_epi16(v, z), _mm_unpackhi_epi16(v, z)));
}
HUX_INLINE __m128i lo16(__m128i v) { return _mm_unpacklo_epi8(v, _mm_setzero_si128()); }
HUX_INLINE __m128i hi16(__m128i v) { return _mm_unpackhi_epi8(v, _mm_setzero_si128()); }
// Eight 8-bit differences of a row in 16-bit lanes.
HUX_INLINE __m128i diff8(const uint8_t* c, const uint8_t* r) { return _mm_sub_epi16(lo16(load8(c)), lo16(load8(r))); }

// Two 4x4 tiles side by side (lanes 0-3 and 4-7 of four difference rows):
// per lane, the sums of the larger magnitudes of the final pairs.
HUX_INLINE __m128i satd_8x4(__m128i d0, __m128i d1, __m128i d2, __m128i d3) {
  const __m128i a0 = _mm_add_epi16(d0, d1), a1 = _mm_sub_epi16(d0, d1);
  const __m128i a2 = _mm_add_epi16(d2, d3), a3 = _mm_sub_epi16(d2, d3);
  const __m128i b0 = _mm_add_epi16(a0, a2), b1 = _mm_add_epi16(a1, a3);
  const __m128i b2 = _mm_sub_epi16(a0, a2), b3 = _mm_sub_epi16(a1, a3);
  // Transpose each tile: v_j holds column j of both tiles.
  const __m128i t0 = _mm_unpacklo_epi16(b0, b1), t1 = _mm_unpackhi_epi16(b0, b1);
  const __m128i t2 = _mm_unpacklo_epi16(b2, b3), t3 = _mm_unpackhi_epi16(b2, b3);
  const __m128i u0 = _mm_unpacklo_epi32(t0, t2), u1 = _mm_unpackhi_epi32(t0, t2);
  const __m128i u2 = _mm_unpacklo_epi32(t1, t3), u3 = _mm_unpackhi_epi32(t1, t3);
  const __m128i v0 = _mm_unpacklo_epi64(u0, u2), v1 = _mm_unpackhi_epi64(u0, u2);
  const __m128i v2 = _mm_unpacklo_epi64(u1, u3), v3 = _mm_unpackhi_epi64(u1, u3);
  const __m128i e0 = _mm_add_epi16(v0, v1), e1 = _mm_sub_epi16(v0, v1);
  const __m128i e2 = _mm_add_epi16(v2, v3), e3 = _mm_sub_epi16(v2, v3);
  return _mm_add_epi16(maxabs16(e0, e2), maxabs16(e1, e3));
}

inline void butterflies(__m128i* v, int len) {
  for (int i = 0; i < 8; i += 2 * len)
    for (int j = i; j < i + len; ++j) {
      const __m128i a = v[j], b = v[j + len];
      v[j] = _mm_add_epi16(a, b);
      v[j + len] = _mm_sub_epi16(a, b);
    }
}
inline void butterflies32(__m128i* v, int len) {
  for (int i = 0; i < 8; i += 2 * len)
    for (int j = i; j < i + len; ++j) {
      const __m128i a = v[j], b = v[j + len];
      v[j] = _mm_add_epi32(a, b);
      v[j + len] = _mm_sub_epi32(a, b);
    }
}
HUX_INLINE void transpose8x8_16(__m128i* r) {
  const __m128i t0 = _mm_unpacklo_epi16(r[0], r[1]), t1 = _mm_unpackhi_epi16(r[0], r[1]);
  const __m128i t2 = _mm_unpacklo_epi16(r[2], r[3]), t3 = _mm_unpackhi_epi16(r[2], r[3]);
  const __m128i t4 = _mm_unpacklo_epi16(r[4], r[5]), t5 = _mm_unpackhi_epi16(r[4], r[5]);
  const __m128i t6 = _mm_unpacklo_epi16(r[6], r[7]), t7 = _mm_unpackhi_epi16(r[6], r[7]);
  const __m128i u0 = _mm_unpacklo_epi32(t0, t2), u1 = _mm_unpackhi_epi32(t0, t2);
  const __m128i u2 = _mm_unpacklo_epi32(t1, t3), u3 = _mm_unpackhi_epi32(t1, t3);
  const __m128i u4 = _mm_unpacklo_epi32(t4, t6), u5 = _mm_unpackhi_epi32(t4, t6);
  const __m128i u6 = _mm_unpacklo_epi32(t5, t7), u7 = _mm_unpackhi_epi32(t5, t7);
  r[0] = _mm_unpacklo_epi64(u0, u4), r[1] = _mm_unpackhi_epi64(u0, u4);
  r[2] = _mm_unpacklo_epi64(u1, u5), r[3] = _mm_unpackhi_epi64(u1, u5);
  r[4] = _mm_unpacklo_epi64(u2, u6), r[5] = _mm_unpackhi_epi64(u2, u6);
  r[6] = _mm_unpacklo_epi64(u3, u7), r[7] = _mm_unpackhi_epi64(u3, u7);
}
HUX_INLINE void transpose4x4_32(__m128i& a, __m128i& b, __m128i& c, __m128i& d) {
  const __m128i t0 = _mm_unpacklo_epi32(a, b), t1 = _mm_unpackhi_epi32(a, b);
  const __m128i t2 = _mm_unpacklo_epi32(c, d), t3 = _mm_unpackhi_epi32(c, d);
  a = _mm_unpacklo_epi64(t0, t2), b = _mm_unpackhi_epi64(t0, t2);
  c = _mm_unpacklo_epi64(t1, t3), d = _mm_unpackhi_epi64(t1, t3);
}

// Current minus prediction rows of W samples in 16-bit lanes (hi only for 16).
template <int W>
HUX_INLINE void diff_rows(__m128i c, __m128i p, __m128i& lo, __m128i& hi) {
  lo = _mm_sub_epi16(lo16(c), lo16(p));
  if constexpr (W == 16) hi = _mm_sub_epi16(hi16(c), hi16(p));
}
template <int W>
HUX_INLINE __m128i square_sum(__m128i c, __m128i p) {
  __m128i lo, hi;
  diff_rows<W>(c, p, lo, hi);
  const __m128i s = _mm_madd_epi16(lo, lo);
  if constexpr (W == 16) return _mm_add_epi32(s, _mm_madd_epi16(hi, hi));
  return s;
}
template <int W>
HUX_INLINE void store_diff(int16_t* d, __m128i lo, __m128i hi) {
  if constexpr (W == 16) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(d), lo);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(d + 8), hi);
  }
  if constexpr (W == 8) _mm_storeu_si128(reinterpret_cast<__m128i*>(d), lo);
  if constexpr (W == 4) _mm_storel_epi64(reinterpret_cast<__m128i*>(d), lo);
}

}  // namespace detail
using namespace detail;

template <int W, int H>
HUX_INLINE int32_t satd(const uint8_t* cur, int32_t cs, const uint8_t* ref, int32_t rs) {
  __m128i acc = _mm_setzero_si128();  // at most 8 tile pairs of 8160 a lane
  if constexpr (W == 4) {
    // Rows y and y + 4 side by side: the two tiles of a 4x8 block, or one
    // tile beside zeros.
    __m128i d[4];
    for (int y = 0; y < 4; ++y) {
      __m128i c = load4(row(cur, cs, y)), r = load4(row(ref, rs, y));
      if constexpr (H == 8) {
        c = _mm_unpacklo_epi32(c, load4(row(cur, cs, y + 4)));
        r = _mm_unpacklo_epi32(r, load4(row(ref, rs, y + 4)));
      }
      d[y] = _mm_sub_epi16(lo16(c), lo16(r));
    }
    acc = satd_8x4(d[0], d[1], d[2], d[3]);
  } else {
    // Rolled: unrolled, the 16-wide bands are interleaved with spills.
#pragma GCC unroll 1
    for (int y = 0; y < H; y += 4) {
      if constexpr (W == 16) {
        __m128i lo[4], hi[4];
        for (int i = 0; i < 4; ++i)
          diff_rows<16>(loadu(row(cur, cs, y + i)), loadu(row(ref, rs, y + i)), lo[i], hi[i]);
        acc = _mm_add_epi16(acc, _mm_add_epi16(satd_8x4(lo[0], lo[1], lo[2], lo[3]), satd_8x4(hi[0], hi[1], hi[2], hi[3])));
      } else {
        const __m128i d0 = diff8(row(cur, cs, y), row(ref, rs, y)), d1 = diff8(row(cur, cs, y + 1), row(ref, rs, y + 1));
        const __m128i d2 = diff8(row(cur, cs, y + 2), row(ref, rs, y + 2)), d3 = diff8(row(cur, cs, y + 3), row(ref, rs, y + 3));
        acc = _mm_add_epi16(acc, satd_8x4(d0, d1, d2, d3));
      }
    }
  }
  return 2 * hsum_u16(acc);
}

template <class T>
HUX_INLINE int32_t sat8x8d(const T* cur, int32_t cs, const T* ref, int32_t rs) {
  if constexpr (sizeof(T) == 1) {
    __m128i r[8];
    for (int y = 0; y < 8; ++y) r[y] = diff8(row(cur, cs, y), row(ref, rs, y));
    butterflies(r, 1);
    butterflies(r, 2);
    butterflies(r, 4);
    transpose8x8_16(r);
    butterflies(r, 1);
    butterflies(r, 2);
    // Each lane adds four magnitudes of at most 64 x 255: below 65536.
    const __m128i m = _mm_add_epi16(_mm_add_epi16(maxabs16(r[0], r[4]), maxabs16(r[1], r[5])),
                                    _mm_add_epi16(maxabs16(r[2], r[6]), maxabs16(r[3], r[7])));
    return 2 * hsum_u16(m);
  } else {
    // Word differences wrap to 16 bits and are widened to 32: the left and
    // right halves of the rows in l and h.
    __m128i l[8], h[8];
    for (int y = 0; y < 8; ++y) {
      const __m128i d = _mm_sub_epi16(loadu(row(cur, cs, y)), loadu(row(ref, rs, y)));
      l[y] = _mm_srai_epi32(_mm_unpacklo_epi16(d, d), 16);
      h[y] = _mm_srai_epi32(_mm_unpackhi_epi16(d, d), 16);
    }
    for (int len = 1; len < 8; len <<= 1) butterflies32(l, len), butterflies32(h, len);
    // Columns 0-3 come from l, 4-7 from h: after the 4x4 transposes, c[j] holds
    // column j of rows 0-3 and e[j] of rows 4-7.
    transpose4x4_32(l[0], l[1], l[2], l[3]);
    transpose4x4_32(l[4], l[5], l[6], l[7]);
    transpose4x4_32(h[0], h[1], h[2], h[3]);
    transpose4x4_32(h[4], h[5], h[6], h[7]);
    __m128i c[8] = {l[0], l[1], l[2], l[3], h[0], h[1], h[2], h[3]};
    __m128i e[8] = {l[4], l[5], l[6], l[7], h[4], h[5], h[6], h[7]};
    for (int len = 1; len < 8; len <<= 1) butterflies32(c, len), butterflies32(e, len);
    __m128i acc = _mm_setzero_si128();
    for (int j = 0; j < 8; ++j) acc = _mm_add_epi32(acc, _mm_add_epi32(abs32(c[j]), abs32(e[j])));
    return hsum32(acc);
  }
}

template <int W, int H, int Mode>
HUX_INLINE int32_t ssd(const uint8_t* cur, int32_t cs, const uint8_t* ref, int32_t rs) {
  Rows<W, Mode, 0, 1> p(ref, rs);
  __m128i acc = _mm_setzero_si128();
#pragma GCC unroll 4
  for (int y = 0; y < H; ++y) acc = _mm_add_epi32(acc, square_sum<W>(ldw<W>(row(cur, cs, y)), p.next(y)));
  return hsum32(acc);
}

template <int ModeF, int ModeB>
HUX_INLINE int32_t sqr_diff_b(const uint8_t* cur, int32_t cs, const uint8_t* f, int32_t fs, const uint8_t* b,
                              int32_t bs) {
  Rows<16, ModeF, 0, 1> pf(f, fs);
  Rows<16, ModeB, 0, 1> pb(b, bs);
  __m128i acc = _mm_setzero_si128();
#pragma GCC unroll 4
  for (int y = 0; y < 16; ++y) acc = _mm_add_epi32(acc, square_sum<16>(loadu(row(cur, cs, y)), _mm_avg_epu8(pf.next(y), pb.next(y))));
  return hsum32(acc);
}

template <int H, int Mode>
HUX_INLINE void var_mean_diff(const uint8_t* cur, int32_t cs, const uint8_t* ref, int32_t rs, int32_t* var,
                              int32_t* mean) {
  Rows<16, Mode, 0, 1> p(ref, rs);
  const __m128i one = _mm_set1_epi16(1);
  for (int band = 0; band < H / 8; ++band) {
    __m128i sl = _mm_setzero_si128(), sh = sl, ql = sl, qh = sl;
    for (int y = 8 * band; y < 8 * band + 8; ++y) {
      __m128i lo, hi;
      diff_rows<16>(loadu(row(cur, cs, y)), p.next(y), lo, hi);
      sl = _mm_add_epi16(sl, lo);
      sh = _mm_add_epi16(sh, hi);
      ql = _mm_add_epi32(ql, _mm_madd_epi16(lo, lo));
      qh = _mm_add_epi32(qh, _mm_madd_epi16(hi, hi));
    }
    const int32_t s[2] = {hsum32(_mm_madd_epi16(sl, one)), hsum32(_mm_madd_epi16(sh, one))};
    const int32_t q[2] = {hsum32(ql), hsum32(qh)};
    for (int i = 0; i < 2; ++i) {
      var[2 * band + i] = q[i] - ((s[i] * s[i]) >> 6);
      mean[2 * band + i] = (s[i] + 32) >> 6;
    }
  }
}

HUX_INLINE uint32_t variance16x16(const uint8_t* src, int32_t step) {
  // Independent accumulators for the two halves keep the additions from
  // forming one chain.
  const __m128i z = _mm_setzero_si128();
  __m128i s = z, q0 = z, q1 = z;
  // Unrolled in full, the loop is scheduled with spills.
#pragma GCC unroll 4
  for (int y = 0; y < 16; ++y) {
    const __m128i v = loadu(src);
    src = row(src, step, 1);
    s = _mm_add_epi32(s, _mm_sad_epu8(v, z));
    const __m128i l = lo16(v), h = hi16(v);
    q0 = _mm_add_epi32(q0, _mm_madd_epi16(l, l));
    q1 = _mm_add_epi32(q1, _mm_madd_epi16(h, h));
  }
  const uint32_t sum = static_cast<uint32_t>(hsum64(s));
  return static_cast<uint32_t>(hsum32(_mm_add_epi32(q0, q1))) - ((sum * sum) >> 8);
}

template <class T>
HUX_INLINE void var_sum8x8(const T* src, int32_t step, int32_t* var, int32_t* sum) {
  const __m128i z = _mm_setzero_si128();
  int32_t s;
  int64_t q;
  if constexpr (sizeof(T) == 1) {
    __m128i sv = z, qv = z;
    for (int y = 0; y < 8; ++y) {
      const __m128i v = load8(row(src, step, y));
      sv = _mm_add_epi32(sv, _mm_sad_epu8(v, z));
      qv = _mm_add_epi32(qv, _mm_madd_epi16(lo16(v), lo16(v)));
    }
    s = hsum64(sv);
    q = hsum32(qv);
  } else {
    // A pair of squares reaches 2^31 (two -32768s): read as unsigned and
    // summed in 64-bit lanes.
    __m128i sv = z, qv = z;
    const __m128i one = _mm_set1_epi16(1);
    for (int y = 0; y < 8; ++y) {
      const __m128i v = loadu(row(src, step, y));
      sv = _mm_add_epi32(sv, _mm_madd_epi16(v, one));
      const __m128i sq = _mm_madd_epi16(v, v);
      qv = _mm_add_epi64(qv, _mm_add_epi64(_mm_unpacklo_epi32(sq, z), _mm_unpackhi_epi32(sq, z)));
    }
    s = hsum32(sv);
    alignas(16) int64_t lanes[2];
    _mm_store_si128(reinterpret_cast<__m128i*>(lanes), qv);
    q = lanes[0] + lanes[1];
  }
  *var = float_variance64(q, s);
  *sum = s;
}

template <int N>
HUX_INLINE int32_t mean_abs_dev(const uint8_t* src, int32_t step) {
  const __m128i z = _mm_setzero_si128();
  __m128i r[N == 16 ? 16 : 4];
  __m128i s = z;
  if constexpr (N == 16) {
    for (int y = 0; y < 16; ++y) s = _mm_add_epi32(s, _mm_sad_epu8(r[y] = loadu(row(src, step, y)), z));
  } else {
    for (int y = 0; y < 8; y += 2)
      s = _mm_add_epi32(s, _mm_sad_epu8(r[y / 2] = _mm_unpacklo_epi64(load8(row(src, step, y)), load8(row(src, step, y + 1))), z));
  }
  const __m128i mean = _mm_set1_epi8(static_cast<char>((hsum64(s) + N * N / 2) / (N * N)));
  __m128i d = z;
  for (const __m128i& v : r) d = _mm_add_epi32(d, _mm_sad_epu8(v, mean));
  return hsum64(d);
}

HUX_INLINE int32_t count_zeros(const int16_t* src) {
  const __m128i z = _mm_setzero_si128();
  __m128i n = z;  // minus the count per lane
  for (int i = 0; i < 64; i += 8) n = _mm_add_epi16(n, _mm_cmpeq_epi16(loadu(src + i), z));
  return -hsum32(_mm_madd_epi16(n, _mm_set1_epi16(1)));
}

template <class T>
HUX_INLINE uint8_t edges(const T* src, int32_t step, uint32_t thr, uint32_t cnt) {
  int32_t n = 0;
  if constexpr (sizeof(T) == 1) {
    const __m128i t = _mm_set1_epi8(static_cast<char>(thr & 0xFF)), cap = _mm_set1_epi8(127);
    const int32_t k = static_cast<int32_t>(cnt & 0xFF);
    __m128i p = loadu(src);
    for (int y = 0; y < 15; ++y) {
      const __m128i q = loadu(row(src, step, y + 1)), right = _mm_srli_si128(p, 1);
      const __m128i h = _mm_min_epu8(_mm_or_si128(_mm_subs_epu8(p, right), _mm_subs_epu8(right, p)), cap);
      const __m128i v = _mm_min_epu8(_mm_or_si128(_mm_subs_epu8(p, q), _mm_subs_epu8(q, p)), cap);
      const int m = _mm_movemask_epi8(_mm_or_si128(_mm_cmpgt_epi8(h, t), _mm_cmpgt_epi8(v, t)));
      n += __builtin_popcount(static_cast<unsigned>(m) & 0x7FFFu);
      if (n > k) return 1;
      p = q;
    }
  } else {
    // Unsigned comparisons through a bias of 0x8000.
    const __m128i bias = _mm_set1_epi16(-32768);
    const __m128i t = _mm_xor_si128(_mm_set1_epi16(static_cast<int16_t>(thr & 0xFFFF)), bias);
    const int32_t k = static_cast<int32_t>(cnt & 0xFFFF);
    auto ad = [](__m128i a, __m128i b) { return _mm_or_si128(_mm_subs_epu16(a, b), _mm_subs_epu16(b, a)); };
    auto over = [&](__m128i d) { return _mm_cmpgt_epi16(_mm_xor_si128(d, bias), t); };
    __m128i pl = loadu(src), ph = loadu(src + 8);
    for (int y = 0; y < 15; ++y) {
      const T* r = row(src, step, y + 1);
      const __m128i ql = loadu(r), qh = loadu(r + 8);
      const __m128i rl = _mm_or_si128(_mm_srli_si128(pl, 2), _mm_slli_si128(ph, 14)), rh = _mm_srli_si128(ph, 2);
      const __m128i ml = _mm_or_si128(over(ad(pl, rl)), over(ad(pl, ql)));
      const __m128i mh = _mm_or_si128(over(ad(ph, rh)), over(ad(ph, qh)));
      const int m = _mm_movemask_epi8(_mm_packs_epi16(ml, mh));
      n += __builtin_popcount(static_cast<unsigned>(m) & 0x7FFFu);
      if (n > k) return 1;
      pl = ql, ph = qh;
    }
  }
  return 0;
}

template <int W, int H, class T>
HUX_INLINE void sub(const T* cur, int32_t cs, const T* ref, int32_t rs, int16_t* diff, int32_t ds) {
  for (int y = 0; y < H; ++y) {
    const T* c = row(cur, cs, y);
    const T* r = row(ref, rs, y);
    int16_t* d = row(diff, ds, y);
    if constexpr (sizeof(T) == 2) {
      if constexpr (W == 8) _mm_storeu_si128(reinterpret_cast<__m128i*>(d), _mm_sub_epi16(loadu(c), loadu(r)));
      else _mm_storel_epi64(reinterpret_cast<__m128i*>(d), _mm_sub_epi16(load8(c), load8(r)));
    } else {
      __m128i lo, hi;
      diff_rows<W>(ldw<W>(c), ldw<W>(r), lo, hi);
      store_diff<W>(d, lo, hi);
    }
  }
}

template <int W, int Mode, int Round, bool Pred>
HUX_INLINE void get_diff(const uint8_t* cur, int32_t cs, const uint8_t* ref, int32_t rs, int16_t* diff, int32_t ds,
                         int16_t* pred, int32_t ps, int h) {
  Rows<W, Mode, Round, 1> p(ref, rs);
  for (int y = 0; y < h; ++y) {
    const __m128i pv = p.next(y);
    __m128i lo, hi;
    diff_rows<W>(ldw<W>(row(cur, cs, y)), pv, lo, hi);
    store_diff<W>(row(diff, ds, y), lo, hi);
    if constexpr (Pred) store_diff<W>(row(pred, ps, y), lo16(pv), hi16(pv));
  }
}

template <int W, int ModeF, int ModeB, int Round>
HUX_INLINE void get_diff_b(const uint8_t* cur, int32_t cs, const uint8_t* f, int32_t fs, const uint8_t* b, int32_t bs,
                           int16_t* diff, int32_t ds, int h) {
  Rows<W, ModeF, Round, 1> pf(f, fs);
  Rows<W, ModeB, Round, 1> pb(b, bs);
  for (int y = 0; y < h; ++y) {
    __m128i lo, hi;
    diff_rows<W>(ldw<W>(row(cur, cs, y)), _mm_avg_epu8(pf.next(y), pb.next(y)), lo, hi);
    store_diff<W>(row(diff, ds, y), lo, hi);
  }
}

template <int N, class T, class S>
HUX_INLINE void sums_diff(const T* cur, int32_t cs, const T* pred, int32_t ps, S* sums, int16_t* diff) {
  if constexpr (sizeof(T) > 1) cs &= ~1, ps &= ~1;
  const __m128i one = _mm_set1_epi16(1);
  for (int by = 0; by < N / 4; ++by) {
    // acc[j]: 32-bit pair sums of the differences in columns 8j .. 8j+7.
    __m128i acc[N / 8];
    for (auto& a : acc) a = _mm_setzero_si128();
    for (int y = 0; y < 4; ++y) {
      const T* c = row(cur, cs, 4 * by + y);
      const T* p = row(pred, ps, 4 * by + y);
      for (int j = 0; j < N / 8; ++j) {
        __m128i d;
        if constexpr (sizeof(T) == 1) d = diff8(c + 8 * j, p + 8 * j);
        else d = _mm_sub_epi16(loadu(c + 8 * j), loadu(p + 8 * j));
        acc[j] = _mm_add_epi32(acc[j], _mm_madd_epi16(d, one));
        if (diff) {
          int16_t* o = diff + 16 * (by * (N / 4) + 2 * j) + 4 * y;
          _mm_storel_epi64(reinterpret_cast<__m128i*>(o), d);
          _mm_storel_epi64(reinterpret_cast<__m128i*>(o + 16), _mm_srli_si128(d, 8));
        }
      }
    }
    for (int j = 0; j < N / 8; ++j) {
      const __m128i s = _mm_add_epi32(acc[j], _mm_srli_si128(acc[j], 4));  // lanes 0 and 2
      sums[by * (N / 4) + 2 * j] = static_cast<S>(_mm_cvtsi128_si32(s));
      sums[by * (N / 4) + 2 * j + 1] = static_cast<S>(_mm_cvtsi128_si32(_mm_srli_si128(s, 8)));
    }
  }
}

HUX_ME_METRIC_TABLES

}  // namespace hux::me::sse2
