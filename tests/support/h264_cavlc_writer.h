// A CAVLC writer for the tests: encodes a block in the H.264 residual syntax
// (coeff_token, trailing-one signs, levels with prefix, suffix, escape and the
// suffixLength adaptation, total_zeros, run_before) into the word-form stream
// layout (32-bit words, bits from bit 31 down), using the same code lists the
// caller-side decoding tables are built from.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <vector>

#include "huxvc_tables.h"

namespace hux::test {

class WordBitWriter {
 public:
  // The first word starts with 31 - startOffset junk bits (all ones or the
  // given pattern), so the stream begins at bit `startOffset` of word 0.
  explicit WordBitWriter(int startOffset = 31, uint32_t junk = 0xffffffffu) {
    if (startOffset < 31) put(junk >> (startOffset + 1), 31 - startOffset);
  }
  void put(uint32_t v, int n) {  // n = 0..32, low n bits of v
    if (n <= 0) return;
    if (n < 32) v &= (1u << n) - 1u;
    const int used = static_cast<int>(bits_ & 31), room = 32 - used;
    if (used == 0) words_.push_back(0);
    if (n <= room) {
      words_.back() |= v << (room - n);
    } else {
      words_.back() |= v >> (n - room);
      words_.push_back(v << (32 - (n - room)));
    }
    bits_ += n;
  }
  void put_bit(uint32_t b) { put(b, 1); }
  void put_code(const HuxVlcCode& c) { put(c.bits, c.len); }
  int64_t bits() const { return bits_; }
  // The stream padded with `pad` further words (for the decoders' look-ahead)
  // filled with `fill`.
  std::vector<uint32_t> words(int pad = 1, uint32_t fill = 0) const {
    std::vector<uint32_t> w = words_;
    if (bits_ & 31) w.back() |= fill & ((1u << (32 - (bits_ & 31))) - 1u);
    w.insert(w.end(), static_cast<size_t>(pad), fill);
    return w;
  }

 private:
  std::vector<uint32_t> words_;
  int64_t bits_ = 0;
};

// Block shapes of the encoder: a 4x4 block coded with the coeff_token of nC,
// or a chroma DC block.
enum class CavlcShape { k4x4, kChroma420, kChroma422 };

class CavlcEncoder {
 public:
  CavlcEncoder() {
    for (int k = 0; k < 5; ++k)
      for (const HuxCoeffTokenRow& r : huxH264CoeffTokenCodes)
        huxVlcParse(r.code[k], 0, &token_[k][r.totalCoeff][r.trailingOnes]);
    load(tz_[0], huxH264TotalZerosCodes4x4);
    load(tz_[1], huxH264TotalZerosCodes420);
    load(tz_[2], huxH264TotalZerosCodes422);
    load(rb_, huxH264RunBeforeCodes);
  }

  // Encodes `coeffs` (coefficients in scan order: maxNum of them; for a 4x4
  // block with maxNum 15 they are scan positions 1..15). nC selects the 4x4
  // coeff_token (0..7 table, 8 or more the fixed-length form); chroma shapes
  // ignore it. Level codes must fit the escape range of 16-bit magnitudes
  // unless the test wants the wrap.
  void encode(WordBitWriter& w, const int32_t* coeffs, int maxNum, CavlcShape shape, int nC = 0) const {
    int pos[16], total = 0, t1 = 0;
    int32_t lv[16];
    for (int i = maxNum - 1; i >= 0; --i)
      if (coeffs[i]) pos[total] = i, lv[total++] = coeffs[i];
    while (t1 < total && t1 < 3 && std::abs(lv[t1]) == 1) ++t1;

    if (shape == CavlcShape::k4x4 && nC >= 8) {
      w.put(total == 0 ? 3u : static_cast<uint32_t>(((total - 1) << 2) | t1), 6);
    } else {
      const int col = shape == CavlcShape::kChroma420 ? 3 : shape == CavlcShape::kChroma422 ? 4 : nC < 2 ? 0 : nC < 4 ? 1 : 2;
      const HuxVlcCode& c = token_[col][total][t1];
      if (!c.len) throw std::logic_error("no coeff_token code");
      w.put_code(c);
    }
    if (total == 0) return;
    for (int i = 0; i < t1; ++i) w.put_bit(lv[i] < 0 ? 1u : 0u);  // first coefficient first

    int suffixLength = (total > 10 && t1 < 3) ? 1 : 0;
    for (int i = t1; i < total; ++i) {
      int64_t code = lv[i] > 0 ? 2 * int64_t{lv[i]} - 2 : -2 * int64_t{lv[i]} - 1;
      if (i == t1 && t1 < 3) code -= 2;
      put_level(w, code, suffixLength);
      if (suffixLength == 0) suffixLength = 1;
      if (std::abs(lv[i]) > (3 << (suffixLength - 1)) && suffixLength < 6) ++suffixLength;
    }

    int zerosLeft = 0;
    if (total < maxNum) {
      zerosLeft = pos[0] + 1 - total;
      w.put_code(tz_[static_cast<int>(shape)].at(total).at(zerosLeft));
    }
    for (int k = 0; k + 1 < total && zerosLeft > 0; ++k) {
      const int run = pos[k] - pos[k + 1] - 1;
      w.put_code(rb_.at(zerosLeft < 7 ? zerosLeft : 7).at(run));
      zerosLeft -= run;
    }
  }

