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

/* ------------------------------------------------ H.264 luma and chroma interpolation
 *
 * Motion-compensated prediction blocks by the H.264 interpolation processes.
 * Luma: quarter-sample offsets dx, dy in 0..3 with the 6-tap filter
 * (1, -5, 20, 20, -5, 1): half samples (sum + 16) >> 5, the centre sample from
 * the unrounded, unclamped sums of the other direction as (sum + 512) >> 10,
 * each clamped to 0..255 (0..2^bitDepth - 1 for 16u); quarter samples are
 * (p + q + 1) >> 1 of the two nearest clamped integer or half samples the
 * standard assigns. The computation is exact: no intermediate wraps.
 * Chroma: eighth-sample offsets 0..7, ((8-dx)(8-dy)A + dx(8-dy)B + (8-dx)dy C
 * + dx dy D + 32) >> 6 (no clamping needed).
 * The plain forms take the source at the block's integer position. A luma
 * form reads columns -2 .. width+2 of its rows when dx != 0 (else columns
 * 0 .. width-1) and rows -2 .. height+2 when dy != 0 (else rows 0 ..
 * height-1); a chroma form reads one more column when dx != 0 and one more row
 * when dy != 0. The caller guarantees those samples exist, except where a Top,
 * Bottom or Block form replicates the picture's edges itself.
 * 8u widths are checked permissively: luma widths with bits only in {4, 8, 16}
 * pass and select the kernel by (width * 2) & 48, so 0 and 4 produce 4
 * columns, 8 and 12 produce 8, 16 to 28 produce 16; chroma widths with bits
 * only in {2, 4, 8} select by width & 12: 0 and 2 produce 2 columns, 4 and 6
 * produce 4, 8 to 14 produce 8. A height of zero or below (that passes the
 * check) writes nothing. 16u forms loop over exactly the given width. */

/** Parameters of the 16-bit plain, Top and Bottom forms. Steps count elements (16-bit samples). */
typedef struct {
  const uint16_t* pSrc; /* source sample at the block's integer position */
  int32_t srcStep;      /* source row step, elements */
  uint16_t* pDst;       /* destination block */
  int32_t dstStep;      /* destination row step, elements */
  int32_t dx;           /* horizontal fraction: luma 0..3, chroma 0..7 */
  int32_t dy;           /* vertical fraction: luma 0..3, chroma 0..7 */
  int32_t width;        /* block width */
  int32_t height;       /* block height */
  int32_t bitDepth;     /* luma results clamp to 0..(1 << bitDepth) - 1 (depths outside 1..16 act as the nearest); unused by chroma */
} HuxInterpolation16u;

/** Parameters of the Block forms: the whole reference plane(s), the block's place and its motion vector.
 *  Pointers address 8-bit samples in the 8u forms and 16-bit samples in the 16u forms. */
typedef struct {
  const void* pSrc[2]; /* sample (0,0) of the reference picture: luma, or the two chroma planes */
  int32_t srcStep;     /* reference row step (bytes for 8u, elements for 16u), both planes */
  void* pDst[2];       /* destination block(s): luma, or the two chroma blocks */
  int32_t dstStep;     /* destination row step, both planes */
  int32_t frameWidth;  /* picture width in samples of this plane */
  int32_t frameHeight; /* picture height */
  int32_t blockWidth;
  int32_t blockHeight;
  int32_t blockX;      /* block position in the picture, samples */
  int32_t blockY;
  int32_t mvX;         /* motion vector: luma quarter samples, chroma eighth samples */
  int32_t mvY;
  int32_t bitDepth;    /* 16u forms: clamp depth as in HuxInterpolation16u */
} HuxInterpolationBlock;

/**
 * @brief Luma prediction block at quarter-sample offset (dx, dy), 8-bit.
 *
 * Arithmetic and the samples read as in the section introduction; no step check (negative steps walk upwards).
 * @param pSrc    source sample at the block's integer position
 * @param srcStep source row step, bytes
 * @param pDst    destination block, out
 * @param dstStep destination row step, bytes
 * @param dx, dy  quarter-sample fractions 0..3
 * @param roi     width (bits only in {4, 8, 16}; the kernel chosen by (width * 2) & 48) and height (a multiple of 4)
 * @retval huxErrNullPtr  pSrc or pDst is null
 * @retval huxErrBadArg   dx or dy outside 0..3 (tested unsigned: negatives fail)
 * @retval huxErrSize     roi.height not a multiple of 4, or roi.width & ~28 not zero
 * @retval huxOk          the block was written
 */
