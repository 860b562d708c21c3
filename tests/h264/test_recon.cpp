// H.264 macroblock reconstruction through the exports: the check order by
// descriptor, and whole macroblocks whose levels go through the CAVLC test
// writer and the CAVLC decoder into the packed buffer, reconstructed and
// compared with the same macroblock put together from the single-block
// prediction, dequantisation and transform exports.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <random>
#include <vector>

#include "huxvc.h"
#include "support/exports.h"
#include "support/h264_cavlc_writer.h"
#include "support/known.h"

namespace {

using namespace hux::check;
using hux::test::CavlcShape;

// ---------------------------------------------------------------- checks and their order

const int16_t kLs4[16] = {16, 16, 16, 16, 16, 16, 16, 16, 16, 16, 16, 16, 16, 16, 16, 16};
const int16_t kLs8[64] = {16};
const uint32_t kDc4[16] = {2, 2, 2, 2, 2, 2, 2, 2, 2, 2, 2, 2, 2, 2, 2, 2};
const int32_t kDc8[4] = {2, 2, 2, 2};
const uint32_t kBadMode4[16] = {2, 2, 2, 2, 2, 2, 2, 2, 2, 2, 2, 2, 2, 2, 2, 9};
const int32_t kBadMode8[4] = {2, -1, 2, 2};
std::vector<Bad> qp(int64_t hi) { return {{hi + 1, huxErrOutOfRange, 1}, {-1, huxErrOutOfRange, 1}}; }
// A pattern of every bit consumes nothing here: nothing is consumed before the refusals.
Arg coef() { return ref(std::vector<uint8_t>(2 * 16 * 27, 0)); }
// Every neighbour absent: nothing outside the macroblock is read.
const int64_t kNone = 0x1F;

const Describe kExports({
    describe("huxiReconstructLumaInterMB_H264_16s8u_C1R", huxiReconstructLumaInterMB_H264_16s8u_C1R,
             {coef(), out(256), val(16), val(0x1FFFE), val(51, qp(51))}),
    describe("huxiReconstructLumaInter4x4MB_H264_16s8u_C1R", huxiReconstructLumaInter4x4MB_H264_16s8u_C1R,
             {coef(), out(256), val(16), val(0x1FFFE), val(0, qp(51)), in(kLs4), val(1)}),
    describe("huxiReconstructLumaInter8x8MB_H264_16s8u_C1R", huxiReconstructLumaInter8x8MB_H264_16s8u_C1R,
             {coef(), out(256), val(16), val(0x1E), val(30, qp(51)), in(kLs8), val(0)}),
    describe("huxiReconstructLumaIntraMB_H264_16s8u_C1R", huxiReconstructLumaIntraMB_H264_16s8u_C1R,
             {coef(), out(256), val(16), in(kDc4), val(0x1FFFE), val(20, qp(51)), val(kNone)}),
    describe("huxiReconstructLumaIntra4x4MB_H264_16s8u_C1R", huxiReconstructLumaIntra4x4MB_H264_16s8u_C1R,
             {coef(), out(256), val(16), in(kDc4), val(0x1FFFE), val(20, qp(51)), val(kNone), in(kLs4), val(1)}),
    describe("huxiReconstructLumaIntra8x8MB_H264_16s8u_C1R", huxiReconstructLumaIntra8x8MB_H264_16s8u_C1R,
             {coef(), out(256), val(16), in(kDc8), val(0x1E), val(20, qp(51)), val(kNone), in(kLs8, false), val(0)}),
    describe("huxiReconstructLumaIntra16x16MB_H264_16s8u_C1R", huxiReconstructLumaIntra16x16MB_H264_16s8u_C1R,
             {coef(), out(256), val(16), val(2, {{0, huxErrNoNeighbour, 2}, {3, huxErrNoNeighbour, 2}, {4, huxErrOutOfRange, 2}}),
              val(0x1FFFF), val(51, qp(51)), val(kNone)}),
    describe("huxiReconstructLumaIntra_16x16MB_H264_16s8u_C1R", huxiReconstructLumaIntra_16x16MB_H264_16s8u_C1R,
             {coef(), out(256), val(16), val(2, {{1, huxErrNoNeighbour, 2}, {4, huxErrOutOfRange, 2}}), val(1), val(0, qp(51)), val(kNone)}),
    describe("huxiReconstructChromaInterMB_H264_16s8u_P2R", huxiReconstructChromaInterMB_H264_16s8u_P2R,
             {coef(), out(64), out(64), val(8), val(0x7FE0000), val(39, qp(39))}),
    describe("huxiReconstructChromaInter4x4MB_H264_16s8u_P2R", huxiReconstructChromaInter4x4MB_H264_16s8u_P2R,
             {coef(), out(64), out(64), val(8), val(0x7FE0000), val(0, qp(39)), val(39, qp(39)), in(kLs4), in(kLs4), val(1)}),
    describe("huxiReconstructChromaIntraMB_H264_16s8u_P2R", huxiReconstructChromaIntraMB_H264_16s8u_P2R,
             {coef(), out(64), out(64), val(8), val(0, {{4, huxErrOutOfRange, 1}, {1, huxErrNoNeighbour, 2}, {3, huxErrNoNeighbour, 2}}),
              val(0x7FE0000), val(39, qp(39)), val(kNone)}),
    describe("huxiReconstructChromaIntra4x4MB_H264_16s8u_P2R", huxiReconstructChromaIntra4x4MB_H264_16s8u_P2R,
             {coef(), out(64), out(64), val(8), val(0, {{2, huxErrNoNeighbour, 2}, {5, huxErrOutOfRange, 2}}), val(0x7FE0000),
              val(0, qp(39)), val(1, qp(39)), val(kNone), in(kLs4), in(kLs4), val(1)}),
});
// Modes outside their set: refused before anything is written or consumed.
TEST(ReconChecks, ModesOutsideTheirSet) {
  std::vector<int16_t> buf(64, 1);
  int16_t* c = buf.data();
  std::vector<uint8_t> pic(256, 7);
  EXPECT_EQ(huxiReconstructLumaIntraMB_H264_16s8u_C1R(&c, pic.data(), 16, kBadMode4, 2, 20, kNone), huxErrOutOfRange);
  EXPECT_EQ(huxiReconstructLumaIntra8x8MB_H264_16s8u_C1R(&c, pic.data(), 16, kBadMode8, 2, 20, kNone, kLs8, 0), huxErrOutOfRange);
  EXPECT_EQ(c, buf.data());
  EXPECT_EQ(pic, std::vector<uint8_t>(256, 7));
}

// ---------------------------------------------------------------- whole macroblocks

// Block positions and above-right sources of the 16 luma blocks, in block
// order: 'a' the macroblock above, 'c' the one above-right, 'y' an earlier
// block, 'n' never.
const int kX[16] = {0, 4, 0, 4, 8, 12, 8, 12, 0, 4, 0, 4, 8, 12, 8, 12};
const int kY[16] = {0, 0, 4, 4, 0, 0, 4, 4, 8, 8, 12, 12, 8, 8, 12, 12};
const char kAboveRight[] = "aaynacynyyynynyn";

// A picture with one macroblock (luma 16x16 at (16, 16) of 48 x 48, chroma
// 8x8 at (8, 8) of 24 x 24 per plane) whose packed buffer comes from the CAVLC
// writer and decoder; the levels are kept, raster ordered, for the composition.
struct Mb {
  std::mt19937 rng;
  std::vector<uint8_t> y, u, v;
  hux::test::WordBitWriter w;
  std::vector<std::pair<CavlcShape, int>> shapes;
  std::vector<std::vector<int16_t>> blocks;  // raster levels, buffer order
  explicit Mb(uint32_t seed) : rng(seed), y(48 * 48), u(24 * 24), v(24 * 24) {
    for (auto* p : {&y, &u, &v})
      for (uint8_t& s : *p) s = static_cast<uint8_t>(rng());
  }
  int pick(int n) { return static_cast<int>(rng() % static_cast<uint32_t>(n)); }
  uint8_t* luma() { return &y[16 * 48 + 16]; }
  uint8_t* plane(int k) { return &(k ? v : u)[8 * 24 + 8]; }
  // A coded block: maxNum levels at the last scan positions, at least one non-zero.
  const int16_t* add(CavlcShape shape, int maxNum) {
    int32_t c[16] = {};
    const int amp = pick(8) ? 12 : 3000, density = 1 + pick(4);
    for (int i = 0; i < maxNum; ++i)
      if (pick(5) < density) c[i] = pick(2 * amp + 1) - amp;
    if (!std::count_if(c, c + maxNum, [](int32_t x) { return x != 0; })) c[pick(maxNum)] = 1 + pick(3);
    hux::test::cavlc_encoder().encode(w, c, maxNum, shape, 0);
    std::vector<int16_t> r(maxNum == 4 ? 4 : 16);
    for (int i = 0; i < maxNum; ++i) r[maxNum == 4 ? i : huxH264Zigzag4x4[i + 16 - maxNum]] = static_cast<int16_t>(c[i]);
    shapes.push_back({shape, maxNum});
    blocks.push_back(r);
    return blocks.back().data();
  }
  // The packed buffer, through the decoder exports.
  std::vector<int16_t> packed() {
    const auto& t = hux::test::cavlc_tables();
    std::vector<uint32_t> words = w.words(2);
    std::vector<int16_t> out(16 * 27 + 64);
    uint32_t* p = words.data();
    int32_t off = 31;
    int16_t* q = out.data();
    for (auto [shape, maxNum] : shapes) {
      int16_t num;
      const HuxResult st = shape == CavlcShape::kChroma420
                               ? huxiDecodeCAVLCChromaDcCoeffs_H264_1u16s(&p, &off, &num, &q, t.coeff_token_chroma420(), t.total_zeros_chroma420(), t.run_before())
                               : huxiDecodeCAVLCCoeffs_H264_1u16s(&p, &off, &num, &q, 0, static_cast<int16_t>(maxNum), t.coeff_token_4x4(), t.total_zeros_4x4(), t.run_before(), huxH264Zigzag4x4);
      EXPECT_EQ(st, huxOk);
    }
    out.resize(static_cast<size_t>(q - out.data()));
    return out;
  }
};

// The availability word of luma block n under an edge type.
uint32_t avail4x4(int n, uint32_t edge) {
  const bool left = !(edge & 1), above = !(edge & 4), x0 = kX[n] == 0, y0 = kY[n] == 0;
  const char ar = kAboveRight[n];
  return ((!x0 || left) ? 2u : 0u) | ((!y0 || above) ? 1u : 0u) |
         ((x0 && y0 ? !(edge & 16) : x0 ? left : y0 ? above : true) ? 32u : 0u) |
         ((ar == 'y' || (ar == 'a' && above) || (ar == 'c' && !(edge & 8))) ? 64u : 0u);
}
uint32_t mb_avail(uint32_t edge) { return ((edge & 1) ? 0u : 2u) | ((edge & 4) ? 0u : 1u) | ((edge & 16) ? 0u : 32u); }

// Runs the export on one copy and the composition on another; both pictures
// and the consumed length must agree.
template <class Export, class Compose>
void same(Mb& mb, size_t consumed, Export e, Compose c) {
  std::vector<int16_t> buf = mb.packed();
  ASSERT_EQ(buf.size(), consumed);
  Mb want = mb;
  int16_t* p = buf.data();
  ASSERT_EQ(e(mb, &p), huxOk);
  EXPECT_EQ(p - buf.data(), static_cast<ptrdiff_t>(consumed));
  c(want);
  EXPECT_EQ(mb.y, want.y);
  EXPECT_EQ(mb.u, want.u);
  EXPECT_EQ(mb.v, want.v);
}

// Luma 4x4 blocks of a pattern; returns the blocks' levels by block number (null when uncoded).
std::vector<const int16_t*> luma_blocks(Mb& mb, uint32_t cbp, int maxNum, size_t& n) {
  std::vector<const int16_t*> b(16, nullptr);
  for (int i = 0; i < 16; ++i)
    if (cbp & (2u << i)) b[i] = mb.add(CavlcShape::k4x4, maxNum), n += 16;
  return b;
}
uint32_t random_cbp(Mb& mb, uint32_t bits) { return mb.pick(6) == 0 ? 0 : mb.pick(6) == 0 ? bits : static_cast<uint32_t>(mb.rng()) & bits; }

TEST(ReconMacroblocks, LumaInterAndIntra4x4) {
  for (uint32_t seed = 0; seed < 60; ++seed) {
    Mb mb(seed);
    const uint32_t cbp = random_cbp(mb, 0x1FFFE), edge = static_cast<uint32_t>(mb.pick(32));
    const int32_t qp = mb.pick(52), kind = mb.pick(4);
    size_t n = 0;
    const auto blk = luma_blocks(mb, cbp, 16, n);
    int16_t ls[16];
    for (int16_t& x : ls) x = static_cast<int16_t>(16 + mb.pick(240));
    uint32_t modes[16];
    for (uint32_t& m : modes) m = static_cast<uint32_t>(mb.pick(9));
    same(mb, n, [&](Mb& m, int16_t** p) {
      return kind == 0 ? huxiReconstructLumaInterMB_H264_16s8u_C1R(p, m.luma(), 48, cbp, qp)
           : kind == 1 ? huxiReconstructLumaInter4x4MB_H264_16s8u_C1R(p, m.luma(), 48, cbp, qp, ls, 0)
           : kind == 2 ? huxiReconstructLumaIntraMB_H264_16s8u_C1R(p, m.luma(), 48, modes, cbp, qp, static_cast<uint8_t>(edge))
                       : huxiReconstructLumaIntra4x4MB_H264_16s8u_C1R(p, m.luma(), 48, modes, cbp, qp, static_cast<uint8_t>(edge), ls, 0);
    }, [&](Mb& m) {
      for (int i = 0; i < 16; ++i) {
        uint8_t* d = m.luma() + 48 * kY[i] + kX[i];
        if (kind >= 2) huxiPredictIntra_4x4_H264_8u_C1IR(d, 48, modes[i], avail4x4(i, edge));
        if (!blk[i]) continue;
        int16_t c[16];
        std::memcpy(c, blk[i], sizeof c);
        if (kind == 0) ASSERT_EQ(huxiDequantTransformResidualAndAdd_H264_16s_C1I(d, c, nullptr, d, 48, 48, qp, 1), huxOk);
        else ASSERT_EQ(huxiTransformQuantInvAddPred4x4_H264_16s_C1IR(d, 48, c, nullptr, d, 48, qp, 1, kind == 2 ? nullptr : ls), huxOk);
      }
    });
  }
}

TEST(ReconMacroblocks, LumaIntra16x16) {
  for (uint32_t seed = 0; seed < 60; ++seed) {
    Mb mb(100 + seed);
    const uint32_t cbp = random_cbp(mb, 0x1FFFF), edge = static_cast<uint32_t>(mb.pick(32)) & 0x15, mode = 2u + static_cast<uint32_t>(mb.pick(2)) * (edge ? 0u : 1u);
    const int32_t qp = mb.pick(52);
    size_t n = (cbp & 1) ? 16 : 0;
    const int16_t* dcl = (cbp & 1) ? mb.add(CavlcShape::k4x4, 16) : nullptr;
    const auto blk = luma_blocks(mb, cbp, 15, n);
    same(mb, n, [&](Mb& m, int16_t** p) { return huxiReconstructLumaIntra16x16MB_H264_16s8u_C1R(p, m.luma(), 48, mode, cbp, qp, static_cast<uint8_t>(edge)); },
         [&](Mb& m) {
           ASSERT_EQ(huxiPredictIntra_16x16_H264_8u_C1IR(m.luma(), 48, mode, mb_avail(edge)), huxOk);
           int16_t dc[16] = {};
           if (dcl) std::memcpy(dc, dcl, sizeof dc), huxiTransformDequantLumaDC_H264_16s_C1I(dc, qp);
           for (int i = 0; i < 16; ++i) {
             uint8_t* d = m.luma() + 48 * kY[i] + kX[i];
             int16_t c[16] = {};
             if (blk[i]) std::memcpy(c, blk[i], sizeof c);
             huxiDequantTransformResidualAndAdd_H264_16s_C1I(d, c, &dc[kY[i] + kX[i] / 4], d, 48, 48, qp, blk[i] != nullptr);
           }
         });
  }
}

TEST(ReconMacroblocks, Chroma) {
  for (uint32_t seed = 0; seed < 80; ++seed) {
    Mb mb(200 + seed);
    const uint32_t cbp = random_cbp(mb, 0x7FE0000), edge = static_cast<uint32_t>(mb.pick(2)) * 0x15;
    const int kind = mb.pick(4);
    const uint32_t mode = edge ? 0u : static_cast<uint32_t>(mb.pick(4));
    const int32_t qpu = mb.pick(40), qpv = kind & 1 ? mb.pick(40) : qpu;
    int16_t ls[2][16];
    for (auto& t : ls)
      for (int16_t& x : t) x = static_cast<int16_t>(16 + mb.pick(240));
    size_t n = 0;
    const int16_t* dcl[2] = {};
    const int16_t* ac[2][4] = {};
    for (int k = 0; k < 2; ++k)
      if (cbp & (1u << (17 + k))) dcl[k] = mb.add(CavlcShape::kChroma420, 4), n += 4;
    for (int k = 0; k < 2; ++k)
      for (int b = 0; b < 4; ++b)
        if (cbp & (1u << (19 + 4 * k + b))) ac[k][b] = mb.add(CavlcShape::k4x4, 15), n += 16;
    same(mb, n, [&](Mb& m, int16_t** p) {
      return kind == 0 ? huxiReconstructChromaInterMB_H264_16s8u_P2R(p, m.plane(0), m.plane(1), 24, cbp, qpu)
           : kind == 1 ? huxiReconstructChromaInter4x4MB_H264_16s8u_P2R(p, m.plane(0), m.plane(1), 24, cbp, qpu, qpv, ls[0], ls[1], 0)
           : kind == 2 ? huxiReconstructChromaIntraMB_H264_16s8u_P2R(p, m.plane(0), m.plane(1), 24, mode, cbp, qpu, static_cast<uint8_t>(edge))
                       : huxiReconstructChromaIntra4x4MB_H264_16s8u_P2R(p, m.plane(0), m.plane(1), 24, mode, cbp, qpu, qpv, static_cast<uint8_t>(edge), ls[0], ls[1], 0);
    }, [&](Mb& m) {
      for (int k = 0; k < 2; ++k) {
        if (kind >= 2) ASSERT_EQ(huxiPredictIntraChroma8x8_H264_8u_C1IR(m.plane(k), 24, mode, mb_avail(edge)), huxOk);
        const int32_t q = k ? qpv : qpu;
        int16_t dc[4] = {};
        if (dcl[k]) std::memcpy(dc, dcl[k], sizeof dc);
        if (kind & 1) huxiTransformQuantInvChromaDC2x2_H264_16s_C1I(dc, q, ls[k]);
        else huxiTransformDequantChromaDC_H264_16s_C1I(dc, q);
        for (int b = 0; b < 4; ++b) {
          uint8_t* d = m.plane(k) + 24 * 4 * (b >> 1) + 4 * (b & 1);
          int16_t c[16] = {};
          if (ac[k][b]) std::memcpy(c, ac[k][b], sizeof c);
          if (kind & 1) huxiTransformQuantInvAddPred4x4_H264_16s_C1IR(d, 24, c, &dc[b], d, 24, q, ac[k][b] != nullptr, ls[k]);
          else huxiDequantTransformResidualAndAdd_H264_16s_C1I(d, c, &dc[b], d, 24, 24, q, ac[k][b] != nullptr);
        }
      }
    });
  }
}

// ---------------------------------------------------------------- known answers

// A flat picture of 100 whose row above the macroblock is 0, 8, ..., 120 (corner 0).
struct Flat {
  std::vector<uint8_t> s = std::vector<uint8_t>(48 * 48, 100);
  Flat() {
    for (int x = -1; x < 16; ++x) s[15 * 48 + 16 + x] = static_cast<uint8_t>(8 * (x < 0 ? 0 : x));
  }
  uint8_t* mb() { return &s[16 * 48 + 16]; }
  Vals row(int y, int x0, int n) { return V(mb() + 48 * y + x0, static_cast<size_t>(n)); }
};
Vals intra8x8(int32_t mode, std::initializer_list<int> rows) {
  Flat f;
  const int32_t modes[4] = {mode, 2, 2, 2};
  int16_t c[1] = {};
  int16_t* p = c;
  Vals out{huxiReconstructLumaIntra8x8MB_H264_16s8u_C1R(&p, f.mb(), 48, modes, 0, 20, 0, nullptr, 0)};
  for (int y : rows) out = cat({out, f.row(y, 0, 8)});
  return out;
}
// Block 0 vertical with levels 1, 2, 3, 4 down its first column, or inter with -7 and 300 in its first row.
Vals bypass(int kind, int32_t qp) {
  Flat f;
  int16_t lv[16] = {1, 0, 0, 0, 2, 0, 0, 0, 3, 0, 0, 0, 4, 0, 0, 0};
  if (kind) lv[0] = -7, lv[1] = 300;
  int16_t* p = lv;
  uint32_t modes[16];
  std::fill_n(modes, 16, 2u);
  modes[0] = 0;
  const int16_t* ls = kLs4;
  Vals out{kind ? huxiReconstructLumaInter4x4MB_H264_16s8u_C1R(&p, f.mb(), 48, 2, qp, ls, 1)
                : huxiReconstructLumaIntra4x4MB_H264_16s8u_C1R(&p, f.mb(), 48, modes, 2, qp, 0, ls, 1)};
  for (int y = 0; y < 4; ++y) out = cat({out, f.row(y, 0, 2)});
  return out;
}

const Known kCases[] = {
    // The row above filtered: (0 + 0 + 8 + 2) >> 2 = 2 at the corner end, (32 x + 2) >> 2 = 8 x inside.
    {"Intra8x8VerticalFiltered", [] { return intra8x8(0, {0, 7}); }, {0, 2, 8, 16, 24, 32, 40, 48, 56, 2, 8, 16, 24, 32, 40, 48, 56}},
    // (2 + 16 + 16 + 2) >> 2 = 9; last: filtered 112 and (112 + 360 + 2) >> 2 = 118, then (112 + 354 + 2) >> 2 = 117.
    {"Intra8x8DiagDownLeft", [] { Vals v = intra8x8(3, {0, 7}); return Vals{v[0], v[1], v[16]}; }, {0, 9, 117}},
    // Vertical bypass accumulates down the column: 101, 103, 106, 110; the next column keeps 8 from above.
    {"BypassIntraVertical", [] { return bypass(0, 0); }, {0, 1, 8, 3, 8, 6, 8, 10, 8}},
    // Inter bypass adds the levels as they are, clamped: 100 - 7, 100 + 300, then 2, 3, 4 down the column.
    {"BypassInter", [] { return bypass(1, 0); }, {0, 93, 255, 102, 100, 103, 100, 104, 100}},
    // At QP 1 the flag is ignored: 300 x 16 x ... is a dequantised level, not 300.
    {"BypassOnlyAtQp0", [] { Vals v = bypass(1, 1); return Vals{v[0], v[1] != 93}; }, {0, 1}},
};
HUX_KNOWN(ReconKnown, kCases);

}  // namespace
