// Differential tests: every SSE2 SAD kernel against its reference on seeded
// random blocks in exact-sized heap buffers (so the sanitizer build sees any
// read outside them), at unaligned pointers, odd and negative steps.
#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "me/sad_kernels.h"
#include "support/test_util.h"

#if defined(HUX_SSE2) && HUX_SSE2
namespace {

namespace me = hux::me;
using hux::test::Rng;

// A block of `rows` rows of `bytes` bytes in a buffer of exactly the bytes the
// rows span, at a byte offset `shift` past a 64-byte boundary; negative steps
// put the first row at the buffer's end.
struct Plane {
  std::vector<uint8_t> store;
  uint8_t* first = nullptr;
  Plane(Rng& rng, int rows, int bytes, int32_t step, int shift, int lo = 0, int hi = 255) {
    const size_t span = static_cast<size_t>(rows - 1) * static_cast<size_t>(std::abs(step)) + static_cast<size_t>(bytes);
    store = hux::test::random_bytes(rng, span + static_cast<size_t>(shift), lo, hi);
    uint8_t* base = store.data() + shift;
    first = step >= 0 ? base : base + static_cast<size_t>(rows - 1) * static_cast<size_t>(-step);
  }
  template <class T>
  T* as() {
    return reinterpret_cast<T*>(first);
  }
};

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

template <int W, int H, int Mode>
void check_sad8(Rng& rng) {
  const int extra = Mode == me::kInteger ? 0 : 1;
  for (const auto& l : layouts(rng, W, extra, 1)) {
    for (int range : {255, 3}) {  // full-range and near-match data
      Plane cur(rng, H, W, l.cur_step, l.cur_shift, 128 - range / 2, 128 + (range + 1) / 2 - 1 + (range == 255));
      Plane ref(rng, H + extra, W + extra, l.ref_step, l.ref_shift, 128 - range / 2, 128 + (range + 1) / 2 - 1 + (range == 255));
      ASSERT_EQ((me::sse2::sad<W, H, Mode>(cur.first, l.cur_step, ref.first, l.ref_step)),
                (me::ref::sad<W, H, Mode>(cur.first, l.cur_step, ref.first, l.ref_step)))
          << W << "x" << H << " mode " << Mode << " steps " << l.cur_step << "," << l.ref_step;
    }
  }
}

template <int W, int H>
void check_all_modes8(Rng& rng) {
  check_sad8<W, H, me::kInteger>(rng);
  check_sad8<W, H, me::kVertical>(rng);
  check_sad8<W, H, me::kHorizontal>(rng);
  check_sad8<W, H, me::kDiagonal>(rng);
}

TEST(SadDiff, ByteBlocksAllShapesAndHalfSamplePositions) {
  Rng rng(1);
  check_all_modes8<16, 16>(rng);
  check_all_modes8<16, 8>(rng);
  check_all_modes8<8, 8>(rng);
  check_sad8<8, 16, me::kInteger>(rng);
  check_sad8<8, 4, me::kInteger>(rng);
  check_sad8<4, 8, me::kInteger>(rng);
  check_sad8<4, 4, me::kInteger>(rng);
}

template <int W, int H, int Mode>
void check_sad16(Rng& rng) {
  const int extra = Mode == me::kInteger ? 0 : 1;
  for (const auto& l : layouts(rng, 2 * W, 2 * extra, 2)) {
    for (int hi : {65535, 16383, 1023}) {  // saturating sums, 14-bit and 10-bit samples
      Plane cur(rng, H, 2 * W, l.cur_step, l.cur_shift);
      Plane ref(rng, H + extra, 2 * (W + extra), l.ref_step, l.ref_shift);
      auto narrow = [hi](Plane& p) {
        for (size_t i = 0; i + 1 < p.store.size(); i += 2) {
          uint16_t v;
          std::memcpy(&v, &p.store[i], 2);
          v = static_cast<uint16_t>(v % (hi + 1));
          std::memcpy(&p.store[i], &v, 2);
        }
      };
      if (l.cur_shift % 2 == 0) narrow(cur);
      if (l.ref_shift % 2 == 0) narrow(ref);
      ASSERT_EQ((me::sse2::sad16u<W, H, Mode>(cur.as<uint16_t>(), l.cur_step, ref.as<uint16_t>(), l.ref_step)),
                (me::ref::sad16u<W, H, Mode>(cur.as<uint16_t>(), l.cur_step, ref.as<uint16_t>(), l.ref_step)))
          << W << "x" << H << " mode " << Mode << " max " << hi;
    }
  }
}

template <int W, int H>
void check_all_modes16(Rng& rng) {
  check_sad16<W, H, me::kInteger>(rng);
  check_sad16<W, H, me::kVertical>(rng);
  check_sad16<W, H, me::kHorizontal>(rng);
  check_sad16<W, H, me::kDiagonal>(rng);
}

TEST(SadDiff, WordBlocksAllShapesAndHalfSamplePositions) {
  Rng rng(2);
  check_all_modes16<16, 16>(rng);
  check_all_modes16<8, 8>(rng);
  check_all_modes16<4, 4>(rng);
}

TEST(SadDiff, SubBlockSads) {
  Rng rng(3);
  for (const auto& l : layouts(rng, 16, 0, 1)) {
    Plane cur(rng, 16, 16, l.cur_step, l.cur_shift), ref(rng, 16, 16, l.ref_step, l.ref_shift);
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
      Plane cur(rng, 16, 32, l.cur_step, l.cur_shift), ref(rng, 16, 32, l.ref_step, l.ref_shift);
      uint32_t a[16], b[16];
      me::sse2::sad_blocks16u<8>(cur.as<uint16_t>(), l.cur_step + odd, ref.as<uint16_t>(), l.ref_step + odd, a);
      me::ref::sad_blocks16u<8>(cur.as<uint16_t>(), l.cur_step + odd, ref.as<uint16_t>(), l.ref_step + odd, b);
      ASSERT_EQ(std::vector<uint32_t>(a, a + 4), std::vector<uint32_t>(b, b + 4));
      me::sse2::sad_blocks16u<4>(cur.as<uint16_t>(), l.cur_step + odd, ref.as<uint16_t>(), l.ref_step + odd, a);
      me::ref::sad_blocks16u<4>(cur.as<uint16_t>(), l.cur_step + odd, ref.as<uint16_t>(), l.ref_step + odd, b);
      ASSERT_EQ(std::vector<uint32_t>(a, a + 16), std::vector<uint32_t>(b, b + 16));
    }
  }
}

