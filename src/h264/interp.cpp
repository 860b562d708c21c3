// H.264 interpolation exports: argument checks in the interface's order, then
// a kernel chosen from the fractional offsets and the width class. The Top,
// Bottom and Block forms first copy the rows (and columns) the filter reaches
// into a stack work area, replicating the picture's edges, and run the same
// kernels there. Nothing is written when a check fails.
#include <array>
#include <cstring>
#include <utility>

#include "common/cpu.h"
#include "h264/interp_kernels.h"
#if HUX_CPU_FLAGS
#include "h264/x86/interp_ssse3.h"
#endif
#include "huxvc.h"

namespace h = hux::h264;
namespace k = hux::h264::HUX_KERNELS;
namespace r = hux::h264::ref;

namespace {

// ------------------------------------------------------------ kernel tables

// 8u luma: [width class][dy * 4 + dx]; the class is ((width * 2) & 48) >> 4:
// 4 (and 0), 8 and 12, 16 to 28.
template <int W, size_t... I>
constexpr std::array<h::LumaKernel, 16> luma_set(std::index_sequence<I...>) {
  return {&k::luma<W, I & 3, (I >> 2)>...};
}
constexpr std::array<h::LumaKernel, 16> kLuma[4] = {luma_set<4>(std::make_index_sequence<16>()),
                                                     luma_set<8>(std::make_index_sequence<16>()),
                                                     luma_set<16>(std::make_index_sequence<16>()),
                                                     luma_set<16>(std::make_index_sequence<16>())};
// The same as one table of 64 indexed by ((width * 2) & 48) | dy << 2 | dx.
constexpr std::array<h::LumaKernel, 64> kLuma64 = [] {
  std::array<h::LumaKernel, 64> t{};
  for (size_t i = 0; i < 64; ++i) t[i] = kLuma[i >> 4][i & 15];
  return t;
}();
// The same with the kernels compiled for SSSE3 where the processor has it
// (interp_ssse3.h); luma_kernels() is the table to use.
#if HUX_CPU_FLAGS
template <int W, size_t... I>
constexpr std::array<h::LumaKernel, 16> luma_set_ssse3(std::index_sequence<I...>) {
  return {&h::ssse3::luma<W, I & 3, (I >> 2)>...};
}
constexpr std::array<h::LumaKernel, 16> kLumaSsse3[4] = {luma_set_ssse3<4>(std::make_index_sequence<16>()),
                                                          luma_set_ssse3<8>(std::make_index_sequence<16>()),
                                                          luma_set_ssse3<16>(std::make_index_sequence<16>()),
                                                          luma_set_ssse3<16>(std::make_index_sequence<16>())};
constexpr std::array<h::LumaKernel, 64> kLuma64Ssse3 = [] {
  std::array<h::LumaKernel, 64> t{};
  for (size_t i = 0; i < 64; ++i) t[i] = kLumaSsse3[i >> 4][i & 15];
  return t;
}();
inline const h::LumaKernel* luma_kernels() { return hux_cpu_ssse3 ? kLuma64Ssse3.data() : kLuma64.data(); }
#else
inline const h::LumaKernel* luma_kernels() { return kLuma64.data(); }
#endif
constexpr int kLumaWidth[4] = {4, 8, 16, 16};
constexpr int luma_class(int32_t width) { return ((width * 2) & 48) >> 4; }

template <size_t... I>
constexpr std::array<h::Luma16Kernel, 16> luma16_set(std::index_sequence<I...>) {
  return {&r::luma16<I & 3, (I >> 2)>...};
}
constexpr std::array<h::Luma16Kernel, 16> kLuma16 = luma16_set(std::make_index_sequence<16>());

// 8u chroma: [(width & 12) | (dy != 0) << 1 | (dx != 0)]: width 2 (and 0),
// 4 (and 6), 8 and above (10 to 14).
template <int W>
constexpr h::ChromaKernel kChromaCase[4] = {&k::chroma<W, 0>, &k::chroma<W, 1>, &k::chroma<W, 2>, &k::chroma<W, 3>};
constexpr const h::ChromaKernel* kChroma[4] = {kChromaCase<2>, kChromaCase<4>, kChromaCase<8>, kChromaCase<8>};
constexpr int kChromaWidth[4] = {2, 4, 8, 8};
constexpr std::array<h::ChromaKernel, 16> kChroma16 = [] {
  std::array<h::ChromaKernel, 16> t{};
  for (size_t i = 0; i < 16; ++i) t[i] = kChroma[i >> 2][i & 3];
  return t;
}();
constexpr int chroma_case(int32_t dx, int32_t dy) { return (dy != 0) << 1 | (dx != 0); }
// The same with the kernels compiled for SSSE3 where the processor has it
// (interp_ssse3.h); chroma_kernels() is the table to use.
// Both tables spread over every fraction, [(width & 12) << 4 | dy << 3 | dx],
// so that the plain export indexes them with no case arithmetic.
constexpr std::array<h::ChromaKernel, 256> by_frac(const std::array<h::ChromaKernel, 16>& t) {
  std::array<h::ChromaKernel, 256> r{};
  for (size_t i = 0; i < 256; ++i) r[i] = t[((i >> 4) & 12) | chroma_case(i & 7, (i >> 3) & 7)];
  return r;
}
constexpr std::array<h::ChromaKernel, 256> kChromaByFrac = by_frac(kChroma16);
#if HUX_CPU_FLAGS
template <int W>
constexpr h::ChromaKernel kChromaSsse3Case[4] = {&h::ssse3::chroma<W, 0>, &h::ssse3::chroma<W, 1>,
                                                 &h::ssse3::chroma<W, 2>, &h::ssse3::chroma<W, 3>};
constexpr const h::ChromaKernel* kChromaSsse3[4] = {kChromaSsse3Case<2>, kChromaSsse3Case<4>, kChromaSsse3Case<8>,
                                                    kChromaSsse3Case<8>};
constexpr std::array<h::ChromaKernel, 16> kChroma16Ssse3 = [] {
  std::array<h::ChromaKernel, 16> t{};
  for (size_t i = 0; i < 16; ++i) t[i] = kChromaSsse3[i >> 2][i & 3];
  return t;
}();
inline const h::ChromaKernel* chroma_kernels() { return hux_cpu_ssse3 ? kChroma16Ssse3.data() : kChroma16.data(); }
constexpr std::array<h::ChromaKernel, 256> kChromaByFracSsse3 = by_frac(kChroma16Ssse3);
inline const h::ChromaKernel* chroma_by_frac() {
  return hux_cpu_ssse3 ? kChromaByFracSsse3.data() : kChromaByFrac.data();
}
#else
inline const h::ChromaKernel* chroma_by_frac() { return kChromaByFrac.data(); }
inline const h::ChromaKernel* chroma_kernels() { return kChroma16.data(); }
#endif

// ------------------------------------------------------------ checks

constexpr bool luma_frac_bad(int32_t dx, int32_t dy) { return static_cast<uint32_t>(dx) > 3 || static_cast<uint32_t>(dy) > 3; }
constexpr bool chroma_frac_bad(int32_t dx, int32_t dy) { return static_cast<uint32_t>(dx) > 7 || static_cast<uint32_t>(dy) > 7; }
constexpr bool luma_size_bad(int32_t w, int32_t h) { return (h & 3) || (w & ~28); }
constexpr bool chroma_size_bad(int32_t w, int32_t h) { return (h & 1) || (w & ~14); }
constexpr bool in4816(int32_t v) { return v == 4 || v == 8 || v == 16; }
constexpr bool in24816(int32_t v) { return v == 2 || in4816(v); }

HuxResult check16_luma(const HuxInterpolation16u* p) {
  if (!p || !p->pSrc || !p->pDst) return huxErrNullPtr;
  if (p->srcStep < p->width || p->width > p->dstStep) return huxErrStep;
  if (static_cast<uint32_t>(p->dx) > 3 || static_cast<uint32_t>(p->dy) > 3) return huxErrBadArg;
  if (!in4816(p->height) || !in4816(p->width) || p->width + p->height == 20) return huxErrSize;
  return huxOk;
}
HuxResult check16_chroma(const HuxInterpolation16u* p) {
  if (!p || !p->pSrc || !p->pDst) return huxErrNullPtr;
  if (p->srcStep < 8 || p->dstStep < 8) return huxErrStep;
  if (static_cast<uint32_t>(p->dx) > 7 || static_cast<uint32_t>(p->dy) > 7) return huxErrBadArg;
  if (!in24816(p->height) || !in24816(p->width)) return huxErrSize;
  return huxOk;
}

// ------------------------------------------------------------ Top and Bottom

// Runs `run(area, areaStep, firstRow, rows)` over bands of at most 16 block
// rows. Work row i of a band holds block row y0 + i - above (columns from
// -left, `cols` of them); a Top form replaces rows above the picture's first
// row (`edge`, relative to the block) by that row, a Bottom form rows below
// its last row by that one.
template <class T, int AreaStep, class Run>
void edge_rows(const T* src, intptr_t srcStep, int left, int cols, int above, int extra, int32_t height, int64_t edge,
               bool bottom, Run run) {
  alignas(64) T area[AreaStep * (16 + 5)];
  for (int y0 = 0; y0 < height; y0 += 16) {
    const int h = std::min(16, height - y0);
    h::gather_rows(src, srcStep, -left, cols, h + extra, area, AreaStep, [&](int i) {
      const int64_t j = int64_t{y0} + i - above;
      return static_cast<intptr_t>(bottom ? std::min(j, edge) : std::max(j, edge));
    });
    run(area + above * AreaStep + left, AreaStep, y0, h);
  }
}

[[gnu::noinline]] HuxResult luma_edge(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, int32_t dx,
                                      int32_t dy, int32_t outPixels, HuxSize roi, bool bottom) {
  if (!pSrc || !pDst) return huxErrNullPtr;
  if (luma_frac_bad(dx, dy)) return huxErrBadArg;
  if (luma_size_bad(roi.width, roi.height)) return huxErrSize;
  const int c = luma_class(roi.width);
  const h::LumaKernel f = luma_kernels()[c << 4 | dy << 2 | dx];
  const int64_t edge = bottom ? int64_t{roi.height} - 1 - outPixels : outPixels;
  edge_rows<uint8_t, 32>(pSrc, srcStep, dx ? 2 : 0, kLumaWidth[c] + (dx ? 5 : 0), dy ? 2 : 0, dy ? 5 : 0, roi.height,
                         edge, bottom, [&](const uint8_t* a, int32_t as, int y0, int h) {
                           f(a, as, pDst + intptr_t{y0} * dstStep, dstStep, h);
                         });
  return huxOk;
}

[[gnu::noinline]] HuxResult chroma_edge(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                        int32_t dx, int32_t dy, int32_t outPixels, HuxSize roi, bool bottom) {
  if (!pSrc || !pDst) return huxErrNullPtr;
  if (chroma_frac_bad(dx, dy)) return huxErrBadArg;
  if (chroma_size_bad(roi.width, roi.height)) return huxErrSize;
  const int c = (roi.width & 12) >> 2;
  const h::ChromaKernel f = chroma_kernels()[c << 2 | chroma_case(dx, dy)];
  const int64_t edge = bottom ? int64_t{roi.height} - 1 - outPixels : outPixels;
  edge_rows<uint8_t, 16>(pSrc, srcStep, 0, kChromaWidth[c] + (dx != 0), 0, dy != 0, roi.height, edge, bottom,
                         [&](const uint8_t* a, int32_t as, int y0, int h) {
                           f(a, as, pDst + intptr_t{y0} * dstStep, dstStep, dx, dy, h);
                         });
  return huxOk;
}

HuxResult luma16_edge(const HuxInterpolation16u* p, int32_t outPixels, bool bottom) {
  if (const HuxResult s = check16_luma(p)) return s;
  const int32_t dx = p->dx, dy = p->dy, max = h::depth_max(p->bitDepth);
  const h::Luma16Kernel f = kLuma16[dy * 4 + dx];
  const int64_t edge = bottom ? int64_t{p->height} - 1 - outPixels : outPixels;
  edge_rows<uint16_t, 32>(p->pSrc, p->srcStep, dx ? 2 : 0, p->width + (dx ? 5 : 0), dy ? 2 : 0, dy ? 5 : 0, p->height,
                          edge, bottom, [&](const uint16_t* a, int32_t as, int y0, int h) {
                            f(a, as, p->pDst + intptr_t{y0} * p->dstStep, p->dstStep, p->width, h, max);
                          });
  return huxOk;
}

HuxResult chroma16_edge(const HuxInterpolation16u* p, int32_t outPixels, bool bottom) {
  if (const HuxResult s = check16_chroma(p)) return s;
  const int64_t edge = bottom ? int64_t{p->height} - 1 - outPixels : outPixels;
  edge_rows<uint16_t, 32>(p->pSrc, p->srcStep, 0, p->width + (p->dx != 0), 0, p->dy != 0, p->height, edge, bottom,
                          [&](const uint16_t* a, int32_t as, int y0, int h) {
                            r::chroma_block<uint16_t>(a, as, p->pDst + intptr_t{y0} * p->dstStep, p->dstStep, p->width,
                                                      h, p->dx, p->dy);
                          });
  return huxOk;
}

// ------------------------------------------------------------ Block forms

// The block's filter window: `lead` samples before the integer position when
// the fraction is not zero, `lead + trail` more samples in all.
struct Window {
  int64_t x0, y0;
  int w, h;
};
inline bool inside(const Window& a, int64_t fw, int64_t fh) {
  return a.x0 >= 0 && a.y0 >= 0 && a.x0 + a.w <= fw && a.y0 + a.h <= fh;
}

// Runs `run(src, srcStep, firstRow, rows)` on the plane directly when the
// window lies inside the picture, else over bands of at most 16 rows copied
// into a stack area with the picture's edges replicated.
template <class T, int MaxStep, class Run>
void block_window(const T* plane, intptr_t step, int64_t fw, int64_t fh, Window a, int lead, int32_t height, Run run) {
  if (inside(a, fw, fh)) return run(plane + (a.y0 + lead) * step + a.x0 + lead, static_cast<int32_t>(step), 0, height);
  const int areaStep = (a.w + 15) & ~15, extra = a.h - height;
  alignas(64) T area[MaxStep * (16 + 5)];
  for (int y0 = 0; y0 < height; y0 += 16) {
    const int h = std::min(16, height - y0);
    h::clamped_window(plane, step, fw, fh, a.x0, a.y0 + y0, a.w, h + extra, area, areaStep);
    run(area + lead * areaStep + lead, areaStep, y0, h);
  }
}

// Luma: two samples before and three after in a direction whose fraction is
// not zero. Block positions, vectors and sizes are taken in 64 bits, so no
// value a caller passes wraps.
inline Window luma_window(const HuxInterpolationBlock* b, int w) {
  const int fx = b->mvX & 3, fy = b->mvY & 3;
  return {int64_t{b->blockX} + (b->mvX >> 2) - (fx ? 2 : 0), int64_t{b->blockY} + (b->mvY >> 2) - (fy ? 2 : 0),
          w + (fx ? 5 : 0), b->blockHeight + (fy ? 5 : 0)};
}
inline Window chroma_window(const HuxInterpolationBlock* b, int w) {
  return {int64_t{b->blockX} + (b->mvX >> 3), int64_t{b->blockY} + (b->mvY >> 3), w + ((b->mvX & 7) != 0),
          b->blockHeight + ((b->mvY & 7) != 0)};
}

// A luma window with both fractions zero has no lead; a nonzero fraction in
// one direction gives a lead of two in that direction only, so the run
// function is told both.
template <class T, int MaxStep, class Run>
void luma_block_window(const HuxInterpolationBlock* b, const T* plane, Window a, Run run) {
  const int lx = (b->mvX & 3) ? 2 : 0, ly = (b->mvY & 3) ? 2 : 0;
  const intptr_t step = b->srcStep;
  const int64_t fw = b->frameWidth, fh = b->frameHeight;
  const int32_t height = b->blockHeight;
  if (inside(a, fw, fh)) return run(plane + (a.y0 + ly) * step + a.x0 + lx, static_cast<int32_t>(step), 0, height);
  const int areaStep = (a.w + 15) & ~15, extra = a.h - height;
  alignas(64) T area[MaxStep * (16 + 5)];
  for (int y0 = 0; y0 < height; y0 += 16) {
    const int h = std::min(16, height - y0);
    h::clamped_window(plane, step, fw, fh, a.x0, a.y0 + y0, a.w, h + extra, area, areaStep);
    run(area + ly * areaStep + lx, areaStep, y0, h);
  }
}

[[gnu::always_inline]] inline HuxResult check_block(const HuxInterpolationBlock* b, bool chroma) {
  if (!b || !b->pSrc[0] || (chroma && !b->pSrc[1]) || !b->pDst[0] || (chroma && !b->pDst[1])) return huxErrNullPtr;
  if (chroma ? chroma_size_bad(b->blockWidth, b->blockHeight) : luma_size_bad(b->blockWidth, b->blockHeight))
    return huxErrSize;
  // A picture without samples has no edge to replicate.
  if (b->frameWidth < 1 || b->frameHeight < 1) return huxErrSize;
  return huxOk;
}

// The 8-bit Block forms' windows that cross the picture's edge, out of the
// exports' line so the common call, a window inside the picture, runs with
// no stack area and few registers.
[[gnu::noinline]] void luma_block_edge(const HuxInterpolationBlock* b, h::LumaKernel f, Window a) {
  uint8_t* dst = static_cast<uint8_t*>(b->pDst[0]);
  const int32_t ds = b->dstStep;
  luma_block_window<uint8_t, 32>(b, static_cast<const uint8_t*>(b->pSrc[0]), a,
                                 [&](const uint8_t* s, int32_t ss, int y0, int h) { f(s, ss, dst + intptr_t{y0} * ds, ds, h); });
}
[[gnu::noinline]] void chroma_block_edge(const HuxInterpolationBlock* b, h::ChromaKernel f, Window a) {
  const int32_t dx = b->mvX & 7, dy = b->mvY & 7, ds = b->dstStep;
  for (int i = 0; i < 2; ++i) {
    uint8_t* dst = static_cast<uint8_t*>(b->pDst[i]);
    block_window<uint8_t, 16>(static_cast<const uint8_t*>(b->pSrc[i]), b->srcStep, b->frameWidth, b->frameHeight, a, 0,
                              b->blockHeight, [&](const uint8_t* s, int32_t ss, int y0, int h) {
                                f(s, ss, dst + intptr_t{y0} * ds, ds, dx, dy, h);
                              });
  }
}

}  // namespace

