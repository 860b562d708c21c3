// CAVLC and Exp-Golomb decoding: the code tables, the particular rules of the
// residual syntax as a table of hand-made streams, failure statuses and what
// they leave, check orders.
#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <type_traits>
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
        if (&a != &b && a.len <= b.len) {
          EXPECT_NE(a.bits, b.bits >> (b.len - a.len)) << tc.name;
        }
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
          uint32_t* p = words.data();
          int32_t o = off;
          auto dec = [&](auto r) {
            const bool ok = hux::h264::detail::decode_vlc(r, tc.table, 0xffffffu, v);
            r.store(&p, &o);
            return ok;
          };
          const bool ok = impl ? dec(hux::h264::PlainReader(p, o)) : dec(hux::bits::WordBitBuffer(p, o));
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
    int32_t b32[16] = {};
    int16_t b16[16] = {};
    auto run = [&](auto* b) {
      uint32_t* p = s.data();
      int32_t off = 31;
      int16_t num = 0;
      auto* q = b;
      ASSERT_EQ(decode4x4<std::remove_pointer_t<decltype(b)>>(&p, &off, &num, &q, 8, 16, t.coeff_token_4x4(),
                                                             t.total_zeros_4x4(), t.run_before(), huxextras::kZigzag4x4),
                huxOk);
      EXPECT_EQ((p - s.data()) * 32 + 31 - off, w.bits()) << level;
    };
    run(b32);
    run(b16);
    EXPECT_EQ(b32[0], want) << level;
    EXPECT_EQ(b16[0], static_cast<int16_t>(want)) << level;
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

using hux::test::expect_null_checks;

// Every pointer argument null in turn, and the word and block pointers behind
// them: -8 ahead of any range check, nothing consumed, counted or written.
TEST(CavlcChecks, PointersFirstThenRanges) {
  const CavlcTables& t = tables();
  uint32_t word[2] = {0x80000000u, 0}, *wp = word, *nw = nullptr;
  int32_t off = 31;
  int16_t num = -99, b16[16] = {}, *q16 = b16, *n16 = nullptr;
  int32_t b32[16] = {}, *q32 = b32, *n32 = nullptr;
  const auto *tok = t.coeff_token_4x4(), *tz = t.total_zeros_4x4(), *rb = t.run_before();
  const int32_t* scan = huxextras::kZigzag4x4;
  int n = 0;
  for (int k = 0; k < 3; ++k) {  // all set, the word pointer null, the block pointer null
    uint32_t** w = k == 1 ? &nw : &wp;
    int16_t** o16 = k == 2 ? &n16 : &q16;
    int32_t** o32 = k == 2 ? &n32 : &q32;
    n += expect_null_checks("4x4/16", huxErrNullPtr, {}, huxiDecodeCAVLCCoeffs_H264_1u16s, w, &off, &num, o16, -1, int16_t{3}, tok, tz, rb, scan);
    n += expect_null_checks("4x4/32", huxErrNullPtr, {}, huxiDecodeCAVLCCoeffs_H264_1u32s, w, &off, &num, o32, -1, 3, tok, tz, rb, scan);
    for (const uint32_t* ct : {t.coeff_token_chroma420(), t.coeff_token_chroma422()}) {
      n += expect_null_checks("2x2/32", huxErrNullPtr, {}, huxiDecodeCAVLCChromaDcCoeffs_H264_1u32s, w, &off, &num, o32, ct, t.total_zeros_chroma420(), rb);
      n += expect_null_checks("2x4/32", huxErrNullPtr, {}, huxiDecodeCAVLCChroma422DcCoeffs_H264_1u32s, w, &off, &num, o32, ct, t.total_zeros_chroma422(), rb);
      n += expect_null_checks("2x4/16", huxErrNullPtr, {}, huxiDecodeCAVLCChroma422DcCoeffs_H264_1u16s, w, &off, &num, o16, ct, t.total_zeros_chroma422(), rb);
    }
    if (k == 0) continue;
    EXPECT_EQ(huxiDecodeCAVLCCoeffs_H264_1u16s(w, &off, &num, o16, -1, 3, tok, tz, rb, scan), huxErrNullPtr) << k;
    EXPECT_EQ(huxiDecodeCAVLCCoeffs_H264_1u32s(w, &off, &num, o32, -1, 3, tok, tz, rb, scan), huxErrNullPtr) << k;
    EXPECT_EQ(huxiDecodeCAVLCChromaDcCoeffs_H264_1u32s(w, &off, &num, o32, t.coeff_token_chroma420(), t.total_zeros_chroma420(), rb), huxErrNullPtr) << k;
    EXPECT_EQ(huxiDecodeCAVLCChroma422DcCoeffs_H264_1u32s(w, &off, &num, o32, t.coeff_token_chroma422(), t.total_zeros_chroma422(), rb), huxErrNullPtr) << k;
    EXPECT_EQ(huxiDecodeCAVLCChroma422DcCoeffs_H264_1u16s(w, &off, &num, o16, t.coeff_token_chroma422(), t.total_zeros_chroma422(), rb), huxErrNullPtr) << k;
  }
  EXPECT_EQ(n, 3 * (8 + 8 + 2 * 3 * 7));
  // Then maxNumCoeff (15 or 16; the 32-bit form looks at all its bits), then vlcSelect.
  struct Range { int32_t nC, maxNum; HuxResult st; } ranges[] = {
      {-1, 3, huxErrOutOfRange}, {-1, 16, huxErrOutOfRange}, {0, 14, huxErrOutOfRange}, {0, 0, huxErrOutOfRange}, {0, 0x10010, huxErrOutOfRange}};
  for (const Range& r : ranges) {
    if (r.maxNum < 0x10000) {
      EXPECT_EQ(huxiDecodeCAVLCCoeffs_H264_1u16s(&wp, &off, &num, &q16, r.nC, int16_t(r.maxNum), tok, tz, rb, scan), r.st);
    }
    EXPECT_EQ(huxiDecodeCAVLCCoeffs_H264_1u32s(&wp, &off, &num, &q32, r.nC, r.maxNum, tok, tz, rb, scan), r.st);
  }
  EXPECT_EQ(num, -99);
  EXPECT_EQ(off, 31);
  EXPECT_EQ(wp, word);
  EXPECT_EQ(q16, b16);
  EXPECT_EQ(q32, b32);
  for (int i = 0; i < 16; ++i) EXPECT_EQ(b16[i] | b32[i], 0);
  EXPECT_EQ(huxiDecodeCAVLCCoeffs_H264_1u16s(&wp, &off, &num, &q16, 0, 15, tok, tz, rb, scan), huxOk);  // "1": empty
  EXPECT_EQ(num, 0);
  wp = word, off = 31, num = -99;
  EXPECT_EQ(huxiDecodeCAVLCCoeffs_H264_1u32s(&wp, &off, &num, &q32, 0, 15, tok, tz, rb, scan), huxOk);
  EXPECT_EQ(num + 31 - off, 1);
}

