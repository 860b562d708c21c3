// H.264 macroblock reconstruction of 8-bit pictures: the coded block pattern
// walk over the packed coefficient buffer, the intra predictions in block
// order, and the residual of each block added in place. The walk is written
// once, over a set of block kernels (prediction, dequantisation, transforms);
// ref::Recon runs it on the portable kernels, sse2::Recon on the SSE2 ones, and
// the two must agree bit for bit.
//
// Pattern bits: 0 the Intra 16x16 luma DC, 1 + n luma 4x4 block n (quadrants in
// raster order, raster order inside each), 17 Cb DC, 18 Cr DC, 19 + b Cb AC
// block b, 23 + b Cr AC block b. Each set bit takes its block from the buffer:
// 16 entries (4 for a chroma DC); an 8x8 quadrant is coded when any of its four
// bits is set and then takes 64 entries.
//
// Edge type (a set bit: that macroblock is absent): bit 0 left, bit 2 above,
// bit 3 above-right, bit 4 above-left.
#pragma once

#include <cstdint>
#include <cstring>

#include "h264/intra_kernels.h"
#include "h264/transform_kernels.h"

namespace hux::h264 {

enum : uint32_t { kEdgeLeft = 1, kEdgeAbove = 4, kEdgeAboveRight = 8, kEdgeAboveLeft = 16 };
enum : uint32_t { kCbpLumaDC = 1, kCbpLuma = 0x1FFFEu, kCbpChroma = 0x7FE0000u };

// Position of luma 4x4 block n in the macroblock.
constexpr int blk_x(int n) { return 8 * ((n >> 2) & 1) + 4 * (n & 1); }
constexpr int blk_y(int n) { return 8 * (n >> 3) + 4 * ((n >> 1) & 1); }

// Decoding order of the block of size s (4 or 8) holding sample (x, y).
constexpr int order_of(int x, int y, int s) {
  const int q = 2 * (y >> 3) + (x >> 3);
  return s == 8 ? q : 4 * q + 2 * ((y >> 2) & 1) + ((x >> 2) & 1);
}

// Availability word of a block at (x, y) of size s inside the macroblock.
// Above-right: blocks of the top row look into the macroblock above (or, for
// the last column, the one above-right); below the top row a block has it when
// the block holding its above-right sample is decoded before it (so 4x4 blocks
// 3, 7, 11, 13 and 15 never have it).
constexpr uint32_t avail_of(int x, int y, int s, uint32_t edge) {
  const bool left = !(edge & kEdgeLeft), above = !(edge & kEdgeAbove);
  uint32_t a = 0;
  if (x > 0 || left) a |= kAvailLeft;
  if (y > 0 || above) a |= kAvailAbove;
  const bool corner = x > 0 && y > 0 ? true : x == 0 && y == 0 ? !(edge & kEdgeAboveLeft) : x == 0 ? left : above;
  if (corner) a |= kAvailAboveLeft;
  const bool ar = y == 0 ? (x + s < 16 ? above : !(edge & kEdgeAboveRight))
                         : x + s < 16 && order_of(x + s, y - 1, s) < order_of(x, y, s);
  if (ar) a |= kAvailAboveRight;
  return a;
}
constexpr uint32_t mb_avail(uint32_t edge) { return avail_of(0, 0, 16, edge) & ~kAvailAboveRight; }

// Every luma 4x4 block's word for each combination of the four edge bits.
inline constexpr auto kAvail4x4 = [] {
  struct T {
    uint32_t v[32][16];
  } t{};
  for (uint32_t e = 0; e < 32; ++e)
    for (int n = 0; n < 16; ++n) t.v[e][n] = avail_of(blk_x(n), blk_y(n), 4, e);
  return t;
}();
static_assert((kAvail4x4.v[0][3] & kAvailAboveRight) == 0 && (kAvail4x4.v[0][7] & kAvailAboveRight) == 0 &&
              (kAvail4x4.v[0][11] & kAvailAboveRight) == 0 && (kAvail4x4.v[0][13] & kAvailAboveRight) == 0 &&
              (kAvail4x4.v[0][15] & kAvailAboveRight) == 0);
static_assert((kAvail4x4.v[0][2] & kAvailAboveRight) && (kAvail4x4.v[0][6] & kAvailAboveRight) &&
              (kAvail4x4.v[0][8] & kAvailAboveRight) && (kAvail4x4.v[0][9] & kAvailAboveRight) &&
              (kAvail4x4.v[0][10] & kAvailAboveRight) && (kAvail4x4.v[0][12] & kAvailAboveRight) &&
              (kAvail4x4.v[0][14] & kAvailAboveRight));
static_assert(!(kAvail4x4.v[kEdgeAboveRight][5] & kAvailAboveRight) && (kAvail4x4.v[kEdgeAboveRight][4] & kAvailAboveRight));

// normAdjust8x8 of the standard by QP mod 6 and position class, and the flat
// LevelScale8x8 built from it (16 x v), used when a caller gives no table.
inline constexpr int32_t kNormAdjust8x8[6][6] = {
    {20, 18, 32, 19, 25, 24}, {22, 19, 35, 21, 28, 26}, {26, 23, 42, 24, 33, 31},
    {28, 25, 45, 26, 35, 33}, {32, 28, 51, 30, 40, 38}, {36, 32, 58, 34, 46, 43},
};
constexpr int class8x8(int i) {
  const int x = i & 7, y = i >> 3;
  if (x % 4 == 0 && y % 4 == 0) return 0;
  if (x % 2 == 1 && y % 2 == 1) return 1;
  if (x % 4 == 2 && y % 4 == 2) return 2;
  if ((x % 4 == 0 && y % 2 == 1) || (x % 2 == 1 && y % 4 == 0)) return 3;
  if ((x % 4 == 0 && y % 4 == 2) || (x % 4 == 2 && y % 4 == 0)) return 4;
  return 5;
}
inline constexpr auto kFlatLevelScale8x8 = [] {
  std::array<std::array<int16_t, 64>, 6> t{};
  for (int m = 0; m < 6; ++m)
    for (int i = 0; i < 64; ++i) t[m][i] = static_cast<int16_t>(16 * kNormAdjust8x8[m][class8x8(i)]);
  return t;
}();

// Transform bypass: the levels are the residual. Intra blocks predicted
// vertically or horizontally accumulate them down the columns or along the
// rows (n x n of a w-wide residual), as the standard's lossless intra does.
enum Dpcm { kNoDpcm, kDpcmVertical, kDpcmHorizontal };
inline void bypass_add(uint8_t* p, int32_t step, int32_t* r, int n, Dpcm dpcm) {
  if (dpcm == kDpcmVertical)
    for (int y = 1; y < n; ++y)
      for (int x = 0; x < n; ++x) r[n * y + x] += r[n * (y - 1) + x];
  if (dpcm == kDpcmHorizontal)
    for (int y = 0; y < n; ++y)
      for (int x = 1; x < n; ++x) r[n * y + x] += r[n * y + x - 1];
  for (int y = 0; y < n; ++y)
    for (int x = 0; x < n; ++x) row(p, step, y)[x] = clip8(row(p, step, y)[x] + r[n * y + x]);
}
inline void bypass_block(uint8_t* p, int32_t step, const int16_t* c, int n, Dpcm dpcm) {
  int32_t r[64];
  for (int i = 0; i < n * n; ++i) r[i] = c[i];
  bypass_add(p, step, r, n, dpcm);
}

template <class K>
struct Recon {
  static uint8_t* at(uint8_t* p, int32_t step, int x, int y) { return row(p, step, y) + x; }

