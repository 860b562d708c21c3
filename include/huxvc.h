/* huxvc: video-codec primitives with a flat C interface.
 *
 * Every export checks its arguments (null pointers first, then bit offsets, then
 * sizes and steps, then parameter ranges), returns the first failing status
 * without writing anything, and otherwise runs one bounded step on memory the
 * caller owns. On 32-bit x86 every export removes its own arguments from the
 * stack (HUX_STDCALL). No export needs an initialisation call or aligned data. */
#ifndef HUXVC_H
#define HUXVC_H

#include <stdint.h>

#include "huxcore.h"

#ifndef HUX_API
#  if defined(__GNUC__) || defined(__clang__)
#    define HUX_API __attribute__((visibility("default")))
#  else
#    define HUX_API
#  endif
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ------------------------------------------------------------------ statuses */

/** Status of every export: 0 success, negative errors, positive warnings. */
typedef int32_t HuxResult;

enum {
  huxWrnOddSize = 35,           /* odd picture width or height; the even part was processed */
  huxWrnNoNeighbour = 11,       /* a 4x4 intra mode used 128 for an absent neighbour sample */
  huxWrnNoOperation = 1,        /* a mode outside its set on a path that does nothing */
  huxOk = 0,                    /* success */
  huxErrNotSupported = -2,      /* the operation is not provided for these arguments */
  huxErrBadArg = -5,            /* an argument outside its set */
  huxErrSize = -6,              /* a size, count or region that is not positive or does not fit */
  huxErrNullPtr = -8,           /* a required pointer is null */
  huxErrMemAlloc = -9,          /* the core library's allocator failed */
  huxErrDivByZero = -10,        /* a divisor argument is zero */
  huxErrOutOfRange = -11,       /* a value outside its legal range */
  huxErrLevelRange = -13,       /* a forward-quantised level exceeds 2063 */
  huxErrStep = -14,             /* a row step smaller than the block width in bytes */
  huxErrContextMismatch = -17,  /* a state block's tag word is not the expected one */
  huxErrModeSelector = -22,     /* a mode selector outside {1, 2} */
  huxErrScaleFactor = -23,      /* a down-scaling factor other than 2, 4 or 8 */
  huxErrVLCCode = -74,          /* the stream holds a code word the table marks as invalid */
  huxErrNoNeighbour = -117,     /* an intra mode needs a neighbour marked absent */
  huxErrCoeffStream = -191,     /* an invalid coefficient stream */
  huxErrQuantParam = -192,      /* a quantisation parameter outside 1 to 31 */
  huxErrBitOffset = -193        /* a byte-form bit offset outside 0 to 7 */
};

/* --------------------------------------------------------------------- types */

/** A width and a height, passed by value (two argument words, width first). */
typedef struct {
  int32_t width;
  int32_t height;
} HuxSize;

/** The library's constant version record. */
typedef struct {
  int32_t major;
  int32_t minor;
  int32_t majorBuild;
  int32_t build;
  char targetCpu[4];     /* processor variant code */
  const char* Name;      /* library file name */
  const char* Version;   /* version text */
  const char* BuildDate;
} HuxLibraryVersion;

/** Returns the library's constant version record (never null; do not free). */
HUX_API const HuxLibraryVersion* HUX_STDCALL huxvcGetLibVersion(void);

/* ----------------------------------------------------------- block SADs */
/* Current block first, reference second; steps in bytes and never checked.
 * mcType 0/4/8/12 selects the integer, vertical, horizontal or diagonal
 * half-sample reference (mcType >> 2; values of 16 and above are not defined).
 * Only the pointers are checked (huxErrNullPtr). */

/** SAD of a 16x16 block, integer or half-sample reference. */
HUX_API HuxResult HUX_STDCALL huxiSAD16x16_8u32s(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef, int32_t refStep, int32_t* pSAD, int32_t mcType);
/** SAD of a 16x8 block, integer or half-sample reference. */
HUX_API HuxResult HUX_STDCALL huxiSAD16x8_8u32s_C1R(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef, int32_t refStep, int32_t* pSAD, int32_t mcType);
/** SAD of an 8x8 block, integer or half-sample reference. */
HUX_API HuxResult HUX_STDCALL huxiSAD8x8_8u32s_C1R(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef, int32_t refStep, int32_t* pSAD, int32_t mcType);
/** SAD of an 8x16 block at integer position (mcType is ignored). */
HUX_API HuxResult HUX_STDCALL huxiSAD8x16_8u32s_C1R(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef, int32_t refStep, int32_t* pSAD, int32_t mcType);
/** SAD of an 8x4 block at integer position (mcType is ignored). */
HUX_API HuxResult HUX_STDCALL huxiSAD8x4_8u32s_C1R(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef, int32_t refStep, int32_t* pSAD, int32_t mcType);
/** SAD of a 4x8 block at integer position (mcType is ignored). */
HUX_API HuxResult HUX_STDCALL huxiSAD4x8_8u32s_C1R(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef, int32_t refStep, int32_t* pSAD, int32_t mcType);
/** SAD of a 4x4 block at integer position (mcType is ignored). */
HUX_API HuxResult HUX_STDCALL huxiSAD4x4_8u32s(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef, int32_t refStep, int32_t* pSAD, int32_t mcType);
/** SAD of a 16x16 block of 16-bit samples; half-sample sums saturate at 65535. */
HUX_API HuxResult HUX_STDCALL huxiSAD16x16_16u32s_C1R(const uint16_t* pSrc, int32_t srcStep, const uint16_t* pRef, int32_t refStep, int32_t* pSAD, int32_t mcType);
/** SAD of an 8x8 block of 16-bit samples; half-sample sums saturate at 65535. */
HUX_API HuxResult HUX_STDCALL huxiSAD8x8_16u32s_C1R(const uint16_t* pSrc, int32_t srcStep, const uint16_t* pRef, int32_t refStep, int32_t* pSAD, int32_t mcType);
/** SAD of a 4x4 block of 16-bit samples; half-sample sums saturate at 65535. */
HUX_API HuxResult HUX_STDCALL huxiSAD4x4_16u32s_C1R(const uint16_t* pSrc, int32_t srcStep, const uint16_t* pRef, int32_t refStep, int32_t* pSAD, int32_t mcType);

/** SADs of the four 8x8 quarters of a 16x16 block, raster order (mcType ignored). */
HUX_API HuxResult HUX_STDCALL huxiSAD16x16Blocks8x8_8u16u(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef, int32_t refStep, uint16_t* pDstSAD, int32_t mcType);
/** SADs of the sixteen 4x4 blocks of a 16x16 block, raster order (mcType ignored). */
HUX_API HuxResult HUX_STDCALL huxiSAD16x16Blocks4x4_8u16u(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef, int32_t refStep, uint16_t* pDstSAD, int32_t mcType);
/** SADs of the four 8x8 quarters, 16-bit samples: differences wrap to 16 bits, steps rounded down to even. */
HUX_API HuxResult HUX_STDCALL huxiSAD16x16Blocks8x8_16u32u_C1R(const uint16_t* pSrc, int32_t srcStep, const uint16_t* pRef, int32_t refStep, uint32_t* pDstSAD, int32_t mcType);
/** SADs of the sixteen 4x4 blocks, 16-bit samples: differences wrap to 16 bits, steps rounded down to even. */
HUX_API HuxResult HUX_STDCALL huxiSAD16x16Blocks4x4_16u32u_C1R(const uint16_t* pSrc, int32_t srcStep, const uint16_t* pRef, int32_t refStep, uint32_t* pDstSAD, int32_t mcType);

/** SADs of 16x16 candidates 0..M-1 samples right of pRef, M = numCand rounded down to a multiple of 8 (huxErrSize below 8). */
HUX_API HuxResult HUX_STDCALL huxiSAD16x16xN_8u16u_C1R(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef, int32_t refStep, uint16_t* pDstSAD, int32_t numCand);
/** As huxiSAD16x16xN_8u16u_C1R, and the index of the smallest SAD (lowest index on ties). */
HUX_API HuxResult HUX_STDCALL huxiSAD16x16xNI_8u16u_C1R(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef, int32_t refStep, uint16_t* pDstSAD, int32_t numCand, uint32_t* pMinIndex);
/** SADs of 8x8 candidates along a reference row (see the 16x16 form). */
HUX_API HuxResult HUX_STDCALL huxiSAD8x8xN_8u16u_C1R(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef, int32_t refStep, uint16_t* pDstSAD, int32_t numCand);
/** SADs of 8x8 candidates along a reference row and the index of the smallest. */
HUX_API HuxResult HUX_STDCALL huxiSAD8x8xNI_8u16u_C1R(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef, int32_t refStep, uint16_t* pDstSAD, int32_t numCand, uint32_t* pMinIndex);
/** SADs of 4x4 candidates along a reference row (see the 16x16 form). */
HUX_API HuxResult HUX_STDCALL huxiSAD4x4xN_8u16u_C1R(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef, int32_t refStep, uint16_t* pDstSAD, int32_t numCand);
/** SADs of 4x4 candidates along a reference row and the index of the smallest. */
HUX_API HuxResult HUX_STDCALL huxiSAD4x4xNI_8u16u_C1R(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef, int32_t refStep, uint16_t* pDstSAD, int32_t numCand, uint32_t* pMinIndex);
/** SADs of 2x2 candidates along a reference row (see the 16x16 form). */
HUX_API HuxResult HUX_STDCALL huxiSAD2x2xN_8u16u_C1R(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef, int32_t refStep, uint16_t* pDstSAD, int32_t numCand);

