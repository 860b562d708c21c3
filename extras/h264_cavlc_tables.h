// The H.264 CAVLC code tables laid out as the CAVLC decoders expect them, built
// at start-up from the code lists of the standard (coeff_token, total_zeros,
// run_before), plus the 4x4 zig-zag and field scans. Caller-side helper for
// tests and example decoders; not part of the library interface.
//
// Table layout (array of 32-bit words): word 0 = width n of the first lookup
// level; word 1 + v = entry for the n-bit value v. An entry holds in bits 0..6
// the examined bits that are given back, bit 7 = continue in the sub-table
// whose word index (from word 0) is in bits 8..31, otherwise bits 8..31 = the
// value (coeff_token: TrailingOnes | TotalCoeff << 8). Bit patterns that start
// no code word hold the value 0xF0F1.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

namespace huxextras {

struct VlcCode {
  const char* bits;  // the code word, most significant bit first ("" = none)
  uint32_t value;
};

// ------------------------------------------------------------ code lists

// coeff_token by (TrailingOnes, TotalCoeff), one column per table:
// 0 <= nC < 2, 2 <= nC < 4, 4 <= nC < 8, nC == -1 (4:2:0 chroma DC),
// nC == -2 (4:2:2 chroma DC).
struct CoeffTokenRow {
  uint8_t trailingOnes, totalCoeff;
  const char* code[5];
};

inline constexpr CoeffTokenRow kCoeffTokenCodes[] = {
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

// Column of kCoeffTokenCodes for each table kind.
enum CoeffTokenKind { kNc0 = 0, kNc2 = 1, kNc4 = 2, kNcChroma420 = 3, kNcChroma422 = 4 };

// total_zeros for 4x4 blocks, by tzVlcIndex = TotalCoeff 1..15, codes for
// total_zeros = 0, 1, ... in order.
inline const std::vector<std::vector<const char*>>& total_zeros_4x4_codes() {
  static const std::vector<std::vector<const char*>> k = {
      {},
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
  return k;
}

// total_zeros for the 4:2:0 chroma DC block, tzVlcIndex 1..3.
inline const std::vector<std::vector<const char*>>& total_zeros_420_codes() {
  static const std::vector<std::vector<const char*>> k = {
      {}, {"1", "01", "001", "000"}, {"1", "01", "00"}, {"1", "0"}};
  return k;
}

// total_zeros for the 4:2:2 chroma DC block, tzVlcIndex 1..7.
inline const std::vector<std::vector<const char*>>& total_zeros_422_codes() {
  static const std::vector<std::vector<const char*>> k = {
      {},
      {"1", "010", "011", "0010", "0011", "0001", "00001", "00000"},
      {"000", "01", "001", "100", "101", "110", "111"},
      {"000", "001", "01", "10", "110", "111"},
      {"110", "00", "01", "10", "111"},
      {"00", "01", "10", "11"},
      {"00", "01", "1"},
      {"0", "1"},
  };
  return k;
}

// run_before by zerosLeft 1..6 and (index 7) zerosLeft above 6.
inline const std::vector<std::vector<const char*>>& run_before_codes() {
  static const std::vector<std::vector<const char*>> k = {
      {},
      {"1", "0"},
      {"1", "01", "00"},
      {"11", "10", "01", "00"},
      {"11", "10", "01", "001", "000"},
      {"11", "10", "011", "010", "001", "000"},
      {"11", "000", "001", "011", "010", "101", "100"},
      {"111", "110", "101", "100", "011", "010", "001", "0001", "00001", "000001", "0000001", "00000001",
       "000000001", "0000000001", "00000000001"},
  };
  return k;
}

// ------------------------------------------------------------ scans

// Scan position -> raster index (row-major 4x4).
inline constexpr int32_t kZigzag4x4[16] = {0, 1, 4, 8, 5, 2, 3, 6, 9, 12, 13, 10, 7, 11, 14, 15};
inline constexpr int32_t kFieldScan4x4[16] = {0, 4, 1, 8, 12, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15};

// ------------------------------------------------------------ builder

inline constexpr uint32_t kInvalidEntry = 0xF0F1u << 8;

struct Code {
  uint32_t bits;  // right-aligned
  int len;
  uint32_t value;
};

inline Code parse_code(const char* s, uint32_t value) {
  Code c{0, 0, value};
  for (; *s; ++s) {
    if (*s != '0' && *s != '1') throw std::invalid_argument("bad code string");
    c.bits = (c.bits << 1) | static_cast<uint32_t>(*s - '0');
    ++c.len;
  }
  if (c.len == 0 || c.len > 24) throw std::invalid_argument("bad code length");
  return c;
}

namespace detail {

// Fills the level at `start` (its width already in word `start`) with the
// codes that begin with `prefix` (prefixLen bits), adding sub-tables for the
// codes longer than this level reaches. `subBits` caps a sub-table's width.
inline void fill_level(std::vector<uint32_t>& t, size_t start, uint32_t prefix, int prefixLen,
                       const std::vector<Code>& codes, int subBits) {
  const int n = static_cast<int>(t[start]);
  const int reach = prefixLen + n;
  for (const Code& c : codes) {
    if (c.len <= prefixLen || (c.bits >> (c.len - prefixLen)) != prefix) continue;
    if (c.len <= reach) {
      const uint32_t head = c.bits & ((1u << (c.len - prefixLen)) - 1u);
      const int spare = reach - c.len;
      for (uint32_t r = 0; r < (1u << spare); ++r) {
        uint32_t& e = t[start + 1 + ((head << spare) | r)];
        if (e != kInvalidEntry) throw std::logic_error("code list is not a prefix code");
        e = (c.value << 8) | static_cast<uint32_t>(spare);
      }
    }
  }
  for (uint32_t v = 0; v < (1u << n); ++v) {
    const uint32_t longPrefix = (prefix << n) | v;
    int longest = 0;
    for (const Code& c : codes)
      if (c.len > reach && (c.bits >> (c.len - reach)) == longPrefix && c.len > longest) longest = c.len;
    if (!longest) continue;
    if (t[start + 1 + v] != kInvalidEntry) throw std::logic_error("code list is not a prefix code");
    const int width = longest - reach < subBits ? longest - reach : subBits;
    const size_t sub = t.size();
    t.push_back(static_cast<uint32_t>(width));
    t.resize(sub + 1 + (size_t{1} << width), kInvalidEntry);
    t[start + 1 + v] = (static_cast<uint32_t>(sub) << 8) | 0x80u;
    fill_level(t, sub, longPrefix, reach, codes, subBits);
  }
}

}  // namespace detail

// Builds a decoding table with a first level of `firstBits` and sub-tables of
// at most `subBits` for the longer codes.
inline std::vector<uint32_t> build_vlc_table(const std::vector<Code>& codes, int firstBits, int subBits = 8) {
  std::vector<uint32_t> t(1 + (size_t{1} << firstBits), kInvalidEntry);
  t[0] = static_cast<uint32_t>(firstBits);
  detail::fill_level(t, 0, 0, 0, codes, subBits);
  return t;
}

inline std::vector<Code> coeff_token_codes(CoeffTokenKind kind) {
  std::vector<Code> codes;
  for (const CoeffTokenRow& r : kCoeffTokenCodes)
    if (*r.code[kind]) codes.push_back(parse_code(r.code[kind], r.trailingOnes | (uint32_t{r.totalCoeff} << 8)));
  return codes;
}

inline std::vector<Code> value_codes(const std::vector<const char*>& list) {
  std::vector<Code> codes;
  for (size_t i = 0; i < list.size(); ++i) codes.push_back(parse_code(list[i], static_cast<uint32_t>(i)));
  return codes;
}

// Every table the CAVLC decoders take, with the pointer arrays in the form
// their arguments need. Not copyable (the arrays point into the tables).
class CavlcTables {
 public:
  CavlcTables() {
    for (int k = 0; k < 3; ++k) token_[k] = build_vlc_table(coeff_token_codes(CoeffTokenKind(k)), 8, 8);
    token_[3] = build_vlc_table(coeff_token_codes(kNcChroma420), 8, 8);
    token_[4] = build_vlc_table(coeff_token_codes(kNcChroma422), 8, 8);
    for (int i = 1; i < 16; ++i) tz4x4_[i] = build_vlc_table(value_codes(total_zeros_4x4_codes()[i]), 5, 4);
    for (int i = 1; i < 4; ++i) tz420_[i] = build_vlc_table(value_codes(total_zeros_420_codes()[i]), 3, 3);
    for (int i = 1; i < 8; ++i) tz422_[i] = build_vlc_table(value_codes(total_zeros_422_codes()[i]), 3, 3);
    for (int i = 1; i < 8; ++i) rb_[i] = build_vlc_table(value_codes(run_before_codes()[i]), 3, 8);
    for (int k = 0; k < 5; ++k) tokenPtr_[k] = token_[k].data();
    for (int i = 0; i < 16; ++i) {
      tz4x4Ptr_[i] = i ? tz4x4_[i].data() : nullptr;
      tz420Ptr_[i] = i && i < 4 ? tz420_[i].data() : nullptr;
      tz422Ptr_[i] = i && i < 8 ? tz422_[i].data() : nullptr;
      rbPtr_[i] = i ? rb_[i < 7 ? i : 7].data() : nullptr;
    }
  }
  CavlcTables(const CavlcTables&) = delete;
  CavlcTables& operator=(const CavlcTables&) = delete;

  // Array of the three coeff_token tables for nC 0-1, 2-3, 4-7.
  const uint32_t* const* coeff_token_4x4() const { return tokenPtr_; }
  const uint32_t* coeff_token(CoeffTokenKind k) const { return tokenPtr_[k]; }
  const uint32_t* coeff_token_chroma420() const { return tokenPtr_[kNcChroma420]; }
  const uint32_t* coeff_token_chroma422() const { return tokenPtr_[kNcChroma422]; }
  // Indexed by TotalCoeff (entry 0 null).
  const uint32_t* const* total_zeros_4x4() const { return tz4x4Ptr_; }
  const uint32_t* const* total_zeros_chroma420() const { return tz420Ptr_; }
  const uint32_t* const* total_zeros_chroma422() const { return tz422Ptr_; }
  // Indexed by zerosLeft 1..15, the table for 7 repeated from 7 on.
  const uint32_t* const* run_before() const { return rbPtr_; }

 private:
  std::vector<uint32_t> token_[5], tz4x4_[16], tz420_[4], tz422_[8], rb_[8];
  const uint32_t* tokenPtr_[5];
  const uint32_t* tz4x4Ptr_[16];
  const uint32_t* tz420Ptr_[16];
  const uint32_t* tz422Ptr_[16];
  const uint32_t* rbPtr_[16];
};

}  // namespace huxextras
