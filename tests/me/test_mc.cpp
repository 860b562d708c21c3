// The motion-compensation, copy and averaging exports: their checks through
// the export descriptors; which kernel each selector reaches (every export,
// every selector value, against the reference kernels); and the rounding,
// saturation and neighbour rules as hand-computed cases.
#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "huxvc.h"
#include "me/mc_kernels.h"
#include "support/exports.h"
#include "support/known.h"

namespace {

using namespace hux::check;
namespace me = hux::me;

const uint8_t kB8[64 * 20] = {};
const int16_t kR16[64 * 20] = {};
#define MC(f) describe(#f, f, {in(kB8), val(64), in(kR16), val(64), out(16 * 16), val(16), val(12), val(1)})
#define MCB(f) \
  describe(#f, f, {in(kB8), val(64), val(12), in(kB8), val(64), val(4), in(kR16), val(64), out(16 * 16), val(16), val(1)})
#define HP(f) describe(#f, f, {in(kB8), val(64), out(16 * 16), val(16), val(3), val(1)})
#define AVG2(f) describe(#f, f, {in(kB8), val(64), in(kB8), val(64), out(16 * 16), val(16)})
#define AVGI(f) describe(#f, f, {in(kB8), val(64), out(16 * 16), val(16)})
const Describe kExports({
    MC(huxiMC16x16_8u_C1), MC(huxiMC16x8_8u_C1), MC(huxiMC16x4_8u_C1), MC(huxiMC8x16_8u_C1), MC(huxiMC8x8_8u_C1),
    MC(huxiMC8x4_8u_C1), MC(huxiMC4x8_8u_C1), MC(huxiMC4x4_8u_C1), MC(huxiMC4x2_8u_C1), MC(huxiMC2x4_8u_C1),
    MC(huxiMC2x2_8u_C1), MC(huxiMC16x8UV_8u_C1), MCB(huxiMC16x16B_8u_C1), MCB(huxiMC16x8B_8u_C1),
    MCB(huxiMC16x4B_8u_C1), MCB(huxiMC8x16B_8u_C1), MCB(huxiMC8x8B_8u_C1), MCB(huxiMC8x4B_8u_C1),
    MCB(huxiMC4x8B_8u_C1), MCB(huxiMC4x4B_8u_C1), MCB(huxiMC4x2B_8u_C1), MCB(huxiMC2x4B_8u_C1),
    MCB(huxiMC2x2B_8u_C1), MCB(huxiMC16x8BUV_8u_C1), HP(huxiCopy16x16HP_8u_C1R), HP(huxiCopy16x8HP_8u_C1R),
    HP(huxiCopy8x8HP_8u_C1R), HP(huxiCopy8x4HP_8u_C1R), AVGI(huxiCopy16x16_8u_C1R), AVGI(huxiCopy8x8_8u_C1R),
    describe("huxiAdd8x8HP_16s8u_C1RS", huxiAdd8x8HP_16s8u_C1RS,
             {in(kR16), val(64), in(kB8), val(64), out(8 * 8), val(8), val(3), val(1)}),
    describe("huxiAdd8x8_16s8u_C1IRS", huxiAdd8x8_16s8u_C1IRS, {in(kR16), val(64), out(8 * 8), val(8)}),
    describe("huxiAddC8x8_16s8u_C1IR", huxiAddC8x8_16s8u_C1IR, {val(-3), out(8 * 8), val(8)}),
    AVG2(huxiAverage16x16_8u_C1R), AVG2(huxiAverage8x8_8u_C1R), AVGI(huxiAverage16x16_8u_C1IR),
    AVGI(huxiAverage8x8_8u_C1IR), HP(huxiInterpolateAverage16x16_8u_C1IR), HP(huxiInterpolateAverage16x8_8u_C1IR),
    HP(huxiInterpolateAverage8x8_8u_C1IR), HP(huxiInterpolateAverage8x4_8u_C1IR),
});

// ------------------------------------------------- selectors reach kernels

// Random reference, residual and destination blocks, step 32 and 48 bytes.
struct Blocks {
  std::vector<uint8_t> f, b, want, got;
  std::vector<int16_t> res;
  explicit Blocks(uint32_t seed) : f(32 * 20), b(32 * 20), want(48 * 16), got(48 * 16), res(24 * 16) {
    std::mt19937 g(seed);
    for (auto& v : f) v = uint8_t(g());
    for (auto& v : b) v = uint8_t(g());
    for (auto& v : res) v = int16_t(int(g() % 701) - 350);
    for (size_t i = 0; i < want.size(); ++i) want[i] = got[i] = uint8_t(i * 7);
  }
};

// The position index of a selector pair, as the interface states it.
int pos(int32_t mcType, int32_t rc) { return 2 * ((mcType >> 2) & 3) + (rc & 1); }
int acc_pos(int32_t acc, int32_t rc) { return 2 * (acc & 3) + (rc & 1); }

using Mc = HuxResult(HUX_STDCALL*)(const uint8_t*, int32_t, const int16_t*, int32_t, uint8_t*, int32_t, int32_t, int32_t);
using McB = HuxResult(HUX_STDCALL*)(const uint8_t*, int32_t, int32_t, const uint8_t*, int32_t, int32_t, const int16_t*,
                                    int32_t, uint8_t*, int32_t, int32_t);
struct McCase {
  Mc f;
  McB fb;
  int w, h, dx;
};
const McCase kMcCases[] = {
    {huxiMC16x16_8u_C1, huxiMC16x16B_8u_C1, 16, 16, 1}, {huxiMC16x8_8u_C1, huxiMC16x8B_8u_C1, 16, 8, 1},
    {huxiMC16x4_8u_C1, huxiMC16x4B_8u_C1, 16, 4, 2},    {huxiMC8x16_8u_C1, huxiMC8x16B_8u_C1, 8, 16, 1},
    {huxiMC8x8_8u_C1, huxiMC8x8B_8u_C1, 8, 8, 1},       {huxiMC8x4_8u_C1, huxiMC8x4B_8u_C1, 8, 4, 1},
    {huxiMC4x8_8u_C1, huxiMC4x8B_8u_C1, 4, 8, 1},       {huxiMC4x4_8u_C1, huxiMC4x4B_8u_C1, 4, 4, 1},
    {huxiMC4x2_8u_C1, huxiMC4x2B_8u_C1, 4, 2, 1},       {huxiMC2x4_8u_C1, huxiMC2x4B_8u_C1, 2, 4, 1},
    {huxiMC2x2_8u_C1, huxiMC2x2B_8u_C1, 2, 2, 1},       {huxiMC16x8UV_8u_C1, huxiMC16x8BUV_8u_C1, 16, 8, 2},
};
template <int W, int Dx>
void ref_mc(int i, int j, const Blocks& k, std::vector<uint8_t>& out, int h) {
  if (j < 0) me::ref::kMc<W, Dx>[i](k.f.data(), 32, k.res.data(), 48, out.data(), 48, h);
  else me::ref::kMcB<W, Dx>[i + 8 * j](k.f.data(), 32, k.b.data(), 32, k.res.data(), 48, out.data(), 48, h);
}
void ref_mc(const McCase& c, int i, int j, const Blocks& k, std::vector<uint8_t>& out) {
  if (c.dx == 2) return ref_mc<16, 2>(i, j, k, out, c.h);
  if (c.w == 16) return ref_mc<16, 1>(i, j, k, out, c.h);
  if (c.w == 8) return ref_mc<8, 1>(i, j, k, out, c.h);
  if (c.w == 4) return ref_mc<4, 1>(i, j, k, out, c.h);
  ref_mc<2, 1>(i, j, k, out, c.h);
}

TEST(McDispatch, EverySelectorOfEveryExport) {
  for (const McCase& c : kMcCases)
    for (int32_t mc = 0; mc < 32; ++mc)
      for (int32_t rc = 0; rc < 4; ++rc) {
        Blocks k(static_cast<uint32_t>(mc * 4 + rc));
        ref_mc(c, pos(mc, rc), -1, k, k.want);
        ASSERT_EQ(c.f(k.f.data(), 32, k.res.data(), 48, k.got.data(), 48, mc, rc), huxOk);
        ASSERT_EQ(k.got, k.want) << c.w << "x" << c.h << " mcType " << mc << " roundControl " << rc;
        const int32_t mcb = (mc * 7 + rc) & 15;
        ref_mc(c, pos(mc, rc), (mcb >> 2) & 3, k, k.want);
        ASSERT_EQ(c.fb(k.f.data(), 32, mc, k.b.data(), 32, mcb, k.res.data(), 48, k.got.data(), 48, rc), huxOk);
        ASSERT_EQ(k.got, k.want) << c.w << "x" << c.h << "B mcTypes " << mc << ", " << mcb << " roundControl " << rc;
      }
}

using Hp = HuxResult(HUX_STDCALL*)(const uint8_t*, int32_t, uint8_t*, int32_t, int32_t, int32_t);
TEST(McDispatch, AccSelectorsOfCopiesAndAverages) {
  struct {
    Hp f;
    bool avg;
    int w, h;
  } cases[] = {{huxiCopy16x16HP_8u_C1R, false, 16, 16},          {huxiCopy16x8HP_8u_C1R, false, 16, 8},
               {huxiCopy8x8HP_8u_C1R, false, 8, 8},              {huxiCopy8x4HP_8u_C1R, false, 8, 4},
               {huxiInterpolateAverage16x16_8u_C1IR, true, 16, 16}, {huxiInterpolateAverage16x8_8u_C1IR, true, 16, 8},
               {huxiInterpolateAverage8x8_8u_C1IR, true, 8, 8},   {huxiInterpolateAverage8x4_8u_C1IR, true, 8, 4}};
  for (const auto& c : cases)
    for (int32_t acc = 0; acc < 8; ++acc)
      for (int32_t rc = 0; rc < 4; ++rc) {
        Blocks k(static_cast<uint32_t>(acc * 4 + rc));
        const int i = acc_pos(acc, rc);
        if (c.avg && c.w == 16) me::ref::kAvg<16>[i](k.f.data(), 32, k.want.data(), 48, k.want.data(), 48, c.h);
        if (c.avg && c.w == 8) me::ref::kAvg<8>[i](k.f.data(), 32, k.want.data(), 48, k.want.data(), 48, c.h);
        if (!c.avg && c.w == 16) me::ref::kCopy<16>[i](k.f.data(), 32, k.want.data(), 48, c.h);
        if (!c.avg && c.w == 8) me::ref::kCopy<8>[i](k.f.data(), 32, k.want.data(), 48, c.h);
        ASSERT_EQ(c.f(k.f.data(), 32, k.got.data(), 48, acc, rc), huxOk);
        ASSERT_EQ(k.got, k.want) << c.w << "x" << c.h << (c.avg ? " average" : " copy") << " acc " << acc << " rc " << rc;
      }
  // Add8x8HP: the acc position's prediction plus the residual.
  for (int32_t acc = 0; acc < 8; ++acc)
    for (int32_t rc = 0; rc < 4; ++rc) {
      Blocks k(static_cast<uint32_t>(100 + acc * 4 + rc));
      me::ref::kMc<8>[2 * me::acc_mode(acc & 3) + (rc & 1)](k.f.data(), 32, k.res.data(), 48, k.want.data(), 48, 8);
      ASSERT_EQ(huxiAdd8x8HP_16s8u_C1RS(k.res.data(), 48, k.f.data(), 32, k.got.data(), 48, acc, rc), huxOk);
      ASSERT_EQ(k.got, k.want) << "Add8x8HP acc " << acc << " rc " << rc;
    }
}

// ------------------------------------------------------------ by hand

// A 2x2 block of the reference rows {1 2 4} {2 3 9} {0 0 0} with a zero
// residual, at each selector pair.
Vals mc2x2(std::initializer_list<std::pair<int32_t, int32_t>> sel) {
  const uint8_t ref[9] = {1, 2, 4, 2, 3, 9, 0, 0, 0};
  const int16_t zero[4] = {};
  Vals o;
  for (auto [mc, rc] : sel) {
    uint8_t d[4] = {};
    EXPECT_EQ(huxiMC2x2_8u_C1(ref, 3, zero, 4, d, 2, mc, rc), huxOk);
    o.insert(o.end(), d, d + 4);
  }
  return o;
}
const Known kHand[] = {
    // Halves up and down, (a + b + c + d + 2) >> 2 and + 1; mcType bits 0-1
    // and roundControl bits above 0 ignored.
    {"rounding_table", [] { return mc2x2({{0, 0}, {0, 1}, {4, 0}, {4, 1}, {8, 0}, {8, 1}, {12, 0}, {12, 1}, {5, 2}, {13, 3}}); },
     {1, 2, 2, 3, 1, 2, 2, 3, 2, 3, 1, 2, 1, 2, 1, 1, 2, 3, 3, 6, 1, 3, 2, 6, 2, 5, 1, 3, 2, 4, 1, 3, 2, 3, 1, 2, 2, 4, 1, 3}},
    // Prediction 10 plus +300, -300, +32767 and -32768.
    {"residual_saturates", [] {
       uint8_t pic[8 * 8], ref[8 * 8];
       std::fill_n(pic, 64, uint8_t{10});
       std::fill_n(ref, 64, uint8_t{10});
       int16_t res[64] = {300, -300, 32767, -32768, 245, -10, -11, 246};
       uint8_t d[64];
       EXPECT_EQ(huxiMC8x8_8u_C1(ref, 8, res, 16, d, 8, 0, 0), huxOk);
       EXPECT_EQ(huxiAdd8x8_16s8u_C1IRS(res, 16, pic, 8), huxOk);
       uint8_t c[64], e[64];
       std::fill_n(c, 64, uint8_t{10});
       std::fill_n(e, 64, uint8_t{10});
       EXPECT_EQ(huxiAddC8x8_16s8u_C1IR(-300, c, 8), huxOk);
       EXPECT_EQ(huxiAddC8x8_16s8u_C1IR(32767, e, 8), huxOk);
       return cat({V(d, 8), V(pic, 8), {c[0], c[63], e[0], e[63]}}); },
     {255, 0, 255, 0, 255, 0, 0, 255, 255, 0, 255, 0, 255, 0, 0, 255, 0, 0, 255, 255}},
    // Rows 0 10 20 ...: a 16x4 block (interleaved pairs) averages with the
    // byte two on, a 16x8 one with the next byte.
    {"interleaved_neighbour", [] {
       uint8_t ref[2 * 18];
       for (int x = 0; x < 36; ++x) ref[x] = uint8_t(10 * (x % 18));
       const int16_t zero[16 * 8] = {};
       uint8_t a[16 * 4], b[16 * 8];
       EXPECT_EQ(huxiMC16x4_8u_C1(ref, 0, zero, 32, a, 16, 8, 0), huxOk);
       EXPECT_EQ(huxiMC16x8_8u_C1(ref, 0, zero, 32, b, 16, 8, 0), huxOk);
       return cat({V(a, 3), V(b, 3)}); },
     {10, 20, 30, 5, 15, 25}},
    // p(x, y) = 4x + 16y: acc 1 is the horizontal half (+2), acc 2 the
    // vertical one (+8). Rows 1 2 ...: the horizontal half 2 (up) or 1 (down)
    // averaged into 1 gives 2 or 1; 1 and 2 average to 2.
    {"acc_directions_and_averages", [] {
       uint8_t src[9 * 9], d[8 * 8];
       for (int i = 0; i < 81; ++i) src[i] = uint8_t(4 * (i % 9) + 16 * (i / 9));
       Vals o;
       for (int32_t acc : {1, 2}) {
         EXPECT_EQ(huxiCopy8x8HP_8u_C1R(src, 9, d, 8, acc, 0), huxOk);
         o.insert(o.end(), d, d + 2);
       }
       uint8_t pic[8 * 4];
       const uint8_t h[9] = {1, 2};
       for (int32_t rc : {0, 1}) {
         std::fill_n(pic, 32, uint8_t{1});
         EXPECT_EQ(huxiInterpolateAverage8x4_8u_C1IR(h, 0, pic, 8, 1, rc), huxOk);
         o.push_back(pic[0]);
       }
       uint8_t avg[64];
       const uint8_t one[8] = {1, 1, 1, 1, 1, 1, 1, 1}, two[8] = {2, 2, 2, 2, 2, 2, 2, 2};
       EXPECT_EQ(huxiAverage8x8_8u_C1R(one, 0, two, 0, avg, 8), huxOk);
       o.push_back(avg[0]);
       return o; },
     {2, 6, 8, 12, 2, 1, 2}},
};
HUX_KNOWN(McKnown, kHand);

}  // namespace
