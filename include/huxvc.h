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

/* ------------------------------------------------------- H.264 weighted prediction */
/* Weighted sample prediction: every formula below is evaluated exactly, as with
 * unbounded integers, for every weight, offset and shift value (not only the
 * standard's ranges), and the result is clamped to 0..255 (8u) or to
 * 0..(1 << bitDepth) - 1 (16u; bitDepth outside 0..16 is taken as the nearer
 * end). round(v, s) is (v + (1 << (s - 1))) >> s for s >= 1 and v for s = 0, with
 * an arithmetic shift. Unless stated otherwise, block widths and heights are 2,
 * 4, 8 or 16, and only the roi.width samples of each of the roi.height rows are
 * read or written. */

/** Parameter block of the 16-bit two-prediction forms. Steps count elements. */
typedef struct {
  const uint16_t* pSrc1; /**< first prediction */
  int32_t src1Step;      /**< its row step in elements */
  const uint16_t* pSrc2; /**< second prediction */
  int32_t src2Step;      /**< its row step in elements */
  uint16_t* pDst;        /**< destination (may be either source when it has that source's step) */
  int32_t dstStep;       /**< its row step in elements */
  int32_t width;         /**< block width */
  int32_t height;        /**< block height */
  int32_t bitDepth;      /**< sample bit depth: results clamped to 0..(1 << bitDepth) - 1 */
} HuxBidir16u;

/**
 * @brief Explicit weighting of one 8-bit prediction, in place.
 *
 * y = round(x * weight, logWD) + offset, clamped to 0..255 (with logWD = 0 there is
 * no rounding term: y = x * weight + offset).
 * @param pSrcDst     the prediction block, overwritten with the weighted one
 * @param srcDstStep  row step in bytes, at least roi.width
 * @param logWD       base-2 logarithm of the weight denominator (0..7 in H.264)
 * @param weight      weight (-128..127 in H.264)
 * @param offset      offset added after the shift (-128..127 for 8-bit video)
 * @param roi         block width and height, each 2, 4, 8 or 16
 * @retval huxErrNullPtr  pSrcDst is null
 * @retval huxErrStep     srcDstStep < roi.width
 * @retval huxErrSize     a dimension is not 2, 4, 8 or 16
 * @retval huxOk          the block was weighted
 */
HUX_API HuxResult HUX_STDCALL huxiUniDirWeightBlock_H264_8u_C1R(uint8_t* pSrcDst, int32_t srcDstStep, uint32_t logWD, int32_t weight, int32_t offset, HuxSize roi);
/**
 * @brief The same operation as huxiUniDirWeightBlock_H264_8u_C1R, under its in-place name.
 *
 * Arguments, arithmetic and statuses are those of huxiUniDirWeightBlock_H264_8u_C1R.
 * @param pSrcDst     the prediction block, overwritten with the weighted one
 * @param srcDstStep  row step in bytes, at least roi.width
 * @param logWD       base-2 logarithm of the weight denominator
 * @param weight      weight
 * @param offset      offset added after the shift
 * @param roi         block width and height, each 2, 4, 8 or 16
 * @retval huxErrNullPtr  pSrcDst is null
 * @retval huxErrStep     srcDstStep < roi.width
 * @retval huxErrSize     a dimension is not 2, 4, 8 or 16
 * @retval huxOk          the block was weighted
 */
HUX_API HuxResult HUX_STDCALL huxiUniDirWeightBlock_H264_8u_C1IR(uint8_t* pSrcDst, int32_t srcDstStep, uint32_t logWD, int32_t weight, int32_t offset, HuxSize roi);
/**
 * @brief Explicit weighting of one high-bit-depth prediction, in place.
 *
 * y = round(x * weight, logWD) + offset, clamped to 0..(1 << bitDepth) - 1. The offset is
 * used as given (a caller scales the standard's 8-bit offset by 1 << (bitDepth - 8)).
 * @param pSrcDst     the prediction block of 16-bit samples, overwritten
 * @param srcDstStep  row step in elements, at least roi.width
 * @param logWD       base-2 logarithm of the weight denominator
 * @param weight      weight
 * @param offset      offset added after the shift
 * @param roi         block width and height, each 2, 4, 8 or 16
 * @param bitDepth    sample bit depth (clamp bound)
 * @retval huxErrNullPtr  pSrcDst is null
 * @retval huxErrStep     srcDstStep < roi.width
 * @retval huxErrSize     a dimension is not 2, 4, 8 or 16
 * @retval huxOk          the block was weighted
 */