// The 16-bit 2x2 decoder checks lazily: the cursor, offset and count first,
// then the word pointer; the tables and the block pointer only when a code
// needs them, having consumed what came before.
struct LazyCase {
  const char* bits;
  bool tok, blk;
  HuxResult st;
  int num, used;
  int16_t b0, b1;  // the block afterwards (9: untouched)
};
const LazyCase kLazy[] = {
    {"1 0 1", false, true, huxOk, 1, 3, 1, 0},             // TC1 T1 1, +, total_zeros 0: no table needed
    {"01", false, false, huxOk, 0, 2, 9, 9},               // empty: no block pointer needed
    {"001 00", false, true, huxErrNullPtr, -99, 0, 9, 9},  // anything else needs coeff_token: nothing consumed
    {"001 00", true, true, huxErrNullPtr, 2, 5, 0, 0},     // TC2 T1 2, signs: block zeroed, total_zeros needed next
    {"11", false, false, huxErrNullPtr, 1, 2, 9, 9},       // the block pointer is wanted after token and sign
};

TEST(CavlcChecks, Chroma2x2Lazy16) {
  for (const LazyCase& c : kLazy) {
    auto s = stream(c.bits);
    uint32_t* p = s.data();
    int32_t off = 31;
    int16_t num = -99, b[4] = {9, 9, 9, 9}, *q = b;
    EXPECT_EQ(huxiDecodeCAVLCChromaDcCoeffs_H264_1u16s(&p, &off, &num, c.blk ? &q : nullptr,
                                                       c.tok ? tables().coeff_token_chroma420() : nullptr, nullptr, nullptr),
              c.st) << c.bits;
    EXPECT_EQ(num, c.num) << c.bits;
    EXPECT_EQ(31 - off, c.used) << c.bits;
    EXPECT_EQ(q, c.st == huxOk && c.num ? b + 4 : b) << c.bits;
    EXPECT_EQ(b[0], c.b0) << c.bits;
    EXPECT_EQ(b[1], c.b1) << c.bits;
  }
  auto s = stream("11");
  uint32_t* p = s.data();
  uint32_t* nw = nullptr;
  int32_t off = 31;
  int16_t num = -99, b[4], *q = b;
  EXPECT_EQ(expect_null_checks("2x2/16", huxErrNullPtr, {3}, huxiDecodeCAVLCChromaDcCoeffs_H264_1u16s, &p, &off, &num, &q, nullptr, nullptr, nullptr), 3);
  EXPECT_EQ(huxiDecodeCAVLCChromaDcCoeffs_H264_1u16s(&nw, &off, &num, &q, nullptr, nullptr, nullptr), huxErrNullPtr);
  EXPECT_EQ(num, -99);
  EXPECT_EQ(off, 31);
}