HUX_API HuxResult HUX_STDCALL huxiInterpolateLuma_H264_8u_C1R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, int32_t dx, int32_t dy, HuxSize roi);
/**
 * @brief As huxiInterpolateLuma_H264_8u_C1R, replicating the picture's first row for rows above it.
 *
 * The picture's first row is pSrc + outPixels * srcStep (outPixels: block rows above the picture; zero or
 * negative when the block starts inside it). Every row the filter reaches above that row reads that row instead;
 * rows are gathered into a stack area first. Columns are not treated: the caller guarantees them.
 * @param outPixels  rows of the block above the picture's first row (signed)
 * @retval huxErrNullPtr, huxErrBadArg, huxErrSize, huxOk  as huxiInterpolateLuma_H264_8u_C1R
 */
HUX_API HuxResult HUX_STDCALL huxiInterpolateLumaTop_H264_8u_C1R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, int32_t dx, int32_t dy, int32_t outPixels, HuxSize roi);
/**
 * @brief As huxiInterpolateLuma_H264_8u_C1R, replicating the picture's last row for rows below it.
 *
 * The picture's last row is block row roi.height - 1 - outPixels; every row the filter reaches below it reads
 * that row instead (so with outPixels >= roi.height + 2 every row is a copy of it).
 * @param outPixels  rows of the block below the picture's last row (signed)
 * @retval huxErrNullPtr, huxErrBadArg, huxErrSize, huxOk  as huxiInterpolateLuma_H264_8u_C1R
 */
HUX_API HuxResult HUX_STDCALL huxiInterpolateLumaBottom_H264_8u_C1R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, int32_t dx, int32_t dy, int32_t outPixels, HuxSize roi);
/**
 * @brief Luma prediction block of 16-bit samples at quarter-sample offset (dx, dy).
 *
 * Results clamp to 0..(1 << bitDepth) - 1. Samples read as in the section introduction, steps in elements.
 * @param p  parameter block (pSrc, srcStep, pDst, dstStep, dx, dy, width, height, bitDepth)
 * @retval huxErrNullPtr  p, p->pSrc or p->pDst is null
 * @retval huxErrStep     srcStep < width or dstStep < width
 * @retval huxErrBadArg   dx outside 0..3, then dy outside 0..3
 * @retval huxErrSize     height not 4, 8 or 16; width not 4, 8 or 16; width + height == 20 (4x16 and 16x4)
 * @retval huxOk          the block was written
 */
HUX_API HuxResult HUX_STDCALL huxiInterpolateLuma_H264_16u_C1R(const HuxInterpolation16u* p);
/** @brief The 16-bit luma form with the Top form's first-row replication (outPixels as there).
 *  @retval huxErrNullPtr, huxErrStep, huxErrBadArg, huxErrSize, huxOk  as huxiInterpolateLuma_H264_16u_C1R */
HUX_API HuxResult HUX_STDCALL huxiInterpolateLumaTop_H264_16u_C1R(const HuxInterpolation16u* p, int32_t outPixels);
/** @brief The 16-bit luma form with the Bottom form's last-row replication (outPixels as there).
 *  @retval huxErrNullPtr, huxErrStep, huxErrBadArg, huxErrSize, huxOk  as huxiInterpolateLuma_H264_16u_C1R */
HUX_API HuxResult HUX_STDCALL huxiInterpolateLumaBottom_H264_16u_C1R(const HuxInterpolation16u* p, int32_t outPixels);
/**
 * @brief Chroma prediction block at eighth-sample offset (dx, dy), 8-bit.
 *
 * Bilinear filter of the section introduction; reads one more column when dx != 0, one more row when dy != 0.
 * @param dx, dy  eighth-sample fractions 0..7
 * @param roi     width (bits only in {2, 4, 8}; kernel by width & 12) and an even height
 * @retval huxErrNullPtr  pSrc or pDst is null
 * @retval huxErrBadArg   dx or dy above 7 (tested unsigned)
 * @retval huxErrSize     roi.height odd, or roi.width & ~14 not zero
 * @retval huxOk          the block was written
 */
