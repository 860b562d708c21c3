// SSE2 dequantisation and inverse-transform kernels against their reference
// twins: seeded random blocks that reach the 16-bit wrap and saturation bounds,
// exact-sized heap buffers at every alignment, odd and negative row steps.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <random>

#include "h264/transform_kernels.h"
#include "support/test_util.h"

#if defined(HUX_SSE2) && HUX_SSE2

namespace {

namespace ref = hux::h264::ref;
namespace sse2 = hux::h264::sse2;
using hux::test::Exact;
using hux::test::Rng;
using hux::test::Rows;

// Values drawn to reach the bounds: small, full range, extremes, sparse.
template <class T>
T draw(Rng& rng, int mode) {
  static const int32_t kEdge16[] = {-32768, -32767, -16384, -1, 0, 1, 16383, 16384, 32766, 32767};
  static const int32_t kEdge32[] = {INT32_MIN, INT32_MIN + 1, -(1 << 26), -1, 0, 1, 1 << 26, INT32_MAX - 1, INT32_MAX};
  const bool w = sizeof(T) == 4;
  switch (mode) {
    case 0: return static_cast<T>(std::uniform_int_distribution<int>(w ? -5000 : -300, w ? 5000 : 300)(rng));
    case 1: return static_cast<T>(rng());
    case 2: return static_cast<T>(w ? kEdge32[rng() % 9] : kEdge16[rng() % 10]);
    default: return (rng() & 3) ? T(0) : static_cast<T>(rng());
  }
}
template <class T>
const T* fill(Rng& rng, uint8_t* p, int n) {
  const int mode = static_cast<int>(rng() % 4);
  for (int i = 0; i < n; ++i) {
    const T v = draw<T>(rng, mode);
    std::memcpy(p + sizeof(T) * i, &v, sizeof(T));
  }
  return reinterpret_cast<const T*>(p);
}
void fill_samples(Rng& rng, Rows& r, int h, int w, int32_t step, int32_t maxv) {
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x) {
      const uint16_t v = static_cast<uint16_t>(std::uniform_int_distribution<int32_t>(0, maxv)(rng));
      std::memcpy(r.first + static_cast<ptrdiff_t>(step) * y + 2 * x, &v, 2);
    }
}
template <size_t N>
int32_t pick(Rng& rng, const int32_t (&a)[N]) { return a[rng() % N]; }

const int32_t kSteps8[] = {4, 5, 7, 16, 33, -4, -9, -32};   // 4-wide 8-bit rows
const int32_t kSteps8w[] = {8, 9, 15, 24, -8, -13, -64};    // 8-wide 8-bit rows
const int32_t kSteps16[] = {8, 9, 11, 16, 26, 40, 33};      // 4-wide 16-bit coefficient rows (export needs >= 8)
const int32_t kSteps16u[] = {8, 9, 16, 18, -8, -11, -40};   // 4-wide 16-bit samples
const int32_t kSteps16u8[] = {16, 17, 32, 34, -16, -19};    // 8-wide 16-bit samples

TEST(TransformDiff, DequantTransformResidualInPlace) {
  Rng rng(101);
  for (int it = 0; it < 6000; ++it) {
    const int qp = it % 52;
    const int32_t step = pick(rng, kSteps16);
    const size_t mis = rng() % 16;
    Rows a(4, 8, step, mis), b(4, 8, step, mis);
    for (int y = 0; y < 4; ++y) fill<int16_t>(rng, a.first + y * step, 4);
    b.buf.copy_from(a.buf);
    const int16_t dc = draw<int16_t>(rng, static_cast<int>(rng() % 3));
    const int16_t* pDC = (rng() & 1) ? &dc : nullptr;
    const int32_t ac = (rng() % 5) ? static_cast<int32_t>(rng() % 3) : 0;
    ref::dequant_transform_residual(a.as<int16_t>(), step, pDC, ac, qp);
    sse2::dequant_transform_residual(b.as<int16_t>(), step, pDC, ac, qp);
    ASSERT_EQ(a.buf.bytes(), b.buf.bytes()) << "it " << it << " qp " << qp << " step " << step;
  }
}

