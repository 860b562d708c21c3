// SSE2 dequantisation and inverse-transform kernels against their reference
// twins: seeded random blocks that reach the 16-bit wrap and saturation bounds,
// exact-sized heap buffers at every alignment, odd and negative row steps.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <new>
#include <random>
#include <vector>

#include "h264/transform_kernels.h"
#include "support/test_util.h"

#if defined(HUX_SSE2) && HUX_SSE2

namespace {

namespace ref = hux::h264::ref;
namespace sse2 = hux::h264::sse2;
using hux::test::Rng;

// A heap block of exactly the bytes a kernel may touch, starting `mis` bytes
// past a 64-byte boundary, so any read beyond it is an ASan report.
class Exact {
 public:
  Exact(size_t bytes, size_t mis) : size_(bytes + mis) {
    base_ = static_cast<uint8_t*>(::operator new(size_, std::align_val_t{64}));
    data_ = base_ + mis;
    std::memset(base_, 0x5A, size_);
  }
  ~Exact() { ::operator delete(base_, std::align_val_t{64}); }
  Exact(const Exact&) = delete;
  Exact& operator=(const Exact&) = delete;
  uint8_t* data() { return data_; }
  std::vector<uint8_t> bytes() const { return {data_, base_ + size_}; }

 private:
  size_t size_;
  uint8_t* base_;
  uint8_t* data_;
};

// A block of `h` rows of `wb` bytes with a byte step (odd or negative allowed):
// `first` is row 0, wherever the step puts it.
struct Region {
  Region(int h, int wb, int32_t step, size_t mis)
      : buf(static_cast<size_t>((h - 1) * std::abs(step) + wb), mis),
        first(buf.data() + (step < 0 ? (h - 1) * static_cast<ptrdiff_t>(-step) : 0)) {}
  Exact buf;
  uint8_t* first;
};

// 16-bit values drawn to reach the bounds: small, full range, extremes, sparse.
int16_t draw16(Rng& rng, int mode) {
  static const int16_t kEdge[] = {-32768, -32767, -16384, -1, 0, 1, 16383, 16384, 32766, 32767};
  switch (mode) {
    case 0: return static_cast<int16_t>(std::uniform_int_distribution<int>(-300, 300)(rng));
    case 1: return static_cast<int16_t>(std::uniform_int_distribution<int>(-32768, 32767)(rng));
    case 2: return kEdge[rng() % 10];
    default: return (rng() & 3) ? 0 : static_cast<int16_t>(std::uniform_int_distribution<int>(-32768, 32767)(rng));
  }
}
int32_t draw32(Rng& rng, int mode) {
  static const int32_t kEdge[] = {INT32_MIN, INT32_MIN + 1, -(1 << 26), -1, 0, 1, 1 << 26, INT32_MAX - 1, INT32_MAX};
  switch (mode) {
    case 0: return std::uniform_int_distribution<int32_t>(-5000, 5000)(rng);
    case 1: return static_cast<int32_t>(rng());
    case 2: return kEdge[rng() % 9];
    default: return (rng() & 3) ? 0 : static_cast<int32_t>(rng());
  }
}
void fill16(Rng& rng, uint8_t* p, int n) {
  const int mode = static_cast<int>(rng() % 4);
  for (int i = 0; i < n; ++i) {
    const int16_t v = draw16(rng, mode);
    std::memcpy(p + 2 * i, &v, 2);
  }
}
void fill32(Rng& rng, uint8_t* p, int n) {
  const int mode = static_cast<int>(rng() % 4);
  for (int i = 0; i < n; ++i) {
    const int32_t v = draw32(rng, mode);
    std::memcpy(p + 4 * i, &v, 4);
  }
}
void fill_bytes(Rng& rng, uint8_t* p, size_t n) {
  for (size_t i = 0; i < n; ++i) p[i] = static_cast<uint8_t>(rng());
}
template <class T>
void fill_samples(Rng& rng, Region& r, int h, int w, int32_t step, int32_t maxv) {
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x) {
      const T v = static_cast<T>(std::uniform_int_distribution<int32_t>(0, maxv)(rng));
      std::memcpy(r.first + static_cast<ptrdiff_t>(step) * y + sizeof(T) * x, &v, sizeof(T));
    }
}

const int32_t kSteps8[] = {4, 5, 7, 16, 33, -4, -9, -32};   // 4-wide 8-bit rows
const int32_t kSteps8w[] = {8, 9, 15, 24, -8, -13, -64};    // 8-wide 8-bit rows
const int32_t kSteps16[] = {8, 9, 11, 16, 26, 40, 33};      // 4-wide 16-bit coefficient rows (export needs >= 8)
const int32_t kSteps16u[] = {8, 9, 16, 18, -8, -11, -40};   // 4-wide 16-bit samples
const int32_t kSteps16u8[] = {16, 17, 32, 34, -16, -19};    // 8-wide 16-bit samples

struct Stepped {
  int32_t pred, dst;
};

