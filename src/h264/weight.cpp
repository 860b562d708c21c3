// H.264 weighted prediction exports: argument checks in the interface's order,
// then the kernel for the block size. The 8u
// forms run the SSE2 kernels where built; the 16u forms are plain loops.
#include "h264/weight_kernels.h"
#include "huxvc.h"

namespace h = hux::h264;
namespace k = hux::h264::HUX_KERNELS;
namespace r = hux::h264::ref;

namespace {

// Both dimensions 2, 4, 8 or 16.
constexpr bool sizes_ok(HuxSize roi) { return h::weight_size(roi.height) && h::weight_size(roi.width); }

// The common 8x8 case is tested first, as a whole, and runs inline; every
// other call (and every failing one) takes the full checks below.
HUX_INLINE bool is8x8(HuxSize roi) { return roi.width == 8 && roi.height == 8; }
#if defined(HUX_SSE2) && HUX_SSE2
#define HUX_WEIGHT_FAST 1
#else
#define HUX_WEIGHT_FAST 0
#endif

[[gnu::noinline, gnu::cold]] HuxResult uni_checked(uint8_t* pSrcDst, int32_t srcDstStep, uint32_t logWD, int32_t weight,
                                        int32_t offset, HuxSize roi) {
  if (!pSrcDst) return huxErrNullPtr;
  if (srcDstStep < roi.width) return huxErrStep;
  if (!sizes_ok(roi)) return huxErrSize;
  k::uni8(pSrcDst, srcDstStep, roi.width, roi.height, logWD, weight, offset);
  return huxOk;
}

// The explicit and implicit two-prediction forms share their checks.
HUX_INLINE HuxResult bi_checked(const uint8_t* a, int32_t sa, const uint8_t* b, int32_t sb, uint8_t* d, int32_t sd,
                                HuxSize roi, uint32_t s, int32_t w1, int32_t w2, int32_t o) {
  if (!a || !b || !d) return huxErrNullPtr;
  if (sa < roi.width || sb < roi.width || sd < roi.width) return huxErrStep;
  if (!sizes_ok(roi)) return huxErrSize;
  k::bi8(a, sa, b, sb, d, sd, roi.width, roi.height, s, w1, w2, o);
  return huxOk;
}

// The explicit two-prediction form outside its inline case.
[[gnu::noinline, gnu::cold]] HuxResult bi_slow(const uint8_t* pSrc1, const uint8_t* pSrc2, uint8_t* pDst, int32_t srcStep,
                                    int32_t dstStep, uint32_t logWD, int32_t weight1, int32_t offset1, int32_t weight2,
                                    int32_t offset2, HuxSize roi) {
  return bi_checked(pSrc1, srcStep, pSrc2, srcStep, pDst, dstStep, roi, h::bi_shift(logWD), weight1, weight2,
                    h::bi_offset(offset1, offset2));
}

HuxResult bi16(const HuxBidir16u* p, uint32_t s, int32_t w1, int32_t w2, int32_t o) {
  if (!p || !p->pSrc1 || !p->pSrc2 || !p->pDst) return huxErrNullPtr;
  if (p->src1Step < p->width || p->src2Step < p->width || p->dstStep < p->width) return huxErrStep;
  if (!h::weight_size(p->height) || !h::weight_size(p->width)) return huxErrSize;
  r::bi_any<uint16_t>(p->pSrc1, p->src1Step, p->pSrc2, p->src2Step, p->pDst, p->dstStep, p->width, p->height, s, w1, w2,
                      o, h::weight_max(p->bitDepth));
  return huxOk;
}

}  // namespace

