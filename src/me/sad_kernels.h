// Block SAD kernels. The reference set is the plain statement of each metric;
// the SSE2 set (x86/sad_sse2.h, included at the end where SSE2 is built)
// computes the same values.
#pragma once

#include <cstdint>
#include <cstdlib>

#include "common/simd.h"

namespace hux::me {

// Half-sample positions of the reference, mcType >> 2.
enum HalfPel : int { kInteger = 0, kVertical = 1, kHorizontal = 2, kDiagonal = 3 };


namespace ref {

// The reference sample the current sample at (x, y) is compared with, or
// the motion-compensated prediction of it: Round 1 takes halves down instead
// of up, and Dx is the distance of the horizontal neighbour (2 on rows of
// interleaved chroma pairs).
template <int Mode, int Round = 0, int Dx = 1>
inline int32_t ref_sample8(const uint8_t* r, int32_t step, int x, int y) {
  const uint8_t* p = row(r, step, y) + x;
  if constexpr (Mode == kInteger) return p[0];
  if constexpr (Mode == kVertical) return (p[0] + row(p, step, 1)[0] + 1 - Round) >> 1;
  if constexpr (Mode == kHorizontal) return (p[0] + p[Dx] + 1 - Round) >> 1;
  if constexpr (Mode == kDiagonal) return (p[0] + p[Dx] + row(p, step, 1)[0] + row(p, step, 1)[Dx] + 2 - Round) >> 2;
}

// 16-bit samples: the interpolating additions saturate at 65535, rounding
// constant included, before the shift.
template <int Mode>
inline int32_t ref_sample16(const uint16_t* r, int32_t step, int x, int y) {
  const uint16_t* p = row(r, step, y) + x;
  auto sat = [](int32_t v) { return v > 65535 ? 65535 : v; };
  if constexpr (Mode == kInteger) return p[0];
  if constexpr (Mode == kVertical) return sat(p[0] + row(p, step, 1)[0] + 1) >> 1;
  if constexpr (Mode == kHorizontal) return sat(p[0] + p[1] + 1) >> 1;
  if constexpr (Mode == kDiagonal) return sat(p[0] + p[1] + row(p, step, 1)[0] + row(p, step, 1)[1] + 2) >> 2;
}

template <int W, int H, int Mode>
int32_t sad(const uint8_t* cur, int32_t curStep, const uint8_t* ref, int32_t refStep) {
  int32_t s = 0;
  for (int y = 0; y < H; ++y)
    for (int x = 0; x < W; ++x) s += std::abs(row(cur, curStep, y)[x] - ref_sample8<Mode>(ref, refStep, x, y));
  return s;
}

template <int W, int H, int Mode>
int32_t sad16u(const uint16_t* cur, int32_t curStep, const uint16_t* ref, int32_t refStep) {
  int32_t s = 0;
  for (int y = 0; y < H; ++y)
    for (int x = 0; x < W; ++x) s += std::abs(row(cur, curStep, y)[x] - ref_sample16<Mode>(ref, refStep, x, y));
  return s;
}

// SADs of the B x B sub-blocks of a 16x16 macroblock, raster order.
template <int B>
void sad_blocks(const uint8_t* cur, int32_t curStep, const uint8_t* ref, int32_t refStep, uint16_t* out) {
  constexpr int N = 16 / B;
  uint32_t acc[N * N] = {};
  for (int y = 0; y < 16; ++y)
    for (int x = 0; x < 16; ++x)
      acc[(y / B) * N + x / B] += static_cast<uint32_t>(std::abs(row(cur, curStep, y)[x] - row(ref, refStep, y)[x]));
  for (int i = 0; i < N * N; ++i) out[i] = static_cast<uint16_t>(acc[i]);
}

// 16-bit samples: each difference is wrapped to a signed 16-bit value before
// its magnitude is taken, and both steps are used rounded down to even.
template <int B>
void sad_blocks16u(const uint16_t* cur, int32_t curStep, const uint16_t* ref, int32_t refStep, uint32_t* out) {
  constexpr int N = 16 / B;
  curStep &= ~1;
  refStep &= ~1;
  uint32_t acc[N * N] = {};
  for (int y = 0; y < 16; ++y)
    for (int x = 0; x < 16; ++x) {
      const int16_t d = static_cast<int16_t>(static_cast<uint16_t>(row(cur, curStep, y)[x] - row(ref, refStep, y)[x]));
      acc[(y / B) * N + x / B] += static_cast<uint32_t>(d < 0 ? -static_cast<int32_t>(d) : d);
    }
  for (int i = 0; i < N * N; ++i) out[i] = acc[i];
}

// Candidates k = 0 .. m-1 start k samples right of ref; m is a multiple of 8.
template <int B>
void sad_line(const uint8_t* cur, int32_t curStep, const uint8_t* ref, int32_t refStep, uint16_t* out, int32_t m) {
  for (int32_t k = 0; k < m; ++k) out[k] = static_cast<uint16_t>(sad<B, B, kInteger>(cur, curStep, ref + k, refStep));
}

// Index of the smallest value; the lowest index among equals.
inline uint32_t min_index(const uint16_t* v, int32_t m) {
  uint32_t best = 0;
  for (int32_t k = 1; k < m; ++k)
    if (v[k] < v[best]) best = static_cast<uint32_t>(k);
  return best;
}

// Frame activity: adjacent rows within the upper and within the lower eight
// rows (the pair 7/8 is left out); field activity: rows two apart. Both count
// 14 row pairs.
template <class T>
void frame_field(const T* src, int32_t step, int32_t* frame, int32_t* field) {
  int32_t fr = 0, fi = 0;
  for (int y = 0; y < 15; ++y) {
    if (y == 7) continue;
    for (int x = 0; x < 16; ++x) fr += std::abs(int32_t{row(src, step, y)[x]} - row(src, step, y + 1)[x]);
  }
  for (int y = 0; y < 14; ++y)
    for (int x = 0; x < 16; ++x) fi += std::abs(int32_t{row(src, step, y)[x]} - row(src, step, y + 2)[x]);
  *frame = fr;
  *field = fi;
}

inline int32_t sub_sad8x8(const uint8_t* cur, int32_t curStep, const uint8_t* ref, int32_t refStep, int16_t* diff,
                          int32_t diffStep) {
  int32_t s = 0;
  for (int y = 0; y < 8; ++y)
    for (int x = 0; x < 8; ++x) {
      const int d = row(cur, curStep, y)[x] - row(ref, refStep, y)[x];
      row(diff, diffStep, y)[x] = static_cast<int16_t>(d);
      s += std::abs(d);
    }
  return s;
}

}  // namespace ref


}  // namespace hux::me

#if defined(HUX_SSE2) && HUX_SSE2
#include "me/x86/sad_sse2.h"
#endif
