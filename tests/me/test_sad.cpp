// Behaviour of the SAD exports: pointer checks, selector handling, the
// half-sample rounding, the 16-bit wrap and step rules, candidate lines, as
// hand-computed cases.
#include <gtest/gtest.h>

#include <functional>
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

// ------------------------------------------------------------ by hand

using Vals = std::vector<int64_t>;
template <class T>
Vals V(const T* p, size_t n) {
  return Vals(p, p + n);
}
template <class T>
std::vector<T> grid(int w, int h, T (*f)(int x, int y)) {
  std::vector<T> v(static_cast<size_t>(w * h));
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x) v[static_cast<size_t>(y * w + x)] = f(x, y);
  return v;
}
template <class T>
using SadFn = HuxResult(HUX_STDCALL*)(const T*, int32_t, const T*, int32_t, int32_t*, int32_t);
// Each selector through each export, in that order.
template <class T>
Vals sads(std::initializer_list<int32_t> mcs, std::initializer_list<SadFn<T>> fs, const std::vector<T>& c, int32_t cs,
          const std::vector<T>& r, int32_t rs) {
  Vals o;
  for (int32_t mc : mcs)
    for (SadFn<T> f : fs) {
      int32_t s = -1;
      EXPECT_EQ(f(c.data(), cs, r.data(), rs, &s, mc), huxOk);
      o.push_back(s);
    }
  return o;
}
Vals cat(std::initializer_list<Vals> parts) {
  Vals o;
  for (const Vals& p : parts) o.insert(o.end(), p.begin(), p.end());
  return o;
}

struct HandCase {
  const char* name;
  std::function<Vals()> run;
  Vals expect;
};
std::ostream& operator<<(std::ostream& os, const HandCase& c) { return os << c.name; }

