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

/* ------------------------------------------------------------- H.264 deblocking */
/*
 * In-loop deblocking of one plane of one macroblock, in place. Each call filters every edge of one
 * direction (VerEdge: the vertical edges, filtered across columns; HorEdge: the horizontal edges,
 * filtered across rows), from the macroblock's outer edge inwards (edge k = 0, 1, ...), each edge
 * from its first line to its last, so every edge sees what the previous one wrote. The caller
 * decides boundary strengths and thresholds; the library only filters.
 *
 * pSrcDst addresses the macroblock's top-left sample. The outer edge's p side lies left of (above)
 * it: luma reads 4 columns (rows) before it and writes 3, chroma reads and writes 2 (reads) and 1
 * (writes). Within the macroblock, luma reads all 16 columns (rows) and chroma those up to the q1
 * sample of its last edge.
 *
 * Per edge: alpha and beta come from pAlpha[e], pBeta[e]; bS bytes and tc0 values per segment of
 * samples along the edge:
 *   Luma (16x16):        edges 0,4,8,12; sample i in segment i>>2; bS pBS[4k+seg]; tc0 pThresholds[4k+seg];
 *                        e = 0 for k = 0, else 1.
 *   Chroma 4:2:0 (8x8):  edges 0,4; segment i>>1; bS pBS[8k+seg] (the bS of luma edges 0 and 2);
 *                        tc0 pThresholds[4k+seg]; e = k.
 *   Chroma 4:2:2 Hor:    edges 0,4,8,12 (8 wide); segment i>>1; bS pBS[4k+seg]; tc0 pThresholds[4k+seg];
 *                        e = 0 for k = 0, else 1.
 *   Chroma 4:2:2 Ver:    edges 0,4 (16 high); segment i>>2; bS pBS[8k+seg]; tc0 pThresholds[4k+seg]; e = k.
 *   Luma MBAFF:          the left edge only, 8 rows; segment i>>1; bS pBS[seg]; tc0 pThresholds[seg]; e = 0.
 *   Chroma MBAFF:        the left edge only, 4 rows; bS pBS[i]; tc0 pThresholds[i]; e = 0.
 * An edge whose four bS bytes are all 0 is passed over; a segment with bS 0 is left alone.
 *
 * A line p3 p2 p1 p0 | q0 q1 q2 q3 is filtered only when |p0-q0| < alpha, |p1-p0| < beta and
 * |q1-q0| < beta. bS exactly 4 selects the strong filter (on any edge, internal ones too), every
 * other non-zero value the normal one. With ap = |p2-p0| < beta, aq = |q2-q0| < beta (luma):
 *   strong, luma: if ap and |p0-q0| < (alpha>>2)+2: p0' = (p2+2p1+2p0+2q0+q1+4)>>3,
 *     p1' = (p2+p1+p0+q0+2)>>2, p2' = (2p3+3p2+p1+p0+q0+4)>>3; else p0' = (2p1+p0+q1+2)>>2;
 *     the q side likewise with aq.
 *   strong, chroma: p0' = (2p1+p0+q1+2)>>2, q0' = (2q1+q0+p1+2)>>2.
 *   normal: tc = tc0 + ap + aq (luma) or tc0 + 1 (chroma); d = ((q0-p0)*4 + (p1-q1) + 4) >> 3
 *     clamped to -tc..tc; p0' = p0 + d, q0' = q0 - d, each clamped to 0..255 (8u) or
 *     0..(1 << bitDepth)-1 (16u); luma only: if ap, p1' = p1 + clamp(-tc0, tc0,
 *     (p2 + ((p0+q0+1)>>1) - 2p1) >> 1), and q1 likewise with aq.
 * Thresholds are used as given, for 16u too: pass alpha, beta and tc0 already scaled for the bit
 * depth. Nothing but the null pointers is checked: the step, thresholds and bit depth are trusted.
 */

/** Arguments of the 8-bit 4:2:2 chroma forms, in the order of the six-argument forms. */
typedef struct {
  uint8_t* pSrcDst;            /* the macroblock's top-left sample, filtered in place */
  int32_t srcDstStep;          /* row step in bytes */
  const uint8_t* pAlpha;       /* [2]: outer edge, internal edges (see the table above) */
  const uint8_t* pBeta;        /* [2]: same indexing */
  const uint8_t* pThresholds;  /* tc0 per segment */
  const uint8_t* pBS;          /* bS per segment, four bytes per edge */
} HuxDeblockParams8u;