  // A level code with its prefix and suffix for the given suffixLength.
  static void put_level(WordBitWriter& w, int64_t code, int suffixLength) {
    int64_t rest;  // what is left beyond the prefix-15 threshold
    if (suffixLength == 0 && code < 14) return put_prefix(w, static_cast<int>(code));
    if (suffixLength == 0 && code < 30) return put_prefix(w, 14), w.put(static_cast<uint32_t>(code - 14), 4);
    if (suffixLength == 0) {
      rest = code - 30;
    } else if (code < (int64_t{15} << suffixLength)) {
      put_prefix(w, static_cast<int>(code >> suffixLength));
      return w.put(static_cast<uint32_t>(code & ((1 << suffixLength) - 1)), suffixLength);
    } else {
      rest = code - (int64_t{15} << suffixLength);
    }
    if (rest < 4096) return put_prefix(w, 15), w.put(static_cast<uint32_t>(rest), 12);
    int prefix = 16;
    while (rest >= (int64_t{1} << (prefix - 2)) - 4096) ++prefix;
    put_prefix(w, prefix);
    w.put(static_cast<uint32_t>(rest - ((int64_t{1} << (prefix - 3)) - 4096)), prefix - 3);
  }
  static void put_prefix(WordBitWriter& w, int zeros) {
    for (; zeros > 31; zeros -= 31) w.put(0, 31);
    w.put(1, zeros + 1);
  }

 private:
  using Lists = std::vector<std::vector<HuxVlcCode>>;
  template <size_t Rows, size_t Cols>
  static void load(Lists& dst, const char* const (&src)[Rows][Cols]) {
    dst.resize(Rows);
    for (size_t i = 0; i < Rows; ++i)
      for (size_t k = 0; k < Cols && src[i][k]; ++k) huxVlcParse(src[i][k], 0, &dst[i].emplace_back());
  }
  HuxVlcCode token_[5][17][4] = {};
  Lists tz_[3], rb_;
};

// Exp-Golomb code of codeNum (up to 2^31 - 1 here).
inline void put_exp_golomb(WordBitWriter& w, uint32_t codeNum) {
  const uint64_t v = uint64_t{codeNum} + 1;
  int m = 0;
  while ((v >> (m + 1)) != 0) ++m;
  w.put(0, m);
  w.put(static_cast<uint32_t>(v), m + 1);
}

// The caller-side decoding tables (built by the installed helper, as a caller
// builds them) under the names the tests use, and an encoder; once per program.
struct CavlcTables : HuxH264CavlcTables {
  CavlcTables() {
    if (huxH264BuildCavlcTables(this) != huxOk) throw std::logic_error("CAVLC tables");
  }
  CavlcTables(const CavlcTables&) = delete;
  const uint32_t* const* coeff_token_4x4() const { return coeffToken4x4; }
  const uint32_t* coeff_token_chroma420() const { return coeffTokenChroma420; }
  const uint32_t* coeff_token_chroma422() const { return coeffTokenChroma422; }
  const uint32_t* const* total_zeros_4x4() const { return totalZeros4x4; }
  const uint32_t* const* total_zeros_chroma420() const { return totalZerosChroma420; }
  const uint32_t* const* total_zeros_chroma422() const { return totalZerosChroma422; }
  const uint32_t* const* run_before() const { return runBefore; }
};
inline const CavlcTables& cavlc_tables() {
  static const CavlcTables t;
  return t;
}
// One table of the standard's codes in any layout (first-level and sub-table
// widths): the coeff_token codes of a column, or row `row` of a value list.
inline std::vector<uint32_t> vlc_table(const std::vector<HuxVlcCode>& codes, int first, int sub) {
  std::vector<uint32_t> t(size_t{1} << 17);
  t.resize(huxVlcBuild(codes.data(), codes.size(), first, sub, t.data(), t.size()));
  if (t.empty()) throw std::logic_error("VLC table");
  return t;
}
inline std::vector<HuxVlcCode> token_codes(int column) {
  HuxVlcCode c[62];
  return {c, c + huxH264CoeffTokenList(column, c)};
}
template <size_t Rows, size_t Cols>
std::vector<HuxVlcCode> value_codes(const char* const (&lists)[Rows][Cols], size_t row) {
  HuxVlcCode c[16];
  return {c, c + huxVlcValueList(lists[row], Cols, c)};
}

inline const CavlcEncoder& cavlc_encoder() {
  static const CavlcEncoder e;
  return e;
}

}  // namespace hux::test