HUX_API HuxResult HUX_STDCALL huxiInterpolateChroma_H264_8u_C1R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, int32_t dx, int32_t dy, HuxSize roi);
/** @brief The chroma form with the picture's first row (pSrc + outPixels * srcStep) replicated above it.
 *  @retval huxErrNullPtr, huxErrBadArg, huxErrSize, huxOk  as huxiInterpolateChroma_H264_8u_C1R */
HUX_API HuxResult HUX_STDCALL huxiInterpolateChromaTop_H264_8u_C1R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, int32_t dx, int32_t dy, int32_t outPixels, HuxSize roi);
/** @brief The chroma form with the picture's last row (block row roi.height - 1 - outPixels) replicated below it.
 *  @retval huxErrNullPtr, huxErrBadArg, huxErrSize, huxOk  as huxiInterpolateChroma_H264_8u_C1R */
HUX_API HuxResult HUX_STDCALL huxiInterpolateChromaBottom_H264_8u_C1R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, int32_t dx, int32_t dy, int32_t outPixels, HuxSize roi);
/**
 * @brief Chroma prediction block of 16-bit samples at eighth-sample offset (dx, dy); bitDepth is not read.
 *
 * @param p  parameter block; steps in elements
 * @retval huxErrNullPtr  p, p->pSrc or p->pDst is null
 * @retval huxErrStep     srcStep < 8, then dstStep < 8
 * @retval huxErrBadArg   dx outside 0..7, then dy outside 0..7
 * @retval huxErrSize     height not 2, 4, 8 or 16; width not 2, 4, 8 or 16
 * @retval huxOk          the block was written
 */
HUX_API HuxResult HUX_STDCALL huxiInterpolateChroma_H264_16u_C1R(const HuxInterpolation16u* p);
/** @brief The 16-bit chroma form with first-row replication (outPixels as in the Top forms).
 *  @retval huxErrNullPtr, huxErrStep, huxErrBadArg, huxErrSize, huxOk  as huxiInterpolateChroma_H264_16u_C1R */
HUX_API HuxResult HUX_STDCALL huxiInterpolateChromaTop_H264_16u_C1R(const HuxInterpolation16u* p, int32_t outPixels);
/** @brief The 16-bit chroma form with last-row replication (outPixels as in the Bottom forms).
 *  @retval huxErrNullPtr, huxErrStep, huxErrBadArg, huxErrSize, huxOk  as huxiInterpolateChroma_H264_16u_C1R */
HUX_API HuxResult HUX_STDCALL huxiInterpolateChromaBottom_H264_16u_C1R(const HuxInterpolation16u* p, int32_t outPixels);
/**
 * @brief Luma prediction block from a whole reference plane, any motion vector, 8-bit.
 *
 * Integer position (blockX + (mvX >> 2), blockY + (mvY >> 2)), fractions mvX & 3, mvY & 3 (arithmetic shifts).
 * When the samples the filter reaches lie inside the frameWidth x frameHeight picture the kernel runs on the plane;
 * otherwise they are first copied to a stack area, every sample outside the picture replaced by the nearest picture
 * sample (left/right of a row: that row's first/last sample; rows above/below: the first/last row). The vector may
 * point anywhere, even wholly outside the picture: only samples of the plane are read. Width classes as the plain form.
 * @param b  parameter block (pSrc[0], srcStep, pDst[0], dstStep, frame and block geometry, mvX, mvY)
 * @retval huxErrNullPtr  b, b->pSrc[0] or b->pDst[0] is null
 * @retval huxErrSize     blockHeight & 3 or blockWidth & ~28 not zero; frameWidth or frameHeight below 1
 * @retval huxOk          the block was written
 */