/** Arguments of the 16-bit forms: steps in elements, results clamped to 0..(1 << bitDepth)-1. */
typedef struct {
  uint16_t* pSrcDst;           /* the macroblock's top-left sample, filtered in place */
  int32_t srcDstStep;          /* row step in elements */
  const uint16_t* pAlpha;      /* [2] */
  const uint16_t* pBeta;       /* [2] */
  const uint16_t* pThresholds; /* tc0 per segment */
  const uint8_t* pBS;          /* bS per segment, four bytes per edge */
  int32_t bitDepth;            /* sample bit depth; values outside 0..16 act as the nearer end */
} HuxDeblockParams16u;

/**
 * @brief Filters the four vertical luma edges (columns 0, 4, 8, 12) of a 16x16 macroblock in place.
 *
 * Reads 16 rows of columns -4..15 and writes columns -3..14 (see the section introduction for the
 * filter, the bS/tc0 segments and the alpha/beta entries).
 * @param pSrcDst      top-left luma sample of the macroblock, in and out
 * @param srcDstStep   row step in bytes (any sign)
 * @param pAlpha       [2] alpha: outer edge, internal edges
 * @param pBeta        [2] beta, same indexing
 * @param pThresholds  [16] tc0, four per edge
 * @param pBS          [16] bS, four per edge
 * @retval huxErrNullPtr  when pSrcDst, pAlpha, pBeta, pThresholds or pBS (in this order) is null; nothing written
 * @retval huxOk          otherwise
 */
HUX_API HuxResult HUX_STDCALL huxiFilterDeblockingLuma_VerEdge_H264_8u_C1IR(uint8_t* pSrcDst, int32_t srcDstStep, const uint8_t* pAlpha, const uint8_t* pBeta, const uint8_t* pThresholds, const uint8_t* pBS);
/**
 * @brief Filters the four horizontal luma edges (rows 0, 4, 8, 12) of a 16x16 macroblock in place.
 *
 * Reads rows -4..15 of 16 columns and writes rows -3..14.
 * @param pSrcDst      top-left luma sample of the macroblock, in and out
 * @param srcDstStep   row step in bytes (any sign)
 * @param pAlpha       [2] alpha: outer edge, internal edges
 * @param pBeta        [2] beta, same indexing
 * @param pThresholds  [16] tc0, four per edge
 * @param pBS          [16] bS, four per edge
 * @retval huxErrNullPtr  when pSrcDst, pAlpha, pBeta, pThresholds or pBS (in this order) is null; nothing written
 * @retval huxOk          otherwise
 */
HUX_API HuxResult HUX_STDCALL huxiFilterDeblockingLuma_HorEdge_H264_8u_C1IR(uint8_t* pSrcDst, int32_t srcDstStep, const uint8_t* pAlpha, const uint8_t* pBeta, const uint8_t* pThresholds, const uint8_t* pBS);
/**
 * @brief Filters the two vertical edges (columns 0, 4) of an 8x8 4:2:0 chroma block in place.
 *
 * Reads 8 rows of columns -2..5 and writes columns -1, 0, 3, 4 (other bytes of that span may be
 * rewritten with their own values). Edge k takes pAlpha[k], pBeta[k], pBS[8k..8k+3] and
 * pThresholds[4k..4k+3], each byte for two rows.
 * @param pSrcDst      top-left chroma sample, in and out
 * @param srcDstStep   row step in bytes (any sign)
 * @param pAlpha       [2] alpha: edge 0, edge 1
 * @param pBeta        [2] beta, same indexing
 * @param pThresholds  [8] tc0, four per edge
 * @param pBS          [16] the luma bS bytes: 0..3 for edge 0, 8..11 for edge 1 (4..7, 12..15 unused)
 * @retval huxErrNullPtr  when pSrcDst, pAlpha, pBeta, pThresholds or pBS (in this order) is null; nothing written
 * @retval huxOk          otherwise
 */
HUX_API HuxResult HUX_STDCALL huxiFilterDeblockingChroma_VerEdge_H264_8u_C1IR(uint8_t* pSrcDst, int32_t srcDstStep, const uint8_t* pAlpha, const uint8_t* pBeta, const uint8_t* pThresholds, const uint8_t* pBS);
/**
 * @brief Filters the two horizontal edges (rows 0, 4) of an 8x8 4:2:0 chroma block in place.
 *
 * Reads rows -2..5 of 8 columns and writes rows -1, 0, 3, 4. Indexing as the vertical form.
 * @param pSrcDst      top-left chroma sample, in and out
 * @param srcDstStep   row step in bytes (any sign)
 * @param pAlpha       [2] alpha: edge 0, edge 1
 * @param pBeta        [2] beta, same indexing
 * @param pThresholds  [8] tc0, four per edge
 * @param pBS          [16] the luma bS bytes: 0..3 for edge 0, 8..11 for edge 1
 * @retval huxErrNullPtr  when pSrcDst, pAlpha, pBeta, pThresholds or pBS (in this order) is null; nothing written
 * @retval huxOk          otherwise
 */
