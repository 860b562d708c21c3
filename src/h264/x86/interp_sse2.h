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

namespace hux::h264::sse2 {
namespace ip {

// Keeps the compiler from folding row-by-row pointer steps back into
// scaled multiples of the step, which would cost saved registers.
template <class T>
HUX_INLINE void opaque(T*& p) {
  asm("" : "+r"(p));
}

inline __m128i loadu(const void* p) { return _mm_loadu_si128(static_cast<const __m128i*>(p)); }
inline __m128i load8(const void* p) { return _mm_loadl_epi64(static_cast<const __m128i*>(p)); }
inline __m128i load4(const void* p) { return _mm_cvtsi32_si128(hux::load<int32_t>(p)); }

// The 16 bytes of one unit whose first row starts at p.
template <int W>
HUX_INLINE __m128i unit(const uint8_t* p, intptr_t s) {
  if constexpr (W == 16) return loadu(p);
  else if constexpr (W == 8) return _mm_unpacklo_epi64(load8(p), load8(p + s));
  else
    return _mm_unpacklo_epi64(_mm_unpacklo_epi32(load4(p), load4(p + s)),
                              _mm_unpacklo_epi32(load4(p + 2 * s), load4(p + 3 * s)));
}
template <int W>
HUX_INLINE void store_unit(uint8_t* d, intptr_t s, __m128i v) {
  if constexpr (W == 16) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(d), v);
  } else if constexpr (W == 8) {
    _mm_storel_epi64(reinterpret_cast<__m128i*>(d), v);
    _mm_storeh_pd(reinterpret_cast<double*>(d + s), _mm_castsi128_pd(v));
  } else {
    hux::store<int32_t>(d, _mm_cvtsi128_si32(v));
    hux::store<int32_t>(d + s, _mm_cvtsi128_si32(_mm_srli_si128(v, 4)));
    hux::store<int32_t>(d + 2 * s, _mm_cvtsi128_si32(_mm_srli_si128(v, 8)));
    hux::store<int32_t>(d + 3 * s, _mm_cvtsi128_si32(_mm_srli_si128(v, 12)));
  }
}

struct V2 {
  __m128i lo, hi;
};
HUX_INLINE V2 widen(__m128i v) {
  const __m128i z = _mm_setzero_si128();
  return {_mm_unpacklo_epi8(v, z), _mm_unpackhi_epi8(v, z)};
}
HUX_INLINE __m128i tap6(__m128i a, __m128i b, __m128i c) {
  // 20c - 5b + a as ((c << 2) - b) * 5 + a
  const __m128i t = _mm_sub_epi16(_mm_slli_epi16(c, 2), b);
  return _mm_add_epi16(_mm_add_epi16(t, _mm_slli_epi16(t, 2)), a);
}
// The 6-tap sums of a unit from the taps at p + k * d, k = -2 .. 3.
template <int W>
HUX_INLINE V2 sum6(const uint8_t* p, intptr_t s, intptr_t d) {
  const V2 a0 = widen(unit<W>(p - 2 * d, s)), a1 = widen(unit<W>(p + 3 * d, s));
  const V2 b0 = widen(unit<W>(p - d, s)), b1 = widen(unit<W>(p + 2 * d, s));
  const V2 c0 = widen(unit<W>(p, s)), c1 = widen(unit<W>(p + d, s));
  return {tap6(_mm_add_epi16(a0.lo, a1.lo), _mm_add_epi16(b0.lo, b1.lo), _mm_add_epi16(c0.lo, c1.lo)),
          tap6(_mm_add_epi16(a0.hi, a1.hi), _mm_add_epi16(b0.hi, b1.hi), _mm_add_epi16(c0.hi, c1.hi))};
}
// (sum + 16) >> 5 clamped to 0..255, 16 bytes.
HUX_INLINE __m128i half(V2 v) {
  const __m128i r = _mm_set1_epi16(16);
  return _mm_packus_epi16(_mm_srai_epi16(_mm_add_epi16(v.lo, r), 5), _mm_srai_epi16(_mm_add_epi16(v.hi, r), 5));
}
template <int W>
HUX_INLINE __m128i hhalf(const uint8_t* p, intptr_t s) {
  return half(sum6<W>(p, s, 1));
}
template <int W>
HUX_INLINE __m128i vhalf(const uint8_t* p, intptr_t s) {
  return half(sum6<W>(p, s, s));
}

