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

/* ------------------------------------------------------------------ H.264 intra prediction */
/*
 * The three predictors work in place on an 8-bit picture: pSrcDst is the block's top-left sample and the
 * neighbours are read from the picture around it. availability says which neighbours exist (a set bit: present):
 * bit 0 (1) the row above, bit 1 (2) the column to the left, bit 5 (32) the sample above-left, bit 6 (64) the four
 * samples above-right (4x4 only); other bits are ignored. A sample whose bit is clear is never read.
 */

/**
 * @brief Predicts a 4x4 luma block in place with one of the nine 4x4 modes.
 *
 * Modes: 0 vertical, 1 horizontal, 2 DC, 3 diagonal down-left, 4 diagonal down-right, 5 vertical-right,
 * 6 horizontal-down, 7 vertical-left, 8 horizontal-up, with the standard's rounding (DC (4 above + 4 left + 4) >> 3,
 * one side (4 + 2) >> 2, neither 128; three-tap (p + 2q + r + 2) >> 2 and two-tap (p + q + 1) >> 1 filters).
 * A neighbour a mode needs but availability marks absent is replaced by 128 (all its samples) and the block is
 * still predicted; the call then returns huxWrnNoNeighbour. Missing above-right samples (bit 6 clear) repeat the
 * last sample above, without a warning. DC never warns.
 * @param pSrcDst       the block in the picture (in place); reads up to 1 row above, 1 column left, 4 samples above-right
 * @param srcDstStep    row step in bytes, at least 4
 * @param mode          0 to 8
 * @param availability  neighbour flags (see above)
 * @retval huxErrNullPtr      pSrcDst is null
 * @retval huxErrStep         srcDstStep below 4
 * @retval huxErrOutOfRange   mode above 8 (nothing read or written)
 * @retval huxWrnNoNeighbour  a needed neighbour was absent; 128 was used and the block written
 * @retval huxOk              predicted
 */
HUX_API HuxResult HUX_STDCALL huxiPredictIntra_4x4_H264_8u_C1IR(uint8_t* pSrcDst, int32_t srcDstStep, uint32_t mode, uint32_t availability);

/**
 * @brief Predicts a 16x16 luma macroblock in place: 0 vertical, 1 horizontal, 2 DC, 3 plane.
 *
 * DC is (16 above + 16 left + 16) >> 5, (16 + 8) >> 4 from one side, 128 with neither. Plane: H and V the
 * standard's weighted differences, b = (5 H + 32) >> 6, c = (5 V + 32) >> 6, a = 16 (last left + last above), each
 * sample (a + b (x - 7) + c (y - 7) + 16) >> 5 clamped to 0..255. Vertical needs bit 0, horizontal bit 1, plane
 * bits 0, 1 and 5; a mode whose neighbours are absent is refused and nothing is written.
 * @param pSrcDst       the macroblock in the picture (in place)
 * @param srcDstStep    row step in bytes, at least 16
 * @param mode          0 to 3
 * @param availability  neighbour flags (bit 6 unused)
 * @retval huxErrNullPtr      pSrcDst is null
 * @retval huxErrStep         srcDstStep below 16
 * @retval huxErrNoNeighbour  the mode needs a neighbour marked absent (nothing written)
 * @retval huxErrOutOfRange   mode above 3
 * @retval huxOk              predicted
 */
HUX_API HuxResult HUX_STDCALL huxiPredictIntra_16x16_H264_8u_C1IR(uint8_t* pSrcDst, int32_t srcDstStep, uint32_t mode, uint32_t availability);