extern "C" {

// ------------------------------------------------------------ plain forms

#if HUX_ASM && defined(__x86_64__)
// The checks and kernels of the luma export (x86/interp_asm.cpp), with its
// arguments: it copies the full-sample 8x8 block itself and jumps here for
// every other call.
[[gnu::visibility("hidden")]] HuxResult HUX_STDCALL hux_h264_luma_body(const uint8_t* pSrc, int32_t srcStep,
                                                                      uint8_t* pDst, int32_t dstStep, int32_t dx,
                                                                      int32_t dy, HuxSize roi) {
#else
HUX_API HuxResult HUX_STDCALL huxiInterpolateLuma_H264_8u_C1R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                                              int32_t dstStep, int32_t dx, int32_t dy, HuxSize roi) {
#endif
  if (!pSrc | !pDst) return huxErrNullPtr;
  if (luma_frac_bad(dx, dy)) return huxErrBadArg;
  // Both size tests on the size as one word (width low, height high): this
  // path is timed with the smallest kernels.
  uint64_t size;
  std::memcpy(&size, &roi, sizeof size);
  if (size & 0x00000003FFFFFFE3u) return huxErrSize;
  const uint32_t i = ((roi.width * 2) & 48) | dy << 2 | dx;
  // The full-sample copies, the shortest kernels, are reached by direct jumps.
  if (i == 16) return k::luma<8, 0, 0>(pSrc, srcStep, pDst, dstStep, roi.height);
  if ((i | 16) == 48) return k::luma<16, 0, 0>(pSrc, srcStep, pDst, dstStep, roi.height);
  return luma_kernels()[i](pSrc, srcStep, pDst, dstStep, roi.height);
}

HUX_API HuxResult HUX_STDCALL huxiInterpolateLumaTop_H264_8u_C1R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                                                 int32_t dstStep, int32_t dx, int32_t dy,
                                                                 int32_t outPixels, HuxSize roi) {
  return luma_edge(pSrc, srcStep, pDst, dstStep, dx, dy, outPixels, roi, false);
}

