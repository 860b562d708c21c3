// Difference, SATD, SSD and activity kernels for the checker and the
// benchmarks.
#include "huxvc.h"
#include "me/metrics_kernels.h"
#include "support/check.h"

#if defined(HUX_SSE2) && HUX_SSE2
namespace {

namespace me = hux::me;
using hux::check::Trial;
constexpr int kWordSteps = hux::check::kPadded | hux::check::kNegative;
const char* const kPos = "ivhd";

// A reference exactly as large as the position reads.
hux::check::Plane<uint8_t> reference(Trial& t, int w, int h, int mode) {
  return t.rows<uint8_t>(w + (mode & me::kHorizontal ? 1 : 0), h + (mode & me::kVertical), hux::check::kAny);
}
std::string wxh(int w, int h) { return std::to_string(w) + "x" + std::to_string(h); }

template <int W, int H>
void satd(Trial& t) {
  auto c = t.rows<uint8_t>(W, H), r = t.rows<uint8_t>(W, H);
  t.compare(wxh(W, H), &me::ref::satd<W, H>, &me::sse2::satd<W, H>, c.p, c.step, r.p, r.step);
}
HUX_CHECK(me, satd, 256) {
  satd<16, 16>(t);
  satd<16, 8>(t);
  satd<8, 16>(t);
  satd<8, 8>(t);
  satd<8, 4>(t);
  satd<4, 8>(t);
  satd<4, 4>(t);
}

#if HUX_ASM && defined(__x86_64__)
int32_t sat8x8d_export(const uint8_t* c, int32_t cs, const uint8_t* r, int32_t rs) {
  int32_t s = -1;
  return huxiSAT8x8D_8u32s_C1R(c, cs, r, rs, &s) == huxOk ? s : -2;
}
#endif
HUX_CHECK(me, sat8x8d, 256) {
  auto c = t.rows<uint8_t>(8, 8), r = t.rows<uint8_t>(8, 8);
  t.compare("8u", &me::ref::sat8x8d<uint8_t>, &me::sse2::sat8x8d<uint8_t>, c.p, c.step, r.p, r.step);
#if HUX_ASM && defined(__x86_64__)
  t.compare("8u/export", &me::ref::sat8x8d<uint8_t>, &sat8x8d_export, c.p, c.step, r.p, r.step);
#endif
  const int64_t hi = t.pick({65535, 32767, 1023});
  auto c16 = t.rows<uint16_t>(8, 8, kWordSteps, 0, hi), r16 = t.rows<uint16_t>(8, 8, kWordSteps, 0, hi);
  t.compare("16u", &me::ref::sat8x8d<uint16_t>, &me::sse2::sat8x8d<uint16_t>, c16.p, c16.step, r16.p, r16.step);
}

template <int W, int H, int M>
void ssd(Trial& t) {
  auto c = t.rows<uint8_t>(W, H);
  auto r = reference(t, W, H, M);
  t.compare(wxh(W, H) + "/" + kPos[M], &me::ref::ssd<W, H, M>, &me::sse2::ssd<W, H, M>, c.p, c.step, r.p, r.step);
}
#if HUX_ASM && defined(__x86_64__)
// The 8x8 export (x86/metrics_asm.cpp sums the integer position itself),
// through the kernel signature; selector bits outside the position vary.
template <int M>
int32_t ssd8x8_export(const uint8_t* c, int32_t cs, const uint8_t* r, int32_t rs, int32_t other) {
  int32_t s = -1;
  if (huxiSSD8x8_8u32s_C1R(c, cs, r, rs, &s, (M << 2) | (other & ~12)) != huxOk) return -2;
  return s;
}
template <int M>
int32_t ssd8x8_ref(const uint8_t* c, int32_t cs, const uint8_t* r, int32_t rs, int32_t) {
  return me::ref::ssd<8, 8, M>(c, cs, r, rs);
}
#endif
template <int W, int H, int M>
void ssd_export(Trial& t) {
#if HUX_ASM && defined(__x86_64__)
  if constexpr (W == 8 && H == 8) {
    auto c = t.rows<uint8_t>(W, H);
    auto r = reference(t, W, H, M);
    t.compare("8x8/" + std::string(1, kPos[M]) + "/export", &ssd8x8_ref<M>, &ssd8x8_export<M>, c.p, c.step, r.p,
              r.step, static_cast<int32_t>(t.rng()));
  }
#endif
}
template <int W, int H>
void ssd_all(Trial& t) {
  ssd_export<W, H, 0>(t);
  ssd_export<W, H, 1>(t);
  ssd_export<W, H, 2>(t);
  ssd_export<W, H, 3>(t);
  ssd<W, H, 0>(t);
  ssd<W, H, 1>(t);
  ssd<W, H, 2>(t);
  ssd<W, H, 3>(t);
}
template <int F, int B>
void sqr_b(Trial& t) {
  auto c = t.rows<uint8_t>(16, 16);
  auto f = reference(t, 16, 16, F), b = reference(t, 16, 16, B);
  t.compare(std::string("16x16B/") + kPos[F] + kPos[B], &me::ref::sqr_diff_b<F, B>, &me::sse2::sqr_diff_b<F, B>, c.p,
            c.step, f.p, f.step, b.p, b.step);
}
HUX_CHECK(me, ssd, 256) {
  ssd_all<8, 8>(t);
  ssd_all<4, 4>(t);
  ssd_all<16, 16>(t);
  sqr_b<0, 0>(t);
  sqr_b<3, 1>(t);
  sqr_b<2, 3>(t);
  sqr_b<1, 2>(t);
}

template <int H, int M>
void var_mean(Trial& t) {
  auto c = t.rows<uint8_t>(16, H);
  auto r = reference(t, 16, H, M);
  t.compare(wxh(16, H) + "/" + kPos[M], &me::ref::var_mean_diff<H, M>, &me::sse2::var_mean_diff<H, M>, c.p, c.step,
            r.p, r.step, t.buf<int32_t>(H / 4), t.buf<int32_t>(H / 4));
}
HUX_CHECK(me, activity, 256) {
  var_mean<16, 0>(t);
  var_mean<16, 3>(t);
  var_mean<8, 1>(t);
  var_mean<8, 2>(t);
  auto b16 = t.rows<uint8_t>(16, 16), b8 = t.rows<uint8_t>(8, 8);
  t.compare("variance16x16", &me::ref::variance16x16, &me::sse2::variance16x16, b16.p, b16.step);
  t.compare("varsum8x8/8u", &me::ref::var_sum8x8<uint8_t>, &me::sse2::var_sum8x8<uint8_t>, b8.p, b8.step,
            t.buf<int32_t>(1), t.buf<int32_t>(1));
  auto w = t.rows<int16_t>(8, 8, kWordSteps, -32768, 32767);
  t.compare("varsum8x8/16s", &me::ref::var_sum8x8<int16_t>, &me::sse2::var_sum8x8<int16_t>, w.p, w.step,
            t.buf<int32_t>(1), t.buf<int32_t>(1));
  t.compare("meanabsdev16x16", &me::ref::mean_abs_dev<16>, &me::sse2::mean_abs_dev<16>, b16.p, b16.step);
  t.compare("meanabsdev8x8", &me::ref::mean_abs_dev<8>, &me::sse2::mean_abs_dev<8>, b8.p, b8.step);
  // Near data puts zeros among the coefficients.
  t.compare("countzeros", &me::ref::count_zeros, &me::sse2::count_zeros, t.buf<int16_t>(64));
}

HUX_CHECK(me, edges, 512) {
  const uint32_t thr = static_cast<uint32_t>(t.pick({0, 1, 5, 50, 126, 127, 128, 200, 255, 256 + 7}));
  const uint32_t cnt = static_cast<uint32_t>(t.pick({0, 3, 20, 100, 224, 225, 255, 256 + 1}));
  auto b = t.rows<uint8_t>(16, 16);
  t.compare("8u", &me::ref::edges<uint8_t>, &me::sse2::edges<uint8_t>, b.p, b.step, thr, cnt);
  const int64_t hi = t.pick({65535, 1023, 3});
  auto w = t.rows<uint16_t>(16, 16, kWordSteps, 0, hi);
  const uint32_t thr16 = t.pick(2) ? thr : static_cast<uint32_t>(t.pick({1000, 32767, 32768, 40000, 65535, 65536 + 2}));
  t.compare("16u", &me::ref::edges<uint16_t>, &me::sse2::edges<uint16_t>, w.p, w.step, thr16, cnt);
}

template <int W, int H, class T>
void sub(Trial& t) {
  const int steps = sizeof(T) > 1 ? kWordSteps : hux::check::kAny;
  auto c = t.rows<T>(W, H, steps), r = t.rows<T>(W, H, steps);
  auto d = t.rows<int16_t>(W, H, kWordSteps);
  t.compare(wxh(W, H) + (sizeof(T) > 1 ? "/16u" : ""), &me::ref::sub<W, H, T>, &me::sse2::sub<W, H, T>, c.p, c.step,
            r.p, r.step, d.p, d.step);
}
template <int W>
void get_diff(Trial& t) {
  const int h = W == 16 ? t.pick({8, 16}) : t.pick({4, 8, 16});
  const int i = t.pick(16), j = t.pick(32);
  auto c = t.rows<uint8_t>(W, h);
  auto r = reference(t, W, h, i / 4);
  auto d = t.rows<int16_t>(W, h, kWordSteps), p = t.rows<int16_t>(W, h, kWordSteps);
  t.compare(std::to_string(W) + "/getdiff", me::ref::kGetDiff<W>[i], me::sse2::kGetDiff<W>[i], c.p, c.step, r.p,
            r.step, d.p, d.step, p.p, p.step, h);
  auto f = reference(t, W, h, (j / 2) & 3), b = reference(t, W, h, j / 8);
  t.compare(std::to_string(W) + "/getdiffB", me::ref::kGetDiffB<W>[j], me::sse2::kGetDiffB<W>[j], c.p, c.step, f.p,
            f.step, b.p, b.step, d.p, d.step, h);
}
// Word blocks are laid out with even steps; odd ones, one above, must act as
// the even step below.
template <int N, class T, class S>
void sums(Trial& t) {
  const int steps = sizeof(T) > 1 ? kWordSteps : hux::check::kAny;
  auto c = t.rows<T>(N, N, steps), p = t.rows<T>(N, N, steps);
  const int32_t odd = sizeof(T) > 1 ? t.pick(2) : 0;
  int16_t* diff = t.index() % 5 != 4 ? t.buf<int16_t>(N * N) : nullptr;
  t.compare("sums" + wxh(N, N) + (sizeof(T) > 1 ? "/16u" : ""), &me::ref::sums_diff<N, T, S>,
            &me::sse2::sums_diff<N, T, S>, c.p, c.step + odd, p.p, p.step + odd, t.buf<S>(N * N / 16), diff);
}
HUX_CHECK(me, differences, 256) {
  sub<16, 16, uint8_t>(t);
  sub<8, 8, uint8_t>(t);
  sub<4, 4, uint8_t>(t);
  sub<8, 8, uint16_t>(t);
  sub<4, 4, uint16_t>(t);
  get_diff<16>(t);
  get_diff<8>(t);
  sums<16, uint8_t, int16_t>(t);
  sums<8, uint8_t, int16_t>(t);
  sums<16, uint16_t, int32_t>(t);
  sums<8, uint16_t, int32_t>(t);
}

}  // namespace
#endif
