// The SAD exports: their checks through the export descriptors, and the
// interface's arithmetic (half-sample rounding, selector masking, the 16-bit
// wraps and step rules, sub-block order, the row pairs of the frame/field
// activity, the best index and the candidate count) as hand-computed cases.
#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "huxvc.h"
#include "support/exports.h"
#include "support/known.h"

namespace {

using namespace hux::check;

// Every pointer is checked (the SubSAD result excepted); only the candidate
// count is refused, with -6, below 8.
const uint8_t kB8[64 * 64] = {};
const uint16_t kB16[64 * 64] = {};
const std::vector<Bad> kFewCandidates = {{7, huxErrSize, 1}, {0, huxErrSize, 1}, {-8, huxErrSize, 1}};
#define SAD(f, b) describe(#f, f, {in(b), val(64), in(b), val(64), out(4), val(12)})
#define BLOCKS(f, b, n) describe(#f, f, {in(b), val(64), in(b), val(64), out(n), val(0)})
#define LINE(f) describe(#f, f, {in(kB8), val(64), in(kB8), val(64), out(16), val(8, kFewCandidates, {15})})
#define LINEI(f) describe(#f, f, {in(kB8), val(64), in(kB8), val(64), out(16), val(8, kFewCandidates, {15}), out(4)})
const Describe kExports({
    SAD(huxiSAD16x16_8u32s, kB8), SAD(huxiSAD16x8_8u32s_C1R, kB8), SAD(huxiSAD8x8_8u32s_C1R, kB8),
    SAD(huxiSAD8x16_8u32s_C1R, kB8), SAD(huxiSAD8x4_8u32s_C1R, kB8), SAD(huxiSAD4x8_8u32s_C1R, kB8),
    SAD(huxiSAD4x4_8u32s, kB8), SAD(huxiSAD16x16_16u32s_C1R, kB16), SAD(huxiSAD8x8_16u32s_C1R, kB16),
    SAD(huxiSAD4x4_16u32s_C1R, kB16), BLOCKS(huxiSAD16x16Blocks8x8_8u16u, kB8, 8),
    BLOCKS(huxiSAD16x16Blocks4x4_8u16u, kB8, 32), BLOCKS(huxiSAD16x16Blocks8x8_16u32u_C1R, kB16, 16),
    BLOCKS(huxiSAD16x16Blocks4x4_16u32u_C1R, kB16, 64), LINE(huxiSAD16x16xN_8u16u_C1R), LINE(huxiSAD8x8xN_8u16u_C1R),
    LINE(huxiSAD4x4xN_8u16u_C1R), LINE(huxiSAD2x2xN_8u16u_C1R), LINEI(huxiSAD16x16xNI_8u16u_C1R),
    LINEI(huxiSAD8x8xNI_8u16u_C1R), LINEI(huxiSAD4x4xNI_8u16u_C1R),
    describe("huxiFrameFieldSAD16x16_8u32s_C1R", huxiFrameFieldSAD16x16_8u32s_C1R, {in(kB8), val(64), out(4), out(4)}),
    describe("huxiFrameFieldSAD16x16_16s32s_C1R", huxiFrameFieldSAD16x16_16s32s_C1R, {in(kB16), val(64), out(4), out(4)}),
    describe("huxiSubSAD8x8_8u16s_C1R", huxiSubSAD8x8_8u16s_C1R, {in(kB8), val(64), in(kB8), val(64), out(128), val(16), out(4, false)}),
});

// ------------------------------------------------------------ by hand

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
const Known kHand[] = {
    // Differences of 3 and 5, half of each: 4 per sample in every shape.
    {"integer_known_data", [] {
       auto cur = grid<uint8_t>(32, 32, [](int x, int y) { return uint8_t(10 + ((y * 32 + x) * 7) % 200); });
       auto ref = cur;
       for (size_t i = 0; i < ref.size(); ++i) ref[i] = uint8_t(ref[i] + ((i & 1) ? 5 : -3));
       return sads<uint8_t>({0}, {huxiSAD16x16_8u32s, huxiSAD16x8_8u32s_C1R, huxiSAD8x8_8u32s_C1R, huxiSAD8x16_8u32s_C1R,
                             huxiSAD8x4_8u32s_C1R, huxiSAD4x8_8u32s_C1R, huxiSAD4x4_8u32s}, cur, 32, ref, 32); },
     {1024, 512, 256, 512, 128, 128, 64}},
    // (x + y * y) mod 3 against zero, worked out for each position by a separate
    // model: every position gives a different sum. The selector's low bits are
    // ignored and its high bits masked; 8x16 has no half-sample forms.
    {"half_sample_positions_and_selector_masking", [] {
       auto ref = grid<uint8_t>(17, 17, [](int x, int y) { return uint8_t((x + y * y) % 3); });
       std::vector<uint8_t> zero(16 * 16, 0);
       return cat({sads<uint8_t>({0, 1, 4, 5, 8, 11, 12, 13, 15, 20, 24, 28},
                                 {huxiSAD16x16_8u32s, huxiSAD8x8_8u32s_C1R, huxiSAD16x8_8u32s_C1R}, zero, 16, ref, 17),
                   sads<uint8_t>({12}, {huxiSAD8x16_8u32s_C1R}, zero, 16, ref, 17)}); },
     {250, 66, 125, 250, 66, 125, 311, 82, 153, 311, 82, 153, 346, 88, 173, 346, 88, 173, 286, 73, 146, 286, 73, 146,
      286, 73, 146, 311, 82, 153, 346, 88, 173, 286, 73, 146, 132}},
    // A null SAD pointer asks for the difference block alone.
    {"sub_sad_without_sad", [] {
       std::vector<uint8_t> cur(64, 9), ref(64, 2);
       int16_t d[64] = {};
       EXPECT_EQ(huxiSubSAD8x8_8u16s_C1R(cur.data(), 8, ref.data(), 8, d, 16, nullptr), huxOk);
       return V(d, 64); },
     all(64, 7)},
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
       uint16_t sads[16];
       std::fill_n(sads, 16, uint16_t{7});
       uint32_t idx = 99;
       EXPECT_EQ(huxiSAD4x4xNI_8u16u_C1R(cur.data(), 4, ref.data(), 11, sads, 8, &idx), huxOk);
       EXPECT_EQ(huxiSAD4x4xNI_8u16u_C1R(cur.data(), 4, ref.data(), 11, sads + 8, 15, &idx), huxOk);
       return cat({V(sads, 16), {idx}}); },
     {1200, 808, 408, 8, 16, 8, 408, 808, 1200, 808, 408, 8, 16, 8, 408, 808, 3}},
    // A count of 15 computes and searches 8 candidates and writes nothing more.
    {"count_rounded_down_to_eight", [] {
       std::vector<uint8_t> cur(16 * 16, 9), ref(16 * 23, 9);
       uint16_t sads[12];
       std::fill_n(sads, 12, uint16_t{7});
       uint32_t idx = 99;
       EXPECT_EQ(huxiSAD16x16xNI_8u16u_C1R(cur.data(), 16, ref.data(), 23, sads, 15, &idx), huxOk);
       return cat({V(sads, 12), {idx}}); },
     {0, 0, 0, 0, 0, 0, 0, 0, 7, 7, 7, 7, 0}},
};

HUX_KNOWN(SadKnown, kHand);

}  // namespace
