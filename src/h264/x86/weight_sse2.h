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

// A group of rows as one register: one row of 16 or 8 bytes, or two rows of 4
// or 2 bytes side by side in the low half.
template <int W>
struct Rows {
  static constexpr int n = W >= 8 ? 1 : 2;
  static HUX_INLINE __m128i load(const uint8_t* p, int32_t step) {
    if constexpr (W == 16) return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
    if constexpr (W == 8) return _mm_loadl_epi64(reinterpret_cast<const __m128i*>(p));
    if constexpr (W == 4)
      return _mm_unpacklo_epi32(_mm_cvtsi32_si128(hux::load<int32_t>(p)),
                                _mm_cvtsi32_si128(hux::load<int32_t>(p + step)));
    if constexpr (W == 2)
      return _mm_cvtsi32_si128(hux::load<uint16_t>(p) | static_cast<int32_t>(hux::load<uint16_t>(p + step)) << 16);
  }
  static HUX_INLINE void store(uint8_t* p, int32_t step, __m128i v) {
    if constexpr (W == 16) _mm_storeu_si128(reinterpret_cast<__m128i*>(p), v);
    if constexpr (W == 8) _mm_storel_epi64(reinterpret_cast<__m128i*>(p), v);
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

template <int W, Scheme K>
HUX_INLINE void uni_rows(uint8_t* p, int32_t step, int h, __m128i w, const Tail& t) {
  using R = Rows<W>;
  const __m128i z = _mm_setzero_si128();
  for (int y = 0; y < h; y += R::n, p += static_cast<intptr_t>(step) * R::n) {
    const __m128i v = R::load(p, step);
    const __m128i lo = t.apply<K>(_mm_mullo_epi16(_mm_unpacklo_epi8(v, z), w));
    const __m128i hi = W == 16 ? t.apply<K>(_mm_mullo_epi16(_mm_unpackhi_epi8(v, z), w)) : lo;
    R::store(p, step, _mm_packus_epi16(lo, hi));
  }
}

template <int W, Scheme K>
HUX_INLINE void bi_rows(const uint8_t* a, int32_t sa, const uint8_t* b, int32_t sb, uint8_t* d, int32_t sd, int h,
                        __m128i w1, __m128i w2, const Tail& t) {
  using R = Rows<W>;
  const __m128i z = _mm_setzero_si128();
  for (int y = 0; y < h; y += R::n) {
    const __m128i va = R::load(a, sa), vb = R::load(b, sb);
    const __m128i lo = t.apply<K>(_mm_add_epi16(_mm_mullo_epi16(_mm_unpacklo_epi8(va, z), w1),
                                                _mm_mullo_epi16(_mm_unpacklo_epi8(vb, z), w2)));
    const __m128i hi = W == 16 ? t.apply<K>(_mm_add_epi16(_mm_mullo_epi16(_mm_unpackhi_epi8(va, z), w1),
                                                          _mm_mullo_epi16(_mm_unpackhi_epi8(vb, z), w2)))
                               : lo;
    R::store(d, sd, _mm_packus_epi16(lo, hi));
    a += static_cast<intptr_t>(sa) * R::n, b += static_cast<intptr_t>(sb) * R::n, d += static_cast<intptr_t>(sd) * R::n;
  }
}

template <int W>
[[gnu::noinline]] void uni_scalar(uint8_t* p, int32_t step, int h, uint32_t s, int32_t wt, int32_t o) {
  ref::uni<W>(p, step, h, s, wt, o);
}
template <int W>
[[gnu::noinline]] void bi_scalar(const uint8_t* a, int32_t sa, const uint8_t* b, int32_t sb, uint8_t* d, int32_t sd,
                                 int h, uint32_t s, int32_t w1, int32_t w2, int32_t o) {
  ref::bi<W>(a, sa, b, sb, d, sd, h, s, w1, w2, o);
}

}  // namespace wdetail

// One prediction in place: y = round(x * wt, s) + o, clamped; h is even for
// widths 2 and 4.
template <int W>
HUX_INLINE void uni(uint8_t* p, int32_t step, int h, uint32_t s, int32_t wt, int32_t o) {
  using namespace wdetail;
  const int64_t prod = int64_t{255} * wt;
  int32_t c;
  const Scheme k = scheme(std::min<int64_t>(prod, 0), std::max<int64_t>(prod, 0), s, o, c);
  if (k == kScalar) return uni_scalar<W>(p, step, h, s, wt, o);
  const Tail t{_mm_set1_epi16(static_cast<int16_t>(c)), _mm_set1_epi16(static_cast<int16_t>(o)),
               _mm_cvtsi32_si128(static_cast<int32_t>(s))};
  const __m128i w = _mm_set1_epi16(static_cast<int16_t>(wt));
  if (k == kFolded) uni_rows<W, kFolded>(p, step, h, w, t);
  else uni_rows<W, kSplit>(p, step, h, w, t);
}

// Two predictions: y = round(x1 * w1 + x2 * w2, s) + o, clamped; d may be b.
template <int W>
HUX_INLINE void bi(const uint8_t* a, int32_t sa, const uint8_t* b, int32_t sb, uint8_t* d, int32_t sd, int h,
                   uint32_t s, int32_t w1, int32_t w2, int32_t o) {
  using namespace wdetail;
  const int64_t p1 = int64_t{255} * w1, p2 = int64_t{255} * w2;
  int32_t c;
  const Scheme k = scheme(std::min<int64_t>(p1, 0) + std::min<int64_t>(p2, 0),
                          std::max<int64_t>(p1, 0) + std::max<int64_t>(p2, 0), s, o, c);
  if (k == kScalar) return bi_scalar<W>(a, sa, b, sb, d, sd, h, s, w1, w2, o);
  const Tail t{_mm_set1_epi16(static_cast<int16_t>(c)), _mm_set1_epi16(static_cast<int16_t>(o)),
               _mm_cvtsi32_si128(static_cast<int32_t>(s))};
  const __m128i v1 = _mm_set1_epi16(static_cast<int16_t>(w1)), v2 = _mm_set1_epi16(static_cast<int16_t>(w2));
  if (k == kFolded) bi_rows<W, kFolded>(a, sa, b, sb, d, sd, h, v1, v2, t);
  else bi_rows<W, kSplit>(a, sa, b, sb, d, sd, h, v1, v2, t);
}

}  // namespace hux::h264::sse2
