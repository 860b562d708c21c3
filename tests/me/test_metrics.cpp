// The difference, SATD, SSD and activity exports: their checks through the
// export descriptors; which kernel each selector reaches; and the scales,
// wraps, roundings and thresholds as hand-computed cases.
#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "huxvc.h"
#include "me/metrics_kernels.h"
#include "support/exports.h"
#include "support/known.h"

namespace {

using namespace hux::check;
namespace me = hux::me;

const uint8_t kB8[64 * 20] = {};
const uint16_t kB16[64 * 20] = {};
const int16_t kS16[64] = {};
#define TWO(f, b, ...) describe(#f, f, {in(b), val(64), in(b), val(64), __VA_ARGS__})
#define ONE(f, b, ...) describe(#f, f, {in(b), val(64), __VA_ARGS__})
#define GETDIFF(f) TWO(f, kB8, out(16 * 32), val(32), out(16 * 32, false), val(32), val(12), val(1))
#define GETDIFFB(f) \
  describe(#f, f, {in(kB8), val(64), in(kB8), val(64), val(8), in(kB8), val(64), val(4), out(16 * 32), val(32), val(1)})
const Describe kExports({
    TWO(huxiSATD16x16_8u32s_C1R, kB8, out(4)), TWO(huxiSATD16x8_8u32s_C1R, kB8, out(4)),
    TWO(huxiSATD8x16_8u32s_C1R, kB8, out(4)), TWO(huxiSATD8x8_8u32s_C1R, kB8, out(4)),
    TWO(huxiSATD8x4_8u32s_C1R, kB8, out(4)), TWO(huxiSATD4x8_8u32s_C1R, kB8, out(4)),
    TWO(huxiSATD4x4_8u32s_C1R, kB8, out(4)), TWO(huxiSAT8x8D_8u32s_C1R, kB8, out(4)),
    TWO(huxiSAT8x8D_16u32s_C1R, kB16, out(4)), TWO(huxiSSD8x8_8u32s_C1R, kB8, out(4), val(12)),
    TWO(huxiSSD4x4_8u32s_C1R, kB8, out(4), val(12)), TWO(huxiSqrDiff16x16_8u32s, kB8, val(12), out(4)),
    describe("huxiSqrDiff16x16B_8u32s", huxiSqrDiff16x16B_8u32s,
             {in(kB8), val(64), in(kB8), val(64), val(12), in(kB8), val(64), val(8), out(4)}),
    TWO(huxiVarMeanDiff16x16_8u32s_C1R, kB8, out(16), out(16), val(4)),
    TWO(huxiVarMeanDiff16x8_8u32s_C1R, kB8, out(8), out(8), val(8)),
    ONE(huxiVariance16x16_8u32s, kB8, out(4)), ONE(huxiVarSum8x8_8u32s_C1R, kB8, out(4), out(4)),
    ONE(huxiVarSum8x8_16s32s_C1R, kB16, out(4), out(4)), ONE(huxiMeanAbsDev16x16_8u32s_C1R, kB8, out(4)),
    ONE(huxiMeanAbsDev8x8_8u32s_C1R, kB8, out(4)),
    describe("huxiCountZeros8x8_16s_C1", huxiCountZeros8x8_16s_C1, {in(kS16), out(4)}),
    ONE(huxiEdgesDetect16x16_8u_C1R, kB8, val(10), val(3), out(1)),
    ONE(huxiEdgesDetect16x16_16u_C1R, kB16, val(10), val(3), out(1)),
    TWO(huxiSub16x16_8u16s_C1R, kB8, out(16 * 32), val(32)), TWO(huxiSub8x8_8u16s_C1R, kB8, out(8 * 16), val(16)),
    TWO(huxiSub4x4_8u16s_C1R, kB8, out(4 * 8), val(8)), TWO(huxiSub8x8_16u16s_C1R, kB16, out(8 * 16), val(16)),
    TWO(huxiSub4x4_16u16s_C1R, kB16, out(4 * 8), val(8)), GETDIFF(huxiGetDiff16x16_8u16s_C1),
    GETDIFF(huxiGetDiff16x8_8u16s_C1), GETDIFF(huxiGetDiff8x16_8u16s_C1), GETDIFF(huxiGetDiff8x8_8u16s_C1),
    GETDIFF(huxiGetDiff8x4_8u16s_C1), GETDIFF(huxiGetDiff4x4_8u16s_C1), GETDIFFB(huxiGetDiff16x16B_8u16s_C1),
    GETDIFFB(huxiGetDiff16x8B_8u16s_C1), GETDIFFB(huxiGetDiff8x16B_8u16s_C1), GETDIFFB(huxiGetDiff8x8B_8u16s_C1),
    GETDIFFB(huxiGetDiff8x4B_8u16s_C1),
    TWO(huxiSumsDiff16x16Blocks4x4_8u16s_C1, kB8, out(32), out(512, false)),
    TWO(huxiSumsDiff8x8Blocks4x4_8u16s_C1, kB8, out(8), out(128, false)),
    TWO(huxiSumsDiff16x16Blocks4x4_16u32s_C1R, kB16, out(64), out(512, false)),
    TWO(huxiSumsDiff8x8Blocks4x4_16u32s_C1R, kB16, out(16), out(128, false)),
});

// ------------------------------------------------- selectors reach kernels

struct Blocks {
  std::vector<uint8_t> cur, f, b;
  std::vector<int16_t> want, got, wantPred, gotPred;
  explicit Blocks(uint32_t seed) : cur(24 * 16), f(24 * 17), b(24 * 17), want(16 * 16), got(16 * 16), wantPred(16 * 16), gotPred(16 * 16) {
    std::mt19937 g(seed);
    for (auto* v : {&cur, &f, &b})
      for (auto& x : *v) x = uint8_t(g());
  }
};
int pos(int32_t mcType) { return (mcType >> 2) & 3; }

using GetDiff = HuxResult(HUX_STDCALL*)(const uint8_t*, int32_t, const uint8_t*, int32_t, int16_t*, int32_t, int16_t*,
                                        int32_t, int32_t, int32_t);
using GetDiffB = HuxResult(HUX_STDCALL*)(const uint8_t*, int32_t, const uint8_t*, int32_t, int32_t, const uint8_t*,
                                         int32_t, int32_t, int16_t*, int32_t, int32_t);
TEST(MetricsDispatch, GetDiffSelectorsAndPredictor) {
  const struct {
    GetDiff f;
    GetDiffB fb;
    int w, h;
  } cases[] = {{huxiGetDiff16x16_8u16s_C1, huxiGetDiff16x16B_8u16s_C1, 16, 16},
               {huxiGetDiff16x8_8u16s_C1, huxiGetDiff16x8B_8u16s_C1, 16, 8},
               {huxiGetDiff8x16_8u16s_C1, huxiGetDiff8x16B_8u16s_C1, 8, 16},
               {huxiGetDiff8x8_8u16s_C1, huxiGetDiff8x8B_8u16s_C1, 8, 8},
               {huxiGetDiff8x4_8u16s_C1, huxiGetDiff8x4B_8u16s_C1, 8, 4}};
  for (const auto& c : cases)
    for (int32_t mc = 0; mc < 32; ++mc)
      for (int32_t rc = 0; rc < 4; ++rc)
        for (const bool withPred : {false, true}) {
          Blocks k(static_cast<uint32_t>(mc * 8 + rc * 2 + withPred));
          const int i = 4 * pos(mc) + 2 * (rc & 1) + withPred;
          const auto table = c.w == 16 ? me::ref::kGetDiff<16> : me::ref::kGetDiff<8>;
          table[i](k.cur.data(), 24, k.f.data(), 24, k.want.data(), 32, k.wantPred.data(), 32, c.h);
          ASSERT_EQ(c.f(k.cur.data(), 24, k.f.data(), 24, k.got.data(), 32, withPred ? k.gotPred.data() : nullptr, 32,
                        mc, rc), huxOk);
          ASSERT_EQ(k.got, k.want) << c.w << "x" << c.h << " mcType " << mc << " rc " << rc;
          ASSERT_EQ(k.gotPred, k.wantPred) << c.w << "x" << c.h << " predictor, mcType " << mc << " rc " << rc;
          const int32_t mcb = (mc * 5 + rc) & 15;
          const auto tb = c.w == 16 ? me::ref::kGetDiffB<16> : me::ref::kGetDiffB<8>;
          tb[2 * pos(mc) + 8 * pos(mcb) + (rc & 1)](k.cur.data(), 24, k.f.data(), 24, k.b.data(), 24, k.want.data(), 32, c.h);
          ASSERT_EQ(c.fb(k.cur.data(), 24, k.f.data(), 24, mc, k.b.data(), 24, mcb, k.got.data(), 32, rc), huxOk);
          ASSERT_EQ(k.got, k.want) << c.w << "x" << c.h << "B mcTypes " << mc << ", " << mcb << " rc " << rc;
        }
}

// The half-sample metrics at every selector value: the position's kernel, or
// (SqrDiff, VarMeanDiff) nothing written for a value outside 0, 4, 8, 12.
template <int M>
void expect_position(const Blocks& k, int32_t mc) {
  int32_t s8 = -1, s4 = -1, sq = -1, sqb = -1, var[4] = {-1, -1, -1, -1}, mean[4] = {-1, -1, -1, -1};
  const bool exact = (mc & ~12) == 0;
  EXPECT_EQ(huxiSSD8x8_8u32s_C1R(k.cur.data(), 24, k.f.data(), 24, &s8, mc), huxOk);
  EXPECT_EQ(huxiSSD4x4_8u32s_C1R(k.cur.data(), 24, k.f.data(), 24, &s4, mc), huxOk);
  EXPECT_EQ(huxiSqrDiff16x16_8u32s(k.cur.data(), 24, k.f.data(), 24, mc, &sq), huxOk);
  EXPECT_EQ(huxiSqrDiff16x16B_8u32s(k.cur.data(), 24, k.f.data(), 24, mc, k.b.data(), 24, 12 - mc % 13, &sqb), huxOk);
  EXPECT_EQ(huxiVarMeanDiff16x16_8u32s_C1R(k.cur.data(), 24, k.f.data(), 24, var, mean, mc), huxOk);
  EXPECT_EQ(s8, (me::ref::ssd<8, 8, M>(k.cur.data(), 24, k.f.data(), 24))) << mc;
  EXPECT_EQ(s4, (me::ref::ssd<4, 4, M>(k.cur.data(), 24, k.f.data(), 24))) << mc;
  EXPECT_EQ(sq, (exact ? me::ref::ssd<16, 16, M>(k.cur.data(), 24, k.f.data(), 24) : -1)) << mc;
  int32_t wantVar[4] = {-1, -1, -1, -1}, wantMean[4] = {-1, -1, -1, -1};
  if (exact) me::ref::var_mean_diff<16, M>(k.cur.data(), 24, k.f.data(), 24, wantVar, wantMean);
  EXPECT_EQ(V(var, 4), V(wantVar, 4)) << mc;
  EXPECT_EQ(V(mean, 4), V(wantMean, 4)) << mc;
  int32_t wantB = 0;
  const int mb = pos(12 - mc % 13);
  if (mb == 0) wantB = me::ref::sqr_diff_b<M, 0>(k.cur.data(), 24, k.f.data(), 24, k.b.data(), 24);
  if (mb == 1) wantB = me::ref::sqr_diff_b<M, 1>(k.cur.data(), 24, k.f.data(), 24, k.b.data(), 24);
  if (mb == 2) wantB = me::ref::sqr_diff_b<M, 2>(k.cur.data(), 24, k.f.data(), 24, k.b.data(), 24);
  if (mb == 3) wantB = me::ref::sqr_diff_b<M, 3>(k.cur.data(), 24, k.f.data(), 24, k.b.data(), 24);
  EXPECT_EQ(sqb, wantB) << mc;
}
TEST(MetricsDispatch, HalfSampleMetricsAtEverySelector) {
  for (int32_t mc = 0; mc < 16; ++mc) {
    Blocks k(static_cast<uint32_t>(mc));
    if (pos(mc) == 0) expect_position<0>(k, mc);
    if (pos(mc) == 1) expect_position<1>(k, mc);
    if (pos(mc) == 2) expect_position<2>(k, mc);
    if (pos(mc) == 3) expect_position<3>(k, mc);
  }
}

// ------------------------------------------------------------ by hand

template <class T>
std::vector<T> grid(int w, int h, T (*f)(int x, int y)) {
  std::vector<T> v(static_cast<size_t>(w * h));
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x) v[static_cast<size_t>(y * w + x)] = f(x, y);
  return v;
}
using Satd = HuxResult(HUX_STDCALL*)(const uint8_t*, int32_t, const uint8_t*, int32_t, int32_t*);
const Known kHand[] = {
    // One sample differing by 1 in a block's last tile: every one of that
    // tile's 16 coefficients is +-1. A flat tile of 255: the DC alone, 4080.
    {"satd_scale_and_last_tile", [] {
       Vals o;
       const struct { Satd f; int w, h; } fs[] = {{huxiSATD16x16_8u32s_C1R, 16, 16}, {huxiSATD16x8_8u32s_C1R, 16, 8},
           {huxiSATD8x16_8u32s_C1R, 8, 16}, {huxiSATD8x8_8u32s_C1R, 8, 8}, {huxiSATD8x4_8u32s_C1R, 8, 4},
           {huxiSATD4x8_8u32s_C1R, 4, 8}, {huxiSATD4x4_8u32s_C1R, 4, 4}};
       for (const auto& c : fs) {
         std::vector<uint8_t> cur(16 * 16, 0), ref(16 * 16, 0);
         ref[static_cast<size_t>((c.h - 1) * 16 + c.w - 1)] = 1;
         int32_t s = -1;
         EXPECT_EQ(c.f(cur.data(), 16, ref.data(), 16, &s), huxOk);
         o.push_back(s);
       }
       std::vector<uint8_t> flat(16, 255), zero(16, 0);
       int32_t s = -1;
       EXPECT_EQ(huxiSATD4x4_8u32s_C1R(flat.data(), 4, zero.data(), 4, &s), huxOk);
       o.push_back(s);
       return o; },
     {16, 16, 16, 16, 16, 16, 16, 4080}},
    // 8x8 Hadamard sums: a single difference of 1 gives 64, a flat 255 gives
    // the DC 64 x 255; word samples 40000 against 0 wrap to -25536, and the
    // element step 8 is one row of the contiguous block (the last sample is
    // read only when the steps are taken as elements).
    {"sat8x8d_scale_and_word_wrap", [] {
       std::vector<uint8_t> z(64, 0), one(64, 0), flat(64, 255);
       one[63] = 1;
       std::vector<uint16_t> w(64, 0), wz(64, 0);
       w[63] = 40000;
       int32_t a = -1, b = -1, c = -1;
       EXPECT_EQ(huxiSAT8x8D_8u32s_C1R(one.data(), 8, z.data(), 8, &a), huxOk);
       EXPECT_EQ(huxiSAT8x8D_8u32s_C1R(flat.data(), 8, z.data(), 8, &b), huxOk);
       EXPECT_EQ(huxiSAT8x8D_16u32s_C1R(w.data(), 8, wz.data(), 8, &c), huxOk);
       return Vals{a, b, c}; },
     {64, 16320, 64 * 25536}},
    // Alternating 0 and 255: S = 32640, Q = 128 x 65025, Q - S*S/256 = 4161600;
    // a flat block 0. Values 0..63: 85344 / 64 - 31.5^2 = 341.25, truncated;
    // 64 x -32768: exactly 0 in single precision.
    {"variances", [] {
       auto alt = grid<uint8_t>(16, 16, [](int x, int y) { return uint8_t((x + y) & 1 ? 255 : 0); });
       std::vector<uint8_t> flat(256, 77), ramp(64);
       for (int i = 0; i < 64; ++i) ramp[static_cast<size_t>(i)] = uint8_t(i);
       std::vector<int16_t> low(64, -32768);
       int32_t v[6] = {-1, -1, -1, -1, -1, -1}, s[2];
       EXPECT_EQ(huxiVariance16x16_8u32s(alt.data(), 16, &v[0]), huxOk);
       EXPECT_EQ(huxiVariance16x16_8u32s(flat.data(), 16, &v[1]), huxOk);
       EXPECT_EQ(huxiVarSum8x8_8u32s_C1R(ramp.data(), 8, &v[2], &s[0]), huxOk);
       EXPECT_EQ(huxiVarSum8x8_16s32s_C1R(low.data(), 16, &v[3], &s[1]), huxOk);
       EXPECT_EQ(huxiMeanAbsDev16x16_8u32s_C1R(flat.data(), 16, &v[4]), huxOk);
       return cat({V(v, 5), V(s, 2)}); },
     {4161600, 0, 341, 0, 0, 2016, -2097152}},
    // 32 zeros and 32 threes: the mean 1.5 rounds to 2, sum |x - 2| = 96.
    // Difference d = 3 over the left 8x8 and -2 over the right: variances 0,
    // means 3 and -2 ((-128 + 32) >> 6, rounded toward -infinity at the half).
    {"mean_rounding", [] {
       auto half = grid<uint8_t>(8, 8, [](int, int y) { return uint8_t(y < 4 ? 0 : 3); });
       auto cur = grid<uint8_t>(16, 16, [](int x, int) { return uint8_t(x < 8 ? 13 : 8); });
       std::vector<uint8_t> ref(17 * 17, 10);
       cur[16 * 15 + 15] = 15;
       int32_t mad = -1, var[4], mean[4];
       EXPECT_EQ(huxiMeanAbsDev8x8_8u32s_C1R(half.data(), 8, &mad), huxOk);
       EXPECT_EQ(huxiVarMeanDiff16x16_8u32s_C1R(cur.data(), 16, ref.data(), 17, var, mean, 0), huxOk);
       return cat({{mad}, V(var, 4), V(mean, 4)}); },
     // Block 3: 63 x -2 and one 5: S = -121, Q = 277, 277 - (14641 >> 6) = 49,
     // mean (-121 + 32) >> 6 = -2.
     {96, 0, 0, 0, 49, 3, -2, 3, -2}},
    // Threshold 200 is -56 as a signed byte: all 225 positions count. 127 is
    // never exceeded by a capped difference; 126 is. Words: 1000 exceeds 999
    // only.
    {"edge_thresholds", [] {
       auto b = grid<uint8_t>(16, 16, [](int x, int y) { return uint8_t((x + y) & 1 ? 255 : 0); });
       auto w = grid<uint16_t>(16, 16, [](int x, int y) { return uint16_t((x + y) & 1 ? 1000 : 0); });
       std::vector<uint8_t> flat(256, 9);
       uint8_t r[8];
       std::fill_n(r, 8, uint8_t{7});
       EXPECT_EQ(huxiEdgesDetect16x16_8u_C1R(flat.data(), 16, 200, 224, &r[0]), huxOk);
       EXPECT_EQ(huxiEdgesDetect16x16_8u_C1R(flat.data(), 16, 200, 225, &r[1]), huxOk);
       EXPECT_EQ(huxiEdgesDetect16x16_8u_C1R(b.data(), 16, 127, 0, &r[2]), huxOk);
       EXPECT_EQ(huxiEdgesDetect16x16_8u_C1R(b.data(), 16, 126, 224, &r[3]), huxOk);
       EXPECT_EQ(huxiEdgesDetect16x16_16u_C1R(w.data(), 32, 999, 224, &r[4]), huxOk);
       EXPECT_EQ(huxiEdgesDetect16x16_16u_C1R(w.data(), 32, 1000, 0, &r[5]), huxOk);
       return V(r, 6); },
     {1, 0, 0, 1, 1, 0}},
    // Blocks of k + 1 against zero: sums 16 (k + 1) in raster order, the
    // differences block by block. Words: 40000 - 0 wraps to -25536; a step of
    // 33 bytes acts as 32.
    {"sums_in_block_order", [] {
       auto c = grid<uint8_t>(8, 8, [](int x, int y) { return uint8_t((y / 4) * 2 + x / 4 + 1); });
       std::vector<uint8_t> z(64, 0);
       int16_t sums[4], diff[64];
       EXPECT_EQ(huxiSumsDiff8x8Blocks4x4_8u16s_C1(c.data(), 8, z.data(), 8, sums, diff), huxOk);
       std::vector<uint16_t> w(16 * 16, 0), wz(16 * 16, 0);
       w[16 * 5 + 9] = 40000;
       int32_t ws[16];
       int16_t wd[256];
       EXPECT_EQ(huxiSumsDiff16x16Blocks4x4_16u32s_C1R(w.data(), 33, wz.data(), 33, ws, wd), huxOk);
       return cat({V(sums, 4), {diff[0], diff[15], diff[16], diff[31], diff[32], diff[63]}, V(ws, 16), {wd[16 * 6 + 4 + 1]}}); },
     {16, 32, 48, 64, 1, 1, 2, 2, 3, 4, 0, 0, 0, 0, 0, 0, -25536, 0, 0, 0, 0, 0, 0, 0, 0, 0, -25536}},
    // Rows 1 2 1 2 ...: the horizontal half rounds to 2 (up) or 1 (down); the
    // 4x4 member ignores its selectors; bidirectional 0 and 3 average to 2;
    // word differences wrap; SqrDiff with mcType 5 leaves its result; a
    // non-zero mcType without position bits is the integer sample.
    {"differences_and_predictions", [] {
       std::vector<uint8_t> ref(24 * 17), cur(16 * 16, 5), zero(24 * 17, 0), three(24 * 17, 3);
       for (size_t i = 0; i < ref.size(); ++i) ref[i] = uint8_t(1 + (i & 1));
       int16_t d[16 * 16], p[16 * 16];
       Vals o;
       for (int32_t rc : {0, 1}) {
         EXPECT_EQ(huxiGetDiff8x4_8u16s_C1(cur.data(), 16, ref.data(), 24, d, 32, p, 32, 8, rc), huxOk);
         o.insert(o.end(), {d[0], p[0]});
       }
       EXPECT_EQ(huxiGetDiff4x4_8u16s_C1(cur.data(), 16, ref.data(), 24, d, 8, nullptr, 0, 12, 1), huxOk);
       o.insert(o.end(), {d[0], d[1]});
       EXPECT_EQ(huxiGetDiff8x8B_8u16s_C1(cur.data(), 16, zero.data(), 24, 12, three.data(), 24, 4, d, 16, 1), huxOk);
       o.push_back(d[63]);
       std::vector<uint16_t> w(16, 0), wr(16, 40000);
       EXPECT_EQ(huxiSub4x4_16u16s_C1R(w.data(), 8, wr.data(), 8, d, 8), huxOk);
       o.push_back(d[15]);
       int32_t sq = 77, sqb = -1;
       EXPECT_EQ(huxiSqrDiff16x16_8u32s(cur.data(), 16, ref.data(), 24, 5, &sq), huxOk);
       EXPECT_EQ(huxiSqrDiff16x16B_8u32s(zero.data(), 16, zero.data(), 24, 1, three.data(), 24, 16, &sqb), huxOk);
       int32_t zeros = -1;
       int16_t coeffs[64] = {0, 1, 0, -1, 0, 0, 32767, -32768};
       EXPECT_EQ(huxiCountZeros8x8_16s_C1(coeffs, &zeros), huxOk);
       o.insert(o.end(), {sq, sqb, zeros});
       return o; },
     {3, 2, 4, 1, 4, 3, 3, 25536, 77, 256 * 4, 60}},
};
HUX_KNOWN(MetricsKnown, kHand);

}  // namespace
