// Weighted prediction kernels for the checker and the benchmarks. The SSE2 kernels pick a 16-bit scheme from the
// parameters, so trials draw them around every bound of the schemes as well as in the standard's ranges and beyond.
#include "h264/weight_kernels.h"
#include "huxvc.h"
#include "support/check.h"

#if defined(HUX_SSE2) && HUX_SSE2
namespace {

namespace ref = hux::h264::ref;
namespace sse2 = hux::h264::sse2;
using hux::check::Trial;

int32_t any32(Trial& t) { return static_cast<int32_t>(t.rng()); }
int32_t near(Trial& t, int32_t v) { return v - 2 + t.pick(5); }

int32_t weight(Trial& t) {
  switch (t.pick(6)) {
    case 0: return t.pick({-128, 127, 128, 0, 1, -1, 64, -64, 129, -129, 255, -256});
    case 1: return any32(t);
    case 2: return near(t, t.pick({-128, 128, 64, -64}));
    default: return t.pick(259) - 129;
  }
}
// Shifts of the standard (0..8) most of the time.
uint32_t shift(Trial& t) {
  if (t.pick(4)) return static_cast<uint32_t>(t.pick(9));
  return t.pick({9u, 14u, 15u, 16u, 17u, 31u, 40u, 61u, 62u, 63u, 0xFFFFFFFFu});
}
// Offsets near the bounds of 16 bits before and after the shift.
int32_t offset(Trial& t, uint32_t s) {
  switch (t.pick(6)) {
    case 0: return any32(t);
    case 1: return near(t, t.pick({-32768, 32767}));
    case 2: return s < 15 ? near(t, (t.pick(2) ? 32767 : -32768) >> s) : 0;
    default: return t.pick(257) - 128;
  }
}

// A square block at trial 0 (the benchmarks' case), any height otherwise;
// heights are even for the two narrow widths, as the exports' are.
template <int W>
int height(Trial& t) {
  return t.index() % 2 == 0 ? W : 2 << t.pick(4);
}

template <int W>
void uni(Trial& t) {
  const int h = height<W>(t);
  const auto p = t.rows<uint8_t>(W, h);
  uint32_t s = 6;
  int32_t w = 40, o = 4;
  if (t.index()) s = shift(t), w = weight(t), o = offset(t, s);
  t.compare("uni " + std::to_string(W) + "x" + std::to_string(h), &ref::uni<W>, &sse2::uni<W>, p.p, p.step, h, s, w, o);
}

template <int W>
void bi(Trial& t) {
  const int h = height<W>(t);
  const auto a = t.rows<uint8_t>(W, h), b = t.rows<uint8_t>(W, h);
  uint32_t s = 6;
  int32_t w1 = 40, w2 = 24, o = 1;
  if (t.index()) s = shift(t), w1 = weight(t), w2 = weight(t), o = offset(t, s);
  // The weighted average writes over its second source.
  const auto d = t.index() % 5 == 1 ? b : t.rows<uint8_t>(W, h);
  t.compare("bi " + std::to_string(W) + "x" + std::to_string(h), &ref::bi<W>, &sse2::bi<W>, a.p, a.step, b.p, b.step,
            d.p, d.step, h, s, w1, w2, o);
}

#if HUX_ASM && defined(__x86_64__)
// The explicit two-prediction export (x86/weight_asm.cpp weights the 8x8 and
// 16x16 common cases itself) against the reference kernel, in the export's terms.
template <int W>
void bi_export_ref(const uint8_t* a, const uint8_t* b, uint8_t* d, int32_t step, int32_t sd, uint32_t logWD, int32_t w1,
                   int32_t o1, int32_t w2, int32_t o2, int32_t h) {
  ref::bi<W>(a, step, b, step, d, sd, h, hux::h264::bi_shift(logWD), w1, w2, hux::h264::bi_offset(o1, o2));
}
template <int W>
void bi_export(const uint8_t* a, const uint8_t* b, uint8_t* d, int32_t step, int32_t sd, uint32_t logWD, int32_t w1,
               int32_t o1, int32_t w2, int32_t o2, int32_t h) {
  huxiBiDirWeightBlock_H264_8u_P2P1R(a, b, d, step, sd, logWD, w1, o1, w2, o2, HuxSize{W, h});
}
void uni_export(uint8_t* p, int32_t step, int h, uint32_t s, int32_t w, int32_t o) {
  huxiUniDirWeightBlock_H264_8u_C1R(p, step, s, w, o, HuxSize{8, h});
}
void uni_export_check(Trial& t, const char* kernel) {
  const int h = height<8>(t);
  const auto p = t.rows<uint8_t>(8, h, hux::check::kOdd);
  uint32_t s = 6;
  int32_t w = 40, o = 4;
  if (t.index()) s = shift(t), w = weight(t), o = offset(t, s);
  t.compare("uni 8x" + std::to_string(h) + "/export " + kernel, &ref::uni<8>, &uni_export, p.p, p.step, h, s, w, o);
}
template <int W>
void bi_export_check(Trial& t, const char* kernel) {
  const int h = height<W>(t);
  const auto ab = t.rows<uint8_t>(W, 2 * h, hux::check::kOdd);
  const uint8_t* b = hux::row(ab.p, ab.step, h);
  uint32_t logWD = 5;
  int32_t w1 = 40, w2 = 24, o1 = 1, o2 = -2;
  if (t.index()) logWD = shift(t), w1 = weight(t), w2 = weight(t), o1 = offset(t, logWD), o2 = offset(t, logWD);
  const std::string name = "bi " + std::to_string(W) + "x" + std::to_string(h) + "/export " + kernel;
  if (t.index() % 5 == 1 || t.index() % 5 == 3)  // in place over the second source, or the first
    return t.compare(name, &bi_export_ref<W>, &bi_export<W>, ab.p, b, const_cast<uint8_t*>(t.index() % 5 == 1 ? b : ab.p),
                     ab.step, ab.step, logWD, w1, o1, w2, o2, h);
  const auto d = t.rows<uint8_t>(W, h, hux::check::kOdd);
  t.compare(name, &bi_export_ref<W>, &bi_export<W>, ab.p, b, d.p, ab.step, d.step, logWD, w1, o1, w2, o2, h);
}
// An export's check on the kernel this processor selects, then with the
// feature flags cleared, on its SSE2 kernel.
template <class Check>
void each_kernel(Trial& t, bool selected, const char* simd, Check check) {
  check(t, selected ? simd : "sse2");
  const hux::check::FeatureFlags sse2(false);
  check(t, "sse2");
}
#endif

HUX_CHECK(h264, weight, 1024) {
#if HUX_ASM && defined(__x86_64__)
  each_kernel(t, hux_cpu_sse41, "sse4.1", uni_export_check);
  each_kernel(t, hux_cpu_ssse3, "ssse3", bi_export_check<8>);
  each_kernel(t, hux_cpu_ssse3, "ssse3", bi_export_check<16>);
#endif
  uni<16>(t);
  uni<8>(t);
  uni<4>(t);
  uni<2>(t);
  bi<16>(t);
  bi<8>(t);
  bi<4>(t);
  bi<2>(t);
}

}  // namespace
#endif
