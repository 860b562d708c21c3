// H.264 intra prediction kernels for the checker and the benchmarks: every
// mode under every combination of the availability bits (and stray high
// bits), on a picture block that holds exactly the neighbours a mode may read,
// so a read of an absent row or column lands outside the block.
#include "h264/intra_kernels.h"
#include "support/check.h"

#if defined(HUX_SSE2) && HUX_SSE2
namespace {

namespace ref = hux::h264::ref;
namespace sse2 = hux::h264::sse2;
using hux::check::Trial;

// An n x n block with its row above (and n above-right when ar), its left
// column and corner; returns the block's top-left sample. Without a flag the
// matching neighbour is not part of the allocation at all.
struct Pic {
  uint8_t* p;
  int32_t step;
};
Pic picture(Trial& t, int n, uint32_t avail, bool ar) {
  const bool up = avail & 1, left = avail & 34;
  const int w = (left ? 1 : 0) + n + (ar && (avail & 64) ? n : 0), h = n + (up || (avail & 96) ? 1 : 0);
  const auto b = t.rows<uint8_t>(w, h);
  return {hux::row(b.p, b.step, h - n) + (left ? 1 : 0), b.step};
}
uint32_t flags(Trial& t) { return static_cast<uint32_t>(t.pick(128)) | (t.pick(4) ? 0u : static_cast<uint32_t>(t.rng()) & ~127u); }

HUX_CHECK(h264, intra4x4, 1024) {
  const uint32_t mode = static_cast<uint32_t>(t.pick(9)), a = flags(t);
  const Pic p = picture(t, 4, a, true);
  t.compare(std::string("mode ") + std::to_string(mode), &ref::pred4x4, &sse2::pred4x4, p.p, p.step, mode, a);
}

HUX_CHECK(h264, intra16x16, 512) {
  const uint32_t mode = static_cast<uint32_t>(t.pick(5)), a = flags(t) | (t.pick(4) ? 35u : 0u);
  const Pic p = picture(t, 16, a, false);
  t.compare(std::string("mode ") + std::to_string(mode), &ref::pred16x16, &sse2::pred16x16, p.p, p.step, mode, a);
}

HUX_CHECK(h264, intra_chroma, 512) {
  const uint32_t mode = static_cast<uint32_t>(t.pick(5)), a = flags(t) | (t.pick(4) ? 35u : 0u);
  const Pic p = picture(t, 8, a, false);
  t.compare(std::string("mode ") + std::to_string(mode), &ref::pred_chroma8x8, &sse2::pred_chroma8x8, p.p, p.step,
            mode, a);
}

}  // namespace
#endif
