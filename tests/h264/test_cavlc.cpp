// CAVLC and Exp-Golomb decoding: the code tables, the particular rules of the
// residual syntax as a table of hand-made streams, failure statuses and what
// they leave, check orders.
#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <vector>

#include "h264/cavlc_kernels.h"
#include "h264_cavlc_tables.h"
#include "huxvc.h"
#include "support/h264_cavlc_writer.h"
#include "support/test_util.h"

namespace {

using hux::test::CavlcEncoder;
using hux::test::WordBitWriter;
using huxextras::CavlcTables;

const CavlcTables& tables() { return hux::test::cavlc_tables(); }

// A stream from a string of '0'/'1' (spaces ignored), padded with `fill` words.
std::vector<uint32_t> stream(const char* bits, int startOffset = 31, uint32_t fill = 0) {
  WordBitWriter w(startOffset);
  for (; *bits; ++bits)
    if (*bits != ' ') w.put_bit(*bits == '1');
  return w.words(2, fill);
}

// ------------------------------------------------------------ code tables

struct TableCase {
  const char* name;
  std::vector<huxextras::Code> codes;
  const uint32_t* table;
};

std::vector<TableCase> all_tables() {
  std::vector<TableCase> v;
  const CavlcTables& t = tables();
  const char* tokenNames[5] = {"nC0", "nC2", "nC4", "nC-1", "nC-2"};
  for (int k = 0; k < 5; ++k)
    v.push_back({tokenNames[k], huxextras::coeff_token_codes(huxextras::CoeffTokenKind(k)),
                 t.coeff_token(huxextras::CoeffTokenKind(k))});
  auto add = [&](const char* name, const std::vector<std::vector<const char*>>& lists, const uint32_t* const* tbl, int n) {
    for (int i = 1; i < n; ++i) v.push_back({name, huxextras::value_codes(lists[i]), tbl[i]});
  };
  add("tz4x4", huxextras::total_zeros_4x4_codes(), t.total_zeros_4x4(), 16);
  add("tz420", huxextras::total_zeros_420_codes(), t.total_zeros_chroma420(), 4);
  add("tz422", huxextras::total_zeros_422_codes(), t.total_zeros_chroma422(), 8);
  add("rb", huxextras::run_before_codes(), t.run_before(), 8);
  return v;
}

// The typed-in code lists (which the test encoder shares with the tables)
// must be prefix codes that nearly fill their code space.
TEST(CavlcTables, CodeListsArePrefixCodesWithKraftSumAtMostOne) {
  for (const TableCase& tc : all_tables()) {
    double kraft = 0;
    for (const auto& a : tc.codes) {
      kraft += 1.0 / double(1u << a.len);
      for (const auto& b : tc.codes)
        if (&a != &b && a.len <= b.len) EXPECT_NE(a.bits, b.bits >> (b.len - a.len)) << tc.name;
    }
    EXPECT_LE(kraft, 1.0) << tc.name;
    // Only coeff_token (the all-zero region) and two 4x4 tables leave codes unused.
    EXPECT_GT(kraft, 0.99) << tc.name;
  }
}

TEST(CavlcTables, EveryCodeDecodesToItsValueAndLengthAtEveryOffset) {
  hux::test::Rng rng(11);
  for (const TableCase& tc : all_tables())
    for (const auto& c : tc.codes)
      for (int off = 0; off < 32; off += 3) {
        WordBitWriter w(off, rng());
        w.put_code(c);
        w.put(rng(), 32);
        auto words = w.words(1, rng());
        for (int impl = 0; impl < 2; ++impl) {
          uint32_t v = 0;
          bool ok;
          uint32_t* p = words.data();
          int32_t o = off;
          if (impl == 0) {
            hux::bits::WordBitBuffer r(p, o);
            ok = hux::h264::detail::decode_vlc(r, tc.table, 0xffffffu, v);
            r.store(&p, &o);
          } else {
            hux::h264::PlainReader r(p, o);
            ok = hux::h264::detail::decode_vlc(r, tc.table, 0xffffffu, v);
            r.store(&p, &o);
          }
          ASSERT_TRUE(ok) << tc.name;
          EXPECT_EQ(v, c.value) << tc.name;
          EXPECT_EQ((p - words.data()) * 32 + (off - o), c.len) << tc.name;
        }
      }
}

TEST(CavlcTables, UnusedPatternsAreMarkedInvalidAndScansArePermutations) {
  // 16 zero bits start no coeff_token code in any 4x4 table, nor in the 2x4
  // one; nine start no total_zeros code for one coefficient.
  auto s = stream("0000000000000000 0000000000000000");
  uint32_t v;
  for (int k : {0, 1, 2, 4}) {
    hux::bits::WordBitBuffer r(s.data(), 31);
    EXPECT_FALSE(hux::h264::detail::decode_vlc(r, tables().coeff_token(huxextras::CoeffTokenKind(k)), 0xffffu, v));
  }
  hux::bits::WordBitBuffer r(s.data(), 31);
  EXPECT_FALSE(hux::h264::detail::decode_vlc(r, tables().total_zeros_4x4()[1], 0xffffffu, v));
  for (const int32_t* scan : {huxextras::kZigzag4x4, huxextras::kFieldScan4x4}) {
    int seen = 0;
    for (int i = 0; i < 16; ++i) seen |= 1 << scan[i];
    EXPECT_EQ(seen, 0xffff);
  }
}

// ------------------------------------------------------------ 4x4 rules, both widths

struct HandCase {
  const char* name;
  const char* bits;
  int off0, nC, maxNum;
  bool field;
  HuxResult status;
  int num;   // -99: left as it was
  int used;  // bits consumed
  std::vector<std::pair<int, int>> levels;  // (scan index, level)
};

std::ostream& operator<<(std::ostream& os, const HandCase& c) { return os << c.name; }

const char* const kZeros32 = "0000000000000000 0000000000000000";

const HandCase kHandCases[] = {
    // The textbook block 0 3 -1 0 / 0 -1 1 0 / 1 0 0 0 / 0 0 0 0, also across a word boundary.
    {"textbook", "0000100 011 1 0010 111 10 1 1 01", 31, 0, 16, false, huxOk, 5, 24, {{1, 3}, {5, -1}, {4, -1}, {7, 1}, {3, 1}}},
    {"textbook_at_5", "0000100 011 1 0010 111 10 1 1 01", 5, 1, 16, false, huxOk, 5, 24, {{1, 3}, {5, -1}, {4, -1}, {7, 1}, {3, 1}}},
    // nC >= 8: six-bit tokens; "000011" empty, "000000" one level, no trailing
    // ones: level "1" (prefix 0 with the bonus: magnitude 2), total_zeros "1".
    {"nC8_empty", "000011 1", 31, 8, 16, false, huxOk, 0, 6, {}},
    {"nC1000_empty", "000011 1", 31, 1000, 16, false, huxOk, 0, 6, {}},
    {"nC9_one_level", "000000 1 1", 31, 9, 16, false, huxOk, 1, 8, {{0, 2}}},
    {"nC16_one_level", "000000 1 1", 31, 16, 16, false, huxOk, 1, 8, {{0, 2}}},
    // One trailing one (+1), total_zeros 0: maxNumCoeff 15 never writes scan position 0.
    {"maxNum15_field", "01 0 1", 31, 0, 15, true, huxOk, 1, 4, {{0, 1}}},
    {"maxNum16_field", "01 0 1", 31, 0, 16, true, huxOk, 1, 4, {{0, 1}}},
    // Two levels, no trailing ones (nC0 "00000111"): first 5 (level code 8 - 2
    // bonus = 6: prefix 6, suffixLength 0), then suffixLength 2: "1 01" = -1,
    // which suffixLength 1 would read differently; total_zeros "111" = 0.
    {"first_above_3_moves_suffix_to_2", "00000111 0000001 101 111", 31, 0, 16, false, huxOk, 2, 21, {{1, 5}, {0, -1}}},
    // An empty block writes only the count.
    {"empty", "1 1", 31, 0, 16, false, huxOk, 0, 1, {}},
    // An invalid coeff_token restores the cursor and writes nothing.
    {"invalid_token_at_31", kZeros32, 31, 0, 16, false, huxErrVLCCode, -99, 0, {}},
    {"invalid_token_at_5", kZeros32, 5, 2, 16, false, huxErrVLCCode, -99, 0, {}},
    {"invalid_token_at_0", kZeros32, 0, 4, 16, false, huxErrVLCCode, -99, 0, {}},
};

template <class Out>
HuxResult decode4x4(uint32_t** p, int32_t* off, int16_t* num, Out** q, int nC, int maxNum,
                    const uint32_t* const* tok, const uint32_t* const* tz, const uint32_t* const* rb, const int32_t* scan) {
  if constexpr (sizeof(Out) == 2)
    return huxiDecodeCAVLCCoeffs_H264_1u16s(p, off, num, q, nC, static_cast<int16_t>(maxNum), tok, tz, rb, scan);
  else
    return huxiDecodeCAVLCCoeffs_H264_1u32s(p, off, num, q, nC, maxNum, tok, tz, rb, scan);
}

template <class Out>
void run_hand(const HandCase& c) {
  const CavlcTables& t = tables();
  auto s = stream(c.bits, c.off0);
  uint32_t* p = s.data();
  int32_t off = c.off0;
  std::array<Out, 24> buf, want;
  buf.fill(Out(0x55));
  want.fill(Out(0x55));
  Out* q = buf.data() + 4;
  int16_t num = -99;
  const int32_t* scan = c.field ? huxextras::kFieldScan4x4 : huxextras::kZigzag4x4;
  EXPECT_EQ(decode4x4<Out>(&p, &off, &num, &q, c.nC, c.maxNum, t.coeff_token_4x4(), t.total_zeros_4x4(),
                           t.run_before(), scan),
            c.status);
  EXPECT_EQ(num, c.num);
  EXPECT_EQ((p - s.data()) * 32 + (c.off0 - off), c.used);
  const bool wrote = c.status == huxOk && c.num > 0;
  EXPECT_EQ(q, buf.data() + (wrote ? 20 : 4));
  if (wrote) {
    std::fill(want.begin() + 4, want.begin() + 20, Out(0));
    for (auto [k, v] : c.levels) want[4 + scan[k + 16 - c.maxNum]] = static_cast<Out>(v);
  }
  EXPECT_EQ(buf, want);
}

class CavlcRules : public ::testing::TestWithParam<HandCase> {};
TEST_P(CavlcRules, Blocks16) { run_hand<int16_t>(GetParam()); }
TEST_P(CavlcRules, Blocks32) { run_hand<int32_t>(GetParam()); }
INSTANTIATE_TEST_SUITE_P(Streams, CavlcRules, ::testing::ValuesIn(kHandCases),
                         [](const ::testing::TestParamInfo<HandCase>& i) { return std::string(i.param.name); });

// An escape whose level code exceeds 16 bits: both widths wrap the code
// modulo 65536 before taking the sign.
TEST(CavlcEscape, WrapsModulo65536) {
  const CavlcTables& t = tables();
  for (int32_t level : {40000, -40000, 32768, -32768, 65535, 70001}) {
    const int64_t code = level > 0 ? 2 * int64_t{level} - 2 : -2 * int64_t{level} - 1;
    const uint32_t wrapped = static_cast<uint32_t>(code) & 0xffffu;
    const int32_t want = (wrapped & 1) ? -static_cast<int32_t>((wrapped + 1) >> 1) : static_cast<int32_t>((wrapped + 2) >> 1);
    // nC>=8 token 000000 (TC1 T1 0), level code with bonus, total_zeros "1".
    WordBitWriter w;
    w.put(0, 6);
    CavlcEncoder::put_level(w, code - 2, 0);
    w.put_bit(1);
    auto s = w.words();
    uint32_t* p = s.data();
    int32_t off = 31;
    int32_t b32[16] = {}, *q = b32;
    int16_t b16[16] = {}, *q16 = b16, num = 0;
    ASSERT_EQ(decode4x4<int32_t>(&p, &off, &num, &q, 8, 16, t.coeff_token_4x4(), t.total_zeros_4x4(), t.run_before(),
                                 huxextras::kZigzag4x4),
              huxOk);
    EXPECT_EQ(b32[0], want) << level;
    EXPECT_GE(b32[0], -32768);
    EXPECT_LE(b32[0], 32768);
    EXPECT_EQ((p - s.data()) * 32 + 31 - off, w.bits());
    p = s.data();
    off = 31;
    ASSERT_EQ(decode4x4<int16_t>(&p, &off, &num, &q16, 8, 16, t.coeff_token_4x4(), t.total_zeros_4x4(), t.run_before(),
                                 huxextras::kZigzag4x4),
              huxOk);
    EXPECT_EQ(b16[0], static_cast<int16_t>(want));
  }
}

// A table whose every entry is the invalid marker.
const uint32_t kAllInvalid[3] = {1, 0xF0F1u << 8, 0xF0F1u << 8};

struct Out4x4 {
  std::array<int16_t, 16 + 8> buf{};
  int16_t* ptr = buf.data() + 4;
  int16_t num = -99;
};

HuxResult call4x4(const char* bits, int32_t& off, Out4x4& o, int nC, const uint32_t* const* tok,
                  const uint32_t* const* tz, const uint32_t* const* rb) {
  auto s = stream(bits);
  uint32_t* p = s.data();
  off = 31;
  const HuxResult st = decode4x4<int16_t>(&p, &off, &o.num, &o.ptr, nC, 16, tok, tz, rb, huxextras::kZigzag4x4);
  EXPECT_EQ(p, s.data());
  return st;
}

TEST(CavlcFailures, WhatIsLeftBehind) {
  const CavlcTables& t = tables();
  // TC 2, T1 2 (nC0 "001"), signs "01"; total_zeros table for TC 2 missing / invalid.
  const uint32_t* tzNull[16] = {};
  const uint32_t* tzBad[16];
  for (auto& x : tzBad) x = kAllInvalid;
  for (int variant = 0; variant < 2; ++variant) {
    Out4x4 o;
    o.buf.fill(5);
    int32_t off;
    EXPECT_EQ(call4x4("001 01 0 0", off, o, 0, t.coeff_token_4x4(), variant ? tzBad : tzNull, t.run_before()),
              variant ? huxErrVLCCode : huxErrNullPtr);
    EXPECT_EQ(o.num, 2);
    EXPECT_EQ(o.ptr, o.buf.data() + 4);  // not advanced
    for (int i = 0; i < 16; ++i) EXPECT_EQ(o.buf[4 + i], 0);  // zeroed
    EXPECT_EQ(o.buf[3], 5);
    EXPECT_EQ(o.buf[20], 5);
    // Behind the token and signs; an invalid code also keeps its examined bit.
    EXPECT_EQ(off, 31 - 5 - variant);
  }
  {  // run_before missing: TC 2 T1 2, signs ++, total_zeros(TC2) "101" = 2.
    const uint32_t* rbNull[16] = {};
    Out4x4 o;
    int32_t off;
    EXPECT_EQ(call4x4("001 00 101 1", off, o, 0, t.coeff_token_4x4(), t.total_zeros_4x4(), rbNull), huxErrNullPtr);
    EXPECT_EQ(off, 31 - 8);
    for (int i = 0; i < 16; ++i) EXPECT_EQ(o.buf[4 + i], 0);  // the run of the first level is needed before it is placed
  }
  {  // A null coeff_token table consumes nothing; nC >= 8 needs none.
    const uint32_t* tok[3] = {t.coeff_token_4x4()[0], nullptr, t.coeff_token_4x4()[2]};
    Out4x4 o;
    int32_t off;
    EXPECT_EQ(call4x4("1", off, o, 3, tok, t.total_zeros_4x4(), t.run_before()), huxErrNullPtr);
    EXPECT_EQ(off, 31);
    EXPECT_EQ(o.num, -99);
    EXPECT_EQ(call4x4("000011", off, o, 8, tok, t.total_zeros_4x4(), t.run_before()), huxOk);
    EXPECT_EQ(o.num, 0);
    EXPECT_EQ(off, 25);
  }
  // The 2x4 chroma DC decoder restores the cursor on an invalid coeff_token too.
  auto s = stream(kZeros32, 3);
  uint32_t* p = s.data();
  int32_t off = 3;
  int16_t b[8] = {7, 7, 7, 7, 7, 7, 7, 7}, *q = b, num = -99;
  EXPECT_EQ(huxiDecodeCAVLCChroma422DcCoeffs_H264_1u16s(&p, &off, &num, &q, t.coeff_token_chroma422(),
                                                         t.total_zeros_chroma422(), t.run_before()),
            huxErrVLCCode);
  EXPECT_EQ(p, s.data());
  EXPECT_EQ(off, 3);
  EXPECT_EQ(num, -99);
  EXPECT_EQ(q, b);
  for (int16_t x : b) EXPECT_EQ(x, 7);
}

// ------------------------------------------------------------ check orders

struct Args4x4 {
  uint32_t word[4] = {0x80000000u, 0, 0, 0};
  uint32_t* wp = word;
  int32_t off = 31;
  int16_t num = -99;
  int16_t blk[16] = {};
  int16_t* bp = blk;
  int32_t blk32[16] = {};
  int32_t* bp32 = blk32;
};

// Argument `nullArg` (0..7 in the order of the pointers) passed as null.
HuxResult run4x4(bool wide, Args4x4& a, int nullArg, int32_t nC, int32_t maxNum) {
  const CavlcTables& t = tables();
  auto arg = [&](int k, auto* v) { return nullArg == k ? nullptr : v; };
  const auto* tok = arg(4, t.coeff_token_4x4());
  const auto* tz = arg(5, t.total_zeros_4x4());
  const auto* rb = arg(6, t.run_before());
  const auto* scan = arg(7, huxextras::kZigzag4x4);
  if (wide) return decode4x4<int32_t>(arg(0, &a.wp), arg(1, &a.off), arg(2, &a.num), arg(3, &a.bp32), nC, maxNum, tok, tz, rb, scan);
  return decode4x4<int16_t>(arg(0, &a.wp), arg(1, &a.off), arg(2, &a.num), arg(3, &a.bp), nC, maxNum, tok, tz, rb, scan);
}

TEST(CavlcChecks, Order4x4) {
  for (bool w : {false, true}) {
    for (int n = 0; n < 8; ++n) {
      Args4x4 a;
      EXPECT_EQ(run4x4(w, a, n, -1, 3), huxErrNullPtr) << n;  // pointers before ranges
      EXPECT_EQ(a.num, -99);
    }
    Args4x4 a;
    a.wp = nullptr;
    EXPECT_EQ(run4x4(w, a, -1, -1, 3), huxErrNullPtr);
    Args4x4 b;
    b.bp = nullptr;
    b.bp32 = nullptr;
    EXPECT_EQ(run4x4(w, b, -1, -1, 3), huxErrNullPtr);
    Args4x4 c;
    EXPECT_EQ(run4x4(w, c, -1, -1, 3), huxErrOutOfRange);  // maxNumCoeff before vlcSelect
    EXPECT_EQ(run4x4(w, c, -1, -1, 16), huxErrOutOfRange);
    EXPECT_EQ(run4x4(w, c, -1, 0, 14), huxErrOutOfRange);
    EXPECT_EQ(run4x4(w, c, -1, 0, 0), huxErrOutOfRange);
    EXPECT_EQ(c.num, -99);
    EXPECT_EQ(c.off, 31);
    EXPECT_EQ(run4x4(w, c, -1, 0, 15), huxOk);  // "1": empty block
    EXPECT_EQ(c.num, 0);
  }
  // The 32-bit form looks at all bits of maxNumCoeff.
  Args4x4 d;
  EXPECT_EQ(run4x4(true, d, -1, 0, 0x10010), huxErrOutOfRange);
}

TEST(CavlcChecks, ChromaDcEagerAndLazy) {
  const CavlcTables& t = tables();
  // 32-bit 2x2 and both 2x4 decoders test every pointer first.
  for (int kind = 0; kind < 3; ++kind) {
    for (int n = 0; n < 9; ++n) {
      uint32_t word[2] = {0x80000000u, 0};
      uint32_t* wp = n == 7 ? nullptr : word;
      int32_t off = 31;
      int16_t num = -99;
      int32_t b32[8] = {};
      int16_t b16[8] = {};
      int32_t* q32 = n == 8 ? nullptr : b32;
      int16_t* q16 = n == 8 ? nullptr : b16;
      uint32_t** a0 = n == 0 ? nullptr : &wp;
      int32_t* a1 = n == 1 ? nullptr : &off;
      int16_t* a2 = n == 2 ? nullptr : &num;
      const uint32_t* a4 = n == 4 ? nullptr : (kind == 0 ? t.coeff_token_chroma420() : t.coeff_token_chroma422());
      const uint32_t* const* a5 = n == 5 ? nullptr : t.total_zeros_chroma422();
      const uint32_t* const* a6 = n == 6 ? nullptr : t.run_before();
      HuxResult st;
      if (kind == 0)
        st = huxiDecodeCAVLCChromaDcCoeffs_H264_1u32s(a0, a1, a2, n == 3 ? nullptr : &q32, a4, a5, a6);
      else if (kind == 1)
        st = huxiDecodeCAVLCChroma422DcCoeffs_H264_1u32s(a0, a1, a2, n == 3 ? nullptr : &q32, a4, a5, a6);
      else
        st = huxiDecodeCAVLCChroma422DcCoeffs_H264_1u16s(a0, a1, a2, n == 3 ? nullptr : &q16, a4, a5, a6);
      EXPECT_EQ(st, huxErrNullPtr) << kind << " " << n;
      EXPECT_EQ(num, -99);
      EXPECT_EQ(off, 31);
    }
  }
  // The 16-bit 2x2 decoder: "1 0 1" (TC1 T1 1, +, total_zeros 0) needs no table.
  auto s = stream("101");
  uint32_t* p = s.data();
  int32_t off = 31;
  int16_t num = 0;
  int16_t b[4] = {9, 9, 9, 9};
  int16_t* q = b;
  EXPECT_EQ(huxiDecodeCAVLCChromaDcCoeffs_H264_1u16s(&p, &off, &num, &q, nullptr, nullptr, nullptr), huxOk);
  EXPECT_EQ(num, 1);
  EXPECT_EQ(b[0], 1);
  EXPECT_EQ(b[1], 0);
  EXPECT_EQ(q, b + 4);
  EXPECT_EQ(off, 28);
  // "01": empty, no block pointer needed.
  s = stream("01");
  p = s.data();
  off = 31;
  EXPECT_EQ(huxiDecodeCAVLCChromaDcCoeffs_H264_1u16s(&p, &off, &num, nullptr, nullptr, nullptr, nullptr), huxOk);
  EXPECT_EQ(num, 0);
  EXPECT_EQ(off, 29);
  // Anything else needs the coeff_token table: nothing consumed without it.
  s = stream("001 00");
  p = s.data();
  off = 31;
  num = -99;
  EXPECT_EQ(huxiDecodeCAVLCChromaDcCoeffs_H264_1u16s(&p, &off, &num, &q, nullptr, nullptr, nullptr), huxErrNullPtr);
  EXPECT_EQ(off, 31);
  EXPECT_EQ(num, -99);
  // With it, TC2 T1 2 ("001", signs "00"), total_zeros(2) needed next.
  q = b;
  EXPECT_EQ(huxiDecodeCAVLCChromaDcCoeffs_H264_1u16s(&p, &off, &num, &q, tables().coeff_token_chroma420(), nullptr,
                                                     nullptr),
            huxErrNullPtr);
  EXPECT_EQ(num, 2);
  EXPECT_EQ(off, 26);
  EXPECT_EQ(q, b);
  // A missing block pointer is found after the token and its sign.
  s = stream("11");
  p = s.data();
  off = 31;
  EXPECT_EQ(huxiDecodeCAVLCChromaDcCoeffs_H264_1u16s(&p, &off, &num, nullptr, nullptr, nullptr, nullptr),
            huxErrNullPtr);
  EXPECT_EQ(num, 1);
  EXPECT_EQ(off, 29);
  // Entry checks: cursor, offset, count, then the word pointer.
  uint32_t* nullWord = nullptr;
  EXPECT_EQ(huxiDecodeCAVLCChromaDcCoeffs_H264_1u16s(nullptr, &off, &num, &q, nullptr, nullptr, nullptr), huxErrNullPtr);
  EXPECT_EQ(huxiDecodeCAVLCChromaDcCoeffs_H264_1u16s(&p, nullptr, &num, &q, nullptr, nullptr, nullptr), huxErrNullPtr);
  EXPECT_EQ(huxiDecodeCAVLCChromaDcCoeffs_H264_1u16s(&p, &off, nullptr, &q, nullptr, nullptr, nullptr), huxErrNullPtr);
  EXPECT_EQ(huxiDecodeCAVLCChromaDcCoeffs_H264_1u16s(&nullWord, &off, &num, &q, nullptr, nullptr, nullptr),
            huxErrNullPtr);
}

// ------------------------------------------------------------ Exp-Golomb

struct GolombCase {
  int m;  // leading zeros
  uint32_t info;
  int32_t unsignedValue, signedValue;
};

class ExpGolomb : public ::testing::TestWithParam<GolombCase> {};

TEST_P(ExpGolomb, Examples) {
  const GolombCase& c = GetParam();
  for (int off0 : {31, 1, 0}) {
    WordBitWriter w(off0, 0x12345678u);
    w.put(0, c.m);
    w.put_bit(1);
    w.put(c.info, c.m);
    auto s = w.words(1, 0xffffffffu);
    for (int sgn = 0; sgn < 2; ++sgn) {
      uint32_t* p = s.data();
      int32_t off = off0;
      int32_t v32 = 0;
      ASSERT_EQ(huxiDecodeExpGolombOne_H264_1u32s(&p, &off, &v32, sgn), huxOk);
      EXPECT_EQ(v32, sgn ? c.signedValue : c.unsignedValue);
      EXPECT_EQ((p - s.data()) * 32 + (31 - off) - (31 - off0), 2 * c.m + 1);
      p = s.data();
      off = off0;
      int16_t v16 = 0;
      ASSERT_EQ(huxiDecodeExpGolombOne_H264_1u16s(&p, &off, &v16, static_cast<uint8_t>(sgn ? 0x80 : 0)), huxOk);
      EXPECT_EQ(v16, static_cast<int16_t>(sgn ? c.signedValue : c.unsignedValue));
      EXPECT_EQ((p - s.data()) * 32 + (31 - off) - (31 - off0), 2 * c.m + 1);
    }
  }
}

// "1" = 0, "010" = 1 (signed 1), "011" = 2 (signed -1), and longer codes
// across word boundaries.
INSTANTIATE_TEST_SUITE_P(
    Codes, ExpGolomb,
    ::testing::Values(GolombCase{0, 0, 0, 0}, GolombCase{1, 0, 1, 1}, GolombCase{1, 1, 2, -1},
                      GolombCase{2, 0, 3, 2}, GolombCase{2, 3, 6, -3}, GolombCase{8, 0, 255, 128},
                      GolombCase{16, 0, 65535, 32768}, GolombCase{16, 0xffff, 131070, -65535},
                      GolombCase{30, 0x3fffffff, 2147483646, -1073741823},
                      GolombCase{31, 0, 2147483647, 1073741824}));

TEST(ExpGolombChecks, OffsetAbove31AndNullPointers) {
  uint32_t w[2] = {0x80000000u, 0};
  uint32_t* p = w;
  int16_t v16 = 7;
  int32_t v32 = 7;
  for (int32_t bad : {32, 33, -1, INT32_MIN}) {
    int32_t off = bad;
    EXPECT_EQ(huxiDecodeExpGolombOne_H264_1u16s(&p, &off, &v16, 0), huxErrBadArg);
    EXPECT_EQ(huxiDecodeExpGolombOne_H264_1u32s(&p, &off, &v32, 1), huxErrBadArg);
    EXPECT_EQ(off, bad);
  }
  EXPECT_EQ(v16, 7);
  EXPECT_EQ(v32, 7);
  EXPECT_EQ(p, w);
  int32_t off = 40;  // nulls come before the offset
  uint32_t* nullWord = nullptr;
  EXPECT_EQ(huxiDecodeExpGolombOne_H264_1u32s(&nullWord, &off, &v32, 0), huxErrNullPtr);
  EXPECT_EQ(huxiDecodeExpGolombOne_H264_1u32s(&p, &off, nullptr, 0), huxErrNullPtr);
  EXPECT_EQ(huxiDecodeExpGolombOne_H264_1u16s(&p, nullptr, &v16, 0), huxErrNullPtr);
}

TEST(ExpGolombChecks, RandomRoundTripBothReaders) {
  hux::test::Rng rng(5);
  for (int off0 = 0; off0 < 32; ++off0) {
    WordBitWriter w(off0, rng());
    std::vector<uint32_t> vals;
    for (int i = 0; i < 300; ++i) {
      const uint32_t v = rng() >> (rng() % 32);
      vals.push_back(v & 0x7fffffffu);
      hux::test::put_exp_golomb(w, vals.back());
    }
    auto s = w.words(1, rng());
    uint32_t *p = s.data(), *q = s.data();
    int32_t off = off0, offq = off0;
    for (uint32_t v : vals) {
      int32_t got = 0;
      ASSERT_EQ(huxiDecodeExpGolombOne_H264_1u32s(&p, &off, &got, 0), huxOk);
      ASSERT_EQ(static_cast<uint32_t>(got), v);
      ASSERT_EQ(hux::h264::ref::exp_golomb(&q, &offq, false), static_cast<int32_t>(v));
      ASSERT_EQ(p, q);
      ASSERT_EQ(off, offq);
    }
    EXPECT_EQ((p - s.data()) * 32 + (31 - off), w.bits());
  }
}

}  // namespace