/** Frame activity (row pairs 0-7 and 8-15, adjacent rows) and field activity (rows two apart) of a 16x16 block. */
HUX_API HuxResult HUX_STDCALL huxiFrameFieldSAD16x16_8u32s_C1R(const uint8_t* pSrc, int32_t srcStep, int32_t* pFrameSAD, int32_t* pFieldSAD);
/** Frame and field activity of a 16x16 block of signed 16-bit samples. */
HUX_API HuxResult HUX_STDCALL huxiFrameFieldSAD16x16_16s32s_C1R(const int16_t* pSrc, int32_t srcStep, int32_t* pFrameSAD, int32_t* pFieldSAD);

/** Residual (current minus reference, 16-bit) of an 8x8 block and its SAD. */
HUX_API HuxResult HUX_STDCALL huxiSubSAD8x8_8u16s_C1R(const uint8_t* pSrcCur, int32_t srcCurStep, const uint8_t* pSrcRef, int32_t srcRefStep, int16_t* pDstDiff, int32_t dstDiffStep, int32_t* pSAD);

/* ---------------------------------------------- H.264 coefficient decoding */
/* Word-form cursor; the caller passes every code table (the multi-level layout
 * with give-back counts, sub-table links and the 0xF0F1 invalid-code marker) and
 * the 4x4 scan. A block with coefficients is cleared, filled in raster order and
 * the caller's block pointer advanced by its length; an empty block writes only
 * its count. */
/** Decodes one CAVLC 4x4 block (nC = vlcSelect, maxNumCoeff 15 or 16) to 16 signed 16-bit levels. */
HUX_API HuxResult HUX_STDCALL huxiDecodeCAVLCCoeffs_H264_1u16s(uint32_t** ppBitStream, int32_t* pOffset, int16_t* pNumCoeff, int16_t** ppDstCoeffs, int32_t vlcSelect, int16_t maxNumCoeff, const uint32_t* const* ppTblCoeffToken, const uint32_t* const* ppTblTotalZeros, const uint32_t* const* ppTblRunBefore, const int32_t* pScanMatrix);
/** Decodes one CAVLC 4x4 block to 16 signed 32-bit levels (levels kept within -32768..32768). */
HUX_API HuxResult HUX_STDCALL huxiDecodeCAVLCCoeffs_H264_1u32s(uint32_t** ppBitStream, int32_t* pOffset, int16_t* pNumCoeff, int32_t** ppDstCoeffs, int32_t vlcSelect, int32_t maxNumCoeff, const uint32_t* const* ppTblCoeffToken, const uint32_t* const* ppTblTotalZeros, const uint32_t* const* ppTblRunBefore, const int32_t* pScanMatrix);
/** Decodes one CAVLC 2x2 chroma DC block (4:2:0) to 4 signed 16-bit levels. */
HUX_API HuxResult HUX_STDCALL huxiDecodeCAVLCChromaDcCoeffs_H264_1u16s(uint32_t** ppBitStream, int32_t* pOffset, int16_t* pNumCoeff, int16_t** ppDstCoeffs, const uint32_t* pTblCoeffToken, const uint32_t* const* ppTblTotalZerosCR, const uint32_t* const* ppTblRunBefore);
/** Decodes one CAVLC 2x2 chroma DC block (4:2:0) to 4 signed 32-bit levels. */
HUX_API HuxResult HUX_STDCALL huxiDecodeCAVLCChromaDcCoeffs_H264_1u32s(uint32_t** ppBitStream, int32_t* pOffset, int16_t* pNumCoeff, int32_t** ppDstCoeffs, const uint32_t* pTblCoeffToken, const uint32_t* const* ppTblTotalZerosCR, const uint32_t* const* ppTblRunBefore);
/** Decodes one CAVLC 2x4 chroma DC block (4:2:2; two wide, four high) to 8 signed 16-bit levels. */
HUX_API HuxResult HUX_STDCALL huxiDecodeCAVLCChroma422DcCoeffs_H264_1u16s(uint32_t** ppBitStream, int32_t* pOffset, int16_t* pNumCoeff, int16_t** ppDstCoeffs, const uint32_t* pTblCoeffToken, const uint32_t* const* ppTblTotalZerosCR, const uint32_t* const* ppTblRunBefore);
/** Decodes one CAVLC 2x4 chroma DC block (4:2:2; two wide, four high) to 8 signed 32-bit levels. */
HUX_API HuxResult HUX_STDCALL huxiDecodeCAVLCChroma422DcCoeffs_H264_1u32s(uint32_t** ppBitStream, int32_t* pOffset, int16_t* pNumCoeff, int32_t** ppDstCoeffs, const uint32_t* pTblCoeffToken, const uint32_t* const* ppTblTotalZerosCR, const uint32_t* const* ppTblRunBefore);
/** Decodes one Exp-Golomb code (signed mapping when isSigned is non-zero) to its low 16 bits. */
HUX_API HuxResult HUX_STDCALL huxiDecodeExpGolombOne_H264_1u16s(uint32_t** ppBitStream, int32_t* pBitOffset, int16_t* pDst, uint8_t isSigned);
/** Decodes one Exp-Golomb code (signed mapping when isSigned is non-zero) to a 32-bit value. */
HUX_API HuxResult HUX_STDCALL huxiDecodeExpGolombOne_H264_1u32s(uint32_t** ppBitStream, int32_t* pBitOffset, int32_t* pDst, int32_t isSigned);

/* ------------------------------- H.264 dequantisation and inverse transforms */
/** Dequantises a 4x4 residual block in place (DC from pDC when given) and inverse transforms it; 16-bit wrapping passes, no clamping. */
HUX_API HuxResult HUX_STDCALL huxiDequantTransformResidual_H264_16s_C1I(int16_t* pSrcDst, int32_t step, const int16_t* pDC, int32_t AC, int32_t QP);
/** SP/SI luma 4x4: adds the transformed prediction, requantises at QS, dequantises and inverse transforms; the block receives samples clamped to 0..255. */
HUX_API HuxResult HUX_STDCALL huxiDequantTransformResidual_SISP_H264_16s_C1I(int16_t* pSrcDst, const int16_t* pPredCoeffs, const int16_t* pDC, int32_t AC, int32_t QP, int32_t QS, int32_t switchFlag);
/** Dequantises and inverse transforms a 4x4 block (saturating 16-bit passes), adds the prediction and clamps to 0..255. */
HUX_API HuxResult HUX_STDCALL huxiDequantTransformResidualAndAdd_H264_16s_C1I(const uint8_t* pPred, int16_t* pCoeffs, const int16_t* pDC, uint8_t* pDst, int32_t predStep, int32_t dstStep, int32_t QP, int32_t AC);
/** Intra 16x16 luma DC: 4x4 Hadamard with 16-bit wrapping, then flat-matrix DC scaling at QP, in place. */
HUX_API HuxResult HUX_STDCALL huxiTransformDequantLumaDC_H264_16s_C1I(int16_t* pSrcDst, int32_t QP);
/** 4:2:0 chroma DC: 2x2 Hadamard with 16-bit wrapping, then (x * v(QP, 0) << QP/6) >> 1, in place. */
HUX_API HuxResult HUX_STDCALL huxiTransformDequantChromaDC_H264_16s_C1I(int16_t* pSrcDst, int32_t QP);
/** SP/SI chroma DC: adds the transformed prediction DC, requantises at QS, dequantises and inverse transforms, in place. */
HUX_API HuxResult HUX_STDCALL huxiTransformDequantChromaDC_SISP_H264_16s_C1I(int16_t* pSrcDst, const int16_t* pPredDC, int32_t QP, int32_t QS, int32_t switchFlag);
/** Luma DC Hadamard and dequantisation with LevelScale4x4 (pScale[0], or flat when null); 16-bit saturating. */
HUX_API HuxResult HUX_STDCALL huxiTransformQuantInvLumaDC4x4_H264_16s_C1I(int16_t* pSrcDst, int32_t QP, const int16_t* pScale);
/** Luma DC Hadamard and dequantisation with LevelScale4x4 (pScale[0], or flat when null); 32-bit, QP up to 87. */
HUX_API HuxResult HUX_STDCALL huxiTransformQuantInvLumaDC4x4_H264_32s_C1I(int32_t* pSrcDst, int32_t QP, const int16_t* pScale);
/** 2x2 chroma DC Hadamard and dequantisation (no rounding term); 16-bit saturating, QP up to 39. */
HUX_API HuxResult HUX_STDCALL huxiTransformQuantInvChromaDC2x2_H264_16s_C1I(int16_t* pSrcDst, int32_t QP, const int16_t* pScale);
/** 2x2 chroma DC Hadamard and dequantisation (no rounding term); 32-bit, QP up to 75. */
HUX_API HuxResult HUX_STDCALL huxiTransformQuantInvChromaDC2x2_H264_32s_C1I(int32_t* pSrcDst, int32_t QP, const int16_t* pScale);
/** 4:2:2 chroma DC (2 wide, 4 high) transform and dequantisation at QP + 3; 16-bit saturating, QP up to 39. */
HUX_API HuxResult HUX_STDCALL huxiTransformQuantInvChromaDC2x4_H264_16s_C1I(int16_t* pSrcDst, int32_t QP, const int16_t* pScale);
/** 4:2:2 chroma DC (2 wide, 4 high) transform and dequantisation at QP + 3; 32-bit, QP up to 75. */
HUX_API HuxResult HUX_STDCALL huxiTransformQuantInvChromaDC2x4_H264_32s_C1I(int32_t* pSrcDst, int32_t QP, const int16_t* pScale);
/** Dequantises (LevelScale pScale, or flat when null; DC from pDC when given), inverse transforms a 4x4 block, adds the prediction, clamps to 0..255. */
HUX_API HuxResult HUX_STDCALL huxiTransformQuantInvAddPred4x4_H264_16s_C1IR(const uint8_t* pPred, int32_t predStep, int16_t* pSrcDst, const int16_t* pDC, uint8_t* pDst, int32_t dstStep, int32_t QP, int32_t AC, const int16_t* pScale);
/** High-bit-depth 4x4 dequantisation, inverse transform and prediction add in 32 bits, clamped to 0..2^bitDepth-1. */
HUX_API HuxResult HUX_STDCALL huxiTransformQuantInvAddPred4x4_H264_32s_C1IR(const uint16_t* pPred, int32_t predStep, int32_t* pSrcDst, const int32_t* pDC, uint16_t* pDst, int32_t dstStep, int32_t QP, int32_t AC, int32_t bitDepth, const int16_t* pScale);
/** Dequantises an 8x8 block in place with LevelScale8x8 pScale at QP/6 = Qp6 (16-bit). */
HUX_API HuxResult HUX_STDCALL huxiQuantLuma8x8Inv_H264_16s_C1I(int16_t* pSrcDst, int32_t Qp6, const int16_t* pScale);
/** Dequantises an 8x8 block of 32-bit levels in place with LevelScale8x8 pScale at QP/6 = Qp6. */
HUX_API HuxResult HUX_STDCALL huxiQuantInvLuma8x8_H264_32s_C1I(int32_t* pSrcDst, int32_t Qp6, const int16_t* pScale);
/** 8x8 inverse transform (saturating 16-bit passes), plus the prediction, clamped to 0..255. */
HUX_API HuxResult HUX_STDCALL huxiTransformLuma8x8InvAddPred_H264_16s8u_C1R(const uint8_t* pPred, int32_t predStep, int16_t* pSrcDst, uint8_t* pDst, int32_t dstStep);
/** High-bit-depth 8x8 inverse transform in 32 bits, plus the prediction, clamped to 0..2^bitDepth-1. */
HUX_API HuxResult HUX_STDCALL huxiTransformInvAddPredLuma8x8_H264_32s16u_C1R(const uint16_t* pPred, int32_t predStep, int32_t* pSrc, uint16_t* pDst, int32_t dstStep, int32_t bitDepth);
/** The 4x4 inverse core transform and rounding alone, saturating 16-bit arithmetic. */
HUX_API HuxResult HUX_STDCALL huxiTransformResidual4x4Inv_H264_16s_C1(const int16_t* pSrc, int16_t* pDst);
/** The 4x4 inverse core transform and rounding alone, 32-bit arithmetic. */
HUX_API HuxResult HUX_STDCALL huxiTransformResidual4x4Inv_H264_32s_C1(const int32_t* pSrc, int32_t* pDst);

