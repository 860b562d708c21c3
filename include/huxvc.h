/**
 * @file huxvc.h
 * @brief huxvc: video-codec primitives with a flat C interface (the whole interface: read this file).
 *
 * Start with @ref conventions, then the family groups: @ref frame, @ref sad, @ref h264cavlc,
 * @ref h264xform. The core library is in huxcore.h (@ref core); the caller-side H.264 tables and
 * status texts in huxvc_tables.h (@ref tables).
 */

/**
 * @mainpage huxvc reference
 *
 * huxvc gives codec engineers the inner loops of their own H.264, MPEG-4, H.263, MPEG-1/2 and VC-1
 * decoders and encoders: block-matching metrics, entropy decoding of coefficient blocks,
 * dequantisation and inverse transforms. Every export does one bounded step on memory the caller
 * owns and returns a #HuxResult.
 *
 * - @ref conventions : calling rules, steps, selectors, the two bit cursors, VLC tables, the packed
 *   coefficient buffer, scans, statuses. Read once; the exports refer to it.
 * - @ref frame : statuses, types, version macros and the version record.
 * - @ref sad : block SADs for motion search.
 * - @ref h264cavlc : CAVLC and Exp-Golomb decoding.
 * - @ref h264xform : H.264 dequantisation and inverse transforms.
 * - @ref core : memory, thread count and cache size (huxcore.h).
 * - @ref tables : the standard's CAVLC tables built into caller memory, scans, status texts
 *   (huxvc_tables.h, header-only C99).
 */

/**
 * @page conventions Shared conventions
 *
 * @section calls Calling rules
 * - Plain C functions, callable from C99 and C++. On 32-bit x86 every export removes its own
 *   arguments from the stack (`HUX_STDCALL`); elsewhere the platform's usual convention applies.
 * - No initialisation call, no global state, no locks: every export is re-entrant and may run on
 *   several threads at once on distinct buffers. Nothing is allocated, logged or printed.
 * - No alignment is required of any pointer or step; aligned data takes faster paths with identical
 *   results.
 * - Arguments are checked in a fixed order: null pointers first (in argument order, then the
 *   pointers held behind pointer arguments), then bit offsets, then sizes and steps, then parameter
 *   ranges. The first failing check decides the status and nothing is written: not the output, not
 *   the cursor. Each export lists its statuses in that order. The only departures are documented
 *   where they occur: the CAVLC decoders check some table pointers (and one decoder most of its
 *   pointers) only when decoding first needs them, and stream errors found while decoding leave
 *   partial results, as each decoder states.
 * - Block functions work on whole blocks of the size in their name with no edge handling: every
 *   row and column a block touches (including the extra row and column that half-sample positions
 *   read) must be addressable. Nothing outside the stated area is read or written.
 *
 * @section names Names, element types and blocks
 * An export is named `huxi` + operation + block size (width x height, so 8x16 is 8 wide and 16
 * high) + codec tag + element types + layout. Element types: `8u`, `16u`, `16s`, `32s`, `32u` are
 * unsigned or signed integers of that width, `1u` a bit stream; a pair such as `16s8u` is source then
 * destination. Layout: `C1` one channel, `I` in place (one buffer is source and destination), `R` a
 * region with a row step.
 *
 * Coefficient blocks are packed and raster ordered (row-major: index = 4 * row + column for 4x4,
 * 8 * row + column for 8x8, 2 * row + column for the 2x4 chroma DC block, which is two wide and four
 * high).
 *
 * @section steps Row steps
 * A row step is the distance in bytes from one row to the next, also for 16-bit and 32-bit samples
 * (a 16x16 block of 16-bit samples in a 16-sample-wide picture has a step of 32). Steps are signed;
 * where an export does not check its steps (the block SADs, the prediction and destination steps of
 * the H.264 reconstruction forms) a negative step walks the picture upwards. Exports that check a
 * step say so (#huxErrStep).
 *
 * @section selectors Half-sample selectors
 * - `mcType` (block SADs; later also the difference and motion-compensation families): 0 integer
 *   position; 4 vertical half-sample (a row and the row below); 8 horizontal half-sample (a column and
 *   the next); 12 diagonal (the four neighbours). The block SADs use mcType >> 2, so bits 0 and 1 are
 *   ignored (5 acts as 4) and values outside 0 to 15 are outside the interface. Values 4 and 12 read
 *   one row below the block, 8 and 12 one column right of it.
 * - `acc` (the later copy and interpolate-average functions): 0 integer, 1 horizontal half,
 *   2 vertical half, 3 both; only bits 0 and 1 are read. Note that acc 1 is horizontal while mcType 4
 *   is vertical: the two encodings differ.
 * - `roundControl` (the later motion-compensation functions): bit 0 only; 0 rounds halves up,
 *   1 rounds them down.
 *
 * @section wordcursor Word-form bit cursor
 * The H.264 stream readers take a cursor as two arguments: `uint32_t** ppBitStream` (the caller's
 * pointer to the current word) and `int32_t* pOffset` (the bit offset in that word). Both are updated
 * in place, so successive calls continue where the last one stopped.
 * - The stream is an array of native 32-bit words (little-endian on x86). Bits are read from bit 31
 *   of a word down to bit 0, then from bit 31 of the next word. A byte stream must therefore be
 *   regrouped four bytes to a word, the first byte in bits 31..24 (on a little-endian machine: load
 *   each word and swap its bytes).
 * - The offset is the index, counted from the least significant bit, of the next bit to read:
 *   31 = nothing read yet in this word, 0 = only bit 0 left. Start a stream with the pointer at its
 *   first word and offset 31. After every call the cursor points just behind the last bit consumed;
 *   bits consumed = 32 * (word pointer - first word) + 31 - offset.
 * - Table decoders look ahead: a lookup reads as many bits as its table level is wide (up to 32 bits
 *   in all) and gives back what the code did not use. A call may therefore load the word after the
 *   one holding the last bit it consumes. End every stream buffer with at least one padding word.
 * - Prefixes (level_prefix of CAVLC levels, the leading zeros of Exp-Golomb codes) are counted up to
 *   the next 1 bit with no limit, and a level prefix p of 16 or more is followed by p - 3 suffix bits.
 *   Conforming data stays within the stream (an RBSP ends with a 1 bit), but a damaged stream with a
 *   long run of 0 bits carries a call that far and further. When decoding untrusted data, pad with
 *   0xFFFFFFFF words (a 1 bit ends any run) covering the longest zero run the data may hold, and check
 *   the cursor against the end after each call.
 * - The Exp-Golomb decoders check the offset (0 to 31, else #huxErrBadArg); the CAVLC decoders do not
 *   check it and use its low five bits.
 *
 * @section bytecursor Byte-form bit cursor
 * The MPEG-4, H.263 and H.261 readers and writers of later families take `uint8_t** ppBitStream` and
 * `int32_t* pBitOffset`: bits are read from the most significant bit of each byte (the byte stream as
 * it stands); the offset counts the bits of the current byte already consumed, 0 to 7 (0: the byte's
 * most significant bit is next). Offsets outside 0 to 7 return #huxErrBitOffset. Writers keep the
 * bits before the offset and store whole bytes, so the bits behind the last one written are zero.
 *
 * @section vlctables VLC decoding tables
 * The CAVLC decoders hold none of the standard's code tables: the caller passes each coeff_token,
 * total_zeros and run_before table as an array of 32-bit words (huxH264BuildCavlcTables() in
 * huxvc_tables.h builds them all; huxVlcBuild() builds any prefix code).
 * - Word 0: n, the number of stream bits the first level examines (1 to 16 in practice).
 * - Word 1 + v: the entry for the n-bit value v (2^n entries).
 * - An entry with bit 7 clear is final: bits 8..31 hold the decoded value and bits 0..6 the number of
 *   examined bits that are not part of the code word (given back to the stream).
 * - An entry with bit 7 set links to a sub-table: bits 8..31 hold its word index counted from word 0
 *   of the table passed (not of the current level). A sub-table has the same form (its word 0 is the
 *   number of further bits it examines). Lookup continues until a final entry; only that entry's
 *   give-back is applied, so a code's length is the bits examined by all levels minus it.
 * - The marker 0xF0F1 in bits 8..23 of a coeff_token value, or as the whole value (bits 8..31) of a
 *   total_zeros or run_before entry, marks a code word the stream must not contain: decoding fails
 *   with #huxErrVLCCode. So does a chain of links that would examine more than 32 bits (a malformed
 *   table whose links loop).
 * - Values: coeff_token holds TrailingOnes (0 to 3) in bits 8..15 and TotalCoeff in bits 16..23;
 *   total_zeros and run_before hold their value.
 * - Tables are trusted: the library does not check them, and a link or a width that leads outside
 *   the caller's array makes the decoder read there. Indices computed from stream bits are bounded.
 *
 * coeff_token tables by nC (the predicted coefficient count the caller computes from the
 * neighbouring blocks):
 * | nC            | table                                                      |
 * |---------------|------------------------------------------------------------|
 * | 0, 1          | ppTblCoeffToken[0] of the 4x4 decoders                      |
 * | 2, 3          | ppTblCoeffToken[1]                                          |
 * | 4 to 7        | ppTblCoeffToken[2]                                          |
 * | 8 and above   | none: a 6-bit fixed-length token, no table is read           |
 * | -1            | the 2x2 (4:2:0) chroma DC table, pTblCoeffToken of its decoders |
 * | -2            | the 2x4 (4:2:2) chroma DC table, pTblCoeffToken of its decoders |
 *
 * total_zeros tables are passed as an array indexed by TotalCoeff (entry 0 is never read; entries 1 to
 * maxNumCoeff - 1 are: 1 to 15 for 4x4 blocks, 1 to 3 for 2x2, 1 to 7 for 2x4 chroma DC).
 * run_before tables are passed as an array indexed by zerosLeft: entries 1 to 6 hold the standard's
 * tables for zerosLeft 1 to 6 and the table for zerosLeft above 6 is repeated at every index from 7
 * to 14 (the 4x4 decoders read indices 1 to 14, the 2x4 decoders 1 to 6, the 2x2 decoders 1 and 2).
 * A null entry is detected only when the decoding needs it (#huxErrNullPtr, see each decoder).
 *
 * @section packedbuf Packed coefficient buffer
 * The CAVLC decoders append each decoded block to one caller-owned buffer, passed as a pointer to
 * the caller's pointer to its next free entry (`ppDstCoeffs`). A block holding at least one
 * coefficient is cleared, its levels are written at their raster positions (the scan already
 * undone) and the caller's pointer advances by the block's length: 16 entries for a 4x4 block, 4 for
 * a 2x2 chroma DC block, 8 for a 2x4 chroma DC block (two wide, four high). A block without
 * coefficients writes nothing and leaves the pointer where it was, so only coded blocks occupy the
 * buffer; the returned counts tell the caller which blocks are there (the later macroblock
 * reconstruction functions read the buffer back in the same order, guided by the coded block
 * pattern). Entries are signed 16-bit (`_1u16s`) or signed 32-bit (`_1u32s`, high bit depth).
 *
 * @section scans Scans and maxNumCoeff
 * A scan is an array of 16 `int32_t` raster indices (0 to 15): entry p gives the raster position of
 * the coefficient at scan position p. Pass huxH264Zigzag4x4 for frame blocks or huxH264FieldScan4x4 for
 * field blocks (huxvc_tables.h). Only the low four bits of an entry are used. The chroma DC decoders
 * use fixed orders: raster order for 2x2, and 0, 2, 1, 4, 6, 3, 5, 7 for 2x4.
 *
 * maxNumCoeff is 16 for a block that codes its DC (luma 4x4 of non-Intra-16x16 macroblocks,
 * Intra 16x16 DC) and 15 for an AC block whose DC is coded separately (Intra 16x16 AC, chroma AC):
 * then scan positions are counted from 1, entry 0 of the scan is never used and the raster position
 * it names is left 0, and total_zeros is read only when TotalCoeff is below 15.
 *
 * @section statuses Statuses
 * #HuxResult is 0 for success, negative for errors (nothing written unless the export says
 * otherwise), positive for warnings (the work was done; something is to be noted).
 * | status                     | value | returned today by |
 * |----------------------------|-------|-------------------|
 * | #huxOk                     | 0     | every export |
 * | #huxErrNullPtr             | -8    | every export that takes a pointer |
 * | #huxErrBadArg              | -5    | Exp-Golomb decoders (bit offset above 31) |
 * | #huxErrSize                | -6    | candidate-line SADs (fewer than 8 candidates) |
 * | #huxErrOutOfRange          | -11   | 4x4 CAVLC decoders (maxNumCoeff, nC), H.264 transforms (QP, bit depth) |
 * | #huxErrStep                | -14   | huxiDequantTransformResidual_H264_16s_C1I() |
 * | #huxErrVLCCode             | -74   | all six CAVLC decoders (a code word the table marks invalid) |
 * | #huxErrQuantParam          | -192  | the two H.264 8x8 dequantisers (QP / 6 out of range) |
 *
 * The other thirteen statuses are returned by no export yet; they belong to families being added
 * (intra prediction, motion compensation, MPEG-4/H.263 coefficient decoding and quantisation,
 * MPEG-2, VC-1, pre- and post-processing) and are part of the interface now so that their values
 * never change: #huxWrnOddSize, #huxWrnNoNeighbour, #huxWrnNoOperation, #huxErrNotSupported,
 * #huxErrMemAlloc, #huxErrDivByZero, #huxErrLevelRange, #huxErrContextMismatch,
 * #huxErrModeSelector, #huxErrScaleFactor, #huxErrNoNeighbour, #huxErrCoeffStream,
 * #huxErrBitOffset. Two names read oddly: #huxErrQuantParam (-192) is the MPEG-4/H.263 quantiser's
 * status (a QP outside 1 to 31), and the H.264 8x8 dequantisers return it too, for their QP / 6
 * argument, while every other H.264 QP check returns #huxErrOutOfRange; and #huxErrVLCCode is used by
 * the H.264 and MPEG-1 table decoders, whereas the MPEG-4/H.263/H.261 and MPEG-2 decoders will
 * report a bad stream as #huxErrCoeffStream. huxStatusText() in huxvc_tables.h names every status.
 */