// Centre from the horizontal sums of six rows, 8 lanes.
HUX_INLINE __m128i centre(__m128i t0, __m128i t1, __m128i t2, __m128i t3, __m128i t4, __m128i t5) {
  const __m128i a = _mm_add_epi16(t0, t5), b = _mm_add_epi16(t1, t4), c = _mm_add_epi16(t2, t3);
  const __m128i e = _mm_adds_epi16(_mm_sub_epi16(_mm_srai_epi16(_mm_sub_epi16(a, b), 2), b), c);
  const __m128i x = _mm_add_epi16(_mm_srai_epi16(e, 2), c);
  return _mm_srai_epi16(_mm_add_epi16(x, _mm_set1_epi16(32)), 6);
}

// Horizontal 6-tap sums of rows -2 .. h+2 into tmp (W samples a row,
// contiguous). h + 5 rows: whole units, then one row on its own.
template <int W>
HUX_INLINE void centre_pass1(const uint8_t* p, intptr_t s, int16_t* tmp, int h) {
  constexpr int R = 16 / W;
  const uint8_t* q = p - 2 * s;
  int i = 0;
  for (; i + R <= h + 5; i += R, q += R * s, tmp += 16) {
    const V2 v = sum6<W>(q, s, 1);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(tmp), v.lo);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(tmp + 8), v.hi);
  }
  if constexpr (W < 16) {  // the last row
    const __m128i z = _mm_setzero_si128();
    auto ld = [&](int k) { return _mm_unpacklo_epi8(W == 8 ? load8(q + k) : load4(q + k), z); };
    const __m128i v = tap6(_mm_add_epi16(ld(-2), ld(3)), _mm_add_epi16(ld(-1), ld(2)), _mm_add_epi16(ld(0), ld(1)));
    if constexpr (W == 8) _mm_storeu_si128(reinterpret_cast<__m128i*>(tmp), v);
    else _mm_storel_epi64(reinterpret_cast<__m128i*>(tmp), v);
  }
}

// Vertical half samples of 8- and 16-wide blocks, in strips of 8 columns
// with the widened rows held in a sliding window, two rows a step; with
// DY 1 or 3 averaged with the integer row above or below (n, d).
template <int W, int DY>
HUX_INLINE void vertical(const uint8_t* src, intptr_t s, uint8_t* dst, intptr_t d, int h) {
  const __m128i z = _mm_setzero_si128();
  for (int c = 0; c < W; c += 8) {
    const uint8_t* p = src + c - 2 * s;
    uint8_t* o = dst + c;
    auto ld = [&]() {
      const __m128i v = _mm_unpacklo_epi8(load8(p), z);
      p += s;
      opaque(p);
      return v;
    };
    // Two rows from the window r0 .. r6 (rows y - 2 .. y + 4).
    auto two = [&](__m128i r0, __m128i r1, __m128i r2, __m128i r3, __m128i r4, __m128i r5, __m128i r6) {
      __m128i v = half({tap6(_mm_add_epi16(r0, r5), _mm_add_epi16(r1, r4), _mm_add_epi16(r2, r3)),
                        tap6(_mm_add_epi16(r1, r6), _mm_add_epi16(r2, r5), _mm_add_epi16(r3, r4))});
      if constexpr (DY == 1) v = _mm_avg_epu8(v, _mm_packus_epi16(r2, r3));
      if constexpr (DY == 3) v = _mm_avg_epu8(v, _mm_packus_epi16(r3, r4));
      _mm_storel_epi64(reinterpret_cast<__m128i*>(o), v);
      o += d;
      _mm_storeh_pd(reinterpret_cast<double*>(o), _mm_castsi128_pd(v));
      o += d;
      opaque(o);
    };
    __m128i r0 = ld(), r1 = ld(), r2 = ld(), r3 = ld(), r4 = ld();
    for (int y = 0; y < h; y += 4) {  // heights are multiples of 4
      const __m128i r5 = ld(), r6 = ld(), r7 = ld(), r8 = ld();
      two(r0, r1, r2, r3, r4, r5, r6);
      two(r2, r3, r4, r5, r6, r7, r8);
      r0 = r4, r1 = r5, r2 = r6, r3 = r7, r4 = r8;
    }
  }
}

template <int W>
HUX_INLINE void copy(const uint8_t* src, intptr_t s, uint8_t* dst, intptr_t d, int h) {
  // Pointers step row by row: no registers to save for scaled steps.
  for (int y = 0; y < h; y += 4)
    for (int i = 0; i < 4; ++i, src += s, dst += d, opaque(src), opaque(dst)) {
      if constexpr (W == 16) _mm_storeu_si128(reinterpret_cast<__m128i*>(dst), loadu(src));
      else if constexpr (W == 8) _mm_storel_epi64(reinterpret_cast<__m128i*>(dst), load8(src));
      else hux::store<int32_t>(dst, hux::load<int32_t>(src));
    }
}

}  // namespace ip