// Both 8-bit prediction-adding 4x4 forms.
TEST(TransformDiff, AddPred4x4) {
  Rng rng(102);
  for (int it = 0; it < 12000; ++it) {
    const int qp = it % 52;
    const int32_t sp = pick(rng, kSteps8), sd = pick(rng, kSteps8);
    Rows pred(4, 4, sp, rng() % 16), d0(4, 4, sd, rng() % 16), d1(4, 4, sd, 0);
    pred.buf.randomize(rng);
    Exact coef(32, 2 * (rng() % 8)), scale(32, 2 * (rng() % 8));
    const int16_t* c = fill<int16_t>(rng, coef.data(), 16);
    fill<int16_t>(rng, scale.data(), 16);
    if (rng() & 1)  // realistic LevelScale values as often as wild ones
      for (int i = 0; i < 16; ++i) {
        const int16_t s = static_cast<int16_t>(16 * (1 + rng() % 255));
        std::memcpy(scale.data() + 2 * i, &s, 2);
      }
    const int16_t dc = draw<int16_t>(rng, static_cast<int>(rng() % 3));
    const int16_t* pDC = (rng() & 1) ? &dc : nullptr;
    const int32_t ac = (rng() % 5) ? 1 : 0;
    const auto* s = (rng() & 3) ? reinterpret_cast<const int16_t*>(scale.data()) : nullptr;
    if (it & 1) {
      ref::quant_inv_add_pred4x4(pred.first, sp, c, pDC, d0.first, sd, qp, ac, s);
      sse2::quant_inv_add_pred4x4(pred.first, sp, c, pDC, d1.first, sd, qp, ac, s);
    } else {
      ref::dequant_transform_residual_add(pred.first, sp, c, pDC, d0.first, sd, qp, ac);
      sse2::dequant_transform_residual_add(pred.first, sp, c, pDC, d1.first, sd, qp, ac);
    }
    ASSERT_EQ(d0.buf.bytes(), d1.buf.bytes()) << "it " << it << " qp " << qp;
  }
}

TEST(TransformDiff, AddPred4x4HighBitDepth) {
  Rng rng(103);
  for (int it = 0; it < 8000; ++it) {
    const int qp = it % 88, bd = 9 + static_cast<int>(rng() % 6);
    const int32_t sp = pick(rng, kSteps16u), sd = pick(rng, kSteps16u);
    Rows pred(4, 8, sp, rng() % 16), d0(4, 8, sd, rng() % 16), d1(4, 8, sd, 4);
    fill_samples(rng, pred, 4, 4, sp, (1 << bd) - 1);
    Exact coef(64, 4 * (rng() % 4)), scale(32, 2 * (rng() % 8));
    const int32_t* c = fill<int32_t>(rng, coef.data(), 16);
    fill<int16_t>(rng, scale.data(), 16);
    const int32_t dc = draw<int32_t>(rng, static_cast<int>(rng() % 3));
    const int32_t* pDC = (rng() & 1) ? &dc : nullptr;
    const int32_t ac = (rng() % 5) ? 1 : 0;
    const auto* s = (rng() & 1) ? reinterpret_cast<const int16_t*>(scale.data()) : nullptr;
    ref::quant_inv_add_pred4x4_hbd(pred.as<uint16_t>(), sp, c, pDC, d0.as<uint16_t>(), sd, qp, ac, bd, s);
    sse2::quant_inv_add_pred4x4_hbd(pred.as<uint16_t>(), sp, c, pDC, d1.as<uint16_t>(), sd, qp, ac, bd, s);
    ASSERT_EQ(d0.buf.bytes(), d1.buf.bytes()) << "it " << it << " qp " << qp;
  }
}

TEST(TransformDiff, BareInverse4x4) {
  Rng rng(104);
  for (int it = 0; it < 6000; ++it) {
    Exact src(32, 2 * (rng() % 8)), d0(32, 2 * (rng() % 8)), d1(32, 6);
    const int16_t* s = fill<int16_t>(rng, src.data(), 16);
    ref::transform_residual4x4(s, reinterpret_cast<int16_t*>(d0.data()));
    sse2::transform_residual4x4(s, reinterpret_cast<int16_t*>(d1.data()));
    ASSERT_EQ(d0.bytes(), d1.bytes()) << it;
    Exact s32(64, 4 * (rng() % 4)), e0(64, 4), e1(64, 8);
    const int32_t* w = fill<int32_t>(rng, s32.data(), 16);
    ref::transform_residual4x4_32(w, reinterpret_cast<int32_t*>(e0.data()));
    sse2::transform_residual4x4_32(w, reinterpret_cast<int32_t*>(e1.data()));
    ASSERT_EQ(e0.bytes(), e1.bytes()) << it;
  }
}