/* ------------------------------------ motion compensation, copies, averages */
/* Two selector encodings coexist and both are read as stated:
 *   mcType (MC functions, bits 2-3 only): 0 integer, 4 vertical half (the row
 *     below), 8 horizontal half (the next column), 12 diagonal;
 *   acc (HP copies, Add8x8HP, InterpolateAverage, bits 0-1 only): 0 integer,
 *     1 horizontal half, 2 vertical half, 3 both.
 * roundControl (bit 0 only): 0 rounds halves up, (a + b + 1) >> 1 and
 * (a + b + c + d + 2) >> 2; 1 rounds them down, (a + b) >> 1 and
 * (a + b + c + d + 1) >> 2. Vertical and diagonal positions read one row below
 * the block, horizontal and diagonal ones one column (two bytes on rows of
 * interleaved chroma) to its right. Residuals are signed 16-bit blocks with
 * their own step in bytes; a reconstruction is the prediction plus the
 * residual with signed 16-bit saturation, then saturated to 0..255. Only the
 * pointers are checked; steps are not; selectors are masked, never refused. */

/**
 * @brief One-reference motion compensation of a 16x16 block plus a residual.
 *
 * pDst = clip(prediction + residual), the prediction taken from pSrcRef at the
 * half-sample position of mcType (bits 2-3), rounded by roundControl (bit 0).
 * Reads the 16x16 block and, for half positions, one more row and/or column.
 * The 16x4 and UV members work on rows of 8 interleaved chroma pairs: their
 * horizontal neighbour is 2 bytes to the right. Nothing is written on failure.
 * @param pSrcRef       reference block, 8-bit samples
 * @param srcStep       reference row step in bytes
 * @param pSrcYData     residual block, signed 16-bit
 * @param srcYDataStep  residual row step in bytes
 * @param pDst          destination block, 8-bit samples (out)
 * @param dstStep       destination row step in bytes
 * @param mcType        0, 4, 8 or 12 (bits 0-1 and above 3 ignored)
 * @param roundControl  0 halves up, 1 halves down (higher bits ignored)
 * @retval huxErrNullPtr  pSrcRef, pSrcYData or pDst is null
 * @retval huxOk          the block was reconstructed
 */
HUX_API HuxResult HUX_STDCALL huxiMC16x16_8u_C1(const uint8_t* pSrcRef, int32_t srcStep, const int16_t* pSrcYData, int32_t srcYDataStep, uint8_t* pDst, int32_t dstStep, int32_t mcType, int32_t roundControl);
/** @brief One-reference motion compensation of a 16x8 block plus a residual. @copydetails huxiMC16x16_8u_C1 */
HUX_API HuxResult HUX_STDCALL huxiMC16x8_8u_C1(const uint8_t* pSrcRef, int32_t srcStep, const int16_t* pSrcYData, int32_t srcYDataStep, uint8_t* pDst, int32_t dstStep, int32_t mcType, int32_t roundControl);
/** @brief One-reference motion compensation of a 16x4 block plus a residual. Rows of interleaved chroma pairs: the horizontal neighbour is 2 bytes to the right. @copydetails huxiMC16x16_8u_C1 */
HUX_API HuxResult HUX_STDCALL huxiMC16x4_8u_C1(const uint8_t* pSrcRef, int32_t srcStep, const int16_t* pSrcYData, int32_t srcYDataStep, uint8_t* pDst, int32_t dstStep, int32_t mcType, int32_t roundControl);
/** @brief One-reference motion compensation of a 8x16 block plus a residual. @copydetails huxiMC16x16_8u_C1 */
HUX_API HuxResult HUX_STDCALL huxiMC8x16_8u_C1(const uint8_t* pSrcRef, int32_t srcStep, const int16_t* pSrcYData, int32_t srcYDataStep, uint8_t* pDst, int32_t dstStep, int32_t mcType, int32_t roundControl);
/** @brief One-reference motion compensation of a 8x8 block plus a residual. @copydetails huxiMC16x16_8u_C1 */
HUX_API HuxResult HUX_STDCALL huxiMC8x8_8u_C1(const uint8_t* pSrcRef, int32_t srcStep, const int16_t* pSrcYData, int32_t srcYDataStep, uint8_t* pDst, int32_t dstStep, int32_t mcType, int32_t roundControl);
/** @brief One-reference motion compensation of a 8x4 block plus a residual. @copydetails huxiMC16x16_8u_C1 */
HUX_API HuxResult HUX_STDCALL huxiMC8x4_8u_C1(const uint8_t* pSrcRef, int32_t srcStep, const int16_t* pSrcYData, int32_t srcYDataStep, uint8_t* pDst, int32_t dstStep, int32_t mcType, int32_t roundControl);
/** @brief One-reference motion compensation of a 4x8 block plus a residual. @copydetails huxiMC16x16_8u_C1 */
HUX_API HuxResult HUX_STDCALL huxiMC4x8_8u_C1(const uint8_t* pSrcRef, int32_t srcStep, const int16_t* pSrcYData, int32_t srcYDataStep, uint8_t* pDst, int32_t dstStep, int32_t mcType, int32_t roundControl);
/** @brief One-reference motion compensation of a 4x4 block plus a residual. @copydetails huxiMC16x16_8u_C1 */
HUX_API HuxResult HUX_STDCALL huxiMC4x4_8u_C1(const uint8_t* pSrcRef, int32_t srcStep, const int16_t* pSrcYData, int32_t srcYDataStep, uint8_t* pDst, int32_t dstStep, int32_t mcType, int32_t roundControl);
/** @brief One-reference motion compensation of a 4x2 block plus a residual. @copydetails huxiMC16x16_8u_C1 */
HUX_API HuxResult HUX_STDCALL huxiMC4x2_8u_C1(const uint8_t* pSrcRef, int32_t srcStep, const int16_t* pSrcYData, int32_t srcYDataStep, uint8_t* pDst, int32_t dstStep, int32_t mcType, int32_t roundControl);
/** @brief One-reference motion compensation of a 2x4 block plus a residual. @copydetails huxiMC16x16_8u_C1 */
HUX_API HuxResult HUX_STDCALL huxiMC2x4_8u_C1(const uint8_t* pSrcRef, int32_t srcStep, const int16_t* pSrcYData, int32_t srcYDataStep, uint8_t* pDst, int32_t dstStep, int32_t mcType, int32_t roundControl);
/** @brief One-reference motion compensation of a 2x2 block plus a residual. @copydetails huxiMC16x16_8u_C1 */
HUX_API HuxResult HUX_STDCALL huxiMC2x2_8u_C1(const uint8_t* pSrcRef, int32_t srcStep, const int16_t* pSrcYData, int32_t srcYDataStep, uint8_t* pDst, int32_t dstStep, int32_t mcType, int32_t roundControl);
/** @brief One-reference motion compensation of a 16x8 block plus a residual. Rows of 8 interleaved chroma pairs: the horizontal neighbour is 2 bytes to the right. @copydetails huxiMC16x16_8u_C1 */
HUX_API HuxResult HUX_STDCALL huxiMC16x8UV_8u_C1(const uint8_t* pSrcRef, int32_t srcStep, const int16_t* pSrcYData, int32_t srcYDataStep, uint8_t* pDst, int32_t dstStep, int32_t mcType, int32_t roundControl);

