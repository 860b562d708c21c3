// H.264 interpolation exports: checks through the descriptors (the parameter
// blocks' own checks as a status table), the edge-replicating forms against
// the plain forms on a plane padded by the plane expansion, the 16-bit forms
// against the 8-bit ones on 8-bit data, and hand-computed cases where the
// arithmetic is subtle (rounding, clamping, field expansion, odd widths).
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "huxvc.h"
#include "support/check.h"
#include "support/exports.h"
#include "support/known.h"

namespace {

using namespace hux::check;

// ------------------------------------------------------------ descriptors

const uint8_t kZero8[64 * 64] = {};
const uint16_t kZero16[64 * 64] = {};
const uint8_t* const kSrc8 = kZero8 + 64 * 4 + 4;
uint16_t g_dst16[2][32 * 32];
uint8_t g_dst8[2][32 * 32];
const HuxInterpolation16u kP16 = {kZero16 + 64 * 4 + 4, 64, g_dst16[0], 32, 1, 3, 8, 8, 10};
const HuxInterpolationBlock kBlk8 = {{kZero8, kZero8}, 64, {g_dst8[0], g_dst8[1]}, 32, 64, 64, 8, 8, 5, 7, -9, 13, 8};
const HuxInterpolationBlock kBlk16 = {{kZero16, kZero16}, 64, {g_dst16[0], g_dst16[1]}, 32, 64, 64, 8, 8, 5, 7, -9, 13, 10};

const std::vector<Bad> kLumaFrac = {{4, huxErrBadArg, 1}, {-1, huxErrBadArg, 1}};
const std::vector<Bad> kChromaFrac = {{8, huxErrBadArg, 1}, {-1, huxErrBadArg, 1}};
const Arg kLumaRoi = val(size_arg(16, 16), {{size_arg(16, 6), huxErrSize, 2}, {size_arg(2, 16), huxErrSize, 2}, {size_arg(32, 4), huxErrSize, 2}},
                         {size_arg(0, 16), size_arg(12, 8), size_arg(28, 4), size_arg(20, 0), size_arg(4, -4)});
const Arg kChromaRoi = val(size_arg(8, 8), {{size_arg(8, 3), huxErrSize, 2}, {size_arg(1, 2), huxErrSize, 2}, {size_arg(16, 2), huxErrSize, 2}},
                           {size_arg(0, 2), size_arg(6, 4), size_arg(14, 16), size_arg(10, -2)});
const std::vector<Bad> kAvgSize = {{1, huxErrSize, 1}, {17, huxErrSize, 1}, {-5, huxErrSize, 1}};

#define PLAIN(f, fr, roi) describe(#f, f, {in(kSrc8), val(64), out(16 * 16), val(16), val(1, fr), val(2, fr), roi})
#define EDGE(f, fr, roi) describe(#f, f, {in(kSrc8), val(64), out(16 * 16), val(16), val(3, fr), val(1, fr), val(2, {}, {-1, 6}), roi})
const Describe kExports({
    PLAIN(huxiInterpolateLuma_H264_8u_C1R, kLumaFrac, kLumaRoi),
    EDGE(huxiInterpolateLumaTop_H264_8u_C1R, kLumaFrac, kLumaRoi),
    EDGE(huxiInterpolateLumaBottom_H264_8u_C1R, kLumaFrac, kLumaRoi),
    PLAIN(huxiInterpolateChroma_H264_8u_C1R, kChromaFrac, kChromaRoi),
    EDGE(huxiInterpolateChromaTop_H264_8u_C1R, kChromaFrac, kChromaRoi),
    EDGE(huxiInterpolateChromaBottom_H264_8u_C1R, kChromaFrac, kChromaRoi),
    describe("huxiInterpolateLuma_H264_16u_C1R", huxiInterpolateLuma_H264_16u_C1R, {in(&kP16)}),
    describe("huxiInterpolateLumaTop_H264_16u_C1R", huxiInterpolateLumaTop_H264_16u_C1R, {in(&kP16), val(3)}),
    describe("huxiInterpolateLumaBottom_H264_16u_C1R", huxiInterpolateLumaBottom_H264_16u_C1R, {in(&kP16), val(3)}),
    describe("huxiInterpolateChroma_H264_16u_C1R", huxiInterpolateChroma_H264_16u_C1R, {in(&kP16)}),
    describe("huxiInterpolateChromaTop_H264_16u_C1R", huxiInterpolateChromaTop_H264_16u_C1R, {in(&kP16), val(-2)}),
    describe("huxiInterpolateChromaBottom_H264_16u_C1R", huxiInterpolateChromaBottom_H264_16u_C1R, {in(&kP16), val(9)}),
    describe("huxiInterpolateLumaBlock_H264_8u_P1R", huxiInterpolateLumaBlock_H264_8u_P1R, {in(&kBlk8)}),
    describe("huxiInterpolateLumaBlock_H264_16u_P1R", huxiInterpolateLumaBlock_H264_16u_P1R, {in(&kBlk16)}),
    describe("huxiInterpolateChromaBlock_H264_8u_P2R", huxiInterpolateChromaBlock_H264_8u_P2R, {in(&kBlk8)}),
    describe("huxiInterpolateChromaBlock_H264_16u_P2R", huxiInterpolateChromaBlock_H264_16u_P2R, {in(&kBlk16)}),
    describe("huxiInterpolateBlock_H264_8u_P2P1R", huxiInterpolateBlock_H264_8u_P2P1R,
             {in(kZero8), in(kZero8), out(16 * 16), val(16, kAvgSize, {2, 3}), val(16, kAvgSize, {2, 15}), val(16)}),
    describe("huxiInterpolateBlock_H264_8u_P3P1R", huxiInterpolateBlock_H264_8u_P3P1R,
             {in(kZero8), in(kZero8), out(16 * 16), val(16, kAvgSize, {5}), val(16, kAvgSize, {7}), val(64), val(64), val(16)}),
    describe("huxiExpandPlane_H264_8u_C1R", huxiExpandPlane_H264_8u_C1R,
             {at(out(16 * 16), 4 * 16 + 4), val(4, {{0, huxErrSize, 1}}), val(4, {{3, huxErrSize, 1}, {0, huxErrSize, 1}}),
              val(16), val(4, {{-1, huxErrBadArg, 2}}, {0}), val(0, {{3, huxErrBadArg, 2}, {-1, huxErrBadArg, 2}}, {1, 2})}),
});

// The parameter blocks' checks, in order; a failing call writes nothing.
template <class P, class F, class G>
HuxResult status(P p, F mutate, G f) {
  mutate(p);
  std::fill_n(&g_dst16[0][0], 2 * 32 * 32, uint16_t{0x5A5A});
  std::fill_n(&g_dst8[0][0], 2 * 32 * 32, uint8_t{0x5A});
  const HuxResult r = f(&p);
  const bool clean = std::all_of(&g_dst16[0][0], &g_dst16[0][0] + 2 * 32 * 32, [](uint16_t v) { return v == 0x5A5A; }) &&
                     std::all_of(&g_dst8[0][0], &g_dst8[0][0] + 2 * 32 * 32, [](uint8_t v) { return v == 0x5A; });
  return r < 0 && !clean ? 1000 : r;  // 1000: written on failure
}
using P16 = HuxInterpolation16u;
using PB = HuxInterpolationBlock;
HuxResult HUX_STDCALL luma_top16(const P16* p) { return huxiInterpolateLumaTop_H264_16u_C1R(p, -3); }
HuxResult HUX_STDCALL chroma_bottom16(const P16* p) { return huxiInterpolateChromaBottom_H264_16u_C1R(p, 2); }
const Known kStatuses[] = {
    {"luma16_check_order", [] {
       Vals o;
       for (auto f : {huxiInterpolateLuma_H264_16u_C1R, luma_top16})
         for (auto m : std::initializer_list<void (*)(P16&)>{
                  [](P16& p) { p.pSrc = nullptr, p.dx = 9; }, [](P16& p) { p.pDst = nullptr, p.srcStep = 0; },
                  [](P16& p) { p.srcStep = 7, p.dx = 4; }, [](P16& p) { p.dstStep = 7, p.height = 5; },
                  [](P16& p) { p.dx = -1, p.dy = 4; }, [](P16& p) { p.dy = 4, p.height = 2; }, [](P16& p) { p.height = 12; },
                  [](P16& p) { p.width = 2, p.height = 12; }, [](P16& p) { p.width = 4, p.height = 16; },
                  [](P16& p) { p.width = 16, p.height = 4, p.srcStep = 16; }, [](P16& p) { p.width = 4, p.height = 8; },
                  [](P16& p) { p.width = 16, p.height = 8, p.srcStep = p.dstStep = 16; }})
           o.push_back(status(kP16, m, f));
       return o; },
     {-8, -8, -14, -14, -5, -5, -6, -6, -6, -6, 0, 0, -8, -8, -14, -14, -5, -5, -6, -6, -6, -6, 0, 0}},
    {"chroma16_check_order", [] {
       Vals o;
       for (auto f : {huxiInterpolateChroma_H264_16u_C1R, chroma_bottom16})
         for (auto m : std::initializer_list<void (*)(P16&)>{
                  [](P16& p) { p.pDst = nullptr, p.srcStep = 0; }, [](P16& p) { p.srcStep = 7, p.dx = 8; },
                  [](P16& p) { p.dstStep = 7, p.dy = 8; }, [](P16& p) { p.dx = 8, p.width = 3; },
                  [](P16& p) { p.dy = -1, p.height = 3; }, [](P16& p) { p.height = 6, p.width = 3; },
                  [](P16& p) { p.width = 12; }, [](P16& p) { p.width = 2, p.height = 16, p.dx = 7, p.bitDepth = -3; }})
           o.push_back(status(kP16, m, f));
       return o; },
     {-8, -14, -14, -5, -5, -6, -6, 0, -8, -14, -14, -5, -5, -6, -6, 0}},
    {"block_check_order", [] {
       Vals o;
       for (auto m : std::initializer_list<void (*)(PB&)>{
                [](PB& p) { p.pSrc[0] = nullptr, p.blockHeight = 3; }, [](PB& p) { p.pSrc[1] = nullptr; },
                [](PB& p) { p.pDst[0] = nullptr, p.frameWidth = 0; }, [](PB& p) { p.pDst[1] = nullptr; },
                [](PB& p) { p.blockHeight = 6; }, [](PB& p) { p.blockWidth = 2; }, [](PB& p) { p.frameHeight = 0; },
                [](PB& p) { p.blockWidth = 12, p.blockHeight = 4; }, [](PB& p) { p.blockWidth = 6, p.blockHeight = 2; }}) {
         o.push_back(status(kBlk8, m, huxiInterpolateLumaBlock_H264_8u_P1R));
         o.push_back(status(kBlk16, m, huxiInterpolateLumaBlock_H264_16u_P1R));
         o.push_back(status(kBlk8, m, huxiInterpolateChromaBlock_H264_8u_P2R));
         o.push_back(status(kBlk16, m, huxiInterpolateChromaBlock_H264_16u_P2R));
       }
       o.push_back(status(kBlk8, [](PB& p) { p.pDst[0] = nullptr; }, huxiInterpolateLumaBlock_H264_8u_P1R));
       return o; },
     {-8, -8, -8, -8, 0, 0, -8, -8, -8, -8, -8, -8, 0, 0, -8, -8, -6, -6, 0, 0, -6, -6, 0, 0, -6, -6, -6, -6,
      0, 0, 0, 0, -6, -6, 0, 0, -8}},
};
HUX_KNOWN(InterpStatus, kStatuses);

// ------------------------------------------------------------ edge forms

struct Picture {
  int w, h;
  std::vector<uint8_t> v;  // exactly w x h: a read outside faults under the sanitizer
};
Picture random_picture(std::mt19937& rng, int w, int h) {
  Picture p{w, h, std::vector<uint8_t>(static_cast<size_t>(w * h))};
  const int kind = static_cast<int>(rng() % 3);
  for (uint8_t& s : p.v) s = static_cast<uint8_t>(kind == 0 ? rng() : kind == 1 ? (rng() & 1) * 255 : 100 + rng() % 9);
  return p;
}
// The picture padded by 32 samples with the plane expansion (heights even).
constexpr int kPad = 32;
std::vector<uint8_t> padded(const Picture& p, int32_t& step) {
  step = p.w + 2 * kPad;
  std::vector<uint8_t> e(static_cast<size_t>(step * (p.h + 2 * kPad)));
  for (int y = 0; y < p.h; ++y) std::copy_n(&p.v[static_cast<size_t>(y * p.w)], p.w, &e[static_cast<size_t>((y + kPad) * step + kPad)]);
  EXPECT_EQ(huxiExpandPlane_H264_8u_C1R(&e[static_cast<size_t>(kPad * step + kPad)], p.w, p.h, step, kPad, 0), huxOk);
  return e;
}
std::vector<uint16_t> wide(const std::vector<uint8_t>& v) { return {v.begin(), v.end()}; }

// Block forms against the plain forms on the padded plane, at vectors
// anywhere (far outside included, where the padded position is brought back
// to one with the same edge samples); 16-bit forms against 8-bit ones.
TEST(Interp, BlockFormsReplicateEdges) {
  std::mt19937 rng(7);
  for (int n = 0; n < 400; ++n) {
    const Picture pic = random_picture(rng, 1 + static_cast<int>(rng() % 40), 2 + 2 * static_cast<int>(rng() % 15));
    int32_t ps;
    const std::vector<uint8_t> pad = padded(pic, ps);
    const std::vector<uint16_t> pic16 = wide(pic.v);
    const bool chroma = n & 1;
    const int bw = chroma ? 2 << rng() % 3 : 4 << rng() % 3, bh = chroma ? 2 << rng() % 4 : 4 << rng() % 3;
    const int range = n % 8 < 6 ? 200 : 1 << 20;
    PB b = {{pic.v.data(), pic.v.data()}, pic.w, {g_dst8[0], g_dst8[1]}, 32, pic.w, pic.h, bw, bh,
            static_cast<int32_t>(rng() % pic.w), static_cast<int32_t>(rng() % pic.h),
            static_cast<int32_t>(rng() % (2 * range)) - range, static_cast<int32_t>(rng() % (2 * range)) - range, 8};
    const int sh = chroma ? 3 : 2, frac = (1 << sh) - 1, lead = chroma ? 0 : 2, tail = chroma ? 1 : 3;
    const int ix = std::clamp(b.blockX + (b.mvX >> sh), -(bw + tail), pic.w + lead);
    const int iy = std::clamp(b.blockY + (b.mvY >> sh), -(bh + tail), pic.h + lead);
    uint8_t want[2][32 * 32] = {};
    for (int i = 0; i < (chroma ? 2 : 1); ++i) {
      const uint8_t* s = &pad[static_cast<size_t>((iy + kPad) * ps + ix + kPad)];
      (chroma ? huxiInterpolateChroma_H264_8u_C1R : huxiInterpolateLuma_H264_8u_C1R)(
          s, ps, want[i], 32, b.mvX & frac, b.mvY & frac, HuxSize{bw, bh});
    }
    ASSERT_EQ((chroma ? huxiInterpolateChromaBlock_H264_8u_P2R : huxiInterpolateLumaBlock_H264_8u_P1R)(&b), huxOk);
    PB b16 = b;
    b16.pSrc[0] = b16.pSrc[1] = pic16.data(), b16.pDst[0] = g_dst16[0], b16.pDst[1] = g_dst16[1];
    ASSERT_EQ((chroma ? huxiInterpolateChromaBlock_H264_16u_P2R : huxiInterpolateLumaBlock_H264_16u_P1R)(&b16), huxOk);
    for (int i = 0; i < (chroma ? 2 : 1); ++i)
      for (int y = 0; y < bh; ++y)
        for (int x = 0; x < bw; ++x) {
          ASSERT_EQ(g_dst8[i][y * 32 + x], want[0][y * 32 + x]) << "case " << n << " plane " << i << " at " << x << "," << y;
          ASSERT_EQ(g_dst16[i][y * 32 + x], want[0][y * 32 + x]) << "case " << n << " 16u plane " << i;
        }
  }
}

// Top and Bottom forms read only rows of the picture (allocated exactly) and
// match the plain form on the padded plane; the 16-bit forms match too.
TEST(Interp, TopAndBottomFormsReplicateRows) {
  std::mt19937 rng(11);
  for (int n = 0; n < 400; ++n) {
    const bool chroma = n & 1, bottom = n & 2;
    const Picture pic = random_picture(rng, 48, 8 + 2 * static_cast<int>(rng() % 12));
    int32_t ps;
    const std::vector<uint8_t> pad = padded(pic, ps);
    const std::vector<uint16_t> pic16 = wide(pic.v);
    const int bw = chroma ? 2 << rng() % 3 : 4 << rng() % 3, bh = chroma ? 2 << rng() % 4 : 4 << rng() % 3;
    const int dx = static_cast<int>(rng() % (chroma ? 8 : 4)), dy = static_cast<int>(rng() % (chroma ? 8 : 4));
    const int bx = 8 + static_cast<int>(rng() % 16), lead = chroma ? 0 : 3;
    // Top: the block starts up to 24 rows above the picture and ends where
    // the rows below it exist; Bottom the other way round.
    const int by = bottom ? lead + static_cast<int>(rng() % static_cast<uint32_t>(pic.h + 24 - lead))
                          : -24 + static_cast<int>(rng() % static_cast<uint32_t>(std::max(1, 24 + pic.h - bh - 3 - lead)));
    if (!bottom && by + bh + 3 > pic.h) continue;
    const int32_t outPixels = bottom ? by + bh - pic.h : -by;
    uint8_t want[32 * 32], got[32 * 32];
    const HuxSize roi{bw, bh};
    const uint8_t* ps8 = pic.v.data() + static_cast<ptrdiff_t>(by) * pic.w + bx;
    const uint8_t* pp = &pad[static_cast<size_t>((std::clamp(by, -bh - 3, pic.h + 2) + kPad) * ps + bx + kPad)];
    HuxInterpolation16u p{pic16.data() + static_cast<ptrdiff_t>(by) * pic.w + bx, pic.w, g_dst16[0], 32, dx, dy, bw, bh, 8};
    if (chroma) {
      ASSERT_EQ(huxiInterpolateChroma_H264_8u_C1R(pp, ps, want, 32, dx, dy, roi), huxOk);
      ASSERT_EQ((bottom ? huxiInterpolateChromaBottom_H264_8u_C1R : huxiInterpolateChromaTop_H264_8u_C1R)(ps8, pic.w, got, 32, dx, dy, outPixels, roi), huxOk);
      ASSERT_EQ((bottom ? huxiInterpolateChromaBottom_H264_16u_C1R : huxiInterpolateChromaTop_H264_16u_C1R)(&p, outPixels), huxOk);
    } else {
      ASSERT_EQ(huxiInterpolateLuma_H264_8u_C1R(pp, ps, want, 32, dx, dy, roi), huxOk);
      ASSERT_EQ((bottom ? huxiInterpolateLumaBottom_H264_8u_C1R : huxiInterpolateLumaTop_H264_8u_C1R)(ps8, pic.w, got, 32, dx, dy, outPixels, roi), huxOk);
      if (bw + bh != 20) ASSERT_EQ((bottom ? huxiInterpolateLumaBottom_H264_16u_C1R : huxiInterpolateLumaTop_H264_16u_C1R)(&p, outPixels), huxOk);
      else std::copy_n(want, 32 * 32, g_dst16[0]);
    }
    for (int y = 0; y < bh; ++y)
      for (int x = 0; x < bw; ++x) {
        ASSERT_EQ(got[y * 32 + x], want[y * 32 + x]) << "case " << n << " at " << x << "," << y;
        ASSERT_EQ(g_dst16[0][y * 32 + x], want[y * 32 + x]) << "case " << n << " 16u at " << x << "," << y;
      }
  }
}

// ------------------------------------------------------------ by hand

// One row (or column) E F G H I J K around the block's first sample G.
template <class T>
std::vector<T> line(std::initializer_list<int> v, bool vertical, int step) {
  std::vector<T> o(static_cast<size_t>(step * step), 0);
  int i = 0;
  for (int s : v) o[static_cast<size_t>(vertical ? (i++) * step + 2 : 2 * step + i++)] = static_cast<T>(s);
  return o;
}
Vals luma_at(const std::vector<uint8_t>& src, int dx, int dy) {
  uint8_t d[16];
  EXPECT_EQ(huxiInterpolateLuma_H264_8u_C1R(&src[2 * 12 + 2], 12, d, 4, dx, dy, HuxSize{4, 4}), huxOk);
  return {d[0]};
}
const Known kHand[] = {
    // b = (0 - 0 + 20*10 + 20*10 - 0 + 0 + 16) >> 5 = 13; a = (10 + 13 + 1) >> 1 = 12; c = (10 + 13 + 1) >> 1;
    // the vertical column gives the same through h, d, n.
    {"half_and_quarter_rounding", [] {
       auto r = line<uint8_t>({0, 0, 10, 10, 0, 0, 0}, false, 12), c = line<uint8_t>({0, 0, 10, 10, 0, 0, 0}, true, 12);
       return cat({luma_at(r, 2, 0), luma_at(r, 1, 0), luma_at(r, 3, 0), luma_at(c, 0, 2), luma_at(c, 0, 1), luma_at(c, 0, 3)}); },
     {13, 12, 12, 13, 12, 12}},
    // F = I = 255: the sum -2550 clamps to 0; E = J = 255, rest 0: 510 + 16 >> 5 = 16.
    {"half_sample_clamps_below", [] {
       return cat({luma_at(line<uint8_t>({0, 255, 0, 0, 255, 0}, false, 12), 2, 0), luma_at(line<uint8_t>({255, 0, 0, 0, 0, 255}, false, 12), 2, 0)}); },
     {0, 16}},
    // A single 255 at G: the centre sum is 20 * 20 * 255 = 102000, (102000 + 512) >> 10 = 100;
    // f = (b + j + 1) >> 1 with b = (20 * 255 + 16) >> 5 = 159: 130.
    {"centre_rounding", [] {
       std::vector<uint8_t> s(144, 0);
       s[2 * 12 + 2] = 255;
       return cat({luma_at(s, 2, 2), luma_at(s, 2, 1)}); },
     {100, 130}},
    // Chroma: A = 100, B = 200, C = 0, D = 50 at (3, 5): (5*3*100 + 3*3*200 + 5*5*0 + 3*5*50 + 32) >> 6 = 63.
    {"chroma_bilinear", [] {
       const uint8_t s[3][3] = {{100, 200, 0}, {0, 50, 0}, {0, 0, 0}};
       uint8_t d[4];
       EXPECT_EQ(huxiInterpolateChroma_H264_8u_C1R(&s[0][0], 3, d, 2, 3, 5, HuxSize{2, 2}), huxOk);
       return Vals{d[0]}; },
     {63}},
    // 16-bit: E..J = 1023 with F = I = 0 gives (42 * 1023 + 16) >> 5 = 1343: clamped at 10 bits, kept at 12.
    {"word_luma_clamps_to_the_bit_depth", [] {
       auto s = line<uint16_t>({1023, 0, 1023, 1023, 0, 1023}, false, 12);
       uint16_t d[2][16];
       HuxInterpolation16u p{&s[2 * 12 + 2], 12, d[0], 4, 2, 0, 4, 4, 10};
       EXPECT_EQ(huxiInterpolateLuma_H264_16u_C1R(&p), huxOk);
       p.pDst = d[1], p.bitDepth = 12;
       EXPECT_EQ(huxiInterpolateLuma_H264_16u_C1R(&p), huxOk);
       return Vals{d[0][0], d[1][0]}; },
     {1023, 1343}},
    // Permissive widths: columns written by luma widths 0, 12, 20, 28 and chroma widths 0, 6, 10, 14.
    // Both kernel tables: the one this processor selects, then the SSE2 one.
    {"width_classes", [] {
       Vals o;
       for (int pass = 0; pass < 2; ++pass) {
         const hux::check::FeatureFlags flags(pass == 0);
         for (int i = 0; int w : {0, 12, 20, 28, 0, 6, 10, 14}) {
           uint8_t d[4 * 32];
           std::fill_n(d, 4 * 32, uint8_t{0x5A});
           EXPECT_EQ((i++ >= 4 ? huxiInterpolateChroma_H264_8u_C1R : huxiInterpolateLuma_H264_8u_C1R)(kSrc8, 64, d, 32, 1, 1, HuxSize{w, 4}), huxOk);
           o.push_back(std::count_if(d, d + 32, [](uint8_t v) { return v != 0x5A; }));
         }
       }
       return o; },
     {4, 8, 16, 16, 2, 4, 8, 8, 4, 8, 16, 16, 2, 4, 8, 8}},
    // Width 3: the fourth byte of each row stays.
    {"odd_width_average", [] {
       const uint8_t a[8] = {1, 2, 3, 4, 5, 6, 7, 8}, b[8] = {2, 2, 2, 2, 2, 2, 2, 2};
       uint8_t d[8] = {9, 9, 9, 9, 9, 9, 9, 9};
       EXPECT_EQ(huxiInterpolateBlock_H264_8u_P3P1R(a, b, d, 3, 2, 4, 4, 4), huxOk);
       return V(d, 8); },
     {2, 2, 3, 9, 4, 4, 5, 9}},
    // A 2x4 plane (rows 10 20, 30 40, 50 60, 70 80) padded by 3 in each field mode:
    // top field (rows 0, 2) fills 1 row above and 2 below, bottom field (rows 1, 3) 2 above and 1 below.
    {"field_expansion", [] {
       Vals o;
       for (int mode : {0, 1, 2}) {
         uint8_t e[10][8] = {};
         const uint8_t pic[4][2] = {{10, 20}, {30, 40}, {50, 60}, {70, 80}};
         for (int y = 0; y < 4; ++y) std::copy_n(pic[y], 2, &e[y + 3][3]);
         EXPECT_EQ(huxiExpandPlane_H264_8u_C1R(&e[3][3], 2, 4, 8, 3, mode), huxOk);
         for (int y = 0; y < 10; ++y) o.push_back(e[y][0] * 1000 + e[y][7]);  // first and last padded column
       }
       uint8_t one[4] = {1, 2, 3, 4};  // pels 0: done before the mode is looked at
       o.push_back(huxiExpandPlane_H264_8u_C1R(one, 2, 2, 2, 0, 7));
       return o; },
     {10020, 10020, 10020, 10020, 30040, 50060, 70080, 70080, 70080, 70080,
      0, 10020, 0, 10020, 0, 50060, 0, 50060, 0, 50060,
      30040, 0, 30040, 0, 30040, 0, 70080, 0, 70080, 0, 0}},
};
HUX_KNOWN(InterpKnown, kHand);

}  // namespace
