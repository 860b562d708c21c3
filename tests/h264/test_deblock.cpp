// H.264 deblocking through the exports: the checks (descriptors, and the null
// fields of the parameter blocks), every 16-bit form against its 8-bit form on
// 8-bit pictures at bit depth 8, and hand-computed lines for the forms the
// kernel checker has no SIMD twin for (MBAFF rows), the 4:2:2 strong rule and
// the bit-depth clamp.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <random>
#include <vector>

#include "huxvc.h"
#include "support/exports.h"
#include "support/known.h"

namespace {

using namespace hux::check;

// A picture of 24 rows at step 32; the macroblock sits 4 rows and 4 columns in.
constexpr int kStep = 32, kRows = 24, kAt = 4 * kStep + 4;
const uint8_t kAB[2] = {40, 20}, kTc[16] = {1, 2, 3, 4, 1, 2, 3, 4, 1, 2, 3, 4, 1, 2, 3, 4};
const uint8_t kBs[16] = {4, 4, 4, 4, 2, 2, 2, 2, 1, 1, 1, 1, 3, 3, 3, 3};
uint8_t gPlane8[kStep * kRows];
uint16_t gPlane16[kStep * kRows];
const uint16_t kAB16[2] = {40, 20}, kTc16[16] = {};
const HuxDeblockParams8u kBlock8{gPlane8 + kAt, kStep, kAB, kAB, kTc, kBs};
const HuxDeblockParams16u kBlock16{gPlane16 + kAt, kStep, kAB16, kAB16, kTc16, kBs, 10};

std::vector<Arg> six() { return {at(out(kStep * kRows), kAt), val(kStep), in(kAB), in(kAB), in(kTc), in(kBs)}; }

const Describe kExports({
    describe("huxiFilterDeblockingLuma_VerEdge_H264_8u_C1IR", huxiFilterDeblockingLuma_VerEdge_H264_8u_C1IR, six()),
    describe("huxiFilterDeblockingLuma_HorEdge_H264_8u_C1IR", huxiFilterDeblockingLuma_HorEdge_H264_8u_C1IR, six()),
    describe("huxiFilterDeblockingChroma_VerEdge_H264_8u_C1IR", huxiFilterDeblockingChroma_VerEdge_H264_8u_C1IR, six()),
    describe("huxiFilterDeblockingChroma_HorEdge_H264_8u_C1IR", huxiFilterDeblockingChroma_HorEdge_H264_8u_C1IR, six()),
    describe("huxiFilterDeblockingLuma_VerEdge_MBAFF_H264_8u_C1IR", huxiFilterDeblockingLuma_VerEdge_MBAFF_H264_8u_C1IR,
             six()),
    describe("huxiFilterDeblockingChroma_VerEdge_MBAFF_H264_8u_C1IR",
             huxiFilterDeblockingChroma_VerEdge_MBAFF_H264_8u_C1IR, six()),
    describe("huxiFilterDeblockingChroma422VerEdge_H264_8u_C1IR", huxiFilterDeblockingChroma422VerEdge_H264_8u_C1IR,
             {in(&kBlock8)}),
    describe("huxiFilterDeblockingChroma422HorEdge_H264_8u_C1IR", huxiFilterDeblockingChroma422HorEdge_H264_8u_C1IR,
             {in(&kBlock8)}),
#define HUX_D16(name) describe(#name, name, {in(&kBlock16)})
    HUX_D16(huxiFilterDeblockingLumaVerEdge_H264_16u_C1IR), HUX_D16(huxiFilterDeblockingLumaHorEdge_H264_16u_C1IR),
    HUX_D16(huxiFilterDeblockingLumaVerEdgeMBAFF_H264_16u_C1IR), HUX_D16(huxiFilterDeblockingChromaVerEdge_H264_16u_C1IR),
    HUX_D16(huxiFilterDeblockingChromaHorEdge_H264_16u_C1IR), HUX_D16(huxiFilterDeblockingChromaVerEdgeMBAFF_H264_16u_C1IR),
    HUX_D16(huxiFilterDeblockingChroma422VerEdge_H264_16u_C1IR), HUX_D16(huxiFilterDeblockingChroma422HorEdge_H264_16u_C1IR),
#undef HUX_D16
    returns(describe("huxiFilterDeblockingChroma422VerEdgeMBAFF_H264_8u_C1IR",
                     huxiFilterDeblockingChroma422VerEdgeMBAFF_H264_8u_C1IR, {in(nullptr, false)}),
            huxErrNotSupported),
    returns(describe("huxiFilterDeblockingChroma422VerEdgeMBAFF_H264_16u_C1IR",
                     huxiFilterDeblockingChroma422VerEdgeMBAFF_H264_16u_C1IR, {in(nullptr, false)}),
            huxErrNotSupported),
});

// One form at both widths: the 8-bit call and the 16-bit call.
using F8 = HuxResult(HUX_STDCALL*)(uint8_t*, int32_t, const uint8_t*, const uint8_t*, const uint8_t*, const uint8_t*);
using F16 = HuxResult(HUX_STDCALL*)(const HuxDeblockParams16u*);
template <HuxResult(HUX_STDCALL* F)(const HuxDeblockParams8u*)>
HuxResult HUX_STDCALL via_block(uint8_t* p, int32_t s, const uint8_t* a, const uint8_t* b, const uint8_t* t,
                                const uint8_t* bs) {
  const HuxDeblockParams8u d{p, s, a, b, t, bs};
  return F(&d);
}
struct Form {
  const char* name;
  F8 f8;
  F16 f16;
};
const Form kForms[] = {
    {"luma ver", huxiFilterDeblockingLuma_VerEdge_H264_8u_C1IR, huxiFilterDeblockingLumaVerEdge_H264_16u_C1IR},
    {"luma hor", huxiFilterDeblockingLuma_HorEdge_H264_8u_C1IR, huxiFilterDeblockingLumaHorEdge_H264_16u_C1IR},
    {"chroma ver", huxiFilterDeblockingChroma_VerEdge_H264_8u_C1IR, huxiFilterDeblockingChromaVerEdge_H264_16u_C1IR},
    {"chroma hor", huxiFilterDeblockingChroma_HorEdge_H264_8u_C1IR, huxiFilterDeblockingChromaHorEdge_H264_16u_C1IR},
    {"luma mbaff", huxiFilterDeblockingLuma_VerEdge_MBAFF_H264_8u_C1IR, huxiFilterDeblockingLumaVerEdgeMBAFF_H264_16u_C1IR},
    {"chroma mbaff", huxiFilterDeblockingChroma_VerEdge_MBAFF_H264_8u_C1IR,
     huxiFilterDeblockingChromaVerEdgeMBAFF_H264_16u_C1IR},
    {"422 ver", via_block<huxiFilterDeblockingChroma422VerEdge_H264_8u_C1IR>,
     huxiFilterDeblockingChroma422VerEdge_H264_16u_C1IR},
    {"422 hor", via_block<huxiFilterDeblockingChroma422HorEdge_H264_8u_C1IR>,
     huxiFilterDeblockingChroma422HorEdge_H264_16u_C1IR},
};

// Inputs of one call at both widths.
struct Call {
  std::vector<uint8_t> p8 = std::vector<uint8_t>(kStep * kRows);
  std::vector<uint16_t> p16 = std::vector<uint16_t>(kStep * kRows);
  uint8_t a[2], b[2], t[16], bs[16];
  uint16_t a16[2], b16[2], t16[16];
  HuxDeblockParams16u d{p16.data() + kAt, kStep, a16, b16, t16, bs, 8};
  void widen() {
    for (int i = 0; i < kStep * kRows; ++i) p16[i] = p8[i];
    for (int i = 0; i < 2; ++i) a16[i] = a[i], b16[i] = b[i];
    for (int i = 0; i < 16; ++i) t16[i] = t[i];
  }
  HuxResult run8(const Form& f) { return f.f8(p8.data() + kAt, kStep, a, b, t, bs); }
};

TEST(Deblock, SixteenBitFormsMatchEightBitFormsAtDepth8) {
  std::mt19937 g(7);
  for (const Form& f : kForms)
    for (int trial = 0; trial < 400; ++trial) {
      Call c;
      const int noise = 1 + static_cast<int>(g() % 24);
      for (int i = 0; i < kStep * kRows; ++i) c.p8[i] = static_cast<uint8_t>(i / 4 % 3 * 40 + 60 + static_cast<int>(g() % noise));
      for (int i = 0; i < 2; ++i) c.a[i] = static_cast<uint8_t>(g() % 64), c.b[i] = static_cast<uint8_t>(g() % 20);
      for (int i = 0; i < 16; ++i) c.t[i] = static_cast<uint8_t>(g() % 26), c.bs[i] = static_cast<uint8_t>(g() % 6);
      c.widen();
      ASSERT_EQ(c.run8(f), huxOk);
      ASSERT_EQ(f.f16(&c.d), huxOk);
      for (int i = 0; i < kStep * kRows; ++i) ASSERT_EQ(c.p8[i], c.p16[i]) << f.name << " trial " << trial << " at " << i;
    }
}

TEST(Deblock, NullFieldsOfABlockAreRefusedBeforeAnythingIsWritten) {
  for (const Form& f : kForms)
    for (int field = 0; field < 5; ++field) {
      Call c;
      std::memcpy(c.bs, kBs, 16), std::memcpy(c.t, kTc, 16), c.a[0] = c.a[1] = c.b[0] = c.b[1] = 255;
      for (int i = 0; i < kStep * kRows; ++i) c.p8[i] = static_cast<uint8_t>(i * 37);
      c.widen();
      auto clear = [field](auto& d) {
        if (field == 0) d.pSrcDst = nullptr;
        if (field == 1) d.pAlpha = nullptr;
        if (field == 2) d.pBeta = nullptr;
        if (field == 3) d.pThresholds = nullptr;
        if (field == 4) d.pBS = nullptr;
      };
      HuxDeblockParams16u d = c.d;
      clear(d);
      EXPECT_EQ(f.f16(&d), huxErrNullPtr) << f.name << " field " << field;
      HuxDeblockParams8u d8{c.p8.data() + kAt, kStep, c.a, c.b, c.t, c.bs};
      clear(d8);
      EXPECT_EQ(huxiFilterDeblockingChroma422VerEdge_H264_8u_C1IR(&d8), huxErrNullPtr);
      EXPECT_EQ(huxiFilterDeblockingChroma422HorEdge_H264_8u_C1IR(&d8), huxErrNullPtr);
      for (int i = 0; i < kStep * kRows; ++i) ASSERT_TRUE(c.p16[i] == c.p8[i] && c.p8[i] == uint8_t(i * 37));
    }
}

// Lines across a vertical edge at column 0 of rows 0..n-1: p3..p0 = 60,
// q0..q3 = 70; returns columns -4..3 of every row.
template <class T, class F>
Vals lines(int n, F call) {
  std::vector<T> pic(kStep * kRows, 0);
  T* p = pic.data() + kAt;
  for (int y = 0; y < n; ++y)
    for (int x = -4; x < 4; ++x) p[y * kStep + x] = static_cast<T>(x < 0 ? 60 : 70);
  call(p);
  Vals v;
  for (int y = 0; y < n; ++y)
    for (int x = -4; x < 4; ++x) v.push_back(p[y * kStep + x]);
  return v;
}
Vals rows2(Vals a, Vals b, Vals c, Vals d) { return cat({a, a, b, b, c, c, d, d}); }
const Vals kFlat = {60, 60, 60, 60, 70, 70, 70, 70};

// Rows of bS 1 (tc0 0), 2 (tc0 1), 0, 4: tc = tc0 + 2, delta 4 clamped to tc;
// p1/q1 move by at most tc0; the strong filter needs |p0-q0| < (alpha>>2)+2.
const uint8_t kMbBs[4] = {1, 2, 0, 4}, kMbTc[4] = {0, 1, 3, 3}, kA20[1] = {20}, kA44[1] = {44}, kB4[1] = {4};
const Known kCases[] = {
    {"luma_mbaff_rows_in_pairs",
     [] { return lines<uint8_t>(8, [](uint8_t* p) { huxiFilterDeblockingLuma_VerEdge_MBAFF_H264_8u_C1IR(p, kStep, kA20, kB4, kMbTc, kMbBs); }); },
     rows2({60, 60, 60, 62, 68, 70, 70, 70}, {60, 60, 61, 63, 67, 69, 70, 70}, kFlat, {60, 60, 60, 63, 68, 70, 70, 70})},
    {"luma_mbaff_strong_three_taps",
     [] { return lines<uint8_t>(8, [](uint8_t* p) { huxiFilterDeblockingLuma_VerEdge_MBAFF_H264_8u_C1IR(p, kStep, kA44, kB4, kMbTc, kMbBs); }); },
     rows2({60, 60, 60, 62, 68, 70, 70, 70}, {60, 60, 61, 63, 67, 69, 70, 70}, kFlat, {60, 61, 63, 64, 66, 68, 69, 70})},
    {"chroma_mbaff_one_row_each",
     [] {
       const uint8_t bs[4] = {0, 4, 1, 3}, tc[4] = {0, 0, 0, 2};
       return lines<uint8_t>(4, [&](uint8_t* p) { huxiFilterDeblockingChroma_VerEdge_MBAFF_H264_8u_C1IR(p, kStep, kA20, kB4, tc, bs); });
     },
     cat({kFlat, {60, 60, 60, 63, 68, 70, 70, 70}, {60, 60, 60, 61, 69, 70, 70, 70}, {60, 60, 60, 63, 67, 70, 70, 70}})},
    {"chroma_mbaff_16u_rows",
     [] {
       const uint16_t a[1] = {20}, b[1] = {4}, tc[4] = {0, 0, 0, 2};
       const uint8_t bs[4] = {0, 4, 1, 3};
       return lines<uint16_t>(4, [&](uint16_t* p) {
         const HuxDeblockParams16u d{p, kStep, a, b, tc, bs, 9};
         huxiFilterDeblockingChromaVerEdgeMBAFF_H264_16u_C1IR(&d);
       });
     },
     cat({kFlat, {60, 60, 60, 63, 68, 70, 70, 70}, {60, 60, 60, 61, 69, 70, 70, 70}, {60, 60, 60, 63, 67, 70, 70, 70}})},
    // Two rows of p1 1023, p0 1020 | q0 1023, q1 0 (first shown): delta (12 + 1023 + 4) >> 3 = 129, within tc 201.
    {"bit_depth_clamp_10_and_12",
     [] {
       Vals v;
       for (int depth : {10, 12}) {
         uint16_t pic[8] = {1023, 1020, 1023, 0, 1023, 1020, 1023, 0}, a[2] = {10, 10}, b[2] = {1024, 1024}, tc[8] = {200, 200, 200, 200};
         const uint8_t bs[16] = {2, 0, 0, 0};
         const HuxDeblockParams16u d{pic + 2, 4, a, b, tc, bs, depth};
         huxiFilterDeblockingChromaVerEdge_H264_16u_C1IR(&d);
         v.insert(v.end(), pic, pic + 4);
       }
       return v;
     },
     {1023, 1023, 894, 0, 1023, 1149, 894, 0}},
    // 4:2:2 rows: edge 0 strong throughout (first byte 4), edge 1 normal throughout (bS 4 later on).
    {"chroma422_hor_strong_from_first_byte",
     [] {
       std::vector<uint8_t> pic(kStep * kRows, 0);
       uint8_t* p = pic.data() + kAt;
       for (int y = -2; y < 6; ++y) std::memset(p + y * kStep, y == 2 || y == 3 ? 60 : y < 0 ? 60 : 70, 8);
       const uint8_t a[2] = {20, 20}, b[2] = {4, 4}, tc[16] = {}, bs[16] = {4, 1, 1, 1, 1, 4, 0, 4};
       const HuxDeblockParams8u d{p, kStep, a, b, tc, bs};
       huxiFilterDeblockingChroma422HorEdge_H264_8u_C1IR(&d);
       return cat({V(p - kStep, 8), V(p, 8), V(p + 3 * kStep, 8), V(p + 4 * kStep, 8)});
     },
     cat({all(8, 63), all(8, 68), {61, 61, 61, 61, 60, 60, 61, 61}, {69, 69, 69, 69, 70, 70, 69, 69}})},
};
HUX_KNOWN(DeblockKnown, kCases);

}  // namespace
