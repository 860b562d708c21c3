// Behaviour of the SAD exports: pointer checks, selector handling, the
// half-sample rounding, the 16-bit wrap and step rules, candidate lines.
#include <gtest/gtest.h>

#include <numeric>
#include <vector>

#include "huxvc.h"
#include "support/test_util.h"

namespace {

using hux::test::Rng;

// Every checked pointer of every export, one at a time null: -8, and nothing
// written (the outputs here would be overwritten by any write).
TEST(SadExports, EveryCheckedPointerNullGivesNullPtrStatus) {
  using hux::test::expect_null_checks;
  std::vector<uint8_t> b8(64 * 64, 1);
  std::vector<uint16_t> b16(64 * 64, 1);
  std::vector<int16_t> d16(64 * 64, 1);
  uint16_t o16[64] = {};
  uint32_t o32[16] = {}, idx = 0;
  int32_t o = 0, o2 = 0;
  const uint8_t* p8 = b8.data();
  const uint16_t* p16 = b16.data();
  int n = 0;
  for (auto f : {huxiSAD16x16_8u32s, huxiSAD16x8_8u32s_C1R, huxiSAD8x8_8u32s_C1R, huxiSAD8x16_8u32s_C1R,
                 huxiSAD8x4_8u32s_C1R, huxiSAD4x8_8u32s_C1R, huxiSAD4x4_8u32s})
    n += expect_null_checks("SAD 8u", huxErrNullPtr, {}, f, p8, 64, p8, 64, &o, 0);
  for (auto f : {huxiSAD16x16_16u32s_C1R, huxiSAD8x8_16u32s_C1R, huxiSAD4x4_16u32s_C1R})
    n += expect_null_checks("SAD 16u", huxErrNullPtr, {}, f, p16, 128, p16, 128, &o, 4);
  for (auto f : {huxiSAD16x16Blocks8x8_8u16u, huxiSAD16x16Blocks4x4_8u16u})
    n += expect_null_checks("Blocks 8u", huxErrNullPtr, {}, f, p8, 64, p8, 64, o16, 0);
  for (auto f : {huxiSAD16x16Blocks8x8_16u32u_C1R, huxiSAD16x16Blocks4x4_16u32u_C1R})
    n += expect_null_checks("Blocks 16u", huxErrNullPtr, {}, f, p16, 128, p16, 128, o32, 0);
  // A count of 0 as well: the pointers are checked before the count.
  for (auto f : {huxiSAD16x16xN_8u16u_C1R, huxiSAD8x8xN_8u16u_C1R, huxiSAD4x4xN_8u16u_C1R, huxiSAD2x2xN_8u16u_C1R})
    n += expect_null_checks("xN", huxErrNullPtr, {}, f, p8, 64, p8, 64, o16, 0);
  for (auto f : {huxiSAD16x16xNI_8u16u_C1R, huxiSAD8x8xNI_8u16u_C1R, huxiSAD4x4xNI_8u16u_C1R})
    n += expect_null_checks("xNI", huxErrNullPtr, {}, f, p8, 64, p8, 64, o16, 0, &idx);
  n += expect_null_checks("FrameField 8u", huxErrNullPtr, {}, huxiFrameFieldSAD16x16_8u32s_C1R, p8, 64, &o, &o2);
  n += expect_null_checks("FrameField 16s", huxErrNullPtr, {}, huxiFrameFieldSAD16x16_16s32s_C1R,
                          static_cast<const int16_t*>(d16.data()), 128, &o, &o2);
  n += expect_null_checks("SubSAD", huxErrNullPtr, {6}, huxiSubSAD8x8_8u16s_C1R, p8, 64, p8, 64, d16.data(), 32, &o);
  EXPECT_EQ(n, 7 * 3 + 3 * 3 + 4 * 3 + 4 * 3 + 3 * 4 + 2 * 3 + 3);
  EXPECT_EQ(o | o2 | idx, 0);
  for (auto v : o16) ASSERT_EQ(v, 0);
  for (auto v : o32) ASSERT_EQ(v, 0u);
  for (auto v : d16) ASSERT_EQ(v, 1);
}

TEST(SadExports, IntegerPositionOnKnownData) {
  std::vector<uint8_t> cur(32 * 32), ref(32 * 32);
  for (size_t i = 0; i < cur.size(); ++i) {
    cur[i] = static_cast<uint8_t>(10 + (i * 7) % 200);
    ref[i] = static_cast<uint8_t>(cur[i] + ((i & 1) ? 5 : -3));
  }
  struct Shape {
    HuxResult(HUX_STDCALL* f)(const uint8_t*, int32_t, const uint8_t*, int32_t, int32_t*, int32_t);
    int w, h;
  };
  for (auto s : {Shape{huxiSAD16x16_8u32s, 16, 16}, Shape{huxiSAD16x8_8u32s_C1R, 16, 8}, Shape{huxiSAD8x8_8u32s_C1R, 8, 8},
                 Shape{huxiSAD8x16_8u32s_C1R, 8, 16}, Shape{huxiSAD8x4_8u32s_C1R, 8, 4}, Shape{huxiSAD4x8_8u32s_C1R, 4, 8},
                 Shape{huxiSAD4x4_8u32s, 4, 4}}) {
    int32_t sad = -1;
    ASSERT_EQ(s.f(cur.data(), 32, ref.data(), 32, &sad, 0), huxOk);
    EXPECT_EQ(sad, s.w * s.h * 4) << s.w << "x" << s.h;  // every difference is 3 or 5, half of each
  }
}

// The four positions on a reference whose interpolated values need rounding:
// rows alternate 0/1 and columns alternate 0/1 so each average is a half.
TEST(SadExports, HalfSampleRoundingAndSelectorMasking) {
  std::vector<uint8_t> ref(17 * 17), zero(16 * 16, 0);
  for (int y = 0; y < 17; ++y)
    for (int x = 0; x < 17; ++x) ref[static_cast<size_t>(y * 17 + x)] = static_cast<uint8_t>(((x + y) & 1) * 3);
  // integer: half the samples are 3; vertical/horizontal: (0+3+1)>>1 = 2; diagonal: (0+3+3+0+2)>>2 = 2.
  const int32_t expect[4] = {128 * 3, 256 * 2, 256 * 2, 256 * 2};
  for (int32_t mc : {0, 1, 4, 5, 8, 11, 12, 13, 15}) {
    int32_t s16 = -1, s8 = -1, s168 = -1;
    ASSERT_EQ(huxiSAD16x16_8u32s(zero.data(), 16, ref.data(), 17, &s16, mc), huxOk);
    ASSERT_EQ(huxiSAD8x8_8u32s_C1R(zero.data(), 16, ref.data(), 17, &s8, mc), huxOk);
    ASSERT_EQ(huxiSAD16x8_8u32s_C1R(zero.data(), 16, ref.data(), 17, &s168, mc), huxOk);
    EXPECT_EQ(s16, expect[mc >> 2]) << mc;
    EXPECT_EQ(s8, expect[mc >> 2] / 4) << mc;
    EXPECT_EQ(s168, expect[mc >> 2] / 2) << mc;
  }
  // Shapes without half-sample forms ignore the selector.
  int32_t s = -1;
  ASSERT_EQ(huxiSAD8x16_8u32s_C1R(zero.data(), 16, ref.data(), 17, &s, 12), huxOk);
  EXPECT_EQ(s, 64 * 3);
}

TEST(SadExports, WordSamplesSaturateTheirInterpolation) {
  std::vector<uint16_t> cur(16 * 16, 0), ref(17 * 17, 65535);
  for (int mode = 0; mode < 4; ++mode) {
    int32_t a = -1, b = -1, c = -1;
    ASSERT_EQ(huxiSAD16x16_16u32s_C1R(cur.data(), 32, ref.data(), 34, &a, mode * 4), huxOk);
    ASSERT_EQ(huxiSAD8x8_16u32s_C1R(cur.data(), 32, ref.data(), 34, &b, mode * 4), huxOk);
    ASSERT_EQ(huxiSAD4x4_16u32s_C1R(cur.data(), 32, ref.data(), 34, &c, mode * 4), huxOk);
    const int32_t per = mode == 0 ? 65535 : (mode == 3 ? 16383 : 32767);
    EXPECT_EQ(a, 256 * per) << mode;
    EXPECT_EQ(b, 64 * per) << mode;
    EXPECT_EQ(c, 16 * per) << mode;
  }
}

TEST(SadExports, SubBlocksInRasterOrder) {
  std::vector<uint8_t> cur(16 * 16, 0), ref(16 * 16, 0);
  for (int y = 0; y < 16; ++y)
    for (int x = 0; x < 16; ++x) ref[static_cast<size_t>(y * 16 + x)] = static_cast<uint8_t>((y / 4) * 4 + x / 4 + 1);
  uint16_t b4[16], b8[4];
  ASSERT_EQ(huxiSAD16x16Blocks4x4_8u16u(cur.data(), 16, ref.data(), 16, b4, 0), huxOk);
  ASSERT_EQ(huxiSAD16x16Blocks8x8_8u16u(cur.data(), 16, ref.data(), 16, b8, 0), huxOk);
  for (int i = 0; i < 16; ++i) EXPECT_EQ(b4[i], 16 * (i + 1)) << i;
  const int q[4] = {0, 2, 8, 10};  // top-left 4x4 block of each quarter
  for (int i = 0; i < 4; ++i) EXPECT_EQ(b8[i], b4[q[i]] + b4[q[i] + 1] + b4[q[i] + 4] + b4[q[i] + 5]) << i;
}

TEST(SadExports, WordSubBlocksWrapDifferencesAndEvenTheSteps) {
  // 16 rows of 16 samples with a step of 34 bytes; the call passes 35.
  std::vector<uint16_t> cur(17 * 16, 0), ref(17 * 16, 0);
  cur[0] = 40000;                       // |40000 - 0| wraps to 25536
  ref[17 * 5 + 9] = 3;                  // row 5, column 9 under the evened step
  uint32_t b8[4], b4[16];
  ASSERT_EQ(huxiSAD16x16Blocks8x8_16u32u_C1R(cur.data(), 35, ref.data(), 35, b8, 0), huxOk);
  ASSERT_EQ(huxiSAD16x16Blocks4x4_16u32u_C1R(cur.data(), 35, ref.data(), 35, b4, 0), huxOk);
  EXPECT_EQ(b8[0], 25536u);
  EXPECT_EQ(b8[1], 3u);
  EXPECT_EQ(b8[2] + b8[3], 0u);
  EXPECT_EQ(b4[0], 25536u);
  EXPECT_EQ(b4[6], 3u);
  cur[1] = 32768;  // -32768 after the wrap: magnitude 32768
  ASSERT_EQ(huxiSAD16x16Blocks4x4_16u32u_C1R(cur.data(), 34, ref.data(), 34, b4, 0), huxOk);
  EXPECT_EQ(b4[0], 25536u + 32768u);
}

struct LineCase {
  int32_t n;
  HuxResult status;
  int computed;
};

class SadLineCounts : public ::testing::TestWithParam<LineCase> {};

TEST_P(SadLineCounts, CountRoundedDownToEight) {
  const auto c = GetParam();
  Rng rng(9);
  auto cur = hux::test::random_bytes(rng, 16 * 16);
  auto ref = hux::test::random_bytes(rng, 16 * 64);
  hux::test::Guarded out(64 * 2);
  out.fill(0xEE);
  uint32_t idx = 0xDEADBEEF;
  EXPECT_EQ(huxiSAD16x16xNI_8u16u_C1R(cur.data(), 16, ref.data(), 64, out.as<uint16_t>(), c.n, &idx), c.status);
  EXPECT_TRUE(out.intact());
  for (int k = 0; k < 64; ++k) {
    const uint16_t v = out.as<uint16_t>()[k];
    if (k < c.computed) {
      int32_t s = -1;
      huxiSAD16x16_8u32s(cur.data(), 16, ref.data() + k, 64, &s, 0);
      EXPECT_EQ(v, s) << k;
    } else {
      EXPECT_EQ(v, 0xEEEE) << k;
    }
  }
  if (c.computed) {
    const uint16_t* v = out.as<uint16_t>();
    EXPECT_EQ(idx, static_cast<uint32_t>(std::min_element(v, v + c.computed) - v));
  } else {
    EXPECT_EQ(idx, 0xDEADBEEFu);
  }
}

INSTANTIATE_TEST_SUITE_P(Counts, SadLineCounts,
                         ::testing::Values(LineCase{7, huxErrSize, 0}, LineCase{0, huxErrSize, 0},
                                           LineCase{-8, huxErrSize, 0}, LineCase{8, huxOk, 8},
                                           LineCase{15, huxOk, 8}, LineCase{16, huxOk, 16},
                                           LineCase{47, huxOk, 40}));

TEST(SadExports, BestIndexTakesTheLowestOfEqualMinima) {
  // Row samples 200 - e[x]; against a flat block of 200 candidate k costs
  // 4 * (e[k] + ... + e[k+3]): 2 at candidates 3 and 5, more everywhere else.
  const int e[11] = {100, 100, 100, 0, 2, 0, 0, 2, 0, 100, 100};
  std::vector<uint8_t> ref(4 * 11), cur(4 * 4, 200);
  for (int y = 0; y < 4; ++y)
    for (int x = 0; x < 11; ++x) ref[static_cast<size_t>(y * 11 + x)] = static_cast<uint8_t>(200 - e[x]);
  uint16_t sads[8];
  uint32_t idx = 99;
  ASSERT_EQ(huxiSAD4x4xNI_8u16u_C1R(cur.data(), 4, ref.data(), 11, sads, 8, &idx), huxOk);
  ASSERT_EQ(sads[3], 8);
  ASSERT_EQ(sads[5], 8);
  for (int k = 0; k < 8; ++k)
    if (k != 3 && k != 5) {
      ASSERT_GT(sads[k], 8) << k;
    }
  EXPECT_EQ(idx, 3u);
}

TEST(SadExports, FrameFieldSkipsTheMiddleRowPair) {
  std::vector<uint8_t> b(16 * 16, 0);
  std::vector<int16_t> w(16 * 16, 0);
  for (int x = 0; x < 16; ++x)
    for (int y = 8; y < 16; ++y) b[static_cast<size_t>(y * 16 + x)] = 9, w[static_cast<size_t>(y * 16 + x)] = -30000;
  int32_t fr = -1, fi = -1;
  ASSERT_EQ(huxiFrameFieldSAD16x16_8u32s_C1R(b.data(), 16, &fr, &fi), huxOk);
  EXPECT_EQ(fr, 0);            // the step lies between rows 7 and 8 only
  EXPECT_EQ(fi, 2 * 16 * 9);   // field pairs (6,8) and (7,9) cross it
  ASSERT_EQ(huxiFrameFieldSAD16x16_16s32s_C1R(w.data(), 32, &fr, &fi), huxOk);
  EXPECT_EQ(fr, 0);
  EXPECT_EQ(fi, 2 * 16 * 30000);
}

TEST(SadExports, SubSadWritesResidualAndSad) {
  Rng rng(3);
  auto cur = hux::test::random_bytes(rng, 8 * 8), ref = hux::test::random_bytes(rng, 8 * 8);
  std::vector<int16_t> diff(8 * 12, 77);
  int32_t sad = -1;
  ASSERT_EQ(huxiSubSAD8x8_8u16s_C1R(cur.data(), 8, ref.data(), 8, diff.data(), 24, &sad), huxOk);
  int32_t expect = 0;
  for (int y = 0; y < 8; ++y)
    for (int x = 0; x < 12; ++x) {
      const size_t i = static_cast<size_t>(y * 12 + x);
      if (x < 8) {
        const int d = cur[static_cast<size_t>(y * 8 + x)] - ref[static_cast<size_t>(y * 8 + x)];
        EXPECT_EQ(diff[i], d);
        expect += std::abs(d);
      } else {
        EXPECT_EQ(diff[i], 77);  // beyond the block's row: untouched
      }
    }
  EXPECT_EQ(sad, expect);
  EXPECT_EQ(huxiSubSAD8x8_8u16s_C1R(cur.data(), 8, ref.data(), 8, diff.data(), 24, nullptr), huxOk);
}

}  // namespace