HUX_API HuxResult HUX_STDCALL huxiUnidirWeight_H264_16u_IP2P1R(uint16_t* pSrcDst, int32_t srcDstStep, uint32_t logWD, int32_t weight, int32_t offset, HuxSize roi, int32_t bitDepth);
/**
 * @brief Explicit weighting of two 8-bit predictions with one source step.
 *
 * y = ((x1 * weight1 + x2 * weight2 + (1 << logWD)) >> (logWD + 1)) + ((offset1 + offset2 + 1) >> 1),
 * clamped to 0..255. pDst may be either source when it has that source's step.
 * @param pSrc1    first prediction (x1)
 * @param pSrc2    second prediction (x2)
 * @param pDst     destination
 * @param srcStep  row step of both sources in bytes, at least roi.width
 * @param dstStep  destination row step in bytes, at least roi.width
 * @param logWD    base-2 logarithm of the weight denominator (0..7 in H.264)
 * @param weight1  weight of x1
 * @param offset1  offset of the first reference
 * @param weight2  weight of x2
 * @param offset2  offset of the second reference
 * @param roi      block width and height, each 2, 4, 8 or 16
 * @retval huxErrNullPtr  pSrc1, pSrc2 or pDst is null
 * @retval huxErrStep     srcStep or dstStep < roi.width
 * @retval huxErrSize     a dimension is not 2, 4, 8 or 16
 * @retval huxOk          the block was written
 */
HUX_API HuxResult HUX_STDCALL huxiBiDirWeightBlock_H264_8u_P2P1R(const uint8_t* pSrc1, const uint8_t* pSrc2, uint8_t* pDst, int32_t srcStep, int32_t dstStep, uint32_t logWD, int32_t weight1, int32_t offset1, int32_t weight2, int32_t offset2, HuxSize roi);
/**
 * @brief Explicit weighting of two 8-bit predictions, each source with its own step.
 *
 * The arithmetic of huxiBiDirWeightBlock_H264_8u_P2P1R.
 * @param pSrc1     first prediction (x1)
 * @param pSrc2     second prediction (x2)
 * @param pDst      destination
 * @param src1Step  row step of pSrc1 in bytes, at least roi.width
 * @param src2Step  row step of pSrc2 in bytes, at least roi.width
 * @param dstStep   destination row step in bytes, at least roi.width
 * @param logWD     base-2 logarithm of the weight denominator
 * @param weight1   weight of x1
 * @param offset1   offset of the first reference
 * @param weight2   weight of x2
 * @param offset2   offset of the second reference
 * @param roi       block width and height, each 2, 4, 8 or 16
 * @retval huxErrNullPtr  pSrc1, pSrc2 or pDst is null
 * @retval huxErrStep     a step < roi.width
 * @retval huxErrSize     a dimension is not 2, 4, 8 or 16
 * @retval huxOk          the block was written
 */
HUX_API HuxResult HUX_STDCALL huxiBiDirWeightBlock_H264_8u_P3P1R(const uint8_t* pSrc1, const uint8_t* pSrc2, uint8_t* pDst, int32_t src1Step, int32_t src2Step, int32_t dstStep, uint32_t logWD, int32_t weight1, int32_t offset1, int32_t weight2, int32_t offset2, HuxSize roi);
/**
 * @brief Implicit weighting of two 8-bit predictions with one source step.
 *
 * y = (x1 * weight1 + x2 * weight2 + 32) >> 6, clamped to 0..255. The weights of implicit
 * mode sum to 64; that is not checked.
 * @param pSrc1    first prediction (x1)
 * @param pSrc2    second prediction (x2)
 * @param pDst     destination
 * @param srcStep  row step of both sources in bytes, at least roi.width
 * @param dstStep  destination row step in bytes, at least roi.width
 * @param weight1  weight of x1
 * @param weight2  weight of x2
 * @param roi      block width and height, each 2, 4, 8 or 16
 * @retval huxErrNullPtr  pSrc1, pSrc2 or pDst is null
 * @retval huxErrStep     srcStep or dstStep < roi.width
 * @retval huxErrSize     a dimension is not 2, 4, 8 or 16
 * @retval huxOk          the block was written
 */
HUX_API HuxResult HUX_STDCALL huxiBiDirWeightBlockImplicit_H264_8u_P2P1R(const uint8_t* pSrc1, const uint8_t* pSrc2, uint8_t* pDst, int32_t srcStep, int32_t dstStep, int32_t weight1, int32_t weight2, HuxSize roi);
/**
 * @brief Implicit weighting of two 8-bit predictions, each source with its own step.
 *
 * The arithmetic of huxiBiDirWeightBlockImplicit_H264_8u_P2P1R.
 * @param pSrc1     first prediction (x1)
 * @param pSrc2     second prediction (x2)
 * @param pDst      destination
 * @param src1Step  row step of pSrc1 in bytes, at least roi.width
 * @param src2Step  row step of pSrc2 in bytes, at least roi.width
 * @param dstStep   destination row step in bytes, at least roi.width
 * @param weight1   weight of x1
 * @param weight2   weight of x2
 * @param roi       block width and height, each 2, 4, 8 or 16
 * @retval huxErrNullPtr  pSrc1, pSrc2 or pDst is null
 * @retval huxErrStep     a step < roi.width
 * @retval huxErrSize     a dimension is not 2, 4, 8 or 16
 * @retval huxOk          the block was written
 */
