// Differential tests: every SSE2 SAD kernel against its reference on seeded
// random blocks in exact-sized heap buffers (so the sanitizer build sees any
// read outside them), at unaligned pointers, odd and negative steps.
#include <gtest/gtest.h>

#include <vector>

#include "me/sad_kernels.h"
#include "support/test_util.h"

#if defined(HUX_SSE2) && HUX_SSE2
namespace {

namespace me = hux::me;
using hux::test::Rng;
using hux::test::Rows;

// Random rows of exactly the bytes they span, filled with values in lo..hi.
Rows plane(Rng& rng, int rows, int bytes, int32_t step, int shift, int lo = 0, int hi = 255) {
  Rows r(rows, bytes, step, static_cast<size_t>(shift));
  r.buf.randomize(rng, lo, hi);
  return r;
}

struct Layout {
  int32_t cur_step, ref_step;
  int cur_shift, ref_shift;
};

std::vector<Layout> layouts(Rng& rng, int width_bytes, int extra_bytes, int elem) {
  std::vector<Layout> v = {{64, 64, 0, 0}, {16 * elem, 48 * elem, 0, 0}};
  std::uniform_int_distribution<int> shift(0, 15 * elem), pad(0, 40);
  for (int i = 0; i < 60; ++i) {
    Layout l{width_bytes + extra_bytes + pad(rng) * elem, width_bytes + extra_bytes + pad(rng) * elem, shift(rng) & -elem,
             shift(rng) & -elem};
    if (elem == 1 && i % 3 == 1) l.cur_step |= 1, l.ref_step |= 1;  // odd steps
    if (i % 4 == 2) l.cur_step = -l.cur_step;
    if (i % 4 == 3) l.ref_step = -l.ref_step;
    v.push_back(l);
  }
  return v;
}

// Byte samples at full range and near-match; word samples at 16 (saturating
// sums), 14 and 10 bits.
template <int W, int H, int Mode, bool Word>
void check_sad(Rng& rng) {
  constexpr int e = Word ? 2 : 1, extra = Mode == me::kInteger ? 0 : 1;
  for (const auto& l : layouts(rng, e * W, e * extra, e)) {
    for (int range : Word ? std::vector<int>{65535, 16383, 1023} : std::vector<int>{255, 3}) {
      const int lo = Word || range == 255 ? 0 : 127, hi = Word || range == 255 ? 255 : 129;
      Rows cur = plane(rng, H, e * W, l.cur_step, l.cur_shift, lo, hi);
      Rows ref = plane(rng, H + extra, e * (W + extra), l.ref_step, l.ref_shift, lo, hi);
      if constexpr (Word) {
        for (Rows* p : {&cur, &ref}) {
          auto* w = reinterpret_cast<uint16_t*>(p->buf.data());
          if (reinterpret_cast<uintptr_t>(w) % 2 == 0)
            for (size_t i = 0; i < p->buf.size() / 2; ++i) w[i] = static_cast<uint16_t>(w[i] % (range + 1));
        }
        ASSERT_EQ((me::sse2::sad16u<W, H, Mode>(cur.as<uint16_t>(), l.cur_step, ref.as<uint16_t>(), l.ref_step)),
                  (me::ref::sad16u<W, H, Mode>(cur.as<uint16_t>(), l.cur_step, ref.as<uint16_t>(), l.ref_step)))
            << W << "x" << H << " mode " << Mode << " max " << range;
      } else {
        ASSERT_EQ((me::sse2::sad<W, H, Mode>(cur.first, l.cur_step, ref.first, l.ref_step)),
                  (me::ref::sad<W, H, Mode>(cur.first, l.cur_step, ref.first, l.ref_step)))
            << W << "x" << H << " mode " << Mode << " steps " << l.cur_step << "," << l.ref_step;
      }
    }
  }
}

template <int W, int H, bool Word>
void check_all_modes(Rng& rng) {
  check_sad<W, H, me::kInteger, Word>(rng);
  check_sad<W, H, me::kVertical, Word>(rng);
  check_sad<W, H, me::kHorizontal, Word>(rng);
  check_sad<W, H, me::kDiagonal, Word>(rng);
}

TEST(SadDiff, BlocksAllShapesAndHalfSamplePositions) {
  Rng rng(1);
  check_all_modes<16, 16, false>(rng);
  check_all_modes<16, 8, false>(rng);
  check_all_modes<8, 8, false>(rng);
  check_sad<8, 16, me::kInteger, false>(rng);
  check_sad<8, 4, me::kInteger, false>(rng);
  check_sad<4, 8, me::kInteger, false>(rng);
  check_sad<4, 4, me::kInteger, false>(rng);
  check_all_modes<16, 16, true>(rng);
  check_all_modes<8, 8, true>(rng);
  check_all_modes<4, 4, true>(rng);
}

TEST(SadDiff, SubBlockSads) {
  Rng rng(3);
  for (const auto& l : layouts(rng, 16, 0, 1)) {
    Rows cur = plane(rng, 16, 16, l.cur_step, l.cur_shift), ref = plane(rng, 16, 16, l.ref_step, l.ref_shift);
    uint16_t a[16], b[16];
    me::sse2::sad_blocks<8>(cur.first, l.cur_step, ref.first, l.ref_step, a);
    me::ref::sad_blocks<8>(cur.first, l.cur_step, ref.first, l.ref_step, b);
    ASSERT_EQ(std::vector<uint16_t>(a, a + 4), std::vector<uint16_t>(b, b + 4));
    me::sse2::sad_blocks<4>(cur.first, l.cur_step, ref.first, l.ref_step, a);
    me::ref::sad_blocks<4>(cur.first, l.cur_step, ref.first, l.ref_step, b);
    ASSERT_EQ(std::vector<uint16_t>(a, a + 16), std::vector<uint16_t>(b, b + 16));
  }
  // 16-bit samples, full range so that differences wrap; odd steps are evened
  // by the kernels, so the buffers span the evened rows.
  for (const auto& l : layouts(rng, 32, 0, 2)) {
    for (int odd : {0, 1}) {
      Rows cur = plane(rng, 16, 32, l.cur_step, l.cur_shift), ref = plane(rng, 16, 32, l.ref_step, l.ref_shift);
      const int32_t cs = l.cur_step + odd, rs = l.ref_step + odd;
      uint32_t a[16], b[16];
      me::sse2::sad_blocks16u<8>(cur.as<uint16_t>(), cs, ref.as<uint16_t>(), rs, a);
      me::ref::sad_blocks16u<8>(cur.as<uint16_t>(), cs, ref.as<uint16_t>(), rs, b);
      ASSERT_EQ(std::vector<uint32_t>(a, a + 4), std::vector<uint32_t>(b, b + 4));
      me::sse2::sad_blocks16u<4>(cur.as<uint16_t>(), cs, ref.as<uint16_t>(), rs, a);
      me::ref::sad_blocks16u<4>(cur.as<uint16_t>(), cs, ref.as<uint16_t>(), rs, b);
      ASSERT_EQ(std::vector<uint32_t>(a, a + 16), std::vector<uint32_t>(b, b + 16));
    }
  }
}

template <int B>
void check_line(Rng& rng) {
  for (int32_t m : {8, 16, 40}) {
    for (const auto& l : layouts(rng, B + m, 0, 1)) {
      // Reference rows span exactly columns 0 .. m - 1 + B - 1.
      Rows cur = plane(rng, B, B, l.cur_step, l.cur_shift);
      Rows ref = plane(rng, B, m - 1 + B, l.ref_step, l.ref_shift, 100, 140);
      std::vector<uint16_t> a(static_cast<size_t>(m)), b(static_cast<size_t>(m));
      me::sse2::sad_line<B>(cur.first, l.cur_step, ref.first, l.ref_step, a.data(), m);
      me::ref::sad_line<B>(cur.first, l.cur_step, ref.first, l.ref_step, b.data(), m);
      ASSERT_EQ(a, b) << B << " m " << m;
    }
  }
}

TEST(SadDiff, CandidateLines) {
  Rng rng(4);
  check_line<16>(rng);
  check_line<8>(rng);
  check_line<4>(rng);
  check_line<2>(rng);
  // The largest 16x16 SAD still fits the 16-bit output.
  std::vector<uint8_t> cur(16 * 16, 0), ref(16 * 23, 255);
  uint16_t a[8];
  me::sse2::sad_line<16>(cur.data(), 16, ref.data(), 23, a, 8);
  for (uint16_t v : a) EXPECT_EQ(v, 65280);
}

TEST(SadDiff, MinimumIndex) {
  Rng rng(5);
  for (int trial = 0; trial < 2000; ++trial) {
    const int32_t m = 8 * static_cast<int32_t>(1 + rng() % 12);
    std::vector<uint16_t> v(static_cast<size_t>(m));
    const int range = trial % 3 == 0 ? 3 : 65535;  // many ties, or the full unsigned range
    hux::test::fill_random(rng, v.data(), v.size(), 65535 - range, 65535);
    if (trial % 5 == 0) hux::test::fill_random(rng, v.data(), v.size(), 0, range);
    ASSERT_EQ(me::sse2::min_index(v.data(), m), me::ref::min_index(v.data(), m)) << m;
  }
}

TEST(SadDiff, FrameFieldAndSubSad) {
  Rng rng(6);
  for (int e : {1, 2})  // bytes, then full-range signed words
    for (const auto& l : layouts(rng, 16 * e, 0, e)) {
      Rows p = plane(rng, 16, 16 * e, l.cur_step, l.cur_shift);
      int32_t a[2], b[2];
      if (e == 1) {
        me::sse2::frame_field(p.first, l.cur_step, &a[0], &a[1]);
        me::ref::frame_field(p.first, l.cur_step, &b[0], &b[1]);
      } else {
        me::sse2::frame_field(p.as<int16_t>(), l.cur_step, &a[0], &a[1]);
        me::ref::frame_field(p.as<int16_t>(), l.cur_step, &b[0], &b[1]);
      }
      ASSERT_EQ(a[0], b[0]);
      ASSERT_EQ(a[1], b[1]);
    }
  for (const auto& l : layouts(rng, 8, 0, 1)) {
    for (int32_t dstep : {16, 18, 32, -48}) {
      Rows cur = plane(rng, 8, 8, l.cur_step, l.cur_shift), ref = plane(rng, 8, 8, l.ref_step, l.ref_shift);
      Rows d1 = plane(rng, 8, 16, dstep, l.cur_shift & 14), d2(8, 16, dstep, static_cast<size_t>(l.cur_shift & 14));
      d2.buf.copy_from(d1.buf);
      const int32_t s1 = me::sse2::sub_sad8x8(cur.first, l.cur_step, ref.first, l.ref_step, d1.as<int16_t>(), dstep);
      const int32_t s2 = me::ref::sub_sad8x8(cur.first, l.cur_step, ref.first, l.ref_step, d2.as<int16_t>(), dstep);
      ASSERT_EQ(s1, s2);
      ASSERT_EQ(d1.buf.bytes(), d2.buf.bytes());
    }
  }
}

}  // namespace
#endif
