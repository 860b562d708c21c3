// CAVLC residual and Exp-Golomb decoding over the word-form cursor.
//
// One algorithm, written once over a reader type:
//   ref::  the plain reader (bits::WordReader, level prefixes bit by bit):
//          the readable statement, used by the tests as the twin;
//   fast:: the 64-bit bit buffer refilled a word at a time, with the level
//          prefix found by a leading-zero count: what the exports run.
// Both give identical levels, counts and cursors for every input.
//
// Tables come from the caller (an array of 32-bit words: word 0 holds the
// width n of the first lookup level, entry 1 + v the entry for the n-bit
// value v; bit 7 of an entry links to a sub-table whose word index sits in
// bits 8..31, otherwise bits 0..6 count the examined bits that are given
// back and bits 8..31 hold the value; 0xF0F1 marks a forbidden code). They
// are trusted to be well formed, but every index computed from stream bits is
// bounded here so that no stream can lead outside a table or a block.
#pragma once

#include <cstdint>
#include <cstring>

#include "common/bitbuf.h"
#include "common/bits.h"
#include "huxvc.h"

namespace hux::h264 {

// ------------------------------------------------------------ level tables

// A level of magnitude above the threshold of the current suffixLength lets
// the suffixLength grow by one (0 grows on any level).
inline constexpr uint8_t kSuffixThreshold[6] = {0, 3, 6, 12, 24, 48};

struct LevelTables {
  uint8_t size[7][16];   // suffix bits by suffixLength and level_prefix
  uint16_t base[7][16];  // magnitude before bonus and suffix
};

constexpr LevelTables make_level_tables() {
  LevelTables t{};
  for (int p = 0; p < 16; ++p) {
    t.size[0][p] = p < 14 ? 0 : (p == 14 ? 4 : 12);
    t.base[0][p] = p < 14 ? 1 : (p == 14 ? 8 : 16);
    for (int s = 1; s < 7; ++s) {
      t.size[s][p] = static_cast<uint8_t>(p < 15 ? s : 12);
      t.base[s][p] = static_cast<uint16_t>((p << (s - 1)) + 1);
    }
  }
  return t;
}
inline constexpr LevelTables kLevel = make_level_tables();

// Escape bias by suffixLength: codes of suffixLength 0 start their escape 15
// code values later.
inline constexpr int32_t kEscapeBias[7] = {15, 0, 0, 0, 0, 0, 0};

// Raster order (two wide, four high) of the 4:2:2 chroma DC scan.
inline constexpr uint8_t kScan2x4[8] = {0, 2, 1, 4, 6, 3, 5, 7};

inline constexpr uint32_t kInvalidCode = 0xF0F1;

// ------------------------------------------------------------ readers

// The plain reader: fields through bits::WordReader, level prefixes one bit
// at a time.
class PlainReader {
 public:
  PlainReader(const uint32_t* ptr, int32_t offset) : r_(ptr, offset & 31) {}
  uint32_t peek(int n) const { return r_.peek(n); }
  void skip(int n) {
    if (n) r_.skip(n);
  }
  uint32_t read(int n) { return n ? r_.read(n) : 0u; }
  int zeros() {
    int z = 0;
    while (r_.read(1) == 0) ++z;
    return z;
  }
  void store(uint32_t** pp, int32_t* off) const {
    *pp = const_cast<uint32_t*>(r_.ptr());
    *off = r_.offset();
  }