HUX_API HuxResult HUX_STDCALL huxiBiDirWeightBlockImplicit_H264_8u_P3P1R(const uint8_t* pSrc1, const uint8_t* pSrc2, uint8_t* pDst, int32_t src1Step, int32_t src2Step, int32_t dstStep, int32_t weight1, int32_t weight2, HuxSize roi);
/**
 * @brief Explicit weighting of two high-bit-depth predictions described by a parameter block.
 *
 * y = ((x1 * weight1 + x2 * weight2 + (1 << logWD)) >> (logWD + 1)) + ((offset1 + offset2 + 1) >> 1),
 * clamped to 0..(1 << bitDepth) - 1. Offsets are used as given.
 * @param pParams  blocks, element steps, size (each 2, 4, 8 or 16) and bit depth
 * @param logWD    base-2 logarithm of the weight denominator
 * @param weight1  weight of x1
 * @param offset1  offset of the first reference
 * @param weight2  weight of x2
 * @param offset2  offset of the second reference
 * @retval huxErrNullPtr  pParams, or its pSrc1, pSrc2 or pDst, is null
 * @retval huxErrStep     src1Step, src2Step or dstStep < width
 * @retval huxErrSize     width or height is not 2, 4, 8 or 16
 * @retval huxOk          the block was written
 */
HUX_API HuxResult HUX_STDCALL huxiBidirWeight_H264_16u_P2P1R(const HuxBidir16u* pParams, uint32_t logWD, int32_t weight1, int32_t offset1, int32_t weight2, int32_t offset2);
/**
 * @brief Implicit weighting of two high-bit-depth predictions described by a parameter block.
 *
 * y = (x1 * weight1 + x2 * weight2 + 32) >> 6, clamped to 0..(1 << bitDepth) - 1.
 * @param pParams  blocks, element steps, size (each 2, 4, 8 or 16) and bit depth
 * @param weight1  weight of x1
 * @param weight2  weight of x2
 * @retval huxErrNullPtr  pParams, or its pSrc1, pSrc2 or pDst, is null
 * @retval huxErrStep     src1Step, src2Step or dstStep < width
 * @retval huxErrSize     width or height is not 2, 4, 8 or 16
 * @retval huxOk          the block was written
 */
HUX_API HuxResult HUX_STDCALL huxiBidirWeightImplicit_H264_16u_P2P1R(const HuxBidir16u* pParams, int32_t weight1, int32_t weight2);
/**
 * @brief Rounded average of two high-bit-depth predictions described by a parameter block.
 *
 * y = (x1 + x2 + 1) >> 1. Any width and height from 2 to 16 is accepted, not only powers of
 * two; steps are not checked (negative ones walk upwards); the bit depth is not used.
 * @param pParams  blocks, element steps and size
 * @retval huxErrNullPtr  pParams, or its pSrc1, pSrc2 or pDst, is null
 * @retval huxErrSize     width outside 2..16, then height outside 2..16
 * @retval huxOk          the block was written
 */
HUX_API HuxResult HUX_STDCALL huxiBidir_H264_16u_P2P1R(const HuxBidir16u* pParams);
/**
 * @brief Weighted average of two 8-bit blocks with a caller-given shift, into the second.
 *
 * y = round(x1 * weight1 + x2 * weight2, shift) + offset, clamped to 0..255; x1 from pSrc1,
 * x2 from pSrcDst, which receives y. A negative shift acts as 0.
 * @param pSrc1       first block (x1)
 * @param pSrcDst     second block (x2), overwritten with the result
 * @param srcDstStep  row step of both blocks in bytes, at least roi.width
 * @param weight1     weight of x1
 * @param weight2     weight of x2
 * @param shift       right shift of the rounded sum
 * @param offset      offset added after the shift
 * @param roi         block width and height, each 2, 4, 8 or 16
 * @retval huxErrNullPtr  pSrc1 or pSrcDst is null
 * @retval huxErrStep     srcDstStep < roi.width
 * @retval huxErrSize     a dimension is not 2, 4, 8 or 16
 * @retval huxOk          the block was written
 */
HUX_API HuxResult HUX_STDCALL huxiWeightedAverage_H264_8u_C1IR(const uint8_t* pSrc1, uint8_t* pSrcDst, int32_t srcDstStep, int32_t weight1, int32_t weight2, int32_t shift, int32_t offset, HuxSize roi);

#ifdef __cplusplus
}
#endif

#endif /* HUXVC_H */
