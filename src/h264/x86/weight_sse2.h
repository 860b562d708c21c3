// SSE2 weighted prediction, inline into the exports. Samples are widened to
// 16-bit lanes and multiplied with pmullw; the kernel first proves, from the
// weights, shift and offset alone, that the 16-bit lanes give the exact
// result for every sample value, and otherwise hands the block to the
// reference arithmetic. Two exact 16-bit schemes exist:
//
//  - folded: (S + c) >> s with c = 2^(s-1) + (o << s) and a saturating add.
//    It needs the weighted sum S and c each within 16 bits. When the add
//    saturates downwards the true result is negative (clamps to 0) as the
//    lane's is; upwards, the lane gives 32767 >> s, which is at least 255
//    only while s <= 7, so for larger shifts S + c must not saturate at all.
//    (Folding the offset at s = 8 without that bound is exactly what goes
//    wrong when logWD is 7 and weights and offsets are large.)
//  - split: ((S + 2^(s-1)) >> s) + o, exact while S + 2^(s-1) fits 16 bits
//    and o fits 16 bits (the last add saturates, and a saturated lane is far
//    outside 0..255 either way).
//
// Every legal H.264 parameter set takes one of the two (the folded one except
// for some at logWD 7), so the reference path is only for values outside the
// standard's ranges.
#pragma once

#include <emmintrin.h>

#include "h264/weight_kernels.h"

namespace hux::h264::sse2 {
namespace wdetail {

enum Scheme { kFolded, kSplit, kScalar };

// lo..hi bounds the weighted sum over all 8-bit samples.
inline Scheme scheme(int64_t lo, int64_t hi, uint32_t s, int32_t o, int32_t& c) {
  if (s > 15 || lo < -32768 || hi > 32767) return kScalar;
  const int64_t r = s ? int64_t{1} << (s - 1) : 0, folded = r + static_cast<int64_t>(o) * (int64_t{1} << s);
  if (folded >= -32768 && folded <= 32767 && (s <= 7 || hi + folded <= 32767)) {
    c = static_cast<int32_t>(folded);
    return kFolded;
  }
  c = static_cast<int32_t>(r);
  return hi + r <= 32767 && o >= -32768 && o <= 32767 ? kSplit : kScalar;
}

struct Tail {
  __m128i c, o, s;
  template <Scheme K>
  HUX_INLINE __m128i apply(__m128i t) const {
    if constexpr (K == kFolded) return _mm_sra_epi16(_mm_adds_epi16(t, c), s);
    else return _mm_adds_epi16(_mm_sra_epi16(_mm_add_epi16(t, c), s), o);
  }
};

// A group of rows as 16-bit words in two registers (lo, hi): one row of 16
// samples, or two rows of 8; or in one register (lo): two rows of 4 or 2.
template <int W>
struct Rows {
  static constexpr int n = W == 16 ? 1 : 2;
  static constexpr bool wide = W >= 8;
  static HUX_INLINE void load(const uint8_t* p, int32_t step, __m128i& lo, __m128i& hi) {
    const __m128i z = _mm_setzero_si128();
    if constexpr (W == 16) {
      const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
      lo = _mm_unpacklo_epi8(v, z), hi = _mm_unpackhi_epi8(v, z);
    }
    if constexpr (W == 8) {
      lo = _mm_unpacklo_epi8(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)), z);
      hi = _mm_unpacklo_epi8(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p + step)), z);
    }
    if constexpr (W == 4)
      lo = _mm_unpacklo_epi8(_mm_unpacklo_epi32(_mm_cvtsi32_si128(hux::load<int32_t>(p)),
                                                _mm_cvtsi32_si128(hux::load<int32_t>(p + step))), z);
    if constexpr (W == 2)
      lo = _mm_unpacklo_epi8(
          _mm_cvtsi32_si128(hux::load<uint16_t>(p) | static_cast<int32_t>(hux::load<uint16_t>(p + step)) << 16), z);
  }
  static HUX_INLINE void store(uint8_t* p, int32_t step, __m128i v) {
    if constexpr (W == 16) _mm_storeu_si128(reinterpret_cast<__m128i*>(p), v);
    if constexpr (W == 8) {
      _mm_storel_epi64(reinterpret_cast<__m128i*>(p), v);
      _mm_storeh_pi(reinterpret_cast<__m64*>(p + step), _mm_castsi128_ps(v));
    }
    if constexpr (W == 4) {
      hux::store<int32_t>(p, _mm_cvtsi128_si32(v));
      hux::store<int32_t>(p + step, _mm_cvtsi128_si32(_mm_srli_si128(v, 4)));
    }
    if constexpr (W == 2) {
      const uint32_t two = static_cast<uint32_t>(_mm_cvtsi128_si32(v));
      hux::store<uint16_t>(p, static_cast<uint16_t>(two));
      hux::store<uint16_t>(p + step, static_cast<uint16_t>(two >> 16));
    }
  }
};

