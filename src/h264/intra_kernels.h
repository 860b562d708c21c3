// H.264 intra prediction kernels of 8-bit pictures, in place: a 4x4 luma block,
// a 16x16 luma macroblock, an 8x8 chroma block of one plane and the 8x8 luma
// block of the 8x8 transform (with its reference-sample filtering). Each kernel
// reads the neighbours from the picture itself, above and to the left of the
// block, and only those the availability word marks present:
//   bit 0 (1)  the row above        bit 1 (2)  the column to the left
//   bit 5 (32) the sample above-left bit 6 (64) the samples above-right
//
// The 4x4 and 8x8 kernels always predict: a missing sample is 128 (above-right
// samples repeat the last one above instead) and the 4x4 kernel reports it with
// kWarnMissing. The 16x16 and chroma kernels refuse a mode whose neighbours are
// missing with kNoNeighbour, before writing anything. Callers have checked the
// mode range of the 4x4 and 8x8 kernels; the 16x16 and chroma kernels answer
// kBadMode for modes above 3.
#pragma once

#include <cstdint>

#include "common/saturate.h"
#include "common/simd.h"

namespace hux::h264 {

enum : uint32_t { kAvailAbove = 1, kAvailLeft = 2, kAvailAboveLeft = 32, kAvailAboveRight = 64 };
// Kernel results; the exports return them as they are.
enum : int32_t { kPredOk = 0, kWarnMissing = 11, kBadMode = -11, kNoNeighbour = -117 };

// Neighbours each 4x4 mode reads (above-right is never required: it repeats).
inline constexpr uint32_t kNeeds4x4[9] = {
    kAvailAbove, kAvailLeft, 0, kAvailAbove, kAvailAbove | kAvailLeft | kAvailAboveLeft,
    kAvailAbove | kAvailLeft | kAvailAboveLeft, kAvailAbove | kAvailLeft | kAvailAboveLeft, kAvailAbove, kAvailLeft};
// 16x16 modes: vertical, horizontal, DC, plane.
inline constexpr uint32_t kNeeds16x16[4] = {kAvailAbove, kAvailLeft, 0, kAvailAbove | kAvailLeft | kAvailAboveLeft};
// Chroma modes: DC, horizontal, vertical, plane.
inline constexpr uint32_t kNeedsChroma[4] = {0, kAvailLeft, kAvailAbove, kAvailAbove | kAvailLeft | kAvailAboveLeft};

constexpr int avg2(int a, int b) { return (a + b + 1) >> 1; }
constexpr int avg3(int a, int b, int c) { return (a + 2 * b + c + 2) >> 2; }

// The edge of a block as the directional modes see it: e[c + i] is the i-th
// sample above (i = 0..2n-1), e[c - 1] the one above-left, e[c - 2 - j] the j-th
// to the left (j = 0..n-1); the left column runs down to e[0].
template <int N>
struct Edge {
  static constexpr int c = N + 1;
  int e[3 * N + 1];
  int& top(int i) { return e[c + i]; }
  int& left(int j) { return e[c - 2 - j]; }
  int& corner() { return e[c - 1]; }
  int top(int i) const { return e[c + i]; }
  int left(int j) const { return e[c - 2 - j]; }
  int corner() const { return e[c - 1]; }
};

namespace ref {

// Gathers the edge of an N x N block, putting 128 for what is missing and
// repeating the last sample above for a missing above-right.
template <int N>
inline Edge<N> gather(const uint8_t* p, int32_t step, uint32_t avail) {
  Edge<N> g{};
  const uint8_t* up = row(p, step, -1);
  for (int i = 0; i < N; ++i) g.top(i) = (avail & kAvailAbove) ? up[i] : 128;
  for (int i = N; i < 2 * N; ++i) g.top(i) = (avail & kAvailAboveRight) ? up[i] : g.top(N - 1);
  for (int j = 0; j < N; ++j) g.left(j) = (avail & kAvailLeft) ? row(p, step, j)[-1] : 128;
  g.corner() = (avail & kAvailAboveLeft) ? up[-1] : 128;
  return g;
}

// The directional modes 3 to 8 of an N x N block (N = 4 or 8) on a gathered
// (for 8x8: filtered) edge, the standard's equations with the z indices.
template <int N>
inline int directional(const Edge<N>& g, uint32_t mode, int x, int y) {
  const int n2 = 2 * N - 1;  // index of the last sample above
  switch (mode) {
    case 3:  // diagonal down-left
      return x == N - 1 && y == N - 1 ? avg3(g.top(n2 - 1), g.top(n2), g.top(n2))
                                      : avg3(g.top(x + y), g.top(x + y + 1), g.top(x + y + 2));
    case 4: {  // diagonal down-right: one three-tap filter along the edge
      const int c = g.c - 1 + x - y;
      return avg3(g.e[c - 1], g.e[c], g.e[c + 1]);
    }
    case 5: {  // vertical-right
      const int z = 2 * x - y, i = x - (y >> 1);
      if (z >= 0) return (z & 1) ? avg3(g.e[g.c + i - 2], g.e[g.c + i - 1], g.e[g.c + i]) : avg2(g.e[g.c + i - 1], g.e[g.c + i]);
      if (z == -1) return avg3(g.left(0), g.corner(), g.top(0));
      return avg3(g.left(y - 2 * x - 1), g.left(y - 2 * x - 2), g.left(y - 2 * x - 3));
    }
    case 6: {  // horizontal-down
      const int z = 2 * y - x, j = y - (x >> 1);
      if (z >= 0) return (z & 1) ? avg3(g.e[g.c - j], g.e[g.c - j - 1], g.e[g.c - j - 2]) : avg2(g.e[g.c - j - 1], g.e[g.c - j - 2]);
      if (z == -1) return avg3(g.left(0), g.corner(), g.top(0));
      return avg3(g.top(x - 2 * y - 1), g.top(x - 2 * y - 2), g.top(x - 2 * y - 3));
    }
    case 7: {  // vertical-left
      const int i = x + (y >> 1);
      return (y & 1) ? avg3(g.top(i), g.top(i + 1), g.top(i + 2)) : avg2(g.top(i), g.top(i + 1));
    }
    default: {  // 8: horizontal-up
      const int z = x + 2 * y, j = y + (x >> 1), last = 2 * N - 3;
      if (z > last) return g.left(N - 1);
      if (z == last) return avg3(g.left(N - 2), g.left(N - 1), g.left(N - 1));
      return (z & 1) ? avg3(g.left(j), g.left(j + 1), g.left(j + 2)) : avg2(g.left(j), g.left(j + 1));
    }
  }
}

// DC of an N x N block from the sides present (128 without either).
template <int N>
inline int dc_of(const Edge<N>& g, bool above, bool left) {
  constexpr int sh = N == 4 ? 2 : 3;
  int st = 0, sl = 0;
  for (int i = 0; i < N; ++i) st += g.top(i), sl += g.left(i);
  if (above && left) return (st + sl + N) >> (sh + 1);
  if (above) return (st + N / 2) >> sh;
  if (left) return (sl + N / 2) >> sh;
  return 128;
}

template <int N>
inline void fill_modes(uint8_t* p, int32_t step, const Edge<N>& g, uint32_t mode, uint32_t avail) {
  const int dc = mode == 2 ? dc_of(g, avail & kAvailAbove, avail & kAvailLeft) : 0;
  for (int y = 0; y < N; ++y) {
    uint8_t* d = row(p, step, y);
    for (int x = 0; x < N; ++x)
      d[x] = static_cast<uint8_t>(mode == 0 ? g.top(x) : mode == 1 ? g.left(y) : mode == 2 ? dc : directional(g, mode, x, y));
  }
}

// 4x4 luma, modes 0 to 8.
inline int32_t pred4x4(uint8_t* p, int32_t step, uint32_t mode, uint32_t avail) {
  const Edge<4> g = gather<4>(p, step, avail);
  fill_modes(p, step, g, mode, avail);
  return (kNeeds4x4[mode] & ~avail) ? kWarnMissing : kPredOk;
}

// The reference-sample filtering of 8x8 luma prediction, on a gathered edge.
inline Edge<8> filter8x8(const Edge<8>& g, uint32_t avail) {
  Edge<8> f = g;
  const bool a = avail & kAvailAbove, l = avail & kAvailLeft, q = avail & kAvailAboveLeft;
  if (a) {
    f.top(0) = q ? avg3(g.corner(), g.top(0), g.top(1)) : avg3(g.top(0), g.top(0), g.top(1));
    for (int i = 1; i < 15; ++i) f.top(i) = avg3(g.top(i - 1), g.top(i), g.top(i + 1));
    f.top(15) = avg3(g.top(14), g.top(15), g.top(15));
  }
  if (q) {
    if (a && l) f.corner() = avg3(g.top(0), g.corner(), g.left(0));
    else if (a) f.corner() = avg3(g.corner(), g.corner(), g.top(0));
    else if (l) f.corner() = avg3(g.corner(), g.corner(), g.left(0));
  }
  if (l) {
    f.left(0) = q ? avg3(g.corner(), g.left(0), g.left(1)) : avg3(g.left(0), g.left(0), g.left(1));
    for (int j = 1; j < 7; ++j) f.left(j) = avg3(g.left(j - 1), g.left(j), g.left(j + 1));
    f.left(7) = avg3(g.left(6), g.left(7), g.left(7));
  }
  return f;
}

// 8x8 luma of the 8x8 transform, modes 0 to 8, missing samples 128.
inline void pred8x8(uint8_t* p, int32_t step, uint32_t mode, uint32_t avail) {
  fill_modes(p, step, filter8x8(gather<8>(p, step, avail), avail), mode, avail);
}

inline void fill_rows(uint8_t* p, int32_t step, int n, const uint8_t* v) {
  for (int y = 0; y < n; ++y)
    for (int x = 0; x < n; ++x) row(p, step, y)[x] = v[x];
}

// 16x16 luma: 0 vertical, 1 horizontal, 2 DC, 3 plane.
inline int32_t pred16x16(uint8_t* p, int32_t step, uint32_t mode, uint32_t avail) {
  if (mode > 3) return kBadMode;
  if (kNeeds16x16[mode] & ~avail) return kNoNeighbour;
  const uint8_t* up = row(p, step, -1);
  auto left = [&](int y) { return static_cast<int>(row(p, step, y)[-1]); };
  if (mode == 0) {
    fill_rows(p, step, 16, up);
  } else if (mode == 1) {
    for (int y = 0; y < 16; ++y)
      for (int x = 0; x < 16; ++x) row(p, step, y)[x] = static_cast<uint8_t>(left(y));
  } else if (mode == 2) {
    const bool a = avail & kAvailAbove, l = avail & kAvailLeft;
    int st = 0, sl = 0;
    for (int i = 0; i < 16; ++i) {
      if (a) st += up[i];
      if (l) sl += left(i);
    }
    const int dc = a && l ? (st + sl + 16) >> 5 : a ? (st + 8) >> 4 : l ? (sl + 8) >> 4 : 128;
    for (int y = 0; y < 16; ++y)
      for (int x = 0; x < 16; ++x) row(p, step, y)[x] = static_cast<uint8_t>(dc);
  } else {
    int h = 0, v = 0;
    for (int i = 0; i < 8; ++i) {
      h += (i + 1) * (up[8 + i] - up[6 - i]);
      v += (i + 1) * (left(8 + i) - (i == 7 ? up[-1] : left(6 - i)));
    }
    const int a = 16 * (left(15) + up[15]), b = (5 * h + 32) >> 6, c = (5 * v + 32) >> 6;
    for (int y = 0; y < 16; ++y)
      for (int x = 0; x < 16; ++x) row(p, step, y)[x] = clip8((a + b * (x - 7) + c * (y - 7) + 16) >> 5);
  }
  return kPredOk;
}

// The DC of one 4x4 quarter of a chroma block: the top-left and bottom-right
// quarters use both sides, the top-right prefers the row above, the
// bottom-left the column to the left.
inline int chroma_dc(int st, int sl, bool a, bool l, int qx, int qy) {
  if (qx == qy) return a && l ? (st + sl + 4) >> 3 : a ? (st + 2) >> 2 : l ? (sl + 2) >> 2 : 128;
  if (qx) return a ? (st + 2) >> 2 : l ? (sl + 2) >> 2 : 128;
  return l ? (sl + 2) >> 2 : a ? (st + 2) >> 2 : 128;
}

// 8x8 chroma of one plane: 0 DC, 1 horizontal, 2 vertical, 3 plane.
inline int32_t pred_chroma8x8(uint8_t* p, int32_t step, uint32_t mode, uint32_t avail) {
  if (mode > 3) return kBadMode;
  if (kNeedsChroma[mode] & ~avail) return kNoNeighbour;
  const uint8_t* up = row(p, step, -1);
  auto left = [&](int y) { return static_cast<int>(row(p, step, y)[-1]); };
  if (mode == 2) {
    fill_rows(p, step, 8, up);
  } else if (mode == 1) {
    for (int y = 0; y < 8; ++y)
      for (int x = 0; x < 8; ++x) row(p, step, y)[x] = static_cast<uint8_t>(left(y));
  } else if (mode == 0) {
    const bool a = avail & kAvailAbove, l = avail & kAvailLeft;
    int dc[2][2];
    for (int qy = 0; qy < 2; ++qy)
      for (int qx = 0; qx < 2; ++qx) {
        int st = 0, sl = 0;
        for (int i = 0; i < 4; ++i) {
          if (a) st += up[4 * qx + i];
          if (l) sl += left(4 * qy + i);
        }
        dc[qy][qx] = chroma_dc(st, sl, a, l, qx, qy);
      }
    for (int y = 0; y < 8; ++y)
      for (int x = 0; x < 8; ++x) row(p, step, y)[x] = static_cast<uint8_t>(dc[y >> 2][x >> 2]);
  } else {
    int h = 0, v = 0;
    for (int i = 0; i < 4; ++i) {
      h += (i + 1) * (up[4 + i] - up[2 - i]);
      v += (i + 1) * (left(4 + i) - (i == 3 ? up[-1] : left(2 - i)));
    }
    const int a = 16 * (left(7) + up[7]), b = (17 * h + 16) >> 5, c = (17 * v + 16) >> 5;
    for (int y = 0; y < 8; ++y)
      for (int x = 0; x < 8; ++x) row(p, step, y)[x] = clip8((a + b * (x - 3) + c * (y - 3) + 16) >> 5);
  }
  return kPredOk;
}

// One mode each, for the exports' dispatch tables.
template <uint32_t M>
inline int32_t pred4x4_mode(uint8_t* p, int32_t step, uint32_t avail) { return pred4x4(p, step, M, avail); }
template <uint32_t M>
inline int32_t pred16x16_mode(uint8_t* p, int32_t step, uint32_t avail) { return pred16x16(p, step, M, avail); }
template <uint32_t M>
inline int32_t pred_chroma8x8_mode(uint8_t* p, int32_t step, uint32_t avail) { return pred_chroma8x8(p, step, M, avail); }

}  // namespace ref
}  // namespace hux::h264

#if defined(HUX_SSE2) && HUX_SSE2
#include "h264/x86/intra_sse2.h"
#endif
