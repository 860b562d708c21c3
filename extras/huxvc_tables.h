/**
 * @file huxvc_tables.h
 * @brief Caller-side helpers for huxvc, header-only C99 (and C++): the H.264 CAVLC tables, scans and
 *        status texts.
 *
 * The library's entropy decoders hold none of the standards' code tables: the
 * caller passes them, laid out as VLC decoding tables (see huxvc.h). This file
 * carries the H.264 CAVLC code lists (coeff_token, total_zeros, run_before),
 * builds them into caller memory in that layout, gives the 4x4 zig-zag and field
 * scans, and names every status. Nothing here is part of the library: it
 * compiles into the caller's program.
 *
 * @code
 *   static HuxH264CavlcTables tables;        // 12 KiB; not movable once built
 *   if (huxH264BuildCavlcTables(&tables) != huxOk) ...;
 *   huxiDecodeCAVLCCoeffs_H264_1u16s(&words, &offset, &numCoeff, &coeffs, nC, 16,
 *       tables.coeffToken4x4, tables.totalZeros4x4, tables.runBefore, huxH264Zigzag4x4);
 * @endcode
 */
#ifndef HUXVC_TABLES_H
#define HUXVC_TABLES_H

#include <stddef.h>
#include <stdint.h>

#include "huxvc.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @defgroup tables Caller-side tables (huxvc_tables.h)
 * @brief The standard's H.264 CAVLC code lists, a VLC table builder into caller memory, the 4x4
 *        scans and status texts; header-only, compiled into the caller's program.
 *
 * The tables are laid out as @ref vlctables describes. Everything here is plain C99 data and
 * static inline functions over the public header; nothing allocates.
 * @{
 */

/** The 4x4 zig-zag (frame) scan: scan position to raster index (row-major 4x4); see @ref scans. */
static const int32_t huxH264Zigzag4x4[16] = {0, 1, 4, 8, 5, 2, 3, 6, 9, 12, 13, 10, 7, 11, 14, 15};
/** The 4x4 field scan: scan position to raster index (row-major 4x4). */
static const int32_t huxH264FieldScan4x4[16] = {0, 4, 1, 8, 12, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15};

/** coeff_token code words by (TrailingOnes, TotalCoeff), one column per table:
 *  0 <= nC < 2, 2 <= nC < 4, 4 <= nC < 8, nC = -1 (4:2:0 chroma DC), nC = -2 (4:2:2 chroma DC);
 *  "" where a table has no such code. */
typedef struct {
  uint8_t trailingOnes;  /**< TrailingOnes, 0 to 3 */
  uint8_t totalCoeff;    /**< TotalCoeff, 0 to 16 */
  const char* code[5];   /**< the code word in each of the five tables, as '0'/'1' text; "" where absent */
} HuxCoeffTokenRow;

/** The standard's coeff_token code words, every (TrailingOnes, TotalCoeff) pair. */
static const HuxCoeffTokenRow huxH264CoeffTokenCodes[62] = {
    {0, 0, {"1", "11", "1111", "01", "1"}},
    {0, 1, {"000101", "001011", "001111", "000111", "0001111"}},
    {1, 1, {"01", "10", "1110", "1", "01"}},
    {0, 2, {"00000111", "000111", "001011", "000100", "0001110"}},
    {1, 2, {"000100", "00111", "01111", "000110", "0001101"}},
    {2, 2, {"001", "011", "1101", "001", "001"}},
    {0, 3, {"000000111", "0000111", "001000", "000011", "000000111"}},
    {1, 3, {"00000110", "001010", "01100", "0000011", "0001100"}},
    {2, 3, {"0000101", "001001", "01110", "0000010", "0001011"}},
    {3, 3, {"00011", "0101", "1100", "000101", "00001"}},
    {0, 4, {"0000000111", "00000111", "0001111", "000010", "000000110"}},
    {1, 4, {"000000110", "000110", "01010", "00000011", "000000101"}},
    {2, 4, {"00000101", "000101", "01011", "00000010", "0001010"}},
    {3, 4, {"000011", "0100", "1011", "0000000", "000001"}},
    {0, 5, {"00000000111", "00000100", "0001011", "", "0000000111"}},
    {1, 5, {"0000000110", "0000110", "01000", "", "0000000110"}},
    {2, 5, {"000000101", "0000101", "01001", "", "000000100"}},
    {3, 5, {"0000100", "00110", "1010", "", "0001001"}},
    {0, 6, {"0000000001111", "000000111", "0001001", "", "00000000111"}},
    {1, 6, {"00000000110", "00000110", "001110", "", "00000000110"}},
    {2, 6, {"0000000101", "00000101", "001101", "", "0000000101"}},
    {3, 6, {"00000100", "001000", "1001", "", "0001000"}},
    {0, 7, {"0000000001011", "00000001111", "0001000", "", "000000000111"}},
    {1, 7, {"0000000001110", "000000110", "001010", "", "000000000110"}},
    {2, 7, {"00000000101", "000000101", "001001", "", "00000000101"}},
    {3, 7, {"000000100", "000100", "1000", "", "0000000100"}},
    {0, 8, {"0000000001000", "00000001011", "00001111", "", "0000000000111"}},
    {1, 8, {"0000000001010", "00000001110", "0001110", "", "000000000101"}},
    {2, 8, {"0000000001101", "00000001101", "0001101", "", "000000000100"}},
    {3, 8, {"0000000100", "0000100", "01101", "", "00000000100"}},
    {0, 9, {"00000000001111", "000000001111", "00001011", "", ""}},
    {1, 9, {"00000000001110", "00000001010", "00001110", "", ""}},
    {2, 9, {"0000000001001", "00000001001", "0001010", "", ""}},
    {3, 9, {"00000000100", "000000100", "001100", "", ""}},
    {0, 10, {"00000000001011", "000000001011", "000001111", "", ""}},
    {1, 10, {"00000000001010", "000000001110", "00001010", "", ""}},
    {2, 10, {"00000000001101", "000000001101", "00001101", "", ""}},
    {3, 10, {"0000000001100", "00000001100", "0001100", "", ""}},
    {0, 11, {"000000000001111", "000000001000", "000001011", "", ""}},
    {1, 11, {"000000000001110", "000000001010", "000001110", "", ""}},
    {2, 11, {"00000000001001", "000000001001", "00001001", "", ""}},
    {3, 11, {"00000000001100", "00000001000", "00001100", "", ""}},
    {0, 12, {"000000000001011", "0000000001111", "000001000", "", ""}},
    {1, 12, {"000000000001010", "0000000001110", "000001010", "", ""}},
    {2, 12, {"000000000001101", "0000000001101", "000001101", "", ""}},
    {3, 12, {"00000000001000", "000000001100", "00001000", "", ""}},
    {0, 13, {"0000000000001111", "0000000001011", "0000001101", "", ""}},
    {1, 13, {"000000000000001", "0000000001010", "000000111", "", ""}},
    {2, 13, {"000000000001001", "0000000001001", "000001001", "", ""}},
    {3, 13, {"000000000001100", "0000000001100", "000001100", "", ""}},
    {0, 14, {"0000000000001011", "0000000000111", "0000001001", "", ""}},
    {1, 14, {"0000000000001110", "00000000001011", "0000001100", "", ""}},
    {2, 14, {"0000000000001101", "0000000000110", "0000001011", "", ""}},
    {3, 14, {"000000000001000", "0000000001000", "0000001010", "", ""}},
    {0, 15, {"0000000000000111", "00000000001001", "0000000101", "", ""}},
    {1, 15, {"0000000000001010", "00000000001000", "0000001000", "", ""}},
    {2, 15, {"0000000000001001", "00000000001010", "0000000111", "", ""}},
    {3, 15, {"0000000000001100", "0000000000001", "0000000110", "", ""}},
    {0, 16, {"0000000000000100", "00000000000111", "0000000001", "", ""}},
    {1, 16, {"0000000000000110", "00000000000110", "0000000100", "", ""}},
    {2, 16, {"0000000000000101", "00000000000101", "0000000011", "", ""}},
    {3, 16, {"0000000000001000", "00000000000100", "0000000010", "", ""}},
};

/** total_zeros code words by TotalCoeff (row 0 unused), for total_zeros = 0, 1, ... (null-terminated):
 *  4x4 blocks (TotalCoeff 1 to 15), 4:2:0 chroma DC (1 to 3), 4:2:2 chroma DC (1 to 7). */
static const char* const huxH264TotalZerosCodes4x4[16][17] = {
    {0},
    {"1", "011", "010", "0011", "0010", "00011", "00010", "000011", "000010", "0000011", "0000010", "00000011",
     "00000010", "000000011", "000000010", "000000001"},
    {"111", "110", "101", "100", "011", "0101", "0100", "0011", "0010", "00011", "00010", "000011", "000010",
     "000001", "000000"},
    {"0101", "111", "110", "101", "0100", "0011", "100", "011", "0010", "00011", "00010", "000001", "00001",
     "000000"},
    {"00011", "111", "0101", "0100", "110", "101", "100", "0011", "011", "0010", "00010", "00001", "00000"},
    {"0101", "0100", "0011", "111", "110", "101", "100", "011", "0010", "00001", "0001", "00000"},
    {"000001", "00001", "111", "110", "101", "100", "011", "010", "0001", "001", "000000"},
    {"000001", "00001", "101", "100", "011", "11", "010", "0001", "001", "000000"},
    {"000001", "0001", "00001", "011", "11", "10", "010", "001", "000000"},
    {"000001", "000000", "0001", "11", "10", "001", "01", "00001"},
    {"00001", "00000", "001", "11", "10", "01", "0001"},
    {"0000", "0001", "001", "010", "1", "011"},
    {"0000", "0001", "01", "1", "001"},
    {"000", "001", "1", "01"},
    {"00", "01", "1"},
    {"0", "1"},
};
/** total_zeros code words of 4:2:0 chroma DC blocks by TotalCoeff 1 to 3 (row 0 unused), null-terminated. */
static const char* const huxH264TotalZerosCodes420[4][5] = {{0}, {"1", "01", "001", "000"}, {"1", "01", "00"}, {"1", "0"}};
/** total_zeros code words of 4:2:2 chroma DC blocks by TotalCoeff 1 to 7 (row 0 unused), null-terminated. */
static const char* const huxH264TotalZerosCodes422[8][9] = {
    {0},
    {"1", "010", "011", "0010", "0011", "0001", "00001", "00000"},
    {"000", "01", "001", "100", "101", "110", "111"},
    {"000", "001", "01", "10", "110", "111"},
    {"110", "00", "01", "10", "111"},
    {"00", "01", "10", "11"},
    {"00", "01", "1"},
    {"0", "1"},
};
/** run_before code words by zerosLeft 1 to 6, and (row 7) zerosLeft above 6 (null-terminated). */
static const char* const huxH264RunBeforeCodes[8][16] = {
    {0},
    {"1", "0"},
    {"1", "01", "00"},
    {"11", "10", "01", "00"},
    {"11", "10", "01", "001", "000"},
    {"11", "10", "011", "010", "001", "000"},
    {"11", "000", "001", "011", "010", "101", "100"},
    {"111", "110", "101", "100", "011", "010", "001", "0001", "00001", "000001", "0000001", "00000001",
     "000000001", "0000000001", "00000000001"},
};

/** One code word: its bits right-aligned, its length (1 to 24), its decoded value. */
typedef struct {
  uint32_t bits;   /**< the code word's bits, right-aligned (first stream bit highest) */
  int32_t len;     /**< its length in bits, 1 to 24 */
  uint32_t value;  /**< the value a table entry for it holds in bits 8..31 */
} HuxVlcCode;

/** The value a VLC decoding table holds where no code word starts. */
#define HUX_VLC_INVALID (0xF0F1u << 8)

/**
 * @brief Parses a code word written as '0' and '1' characters.
 * @param s     the code word text
 * @param value the value to decode it to
 * @param[out] c the parsed code
 * @return its length (1 to 24), or 0 for an empty, malformed or longer code word
 */
static inline int32_t huxVlcParse(const char* s, uint32_t value, HuxVlcCode* c) {
  c->bits = 0;
  c->len = 0;
  c->value = value;
  for (; *s; ++s) {
    if ((*s != '0' && *s != '1') || c->len == 24) return c->len = 0;
    c->bits = (c->bits << 1) | (uint32_t)(*s - '0');
    ++c->len;
  }
  return c->len;
}

/**
 * @brief One level of huxVlcBuild(): fills the level at word start of t with the codes that begin with
 *        prefix, appending sub-tables for longer codes.
 * @param[in,out] t  the table being built; word start holds the level's width, its entries the marker
 * @param capacity   words available in t
 * @param[in,out] used words of t in use; grows by each sub-table appended
 * @param start      word index of the level in t
 * @param prefix     the bits every code of this level begins with (right-aligned)
 * @param prefixLen  their number
 * @param codes      the codes
 * @param count      their number
 * @param subBits    the widest sub-table level, 1 to 16
 * @return 0, or -1 when the codes are not a prefix code or the table would pass capacity words
 */
static inline int huxVlcFillLevel(uint32_t* t, size_t capacity, size_t* used, size_t start, uint32_t prefix,
                                  int32_t prefixLen, const HuxVlcCode* codes, size_t count, int32_t subBits) {
  const int32_t n = (int32_t)t[start], reach = prefixLen + n;
  uint32_t v, r;
  size_t i, k;
  for (i = 0; i < count; ++i) {
    const HuxVlcCode* c = &codes[i];
    if (c->len <= prefixLen || (c->bits >> (c->len - prefixLen)) != prefix || c->len > reach) continue;
    for (r = 0; r < (1u << (reach - c->len)); ++r) {
      uint32_t* e = &t[start + 1 + (((c->bits & ((1u << (c->len - prefixLen)) - 1u)) << (reach - c->len)) | r)];
      if (*e != HUX_VLC_INVALID) return -1;
      *e = (c->value << 8) | (uint32_t)(reach - c->len);
    }
  }
  for (v = 0; v < (1u << n); ++v) {
    const uint32_t longPrefix = (prefix << n) | v;
    int32_t longest = 0, width;
    size_t sub;
    for (i = 0; i < count; ++i)
      if (codes[i].len > reach && (codes[i].bits >> (codes[i].len - reach)) == longPrefix && codes[i].len > longest)
        longest = codes[i].len;
    if (!longest) continue;
    if (t[start + 1 + v] != HUX_VLC_INVALID) return -1;
    width = longest - reach < subBits ? longest - reach : subBits;
    sub = *used;
    if (sub + 1 + ((size_t)1 << width) > capacity) return -1;
    *used = sub + 1 + ((size_t)1 << width);
    t[sub] = (uint32_t)width;
    for (k = sub + 1; k < *used; ++k) t[k] = HUX_VLC_INVALID;
    t[start + 1 + v] = ((uint32_t)sub << 8) | 0x80u;
    if (huxVlcFillLevel(t, capacity, used, sub, longPrefix, reach, codes, count, subBits)) return -1;
  }
  return 0;
}

/**
 * @brief Builds a VLC decoding table (the layout of @ref vlctables) of a prefix code into t.
 *
 * A first level of firstBits and sub-tables of at most subBits for the longer codes; entries no code
 * reaches hold #HUX_VLC_INVALID. Sub-table links count from t[0], so the table may sit anywhere.
 * @param codes     the code words and their values
 * @param count     their number
 * @param firstBits width of the first level, 1 to 16
 * @param subBits   widest sub-table level, 1 to 16
 * @param[out] t    the table
 * @param capacity  words available at t
 * @return the words used, or 0 when a width is out of range, the codes are not a prefix code or the
 *         table does not fit
 */
static inline size_t huxVlcBuild(const HuxVlcCode* codes, size_t count, int32_t firstBits, int32_t subBits,
                                 uint32_t* t, size_t capacity) {
  size_t used = 1 + ((size_t)1 << firstBits), k;
  if (firstBits < 1 || firstBits > 16 || subBits < 1 || subBits > 16 || used > capacity) return 0;
  t[0] = (uint32_t)firstBits;
  for (k = 1; k < used; ++k) t[k] = HUX_VLC_INVALID;
  return huxVlcFillLevel(t, capacity, &used, 0, 0, 0, codes, count, subBits) ? 0 : used;
}

/**
 * @brief The coeff_token codes of one table, with the values the decoders expect.
 * @param column the table: 0 (0 <= nC < 2), 1 (2 <= nC < 4), 2 (4 <= nC < 8), 3 (nC = -1), 4 (nC = -2)
 * @param[out] out the codes; value TrailingOnes | TotalCoeff << 8
 * @return their count (at most 62)
 */
static inline size_t huxH264CoeffTokenList(int32_t column, HuxVlcCode out[62]) {
  size_t n = 0, i;
  for (i = 0; i < 62; ++i) {
    const HuxCoeffTokenRow* r = &huxH264CoeffTokenCodes[i];
    if (huxVlcParse(r->code[column], r->trailingOnes | ((uint32_t)r->totalCoeff << 8), &out[n])) ++n;
  }
  return n;
}
/**
 * @brief Parses a null-terminated list of code words for the values 0, 1, 2, ...
 * @param list the code words ('0'/'1' text), null-terminated
 * @param max  the most entries list may hold
 * @param[out] out the codes (at most 16)
 * @return their count
 */
static inline size_t huxVlcValueList(const char* const* list, size_t max, HuxVlcCode out[16]) {
  size_t n = 0;
  while (n < max && n < 16 && list[n] && huxVlcParse(list[n], (uint32_t)n, &out[n])) ++n;
  return n;
}

/** Words of HuxH264CavlcTables::words: room for every CAVLC table built by huxH264BuildCavlcTables(). */
#define HUX_H264_CAVLC_WORDS 3072

/** Every table the CAVLC decoders take, built by huxH264BuildCavlcTables, with the pointer arrays in the
 *  form their arguments need. The pointers address `words`: the object must not be copied or moved. */
typedef struct {
  uint32_t words[HUX_H264_CAVLC_WORDS];    /**< the tables themselves */
  const uint32_t* coeffToken4x4[3];        /**< nC 0-1, 2-3, 4-7 (nC 8 and above need none) */
  const uint32_t* coeffTokenChroma420;     /**< nC = -1: 2x2 chroma DC */
  const uint32_t* coeffTokenChroma422;     /**< nC = -2: 2x4 chroma DC */
  const uint32_t* totalZeros4x4[16];       /**< by TotalCoeff 1 to 15; entry 0 null */
  const uint32_t* totalZerosChroma420[16]; /**< by TotalCoeff 1 to 3; others null */
  const uint32_t* totalZerosChroma422[16]; /**< by TotalCoeff 1 to 7; others null */
  const uint32_t* runBefore[16];  /**< by zerosLeft 1 to 15, the table of 7 repeated from 7 on */
} HuxH264CavlcTables;

/**
 * @brief Builds one table into t->words at *used (a step of huxH264BuildCavlcTables()).
 * @param[in,out] t    the table set
 * @param[in,out] used words of t->words in use; grows by the table's size
 * @param codes        the codes
 * @param count        their number
 * @param firstBits    first-level width
 * @param subBits      widest sub-table level
 * @return the table, or null when it does not fit
 */
static inline const uint32_t* huxH264Table(HuxH264CavlcTables* t, size_t* used, const HuxVlcCode* codes,
                                           size_t count, int32_t firstBits, int32_t subBits) {
  const size_t n = huxVlcBuild(codes, count, firstBits, subBits, t->words + *used, HUX_H264_CAVLC_WORDS - *used);
  const uint32_t* table = t->words + *used;
  if (!n) return 0;
  *used += n;  /* sub-table links count from the table's own word 0, so the table may sit anywhere */
  return table;
}

/**
 * @brief Builds all the standard's CAVLC tables into t, with the pointer arrays the decoders take.
 *
 * coeff_token tables with 8-bit first levels and sub-tables, total_zeros and run_before in one or two
 * levels. The pointers address t->words: build t where it is to stay, and do not copy it.
 * @param[out] t the table set
 * @retval huxErrNullPtr t is null
 * @retval huxErrSize    the tables did not fit HUX_H264_CAVLC_WORDS (they do; a guard for edits)
 * @retval huxOk         every table built
 */
static inline HuxResult huxH264BuildCavlcTables(HuxH264CavlcTables* t) {
  HuxVlcCode codes[62];
  size_t used = 0, n;
  int32_t i;
  const uint32_t* rb7 = 0;
  if (!t) return huxErrNullPtr;
  for (i = 0; i < 5; ++i) {
    const uint32_t* table;
    n = huxH264CoeffTokenList(i, codes);
    table = huxH264Table(t, &used, codes, n, 8, 8);
    if (i < 3) t->coeffToken4x4[i] = table;
    else if (i == 3) t->coeffTokenChroma420 = table;
    else t->coeffTokenChroma422 = table;
  }
  for (i = 0; i < 16; ++i) {
    t->totalZeros4x4[i] = t->totalZerosChroma420[i] = t->totalZerosChroma422[i] = t->runBefore[i] = 0;
    if (i == 0) continue;
    n = huxVlcValueList(huxH264TotalZerosCodes4x4[i], 17, codes);
    t->totalZeros4x4[i] = huxH264Table(t, &used, codes, n, 5, 4);
    if (i < 4) {
      n = huxVlcValueList(huxH264TotalZerosCodes420[i], 5, codes);
      t->totalZerosChroma420[i] = huxH264Table(t, &used, codes, n, 3, 3);
    }
    if (i < 8) {
      n = huxVlcValueList(huxH264TotalZerosCodes422[i], 9, codes);
      t->totalZerosChroma422[i] = huxH264Table(t, &used, codes, n, 3, 3);
      if (i < 7 || !rb7) {
        n = huxVlcValueList(huxH264RunBeforeCodes[i], 16, codes);
        t->runBefore[i] = huxH264Table(t, &used, codes, n, 3, 8);
        if (i == 7) rb7 = t->runBefore[7];
      }
    }
    if (i > 7) t->runBefore[i] = rb7;
  }
  for (i = 0; i < 3; ++i)
    if (!t->coeffToken4x4[i]) return huxErrSize;
  for (i = 1; i < 16; ++i)
    if (!t->totalZeros4x4[i] || !t->runBefore[i] || (i < 4 && !t->totalZerosChroma420[i]) ||
        (i < 8 && !t->totalZerosChroma422[i]))
      return huxErrSize;
  return t->coeffTokenChroma420 && t->coeffTokenChroma422 ? huxOk : huxErrSize;
}

/**
 * @brief A short English text for a status (for messages; the library itself prints nothing).
 * @param status any value
 * @return a constant string; "unknown warning" or "unknown error" for values that are not statuses
 */
static inline const char* huxStatusText(HuxResult status) {
  switch (status) {
    case huxWrnOddSize: return "odd picture width or height; the even part was processed";
    case huxWrnNoNeighbour: return "a 4x4 intra mode used 128 for an absent neighbour sample";
    case huxWrnNoOperation: return "a mode outside its set; nothing was done";
    case huxOk: return "success";
    case huxErrNotSupported: return "not supported for these arguments";
    case huxErrBadArg: return "an argument outside its set";
    case huxErrSize: return "a size or count that is not positive or does not fit";
    case huxErrNullPtr: return "a required pointer is null";
    case huxErrMemAlloc: return "memory allocation failed";
    case huxErrDivByZero: return "a divisor argument is zero";
    case huxErrOutOfRange: return "a value outside its legal range";
    case huxErrLevelRange: return "a quantised level exceeds the coefficient encoder's range";
    case huxErrStep: return "a row step smaller than the block width";
    case huxErrContextMismatch: return "a state block's tag is not the expected one";
    case huxErrModeSelector: return "a mode selector outside its set";
    case huxErrScaleFactor: return "a down-scaling factor other than 2, 4 or 8";
    case huxErrVLCCode: return "the stream holds a code word the table marks as invalid";
    case huxErrNoNeighbour: return "an intra mode needs a neighbour marked absent";
    case huxErrCoeffStream: return "an invalid coefficient stream";
    case huxErrQuantParam: return "a quantisation parameter outside its range";
    case huxErrBitOffset: return "a bit offset outside 0 to 7";
    default: return status > 0 ? "unknown warning" : "unknown error";
  }
}

/** @} */

#ifdef __cplusplus
}
#endif

#endif /* HUXVC_TABLES_H */
