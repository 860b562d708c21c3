// H.264 sub-sample interpolation kernels. The reference versions in namespace
// ref state the arithmetic exactly, in 32-bit integers: the 6-tap luma filter
// (1, -5, 20, 20, -5, 1) with its half-sample, centre and quarter-sample
// positions, and the bilinear eighth-sample chroma filter. The SSE2 kernels
// (x86/interp_sse2.h) must agree with them bit for bit on every input.
//
// Footprints: a luma kernel reads columns -2 .. W+2 of its rows only when its
// horizontal fraction is not zero (otherwise columns 0 .. W-1, and W when the
// position averages with the sample to the right), and rows -2 .. H+2 only
// when its vertical fraction is not zero. A chroma kernel reads one more
// column when dx != 0 and one more row when dy != 0. Nothing else is read.
//
// Besides the kernels, this header holds what the edge-handling forms build
// their stack work areas with (row maps for the Top and Bottom forms, the
// clamped-window copy for the Block forms) and the plane expansion.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "common/simd.h"

namespace hux::h264 {

// 8u luma kernel for one (dx, dy) and width class; height a multiple of 4
// (zero or negative: nothing is done). The 8u kernels return 0, the
// exports' success status, so that an export ends in a jump to its kernel.
using LumaKernel = int32_t (*)(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, int32_t height);
// 8u chroma kernel for one width class and case (copy, horizontal, vertical,
// both); height even.
using ChromaKernel = int32_t (*)(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, int32_t dx,
                              int32_t dy, int32_t height);
// 16u kernels: element steps, any width and height, results clamped to
// 0 .. max (luma; the chroma filter cannot leave the input range).
using Luma16Kernel = void (*)(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, int32_t width,
                              int32_t height, int32_t max);
// Rounded average of two blocks.
using AverageKernel = int32_t (*)(const uint8_t* a, int32_t aStep, const uint8_t* b, int32_t bStep, uint8_t* dst,
                               int32_t dstStep, int32_t width, int32_t height);

// Largest sample value at a bit depth; out-of-range depths are clamped to 1..16.
constexpr int32_t depth_max(int32_t bitDepth) {
  return bitDepth >= 16 ? 65535 : bitDepth < 1 ? 1 : (1 << bitDepth) - 1;
}

namespace ref {

template <class T>
struct Luma {
  const T* p;
  intptr_t s;  // element step
  int32_t max;
  int32_t at(int x, int y) const { return p[y * s + x]; }
  int32_t hsum(int x, int y) const {
    const T* q = p + y * s + x;
    return q[-2] - 5 * q[-1] + 20 * q[0] + 20 * q[1] - 5 * q[2] + q[3];
  }
  int32_t vsum(int x, int y) const {
    const T* q = p + y * s + x;
    return q[-2 * s] - 5 * q[-s] + 20 * q[0] + 20 * q[s] - 5 * q[2 * s] + q[3 * s];
  }
  int32_t clip(int32_t v) const { return std::clamp(v, 0, max); }
  int32_t b(int x, int y) const { return clip((hsum(x, y) + 16) >> 5); }
  int32_t h(int x, int y) const { return clip((vsum(x, y) + 16) >> 5); }
  // The centre sample from the unrounded horizontal sums of six rows.
  int32_t j(int x, int y) const {
    const int32_t t = hsum(x, y - 2) - 5 * hsum(x, y - 1) + 20 * hsum(x, y) + 20 * hsum(x, y + 1) -
                      5 * hsum(x, y + 2) + hsum(x, y + 3);
    return clip((t + 512) >> 10);
  }
  static int32_t avg(int32_t a, int32_t b) { return (a + b + 1) >> 1; }

  // The sample at quarter position (dx, dy) of integer sample (x, y).
  int32_t sample(int x, int y, int dx, int dy) const {
    switch (dy * 4 + dx) {
      case 0: return at(x, y);
      case 1: return avg(at(x, y), b(x, y));           // a
      case 2: return b(x, y);                          // b
      case 3: return avg(at(x + 1, y), b(x, y));       // c
      case 4: return avg(at(x, y), h(x, y));           // d
      case 5: return avg(b(x, y), h(x, y));            // e
      case 6: return avg(b(x, y), j(x, y));            // f
      case 7: return avg(b(x, y), h(x + 1, y));        // g
      case 8: return h(x, y);                          // h
      case 9: return avg(h(x, y), j(x, y));            // i
      case 10: return j(x, y);                         // j
      case 11: return avg(j(x, y), h(x + 1, y));       // k
      case 12: return avg(at(x, y + 1), h(x, y));      // n
      case 13: return avg(h(x, y), b(x, y + 1));       // p
      case 14: return avg(j(x, y), b(x, y + 1));       // q
      default: return avg(h(x + 1, y), b(x, y + 1));  // r
    }
  }
};

template <class T>
void luma_block(const T* src, intptr_t srcStep, T* dst, intptr_t dstStep, int w, int h, int dx, int dy, int32_t max) {
  const Luma<T> l{src, srcStep, max};
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x) dst[y * dstStep + x] = static_cast<T>(l.sample(x, y, dx, dy));
}

template <int W, int DX, int DY>
int32_t luma(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, int32_t height) {
  luma_block<uint8_t>(src, srcStep, dst, dstStep, W, height, DX, DY, 255);
  return 0;
}

template <int DX, int DY>
void luma16(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, int32_t width, int32_t height,
            int32_t max) {
  luma_block<uint16_t>(src, srcStep, dst, dstStep, width, height, DX, DY, max);
}

// The bilinear chroma filter; B and D (C and D) are read only when dx (dy)
// is not zero.
template <class T>
void chroma_block(const T* src, intptr_t srcStep, T* dst, intptr_t dstStep, int w, int h, int dx, int dy) {
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x) {
      const T* p = src + y * srcStep + x;
      int32_t v = (8 - dx) * (8 - dy) * p[0];
      if (dx) v += dx * (8 - dy) * p[1];
      if (dy) v += (8 - dx) * dy * p[srcStep];
      if (dx && dy) v += dx * dy * p[srcStep + 1];
      dst[y * dstStep + x] = static_cast<T>((v + 32) >> 6);
    }
}