#ifndef HUXVC_H
#define HUXVC_H

#include <stdint.h>

#include "huxcore.h"

#ifndef HUX_API
/** Marks a huxvc export (default symbol visibility); define it before including to override. */
#  if defined(__GNUC__) || defined(__clang__)
#    define HUX_API __attribute__((visibility("default")))
#  else
#    define HUX_API
#  endif
#endif

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @defgroup frame Library frame: statuses, types, version
 * @brief The status type and its values, HuxSize, the version macros and the version record.
 * @{
 */

/* ------------------------------------------------------------------ version */

/** Major version: the shared library's SONAME (libhuxvc.so.6); changes break the interface. */
#define HUXVC_VERSION_MAJOR 6
/** Minor version: exports added without breaking existing callers. */
#define HUXVC_VERSION_MINOR 0
/** Patch version: fixes only. The version record's majorBuild field holds the same number. */
#define HUXVC_VERSION_PATCH 167
/** The version as one comparable number, major * 1000000 + minor * 1000 + patch (6.0.167 is 6000167);
 *  compile-time checks such as `#if HUXVC_VERSION >= 6000167` use it. huxvcGetLibVersion() gives the
 *  version of the library actually loaded. */
#define HUXVC_VERSION (HUXVC_VERSION_MAJOR * 1000000 + HUXVC_VERSION_MINOR * 1000 + HUXVC_VERSION_PATCH)

/* ------------------------------------------------------------------ statuses */

/** Status of every export but huxvcGetLibVersion(): 0 success, negative errors, positive warnings.
 *  Which exports return which: @ref statuses. */
typedef int32_t HuxResult;

/** The status values (the complete set; an export returns only those it lists). */
enum {
  huxWrnOddSize = 35,           /**< odd picture width or height; the even part was processed (no export yet) */
  huxWrnNoNeighbour = 11,       /**< a 4x4 intra mode used 128 for an absent neighbour sample (no export yet) */
  huxWrnNoOperation = 1,        /**< a mode outside its set on a path that does nothing; nothing written (no export yet) */
  huxOk = 0,                    /**< success */
  huxErrNotSupported = -2,      /**< the operation is not provided for these arguments (no export yet) */
  huxErrBadArg = -5,            /**< an argument outside its set: a word-form bit offset above 31 */
  huxErrSize = -6,              /**< a size, count or region that is not positive or does not fit */
  huxErrNullPtr = -8,           /**< a required pointer, or a pointer held behind one, is null */
  huxErrMemAlloc = -9,          /**< the core library's allocator failed (no export yet) */
  huxErrDivByZero = -10,        /**< a divisor argument is zero (no export yet) */
  huxErrOutOfRange = -11,       /**< a value outside its legal range: an H.264 QP, bit depth, nC or coefficient count */
  huxErrLevelRange = -13,       /**< a forward-quantised level exceeds 2063 (no export yet) */
  huxErrStep = -14,             /**< a row step smaller than the block width in bytes */
  huxErrContextMismatch = -17,  /**< a state block's tag word is not the expected one (no export yet) */
  huxErrModeSelector = -22,     /**< a mode selector outside {1, 2} (no export yet) */
  huxErrScaleFactor = -23,      /**< a down-scaling factor other than 2, 4 or 8 (no export yet) */
  huxErrVLCCode = -74,          /**< the stream holds a code word the caller's table marks as invalid */
  huxErrNoNeighbour = -117,     /**< an intra mode needs a neighbour marked absent (no export yet) */
  huxErrCoeffStream = -191,     /**< an invalid MPEG-4/H.263/H.261/MPEG-2 coefficient stream (no export yet) */
  huxErrQuantParam = -192,      /**< a quantisation parameter outside its range: the MPEG-4/H.263 QP outside 1 to 31,
                                     and the QP / 6 argument of the H.264 8x8 dequantisers */
  huxErrBitOffset = -193        /**< a byte-form bit offset outside 0 to 7 (no export yet) */
};

/* --------------------------------------------------------------------- types */

/** A width and a height, passed by value (two argument words, width first). */
typedef struct {
  int32_t width;   /**< in samples */
  int32_t height;  /**< in rows */
} HuxSize;

/** The library's constant version record. */
typedef struct {
  int32_t major;         /**< 6, as #HUXVC_VERSION_MAJOR */
  int32_t minor;         /**< 0, as #HUXVC_VERSION_MINOR */
  int32_t majorBuild;    /**< 167, as #HUXVC_VERSION_PATCH */
  int32_t build;         /**< 638 (the build counter; the version text's 167.32 is a separate label) */
  char targetCpu[4];     /**< processor variant code: "w7" (the SSE2 build) and two zero bytes */
  const char* Name;      /**< library file name of this variant, "huxvcw7-6.0.dll" */
  const char* Version;   /**< version text, "6.0 Update 1 build 167.32" */
  const char* BuildDate; /**< build date text, "Nov 25 2008" */
} HuxLibraryVersion;

/**
 * @brief Returns the library's constant version record.
 *
 * The one export that returns no #HuxResult. It never fails; every call returns the same pointer,
 * valid while the library is loaded. The record's text fields identify this processor variant of
 * the interface and are returned exactly as they stand (the version text's "build 167.32" and the
 * numeric 167 and 638 are separate labels, neither derived from the other).
 * @return the record; never null; do not write through it or free it.
 */
HUX_API const HuxLibraryVersion* HUX_STDCALL huxvcGetLibVersion(void);

/** @} */

/* ----------------------------------------------------------- block SADs */
/**
 * @defgroup sad Block SADs
 * @brief Sums of absolute differences for motion search: single blocks at integer or half-sample
 *        positions, the sub-blocks of a macroblock, lines of candidates, frame/field activity.
 *
 * Current block first, reference second. Steps are in bytes, signed and never checked (see
 * @ref steps); block sizes are fixed by the name; only the pointers are checked. mcType is the
 * half-sample selector of @ref selectors. Half-sample positions of the 8-bit blocks are exact
 * ((a + b + 1) >> 1, (a + b + c + d + 2) >> 2); those of 16-bit samples add with saturation at 65535
 * before the shift, so they are exact for samples of up to 14 bits. No sum overflows its result.
 * @{
 */

/**
 * @brief SAD of a 16x16 block of 8-bit samples, integer or half-sample reference.
 *
 * Reads the 16x16 current block and the 16x16 reference block, plus one more row below it
 * (mcType 4, 12) and one more column right of it (mcType 8, 12).
 * @param pSrc    current block, 16x16 8-bit samples
 * @param srcStep current block's row step in bytes
 * @param pRef    reference block (the candidate's top-left integer sample)
 * @param refStep reference row step in bytes
 * @param[out] pSAD  the sum of |current - reference| over the block
 * @param mcType  0 integer, 4 vertical, 8 horizontal, 12 diagonal half-sample position (mcType >> 2 is used)
 * @retval huxErrNullPtr pSrc, pRef or pSAD is null
 * @retval huxOk         the SAD was written
 */
HUX_API HuxResult HUX_STDCALL huxiSAD16x16_8u32s(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef, int32_t refStep, int32_t* pSAD, int32_t mcType);
/**
 * @brief SAD of a 16x8 block of 8-bit samples, integer or half-sample reference.
 *
 * Reads the 16x8 current block and the 16x8 reference block, plus one more row below it
 * (mcType 4, 12) and one more column right of it (mcType 8, 12).
 * @param pSrc    current block, 16x8 8-bit samples
 * @param srcStep current block's row step in bytes
 * @param pRef    reference block (the candidate's top-left integer sample)
 * @param refStep reference row step in bytes
 * @param[out] pSAD  the sum of |current - reference| over the block
 * @param mcType  0 integer, 4 vertical, 8 horizontal, 12 diagonal half-sample position (mcType >> 2 is used)
 * @retval huxErrNullPtr pSrc, pRef or pSAD is null
 * @retval huxOk         the SAD was written
 */
HUX_API HuxResult HUX_STDCALL huxiSAD16x8_8u32s_C1R(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef, int32_t refStep, int32_t* pSAD, int32_t mcType);
/**
 * @brief SAD of a 8x8 block of 8-bit samples, integer or half-sample reference.
 *
 * Reads the 8x8 current block and the 8x8 reference block, plus one more row below it
 * (mcType 4, 12) and one more column right of it (mcType 8, 12).
 * @param pSrc    current block, 8x8 8-bit samples
 * @param srcStep current block's row step in bytes
 * @param pRef    reference block (the candidate's top-left integer sample)
 * @param refStep reference row step in bytes
 * @param[out] pSAD  the sum of |current - reference| over the block
 * @param mcType  0 integer, 4 vertical, 8 horizontal, 12 diagonal half-sample position (mcType >> 2 is used)
 * @retval huxErrNullPtr pSrc, pRef or pSAD is null
 * @retval huxOk         the SAD was written
 */
HUX_API HuxResult HUX_STDCALL huxiSAD8x8_8u32s_C1R(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef, int32_t refStep, int32_t* pSAD, int32_t mcType);
/**
 * @brief SAD of a 8x16 block of 8-bit samples, integer position (mcType is ignored).
 *
 * Reads exactly the two 8x16 blocks.
 * @param pSrc    current block, 8x16 8-bit samples
 * @param srcStep current block's row step in bytes
 * @param pRef    reference block (the candidate's top-left integer sample)
 * @param refStep reference row step in bytes
 * @param[out] pSAD  the sum of |current - reference| over the block
 * @param mcType  ignored (any value)
 * @retval huxErrNullPtr pSrc, pRef or pSAD is null
 * @retval huxOk         the SAD was written
 */
HUX_API HuxResult HUX_STDCALL huxiSAD8x16_8u32s_C1R(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef, int32_t refStep, int32_t* pSAD, int32_t mcType);
/**
 * @brief SAD of a 8x4 block of 8-bit samples, integer position (mcType is ignored).
 *
 * Reads exactly the two 8x4 blocks.
 * @param pSrc    current block, 8x4 8-bit samples
 * @param srcStep current block's row step in bytes
 * @param pRef    reference block (the candidate's top-left integer sample)
 * @param refStep reference row step in bytes
 * @param[out] pSAD  the sum of |current - reference| over the block
 * @param mcType  ignored (any value)
 * @retval huxErrNullPtr pSrc, pRef or pSAD is null
 * @retval huxOk         the SAD was written
 */
HUX_API HuxResult HUX_STDCALL huxiSAD8x4_8u32s_C1R(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef, int32_t refStep, int32_t* pSAD, int32_t mcType);
/**
 * @brief SAD of a 4x8 block of 8-bit samples, integer position (mcType is ignored).
 *
 * Reads exactly the two 4x8 blocks.
 * @param pSrc    current block, 4x8 8-bit samples
 * @param srcStep current block's row step in bytes
 * @param pRef    reference block (the candidate's top-left integer sample)
 * @param refStep reference row step in bytes
 * @param[out] pSAD  the sum of |current - reference| over the block
 * @param mcType  ignored (any value)
 * @retval huxErrNullPtr pSrc, pRef or pSAD is null
 * @retval huxOk         the SAD was written
 */
HUX_API HuxResult HUX_STDCALL huxiSAD4x8_8u32s_C1R(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef, int32_t refStep, int32_t* pSAD, int32_t mcType);
/**
 * @brief SAD of a 4x4 block of 8-bit samples, integer position (mcType is ignored).
 *
 * Reads exactly the two 4x4 blocks.
 * @param pSrc    current block, 4x4 8-bit samples
 * @param srcStep current block's row step in bytes
 * @param pRef    reference block (the candidate's top-left integer sample)
 * @param refStep reference row step in bytes
 * @param[out] pSAD  the sum of |current - reference| over the block
 * @param mcType  ignored (any value)
 * @retval huxErrNullPtr pSrc, pRef or pSAD is null
 * @retval huxOk         the SAD was written
 */
HUX_API HuxResult HUX_STDCALL huxiSAD4x4_8u32s(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef, int32_t refStep, int32_t* pSAD, int32_t mcType);
/**
 * @brief SAD of a 16x16 block of 16-bit samples, integer or half-sample reference.
 *
 * Reads the 16x16 current block and the 16x16 reference block, plus one more row below it
 * (mcType 4, 12) and one more column right of it (mcType 8, 12).
 * Half-sample references add with unsigned saturation at 65535 (rounding constant included) before
 * the shift: exact for samples below 2^14.
 * @param pSrc    current block, 16x16 16-bit samples
 * @param srcStep current block's row step in bytes
 * @param pRef    reference block (the candidate's top-left integer sample)
 * @param refStep reference row step in bytes
 * @param[out] pSAD  the sum of |current - reference| over the block
 * @param mcType  0 integer, 4 vertical, 8 horizontal, 12 diagonal half-sample position (mcType >> 2 is used)
 * @retval huxErrNullPtr pSrc, pRef or pSAD is null
 * @retval huxOk         the SAD was written
 */
HUX_API HuxResult HUX_STDCALL huxiSAD16x16_16u32s_C1R(const uint16_t* pSrc, int32_t srcStep, const uint16_t* pRef, int32_t refStep, int32_t* pSAD, int32_t mcType);
/**
 * @brief SAD of a 8x8 block of 16-bit samples, integer or half-sample reference.
 *
 * Reads the 8x8 current block and the 8x8 reference block, plus one more row below it
 * (mcType 4, 12) and one more column right of it (mcType 8, 12).
 * Half-sample references add with unsigned saturation at 65535 (rounding constant included) before
 * the shift: exact for samples below 2^14.
 * @param pSrc    current block, 8x8 16-bit samples
 * @param srcStep current block's row step in bytes
 * @param pRef    reference block (the candidate's top-left integer sample)
 * @param refStep reference row step in bytes
 * @param[out] pSAD  the sum of |current - reference| over the block
 * @param mcType  0 integer, 4 vertical, 8 horizontal, 12 diagonal half-sample position (mcType >> 2 is used)
 * @retval huxErrNullPtr pSrc, pRef or pSAD is null
 * @retval huxOk         the SAD was written
 */
HUX_API HuxResult HUX_STDCALL huxiSAD8x8_16u32s_C1R(const uint16_t* pSrc, int32_t srcStep, const uint16_t* pRef, int32_t refStep, int32_t* pSAD, int32_t mcType);
/**
 * @brief SAD of a 4x4 block of 16-bit samples, integer or half-sample reference.
 *
 * Reads the 4x4 current block and the 4x4 reference block, plus one more row below it
 * (mcType 4, 12) and one more column right of it (mcType 8, 12).
 * Half-sample references add with unsigned saturation at 65535 (rounding constant included) before
 * the shift: exact for samples below 2^14.
 * @param pSrc    current block, 4x4 16-bit samples
 * @param srcStep current block's row step in bytes
 * @param pRef    reference block (the candidate's top-left integer sample)
 * @param refStep reference row step in bytes
 * @param[out] pSAD  the sum of |current - reference| over the block
 * @param mcType  0 integer, 4 vertical, 8 horizontal, 12 diagonal half-sample position (mcType >> 2 is used)
 * @retval huxErrNullPtr pSrc, pRef or pSAD is null
 * @retval huxOk         the SAD was written
 */
HUX_API HuxResult HUX_STDCALL huxiSAD4x4_16u32s_C1R(const uint16_t* pSrc, int32_t srcStep, const uint16_t* pRef, int32_t refStep, int32_t* pSAD, int32_t mcType);

/**
 * @brief SADs of the 4 8x8 sub-blocks of a 16x16 block of 8-bit samples, integer position.
 *
 * Output in raster order of the sub-blocks (left to right, then top to bottom, so top-left, top-right, bottom-left, bottom-right).
 * Reads exactly the two 16x16 blocks.
 * @param pSrc    current 16x16 block
 * @param srcStep current row step in bytes
 * @param pRef    reference 16x16 block
 * @param refStep reference row step in bytes
 * @param[out] pDstSAD 4 SADs (uint16_t)
 * @param mcType  ignored (integer position only)
 * @retval huxErrNullPtr pSrc, pRef or pDstSAD is null
 * @retval huxOk         the 4 SADs were written
 */
HUX_API HuxResult HUX_STDCALL huxiSAD16x16Blocks8x8_8u16u(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef, int32_t refStep, uint16_t* pDstSAD, int32_t mcType);
/**
 * @brief SADs of the 16 4x4 sub-blocks of a 16x16 block of 8-bit samples, integer position.
 *
 * Output in raster order of the sub-blocks (left to right, then top to bottom).
 * Reads exactly the two 16x16 blocks.
 * @param pSrc    current 16x16 block
 * @param srcStep current row step in bytes
 * @param pRef    reference 16x16 block
 * @param refStep reference row step in bytes
 * @param[out] pDstSAD 16 SADs (uint16_t)
 * @param mcType  ignored (integer position only)
 * @retval huxErrNullPtr pSrc, pRef or pDstSAD is null
 * @retval huxOk         the 16 SADs were written
 */
HUX_API HuxResult HUX_STDCALL huxiSAD16x16Blocks4x4_8u16u(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef, int32_t refStep, uint16_t* pDstSAD, int32_t mcType);
/**
 * @brief SADs of the 4 8x8 sub-blocks of a 16x16 block of 16-bit samples, integer position.
 *
 * Output in raster order of the sub-blocks (left to right, then top to bottom, so top-left, top-right, bottom-left, bottom-right).
 * Reads exactly the two 16x16 blocks.
 * Each difference is formed as a signed 16-bit value (current - reference, wrapped) before its
 * magnitude is taken: samples differing by more than 32767 wrap (40000 counts as 25536), exact for
 * samples below 2^15. Both steps are used rounded down to an even number of bytes.
 * @param pSrc    current 16x16 block
 * @param srcStep current row step in bytes (bit 0 ignored)
 * @param pRef    reference 16x16 block
 * @param refStep reference row step in bytes (bit 0 ignored)
 * @param[out] pDstSAD 4 SADs (uint32_t)
 * @param mcType  ignored (integer position only)
 * @retval huxErrNullPtr pSrc, pRef or pDstSAD is null
 * @retval huxOk         the 4 SADs were written
 */
HUX_API HuxResult HUX_STDCALL huxiSAD16x16Blocks8x8_16u32u_C1R(const uint16_t* pSrc, int32_t srcStep, const uint16_t* pRef, int32_t refStep, uint32_t* pDstSAD, int32_t mcType);
/**
 * @brief SADs of the 16 4x4 sub-blocks of a 16x16 block of 16-bit samples, integer position.
 *
 * Output in raster order of the sub-blocks (left to right, then top to bottom).
 * Reads exactly the two 16x16 blocks.
 * Each difference is formed as a signed 16-bit value (current - reference, wrapped) before its
 * magnitude is taken: samples differing by more than 32767 wrap (40000 counts as 25536), exact for
 * samples below 2^15. Both steps are used rounded down to an even number of bytes.
 * @param pSrc    current 16x16 block
 * @param srcStep current row step in bytes (bit 0 ignored)
 * @param pRef    reference 16x16 block
 * @param refStep reference row step in bytes (bit 0 ignored)
 * @param[out] pDstSAD 16 SADs (uint32_t)
 * @param mcType  ignored (integer position only)
 * @retval huxErrNullPtr pSrc, pRef or pDstSAD is null
 * @retval huxOk         the 16 SADs were written
 */
HUX_API HuxResult HUX_STDCALL huxiSAD16x16Blocks4x4_16u32u_C1R(const uint16_t* pSrc, int32_t srcStep, const uint16_t* pRef, int32_t refStep, uint32_t* pDstSAD, int32_t mcType);

/**
 * @brief SADs of a line of 16x16 candidates, each one sample right of the last.
 *
 * With M = numCand rounded down to a multiple of 8, pDstSAD[k] (k = 0 .. M-1) is the integer-position
 * SAD of the current block against the reference block starting k samples right of pRef. Reads the
 * 16x16 current block and reference rows 0 to 15, columns 0 to M + 14.
 * @param pSrc    current 16x16 block, 8-bit samples
 * @param srcStep current row step in bytes
 * @param pRef    first candidate
 * @param refStep reference row step in bytes
 * @param[out] pDstSAD M unsigned 16-bit SADs (entries from M on are not written)
 * @param numCand N, the number of candidates wanted; only M = N & ~7 are computed
 * @retval huxErrNullPtr pSrc, pRef or pDstSAD is null
 * @retval huxErrSize    numCand below 8 (M below 1); nothing written
 * @retval huxOk         the M SADs were written
 */
HUX_API HuxResult HUX_STDCALL huxiSAD16x16xN_8u16u_C1R(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef, int32_t refStep, uint16_t* pDstSAD, int32_t numCand);
/**
 * @brief SADs of a line of 16x16 candidates, each one sample right of the last, and the index of the smallest.
 *
 * With M = numCand rounded down to a multiple of 8, pDstSAD[k] (k = 0 .. M-1) is the integer-position
 * SAD of the current block against the reference block starting k samples right of pRef. Reads the
 * 16x16 current block and reference rows 0 to 15, columns 0 to M + 14.
 * The index is that of the smallest of the M values; among equal smallest values the lowest index wins.
 * @param pSrc    current 16x16 block, 8-bit samples
 * @param srcStep current row step in bytes
 * @param pRef    first candidate
 * @param refStep reference row step in bytes
 * @param[out] pDstSAD M unsigned 16-bit SADs (entries from M on are not written)
 * @param numCand N, the number of candidates wanted; only M = N & ~7 are computed
 * @param[out] pMinIndex index (0 .. M-1) of the smallest SAD
 * @retval huxErrNullPtr pSrc, pRef, pDstSAD or pMinIndex is null
 * @retval huxErrSize    numCand below 8 (M below 1); nothing written
 * @retval huxOk         the M SADs and the index were written
 */
HUX_API HuxResult HUX_STDCALL huxiSAD16x16xNI_8u16u_C1R(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef, int32_t refStep, uint16_t* pDstSAD, int32_t numCand, uint32_t* pMinIndex);
/**
 * @brief SADs of a line of 8x8 candidates, each one sample right of the last.
 *
 * With M = numCand rounded down to a multiple of 8, pDstSAD[k] (k = 0 .. M-1) is the integer-position
 * SAD of the current block against the reference block starting k samples right of pRef. Reads the
 * 8x8 current block and reference rows 0 to 7, columns 0 to M + 6.
 * @param pSrc    current 8x8 block, 8-bit samples
 * @param srcStep current row step in bytes
 * @param pRef    first candidate
 * @param refStep reference row step in bytes
 * @param[out] pDstSAD M unsigned 16-bit SADs (entries from M on are not written)
 * @param numCand N, the number of candidates wanted; only M = N & ~7 are computed
 * @retval huxErrNullPtr pSrc, pRef or pDstSAD is null
 * @retval huxErrSize    numCand below 8 (M below 1); nothing written
 * @retval huxOk         the M SADs were written
 */
HUX_API HuxResult HUX_STDCALL huxiSAD8x8xN_8u16u_C1R(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef, int32_t refStep, uint16_t* pDstSAD, int32_t numCand);
/**
 * @brief SADs of a line of 8x8 candidates, each one sample right of the last, and the index of the smallest.
 *
 * With M = numCand rounded down to a multiple of 8, pDstSAD[k] (k = 0 .. M-1) is the integer-position
 * SAD of the current block against the reference block starting k samples right of pRef. Reads the
 * 8x8 current block and reference rows 0 to 7, columns 0 to M + 6.
 * The index is that of the smallest of the M values; among equal smallest values the lowest index wins.
 * @param pSrc    current 8x8 block, 8-bit samples
 * @param srcStep current row step in bytes
 * @param pRef    first candidate
 * @param refStep reference row step in bytes
 * @param[out] pDstSAD M unsigned 16-bit SADs (entries from M on are not written)
 * @param numCand N, the number of candidates wanted; only M = N & ~7 are computed
 * @param[out] pMinIndex index (0 .. M-1) of the smallest SAD
 * @retval huxErrNullPtr pSrc, pRef, pDstSAD or pMinIndex is null
 * @retval huxErrSize    numCand below 8 (M below 1); nothing written
 * @retval huxOk         the M SADs and the index were written
 */
HUX_API HuxResult HUX_STDCALL huxiSAD8x8xNI_8u16u_C1R(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef, int32_t refStep, uint16_t* pDstSAD, int32_t numCand, uint32_t* pMinIndex);
/**
 * @brief SADs of a line of 4x4 candidates, each one sample right of the last.
 *
 * With M = numCand rounded down to a multiple of 8, pDstSAD[k] (k = 0 .. M-1) is the integer-position
 * SAD of the current block against the reference block starting k samples right of pRef. Reads the
 * 4x4 current block and reference rows 0 to 3, columns 0 to M + 2.
 * @param pSrc    current 4x4 block, 8-bit samples
 * @param srcStep current row step in bytes
 * @param pRef    first candidate
 * @param refStep reference row step in bytes
 * @param[out] pDstSAD M unsigned 16-bit SADs (entries from M on are not written)
 * @param numCand N, the number of candidates wanted; only M = N & ~7 are computed
 * @retval huxErrNullPtr pSrc, pRef or pDstSAD is null
 * @retval huxErrSize    numCand below 8 (M below 1); nothing written
 * @retval huxOk         the M SADs were written
 */
HUX_API HuxResult HUX_STDCALL huxiSAD4x4xN_8u16u_C1R(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef, int32_t refStep, uint16_t* pDstSAD, int32_t numCand);
/**
 * @brief SADs of a line of 4x4 candidates, each one sample right of the last, and the index of the smallest.
 *
 * With M = numCand rounded down to a multiple of 8, pDstSAD[k] (k = 0 .. M-1) is the integer-position
 * SAD of the current block against the reference block starting k samples right of pRef. Reads the
 * 4x4 current block and reference rows 0 to 3, columns 0 to M + 2.
 * The index is that of the smallest of the M values; among equal smallest values the lowest index wins.
 * @param pSrc    current 4x4 block, 8-bit samples
 * @param srcStep current row step in bytes
 * @param pRef    first candidate
 * @param refStep reference row step in bytes
 * @param[out] pDstSAD M unsigned 16-bit SADs (entries from M on are not written)
 * @param numCand N, the number of candidates wanted; only M = N & ~7 are computed
 * @param[out] pMinIndex index (0 .. M-1) of the smallest SAD
 * @retval huxErrNullPtr pSrc, pRef, pDstSAD or pMinIndex is null
 * @retval huxErrSize    numCand below 8 (M below 1); nothing written
 * @retval huxOk         the M SADs and the index were written
 */
HUX_API HuxResult HUX_STDCALL huxiSAD4x4xNI_8u16u_C1R(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef, int32_t refStep, uint16_t* pDstSAD, int32_t numCand, uint32_t* pMinIndex);
/**
 * @brief SADs of a line of 2x2 candidates, each one sample right of the last.
 *
 * With M = numCand rounded down to a multiple of 8, pDstSAD[k] (k = 0 .. M-1) is the integer-position
 * SAD of the current block against the reference block starting k samples right of pRef. Reads the
 * 2x2 current block and reference rows 0 to 1, columns 0 to M + 0.
 * @param pSrc    current 2x2 block, 8-bit samples
 * @param srcStep current row step in bytes
 * @param pRef    first candidate
 * @param refStep reference row step in bytes
 * @param[out] pDstSAD M unsigned 16-bit SADs (entries from M on are not written)
 * @param numCand N, the number of candidates wanted; only M = N & ~7 are computed
 * @retval huxErrNullPtr pSrc, pRef or pDstSAD is null
 * @retval huxErrSize    numCand below 8 (M below 1); nothing written
 * @retval huxOk         the M SADs were written
 */
HUX_API HuxResult HUX_STDCALL huxiSAD2x2xN_8u16u_C1R(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef, int32_t refStep, uint16_t* pDstSAD, int32_t numCand);

/**
 * @brief Frame and field activity of a 16x16 block of unsigned 8-bit samples, for the frame/field decision.
 *
 * Frame: the sum of |B(x, y) - B(x, y+1)| over rows y = 0..6 and 8..14 (adjacent rows within each
 * half; the pair 7/8 is not counted). Field: the sum of |B(x, y) - B(x, y+2)| over y = 0..13 (rows of
 * one field). Both cover 14 row pairs; sums are exact in 32 bits. Reads only the block's 16 rows.
 * @param pSrc    the 16x16 block
 * @param srcStep row step in bytes
 * @param[out] pFrameSAD frame activity
 * @param[out] pFieldSAD field activity
 * @retval huxErrNullPtr pSrc, pFrameSAD or pFieldSAD is null
 * @retval huxOk         both results were written
 */
HUX_API HuxResult HUX_STDCALL huxiFrameFieldSAD16x16_8u32s_C1R(const uint8_t* pSrc, int32_t srcStep, int32_t* pFrameSAD, int32_t* pFieldSAD);
/**
 * @brief Frame and field activity of a 16x16 block of signed 16-bit samples, for the frame/field decision.
 *
 * Frame: the sum of |B(x, y) - B(x, y+1)| over rows y = 0..6 and 8..14 (adjacent rows within each
 * half; the pair 7/8 is not counted). Field: the sum of |B(x, y) - B(x, y+2)| over y = 0..13 (rows of
 * one field). Both cover 14 row pairs; sums are exact in 32 bits. Reads only the block's 16 rows.
 * @param pSrc    the 16x16 block
 * @param srcStep row step in bytes
 * @param[out] pFrameSAD frame activity
 * @param[out] pFieldSAD field activity
 * @retval huxErrNullPtr pSrc, pFrameSAD or pFieldSAD is null
 * @retval huxOk         both results were written
 */
HUX_API HuxResult HUX_STDCALL huxiFrameFieldSAD16x16_16s32s_C1R(const int16_t* pSrc, int32_t srcStep, int32_t* pFrameSAD, int32_t* pFieldSAD);

/**
 * @brief Residual of an 8x8 block (current minus reference, signed 16-bit) and its SAD, integer position.
 *
 * Reads the two 8x8 blocks, writes the 8x8 difference block (values -255 to 255) and the SAD.
 * @param pSrcCur     current 8x8 block, 8-bit samples
 * @param srcCurStep  current row step in bytes
 * @param pSrcRef     reference 8x8 block
 * @param srcRefStep  reference row step in bytes
 * @param[out] pDstDiff    8x8 differences, int16_t
 * @param dstDiffStep difference row step in bytes (16 for a packed block)
 * @param[out] pSAD        the SAD; may be null (not checked): then only the differences are written
 * @retval huxErrNullPtr pSrcCur, pSrcRef or pDstDiff is null
 * @retval huxOk         the differences (and the SAD when pSAD is given) were written
 */
HUX_API HuxResult HUX_STDCALL huxiSubSAD8x8_8u16s_C1R(const uint8_t* pSrcCur, int32_t srcCurStep, const uint8_t* pSrcRef, int32_t srcRefStep, int16_t* pDstDiff, int32_t dstDiffStep, int32_t* pSAD);

/** @} */

/* ---------------------------------------------- H.264 coefficient decoding */
/**
 * @defgroup h264cavlc H.264 coefficient decoding
 * @brief CAVLC residual blocks (4x4, 2x2 and 2x4 chroma DC) into the packed coefficient buffer, and
 *        Exp-Golomb codes, over the word-form bit cursor.
 *
 * Read @ref wordcursor, @ref vlctables, @ref packedbuf and @ref scans first. The decoders hold no code
 * tables of the standard: huxH264BuildCavlcTables() (huxvc_tables.h) builds them all into caller
 * memory. Levels follow the standard's CAVLC level decoding with one fixed arithmetic rule: level
 * magnitudes and escape level codes are kept to 16 bits, so every level lies in -32768 to 32768 in
 * both output widths (the 16-bit forms store the low 16 bits, so 32768 is stored as -32768; no
 * conforming stream comes near). The stream is trusted beyond the code words: TrailingOnes above
 * TotalCoeff, a run_before above zerosLeft or a total_zeros past the block are not detected; such
 * streams give unspecified levels, but no stream makes a decoder write outside the current block or
 * read outside its tables.
 *
 * What a CAVLC decoder leaves when decoding fails (after the argument checks passed):
 * | failure | status | cursor | count | block and block pointer |
 * |---------|--------|--------|-------|-------------------------|
 * | coeff_token invalid | #huxErrVLCCode | as on entry | not written | untouched |
 * | total_zeros or run_before table (or array) null when needed | #huxErrNullPtr | behind the last code read | written | block cleared and partly filled; pointer not advanced |
 * | total_zeros or run_before code invalid | #huxErrVLCCode | behind every bit examined for the failing code | written | as above |
 * @{
 */

/**
 * @brief Decodes one CAVLC 4x4 block (luma, or chroma AC) into the packed buffer as 16 int16_t levels.
 *
 * Decodes coeff_token (table chosen by nC, or the 6-bit fixed-length token for nC 8 and above),
 * writes TotalCoeff to *pNumCoeff, then, when TotalCoeff is not 0, clears the 16 entries at
 * *ppDstCoeffs, places the levels at their raster positions through the scan and advances
 * *ppDstCoeffs by 16. An empty block writes only the count. Levels: see the group's description.
 *
 * Checks and failures in this order (1 to 5 write nothing):
 * 1. #huxErrNullPtr: ppBitStream, pOffset, pNumCoeff, ppDstCoeffs, ppTblCoeffToken, ppTblTotalZeros,
 *    ppTblRunBefore or pScanMatrix null; then *ppBitStream null; then *ppDstCoeffs null.
 * 2. #huxErrOutOfRange: maxNumCoeff neither 16 nor 15.
 * 3. #huxErrOutOfRange: vlcSelect negative.
 * 4. #huxErrNullPtr: nC below 8 and its coeff_token table null.
 * 5. #huxErrVLCCode: invalid coeff_token; cursor as on entry.
 * 6. While placing levels: #huxErrNullPtr for a null total_zeros or run_before table that is needed,
 *    #huxErrVLCCode for an invalid code in one; *pNumCoeff written, cursor moved (see the group's table).
 * @param[in,out] ppBitStream word cursor: the caller's pointer to the current word
 * @param[in,out] pOffset     word cursor: bit offset 0 to 31 in that word (not checked; low 5 bits used)
 * @param[out]    pNumCoeff   TotalCoeff, 0 to 16
 * @param[in,out] ppDstCoeffs the caller's pointer to the next free block of the packed buffer
 *                            (16 entries); advanced by 16 when the block holds a coefficient
 * @param vlcSelect   nC, 0 or more: 0-1, 2-3 and 4-7 select ppTblCoeffToken[0], [1], [2]; 8 and above
 *                    the fixed-length token (no table read)
 * @param maxNumCoeff 16, or 15 for an AC block whose DC is coded elsewhere (see @ref scans); the 16-bit
 *                    form sees the argument as int16_t
 * @param ppTblCoeffToken three coeff_token tables (nC 0-1, 2-3, 4-7); an entry is read only for its nC
 * @param ppTblTotalZeros total_zeros tables by TotalCoeff (entries 1 to maxNumCoeff - 1)
 * @param ppTblRunBefore  run_before tables by zerosLeft (entries 1 to 14)
 * @param pScanMatrix     16 raster indices by scan position (huxH264Zigzag4x4, huxH264FieldScan4x4)
 * @retval huxErrNullPtr    a pointer null (1, 4, 6)
 * @retval huxErrOutOfRange maxNumCoeff or vlcSelect out of range (2, 3)
 * @retval huxErrVLCCode    a code word the table marks invalid (5, 6)
 * @retval huxOk            block decoded; cursor behind it
 */
HUX_API HuxResult HUX_STDCALL huxiDecodeCAVLCCoeffs_H264_1u16s(uint32_t** ppBitStream, int32_t* pOffset, int16_t* pNumCoeff, int16_t** ppDstCoeffs, int32_t vlcSelect, int16_t maxNumCoeff, const uint32_t* const* ppTblCoeffToken, const uint32_t* const* ppTblTotalZeros, const uint32_t* const* ppTblRunBefore, const int32_t* pScanMatrix);
/**
 * @brief Decodes one CAVLC 4x4 block (luma, or chroma AC) into the packed buffer as 16 int32_t levels.
 *
 * Decodes coeff_token (table chosen by nC, or the 6-bit fixed-length token for nC 8 and above),
 * writes TotalCoeff to *pNumCoeff, then, when TotalCoeff is not 0, clears the 16 entries at
 * *ppDstCoeffs, places the levels at their raster positions through the scan and advances
 * *ppDstCoeffs by 16. An empty block writes only the count. Levels: see the group's description.
 *
 * Checks and failures in this order (1 to 5 write nothing):
 * 1. #huxErrNullPtr: ppBitStream, pOffset, pNumCoeff, ppDstCoeffs, ppTblCoeffToken, ppTblTotalZeros,
 *    ppTblRunBefore or pScanMatrix null; then *ppBitStream null; then *ppDstCoeffs null.
 * 2. #huxErrOutOfRange: maxNumCoeff neither 16 nor 15.
 * 3. #huxErrOutOfRange: vlcSelect negative.
 * 4. #huxErrNullPtr: nC below 8 and its coeff_token table null.
 * 5. #huxErrVLCCode: invalid coeff_token; cursor as on entry.
 * 6. While placing levels: #huxErrNullPtr for a null total_zeros or run_before table that is needed,
 *    #huxErrVLCCode for an invalid code in one; *pNumCoeff written, cursor moved (see the group's table).
 * @param[in,out] ppBitStream word cursor: the caller's pointer to the current word
 * @param[in,out] pOffset     word cursor: bit offset 0 to 31 in that word (not checked; low 5 bits used)
 * @param[out]    pNumCoeff   TotalCoeff, 0 to 16
 * @param[in,out] ppDstCoeffs the caller's pointer to the next free block of the packed buffer
 *                            (16 entries); advanced by 16 when the block holds a coefficient
 * @param vlcSelect   nC, 0 or more: 0-1, 2-3 and 4-7 select ppTblCoeffToken[0], [1], [2]; 8 and above
 *                    the fixed-length token (no table read)
 * @param maxNumCoeff 16, or 15 for an AC block whose DC is coded elsewhere (see @ref scans)
 * @param ppTblCoeffToken three coeff_token tables (nC 0-1, 2-3, 4-7); an entry is read only for its nC
 * @param ppTblTotalZeros total_zeros tables by TotalCoeff (entries 1 to maxNumCoeff - 1)
 * @param ppTblRunBefore  run_before tables by zerosLeft (entries 1 to 14)
 * @param pScanMatrix     16 raster indices by scan position (huxH264Zigzag4x4, huxH264FieldScan4x4)
 * @retval huxErrNullPtr    a pointer null (1, 4, 6)
 * @retval huxErrOutOfRange maxNumCoeff or vlcSelect out of range (2, 3)
 * @retval huxErrVLCCode    a code word the table marks invalid (5, 6)
 * @retval huxOk            block decoded; cursor behind it
 */
HUX_API HuxResult HUX_STDCALL huxiDecodeCAVLCCoeffs_H264_1u32s(uint32_t** ppBitStream, int32_t* pOffset, int16_t* pNumCoeff, int32_t** ppDstCoeffs, int32_t vlcSelect, int32_t maxNumCoeff, const uint32_t* const* ppTblCoeffToken, const uint32_t* const* ppTblTotalZeros, const uint32_t* const* ppTblRunBefore, const int32_t* pScanMatrix);
/**
 * @brief Decodes one CAVLC 2x2 (4:2:0) chroma DC block into the packed buffer as 4 int16_t levels.
 *
 * coeff_token from pTblCoeffToken, TotalCoeff to *pNumCoeff; when TotalCoeff is not 0 the 4 entries
 * at *ppDstCoeffs are cleared, the levels placed in raster order, and *ppDstCoeffs advanced by 4. An empty
 * block writes only the count. Levels: see the group's description.
 *
 * This decoder checks only the cursor and pNumCoeff on entry and every other pointer when it first
 * needs it, so #huxErrNullPtr can come after *pNumCoeff is written and the cursor moved (see the
 * statuses). It decodes the two commonest codes without the tables, as the standard's table has them
 * whatever pTblCoeffToken holds: "1" (one coefficient, a trailing one) with its sign bit and its
 * total_zeros code (1, 01, 001, 000: raster position 0 to 3), consuming 3, 4, 5 or 5 bits; and "01",
 * the empty block (2 bits, count 0, no pointer other than the cursor looked at).
 *
 * Checks and failures in this order:
 * 1. #huxErrNullPtr: ppBitStream, pOffset or pNumCoeff null; then *ppBitStream null. Nothing read or
 *    written.
 * 2. #huxErrNullPtr: pTblCoeffToken null, found when a code other than "1" or "01" starts the block;
 *    nothing read or written.
 * 3. #huxErrVLCCode: invalid coeff_token; cursor as on entry, nothing written.
 * 4. #huxErrNullPtr: ppDstCoeffs or *ppDstCoeffs null, found when the first coefficient is to be
 *    stored: *pNumCoeff written, cursor behind coeff_token and the trailing-one signs, block untouched.
 * 5. While placing levels: #huxErrNullPtr for ppTblTotalZerosCR, ppTblRunBefore or a table in them
 *    that is needed and null, #huxErrVLCCode for an invalid code (see the group's table).
 * @param[in,out] ppBitStream word cursor: the caller's pointer to the current word
 * @param[in,out] pOffset     word cursor: bit offset 0 to 31 (not checked; low 5 bits used)
 * @param[out]    pNumCoeff   TotalCoeff, 0 to 4
 * @param[in,out] ppDstCoeffs the caller's pointer to the next free block of the packed buffer (4 entries)
 * @param pTblCoeffToken    the standard's nC = -1 coeff_token table
 * @param ppTblTotalZerosCR total_zeros tables by TotalCoeff (entries 1 to 3)
 * @param ppTblRunBefore    run_before tables by zerosLeft (entries 1 and 2)
 * @retval huxErrNullPtr a pointer null (1, 2, 4, 5)
 * @retval huxErrVLCCode a code word the table marks invalid (3, 5)
 * @retval huxOk         block decoded; cursor behind it
 */
HUX_API HuxResult HUX_STDCALL huxiDecodeCAVLCChromaDcCoeffs_H264_1u16s(uint32_t** ppBitStream, int32_t* pOffset, int16_t* pNumCoeff, int16_t** ppDstCoeffs, const uint32_t* pTblCoeffToken, const uint32_t* const* ppTblTotalZerosCR, const uint32_t* const* ppTblRunBefore);
/**
 * @brief Decodes one CAVLC 2x2 (4:2:0) chroma DC block into the packed buffer as 4 int32_t levels.
 *
 * coeff_token from pTblCoeffToken, TotalCoeff to *pNumCoeff; when TotalCoeff is not 0 the 4 entries
 * at *ppDstCoeffs are cleared, the levels placed in raster order, and *ppDstCoeffs advanced by 4. An empty
 * block writes only the count. Levels: see the group's description.
 *
 * Checks and failures in this order (1 and 2 write nothing):
 * 1. #huxErrNullPtr: ppBitStream, pOffset, pNumCoeff, ppDstCoeffs, pTblCoeffToken, ppTblTotalZerosCR or
 *    ppTblRunBefore null; then *ppBitStream null; then *ppDstCoeffs null.
 * 2. #huxErrVLCCode: invalid coeff_token; cursor as on entry.
 * 3. While placing levels: #huxErrNullPtr for a null total_zeros or run_before table that is needed,
 *    #huxErrVLCCode for an invalid code in one; *pNumCoeff written, cursor moved (see the group's table).
 * @param[in,out] ppBitStream word cursor: the caller's pointer to the current word
 * @param[in,out] pOffset     word cursor: bit offset 0 to 31 (not checked; low 5 bits used)
 * @param[out]    pNumCoeff   TotalCoeff, 0 to 4
 * @param[in,out] ppDstCoeffs the caller's pointer to the next free block of the packed buffer (4 entries)
 * @param pTblCoeffToken    the standard's nC = -1 coeff_token table
 * @param ppTblTotalZerosCR total_zeros tables by TotalCoeff (entries 1 to 3)
 * @param ppTblRunBefore    run_before tables by zerosLeft (entries 1 and 2)
 * @retval huxErrNullPtr a pointer null (1, 3)
 * @retval huxErrVLCCode a code word the table marks invalid (2, 3)
 * @retval huxOk         block decoded; cursor behind it
 */
HUX_API HuxResult HUX_STDCALL huxiDecodeCAVLCChromaDcCoeffs_H264_1u32s(uint32_t** ppBitStream, int32_t* pOffset, int16_t* pNumCoeff, int32_t** ppDstCoeffs, const uint32_t* pTblCoeffToken, const uint32_t* const* ppTblTotalZerosCR, const uint32_t* const* ppTblRunBefore);
/**
 * @brief Decodes one CAVLC 2x4 (4:2:2; two wide, four high) chroma DC block into the packed buffer as 8 int16_t levels.
 *
 * coeff_token from pTblCoeffToken, TotalCoeff to *pNumCoeff; when TotalCoeff is not 0 the 8 entries
 * at *ppDstCoeffs are cleared, the levels placed in the order 0, 2, 1, 4, 6, 3, 5, 7 (raster index = 2 * row + column), and *ppDstCoeffs advanced by 8. An empty
 * block writes only the count. Levels: see the group's description.
 *
 * Checks and failures in this order (1 and 2 write nothing):
 * 1. #huxErrNullPtr: ppBitStream, pOffset, pNumCoeff, ppDstCoeffs, pTblCoeffToken, ppTblTotalZerosCR or
 *    ppTblRunBefore null; then *ppBitStream null; then *ppDstCoeffs null.
 * 2. #huxErrVLCCode: invalid coeff_token; cursor as on entry.
 * 3. While placing levels: #huxErrNullPtr for a null total_zeros or run_before table that is needed,
 *    #huxErrVLCCode for an invalid code in one; *pNumCoeff written, cursor moved (see the group's table).
 * @param[in,out] ppBitStream word cursor: the caller's pointer to the current word
 * @param[in,out] pOffset     word cursor: bit offset 0 to 31 (not checked; low 5 bits used)
 * @param[out]    pNumCoeff   TotalCoeff, 0 to 8
 * @param[in,out] ppDstCoeffs the caller's pointer to the next free block of the packed buffer (8 entries)
 * @param pTblCoeffToken    the standard's nC = -2 coeff_token table
 * @param ppTblTotalZerosCR total_zeros tables by TotalCoeff (entries 1 to 7)
 * @param ppTblRunBefore    run_before tables by zerosLeft (entries 1 to 6)
 * @retval huxErrNullPtr a pointer null (1, 3)
 * @retval huxErrVLCCode a code word the table marks invalid (2, 3)
 * @retval huxOk         block decoded; cursor behind it
 */
HUX_API HuxResult HUX_STDCALL huxiDecodeCAVLCChroma422DcCoeffs_H264_1u16s(uint32_t** ppBitStream, int32_t* pOffset, int16_t* pNumCoeff, int16_t** ppDstCoeffs, const uint32_t* pTblCoeffToken, const uint32_t* const* ppTblTotalZerosCR, const uint32_t* const* ppTblRunBefore);
/**
 * @brief Decodes one CAVLC 2x4 (4:2:2; two wide, four high) chroma DC block into the packed buffer as 8 int32_t levels.
 *
 * coeff_token from pTblCoeffToken, TotalCoeff to *pNumCoeff; when TotalCoeff is not 0 the 8 entries
 * at *ppDstCoeffs are cleared, the levels placed in the order 0, 2, 1, 4, 6, 3, 5, 7 (raster index = 2 * row + column), and *ppDstCoeffs advanced by 8. An empty
 * block writes only the count. Levels: see the group's description.
 *
 * Checks and failures in this order (1 and 2 write nothing):
 * 1. #huxErrNullPtr: ppBitStream, pOffset, pNumCoeff, ppDstCoeffs, pTblCoeffToken, ppTblTotalZerosCR or
 *    ppTblRunBefore null; then *ppBitStream null; then *ppDstCoeffs null.
 * 2. #huxErrVLCCode: invalid coeff_token; cursor as on entry.
 * 3. While placing levels: #huxErrNullPtr for a null total_zeros or run_before table that is needed,
 *    #huxErrVLCCode for an invalid code in one; *pNumCoeff written, cursor moved (see the group's table).
 * @param[in,out] ppBitStream word cursor: the caller's pointer to the current word
 * @param[in,out] pOffset     word cursor: bit offset 0 to 31 (not checked; low 5 bits used)
 * @param[out]    pNumCoeff   TotalCoeff, 0 to 8
 * @param[in,out] ppDstCoeffs the caller's pointer to the next free block of the packed buffer (8 entries)
 * @param pTblCoeffToken    the standard's nC = -2 coeff_token table
 * @param ppTblTotalZerosCR total_zeros tables by TotalCoeff (entries 1 to 7)
 * @param ppTblRunBefore    run_before tables by zerosLeft (entries 1 to 6)
 * @retval huxErrNullPtr a pointer null (1, 3)
 * @retval huxErrVLCCode a code word the table marks invalid (2, 3)
 * @retval huxOk         block decoded; cursor behind it
 */
HUX_API HuxResult HUX_STDCALL huxiDecodeCAVLCChroma422DcCoeffs_H264_1u32s(uint32_t** ppBitStream, int32_t* pOffset, int16_t* pNumCoeff, int32_t** ppDstCoeffs, const uint32_t* pTblCoeffToken, const uint32_t* const* ppTblTotalZerosCR, const uint32_t* const* ppTblRunBefore);
/**
 * @brief Decodes one Exp-Golomb code (ue(v), or se(v) when isSigned is non-zero) to its low 16 bits.
 *
 * codeNum = 2^M - 1 + the M bits after the M leading zeros and the 1; se(v) maps codeNum k to
 * (k + 1) / 2 for odd k and -(k / 2) for even k. "1" gives 0, "010" 1 (se 1), "011" 2 (se -1).
 * Leading zeros are counted to the next 1 bit however far (see @ref wordcursor); codes of 32 or more
 * leading zeros give an undefined value (no fault). The value is computed in 32 bits and its low 16
 * bits are stored.
 * @param[in,out] ppBitStream word cursor: the caller's pointer to the current word
 * @param[in,out] pBitOffset  word cursor: bit offset, 0 to 31
 * @param[out]    pDst        the decoded value
 * @param isSigned  0: ue(v); non-zero: se(v)
 * @retval huxErrNullPtr ppBitStream, pBitOffset or pDst is null, or *ppBitStream is null
 * @retval huxErrBadArg  *pBitOffset outside 0 to 31 (a negative one too)
 * @retval huxOk         value written; cursor behind the code
 */
HUX_API HuxResult HUX_STDCALL huxiDecodeExpGolombOne_H264_1u16s(uint32_t** ppBitStream, int32_t* pBitOffset, int16_t* pDst, uint8_t isSigned);
/**
 * @brief Decodes one Exp-Golomb code (ue(v), or se(v) when isSigned is non-zero).
 *
 * codeNum = 2^M - 1 + the M bits after the M leading zeros and the 1; se(v) maps codeNum k to
 * (k + 1) / 2 for odd k and -(k / 2) for even k. "1" gives 0, "010" 1 (se 1), "011" 2 (se -1).
 * Leading zeros are counted to the next 1 bit however far (see @ref wordcursor); codes of 32 or more
 * leading zeros give an undefined value (no fault).
 * @param[in,out] ppBitStream word cursor: the caller's pointer to the current word
 * @param[in,out] pBitOffset  word cursor: bit offset, 0 to 31
 * @param[out]    pDst        the decoded value
 * @param isSigned  0: ue(v); non-zero: se(v)
 * @retval huxErrNullPtr ppBitStream, pBitOffset or pDst is null, or *ppBitStream is null
 * @retval huxErrBadArg  *pBitOffset outside 0 to 31 (a negative one too)
 * @retval huxOk         value written; cursor behind the code
 */
HUX_API HuxResult HUX_STDCALL huxiDecodeExpGolombOne_H264_1u32s(uint32_t** ppBitStream, int32_t* pBitOffset, int32_t* pDst, int32_t isSigned);

/** @} */

/* ------------------------------- H.264 dequantisation and inverse transforms */
/**
 * @defgroup h264xform H.264 dequantisation and inverse transforms
 * @brief Levels to residuals and reconstructed samples: 4x4 and 8x8 dequantisation and inverse
 *        transforms with and without prediction add (8-bit and high bit depth), the Intra 16x16 luma
 *        DC, 2x2 and 2x4 chroma DC, SP/SI switching blocks.
 *
 * Blocks are packed and raster ordered (see @ref names) unless a step is given. QP is the block's
 * colour component's quantisation parameter: 0 to 51 for 8-bit video; the high-bit-depth forms take
 * QP including the offset 6 * (bitDepth - 8), up to 87 (luma) or 75 (chroma at 14 bits). The
 * dequantisation factor is v(QP % 6, class) << (QP / 6), v the standard's normAdjust values (10 11 13
 * 14 16 18 / 16 18 20 23 25 29 / 13 14 16 18 20 23 for classes 0, 1, 2: positions with both row and
 * column even, both odd, other). A LevelScale argument (pScale) is the standard's LevelScale4x4 or
 * LevelScale8x8 for QP % 6 (weightScale * normAdjust, raster order); null selects the flat matrix,
 * 16 * v. The 4x4 inverse core transform and the 8x8 transform are the standard's, rows then columns,
 * results (x + 32) >> 6. Widths are part of the interface: "wrapping 16-bit" passes keep every
 * intermediate sum to its low 16 bits; "saturating 16-bit" passes clamp every sum to -32768..32767
 * (rounding addition included); 32-bit forms wrap at 32 bits. Conforming streams reach neither bound.
 * Coefficient inputs that are not in place are only read.
 * @{
 */

/**
 * @brief Dequantises a 4x4 block in place and inverse transforms it to a residual (no prediction, no clamp).
 *
 * DC: *pDC as it stands when pDC is given, else block[0] * v(QP % 6, 0) << (QP / 6), wrapped to 16 bits.
 * AC non-zero: levels 1..15 times their factor (16-bit products, wrapping), then the inverse transform
 * with wrapping 16-bit row pass and column butterflies and 32-bit final sums and rounding; the 16
 * results are stored as 16-bit values. AC zero: every entry becomes (DC + 32) >> 6 (levels 1..15 are
 * not read).
 * @param[in,out] pSrcDst 4x4 int16_t levels in, residual out, rows step bytes apart
 * @param step    row step in bytes, 8 or more
 * @param pDC     the block's dequantised DC (from a DC transform), or null
 * @param AC      0: the block holds its DC alone; non-zero: AC levels present
 * @param QP      0 to 51
 * @retval huxErrNullPtr    pSrcDst is null
 * @retval huxErrOutOfRange QP outside 0 to 51
 * @retval huxErrStep       step below 8
 * @retval huxOk            residual written
 */
HUX_API HuxResult HUX_STDCALL huxiDequantTransformResidual_H264_16s_C1I(int16_t* pSrcDst, int32_t step, const int16_t* pDC, int32_t AC, int32_t QP);
/**
 * @brief SP/SI luma 4x4: adds the transformed prediction, requantises at QS, dequantises at QS and
 *        inverse transforms; the block receives reconstructed samples 0 to 255.
 *
 * With Q = QS when switchFlag is non-zero, else QP, shift = 15 + QS / 6: each position i gets
 * s = ((level * v(Q % 6, class) << (Q / 6)) * n(i) >> 6) + pPredCoeffs[i], n the transform norm
 * (16, 20 or 25 for classes 0, 2, 1); then sign(s) * ((|s| * MF(QS % 6, i) + 2^(shift - 1)) >> shift)
 * * v(QS % 6, class) << (QS / 6), MF the standard's quantisation multipliers; wide intermediates, the
 * result wrapped to 16 bits. AC zero: levels 1..15 are not added (prediction alone); the DC level always
 * is. pDC, when given, replaces the DC coefficient as it stands. Inverse transform as the residual
 * form (wrapping 16-bit passes), then each (x + 32) >> 6 clamped to 0..255 and stored as int16_t.
 * QP and QS outside 0 to 51 are clamped to it (not checked).
 * @param[in,out] pSrcDst 16 int16_t levels in; 16 samples 0 to 255 out
 * @param pPredCoeffs 16 int16_t forward-transformed prediction coefficients (read)
 * @param pDC         the DC coefficient to use as it stands, or null
 * @param AC          0: AC levels absent; non-zero: present
 * @param QP          the slice QP (clamped to 0 to 51)
 * @param QS          the switching QS (clamped to 0 to 51)
 * @param switchFlag  non-zero: SI slice or switching SP slice (levels dequantised at QS)
 * @retval huxErrNullPtr pSrcDst or pPredCoeffs is null
 * @retval huxOk         samples written
 */
HUX_API HuxResult HUX_STDCALL huxiDequantTransformResidual_SISP_H264_16s_C1I(int16_t* pSrcDst, const int16_t* pPredCoeffs, const int16_t* pDC, int32_t AC, int32_t QP, int32_t QS, int32_t switchFlag);
/**
 * @brief Dequantises and inverse transforms a 4x4 block, adds the prediction and clamps to 0..255.
 *
 * DC: *pDC as it stands, or pCoeffs[0] times its factor. AC non-zero: levels times v(QP % 6, class) <<
 * (QP / 6) (16-bit products, wrapping), saturating 16-bit transform. AC zero: the residual is
 * (DC + 32) >> 6 everywhere. Residual plus prediction, clamped to 0..255, goes to pDst; pCoeffs is
 * only read.
 *
 * Checks in order: pPred or pDst null (#huxErrNullPtr); QP outside 0 to 51 (#huxErrOutOfRange);
 * pCoeffs null while pDC is null or AC is non-zero (#huxErrNullPtr, after the QP check).
 * @param pPred    4x4 prediction, 8-bit samples
 * @param pCoeffs  16 int16_t levels (read); may be null when pDC is given and AC is 0
 * @param pDC      the block's dequantised DC, or null
 * @param[out] pDst 4x4 reconstruction, 8-bit
 * @param predStep prediction row step in bytes (not checked)
 * @param dstStep  destination row step in bytes (not checked)
 * @param QP       0 to 51
 * @param AC       0: DC alone; non-zero: AC levels present
 * @retval huxErrNullPtr    pPred or pDst null; or pCoeffs null when it is needed (checked after QP)
 * @retval huxErrOutOfRange QP outside 0 to 51
 * @retval huxOk            reconstruction written
 */
HUX_API HuxResult HUX_STDCALL huxiDequantTransformResidualAndAdd_H264_16s_C1I(const uint8_t* pPred, int16_t* pCoeffs, const int16_t* pDC, uint8_t* pDst, int32_t predStep, int32_t dstStep, int32_t QP, int32_t AC);
/**
 * @brief Intra 16x16 luma DC: 4x4 Hadamard and flat-matrix DC scaling, in place.
 *
 * Hadamard (columns, then rows) with wrapping 16-bit sums; then x becomes (x * c + s) >> s with
 * c = v(QP % 6, 0) << (QP / 6 - 2) (v alone below QP 12) and s = 2 for QP 0..5, 1 for 6..11, 0 from 12:
 * the standard's DC scaling with a flat matrix. Results wrapped to 16 bits.
 * @param[in,out] pSrcDst 16 int16_t DC levels (raster order of the 16 luma blocks' DCs) in; their
 *                        dequantised DCs out, ready for pDC of the 4x4 forms
 * @param QP 0 to 51
 * @retval huxErrNullPtr    pSrcDst is null
 * @retval huxErrOutOfRange QP outside 0 to 51
 * @retval huxOk            block transformed
 */
HUX_API HuxResult HUX_STDCALL huxiTransformDequantLumaDC_H264_16s_C1I(int16_t* pSrcDst, int32_t QP);
/**
 * @brief 4:2:0 chroma DC: 2x2 Hadamard and dequantisation, in place.
 *
 * 2x2 Hadamard with wrapping 16-bit sums; then x becomes (x * (v(QP % 6, 0) << (QP / 6))) >> 1
 * (arithmetic shift), wrapped to 16 bits.
 * @param[in,out] pSrcDst 4 int16_t DC levels (raster 2x2) in; dequantised DCs out
 * @param QP the chroma QP, 0 to 51
 * @retval huxErrNullPtr    pSrcDst is null
 * @retval huxErrOutOfRange QP outside 0 to 51
 * @retval huxOk            block transformed
 */
HUX_API HuxResult HUX_STDCALL huxiTransformDequantChromaDC_H264_16s_C1I(int16_t* pSrcDst, int32_t QP);
/**
 * @brief SP/SI chroma DC: adds the transformed prediction DC, requantises at QS, dequantises and
 *        inverse transforms, in place.
 *
 * The 2x2 transform of pPredDC is added to ((level * (v(Q % 6, 0) << (Q / 6)) * 16) >> 5) (Q = QS when
 * switchFlag is non-zero, else QP); the sum is requantised with MF(QS % 6, 0) and shift 16 + QS / 6,
 * dequantised at QS, inverse 2x2 transformed and halved (>> 1); wide intermediates, results wrapped to
 * 16 bits. QP and QS outside 0 to 51 are clamped to it (not checked).
 * @param[in,out] pSrcDst 4 int16_t DC levels in; 4 dequantised DC coefficients out
 * @param pPredDC    the prediction's 4 DC coefficients (read)
 * @param QP         the chroma QP (clamped to 0 to 51)
 * @param QS         the chroma QS (clamped to 0 to 51)
 * @param switchFlag non-zero: SI slice or switching SP slice
 * @retval huxErrNullPtr pSrcDst or pPredDC is null
 * @retval huxOk         block transformed
 */
HUX_API HuxResult HUX_STDCALL huxiTransformDequantChromaDC_SISP_H264_16s_C1I(int16_t* pSrcDst, const int16_t* pPredDC, int32_t QP, int32_t QS, int32_t switchFlag);
/**
 * @brief Intra 16x16 luma DC with a LevelScale entry: Hadamard and dequantisation, in place, 16-bit saturating.
 *
 * Hadamard (columns, then rows) with saturating 16-bit sums; then with LS = pScale[0] (or 16 * v(QP % 6, 0))
 * and q = QP / 6: q of 6 or more, x * LS << (q - 6); below, (x * LS + 2^(5 - q)) >> (6 - q); results
 * saturated to 16 bits.
 * @param[in,out] pSrcDst 16 int16_t DC levels in; dequantised DCs out
 * @param QP     0 to 51
 * @param pScale LevelScale4x4 for QP % 6 (only entry 0 is read), or null for the flat matrix
 * @retval huxErrNullPtr    pSrcDst is null
 * @retval huxErrOutOfRange QP outside 0 to 51
 * @retval huxOk            block transformed
 */
HUX_API HuxResult HUX_STDCALL huxiTransformQuantInvLumaDC4x4_H264_16s_C1I(int16_t* pSrcDst, int32_t QP, const int16_t* pScale);
/**
 * @brief Intra 16x16 luma DC with a LevelScale entry: Hadamard and dequantisation in 32 bits, in place.
 *
 * As the 16-bit form with 32-bit wrapping arithmetic and no saturation, and QP up to 87.
 * @param[in,out] pSrcDst 16 int32_t DC levels in; dequantised DCs out
 * @param QP     0 to 87 (including the high-bit-depth offset)
 * @param pScale LevelScale4x4 for QP % 6 (only entry 0 is read), or null for the flat matrix
 * @retval huxErrNullPtr    pSrcDst is null
 * @retval huxErrOutOfRange QP outside 0 to 87
 * @retval huxOk            block transformed
 */
HUX_API HuxResult HUX_STDCALL huxiTransformQuantInvLumaDC4x4_H264_32s_C1I(int32_t* pSrcDst, int32_t QP, const int16_t* pScale);
/**
 * @brief 4:2:0 chroma DC with a LevelScale entry: 2x2 Hadamard and dequantisation, in place, 16-bit saturating.
 *
 * Saturating 2x2 Hadamard; then with LS = pScale[0] (or 16 * v(QP % 6, 0)) and q = QP / 6: q below 5,
 * (x * LS) >> (5 - q); otherwise (x * LS) << (q - 5). No rounding term. Results saturated to 16 bits.
 * @param[in,out] pSrcDst 4 int16_t DC levels (raster 2x2) in; dequantised DCs out
 * @param QP     the chroma QP, 0 to 39
 * @param pScale LevelScale4x4 for QP % 6 (only entry 0 is read), or null for the flat matrix
 * @retval huxErrNullPtr    pSrcDst is null
 * @retval huxErrOutOfRange QP outside 0 to 39
 * @retval huxOk            block transformed
 */
HUX_API HuxResult HUX_STDCALL huxiTransformQuantInvChromaDC2x2_H264_16s_C1I(int16_t* pSrcDst, int32_t QP, const int16_t* pScale);
/**
 * @brief 4:2:0 chroma DC with a LevelScale entry: 2x2 Hadamard and dequantisation in 32 bits, in place.
 *
 * As the 16-bit form with 32-bit wrapping arithmetic and no saturation, and QP up to 75.
 * @param[in,out] pSrcDst 4 int32_t DC levels in; dequantised DCs out
 * @param QP     the chroma QP, 0 to 75 (including the high-bit-depth offset)
 * @param pScale LevelScale4x4 for QP % 6 (only entry 0 is read), or null for the flat matrix
 * @retval huxErrNullPtr    pSrcDst is null
 * @retval huxErrOutOfRange QP outside 0 to 75
 * @retval huxOk            block transformed
 */
HUX_API HuxResult HUX_STDCALL huxiTransformQuantInvChromaDC2x2_H264_32s_C1I(int32_t* pSrcDst, int32_t QP, const int16_t* pScale);
/**
 * @brief 4:2:2 chroma DC (2 wide, 4 high): transform and dequantisation at QP + 3, in place, 16-bit saturating.
 *
 * A 4-point Hadamard down each column, a 2-point one across each row (saturating 16-bit sums); then
 * with qP = QP + 3, q = qP / 6 and LS = pScale[0] (or 16 * v(qP % 6, 0)): q below 6,
 * (x * LS + 2^(5 - q)) >> (6 - q); otherwise (x * LS) << (q - 6). Results saturated to 16 bits.
 * @param[in,out] pSrcDst 8 int16_t DC levels (index 2 * row + column) in; dequantised DCs out
 * @param QP     the chroma QP, 0 to 39 (the function adds 3)
 * @param pScale LevelScale4x4 for (QP + 3) % 6 (only entry 0 is read), or null for the flat matrix
 * @retval huxErrNullPtr    pSrcDst is null
 * @retval huxErrOutOfRange QP outside 0 to 39
 * @retval huxOk            block transformed
 */
HUX_API HuxResult HUX_STDCALL huxiTransformQuantInvChromaDC2x4_H264_16s_C1I(int16_t* pSrcDst, int32_t QP, const int16_t* pScale);
/**
 * @brief 4:2:2 chroma DC (2 wide, 4 high): transform and dequantisation at QP + 3 in 32 bits, in place.
 *
 * As the 16-bit form with 32-bit wrapping arithmetic and no saturation, and QP up to 75.
 * @param[in,out] pSrcDst 8 int32_t DC levels (index 2 * row + column) in; dequantised DCs out
 * @param QP     the chroma QP, 0 to 75 (the function adds 3)
 * @param pScale LevelScale4x4 for (QP + 3) % 6 (only entry 0 is read), or null for the flat matrix
 * @retval huxErrNullPtr    pSrcDst is null
 * @retval huxErrOutOfRange QP outside 0 to 75
 * @retval huxOk            block transformed
 */
HUX_API HuxResult HUX_STDCALL huxiTransformQuantInvChromaDC2x4_H264_32s_C1I(int32_t* pSrcDst, int32_t QP, const int16_t* pScale);
/**
 * @brief Dequantises with LevelScale, inverse transforms a 4x4 block, adds the prediction, clamps to 0..255.
 *
 * Each level (the DC too when pDC is null) becomes, with q = QP / 6 and LS its pScale entry (or
 * 16 * v): q of 4 or more, level * LS << (q - 4); below, (level * LS + 2^(3 - q)) >> (4 - q); saturated
 * to 16 bits. pDC, when given, is the DC as it stands. Saturating 16-bit transform. AC zero: the
 * residual is (DC + 32) >> 6 everywhere. Residual plus prediction, clamped to 0..255, goes to pDst.
 * pSrcDst is only read (left unchanged).
 * @param pPred    4x4 prediction, 8-bit samples
 * @param predStep prediction row step in bytes (not checked)
 * @param pSrcDst  16 int16_t levels (read; with AC 0 only entry 0, and none when pDC is given)
 * @param pDC      the block's dequantised DC, or null
 * @param[out] pDst 4x4 reconstruction, 8-bit
 * @param dstStep  destination row step in bytes (not checked)
 * @param QP       0 to 51
 * @param AC       0: DC alone; non-zero: AC levels present
 * @param pScale   16 int16_t LevelScale4x4 entries for QP % 6, raster order, or null for the flat matrix
 * @retval huxErrNullPtr    pPred, pDst or pSrcDst is null
 * @retval huxErrOutOfRange QP outside 0 to 51
 * @retval huxOk            reconstruction written
 */
HUX_API HuxResult HUX_STDCALL huxiTransformQuantInvAddPred4x4_H264_16s_C1IR(const uint8_t* pPred, int32_t predStep, int16_t* pSrcDst, const int16_t* pDC, uint8_t* pDst, int32_t dstStep, int32_t QP, int32_t AC, const int16_t* pScale);
/**
 * @brief High-bit-depth 4x4: dequantises, inverse transforms and adds the prediction in 32 bits,
 *        clamped to 0..2^bitDepth - 1.
 *
 * The rule of the 16-bit form with 32-bit wrapping arithmetic throughout and no saturation; QP up to 87.
 * pSrcDst is only read (left unchanged).
 * @param pPred    4x4 prediction, 16-bit samples
 * @param predStep prediction row step in bytes (not checked)
 * @param pSrcDst  16 int32_t levels (read)
 * @param pDC      the block's dequantised DC, or null
 * @param[out] pDst 4x4 reconstruction, 16-bit samples
 * @param dstStep  destination row step in bytes (not checked)
 * @param QP       0 to 87 (including the offset 6 * (bitDepth - 8))
 * @param AC       0: DC alone; non-zero: AC levels present
 * @param bitDepth 9 to 14
 * @param pScale   16 int16_t LevelScale4x4 entries for QP % 6, or null for the flat matrix
 * @retval huxErrNullPtr    pPred, pSrcDst or pDst is null
 * @retval huxErrOutOfRange QP outside 0 to 87, or bitDepth outside 9 to 14
 * @retval huxOk            reconstruction written
 */
HUX_API HuxResult HUX_STDCALL huxiTransformQuantInvAddPred4x4_H264_32s_C1IR(const uint16_t* pPred, int32_t predStep, int32_t* pSrcDst, const int32_t* pDC, uint16_t* pDst, int32_t dstStep, int32_t QP, int32_t AC, int32_t bitDepth, const int16_t* pScale);
/**
 * @brief Dequantises an 8x8 block of 16-bit levels in place with LevelScale8x8.
 *
 * With q = Qp6: q of 6 or more, (level * scale) << (q - 6), the product and shift wrapped to 16 bits;
 * below, (level * scale + 2^(5 - q)) >> (6 - q) formed in 32 bits and stored as its low 16 bits.
 * @param[in,out] pSrcDst 64 int16_t levels (raster) in; coefficients out
 * @param Qp6    QP / 6, 0 to 8
 * @param pScale 64 int16_t LevelScale8x8 entries for QP % 6, raster order (all 64 are read)
 * @retval huxErrNullPtr   pSrcDst or pScale is null
 * @retval huxErrQuantParam Qp6 outside 0 to 8 (this status, not huxErrOutOfRange: see @ref statuses)
 * @retval huxOk           block dequantised
 */
HUX_API HuxResult HUX_STDCALL huxiQuantLuma8x8Inv_H264_16s_C1I(int16_t* pSrcDst, int32_t Qp6, const int16_t* pScale);
/**
 * @brief Dequantises an 8x8 block of 32-bit levels in place with LevelScale8x8.
 *
 * The rule of the 16-bit form in 32-bit wrapping arithmetic.
 * @param[in,out] pSrcDst 64 int32_t levels (raster) in; coefficients out
 * @param Qp6    QP / 6, 0 to 14 (QP including the high-bit-depth offset)
 * @param pScale 64 int16_t LevelScale8x8 entries for QP % 6, raster order (all 64 are read)
 * @retval huxErrNullPtr    pSrcDst or pScale is null
 * @retval huxErrQuantParam Qp6 outside 0 to 14 (see @ref statuses)
 * @retval huxOk            block dequantised
 */
HUX_API HuxResult HUX_STDCALL huxiQuantInvLuma8x8_H264_32s_C1I(int32_t* pSrcDst, int32_t Qp6, const int16_t* pScale);
/**
 * @brief 8x8 inverse transform with saturating 16-bit passes, plus the prediction, clamped to 0..255.
 *
 * (x + 32) >> 6 with a saturating addition, plus the prediction, clamped to 0..255. pSrcDst is only
 * read (left unchanged).
 * @param pPred    8x8 prediction, 8-bit samples
 * @param predStep prediction row step in bytes (not checked)
 * @param pSrcDst  64 int16_t dequantised coefficients, raster order (read)
 * @param[out] pDst 8x8 reconstruction, 8-bit
 * @param dstStep  destination row step in bytes (not checked)
 * @retval huxErrNullPtr pPred, pSrcDst or pDst is null
 * @retval huxOk         reconstruction written
 */
HUX_API HuxResult HUX_STDCALL huxiTransformLuma8x8InvAddPred_H264_16s8u_C1R(const uint8_t* pPred, int32_t predStep, int16_t* pSrcDst, uint8_t* pDst, int32_t dstStep);
/**
 * @brief High-bit-depth 8x8 inverse transform in 32 bits, plus the prediction, clamped to 0..2^bitDepth - 1.
 *
 * 32-bit wrapping passes; each sample is (x + 64 * prediction + 32) >> 6, clamped. pSrc is only read.
 * @param pPred    8x8 prediction, 16-bit samples
 * @param predStep prediction row step in bytes (not checked)
 * @param pSrc     64 int32_t dequantised coefficients, raster order (read)
 * @param[out] pDst 8x8 reconstruction, 16-bit samples
 * @param dstStep  destination row step in bytes (not checked)
 * @param bitDepth sample bit depth; not checked: values outside 1 to 16 are clamped to it
 * @retval huxErrNullPtr pPred, pSrc or pDst is null
 * @retval huxOk         reconstruction written
 */
HUX_API HuxResult HUX_STDCALL huxiTransformInvAddPredLuma8x8_H264_32s16u_C1R(const uint16_t* pPred, int32_t predStep, int32_t* pSrc, uint16_t* pDst, int32_t dstStep, int32_t bitDepth);
/**
 * @brief The 4x4 inverse core transform and rounding alone, saturating 16-bit arithmetic.
 *
 * Every addition and subtraction saturates to 16 bits, the rounding addition of 32 included; then >> 6.
 * No dequantisation, prediction or clamping.
 * @param pSrc      16 int16_t dequantised coefficients, raster order (read)
 * @param[out] pDst 16 int16_t residual values
 * @retval huxErrNullPtr pSrc or pDst is null
 * @retval huxOk         residual written
 */
HUX_API HuxResult HUX_STDCALL huxiTransformResidual4x4Inv_H264_16s_C1(const int16_t* pSrc, int16_t* pDst);
/**
 * @brief The 4x4 inverse core transform and rounding alone, 32-bit arithmetic.
 *
 * 32-bit wrapping arithmetic throughout, then (x + 32) >> 6. No dequantisation, prediction or clamping.
 * @param pSrc      16 int32_t dequantised coefficients, raster order (read)
 * @param[out] pDst 16 int32_t residual values
 * @retval huxErrNullPtr pSrc or pDst is null
 * @retval huxOk         residual written
 */
HUX_API HuxResult HUX_STDCALL huxiTransformResidual4x4Inv_H264_32s_C1(const int32_t* pSrc, int32_t* pDst);

/** @} */

/* ------------------------------------------------------- H.264 weighted prediction */
/**
 * @defgroup h264weight H.264 weighted prediction
 * @brief Explicit and implicit weighted prediction, plain and weighted averages (8u and 16u).
 *
 * Weighted sample prediction: every formula below is evaluated exactly, as with
 * unbounded integers, for every weight, offset and shift value (not only the
 * standard's ranges), and the result is clamped to 0..255 (8u) or to
 * 0..(1 << bitDepth) - 1 (16u; bitDepth outside 0..16 is taken as the nearer
 * end). round(v, s) is (v + (1 << (s - 1))) >> s for s >= 1 and v for s = 0, with
 * an arithmetic shift. Unless stated otherwise, block widths and heights are 2,
 * 4, 8 or 16, and only the roi.width samples of each of the roi.height rows are
 * read or written.
 * @{
 */

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

/** @} */
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
