// CAVLC round trips: random blocks (sparse, dense, escapes) are written with
// the test encoder back to back from a random start offset and decoded with
// the exports of both widths; every count, level, position, block-pointer
// advance and cursor must come back. The plain-reader twin decodes the same
// streams, and on random garbage the exports and the twin agree in everything.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <vector>

#include "h264/cavlc_kernels.h"
#include "h264_cavlc_tables.h"
#include "huxvc.h"
#include "support/h264_cavlc_writer.h"
#include "support/test_util.h"

namespace {

using hux::test::CavlcShape;
using hux::test::Rng;
using hux::test::WordBitWriter;

constexpr int kScan2x4[8] = {0, 2, 1, 4, 6, 3, 5, 7};

// One block of `shape` through the export of Out's width, or through the
// plain-reader twin.
template <class Out>
HuxResult decode(CavlcShape shape, bool twin, uint32_t** p, int32_t* off, int16_t* num, Out** q, int nC, int maxNum,
                 const int32_t* scan) {
  namespace ref = hux::h264::ref;
  const huxextras::CavlcTables& t = hux::test::cavlc_tables();
  const auto* rb = t.run_before();
  if (shape == CavlcShape::k4x4) {
    const auto* tz = t.total_zeros_4x4();
    if (twin)
      return ref::cavlc4x4<Out>(p, off, num, q, nC >= 8 ? nullptr : t.coeff_token_4x4()[nC < 2 ? 0 : nC < 4 ? 1 : 2],
                                maxNum, tz, rb, scan);
    if constexpr (sizeof(Out) == 2)
      return huxiDecodeCAVLCCoeffs_H264_1u16s(p, off, num, q, nC, static_cast<int16_t>(maxNum), t.coeff_token_4x4(), tz, rb, scan);
    else
      return huxiDecodeCAVLCCoeffs_H264_1u32s(p, off, num, q, nC, maxNum, t.coeff_token_4x4(), tz, rb, scan);
  }
  const bool c420 = shape == CavlcShape::kChroma420;
  const uint32_t* tok = c420 ? t.coeff_token_chroma420() : t.coeff_token_chroma422();
  const auto* tz = c420 ? t.total_zeros_chroma420() : t.total_zeros_chroma422();
  if (twin)
    return c420 ? ref::cavlc_chroma_dc<4, Out>(p, off, num, q, tok, tz, rb) : ref::cavlc_chroma_dc<8, Out>(p, off, num, q, tok, tz, rb);
  if constexpr (sizeof(Out) == 2)
    return c420 ? huxiDecodeCAVLCChromaDcCoeffs_H264_1u16s(p, off, num, q, tok, tz, rb)
                : huxiDecodeCAVLCChroma422DcCoeffs_H264_1u16s(p, off, num, q, tok, tz, rb);
  else
    return c420 ? huxiDecodeCAVLCChromaDcCoeffs_H264_1u32s(p, off, num, q, tok, tz, rb)
                : huxiDecodeCAVLCChroma422DcCoeffs_H264_1u32s(p, off, num, q, tok, tz, rb);
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

void random_block(Rng& rng, Block& b) {
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
    // Small levels dominate even in the wide modes, as trailing ones do in real streams.
    const int32_t mag = (rng() % 3 == 0) ? 1 : 1 + static_cast<int32_t>(rng() % static_cast<uint32_t>(kMax[mode]));
    b.c[order[i]] = (rng() & 1) ? -mag : mag;
  }
  b.total = total;
}

class CavlcRoundTrip : public ::testing::TestWithParam<RtCase> {};

template <class Out>
void run_case(const RtCase& rc, uint32_t seed) {
  constexpr int kStreams = 100;
  constexpr int kBlocksPerStream = 1000;  // 100,000 blocks per case
  Rng rng(seed);
  const int n = rc.shape == CavlcShape::k4x4 ? 16 : rc.shape == CavlcShape::kChroma420 ? 4 : 8;
  const int32_t* scan = rc.fieldScan ? huxextras::kFieldScan4x4 : huxextras::kZigzag4x4;
  std::vector<Block> blocks(kBlocksPerStream);
  for (int s = 0; s < kStreams; ++s) {
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
    // Exact-sized buffers: one word of look-ahead behind the stream, one
    // block per coded block. The plain twin walks every tenth stream.
    std::vector<uint32_t> words = w.words(1, rng());
    std::vector<Out> out(static_cast<size_t>(coded) * n), out2(out.size());
    uint32_t *p = words.data(), *p2 = words.data();
    int32_t off = off0, off2 = off0;
    Out *q = out.data(), *q2 = out2.data();
    const bool twin = s % 10 == 0;
    for (const Block& b : blocks) {
      int16_t num = -1;
      Out* const before = q;
      ASSERT_EQ(decode<Out>(rc.shape, false, &p, &off, &num, &q, b.nC, b.maxNum, scan), huxOk);
      ASSERT_EQ(num, b.total);
      ASSERT_EQ(q - before, b.total ? n : 0);
      ASSERT_EQ((p - words.data()) * 32 + (31 - off), b.endBit);
      if (b.total) {
        Out want[16] = {};
        for (int i = 0; i < b.maxNum; ++i)
          want[rc.shape == CavlcShape::k4x4 ? scan[i + 16 - b.maxNum] : n == 4 ? i : kScan2x4[i]] = static_cast<Out>(b.c[i]);
        ASSERT_EQ(std::memcmp(before, want, sizeof(Out) * n), 0);
      }
      if (twin) {
        int16_t num2 = -1;
        ASSERT_EQ(decode<Out>(rc.shape, true, &p2, &off2, &num2, &q2, b.nC, b.maxNum, scan), huxOk);
        ASSERT_EQ(num2, num);
        ASSERT_EQ(p2, p);
        ASSERT_EQ(off2, off);
        ASSERT_EQ(q2 - out2.data(), q - out.data());
      }
    }
    ASSERT_EQ(q, out.data() + out.size());
    if (twin) {
      ASSERT_EQ(out2, out);
    }
  }
}

TEST_P(CavlcRoundTrip, Blocks16) { run_case<int16_t>(GetParam(), 1000 + GetParam().nCLo); }
TEST_P(CavlcRoundTrip, Blocks32) { run_case<int32_t>(GetParam(), 2000 + GetParam().nCLo); }

const RtCase kShapes[] = {{"nC0to1", CavlcShape::k4x4, 0, 1, false},         {"nC2to3", CavlcShape::k4x4, 2, 3, true},
                          {"nC4to7", CavlcShape::k4x4, 4, 7, false},         {"nC8up", CavlcShape::k4x4, 8, 40, true},
                          {"Chroma420", CavlcShape::kChroma420, 0, 0, false}, {"Chroma422", CavlcShape::kChroma422, 0, 0, false}};
INSTANTIATE_TEST_SUITE_P(Shapes, CavlcRoundTrip, ::testing::ValuesIn(kShapes),
                         [](const ::testing::TestParamInfo<RtCase>& i) { return std::string(i.param.name); });

// Random garbage: the exports (buffered readers, and the 16-bit 4:2:0 quick
// path) against the plain twin's table path, in status, count, block,
// pointers and cursor. Also shows that no stream leads outside the block or
// the tables.
template <class Out>
void garbage_case(const RtCase& rc, uint32_t seed) {
  Rng rng(seed);
  const int32_t* scan = rc.fieldScan ? huxextras::kFieldScan4x4 : huxextras::kZigzag4x4;
  for (int iter = 0; iter < 300; ++iter) {
    std::vector<uint32_t> words(64);
    for (auto& x : words) x = rng();
    const int off0 = static_cast<int>(rng() % 32);
    uint32_t *p1 = words.data(), *p2 = words.data();
    int32_t o1 = off0, o2 = off0;
    std::vector<Out> b1(16 * 40, Out(7)), b2(16 * 40, Out(7));
    Out *q1 = b1.data(), *q2 = b2.data();
    for (int blk = 0; blk < 40 && p1 < words.data() + 24; ++blk) {
      int16_t n1 = -1, n2 = -1;
      const int maxNum = (rng() & 1) ? 16 : 15;
      const HuxResult s1 = decode<Out>(rc.shape, false, &p1, &o1, &n1, &q1, rc.nCLo, maxNum, scan);
      const HuxResult s2 = decode<Out>(rc.shape, true, &p2, &o2, &n2, &q2, rc.nCLo, maxNum, scan);
      ASSERT_EQ(s1, s2);
      ASSERT_EQ(n1, n2);
      ASSERT_EQ(p1, p2);
      ASSERT_EQ(o1, o2);
      ASSERT_EQ(q1 - b1.data(), q2 - b2.data());
      if (s1 != huxOk) {  // skip a bit and go on, as a resynchronising caller might
        hux::bits::WordBitBuffer r(p1, o1);
        r.read(1);
        r.store(&p1, &o1);
        p2 = p1;
        o2 = o1;
      }
    }
    ASSERT_EQ(b1, b2);
  }
}

TEST_P(CavlcRoundTrip, Garbage16) { garbage_case<int16_t>(GetParam(), 77 + GetParam().nCLo); }
TEST_P(CavlcRoundTrip, Garbage32) { garbage_case<int32_t>(GetParam(), 99 + GetParam().nCLo); }

}  // namespace