/**
 * @brief Two-reference motion compensation of a 16x16 block plus a residual.
 *
 * Each reference is predicted at its own mcType position with the shared
 * roundControl, the two predictions are averaged upwards, (F + B + 1) >> 1,
 * and pDst = clip(average + residual) as in the one-reference functions. The
 * 16x4 and UV members take the horizontal neighbour 2 bytes to the right.
 * @param pSrcRefF      forward reference block
 * @param srcStepF      its row step in bytes
 * @param mcTypeF       forward position, 0, 4, 8 or 12 (bits 2-3 read)
 * @param pSrcRefB      backward reference block
 * @param srcStepB      its row step in bytes
 * @param mcTypeB       backward position, 0, 4, 8 or 12 (bits 2-3 read)
 * @param pSrcYData     residual block, signed 16-bit
 * @param srcYDataStep  residual row step in bytes
 * @param pDst          destination block (out)
 * @param dstStep       destination row step in bytes
 * @param roundControl  0 halves up, 1 halves down, for both directions
 * @retval huxErrNullPtr  pSrcRefF, pSrcRefB, pSrcYData or pDst is null
 * @retval huxOk          the block was reconstructed
 */
HUX_API HuxResult HUX_STDCALL huxiMC16x16B_8u_C1(const uint8_t* pSrcRefF, int32_t srcStepF, int32_t mcTypeF, const uint8_t* pSrcRefB, int32_t srcStepB, int32_t mcTypeB, const int16_t* pSrcYData, int32_t srcYDataStep, uint8_t* pDst, int32_t dstStep, int32_t roundControl);
/** @brief Two-reference motion compensation of a 16x8 block plus a residual. @copydetails huxiMC16x16B_8u_C1 */
HUX_API HuxResult HUX_STDCALL huxiMC16x8B_8u_C1(const uint8_t* pSrcRefF, int32_t srcStepF, int32_t mcTypeF, const uint8_t* pSrcRefB, int32_t srcStepB, int32_t mcTypeB, const int16_t* pSrcYData, int32_t srcYDataStep, uint8_t* pDst, int32_t dstStep, int32_t roundControl);
/** @brief Two-reference motion compensation of a 16x4 block plus a residual. Rows of interleaved chroma pairs: the horizontal neighbour is 2 bytes to the right. @copydetails huxiMC16x16B_8u_C1 */
HUX_API HuxResult HUX_STDCALL huxiMC16x4B_8u_C1(const uint8_t* pSrcRefF, int32_t srcStepF, int32_t mcTypeF, const uint8_t* pSrcRefB, int32_t srcStepB, int32_t mcTypeB, const int16_t* pSrcYData, int32_t srcYDataStep, uint8_t* pDst, int32_t dstStep, int32_t roundControl);
/** @brief Two-reference motion compensation of a 8x16 block plus a residual. @copydetails huxiMC16x16B_8u_C1 */
HUX_API HuxResult HUX_STDCALL huxiMC8x16B_8u_C1(const uint8_t* pSrcRefF, int32_t srcStepF, int32_t mcTypeF, const uint8_t* pSrcRefB, int32_t srcStepB, int32_t mcTypeB, const int16_t* pSrcYData, int32_t srcYDataStep, uint8_t* pDst, int32_t dstStep, int32_t roundControl);
/** @brief Two-reference motion compensation of a 8x8 block plus a residual. @copydetails huxiMC16x16B_8u_C1 */
HUX_API HuxResult HUX_STDCALL huxiMC8x8B_8u_C1(const uint8_t* pSrcRefF, int32_t srcStepF, int32_t mcTypeF, const uint8_t* pSrcRefB, int32_t srcStepB, int32_t mcTypeB, const int16_t* pSrcYData, int32_t srcYDataStep, uint8_t* pDst, int32_t dstStep, int32_t roundControl);
/** @brief Two-reference motion compensation of a 8x4 block plus a residual. @copydetails huxiMC16x16B_8u_C1 */
HUX_API HuxResult HUX_STDCALL huxiMC8x4B_8u_C1(const uint8_t* pSrcRefF, int32_t srcStepF, int32_t mcTypeF, const uint8_t* pSrcRefB, int32_t srcStepB, int32_t mcTypeB, const int16_t* pSrcYData, int32_t srcYDataStep, uint8_t* pDst, int32_t dstStep, int32_t roundControl);
/** @brief Two-reference motion compensation of a 4x8 block plus a residual. @copydetails huxiMC16x16B_8u_C1 */
HUX_API HuxResult HUX_STDCALL huxiMC4x8B_8u_C1(const uint8_t* pSrcRefF, int32_t srcStepF, int32_t mcTypeF, const uint8_t* pSrcRefB, int32_t srcStepB, int32_t mcTypeB, const int16_t* pSrcYData, int32_t srcYDataStep, uint8_t* pDst, int32_t dstStep, int32_t roundControl);
/** @brief Two-reference motion compensation of a 4x4 block plus a residual. @copydetails huxiMC16x16B_8u_C1 */
HUX_API HuxResult HUX_STDCALL huxiMC4x4B_8u_C1(const uint8_t* pSrcRefF, int32_t srcStepF, int32_t mcTypeF, const uint8_t* pSrcRefB, int32_t srcStepB, int32_t mcTypeB, const int16_t* pSrcYData, int32_t srcYDataStep, uint8_t* pDst, int32_t dstStep, int32_t roundControl);
/** @brief Two-reference motion compensation of a 4x2 block plus a residual. @copydetails huxiMC16x16B_8u_C1 */
HUX_API HuxResult HUX_STDCALL huxiMC4x2B_8u_C1(const uint8_t* pSrcRefF, int32_t srcStepF, int32_t mcTypeF, const uint8_t* pSrcRefB, int32_t srcStepB, int32_t mcTypeB, const int16_t* pSrcYData, int32_t srcYDataStep, uint8_t* pDst, int32_t dstStep, int32_t roundControl);
/** @brief Two-reference motion compensation of a 2x4 block plus a residual. @copydetails huxiMC16x16B_8u_C1 */
HUX_API HuxResult HUX_STDCALL huxiMC2x4B_8u_C1(const uint8_t* pSrcRefF, int32_t srcStepF, int32_t mcTypeF, const uint8_t* pSrcRefB, int32_t srcStepB, int32_t mcTypeB, const int16_t* pSrcYData, int32_t srcYDataStep, uint8_t* pDst, int32_t dstStep, int32_t roundControl);
/** @brief Two-reference motion compensation of a 2x2 block plus a residual. @copydetails huxiMC16x16B_8u_C1 */
HUX_API HuxResult HUX_STDCALL huxiMC2x2B_8u_C1(const uint8_t* pSrcRefF, int32_t srcStepF, int32_t mcTypeF, const uint8_t* pSrcRefB, int32_t srcStepB, int32_t mcTypeB, const int16_t* pSrcYData, int32_t srcYDataStep, uint8_t* pDst, int32_t dstStep, int32_t roundControl);
/** @brief Two-reference motion compensation of a 16x8 block plus a residual. Rows of interleaved chroma pairs: the horizontal neighbour is 2 bytes to the right. @copydetails huxiMC16x16B_8u_C1 */
HUX_API HuxResult HUX_STDCALL huxiMC16x8BUV_8u_C1(const uint8_t* pSrcRefF, int32_t srcStepF, int32_t mcTypeF, const uint8_t* pSrcRefB, int32_t srcStepB, int32_t mcTypeB, const int16_t* pSrcYData, int32_t srcYDataStep, uint8_t* pDst, int32_t dstStep, int32_t roundControl);

/**
 * @brief Copies the half-sample prediction of a 16x16 block.
 *
 * pDst = the prediction of pSrc at the position acc names (bits 0-1: 0
 * integer, 1 horizontal, 2 vertical, 3 both), rounded by roundControl (bit 0).
 * Reads one more column for acc 1 and 3, one more row for acc 2 and 3.
 * @param pSrc          source block, 8-bit samples
 * @param srcStep       source row step in bytes
 * @param pDst          destination block (out)
 * @param dstStep       destination row step in bytes
 * @param acc           0 to 3 (higher bits ignored)
 * @param roundControl  0 halves up, 1 halves down
 * @retval huxErrNullPtr  pSrc or pDst is null
 * @retval huxOk          the prediction was written
 */
