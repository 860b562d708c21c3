// H.264 CAVLC residual and Exp-Golomb decoding: argument checks and dispatch.
// The decoding itself is in cavlc_kernels.h (scalar by nature, so every build
// runs the buffered-reader kernels).
#include "h264/cavlc_kernels.h"
#include "huxvc.h"

namespace k = hux::h264::fast;

namespace {

// coeff_token table for nC 0..7; null for the fixed-length token of nC >= 8.
inline const uint32_t* token_table(const uint32_t* const* tables, int32_t nC) {
  if (nC >= 8) return nullptr;
  return tables[nC < 2 ? 0 : (nC < 4 ? 1 : 2)];
}

template <class Out>
HuxResult decode4x4(uint32_t** ppBitStream, int32_t* pOffset, int16_t* pNumCoeff, Out** ppDstCoeffs,
                    int32_t vlcSelect, int32_t maxNumCoeff, const uint32_t* const* ppTblCoeffToken,
                    const uint32_t* const* ppTblTotalZeros, const uint32_t* const* ppTblRunBefore,
                    const int32_t* pScanMatrix) {
  if (!ppBitStream || !pOffset || !pNumCoeff || !ppDstCoeffs || !ppTblCoeffToken || !ppTblTotalZeros ||
      !ppTblRunBefore || !pScanMatrix)
    return huxErrNullPtr;
  if (!*ppBitStream || !*ppDstCoeffs) return huxErrNullPtr;
  if (maxNumCoeff != 16 && maxNumCoeff != 15) return huxErrOutOfRange;
  if (vlcSelect < 0) return huxErrOutOfRange;
  const uint32_t* token = token_table(ppTblCoeffToken, vlcSelect);
  if (vlcSelect < 8 && !token) return huxErrNullPtr;
  return k::cavlc4x4<Out>(ppBitStream, pOffset, pNumCoeff, ppDstCoeffs, token, maxNumCoeff, ppTblTotalZeros,
                          ppTblRunBefore, pScanMatrix);
}

template <int kN, class Out>
HuxResult decode_dc(uint32_t** ppBitStream, int32_t* pOffset, int16_t* pNumCoeff, Out** ppDstCoeffs,
                    const uint32_t* pTblCoeffToken, const uint32_t* const* ppTblTotalZerosCR,
                    const uint32_t* const* ppTblRunBefore) {
  if (!ppBitStream || !pOffset || !pNumCoeff || !ppDstCoeffs || !pTblCoeffToken || !ppTblTotalZerosCR ||
      !ppTblRunBefore)
    return huxErrNullPtr;
  if (!*ppBitStream || !*ppDstCoeffs) return huxErrNullPtr;
  return k::cavlc_chroma_dc<kN, Out>(ppBitStream, pOffset, pNumCoeff, ppDstCoeffs, pTblCoeffToken,
                                     ppTblTotalZerosCR, ppTblRunBefore);
}

template <class Out>
HuxResult exp_golomb(uint32_t** ppBitStream, int32_t* pBitOffset, Out* pDst, bool isSigned) {
  if (!ppBitStream || !pBitOffset || !pDst || !*ppBitStream) return huxErrNullPtr;
  if (static_cast<uint32_t>(*pBitOffset) > 31u) return huxErrBadArg;
  *pDst = static_cast<Out>(k::exp_golomb(ppBitStream, pBitOffset, isSigned));
  return huxOk;
}

}  // namespace

