// SSE2 H.264 dequantisation and inverse transforms, inline so that each export
// compiles into one function (a 4x4 block takes a few nanoseconds, and an
// out-of-line call with its stacked arguments would be a visible share). A 4x4 block lives in two
// registers (rows 0-1 and rows 2-3); an 8x8 block in eight. The 16-bit passes use
// paddw/psubw where the reference wraps and paddsw/psubsw where it saturates, so
// the lanes overflow exactly where the reference does.
#pragma once

#include <emmintrin.h>

#include "h264/transform_kernels.h"

namespace hux::h264::sse2 {
namespace detail {

// ------------------------------------------------------------ vector pass policies
struct SatV {
  using V = __m128i;
  static V add(V a, V b) { return _mm_adds_epi16(a, b); }
  static V sub(V a, V b) { return _mm_subs_epi16(a, b); }
  static V sra(V a, int n) { return _mm_srai_epi16(a, n); }
};
struct WrapV {
  using V = __m128i;
  static V add(V a, V b) { return _mm_add_epi16(a, b); }
  static V sub(V a, V b) { return _mm_sub_epi16(a, b); }
  static V sra(V a, int n) { return _mm_srai_epi16(a, n); }
};
struct Wrap32V {
  using V = __m128i;
  static V add(V a, V b) { return _mm_add_epi32(a, b); }
  static V sub(V a, V b) { return _mm_sub_epi32(a, b); }
  static V sra(V a, int n) { return _mm_srai_epi32(a, n); }
};

// ------------------------------------------------------------ loads and stores
inline __m128i loadu(const void* p) { return _mm_loadu_si128(static_cast<const __m128i*>(p)); }
inline __m128i loadl(const void* p) { return _mm_loadl_epi64(static_cast<const __m128i*>(p)); }
inline __m128i load4(const void* p) { return _mm_cvtsi32_si128(hux::load<int32_t>(p)); }
inline void storeu(void* p, __m128i v) { _mm_storeu_si128(static_cast<__m128i*>(p), v); }
inline void storel(void* p, __m128i v) { _mm_storel_epi64(static_cast<__m128i*>(p), v); }
inline void store4(void* p, __m128i v) { hux::store<int32_t>(p, _mm_cvtsi128_si32(v)); }
// Upper eight bytes, stored straight from the register (no shuffle).
inline void storeh(void* p, __m128i v) { _mm_storeh_pi(static_cast<__m64*>(p), _mm_castsi128_ps(v)); }
inline __m128i swap_halves(__m128i v) { return _mm_shuffle_epi32(v, 0x4E); }

// Two rows of a 16-bit block at a byte step, as one register.
inline __m128i load_rows16(const int16_t* p, int32_t step, int y) {
  return _mm_unpacklo_epi64(loadl(row(p, step, y)), loadl(row(p, step, y + 1)));
}

// ------------------------------------------------------------ 4x4 in two registers

// [r0|r1], [r2|r3] -> [c0|c1], [c2|c3]; its own inverse.
inline void transpose4x4(__m128i& a, __m128i& b) {
  const __m128i t0 = _mm_unpacklo_epi16(a, b), t1 = _mm_unpackhi_epi16(a, b);
  a = _mm_unpacklo_epi16(t0, t1);
  b = _mm_unpackhi_epi16(t0, t1);
}

// Low half as it is, high half shifted right by one.
inline __m128i sra1_high(__m128i v) {
  return _mm_castpd_si128(_mm_move_sd(_mm_castsi128_pd(_mm_srai_epi16(v, 1)), _mm_castsi128_pd(v)));
}

// The 4-point inverse on packed inputs a = [d0|d1], b = [d2|d3]: x = [e|h],
// y = [f|g], and on return a = [o0|o1], b = [o3|o2].
template <class Op>
inline void idct4_packed_efgh(__m128i a, __m128i b, __m128i& p, __m128i& q) {
  const __m128i x = Op::add(a, sra1_high(b));  // [d0 + d2 | d1 + (d3 >> 1)]
  const __m128i y = Op::sub(sra1_high(a), b);  // [d0 - d2 | (d1 >> 1) - d3]
  p = _mm_unpacklo_epi64(x, y);                // [e | f]
  q = _mm_unpackhi_epi64(x, y);                // [h | g]
}
template <class Op>
inline void idct4_packed(__m128i& a, __m128i& b) {
  __m128i p, q;
  idct4_packed_efgh<Op>(a, b, p, q);
  a = Op::add(p, q);
  b = Op::sub(p, q);
}

// Row pass of a raster block given as [r0|r1], [r2|r3]; returns the intermediate
// rows in the same form, ready for the column pass.
template <class Op>
inline void idct4x4_rows(__m128i& a, __m128i& b) {
  transpose4x4(a, b);
  idct4_packed<Op>(a, b);
  b = swap_halves(b);
  transpose4x4(a, b);
}

// Saturating 4x4 inverse with rounding: returns [R0|R1], [R3|R2].
inline void idct4x4_sat(__m128i& a, __m128i& b) {
  idct4x4_rows<SatV>(a, b);
  idct4_packed<SatV>(a, b);
  const __m128i k32 = _mm_set1_epi16(32);
  a = _mm_srai_epi16(_mm_adds_epi16(a, k32), 6);
  b = _mm_srai_epi16(_mm_adds_epi16(b, k32), 6);
}

// Adds the residual rows [R0|R1], [R3|R2] to a 4x4 prediction, clamps to 0..255.
inline void add_pred4x4(__m128i r01, __m128i r32, const uint8_t* pred, int32_t predStep, uint8_t* dst,
                        int32_t dstStep) {
  const __m128i z = _mm_setzero_si128();
  const __m128i p01 = _mm_unpacklo_epi32(load4(pred), load4(row(pred, predStep, 1)));
  const __m128i p32 = _mm_unpacklo_epi32(load4(row(pred, predStep, 3)), load4(row(pred, predStep, 2)));
  const __m128i v = _mm_packus_epi16(_mm_add_epi16(r01, _mm_unpacklo_epi8(p01, z)),
                                     _mm_add_epi16(r32, _mm_unpacklo_epi8(p32, z)));
  store4(dst, v);
  store4(row(dst, dstStep, 1), _mm_shuffle_epi32(v, 1));
  store4(row(dst, dstStep, 3), _mm_shuffle_epi32(v, 2));
  store4(row(dst, dstStep, 2), _mm_shuffle_epi32(v, 3));
}

inline void add_const4x4(int32_t r, const uint8_t* pred, int32_t predStep, uint8_t* dst, int32_t dstStep) {
  const __m128i v = _mm_set1_epi16(static_cast<int16_t>(r));
  add_pred4x4(v, v, pred, predStep, dst, dstStep);
}

// 16x16 -> 32-bit products of eight lanes, low four and high four.
inline void mul_wide(__m128i x, __m128i s, __m128i& p0, __m128i& p1) {
  const __m128i lo = _mm_mullo_epi16(x, s), hi = _mm_mulhi_epi16(x, s);
  p0 = _mm_unpacklo_epi16(lo, hi);
  p1 = _mm_unpackhi_epi16(lo, hi);
}
// Low 16 bits of each 32-bit lane, packed (wrap, not saturate).
inline __m128i pack_wrap(__m128i p0, __m128i p1) {
  return _mm_packs_epi32(_mm_srai_epi32(_mm_slli_epi32(p0, 16), 16), _mm_srai_epi32(_mm_slli_epi32(p1, 16), 16));
}
inline __m128i widen_lo(__m128i v) { return _mm_srai_epi32(_mm_unpacklo_epi16(v, v), 16); }
inline __m128i widen_hi(__m128i v) { return _mm_srai_epi32(_mm_unpackhi_epi16(v, v), 16); }

// The LevelScale rule on eight lanes, saturated to 16 bits. From QP/6 = 4 the
// product is saturated before the shift, which saturates exactly as the shifted
// product would.
inline __m128i dequant4x4_sat(__m128i x, __m128i ls, int q) {
  __m128i p0, p1;
  mul_wide(x, ls, p0, p1);
  if (q < 4) {
    const __m128i r = _mm_set1_epi32(1 << (3 - q));
    const __m128i n = _mm_cvtsi32_si128(4 - q);
    return _mm_packs_epi32(_mm_sra_epi32(_mm_add_epi32(p0, r), n), _mm_sra_epi32(_mm_add_epi32(p1, r), n));
  }
  __m128i v = _mm_packs_epi32(p0, p1);
  if (q > 4) {
    const __m128i n = _mm_cvtsi32_si128(q - 4);
    v = _mm_packs_epi32(_mm_sll_epi32(widen_lo(v), n), _mm_sll_epi32(widen_hi(v), n));
  }
  return v;
}

// ------------------------------------------------------------ 32-bit helpers
inline void transpose4x4_32(__m128i& a, __m128i& b, __m128i& c, __m128i& d) {
  const __m128i t0 = _mm_unpacklo_epi32(a, b), t1 = _mm_unpackhi_epi32(a, b);
  const __m128i t2 = _mm_unpacklo_epi32(c, d), t3 = _mm_unpackhi_epi32(c, d);
  a = _mm_unpacklo_epi64(t0, t2);
  b = _mm_unpackhi_epi64(t0, t2);
  c = _mm_unpacklo_epi64(t1, t3);
  d = _mm_unpackhi_epi64(t1, t3);
}
// Low 32 bits of 32x32 products (two's complement wraps like the reference).
inline __m128i mullo32(__m128i a, __m128i b) {
  const __m128i even = _mm_mul_epu32(a, b);
  const __m128i odd = _mm_mul_epu32(_mm_srli_epi64(a, 32), _mm_srli_epi64(b, 32));
  return _mm_unpacklo_epi32(_mm_shuffle_epi32(even, 0x08), _mm_shuffle_epi32(odd, 0x08));
}
// Clamp of 32-bit values to 0..maxv (maxv at most 65535), as 16-bit unsigned
// lanes: biased by -32768 the signed saturating pack clamps below for free.
inline __m128i clamp_pack_u16(__m128i v0, __m128i v1, __m128i maxBiased) {
  const __m128i bias = _mm_set1_epi32(32768);
  const __m128i p = _mm_packs_epi32(_mm_sub_epi32(v0, bias), _mm_sub_epi32(v1, bias));
  return _mm_xor_si128(_mm_min_epi16(p, maxBiased), _mm_set1_epi16(static_cast<int16_t>(0x8000)));
}
inline __m128i max_biased(int32_t maxv) { return _mm_set1_epi16(static_cast<int16_t>(maxv - 32768)); }

// ------------------------------------------------------------ 8x8 helpers
inline void transpose8x8(__m128i* v) {
  const __m128i a0 = _mm_unpacklo_epi16(v[0], v[1]), a1 = _mm_unpackhi_epi16(v[0], v[1]);
  const __m128i a2 = _mm_unpacklo_epi16(v[2], v[3]), a3 = _mm_unpackhi_epi16(v[2], v[3]);
  const __m128i a4 = _mm_unpacklo_epi16(v[4], v[5]), a5 = _mm_unpackhi_epi16(v[4], v[5]);
  const __m128i a6 = _mm_unpacklo_epi16(v[6], v[7]), a7 = _mm_unpackhi_epi16(v[6], v[7]);
  const __m128i b0 = _mm_unpacklo_epi32(a0, a2), b1 = _mm_unpackhi_epi32(a0, a2);
  const __m128i b2 = _mm_unpacklo_epi32(a1, a3), b3 = _mm_unpackhi_epi32(a1, a3);
  const __m128i b4 = _mm_unpacklo_epi32(a4, a6), b5 = _mm_unpackhi_epi32(a4, a6);
  const __m128i b6 = _mm_unpacklo_epi32(a5, a7), b7 = _mm_unpackhi_epi32(a5, a7);
  v[0] = _mm_unpacklo_epi64(b0, b4);
  v[1] = _mm_unpackhi_epi64(b0, b4);
  v[2] = _mm_unpacklo_epi64(b1, b5);
  v[3] = _mm_unpackhi_epi64(b1, b5);
  v[4] = _mm_unpacklo_epi64(b2, b6);
  v[5] = _mm_unpackhi_epi64(b2, b6);
  v[6] = _mm_unpacklo_epi64(b3, b7);
  v[7] = _mm_unpackhi_epi64(b3, b7);
}

}  // namespace detail
using namespace detail;

// ------------------------------------------------------------ 4x4 residual, in place
HUX_INLINE void dequant_transform_residual(int16_t* blk, int32_t step, const int16_t* pDC, int32_t ac, int32_t qp) {
  const int16_t* dq = kDequantByPos[qp].data();
  if (!ac) {
    const int16_t dc = pDC ? *pDC : wrap16(hux::load<int16_t>(blk) * dq[0]);
    const __m128i v = _mm_set1_epi16(static_cast<int16_t>((dc + 32) >> 6));
    for (int y = 0; y < 4; ++y) storel(row(blk, step, y), v);
    return;
  }
  __m128i a = _mm_mullo_epi16(load_rows16(blk, step, 0), loadu(dq));
  __m128i b = _mm_mullo_epi16(load_rows16(blk, step, 2), loadu(dq + 8));
  if (pDC) a = _mm_insert_epi16(a, *pDC, 0);
  idct4x4_rows<WrapV>(a, b);
  // Column pass: butterflies in 16 bits, the last sums in 32 bits (pmaddwd with
  // +1/+1 and +1/-1 pairs), rounded, then packed back exactly.
  __m128i p, q;
  idct4_packed_efgh<WrapV>(a, b, p, q);
  const __m128i eh = _mm_unpacklo_epi16(p, q), fg = _mm_unpackhi_epi16(p, q);
  const __m128i plus = _mm_set1_epi32(0x00010001), minus = _mm_set1_epi32(static_cast<int32_t>(0xFFFF0001u));
  const __m128i k32 = _mm_set1_epi32(32);
  const __m128i r0 = _mm_srai_epi32(_mm_add_epi32(_mm_madd_epi16(eh, plus), k32), 6);
  const __m128i r1 = _mm_srai_epi32(_mm_add_epi32(_mm_madd_epi16(fg, plus), k32), 6);
  const __m128i r2 = _mm_srai_epi32(_mm_add_epi32(_mm_madd_epi16(fg, minus), k32), 6);
  const __m128i r3 = _mm_srai_epi32(_mm_add_epi32(_mm_madd_epi16(eh, minus), k32), 6);
  const __m128i o01 = _mm_packs_epi32(r0, r1), o23 = _mm_packs_epi32(r2, r3);
  storel(blk, o01);
  storeh(row(blk, step, 1), o01);
  storel(row(blk, step, 2), o23);
  storeh(row(blk, step, 3), o23);
}

HUX_INLINE void dequant_transform_residual_add(const uint8_t* pred, int32_t predStep, const int16_t* coef, const int16_t* pDC,
                                    uint8_t* dst, int32_t dstStep, int32_t qp, int32_t ac) {
  const int16_t* dq = kDequantByPos[qp].data();
  if (!ac) {
    const int16_t dc = pDC ? *pDC : wrap16(coef[0] * dq[0]);
    add_const4x4((dc + 32) >> 6, pred, predStep, dst, dstStep);
    return;
  }
  __m128i a = _mm_mullo_epi16(loadu(coef), loadu(dq));
  __m128i b = _mm_mullo_epi16(loadu(coef + 8), loadu(dq + 8));
  if (pDC) a = _mm_insert_epi16(a, *pDC, 0);
  idct4x4_sat(a, b);
  add_pred4x4(a, b, pred, predStep, dst, dstStep);
}

HUX_INLINE void quant_inv_add_pred4x4(const uint8_t* pred, int32_t predStep, const int16_t* coef, const int16_t* pDC,
                           uint8_t* dst, int32_t dstStep, int32_t qp, int32_t ac, const int16_t* scale) {
  const int16_t* ls = scale ? scale : kFlatLevelScale[kQpMod6[qp]].data();
  const int q = kQpDiv6[qp];
  if (!ac) {
    const int32_t dc = pDC ? *pDC : sat16_wide(dequant4x4_exact(coef[0], ls[0], q));
    add_const4x4((dc + 32) >> 6, pred, predStep, dst, dstStep);
    return;
  }
  __m128i a = dequant4x4_sat(loadu(coef), loadu(ls), q);
  __m128i b = dequant4x4_sat(loadu(coef + 8), loadu(ls + 8), q);
  if (pDC) a = _mm_insert_epi16(a, *pDC, 0);
  idct4x4_sat(a, b);
  add_pred4x4(a, b, pred, predStep, dst, dstStep);
}

HUX_INLINE void transform_residual4x4(const int16_t* src, int16_t* dst) {
  __m128i a = loadu(src), b = loadu(src + 8);
  idct4x4_sat(a, b);
  storeu(dst, a);
  storeu(dst + 8, swap_halves(b));
}

// ------------------------------------------------------------ 4x4, 32-bit
namespace detail {
inline void idct4x4_32(__m128i& r0, __m128i& r1, __m128i& r2, __m128i& r3) {
  transpose4x4_32(r0, r1, r2, r3);
  idct4_1d<Wrap32V>(r0, r1, r2, r3);
  transpose4x4_32(r0, r1, r2, r3);
  idct4_1d<Wrap32V>(r0, r1, r2, r3);
  const __m128i k32 = _mm_set1_epi32(32);
  r0 = _mm_srai_epi32(_mm_add_epi32(r0, k32), 6);
  r1 = _mm_srai_epi32(_mm_add_epi32(r1, k32), 6);
  r2 = _mm_srai_epi32(_mm_add_epi32(r2, k32), 6);
  r3 = _mm_srai_epi32(_mm_add_epi32(r3, k32), 6);
}
// Two residual rows plus two prediction rows of four 16-bit samples, clamped.
inline void add_pred_rows_u16(__m128i r0, __m128i r1, const uint16_t* p0, const uint16_t* p1, uint16_t* d0,
                              uint16_t* d1, __m128i maxB) {
  const __m128i z = _mm_setzero_si128();
  const __m128i v = clamp_pack_u16(_mm_add_epi32(r0, _mm_unpacklo_epi16(loadl(p0), z)),
                                   _mm_add_epi32(r1, _mm_unpacklo_epi16(loadl(p1), z)), maxB);
  storel(d0, v);
  storeh(d1, v);
}
}  // namespace detail
using namespace detail;

HUX_INLINE void quant_inv_add_pred4x4_hbd(const uint16_t* pred, int32_t predStep, const int32_t* coef, const int32_t* pDC,
                               uint16_t* dst, int32_t dstStep, int32_t qp, int32_t ac, int32_t bitDepth,
                               const int16_t* scale) {
  const int16_t* ls = scale ? scale : kFlatLevelScale[kQpMod6[qp]].data();
  const int q = kQpDiv6[qp];
  const __m128i maxB = max_biased((1 << bitDepth) - 1);
  __m128i r[4];
  if (!ac) {
    const int32_t dc = pDC ? *pDC : dequant4x4_32(coef[0], ls[0], q);
    r[0] = r[1] = r[2] = r[3] = _mm_set1_epi32(add32w(dc, 32) >> 6);
  } else {
    const __m128i l01 = loadu(ls), l23 = loadu(ls + 8);
    const __m128i lsw[4] = {widen_lo(l01), widen_hi(l01), widen_lo(l23), widen_hi(l23)};
    for (int i = 0; i < 4; ++i) {
      const __m128i p = mullo32(loadu(coef + 4 * i), lsw[i]);
      if (q >= 4)
        r[i] = _mm_sll_epi32(p, _mm_cvtsi32_si128(q - 4));
      else
        r[i] = _mm_sra_epi32(_mm_add_epi32(p, _mm_set1_epi32(1 << (3 - q))), _mm_cvtsi32_si128(4 - q));
    }
    if (pDC) {
      alignas(16) int32_t t[4];
      _mm_store_si128(reinterpret_cast<__m128i*>(t), r[0]);
      t[0] = *pDC;
      r[0] = _mm_load_si128(reinterpret_cast<const __m128i*>(t));
    }
    idct4x4_32(r[0], r[1], r[2], r[3]);
  }
  add_pred_rows_u16(r[0], r[1], pred, row(pred, predStep, 1), dst, row(dst, dstStep, 1), maxB);
  add_pred_rows_u16(r[2], r[3], row(pred, predStep, 2), row(pred, predStep, 3), row(dst, dstStep, 2),
                    row(dst, dstStep, 3), maxB);
}

HUX_INLINE void transform_residual4x4_32(const int32_t* src, int32_t* dst) {
  __m128i r0 = loadu(src), r1 = loadu(src + 4), r2 = loadu(src + 8), r3 = loadu(src + 12);
  idct4x4_32(r0, r1, r2, r3);
  storeu(dst, r0);
  storeu(dst + 4, r1);
  storeu(dst + 8, r2);
  storeu(dst + 12, r3);
}

// ------------------------------------------------------------ 8x8 dequantiser
namespace detail {
template <bool Aligned>
inline __m128i ld(const int16_t* p) {
  if constexpr (Aligned) return _mm_load_si128(reinterpret_cast<const __m128i*>(p));
  else return loadu(p);
}
template <bool Aligned>
inline void st(int16_t* p, __m128i v) {
  if constexpr (Aligned) _mm_store_si128(reinterpret_cast<__m128i*>(p), v);
  else storeu(p, v);
}
template <bool Aligned>
HUX_INLINE void dequant_luma8x8_impl(int16_t* blk, int32_t qbits, const int16_t* scale) {
  if (qbits >= 6) {
    const __m128i n = _mm_cvtsi32_si128(qbits - 6);
    for (int i = 0; i < 64; i += 8) st<Aligned>(blk + i, _mm_sll_epi16(_mm_mullo_epi16(ld<Aligned>(blk + i), ld<Aligned>(scale + i)), n));
    return;
  }
  const __m128i n = _mm_cvtsi32_si128(6 - qbits);
  const __m128i r = _mm_set1_epi32(1 << (5 - qbits));
  for (int i = 0; i < 64; i += 8) {
    __m128i p0, p1;
    mul_wide(ld<Aligned>(blk + i), ld<Aligned>(scale + i), p0, p1);
    st<Aligned>(blk + i, pack_wrap(_mm_sra_epi32(_mm_add_epi32(p0, r), n), _mm_sra_epi32(_mm_add_epi32(p1, r), n)));
  }
}
}  // namespace detail
using namespace detail;

HUX_INLINE void dequant_luma8x8(int16_t* blk, int32_t qbits, const int16_t* scale) {
  if (aligned16(blk) && aligned16(scale))
    dequant_luma8x8_impl<true>(blk, qbits, scale);
  else
    dequant_luma8x8_impl<false>(blk, qbits, scale);
}

// ------------------------------------------------------------ 8x8 inverse + prediction
HUX_INLINE void idct8x8_add(const uint8_t* pred, int32_t predStep, const int16_t* coef, uint8_t* dst, int32_t dstStep) {
  __m128i v[8];
  for (int i = 0; i < 8; ++i) v[i] = loadu(coef + 8 * i);
  transpose8x8(v);
  idct8_1d<SatV>(v);
  transpose8x8(v);
  idct8_1d<SatV>(v);
  const __m128i k32 = _mm_set1_epi16(32), z = _mm_setzero_si128();
  for (int y = 0; y < 8; y += 2) {
    const __m128i r0 = _mm_srai_epi16(_mm_adds_epi16(v[y], k32), 6);
    const __m128i r1 = _mm_srai_epi16(_mm_adds_epi16(v[y + 1], k32), 6);
    const __m128i p0 = _mm_unpacklo_epi8(loadl(row(pred, predStep, y)), z);
    const __m128i p1 = _mm_unpacklo_epi8(loadl(row(pred, predStep, y + 1)), z);
    const __m128i o = _mm_packus_epi16(_mm_add_epi16(r0, p0), _mm_add_epi16(r1, p1));
    storel(row(dst, dstStep, y), o);
    storeh(row(dst, dstStep, y + 1), o);
  }
}

HUX_INLINE void idct8x8_add_hbd(const uint16_t* pred, int32_t predStep, const int32_t* coef, uint16_t* dst, int32_t dstStep,
                     int32_t maxv) {
  alignas(16) int32_t tmp[64];
  // Row pass, four rows at a time: 4x4 tiles transposed so that each register
  // holds one column of those rows.
  for (int g = 0; g < 8; g += 4) {
    __m128i v[8];
    for (int h = 0; h < 8; h += 4) {
      __m128i* t = v + h;
      for (int i = 0; i < 4; ++i) t[i] = loadu(coef + 8 * (g + i) + h);
      transpose4x4_32(t[0], t[1], t[2], t[3]);
    }
    idct8_1d<Wrap32V>(v);
    for (int h = 0; h < 8; h += 4) {
      __m128i* t = v + h;
      transpose4x4_32(t[0], t[1], t[2], t[3]);
      for (int i = 0; i < 4; ++i) _mm_store_si128(reinterpret_cast<__m128i*>(tmp + 8 * (g + i) + h), t[i]);
    }
  }
  // Column pass, four columns at a time, then (x + 64 p + 32) >> 6 and the clamp.
  const __m128i maxB = max_biased(maxv), k32 = _mm_set1_epi32(32), z = _mm_setzero_si128();
  for (int h = 0; h < 8; h += 4) {
    __m128i v[8];
    for (int r = 0; r < 8; ++r) v[r] = _mm_load_si128(reinterpret_cast<const __m128i*>(tmp + 8 * r + h));
    idct8_1d<Wrap32V>(v);
    for (int y = 0; y < 8; y += 2) {
      const __m128i p0 = _mm_slli_epi32(_mm_unpacklo_epi16(loadl(row(pred, predStep, y) + h), z), 6);
      const __m128i p1 = _mm_slli_epi32(_mm_unpacklo_epi16(loadl(row(pred, predStep, y + 1) + h), z), 6);
      const __m128i s0 = _mm_srai_epi32(_mm_add_epi32(v[y], _mm_add_epi32(p0, k32)), 6);
      const __m128i s1 = _mm_srai_epi32(_mm_add_epi32(v[y + 1], _mm_add_epi32(p1, k32)), 6);
      const __m128i o = clamp_pack_u16(s0, s1, maxB);
      storel(row(dst, dstStep, y) + h, o);
      storeh(row(dst, dstStep, y + 1) + h, o);
    }
  }
}

// ------------------------------------------------------------ Intra 16x16 luma DC
HUX_INLINE void luma_dc_dequant(int16_t* blk, int32_t qp) {
  // Hadamard on [r0|r1], [r2|r3]: the sums wrap, so the order of the butterflies
  // does not change the result.
  __m128i a = loadu(blk), b = loadu(blk + 8);
  for (int pass = 0; pass < 2; ++pass) {
    const __m128i s = _mm_add_epi16(a, b), d = _mm_sub_epi16(a, b);  // [s02|s13], [t02|t13]
    const __m128i p = _mm_unpacklo_epi64(s, d), q = _mm_unpackhi_epi64(s, d);
    a = _mm_add_epi16(p, q);                 // [y0|y1]
    b = swap_halves(_mm_sub_epi16(p, q));    // [y2|y3]
    transpose4x4(a, b);
  }
  const int32_t scale = kLumaDcScale[qp];
  const __m128i sv = _mm_set1_epi16(static_cast<int16_t>(scale));
  if (qp >= 12) {
    storeu(blk, _mm_mullo_epi16(a, sv));
    storeu(blk + 8, _mm_mullo_epi16(b, sv));
    return;
  }
  const int s = qp < 6 ? 2 : 1;
  const __m128i r = _mm_set1_epi32(s), n = _mm_cvtsi32_si128(s);
  __m128i p0, p1;
  mul_wide(a, sv, p0, p1);
  storeu(blk, pack_wrap(_mm_sra_epi32(_mm_add_epi32(p0, r), n), _mm_sra_epi32(_mm_add_epi32(p1, r), n)));
  mul_wide(b, sv, p0, p1);
  storeu(blk + 8, pack_wrap(_mm_sra_epi32(_mm_add_epi32(p0, r), n), _mm_sra_epi32(_mm_add_epi32(p1, r), n)));
}

}  // namespace hux::h264::sse2