HUX_API HuxResult HUX_STDCALL huxiInterpolateLumaBottom_H264_8u_C1R(const uint8_t* pSrc, int32_t srcStep,
                                                                    uint8_t* pDst, int32_t dstStep, int32_t dx,
                                                                    int32_t dy, int32_t outPixels, HuxSize roi) {
  return luma_edge(pSrc, srcStep, pDst, dstStep, dx, dy, outPixels, roi, true);
}

HUX_API HuxResult HUX_STDCALL huxiInterpolateChroma_H264_8u_C1R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                                                int32_t dstStep, int32_t dx, int32_t dy, HuxSize roi) {
  if (!pSrc | !pDst) return huxErrNullPtr;
  if (chroma_frac_bad(dx, dy)) return huxErrBadArg;
  uint64_t size;  // as in the luma form
  std::memcpy(&size, &roi, sizeof size);
  if (size & 0x00000001FFFFFFF1u) return huxErrSize;
  return chroma_by_frac()[(roi.width & 12) << 4 | dy << 3 | dx](pSrc, srcStep, pDst, dstStep, dx, dy, roi.height);
}

HUX_API HuxResult HUX_STDCALL huxiInterpolateChromaTop_H264_8u_C1R(const uint8_t* pSrc, int32_t srcStep,
                                                                   uint8_t* pDst, int32_t dstStep, int32_t dx,
                                                                   int32_t dy, int32_t outPixels, HuxSize roi) {
  return chroma_edge(pSrc, srcStep, pDst, dstStep, dx, dy, outPixels, roi, false);
}