TEST(TransformDiff, DequantTransformResidualInPlace) {
  Rng rng(101);
  for (int it = 0; it < 6000; ++it) {
    const int qp = it % 52;
    const int32_t step = kSteps16[rng() % 7];
    const size_t mis = rng() % 16;
    Region a(4, 8, step, mis), b(4, 8, step, mis);
    for (int y = 0; y < 4; ++y) fill16(rng, a.first + y * step, 4);
    std::memcpy(b.buf.data(), a.buf.data(), a.buf.bytes().size());
    const int16_t dc = draw16(rng, static_cast<int>(rng() % 3));
    const int16_t* pDC = (rng() & 1) ? &dc : nullptr;
    const int32_t ac = (rng() % 5) ? static_cast<int32_t>(rng() % 3) : 0;
    ref::dequant_transform_residual(reinterpret_cast<int16_t*>(a.first), step, pDC, ac, qp);
    sse2::dequant_transform_residual(reinterpret_cast<int16_t*>(b.first), step, pDC, ac, qp);
    ASSERT_EQ(a.buf.bytes(), b.buf.bytes()) << "it " << it << " qp " << qp << " step " << step;
  }
}

// Both 8-bit prediction-adding 4x4 forms.
TEST(TransformDiff, AddPred4x4) {
  Rng rng(102);
  for (int it = 0; it < 12000; ++it) {
    const int qp = it % 52;
    const Stepped st{kSteps8[rng() % 8], kSteps8[rng() % 8]};
    Region pred(4, 4, st.pred, rng() % 16), d0(4, 4, st.dst, rng() % 16), d1(4, 4, st.dst, 0);
    fill_bytes(rng, pred.buf.data(), pred.buf.bytes().size());
    Exact coef(32, 2 * (rng() % 8)), scale(32, 2 * (rng() % 8));
    fill16(rng, coef.data(), 16);
    fill16(rng, scale.data(), 16);
    if (rng() & 1)  // realistic LevelScale values as often as wild ones
      for (int i = 0; i < 16; ++i) {
        const int16_t s = static_cast<int16_t>(16 * (1 + rng() % 255));
        std::memcpy(scale.data() + 2 * i, &s, 2);
      }
    const int16_t dc = draw16(rng, static_cast<int>(rng() % 3));
    const int16_t* pDC = (rng() & 1) ? &dc : nullptr;
    const int32_t ac = (rng() % 5) ? 1 : 0;
    const auto* c = reinterpret_cast<const int16_t*>(coef.data());
    const auto* s = (rng() & 3) ? reinterpret_cast<const int16_t*>(scale.data()) : nullptr;
    if (it & 1) {
      ref::quant_inv_add_pred4x4(pred.first, st.pred, c, pDC, d0.first, st.dst, qp, ac, s);
      sse2::quant_inv_add_pred4x4(pred.first, st.pred, c, pDC, d1.first, st.dst, qp, ac, s);
    } else {
      ref::dequant_transform_residual_add(pred.first, st.pred, c, pDC, d0.first, st.dst, qp, ac);
      sse2::dequant_transform_residual_add(pred.first, st.pred, c, pDC, d1.first, st.dst, qp, ac);
    }
    ASSERT_EQ(d0.buf.bytes(), d1.buf.bytes()) << "it " << it << " qp " << qp;
  }
}

TEST(TransformDiff, AddPred4x4HighBitDepth) {
  Rng rng(103);
  for (int it = 0; it < 8000; ++it) {
    const int qp = it % 88, bd = 9 + static_cast<int>(rng() % 6);
    const Stepped st{kSteps16u[rng() % 7], kSteps16u[rng() % 7]};
    Region pred(4, 8, st.pred, rng() % 16), d0(4, 8, st.dst, rng() % 16), d1(4, 8, st.dst, 4);
    fill_samples<uint16_t>(rng, pred, 4, 4, st.pred, (1 << bd) - 1);
    Exact coef(64, 4 * (rng() % 4)), scale(32, 2 * (rng() % 8));
    fill32(rng, coef.data(), 16);
    fill16(rng, scale.data(), 16);
    const int32_t dc = draw32(rng, static_cast<int>(rng() % 3));
    const int32_t* pDC = (rng() & 1) ? &dc : nullptr;
    const int32_t ac = (rng() % 5) ? 1 : 0;
    const auto* s = (rng() & 1) ? reinterpret_cast<const int16_t*>(scale.data()) : nullptr;
    const auto* c = reinterpret_cast<const int32_t*>(coef.data());
    ref::quant_inv_add_pred4x4_hbd(reinterpret_cast<const uint16_t*>(pred.first), st.pred, c, pDC,
                                   reinterpret_cast<uint16_t*>(d0.first), st.dst, qp, ac, bd, s);
    sse2::quant_inv_add_pred4x4_hbd(reinterpret_cast<const uint16_t*>(pred.first), st.pred, c, pDC,
                                    reinterpret_cast<uint16_t*>(d1.first), st.dst, qp, ac, bd, s);
    ASSERT_EQ(d0.buf.bytes(), d1.buf.bytes()) << "it " << it << " qp " << qp;
  }
}