  // ---------------------------------------------------------------- luma residuals
  // Flat tables by position (16-bit products, saturating passes).
  static void luma_flat(const int16_t*& c, uint8_t* p, int32_t step, uint32_t cbp, int32_t qp) {
    for (int n = 0; n < 16; ++n)
      if (cbp & (2u << n)) {
        uint8_t* b = at(p, step, blk_x(n), blk_y(n));
        K::dequant_transform_residual_add(b, step, c, nullptr, b, step, qp, 1);
        c += 16;
      }
  }
  // One block with a LevelScale table (null: flat) or, bypassed, as it stands.
  static void luma_block(const int16_t* c, uint8_t* b, int32_t step, int32_t qp, const int16_t* scale, bool bypass,
                         Dpcm dpcm) {
    if (bypass) bypass_block(b, step, c, 4, dpcm);
    else K::quant_inv_add_pred4x4(b, step, c, nullptr, b, step, qp, 1, scale);
  }
  static void luma_scaled(const int16_t*& c, uint8_t* p, int32_t step, uint32_t cbp, int32_t qp, const int16_t* scale,
                          bool bypass) {
    for (int n = 0; n < 16; ++n)
      if (cbp & (2u << n)) {
        luma_block(c, at(p, step, blk_x(n), blk_y(n)), step, qp, scale, bypass, kNoDpcm);
        c += 16;
      }
  }
  static void quadrant(const int16_t*& c, uint8_t* b, int32_t step, int32_t qp, const int16_t* scale, bool bypass,
                       Dpcm dpcm) {
    if (bypass) {
      bypass_block(b, step, c, 8, dpcm);
    } else {
      alignas(16) int16_t t[64];
      std::memcpy(t, c, sizeof t);
      K::dequant_luma8x8(t, kQpDiv6[qp], scale ? scale : kFlatLevelScale8x8[kQpMod6[qp]].data());
      K::idct8x8_add(b, step, t, b, step);
    }
    c += 64;
  }
  static void luma8x8(const int16_t*& c, uint8_t* p, int32_t step, uint32_t cbp, int32_t qp, const int16_t* scale,
                      bool bypass) {
    for (int q = 0; q < 4; ++q)
      if (cbp & (0x1Eu << (4 * q))) quadrant(c, at(p, step, 8 * (q & 1), 8 * (q >> 1)), step, qp, scale, bypass, kNoDpcm);
  }