HUX_API HuxResult HUX_STDCALL huxiInterpolateLumaBlock_H264_8u_P1R(const HuxInterpolationBlock* b);
/** @brief The luma Block form on 16-bit samples, clamped by b->bitDepth; produces exactly blockWidth columns.
 *  @retval huxErrNullPtr, huxErrSize, huxOk  as huxiInterpolateLumaBlock_H264_8u_P1R */
HUX_API HuxResult HUX_STDCALL huxiInterpolateLumaBlock_H264_16u_P1R(const HuxInterpolationBlock* b);
/**
 * @brief Both chroma prediction blocks from whole reference planes, eighth-sample vector, 8-bit.
 *
 * Integer position (blockX + (mvX >> 3), blockY + (mvY >> 3)), fractions mvX & 7, mvY & 7; edges replicated as in
 * huxiInterpolateLumaBlock_H264_8u_P1R; both planes use the same geometry, one after the other.
 * @retval huxErrNullPtr  b, b->pSrc[0], b->pSrc[1], b->pDst[0] or b->pDst[1] is null
 * @retval huxErrSize     blockHeight odd or blockWidth & ~14 not zero; frameWidth or frameHeight below 1
 * @retval huxOk          both blocks were written
 */
HUX_API HuxResult HUX_STDCALL huxiInterpolateChromaBlock_H264_8u_P2R(const HuxInterpolationBlock* b);
/** @brief The chroma Block form on 16-bit samples; produces exactly blockWidth columns.
 *  @retval huxErrNullPtr, huxErrSize, huxOk  as huxiInterpolateChromaBlock_H264_8u_P2R */
HUX_API HuxResult HUX_STDCALL huxiInterpolateChromaBlock_H264_16u_P2R(const HuxInterpolationBlock* b);
/**
 * @brief Rounded average (a + b + 1) >> 1 of two prediction blocks, one step for all three.
 *
 * Writes exactly width x height samples (odd widths change no byte beyond the width).
 * @param width, height  2..16 each
 * @retval huxErrNullPtr  a pointer is null
 * @retval huxErrSize     width or height outside 2..16
 * @retval huxOk          the block was written
 */
HUX_API HuxResult HUX_STDCALL huxiInterpolateBlock_H264_8u_P2P1R(const uint8_t* pSrc1, const uint8_t* pSrc2, uint8_t* pDst, int32_t width, int32_t height, int32_t pitch);
/** @brief As huxiInterpolateBlock_H264_8u_P2P1R with a row step for each block.
 *  @retval huxErrNullPtr, huxErrSize, huxOk  as huxiInterpolateBlock_H264_8u_P2P1R */
HUX_API HuxResult HUX_STDCALL huxiInterpolateBlock_H264_8u_P3P1R(const uint8_t* pSrc1, const uint8_t* pSrc2, uint8_t* pDst, int32_t width, int32_t height, int32_t src1Step, int32_t src2Step, int32_t dstStep);
/**
 * @brief Pads a decoded plane in place by pels samples on every side, repeating its edge samples.
 *
 * mode 0 (frame): every row gets pels copies of its first sample on the left and of its last on the right; the
 * first padded row is then copied to the pels rows above, the last to the pels rows below. mode 1 (top field: rows
 * 0, 2, ...) and mode 2 (bottom field: rows 1, 3, ...) do the same on one field, stepping 2 * pitch: the top field
 * fills pels / 2 field rows above and (pels + 1) / 2 below, the bottom field the other way round, so the two passes
 * together fill pels rows on each side. The caller owns pels samples (rows) around the plane.
 * @param width   samples per row, at least 1
 * @param height  rows, even and at least 2
 * @param pitch   row step, bytes
 * @retval huxErrNullPtr  pSrcDst is null
 * @retval huxErrSize     height odd or below 2, or width below 1
 * @retval huxOk          pels is 0 (returned at once, mode not checked), or the plane was padded
 * @retval huxErrBadArg   mode not 0, 1 or 2, or pels negative
 */
HUX_API HuxResult HUX_STDCALL huxiExpandPlane_H264_8u_C1R(uint8_t* pSrcDst, int32_t width, int32_t height, int32_t pitch, int32_t pels, int32_t mode);

#ifdef __cplusplus
}
#endif

#endif /* HUXVC_H */