HUX_API HuxResult HUX_STDCALL huxiCopy16x16HP_8u_C1R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, int32_t acc, int32_t roundControl);
/** @brief Copies the half-sample prediction of a 16x8 block. @copydetails huxiCopy16x16HP_8u_C1R */
HUX_API HuxResult HUX_STDCALL huxiCopy16x8HP_8u_C1R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, int32_t acc, int32_t roundControl);
/** @brief Copies the half-sample prediction of an 8x8 block. @copydetails huxiCopy16x16HP_8u_C1R */
HUX_API HuxResult HUX_STDCALL huxiCopy8x8HP_8u_C1R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, int32_t acc, int32_t roundControl);
/** @brief Copies the half-sample prediction of an 8x4 block. @copydetails huxiCopy16x16HP_8u_C1R */
HUX_API HuxResult HUX_STDCALL huxiCopy8x4HP_8u_C1R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, int32_t acc, int32_t roundControl);

/**
 * @brief Copies a 16x16 block of 8-bit samples.
 *
 * @param pSrc     source block
 * @param srcStep  source row step in bytes
 * @param pDst     destination block (out)
 * @param dstStep  destination row step in bytes
 * @retval huxErrNullPtr  pSrc or pDst is null
 * @retval huxOk          the block was copied
 */
HUX_API HuxResult HUX_STDCALL huxiCopy16x16_8u_C1R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep);
/** @brief Copies an 8x8 block of 8-bit samples. @copydetails huxiCopy16x16_8u_C1R */
HUX_API HuxResult HUX_STDCALL huxiCopy8x8_8u_C1R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep);

/**
 * @brief Adds a residual to the half-sample prediction of an 8x8 block.
 *
 * pDst = clip(prediction of pSrc2 at the acc position + residual pSrc1), with
 * the rounding of roundControl and the saturations of the MC functions.
 * @param pSrc1         residual block, signed 16-bit
 * @param src1Step      residual row step in bytes
 * @param pSrc2         reference block, 8-bit samples
 * @param src2Step      reference row step in bytes
 * @param pDst          destination block (out)
 * @param dstStep       destination row step in bytes
 * @param acc           0 integer, 1 horizontal, 2 vertical, 3 both (bits 0-1)
 * @param roundControl  0 halves up, 1 halves down
 * @retval huxErrNullPtr  pSrc1, pSrc2 or pDst is null
 * @retval huxOk          the block was reconstructed
 */
HUX_API HuxResult HUX_STDCALL huxiAdd8x8HP_16s8u_C1RS(const int16_t* pSrc1, int32_t src1Step, const uint8_t* pSrc2, int32_t src2Step, uint8_t* pDst, int32_t dstStep, int32_t acc, int32_t roundControl);
/**
 * @brief Adds a residual to an 8x8 block in place.
 *
 * pSrcDst = clip(pSrcDst + residual): 16-bit signed saturation, then 0..255.
 * @param pSrc        residual block, signed 16-bit
 * @param srcStep     residual row step in bytes
 * @param pSrcDst     picture block, 8-bit samples (in/out)
 * @param srcDstStep  picture row step in bytes
 * @retval huxErrNullPtr  pSrc or pSrcDst is null
 * @retval huxOk          the block was updated
 */
HUX_API HuxResult HUX_STDCALL huxiAdd8x8_16s8u_C1IRS(const int16_t* pSrc, int32_t srcStep, uint8_t* pSrcDst, int32_t srcDstStep);
/**
 * @brief Adds a constant to an 8x8 block in place.
 *
 * Every sample becomes max(0, min(255, sample + value)).
 * @param value       signed 16-bit constant
 * @param pSrcDst     picture block (in/out)
 * @param srcDstStep  picture row step in bytes
 * @retval huxErrNullPtr  pSrcDst is null
 * @retval huxOk          the block was updated
 */
HUX_API HuxResult HUX_STDCALL huxiAddC8x8_16s8u_C1IR(int16_t value, uint8_t* pSrcDst, int32_t srcDstStep);

/**
 * @brief Averages two 16x16 blocks: pDst = (a + b + 1) >> 1.
 *
 * @param pSrc1     first block
 * @param src1Step  its row step in bytes
 * @param pSrc2     second block
 * @param src2Step  its row step in bytes
 * @param pDst      destination block (out)
 * @param dstStep   destination row step in bytes
 * @retval huxErrNullPtr  pSrc1, pSrc2 or pDst is null
 * @retval huxOk          the average was written
 */
HUX_API HuxResult HUX_STDCALL huxiAverage16x16_8u_C1R(const uint8_t* pSrc1, int32_t src1Step, const uint8_t* pSrc2, int32_t src2Step, uint8_t* pDst, int32_t dstStep);
/** @brief Averages two 8x8 blocks: pDst = (a + b + 1) >> 1. @copydetails huxiAverage16x16_8u_C1R */
HUX_API HuxResult HUX_STDCALL huxiAverage8x8_8u_C1R(const uint8_t* pSrc1, int32_t src1Step, const uint8_t* pSrc2, int32_t src2Step, uint8_t* pDst, int32_t dstStep);
/**
 * @brief Averages a 16x16 block into a picture block: pic = (pic + src + 1) >> 1.
 *
 * @param pSrc        source block
 * @param srcStep     source row step in bytes
 * @param pSrcDst     picture block (in/out)
 * @param srcDstStep  picture row step in bytes
 * @retval huxErrNullPtr  pSrc or pSrcDst is null
 * @retval huxOk          the picture block was updated
 */
HUX_API HuxResult HUX_STDCALL huxiAverage16x16_8u_C1IR(const uint8_t* pSrc, int32_t srcStep, uint8_t* pSrcDst, int32_t srcDstStep);
/** @brief Averages an 8x8 block into a picture block: pic = (pic + src + 1) >> 1. @copydetails huxiAverage16x16_8u_C1IR */
HUX_API HuxResult HUX_STDCALL huxiAverage8x8_8u_C1IR(const uint8_t* pSrc, int32_t srcStep, uint8_t* pSrcDst, int32_t srcDstStep);

/**
 * @brief Averages the half-sample prediction of a 16x16 block into a picture block.
 *
 * pic = (pic + prediction + 1) >> 1, the prediction of pSrc at the acc
 * position rounded by roundControl (as the HP copies form it); the average
 * itself always rounds up.
 * @param pSrc          source (reference) block
 * @param srcStep       source row step in bytes
 * @param pSrcDst       picture block (in/out)
 * @param srcDstStep    picture row step in bytes
 * @param acc           0 integer, 1 horizontal, 2 vertical, 3 both (bits 0-1)
 * @param roundControl  0 halves up, 1 halves down (the prediction only)
 * @retval huxErrNullPtr  pSrc or pSrcDst is null
 * @retval huxOk          the picture block was updated
 */
HUX_API HuxResult HUX_STDCALL huxiInterpolateAverage16x16_8u_C1IR(const uint8_t* pSrc, int32_t srcStep, uint8_t* pSrcDst, int32_t srcDstStep, int32_t acc, int32_t roundControl);
/** @brief Averages the half-sample prediction of a 16x8 block into a picture block. @copydetails huxiInterpolateAverage16x16_8u_C1IR */
HUX_API HuxResult HUX_STDCALL huxiInterpolateAverage16x8_8u_C1IR(const uint8_t* pSrc, int32_t srcStep, uint8_t* pSrcDst, int32_t srcDstStep, int32_t acc, int32_t roundControl);
/** @brief Averages the half-sample prediction of an 8x8 block into a picture block. @copydetails huxiInterpolateAverage16x16_8u_C1IR */
HUX_API HuxResult HUX_STDCALL huxiInterpolateAverage8x8_8u_C1IR(const uint8_t* pSrc, int32_t srcStep, uint8_t* pSrcDst, int32_t srcDstStep, int32_t acc, int32_t roundControl);
/** @brief Averages the half-sample prediction of an 8x4 block into a picture block. @copydetails huxiInterpolateAverage16x16_8u_C1IR */
HUX_API HuxResult HUX_STDCALL huxiInterpolateAverage8x4_8u_C1IR(const uint8_t* pSrc, int32_t srcStep, uint8_t* pSrcDst, int32_t srcDstStep, int32_t acc, int32_t roundControl);

/* ------------------------------------- differences, SATD, SSD and activity */
/* Current block first, reference (or prediction) second; steps in bytes
 * (huxiSAT8x8D_16u32s_C1R alone takes element steps) and never checked. Only
 * pointers are checked. mcType has the SADs' meaning (0 integer, 4 vertical
 * half, 8 horizontal half, 12 diagonal; halves rounded up, (a + b + 1) >> 1
 * and (a + b + c + d + 2) >> 2) unless a function takes roundControl, which
 * then rounds as motion compensation does. Half positions read one row below
 * and/or one column right of the reference block. */

/**
 * @brief SATD of a 16x16 block: sum of absolute 4x4 Hadamard coefficients of the difference.
 *
 * The block is cut into 4x4 tiles; each tile's difference (current minus
 * reference) is Hadamard-transformed, rows then columns, and the magnitudes of
 * all coefficients are added: the plain total, twice the usual normalised
 * SATD. No intermediate saturates for 8-bit samples.
 * @param pSrcCur     current block
 * @param srcCurStep  its row step in bytes
 * @param pSrcRef     reference block
 * @param srcRefStep  its row step in bytes
 * @param pSATD       the total (out)
 * @retval huxErrNullPtr  pSrcCur, pSrcRef or pSATD is null
 * @retval huxOk          the total was written
 */