  // ---------------------------------------------------------------- luma intra
  static Dpcm dpcm_of(uint32_t mode, bool bypass) {
    return !bypass ? kNoDpcm : mode == 0 ? kDpcmVertical : mode == 1 ? kDpcmHorizontal : kNoDpcm;
  }
  static void intra4x4(const int16_t*& c, uint8_t* p, int32_t step, const uint32_t* modes, uint32_t cbp, int32_t qp,
                       uint32_t edge, const int16_t* scale, bool bypass) {
    const uint32_t* av = kAvail4x4.v[edge & 31];
    for (int n = 0; n < 16; ++n) {
      uint8_t* b = at(p, step, blk_x(n), blk_y(n));
      K::pred4x4(b, step, modes[n], av[n]);
      if (cbp & (2u << n)) {
        luma_block(c, b, step, qp, scale, bypass, dpcm_of(modes[n], bypass));
        c += 16;
      }
    }
  }
  static void intra8x8(const int16_t*& c, uint8_t* p, int32_t step, const int32_t* modes, uint32_t cbp, int32_t qp,
                       uint32_t edge, const int16_t* scale, bool bypass) {
    for (int q = 0; q < 4; ++q) {
      const int x = 8 * (q & 1), y = 8 * (q >> 1);
      uint8_t* b = at(p, step, x, y);
      const uint32_t m = static_cast<uint32_t>(modes[q]);
      K::pred8x8(b, step, m, avail_of(x, y, 8, edge));
      if (cbp & (0x1Eu << (4 * q))) quadrant(c, b, step, qp, scale, bypass, dpcm_of(m, bypass));
    }
  }
  // Prediction first (it refuses before anything is written), then the DC
  // array, then every block with its DC.
  static int32_t intra16x16(const int16_t*& c, uint8_t* p, int32_t step, uint32_t mode, uint32_t cbp, int32_t qp,
                            uint32_t edge) {
    const int32_t st = K::pred16x16(p, step, mode, mb_avail(edge));
    if (st != kPredOk || !(cbp & (kCbpLumaDC | kCbpLuma))) return st;
    alignas(16) int16_t dc[16] = {};
    if (cbp & kCbpLumaDC) {
      std::memcpy(dc, c, sizeof dc);
      K::luma_dc_dequant(dc, qp);
      c += 16;
    }
    for (int n = 0; n < 16; ++n) {
      const int x = blk_x(n), y = blk_y(n);
      uint8_t* b = at(p, step, x, y);
      const int16_t* d = &dc[(y & ~3) + (x >> 2)];
      if (cbp & (2u << n)) {
        K::dequant_transform_residual_add(b, step, c, d, b, step, qp, 1);
        c += 16;
      } else if (*d) {
        K::dequant_transform_residual_add(b, step, nullptr, d, b, step, qp, 0);
      }
    }
    return kPredOk;
  }

