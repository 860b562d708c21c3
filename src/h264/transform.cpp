// H.264 dequantisation and inverse transform exports: argument checks in the
// interface's order, then one kernel. Nothing is written when a check fails.
#include "h264/transform_kernels.h"
#include "huxvc.h"

namespace h = hux::h264;
namespace k = hux::h264::HUX_KERNELS;
namespace r = hux::h264::ref;

namespace {
constexpr bool qp_in(int32_t qp, int32_t hi) { return qp >= 0 && qp <= hi; }
}  // namespace

extern "C" {

HUX_API HuxResult HUX_STDCALL huxiDequantTransformResidual_H264_16s_C1I(int16_t* pSrcDst, int32_t step,
                                                                        const int16_t* pDC, int32_t AC, int32_t QP) {
  if (!pSrcDst) return huxErrNullPtr;
  if (!qp_in(QP, 51)) return huxErrOutOfRange;
  if (step < 8) return huxErrStep;
  k::dequant_transform_residual(pSrcDst, step, pDC, AC, QP);
  return huxOk;
}

// No range tests: QP and QS are clamped into the tables inside the kernel.
HUX_API HuxResult HUX_STDCALL huxiDequantTransformResidual_SISP_H264_16s_C1I(int16_t* pSrcDst,
                                                                             const int16_t* pPredCoeffs,
                                                                             const int16_t* pDC, int32_t AC,
                                                                             int32_t QP, int32_t QS,
                                                                             int32_t switchFlag) {
  if (!pSrcDst || !pPredCoeffs) return huxErrNullPtr;
  r::dequant_transform_residual_sisp(pSrcDst, pPredCoeffs, pDC, AC, QP, QS, switchFlag);
  return huxOk;
}

HUX_API HuxResult HUX_STDCALL huxiDequantTransformResidualAndAdd_H264_16s_C1I(const uint8_t* pPred, int16_t* pCoeffs,
                                                                              const int16_t* pDC, uint8_t* pDst,
                                                                              int32_t predStep, int32_t dstStep,
                                                                              int32_t QP, int32_t AC) {
  if (!pPred || !pDst) return huxErrNullPtr;
  if (!qp_in(QP, 51)) return huxErrOutOfRange;
  // The coefficients are needed unless the block is DC only and its DC is given.
  if (!pCoeffs && (!pDC || AC)) return huxErrNullPtr;
  k::dequant_transform_residual_add(pPred, predStep, pCoeffs, pDC, pDst, dstStep, QP, AC);
  return huxOk;
}

HUX_API HuxResult HUX_STDCALL huxiTransformDequantLumaDC_H264_16s_C1I(int16_t* pSrcDst, int32_t QP) {
  if (!pSrcDst) return huxErrNullPtr;
  if (!qp_in(QP, 51)) return huxErrOutOfRange;
  k::luma_dc_dequant(pSrcDst, QP);
  return huxOk;
}

HUX_API HuxResult HUX_STDCALL huxiTransformDequantChromaDC_H264_16s_C1I(int16_t* pSrcDst, int32_t QP) {
  if (!pSrcDst) return huxErrNullPtr;
  if (!qp_in(QP, 51)) return huxErrOutOfRange;
  r::chroma_dc_dequant(pSrcDst, QP);
  return huxOk;
}

HUX_API HuxResult HUX_STDCALL huxiTransformDequantChromaDC_SISP_H264_16s_C1I(int16_t* pSrcDst, const int16_t* pPredDC,
                                                                             int32_t QP, int32_t QS,
                                                                             int32_t switchFlag) {
  if (!pSrcDst || !pPredDC) return huxErrNullPtr;
  r::chroma_dc_dequant_sisp(pSrcDst, pPredDC, QP, QS, switchFlag);
  return huxOk;
}

HUX_API HuxResult HUX_STDCALL huxiTransformQuantInvLumaDC4x4_H264_16s_C1I(int16_t* pSrcDst, int32_t QP,
                                                                          const int16_t* pScale) {
  if (!pSrcDst) return huxErrNullPtr;
  if (!qp_in(QP, 51)) return huxErrOutOfRange;
  r::quant_inv_luma_dc(pSrcDst, QP, pScale);
  return huxOk;
}

HUX_API HuxResult HUX_STDCALL huxiTransformQuantInvLumaDC4x4_H264_32s_C1I(int32_t* pSrcDst, int32_t QP,
                                                                          const int16_t* pScale) {
  if (!pSrcDst) return huxErrNullPtr;
  if (!qp_in(QP, 87)) return huxErrOutOfRange;
  r::quant_inv_luma_dc(pSrcDst, QP, pScale);
  return huxOk;
}

HUX_API HuxResult HUX_STDCALL huxiTransformQuantInvChromaDC2x2_H264_16s_C1I(int16_t* pSrcDst, int32_t QP,
                                                                            const int16_t* pScale) {
  if (!pSrcDst) return huxErrNullPtr;
  if (!qp_in(QP, 39)) return huxErrOutOfRange;
  r::quant_inv_chroma_dc2x2(pSrcDst, QP, pScale);
  return huxOk;
}

HUX_API HuxResult HUX_STDCALL huxiTransformQuantInvChromaDC2x2_H264_32s_C1I(int32_t* pSrcDst, int32_t QP,
                                                                            const int16_t* pScale) {
  if (!pSrcDst) return huxErrNullPtr;
  if (!qp_in(QP, 75)) return huxErrOutOfRange;
  r::quant_inv_chroma_dc2x2(pSrcDst, QP, pScale);
  return huxOk;
}

HUX_API HuxResult HUX_STDCALL huxiTransformQuantInvChromaDC2x4_H264_16s_C1I(int16_t* pSrcDst, int32_t QP,
                                                                            const int16_t* pScale) {
  if (!pSrcDst) return huxErrNullPtr;
  if (!qp_in(QP, 39)) return huxErrOutOfRange;
  r::quant_inv_chroma_dc2x4(pSrcDst, QP, pScale);
  return huxOk;
}

HUX_API HuxResult HUX_STDCALL huxiTransformQuantInvChromaDC2x4_H264_32s_C1I(int32_t* pSrcDst, int32_t QP,
                                                                            const int16_t* pScale) {
  if (!pSrcDst) return huxErrNullPtr;
  if (!qp_in(QP, 75)) return huxErrOutOfRange;
  r::quant_inv_chroma_dc2x4(pSrcDst, QP, pScale);
  return huxOk;
}

HUX_API HuxResult HUX_STDCALL huxiTransformQuantInvAddPred4x4_H264_16s_C1IR(const uint8_t* pPred, int32_t predStep,
                                                                            int16_t* pSrcDst, const int16_t* pDC,
                                                                            uint8_t* pDst, int32_t dstStep, int32_t QP,
                                                                            int32_t AC, const int16_t* pScale) {
  if (!pPred || !pDst || !pSrcDst) return huxErrNullPtr;
  if (!qp_in(QP, 51)) return huxErrOutOfRange;
  k::quant_inv_add_pred4x4(pPred, predStep, pSrcDst, pDC, pDst, dstStep, QP, AC, pScale);
  return huxOk;
}

HUX_API HuxResult HUX_STDCALL huxiTransformQuantInvAddPred4x4_H264_32s_C1IR(const uint16_t* pPred, int32_t predStep,
                                                                            int32_t* pSrcDst, const int32_t* pDC,
                                                                            uint16_t* pDst, int32_t dstStep,
                                                                            int32_t QP, int32_t AC, int32_t bitDepth,
                                                                            const int16_t* pScale) {
  if (!pPred || !pSrcDst || !pDst) return huxErrNullPtr;
  if (!qp_in(QP, 87) || bitDepth < 9 || bitDepth > 14) return huxErrOutOfRange;
  k::quant_inv_add_pred4x4_hbd(pPred, predStep, pSrcDst, pDC, pDst, dstStep, QP, AC, bitDepth, pScale);
  return huxOk;
}

HUX_API HuxResult HUX_STDCALL huxiQuantLuma8x8Inv_H264_16s_C1I(int16_t* pSrcDst, int32_t Qp6, const int16_t* pScale) {
  if (!pSrcDst || !pScale) return huxErrNullPtr;
  if (Qp6 < 0 || Qp6 > 8) return huxErrQuantParam;
  k::dequant_luma8x8(pSrcDst, Qp6, pScale);
  return huxOk;
}

HUX_API HuxResult HUX_STDCALL huxiQuantInvLuma8x8_H264_32s_C1I(int32_t* pSrcDst, int32_t Qp6, const int16_t* pScale) {
  if (!pSrcDst || !pScale) return huxErrNullPtr;
  if (Qp6 < 0 || Qp6 > 14) return huxErrQuantParam;
  r::dequant_luma8x8_32(pSrcDst, Qp6, pScale);
  return huxOk;
}

HUX_API HuxResult HUX_STDCALL huxiTransformLuma8x8InvAddPred_H264_16s8u_C1R(const uint8_t* pPred, int32_t predStep,
                                                                            int16_t* pSrcDst, uint8_t* pDst,
                                                                            int32_t dstStep) {
  if (!pPred || !pSrcDst || !pDst) return huxErrNullPtr;
  k::idct8x8_add(pPred, predStep, pSrcDst, pDst, dstStep);
  return huxOk;
}

// The bit depth is not checked; it is clamped to 1..16 so the clamp bound is
// always a 16-bit sample value.
HUX_API HuxResult HUX_STDCALL huxiTransformInvAddPredLuma8x8_H264_32s16u_C1R(const uint16_t* pPred, int32_t predStep,
                                                                             int32_t* pSrc, uint16_t* pDst,
                                                                             int32_t dstStep, int32_t bitDepth) {
  if (!pPred || !pSrc || !pDst) return huxErrNullPtr;
  k::idct8x8_add_hbd(pPred, predStep, pSrc, pDst, dstStep, h::sample_max(bitDepth));
  return huxOk;
}

HUX_API HuxResult HUX_STDCALL huxiTransformResidual4x4Inv_H264_16s_C1(const int16_t* pSrc, int16_t* pDst) {
  if (!pSrc || !pDst) return huxErrNullPtr;
  k::transform_residual4x4(pSrc, pDst);
  return huxOk;
}

HUX_API HuxResult HUX_STDCALL huxiTransformResidual4x4Inv_H264_32s_C1(const int32_t* pSrc, int32_t* pDst) {
  if (!pSrc || !pDst) return huxErrNullPtr;
  k::transform_residual4x4_32(pSrc, pDst);
  return huxOk;
}

}  // extern "C"
