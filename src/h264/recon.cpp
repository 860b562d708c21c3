// H.264 macroblock reconstruction exports (8-bit luma, 4:2:0 chroma): pointer
// and range checks in the interface's order, then the pattern walk. Every
// check, the intra predictions' refusal included, comes before the picture or
// the caller's coefficient pointer is touched.
#include "h264/recon_kernels.h"
#include "huxvc.h"

namespace h = hux::h264;
using R = hux::h264::HUX_KERNELS::Recon;

namespace {
constexpr bool qp_above(int32_t qp, uint32_t hi) { return static_cast<uint32_t>(qp) > hi; }
// Bypass applies only at QP 0.
constexpr bool bypass_at(uint8_t flag, int32_t qp) { return flag && qp == 0; }
template <class T>
bool modes_above(const T* m, int n, uint32_t hi) {
  uint32_t any = 0;
  for (int i = 0; i < n; ++i) any |= static_cast<uint32_t>(static_cast<uint32_t>(m[i]) > hi);
  return any != 0;
}
struct Cursor {
  int16_t** pp;
  const int16_t* c;
  explicit Cursor(int16_t** p) : pp(p), c(*p) {}
  ~Cursor() { *pp = const_cast<int16_t*>(c); }
};
}  // namespace

extern "C" {

HUX_API HuxResult HUX_STDCALL huxiReconstructLumaInterMB_H264_16s8u_C1R(int16_t** ppSrcCoeff, uint8_t* pSrcDstYPlane,
                                                                       int32_t srcDstYStep, uint32_t cbp4x4,
                                                                       int32_t QP) {
  if (!ppSrcCoeff || !pSrcDstYPlane || !*ppSrcCoeff) return huxErrNullPtr;
  if (qp_above(QP, 51)) return huxErrOutOfRange;
  if (!(cbp4x4 & h::kCbpLuma)) return huxOk;
  Cursor k(ppSrcCoeff);
  R::luma_flat(k.c, pSrcDstYPlane, srcDstYStep, cbp4x4, QP);
  return huxOk;
}

HUX_API HuxResult HUX_STDCALL huxiReconstructLumaInter4x4MB_H264_16s8u_C1R(int16_t** ppSrcCoeff,
                                                                          uint8_t* pSrcDstYPlane, int32_t srcDstYStep,
                                                                          uint32_t cbp4x4, int32_t QP,
                                                                          const int16_t* pQuantTable,
                                                                          uint8_t bypassFlag) {
  if (!ppSrcCoeff || !pSrcDstYPlane || !*ppSrcCoeff || !pQuantTable) return huxErrNullPtr;
  if (qp_above(QP, 51)) return huxErrOutOfRange;
  Cursor k(ppSrcCoeff);
  R::luma_scaled(k.c, pSrcDstYPlane, srcDstYStep, cbp4x4, QP, pQuantTable, bypass_at(bypassFlag, QP));
  return huxOk;
}

HUX_API HuxResult HUX_STDCALL huxiReconstructLumaInter8x8MB_H264_16s8u_C1R(int16_t** ppSrcCoeff,
                                                                          uint8_t* pSrcDstYPlane, int32_t srcDstYStep,
                                                                          uint32_t cbp4x4, int32_t QP,
                                                                          const int16_t* pQuantTable,
                                                                          uint8_t bypassFlag) {
  if (!ppSrcCoeff || !pSrcDstYPlane || !*ppSrcCoeff || !pQuantTable) return huxErrNullPtr;
  if (qp_above(QP, 51)) return huxErrOutOfRange;
  Cursor k(ppSrcCoeff);
  R::luma8x8(k.c, pSrcDstYPlane, srcDstYStep, cbp4x4, QP, pQuantTable, bypass_at(bypassFlag, QP));
  return huxOk;
}

HUX_API HuxResult HUX_STDCALL huxiReconstructLumaIntraMB_H264_16s8u_C1R(int16_t** ppSrcCoeff, uint8_t* pSrcDstYPlane,
                                                                       int32_t srcDstYStep,
                                                                       const uint32_t* pMBIntraTypes, uint32_t cbp4x4,
                                                                       int32_t QP, uint8_t edgeType) {
  if (!ppSrcCoeff || !pSrcDstYPlane || !pMBIntraTypes || !*ppSrcCoeff) return huxErrNullPtr;
  if (qp_above(QP, 51) || modes_above(pMBIntraTypes, 16, 8)) return huxErrOutOfRange;
  Cursor k(ppSrcCoeff);
  R::intra4x4(k.c, pSrcDstYPlane, srcDstYStep, pMBIntraTypes, cbp4x4, QP, edgeType, nullptr, false);
  return huxOk;
}

HUX_API HuxResult HUX_STDCALL huxiReconstructLumaIntra4x4MB_H264_16s8u_C1R(int16_t** ppSrcCoeff,
                                                                          uint8_t* pSrcDstYPlane, int32_t srcDstYStep,
                                                                          const uint32_t* pMBIntraTypes,
                                                                          uint32_t cbp4x4, int32_t QP,
                                                                          uint8_t edgeType,
                                                                          const int16_t* pQuantTable,
                                                                          uint8_t bypassFlag) {
  if (!ppSrcCoeff || !pSrcDstYPlane || !pMBIntraTypes || !*ppSrcCoeff || !pQuantTable) return huxErrNullPtr;
  if (qp_above(QP, 51) || modes_above(pMBIntraTypes, 16, 8)) return huxErrOutOfRange;
  Cursor k(ppSrcCoeff);
  R::intra4x4(k.c, pSrcDstYPlane, srcDstYStep, pMBIntraTypes, cbp4x4, QP, edgeType, pQuantTable,
              bypass_at(bypassFlag, QP));
  return huxOk;
}

HUX_API HuxResult HUX_STDCALL huxiReconstructLumaIntra8x8MB_H264_16s8u_C1R(int16_t** ppSrcCoeff,
                                                                          uint8_t* pSrcDstYPlane, int32_t srcDstYStep,
                                                                          const int32_t* pMBIntraTypes,
                                                                          uint32_t cbp4x4, int32_t QP,
                                                                          uint8_t edgeType,
                                                                          const int16_t* pQuantTable,
                                                                          uint8_t bypassFlag) {
  if (!ppSrcCoeff || !pSrcDstYPlane || !pMBIntraTypes || !*ppSrcCoeff) return huxErrNullPtr;
  if (qp_above(QP, 51) || modes_above(pMBIntraTypes, 4, 8)) return huxErrOutOfRange;
  Cursor k(ppSrcCoeff);
  R::intra8x8(k.c, pSrcDstYPlane, srcDstYStep, pMBIntraTypes, cbp4x4, QP, edgeType, pQuantTable,
              bypass_at(bypassFlag, QP));
  return huxOk;
}

HUX_API HuxResult HUX_STDCALL huxiReconstructLumaIntra16x16MB_H264_16s8u_C1R(int16_t** ppSrcCoeff,
                                                                            uint8_t* pSrcDstYPlane,
                                                                            int32_t srcDstYStep,
                                                                            uint32_t intraLumaMode, uint32_t cbp4x4,
                                                                            int32_t QP, uint8_t edgeType) {
  if (!ppSrcCoeff || !pSrcDstYPlane || !*ppSrcCoeff) return huxErrNullPtr;
  if (qp_above(QP, 51) || intraLumaMode > 3) return huxErrOutOfRange;
  Cursor k(ppSrcCoeff);
  return R::intra16x16(k.c, pSrcDstYPlane, srcDstYStep, intraLumaMode, cbp4x4, QP, edgeType);
}

// The same operation under its second name.
HUX_API HuxResult HUX_STDCALL huxiReconstructLumaIntra_16x16MB_H264_16s8u_C1R(int16_t** ppSrcCoeff,
                                                                             uint8_t* pSrcDstYPlane,
                                                                             int32_t srcDstYStep,
                                                                             uint32_t intraLumaMode, uint32_t cbp4x4,
                                                                             int32_t QP, uint8_t edgeType) {
  return huxiReconstructLumaIntra16x16MB_H264_16s8u_C1R(ppSrcCoeff, pSrcDstYPlane, srcDstYStep, intraLumaMode, cbp4x4,
                                                        QP, edgeType);
}

HUX_API HuxResult HUX_STDCALL huxiReconstructChromaInterMB_H264_16s8u_P2R(int16_t** ppSrcCoeff, uint8_t* pSrcDstUPlane,
                                                                         uint8_t* pSrcDstVPlane,
                                                                         int32_t srcDstUVStep, uint32_t cbp4x4,
                                                                         int32_t chromaQP) {
  if (!ppSrcCoeff || !pSrcDstUPlane || !pSrcDstVPlane || !*ppSrcCoeff) return huxErrNullPtr;
  if (qp_above(chromaQP, 39)) return huxErrOutOfRange;
  uint8_t* const planes[2] = {pSrcDstUPlane, pSrcDstVPlane};
  Cursor k(ppSrcCoeff);
  R::chroma_flat(k.c, planes, srcDstUVStep, cbp4x4, chromaQP);
  return huxOk;
}

HUX_API HuxResult HUX_STDCALL huxiReconstructChromaInter4x4MB_H264_16s8u_P2R(
    int16_t** ppSrcCoeff, uint8_t* pSrcDstUPlane, uint8_t* pSrcDstVPlane, int32_t srcDstUVStep, uint32_t cbp4x4,
    int32_t chromaQPU, int32_t chromaQPV, const int16_t* pQuantTableU, const int16_t* pQuantTableV,
    uint8_t bypassFlag) {
  if (!ppSrcCoeff || !pSrcDstUPlane || !pSrcDstVPlane || !*ppSrcCoeff || !pQuantTableU || !pQuantTableV)
    return huxErrNullPtr;
  if (qp_above(chromaQPU, 39) || qp_above(chromaQPV, 39)) return huxErrOutOfRange;
  uint8_t* const planes[2] = {pSrcDstUPlane, pSrcDstVPlane};
  const int32_t qp[2] = {chromaQPU, chromaQPV};
  const int16_t* const scale[2] = {pQuantTableU, pQuantTableV};
  Cursor k(ppSrcCoeff);
  R::chroma_scaled(k.c, planes, srcDstUVStep, cbp4x4, qp, scale, bypassFlag != 0, 4);
  return huxOk;
}

HUX_API HuxResult HUX_STDCALL huxiReconstructChromaIntraMB_H264_16s8u_P2R(int16_t** ppSrcCoeff, uint8_t* pSrcDstUPlane,
                                                                         uint8_t* pSrcDstVPlane,
                                                                         int32_t srcDstUVStep,
                                                                         uint32_t intraChromaMode, uint32_t cbp4x4,
                                                                         int32_t chromaQP, uint8_t edgeType) {
  if (!ppSrcCoeff || !pSrcDstUPlane || !pSrcDstVPlane || !*ppSrcCoeff) return huxErrNullPtr;
  if (qp_above(chromaQP, 39) || intraChromaMode > 3) return huxErrOutOfRange;
  uint8_t* const planes[2] = {pSrcDstUPlane, pSrcDstVPlane};
  const HuxResult st = R::chroma_intra_pred(planes, srcDstUVStep, intraChromaMode, edgeType);
  if (st != huxOk) return st;
  Cursor k(ppSrcCoeff);
  R::chroma_flat(k.c, planes, srcDstUVStep, cbp4x4, chromaQP);
  return huxOk;
}

HUX_API HuxResult HUX_STDCALL huxiReconstructChromaIntra4x4MB_H264_16s8u_P2R(
    int16_t** ppSrcCoeff, uint8_t* pSrcDstUPlane, uint8_t* pSrcDstVPlane, int32_t srcDstUVStep,
    uint32_t intraChromaMode, uint32_t cbp4x4, int32_t chromaQPU, int32_t chromaQPV, uint8_t edgeType,
    const int16_t* pQuantTableU, const int16_t* pQuantTableV, uint8_t bypassFlag) {
  if (!ppSrcCoeff || !pSrcDstUPlane || !pSrcDstVPlane || !*ppSrcCoeff || !pQuantTableU || !pQuantTableV)
    return huxErrNullPtr;
  if (qp_above(chromaQPU, 39) || qp_above(chromaQPV, 39)) return huxErrOutOfRange;
  uint8_t* const planes[2] = {pSrcDstUPlane, pSrcDstVPlane};
  const HuxResult st = R::chroma_intra_pred(planes, srcDstUVStep, intraChromaMode, edgeType);
  if (st != huxOk) return st;
  const int32_t qp[2] = {chromaQPU, chromaQPV};
  const int16_t* const scale[2] = {pQuantTableU, pQuantTableV};
  Cursor k(ppSrcCoeff);
  R::chroma_scaled(k.c, planes, srcDstUVStep, cbp4x4, qp, scale, bypassFlag != 0, intraChromaMode);
  return huxOk;
}

}  // extern "C"