HUX_API HuxResult HUX_STDCALL huxiSATD16x16_8u32s_C1R(const uint8_t* pSrcCur, int32_t srcCurStep, const uint8_t* pSrcRef, int32_t srcRefStep, int32_t* pSATD);
/** @brief SATD of a 16x8 block (4x4 tiles, plain total). @copydetails huxiSATD16x16_8u32s_C1R */
HUX_API HuxResult HUX_STDCALL huxiSATD16x8_8u32s_C1R(const uint8_t* pSrcCur, int32_t srcCurStep, const uint8_t* pSrcRef, int32_t srcRefStep, int32_t* pSATD);
/** @brief SATD of a 8x16 block (4x4 tiles, plain total). @copydetails huxiSATD16x16_8u32s_C1R */
HUX_API HuxResult HUX_STDCALL huxiSATD8x16_8u32s_C1R(const uint8_t* pSrcCur, int32_t srcCurStep, const uint8_t* pSrcRef, int32_t srcRefStep, int32_t* pSATD);
/** @brief SATD of a 8x8 block (4x4 tiles, plain total). @copydetails huxiSATD16x16_8u32s_C1R */
HUX_API HuxResult HUX_STDCALL huxiSATD8x8_8u32s_C1R(const uint8_t* pSrcCur, int32_t srcCurStep, const uint8_t* pSrcRef, int32_t srcRefStep, int32_t* pSATD);
/** @brief SATD of a 8x4 block (4x4 tiles, plain total). @copydetails huxiSATD16x16_8u32s_C1R */
HUX_API HuxResult HUX_STDCALL huxiSATD8x4_8u32s_C1R(const uint8_t* pSrcCur, int32_t srcCurStep, const uint8_t* pSrcRef, int32_t srcRefStep, int32_t* pSATD);
/** @brief SATD of a 4x8 block (4x4 tiles, plain total). @copydetails huxiSATD16x16_8u32s_C1R */
HUX_API HuxResult HUX_STDCALL huxiSATD4x8_8u32s_C1R(const uint8_t* pSrcCur, int32_t srcCurStep, const uint8_t* pSrcRef, int32_t srcRefStep, int32_t* pSATD);
/** @brief SATD of a 4x4 block (4x4 tiles, plain total). @copydetails huxiSATD16x16_8u32s_C1R */
HUX_API HuxResult HUX_STDCALL huxiSATD4x4_8u32s_C1R(const uint8_t* pSrcCur, int32_t srcCurStep, const uint8_t* pSrcRef, int32_t srcRefStep, int32_t* pSATD);

/**
 * @brief Sum of absolute 8x8 Hadamard coefficients of the difference of two 8x8 blocks.
 *
 * The 8x8 difference (current minus reference) is transformed in 32-bit
 * arithmetic, rows then columns; the result is the sum of the 64 magnitudes,
 * not normalised.
 * @param pSrcCur     current block
 * @param srcCurStep  its row step in bytes
 * @param pSrcRef     reference block
 * @param srcRefStep  its row step in bytes
 * @param pDst        the sum (out)
 * @retval huxErrNullPtr  pSrcCur, pSrcRef or pDst is null
 * @retval huxOk          the sum was written
 */
HUX_API HuxResult HUX_STDCALL huxiSAT8x8D_8u32s_C1R(const uint8_t* pSrcCur, int32_t srcCurStep, const uint8_t* pSrcRef, int32_t srcRefStep, int32_t* pDst);
/**
 * @brief 8x8 Hadamard sum of the difference of two 8x8 blocks of 16-bit samples.
 *
 * Steps count 16-bit elements, not bytes (they are doubled before use: a byte
 * step reads every second row). Each difference is wrapped to signed 16 bits
 * (as huxiSub8x8_16u16s_C1R forms it), then transformed in 32-bit arithmetic.
 * @param pSrcCur     current block
 * @param srcCurStep  its row step in elements
 * @param pSrcRef     reference block
 * @param srcRefStep  its row step in elements
 * @param pDst        the sum (out)
 * @retval huxErrNullPtr  pSrcCur, pSrcRef or pDst is null
 * @retval huxOk          the sum was written
 */
HUX_API HuxResult HUX_STDCALL huxiSAT8x8D_16u32s_C1R(const uint16_t* pSrcCur, int32_t srcCurStep, const uint16_t* pSrcRef, int32_t srcRefStep, int32_t* pDst);

/**
 * @brief Sum of squared differences of an 8x8 block against the half-sample reference.
 *
 * mcType selects the reference position by (mcType >> 2) & 3 (bits 0-1 and
 * above 3 ignored); halves round up.
 * @param pSrcCur     current block
 * @param srcCurStep  its row step in bytes
 * @param pSrcRef     reference block
 * @param srcRefStep  its row step in bytes
 * @param pDstSSD     the sum (out)
 * @param mcType      0, 4, 8 or 12
 * @retval huxErrNullPtr  pSrcCur, pSrcRef or pDstSSD is null
 * @retval huxOk          the sum was written
 */
HUX_API HuxResult HUX_STDCALL huxiSSD8x8_8u32s_C1R(const uint8_t* pSrcCur, int32_t srcCurStep, const uint8_t* pSrcRef, int32_t srcRefStep, int32_t* pDstSSD, int32_t mcType);
/** @brief Sum of squared differences of a 4x4 block against the half-sample reference. @copydetails huxiSSD8x8_8u32s_C1R */
HUX_API HuxResult HUX_STDCALL huxiSSD4x4_8u32s_C1R(const uint8_t* pSrcCur, int32_t srcCurStep, const uint8_t* pSrcRef, int32_t srcRefStep, int32_t* pDstSSD, int32_t mcType);
/**
 * @brief Sum of squared differences of a 16x16 block against the half-sample reference.
 *
 * Only mcType 0, 4, 8 and 12 compute: for any other value the function returns
 * huxOk and leaves *pSqrDiff untouched.
 * @param pSrc      current block
 * @param srcStep   its row step in bytes
 * @param pRef      reference block
 * @param refStep   its row step in bytes
 * @param mcType    0, 4, 8 or 12
 * @param pSqrDiff  the sum (out)
 * @retval huxErrNullPtr  pSrc, pRef or pSqrDiff is null
 * @retval huxOk          the sum was written, or mcType was another value
 */
HUX_API HuxResult HUX_STDCALL huxiSqrDiff16x16_8u32s(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef, int32_t refStep, int32_t mcType, int32_t* pSqrDiff);
/**
 * @brief Sum of squared differences of a 16x16 block against a bidirectional prediction.
 *
 * Each direction's prediction is (a + b + c + d + r) >> 2 over the samples at
 * horizontal offset mcType bit 3 and vertical offset bit 2, r = 2 for a
 * non-zero mcType (the half-sample value rounded up, or the integer sample);
 * the prediction is (F + B + 1) >> 1.
 * @param pSrc      current block
 * @param srcStep   its row step in bytes
 * @param pRefF     forward reference
 * @param refStepF  its row step in bytes
 * @param mcTypeF   forward position (bits 2-3)
 * @param pRefB     backward reference
 * @param refStepB  its row step in bytes
 * @param mcTypeB   backward position (bits 2-3)
 * @param pSqrDiff  the sum (out)
 * @retval huxErrNullPtr  pSrc, pRefF, pRefB or pSqrDiff is null
 * @retval huxOk          the sum was written
 */
HUX_API HuxResult HUX_STDCALL huxiSqrDiff16x16B_8u32s(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRefF, int32_t refStepF, int32_t mcTypeF, const uint8_t* pRefB, int32_t refStepB, int32_t mcTypeB, int32_t* pSqrDiff);

/**
 * @brief Variance and mean of the difference per 8x8 sub-block of a 16x16 block.
 *
 * d = current minus the half-sample reference (halves up). For each 8x8
 * sub-block in raster order (four for 16x16, two for 16x8): pVar[i] =
 * sum(d^2) - (sum(d)^2 >> 6), 64 times the variance truncated, and pMean[i] =
 * (sum(d) + 32) >> 6, the mean rounded to nearest (halves towards +infinity),
 * both signed 32-bit. Only mcType 0, 4, 8 and 12 compute: any other value
 * returns huxOk with nothing written.
 * @param pSrc     current block
 * @param srcStep  its row step in bytes
 * @param pRef     reference block
 * @param refStep  its row step in bytes
 * @param pVar     sub-block variances (out)
 * @param pMean    sub-block means (out)
 * @param mcType   0, 4, 8 or 12
 * @retval huxErrNullPtr  pSrc, pRef, pVar or pMean is null
 * @retval huxOk          the values were written, or mcType was another value
 */
HUX_API HuxResult HUX_STDCALL huxiVarMeanDiff16x16_8u32s_C1R(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef, int32_t refStep, int32_t* pVar, int32_t* pMean, int32_t mcType);
/** @brief Variance and mean of the difference per 8x8 sub-block of a 16x8 block. @copydetails huxiVarMeanDiff16x16_8u32s_C1R */
HUX_API HuxResult HUX_STDCALL huxiVarMeanDiff16x8_8u32s_C1R(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef, int32_t refStep, int32_t* pVar, int32_t* pMean, int32_t mcType);