// Luma kernel for one quarter position and width class.
template <int W, int DX, int DY>
int32_t luma(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, int32_t height) {
  using namespace ip;
  constexpr int R = 16 / W;
  const intptr_t s = srcStep, d = dstStep;
  if constexpr ((DX == 2 && DY != 0) || (DY == 2 && DX != 0)) {
    alignas(16) int16_t tmp[W * (16 + 5) + 16];
    alignas(16) uint8_t vh[W * 16];
    for (int y0 = 0; y0 < height; y0 += 16) {  // in bands of at most 16 rows
      const int h = std::min(16, height - y0);
      const uint8_t* p = src + y0 * s;
      uint8_t* o = dst + y0 * d;
      centre_pass1<W>(p, s, tmp, h);
      if constexpr ((DX == 1 || DX == 3) && W > 4) vertical<W, 2>(p + (DX == 3), s, vh, W, h);
      for (int y = 0; y < h; y += R, p += R * s, o += R * d) {
        const int16_t* t = tmp + W * y;
        auto tk = [&](int k, int g) { return loadu(t + W * k + 8 * g); };
        auto row = [&](int g) { return centre(tk(0, g), tk(1, g), tk(2, g), tk(3, g), tk(4, g), tk(5, g)); };
        __m128i j = _mm_packus_epi16(row(0), row(1));
        if constexpr (DY == 1 || DY == 3) {  // f, q: with the horizontal half of row y or y + 1
          constexpr int k = DY == 1 ? 2 : 3;
          j = _mm_avg_epu8(j, half({tk(k, 0), tk(k, 1)}));
        } else if constexpr (DX == 1 || DX == 3) {  // i, k: with the vertical half of column x or x + 1
          if constexpr (W == 4) j = _mm_avg_epu8(j, vhalf<W>(p + (DX == 3), s));
          else j = _mm_avg_epu8(j, unit<W>(vh + W * y, W));
        }
        store_unit<W>(o, d, j);
      }
    }
  } else if constexpr (DX == 0 && DY == 0) {
    copy<W>(src, s, dst, d, height);
  } else if constexpr (DX == 0 && W > 4) {
    vertical<W, DY>(src, s, dst, d, height);
  } else {
    for (int y = 0; y < height; y += R, src += R * s, dst += R * d) {
      __m128i v;
      if constexpr (DX == 0 && DY == 0) v = unit<W>(src, s);
      else if constexpr (DY == 0) {
        v = hhalf<W>(src, s);
        if constexpr (DX != 2) v = _mm_avg_epu8(v, unit<W>(src + (DX == 3), s));
      } else if constexpr (DX == 0) {
        v = vhalf<W>(src, s);
        if constexpr (DY != 2) v = _mm_avg_epu8(v, unit<W>(src + (DY == 3) * s, s));
      } else {  // e, g, p, r: a horizontal and a vertical half
        v = _mm_avg_epu8(hhalf<W>(src + (DY == 3) * s, s), vhalf<W>(src + (DX == 3), s));
      }
      store_unit<W>(dst, d, v);
    }
  }
  return 0;
}

// ------------------------------------------------------------ chroma

namespace ip {
// Rows y and y + 1 of a chroma block, W bytes each, packed.
template <int W>
HUX_INLINE __m128i rows2(const uint8_t* p, intptr_t s) {
  if constexpr (W == 8) return _mm_unpacklo_epi64(load8(p), load8(p + s));
  else if constexpr (W == 4) return _mm_unpacklo_epi32(load4(p), load4(p + s));
  else return _mm_unpacklo_epi16(_mm_cvtsi32_si128(hux::load<uint16_t>(p)), _mm_cvtsi32_si128(hux::load<uint16_t>(p + s)));
}
template <int W>
HUX_INLINE void store_rows2(uint8_t* d, intptr_t s, __m128i v) {
  if constexpr (W == 8) {
    _mm_storel_epi64(reinterpret_cast<__m128i*>(d), v);
    _mm_storeh_pd(reinterpret_cast<double*>(d + s), _mm_castsi128_pd(v));
  } else if constexpr (W == 4) {
    hux::store<int32_t>(d, _mm_cvtsi128_si32(v));
    hux::store<int32_t>(d + s, _mm_cvtsi128_si32(_mm_srli_si128(v, 4)));
  } else {
    const uint32_t b = static_cast<uint32_t>(_mm_cvtsi128_si32(v));
    hux::store<uint16_t>(d, static_cast<uint16_t>(b));
    hux::store<uint16_t>(d + s, static_cast<uint16_t>(b >> 16));
  }
}
// (wa * a + wb * b + r) >> n on 8 byte lanes widened.
HUX_INLINE __m128i blend(__m128i a, __m128i b, __m128i wa, __m128i wb, __m128i r) {
  return _mm_add_epi16(_mm_add_epi16(_mm_mullo_epi16(a, wa), _mm_mullo_epi16(b, wb)), r);
}
}  // namespace ip

