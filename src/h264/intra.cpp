// H.264 intra prediction exports: pointer, step and mode checks, then the
// kernel, which answers a missing neighbour itself (128 and a warning for 4x4,
// a refusal before any write for 16x16 and chroma).
#include "h264/intra_kernels.h"
#include "huxvc.h"

namespace k = hux::h264::HUX_KERNELS;

extern "C" {

HUX_API HuxResult HUX_STDCALL huxiPredictIntra_4x4_H264_8u_C1IR(uint8_t* pSrcDst, int32_t srcDstStep, uint32_t mode,
                                                               uint32_t availability) {
  if (!pSrcDst) return huxErrNullPtr;
  if (srcDstStep < 4) return huxErrStep;
  if (mode > 8) return huxErrOutOfRange;
  return k::pred4x4(pSrcDst, srcDstStep, mode, availability);
}

HUX_API HuxResult HUX_STDCALL huxiPredictIntra_16x16_H264_8u_C1IR(uint8_t* pSrcDst, int32_t srcDstStep, uint32_t mode,
                                                                 uint32_t availability) {
  if (!pSrcDst) return huxErrNullPtr;
  if (srcDstStep < 16) return huxErrStep;
  return k::pred16x16(pSrcDst, srcDstStep, mode, availability);
}

HUX_API HuxResult HUX_STDCALL huxiPredictIntraChroma8x8_H264_8u_C1IR(uint8_t* pSrcDst, int32_t srcDstStep,
                                                                    uint32_t mode, uint32_t availability) {
  if (!pSrcDst) return huxErrNullPtr;
  if (srcDstStep < 8) return huxErrStep;
  return k::pred_chroma8x8(pSrcDst, srcDstStep, mode, availability);
}

}  // extern "C"
