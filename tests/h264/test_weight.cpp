// Weighted prediction through the exports: checks through the export descriptors (the 16-bit blocks' fields
// by hand), and hand-computed rounding, offsets, clamps, logWD 7 and values far outside the standard's ranges.
#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "huxvc.h"
#include "support/exports.h"
#include "support/known.h"

namespace {

using namespace hux::check;

const uint8_t kB8[1024] = {};
const uint16_t kB16[1024] = {};
// Steps of 15 and below are refused before any size; the refused widths are
// above 15 (and below the good step) so that either order of two refusals is visible.
const std::vector<Bad> kStep = {{15, huxErrStep, 1}, {0, huxErrStep, 1}, {-16, huxErrStep, 1}};
Bad sz(int32_t w, int32_t h) { return {size_arg(w, h), huxErrSize, 2}; }
const std::vector<Bad> kSize = {sz(16, 3), sz(16, 0), sz(16, -1), sz(16, 12), sz(17, 16), sz(32, 16)};
Arg step() { return val(64, kStep, {16, 17}); }
Arg roi() { return val(size_arg(16, 16), kSize, {size_arg(2, 2), size_arg(4, 16), size_arg(16, 2), size_arg(8, 4)}); }
uint16_t gDst[64];
const HuxBidir16u kBlock = {kB16, 16, kB16 + 1, 17, gDst, 18, 2, 2, 10};

const Describe kExports({
    describe("huxiUniDirWeightBlock_H264_8u_C1R", huxiUniDirWeightBlock_H264_8u_C1R,
             {out(1024), step(), val(5), val(40), val(4), roi()}),
    describe("huxiUniDirWeightBlock_H264_8u_C1IR", huxiUniDirWeightBlock_H264_8u_C1IR,
             {out(1024), step(), val(5), val(40), val(4), roi()}),
    describe("huxiUnidirWeight_H264_16u_IP2P1R", huxiUnidirWeight_H264_16u_IP2P1R,
             {out(2048), step(), val(5), val(40), val(4), roi(), val(10)}),
    describe("huxiBiDirWeightBlock_H264_8u_P2P1R", huxiBiDirWeightBlock_H264_8u_P2P1R,
             {in(kB8), in(kB8), out(1024), step(), step(), val(5), val(40), val(4), val(24), val(-2), roi()}),
    describe("huxiBiDirWeightBlock_H264_8u_P3P1R", huxiBiDirWeightBlock_H264_8u_P3P1R,
             {in(kB8), in(kB8), out(1024), step(), step(), step(), val(7), val(21), val(110), val(100), val(67), roi()}),
    describe("huxiBiDirWeightBlockImplicit_H264_8u_P2P1R", huxiBiDirWeightBlockImplicit_H264_8u_P2P1R,
             {in(kB8), in(kB8), out(1024), step(), step(), val(40), val(24), roi()}),
    describe("huxiBiDirWeightBlockImplicit_H264_8u_P3P1R", huxiBiDirWeightBlockImplicit_H264_8u_P3P1R,
             {in(kB8), in(kB8), out(1024), step(), step(), step(), val(40), val(24), roi()}),
    describe("huxiWeightedAverage_H264_8u_C1IR", huxiWeightedAverage_H264_8u_C1IR,
             {in(kB8), out(1024), step(), val(1), val(1), val(1), val(0), roi()}),
    describe("huxiBidirWeight_H264_16u_P2P1R", huxiBidirWeight_H264_16u_P2P1R,
             {in(&kBlock), val(5), val(40), val(4), val(24), val(-2)}),
    describe("huxiBidirWeightImplicit_H264_16u_P2P1R", huxiBidirWeightImplicit_H264_16u_P2P1R,
             {in(&kBlock), val(32), val(32)}),
    describe("huxiBidir_H264_16u_P2P1R", huxiBidir_H264_16u_P2P1R, {in(&kBlock)}),
});

// ------------------------------------------------------------ by hand

template <class T>
Vals run(std::vector<T> v, const std::function<HuxResult(T*)>& f) {
  EXPECT_EQ(f(v.data()), huxOk);
  return Vals(v.begin(), v.end());
}
// A 2x2 block in a row of four: x1 values, then x2 values, destination last.
Vals bi8(std::vector<uint8_t> x, uint32_t logWD, int32_t w1, int32_t o1, int32_t w2, int32_t o2) {
  x.resize(12);
  EXPECT_EQ(huxiBiDirWeightBlock_H264_8u_P3P1R(x.data(), x.data() + 4, x.data() + 8, 2, 2, 2, logWD, w1, o1, w2, o2, {2, 2}), huxOk);
  return Vals(x.begin() + 8, x.end());
}
Vals uni8(std::vector<uint8_t> x, uint32_t logWD, int32_t w, int32_t o) {
  return run<uint8_t>(x, [&](uint8_t* p) { return huxiUniDirWeightBlock_H264_8u_C1R(p, 2, logWD, w, o, {2, 2}); });
}

const Known kHand[] = {
    // No rounding term at logWD 0; rounding half up, then an arithmetic shift that floors negatives.
    {"uni_logwd0_and_rounding", [] { return cat({uni8({100, 200, 0, 1}, 0, 2, -3), uni8({3, 5, 3, 4}, 1, 1, 0),
                                                  uni8({3, 4, 0, 1}, 1, -1, 10)}); },
     {197, 255, 0, 0, 2, 3, 2, 2, 9, 8, 10, 10}},
    // A zero weight with a negative offset clamps to 0, never wraps.
    {"uni_zero_weight_negative_offset", [] { return uni8({255, 1, 0, 9}, 3, 0, -5); }, all(4, 0)},
    // Offsets 1 and 2 add (1 + 2 + 1) >> 1 = 2; -1 and -2 add -1.
    {"bi_combined_offset", [] { return cat({bi8({100, 100, 100, 100, 100, 100, 101, 101}, 5, 32, 1, 32, 2),
                                           bi8({100, 100, 100, 100, 100, 100, 101, 101}, 5, 32, -1, 32, -2)}); },
     {102, 102, 103, 103, 99, 99, 100, 100}},
    // logWD 7, weights 21 and 100, offsets 110 and 67 (+89): 255s give
    // (30855 + 128) >> 8 = 121, so 210, where folding the offset before the
    // shift saturates 16 bits and gives 127; then 200 and 100: 55 + 89.
    {"bi_logwd7_large_weights_and_offsets", [] { return bi8({255, 200, 255, 200, 255, 100, 255, 100}, 7, 21, 110, 100, 67); },
     {210, 144, 210, 144}},
    // Implicit: (x1 w1 + x2 w2 + 32) >> 6 with w1 128, w2 -64, and 32 / 32.
    {"bi_implicit", [] {
       uint8_t x[12] = {255, 100, 10, 1, 0, 200, 255, 2};
       EXPECT_EQ(huxiBiDirWeightBlockImplicit_H264_8u_P3P1R(x, x + 4, x + 8, 2, 2, 2, 128, -64, {2, 2}), huxOk);
       uint8_t y[12] = {1, 1, 1, 1, 2, 2, 2, 2};
       EXPECT_EQ(huxiBiDirWeightBlockImplicit_H264_8u_P2P1R(y, y + 4, y + 8, 2, 2, 32, 32, {2, 2}), huxOk);
       return cat({V(x + 8, 4), V(y + 8, 4)}); },
     {255, 0, 0, 0, 2, 2, 2, 2}},
    // Shift 0 and a negative shift add plainly; shift 1 rounds half up; the offset follows the shift.
    {"weighted_average_shifts", [] {
       Vals o;
       for (int32_t s : {0, -3, 1, 2}) {
         uint8_t a[4] = {100, 100, 1, 0}, d[4] = {100, 101, 2, 0};
         EXPECT_EQ(huxiWeightedAverage_H264_8u_C1IR(a, d, 2, 1, 1, s, s == 2 ? -1 : 0, {2, 2}), huxOk);
         o.insert(o.end(), d, d + 4);
       }
       return o; },
     {200, 201, 3, 0, 200, 201, 3, 0, 100, 101, 2, 0, 49, 49, 0, 0}},
    // Far outside the standard's ranges, still exact: weight 1000 at logWD 10,
    // INT32_MAX at logWD 31 (3.4999... rounds to 3), a capped logWD, offsets
    // whose sum overflows 32 bits.
    {"out_of_range_values_exact", [] {
       return cat({uni8({100, 1, 2, 3}, 10, 1000, 0), uni8({1, 2, 3, 0}, 31, INT32_MAX, 0),
                   bi8({255, 255, 255, 255, 255, 255, 255, 255}, 0xFFFFFFFFu, 7, 7, 7, 7),
                   bi8({0, 0, 0, 0, 0, 0, 0, 0}, 0, 0, INT32_MAX, 0, INT32_MAX),
                   bi8({0, 0, 0, 0, 0, 0, 0, 0}, 0, 0, INT32_MIN, 0, INT32_MIN)}); },
     {98, 1, 2, 3, 1, 2, 3, 0, 7, 7, 7, 7, 255, 255, 255, 255, 0, 0, 0, 0}},
    // 16-bit forms clamp at the bit depth; the plain average takes a 3x5 block and
    // never overflows.
    {"words", [] {
       std::vector<uint16_t> u = {300, 200, 60000, 1};
       EXPECT_EQ(huxiUnidirWeight_H264_16u_IP2P1R(u.data(), 2, 0, 4, 1, {2, 2}, 10), huxOk);
       uint16_t a[15], b[15], d[16] = {};
       for (int i = 0; i < 15; ++i) a[i] = uint16_t(i == 14 ? 65535 : i), b[i] = uint16_t(i == 14 ? 65535 : 2 * i);
       HuxBidir16u p = {a, 3, b, 3, d, 3, 3, 5, 16};
       EXPECT_EQ(huxiBidir_H264_16u_P2P1R(&p), huxOk);
       HuxBidir16u q = {a + 9, 3, b, 2, d, 3, 2, 2, 9};
       EXPECT_EQ(huxiBidirWeight_H264_16u_P2P1R(&q, 0, 1, 0, 0, 1010), huxOk);
       return cat({V(u.data(), 4), V(d, 16)}); },
     {1023, 801, 1023, 5, 510, 510, 3, 511, 511, 8, 9, 11, 12, 14, 15, 17, 18, 20, 65535, 0}},
};
HUX_KNOWN(WeightKnown, kHand);

// The parameter blocks' fields: null pointers, then steps, then sizes.
TEST(WeightChecks, NarrowSizesAndBlockFields) {
  uint8_t p[64] = {};  // refused as sizes below a step of 16, steps below the width
  for (HuxSize s : {HuxSize{3, 2}, HuxSize{0, 2}, HuxSize{1, 4}, HuxSize{6, 8}, HuxSize{2, 6}})
    EXPECT_EQ(huxiUniDirWeightBlock_H264_8u_C1R(p, 16, 0, 1, 1, s), huxErrSize) << s.width << "x" << s.height;
  EXPECT_EQ(huxiUniDirWeightBlock_H264_8u_C1R(p, 2, 0, 1, 1, {3, 2}), huxErrStep);
  EXPECT_EQ(huxiBiDirWeightBlock_H264_8u_P3P1R(p, p, p, 4, 3, 4, 0, 1, 1, 1, 1, {4, 2}), huxErrStep);
  EXPECT_EQ(std::vector<uint8_t>(p, p + 64), std::vector<uint8_t>(64, 0));
  uint16_t dst[128] = {};
  auto status = [&](auto edit, int which) {
    HuxBidir16u b = {kB16, 16, kB16 + 64, 16, dst, 16, 4, 4, 8};
    edit(b);
    return which == 0 ? huxiBidirWeight_H264_16u_P2P1R(&b, 1, 1, 0, 1, 0)
         : which == 1 ? huxiBidirWeightImplicit_H264_16u_P2P1R(&b, 32, 32) : huxiBidir_H264_16u_P2P1R(&b);
  };
  for (int f = 0; f < 3; ++f) {
    EXPECT_EQ(status([](HuxBidir16u& b) { b.pSrc1 = nullptr; b.src1Step = 0; }, f), huxErrNullPtr);
    EXPECT_EQ(status([](HuxBidir16u& b) { b.pSrc2 = nullptr; b.width = 3; }, f), huxErrNullPtr);
    EXPECT_EQ(status([](HuxBidir16u& b) { b.pDst = nullptr; b.height = 0; }, f), huxErrNullPtr);
    EXPECT_EQ(status([](HuxBidir16u& b) { b.src1Step = 3; b.width = 17; }, f), f == 2 ? huxErrSize : huxErrStep);
    EXPECT_EQ(status([](HuxBidir16u& b) { b.src2Step = -4; }, f), f == 2 ? huxOk : huxErrStep);
    EXPECT_EQ(status([](HuxBidir16u& b) { b.dstStep = 3; b.height = 1; }, f), f == 2 ? huxErrSize : huxErrStep);
    EXPECT_EQ(status([](HuxBidir16u& b) { b.width = 3; b.height = 5; }, f), f == 2 ? huxOk : huxErrSize);
    EXPECT_EQ(status([](HuxBidir16u& b) { b.width = 16; b.height = 2; }, f), huxOk);
    EXPECT_EQ(status([](HuxBidir16u& b) { b.width = 16; b.height = 17; }, f), huxErrSize);
    EXPECT_EQ(status([](HuxBidir16u& b) { b.width = 1; b.height = 16; }, f), huxErrSize);
  }
}

}  // namespace