HUX_API HuxResult HUX_STDCALL huxiFilterDeblockingChroma_HorEdge_H264_8u_C1IR(uint8_t* pSrcDst, int32_t srcDstStep, const uint8_t* pAlpha, const uint8_t* pBeta, const uint8_t* pThresholds, const uint8_t* pBS);
/**
 * @brief Filters the left luma edge of an MBAFF macroblock (8 rows) in place.
 *
 * Reads 8 rows of columns -4..3 and writes columns -3..2. Row i takes pBS[i>>1] and
 * pThresholds[i>>1]; alpha and beta entry 0 only.
 * @param pSrcDst      top-left luma sample of the 8 rows, in and out
 * @param srcDstStep   row step in bytes (any sign)
 * @param pAlpha       [1] alpha
 * @param pBeta        [1] beta
 * @param pThresholds  [4] tc0
 * @param pBS          [4] bS
 * @retval huxErrNullPtr  when pSrcDst, pAlpha, pBeta, pThresholds or pBS (in this order) is null; nothing written
 * @retval huxOk          otherwise
 */
HUX_API HuxResult HUX_STDCALL huxiFilterDeblockingLuma_VerEdge_MBAFF_H264_8u_C1IR(uint8_t* pSrcDst, int32_t srcDstStep, const uint8_t* pAlpha, const uint8_t* pBeta, const uint8_t* pThresholds, const uint8_t* pBS);
/**
 * @brief Filters the left chroma edge of an MBAFF macroblock (4 rows) in place.
 *
 * Reads 4 rows of columns -2..1 and writes columns -1 and 0. Row i takes pBS[i] and
 * pThresholds[i]; alpha and beta entry 0 only. Nothing else of the block is filtered.
 * @param pSrcDst      top-left chroma sample of the 4 rows, in and out
 * @param srcDstStep   row step in bytes (any sign)
 * @param pAlpha       [1] alpha
 * @param pBeta        [1] beta
 * @param pThresholds  [4] tc0
 * @param pBS          [4] bS
 * @retval huxErrNullPtr  when pSrcDst, pAlpha, pBeta, pThresholds or pBS (in this order) is null; nothing written
 * @retval huxOk          otherwise
 */
HUX_API HuxResult HUX_STDCALL huxiFilterDeblockingChroma_VerEdge_MBAFF_H264_8u_C1IR(uint8_t* pSrcDst, int32_t srcDstStep, const uint8_t* pAlpha, const uint8_t* pBeta, const uint8_t* pThresholds, const uint8_t* pBS);
/**
 * @brief Filters the two vertical edges (columns 0, 4) of an 8x16 4:2:2 chroma block in place.
 *
 * Reads 16 rows of columns -2..5 and writes columns -1, 0, 3, 4 (other bytes of that span may be
 * rewritten with their own values). Edge k takes alpha/beta entry k, pBS[8k + (i>>2)] and
 * pThresholds[4k + (i>>2)] for row i.
 * @param pDeblockInfo  the six arguments; pThresholds [8], pBS [16] (bytes 0..3 and 8..11 used)
 * @retval huxErrNullPtr  when pDeblockInfo, then its pSrcDst, pAlpha, pBeta, pThresholds or pBS, is null; nothing written
 * @retval huxOk          otherwise
 */
HUX_API HuxResult HUX_STDCALL huxiFilterDeblockingChroma422VerEdge_H264_8u_C1IR(const HuxDeblockParams8u* pDeblockInfo);
/**
 * @brief Filters the four horizontal edges (rows 0, 4, 8, 12) of an 8x16 4:2:2 chroma block in place.
 *
 * Reads rows -2..13 of 8 columns and writes rows 4k-1 and 4k. Edge k takes alpha/beta entry 0 for
 * k = 0 and 1 otherwise, pBS[4k + (i>>1)] and pThresholds[4k + (i>>1)] for column i. The strong
 * filter is chosen for a whole edge by its first bS byte: when pBS[4k] is 4, every segment of the
 * edge with a non-zero bS takes the strong filter; otherwise every non-zero segment takes the normal
 * one, a bS of 4 in a later segment included.
 * @param pDeblockInfo  the six arguments; pThresholds [16], pBS [16]
 * @retval huxErrNullPtr  when pDeblockInfo, then its pSrcDst, pAlpha, pBeta, pThresholds or pBS, is null; nothing written
 * @retval huxOk          otherwise
 */