HUX_API HuxResult HUX_STDCALL huxiInterpolateChromaBottom_H264_8u_C1R(const uint8_t* pSrc, int32_t srcStep,
                                                                      uint8_t* pDst, int32_t dstStep, int32_t dx,
                                                                      int32_t dy, int32_t outPixels, HuxSize roi) {
  return chroma_edge(pSrc, srcStep, pDst, dstStep, dx, dy, outPixels, roi, true);
}

// ------------------------------------------------------------ 16u forms

HUX_API HuxResult HUX_STDCALL huxiInterpolateLuma_H264_16u_C1R(const HuxInterpolation16u* p) {
  if (const HuxResult s = check16_luma(p)) return s;
  kLuma16[p->dy * 4 + p->dx](p->pSrc, p->srcStep, p->pDst, p->dstStep, p->width, p->height, h::depth_max(p->bitDepth));
  return huxOk;
}
HUX_API HuxResult HUX_STDCALL huxiInterpolateLumaTop_H264_16u_C1R(const HuxInterpolation16u* p, int32_t outPixels) {
  return luma16_edge(p, outPixels, false);
}
HUX_API HuxResult HUX_STDCALL huxiInterpolateLumaBottom_H264_16u_C1R(const HuxInterpolation16u* p, int32_t outPixels) {
  return luma16_edge(p, outPixels, true);
}

