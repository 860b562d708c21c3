// H.264 intra prediction kernels for the checker and the benchmarks: every
// mode under every combination of the availability bits (and stray high
// bits), on a picture block that holds exactly the neighbours a mode may read,
// so a read of an absent row or column lands outside the block.
#include "h264/intra_kernels.h"
#include "h264/recon_kernels.h"
#include "huxvc.h"
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
Pic picture(Trial& t, int n, uint32_t avail, bool ar, int steps = hux::check::kAny) {
  const bool up = avail & 1, left = avail & 34;
  const int w = (left ? 1 : 0) + n + (ar && (avail & 64) ? n : 0), h = n + (up || (avail & 96) ? 1 : 0);
  const auto b = t.rows<uint8_t>(w, h, steps);
  return {hux::row(b.p, b.step, h - n) + (left ? 1 : 0), b.step};
}
// The exports (hand-written on x86-64) against the reference kernels, on
// pictures with positive (odd or padded) steps.
int32_t export4(uint8_t* p, int32_t s, uint32_t m, uint32_t a) { return huxiPredictIntra_4x4_H264_8u_C1IR(p, s, m, a); }
int32_t export16(uint8_t* p, int32_t s, uint32_t m, uint32_t a) { return huxiPredictIntra_16x16_H264_8u_C1IR(p, s, m, a); }
int32_t export8(uint8_t* p, int32_t s, uint32_t m, uint32_t a) { return huxiPredictIntraChroma8x8_H264_8u_C1IR(p, s, m, a); }
using Pred = int32_t (*)(uint8_t*, int32_t, uint32_t, uint32_t);
void compare_export(Trial& t, int n, uint32_t mode, uint32_t a, Pred ref, Pred exp) {
  const Pic p = picture(t, n, a, n == 4, hux::check::kOdd);
  t.compare("mode " + std::to_string(mode) + "/export", ref, exp, p.p, p.step, mode, a);
}

uint32_t flags(Trial& t) { return static_cast<uint32_t>(t.pick(128)) | (t.pick(4) ? 0u : static_cast<uint32_t>(t.rng()) & ~127u); }

// Every mode in each trial, so that each has its own benchmark.
HUX_CHECK(h264, intra4x4, 256) {
  for (uint32_t mode = 0; mode < 9; ++mode) {
    const uint32_t a = t.index() < 8 ? 127 : flags(t);
    const Pic p = picture(t, 4, a, true);
    t.compare(std::string("mode ") + std::to_string(mode), &ref::pred4x4, &sse2::pred4x4, p.p, p.step, mode, a);
    compare_export(t, 4, mode, a, &ref::pred4x4, &export4);
  }
}

HUX_CHECK(h264, intra16x16, 256) {
  for (uint32_t mode = 0; mode < 5; ++mode) {
    const uint32_t a = t.index() < 8 ? 127 : flags(t) | (t.pick(4) ? 35u : 0u);
    const Pic p = picture(t, 16, a, false);
    t.compare(std::string("mode ") + std::to_string(mode), &ref::pred16x16, &sse2::pred16x16, p.p, p.step, mode, a);
    compare_export(t, 16, mode, a, &ref::pred16x16, &export16);
  }
}

HUX_CHECK(h264, intra_chroma, 256) {
  for (uint32_t mode = 0; mode < 5; ++mode) {
    const uint32_t a = t.index() < 8 ? 127 : flags(t) | (t.pick(4) ? 35u : 0u);
    const Pic p = picture(t, 8, a, false);
    t.compare(std::string("mode ") + std::to_string(mode), &ref::pred_chroma8x8, &sse2::pred_chroma8x8, p.p, p.step,
              mode, a);
    compare_export(t, 8, mode, a, &ref::pred_chroma8x8, &export8);
  }
}