HUX_API HuxResult HUX_STDCALL huxiFilterDeblockingChroma422HorEdge_H264_8u_C1IR(const HuxDeblockParams8u* pDeblockInfo);
/**
 * @brief Entry point of the 4:2:2 chroma MBAFF left edge (8u and 16u share it): does nothing.
 *
 * The operation is not provided; the pointer is not looked at (null included).
 * @param pDeblockInfo  ignored
 * @retval huxErrNotSupported  always
 */
HUX_API HuxResult HUX_STDCALL huxiFilterDeblockingChroma422VerEdgeMBAFF_H264_8u_C1IR(const void* pDeblockInfo);
/**
 * @brief The same entry point as huxiFilterDeblockingChroma422VerEdgeMBAFF_H264_8u_C1IR: does nothing.
 *
 * @param pDeblockInfo  ignored
 * @retval huxErrNotSupported  always
 */
HUX_API HuxResult HUX_STDCALL huxiFilterDeblockingChroma422VerEdgeMBAFF_H264_16u_C1IR(const void* pDeblockInfo);
/**
 * @brief Filters the four vertical luma edges (columns 0, 4, 8, 12) of a 16x16 macroblock of 16-bit samples in place.
 *
 * Reads 16 rows of columns -4..15 and writes columns -3..14. Steps in elements; normal-filter results clamped to 0..(1 << bitDepth)-1; thresholds used
 * as given (already scaled for the bit depth).
 * @param pDeblockInfo  the seven arguments; pThresholds [16], pBS [16]
 * @retval huxErrNullPtr  when pDeblockInfo, then its pSrcDst, pAlpha, pBeta, pThresholds or pBS, is null; nothing written
 * @retval huxOk          otherwise
 */
HUX_API HuxResult HUX_STDCALL huxiFilterDeblockingLumaVerEdge_H264_16u_C1IR(const HuxDeblockParams16u* pDeblockInfo);
/**
 * @brief Filters the four horizontal luma edges (rows 0, 4, 8, 12) of a 16x16 macroblock of 16-bit samples in place.
 *
 * Reads rows -4..15 of 16 columns and writes rows -3..14. Steps in elements; normal-filter results clamped to 0..(1 << bitDepth)-1; thresholds used
 * as given (already scaled for the bit depth).
 * @param pDeblockInfo  the seven arguments; pThresholds [16], pBS [16]
 * @retval huxErrNullPtr  when pDeblockInfo, then its pSrcDst, pAlpha, pBeta, pThresholds or pBS, is null; nothing written
 * @retval huxOk          otherwise
 */
HUX_API HuxResult HUX_STDCALL huxiFilterDeblockingLumaHorEdge_H264_16u_C1IR(const HuxDeblockParams16u* pDeblockInfo);
/**
 * @brief Filters the left luma edge of an MBAFF macroblock (8 rows) of 16-bit samples in place.
 *
 * Reads 8 rows of columns -4..3 and writes columns -3..2; row i takes pBS[i>>1] and pThresholds[i>>1], alpha/beta entry 0. Steps in elements; normal-filter results clamped to 0..(1 << bitDepth)-1; thresholds used
 * as given (already scaled for the bit depth).
 * Returns huxOk at once, changing nothing, when pAlpha[0] is 0 or the four bS bytes are all 0.
 * @param pDeblockInfo  the seven arguments; pThresholds [4], pBS [4]
 * @retval huxErrNullPtr  when pDeblockInfo, then its pSrcDst, pAlpha, pBeta, pThresholds or pBS, is null; nothing written
 * @retval huxOk          otherwise
 */
HUX_API HuxResult HUX_STDCALL huxiFilterDeblockingLumaVerEdgeMBAFF_H264_16u_C1IR(const HuxDeblockParams16u* pDeblockInfo);
/**
 * @brief Filters the two vertical edges (columns 0, 4) of an 8x8 4:2:0 chroma block of 16-bit samples in place.
 *
 * Reads 8 rows of columns -2..5 and writes columns -1, 0, 3, 4; edge k takes alpha/beta entry k, pBS[8k + (i>>1)], pThresholds[4k + (i>>1)]. Steps in elements; normal-filter results clamped to 0..(1 << bitDepth)-1; thresholds used
 * as given (already scaled for the bit depth).
 * @param pDeblockInfo  the seven arguments; pThresholds [8], pBS [16] (bytes 0..3 and 8..11 used)
 * @retval huxErrNullPtr  when pDeblockInfo, then its pSrcDst, pAlpha, pBeta, pThresholds or pBS, is null; nothing written
 * @retval huxOk          otherwise
 */