template <int W, int Case>
int32_t chroma(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, int32_t dx, int32_t dy,
               int32_t height) {
  using namespace ip;
  const intptr_t s = srcStep, d = dstStep;
  const __m128i z = _mm_setzero_si128();
  if constexpr (Case == 0) {
    for (int y = 0; y < height; y += 2, src += 2 * s, dst += 2 * d) store_rows2<W>(dst, d, rows2<W>(src, s));
  } else if constexpr (Case != 3) {
    // One direction: ((8 - f) * A + f * B + 4) >> 3.
    const int f = Case == 1 ? dx : dy;
    const intptr_t o = Case == 1 ? 1 : s;
    const __m128i wa = _mm_set1_epi16(static_cast<int16_t>(8 - f)), wb = _mm_set1_epi16(static_cast<int16_t>(f));
    const __m128i r = _mm_set1_epi16(4);
    for (int y = 0; y < height; y += 2, src += 2 * s, dst += 2 * d) {
      const __m128i a = rows2<W>(src, s), b = rows2<W>(src + o, s);
      __m128i lo = _mm_srli_epi16(blend(_mm_unpacklo_epi8(a, z), _mm_unpacklo_epi8(b, z), wa, wb, r), 3), hi = z;
      if constexpr (W == 8) hi = _mm_srli_epi16(blend(_mm_unpackhi_epi8(a, z), _mm_unpackhi_epi8(b, z), wa, wb, r), 3);
      store_rows2<W>(dst, d, _mm_packus_epi16(lo, hi));
    }
  } else {
    // Both: rows filtered horizontally (at most 8 * 255), then vertically.
    const __m128i wa = _mm_set1_epi16(static_cast<int16_t>(8 - dx)), wb = _mm_set1_epi16(static_cast<int16_t>(dx));
    const __m128i va = _mm_set1_epi16(static_cast<int16_t>(8 - dy)), vb = _mm_set1_epi16(static_cast<int16_t>(dy));
    const __m128i r = _mm_set1_epi16(32);
    if constexpr (W == 8) {
      auto hrow = [&](const uint8_t* p) {
        return blend(_mm_unpacklo_epi8(load8(p), z), _mm_unpacklo_epi8(load8(p + 1), z), wa, wb, z);
      };
      __m128i h0 = hrow(src);
      for (int y = 0; y < height; y += 2, src += 2 * s, dst += 2 * d) {
        const __m128i h1 = hrow(src + s), h2 = hrow(src + 2 * s);
        const __m128i o0 = _mm_srli_epi16(blend(h0, h1, va, vb, r), 6), o1 = _mm_srli_epi16(blend(h1, h2, va, vb, r), 6);
        store_rows2<W>(dst, d, _mm_packus_epi16(o0, o1));
        h0 = h2;
      }
    } else {
      auto hrows = [&](const uint8_t* p) {
        return blend(_mm_unpacklo_epi8(rows2<W>(p, s), z), _mm_unpacklo_epi8(rows2<W>(p + 1, s), z), wa, wb, z);
      };
      for (int y = 0; y < height; y += 2, src += 2 * s, dst += 2 * d) {
        const __m128i o = _mm_srli_epi16(blend(hrows(src), hrows(src + s), va, vb, r), 6);
        store_rows2<W>(dst, d, _mm_packus_epi16(o, z));
      }
    }
  }
  return 0;
}

// ------------------------------------------------------------ averaging

// Any width: 16, 8 and 4 bytes at a time, then single bytes, so nothing
// beyond the width is touched.
inline int32_t average(const uint8_t* a, int32_t aStep, const uint8_t* b, int32_t bStep, uint8_t* dst,
                       int32_t dstStep, int32_t width, int32_t height) {
  using namespace ip;
  for (int y = 0; y < height; ++y, a += aStep, b += bStep, dst += dstStep) {
    int x = 0;
    for (; x + 16 <= width; x += 16)
      _mm_storeu_si128(reinterpret_cast<__m128i*>(dst + x), _mm_avg_epu8(loadu(a + x), loadu(b + x)));
    if (x + 8 <= width) {
      _mm_storel_epi64(reinterpret_cast<__m128i*>(dst + x), _mm_avg_epu8(load8(a + x), load8(b + x)));
      x += 8;
    }
    if (x + 4 <= width) {
      hux::store<int32_t>(dst + x, _mm_cvtsi128_si32(_mm_avg_epu8(load4(a + x), load4(b + x))));
      x += 4;
    }
    for (; x < width; ++x) dst[x] = static_cast<uint8_t>((a[x] + b[x] + 1) >> 1);
  }
  return 0;
}

}  // namespace hux::h264::sse2