/**
 * @brief 256 times the variance of a 16x16 block, truncated.
 *
 * S = sum(x), Q = sum(x^2); the result is Q - ((S * S) >> 8) in unsigned 32-bit
 * arithmetic, stored as a 32-bit value.
 * @param pSrc     block
 * @param srcStep  its row step in bytes
 * @param pVar     the result (out)
 * @retval huxErrNullPtr  pSrc or pVar is null
 * @retval huxOk          the result was written
 */
HUX_API HuxResult HUX_STDCALL huxiVariance16x16_8u32s(const uint8_t* pSrc, int32_t srcStep, int32_t* pVar);
/**
 * @brief Variance and sum of an 8x8 block.
 *
 * The sum is exact; the variance is computed in single precision as
 * Q / 64 - (S / 64)^2 and truncated toward zero.
 * @param pSrc     block
 * @param srcStep  its row step in bytes
 * @param pVar     the variance (out)
 * @param pSum     the sum (out)
 * @retval huxErrNullPtr  pSrc, pVar or pSum is null
 * @retval huxOk          both were written
 */
HUX_API HuxResult HUX_STDCALL huxiVarSum8x8_8u32s_C1R(const uint8_t* pSrc, int32_t srcStep, int32_t* pVar, int32_t* pSum);
/** @brief Variance and sum of an 8x8 block of signed 16-bit values. @copydetails huxiVarSum8x8_8u32s_C1R */
HUX_API HuxResult HUX_STDCALL huxiVarSum8x8_16s32s_C1R(const int16_t* pSrc, int32_t srcStep, int32_t* pVar, int32_t* pSum);
/**
 * @brief Sum of absolute deviations from the rounded mean of a 16x16 block.
 *
 * mean = (sum + 128) >> 8 (16x16) or (sum + 32) >> 6 (8x8); the result is
 * sum(|x - mean|).
 * @param pSrc     block
 * @param srcStep  its row step in bytes
 * @param pDst     the result (out)
 * @retval huxErrNullPtr  pSrc or pDst is null
 * @retval huxOk          the result was written
 */
HUX_API HuxResult HUX_STDCALL huxiMeanAbsDev16x16_8u32s_C1R(const uint8_t* pSrc, int32_t srcStep, int32_t* pDst);
/** @brief Sum of absolute deviations from the rounded mean of an 8x8 block. @copydetails huxiMeanAbsDev16x16_8u32s_C1R */
HUX_API HuxResult HUX_STDCALL huxiMeanAbsDev8x8_8u32s_C1R(const uint8_t* pSrc, int32_t srcStep, int32_t* pDst);
/**
 * @brief Counts the zero coefficients of an 8x8 block.
 *
 * @param pSrc    64 signed 16-bit coefficients, contiguous
 * @param pCount  0 to 64 (out)
 * @retval huxErrNullPtr  pSrc or pCount is null
 * @retval huxOk          the count was written
 */
HUX_API HuxResult HUX_STDCALL huxiCountZeros8x8_16s_C1(const int16_t* pSrc, int32_t* pCount);
/**
 * @brief Tells whether a 16x16 block has more strong neighbour differences than a count.
 *
 * For x, y in 0..14, h = |p(x, y) - p(x+1, y)| and v = |p(x, y) - p(x, y+1)|,
 * each capped at 127; a position counts when h or v exceeds the threshold,
 * compared as signed bytes (a threshold of 128 or more counts every position).
 * Rows are walked top down; as soon as the count exceeds edgePelCount the
 * flag is 1 and the walk stops; otherwise it is 0. Column 15 and row 15 are
 * neighbours only.
 * @param pSrc               block
 * @param srcStep            its row step in bytes
 * @param edgePelDifference  the difference threshold (a signed byte for the comparison)
 * @param edgePelCount       the count threshold
 * @param pRes               the flag, 0 or 1 (out)
 * @retval huxErrNullPtr  pSrc or pRes is null
 * @retval huxOk          the flag was written
 */
HUX_API HuxResult HUX_STDCALL huxiEdgesDetect16x16_8u_C1R(const uint8_t* pSrc, int32_t srcStep, uint8_t edgePelDifference, uint8_t edgePelCount, uint8_t* pRes);
/**
 * @brief The edge test of a 16x16 block of 16-bit samples.
 *
 * As the 8-bit function, with the differences uncapped (0..65535) and
 * compared, unsigned, with the 16-bit threshold; the count is compared with
 * the 16-bit edgePelCount.
 * @param pSrc               block
 * @param srcStep            its row step in bytes
 * @param edgePelDifference  the difference threshold, unsigned
 * @param edgePelCount       the count threshold
 * @param pRes               the flag, 0 or 1 (out)
 * @retval huxErrNullPtr  pSrc or pRes is null
 * @retval huxOk          the flag was written
 */
HUX_API HuxResult HUX_STDCALL huxiEdgesDetect16x16_16u_C1R(const uint16_t* pSrc, int32_t srcStep, uint16_t edgePelDifference, uint16_t edgePelCount, uint8_t* pRes);

/**
 * @brief Difference of two 16x16 blocks as signed 16-bit values.
 *
 * pDstDiff = current - reference (16-bit samples: wrapped to 16 bits).
 * @param pSrcCur      current block
 * @param srcCurStep   its row step in bytes
 * @param pSrcRef      reference block
 * @param srcRefStep   its row step in bytes
 * @param pDstDiff     the difference (out)
 * @param dstDiffStep  its row step in bytes
 * @retval huxErrNullPtr  pSrcCur, pSrcRef or pDstDiff is null
 * @retval huxOk          the difference was written
 */
HUX_API HuxResult HUX_STDCALL huxiSub16x16_8u16s_C1R(const uint8_t* pSrcCur, int32_t srcCurStep, const uint8_t* pSrcRef, int32_t srcRefStep, int16_t* pDstDiff, int32_t dstDiffStep);
/** @brief Difference of two 8x8 blocks. @copydetails huxiSub16x16_8u16s_C1R */
HUX_API HuxResult HUX_STDCALL huxiSub8x8_8u16s_C1R(const uint8_t* pSrcCur, int32_t srcCurStep, const uint8_t* pSrcRef, int32_t srcRefStep, int16_t* pDstDiff, int32_t dstDiffStep);
/** @brief Difference of two 4x4 blocks. @copydetails huxiSub16x16_8u16s_C1R */
HUX_API HuxResult HUX_STDCALL huxiSub4x4_8u16s_C1R(const uint8_t* pSrcCur, int32_t srcCurStep, const uint8_t* pSrcRef, int32_t srcRefStep, int16_t* pDstDiff, int32_t dstDiffStep);
/** @brief Difference of two 8x8 blocks of 16-bit samples, wrapped to 16 bits. @copydetails huxiSub16x16_8u16s_C1R */
HUX_API HuxResult HUX_STDCALL huxiSub8x8_16u16s_C1R(const uint16_t* pSrcCur, int32_t srcCurStep, const uint16_t* pSrcRef, int32_t srcRefStep, int16_t* pDstDiff, int32_t dstDiffStep);
/** @brief Difference of two 4x4 blocks of 16-bit samples, wrapped to 16 bits. @copydetails huxiSub16x16_8u16s_C1R */
HUX_API HuxResult HUX_STDCALL huxiSub4x4_16u16s_C1R(const uint16_t* pSrcCur, int32_t srcCurStep, const uint16_t* pSrcRef, int32_t srcRefStep, int16_t* pDstDiff, int32_t dstDiffStep);

/**
 * @brief Difference of a 16x16 block and its half-sample prediction, optionally the prediction too.
 *
 * The prediction is the reference at the mcType position rounded by
 * roundControl bit 0 exactly as the MC functions round; pDstDiff = current -
 * prediction. When pDstPredictor is not null the prediction is written there
 * as signed 16-bit values with its step; null is allowed.
 * @param pSrcCur           current block
 * @param srcCurStep        its row step in bytes
 * @param pSrcRef           reference block
 * @param srcRefStep        its row step in bytes
 * @param pDstDiff          the difference (out)
 * @param dstDiffStep       its row step in bytes
 * @param pDstPredictor     the prediction (out, optional)
 * @param dstPredictorStep  its row step in bytes
 * @param mcType            0, 4, 8 or 12 (bits 2-3 read)
 * @param roundControl      0 halves up, 1 halves down
 * @retval huxErrNullPtr  pSrcCur, pSrcRef or pDstDiff is null
 * @retval huxOk          the difference (and prediction) were written
 */
