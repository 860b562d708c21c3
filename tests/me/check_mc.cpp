// Motion-compensation, copy and averaging kernels for the checker and the
// benchmarks: every table entry of every width, at heights 2 to 16, with
// residuals over the whole signed 16-bit range.
#include "me/mc_kernels.h"
#include "support/check.h"

#if defined(HUX_SSE2) && HUX_SSE2
namespace {

namespace me = hux::me;
using hux::check::Trial;
constexpr int kWordSteps = hux::check::kPadded | hux::check::kNegative;

// A reference exactly as large as a position reads: one more column (Dx
// bytes) for the horizontal and diagonal ones, one more row for the vertical
// and diagonal ones.
hux::check::Plane<uint8_t> reference(Trial& t, int w, int h, int mode, int dx) {
  return t.rows<uint8_t>(w + (mode & me::kHorizontal ? dx : 0), h + (mode & me::kVertical), hux::check::kAny);
}
int height(Trial& t, int w) { return w == 2 ? t.pick({2, 4}) : w == 4 ? t.pick({2, 4, 8}) : t.pick({4, 8, 16}); }
const char* const kPos[8] = {"i", "i1", "v", "v1", "h", "h1", "d", "d1"};

template <int W, int Dx>
void mc(Trial& t) {
  const std::string w = std::to_string(W) + (Dx == 2 ? "uv" : "");
  const int h = height(t, W);
  for (int i = 0; i < 8; ++i) {
    auto r = reference(t, W, h, i / 2, Dx);
    auto res = t.rows<int16_t>(W, h, kWordSteps, -32768, 32767);
    auto d = t.rows<uint8_t>(W, h);
    t.compare(w + "/" + kPos[i], me::ref::kMc<W, Dx>[i], me::sse2::kMc<W, Dx>[i], r.p, r.step, res.p, res.step, d.p,
              d.step, h);
  }
  // One of the 32 pairs of positions and roundings a trial.
  const int i = t.pick(32);
  auto f = reference(t, W, h, (i / 2) & 3, Dx), b = reference(t, W, h, i / 8, Dx);
  auto res = t.rows<int16_t>(W, h, kWordSteps, -32768, 32767);
  auto d = t.rows<uint8_t>(W, h);
  t.compare(w + "/B", me::ref::kMcB<W, Dx>[i], me::sse2::kMcB<W, Dx>[i], f.p, f.step, b.p, b.step, res.p, res.step,
            d.p, d.step, h);
}

HUX_CHECK(me, mc, 256) {
  mc<16, 1>(t);
  mc<16, 2>(t);
  mc<8, 1>(t);
  mc<4, 1>(t);
  mc<2, 1>(t);
}

// Copies and averages by the acc index, at the heights of their exports.
template <int W>
void copy_avg(Trial& t, int h) {
  for (int i = 0; i < 8; ++i) {
    const int mode = me::acc_mode(i / 2);
    const std::string label = std::to_string(W) + "x" + std::to_string(h) + "/" + kPos[2 * mode + (i & 1)];
    auto s = reference(t, W, h, mode, 1);
    auto d = t.rows<uint8_t>(W, h);
    t.compare(label, me::ref::kCopy<W>[i], me::sse2::kCopy<W>[i], s.p, s.step, d.p, d.step, h);
#if HUX_ASM && defined(__x86_64__)
    if (W == 8 && h == 8)
      t.compare(label + "/asm", me::ref::kCopy<W>[i], me::sse2::kCopy8x8Export[i], s.p, s.step, d.p, d.step, h);
#endif
    auto o = t.rows<uint8_t>(W, h);
    t.compare(label + "/avg", me::ref::kAvg<W>[i], me::sse2::kAvg<W>[i], s.p, s.step, o.p, o.step, d.p, d.step, h);
    // In place, as the averaging exports use it.
    t.compare(label + "/avg/in place", me::ref::kAvg<W>[i], me::sse2::kAvg<W>[i], s.p, s.step, o.p, o.step, o.p,
              o.step, h);
  }
}
HUX_CHECK(me, copy_avg, 256) {
  copy_avg<16>(t, 16);
  copy_avg<16>(t, 8);
  copy_avg<8>(t, 8);
  copy_avg<8>(t, 4);
}

HUX_CHECK(me, add_const, 256) {
  auto p = t.rows<uint8_t>(8, 8);
  const int16_t v = static_cast<int16_t>(t.pick({-32768, -300, -255, -1, 0, 1, 255, 300, 32767}) + t.pick(3) - 1);
  t.compare("8x8", &me::ref::add_const8x8, &me::sse2::add_const8x8, v, p.p, p.step);
}

}  // namespace
#endif
