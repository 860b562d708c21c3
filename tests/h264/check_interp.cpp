// H.264 interpolation kernels for the checker and the benchmarks. Sources
// span exactly the rows and columns the filter reaches, so a read beyond them
// faults or trips the sanitizer.
#include "common/cpu.h"
#include "h264/interp_kernels.h"
#if HUX_CPU_FLAGS
#include "h264/x86/interp_ssse3.h"
#endif
#include "huxvc.h"
#include "support/check.h"

#if defined(HUX_SSE2) && HUX_SSE2
namespace {

namespace h = hux::h264;
using hux::check::Trial;

// Heights: the block's own in the benchmarks; in checks also taller ones that
// run the centre kernels in several bands.
int height_for(Trial& t, int w, int step) {
  if (t.index() == 0 || t.pick(2)) return w < step ? step : w;
  return step * (1 + t.pick(32 / step));
}

// Rows of 0/255 in a period-3 pattern, rows in a period-3 order: at one
// column in three every row's 6-tap sum is at its largest or smallest, and
// the centre position's middle term leaves the 16-bit range.
void worst_centre(Trial& t, hux::check::Plane<uint8_t> p, int w, int rows) {
  const int px = t.pick(3), py = t.pick(3), pol = t.pick(2);
  for (int y = 0; y < rows; ++y)
    for (int x = 0; x < w; ++x)
      hux::row(p.p, p.step, y)[x] = static_cast<uint8_t>(255 * (((x + px) % 3 != 2) ^ ((y + py) % 3 == 0) ^ pol));
}

template <int W, int DX, int DY>
void luma(Trial& t) {
  const int hgt = height_for(t, W, 4), lx = DX ? 2 : 0, ly = DY ? 2 : 0;
  const int cols = W + (DX ? 5 : 0), rows = hgt + (DY ? 5 : 0);
  auto s = t.rows<uint8_t>(cols, rows);
  if (t.index() % 8 == 7) worst_centre(t, s, cols, rows);
  auto d = t.rows<uint8_t>(W, hgt);
  const std::string name = std::to_string(W) + "/" + std::to_string(DX) + std::to_string(DY);
  t.compare(name, &h::ref::luma<W, DX, DY>, &h::sse2::luma<W, DX, DY>, hux::row(s.p, s.step, ly) + lx, s.step, d.p,
            d.step, hgt);
#if HUX_CPU_FLAGS
  if (hux_cpu_ssse3)
    t.compare(name + " ssse3", &h::ref::luma<W, DX, DY>, &h::ssse3::luma<W, DX, DY>, hux::row(s.p, s.step, ly) + lx,
              s.step, d.p, d.step, hgt);
#endif
}
template <int W, int... I>
void luma_all(Trial& t, std::integer_sequence<int, I...>) {
  (luma<W, I & 3, (I >> 2)>(t), ...);
}

#if HUX_ASM && defined(__x86_64__)
// The export's own full-sample 4x4, 8x8 and 16x16 copies and vertical half
// sample of 8x8 and 16x16 blocks (x86/interp_asm.cpp), and the other heights it passes on,
// through the kernel signature.
template <int W, int DX, int DY>
int32_t luma_export(const uint8_t* src, int32_t ss, uint8_t* dst, int32_t ds, int32_t h) {
  return huxiInterpolateLuma_H264_8u_C1R(src, ss, dst, ds, DX, DY, HuxSize{W, h});
}
template <int W, int DX, int DY>
void luma_export_check(Trial& t) {
  const int hgt = height_for(t, W, 4), ly = DY ? 2 : 0, rows = hgt + (DY ? 5 : 0);
  auto s = t.rows<uint8_t>(W, rows);
  if (t.index() % 8 == 7) worst_centre(t, s, W, rows);
  auto d = t.rows<uint8_t>(W, hgt);
  t.compare(std::to_string(W) + "/" + std::to_string(DX) + std::to_string(DY) + "/export", &h::ref::luma<W, DX, DY>,
            &luma_export<W, DX, DY>, hux::row(s.p, s.step, ly), s.step, d.p, d.step, hgt);
}
#endif
HUX_CHECK(h264, interp_luma16, 96) {
  luma_all<16>(t, std::make_integer_sequence<int, 16>());
#if HUX_ASM && defined(__x86_64__)
  luma_export_check<16, 0, 0>(t);
  luma_export_check<16, 0, 2>(t);
#endif
}
HUX_CHECK(h264, interp_luma8, 96) {
  luma_all<8>(t, std::make_integer_sequence<int, 16>());
#if HUX_ASM && defined(__x86_64__)
  luma_export_check<8, 0, 0>(t);
  luma_export_check<8, 0, 2>(t);
#endif
}
HUX_CHECK(h264, interp_luma4, 96) {
  luma_all<4>(t, std::make_integer_sequence<int, 16>());
#if HUX_ASM && defined(__x86_64__)
  luma_export_check<4, 0, 0>(t);
#endif
}

template <int W, int Case>
void chroma(Trial& t) {
  const int hgt = height_for(t, W, 2);
  auto s = t.rows<uint8_t>(W + (Case & 1), hgt + (Case >> 1));
  auto d = t.rows<uint8_t>(W, hgt);
  // Fractions that do not apply are passed anyway: the kernel must not use them.
  const int32_t dx = Case & 1 ? 1 + t.pick(7) : t.pick(8), dy = Case & 2 ? 1 + t.pick(7) : t.pick(8);
  t.compare(std::to_string(W) + "/" + "0hvd"[Case], &h::ref::chroma<W, Case>, &h::sse2::chroma<W, Case>, s.p, s.step,
            d.p, d.step, dx, dy, hgt);
#if HUX_CPU_FLAGS
  if (hux_cpu_ssse3)
    t.compare(std::to_string(W) + "/" + "0hvd"[Case] + " ssse3", &h::ref::chroma<W, Case>, &h::ssse3::chroma<W, Case>,
              s.p, s.step, d.p, d.step, dx, dy, hgt);
#endif
}
template <int W>
void chroma_all(Trial& t) {
  chroma<W, 0>(t), chroma<W, 1>(t), chroma<W, 2>(t), chroma<W, 3>(t);
}
HUX_CHECK(h264, interp_chroma, 128) {
  chroma_all<8>(t);
  chroma_all<4>(t);
  chroma_all<2>(t);
}

HUX_CHECK(h264, interp_average, 128) {
  for (const int n : {16, 8, 4, 0}) {
    // 0: any width and height up to 16, odd ones included.
    const int w = n ? n : 1 + t.pick(16), hgt = n ? n : 1 + t.pick(16);
    auto a = t.rows<uint8_t>(w, hgt), b = t.rows<uint8_t>(w, hgt), d = t.rows<uint8_t>(w, hgt);
    t.compare(n ? std::to_string(n) + "x" + std::to_string(n) : "any", &h::ref::average, &h::sse2::average, a.p, a.step,
              b.p, b.step, d.p, d.step, w, hgt);
  }
}

}  // namespace
#endif