/**
 * @brief Predicts the 8x8 block of one 4:2:0 chroma plane in place: 0 DC, 1 horizontal, 2 vertical, 3 plane.
 *
 * Note the numbering: chroma mode 0 is DC and vertical is 2. DC is formed per 4x4 quarter: top-left and
 * bottom-right from both sides ((8 samples + 4) >> 3), the top-right quarter from the row above if present else the
 * left column, the bottom-left quarter from the left column if present else the row above ((4 + 2) >> 2), 128
 * when neither. Plane: b = (17 H + 16) >> 5, c = (17 V + 16) >> 5, a = 16 (last left + last above), each sample
 * (a + b (x - 3) + c (y - 3) + 16) >> 5 clamped to 0..255. Horizontal needs bit 1, vertical bit 0, plane bits 0, 1
 * and 5; a mode whose neighbours are absent is refused and nothing is written.
 * @param pSrcDst       the block in the plane (in place)
 * @param srcDstStep    row step in bytes, at least 8
 * @param mode          0 to 3
 * @param availability  neighbour flags (bit 6 unused)
 * @retval huxErrNullPtr      pSrcDst is null
 * @retval huxErrStep         srcDstStep below 8
 * @retval huxErrNoNeighbour  the mode needs a neighbour marked absent (nothing written)
 * @retval huxErrOutOfRange   mode above 3
 * @retval huxOk              predicted
 */
HUX_API HuxResult HUX_STDCALL huxiPredictIntraChroma8x8_H264_8u_C1IR(uint8_t* pSrcDst, int32_t srcDstStep, uint32_t mode, uint32_t availability);

/* ------------------------------------------------------------------ H.264 macroblock reconstruction */
/*
 * Rebuild one 8-bit macroblock (luma) or both 4:2:0 chroma blocks (Cb and Cr planes sharing one step) in place,
 * from the packed coefficient buffer: ppSrcCoeff points to the caller's pointer to the next unread entry, and each
 * block whose bit is set in the coded block pattern takes its entries and moves that pointer past them (nothing is
 * consumed for a clear bit, nothing at all when a check fails).
 *
 * Coded block pattern bits: 0 the Intra 16x16 luma DC (16 entries, the DC levels of the 16 blocks in raster order of
 * the blocks); 1 + n luma 4x4 block n (16 entries), blocks numbered by 8x8 quadrants top-left, top-right,
 * bottom-left, bottom-right and inside each the same order (block 1 at x 4, y 0; block 2 at x 0, y 4; block 4 at
 * x 8, y 0; block 10 at x 0, y 12; block 12 at x 8, y 8); 17 Cb DC, 18 Cr DC (4 entries each, 2x2 raster);
 * 19 + b Cb AC block b, 23 + b Cr AC block b (b: top-left, top-right, bottom-left, bottom-right; 16 entries, the
 * first unused). Buffer order: luma DC, luma blocks 0..15, Cb DC, Cr DC, Cb AC 0..3, Cr AC 0..3. The 8x8-transform
 * functions treat a quadrant as coded when any of its four luma bits is set and then take 64 entries, the
 * quadrant's levels in raster order. Bits outside a function's range are ignored.
 *
 * Edge type (a set bit: that neighbouring macroblock is absent, the opposite sense to the availability flags of
 * the intra predictors): bit 0 (1) left, bit 2 (4) above, bit 3 (8) above-right, bit 4 (16) above-left. From it each
 * block's availability is derived as the standard's neighbour rules give: blocks of the top row take above and
 * above-right from the macroblock above (the last column's above-right from the macroblock above-right); below
 * the top row a block has its above-right samples only when they were reconstructed before it (4x4 blocks 3, 7,
 * 11, 13 and 15 never have them). Intra blocks are predicted in block order from the samples reconstructed
 * before them; 4x4 and 8x8 luma predictions substitute 128 for absent samples as huxiPredictIntra_4x4_H264_8u_C1IR
 * does (no warning is returned), 16x16 and chroma predictions refuse with huxErrNoNeighbour.
 *
 * Residual arithmetic is that of the dequantisation and transform functions: "flat" forms dequantise with the
 * table v(QP mod 6, class) << (QP / 6) in 16-bit products and saturating 16-bit passes (as
 * huxiDequantTransformResidualAndAdd_H264_16s_C1I); LevelScale forms use the caller's LevelScale table as
 * huxiTransformQuantInvAddPred4x4_H264_16s_C1IR (4x4) or huxiQuantLuma8x8Inv_H264_16s_C1I followed by
 * huxiTransformLuma8x8InvAddPred_H264_16s8u_C1R (8x8). Every sample ends as prediction plus residual clamped to
 * 0..255. bypassFlag (non-zero) selects transform bypass, and only when the QP argument is 0: the levels are the
 * residual, unscaled and untransformed; in intra blocks predicted vertically (luma mode 0, chroma mode 2) or
 * horizontally (luma mode 1, chroma mode 1) they accumulate down the columns or along the rows of the block
 * (of the whole 8x8 chroma block), and a chroma block's DC level takes its first position.
 */