HUX_API HuxResult HUX_STDCALL huxiGetDiff16x16_8u16s_C1(const uint8_t* pSrcCur, int32_t srcCurStep, const uint8_t* pSrcRef, int32_t srcRefStep, int16_t* pDstDiff, int32_t dstDiffStep, int16_t* pDstPredictor, int32_t dstPredictorStep, int32_t mcType, int32_t roundControl);
/** @brief Difference of a 16x8 block and its half-sample prediction. @copydetails huxiGetDiff16x16_8u16s_C1 */
HUX_API HuxResult HUX_STDCALL huxiGetDiff16x8_8u16s_C1(const uint8_t* pSrcCur, int32_t srcCurStep, const uint8_t* pSrcRef, int32_t srcRefStep, int16_t* pDstDiff, int32_t dstDiffStep, int16_t* pDstPredictor, int32_t dstPredictorStep, int32_t mcType, int32_t roundControl);
/** @brief Difference of a 8x16 block and its half-sample prediction. @copydetails huxiGetDiff16x16_8u16s_C1 */
HUX_API HuxResult HUX_STDCALL huxiGetDiff8x16_8u16s_C1(const uint8_t* pSrcCur, int32_t srcCurStep, const uint8_t* pSrcRef, int32_t srcRefStep, int16_t* pDstDiff, int32_t dstDiffStep, int16_t* pDstPredictor, int32_t dstPredictorStep, int32_t mcType, int32_t roundControl);
/** @brief Difference of a 8x8 block and its half-sample prediction. @copydetails huxiGetDiff16x16_8u16s_C1 */
HUX_API HuxResult HUX_STDCALL huxiGetDiff8x8_8u16s_C1(const uint8_t* pSrcCur, int32_t srcCurStep, const uint8_t* pSrcRef, int32_t srcRefStep, int16_t* pDstDiff, int32_t dstDiffStep, int16_t* pDstPredictor, int32_t dstPredictorStep, int32_t mcType, int32_t roundControl);
/** @brief Difference of a 8x4 block and its half-sample prediction. @copydetails huxiGetDiff16x16_8u16s_C1 */
HUX_API HuxResult HUX_STDCALL huxiGetDiff8x4_8u16s_C1(const uint8_t* pSrcCur, int32_t srcCurStep, const uint8_t* pSrcRef, int32_t srcRefStep, int16_t* pDstDiff, int32_t dstDiffStep, int16_t* pDstPredictor, int32_t dstPredictorStep, int32_t mcType, int32_t roundControl);
/**
 * @brief Integer-position difference of two 4x4 blocks.
 *
 * Takes the arguments of the other GetDiff functions and ignores
 * pDstPredictor, its step, mcType and roundControl: pDstDiff = current - reference.
 * @param pSrcCur           current block
 * @param srcCurStep        its row step in bytes
 * @param pSrcRef           reference block
 * @param srcRefStep        its row step in bytes
 * @param pDstDiff          the difference (out)
 * @param dstDiffStep       its row step in bytes
 * @param pDstPredictor     ignored
 * @param dstPredictorStep  ignored
 * @param mcType            ignored
 * @param roundControl      ignored
 * @retval huxErrNullPtr  pSrcCur, pSrcRef or pDstDiff is null
 * @retval huxOk          the difference was written
 */
HUX_API HuxResult HUX_STDCALL huxiGetDiff4x4_8u16s_C1(const uint8_t* pSrcCur, int32_t srcCurStep, const uint8_t* pSrcRef, int32_t srcRefStep, int16_t* pDstDiff, int32_t dstDiffStep, int16_t* pDstPredictor, int32_t dstPredictorStep, int32_t mcType, int32_t roundControl);
/**
 * @brief Difference of a 16x16 block and its bidirectional half-sample prediction.
 *
 * Each direction is predicted at its own mcType with the shared roundControl
 * (as the MC functions), the two averaged upwards, (F + B + 1) >> 1;
 * pDstDiff = current - average.
 * @param pSrcCur      current block
 * @param srcCurStep   its row step in bytes
 * @param pSrcRefF     forward reference
 * @param srcRefStepF  its row step in bytes
 * @param mcTypeF      forward position (bits 2-3)
 * @param pSrcRefB     backward reference
 * @param srcRefStepB  its row step in bytes
 * @param mcTypeB      backward position (bits 2-3)
 * @param pDstDiff     the difference (out)
 * @param dstDiffStep  its row step in bytes
 * @param roundControl 0 halves up, 1 halves down
 * @retval huxErrNullPtr  pSrcCur, pSrcRefF, pSrcRefB or pDstDiff is null
 * @retval huxOk          the difference was written
 */
HUX_API HuxResult HUX_STDCALL huxiGetDiff16x16B_8u16s_C1(const uint8_t* pSrcCur, int32_t srcCurStep, const uint8_t* pSrcRefF, int32_t srcRefStepF, int32_t mcTypeF, const uint8_t* pSrcRefB, int32_t srcRefStepB, int32_t mcTypeB, int16_t* pDstDiff, int32_t dstDiffStep, int32_t roundControl);
/** @brief Difference of a 16x8 block and its bidirectional half-sample prediction. @copydetails huxiGetDiff16x16B_8u16s_C1 */
HUX_API HuxResult HUX_STDCALL huxiGetDiff16x8B_8u16s_C1(const uint8_t* pSrcCur, int32_t srcCurStep, const uint8_t* pSrcRefF, int32_t srcRefStepF, int32_t mcTypeF, const uint8_t* pSrcRefB, int32_t srcRefStepB, int32_t mcTypeB, int16_t* pDstDiff, int32_t dstDiffStep, int32_t roundControl);
/** @brief Difference of a 8x16 block and its bidirectional half-sample prediction. @copydetails huxiGetDiff16x16B_8u16s_C1 */
HUX_API HuxResult HUX_STDCALL huxiGetDiff8x16B_8u16s_C1(const uint8_t* pSrcCur, int32_t srcCurStep, const uint8_t* pSrcRefF, int32_t srcRefStepF, int32_t mcTypeF, const uint8_t* pSrcRefB, int32_t srcRefStepB, int32_t mcTypeB, int16_t* pDstDiff, int32_t dstDiffStep, int32_t roundControl);
/** @brief Difference of a 8x8 block and its bidirectional half-sample prediction. @copydetails huxiGetDiff16x16B_8u16s_C1 */
HUX_API HuxResult HUX_STDCALL huxiGetDiff8x8B_8u16s_C1(const uint8_t* pSrcCur, int32_t srcCurStep, const uint8_t* pSrcRefF, int32_t srcRefStepF, int32_t mcTypeF, const uint8_t* pSrcRefB, int32_t srcRefStepB, int32_t mcTypeB, int16_t* pDstDiff, int32_t dstDiffStep, int32_t roundControl);
/** @brief Difference of a 8x4 block and its bidirectional half-sample prediction. @copydetails huxiGetDiff16x16B_8u16s_C1 */
HUX_API HuxResult HUX_STDCALL huxiGetDiff8x4B_8u16s_C1(const uint8_t* pSrcCur, int32_t srcCurStep, const uint8_t* pSrcRefF, int32_t srcRefStepF, int32_t mcTypeF, const uint8_t* pSrcRefB, int32_t srcRefStepB, int32_t mcTypeB, int16_t* pDstDiff, int32_t dstDiffStep, int32_t roundControl);
/**
 * @brief Sums of the differences of the sixteen 4x4 blocks of a 16x16 block, optionally the differences.
 *
 * d = current - prediction; pSums[i] is the sum of 4x4 block i's differences,
 * raster order. When pDiff is not null the differences are written block by
 * block, each 4x4 block as 16 consecutive values (four rows of four), blocks in
 * raster order; null is allowed.
 * @param pSrc      current block
 * @param srcStep   its row step in bytes
 * @param pPred     prediction block
 * @param predStep  its row step in bytes
 * @param pSums     16 sums, signed 16-bit (out)
 * @param pDiff     256 differences in 4x4-block order (out, optional)
 * @retval huxErrNullPtr  pSrc, pPred or pSums is null
 * @retval huxOk          the sums (and differences) were written
 */
HUX_API HuxResult HUX_STDCALL huxiSumsDiff16x16Blocks4x4_8u16s_C1(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pPred, int32_t predStep, int16_t* pSums, int16_t* pDiff);
/** @brief Sums of the differences of the four 4x4 blocks of an 8x8 block (4 sums, 64 differences). @copydetails huxiSumsDiff16x16Blocks4x4_8u16s_C1 */
HUX_API HuxResult HUX_STDCALL huxiSumsDiff8x8Blocks4x4_8u16s_C1(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pPred, int32_t predStep, int16_t* pSums, int16_t* pDiff);
/**
 * @brief Sums of the differences of the 4x4 blocks of a 16x16 block of 16-bit samples.
 *
 * As the 8-bit function, with each difference wrapped to signed 16 bits and
 * 32-bit sums; the byte steps are halved to element steps (an odd step loses
 * its last byte).
 * @param pSrc      current block
 * @param srcStep   its row step in bytes
 * @param pPred     prediction block
 * @param predStep  its row step in bytes
 * @param pSums     16 sums, signed 32-bit (out)
 * @param pDiff     256 wrapped differences in 4x4-block order (out, optional)
 * @retval huxErrNullPtr  pSrc, pPred or pSums is null
 * @retval huxOk          the sums (and differences) were written
 */
HUX_API HuxResult HUX_STDCALL huxiSumsDiff16x16Blocks4x4_16u32s_C1R(const uint16_t* pSrc, int32_t srcStep, const uint16_t* pPred, int32_t predStep, int32_t* pSums, int16_t* pDiff);
/** @brief Sums of the differences of the four 4x4 blocks of an 8x8 block of 16-bit samples. @copydetails huxiSumsDiff16x16Blocks4x4_16u32s_C1R */
HUX_API HuxResult HUX_STDCALL huxiSumsDiff8x8Blocks4x4_16u32s_C1R(const uint16_t* pSrc, int32_t srcStep, const uint16_t* pPred, int32_t predStep, int32_t* pSums, int16_t* pDiff);

#ifdef __cplusplus
}
#endif

#endif /* HUXVC_H */