template <int B>
void check_line(Rng& rng) {
  for (int32_t m : {8, 16, 40}) {
    for (const auto& l : layouts(rng, B + m, 0, 1)) {
      // Reference rows span exactly columns 0 .. m - 1 + B - 1.
      Plane cur(rng, B, B, l.cur_step, l.cur_shift), ref(rng, B, m - 1 + B, l.ref_step, l.ref_shift, 100, 140);
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
}

TEST(SadDiff, CandidateLineMaximumFitsSixteenBits) {
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
  for (const auto& l : layouts(rng, 16, 0, 1)) {
    Plane p(rng, 16, 16, l.cur_step, l.cur_shift);
    int32_t a[2], b[2];
    me::sse2::frame_field(p.first, l.cur_step, &a[0], &a[1]);
    me::ref::frame_field(p.first, l.cur_step, &b[0], &b[1]);
    ASSERT_EQ(a[0], b[0]);
    ASSERT_EQ(a[1], b[1]);
  }
  for (const auto& l : layouts(rng, 32, 0, 2)) {
    Plane p(rng, 16, 32, l.cur_step, l.cur_shift);  // full signed range
    int32_t a[2], b[2];
    me::sse2::frame_field(p.as<int16_t>(), l.cur_step, &a[0], &a[1]);
    me::ref::frame_field(p.as<int16_t>(), l.cur_step, &b[0], &b[1]);
    ASSERT_EQ(a[0], b[0]);
    ASSERT_EQ(a[1], b[1]);
  }
  for (const auto& l : layouts(rng, 8, 0, 1)) {
    for (int32_t dstep : {16, 18, 32, -48}) {
      Plane cur(rng, 8, 8, l.cur_step, l.cur_shift), ref(rng, 8, 8, l.ref_step, l.ref_shift);
      Plane d1(rng, 8, 16, dstep, l.cur_shift & 14), d2(rng, 8, 16, dstep, l.cur_shift & 14);
      d2.store = d1.store;  // same size: the buffer (and d2.first) stays put
      const int32_t s1 = me::sse2::sub_sad8x8(cur.first, l.cur_step, ref.first, l.ref_step, d1.as<int16_t>(), dstep);
      const int32_t s2 = me::ref::sub_sad8x8(cur.first, l.cur_step, ref.first, l.ref_step, d2.as<int16_t>(), dstep);
      ASSERT_EQ(s1, s2);
      ASSERT_EQ(d1.store, d2.store);
    }
  }
}

}  // namespace
#endif
