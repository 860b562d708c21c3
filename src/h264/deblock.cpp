// H.264 deblocking exports: null checks in the interface's order, then one
// kernel. The step, the thresholds and the bit depth are trusted.
#include "h264/deblock_kernels.h"
#include "huxvc.h"

namespace h = hux::h264;
namespace k = hux::h264::HUX_KERNELS;
namespace r = hux::h264::ref;

namespace {

inline bool any_null(const void* a, const void* b, const void* c, const void* d, const void* e) {
  return !a || !b || !c || !d || !e;
}

template <class P>
inline bool block_null(const P* d) {
  return !d || any_null(d->pSrcDst, d->pAlpha, d->pBeta, d->pThresholds, d->pBS);
}

inline HuxResult edges16u(const h::DeblockShape& s, bool vertical, const HuxDeblockParams16u* d) {
  if (block_null(d)) return huxErrNullPtr;
  r::filter_edges<uint16_t>(s, vertical, d->pSrcDst, d->srcDstStep, d->pAlpha, d->pBeta, d->pThresholds, d->pBS,
                            h::deblock_max(d->bitDepth));
  return huxOk;
}

inline HuxResult mbaff16u(const h::DeblockShape& s, const HuxDeblockParams16u* d) {
  if (block_null(d)) return huxErrNullPtr;
  if (d->pAlpha[0] == 0 || hux::load<uint32_t>(d->pBS) == 0) return huxOk;
  r::filter_edges<uint16_t>(s, true, d->pSrcDst, d->srcDstStep, d->pAlpha, d->pBeta, d->pThresholds, d->pBS,
                            h::deblock_max(d->bitDepth));
  return huxOk;
}

}  // namespace

#define HUX_DEBLOCK_EXPORT_8U(name, kernel)                                                                   \
  HUX_API HuxResult HUX_STDCALL name(uint8_t* pSrcDst, int32_t srcDstStep, const uint8_t* pAlpha,               \
                                     const uint8_t* pBeta, const uint8_t* pThresholds, const uint8_t* pBS) { \
    if (any_null(pSrcDst, pAlpha, pBeta, pThresholds, pBS)) return huxErrNullPtr;                              \
    kernel(pSrcDst, srcDstStep, pAlpha, pBeta, pThresholds, pBS);                                              \
    return huxOk;                                                                                              \
  }

extern "C" {

HUX_DEBLOCK_EXPORT_8U(huxiFilterDeblockingLuma_VerEdge_H264_8u_C1IR, k::luma_ver)
HUX_DEBLOCK_EXPORT_8U(huxiFilterDeblockingLuma_HorEdge_H264_8u_C1IR, k::luma_hor)
HUX_DEBLOCK_EXPORT_8U(huxiFilterDeblockingChroma_VerEdge_H264_8u_C1IR, k::chroma_ver)
HUX_DEBLOCK_EXPORT_8U(huxiFilterDeblockingChroma_HorEdge_H264_8u_C1IR, k::chroma_hor)
HUX_DEBLOCK_EXPORT_8U(huxiFilterDeblockingLuma_VerEdge_MBAFF_H264_8u_C1IR, r::luma_ver_mbaff)
HUX_DEBLOCK_EXPORT_8U(huxiFilterDeblockingChroma_VerEdge_MBAFF_H264_8u_C1IR, r::chroma_ver_mbaff)

HUX_API HuxResult HUX_STDCALL huxiFilterDeblockingChroma422VerEdge_H264_8u_C1IR(const HuxDeblockParams8u* d) {
  if (block_null(d)) return huxErrNullPtr;
  k::chroma422_ver(d->pSrcDst, d->srcDstStep, d->pAlpha, d->pBeta, d->pThresholds, d->pBS);
  return huxOk;
}

HUX_API HuxResult HUX_STDCALL huxiFilterDeblockingChroma422HorEdge_H264_8u_C1IR(const HuxDeblockParams8u* d) {
  if (block_null(d)) return huxErrNullPtr;
  k::chroma422_hor(d->pSrcDst, d->srcDstStep, d->pAlpha, d->pBeta, d->pThresholds, d->pBS);
  return huxOk;
}

HUX_API HuxResult HUX_STDCALL huxiFilterDeblockingLumaVerEdge_H264_16u_C1IR(const HuxDeblockParams16u* d) {
  return edges16u(h::kLuma, true, d);
}
HUX_API HuxResult HUX_STDCALL huxiFilterDeblockingLumaHorEdge_H264_16u_C1IR(const HuxDeblockParams16u* d) {
  return edges16u(h::kLuma, false, d);
}
HUX_API HuxResult HUX_STDCALL huxiFilterDeblockingChromaVerEdge_H264_16u_C1IR(const HuxDeblockParams16u* d) {
  return edges16u(h::kChroma420, true, d);
}
HUX_API HuxResult HUX_STDCALL huxiFilterDeblockingChromaHorEdge_H264_16u_C1IR(const HuxDeblockParams16u* d) {
  return edges16u(h::kChroma420, false, d);
}
HUX_API HuxResult HUX_STDCALL huxiFilterDeblockingChroma422VerEdge_H264_16u_C1IR(const HuxDeblockParams16u* d) {
  return edges16u(h::kChroma422Ver, true, d);
}
HUX_API HuxResult HUX_STDCALL huxiFilterDeblockingChroma422HorEdge_H264_16u_C1IR(const HuxDeblockParams16u* d) {
  return edges16u(h::kChroma422Hor, false, d);
}
HUX_API HuxResult HUX_STDCALL huxiFilterDeblockingLumaVerEdgeMBAFF_H264_16u_C1IR(const HuxDeblockParams16u* d) {
  return mbaff16u(h::kLumaMbaff, d);
}
HUX_API HuxResult HUX_STDCALL huxiFilterDeblockingChromaVerEdgeMBAFF_H264_16u_C1IR(const HuxDeblockParams16u* d) {
  return mbaff16u(h::kChromaMbaff, d);
}

// The 4:2:2 MBAFF left edge exists only as an entry point: both widths share
// it, it looks at nothing and always reports the operation as not provided.
HUX_API HuxResult HUX_STDCALL huxiFilterDeblockingChroma422VerEdgeMBAFF_H264_8u_C1IR(const void*) {
  return huxErrNotSupported;
}
HUX_API HuxResult HUX_STDCALL huxiFilterDeblockingChroma422VerEdgeMBAFF_H264_16u_C1IR(const void*)
    __attribute__((alias("huxiFilterDeblockingChroma422VerEdgeMBAFF_H264_8u_C1IR")));

}  // extern "C"