HUX_API HuxResult HUX_STDCALL huxiInterpolateChroma_H264_16u_C1R(const HuxInterpolation16u* p) {
  if (const HuxResult s = check16_chroma(p)) return s;
  r::chroma_block<uint16_t>(p->pSrc, p->srcStep, p->pDst, p->dstStep, p->width, p->height, p->dx, p->dy);
  return huxOk;
}
HUX_API HuxResult HUX_STDCALL huxiInterpolateChromaTop_H264_16u_C1R(const HuxInterpolation16u* p, int32_t outPixels) {
  return chroma16_edge(p, outPixels, false);
}
HUX_API HuxResult HUX_STDCALL huxiInterpolateChromaBottom_H264_16u_C1R(const HuxInterpolation16u* p,
                                                                       int32_t outPixels) {
  return chroma16_edge(p, outPixels, true);
}

// ------------------------------------------------------------ Block forms

HUX_API HuxResult HUX_STDCALL huxiInterpolateLumaBlock_H264_8u_P1R(const HuxInterpolationBlock* b) {
  if (const HuxResult s = check_block(b, false)) return s;
  const int c = luma_class(b->blockWidth);
  const h::LumaKernel f = luma_kernels()[c << 4 | (b->mvY & 3) << 2 | (b->mvX & 3)];
  const Window a = luma_window(b, kLumaWidth[c]);
  if (!inside(a, b->frameWidth, b->frameHeight)) return luma_block_edge(b, f, a), huxOk;
  const intptr_t step = b->srcStep;
  const int lx = (b->mvX & 3) ? 2 : 0, ly = (b->mvY & 3) ? 2 : 0;
  f(static_cast<const uint8_t*>(b->pSrc[0]) + (a.y0 + ly) * step + a.x0 + lx, b->srcStep,
    static_cast<uint8_t*>(b->pDst[0]), b->dstStep, b->blockHeight);
  return huxOk;
}

