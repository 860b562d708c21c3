// H.264 dequantisation and inverse transforms through the exports: their
// checks through the export descriptors; every export swept over its QP range
// (one beyond each end), every bit depth, DC and AC forms, caller tables or
// none, and levels from small to the 16- and 32-bit extremes, hashed into one
// digest per export; and hand-computed cases where the passes wrap, saturate or
// clamp, which anchor the digests' meaning.
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <functional>
#include <random>
#include <vector>

#include "huxvc.h"
#include "support/exports.h"
#include "support/known.h"

namespace {

using namespace hux::check;

// ---------------------------------------------------------------- checks and their order

const int16_t kZ16[64] = {};
const int32_t kZ32[64] = {};
const uint8_t kP8[128] = {};
const uint16_t kP16[128] = {};
std::vector<Bad> qp(int64_t hi, HuxResult st = huxErrOutOfRange, int rank = 1) { return {{hi + 1, st, rank}, {-1, st, rank}}; }

const Describe kExports({
    describe("huxiDequantTransformResidual_H264_16s_C1I", huxiDequantTransformResidual_H264_16s_C1I,
             {out(32), val(8, {{7, huxErrStep, 2}, {4, huxErrStep, 2}}), in(kZ16, false), val(1), val(20, qp(51))}),
    describe("huxiDequantTransformResidual_SISP_H264_16s_C1I", huxiDequantTransformResidual_SISP_H264_16s_C1I,
             {out(32), in(kZ16), in(kZ16, false), val(1), val(10), val(60), val(1)}),
    // The coefficients may be null when a DC is given and the AC flag is 0: they are tested after the QP.
    describe("huxiDequantTransformResidualAndAdd_H264_16s_C1I", huxiDequantTransformResidualAndAdd_H264_16s_C1I,
             {in(kP8), after(out(32), 2), in(kZ16, false), out(16), val(4), val(4), val(10, qp(51)), val(1)}),
    describe("huxiTransformDequantLumaDC_H264_16s_C1I", huxiTransformDequantLumaDC_H264_16s_C1I, {out(32), val(12, qp(51))}),
    describe("huxiTransformDequantChromaDC_H264_16s_C1I", huxiTransformDequantChromaDC_H264_16s_C1I, {out(8), val(51, qp(51))}),
    describe("huxiTransformDequantChromaDC_SISP_H264_16s_C1I", huxiTransformDequantChromaDC_SISP_H264_16s_C1I,
             {out(8), in(kZ16), val(10), val(99), val(1)}),
    describe("huxiTransformQuantInvLumaDC4x4_H264_16s_C1I", huxiTransformQuantInvLumaDC4x4_H264_16s_C1I,
             {out(32), val(51, qp(51)), in(kZ16, false)}),
    describe("huxiTransformQuantInvLumaDC4x4_H264_32s_C1I", huxiTransformQuantInvLumaDC4x4_H264_32s_C1I,
             {out(64), val(87, qp(87)), in(kZ16, false)}),
    describe("huxiTransformQuantInvChromaDC2x2_H264_16s_C1I", huxiTransformQuantInvChromaDC2x2_H264_16s_C1I,
             {out(8), val(39, qp(39)), in(kZ16, false)}),
    describe("huxiTransformQuantInvChromaDC2x2_H264_32s_C1I", huxiTransformQuantInvChromaDC2x2_H264_32s_C1I,
             {out(16), val(75, qp(75)), in(kZ16, false)}),
    describe("huxiTransformQuantInvChromaDC2x4_H264_16s_C1I", huxiTransformQuantInvChromaDC2x4_H264_16s_C1I,
             {out(16), val(39, qp(39)), in(kZ16, false)}),
    describe("huxiTransformQuantInvChromaDC2x4_H264_32s_C1I", huxiTransformQuantInvChromaDC2x4_H264_32s_C1I,
             {out(32), val(75, qp(75)), in(kZ16, false)}),
    describe("huxiTransformQuantInvAddPred4x4_H264_16s_C1IR", huxiTransformQuantInvAddPred4x4_H264_16s_C1IR,
             {in(kP8), val(4), out(32), in(kZ16, false), out(16), val(4), val(51, qp(51)), val(1), in(kZ16, false)}),
    describe("huxiTransformQuantInvAddPred4x4_H264_32s_C1IR", huxiTransformQuantInvAddPred4x4_H264_32s_C1IR,
             {in(kP16), val(8), out(64), in(kZ32, false), out(32), val(8), val(87, qp(87)), val(1),
              val(14, {{8, huxErrOutOfRange, 1}, {15, huxErrOutOfRange, 1}}, {9}), in(kZ16, false)}),
    describe("huxiQuantLuma8x8Inv_H264_16s_C1I", huxiQuantLuma8x8Inv_H264_16s_C1I, {out(128), val(8, qp(8, huxErrQuantParam)), in(kZ16)}),
    describe("huxiQuantInvLuma8x8_H264_32s_C1I", huxiQuantInvLuma8x8_H264_32s_C1I, {out(256), val(14, qp(14, huxErrQuantParam)), in(kZ16)}),
    describe("huxiTransformLuma8x8InvAddPred_H264_16s8u_C1R", huxiTransformLuma8x8InvAddPred_H264_16s8u_C1R,
             {in(kP8), val(8), out(128), out(64), val(8)}),
    describe("huxiTransformInvAddPredLuma8x8_H264_32s16u_C1R", huxiTransformInvAddPredLuma8x8_H264_32s16u_C1R,
             {in(kP16), val(16), out(256), out(128), val(16), val(10)}),
    describe("huxiTransformResidual4x4Inv_H264_16s_C1", huxiTransformResidual4x4Inv_H264_16s_C1, {in(kZ16), out(32)}),
    describe("huxiTransformResidual4x4Inv_H264_32s_C1", huxiTransformResidual4x4Inv_H264_32s_C1, {in(kZ32), out(64)}),
});

// ---------------------------------------------------------------- digests of sweeps

// One step of a sweep: its QP and kind of levels (small, full range, extremes,
// sparse), draws that are the same on every platform (a 32-bit generator, no
// library distributions, one draw per statement), and the hash of every
// status and output.
struct Step {
  std::mt19937& g;
  uint64_t& h;
  int q, kind;
  int32_t in(int32_t lo, int32_t hi) { return lo + static_cast<int32_t>(g() % (static_cast<uint32_t>(hi - lo) + 1)); }
  template <class T, size_t N>
  std::array<T, N> lv(int k) {
    static const int32_t kEdge[] = {INT32_MIN, -32768, -32767, -1, 0, 1, 32766, 32767, INT32_MAX};
    std::array<T, N> a;
    for (T& x : a) {
      const int32_t v = k == 0 ? in(-300, 300) : k == 1 ? static_cast<int32_t>(g()) : k == 2 ? kEdge[g() % 9] : (g() & 3 ? 0 : in(-3000, 3000));
      x = static_cast<T>(sizeof(T) == 2 && k == 2 ? static_cast<int16_t>(v) : v);
    }
    return a;
  }
  template <class T, size_t N>
  std::array<T, N> px(uint32_t mask) {
    std::array<T, N> a;
    for (T& x : a) x = static_cast<T>(g() & mask);
    return a;
  }
  template <class T>
  const T* maybe(const T& v) { return g() & 1 ? &v : nullptr; }
  template <class... A>
  void operator()(HuxResult st, const A&... outs) {
    add(st);
    (add(outs), ...);
  }
  template <class T>
  void add(const T& v) {
    for (size_t i = 0; i < sizeof v; ++i) h = (h ^ reinterpret_cast<const uint8_t*>(&v)[i]) * 1099511628211ull;
  }
};
struct Sweep {
  const char* name;
  uint64_t digest;
  int qpLo, qpHi;
  void (*run)(Step&);
};
std::ostream& operator<<(std::ostream& os, const Sweep& s) { return os << s.name; }

// The in-place DC forms: block, QP, LevelScale table or none.
template <class T, size_t N, HuxResult(HUX_STDCALL* F)(T*, int32_t, const int16_t*)>
void dc_form(Step& s) {
  auto b = s.lv<T, N>(s.kind);
  const auto sc = s.lv<int16_t, 1>(0);
  s(F(b.data(), s.q, s.kind & 1 ? sc.data() : nullptr), b);
}

const Sweep kSweeps[] = {
    {"DequantTransformResidual", 0xeab0b14189e97317, -1, 52, [](Step& s) {
       auto b = s.lv<int16_t, 24>(s.kind);
       const int16_t dc = static_cast<int16_t>(s.g());
       const int32_t ac = s.in(0, 2);
       s(huxiDequantTransformResidual_H264_16s_C1I(b.data(), 12, s.maybe(dc), ac, s.q), b); }},
    // The switching forms check no QP: values beyond 0..51 act as the nearest in range.
    {"DequantTransformResidual_SISP", 0xd2a745af921d35d0, -3, 54, [](Step& s) {
       auto b = s.lv<int16_t, 16>(s.kind & 2 ? 3 : 0);
       const auto p = s.lv<int16_t, 16>(0);
       const int16_t dc = static_cast<int16_t>(s.in(-500, 3000));
       const int32_t ac = s.in(0, 1), qs = s.in(-3, 54);
       s(huxiDequantTransformResidual_SISP_H264_16s_C1I(b.data(), p.data(), s.maybe(dc), ac, s.q, qs, s.kind & 1), b); }},
    {"DequantTransformResidualAndAdd", 0xacdb8853e755def2, -1, 52, [](Step& s) {
       auto c = s.lv<int16_t, 16>(s.kind);
       const auto p = s.px<uint8_t, 64>(255);
       const int16_t dc = static_cast<int16_t>(s.g());
       const int32_t ac = s.in(0, 1);
       std::array<uint8_t, 40> o{};
       s(huxiDequantTransformResidualAndAdd_H264_16s_C1I(p.data(), c.data(), s.maybe(dc), o.data(), 16, 10, s.q, ac), o); }},
    {"TransformQuantInvAddPred4x4_16s", 0x9db6bbc744a592d, -1, 52, [](Step& s) {
       auto c = s.lv<int16_t, 16>(s.kind);
       const auto sc = s.lv<int16_t, 16>(s.in(0, 3));
       const auto p = s.px<uint8_t, 64>(255);
       const int16_t dc = static_cast<int16_t>(s.g());
       const int32_t ac = s.in(0, 1);
       const int16_t* scale = s.maybe(sc[0]);
       std::array<uint8_t, 40> o{};
       s(huxiTransformQuantInvAddPred4x4_H264_16s_C1IR(p.data(), 16, c.data(), s.maybe(dc), o.data(), 10, s.q, ac, scale), o); }},
    {"TransformQuantInvAddPred4x4_32s", 0x278e9fc42bdeb667, -1, 88, [](Step& s) {
       auto c = s.lv<int32_t, 16>(s.kind);
       const auto sc = s.lv<int16_t, 16>(s.in(0, 3));
       const auto p = s.px<uint16_t, 64>(0x7fff);
       const int32_t dc = s.in(-100000, 100000), ac = s.in(0, 1), bd = s.in(8, 15);
       const int16_t* scale = s.maybe(sc[0]);
       std::array<uint16_t, 40> o{};
       s(huxiTransformQuantInvAddPred4x4_H264_32s_C1IR(p.data(), 32, c.data(), s.maybe(dc), o.data(), 20, s.q, ac, bd, scale), o); }},
    {"TransformDequantLumaDC", 0x38770970365fbb8b, -1, 52, [](Step& s) {
       auto b = s.lv<int16_t, 16>(s.kind);
       s(huxiTransformDequantLumaDC_H264_16s_C1I(b.data(), s.q), b); }},
    {"TransformDequantChromaDC", 0x88d6df1062a8b7b8, -1, 52, [](Step& s) {
       auto b = s.lv<int16_t, 4>(s.kind);
       s(huxiTransformDequantChromaDC_H264_16s_C1I(b.data(), s.q), b); }},
    {"TransformDequantChromaDC_SISP", 0x31db303d88a27bf9, -3, 54, [](Step& s) {
       auto b = s.lv<int16_t, 4>(s.kind & 2 ? 3 : 0);
       const auto p = s.lv<int16_t, 4>(0);
       const int32_t qs = s.in(-3, 54);
       s(huxiTransformDequantChromaDC_SISP_H264_16s_C1I(b.data(), p.data(), s.q, qs, s.kind & 1), b); }},
    {"TransformQuantInvLumaDC4x4_16s", 0x890306cc1f59983a, -1, 52, dc_form<int16_t, 16, huxiTransformQuantInvLumaDC4x4_H264_16s_C1I>},
    {"TransformQuantInvLumaDC4x4_32s", 0x9b6a03e07890e2d8, -1, 88, dc_form<int32_t, 16, huxiTransformQuantInvLumaDC4x4_H264_32s_C1I>},
    {"TransformQuantInvChromaDC2x2_16s", 0x47ad69ce9d23f73d, -1, 40, dc_form<int16_t, 4, huxiTransformQuantInvChromaDC2x2_H264_16s_C1I>},
    {"TransformQuantInvChromaDC2x2_32s", 0x85b8a3919397032d, -1, 76, dc_form<int32_t, 4, huxiTransformQuantInvChromaDC2x2_H264_32s_C1I>},
    {"TransformQuantInvChromaDC2x4_16s", 0xc4c9cc0eb85833ed, -1, 40, dc_form<int16_t, 8, huxiTransformQuantInvChromaDC2x4_H264_16s_C1I>},
    {"TransformQuantInvChromaDC2x4_32s", 0xfed9ad23c689edcc, -1, 76, dc_form<int32_t, 8, huxiTransformQuantInvChromaDC2x4_H264_32s_C1I>},
    {"QuantLuma8x8Inv", 0xc2b8bdbebd71afe2, -6, 95, [](Step& s) {
       auto b = s.lv<int16_t, 64>(s.kind);
       auto w = s.lv<int32_t, 64>(s.kind);
       const auto sc = s.lv<int16_t, 64>(s.in(0, 2));
       s(huxiQuantLuma8x8Inv_H264_16s_C1I(b.data(), s.q / 6, sc.data()), b);
       s(huxiQuantInvLuma8x8_H264_32s_C1I(w.data(), s.q / 6, sc.data()), w); }},
    {"Inverse8x8AddPred", 0xfda43cbf8e8f7c81, 0, 19, [](Step& s) {
       auto c = s.lv<int16_t, 64>(s.kind);
       auto w = s.lv<int32_t, 64>(s.kind);
       const auto p = s.px<uint8_t, 72>(255);
       const auto p16 = s.px<uint16_t, 72>(0xffff);
       std::array<uint8_t, 80> o{};
       std::array<uint16_t, 80> o16{};
       s(huxiTransformLuma8x8InvAddPred_H264_16s8u_C1R(p.data(), 9, c.data(), o.data(), 10), o);
       s(huxiTransformInvAddPredLuma8x8_H264_32s16u_C1R(p16.data(), 18, w.data(), o16.data(), 20, s.q), o16); }},
    {"TransformResidual4x4Inv", 0x97fcfaa0c475ffcd, 0, 0, [](Step& s) {
       const auto a = s.lv<int16_t, 16>(s.kind);
       const auto w = s.lv<int32_t, 16>(s.kind);
       std::array<int16_t, 16> o;
       std::array<int32_t, 16> ow;
       s(huxiTransformResidual4x4Inv_H264_16s_C1(a.data(), o.data()), o);
       s(huxiTransformResidual4x4Inv_H264_32s_C1(w.data(), ow.data()), ow); }},
};

class TransformSweep : public ::testing::TestWithParam<Sweep> {};
TEST_P(TransformSweep, Digest) {
  const Sweep& sw = GetParam();
  std::mt19937 g(2024);
  uint64_t h = 14695981039346656037ull;
  for (int q = sw.qpLo; q <= sw.qpHi; ++q)
    for (int i = 0; i < 64; ++i) {
      Step s{g, h, q, i % 4};
      sw.run(s);
    }
  EXPECT_EQ(h, sw.digest) << sw.name << " digest 0x" << std::hex << h;
}
INSTANTIATE_TEST_SUITE_P(Exports, TransformSweep, ::testing::ValuesIn(kSweeps),
                         [](const auto& p) { return std::string(p.param.name); });

// ---------------------------------------------------------------- wraps, saturations, clamps, by hand

Vals rows(Vals r) {  // a 4x4 block whose row i is r[i] throughout
  Vals o;
  for (int k = 0; k < 16; ++k) o.push_back(r[k / 4]);
  return o;
}
Vals cols(Vals c) {  // a 4x4 block whose column j is c[j] throughout
  Vals o;
  for (int k = 0; k < 16; ++k) o.push_back(c[k % 4]);
  return o;
}
void ok(HuxResult r) { EXPECT_EQ(r, huxOk); }

const Known kHandCases[] = {
    // In-place residual: the column butterflies fit 16 bits, the last sums
    // (39936) do not and are formed in 32 bits. DC 19968, level 1536 x 13 at (1, 0).
    {"in_place_final_sum_in_32_bits", [] { int16_t b[16] = {0, 0, 0, 0, 1536}; const int16_t dc = 19968;
       ok(huxiDequantTransformResidual_H264_16s_C1I(b, 8, &dc, 1, 0)); return V(b, 16); }, rows({624, 468, 156, 0})},
    // Its row pass wraps: row 0 = 30000, 0, 5000, 0 gives e = 35000 -> -30536.
    {"in_place_row_pass_wraps", [] { int16_t b[16] = {0, 0, 500}; const int16_t dc = 30000;
       ok(huxiDequantTransformResidual_H264_16s_C1I(b, 8, &dc, 1, 0)); return V(b, 16); }, cols({-477, 391, 391, -477})},
    // The bare inverse saturates (32767 >> 6 = 511) where the 32-bit form does not.
    {"bare_16s_saturates", [] { int16_t s[16] = {19968, 0, 0, 0, 19968}, o[16];
       ok(huxiTransformResidual4x4Inv_H264_16s_C1(s, o)); return V(o, 16); }, rows({511, 468, 156, 0})},
    {"bare_32s_does_not", [] { int32_t s[16] = {19968, 0, 0, 0, 19968}, o[16];
       ok(huxiTransformResidual4x4Inv_H264_32s_C1(s, o)); return V(o, 16); }, rows({624, 468, 156, 0})},
    {"bare_16s_rounding_saturates", [] { int16_t s[16] = {32767}, o[16];
       ok(huxiTransformResidual4x4Inv_H264_16s_C1(s, o)); return V(o, 16); }, all(16, 511)},
    // The prediction-adding forms saturate inside their passes: row 0 = 30000,
    // 0, 5000, 0 saturates e to 32767; row 1 col 0 = 29952; prediction 128.
    // Unsaturated arithmetic would give 206, 89, 89, 206 in the last row.
    {"add_pred_passes_saturate", [] { uint8_t pred[16], dst[16]; std::memset(pred, 128, 16);
       int16_t c[16] = {30000, 0, 5000, 0, 29952}, ones[16]; std::fill_n(ones, 16, int16_t{1});
       ok(huxiTransformQuantInvAddPred4x4_H264_16s_C1IR(pred, 4, c, nullptr, dst, 4, 24, 1, ones)); return V(dst + 12, 4); },
     {172, 51, 51, 172}},
    {"and_add_passes_saturate", [] { uint8_t pred[16], dst[16]; std::memset(pred, 128, 16);
       int16_t c[16] = {0, 0, 500, 0, 2304}; const int16_t dc = 30000;  // 500 x 10, 2304 x 13 at QP 0
       ok(huxiDequantTransformResidualAndAdd_H264_16s_C1I(pred, c, &dc, dst, 4, 4, 0, 1)); return V(dst + 12, 4); },
     {172, 51, 51, 172}},
    // LevelScale dequantisation saturates: 1000 x 4000 at QP 24 -> 32767, DC
    // only: 512 clamped to 255; -1000 -> -32768: 200 - 512 clamped to 0.
    {"add_pred_dequant_saturates", [] { uint8_t pred[16], dst[32]; int16_t scale[16]; std::fill_n(scale, 16, int16_t{4000});
       int16_t c[16] = {1000}; std::memset(pred, 0, 16);
       ok(huxiTransformQuantInvAddPred4x4_H264_16s_C1IR(pred, 4, c, nullptr, dst, 4, 24, 0, scale));
       c[0] = -1000; std::memset(pred, 200, 16);
       ok(huxiTransformQuantInvAddPred4x4_H264_16s_C1IR(pred, 4, c, nullptr, dst + 16, 4, 24, 0, scale)); return V(dst, 32); },
     cat({all(16, 255), all(16, 0)})},
    // Through the transform: 1000 and -900 at (0, 0) and (0, 2) both saturate,
    // so e = -1 and f = 32767: rows 0, 511, 511, 0 (unsaturated: e = 400000). At
    // QP 30 the product saturates before the left shift; below saturation (scale
    // 10) the columns are 1000 and 3000: 16 and 47 above the prediction.
    {"add_pred_products_saturate", [] { uint8_t pred[16], dst[48]; std::memset(pred, 100, 16); int16_t scale[16];
       std::fill_n(scale, 16, int16_t{4000});
       for (int i = 0; i < 2; ++i) { int16_t b[16] = {1000, 0, -900, 0};
         ok(huxiTransformQuantInvAddPred4x4_H264_16s_C1IR(pred, 4, b, nullptr, dst + 16 * i, 4, i ? 30 : 24, 1, scale)); }
       std::fill_n(scale, 16, int16_t{10}); int16_t b[16] = {100, 0, -50, 0};
       ok(huxiTransformQuantInvAddPred4x4_H264_16s_C1IR(pred, 4, b, nullptr, dst + 32, 4, 30, 1, scale)); return V(dst, 48); },
     cat({cols({100, 255, 255, 100}), cols({100, 255, 255, 100}), cols({116, 147, 147, 116})})},
    // The 8x8 dequantiser wraps to 16 bits from QP/6 = 6 (100000 -> -31072,
    // 200000 -> 3392) and truncates the 32-bit product below: (20000000 + 32)
    // >> 6 = 312500 -> -15180.
    {"dequant_8x8_wraps", [] { int16_t b[64] = {1000, -1000, 20000}, c[64] = {1000}, d[64] = {0, 0, 20000}, s[64];
       std::fill_n(s, 64, int16_t{100}); s[2] = 1000;
       ok(huxiQuantLuma8x8Inv_H264_16s_C1I(b, 6, s)); ok(huxiQuantLuma8x8Inv_H264_16s_C1I(c, 7, s));
       ok(huxiQuantLuma8x8Inv_H264_16s_C1I(d, 0, s)); return Vals{b[0], b[1], b[2], c[0], d[2]}; },
     {-31072, 31072, static_cast<int16_t>(20000000 & 0xFFFF), 3392, -15180}},
    // Luma DC: 16 levels of 4096 make the first sum 65536, which wraps to 0;
    // with one more at (0, 0) every coefficient is 1 (x 10 at QP 12). The
    // LevelScale form saturates its Hadamard instead: row 0 = 32767, 0, 1, 1.
    {"luma_dc_wraps_and_levelscale_form_saturates", [] { int16_t b[16], c[16]; std::fill_n(b, 16, int16_t{4096}); b[0] = 4097;
       std::memcpy(c, b, sizeof b); ok(huxiTransformDequantLumaDC_H264_16s_C1I(b, 12));
       ok(huxiTransformQuantInvLumaDC4x4_H264_16s_C1I(c, 24, nullptr)); return cat({V(b, 16), V(c, 16)}); },
     cat({all(16, 10), {32767, 0}, all(14, 40)})},
    // 2x2 chroma DC of the LevelScale form saturates its sums (not 2047 ...),
    // the 32-bit form does not, the wrapping 4:2:0 form wraps 4 x 16384 to 0.
    {"chroma_dc_saturates_and_wraps", [] { int16_t b[4] = {32767, 32767, 32767, -32768}, c[4] = {16384, 16384, 16384, 16384};
       int32_t w[4] = {32767, 32767, 32767, -32768}; const int16_t one[1] = {1};
       ok(huxiTransformQuantInvChromaDC2x2_H264_16s_C1I(b, 0, one)); ok(huxiTransformQuantInvChromaDC2x2_H264_32s_C1I(w, 0, one));
       ok(huxiTransformDequantChromaDC_H264_16s_C1I(c, 0)); return cat({V(b, 4), V(w, 1), V(c, 1)}); },
     {1023, 1023, 1023, -1024, 65533 >> 5, 0}},
    {"dc_only_rounding", [] { Vals o; for (int16_t dc : {31, 32, -32, -33}) { int16_t b[16]; std::memset(b, 0x55, sizeof b);
       ok(huxiDequantTransformResidual_H264_16s_C1I(b, 8, &dc, 0, 20)); o = cat({o, V(b, 16)}); } return o; },
     cat({all(16, 0), all(16, 1), all(16, 0), all(16, -1)})},
    // Switching pictures clamp: 6000 requantised to 150, dequantised to 24000,
    // every sample 375 before the clamp. Out-of-range QP and QS are not
    // rejected and read no table out of bounds.
    {"switching_output_clamped", [] { int16_t b[16] = {}, c[16] = {}, p[16] = {6000}, q[16] = {-6000};
       ok(huxiDequantTransformResidual_SISP_H264_16s_C1I(b, p, nullptr, 0, 28, 28, 0));
       ok(huxiDequantTransformResidual_SISP_H264_16s_C1I(c, q, nullptr, 0, 28, 28, 0));
       const Vals out = cat({V(b, 16), V(c, 16)});
       ok(huxiDequantTransformResidual_SISP_H264_16s_C1I(c, q, nullptr, 1, -1000, 1000, 1));
       ok(huxiTransformDequantChromaDC_SISP_H264_16s_C1I(q, p, 1 << 30, -5, 0)); return out; },
     cat({all(16, 255), all(16, 0)})},
    {"and_add_takes_null_coefficients_for_given_dc", [] { uint8_t pred[16], dst[16]; std::memset(pred, 10, 16);
       const int16_t dc = 64 * 5; ok(huxiDequantTransformResidualAndAdd_H264_16s_C1I(pred, nullptr, &dc, dst, 4, 4, 30, 0));
       return V(dst, 16); }, all(16, 15)},
    // High bit depth clamps at the depth; the 8x8 form does not check it:
    // 16 bits keeps 65535, depths beyond are clamped to 16.
    {"high_bit_depth_clamp_bounds", [] { uint16_t pred[16], dst[32], p8[64], d8[192]; int32_t c[16] = {}, c8[64] = {};
       std::fill_n(pred, 16, uint16_t{16000}); std::fill_n(p8, 64, uint16_t{60000}); const int32_t dc = 64 * 1000;
       ok(huxiTransformQuantInvAddPred4x4_H264_32s_C1IR(pred, 8, c, &dc, dst, 8, 0, 0, 14, nullptr));
       ok(huxiTransformQuantInvAddPred4x4_H264_32s_C1IR(pred, 8, c, &dc, dst + 16, 8, 0, 0, 9, nullptr));
       const int32_t depths[3] = {16, 40, 12};
       for (int i = 0; i < 3; ++i) ok(huxiTransformInvAddPredLuma8x8_H264_32s16u_C1R(p8, 16, c8, d8 + 64 * i, 16, depths[i]));
       return cat({V(dst, 32), V(d8, 192)}); },
     cat({all(16, 16383), all(16, 511), all(128, 60000), all(64, 4095)})},
};

HUX_KNOWN(TransformKnown, kHandCases);

}  // namespace
