// Difference, SATD, SSD and activity kernels. The reference set states each
// metric; the SSE2 set (x86/metrics_sse2.h) computes the same values. The
// half-sample reference of the metrics is the one of the SADs and of motion
// compensation (ref_sample8), with the rounding the metric takes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <utility>

#include "common/saturate.h"
#include "me/mc_kernels.h"

namespace hux::me {

// The variance of VarSum: single precision Q / 64 - (S / 64)^2, truncated
// toward zero. Both kernel sets end with this one statement, so the value
// does not depend on how S and Q were summed.
inline int32_t float_variance64(int64_t q, int32_t s) {
  const float m = static_cast<float>(s) / 64.0f;
  return static_cast<int32_t>(static_cast<float>(q) / 64.0f - m * m);
}

using GetDiffFn = void (*)(const uint8_t*, int32_t, const uint8_t*, int32_t, int16_t*, int32_t, int16_t*, int32_t, int);
using GetDiffBFn = void (*)(const uint8_t*, int32_t, const uint8_t*, int32_t, const uint8_t*, int32_t, int16_t*, int32_t,
                            int);

// kGetDiff: 4 x position + 2 x rounding + 1 with a predictor output;
// kGetDiffB: 2 x forward position + 8 x backward position + rounding.
#define HUX_ME_METRIC_TABLES                                                                                     \
  template <int W, size_t... I>                                                                                  \
  struct GetDiffTable {                                                                                          \
    static constexpr GetDiffFn k[] = {&get_diff<W, int(I / 4), int(I / 4 ? (I / 2) & 1 : 0), bool(I & 1)>...};   \
    static constexpr GetDiffBFn b[] = {&get_diff_b<W, int((I / 2) & 3), int(I / 8), int(I & 1)>...};            \
  };                                                                                                             \
  template <int W, size_t... I>                                                                                  \
  constexpr const GetDiffFn* get_diff_of(std::index_sequence<I...>) {                                            \
    return GetDiffTable<W, I...>::k;                                                                             \
  }                                                                                                              \
  template <int W, size_t... I>                                                                                  \
  constexpr const GetDiffBFn* get_diff_b_of(std::index_sequence<I...>) {                                         \
    return GetDiffTable<W, I...>::b;                                                                             \
  }                                                                                                              \
  template <int W>                                                                                               \
  inline constexpr const GetDiffFn* kGetDiff = get_diff_of<W>(std::make_index_sequence<16>());                   \
  template <int W>                                                                                               \
  inline constexpr const GetDiffBFn* kGetDiffB = get_diff_b_of<W>(std::make_index_sequence<32>());

namespace ref {

// One 4-point Hadamard butterfly pass over v[0], v[s], v[2s], v[3s] with
// signed 16-bit saturating additions and subtractions.
inline void hadamard4(int16_t* v, int s) {
  const int16_t a = sat16(v[0] + v[s]), b = sat16(v[0] - v[s]);
  const int16_t c = sat16(v[2 * s] + v[3 * s]), d = sat16(v[2 * s] - v[3 * s]);
  v[0] = sat16(a + c);
  v[s] = sat16(b + d);
  v[2 * s] = sat16(a - c);
  v[3 * s] = sat16(b - d);
}

// Sum of the absolute 4x4 Hadamard coefficients of the difference, tile by
// tile (rows, then columns), not normalised.
template <int W, int H>
int32_t satd(const uint8_t* cur, int32_t cs, const uint8_t* ref, int32_t rs) {
  int32_t total = 0;
  for (int by = 0; by < H; by += 4)
    for (int bx = 0; bx < W; bx += 4) {
      int16_t d[16];
      for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 4; ++x) d[4 * y + x] = wrap16(row(cur, cs, by + y)[bx + x] - row(ref, rs, by + y)[bx + x]);
      for (int i = 0; i < 4; ++i) hadamard4(d + 4 * i, 1);
      for (int i = 0; i < 4; ++i) hadamard4(d + i, 4);
      for (int16_t c : d) total += std::abs(int32_t{c});
    }
  return total;
}

inline void hadamard8(int32_t* v, int s) {
  for (int len = 1; len < 8; len <<= 1)
    for (int i = 0; i < 8; i += 2 * len)
      for (int j = i; j < i + len; ++j) {
        const int32_t a = v[j * s], b = v[(j + len) * s];
        v[j * s] = a + b;
        v[(j + len) * s] = a - b;
      }
}

// 8x8 Hadamard of the difference in 32-bit arithmetic, rows then columns,
// sum of absolute coefficients. Word samples: the difference is the 16-bit
// Sub of the two blocks (wrapped); the steps here are in bytes.
template <class T>
int32_t sat8x8d(const T* cur, int32_t cs, const T* ref, int32_t rs) {
  int32_t d[64];
  for (int y = 0; y < 8; ++y)
    for (int x = 0; x < 8; ++x) d[8 * y + x] = wrap16(row(cur, cs, y)[x] - row(ref, rs, y)[x]);
  for (int i = 0; i < 8; ++i) hadamard8(d + 8 * i, 1);
  for (int i = 0; i < 8; ++i) hadamard8(d + i, 8);
  uint32_t s = 0;
  for (int32_t c : d) s += static_cast<uint32_t>(std::abs(c));
  return static_cast<int32_t>(s);
}

// Sum of squared differences against the half-sample reference (halves up).
template <int W, int H, int Mode>
int32_t ssd(const uint8_t* cur, int32_t cs, const uint8_t* ref, int32_t rs) {
  int32_t s = 0;
  for (int y = 0; y < H; ++y)
    for (int x = 0; x < W; ++x) {
      const int32_t d = row(cur, cs, y)[x] - ref_sample8<Mode>(ref, rs, x, y);
      s += d * d;
    }
  return s;
}

// Against the upward average of two half-sample predictions.
template <int ModeF, int ModeB>
int32_t sqr_diff_b(const uint8_t* cur, int32_t cs, const uint8_t* f, int32_t fs, const uint8_t* b, int32_t bs) {
  int32_t s = 0;
  for (int y = 0; y < 16; ++y)
    for (int x = 0; x < 16; ++x) {
      const int32_t p = (ref_sample8<ModeF>(f, fs, x, y) + ref_sample8<ModeB>(b, bs, x, y) + 1) >> 1;
      s += (p - row(cur, cs, y)[x]) * (p - row(cur, cs, y)[x]);
    }
  return s;
}

// Per 8x8 sub-block (raster order) of the difference d = current minus
// half-sample reference: var = sum(d^2) - (sum(d)^2 >> 6), 64 times the
// variance truncated, and mean = (sum(d) + 32) >> 6, rounded (halves up).
template <int H, int Mode>
void var_mean_diff(const uint8_t* cur, int32_t cs, const uint8_t* ref, int32_t rs, int32_t* var, int32_t* mean) {
  for (int b = 0; b < H / 4; ++b) {
    const int bx = (b & 1) * 8, by = (b >> 1) * 8;
    int32_t s = 0, q = 0;
    for (int y = by; y < by + 8; ++y)
      for (int x = bx; x < bx + 8; ++x) {
        const int32_t d = row(cur, cs, y)[x] - ref_sample8<Mode>(ref, rs, x, y);
        s += d;
        q += d * d;
      }
    var[b] = q - ((s * s) >> 6);
    mean[b] = (s + 32) >> 6;
  }
}

// Q - ((S * S) >> 8) in unsigned 32-bit arithmetic: 256 times the variance.
inline uint32_t variance16x16(const uint8_t* src, int32_t step) {
  uint32_t s = 0, q = 0;
  for (int y = 0; y < 16; ++y)
    for (int x = 0; x < 16; ++x) {
      const uint32_t v = row(src, step, y)[x];
      s += v;
      q += v * v;
    }
  return q - ((s * s) >> 8);
}

template <class T>
void var_sum8x8(const T* src, int32_t step, int32_t* var, int32_t* sum) {
  int32_t s = 0;
  int64_t q = 0;
  for (int y = 0; y < 8; ++y)
    for (int x = 0; x < 8; ++x) {
      const int32_t v = row(src, step, y)[x];
      s += v;
      q += int64_t{v} * v;
    }
  *var = float_variance64(q, s);
  *sum = s;
}

// Sum of |x - mean| with the mean rounded: (S + N*N/2) / (N*N).
template <int N>
int32_t mean_abs_dev(const uint8_t* src, int32_t step) {
  int32_t s = 0;
  for (int y = 0; y < N; ++y)
    for (int x = 0; x < N; ++x) s += row(src, step, y)[x];
  const int32_t mean = (s + N * N / 2) / (N * N);
  int32_t d = 0;
  for (int y = 0; y < N; ++y)
    for (int x = 0; x < N; ++x) d += std::abs(row(src, step, y)[x] - mean);
  return d;
}

inline int32_t count_zeros(const int16_t* src) {
  int32_t n = 0;
  for (int i = 0; i < 64; ++i) n += src[i] == 0;
  return n;
}

// Edge test of a 16x16 block: positions 0..14 of rows 0..14 count when the
// difference to the right or below exceeds the threshold; rows are walked top
// down and the walk stops as soon as the count exceeds the pel count. Bytes:
// differences capped at 127 and compared as signed bytes with the threshold's
// low byte (a threshold of 128 or more counts every position), count against
// the low byte of the pel count. Words: uncapped differences against the
// threshold's low 16 bits, unsigned, and the pel count's low 16 bits.
template <class T>
uint8_t edges(const T* src, int32_t step, uint32_t thr, uint32_t cnt) {
  constexpr bool kBytes = sizeof(T) == 1;
  const int32_t t = kBytes ? static_cast<int8_t>(thr & 0xFF) : static_cast<int32_t>(thr & 0xFFFF);
  const int32_t k = static_cast<int32_t>(cnt & (kBytes ? 0xFF : 0xFFFF));
  int32_t n = 0;
  for (int y = 0; y < 15; ++y) {
    const T* p = row(src, step, y);
    const T* q = row(src, step, y + 1);
    for (int x = 0; x < 15; ++x) {
      int32_t h = std::abs(int32_t{p[x]} - p[x + 1]), v = std::abs(int32_t{p[x]} - q[x]);
      if (kBytes) h = h > 127 ? 127 : h, v = v > 127 ? 127 : v;
      n += h > t || v > t;
    }
    if (n > k) return 1;
  }
  return 0;
}

// d = current - reference, wrapped to signed 16 bits.
template <int W, int H, class T>
void sub(const T* cur, int32_t cs, const T* ref, int32_t rs, int16_t* diff, int32_t ds) {
  for (int y = 0; y < H; ++y)
    for (int x = 0; x < W; ++x) row(diff, ds, y)[x] = wrap16(row(cur, cs, y)[x] - row(ref, rs, y)[x]);
}

// d = current - prediction (the MC prediction, rounding included); the
// prediction itself is written too when Pred.
template <int W, int Mode, int Round, bool Pred>
void get_diff(const uint8_t* cur, int32_t cs, const uint8_t* ref, int32_t rs, int16_t* diff, int32_t ds, int16_t* pred,
              int32_t ps, int h) {
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < W; ++x) {
      const int32_t p = ref_sample8<Mode, Round>(ref, rs, x, y);
      row(diff, ds, y)[x] = static_cast<int16_t>(row(cur, cs, y)[x] - p);
      if (Pred) row(pred, ps, y)[x] = static_cast<int16_t>(p);
    }
}