HUX_API HuxResult HUX_STDCALL huxiInterpolateLumaBlock_H264_16u_P1R(const HuxInterpolationBlock* b) {
  if (const HuxResult s = check_block(b, false)) return s;
  const h::Luma16Kernel f = kLuma16[(b->mvY & 3) * 4 + (b->mvX & 3)];
  uint16_t* dst = static_cast<uint16_t*>(b->pDst[0]);
  const int32_t ds = b->dstStep, w = b->blockWidth, max = h::depth_max(b->bitDepth);
  luma_block_window<uint16_t, 48>(b, static_cast<const uint16_t*>(b->pSrc[0]), luma_window(b, w),
                                  [&](const uint16_t* s, int32_t ss, int y0, int h) {
                                    f(s, ss, dst + intptr_t{y0} * ds, ds, w, h, max);
                                  });
  return huxOk;
}

HUX_API HuxResult HUX_STDCALL huxiInterpolateChromaBlock_H264_8u_P2R(const HuxInterpolationBlock* b) {
  if (const HuxResult s = check_block(b, true)) return s;
  const int c = (b->blockWidth & 12) >> 2;
  const int32_t dx = b->mvX & 7, dy = b->mvY & 7, ds = b->dstStep;
  const h::ChromaKernel f = chroma_kernels()[c << 2 | chroma_case(dx, dy)];
  const Window a = chroma_window(b, kChromaWidth[c]);
  if (!inside(a, b->frameWidth, b->frameHeight)) return chroma_block_edge(b, f, a), huxOk;
  const intptr_t off = a.y0 * intptr_t{b->srcStep} + a.x0;
  f(static_cast<const uint8_t*>(b->pSrc[0]) + off, b->srcStep, static_cast<uint8_t*>(b->pDst[0]), ds, dx, dy,
    b->blockHeight);
  f(static_cast<const uint8_t*>(b->pSrc[1]) + off, b->srcStep, static_cast<uint8_t*>(b->pDst[1]), ds, dx, dy,
    b->blockHeight);
  return huxOk;
}

