// H.264 dequantisation and inverse transforms through the exports: their
// checks through the export descriptors; every export swept over its QP range
// (one beyond each end), every bit depth, DC and AC forms, caller tables or
// none, and levels from small to the 16- and 32-bit extremes, hashed into one
// digest per export; and hand-computed cases where the passes wrap, saturate or
// clamp, which anchor the digests' meaning.
#include <gtest/gtest.h>

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

// Draws that are the same on every platform: a 32-bit generator, no
// library distributions.
struct Draw {
  std::mt19937 g{2024};
  int32_t in(int32_t lo, int32_t hi) { return lo + static_cast<int32_t>(g() % (static_cast<uint32_t>(hi - lo) + 1)); }
  // Small, full range, extremes, sparse: by kind.
  template <class T>
  void levels(T* p, int n, int kind) {
    static const int32_t kEdge[] = {INT32_MIN, -32768, -32767, -1, 0, 1, 32766, 32767, INT32_MAX};
    for (int i = 0; i < n; ++i) {
      int32_t v = kind == 0 ? in(-300, 300) : kind == 1 ? static_cast<int32_t>(g()) : kind == 2 ? kEdge[g() % 9]
                                                                                    : (g() & 3 ? 0 : in(-3000, 3000));
      if (sizeof(T) == 2 && kind == 2) v = static_cast<int16_t>(v);
      p[i] = static_cast<T>(v);
    }
  }
};
struct Hash {
  uint64_t h = 14695981039346656037ull;
  void bytes(const void* p, size_t n) {
    for (size_t i = 0; i < n; ++i) h = (h ^ static_cast<const uint8_t*>(p)[i]) * 1099511628211ull;
  }
  template <class T>
  void add(const T& v) { bytes(&v, sizeof v); }
};

struct Sweep {
  const char* name;
  uint64_t digest;
  std::function<void(Draw&, Hash&, int qp, int kind)> call;
  int qpLo, qpHi;
};
std::ostream& operator<<(std::ostream& os, const Sweep& s) { return os << s.name; }

// One block-in-place export: levels of T through f(block, qp, scale or null).
template <class T, size_t N, class F>
Sweep inplace(const char* name, uint64_t digest, int hi, F f) {
  return {name, digest, [f](Draw& d, Hash& h, int q, int kind) {
            T b[N];
            int16_t sc[16];
            d.levels(b, N, kind);
            d.levels(sc, 16, d.in(0, 1) ? 0 : 1);
            h.add(f(b, q, (kind & 1) ? sc : nullptr));
            h.add(b);
          }, -1, hi + 1};
}