// ------------------------------------------------------------ Exp-Golomb

// "1" = 0, "010" = 1 (signed 1), "011" = 2 (signed -1), and longer codes
// across word boundaries, in both widths from three start offsets.
TEST(ExpGolomb, Examples) {
  struct { int m; uint32_t info; int32_t u, s; } const cases[] = {
      {0, 0, 0, 0}, {1, 0, 1, 1}, {1, 1, 2, -1}, {2, 0, 3, 2}, {2, 3, 6, -3}, {8, 0, 255, 128},
      {16, 0, 65535, 32768}, {16, 0xffff, 131070, -65535}, {30, 0x3fffffff, 2147483646, -1073741823},
      {31, 0, 2147483647, 1073741824}};
  for (const auto& c : cases)
    for (int off0 : {31, 1, 0}) {
      WordBitWriter w(off0, 0x12345678u);
      w.put(0, c.m);
      w.put_bit(1);
      w.put(c.info, c.m);
      auto s = w.words(1, 0xffffffffu);
      for (int sgn = 0; sgn < 4; ++sgn) {
        uint32_t* p = s.data();
        int32_t off = off0, v32 = 0;
        int16_t v16 = 0;
        const int32_t want = sgn & 1 ? c.s : c.u;
        if (sgn < 2) {
          ASSERT_EQ(huxiDecodeExpGolombOne_H264_1u32s(&p, &off, &v32, sgn), huxOk);
          EXPECT_EQ(v32, want) << c.m << " " << c.info;
        } else {
          ASSERT_EQ(huxiDecodeExpGolombOne_H264_1u16s(&p, &off, &v16, static_cast<uint8_t>(sgn & 1 ? 0x80 : 0)), huxOk);
          EXPECT_EQ(v16, static_cast<int16_t>(want)) << c.m << " " << c.info;
        }
        EXPECT_EQ((p - s.data()) * 32 + (off0 - off), 2 * c.m + 1);
      }
    }
}

// Nulls come before the offset; an offset outside 0..31 leaves everything.
TEST(ExpGolomb, NullPointersThenOffset) {
  uint32_t w[2] = {0x80000000u, 0}, *p = w, *nw = nullptr;
  int16_t v16 = 7;
  int32_t v32 = 7, off = 40;
  EXPECT_EQ(expect_null_checks("eg16", huxErrNullPtr, {}, huxiDecodeExpGolombOne_H264_1u16s, &p, &off, &v16, uint8_t{0}) +
                expect_null_checks("eg32", huxErrNullPtr, {}, huxiDecodeExpGolombOne_H264_1u32s, &p, &off, &v32, 1), 6);
  EXPECT_EQ(huxiDecodeExpGolombOne_H264_1u32s(&nw, &off, &v32, 0), huxErrNullPtr);
  EXPECT_EQ(huxiDecodeExpGolombOne_H264_1u16s(&nw, &off, &v16, 0), huxErrNullPtr);
  for (int32_t bad : {32, 33, 40, -1, INT32_MIN}) {
    off = bad;
    EXPECT_EQ(huxiDecodeExpGolombOne_H264_1u16s(&p, &off, &v16, 0), huxErrBadArg);
    EXPECT_EQ(huxiDecodeExpGolombOne_H264_1u32s(&p, &off, &v32, 1), huxErrBadArg);
    EXPECT_EQ(off, bad);
  }
  EXPECT_EQ(v16 + v32, 14);
  EXPECT_EQ(p, w);
}

TEST(ExpGolomb, RandomRoundTripBothReaders) {
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