extern "C" {

#if HUX_ASM && defined(__x86_64__)
// The checks and kernels of the one-prediction export (x86/weight_asm.cpp),
// with its arguments: it weights the common 8x8 call itself and jumps here for
// every other call.
[[gnu::visibility("hidden")]] HuxResult HUX_STDCALL hux_h264_uni_body(uint8_t* pSrcDst, int32_t srcDstStep,
                                                                     uint32_t logWD, int32_t weight, int32_t offset,
                                                                     HuxSize roi) {
  return uni_checked(pSrcDst, srcDstStep, logWD, weight, offset, roi);
}
#else
HUX_API HuxResult HUX_STDCALL huxiUniDirWeightBlock_H264_8u_C1R(uint8_t* pSrcDst, int32_t srcDstStep, uint32_t logWD,
                                                                int32_t weight, int32_t offset, HuxSize roi) {
#if HUX_WEIGHT_FAST
  if (__builtin_expect(is8x8(roi) && pSrcDst && srcDstStep >= 8 && k::uni_common(logWD, weight, offset), 1)) {
    k::uni8x8(pSrcDst, srcDstStep, logWD, weight, offset);
    return huxOk;
  }
#endif
  return uni_checked(pSrcDst, srcDstStep, logWD, weight, offset, roi);
}
#endif

HUX_API HuxResult HUX_STDCALL huxiUniDirWeightBlock_H264_8u_C1IR(uint8_t* pSrcDst, int32_t srcDstStep, uint32_t logWD,
                                                                 int32_t weight, int32_t offset, HuxSize roi) {
  return huxiUniDirWeightBlock_H264_8u_C1R(pSrcDst, srcDstStep, logWD, weight, offset, roi);
}


HUX_API HuxResult HUX_STDCALL huxiUnidirWeight_H264_16u_IP2P1R(uint16_t* pSrcDst, int32_t srcDstStep, uint32_t logWD,
                                                               int32_t weight, int32_t offset, HuxSize roi,
                                                               int32_t bitDepth) {
  if (!pSrcDst) return huxErrNullPtr;
  if (srcDstStep < roi.width) return huxErrStep;
  if (!sizes_ok(roi)) return huxErrSize;
  r::uni_any<uint16_t>(pSrcDst, srcDstStep, roi.width, roi.height, h::cap_shift(logWD), weight, offset,
                       h::weight_max(bitDepth));
  return huxOk;
}

#if HUX_ASM && defined(__x86_64__)
// The checks and kernels of the explicit two-prediction export
// (x86/weight_asm.cpp), with its arguments: it weights the common 8x8 call
// itself and jumps here for every other call.
[[gnu::visibility("hidden")]] HuxResult HUX_STDCALL hux_h264_bi_body(const uint8_t* pSrc1, const uint8_t* pSrc2,
                                                                    uint8_t* pDst, int32_t srcStep, int32_t dstStep,
                                                                    uint32_t logWD, int32_t weight1, int32_t offset1,
                                                                    int32_t weight2, int32_t offset2, HuxSize roi) {
  return bi_slow(pSrc1, pSrc2, pDst, srcStep, dstStep, logWD, weight1, offset1, weight2, offset2, roi);
}
#else
HUX_API HuxResult HUX_STDCALL huxiBiDirWeightBlock_H264_8u_P2P1R(const uint8_t* pSrc1, const uint8_t* pSrc2,
                                                                 uint8_t* pDst, int32_t srcStep, int32_t dstStep,
                                                                 uint32_t logWD, int32_t weight1, int32_t offset1,
                                                                 int32_t weight2, int32_t offset2, HuxSize roi) {
#if HUX_WEIGHT_FAST
  const uint32_t s = h::bi_shift(logWD);
  const int32_t o = h::bi_offset(offset1, offset2);
  if (__builtin_expect(is8x8(roi) && pSrc1 && pSrc2 && pDst && srcStep >= 8 && dstStep >= 8 &&
                           k::bi_common(s, weight1, weight2, o),
                       1)) {
    k::bi8x8(pSrc1, srcStep, pSrc2, srcStep, pDst, dstStep, s, weight1, weight2, o);
    return huxOk;
  }
#endif
  return bi_slow(pSrc1, pSrc2, pDst, srcStep, dstStep, logWD, weight1, offset1, weight2, offset2, roi);
}
#endif

HUX_API HuxResult HUX_STDCALL huxiBiDirWeightBlock_H264_8u_P3P1R(const uint8_t* pSrc1, const uint8_t* pSrc2,
                                                                 uint8_t* pDst, int32_t src1Step, int32_t src2Step,
                                                                 int32_t dstStep, uint32_t logWD, int32_t weight1,
                                                                 int32_t offset1, int32_t weight2, int32_t offset2,
                                                                 HuxSize roi) {
  return bi_checked(pSrc1, src1Step, pSrc2, src2Step, pDst, dstStep, roi, h::bi_shift(logWD), weight1, weight2,
                    h::bi_offset(offset1, offset2));
}

HUX_API HuxResult HUX_STDCALL huxiBiDirWeightBlockImplicit_H264_8u_P2P1R(const uint8_t* pSrc1, const uint8_t* pSrc2,
                                                                         uint8_t* pDst, int32_t srcStep,
                                                                         int32_t dstStep, int32_t weight1,
                                                                         int32_t weight2, HuxSize roi) {
  return bi_checked(pSrc1, srcStep, pSrc2, srcStep, pDst, dstStep, roi, 6, weight1, weight2, 0);
}

HUX_API HuxResult HUX_STDCALL huxiBiDirWeightBlockImplicit_H264_8u_P3P1R(const uint8_t* pSrc1, const uint8_t* pSrc2,
                                                                         uint8_t* pDst, int32_t src1Step,
                                                                         int32_t src2Step, int32_t dstStep,
                                                                         int32_t weight1, int32_t weight2,
                                                                         HuxSize roi) {
  return bi_checked(pSrc1, src1Step, pSrc2, src2Step, pDst, dstStep, roi, 6, weight1, weight2, 0);
}

HUX_API HuxResult HUX_STDCALL huxiBidirWeight_H264_16u_P2P1R(const HuxBidir16u* pParams, uint32_t logWD,
                                                             int32_t weight1, int32_t offset1, int32_t weight2,
                                                             int32_t offset2) {
  return bi16(pParams, h::bi_shift(logWD), weight1, weight2, h::bi_offset(offset1, offset2));
}

HUX_API HuxResult HUX_STDCALL huxiBidirWeightImplicit_H264_16u_P2P1R(const HuxBidir16u* pParams, int32_t weight1,
                                                                     int32_t weight2) {
  return bi16(pParams, 6, weight1, weight2, 0);
}

// Any size from 2 to 16 in each dimension; steps are not checked.
HUX_API HuxResult HUX_STDCALL huxiBidir_H264_16u_P2P1R(const HuxBidir16u* pParams) {
  const HuxBidir16u* p = pParams;
  if (!p || !p->pSrc1 || !p->pSrc2 || !p->pDst) return huxErrNullPtr;
  if (p->width < 2 || p->width > 16) return huxErrSize;
  if (p->height < 2 || p->height > 16) return huxErrSize;
  r::avg16u(p->pSrc1, p->src1Step, p->pSrc2, p->src2Step, p->pDst, p->dstStep, p->width, p->height);
  return huxOk;
}

HUX_API HuxResult HUX_STDCALL huxiWeightedAverage_H264_8u_C1IR(const uint8_t* pSrc1, uint8_t* pSrcDst,
                                                               int32_t srcDstStep, int32_t weight1, int32_t weight2,
                                                               int32_t shift, int32_t offset, HuxSize roi) {
  if (!pSrc1 || !pSrcDst) return huxErrNullPtr;
  if (srcDstStep < roi.width) return huxErrStep;
  if (!sizes_ok(roi)) return huxErrSize;
  k::bi8(pSrc1, srcDstStep, pSrcDst, srcDstStep, pSrcDst, srcDstStep, roi.width, roi.height, h::avg_shift(shift), weight1,
          weight2, offset);
  return huxOk;
}

}  // extern "C"