/**
 * @brief Adds the residual of the coded luma 4x4 blocks (pattern bits 1..16) to an inter macroblock's prediction.
 *
 * Flat dequantisation, 4x4 inverse transform, (x + 32) >> 6, plus the picture's samples, clamped to 0..255.
 * With no bit of 1..16 set nothing is read, written or consumed.
 * @param ppSrcCoeff     in/out: the caller's pointer into the packed buffer
 * @param pSrcDstYPlane  the macroblock's top-left luma sample (prediction in, result out)
 * @param srcDstYStep    row step in bytes (not checked)
 * @param cbp4x4         coded block pattern
 * @param QP             luma QP, 0..51
 * @retval huxErrNullPtr     ppSrcCoeff, pSrcDstYPlane or *ppSrcCoeff is null
 * @retval huxErrOutOfRange  QP outside 0..51 (compared unsigned)
 * @retval huxOk             done
 */
HUX_API HuxResult HUX_STDCALL huxiReconstructLumaInterMB_H264_16s8u_C1R(int16_t** ppSrcCoeff, uint8_t* pSrcDstYPlane, int32_t srcDstYStep, uint32_t cbp4x4, int32_t QP);

/**
 * @brief Inter luma with the caller's LevelScale4x4 table and transform bypass.
 *
 * Each coded 4x4 block: level x scale << (QP / 6 - 4) from QP 24, else (level x scale + 2^(3 - QP / 6)) >>
 * (4 - QP / 6), saturated to 16 bits; inverse transform; added and clamped. At QP 0 with bypassFlag set the levels
 * are added as they stand.
 * @param ppSrcCoeff, pSrcDstYPlane, srcDstYStep, cbp4x4  as huxiReconstructLumaInterMB_H264_16s8u_C1R
 * @param QP           luma QP, 0..51
 * @param pQuantTable  LevelScale4x4 of QP mod 6 (16 entries, raster)
 * @param bypassFlag   transform bypass, effective at QP 0 only
 * @retval huxErrNullPtr     ppSrcCoeff, pSrcDstYPlane, *ppSrcCoeff or pQuantTable is null
 * @retval huxErrOutOfRange  QP outside 0..51
 * @retval huxOk             done
 */
HUX_API HuxResult HUX_STDCALL huxiReconstructLumaInter4x4MB_H264_16s8u_C1R(int16_t** ppSrcCoeff, uint8_t* pSrcDstYPlane, int32_t srcDstYStep, uint32_t cbp4x4, int32_t QP, const int16_t* pQuantTable, uint8_t bypassFlag);

/**
 * @brief Inter luma with the 8x8 transform: each coded quadrant's 64 levels dequantised with LevelScale8x8, inverse transformed and added.
 *
 * A quadrant is coded when any of its four pattern bits is set; it takes 64 entries (raster order). Dequantisation
 * as huxiQuantLuma8x8Inv_H264_16s_C1I at QP / 6, the transform as huxiTransformLuma8x8InvAddPred_H264_16s8u_C1R.
 * At QP 0 with bypassFlag set the 64 levels are added as they stand.
 * @param pQuantTable  LevelScale8x8 of QP mod 6 (64 entries, raster)
 * @retval huxErrNullPtr     ppSrcCoeff, pSrcDstYPlane, *ppSrcCoeff or pQuantTable is null
 * @retval huxErrOutOfRange  QP outside 0..51
 * @retval huxOk             done
 */
HUX_API HuxResult HUX_STDCALL huxiReconstructLumaInter8x8MB_H264_16s8u_C1R(int16_t** ppSrcCoeff, uint8_t* pSrcDstYPlane, int32_t srcDstYStep, uint32_t cbp4x4, int32_t QP, const int16_t* pQuantTable, uint8_t bypassFlag);

