// H.264 dequantisation and inverse transform kernels. The reference versions in
// namespace ref are the plain statement of the arithmetic, including the exact
// widths at which the 16-bit forms wrap or saturate; the SSE2 versions must
// agree with them bit for bit on every input.
//
// Widths, by form:
//  - wrapping 4x4 (residual in place): the row pass and the column pass's
//    butterflies in 16 bits with wrap-around; the column pass's last sums and
//    the rounding in 32 bits;
//  - saturating 4x4 and 8x8 (every form that adds a prediction, and the bare 4x4
//    inverse): every addition and subtraction saturates to 16 bits, the rounding
//    addition of 32 included;
//  - 32-bit forms: two's-complement 32-bit arithmetic throughout.
#pragma once

#include <cstdint>
#include <type_traits>

#include "common/saturate.h"
#include "common/simd.h"
#include "h264/quant_tables.h"

namespace hux::h264 {

// ------------------------------------------------------------ pass arithmetic
// One policy per width; values travel in int32_t and each policy keeps them in
// its own range. The SSE2 kernels instantiate the same pass templates with
// vector policies, so both sides run the very same sequence of operations.

constexpr int32_t wrap32(int64_t v) { return static_cast<int32_t>(static_cast<uint32_t>(static_cast<uint64_t>(v))); }
constexpr int32_t add32w(int32_t a, int32_t b) { return static_cast<int32_t>(static_cast<uint32_t>(a) + static_cast<uint32_t>(b)); }
constexpr int32_t sub32w(int32_t a, int32_t b) { return static_cast<int32_t>(static_cast<uint32_t>(a) - static_cast<uint32_t>(b)); }
constexpr int32_t mul32w(int32_t a, int32_t b) { return static_cast<int32_t>(static_cast<uint32_t>(a) * static_cast<uint32_t>(b)); }
constexpr int32_t shl32w(int32_t a, int s) { return static_cast<int32_t>(static_cast<uint32_t>(a) << s); }

struct Wrap16 {
  using V = int32_t;
  static V add(V a, V b) { return wrap16(a + b); }
  static V sub(V a, V b) { return wrap16(a - b); }
  static V sra(V a, int n) { return a >> n; }
  static V round6(V x) { return wrap16(x + 32) >> 6; }
};
struct Sat16 {
  using V = int32_t;
  static V add(V a, V b) { return sat16(a + b); }
  static V sub(V a, V b) { return sat16(a - b); }
  static V sra(V a, int n) { return a >> n; }
  static V round6(V x) { return sat16(x + 32) >> 6; }
};
// Exact 32-bit sums of 16-bit values (cannot overflow).
struct Exact32 {
  using V = int32_t;
  static V add(V a, V b) { return a + b; }
  static V sub(V a, V b) { return a - b; }
  static V sra(V a, int n) { return a >> n; }
  static V round6(V x) { return (x + 32) >> 6; }
};
// Exact wide sums (the switching-picture paths, which the interface leaves unbounded).
struct Exact64 {
  using V = int64_t;
  static V add(V a, V b) { return a + b; }
  static V sub(V a, V b) { return a - b; }
};
struct Wrap32 {
  using V = int32_t;
  static V add(V a, V b) { return add32w(a, b); }
  static V sub(V a, V b) { return sub32w(a, b); }
  static V sra(V a, int n) { return a >> n; }
  static V round6(V x) { return add32w(x, 32) >> 6; }
};

// ------------------------------------------------------------ 1-D transforms

// First half of the 4-point inverse core transform: e, f, g, h.
template <class Op, class V>
inline void idct4_even_odd(const V& d0, const V& d1, const V& d2, const V& d3, V& e, V& f, V& g, V& h) {
  e = Op::add(d0, d2);
  f = Op::sub(d0, d2);
  g = Op::sub(Op::sra(d1, 1), d3);
  h = Op::add(d1, Op::sra(d3, 1));
}

// Whole 4-point inverse core transform; Last does the final four sums.
template <class Op, class Last = Op, class V>
inline void idct4_1d(V& d0, V& d1, V& d2, V& d3) {
  V e, f, g, h;
  idct4_even_odd<Op>(d0, d1, d2, d3, e, f, g, h);
  d0 = Last::add(e, h);
  d1 = Last::add(f, g);
  d2 = Last::sub(f, g);
  d3 = Last::sub(e, h);
}

// 8-point inverse transform, in place on d[0..7].
template <class Op, class V>
inline void idct8_1d(V* d) {
  const V a0 = Op::add(d[0], d[4]);
  const V a4 = Op::sub(d[0], d[4]);
  const V a2 = Op::sub(Op::sra(d[2], 1), d[6]);
  const V a6 = Op::add(d[2], Op::sra(d[6], 1));
  const V b0 = Op::add(a0, a6);
  const V b2 = Op::add(a4, a2);
  const V b4 = Op::sub(a4, a2);
  const V b6 = Op::sub(a0, a6);
  const V a1 = Op::sub(Op::sub(Op::sub(d[5], d[3]), d[7]), Op::sra(d[7], 1));
  const V a3 = Op::sub(Op::sub(Op::add(d[1], d[7]), d[3]), Op::sra(d[3], 1));
  const V a5 = Op::add(Op::add(Op::sub(d[7], d[1]), d[5]), Op::sra(d[5], 1));
  const V a7 = Op::add(Op::add(Op::add(d[3], d[5]), d[1]), Op::sra(d[1], 1));
  const V b1 = Op::add(a1, Op::sra(a7, 2));
  const V b7 = Op::sub(a7, Op::sra(a1, 2));
  const V b3 = Op::add(a3, Op::sra(a5, 2));
  const V b5 = Op::sub(Op::sra(a3, 2), a5);
  d[0] = Op::add(b0, b7);
  d[1] = Op::add(b2, b5);
  d[2] = Op::add(b4, b3);
  d[3] = Op::add(b6, b1);
  d[4] = Op::sub(b6, b1);
  d[5] = Op::sub(b4, b3);
  d[6] = Op::sub(b2, b5);
  d[7] = Op::sub(b0, b7);
}

// 4-point Hadamard, as butterflies (the order matters where the sums saturate).
template <class Op, class V>
inline void hadamard4_1d(V& c0, V& c1, V& c2, V& c3) {
  const V s01 = Op::add(c0, c1), d01 = Op::sub(c0, c1);
  const V s23 = Op::add(c2, c3), d23 = Op::sub(c2, c3);
  c0 = Op::add(s01, s23);
  c1 = Op::sub(s01, s23);
  c2 = Op::sub(d01, d23);
  c3 = Op::add(d01, d23);
}

// 2x2 Hadamard of a raster 2x2 block: rows first, then columns.
template <class Op, class V>
inline void hadamard2x2(V* c) {
  const V t0 = Op::add(c[0], c[1]), t1 = Op::sub(c[0], c[1]);
  const V t2 = Op::add(c[2], c[3]), t3 = Op::sub(c[2], c[3]);
  c[0] = Op::add(t0, t2);
  c[1] = Op::add(t1, t3);
  c[2] = Op::sub(t0, t2);
  c[3] = Op::sub(t1, t3);
}

// Largest sample value of a bit depth; depths outside 1..16 are clamped into it.
constexpr int32_t sample_max(int32_t bitDepth) { return (int32_t{1} << clip(bitDepth, 1, 16)) - 1; }

// ------------------------------------------------------------ dequantisation rules

// The 4x4 rule with a LevelScale entry: left shift from QP/6 = 4, rounded right
// shift below. Exact value; the 16-bit forms saturate it, the 32-bit ones wrap.
inline int64_t dequant4x4_exact(int32_t level, int32_t ls, int q) {
  const int64_t p = static_cast<int64_t>(level) * ls;
  return q >= 4 ? p * (int64_t{1} << (q - 4)) : (p + (int64_t{1} << (3 - q))) >> (4 - q);
}
constexpr int16_t sat16_wide(int64_t v) {
  return static_cast<int16_t>(v < -32768 ? -32768 : (v > 32767 ? 32767 : v));
}
inline int32_t dequant4x4_32(int32_t level, int32_t ls, int q) {
  const int32_t p = mul32w(level, ls);
  return q >= 4 ? shl32w(p, q - 4) : add32w(p, int32_t{1} << (3 - q)) >> (4 - q);
}

namespace ref {

// ------------------------------------------------------------ 4x4 helpers

// Element x of row y of a block with a byte step (any alignment).
template <class T>
inline T at(const T* base, int32_t step, int y, int x) { return load<T>(row(base, step, y) + x); }
template <class T>
inline void put(T* base, int32_t step, int y, int x, T v) { store<T>(row(base, step, y) + x, v); }

// Rows, then columns, of a raster 4x4 block held in int32_t; Op for the row
// pass and the column butterflies, Last for the column pass's final sums and
// the rounding.
template <class Op, class Last>
inline void idct4x4(int32_t* b) {
  for (int r = 0; r < 4; ++r) idct4_1d<Op>(b[4 * r], b[4 * r + 1], b[4 * r + 2], b[4 * r + 3]);
  for (int c = 0; c < 4; ++c) idct4_1d<Op, Last>(b[c], b[4 + c], b[8 + c], b[12 + c]);
  for (int i = 0; i < 16; ++i) b[i] = Last::round6(b[i]);
}

template <class T>
inline void add_pred4x4(const int32_t* res, const T* pred, int32_t predStep, T* dst, int32_t dstStep, int32_t maxv) {
  for (int y = 0; y < 4; ++y) {
    const T* p = row(pred, predStep, y);
    T* d = row(dst, dstStep, y);
    for (int x = 0; x < 4; ++x) store<T>(d + x, static_cast<T>(clip(res[4 * y + x] + load<T>(p + x), 0, maxv)));
  }
}

// ------------------------------------------------------------ 4x4 residual, in place

// DC from pDC or block[0] x v(QP, class 0) in 16 bits; AC levels x the table in
// 16 bits; wrapping transform; 16 results back into the block (row step in bytes).
inline void dequant_transform_residual(int16_t* blk, int32_t step, const int16_t* pDC, int32_t ac, int32_t qp) {
  const auto& dq = kDequantByPos[qp];
  const int16_t dc = pDC ? *pDC : wrap16(at(blk, step, 0, 0) * dq[0]);
  int32_t b[16];
  if (ac) {
    for (int i = 0; i < 16; ++i) b[i] = i ? wrap16(at(blk, step, i >> 2, i & 3) * dq[i]) : dc;
    idct4x4<Wrap16, Exact32>(b);
  } else {
    for (int i = 0; i < 16; ++i) b[i] = (dc + 32) >> 6;
  }
  for (int i = 0; i < 16; ++i) put(blk, step, i >> 2, i & 3, static_cast<int16_t>(b[i]));
}

// Coefficients x the by-position table (16-bit products), saturating transform,
// prediction added and clamped to 0..255.
inline void dequant_transform_residual_add(const uint8_t* pred, int32_t predStep, const int16_t* coef,
                                           const int16_t* pDC, uint8_t* dst, int32_t dstStep, int32_t qp,
                                           int32_t ac) {
  const auto& dq = kDequantByPos[qp];
  const int16_t dc = pDC ? *pDC : wrap16(coef[0] * dq[0]);
  int32_t b[16];
  if (ac) {
    for (int i = 0; i < 16; ++i) b[i] = i ? wrap16(coef[i] * dq[i]) : dc;
    idct4x4<Sat16, Sat16>(b);
  } else {
    for (int i = 0; i < 16; ++i) b[i] = (dc + 32) >> 6;
  }
  add_pred4x4(b, pred, predStep, dst, dstStep, 255);
}

// The LevelScale rule (caller's table or the flat one), saturated to 16 bits;
// saturating transform; prediction added and clamped to 0..255.
inline void quant_inv_add_pred4x4(const uint8_t* pred, int32_t predStep, const int16_t* coef, const int16_t* pDC,
                                  uint8_t* dst, int32_t dstStep, int32_t qp, int32_t ac, const int16_t* scale) {
  const int16_t* ls = scale ? scale : kFlatLevelScale[kQpMod6[qp]].data();
  const int q = kQpDiv6[qp];
  const int32_t dc = pDC ? *pDC : sat16_wide(dequant4x4_exact(coef[0], ls[0], q));
  int32_t b[16];
  if (ac) {
    for (int i = 1; i < 16; ++i) b[i] = sat16_wide(dequant4x4_exact(coef[i], ls[i], q));
    b[0] = dc;
    idct4x4<Sat16, Sat16>(b);
  } else {
    for (int i = 0; i < 16; ++i) b[i] = (dc + 32) >> 6;
  }
  add_pred4x4(b, pred, predStep, dst, dstStep, 255);
}

// High bit depth: 32-bit dequantisation, transform and rounding; clamped to
// 0..2^bitDepth - 1.
inline void quant_inv_add_pred4x4_hbd(const uint16_t* pred, int32_t predStep, const int32_t* coef,
                                      const int32_t* pDC, uint16_t* dst, int32_t dstStep, int32_t qp, int32_t ac,
                                      int32_t bitDepth, const int16_t* scale) {
  const int16_t* ls = scale ? scale : kFlatLevelScale[kQpMod6[qp]].data();
  const int q = kQpDiv6[qp];
  const int32_t dc = pDC ? *pDC : dequant4x4_32(coef[0], ls[0], q);
  int32_t b[16];
  if (ac) {
    for (int i = 1; i < 16; ++i) b[i] = dequant4x4_32(coef[i], ls[i], q);
    b[0] = dc;
    idct4x4<Wrap32, Wrap32>(b);
  } else {
    for (int i = 0; i < 16; ++i) b[i] = add32w(dc, 32) >> 6;
  }
  add_pred4x4(b, pred, predStep, dst, dstStep, (1 << bitDepth) - 1);
}

// The bare 4x4 inverse: saturating 16-bit passes and rounding.
inline void transform_residual4x4(const int16_t* src, int16_t* dst) {
  int32_t b[16];
  for (int i = 0; i < 16; ++i) b[i] = src[i];
  idct4x4<Sat16, Sat16>(b);
  for (int i = 0; i < 16; ++i) dst[i] = static_cast<int16_t>(b[i]);
}
inline void transform_residual4x4_32(const int32_t* src, int32_t* dst) {
  int32_t b[16];
  for (int i = 0; i < 16; ++i) b[i] = src[i];
  idct4x4<Wrap32, Wrap32>(b);
  for (int i = 0; i < 16; ++i) dst[i] = b[i];
}

// ------------------------------------------------------------ 8x8

// Level x scale: from QP/6 = 6 a left shift of the 16-bit product (wrapping);
// below, a rounded right shift of the 32-bit product, stored in 16 bits.
inline void dequant_luma8x8(int16_t* blk, int32_t qbits, const int16_t* scale) {
  for (int i = 0; i < 64; ++i) {
    const int32_t p = blk[i] * scale[i];
    blk[i] = qbits >= 6 ? wrap16(shl32w(p, qbits - 6)) : wrap16((p + (1 << (5 - qbits))) >> (6 - qbits));
  }
}
inline void dequant_luma8x8_32(int32_t* blk, int32_t qbits, const int16_t* scale) {
  for (int i = 0; i < 64; ++i) {
    const int32_t p = mul32w(blk[i], scale[i]);
    blk[i] = qbits >= 6 ? shl32w(p, qbits - 6) : add32w(p, 1 << (5 - qbits)) >> (6 - qbits);
  }
}

template <class Op>
inline void idct8x8(int32_t* b) {
  for (int r = 0; r < 8; ++r) idct8_1d<Op>(b + 8 * r);
  for (int c = 0; c < 8; ++c) {
    int32_t col[8];
    for (int r = 0; r < 8; ++r) col[r] = b[8 * r + c];
    idct8_1d<Op>(col);
    for (int r = 0; r < 8; ++r) b[8 * r + c] = col[r];
  }
}

// Saturating 16-bit passes, (x + 32) >> 6 with a saturating addition, plus the
// prediction, clamped to 0..255.
inline void idct8x8_add(const uint8_t* pred, int32_t predStep, const int16_t* coef, uint8_t* dst, int32_t dstStep) {
  int32_t b[64];
  for (int i = 0; i < 64; ++i) b[i] = coef[i];
  idct8x8<Sat16>(b);
  for (int y = 0; y < 8; ++y) {
    const uint8_t* p = row(pred, predStep, y);
    uint8_t* d = row(dst, dstStep, y);
    for (int x = 0; x < 8; ++x) d[x] = clip8(Sat16::round6(b[8 * y + x]) + p[x]);
  }
}

// 32-bit passes; (x + 64 x prediction + 32) >> 6 in 32 bits, clamped to 0..maxv.
inline void idct8x8_add_hbd(const uint16_t* pred, int32_t predStep, const int32_t* coef, uint16_t* dst,
                            int32_t dstStep, int32_t maxv) {
  int32_t b[64];
  for (int i = 0; i < 64; ++i) b[i] = coef[i];
  idct8x8<Wrap32>(b);
  for (int y = 0; y < 8; ++y) {
    for (int x = 0; x < 8; ++x)
      put(dst, dstStep, y, x,
          static_cast<uint16_t>(clip(add32w(b[8 * y + x], 64 * at(pred, predStep, y, x) + 32) >> 6, 0, maxv)));
  }
}

// ------------------------------------------------------------ DC transforms

// Intra 16x16 luma DC: wrapping Hadamard (columns, then rows), then
// (x x scale + s) >> s with s = 2, 1, 0 for QP/6 = 0, 1, 2 and up; 16-bit result.
inline int luma_dc_shift(int32_t qp) { return qp < 6 ? 2 : (qp < 12 ? 1 : 0); }
inline void luma_dc_dequant(int16_t* blk, int32_t qp) {
  int32_t b[16];
  for (int i = 0; i < 16; ++i) b[i] = blk[i];
  for (int c = 0; c < 4; ++c) hadamard4_1d<Wrap16>(b[c], b[4 + c], b[8 + c], b[12 + c]);
  for (int r = 0; r < 4; ++r) hadamard4_1d<Wrap16>(b[4 * r], b[4 * r + 1], b[4 * r + 2], b[4 * r + 3]);
  const int32_t scale = kLumaDcScale[qp];
  const int s = luma_dc_shift(qp);
  for (int i = 0; i < 16; ++i) blk[i] = wrap16((b[i] * scale + s) >> s);
}

// 4:2:0 chroma DC: wrapping 2x2 Hadamard, then (x x v(QP, 0) << QP/6) >> 1.
inline void chroma_dc_dequant(int16_t* blk, int32_t qp) {
  int32_t b[4] = {blk[0], blk[1], blk[2], blk[3]};
  hadamard2x2<Wrap16>(b);
  const int32_t dq = kDequantByClass[qp][0];
  for (int i = 0; i < 4; ++i) blk[i] = wrap16((b[i] * dq) >> 1);
}

// Luma DC with a LevelScale entry. The 16-bit form saturates its Hadamard and
// its results, the 32-bit form wraps.
template <class T>
inline void quant_inv_luma_dc(T* blk, int32_t qp, const int16_t* scale) {
  using Op = std::conditional_t<sizeof(T) == 2, Sat16, Wrap32>;
  const int32_t ls = scale ? scale[0] : kFlatLevelScale[kQpMod6[qp]][0];
  const int q = kQpDiv6[qp];
  int32_t b[16];
  for (int i = 0; i < 16; ++i) b[i] = blk[i];
  for (int c = 0; c < 4; ++c) hadamard4_1d<Op>(b[c], b[4 + c], b[8 + c], b[12 + c]);
  for (int r = 0; r < 4; ++r) hadamard4_1d<Op>(b[4 * r], b[4 * r + 1], b[4 * r + 2], b[4 * r + 3]);
  for (int i = 0; i < 16; ++i) {
    if constexpr (sizeof(T) == 2) {
      const int64_t p = static_cast<int64_t>(b[i]) * ls;
      const int64_t v = q >= 6 ? p * (int64_t{1} << (q - 6)) : (p + (int64_t{1} << (5 - q))) >> (6 - q);
      blk[i] = sat16_wide(v);
    } else {
      const int32_t p = mul32w(b[i], ls);
      blk[i] = q >= 6 ? shl32w(p, q - 6) : add32w(p, 1 << (5 - q)) >> (6 - q);
    }
  }
}

// 2x2 chroma DC with a LevelScale entry: no rounding term.
template <class T>
inline void quant_inv_chroma_dc2x2(T* blk, int32_t qp, const int16_t* scale) {
  using Op = std::conditional_t<sizeof(T) == 2, Sat16, Wrap32>;
  const int32_t ls = scale ? scale[0] : kFlatLevelScale[kQpMod6[qp]][0];
  const int q = kQpDiv6[qp];
  int32_t b[4] = {blk[0], blk[1], blk[2], blk[3]};
  hadamard2x2<Op>(b);
  for (int i = 0; i < 4; ++i) {
    if constexpr (sizeof(T) == 2) {
      const int64_t p = static_cast<int64_t>(b[i]) * ls;
      const int64_t v = q < 5 ? p >> (5 - q) : p * (int64_t{1} << (q - 5));
      blk[i] = sat16_wide(v);
    } else {
      const int32_t p = mul32w(b[i], ls);
      blk[i] = q < 5 ? p >> (5 - q) : shl32w(p, q - 5);
    }
  }
}

// 4:2:2 chroma DC (two wide, four high): 4-point Hadamard down each column,
// 2-point across each row; dequantised at QP + 3.
template <class T>
inline void quant_inv_chroma_dc2x4(T* blk, int32_t qp, const int16_t* scale) {
  using Op = std::conditional_t<sizeof(T) == 2, Sat16, Wrap32>;
  const int32_t qp3 = qp + 3;
  const int32_t ls = scale ? scale[0] : kFlatLevelScale[kQpMod6[qp3]][0];
  const int q = kQpDiv6[qp3];
  int32_t b[8];
  for (int i = 0; i < 8; ++i) b[i] = blk[i];
  for (int c = 0; c < 2; ++c) hadamard4_1d<Op>(b[c], b[2 + c], b[4 + c], b[6 + c]);
  for (int r = 0; r < 4; ++r) {
    const int32_t s = Op::add(b[2 * r], b[2 * r + 1]), d = Op::sub(b[2 * r], b[2 * r + 1]);
    b[2 * r] = s;
    b[2 * r + 1] = d;
  }
  for (int i = 0; i < 8; ++i) {
    if constexpr (sizeof(T) == 2) {
      const int64_t p = static_cast<int64_t>(b[i]) * ls;
      const int64_t v = q < 6 ? (p + (int64_t{1} << (5 - q))) >> (6 - q) : p * (int64_t{1} << (q - 6));
      blk[i] = sat16_wide(v);
    } else {
      const int32_t p = mul32w(b[i], ls);
      blk[i] = q < 6 ? add32w(p, 1 << (5 - q)) >> (6 - q) : shl32w(p, q - 6);
    }
  }
}

// ------------------------------------------------------------ SP / SI

// Requantisation of a switching-picture coefficient at QS, then dequantisation
// at QS. Wide intermediates; the caller's ranges are not checked, so QP and QS
// are clamped into the tables' range first.
inline int32_t sisp_requant(int64_t s, int32_t mf, int shift, int32_t dq) {
  const int64_t mag = ((s < 0 ? -s : s) * mf + (int64_t{1} << (shift - 1))) >> shift;
  return wrap32((s < 0 ? -mag : mag) * dq);
}

inline void dequant_transform_residual_sisp(int16_t* blk, const int16_t* predCoef, const int16_t* pDC, int32_t ac,
                                            int32_t qp, int32_t qs, int32_t sw) {
  qp = clip(qp, 0, kQpMax8);
  qs = clip(qs, 0, kQpMax8);
  const int32_t q = sw ? qs : qp;
  const int shift = 15 + kQpDiv6[qs];
  const auto& mf = kQuantMF[kQpMod6[qs]];
  int32_t b[16];
  for (int i = 0; i < 16; ++i) {
    const int cls = class4x4(i);
    if (i == 0 && pDC) {
      b[0] = *pDC;
      continue;
    }
    int64_t s = predCoef[i];
    if (ac || i == 0) s += (static_cast<int64_t>(blk[i]) * kDequantByClass[q][cls] * kTransformNorm[i]) >> 6;
    b[i] = wrap16(sisp_requant(s, mf[i], shift, kDequantByClass[qs][cls]));
  }
  idct4x4<Wrap16, Exact32>(b);
  for (int i = 0; i < 16; ++i) blk[i] = static_cast<int16_t>(clip(b[i], 0, 255));
}

inline void chroma_dc_dequant_sisp(int16_t* blk, const int16_t* predDC, int32_t qp, int32_t qs, int32_t sw) {
  qp = clip(qp, 0, kQpMax8);
  qs = clip(qs, 0, kQpMax8);
  const int32_t q = sw ? qs : qp;
  int64_t p[4] = {predDC[0], predDC[1], predDC[2], predDC[3]};
  hadamard2x2<Exact64>(p);
  const int shift = 16 + kQpDiv6[qs];
  const int32_t mf = kQuantMF[kQpMod6[qs]][0];
  int64_t d[4];
  for (int i = 0; i < 4; ++i) {
    const int64_t s = ((static_cast<int64_t>(blk[i]) * kDequantByClass[q][0] * 16) >> 5) + p[i];
    const int64_t mag = ((s < 0 ? -s : s) * mf + (int64_t{1} << (shift - 1))) >> shift;
    d[i] = (s < 0 ? -mag : mag) * kDequantByClass[qs][0];
  }
  hadamard2x2<Exact64>(d);
  for (int i = 0; i < 4; ++i) blk[i] = wrap16(static_cast<int32_t>(wrap32(d[i] >> 1)));
}

}  // namespace ref

}  // namespace hux::h264

#if defined(HUX_SSE2) && HUX_SSE2
#include "h264/x86/transform_sse2.h"
#endif