// Case: 0 copy, 1 horizontal only, 2 vertical only, 3 both.
template <int W, int Case>
int32_t chroma(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, int32_t dx, int32_t dy,
               int32_t height) {
  chroma_block<uint8_t>(src, srcStep, dst, dstStep, W, height, Case & 1 ? dx : 0, Case & 2 ? dy : 0);
  return 0;
}

inline int32_t average(const uint8_t* a, int32_t aStep, const uint8_t* b, int32_t bStep, uint8_t* dst,
                       int32_t dstStep, int32_t width, int32_t height) {
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x)
      row(dst, dstStep, y)[x] = static_cast<uint8_t>((row(a, aStep, y)[x] + row(b, bStep, y)[x] + 1) >> 1);
  return 0;
}

}  // namespace ref

// ------------------------------------------------------------ work areas

// Copies rows of w samples into a work area; source row of work row i is
// map(i) (an element offset from src), columns from x0.
template <class T, class Map>
void gather_rows(const T* src, intptr_t srcStep, int x0, int w, int rows, T* area, int areaStep, Map map) {
  for (int i = 0; i < rows; ++i) std::memcpy(area + i * areaStep, src + map(i) * srcStep + x0, sizeof(T) * w);
}

// Copies the window of w x h samples at (x0, y0) of a frameWidth x
// frameHeight plane into a work area: samples outside the plane repeat the
// nearest plane sample of their row, rows outside repeat the nearest plane
// row. Only samples of the plane are read.
template <class T>
void clamped_window(const T* plane, intptr_t step, int64_t frameWidth, int64_t frameHeight, int64_t x0, int64_t y0,
                    int w, int h, T* area, int areaStep) {
  const int64_t xin0 = std::clamp<int64_t>(x0, 0, frameWidth), xin1 = std::clamp<int64_t>(x0 + w, 0, frameWidth);
  for (int i = 0; i < h; ++i) {
    const T* r = plane + std::clamp<int64_t>(y0 + i, 0, frameHeight - 1) * step;
    T* d = area + i * areaStep;
    int c = 0;
    if (xin1 <= xin0) {  // the whole row lies left or right of the plane
      const T v = r[x0 < 0 ? 0 : frameWidth - 1];
      for (; c < w; ++c) d[c] = v;
      continue;
    }
    for (const T v = r[0]; c < xin0 - x0; ++c) d[c] = v;
    std::memcpy(d + c, r + xin0, sizeof(T) * static_cast<size_t>(xin1 - xin0));
    c += static_cast<int>(xin1 - xin0);
    for (const T v = r[frameWidth - 1]; c < w; ++c) d[c] = v;
  }
}

// Pads a plane in place: rows first - row, stride rowStep, count rows - get
// pels copies of their end samples on each side; the first of them is then
// copied to `above` rows (stepping rowStep upwards) and the last to `below`.
inline void expand_rows(uint8_t* first, intptr_t rowStep, int width, int rows, int pels, int above, int below) {
  for (int i = 0; i < rows; ++i) {
    uint8_t* r = first + i * rowStep;
    std::memset(r - pels, r[0], static_cast<size_t>(pels));
    std::memset(r + width, r[width - 1], static_cast<size_t>(pels));
  }
  const size_t n = static_cast<size_t>(width) + 2 * static_cast<size_t>(pels);
  uint8_t* top = first - pels;
  uint8_t* bottom = first + (rows - 1) * rowStep - pels;
  for (int i = 1; i <= above; ++i) std::memcpy(top - i * rowStep, top, n);
  for (int i = 1; i <= below; ++i) std::memcpy(bottom + i * rowStep, bottom, n);
}

}  // namespace hux::h264

#if defined(HUX_SSE2) && HUX_SSE2
#include "h264/x86/interp_sse2.h"
#endif