const HandCase kHand[] = {
    // Differences of 3 and 5, half of each: 4 per sample in every shape.
    {"integer_known_data", [] {
       auto cur = grid<uint8_t>(32, 32, [](int x, int y) { return uint8_t(10 + ((y * 32 + x) * 7) % 200); });
       auto ref = cur;
       for (size_t i = 0; i < ref.size(); ++i) ref[i] = uint8_t(ref[i] + ((i & 1) ? 5 : -3));
       return sads<uint8_t>({0}, {huxiSAD16x16_8u32s, huxiSAD16x8_8u32s_C1R, huxiSAD8x8_8u32s_C1R, huxiSAD8x16_8u32s_C1R,
                             huxiSAD8x4_8u32s_C1R, huxiSAD4x8_8u32s_C1R, huxiSAD4x4_8u32s}, cur, 32, ref, 32); },
     {1024, 512, 256, 512, 128, 128, 64}},
    // A checkerboard of 0 and 3 against zero: integer 3 on half the samples;
    // vertical/horizontal (0+3+1)>>1 = 2, diagonal (0+3+3+0+2)>>2 = 2. The
    // selector's low bits are ignored; 8x16 has no half-sample forms.
    {"half_sample_rounding_and_selector_masking", [] {
       auto ref = grid<uint8_t>(17, 17, [](int x, int y) { return uint8_t(((x + y) & 1) * 3); });
       std::vector<uint8_t> zero(16 * 16, 0);
       return cat({sads<uint8_t>({0, 1, 4, 5, 8, 11, 12, 13, 15}, {huxiSAD16x16_8u32s, huxiSAD8x8_8u32s_C1R, huxiSAD16x8_8u32s_C1R},
                                 zero, 16, ref, 17),
                   sads<uint8_t>({12}, {huxiSAD8x16_8u32s_C1R}, zero, 16, ref, 17)}); },
     {384, 96, 192, 384, 96, 192, 512, 128, 256, 512, 128, 256, 512, 128, 256, 512, 128, 256,
      512, 128, 256, 512, 128, 256, 512, 128, 256, 192}},
    // Word samples of 40000 against 0: each interpolating sum saturates at 65535.
    {"word_interpolation_saturates", [] {
       std::vector<uint16_t> cur(16 * 16, 0), ref(17 * 17, 40000);
       return sads<uint16_t>({0, 4, 8, 12}, {huxiSAD16x16_16u32s_C1R, huxiSAD8x8_16u32s_C1R, huxiSAD4x4_16u32s_C1R}, cur, 32, ref, 34); },
     {256 * 40000, 64 * 40000, 16 * 40000, 256 * 32767, 64 * 32767, 16 * 32767,
      256 * 32767, 64 * 32767, 16 * 32767, 256 * 16383, 64 * 16383, 16 * 16383}},
    // 4x4 block k of the reference holds k + 1: sub-blocks in raster order.
    {"sub_blocks_in_raster_order", [] {
       auto ref = grid<uint8_t>(16, 16, [](int x, int y) { return uint8_t((y / 4) * 4 + x / 4 + 1); });
       std::vector<uint8_t> cur(16 * 16, 0);
       uint16_t b4[16], b8[4];
       EXPECT_EQ(huxiSAD16x16Blocks4x4_8u16u(cur.data(), 16, ref.data(), 16, b4, 0), huxOk);
       EXPECT_EQ(huxiSAD16x16Blocks8x8_8u16u(cur.data(), 16, ref.data(), 16, b8, 0), huxOk);
       return cat({V(b4, 16), V(b8, 4)}); },
     {16, 32, 48, 64, 80, 96, 112, 128, 144, 160, 176, 192, 208, 224, 240, 256, 224, 352, 736, 864}},
    // Word sub-blocks: |40000 - 0| wraps to 25536 and 32768 to -32768
    // (magnitude 32768); a step of 35 bytes is evened to 34, so the sample at
    // row 5, column 9 of 17-sample rows falls in 4x4 block 6.
    {"word_sub_blocks_wrap_and_even_the_step", [] {
       std::vector<uint16_t> cur(17 * 16, 0), ref(17 * 16, 0);
       cur[0] = 40000;
       ref[17 * 5 + 9] = 3;
       uint32_t b8[4], b4[16], c4[16];
       EXPECT_EQ(huxiSAD16x16Blocks8x8_16u32u_C1R(cur.data(), 35, ref.data(), 35, b8, 0), huxOk);
       EXPECT_EQ(huxiSAD16x16Blocks4x4_16u32u_C1R(cur.data(), 35, ref.data(), 35, b4, 0), huxOk);
       cur[1] = 32768;
       EXPECT_EQ(huxiSAD16x16Blocks4x4_16u32u_C1R(cur.data(), 34, ref.data(), 34, c4, 0), huxOk);
       return cat({V(b8, 4), V(b4, 16), V(c4, 16)}); },
     {25536, 3, 0, 0, 25536, 0, 0, 0, 0, 0, 3, 0, 0, 0, 0, 0, 0, 0, 0, 0,
      25536 + 32768, 0, 0, 0, 0, 0, 3, 0, 0, 0, 0, 0, 0, 0, 0, 0}},
    // A step between rows 7 and 8 only: the frame SAD skips that pair, the
    // field pairs (6, 8) and (7, 9) cross it.
    {"frame_field_skips_the_middle_row_pair", [] {
       auto b = grid<uint8_t>(16, 16, [](int, int y) { return uint8_t(y >= 8 ? 9 : 0); });
       auto w = grid<int16_t>(16, 16, [](int, int y) { return int16_t(y >= 8 ? -30000 : 0); });
       int32_t f[4] = {-1, -1, -1, -1};
       EXPECT_EQ(huxiFrameFieldSAD16x16_8u32s_C1R(b.data(), 16, &f[0], &f[1]), huxOk);
       EXPECT_EQ(huxiFrameFieldSAD16x16_16s32s_C1R(w.data(), 32, &f[2], &f[3]), huxOk);
       return V(f, 4); },
     {0, 2 * 16 * 9, 0, 2 * 16 * 30000}},
    // Rows 200 - e[x] against a flat 200: candidate k costs 4 * (e[k] + ...
    // + e[k+3]), 8 at candidates 3 and 5; the lower index wins the tie.
    {"best_index_takes_the_lowest_of_equal_minima", [] {
       static const int e[11] = {100, 100, 100, 0, 2, 0, 0, 2, 0, 100, 100};
       auto ref = grid<uint8_t>(11, 4, [](int x, int) { return uint8_t(200 - e[x]); });
       std::vector<uint8_t> cur(4 * 4, 200);
       uint16_t sads[8];
       uint32_t idx = 99;
       EXPECT_EQ(huxiSAD4x4xNI_8u16u_C1R(cur.data(), 4, ref.data(), 11, sads, 8, &idx), huxOk);
       return cat({V(sads, 8), {idx}}); },
     {1200, 808, 408, 8, 16, 8, 408, 808, 3}},
};

class SadHand : public ::testing::TestWithParam<HandCase> {};
TEST_P(SadHand, Values) { EXPECT_EQ(GetParam().run(), GetParam().expect); }
INSTANTIATE_TEST_SUITE_P(Cases, SadHand, ::testing::ValuesIn(kHand),
                         [](const ::testing::TestParamInfo<HandCase>& p) { return std::string(p.param.name); });

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