// Whole macroblocks: the pattern walk over the SSE2 block kernels against the
// same walk over the portable ones, for patterns of no block, the luma blocks
// only, every block, and a random one; the coefficient pointer lives in a
// checked cell, so its advance is compared too.
template <class R>
struct Mb {
  static int32_t inter(const int16_t** c, uint8_t* p, int32_t s, uint32_t cbp, int32_t qp, const int16_t* ls, int32_t form) {
    if (form == 0) R::luma_flat(*c, p, s, cbp, qp);
    else if (form == 1) R::luma_scaled(*c, p, s, cbp, qp, ls, qp == 0);
    else R::luma8x8(*c, p, s, cbp, qp, ls, false);
    return 0;
  }
  static int32_t intra(const int16_t** c, uint8_t* p, int32_t s, const uint32_t* modes, uint32_t cbp, int32_t qp,
                       uint32_t edge, const int16_t* ls, int32_t form) {
    if (form == 0) R::intra4x4(*c, p, s, modes, cbp, qp, edge, ls, qp == 0);
    else if (form == 1) R::intra8x8(*c, p, s, reinterpret_cast<const int32_t*>(modes), cbp, qp, edge, ls, qp == 0);
    else return R::intra16x16(*c, p, s, modes[0] & 3, cbp, qp, edge);
    return 0;
  }
  static int32_t chroma(const int16_t** c, uint8_t* cb, uint8_t* cr, int32_t s, uint32_t mode, uint32_t cbp,
                        int32_t qp, uint32_t edge, const int16_t* ls, int32_t form) {
    uint8_t* const planes[2] = {cb, cr};
    if (mode < 4) {
      const int32_t st = R::chroma_intra_pred(planes, s, mode, edge);
      if (st) return st;
    }
    const int32_t qps[2] = {qp, 39 - qp};
    const int16_t* const sc[2] = {ls, ls + 16};
    if (form == 0) R::chroma_flat(*c, planes, s, cbp, qp);
    else R::chroma_scaled(*c, planes, s, cbp, qps, sc, true, mode);
    return 0;
  }
};
using RefMb = Mb<hux::h264::ref::Recon>;
using SseMb = Mb<hux::h264::sse2::Recon>;

const char* const kPatterns[] = {"none", "luma", "all", "random"};
uint32_t pattern(Trial& t, int k, uint32_t all) {
  const uint32_t luma = all & 0x1FFFFu;
  return k == 0 ? 0 : k == 1 ? luma : k == 2 ? all : static_cast<uint32_t>(t.rng()) & all;
}

HUX_CHECK(h264, recon_luma, 128) {
  t.stateful();
  static const char* const kForm[] = {"inter", "inter scaled", "inter 8x8", "intra 4x4", "intra 8x8", "intra 16x16"};
  for (int f = 0; f < 6; ++f)
    for (int k = 0; k < 4; ++k) {
      const auto pic = t.rows<uint8_t>(25, 17);  // above-right reaches x 23 (8x8)
      const int16_t* coef = t.buf<int16_t>(16 * 17 + 64);
      const int16_t** cell = t.copy(&coef, 1);
      const int16_t* ls = t.buf<int16_t>(64, -4096, 4095);
      uint32_t* modes = t.buf<uint32_t>(16, 0, 8);
      const int32_t qp = t.pick(4) ? t.pick(52) : 0;
      const uint32_t cbp = pattern(t, k, 0x1FFFF), edge = static_cast<uint32_t>(t.pick(4) ? 0 : t.pick(256));
      const std::string label = std::string(kForm[f]) + " " + kPatterns[k];
      uint8_t* mb = hux::row(pic.p, pic.step, 1) + 1;
      if (f < 3)
        t.compare(label, &RefMb::inter, &SseMb::inter, cell, mb, pic.step, cbp, qp, ls, f);
      else
        t.compare(label, &RefMb::intra, &SseMb::intra, cell, mb, pic.step, modes, cbp, qp, edge, ls, f - 3);
    }
}

HUX_CHECK(h264, recon_chroma, 256) {
  t.stateful();
  static const char* const kForm[] = {"inter", "inter scaled", "intra", "intra scaled"};
  for (int f = 0; f < 4; ++f)
    for (int k = 0; k < 4; ++k) {
      const auto cb = t.rows<uint8_t>(9, 9), cr = t.rows<uint8_t>(9, 9);
      if (cb.step != cr.step) continue;  // the planes share one step
      const int16_t* coef = t.buf<int16_t>(8 + 16 * 8);
      const int16_t** cell = t.copy(&coef, 1);
      const int16_t* ls = t.buf<int16_t>(32, -4096, 4095);
      const int32_t qp = t.pick(4) ? t.pick(40) : 0;
      const uint32_t mode = f < 2 ? 4u : static_cast<uint32_t>(t.pick(4));
      const uint32_t cbp = pattern(t, k, 0x7FE0000), edge = static_cast<uint32_t>(t.pick(4) ? 0 : t.pick(256));
      t.compare(std::string("chroma ") + kForm[f] + " " + kPatterns[k], &RefMb::chroma, &SseMb::chroma, cell,
                hux::row(cb.p, cb.step, 1) + 1, hux::row(cr.p, cr.step, 1) + 1, cb.step, mode, cbp, qp, edge, ls, f & 1);
    }
}

}  // namespace
#endif