// Both are unrolled completely when h is a constant.
template <int W, Scheme K>
HUX_INLINE void uni_rows(uint8_t* p, int32_t step, int h, __m128i w, const Tail& t) {
  using R = Rows<W>;
#pragma GCC unroll 16
  for (int y = 0; y < h; y += R::n) {
    __m128i lo, hi;
    R::load(p + static_cast<intptr_t>(step) * y, step, lo, hi);
    lo = t.apply<K>(_mm_mullo_epi16(lo, w));
    if constexpr (R::wide) hi = t.apply<K>(_mm_mullo_epi16(hi, w));
    R::store(p + static_cast<intptr_t>(step) * y, step, _mm_packus_epi16(lo, R::wide ? hi : lo));
  }
}

template <int W, Scheme K>
HUX_INLINE void bi_rows(const uint8_t* a, int32_t sa, const uint8_t* b, int32_t sb, uint8_t* d, int32_t sd, int h,
                        __m128i w1, __m128i w2, const Tail& t) {
  using R = Rows<W>;
#pragma GCC unroll 16
  for (int y = 0; y < h; y += R::n) {
    __m128i alo, ahi, blo, bhi;
    R::load(a + static_cast<intptr_t>(sa) * y, sa, alo, ahi);
    R::load(b + static_cast<intptr_t>(sb) * y, sb, blo, bhi);
    const __m128i lo = t.apply<K>(_mm_add_epi16(_mm_mullo_epi16(alo, w1), _mm_mullo_epi16(blo, w2)));
    __m128i hi = lo;
    if constexpr (R::wide) hi = t.apply<K>(_mm_add_epi16(_mm_mullo_epi16(ahi, w1), _mm_mullo_epi16(bhi, w2)));
    R::store(d + static_cast<intptr_t>(sd) * y, sd, _mm_packus_epi16(lo, hi));
  }
}

// The folded scheme for each height, one function each so that every row is
// unrolled; vectors travel in registers.
template <int W, int H>
void uni_fixed(uint8_t* p, int32_t step, __m128i w, __m128i c, __m128i s) {
  uni_rows<W, kFolded>(p, step, H, w, Tail{c, c, s});
}
template <int W, int H>
void bi_fixed(const uint8_t* a, int32_t sa, const uint8_t* b, int32_t sb, uint8_t* d, int32_t sd, __m128i w1,
              __m128i w2, __m128i c, __m128i s) {
  bi_rows<W, kFolded>(a, sa, b, sb, d, sd, H, w1, w2, Tail{c, c, s});
}
using UniFn = void (*)(uint8_t*, int32_t, __m128i, __m128i, __m128i);
using BiFn = void (*)(const uint8_t*, int32_t, const uint8_t*, int32_t, uint8_t*, int32_t, __m128i, __m128i, __m128i,
                      __m128i);
// Indexed by 4 * class(width) + class(height), classes 0..3 for 2, 4, 8, 16.
constexpr UniFn kUni[16] = {&uni_fixed<2, 2>,  &uni_fixed<2, 4>,  &uni_fixed<2, 8>,  &uni_fixed<2, 16>,
                            &uni_fixed<4, 2>,  &uni_fixed<4, 4>,  &uni_fixed<4, 8>,  &uni_fixed<4, 16>,
                            &uni_fixed<8, 2>,  &uni_fixed<8, 4>,  &uni_fixed<8, 8>,  &uni_fixed<8, 16>,
                            &uni_fixed<16, 2>, &uni_fixed<16, 4>, &uni_fixed<16, 8>, &uni_fixed<16, 16>};
constexpr BiFn kBi[16] = {&bi_fixed<2, 2>,  &bi_fixed<2, 4>,  &bi_fixed<2, 8>,  &bi_fixed<2, 16>,
                          &bi_fixed<4, 2>,  &bi_fixed<4, 4>,  &bi_fixed<4, 8>,  &bi_fixed<4, 16>,
                          &bi_fixed<8, 2>,  &bi_fixed<8, 4>,  &bi_fixed<8, 8>,  &bi_fixed<8, 16>,
                          &bi_fixed<16, 2>, &bi_fixed<16, 4>, &bi_fixed<16, 8>, &bi_fixed<16, 16>};
