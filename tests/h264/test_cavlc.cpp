// CAVLC and Exp-Golomb decoding through the exports: the checks through the
// export descriptors; round trips of random blocks written by the test encoder
// (an independent statement of the residual syntax) in both output widths;
// hand-made streams for the rules, failures and lazy checks that a round trip
// does not reach.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <random>
#include <vector>

#include "huxvc.h"
#include "support/exports.h"
#include "support/h264_cavlc_writer.h"

namespace {

using hux::test::CavlcShape;
using hux::test::WordBitWriter;
using hux::test::CavlcTables;
using namespace hux::check;

const CavlcTables& tables() { return hux::test::cavlc_tables(); }

// A stream from a string of '0'/'1' (spaces ignored), padded with `fill` words.
std::vector<uint32_t> stream(const char* bits, int startOffset = 31, uint32_t fill = 0) {
  WordBitWriter w(startOffset);
  for (; *bits; ++bits)
    if (*bits != ' ') w.put_bit(*bits == '1');
  return w.words(2, fill);
}

// ------------------------------------------------------------ checks and their order

// Streams of 1 bits: an empty 4x4 block, a one-coefficient chroma block, code 0.
const std::vector<uint8_t> kOnes(16, 0xFF);
Arg cursor() { return ref(kOnes); }
Arg offset() { return out_value<int32_t>(31); }
const std::vector<Bad> kMaxNum = {{14, huxErrOutOfRange, 1}, {0, huxErrOutOfRange, 1}, {17, huxErrOutOfRange, 1}};
const std::vector<Bad> kMaxNum32 = {{14, huxErrOutOfRange, 1}, {0x10010, huxErrOutOfRange, 1}};
const std::vector<Bad> kNegativeNC = {{-1, huxErrOutOfRange, 2}};
#define DC(f, n, tz) \
  describe(#f, f, {cursor(), offset(), out(2), ref(std::vector<uint8_t>(n, 0x5A)), in(tables().coeff_token_##tz()), in(tables().total_zeros_##tz()), in(tables().run_before())})
const Describe kExports({
    describe("huxiDecodeCAVLCCoeffs_H264_1u16s", huxiDecodeCAVLCCoeffs_H264_1u16s,
             {cursor(), offset(), out(2), ref(std::vector<uint8_t>(32, 0x5A)), val(0, kNegativeNC), val(16, kMaxNum, {15}),
              in(tables().coeff_token_4x4()), in(tables().total_zeros_4x4()), in(tables().run_before()), in(huxH264Zigzag4x4)}),
    describe("huxiDecodeCAVLCCoeffs_H264_1u32s", huxiDecodeCAVLCCoeffs_H264_1u32s,
             {cursor(), offset(), out(2), ref(std::vector<uint8_t>(64, 0x5A)), val(0, kNegativeNC), val(16, kMaxNum32, {15}),
              in(tables().coeff_token_4x4()), in(tables().total_zeros_4x4()), in(tables().run_before()), in(huxH264Zigzag4x4)}),
    DC(huxiDecodeCAVLCChromaDcCoeffs_H264_1u32s, 16, chroma420), DC(huxiDecodeCAVLCChroma422DcCoeffs_H264_1u16s, 16, chroma422),
    DC(huxiDecodeCAVLCChroma422DcCoeffs_H264_1u32s, 32, chroma422),
    // The 16-bit 2x2 decoder tests its tables and block pointer only when it needs them (below).
    describe("huxiDecodeCAVLCChromaDcCoeffs_H264_1u16s", huxiDecodeCAVLCChromaDcCoeffs_H264_1u16s,
             {cursor(), offset(), out(2), ref(std::vector<uint8_t>(8, 0x5A), false, false), in(nullptr, false), in(nullptr, false), in(nullptr, false)}),
    describe("huxiDecodeExpGolombOne_H264_1u16s", huxiDecodeExpGolombOne_H264_1u16s, {cursor(), offset(), out(2), val(1)}),
    describe("huxiDecodeExpGolombOne_H264_1u32s", huxiDecodeExpGolombOne_H264_1u32s, {cursor(), offset(), out(4), val(1)}),
});

// The Exp-Golomb decoders refuse offsets above 31 (negative ones read as
// unsigned), after the pointers, moving nothing.
TEST(ExpGolomb, OffsetOutsideTheWordIsRefused) {
  uint32_t w[2] = {0x80000000u, 0}, *p = w;
  int16_t v16 = 7;
  int32_t v32 = 7;
  for (int32_t bad : {32, 40, -1, INT32_MIN}) {
    int32_t off = bad;
    EXPECT_EQ(huxiDecodeExpGolombOne_H264_1u16s(&p, &off, &v16, 0), huxErrBadArg);
    EXPECT_EQ(huxiDecodeExpGolombOne_H264_1u32s(&p, &off, &v32, 1), huxErrBadArg);
    EXPECT_EQ(off, bad);
  }
  EXPECT_EQ(v16 + v32, 14);
  EXPECT_EQ(p, w);
}

// ------------------------------------------------------------ hand-made 4x4 streams, both widths

struct HandCase {
  const char* name;
  const char* bits;
  int off0, nC, maxNum;
  bool field;
  int tables;  // 0 the standard's; 1 total_zeros missing, 2 invalid; 3 run_before missing; 4 coeff_token missing
  HuxResult status;
  int num;   // -99: left as it was
  int used;  // bits consumed
  std::vector<std::pair<int, int>> levels;  // (scan index, level)
};

std::ostream& operator<<(std::ostream& os, const HandCase& c) { return os << c.name; }

const char* const kZeros32 = "0000000000000000 0000000000000000";

const HandCase kHandCases[] = {
    // The textbook block 0 3 -1 0 / 0 -1 1 0 / 1 0 0 0 / 0 0 0 0, also across a word boundary.
    {"textbook", "0000100 011 1 0010 111 10 1 1 01", 31, 0, 16, false, 0, huxOk, 5, 24, {{1, 3}, {5, -1}, {4, -1}, {7, 1}, {3, 1}}},
    {"textbook_at_5", "0000100 011 1 0010 111 10 1 1 01", 5, 1, 16, false, 0, huxOk, 5, 24, {{1, 3}, {5, -1}, {4, -1}, {7, 1}, {3, 1}}},
    // nC >= 8: six-bit tokens; "000011" empty, "000000" one level, no trailing
    // ones: level "1" (prefix 0 with the bonus: magnitude 2), total_zeros "1".
    {"nC8_empty", "000011 1", 31, 8, 16, false, 0, huxOk, 0, 6, {}},
    {"nC9_one_level", "000000 1 1", 31, 9, 16, false, 0, huxOk, 1, 8, {{0, 2}}},
    // One trailing one (+1), total_zeros 0: maxNumCoeff 15 never writes scan position 0.
    {"maxNum15_field", "01 0 1", 31, 0, 15, true, 0, huxOk, 1, 4, {{0, 1}}},
    {"maxNum16_field", "01 0 1", 31, 0, 16, true, 0, huxOk, 1, 4, {{0, 1}}},
    // Two levels, no trailing ones (nC0 "00000111"): first 5 (level code 8 - 2
    // bonus = 6: prefix 6, suffixLength 0), then suffixLength 2: "1 01" = -1,
    // which suffixLength 1 would read differently; total_zeros "111" = 0.
    {"first_above_3_moves_suffix_to_2", "00000111 0000001 101 111", 31, 0, 16, false, 0, huxOk, 2, 21, {{1, 5}, {0, -1}}},
    // An invalid coeff_token restores the cursor and writes nothing.
    {"invalid_token_at_5", kZeros32, 5, 2, 16, false, 0, huxErrVLCCode, -99, 0, {}},
    // Two trailing ones (nC0 "001", signs "01"), then a missing or invalid
    // total_zeros table: the count is written and the block zeroed, the block
    // pointer stays; an invalid code also keeps the bit it examined.
    {"total_zeros_missing", "001 01 0 0", 31, 0, 16, false, 1, huxErrNullPtr, 2, 5, {}},
    {"total_zeros_invalid", "001 01 0 0", 31, 0, 16, false, 2, huxErrVLCCode, 2, 6, {}},
    // total_zeros "101" = 2, then the first run_before is missing.
    {"run_before_missing", "001 00 101 1", 31, 0, 16, false, 3, huxErrNullPtr, 2, 8, {}},
    // A missing coeff_token table consumes nothing; nC 8 needs none.
    {"coeff_token_missing", "1", 31, 3, 16, false, 4, huxErrNullPtr, -99, 0, {}},
    {"coeff_token_missing_nC8", "000011", 31, 8, 16, false, 4, huxOk, 0, 6, {}},
};

template <class Out>
HuxResult decode4x4(uint32_t** p, int32_t* off, int16_t* num, Out** q, int nC, int maxNum,
                    const uint32_t* const* tok, const uint32_t* const* tz, const uint32_t* const* rb, const int32_t* scan) {
  if constexpr (sizeof(Out) == 2)
    return huxiDecodeCAVLCCoeffs_H264_1u16s(p, off, num, q, nC, static_cast<int16_t>(maxNum), tok, tz, rb, scan);
  else
    return huxiDecodeCAVLCCoeffs_H264_1u32s(p, off, num, q, nC, maxNum, tok, tz, rb, scan);
}

// A table whose every entry is the invalid marker.
const uint32_t kAllInvalid[3] = {1, 0xF0F1u << 8, 0xF0F1u << 8};

template <class Out>
void run_hand(const HandCase& c) {
  const CavlcTables& t = tables();
  const uint32_t* none[16] = {};
  const uint32_t* bad[16];
  std::fill_n(bad, 16, kAllInvalid);
  const uint32_t* tok[3] = {t.coeff_token_4x4()[0], c.tables == 4 ? nullptr : t.coeff_token_4x4()[1], t.coeff_token_4x4()[2]};
  auto s = stream(c.bits, c.off0);
  uint32_t* p = s.data();
  int32_t off = c.off0;
  std::array<Out, 24> buf, want;
  buf.fill(Out(0x55));
  want.fill(Out(0x55));
  Out* q = buf.data() + 4;
  int16_t num = -99;
  const int32_t* scan = c.field ? huxH264FieldScan4x4 : huxH264Zigzag4x4;
  EXPECT_EQ(decode4x4<Out>(&p, &off, &num, &q, c.nC, c.maxNum, tok, c.tables == 1 ? none : c.tables == 2 ? bad : t.total_zeros_4x4(),
                           c.tables == 3 ? none : t.run_before(), scan),
            c.status);
  EXPECT_EQ(num, c.num);
  EXPECT_EQ((p - s.data()) * 32 + (c.off0 - off), c.used);
  EXPECT_EQ(q, buf.data() + (c.status == huxOk && c.num > 0 ? 20 : 4));
  if (c.num > 0) std::fill(want.begin() + 4, want.begin() + 20, Out(0));
  if (c.status == huxOk)
    for (auto [k, v] : c.levels) want[4 + scan[k + 16 - c.maxNum]] = static_cast<Out>(v);
  EXPECT_EQ(buf, want);
}

class CavlcRules : public ::testing::TestWithParam<HandCase> {};
TEST_P(CavlcRules, Blocks16) { run_hand<int16_t>(GetParam()); }
TEST_P(CavlcRules, Blocks32) { run_hand<int32_t>(GetParam()); }
INSTANTIATE_TEST_SUITE_P(Streams, CavlcRules, ::testing::ValuesIn(kHandCases),
                         [](const ::testing::TestParamInfo<HandCase>& i) { return std::string(i.param.name); });

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
    {"001 00", true, false, huxErrNullPtr, 2, 5, 9, 9},    // or, on the table path, after the trailing-one signs
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
}

// ------------------------------------------------------------ Exp-Golomb

// "1" = 0, "010" = 1 (signed 1), "011" = 2 (signed -1), and longer codes
// across word boundaries, in both widths from three start offsets.
TEST(ExpGolomb, Examples) {
  struct { int m; uint32_t info; int32_t u, s; } const cases[] = {
      {0, 0, 0, 0}, {1, 0, 1, 1}, {1, 1, 2, -1}, {2, 0, 3, 2}, {2, 3, 6, -3}, {8, 0, 255, 128},
      {16, 0, 65535, 32768}, {16, 0xffff, 131070, -65535}, {30, 0x3fffffff, 2147483646, -1073741823},
      {31, 0, 2147483647, 1073741824}, {32, 5, 4, -2}};  // 2^32 - 1 + 5 kept to 32 bits
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

// ------------------------------------------------------------ round trips

// One block of `shape` through the export of Out's width.
template <class Out>
HuxResult decode(CavlcShape shape, uint32_t** p, int32_t* off, int16_t* num, Out** q, int nC, int maxNum, const int32_t* scan) {
  const CavlcTables& t = tables();
  if (shape == CavlcShape::k4x4)
    return decode4x4<Out>(p, off, num, q, nC, maxNum, t.coeff_token_4x4(), t.total_zeros_4x4(), t.run_before(), scan);
  const bool c420 = shape == CavlcShape::kChroma420;
  const uint32_t* tok = c420 ? t.coeff_token_chroma420() : t.coeff_token_chroma422();
  const auto* tz = c420 ? t.total_zeros_chroma420() : t.total_zeros_chroma422();
  if constexpr (sizeof(Out) == 2)
    return c420 ? huxiDecodeCAVLCChromaDcCoeffs_H264_1u16s(p, off, num, q, tok, tz, t.run_before())
                : huxiDecodeCAVLCChroma422DcCoeffs_H264_1u16s(p, off, num, q, tok, tz, t.run_before());
  else
    return c420 ? huxiDecodeCAVLCChromaDcCoeffs_H264_1u32s(p, off, num, q, tok, tz, t.run_before())
                : huxiDecodeCAVLCChroma422DcCoeffs_H264_1u32s(p, off, num, q, tok, tz, t.run_before());
}

struct RtCase {
  const char* name;
  CavlcShape shape;
  int nCLo, nCHi;  // nC drawn from this range (4x4 only)
  bool fieldScan;
};
std::ostream& operator<<(std::ostream& os, const RtCase& c) { return os << c.name; }

struct Block {
  int32_t c[16];  // scan order
  int maxNum, nC, total;
  int64_t endBit;  // writer position behind the block
};

// Sparse blocks most often, dense ones and escapes up to 16-bit magnitudes too.
void random_block(std::mt19937& rng, Block& b) {
  static const int32_t kMax[5] = {3, 8, 50, 3000, 32768};
  std::memset(b.c, 0, sizeof b.c);
  const uint32_t r = rng() % 100;
  const int mode = r < 40 ? 0 : r < 60 ? 1 : r < 75 ? 2 : r < 90 ? 3 : 4;
  const int total = mode == 0 ? static_cast<int>(rng() % 4)
                    : mode == 2 ? std::max(0, b.maxNum - static_cast<int>(rng() % 4))
                                : static_cast<int>(rng() % (b.maxNum + 1));
  int order[16];
  for (int i = 0; i < b.maxNum; ++i) order[i] = i;
  for (int i = 0; i < total; ++i) {
    std::swap(order[i], order[i + static_cast<int>(rng() % (b.maxNum - i))]);
    const int32_t mag = (rng() % 3 == 0) ? 1 : 1 + static_cast<int32_t>(rng() % static_cast<uint32_t>(kMax[mode]));
    b.c[order[i]] = (rng() & 1) ? -mag : mag;
  }
  b.total = total;
}

// Blocks written back to back from a random start offset, decoded in turn:
// every count, level, position, block-pointer advance and cursor comes back.
template <class Out>
void round_trip(const RtCase& rc, uint32_t seed) {
  std::mt19937 rng(seed);
  const int n = rc.shape == CavlcShape::k4x4 ? 16 : rc.shape == CavlcShape::kChroma420 ? 4 : 8;
  const int32_t* scan = rc.fieldScan ? huxH264FieldScan4x4 : huxH264Zigzag4x4;
  static const int kScan2x4[8] = {0, 2, 1, 4, 6, 3, 5, 7};
  std::vector<Block> blocks(1000);
  for (int s = 0; s < 40; ++s) {
    const int off0 = static_cast<int>(rng() % 32);
    WordBitWriter w(off0, rng());
    int coded = 0;
    for (Block& b : blocks) {
      b.maxNum = rc.shape == CavlcShape::k4x4 ? ((rng() & 1) ? 16 : 15) : n;
      b.nC = rc.nCLo + static_cast<int>(rng() % static_cast<uint32_t>(rc.nCHi - rc.nCLo + 1));
      random_block(rng, b);
      hux::test::cavlc_encoder().encode(w, b.c, b.maxNum, rc.shape, b.nC);
      b.endBit = w.bits();
      coded += b.total > 0;
    }
    // One word of look-ahead behind the stream; one block per coded block.
    std::vector<uint32_t> words = w.words(1, rng());
    std::vector<Out> out(static_cast<size_t>(coded) * n);
    uint32_t* p = words.data();
    int32_t off = off0;
    Out* q = out.data();
    for (const Block& b : blocks) {
      int16_t num = -1;
      Out* const before = q;
      ASSERT_EQ(decode<Out>(rc.shape, &p, &off, &num, &q, b.nC, b.maxNum, scan), huxOk);
      ASSERT_EQ(num, b.total);
      ASSERT_EQ(q - before, b.total ? n : 0);
      ASSERT_EQ((p - words.data()) * 32 + (31 - off), b.endBit);
      if (b.total) {
        Out want[16] = {};
        for (int i = 0; i < b.maxNum; ++i)
          want[rc.shape == CavlcShape::k4x4 ? scan[i + 16 - b.maxNum] : n == 4 ? i : kScan2x4[i]] = static_cast<Out>(b.c[i]);
        ASSERT_EQ(std::memcmp(before, want, sizeof(Out) * n), 0);
      }
    }
  }
}

class CavlcRoundTrip : public ::testing::TestWithParam<RtCase> {};
TEST_P(CavlcRoundTrip, Blocks16) { round_trip<int16_t>(GetParam(), 1000 + GetParam().nCLo); }
TEST_P(CavlcRoundTrip, Blocks32) { round_trip<int32_t>(GetParam(), 2000 + GetParam().nCLo); }
const RtCase kShapes[] = {{"nC0to1", CavlcShape::k4x4, 0, 1, false},         {"nC2to3", CavlcShape::k4x4, 2, 3, true},
                          {"nC4to7", CavlcShape::k4x4, 4, 7, false},         {"nC8up", CavlcShape::k4x4, 8, 40, true},
                          {"Chroma420", CavlcShape::kChroma420, 0, 0, false}, {"Chroma422", CavlcShape::kChroma422, 0, 0, false}};
INSTANTIATE_TEST_SUITE_P(Shapes, CavlcRoundTrip, ::testing::ValuesIn(kShapes),
                         [](const ::testing::TestParamInfo<RtCase>& i) { return std::string(i.param.name); });

}  // namespace