/**
 * @brief Intra 4x4 luma macroblock: predicts each 4x4 block in block order and adds its residual before the next.
 *
 * Blocks are dequantised with the flat LevelScale4x4 table (the LevelScale rule of
 * huxiReconstructLumaInter4x4MB_H264_16s8u_C1R with 16 x v(QP mod 6, class)).
 * @param pMBIntraTypes  16 modes (0..8 as huxiPredictIntra_4x4_H264_8u_C1IR), one per block in block order
 * @param edgeType       absent neighbouring macroblocks (see above)
 * @retval huxErrNullPtr     ppSrcCoeff, pSrcDstYPlane, pMBIntraTypes or *ppSrcCoeff is null
 * @retval huxErrOutOfRange  QP outside 0..51, or a mode above 8 (nothing written)
 * @retval huxOk             done
 */
HUX_API HuxResult HUX_STDCALL huxiReconstructLumaIntraMB_H264_16s8u_C1R(int16_t** ppSrcCoeff, uint8_t* pSrcDstYPlane, int32_t srcDstYStep, const uint32_t* pMBIntraTypes, uint32_t cbp4x4, int32_t QP, uint8_t edgeType);

/**
 * @brief Intra 4x4 luma macroblock with the caller's LevelScale4x4 table and transform bypass.
 *
 * As huxiReconstructLumaIntraMB_H264_16s8u_C1R with pQuantTable in place of the flat table; at QP 0 with
 * bypassFlag set the levels are added unscaled (accumulated for vertical and horizontal blocks).
 * @retval huxErrNullPtr     ppSrcCoeff, pSrcDstYPlane, pMBIntraTypes, *ppSrcCoeff or pQuantTable is null
 * @retval huxErrOutOfRange  QP outside 0..51, or a mode above 8
 * @retval huxOk             done
 */
HUX_API HuxResult HUX_STDCALL huxiReconstructLumaIntra4x4MB_H264_16s8u_C1R(int16_t** ppSrcCoeff, uint8_t* pSrcDstYPlane, int32_t srcDstYStep, const uint32_t* pMBIntraTypes, uint32_t cbp4x4, int32_t QP, uint8_t edgeType, const int16_t* pQuantTable, uint8_t bypassFlag);

/**
 * @brief Intra 8x8 luma macroblock: each quadrant predicted with the 8x8 modes and reference-sample filtering, then its residual added.
 *
 * The 8x8 prediction filters the row above (16 samples, the above-right ones repeating the last above sample when
 * absent), the corner and the left column with the standard's [1 2 1] rules before applying mode 0..8 (the 4x4
 * numbering); absent samples are 128. pQuantTable null means the flat LevelScale8x8 (16 x normAdjust8x8).
 * @param pMBIntraTypes  4 modes, one per quadrant
 * @param pQuantTable    LevelScale8x8 of QP mod 6 (64 entries), or null
 * @retval huxErrNullPtr     ppSrcCoeff, pSrcDstYPlane, pMBIntraTypes or *ppSrcCoeff is null
 * @retval huxErrOutOfRange  QP outside 0..51, or a mode outside 0..8
 * @retval huxOk             done
 */
HUX_API HuxResult HUX_STDCALL huxiReconstructLumaIntra8x8MB_H264_16s8u_C1R(int16_t** ppSrcCoeff, uint8_t* pSrcDstYPlane, int32_t srcDstYStep, const int32_t* pMBIntraTypes, uint32_t cbp4x4, int32_t QP, uint8_t edgeType, const int16_t* pQuantTable, uint8_t bypassFlag);

/**
 * @brief Intra 16x16 luma macroblock: prediction, DC Hadamard and dequantisation, then every block with its DC.
 *
 * The prediction (modes of huxiPredictIntra_16x16_H264_8u_C1IR; vertical needs the macroblock above, horizontal
 * the left one, plane all three of above, left and above-left) is written even with no pattern bit set. Bit 0:
 * 16 DC levels transformed as huxiTransformDequantLumaDC_H264_16s_C1I; without it the DCs are 0. Block n takes DC
 * entry 4 x (its row) + (its column) (block 2 takes entry 4); a coded block's levels 1..15 are dequantised with the
 * flat tables and transformed with that DC, an uncoded one receives (DC + 32) >> 6.
 * @param intraLumaMode  0 vertical, 1 horizontal, 2 DC, 3 plane
 * @retval huxErrNullPtr      ppSrcCoeff, pSrcDstYPlane or *ppSrcCoeff is null
 * @retval huxErrOutOfRange   QP outside 0..51, or mode above 3
 * @retval huxErrNoNeighbour  the mode needs an absent macroblock (nothing written or consumed)
 * @retval huxOk              done
 */