template <int W, int ModeF, int ModeB, int Round>
void get_diff_b(const uint8_t* cur, int32_t cs, const uint8_t* f, int32_t fs, const uint8_t* b, int32_t bs,
                int16_t* diff, int32_t ds, int h) {
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < W; ++x) {
      const int32_t p = (ref_sample8<ModeF, Round>(f, fs, x, y) + ref_sample8<ModeB, Round>(b, bs, x, y) + 1) >> 1;
      row(diff, ds, y)[x] = static_cast<int16_t>(row(cur, cs, y)[x] - p);
    }
}

// Sums of the differences of each 4x4 block (raster order) and, when diff is
// given, the differences block by block, 16 values each. Word samples wrap
// each difference to 16 bits and use the steps rounded down to even.
template <int N, class T, class S>
void sums_diff(const T* cur, int32_t cs, const T* pred, int32_t ps, S* sums, int16_t* diff) {
  if (sizeof(T) > 1) cs &= ~1, ps &= ~1;
  for (int b = 0; b < N * N / 16; ++b) {
    const int bx = (b % (N / 4)) * 4, by = (b / (N / 4)) * 4;
    int32_t s = 0;
    for (int y = 0; y < 4; ++y)
      for (int x = 0; x < 4; ++x) {
        const int16_t d = wrap16(row(cur, cs, by + y)[bx + x] - row(pred, ps, by + y)[bx + x]);
        s += d;
        if (diff) diff[16 * b + 4 * y + x] = d;
      }
    sums[b] = static_cast<S>(s);
  }
}

HUX_ME_METRIC_TABLES

}  // namespace ref
}  // namespace hux::me

#if defined(HUX_SSE2) && HUX_SSE2
#include "me/x86/metrics_sse2.h"
#endif
