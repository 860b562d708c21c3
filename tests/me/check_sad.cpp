// Block SAD kernels for the checker and the benchmarks.
#include "me/sad_kernels.h"
#include "support/check.h"

#if defined(HUX_SSE2) && HUX_SSE2
namespace {

namespace me = hux::me;
using hux::check::Trial;

// The reference spans one more row for the vertical and diagonal positions,
// one more column for the horizontal and diagonal ones.
template <class T, int W, int H, int M, bool Export = false>
void sad(Trial& t, int64_t hi) {
  const auto c = t.rows<T>(W, H, hux::check::kAny & ~(sizeof(T) > 1 ? hux::check::kOdd : 0), 0, hi);
  const auto r = t.rows<T>(W + (M >> 1), H + (M & 1), hux::check::kAny & ~(sizeof(T) > 1 ? hux::check::kOdd : 0), 0, hi);
  const std::string label = std::to_string(W) + "x" + std::to_string(H) + "/" + "ivhd"[M] + (sizeof(T) > 1 ? "/16u" : "");
#if HUX_ASM
  if constexpr (Export) {
    t.compare(label + "/asm", &me::ref::sad<W, H, M>, &me::sse2::sad_export<W, H, M>, c.p, c.step, r.p, r.step);
    return;
  }
#endif
  if constexpr (sizeof(T) == 1) t.compare(label, &me::ref::sad<W, H, M>, &me::sse2::sad<W, H, M>, c.p, c.step, r.p, r.step);
  else t.compare(label, &me::ref::sad16u<W, H, M>, &me::sse2::sad16u<W, H, M>, c.p, c.step, r.p, r.step);
}
template <class T, int W, int H>
void all_positions(Trial& t, int64_t hi) {
  sad<T, W, H, me::kInteger>(t, hi);
  sad<T, W, H, me::kVertical>(t, hi);
  sad<T, W, H, me::kHorizontal>(t, hi);
  sad<T, W, H, me::kDiagonal>(t, hi);
}

HUX_CHECK(me, sad, 256) {
  all_positions<uint8_t, 16, 16>(t, 255);
  all_positions<uint8_t, 16, 8>(t, 255);
  all_positions<uint8_t, 8, 8>(t, 255);
  sad<uint8_t, 8, 16, 0>(t, 255);
  sad<uint8_t, 8, 4, 0>(t, 255);
  sad<uint8_t, 4, 8, 0>(t, 255);
  sad<uint8_t, 4, 4, 0>(t, 255);
#if HUX_ASM
  // The assembly exports.
  sad<uint8_t, 16, 16, me::kInteger, true>(t, 255);
  sad<uint8_t, 16, 8, me::kInteger, true>(t, 255);
  sad<uint8_t, 8, 8, me::kInteger, true>(t, 255);
  sad<uint8_t, 8, 4, me::kInteger, true>(t, 255);
  sad<uint8_t, 4, 4, me::kInteger, true>(t, 255);
  sad<uint8_t, 16, 16, me::kVertical, true>(t, 255);
  sad<uint8_t, 16, 16, me::kHorizontal, true>(t, 255);
  sad<uint8_t, 16, 8, me::kVertical, true>(t, 255);
  sad<uint8_t, 16, 8, me::kHorizontal, true>(t, 255);
  sad<uint8_t, 8, 8, me::kVertical, true>(t, 255);
  sad<uint8_t, 8, 8, me::kHorizontal, true>(t, 255);
#endif
  // Word samples at 16 bits (the interpolating sums saturate), 14 and 10.
  const int64_t hi = t.pick({65535, 16383, 1023});
  all_positions<uint16_t, 16, 16>(t, hi);
  all_positions<uint16_t, 8, 8>(t, hi);
  all_positions<uint16_t, 4, 4>(t, hi);
}

// Word sub-blocks use their steps rounded down to even: odd ones are given
// one above the even step the block was laid out with.
HUX_CHECK(me, sad_blocks, 256) {
  auto c = t.rows<uint8_t>(16, 16), r = t.rows<uint8_t>(16, 16);
  t.compare("8x8", &me::ref::sad_blocks<8>, &me::sse2::sad_blocks<8>, c.p, c.step, r.p, r.step, t.buf<uint16_t>(4));
  t.compare("4x4", &me::ref::sad_blocks<4>, &me::sse2::sad_blocks<4>, c.p, c.step, r.p, r.step, t.buf<uint16_t>(16));
  auto c16 = t.rows<uint16_t>(16, 16, hux::check::kNegative), r16 = t.rows<uint16_t>(16, 16, hux::check::kNegative);
  const int32_t odd = t.pick(2);
  t.compare("8x8/16u", &me::ref::sad_blocks16u<8>, &me::sse2::sad_blocks16u<8>, c16.p, c16.step + odd, r16.p,
            r16.step + odd, t.buf<uint32_t>(4));
  t.compare("4x4/16u", &me::ref::sad_blocks16u<4>, &me::sse2::sad_blocks16u<4>, c16.p, c16.step + odd, r16.p,
            r16.step + odd, t.buf<uint32_t>(16));
}

// Reference rows span exactly the columns the candidates cover.
template <int B>
void line(Trial& t, int32_t m) {
  auto c = t.rows<uint8_t>(B, B), r = t.rows<uint8_t>(m - 1 + B, B);
  t.compare("B" + std::to_string(B) + "/x" + std::to_string(m), &me::ref::sad_line<B>, &me::sse2::sad_line<B>, c.p,
            c.step, r.p, r.step, t.buf<uint16_t>(static_cast<size_t>(m)), m);
}
HUX_CHECK(me, sad_line, 128) {
  const int32_t m = 8 * (1 + t.pick(6));
  line<16>(t, m);
  line<8>(t, m);
  line<4>(t, m);
  line<2>(t, m);
}

// Ties are frequent with near data. Some trials pass more candidates than a
// 16-bit index counts, with the smallest value beyond the first 65536, and
// every other time the same value inside them too (the lower index wins).
HUX_CHECK(me, min_index, 512) {
  const bool many = t.index() % 64 == 5;
  const int32_t m = many ? 65536 + 8 * (1 + t.pick(8)) : 8 * (1 + t.pick(12));
  uint16_t* v = t.buf<uint16_t>(static_cast<size_t>(m), many, 65535);
  if (many) {
    v[65536 + t.pick(m - 65536)] = 0;
    if (t.pick(2)) v[t.pick(65536)] = 0;
  }
  t.compare(many ? "over 65536" : "up to 96", &me::ref::min_index, &me::sse2::min_index, v, m);
}

HUX_CHECK(me, frame_field, 256) {
  auto b = t.rows<uint8_t>(16, 16);
  auto w = t.rows<int16_t>(16, 16, hux::check::kNegative, -32768, 32767);
  using F8 = void (*)(const uint8_t*, int32_t, int32_t*, int32_t*);
  using F16 = void (*)(const int16_t*, int32_t, int32_t*, int32_t*);
  t.compare("8u", F8(&me::ref::frame_field<uint8_t>), F8(&me::sse2::frame_field), b.p, b.step, t.buf<int32_t>(1), t.buf<int32_t>(1));
  t.compare("16s", F16(&me::ref::frame_field<int16_t>), F16(&me::sse2::frame_field), w.p, w.step, t.buf<int32_t>(1),
            t.buf<int32_t>(1));
}

HUX_CHECK(me, sub_sad, 256) {
  auto c = t.rows<uint8_t>(8, 8), r = t.rows<uint8_t>(8, 8);
  auto d = t.rows<int16_t>(8, 8, hux::check::kNegative);
  t.compare("8x8", &me::ref::sub_sad8x8, &me::sse2::sub_sad8x8, c.p, c.step, r.p, r.step, d.p, d.step);
}

}  // namespace
#endif