TEST(TransformDiff, BareInverse4x4) {
  Rng rng(104);
  for (int it = 0; it < 6000; ++it) {
    Exact src(32, 2 * (rng() % 8)), d0(32, 2 * (rng() % 8)), d1(32, 6);
    fill16(rng, src.data(), 16);
    ref::transform_residual4x4(reinterpret_cast<const int16_t*>(src.data()), reinterpret_cast<int16_t*>(d0.data()));
    sse2::transform_residual4x4(reinterpret_cast<const int16_t*>(src.data()), reinterpret_cast<int16_t*>(d1.data()));
    ASSERT_EQ(d0.bytes(), d1.bytes()) << it;
    Exact s32(64, 4 * (rng() % 4)), e0(64, 4), e1(64, 8);
    fill32(rng, s32.data(), 16);
    ref::transform_residual4x4_32(reinterpret_cast<const int32_t*>(s32.data()), reinterpret_cast<int32_t*>(e0.data()));
    sse2::transform_residual4x4_32(reinterpret_cast<const int32_t*>(s32.data()), reinterpret_cast<int32_t*>(e1.data()));
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
    fill16(rng, blk.data(), 64);
    fill16(rng, scale.data(), 64);
    std::memcpy(ublk.data(), blk.data(), 128);
    std::memcpy(uscale.data(), scale.data(), 128);
    std::vector<uint8_t> want = blk.bytes();
    ref::dequant_luma8x8(reinterpret_cast<int16_t*>(want.data()), q6, reinterpret_cast<const int16_t*>(scale.data()));
    sse2::dequant_luma8x8(reinterpret_cast<int16_t*>(blk.data()), q6, reinterpret_cast<const int16_t*>(scale.data()));
    sse2::dequant_luma8x8(reinterpret_cast<int16_t*>(ublk.data()), q6, reinterpret_cast<const int16_t*>(uscale.data()));
    ASSERT_EQ(blk.bytes(), want) << "aligned, it " << it;
    ASSERT_EQ(ublk.bytes(), want) << "unaligned, it " << it;
  }
}

TEST(TransformDiff, Inverse8x8AddPred) {
  Rng rng(106);
  for (int it = 0; it < 6000; ++it) {
    const Stepped st{kSteps8w[rng() % 7], kSteps8w[rng() % 7]};
    Region pred(8, 8, st.pred, rng() % 16), d0(8, 8, st.dst, rng() % 16), d1(8, 8, st.dst, 3);
    fill_bytes(rng, pred.buf.data(), pred.buf.bytes().size());
    Exact coef(128, 2 * (rng() % 8));
    fill16(rng, coef.data(), 64);
    const auto* c = reinterpret_cast<const int16_t*>(coef.data());
    ref::idct8x8_add(pred.first, st.pred, c, d0.first, st.dst);
    sse2::idct8x8_add(pred.first, st.pred, c, d1.first, st.dst);
    ASSERT_EQ(d0.buf.bytes(), d1.buf.bytes()) << it;
  }
}

TEST(TransformDiff, Inverse8x8AddPredHighBitDepth) {
  Rng rng(107);
  for (int it = 0; it < 4000; ++it) {
    const int bd = 1 + static_cast<int>(rng() % 16);
    const int32_t maxv = hux::h264::sample_max(bd);
    const Stepped st{kSteps16u8[rng() % 6], kSteps16u8[rng() % 6]};
    Region pred(8, 16, st.pred, rng() % 16), d0(8, 16, st.dst, rng() % 16), d1(8, 16, st.dst, 2);
    fill_samples<uint16_t>(rng, pred, 8, 8, st.pred, (rng() & 1) ? maxv : 65535);
    Exact coef(256, 4 * (rng() % 4));
    fill32(rng, coef.data(), 64);
    const auto* c = reinterpret_cast<const int32_t*>(coef.data());
    ref::idct8x8_add_hbd(reinterpret_cast<const uint16_t*>(pred.first), st.pred, c,
                         reinterpret_cast<uint16_t*>(d0.first), st.dst, maxv);
    sse2::idct8x8_add_hbd(reinterpret_cast<const uint16_t*>(pred.first), st.pred, c,
                          reinterpret_cast<uint16_t*>(d1.first), st.dst, maxv);
    ASSERT_EQ(d0.buf.bytes(), d1.buf.bytes()) << it;
  }
}

TEST(TransformDiff, LumaDCHadamard) {
  Rng rng(108);
  for (int it = 0; it < 6000; ++it) {
    const int qp = it % 52;
    Exact a(32, 2 * (rng() % 8)), b(32, 2 * (rng() % 8));
    fill16(rng, a.data(), 16);
    std::memcpy(b.data(), a.data(), 32);
    ref::luma_dc_dequant(reinterpret_cast<int16_t*>(a.data()), qp);
    sse2::luma_dc_dequant(reinterpret_cast<int16_t*>(b.data()), qp);
    ASSERT_EQ(a.bytes(), b.bytes()) << it;
  }
}

}  // namespace

#endif