// Widths and heights are 2, 4, 8 or 16 here.
HUX_INLINE int size_index(int w, int h) {
  return ((__builtin_ctz(static_cast<unsigned>(w)) * 4 + __builtin_ctz(static_cast<unsigned>(h))) - 5) & 15;
}

inline Tail tail(int32_t c, int32_t o, uint32_t s) {
  return {_mm_set1_epi16(static_cast<int16_t>(c)), _mm_set1_epi16(static_cast<int16_t>(o)),
          _mm_cvtsi32_si128(static_cast<int32_t>(s))};
}

// Parameters outside the common case: the split scheme, the folded one at
// shifts above 7 or with larger weights or offsets, or the reference.
template <int W>
void uni_general(uint8_t* p, int32_t step, int h, uint32_t s, int32_t wt, int32_t o) {
  const int64_t prod = int64_t{255} * wt;
  int32_t c;
  const Scheme k = scheme(std::min<int64_t>(prod, 0), std::max<int64_t>(prod, 0), s, o, c);
  const __m128i w = _mm_set1_epi16(static_cast<int16_t>(wt));
  if (k == kFolded) uni_rows<W, kFolded>(p, step, h, w, tail(c, o, s));
  else if (k == kSplit) uni_rows<W, kSplit>(p, step, h, w, tail(c, o, s));
  else ref::uni<W>(p, step, h, s, wt, o);
}
template <int W>
void bi_general(const uint8_t* a, int32_t sa, const uint8_t* b, int32_t sb, uint8_t* d, int32_t sd, int h, uint32_t s,
                int32_t w1, int32_t w2, int32_t o) {
  const int64_t p1 = int64_t{255} * w1, p2 = int64_t{255} * w2;
  int32_t c;
  const Scheme k = scheme(std::min<int64_t>(p1, 0) + std::min<int64_t>(p2, 0),
                          std::max<int64_t>(p1, 0) + std::max<int64_t>(p2, 0), s, o, c);
  const __m128i v1 = _mm_set1_epi16(static_cast<int16_t>(w1)), v2 = _mm_set1_epi16(static_cast<int16_t>(w2));
  if (k == kFolded) bi_rows<W, kFolded>(a, sa, b, sb, d, sd, h, v1, v2, tail(c, o, s));
  else if (k == kSplit) bi_rows<W, kSplit>(a, sa, b, sb, d, sd, h, v1, v2, tail(c, o, s));
  else ref::bi<W>(a, sa, b, sb, d, sd, h, s, w1, w2, o);
}
[[gnu::noinline]] inline void uni_general(uint8_t* p, int32_t step, int w, int h, uint32_t s, int32_t wt, int32_t o) {
  switch (w) {
    case 2: return uni_general<2>(p, step, h, s, wt, o);
    case 4: return uni_general<4>(p, step, h, s, wt, o);
    case 8: return uni_general<8>(p, step, h, s, wt, o);
    default: return uni_general<16>(p, step, h, s, wt, o);
  }
}
[[gnu::noinline]] inline void bi_general(const uint8_t* a, int32_t sa, const uint8_t* b, int32_t sb, uint8_t* d,
                                         int32_t sd, int w, int h, uint32_t s, int32_t w1, int32_t w2, int32_t o) {
  switch (w) {
    case 2: return bi_general<2>(a, sa, b, sb, d, sd, h, s, w1, w2, o);
    case 4: return bi_general<4>(a, sa, b, sb, d, sd, h, s, w1, w2, o);
    case 8: return bi_general<8>(a, sa, b, sb, d, sd, h, s, w1, w2, o);
    default: return bi_general<16>(a, sa, b, sb, d, sd, h, s, w1, w2, o);
  }
}

// The common case, tested in a few instructions: weights (and for two, their
// sum) within -128..127, so that every weighted sum of 8-bit samples fits 16
// bits; an offset within -128..127 and a shift of at most 7, so that
// c = 2^(s-1) + o * 2^s = ((2o + 1) << s) >> 1 lies within -16320..16320.
HUX_INLINE uint32_t byte_range(int32_t v) { return static_cast<uint32_t>(v) + 128u; }

}  // namespace wdetail

