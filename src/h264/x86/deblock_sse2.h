// SSE2 H.264 deblocking of 8-bit samples: every edge of one direction of a
// macroblock per call. Samples stay bytes in sixteen lanes throughout: the
// threshold tests use saturating differences, the rounded averages of the
// filters are pavgb with exact parity corrections, and the normal filter's
// delta is formed as its two unsigned parts (each derivation is stated where
// it is used). Vertical edges are filtered on a transposed copy of the
// macroblock, so both directions share one edge filter.
#pragma once

#include <emmintrin.h>

#include "h264/deblock_kernels.h"

namespace hux::h264::sse2 {
namespace detail {

inline __m128i loadl(const void* p) { return _mm_loadl_epi64(static_cast<const __m128i*>(p)); }
inline __m128i loadu(const void* p) { return _mm_loadu_si128(static_cast<const __m128i*>(p)); }
inline void storel(void* p, __m128i v) { _mm_storel_epi64(static_cast<__m128i*>(p), v); }
inline void storeh(void* p, __m128i v) { _mm_storeh_pi(static_cast<__m64*>(p), _mm_castsi128_ps(v)); }
inline void storeu(void* p, __m128i v) { _mm_storeu_si128(static_cast<__m128i*>(p), v); }
inline __m128i load4(const void* p) { return _mm_cvtsi32_si128(load<int32_t>(p)); }
inline __m128i join(__m128i lo, __m128i hi) { return _mm_unpacklo_epi64(lo, hi); }

HUX_INLINE __m128i absdiff(__m128i a, __m128i b) { return _mm_or_si128(_mm_subs_epu8(a, b), _mm_subs_epu8(b, a)); }
// floor((a + b) / 2): pavgb rounds up, so take the odd sums' carry back.
HUX_INLINE __m128i favg(__m128i a, __m128i b) {
  return _mm_sub_epi8(_mm_avg_epu8(a, b), _mm_and_si128(_mm_xor_si128(a, b), _mm_set1_epi8(1)));
}
// (2a + b + c + 2) >> 2 == pavgb(a, floor((b + c) / 2)) for all bytes.
HUX_INLINE __m128i avg121(__m128i a, __m128i b, __m128i c) { return _mm_avg_epu8(a, favg(b, c)); }
HUX_INLINE __m128i sel(__m128i m, __m128i a, __m128i b) { return _mm_or_si128(_mm_and_si128(m, a), _mm_andnot_si128(m, b)); }

// Four bytes, each repeated over four lanes.
HUX_INLINE __m128i spread4(const uint8_t* b) {
  const __m128i v = load4(b);
  const __m128i d = _mm_unpacklo_epi8(v, v);
  return _mm_unpacklo_epi16(d, d);
}
// Two bytes, each repeated over eight lanes.
HUX_INLINE __m128i spread2(const uint8_t* b) {
  const __m128i v = _mm_cvtsi32_si128(load<uint16_t>(b));
  const __m128i d = _mm_unpacklo_epi8(v, v), q = _mm_unpacklo_epi16(d, d);
  return _mm_unpacklo_epi32(q, q);
}
// Whether any byte of a bS word is 4.
constexpr bool any4(uint32_t w) {
  const uint32_t x = w ^ 0x04040404u;
  return ((x - 0x01010101u) & ~x & 0x80808080u) != 0;
}

// Lanes where the edge filter does not apply: |p0 - q0| >= alpha,
// |p1 - p0| >= beta, |q1 - q0| >= beta, or bS 0.
HUX_INLINE __m128i refused(__m128i p1, __m128i p0, __m128i q0, __m128i q1, __m128i va, __m128i vb, __m128i bsv) {
  const __m128i z = _mm_setzero_si128();
  // Each margin is 0 exactly where its test fails; so is bS.
  const __m128i room = _mm_min_epu8(_mm_min_epu8(_mm_subs_epu8(va, absdiff(p0, q0)), bsv),
                                    _mm_subs_epu8(vb, _mm_max_epu8(absdiff(p1, p0), absdiff(q1, q0))));
  return _mm_cmpeq_epi8(room, z);
}

// The normal filter's p0/q0 step, in bytes: d = ((q0-p0)*4 + (p1-q1) + 4) >> 3
// equals m + e - 160 with m = floor((q0 - p0 + 256) / 2) (pavgb with ~p0),
// c = floor((p1 - q1 + 256) / 4) and e = ceil((c + ((q0 ^ p0) & 1)) / 2).
// |d| <= 159, so its two signed parts fit in bytes, and tc (saturated at 255)
// clamps them exactly; saturating adds are the 0..255 clamp.
HUX_INLINE void delta_step(__m128i& p0, __m128i& q0, __m128i p1, __m128i q1, __m128i tc) {
  const __m128i ones = _mm_set1_epi8(-1), one = _mm_set1_epi8(1);
  const __m128i a = _mm_avg_epu8(p1, _mm_xor_si128(q1, ones));
  const __m128i c = _mm_and_si128(_mm_srli_epi16(a, 1), _mm_set1_epi8(0x7F));
  const __m128i e = _mm_avg_epu8(c, _mm_and_si128(_mm_xor_si128(q0, p0), one));
  const __m128i f = _mm_sub_epi8(_mm_set1_epi8(static_cast<char>(160)), e);
  const __m128i m = _mm_avg_epu8(q0, _mm_xor_si128(p0, ones));
  const __m128i up = _mm_min_epu8(_mm_subs_epu8(m, f), tc), down = _mm_min_epu8(_mm_subs_epu8(f, m), tc);
  p0 = _mm_subs_epu8(_mm_adds_epu8(p0, up), down);
  q0 = _mm_subs_epu8(_mm_adds_epu8(q0, down), up);
}

// floor((a + b + c + d + 2) / 4): the average of the two rounded-up pair
// averages, less one where that rounded up twice.
HUX_INLINE __m128i avg4(__m128i a, __m128i b, __m128i c, __m128i d) {
  const __m128i s = _mm_avg_epu8(a, b), t = _mm_avg_epu8(c, d);
  const __m128i odd = _mm_and_si128(_mm_or_si128(_mm_xor_si128(a, b), _mm_xor_si128(c, d)), _mm_set1_epi8(1));
  return _mm_sub_epi8(_mm_avg_epu8(s, t), _mm_and_si128(_mm_xor_si128(s, t), odd));
}

// The three-tap side of the luma strong filter, p side named (the q side
// mirrors it): p0' = (p2 + 2p1 + 2p0 + 2q0 + q1 + 4) >> 3 is avg4 of p1, p0,
// q0 and floor((p2 + q1) / 2); p1' = avg4(p2, p1, p0, q0); and with
// A = p2 + p1 + p0 + q0 and g its bit 1 (exact in wrapping bytes),
// p2' = (2p3 + 3p2 + A + 4) >> 3 = avg(floor((p3 + p2 + g) / 2), floor(A / 4)),
// where floor(A / 4) = p1' - g.
HUX_INLINE void strong_side(__m128i p3, __m128i p2, __m128i p1, __m128i p0, __m128i q0, __m128i q1, __m128i& o2,
                            __m128i& o1, __m128i& o0) {
  const __m128i one = _mm_set1_epi8(1);
  o1 = avg4(p2, p1, p0, q0);
  o0 = avg4(p1, favg(p2, q1), p0, q0);
  const __m128i sum = _mm_add_epi8(_mm_add_epi8(p2, p1), _mm_add_epi8(p0, q0));
  const __m128i g = _mm_and_si128(_mm_srli_epi16(sum, 1), one);
  const __m128i half = _mm_add_epi8(favg(p3, p2), _mm_and_si128(g, _mm_xor_si128(p3, p2)));
  o2 = _mm_avg_epu8(half, _mm_sub_epi8(o1, g));
}

// The sample rows of a luma edge: i = 0..7 for p3, p2, p1, p0, q0, q1, q2, q3,
// in the picture (horizontal edges) or in a transposed copy (vertical ones).
struct PictureRows {
  uint8_t* q;
  int32_t step;
  __m128i get(int i) const { return loadu(row(q, step, i - 4)); }
  void put(int i, __m128i v) const { storeu(row(q, step, i - 4), v); }
};
struct CopyRows {
  __m128i* t;
  __m128i get(int i) const { return t[i]; }
  void put(int i, __m128i v) const { t[i] = v; }
};

// An edge class's thresholds in every lane, made once per call.
struct Thresholds {
  __m128i alpha, beta, beta1;  // beta1: |x| < beta as |x| <= beta - 1 (beta 0 refuses every lane anyway)
  __m128i near;                // (alpha >> 2) + 1: the strong filter's |p0 - q0| <= near
};
// Both edge classes from pAlpha[0..1] and pBeta[0..1] with one broadcast.
HUX_INLINE void thresholds(const uint8_t* alpha, const uint8_t* beta, Thresholds& outer, Thresholds& inner) {
  const __m128i v = _mm_unpacklo_epi8(_mm_cvtsi32_si128(load<uint16_t>(alpha)), _mm_cvtsi32_si128(load<uint16_t>(beta)));
  const __m128i b = _mm_unpacklo_epi8(v, v), w = _mm_unpacklo_epi16(b, b);  // dwords a0, b0, a1, b1
  const __m128i one = _mm_set1_epi8(1);
  const __m128i near = _mm_add_epi8(_mm_and_si128(_mm_srli_epi16(w, 2), _mm_set1_epi8(0x3F)), one);
  outer.alpha = _mm_shuffle_epi32(w, 0x00), outer.beta = _mm_shuffle_epi32(w, 0x55);
  inner.alpha = _mm_shuffle_epi32(w, 0xAA), inner.beta = _mm_shuffle_epi32(w, 0xFF);
  outer.near = _mm_shuffle_epi32(near, 0x00), inner.near = _mm_shuffle_epi32(near, 0xAA);
  outer.beta1 = _mm_subs_epu8(outer.beta, one), inner.beta1 = _mm_subs_epu8(inner.beta, one);
}

// One luma edge of sixteen lines, filtered in place; bsw is its bS word.
template <class Rows>
HUX_INLINE void luma_edge(Rows r, const Thresholds& th, const uint8_t* tc0, const uint8_t* bs, uint32_t bsw) {
  const __m128i z = _mm_setzero_si128();
  const __m128i p2 = r.get(1), p1 = r.get(2), p0 = r.get(3), q0 = r.get(4), q1 = r.get(5), q2 = r.get(6);
  const __m128i va = th.alpha, vb = th.beta, vb1 = th.beta1;
  const __m128i bsv = spread4(bs);
  const __m128i fail = refused(p1, p0, q0, q1, va, vb, bsv);
  const __m128i ap = _mm_cmpeq_epi8(_mm_subs_epu8(absdiff(p2, p0), vb1), z);
  const __m128i aq = _mm_cmpeq_epi8(_mm_subs_epu8(absdiff(q2, q0), vb1), z);
  const bool strong = any4(bsw), weak = bsw != 0x04040404u;
  __m128i n1 = p1, n0 = p0, m0 = q0, m1 = q1;  // after the normal filter
  if (weak) {
    const __m128i off = strong ? _mm_or_si128(fail, _mm_cmpeq_epi8(bsv, _mm_set1_epi8(4))) : fail;
    const __m128i tc0v = spread4(tc0), tc = _mm_andnot_si128(off, tc0v);
    // p1' = clamp(floor((p2 + avg(p0, q0)) / 2), p1 - tc0, p1 + tc0); tc0 0 where ap fails.
    const __m128i avg = _mm_avg_epu8(p0, q0);
    const __m128i tp = _mm_and_si128(tc, ap), tq = _mm_and_si128(tc, aq);
    n1 = _mm_min_epu8(_mm_max_epu8(favg(p2, avg), _mm_subs_epu8(p1, tp)), _mm_adds_epu8(p1, tp));
    m1 = _mm_min_epu8(_mm_max_epu8(favg(q2, avg), _mm_subs_epu8(q1, tq)), _mm_adds_epu8(q1, tq));
    // tc = tc0 + ap + aq (the masks are -1 where set); |d| <= 159, so tc0
    // may be capped at 200 first.
    const __m128i tcf =
        _mm_andnot_si128(off, _mm_sub_epi8(_mm_sub_epi8(_mm_min_epu8(tc0v, _mm_set1_epi8(static_cast<char>(200))), ap), aq));
    delta_step(n0, m0, p1, q1, tcf);
  }
  if (!strong) {
    r.put(2, n1), r.put(3, n0), r.put(4, m0), r.put(5, m1);
    return;
  }
  const __m128i on = _mm_andnot_si128(fail, _mm_cmpeq_epi8(bsv, _mm_set1_epi8(4)));
  const __m128i near = _mm_cmpeq_epi8(_mm_subs_epu8(absdiff(p0, q0), th.near), z);
  const __m128i onNear = _mm_and_si128(on, near);
  const __m128i ps = _mm_and_si128(onNear, ap), qs = _mm_and_si128(onNear, aq);
  __m128i s2, s1, s0, t0, t1, t2;
  strong_side(r.get(0), p2, p1, p0, q0, q1, s2, s1, s0);
  strong_side(r.get(7), q2, q1, q0, p0, p1, t2, t1, t0);
  r.put(1, sel(ps, s2, p2));
  r.put(2, sel(ps, s1, n1));
  r.put(3, sel(ps, s0, sel(on, avg121(p1, p0, q1), n0)));
  r.put(4, sel(qs, t0, sel(on, avg121(q1, q0, p1), m0)));
  r.put(5, sel(qs, t1, m1));
  r.put(6, sel(qs, t2, q2));
}

// Two chroma edges side by side in sixteen lanes (eight lines each), filtered
// in place. `strongv` marks the lanes whose bS selects the strong filter.
HUX_INLINE void chroma_edges(__m128i& p1, __m128i& p0, __m128i& q0, __m128i& q1, __m128i va, __m128i vb, __m128i bsv,
                             __m128i tc0v, __m128i strongv, bool strong) {
  const __m128i fail = refused(p1, p0, q0, q1, va, vb, bsv);
  const __m128i off = strong ? _mm_or_si128(fail, strongv) : fail;
  // tc = tc0 + 1 in the filtered lanes, 0 elsewhere.
  const __m128i tc = _mm_andnot_si128(off, _mm_adds_epu8(tc0v, _mm_set1_epi8(1)));
  __m128i np0 = p0, nq0 = q0;
  delta_step(np0, nq0, p1, q1, tc);
  if (strong) {
    const __m128i on = _mm_andnot_si128(fail, strongv);
    np0 = sel(on, avg121(p1, p0, q1), np0);
    nq0 = sel(on, avg121(q1, q0, p1), nq0);
  }
  p0 = np0;
  q0 = nq0;
}

// ------------------------------------------------------------ transposes

template <class Lo, class Hi>
HUX_INLINE void interleave_round(__m128i* dst, const __m128i* src, Lo lo, Hi hi) {
  for (int i = 0; i < 8; ++i) {
    dst[2 * i] = lo(src[i], src[i + 8]);
    dst[2 * i + 1] = hi(src[i], src[i + 8]);
  }
}
// 16x16 bytes: in[k] holds row bitrev4(k); out[c] is column c. Four rounds
// of pairwise interleaving move the row bits into the byte position
// reversed, which the input order undoes.
HUX_INLINE void transpose16(const __m128i* in, __m128i* out) {
  __m128i a[16], b[16];
  interleave_round(a, in, [](__m128i x, __m128i y) { return _mm_unpacklo_epi8(x, y); },
                   [](__m128i x, __m128i y) { return _mm_unpackhi_epi8(x, y); });
  interleave_round(b, a, [](__m128i x, __m128i y) { return _mm_unpacklo_epi16(x, y); },
                   [](__m128i x, __m128i y) { return _mm_unpackhi_epi16(x, y); });
  interleave_round(a, b, [](__m128i x, __m128i y) { return _mm_unpacklo_epi32(x, y); },
                   [](__m128i x, __m128i y) { return _mm_unpackhi_epi32(x, y); });
  interleave_round(out, a, [](__m128i x, __m128i y) { return _mm_unpacklo_epi64(x, y); },
                   [](__m128i x, __m128i y) { return _mm_unpackhi_epi64(x, y); });
}
constexpr int kBitrev4[16] = {0, 8, 4, 12, 2, 10, 6, 14, 1, 9, 5, 13, 3, 11, 7, 15};

}  // namespace detail

// Luma horizontal edges: rows -4..15 of sixteen columns.
HUX_INLINE void luma_hor(uint8_t* p, int32_t step, const uint8_t* alpha, const uint8_t* beta, const uint8_t* tc0,
                     const uint8_t* bs) {
  using namespace detail;
  Thresholds outer, inner;
  thresholds(alpha, beta, outer, inner);
  // The macroblock edge apart, so that the inner edges' thresholds stay in registers.
  if (const uint32_t w = load<uint32_t>(bs)) luma_edge(PictureRows{p, step}, outer, tc0, bs, w);
  for (int k = 1; k < 4; ++k) {
    const uint32_t w = load<uint32_t>(bs + 4 * k);
    if (!w) continue;
    luma_edge(PictureRows{row(p, step, 4 * k), step}, inner, tc0 + 4 * k, bs + 4 * k, w);
  }
}

// Luma vertical edges: sixteen rows of columns -4..15, transposed into twenty
// column registers, filtered like horizontal edges and transposed back.
HUX_INLINE void luma_ver(uint8_t* p, int32_t step, const uint8_t* alpha, const uint8_t* beta, const uint8_t* tc0,
                     const uint8_t* bs) {
  using namespace detail;
  const uint32_t w[4] = {load<uint32_t>(bs), load<uint32_t>(bs + 4), load<uint32_t>(bs + 8), load<uint32_t>(bs + 12)};
  if (!(w[0] | w[1] | w[2] | w[3])) return;
  __m128i t[20], in[16];
  // Columns -4..-1: four bytes of every row.
  {
    __m128i a[8], b[4], c[4];
    for (int i = 0; i < 8; ++i) a[i] = _mm_unpacklo_epi8(load4(row(p, step, 2 * i) - 4), load4(row(p, step, 2 * i + 1) - 4));
    for (int i = 0; i < 4; ++i) b[i] = _mm_unpacklo_epi16(a[2 * i], a[2 * i + 1]);  // rows 4i..4i+3, dword = column
    c[0] = _mm_unpacklo_epi32(b[0], b[1]), c[1] = _mm_unpackhi_epi32(b[0], b[1]);
    c[2] = _mm_unpacklo_epi32(b[2], b[3]), c[3] = _mm_unpackhi_epi32(b[2], b[3]);
    t[0] = _mm_unpacklo_epi64(c[0], c[2]), t[1] = _mm_unpackhi_epi64(c[0], c[2]);
    t[2] = _mm_unpacklo_epi64(c[1], c[3]), t[3] = _mm_unpackhi_epi64(c[1], c[3]);
  }
  for (int i = 0; i < 16; ++i) in[i] = loadu(row(p, step, kBitrev4[i]));
  transpose16(in, t + 4);
  Thresholds outer, inner;
  thresholds(alpha, beta, outer, inner);
  for (int k = 0; k < 4; ++k)
    if (w[k]) luma_edge(CopyRows{t + 4 * k}, k ? inner : outer, tc0 + 4 * k, bs + 4 * k, w[k]);
  for (int i = 0; i < 16; ++i) in[i] = t[4 + kBitrev4[i]];
  transpose16(in, in);
  for (int i = 0; i < 16; ++i) storeu(row(p, step, i), in[i]);
  {
    const __m128i a0 = _mm_unpacklo_epi8(t[0], t[1]), a1 = _mm_unpackhi_epi8(t[0], t[1]);
    const __m128i a2 = _mm_unpacklo_epi8(t[2], t[3]), a3 = _mm_unpackhi_epi8(t[2], t[3]);
    const __m128i rows[4] = {_mm_unpacklo_epi16(a0, a2), _mm_unpackhi_epi16(a0, a2), _mm_unpacklo_epi16(a1, a3),
                             _mm_unpackhi_epi16(a1, a3)};
    for (int i = 0; i < 4; ++i) {
      __m128i v = rows[i];
      for (int j = 0; j < 4; ++j, v = _mm_srli_si128(v, 4)) store<int32_t>(row(p, step, 4 * i + j) - 4, _mm_cvtsi128_si32(v));
    }
  }
}

namespace detail {
// Lanes 0..7 edge 0, lanes 8..15 edge 1 of a 4:2:0 chroma macroblock.
HUX_INLINE void chroma420(__m128i& p1, __m128i& p0, __m128i& q0, __m128i& q1, const uint8_t* alpha, const uint8_t* beta,
                          const uint8_t* tc0, const uint8_t* bs, uint32_t w0, uint32_t w1) {
  const __m128i b = _mm_unpacklo_epi32(load4(bs), load4(bs + 8));
  const __m128i bsv = _mm_unpacklo_epi8(b, b);
  const __m128i t = loadl(tc0);
  const bool strong = any4(w0) || any4(w1);
  chroma_edges(p1, p0, q0, q1, spread2(alpha), spread2(beta), bsv, _mm_unpacklo_epi8(t, t),
               _mm_cmpeq_epi8(bsv, _mm_set1_epi8(4)), strong);
}
}  // namespace detail

// 4:2:0 chroma horizontal edges: rows -2..5 of eight columns; the two edges
// never touch each other's samples, so they are filtered together.
HUX_INLINE void chroma_hor(uint8_t* p, int32_t step, const uint8_t* alpha, const uint8_t* beta, const uint8_t* tc0,
                       const uint8_t* bs) {
  using namespace detail;
  const uint32_t w0 = load<uint32_t>(bs), w1 = load<uint32_t>(bs + 8);
  if (!(w0 | w1)) return;
  __m128i p1 = join(loadl(row(p, step, -2)), loadl(row(p, step, 2)));
  __m128i p0 = join(loadl(row(p, step, -1)), loadl(row(p, step, 3)));
  __m128i q0 = join(loadl(row(p, step, 0)), loadl(row(p, step, 4)));
  __m128i q1 = join(loadl(row(p, step, 1)), loadl(row(p, step, 5)));
  chroma420(p1, p0, q0, q1, alpha, beta, tc0, bs, w0, w1);
  storel(row(p, step, -1), p0);
  storeh(row(p, step, 3), p0);
  storel(row(p, step, 0), q0);
  storeh(row(p, step, 4), q0);
}

namespace detail {
// Eight rows of columns -2..5 as p1 = [c0|c4], p0 = [c1|c5], q0 = [c2|c6],
// q1 = [c3|c7]: column c of the edge at column 0 in the low half, of the
// edge at column 4 in the high half.
HUX_INLINE void load_cols(const uint8_t* p, int32_t step, __m128i& p1, __m128i& p0, __m128i& q0, __m128i& q1) {
  __m128i a[4], b[4];
  for (int i = 0; i < 4; ++i) a[i] = _mm_unpacklo_epi8(loadl(row(p, step, 2 * i) - 2), loadl(row(p, step, 2 * i + 1) - 2));
  b[0] = _mm_unpacklo_epi16(a[0], a[1]), b[1] = _mm_unpackhi_epi16(a[0], a[1]);  // rows 0..3: columns 0..3, 4..7
  b[2] = _mm_unpacklo_epi16(a[2], a[3]), b[3] = _mm_unpackhi_epi16(a[2], a[3]);  // rows 4..7
  const __m128i c01 = _mm_unpacklo_epi32(b[0], b[2]), c23 = _mm_unpackhi_epi32(b[0], b[2]);
  const __m128i c45 = _mm_unpacklo_epi32(b[1], b[3]), c67 = _mm_unpackhi_epi32(b[1], b[3]);
  p1 = _mm_unpacklo_epi64(c01, c45), p0 = _mm_unpackhi_epi64(c01, c45);
  q0 = _mm_unpacklo_epi64(c23, c67), q1 = _mm_unpackhi_epi64(c23, c67);
}
// The inverse of load_cols.
HUX_INLINE void store_cols(uint8_t* p, int32_t step, __m128i p1, __m128i p0, __m128i q0, __m128i q1) {
  const __m128i e0 = _mm_unpacklo_epi8(p1, p0), e1 = _mm_unpacklo_epi8(q0, q1);  // edge 0: rows 0..7
  const __m128i f0 = _mm_unpackhi_epi8(p1, p0), f1 = _mm_unpackhi_epi8(q0, q1);  // edge 1
  const __m128i e03 = _mm_unpacklo_epi16(e0, e1), e47 = _mm_unpackhi_epi16(e0, e1);
  const __m128i f03 = _mm_unpacklo_epi16(f0, f1), f47 = _mm_unpackhi_epi16(f0, f1);
  const __m128i r[4] = {_mm_unpacklo_epi32(e03, f03), _mm_unpackhi_epi32(e03, f03), _mm_unpacklo_epi32(e47, f47),
                        _mm_unpackhi_epi32(e47, f47)};
  for (int i = 0; i < 4; ++i) {
    storel(row(p, step, 2 * i) - 2, r[i]);
    storeh(row(p, step, 2 * i + 1) - 2, r[i]);
  }
}
}  // namespace detail

// 4:2:0 chroma vertical edges: eight rows of columns -2..5, transposed so
// that each register holds one column of both edges.
HUX_INLINE void chroma_ver(uint8_t* p, int32_t step, const uint8_t* alpha, const uint8_t* beta, const uint8_t* tc0,
                       const uint8_t* bs) {
  using namespace detail;
  const uint32_t w0 = load<uint32_t>(bs), w1 = load<uint32_t>(bs + 8);
  if (!(w0 | w1)) return;
  __m128i p1, p0, q0, q1;
  load_cols(p, step, p1, p0, q0, q1);
  chroma420(p1, p0, q0, q1, alpha, beta, tc0, bs, w0, w1);
  store_cols(p, step, p1, p0, q0, q1);
}

// 4:2:2 chroma horizontal edges: rows 0, 4, 8 and 12, two edges at a time
// (chroma edges never touch each other's samples). An edge takes the strong
// filter in every segment when its first bS byte is 4.
inline void chroma422_hor(uint8_t* p, int32_t step, const uint8_t* alpha, const uint8_t* beta, const uint8_t* tc0,
                          const uint8_t* bs) {
  using namespace detail;
  const __m128i a = spread2(alpha), b = spread2(beta);
  const __m128i inner[2] = {_mm_unpackhi_epi64(a, a), _mm_unpackhi_epi64(b, b)};
  for (int j = 0; j < 2; ++j) {
    const uint8_t* eb = bs + 8 * j;
    if (!(load<uint32_t>(eb) | load<uint32_t>(eb + 4))) continue;
    uint8_t* q = row(p, step, 8 * j);
    __m128i p1 = join(loadl(row(q, step, -2)), loadl(row(q, step, 2)));
    __m128i p0 = join(loadl(row(q, step, -1)), loadl(row(q, step, 3)));
    __m128i q0 = join(loadl(row(q, step, 0)), loadl(row(q, step, 4)));
    __m128i q1 = join(loadl(row(q, step, 1)), loadl(row(q, step, 5)));
    const __m128i bv = loadl(eb), tv = loadl(tc0 + 8 * j);
    const __m128i bsv = _mm_unpacklo_epi8(bv, bv);
    const __m128i first = _mm_cmpeq_epi8(bsv, _mm_set1_epi8(4));
    const __m128i strongv = _mm_shufflehi_epi16(_mm_shufflelo_epi16(first, 0), 0);
    chroma_edges(p1, p0, q0, q1, j ? inner[0] : a, j ? inner[1] : b, bsv, _mm_unpacklo_epi8(tv, tv), strongv,
                 eb[0] == 4 || eb[4] == 4);
    storel(row(q, step, -1), p0);
    storeh(row(q, step, 3), p0);
    storel(row(q, step, 0), q0);
    storeh(row(q, step, 4), q0);
  }
}

// 4:2:2 chroma vertical edges: sixteen rows of columns -2..5; each edge is
// filtered over its sixteen rows in one register.
inline void chroma422_ver(uint8_t* p, int32_t step, const uint8_t* alpha, const uint8_t* beta, const uint8_t* tc0,
                          const uint8_t* bs) {
  using namespace detail;
  const uint32_t w[2] = {load<uint32_t>(bs), load<uint32_t>(bs + 8)};
  if (!(w[0] | w[1])) return;
  __m128i top[4], bot[4], e[2][4];
  load_cols(p, step, top[0], top[1], top[2], top[3]);
  load_cols(row(p, step, 8), step, bot[0], bot[1], bot[2], bot[3]);
  for (int c = 0; c < 4; ++c) {
    e[0][c] = _mm_unpacklo_epi64(top[c], bot[c]);
    e[1][c] = _mm_unpackhi_epi64(top[c], bot[c]);
  }
  for (int k = 0; k < 2; ++k) {
    if (!w[k]) continue;
    const __m128i bsv = spread4(bs + 8 * k);
    chroma_edges(e[k][0], e[k][1], e[k][2], e[k][3], _mm_set1_epi8(static_cast<char>(alpha[k])),
                 _mm_set1_epi8(static_cast<char>(beta[k])), bsv, spread4(tc0 + 4 * k),
                 _mm_cmpeq_epi8(bsv, _mm_set1_epi8(4)), any4(w[k]));
  }
  for (int c = 0; c < 4; ++c) {
    top[c] = _mm_unpacklo_epi64(e[0][c], e[1][c]);
    bot[c] = _mm_unpackhi_epi64(e[0][c], e[1][c]);
  }
  store_cols(p, step, top[0], top[1], top[2], top[3]);
  store_cols(row(p, step, 8), step, bot[0], bot[1], bot[2], bot[3]);
}

}  // namespace hux::h264::sse2
