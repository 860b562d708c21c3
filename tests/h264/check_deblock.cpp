// H.264 deblocking kernels for the checker and the benchmarks. Pictures are
// either the checker's own data kinds or smooth 4x4 blocks with a little
// noise (near 0 and 255 too, where the clamps act), so that most lines pass
// the thresholds; thresholds are small, extreme or set to the first line's
// own differences (the < tests at their boundary); tc0 reaches 0 and 255; bS
// mixes 0..4 per segment, whole strong edges and bytes above 4. Trial 0 is
// the benchmarks' macroblock: the outer edge strong, the others bS 1..3.
#include "h264/deblock_kernels.h"
#include "support/check.h"

#if defined(HUX_SSE2) && HUX_SSE2
namespace {

namespace ref = hux::h264::ref;
namespace sse2 = hux::h264::sse2;
using hux::check::Trial;
using Kernel = void (*)(uint8_t*, int32_t, const uint8_t*, const uint8_t*, const uint8_t*, const uint8_t*);

uint8_t clip(int v) { return static_cast<uint8_t>(v < 0 ? 0 : v > 255 ? 255 : v); }

void texture(Trial& t, uint8_t* base, int32_t step, int w, int h) {
  const int kind = t.index() == 0 ? 1 : t.pick(3);
  if (kind == 0) return;  // the checker's data kind as it is
  const int spread = t.index() == 0 ? 12 : t.pick(40), noise = t.index() == 0 ? 2 : t.pick(7);
  for (int by = 0; by < h; by += 4)
    for (int bx = 0; bx < w; bx += 4) {
      const int mid = kind == 2 ? (t.pick(2) ? 255 : 0) : 128;
      const int b = mid + t.pick(2 * spread + 1) - spread;
      for (int y = by; y < by + 4 && y < h; ++y)
        for (int x = bx; x < bx + 4 && x < w; ++x) hux::row(base, step, y)[x] = clip(b + t.pick(2 * noise + 1) - noise);
    }
}

uint8_t threshold(Trial& t) {
  const int k = t.pick(4);
  return static_cast<uint8_t>(k == 0 ? t.pick(256) : k == 1 ? t.pick(25) : k == 2 ? t.pick({0, 1, 2, 254, 255}) : 4 + t.pick(12));
}

struct Args {
  uint8_t *alpha, *beta, *tc0, *bs;
};

// p: the first edge's q0; across: the step from p0 to q0.
Args args(Trial& t, const uint8_t* p, intptr_t across) {
  Args a{t.buf<uint8_t>(2), t.buf<uint8_t>(2), t.buf<uint8_t>(16), t.buf<uint8_t>(16)};
  if (t.index() == 0) {
    const uint8_t al[2] = {40, 32}, be[2] = {10, 8};
    for (int i = 0; i < 2; ++i) a.alpha[i] = al[i], a.beta[i] = be[i];
    for (int i = 0; i < 16; ++i) a.bs[i] = static_cast<uint8_t>(i < 4 ? 4 : 1 + t.pick(3)), a.tc0[i] = a.bs[i] & 3;
    return a;
  }
  for (int i = 0; i < 2; ++i) a.alpha[i] = threshold(t), a.beta[i] = threshold(t);
  // At the boundary of the first line's tests.
  if (t.pick(2)) a.alpha[0] = static_cast<uint8_t>(std::abs(p[0] - p[-across]) + t.pick(2));
  if (t.pick(2)) a.beta[0] = static_cast<uint8_t>(std::abs(p[-across] - p[-2 * across]) + t.pick(2));
  const int tk = t.pick(3);
  for (int i = 0; i < 16; ++i)
    a.tc0[i] = static_cast<uint8_t>(tk == 0 ? t.pick(26) : tk == 1 ? t.pick({0, 1, 25, 254, 255}) : t.pick(256));
  for (int e = 0; e < 4; ++e) {
    const int k = t.pick(6);
    for (int j = 0; j < 4; ++j)
      a.bs[4 * e + j] = static_cast<uint8_t>(k == 0 ? 0 : k == 1 ? 4 : k == 2 ? t.pick(5) : k == 3 ? 1 + t.pick(3)
                                              : k == 4 ? t.pick({0, 4}) : t.pick(256));
  }
  return a;
}

// A plane of w x h samples; the macroblock starts `left` columns and `top` rows in.
void run(Trial& t, const char* label, Kernel r, Kernel s, int w, int h, int left, int top, bool vertical) {
  const auto pl = t.rows<uint8_t>(w, h);
  texture(t, pl.p, pl.step, w, h);
  uint8_t* p = hux::row(pl.p, pl.step, top) + left;
  const Args a = args(t, p, vertical ? 1 : pl.step);
  t.compare(label, r, s, p, pl.step, a.alpha, a.beta, a.tc0, a.bs);
}

HUX_CHECK(h264, deblock_luma, 1024) {
  run(t, "luma ver", &ref::luma_ver, &sse2::luma_ver, 20, 16, 4, 0, true);
  run(t, "luma hor", &ref::luma_hor, &sse2::luma_hor, 16, 20, 0, 4, false);
}

HUX_CHECK(h264, deblock_chroma, 1024) {
  run(t, "chroma ver", &ref::chroma_ver, &sse2::chroma_ver, 8, 8, 2, 0, true);
  run(t, "chroma hor", &ref::chroma_hor, &sse2::chroma_hor, 8, 8, 0, 2, false);
  run(t, "chroma422 ver", &ref::chroma422_ver, &sse2::chroma422_ver, 8, 16, 2, 0, true);
  run(t, "chroma422 hor", &ref::chroma422_hor, &sse2::chroma422_hor, 8, 16, 0, 2, false);
}

}  // namespace
#endif