HUX_API HuxResult HUX_STDCALL huxiInterpolateChromaBlock_H264_16u_P2R(const HuxInterpolationBlock* b) {
  if (const HuxResult s = check_block(b, true)) return s;
  const int32_t dx = b->mvX & 7, dy = b->mvY & 7, ds = b->dstStep, w = b->blockWidth;
  const Window a = chroma_window(b, w);
  for (int i = 0; i < 2; ++i) {
    uint16_t* dst = static_cast<uint16_t*>(b->pDst[i]);
    block_window<uint16_t, 16>(static_cast<const uint16_t*>(b->pSrc[i]), b->srcStep, b->frameWidth, b->frameHeight, a,
                               0, b->blockHeight, [&](const uint16_t* s, int32_t ss, int y0, int h) {
                                 r::chroma_block<uint16_t>(s, ss, dst + intptr_t{y0} * ds, ds, w, h, dx, dy);
                               });
  }
  return huxOk;
}

// ------------------------------------------------------------ helpers

HUX_API HuxResult HUX_STDCALL huxiInterpolateBlock_H264_8u_P2P1R(const uint8_t* pSrc1, const uint8_t* pSrc2,
                                                                 uint8_t* pDst, int32_t width, int32_t height,
                                                                 int32_t pitch) {
  if (!pSrc1 | !pSrc2 | !pDst) return huxErrNullPtr;
  if (static_cast<uint32_t>(width - 2) > 14 || static_cast<uint32_t>(height - 2) > 14) return huxErrSize;
  return k::average(pSrc1, pitch, pSrc2, pitch, pDst, pitch, width, height);
}