  // ---------------------------------------------------------------- chroma
  // Both DC blocks first (Cb, Cr), then Cb's AC blocks, then Cr's. Flat: the
  // 2x2 transform and v(QP, 0) dequantisation, the AC by the position table.
  static void chroma_flat(const int16_t*& c, uint8_t* const* planes, int32_t step, uint32_t cbp, int32_t qp) {
    if (!(cbp & kCbpChroma)) return;
    int16_t dc[2][4] = {};
    for (int k = 0; k < 2; ++k)
      if (cbp & (1u << (17 + k))) {
        std::memcpy(dc[k], c, sizeof dc[k]);
        ref::chroma_dc_dequant(dc[k], qp);
        c += 4;
      }
    for (int k = 0; k < 2; ++k)
      for (int b = 0; b < 4; ++b) {
        uint8_t* d = at(planes[k], step, 4 * (b & 1), 4 * (b >> 1));
        if (cbp & (1u << (19 + 4 * k + b))) {
          K::dequant_transform_residual_add(d, step, c, &dc[k][b], d, step, qp, 1);
          c += 16;
        } else if (dc[k][b]) {
          K::dequant_transform_residual_add(d, step, nullptr, &dc[k][b], d, step, qp, 0);
        }
      }
  }
  // LevelScale tables per plane; bypassed at QP 0, the DC levels take the
  // first position of their blocks and the plane is one 8x8 residual.
  static void chroma_scaled(const int16_t*& c, uint8_t* const* planes, int32_t step, uint32_t cbp, const int32_t* qp,
                            const int16_t* const* scale, bool bypass, uint32_t chromaMode) {
    if (!(cbp & kCbpChroma)) return;
    int16_t dc[2][4] = {};
    for (int k = 0; k < 2; ++k)
      if (cbp & (1u << (17 + k))) {
        std::memcpy(dc[k], c, sizeof dc[k]);
        if (!(bypass && qp[k] == 0)) ref::quant_inv_chroma_dc2x2(dc[k], qp[k], scale[k]);
        c += 4;
      }
    for (int k = 0; k < 2; ++k) {
      if (bypass && qp[k] == 0) {
        int32_t r[64] = {};
        for (int b = 0; b < 4; ++b) {
          int32_t* o = r + 32 * (b >> 1) + 4 * (b & 1);
          if (cbp & (1u << (19 + 4 * k + b))) {
            for (int i = 1; i < 16; ++i) o[8 * (i >> 2) + (i & 3)] = c[i];
            c += 16;
          }
          o[0] = dc[k][b];
        }
        bypass_add_plane(planes[k], step, r, chromaMode);
        continue;
      }
      for (int b = 0; b < 4; ++b) {
        uint8_t* d = at(planes[k], step, 4 * (b & 1), 4 * (b >> 1));
        if (cbp & (1u << (19 + 4 * k + b))) {
          K::quant_inv_add_pred4x4(d, step, c, &dc[k][b], d, step, qp[k], 1, scale[k]);
          c += 16;
        } else if (dc[k][b]) {
          K::quant_inv_add_pred4x4(d, step, nullptr, &dc[k][b], d, step, qp[k], 0, scale[k]);
        }
      }
    }
  }
  // Chroma modes: 1 horizontal, 2 vertical accumulate; anything else (and inter, 4) as it stands.
  static void bypass_add_plane(uint8_t* p, int32_t step, int32_t* r, uint32_t chromaMode) {
    bypass_add(p, step, r, 8, chromaMode == 2 ? kDpcmVertical : chromaMode == 1 ? kDpcmHorizontal : kNoDpcm);
  }
  static int32_t chroma_intra_pred(uint8_t* const* planes, int32_t step, uint32_t mode, uint32_t edge) {
    const uint32_t a = mb_avail(edge);
    const int32_t st = K::pred_chroma8x8(planes[0], step, mode, a);
    if (st != kPredOk) return st;
    return K::pred_chroma8x8(planes[1], step, mode, a);
  }
};

// The block kernels of one set, by name, for Recon.
#define HUX_RECON_SET(NS)                                                                                           \
  struct NS##_set {                                                                                                 \
    static int32_t pred4x4(uint8_t* p, int32_t s, uint32_t m, uint32_t a) { return NS::pred4x4(p, s, m, a); }       \
    static int32_t pred16x16(uint8_t* p, int32_t s, uint32_t m, uint32_t a) { return NS::pred16x16(p, s, m, a); }   \
    static int32_t pred_chroma8x8(uint8_t* p, int32_t s, uint32_t m, uint32_t a) {                                  \
      return NS::pred_chroma8x8(p, s, m, a);                                                                        \
    }                                                                                                               \
    static void pred8x8(uint8_t* p, int32_t s, uint32_t m, uint32_t a) { NS::pred8x8(p, s, m, a); }                 \
    static void dequant_transform_residual_add(const uint8_t* pr, int32_t ps, const int16_t* c, const int16_t* dc,   \
                                               uint8_t* d, int32_t ds, int32_t qp, int32_t ac) {                    \
      NS::dequant_transform_residual_add(pr, ps, c, dc, d, ds, qp, ac);                                             \
    }                                                                                                               \
    static void quant_inv_add_pred4x4(const uint8_t* pr, int32_t ps, const int16_t* c, const int16_t* dc,            \
                                      uint8_t* d, int32_t ds, int32_t qp, int32_t ac, const int16_t* sc) {          \
      NS::quant_inv_add_pred4x4(pr, ps, c, dc, d, ds, qp, ac, sc);                                                  \
    }                                                                                                               \
    static void dequant_luma8x8(int16_t* b, int32_t q, const int16_t* s) { NS::dequant_luma8x8(b, q, s); }          \
    static void idct8x8_add(const uint8_t* pr, int32_t ps, const int16_t* c, uint8_t* d, int32_t ds) {              \
      NS::idct8x8_add(pr, ps, c, d, ds);                                                                            \
    }                                                                                                               \
    static void luma_dc_dequant(int16_t* b, int32_t qp) { NS::luma_dc_dequant(b, qp); }                             \
  };                                                                                                                \
  using Recon = ::hux::h264::Recon<NS##_set>;

namespace ref {
HUX_RECON_SET(ref)
}
#if defined(HUX_SSE2) && HUX_SSE2
namespace sse2 {
HUX_RECON_SET(sse2)
}
#endif

}  // namespace hux::h264
