// H.264 weighted sample prediction kernels. The reference versions in
// namespace ref state the arithmetic: every formula is evaluated exactly, as
// with unbounded integers, for every weight, offset and shift a caller can
// pass (64-bit intermediates; a shift beyond what the sums can reach gives the
// same result as any larger one, so it is capped there), and the result is
// clamped to 0..maxv. The SSE2 kernels must agree with them bit for bit.
//
// Every form reduces to two shapes:
//  - one prediction:  y = round(x * w, s) + o
//  - two predictions: y = round(x1 * w1 + x2 * w2, s) + o
// with round(v, s) = (v + 2^(s-1)) >> s for s >= 1 and v for s == 0. The
// explicit bi-directional formula is the second shape with s = logWD + 1 and
// o = (o1 + o2 + 1) >> 1; the implicit one has s = 6 and o = 0; the weighted
// average has the caller's shift.
#pragma once

#include <algorithm>
#include <cstdint>

#include "common/saturate.h"
#include "common/simd.h"

namespace hux::h264 {

// The largest shift that still matters: the sums stay below 2^50 in
// magnitude (16-bit samples times 32-bit weights, two terms), so any shift
// from 51 on rounds them to 0, as 62 does.
constexpr uint32_t kMaxShift = 62;
constexpr uint32_t cap_shift(uint32_t s) { return s < kMaxShift ? s : kMaxShift; }

// The two-prediction shift of the explicit form, logWD + 1 without wrapping.
constexpr uint32_t bi_shift(uint32_t logWD) { return logWD < kMaxShift ? logWD + 1 : kMaxShift; }
// A negative weighted-average shift acts as no shift.
constexpr uint32_t avg_shift(int32_t shift) { return shift < 0 ? 0u : cap_shift(static_cast<uint32_t>(shift)); }
// (o1 + o2 + 1) >> 1 without overflowing; always fits 32 bits.
constexpr int32_t bi_offset(int32_t o1, int32_t o2) {
  return static_cast<int32_t>((static_cast<int64_t>(o1) + o2 + 1) >> 1);
}
// 2^bitDepth - 1 for depths 0..16; depths outside clamp to that range.
constexpr int32_t weight_max(int32_t bitDepth) { return (int32_t{1} << clip(bitDepth, 0, 16)) - 1; }

constexpr int64_t round_shift(int64_t v, uint32_t s) {
  s = cap_shift(s);
  return s ? (v + (int64_t{1} << (s - 1))) >> s : v;
}
constexpr int32_t clamp64(int64_t v, int32_t maxv) {
  return static_cast<int32_t>(v < 0 ? 0 : (v > maxv ? maxv : v));
}

// Block sizes the 8u forms accept: 2, 4, 8 or 16.
constexpr bool weight_size(int32_t n) { return static_cast<uint32_t>(n) <= 16 && ((0x10114u >> n) & 1u); }

namespace ref {

// Steps count elements. In place: p is read and written.
template <class T>
void uni_any(T* p, int32_t step, int w, int h, uint32_t s, int32_t wt, int32_t o, int32_t maxv) {
  for (int y = 0; y < h; ++y, p += static_cast<intptr_t>(step))
    for (int x = 0; x < w; ++x)
      p[x] = static_cast<T>(clamp64(round_shift(static_cast<int64_t>(p[x]) * wt, s) + o, maxv));
}

template <class T>
void bi_any(const T* a, int32_t sa, const T* b, int32_t sb, T* d, int32_t sd, int w, int h, uint32_t s, int32_t w1,
            int32_t w2, int32_t o, int32_t maxv) {
  for (int y = 0; y < h; ++y) {
    const T* ra = a + static_cast<intptr_t>(sa) * y;
    const T* rb = b + static_cast<intptr_t>(sb) * y;
    T* rd = d + static_cast<intptr_t>(sd) * y;
    for (int x = 0; x < w; ++x) {
      const int64_t v = static_cast<int64_t>(ra[x]) * w1 + static_cast<int64_t>(rb[x]) * w2;
      rd[x] = static_cast<T>(clamp64(round_shift(v, s) + o, maxv));
    }
  }
}

// (x1 + x2 + 1) >> 1 of 16-bit samples; no clamp is needed.
inline void avg16u(const uint16_t* a, int32_t sa, const uint16_t* b, int32_t sb, uint16_t* d, int32_t sd, int w,
                   int h) {
  for (int y = 0; y < h; ++y) {
    const uint16_t* ra = a + static_cast<intptr_t>(sa) * y;
    const uint16_t* rb = b + static_cast<intptr_t>(sb) * y;
    uint16_t* rd = d + static_cast<intptr_t>(sd) * y;
    for (int x = 0; x < w; ++x) rd[x] = static_cast<uint16_t>((ra[x] + rb[x] + 1) >> 1);
  }
}

inline void uni8(uint8_t* p, int32_t step, int w, int h, uint32_t s, int32_t wt, int32_t o) {
  uni_any<uint8_t>(p, step, w, h, s, wt, o, 255);
}
inline void bi8(const uint8_t* a, int32_t sa, const uint8_t* b, int32_t sb, uint8_t* d, int32_t sd, int w, int h,
                uint32_t s, int32_t w1, int32_t w2, int32_t o) {
  bi_any<uint8_t>(a, sa, b, sb, d, sd, w, h, s, w1, w2, o, 255);
}

// The 8u kernels of one width, in the shape the SSE2 ones have.
template <int W>
void uni(uint8_t* p, int32_t step, int h, uint32_t s, int32_t wt, int32_t o) {
  uni_any<uint8_t>(p, step, W, h, s, wt, o, 255);
}
template <int W>
void bi(const uint8_t* a, int32_t sa, const uint8_t* b, int32_t sb, uint8_t* d, int32_t sd, int h, uint32_t s,
        int32_t w1, int32_t w2, int32_t o) {
  bi_any<uint8_t>(a, sa, b, sb, d, sd, W, h, s, w1, w2, o, 255);
}

}  // namespace ref

}  // namespace hux::h264

#if defined(HUX_SSE2) && HUX_SSE2
#include "h264/x86/weight_sse2.h"
#endif