// The aligned and the unaligned paths of the 8x8 dequantiser agree with the
// reference and with each other.
TEST(TransformDiff, Dequant8x8AlignedAndUnaligned) {
  Rng rng(105);
  for (int it = 0; it < 4000; ++it) {
    const int q6 = it % 9;
    Exact blk(128, 0), scale(128, 0), ublk(128, 2 * (1 + rng() % 7)), uscale(128, 2 * (rng() % 8));
    fill<int16_t>(rng, blk.data(), 64);
    const int16_t* s = fill<int16_t>(rng, scale.data(), 64);
    ublk.copy_from(blk);
    uscale.copy_from(scale);
    std::vector<uint8_t> want = blk.bytes();
    ref::dequant_luma8x8(reinterpret_cast<int16_t*>(want.data()), q6, s);
    sse2::dequant_luma8x8(reinterpret_cast<int16_t*>(blk.data()), q6, s);
    sse2::dequant_luma8x8(reinterpret_cast<int16_t*>(ublk.data()), q6, reinterpret_cast<const int16_t*>(uscale.data()));
    ASSERT_EQ(blk.bytes(), want) << "aligned, it " << it;
    ASSERT_EQ(ublk.bytes(), want) << "unaligned, it " << it;
  }
}

TEST(TransformDiff, Inverse8x8AddPred) {
  Rng rng(106);
  for (int it = 0; it < 6000; ++it) {
    const int32_t sp = pick(rng, kSteps8w), sd = pick(rng, kSteps8w);
    Rows pred(8, 8, sp, rng() % 16), d0(8, 8, sd, rng() % 16), d1(8, 8, sd, 3);
    pred.buf.randomize(rng);
    Exact coef(128, 2 * (rng() % 8));
    const int16_t* c = fill<int16_t>(rng, coef.data(), 64);
    ref::idct8x8_add(pred.first, sp, c, d0.first, sd);
    sse2::idct8x8_add(pred.first, sp, c, d1.first, sd);
    ASSERT_EQ(d0.buf.bytes(), d1.buf.bytes()) << it;
  }
}

TEST(TransformDiff, Inverse8x8AddPredHighBitDepth) {
  Rng rng(107);
  for (int it = 0; it < 4000; ++it) {
    const int bd = 1 + static_cast<int>(rng() % 16);
    const int32_t maxv = hux::h264::sample_max(bd);
    const int32_t sp = pick(rng, kSteps16u8), sd = pick(rng, kSteps16u8);
    Rows pred(8, 16, sp, rng() % 16), d0(8, 16, sd, rng() % 16), d1(8, 16, sd, 2);
    fill_samples(rng, pred, 8, 8, sp, (rng() & 1) ? maxv : 65535);
    Exact coef(256, 4 * (rng() % 4));
    const int32_t* c = fill<int32_t>(rng, coef.data(), 64);
    ref::idct8x8_add_hbd(pred.as<uint16_t>(), sp, c, d0.as<uint16_t>(), sd, maxv);
    sse2::idct8x8_add_hbd(pred.as<uint16_t>(), sp, c, d1.as<uint16_t>(), sd, maxv);
    ASSERT_EQ(d0.buf.bytes(), d1.buf.bytes()) << it;
  }
}

TEST(TransformDiff, LumaDCHadamard) {
  Rng rng(108);
  for (int it = 0; it < 6000; ++it) {
    Exact a(32, 2 * (rng() % 8)), b(32, 2 * (rng() % 8));
    fill<int16_t>(rng, a.data(), 16);
    b.copy_from(a);
    ref::luma_dc_dequant(reinterpret_cast<int16_t*>(a.data()), it % 52);
    sse2::luma_dc_dequant(reinterpret_cast<int16_t*>(b.data()), it % 52);
    ASSERT_EQ(a.bytes(), b.bytes()) << it;
  }
}

}  // namespace

#endif