HUX_API HuxResult HUX_STDCALL huxiReconstructLumaIntra16x16MB_H264_16s8u_C1R(int16_t** ppSrcCoeff, uint8_t* pSrcDstYPlane, int32_t srcDstYStep, uint32_t intraLumaMode, uint32_t cbp4x4, int32_t QP, uint8_t edgeType);

/**
 * @brief The same operation as huxiReconstructLumaIntra16x16MB_H264_16s8u_C1R under its second name.
 *
 * Identical arguments, arithmetic, checks and statuses; it forwards to that function.
 */
HUX_API HuxResult HUX_STDCALL huxiReconstructLumaIntra_16x16MB_H264_16s8u_C1R(int16_t** ppSrcCoeff, uint8_t* pSrcDstYPlane, int32_t srcDstYStep, uint32_t intraLumaMode, uint32_t cbp4x4, int32_t QP, uint8_t edgeType);

/**
 * @brief Adds the chroma residual (pattern bits 17..26) to the Cb and Cr predictions of an inter macroblock.
 *
 * Cb DC then Cr DC: 2x2 transform and dequantisation as huxiTransformDequantChromaDC_H264_16s_C1I (zeros when the
 * bit is clear); then for Cb, then Cr, AC blocks 0..3: a coded block's levels 1..15 dequantised with the flat
 * tables and transformed with its DC, an uncoded one (DC + 32) >> 6; added and clamped. With no bit of 17..26 set
 * nothing is read, written or consumed.
 * @param pSrcDstUPlane, pSrcDstVPlane  the 8x8 Cb and Cr blocks (in place)
 * @param srcDstUVStep  row step of both planes, bytes
 * @param chromaQP      0..39
 * @retval huxErrNullPtr     ppSrcCoeff, pSrcDstUPlane, pSrcDstVPlane or *ppSrcCoeff is null
 * @retval huxErrOutOfRange  chromaQP outside 0..39
 * @retval huxOk             done
 */
HUX_API HuxResult HUX_STDCALL huxiReconstructChromaInterMB_H264_16s8u_P2R(int16_t** ppSrcCoeff, uint8_t* pSrcDstUPlane, uint8_t* pSrcDstVPlane, int32_t srcDstUVStep, uint32_t cbp4x4, int32_t chromaQP);

/**
 * @brief Inter chroma with a QP and LevelScale4x4 table per plane, and transform bypass.
 *
 * DC: 2x2 transform then (x x scale[0]) >> (5 - QP / 6) below QP 30, << (QP / 6 - 5) from it (as
 * huxiTransformQuantInvChromaDC2x2_H264_16s_C1I); AC as the LevelScale 4x4 rule. A plane whose QP is 0 with
 * bypassFlag set takes its levels as they stand (the DC level in each block's first position).
 * @retval huxErrNullPtr     ppSrcCoeff, pSrcDstUPlane, pSrcDstVPlane, *ppSrcCoeff, pQuantTableU or pQuantTableV is null
 * @retval huxErrOutOfRange  either QP outside 0..39
 * @retval huxOk             done
 */
HUX_API HuxResult HUX_STDCALL huxiReconstructChromaInter4x4MB_H264_16s8u_P2R(int16_t** ppSrcCoeff, uint8_t* pSrcDstUPlane, uint8_t* pSrcDstVPlane, int32_t srcDstUVStep, uint32_t cbp4x4, int32_t chromaQPU, int32_t chromaQPV, const int16_t* pQuantTableU, const int16_t* pQuantTableV, uint8_t bypassFlag);