HUX_API HuxResult HUX_STDCALL huxiFilterDeblockingChromaVerEdge_H264_16u_C1IR(const HuxDeblockParams16u* pDeblockInfo);
/**
 * @brief Filters the two horizontal edges (rows 0, 4) of an 8x8 4:2:0 chroma block of 16-bit samples in place.
 *
 * Reads rows -2..5 of 8 columns and writes rows -1, 0, 3, 4; indexing as the vertical form. Steps in elements; normal-filter results clamped to 0..(1 << bitDepth)-1; thresholds used
 * as given (already scaled for the bit depth).
 * @param pDeblockInfo  the seven arguments; pThresholds [8], pBS [16] (bytes 0..3 and 8..11 used)
 * @retval huxErrNullPtr  when pDeblockInfo, then its pSrcDst, pAlpha, pBeta, pThresholds or pBS, is null; nothing written
 * @retval huxOk          otherwise
 */
HUX_API HuxResult HUX_STDCALL huxiFilterDeblockingChromaHorEdge_H264_16u_C1IR(const HuxDeblockParams16u* pDeblockInfo);
/**
 * @brief Filters the left chroma edge of an MBAFF macroblock (4 rows) of 16-bit samples in place.
 *
 * Reads 4 rows of columns -2..1 and writes columns -1 and 0; row i takes pBS[i] and pThresholds[i], alpha/beta entry 0. Steps in elements; normal-filter results clamped to 0..(1 << bitDepth)-1; thresholds used
 * as given (already scaled for the bit depth).
 * Returns huxOk at once, changing nothing, when pAlpha[0] is 0 or the four bS bytes are all 0.
 * @param pDeblockInfo  the seven arguments; pThresholds [4], pBS [4]
 * @retval huxErrNullPtr  when pDeblockInfo, then its pSrcDst, pAlpha, pBeta, pThresholds or pBS, is null; nothing written
 * @retval huxOk          otherwise
 */
HUX_API HuxResult HUX_STDCALL huxiFilterDeblockingChromaVerEdgeMBAFF_H264_16u_C1IR(const HuxDeblockParams16u* pDeblockInfo);
/**
 * @brief Filters the two vertical edges (columns 0, 4) of an 8x16 4:2:2 chroma block of 16-bit samples in place.
 *
 * Reads 16 rows of columns -2..5 and writes columns -1, 0, 3, 4; edge k takes alpha/beta entry k, pBS[8k + (i>>2)], pThresholds[4k + (i>>2)]. Steps in elements; normal-filter results clamped to 0..(1 << bitDepth)-1; thresholds used
 * as given (already scaled for the bit depth).
 * @param pDeblockInfo  the seven arguments; pThresholds [8], pBS [16] (bytes 0..3 and 8..11 used)
 * @retval huxErrNullPtr  when pDeblockInfo, then its pSrcDst, pAlpha, pBeta, pThresholds or pBS, is null; nothing written
 * @retval huxOk          otherwise
 */
HUX_API HuxResult HUX_STDCALL huxiFilterDeblockingChroma422VerEdge_H264_16u_C1IR(const HuxDeblockParams16u* pDeblockInfo);
/**
 * @brief Filters the four horizontal edges (rows 0, 4, 8, 12) of an 8x16 4:2:2 chroma block of 16-bit samples in place.
 *
 * Reads rows -2..13 of 8 columns and writes rows 4k-1 and 4k; edge k takes alpha/beta entry 0 for k = 0 and 1 otherwise, pBS[4k + (i>>1)], pThresholds[4k + (i>>1)]; the strong filter is chosen for a whole edge by its first bS byte, as in the 8u form. Steps in elements; normal-filter results clamped to 0..(1 << bitDepth)-1; thresholds used
 * as given (already scaled for the bit depth).
 * @param pDeblockInfo  the seven arguments; pThresholds [16], pBS [16]
 * @retval huxErrNullPtr  when pDeblockInfo, then its pSrcDst, pAlpha, pBeta, pThresholds or pBS, is null; nothing written
 * @retval huxOk          otherwise
 */
HUX_API HuxResult HUX_STDCALL huxiFilterDeblockingChroma422HorEdge_H264_16u_C1IR(const HuxDeblockParams16u* pDeblockInfo);

#ifdef __cplusplus
}
#endif

#endif /* HUXVC_H */
