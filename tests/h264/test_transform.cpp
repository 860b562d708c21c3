// H.264 dequantisation and inverse transforms through the exports: against a
// plain model of the standard's equations on every QP (inputs kept where no
// 16-bit pass can overflow), a table of hand-computed cases where the passes
// wrap, saturate or clamp, the check order, and nothing written on failure.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <functional>
#include <vector>

#include "huxvc.h"
#include "support/test_util.h"

namespace {

using hux::test::Guarded;
using hux::test::Rng;
using Mat = std::vector<int64_t>;

// ---------------------------------------------------------------- the model
// normAdjust4x4: v0 where row and column are both even, v1 where both odd, v2 else.
const int kV[6][3] = {{10, 16, 13}, {11, 18, 14}, {13, 20, 16}, {14, 23, 18}, {16, 25, 20}, {18, 29, 23}};
// The standard's quantisation multipliers (LevelScale2 of the SP decoding process).
const int kMF[6][3] = {{13107, 5243, 8066}, {11916, 4660, 7490}, {10082, 4194, 6554},
                       {9362, 3647, 5825},  {8192, 3355, 5243},  {7282, 2893, 4559}};
int cls(int i, int j) { return (i % 2 == 0 && j % 2 == 0) ? 0 : (i % 2 == 1 && j % 2 == 1) ? 1 : 2; }
int v(int m, int k) { return kV[m][cls(k / 4, k % 4)]; }
int flatLS(int m, int k) { return 16 * v(m, k); }
int64_t sh(int64_t x, int n) { return n >= 0 ? x * (int64_t{1} << n) : x >> -n; }

// Residual 4x4 scaling.
int64_t scale4x4(int64_t c, int64_t ls, int qp) {
  return qp >= 24 ? sh(c * ls, qp / 6 - 4) : (c * ls + (int64_t{1} << (3 - qp / 6))) >> (4 - qp / 6);
}
// The inverse core transform: row transforms e, f, then column transforms g, h.
Mat inv4x4(const Mat& d) {
  int64_t f[4][4], r[4][4];
  for (int i = 0; i < 4; ++i) {
    const int64_t* di = &d[4 * i];
    const int64_t e0 = di[0] + di[2], e1 = di[0] - di[2], e2 = (di[1] >> 1) - di[3], e3 = di[1] + (di[3] >> 1);
    f[i][0] = e0 + e3, f[i][1] = e1 + e2, f[i][2] = e1 - e2, f[i][3] = e0 - e3;
  }
  for (int j = 0; j < 4; ++j) {
    const int64_t g0 = f[0][j] + f[2][j], g1 = f[0][j] - f[2][j], g2 = (f[1][j] >> 1) - f[3][j],
                  g3 = f[1][j] + (f[3][j] >> 1);
    r[0][j] = g0 + g3, r[1][j] = g1 + g2, r[2][j] = g1 - g2, r[3][j] = g0 - g3;
  }
  Mat out(16);
  for (int k = 0; k < 16; ++k) out[k] = (r[k / 4][k % 4] + 32) >> 6;
  return out;
}
// The 8x8 inverse: each row, then each column, with the standard's a/b stages.
void inv8(int64_t* d, int stride) {
  auto D = [&](int k) -> int64_t& { return d[k * stride]; };
  const int64_t a0 = D(0) + D(4), a4 = D(0) - D(4), a2 = (D(2) >> 1) - D(6), a6 = D(2) + (D(6) >> 1);
  const int64_t b0 = a0 + a6, b2 = a4 + a2, b4 = a4 - a2, b6 = a0 - a6;
  const int64_t a1 = -D(3) + D(5) - D(7) - (D(7) >> 1), a3 = D(1) + D(7) - D(3) - (D(3) >> 1);
  const int64_t a5 = -D(1) + D(7) + D(5) + (D(5) >> 1), a7 = D(3) + D(5) + D(1) + (D(1) >> 1);
  const int64_t b1 = a1 + (a7 >> 2), b7 = a7 - (a1 >> 2), b3 = a3 + (a5 >> 2), b5 = (a3 >> 2) - a5;
  D(0) = b0 + b7, D(1) = b2 + b5, D(2) = b4 + b3, D(3) = b6 + b1;
  D(4) = b6 - b1, D(5) = b4 - b3, D(6) = b2 - b5, D(7) = b0 - b7;
}
Mat inv8x8(Mat d) {
  for (int i = 0; i < 8; ++i) inv8(&d[8 * i], 1);
  for (int j = 0; j < 8; ++j) inv8(&d[j], 8);
  for (auto& x : d) x = (x + 32) >> 6;
  return d;
}
const int kH[4][4] = {{1, 1, 1, 1}, {1, 1, -1, -1}, {1, -1, -1, 1}, {1, -1, 1, -1}};
// A x c x B for a rows x cols block, A and B Hadamard matrices of those orders.
Mat hadamard(const Mat& c, int rows, int cols) {
  auto H = [](int n, int i, int j) { return n == 4 ? kH[i][j] : (i == 1 && j == 1 ? -1 : 1); };
  Mat t(rows * cols, 0), f(rows * cols, 0);
  for (int i = 0; i < rows; ++i)
    for (int j = 0; j < cols; ++j)
      for (int k = 0; k < rows; ++k) t[i * cols + j] += H(rows, i, k) * c[k * cols + j];
  for (int i = 0; i < rows; ++i)
    for (int j = 0; j < cols; ++j)
      for (int k = 0; k < cols; ++k) f[i * cols + j] += t[i * cols + k] * H(cols, k, j);
  return f;
}
int64_t clip(int64_t x, int64_t hi) { return x < 0 ? 0 : (x > hi ? hi : x); }
int64_t l1(const Mat& m) {
  int64_t s = 0;
  for (auto x : m) s += x < 0 ? -x : x;
  return s;
}
bool fits16(const Mat& m) {
  for (auto x : m)
    if (x < -32768 || x > 32767) return false;
  return true;
}

// Random levels whose dequantised block has an L1 norm at most `cap`, so no
// 16-bit pass can overflow; sparse blocks often, so high QPs still see levels.
template <class Dq>
Mat levels(Rng& rng, int n, int64_t cap, Dq dq) {
  std::uniform_int_distribution<int> pick(0, 3), any(-2000, 2000);
  for (;;) {
    Mat c(n, 0);
    const int mode = pick(rng);
    for (int k = 0; k < n; ++k) {
      if (mode == 0 && (rng() & 3)) continue;
      const int64_t bound = std::max<int64_t>(1, cap / (4 * std::max<int64_t>(1, dq(k))));
      c[k] = std::uniform_int_distribution<int64_t>(-bound, bound)(rng);
    }
    Mat d(n);
    for (int k = 0; k < n; ++k) d[k] = c[k] * dq(k);
    if (l1(d) <= cap) return c;
  }
}

template <class T>
std::vector<T> to(const Mat& m) {
  return std::vector<T>(m.begin(), m.end());
}

// The block `in` as T through `call`, which must give `want`.
template <class T, class F>
void expect_model(const Mat& in, const Mat& want, int qp, F call) {
  std::vector<T> b = to<T>(in);
  ASSERT_EQ(call(b.data()), huxOk) << "qp " << qp;
  for (size_t k = 0; k < want.size(); ++k) ASSERT_EQ(b[k], want[k]) << "qp " << qp << " k " << k;
}

// ---------------------------------------------------------------- model tests, every QP

// The 4x4 residual forms on the same blocks: in place (any row step, nothing
// written beside the rows), added to an 8-bit prediction (flat or LevelScale),
// added to a high-bit-depth prediction up to QP 87.
TEST(TransformModel, Residual4x4AllForms) {
  Rng rng(12);
  for (int qp = 0; qp <= 87; ++qp)
    for (int t = 0; t < 32; ++t) {
      const bool useDC = t & 1, ac = (t & 2) != 0, flat = (t & 4) != 0;
      std::vector<int16_t> scale(16);
      for (auto& s : scale) s = static_cast<int16_t>(std::uniform_int_distribution<int>(1, 255)(rng) * 16);
      auto ls = [&](int k) { return flat ? flatLS(qp % 6, k) : scale[k]; };
      const int64_t cap = qp <= 51 ? 32000 : (int64_t{1} << 28);
      Mat c = levels(rng, 16, cap, [&](int k) { return std::max<int64_t>(1, scale4x4(1, ls(k), qp)); });
      Mat d(16);
      for (int k = 0; k < 16; ++k) d[k] = scale4x4(c[k], ls(k), qp);
      const int64_t dcv = std::uniform_int_distribution<int>(-3000, 3000)(rng);
      if (useDC) d[0] = dcv;
      if (l1(d) > cap) continue;
      const Mat res = ac ? inv4x4(d) : Mat(16, (d[0] + 32) >> 6);
      const int bd = 9 + t % 6;
      const std::vector<uint8_t> p8 = hux::test::random_bytes(rng, 64);
      std::vector<uint16_t> p16(64);
      hux::test::fill_random(rng, p16.data(), 64, 0, (1 << bd) - 1);
      const int16_t dc16 = static_cast<int16_t>(dcv);
      const int32_t dc32 = static_cast<int32_t>(dcv);
      std::vector<int16_t> coef = to<int16_t>(c);
      std::vector<int32_t> coef32 = to<int32_t>(c);
      if (qp <= 51) {  // 8-bit forms: prediction step 16 bytes, destination step 5 or 8
        std::vector<uint8_t> dst(32, 0xEE);
        ASSERT_EQ(huxiTransformQuantInvAddPred4x4_H264_16s_C1IR(p8.data(), 16, coef.data(), useDC ? &dc16 : nullptr,
                                                                dst.data(), 8, qp, ac, flat ? nullptr : scale.data()),
                  huxOk);
        for (int k = 0; k < 16; ++k)
          ASSERT_EQ(dst[(k / 4) * 8 + k % 4], clip(res[k] + p8[(k / 4) * 16 + k % 4], 255)) << qp << " " << t;
      }
      if (qp <= 51 && flat) {
        std::vector<uint8_t> dst(20, 0xEE);
        ASSERT_EQ(huxiDequantTransformResidualAndAdd_H264_16s_C1I(p8.data(), coef.data(), useDC ? &dc16 : nullptr,
                                                                  dst.data(), 16, 5, qp, ac),
                  huxOk);
        for (int k = 0; k < 16; ++k) ASSERT_EQ(dst[(k / 4) * 5 + k % 4], clip(res[k] + p8[(k / 4) * 16 + k % 4], 255));
        const int step = 8 + 2 * (t % 5);  // bytes
        Guarded g(3 * step + 8);
        for (int k = 0; k < 16; ++k) std::memcpy(g.data() + (k / 4) * step + 2 * (k % 4), &coef[k], 2);
        ASSERT_EQ(huxiDequantTransformResidual_H264_16s_C1I(g.as<int16_t>(), step, useDC ? &dc16 : nullptr, ac, qp), huxOk);
        for (int k = 0; k < 16; ++k) {
          int16_t got;
          std::memcpy(&got, g.data() + (k / 4) * step + 2 * (k % 4), 2);
          ASSERT_EQ(got, res[k]) << "qp " << qp << " t " << t << " k " << k;
        }
        ASSERT_TRUE(g.intact());
      }
      std::vector<uint16_t> dst(32, 0xEEEE);
      ASSERT_EQ(huxiTransformQuantInvAddPred4x4_H264_32s_C1IR(p16.data(), 32, coef32.data(), useDC ? &dc32 : nullptr,
                                                              dst.data(), 16, qp, ac, bd, flat ? nullptr : scale.data()),
                huxOk);
      for (int k = 0; k < 16; ++k)
        ASSERT_EQ(dst[(k / 4) * 8 + k % 4], clip(res[k] + p16[(k / 4) * 16 + k % 4], (1 << bd) - 1)) << qp << " " << t;
    }
}

TEST(TransformModel, BareInverse4x4) {
  Rng rng(14);
  for (int t = 0; t < 2000; ++t) {
    const Mat d = levels(rng, 16, t & 1 ? 32000 : 2000, [](int) { return int64_t{1}; });
    const Mat expect = inv4x4(d);
    std::vector<int16_t> s16 = to<int16_t>(d), o16(16);
    std::vector<int32_t> s32 = to<int32_t>(d), o32(16);
    ASSERT_EQ(huxiTransformResidual4x4Inv_H264_16s_C1(s16.data(), o16.data()), huxOk);
    ASSERT_EQ(huxiTransformResidual4x4Inv_H264_32s_C1(s32.data(), o32.data()), huxOk);
    for (int k = 0; k < 16; ++k) {
      ASSERT_EQ(o16[k], expect[k]);
      ASSERT_EQ(o32[k], expect[k]);
    }
  }
}

TEST(TransformModel, Luma8x8DequantAndInverse) {
  Rng rng(15);
  for (int q6 = 0; q6 <= 14; ++q6)
    for (int t = 0; t < 40; ++t) {
      std::vector<int16_t> scale(64);
      for (auto& s : scale) s = static_cast<int16_t>(std::uniform_int_distribution<int>(1, 255)(rng) * 16 + (rng() & 15));
      Mat c(64);
      for (int k = 0; k < 64; ++k) {
        const int64_t lim = std::max<int64_t>(1, 30000 / std::max<int64_t>(1, sh(scale[k], q6 - 6)));
        c[k] = std::uniform_int_distribution<int64_t>(-lim, lim)(rng);
      }
      Mat d(64);
      for (int k = 0; k < 64; ++k)
        d[k] = q6 >= 6 ? sh(c[k] * scale[k], q6 - 6) : (c[k] * scale[k] + (int64_t{1} << (5 - q6))) >> (6 - q6);
      if (q6 <= 8 && fits16(d))
        expect_model<int16_t>(c, d, q6, [&](int16_t* b) { return huxiQuantLuma8x8Inv_H264_16s_C1I(b, q6, scale.data()); });
      expect_model<int32_t>(c, d, q6, [&](int32_t* b) { return huxiQuantInvLuma8x8_H264_32s_C1I(b, q6, scale.data()); });
    }
  for (int t = 0; t < 1000; ++t) {
    const Mat d = levels(rng, 64, t & 1 ? 8000 : 1000, [](int) { return int64_t{1}; });
    const Mat res = inv8x8(d);
    std::vector<uint8_t> pred = hux::test::random_bytes(rng, 8 * 9), dst(8 * 11, 0xEE);
    std::vector<int16_t> coef = to<int16_t>(d);
    ASSERT_EQ(huxiTransformLuma8x8InvAddPred_H264_16s8u_C1R(pred.data(), 9, coef.data(), dst.data(), 11), huxOk);
    const int bd = 8 + t % 9;
    std::vector<uint16_t> p16(64), d16(64);
    hux::test::fill_random(rng, p16.data(), 64, 0, (1 << bd) - 1);
    std::vector<int32_t> c32 = to<int32_t>(d);
    ASSERT_EQ(huxiTransformInvAddPredLuma8x8_H264_32s16u_C1R(p16.data(), 16, c32.data(), d16.data(), 16, bd), huxOk);
    for (int k = 0; k < 64; ++k) {
      ASSERT_EQ(dst[(k / 8) * 11 + k % 8], clip(res[k] + pred[(k / 8) * 9 + k % 8], 255));
      ASSERT_EQ(d16[k], clip(res[k] + p16[k], (1 << bd) - 1));
    }
  }
}

// Luma DC (Intra 16x16): Hadamard, then the DC scaling with LevelScale4x4(qP % 6, 0, 0).
// Chroma DC: 4:2:0 ((f x LS) << qP/6) >> 5; 4:2:2 at qP + 3, rounded below 36.
int64_t lumaDcScale(int64_t f, int64_t ls, int qp) {
  return qp >= 36 ? sh(f * ls, qp / 6 - 6) : (f * ls + (int64_t{1} << (5 - qp / 6))) >> (6 - qp / 6);
}
TEST(TransformModel, LumaAndChromaDC) {
  Rng rng(16);
  for (int qp = 0; qp <= 87; ++qp)
    for (int t = 0; t < 40; ++t) {
      const bool flat = t & 1;
      const int16_t custom = static_cast<int16_t>(16 * (1 + rng() % 255)), arr[16] = {custom};
      const int16_t* sc = flat ? nullptr : arr;
      auto ls = [&](int q) { return flat ? static_cast<int16_t>(flatLS(q % 6, 0)) : custom; };
      Mat c(16);
      const int64_t lim = std::max<int64_t>(1, 2000 / std::max<int64_t>(1, sh(ls(qp), qp / 6 - 6)));
      for (auto& x : c) x = std::uniform_int_distribution<int64_t>(-lim, lim)(rng);
      const Mat f = hadamard(c, 4, 4);
      Mat e(16);
      for (int k = 0; k < 16; ++k) e[k] = lumaDcScale(f[k], ls(qp), qp);
      if (qp <= 51 && fits16(e) && l1(c) <= 32767) {
        expect_model<int16_t>(c, e, qp, [&](int16_t* b) { return huxiTransformQuantInvLumaDC4x4_H264_16s_C1I(b, qp, sc); });
        if (flat) expect_model<int16_t>(c, e, qp, [&](int16_t* b) { return huxiTransformDequantLumaDC_H264_16s_C1I(b, qp); });
      }
      expect_model<int32_t>(c, e, qp, [&](int32_t* b) { return huxiTransformQuantInvLumaDC4x4_H264_32s_C1I(b, qp, sc); });
      if (qp > 75) continue;
      Mat d(8);
      for (auto& x : d) x = std::uniform_int_distribution<int64_t>(-300, 300)(rng);
      const Mat d4(d.begin(), d.begin() + 4), f2 = hadamard(d4, 2, 2), f4 = hadamard(d, 4, 2);
      Mat e2(4), e4(8);
      for (int k = 0; k < 4; ++k) e2[k] = sh(f2[k] * ls(qp), qp / 6) >> 5;
      for (int k = 0; k < 8; ++k) e4[k] = lumaDcScale(f4[k], ls(qp + 3), qp + 3);
      if (qp <= 39 && fits16(e2))
        expect_model<int16_t>(d4, e2, qp, [&](int16_t* b) { return huxiTransformQuantInvChromaDC2x2_H264_16s_C1I(b, qp, sc); });
      if (qp <= 39 && fits16(e4))
        expect_model<int16_t>(d, e4, qp, [&](int16_t* b) { return huxiTransformQuantInvChromaDC2x4_H264_16s_C1I(b, qp, sc); });
      if (qp <= 51 && flat && fits16(e2))
        expect_model<int16_t>(d4, e2, qp, [&](int16_t* b) { return huxiTransformDequantChromaDC_H264_16s_C1I(b, qp); });
      expect_model<int32_t>(d4, e2, qp, [&](int32_t* b) { return huxiTransformQuantInvChromaDC2x2_H264_32s_C1I(b, qp, sc); });
      expect_model<int32_t>(d, e4, qp, [&](int32_t* b) { return huxiTransformQuantInvChromaDC2x4_H264_32s_C1I(b, qp, sc); });
    }
}

// SP and SI decoding: prediction (transformed) plus dequantised levels,
// requantised and dequantised at QS, inverse transformed, clipped.
TEST(TransformModel, SwitchingPictures) {
  Rng rng(18);
  const int kA[3] = {16, 25, 20};
  int ran = 0, ranDC = 0;
  for (int qp = 0; qp <= 51; qp += 1)
    for (int t = 0; t < 12; ++t) {
      const int qs = static_cast<int>(rng() % 52), sw = t & 1, ac = (t & 2) != 0, useDC = (t & 4) != 0;
      const int q = sw ? qs : qp;
      Mat c(16, 0), p(16);
      const int64_t lim = std::max(1, 400 / (((29 << (q / 6)) * 25) / 64 + 1));
      for (auto& x : c)
        if ((rng() & 3) == 0) x = std::uniform_int_distribution<int64_t>(-lim, lim)(rng);
      for (auto& x : p) x = std::uniform_int_distribution<int64_t>(-400, 400)(rng);
      const int16_t dc = static_cast<int16_t>(std::uniform_int_distribution<int>(-500, 3000)(rng));
      Mat cd(4), pd(4);
      for (auto& x : cd) x = std::uniform_int_distribution<int64_t>(-lim, lim)(rng);
      for (auto& x : pd) x = std::uniform_int_distribution<int64_t>(-400, 400)(rng);
      Mat d(16);
      for (int k = 0; k < 16; ++k) {
        const int cl = cls(k / 4, k % 4);
        int64_t s = p[k];
        if (ac || k == 0) s += sh(c[k] * kV[q % 6][cl] * kA[cl], q / 6) >> 6;
        const int64_t mag = ((s < 0 ? -s : s) * kMF[qs % 6][cl] + (int64_t{1} << (14 + qs / 6))) >> (15 + qs / 6);
        d[k] = sh((s < 0 ? -mag : mag) * kV[qs % 6][cl], qs / 6);
      }
      if (useDC) d[0] = dc;
      if (l1(d) <= 32000) {
        ++ran;
        const Mat r = inv4x4(d);
        std::vector<int16_t> b = to<int16_t>(c), pp = to<int16_t>(p);
        ASSERT_EQ(huxiDequantTransformResidual_SISP_H264_16s_C1I(b.data(), pp.data(), useDC ? &dc : nullptr, ac, qp,
                                                                 qs, sw),
                  huxOk);
        for (int k = 0; k < 16; ++k) ASSERT_EQ(b[k], clip(r[k], 255)) << qp << " " << qs << " " << t;
      }

      // Chroma DC.
      const Mat dcp = hadamard(pd, 2, 2);
      Mat dcr(4);
      for (int k = 0; k < 4; ++k) {
        const int64_t s = dcp[k] + (sh(cd[k] * kV[q % 6][0] * 16, q / 6) >> 5);
        const int64_t mag = ((s < 0 ? -s : s) * kMF[qs % 6][0] + (int64_t{1} << (15 + qs / 6))) >> (16 + qs / 6);
        dcr[k] = s < 0 ? -mag : mag;
      }
      const Mat f = hadamard(dcr, 2, 2);
      Mat e(4);
      for (int k = 0; k < 4; ++k) e[k] = sh(f[k] * kV[qs % 6][0], qs / 6) >> 1;
      if (!fits16(e)) continue;
      ++ranDC;
      std::vector<int16_t> cb = to<int16_t>(cd), pb = to<int16_t>(pd);
      ASSERT_EQ(huxiTransformDequantChromaDC_SISP_H264_16s_C1I(cb.data(), pb.data(), qp, qs, sw), huxOk);
      for (int k = 0; k < 4; ++k) ASSERT_EQ(cb[k], e[k]) << qp << " " << qs;
    }
  EXPECT_GT(ran, 300);
  EXPECT_GT(ranDC, 300);
}

// ---------------------------------------------------------------- wraps, saturations, clamps, by hand

using Vals = std::vector<int64_t>;
template <class T>
Vals V(const T* p, int n) {
  return Vals(p, p + n);
}
Vals all(int n, int64_t v) { return Vals(n, v); }
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
Vals cat(std::initializer_list<Vals> parts) {
  Vals o;
  for (const Vals& p : parts) o.insert(o.end(), p.begin(), p.end());
  return o;
}
void ok(HuxResult r) { EXPECT_EQ(r, huxOk); }

struct HandCase {
  const char* name;
  std::function<Vals()> run;
  Vals expect;
};
std::ostream& operator<<(std::ostream& os, const HandCase& c) { return os << c.name; }

const HandCase kHandCases[] = {
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

class TransformHand : public ::testing::TestWithParam<HandCase> {};
TEST_P(TransformHand, Values) { EXPECT_EQ(GetParam().run(), GetParam().expect); }
INSTANTIATE_TEST_SUITE_P(Cases, TransformHand, ::testing::ValuesIn(kHandCases),
                         [](const ::testing::TestParamInfo<HandCase>& p) { return std::string(p.param.name); });

// ---------------------------------------------------------------- checks and their order

struct CheckCase {
  const char* name;
  std::function<HuxResult(Guarded&)> call;
  HuxResult expect;
};
std::ostream& operator<<(std::ostream& os, const CheckCase& c) { return os << c.name; }

// Each call writes only into the guarded area; a failing call must leave it as it was.
std::vector<CheckCase> check_cases() {
  static int16_t s16[64] = {1, 2, 3};
  static int32_t s32[64] = {1, 2, 3};
  static uint8_t p8[128];
  static uint16_t p16[128];
  static const int16_t dc = 5;
  auto i16 = [](Guarded& g) { return g.as<int16_t>(); };
  auto i32 = [](Guarded& g) { return g.as<int32_t>(); };
  return {
      {"residual null", [](Guarded&) { return huxiDequantTransformResidual_H264_16s_C1I(nullptr, 8, &dc, 1, 10); }, huxErrNullPtr},
      {"residual qp 52 before step 4", [=](Guarded& g) { return huxiDequantTransformResidual_H264_16s_C1I(i16(g), 4, nullptr, 1, 52); }, huxErrOutOfRange},
      {"residual qp -1", [=](Guarded& g) { return huxiDequantTransformResidual_H264_16s_C1I(i16(g), 8, nullptr, 1, -1); }, huxErrOutOfRange},
      {"residual step 7", [=](Guarded& g) { return huxiDequantTransformResidual_H264_16s_C1I(i16(g), 7, nullptr, 1, 51); }, huxErrStep},
      {"residual ok", [=](Guarded& g) { return huxiDequantTransformResidual_H264_16s_C1I(i16(g), 8, nullptr, 1, 51); }, huxOk},
      {"sisp null pred", [=](Guarded& g) { return huxiDequantTransformResidual_SISP_H264_16s_C1I(i16(g), nullptr, &dc, 1, 10, 10, 0); }, huxErrNullPtr},
      {"sisp null block", [](Guarded&) { return huxiDequantTransformResidual_SISP_H264_16s_C1I(nullptr, s16, &dc, 1, 10, 10, 0); }, huxErrNullPtr},
      {"and-add null pred", [](Guarded& g) { return huxiDequantTransformResidualAndAdd_H264_16s_C1I(nullptr, s16, &dc, g.data(), 4, 4, 10, 1); }, huxErrNullPtr},
      {"and-add null dst", [](Guarded&) { return huxiDequantTransformResidualAndAdd_H264_16s_C1I(p8, s16, &dc, nullptr, 4, 4, 99, 1); }, huxErrNullPtr},
      {"and-add qp before coef", [](Guarded& g) { return huxiDequantTransformResidualAndAdd_H264_16s_C1I(p8, nullptr, nullptr, g.data(), 4, 4, 52, 1); }, huxErrOutOfRange},
      {"and-add null coef, AC", [](Guarded& g) { return huxiDequantTransformResidualAndAdd_H264_16s_C1I(p8, nullptr, &dc, g.data(), 4, 4, 51, 1); }, huxErrNullPtr},
      {"and-add null coef, no DC", [](Guarded& g) { return huxiDequantTransformResidualAndAdd_H264_16s_C1I(p8, nullptr, nullptr, g.data(), 4, 4, 51, 0); }, huxErrNullPtr},
      {"luma dc qp 52", [=](Guarded& g) { return huxiTransformDequantLumaDC_H264_16s_C1I(i16(g), 52); }, huxErrOutOfRange},
      {"chroma dc qp -1", [=](Guarded& g) { return huxiTransformDequantChromaDC_H264_16s_C1I(i16(g), -1); }, huxErrOutOfRange},
      {"chroma dc sisp null", [=](Guarded& g) { return huxiTransformDequantChromaDC_SISP_H264_16s_C1I(i16(g), nullptr, 0, 0, 0); }, huxErrNullPtr},
      {"inv luma dc 16s qp 52", [=](Guarded& g) { return huxiTransformQuantInvLumaDC4x4_H264_16s_C1I(i16(g), 52, nullptr); }, huxErrOutOfRange},
      {"inv luma dc 32s qp 88", [=](Guarded& g) { return huxiTransformQuantInvLumaDC4x4_H264_32s_C1I(i32(g), 88, nullptr); }, huxErrOutOfRange},
      {"inv luma dc 32s qp 87", [=](Guarded& g) { return huxiTransformQuantInvLumaDC4x4_H264_32s_C1I(i32(g), 87, nullptr); }, huxOk},
      {"2x2 16s qp 39", [=](Guarded& g) { return huxiTransformQuantInvChromaDC2x2_H264_16s_C1I(i16(g), 39, nullptr); }, huxOk},
      {"2x2 16s qp 40", [=](Guarded& g) { return huxiTransformQuantInvChromaDC2x2_H264_16s_C1I(i16(g), 40, nullptr); }, huxErrOutOfRange},
      {"2x2 32s qp 75", [=](Guarded& g) { return huxiTransformQuantInvChromaDC2x2_H264_32s_C1I(i32(g), 75, nullptr); }, huxOk},
      {"2x2 32s qp 76", [=](Guarded& g) { return huxiTransformQuantInvChromaDC2x2_H264_32s_C1I(i32(g), 76, nullptr); }, huxErrOutOfRange},
      {"2x4 16s qp 40", [=](Guarded& g) { return huxiTransformQuantInvChromaDC2x4_H264_16s_C1I(i16(g), 40, nullptr); }, huxErrOutOfRange},
      {"2x4 32s qp -1", [=](Guarded& g) { return huxiTransformQuantInvChromaDC2x4_H264_32s_C1I(i32(g), -1, nullptr); }, huxErrOutOfRange},
      {"add-pred 16s null coef", [](Guarded& g) { return huxiTransformQuantInvAddPred4x4_H264_16s_C1IR(p8, 4, nullptr, nullptr, g.data(), 4, 99, 1, nullptr); }, huxErrNullPtr},
      {"add-pred 16s qp 52", [](Guarded& g) { return huxiTransformQuantInvAddPred4x4_H264_16s_C1IR(p8, 4, s16, nullptr, g.data(), 4, 52, 1, nullptr); }, huxErrOutOfRange},
      {"add-pred 32s null pred", [](Guarded& g) { return huxiTransformQuantInvAddPred4x4_H264_32s_C1IR(nullptr, 8, s32, nullptr, g.as<uint16_t>(), 8, 99, 1, 8, nullptr); }, huxErrNullPtr},
      {"add-pred 32s qp 88", [](Guarded& g) { return huxiTransformQuantInvAddPred4x4_H264_32s_C1IR(p16, 8, s32, nullptr, g.as<uint16_t>(), 8, 88, 1, 10, nullptr); }, huxErrOutOfRange},
      {"add-pred 32s depth 8", [](Guarded& g) { return huxiTransformQuantInvAddPred4x4_H264_32s_C1IR(p16, 8, s32, nullptr, g.as<uint16_t>(), 8, 87, 1, 8, nullptr); }, huxErrOutOfRange},
      {"add-pred 32s depth 15", [](Guarded& g) { return huxiTransformQuantInvAddPred4x4_H264_32s_C1IR(p16, 8, s32, nullptr, g.as<uint16_t>(), 8, 0, 1, 15, nullptr); }, huxErrOutOfRange},
      {"8x8 dequant null scale", [=](Guarded& g) { return huxiQuantLuma8x8Inv_H264_16s_C1I(i16(g), 99, nullptr); }, huxErrNullPtr},
      {"8x8 dequant qp6 9", [=](Guarded& g) { return huxiQuantLuma8x8Inv_H264_16s_C1I(i16(g), 9, s16); }, huxErrQuantParam},
      {"8x8 dequant qp6 -1", [=](Guarded& g) { return huxiQuantLuma8x8Inv_H264_16s_C1I(i16(g), -1, s16); }, huxErrQuantParam},
      {"8x8 dequant 32s qp6 15", [=](Guarded& g) { return huxiQuantInvLuma8x8_H264_32s_C1I(i32(g), 15, s16); }, huxErrQuantParam},
      {"8x8 dequant 32s qp6 14", [=](Guarded& g) { return huxiQuantInvLuma8x8_H264_32s_C1I(i32(g), 14, s16); }, huxOk},
      {"8x8 add null coef", [](Guarded& g) { return huxiTransformLuma8x8InvAddPred_H264_16s8u_C1R(p8, 8, nullptr, g.data(), 8); }, huxErrNullPtr},
      {"8x8 hbd null pred", [](Guarded& g) { return huxiTransformInvAddPredLuma8x8_H264_32s16u_C1R(nullptr, 16, s32, g.as<uint16_t>(), 16, 10); }, huxErrNullPtr},
      {"bare 16s null dst", [](Guarded&) { return huxiTransformResidual4x4Inv_H264_16s_C1(s16, nullptr); }, huxErrNullPtr},
      {"bare 32s null src", [](Guarded& g) { return huxiTransformResidual4x4Inv_H264_32s_C1(nullptr, g.as<int32_t>()); }, huxErrNullPtr},
  };
}

class TransformChecks : public ::testing::TestWithParam<CheckCase> {};
TEST_P(TransformChecks, StatusAndNothingWrittenOnFailure) {
  const CheckCase& c = GetParam();
  Guarded g(512);
  for (size_t i = 0; i < g.size(); ++i) g.data()[i] = static_cast<uint8_t>(i * 7 + 1);
  const auto before = g.snapshot();
  EXPECT_EQ(c.call(g), c.expect);
  EXPECT_TRUE(g.intact());
  if (c.expect != huxOk) {
    EXPECT_EQ(g.snapshot(), before);
  }
}
INSTANTIATE_TEST_SUITE_P(All, TransformChecks, ::testing::ValuesIn(check_cases()),
                         [](const ::testing::TestParamInfo<CheckCase>& p) {
                           std::string n = p.param.name;
                           for (auto& ch : n)
                             if (!isalnum(static_cast<unsigned char>(ch))) ch = '_';
                           return n;
                         });

}  // namespace