/**
 * @brief Intra chroma: predicts both 8x8 planes (modes of huxiPredictIntraChroma8x8_H264_8u_C1IR) and adds the residual as the inter form.
 *
 * DC needs nothing, horizontal the left macroblock, vertical the one above, plane all three of above, left and
 * above-left; a refusal comes before anything is written or consumed.
 * @param intraChromaMode  0 DC, 1 horizontal, 2 vertical, 3 plane
 * @retval huxErrNullPtr      ppSrcCoeff, pSrcDstUPlane, pSrcDstVPlane or *ppSrcCoeff is null
 * @retval huxErrOutOfRange   chromaQP outside 0..39, or mode above 3
 * @retval huxErrNoNeighbour  the mode needs an absent macroblock
 * @retval huxOk              done
 */
HUX_API HuxResult HUX_STDCALL huxiReconstructChromaIntraMB_H264_16s8u_P2R(int16_t** ppSrcCoeff, uint8_t* pSrcDstUPlane, uint8_t* pSrcDstVPlane, int32_t srcDstUVStep, uint32_t intraChromaMode, uint32_t cbp4x4, int32_t chromaQP, uint8_t edgeType);

/**
 * @brief Intra chroma with a QP and LevelScale4x4 table per plane, and transform bypass.
 *
 * Prediction as huxiReconstructChromaIntraMB_H264_16s8u_P2R, residual as huxiReconstructChromaInter4x4MB_H264_16s8u_P2R
 * (bypassed horizontal and vertical planes accumulate their levels across the whole 8x8 block).
 * @retval huxErrNullPtr      ppSrcCoeff, pSrcDstUPlane, pSrcDstVPlane, *ppSrcCoeff, pQuantTableU or pQuantTableV is null
 * @retval huxErrOutOfRange   either QP outside 0..39, or mode above 3
 * @retval huxErrNoNeighbour  the mode needs an absent macroblock
 * @retval huxOk              done
 */
HUX_API HuxResult HUX_STDCALL huxiReconstructChromaIntra4x4MB_H264_16s8u_P2R(int16_t** ppSrcCoeff, uint8_t* pSrcDstUPlane, uint8_t* pSrcDstVPlane, int32_t srcDstUVStep, uint32_t intraChromaMode, uint32_t cbp4x4, int32_t chromaQPU, int32_t chromaQPV, uint8_t edgeType, const int16_t* pQuantTableU, const int16_t* pQuantTableV, uint8_t bypassFlag);

/*
 * Half forms, for macroblock pairs whose left neighbours are split between two macroblocks (a field macroblock
 * beside a frame pair, or a left pair of which only one macroblock may be used): the whole macroblock is
 * rebuilt as by the non-Half form, but the left neighbour of its upper half (luma rows 0..7, chroma rows 0..3) and
 * of its lower half (luma rows 8..15, chroma rows 4..7) have separate availability. The left samples of both
 * halves are read from the column to the left of the macroblock at the same row step, so a caller passes the
 * pointer and step under which that column holds the neighbours the standard's derivation gives (for a field
 * macroblock of a frame-coded picture: the field's rows at twice the frame step). Luma edge type bits: 0 (1) the
 * upper half's left macroblock absent, 1 (2) the lower half's left macroblock absent, 2 (4) above, 3 (8)
 * above-right, 4 (16) above-left (of the upper half), 5 (32) the left sample just above row 8 (the lower half's
 * above-left) absent. The non-Half functions ignore bits 1 and 5. Chroma takes an edge type per half: the upper
 * one as in huxiReconstructChromaIntraMB_H264_16s8u_P2R, of the lower one only bit 0 (its left) counts.
 */

/**
 * @brief Intra 4x4 luma macroblock (flat LevelScale) with the left neighbour split in halves.
 *
 * As huxiReconstructLumaIntraMB_H264_16s8u_C1R, with the Half edge type above.
 * @retval huxErrNullPtr     ppSrcCoeff, pSrcDstYPlane, pMBIntraTypes or *ppSrcCoeff is null
 * @retval huxErrStep        srcDstYStep below 1
 * @retval huxErrOutOfRange  QP outside 0..51, or a mode above 8
 * @retval huxOk             done
 */
HUX_API HuxResult HUX_STDCALL huxiReconstructLumaIntraHalfMB_H264_16s8u_C1R(int16_t** ppSrcCoeff, uint8_t* pSrcDstYPlane, int32_t srcDstYStep, const uint32_t* pMBIntraTypes, uint32_t cbp4x4, int32_t QP, uint8_t edgeType);