const Sweep kSweeps[] = {
    {"DequantTransformResidual", 0x53070bcb5e648461, [](Draw& d, Hash& h, int q, int kind) {
       int16_t b[4 * 6], dc = static_cast<int16_t>(d.in(-32768, 32767));
       d.levels(b, 24, kind);
       h.add(huxiDequantTransformResidual_H264_16s_C1I(b, 12, d.in(0, 1) ? &dc : nullptr, d.in(0, 2), q));
       h.add(b); }, -1, 52},
    {"DequantTransformResidual_SISP", 0xa1743e4e889491a2, [](Draw& d, Hash& h, int q, int kind) {
       int16_t b[16], p[16], dc = static_cast<int16_t>(d.in(-500, 3000));
       d.levels(b, 16, kind & 2 ? 3 : 0);
       d.levels(p, 16, 0);
       h.add(huxiDequantTransformResidual_SISP_H264_16s_C1I(b, p, d.in(0, 1) ? &dc : nullptr, d.in(0, 1), q, d.in(0, 51), kind & 1));
       h.add(b); }, 0, 51},
    {"DequantTransformResidualAndAdd", 0x53c0a42ee451f24d, [](Draw& d, Hash& h, int q, int kind) {
       int16_t c[16], dc = static_cast<int16_t>(d.in(-32768, 32767));
       uint8_t p[64], o[40] = {};
       d.levels(c, 16, kind);
       for (auto& x : p) x = static_cast<uint8_t>(d.g());
       h.add(huxiDequantTransformResidualAndAdd_H264_16s_C1I(p, c, d.in(0, 1) ? &dc : nullptr, o, 16, 10, q, d.in(0, 1)));
       h.add(o); }, -1, 52},
    {"TransformQuantInvAddPred4x4_16s", 0xd48b5ed3090daa01, [](Draw& d, Hash& h, int q, int kind) {
       int16_t c[16], sc[16], dc = static_cast<int16_t>(d.in(-32768, 32767));
       uint8_t p[64], o[40] = {};
       d.levels(c, 16, kind);
       d.levels(sc, 16, d.in(0, 3));
       for (auto& x : p) x = static_cast<uint8_t>(d.g());
       h.add(huxiTransformQuantInvAddPred4x4_H264_16s_C1IR(p, 16, c, d.in(0, 1) ? &dc : nullptr, o, 10, q, d.in(0, 1),
                                                            d.in(0, 1) ? sc : nullptr));
       h.add(o); }, -1, 52},
    {"TransformQuantInvAddPred4x4_32s", 0xa19c10a57fa44046, [](Draw& d, Hash& h, int q, int kind) {
       int32_t c[16], dc = d.in(-100000, 100000);
       int16_t sc[16];
       uint16_t p[64], o[40] = {};
       const int bd = d.in(8, 15);
       d.levels(c, 16, kind);
       d.levels(sc, 16, d.in(0, 3));
       for (auto& x : p) x = static_cast<uint16_t>(d.g() & 0x7fff);
       h.add(huxiTransformQuantInvAddPred4x4_H264_32s_C1IR(p, 32, c, d.in(0, 1) ? &dc : nullptr, o, 20, q, d.in(0, 1), bd,
                                                            d.in(0, 1) ? sc : nullptr));
       h.add(o); }, -1, 88},
    inplace<int16_t, 16>("TransformDequantLumaDC", 0x64b88be336c95e1d, 51, [](int16_t* b, int q, const int16_t*) { return huxiTransformDequantLumaDC_H264_16s_C1I(b, q); }),
    inplace<int16_t, 4>("TransformDequantChromaDC", 0x5f10e8001abbc93b, 51, [](int16_t* b, int q, const int16_t*) { return huxiTransformDequantChromaDC_H264_16s_C1I(b, q); }),
    {"TransformDequantChromaDC_SISP", 0x2a75785811e8790d, [](Draw& d, Hash& h, int q, int kind) {
       int16_t b[4], p[4];
       d.levels(b, 4, kind & 2 ? 3 : 0);
       d.levels(p, 4, 0);
       h.add(huxiTransformDequantChromaDC_SISP_H264_16s_C1I(b, p, q, d.in(0, 51), kind & 1));
       h.add(b); }, 0, 51},
    inplace<int16_t, 16>("TransformQuantInvLumaDC4x4_16s", 0x9bec415d30a07dc0, 51, huxiTransformQuantInvLumaDC4x4_H264_16s_C1I),
    inplace<int32_t, 16>("TransformQuantInvLumaDC4x4_32s", 0xdbe19ebe63378f9d, 87, huxiTransformQuantInvLumaDC4x4_H264_32s_C1I),
    inplace<int16_t, 4>("TransformQuantInvChromaDC2x2_16s", 0xed12d9e8dec32686, 39, huxiTransformQuantInvChromaDC2x2_H264_16s_C1I),
    inplace<int32_t, 4>("TransformQuantInvChromaDC2x2_32s", 0xab71af9521d5286f, 75, huxiTransformQuantInvChromaDC2x2_H264_32s_C1I),
    inplace<int16_t, 8>("TransformQuantInvChromaDC2x4_16s", 0xd29af6a5ba38e1fe, 39, huxiTransformQuantInvChromaDC2x4_H264_16s_C1I),
    inplace<int32_t, 8>("TransformQuantInvChromaDC2x4_32s", 0x2b807293265afcb5, 75, huxiTransformQuantInvChromaDC2x4_H264_32s_C1I),
    {"QuantLuma8x8Inv", 0xef21a068e62f7022, [](Draw& d, Hash& h, int q, int kind) {
       int16_t b[64], sc[64];
       int32_t w[64];
       d.levels(b, 64, kind);
       d.levels(w, 64, kind);
       d.levels(sc, 64, d.in(0, 2));
       h.add(huxiQuantLuma8x8Inv_H264_16s_C1I(b, q / 6, sc));
       h.add(huxiQuantInvLuma8x8_H264_32s_C1I(w, q / 6, sc));
       h.add(b);
       h.add(w); }, -6, 95},
    {"Inverse8x8AddPred", 0x8978a46a5f939e81, [](Draw& d, Hash& h, int q, int kind) {
       int16_t c[64];
       int32_t w[64];
       uint8_t p[72], o[80] = {};
       uint16_t p16[72], o16[80] = {};
       d.levels(c, 64, kind);
       d.levels(w, 64, kind);
       for (auto& x : p) x = static_cast<uint8_t>(d.g());
       for (auto& x : p16) x = static_cast<uint16_t>(d.g());
       h.add(huxiTransformLuma8x8InvAddPred_H264_16s8u_C1R(p, 9, c, o, 10));
       h.add(huxiTransformInvAddPredLuma8x8_H264_32s16u_C1R(p16, 18, w, o16, 20, q % 20));
       h.add(o);
       h.add(o16); }, 0, 19},
    {"TransformResidual4x4Inv", 0x76c32cd1a25356ed, [](Draw& d, Hash& h, int, int kind) {
       int16_t s[16], o[16];
       int32_t w[16], ow[16];
       d.levels(s, 16, kind);
       d.levels(w, 16, kind);
       h.add(huxiTransformResidual4x4Inv_H264_16s_C1(s, o));
       h.add(huxiTransformResidual4x4Inv_H264_32s_C1(w, ow));
       h.add(o);
       h.add(ow); }, 0, 0},
};

class TransformSweep : public ::testing::TestWithParam<Sweep> {};
TEST_P(TransformSweep, Digest) {
  const Sweep& s = GetParam();
  Draw d;
  Hash h;
  for (int q = s.qpLo; q <= s.qpHi; ++q)
    for (int i = 0; i < 64; ++i) s.call(d, h, q, i % 4);
  EXPECT_EQ(h.h, s.digest) << s.name << " digest 0x" << std::hex << h.h;
}
INSTANTIATE_TEST_SUITE_P(Exports, TransformSweep, ::testing::ValuesIn(kSweeps),
                         [](const ::testing::TestParamInfo<Sweep>& p) { return std::string(p.param.name); });

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