 private:
  bits::WordReader r_;
};

namespace detail {

// Reads an n-bit field of any length; fields longer than 32 bits (beyond the
// interface's range) keep their last 32 bits.
template <class Reader>
inline uint32_t read_long(Reader& r, int n) {
  while (n > 32) {
    r.read(32);
    n -= 32;
  }
  return r.read(n);
}

// Decodes one code word. Returns false on a forbidden code word, with the
// reader behind every bit examined for it; otherwise the reader is behind the
// code. `valueMask` selects the value bits compared with the marker (16 bits
// for coeff_token, 24 for total_zeros and run_before).
//
// Every level peeks all the bits examined so far, from the code's first bit,
// and nothing is consumed before the final entry: its give-back may then
// reach into any earlier level (more than was examined consumes nothing), and
// the buffered reader, whose peeks from one position all fit after loading at
// most one word, moves once per code. Levels may be one bit wide (a 16-bit
// code then takes 16 levels), so links are followed until a final entry; the
// only bound is the widest peek. No code of any table exceeds 16 bits, so 32
// bits examined without a final entry mean a malformed table (a link back to a
// table already visited): that ends as a forbidden code, behind the bits
// examined.
template <class Reader>
inline bool decode_vlc(Reader& r, const uint32_t* table, uint32_t valueMask, uint32_t& value) {
  int used = static_cast<int>(((table[0] - 1u) & 31u) + 1u);
  uint32_t e = table[1 + r.peek(used)];
  while (e & 0x80u) [[unlikely]] {
    const uint32_t* t = table + (e >> 8);
    const int n = static_cast<int>(((t[0] - 1u) & 31u) + 1u);
    if (used + n > 32) {
      r.skip(used);
      value = kInvalidCode;
      return false;
    }
    used += n;
    // used >= 1 before this level, so n <= 31 and the mask's shift is defined.
    e = t[1 + (r.peek(used) & ((1u << n) - 1u))];
  }
  value = e >> 8;
  if ((value & valueMask) == kInvalidCode) {
    r.skip(used);
    return false;
  }
  const int back = static_cast<int>(e & 0x7fu);
  r.skip(used - (back < used ? back : used));
  return true;
}

template <int kN>
inline int position(int p, const int32_t* scan) {
  if constexpr (kN == 16) {
    return scan[p & 15] & 15;
  } else if constexpr (kN == 8) {
    return kScan2x4[p & 7];
  } else {
    return p & 3;
  }
}

// Everything behind coeff_token: numCoeff, trailing-one signs, levels,
// total_zeros and run placement. Pointers that a decoder checks only when it
// needs them (the 16-bit 4:2:0 chroma DC decoder) are tested here; for the
// others they are known to be non-null already. The reader is left behind the
// last bit used; the caller writes it back whatever the status.
template <int kN, class Out, class Reader>
inline HuxResult decode_residual(Reader& r, int total, int t1, int16_t* numCoeff, Out** block, int maxNum,
                                 const uint32_t* const* totalZeros, const uint32_t* const* runBefore,
                                 const int32_t* scan) {
  *numCoeff = static_cast<int16_t>(total);

  int32_t level[16];  // decoding order: highest frequency first
  const uint32_t signs = r.read(t1);
  for (int i = 0; i < t1; ++i) level[i] = 1 - 2 * static_cast<int32_t>((signs >> (t1 - 1 - i)) & 1u);

  if (total == 0) return huxOk;
  if (!block || !*block) return huxErrNullPtr;
  Out* blk = *block;
  std::memset(blk, 0, sizeof(Out) * kN);

  int suffixLength = (total > 10 && t1 < 3) ? 1 : 0;
  uint32_t bonus = t1 < 3 ? 1u : 0u;
  uint32_t mag = 0;  // magnitude of the level decoded before, 16 bits
  for (int i = t1; i < total; ++i) {
    // The adaptation of the previous level, applied before this one: a
    // first level above 3 moves straight to 2.
    if (i == t1 + 1 && mag > 3) {
      suffixLength = 2;
    } else if (suffixLength < 6 && mag > kSuffixThreshold[suffixLength]) {
      ++suffixLength;
    }
    const int prefix = r.zeros();
    int32_t v;
    if (prefix <= 15) {
      const int k = kLevel.size[suffixLength][prefix];
      const uint32_t x = k ? r.read(k) : static_cast<uint32_t>(prefix);
      mag = (kLevel.base[suffixLength][prefix] + bonus + (x >> 1)) & 0xffffu;
      v = (x & 1u) ? -static_cast<int32_t>(mag) : static_cast<int32_t>(mag);
    } else {
      // Escape: the level code is kept to 16 bits before the sign is taken,
      // so no level leaves -32768..32768 in either output width.
      const int bits = prefix - 3;
      const uint32_t x = read_long(r, bits);
      const uint32_t step = bits < 16 ? (1u << bits) : 0u;
      const uint32_t code = (static_cast<uint32_t>(kEscapeBias[suffixLength]) + 2u * bonus + step +
                             (15u << suffixLength) + x - 4096u) & 0xffffu;
      const int32_t c = static_cast<int32_t>(code);
      v = (code & 1u) ? (-c - 1) >> 1 : (c + 2) >> 1;
      mag = static_cast<uint32_t>(v < 0 ? -v : v) & 0xffffu;
    }
    level[i] = v;
    bonus = 0;
  }

  int zerosLeft = 0;
  if (total < maxNum) {
    if (!totalZeros || !totalZeros[total]) return huxErrNullPtr;
    uint32_t tz;
    if (!decode_vlc(r, totalZeros[total], 0xffffffu, tz)) return huxErrVLCCode;
    zerosLeft = static_cast<int>(tz);
  }

  const int skipDc = kN == 16 ? 16 - maxNum : 0;
  for (int k = 0; k < total; ++k) {
    const int remaining = total - k;
    int run = zerosLeft;
    if (remaining > 1 && zerosLeft > 0) {
      const int idx = zerosLeft < kN - 2 ? zerosLeft : kN - 2;
      if (!runBefore || !runBefore[idx]) return huxErrNullPtr;
      uint32_t rb;
      if (!decode_vlc(r, runBefore[idx], 0xffffffu, rb)) return huxErrVLCCode;
      run = static_cast<int>(rb);
    }
    blk[position<kN>(zerosLeft + remaining - 1 + skipDc, scan)] = static_cast<Out>(level[k]);
    zerosLeft -= run;
  }
  *block = blk + kN;
  return huxOk;
}

// One block: coeff_token from `tokenTable` (null: the 6-bit fixed-length
// token of nC >= 8), then the residual. An invalid coeff_token leaves the
// caller's cursor as it was.
template <int kN, class Out, class Reader>
inline HuxResult decode_block(uint32_t** bitStream, int32_t* bitOffset, int16_t* numCoeff, Out** block,
                              const uint32_t* tokenTable, int maxNum, const uint32_t* const* totalZeros,
                              const uint32_t* const* runBefore, const int32_t* scan) {
  Reader r(*bitStream, *bitOffset);
  int total, t1;
  if (!tokenTable) {
    const uint32_t v = r.read(6);
    total = v == 3 ? 0 : static_cast<int>(v >> 2) + 1;
    t1 = v == 3 ? 0 : static_cast<int>(v & 3u);
  } else {
    uint32_t v;
    if (!decode_vlc(r, tokenTable, 0xffffu, v)) return huxErrVLCCode;
    const int t = static_cast<int>(v & 0xffu);
    const int c = static_cast<int>((v >> 8) & 0xffu);
    t1 = t < 3 ? t : 3;
    total = c < kN ? c : kN;
  }
  const HuxResult st = decode_residual<kN>(r, total, t1, numCoeff, block, maxNum, totalZeros, runBefore, scan);
  r.store(bitStream, bitOffset);
  return st;
}

template <class Reader>
inline uint32_t exp_golomb(Reader& r) {
  if (r.read(1)) return 0;
  const int m = 1 + r.zeros();
  const uint32_t info = read_long(r, m);
  return (m < 32 ? (1u << m) : 0u) - 1u + info;
}

inline int32_t signed_code(uint32_t codeNum) {
  return static_cast<int32_t>((codeNum & 1u) ? (codeNum >> 1) + 1u : 0u - (codeNum >> 1));
}

}  // namespace detail

// ------------------------------------------------------------ kernels

#define HUX_CAVLC_KERNELS(Reader)                                                                        \
  template <class Out>                                                                                   \
  inline HuxResult cavlc4x4(uint32_t** bs, int32_t* off, int16_t* num, Out** blk, const uint32_t* token, \
                            int maxNum, const uint32_t* const* tz, const uint32_t* const* rb,             \
                            const int32_t* scan) {                                                       \
    return detail::decode_block<16, Out, Reader>(bs, off, num, blk, token, maxNum, tz, rb, scan);        \
  }                                                                                                      \
  template <int kN, class Out>                                                                           \
  inline HuxResult cavlc_chroma_dc(uint32_t** bs, int32_t* off, int16_t* num, Out** blk,                 \
                                   const uint32_t* token, const uint32_t* const* tz,                     \
                                   const uint32_t* const* rb) {                                          \
    return detail::decode_block<kN, Out, Reader>(bs, off, num, blk, token, kN, tz, rb, nullptr);         \
  }                                                                                                      \
  /* Returns the decoded value (signed mapping when isSigned). */                                        \
  inline int32_t exp_golomb(uint32_t** bs, int32_t* off, bool isSigned) {                                \
    Reader r(*bs, *off);                                                                                 \
    const uint32_t c = detail::exp_golomb(r);                                                            \
    r.store(bs, off);                                                                                    \
    return isSigned ? detail::signed_code(c) : static_cast<int32_t>(c);                                  \
  }

namespace ref {
HUX_CAVLC_KERNELS(PlainReader)
}  // namespace ref

namespace fast {
HUX_CAVLC_KERNELS(bits::WordBitBuffer)

// The 16-bit 4:2:0 chroma DC decoder: the two commonest code words are
// recognised before any table is needed. "1" (one coefficient, a trailing
// one) is decoded with its sign and its total_zeros code (1, 01, 001, 000:
// position 0 to 3); "01" is the empty block. Everything else, and every
// pointer other than the cursor and numCoeff, is looked at only when needed,
// in the order the table path needs it.
inline HuxResult cavlc_chroma_dc420_quick(uint32_t** bs, int32_t* off, int16_t* num, int16_t** blk,
                                          const uint32_t* token, const uint32_t* const* tz,
                                          const uint32_t* const* rb) {
  bits::WordBitBuffer r(*bs, *off);
  if (r.peek(1)) {
    r.skip(1);
    *num = 1;
    const uint32_t sign = r.read(1);
    if (!blk || !*blk) {
      r.store(bs, off);
      return huxErrNullPtr;
    }
    int pos = 0;
    while (pos < 3 && r.read(1) == 0) ++pos;
    int16_t* b = *blk;
    std::memset(b, 0, 4 * sizeof(int16_t));
    b[pos] = sign ? -1 : 1;
    *blk = b + 4;
    r.store(bs, off);
    return huxOk;
  }
  // A first bit 0 starts a code of at least two bits.
  if (r.peek(2) == 1) {
    r.skip(2);
    *num = 0;
    r.store(bs, off);
    return huxOk;
  }
  if (!token) return huxErrNullPtr;
  return detail::decode_block<4, int16_t, bits::WordBitBuffer>(bs, off, num, blk, token, 4, tz, rb, nullptr);
}
}  // namespace fast

#undef HUX_CAVLC_KERNELS

}  // namespace hux::h264