/**
 * @brief Intra 4x4 luma macroblock with LevelScale4x4 and bypass, the left neighbour split in halves.
 *
 * As huxiReconstructLumaIntra4x4MB_H264_16s8u_C1R, with the Half edge type above.
 * @retval huxErrNullPtr     ppSrcCoeff, pSrcDstYPlane, pMBIntraTypes, *ppSrcCoeff or pQuantTable is null
 * @retval huxErrStep        srcDstYStep below 1
 * @retval huxErrOutOfRange  QP outside 0..51, or a mode above 8
 * @retval huxOk             done
 */
HUX_API HuxResult HUX_STDCALL huxiReconstructLumaIntraHalf4x4MB_H264_16s8u_C1R(int16_t** ppSrcCoeff, uint8_t* pSrcDstYPlane, int32_t srcDstYStep, const uint32_t* pMBIntraTypes, uint32_t cbp4x4, int32_t QP, uint8_t edgeType, const int16_t* pQuantTable, uint8_t bypassFlag);

/**
 * @brief Intra 8x8 luma macroblock with the left neighbour split in halves.
 *
 * As huxiReconstructLumaIntra8x8MB_H264_16s8u_C1R (pQuantTable may be null: flat), with the Half edge type above:
 * the bottom-left quadrant's left column follows bit 1 and its above-left sample bit 5.
 * @retval huxErrNullPtr     ppSrcCoeff, pSrcDstYPlane, pMBIntraTypes or *ppSrcCoeff is null
 * @retval huxErrStep        srcDstYStep below 1
 * @retval huxErrOutOfRange  QP outside 0..51, or a mode outside 0..8
 * @retval huxOk             done
 */
HUX_API HuxResult HUX_STDCALL huxiReconstructLumaIntraHalf8x8MB_H264_16s8u_C1R(int16_t** ppSrcCoeff, uint8_t* pSrcDstYPlane, int32_t srcDstYStep, const int32_t* pMBIntraTypes, uint32_t cbp4x4, int32_t QP, uint8_t edgeType, const int16_t* pQuantTable, uint8_t bypassFlag);

/**
 * @brief Intra chroma with the left neighbour split in halves, one edge type per half.
 *
 * DC: each 4x4 quarter uses the left half beside it (its availability from that half's edge type). Horizontal and
 * plane need both halves' left neighbours (plane also above and above-left, from the upper edge type); vertical
 * needs the macroblock above. The residual as huxiReconstructChromaInterMB_H264_16s8u_P2R at chromaQP.
 * @param edgeTypeTop     left (bit 0), above (bit 2), above-left (bit 4) absent, for the upper half and the block
 * @param edgeTypeBottom  bit 0: the lower half's left neighbour absent; other bits ignored
 * @retval huxErrNullPtr      ppSrcCoeff, pSrcDstUPlane, pSrcDstVPlane or *ppSrcCoeff is null
 * @retval huxErrOutOfRange   chromaQP outside 0..51, or mode above 3
 * @retval huxErrNoNeighbour  the mode needs an absent neighbour (nothing written or consumed)
 * @retval huxOk              done
 */
HUX_API HuxResult HUX_STDCALL huxiReconstructChromaIntraHalfsMB_H264_16s8u_P2R(int16_t** ppSrcCoeff, uint8_t* pSrcDstUPlane, uint8_t* pSrcDstVPlane, int32_t srcDstUVStep, uint32_t intraChromaMode, uint32_t cbp4x4, int32_t chromaQP, uint8_t edgeTypeTop, uint8_t edgeTypeBottom);

/**
 * @brief The same operation as huxiReconstructChromaIntraHalfsMB_H264_16s8u_P2R under its second name; it forwards to it.
 */
HUX_API HuxResult HUX_STDCALL huxiReconstructChromaIntraHalvesMB_H264_16s8u_P2R(int16_t** ppSrcCoeff, uint8_t* pSrcDstUPlane, uint8_t* pSrcDstVPlane, int32_t srcDstUVStep, uint32_t intraChromaMode, uint32_t cbp4x4, int32_t chromaQP, uint8_t edgeTypeTop, uint8_t edgeTypeBottom);

#ifdef __cplusplus
}
#endif

#endif /* HUXVC_H */