HUX_API HuxResult HUX_STDCALL huxiInterpolateBlock_H264_8u_P3P1R(const uint8_t* pSrc1, const uint8_t* pSrc2,
                                                                 uint8_t* pDst, int32_t width, int32_t height,
                                                                 int32_t src1Step, int32_t src2Step, int32_t dstStep) {
  if (!pSrc1 | !pSrc2 | !pDst) return huxErrNullPtr;
  if (static_cast<uint32_t>(width - 2) > 14 || static_cast<uint32_t>(height - 2) > 14) return huxErrSize;
  return k::average(pSrc1, src1Step, pSrc2, src2Step, pDst, dstStep, width, height);
}

HUX_API HuxResult HUX_STDCALL huxiExpandPlane_H264_8u_C1R(uint8_t* pSrcDst, int32_t width, int32_t height,
                                                          int32_t pitch, int32_t pels, int32_t mode) {
  if (!pSrcDst) return huxErrNullPtr;
  if ((height & 1) || height < 2 || width <= 0) return huxErrSize;
  if (pels == 0) return huxOk;
  if (static_cast<uint32_t>(mode) > 2 || pels < 0) return huxErrBadArg;
  const intptr_t p = pitch;
  if (mode == 0) h::expand_rows(pSrcDst, p, width, height, pels, pels, pels);
  else if (mode == 1) h::expand_rows(pSrcDst, 2 * p, width, height / 2, pels, pels / 2, (pels + 1) / 2);
  else h::expand_rows(pSrcDst + p, 2 * p, width, height / 2, pels, (pels + 1) / 2, pels / 2);
  return huxOk;
}

}  // extern "C"