extern "C" {

HUX_API HuxResult HUX_STDCALL huxiDecodeCAVLCCoeffs_H264_1u16s(
    uint32_t** ppBitStream, int32_t* pOffset, int16_t* pNumCoeff, int16_t** ppDstCoeffs, int32_t vlcSelect,
    int16_t maxNumCoeff, const uint32_t* const* ppTblCoeffToken, const uint32_t* const* ppTblTotalZeros,
    const uint32_t* const* ppTblRunBefore, const int32_t* pScanMatrix) {
  return decode4x4(ppBitStream, pOffset, pNumCoeff, ppDstCoeffs, vlcSelect, maxNumCoeff, ppTblCoeffToken,
                   ppTblTotalZeros, ppTblRunBefore, pScanMatrix);
}

HUX_API HuxResult HUX_STDCALL huxiDecodeCAVLCCoeffs_H264_1u32s(
    uint32_t** ppBitStream, int32_t* pOffset, int16_t* pNumCoeff, int32_t** ppDstCoeffs, int32_t vlcSelect,
    int32_t maxNumCoeff, const uint32_t* const* ppTblCoeffToken, const uint32_t* const* ppTblTotalZeros,
    const uint32_t* const* ppTblRunBefore, const int32_t* pScanMatrix) {
  return decode4x4(ppBitStream, pOffset, pNumCoeff, ppDstCoeffs, vlcSelect, maxNumCoeff, ppTblCoeffToken,
                   ppTblTotalZeros, ppTblRunBefore, pScanMatrix);
}

HUX_API HuxResult HUX_STDCALL huxiDecodeCAVLCChromaDcCoeffs_H264_1u16s(
    uint32_t** ppBitStream, int32_t* pOffset, int16_t* pNumCoeff, int16_t** ppDstCoeffs,
    const uint32_t* pTblCoeffToken, const uint32_t* const* ppTblTotalZerosCR,
    const uint32_t* const* ppTblRunBefore) {
  // Checks the cursor and the count on entry; every other pointer is tested
  // when the decoding first needs it.
  if (!ppBitStream || !pOffset || !pNumCoeff) return huxErrNullPtr;
  if (!*ppBitStream) return huxErrNullPtr;
  return k::cavlc_chroma_dc420_quick(ppBitStream, pOffset, pNumCoeff, ppDstCoeffs, pTblCoeffToken,
                                     ppTblTotalZerosCR, ppTblRunBefore);
}

HUX_API HuxResult HUX_STDCALL huxiDecodeCAVLCChromaDcCoeffs_H264_1u32s(
    uint32_t** ppBitStream, int32_t* pOffset, int16_t* pNumCoeff, int32_t** ppDstCoeffs,
    const uint32_t* pTblCoeffToken, const uint32_t* const* ppTblTotalZerosCR,
    const uint32_t* const* ppTblRunBefore) {
  return decode_dc<4>(ppBitStream, pOffset, pNumCoeff, ppDstCoeffs, pTblCoeffToken, ppTblTotalZerosCR,
                      ppTblRunBefore);
}

HUX_API HuxResult HUX_STDCALL huxiDecodeCAVLCChroma422DcCoeffs_H264_1u16s(
    uint32_t** ppBitStream, int32_t* pOffset, int16_t* pNumCoeff, int16_t** ppDstCoeffs,
    const uint32_t* pTblCoeffToken, const uint32_t* const* ppTblTotalZerosCR,
    const uint32_t* const* ppTblRunBefore) {
  return decode_dc<8>(ppBitStream, pOffset, pNumCoeff, ppDstCoeffs, pTblCoeffToken, ppTblTotalZerosCR,
                      ppTblRunBefore);
}

HUX_API HuxResult HUX_STDCALL huxiDecodeCAVLCChroma422DcCoeffs_H264_1u32s(
    uint32_t** ppBitStream, int32_t* pOffset, int16_t* pNumCoeff, int32_t** ppDstCoeffs,
    const uint32_t* pTblCoeffToken, const uint32_t* const* ppTblTotalZerosCR,
    const uint32_t* const* ppTblRunBefore) {
  return decode_dc<8>(ppBitStream, pOffset, pNumCoeff, ppDstCoeffs, pTblCoeffToken, ppTblTotalZerosCR,
                      ppTblRunBefore);
}

HUX_API HuxResult HUX_STDCALL huxiDecodeExpGolombOne_H264_1u16s(uint32_t** ppBitStream, int32_t* pBitOffset,
                                                                int16_t* pDst, uint8_t isSigned) {
  return exp_golomb(ppBitStream, pBitOffset, pDst, isSigned != 0);
}

HUX_API HuxResult HUX_STDCALL huxiDecodeExpGolombOne_H264_1u32s(uint32_t** ppBitStream, int32_t* pBitOffset,
                                                                int32_t* pDst, int32_t isSigned) {
  return exp_golomb(ppBitStream, pBitOffset, pDst, isSigned != 0);
}

}  // extern "C"