// The common case's parameters (see byte_range).
HUX_INLINE bool uni_common(uint32_t s, int32_t wt, int32_t o) {
  return (wdetail::byte_range(wt) | wdetail::byte_range(o)) <= 255u && s <= 7;
}
HUX_INLINE bool bi_common(uint32_t s, int32_t w1, int32_t w2, int32_t o) {
  using wdetail::byte_range;
  const uint32_t sum = static_cast<uint32_t>(w1) + static_cast<uint32_t>(w2) + 128u;
  return (byte_range(w1) | byte_range(w2) | sum | byte_range(o)) <= 255u && s <= 7;
}
// The 8x8 block in the common case, small enough to inline into the exports.
HUX_INLINE void uni8x8(uint8_t* p, int32_t step, uint32_t s, int32_t wt, int32_t o) {
  const __m128i c = _mm_set1_epi16(static_cast<int16_t>(((2 * o + 1) << s) >> 1));
  wdetail::uni_rows<8, wdetail::kFolded>(p, step, 8, _mm_set1_epi16(static_cast<int16_t>(wt)),
                                         wdetail::Tail{c, c, _mm_cvtsi32_si128(static_cast<int32_t>(s))});
}
HUX_INLINE void bi8x8(const uint8_t* a, int32_t sa, const uint8_t* b, int32_t sb, uint8_t* d, int32_t sd, uint32_t s,
                      int32_t w1, int32_t w2, int32_t o) {
  const __m128i c = _mm_set1_epi16(static_cast<int16_t>(((2 * o + 1) << s) >> 1));
  const __m128i v1 = _mm_set1_epi16(static_cast<int16_t>(w1)), v2 = _mm_set1_epi16(static_cast<int16_t>(w2));
  const wdetail::Tail t{c, c, _mm_cvtsi32_si128(static_cast<int32_t>(s))};
  // Two rows a turn, pointers stepped: few registers, nothing to save.
#pragma GCC unroll 1
  for (int y = 0; y < 8; y += 2) {
    wdetail::bi_rows<8, wdetail::kFolded>(a, sa, b, sb, d, sd, 2, v1, v2, t);
    a += 2 * static_cast<intptr_t>(sa), b += 2 * static_cast<intptr_t>(sb), d += 2 * static_cast<intptr_t>(sd);
  }
}

// One prediction in place: y = round(x * wt, s) + o, clamped; w and h are
// 2, 4, 8 or 16.
HUX_INLINE void uni8(uint8_t* p, int32_t step, int w, int h, uint32_t s, int32_t wt, int32_t o) {
  using namespace wdetail;
  if ((byte_range(wt) | byte_range(o)) > 255u || s > 7) return uni_general(p, step, w, h, s, wt, o);
  kUni[size_index(w, h)](p, step, _mm_set1_epi16(static_cast<int16_t>(wt)),
                         _mm_set1_epi16(static_cast<int16_t>(((2 * o + 1) << s) >> 1)),
                         _mm_cvtsi32_si128(static_cast<int32_t>(s)));
}

// Two predictions: y = round(x1 * w1 + x2 * w2, s) + o, clamped; w and h are
// 2, 4, 8 or 16; d may be a or b when it has the same step.
HUX_INLINE void bi8(const uint8_t* a, int32_t sa, const uint8_t* b, int32_t sb, uint8_t* d, int32_t sd, int w, int h,
                    uint32_t s, int32_t w1, int32_t w2, int32_t o) {
  using namespace wdetail;
  const uint32_t sum = static_cast<uint32_t>(w1) + static_cast<uint32_t>(w2) + 128u;
  if ((byte_range(w1) | byte_range(w2) | sum | byte_range(o)) > 255u || s > 7)
    return bi_general(a, sa, b, sb, d, sd, w, h, s, w1, w2, o);
  kBi[size_index(w, h)](a, sa, b, sb, d, sd, _mm_set1_epi16(static_cast<int16_t>(w1)),
                        _mm_set1_epi16(static_cast<int16_t>(w2)),
                        _mm_set1_epi16(static_cast<int16_t>(((2 * o + 1) << s) >> 1)),
                        _mm_cvtsi32_si128(static_cast<int32_t>(s)));
}

// The exports take the 8x8 forms above directly; so do these.
template <int W>
void uni(uint8_t* p, int32_t step, int h, uint32_t s, int32_t wt, int32_t o) {
  if constexpr (W == 8)
    if (h == 8 && uni_common(s, wt, o)) return uni8x8(p, step, s, wt, o);
  uni8(p, step, W, h, s, wt, o);
}
template <int W>
void bi(const uint8_t* a, int32_t sa, const uint8_t* b, int32_t sb, uint8_t* d, int32_t sd, int h, uint32_t s,
        int32_t w1, int32_t w2, int32_t o) {
  if constexpr (W == 8)
    if (h == 8 && bi_common(s, w1, w2, o)) return bi8x8(a, sa, b, sb, d, sd, s, w1, w2, o);
  bi8(a, sa, b, sb, d, sd, W, h, s, w1, w2, o);
}

}  // namespace hux::h264::sse2
