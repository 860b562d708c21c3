// Motion-compensation, copy and averaging kernels. A kernel serves one block
// width at every height (the height is its last argument); the half-sample
// position, the rounding and the distance of the horizontal neighbour are
// template parameters, and each namespace builds the tables the exports index
// (HUX_ME_MC_TABLES below). The reference set states the arithmetic; the SSE2
// set (x86/mc_sse2.h) computes the same bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>

#include "common/saturate.h"
#include "me/sad_kernels.h"

namespace hux::me {

// The half-sample position an `acc` selector names (1 horizontal, 2 vertical).
constexpr int acc_mode(int acc) { return ((acc & 1) << 1) | ((acc >> 1) & 1); }

using McFn = void (*)(const uint8_t*, int32_t, const int16_t*, int32_t, uint8_t*, int32_t, int);
using McBFn = void (*)(const uint8_t*, int32_t, const uint8_t*, int32_t, const int16_t*, int32_t, uint8_t*, int32_t,
                       int);
using CopyFn = void (*)(const uint8_t*, int32_t, uint8_t*, int32_t, int);
using AvgFn = void (*)(const uint8_t*, int32_t, const uint8_t*, int32_t, uint8_t*, int32_t, int);

// Tables of one namespace's kernels, by the exports' indices:
//   kMc:   2 x position + rounding (positions 0 integer, 1 vertical,
//          2 horizontal, 3 diagonal: (mcType & 12) >> 1 + (roundControl & 1))
//   kMcB:  2 x forward position + 8 x backward position + rounding
//   kCopy, kAvg: rounding + 2 x acc (acc 1 horizontal, 2 vertical, 3 both)
// The integer position rounds nothing: both of its slots hold one kernel.
#define HUX_ME_MC_TABLES                                                                                        \
  template <int W, int Dx, size_t... I>                                                                         \
  struct McTable {                                                                                              \
    static constexpr McFn k[] = {&mc<W, int(I / 2), int(I / 2 ? I & 1 : 0), Dx>...};                            \
  };                                                                                                            \
  template <int W, int Dx, size_t... I>                                                                         \
  struct McBTable {                                                                                             \
    static constexpr McBFn k[] = {&mc_b<W, int((I / 2) & 3), int(I / 8), int(I & 1), Dx>...};                 \
  };                                                                                                            \
  template <int W, size_t... I>                                                                                 \
  struct CopyTable {                                                                                            \
    static constexpr CopyFn k[] = {&copy_hp<W, acc_mode(int(I / 2)), int(I / 2 ? I & 1 : 0)>...};              \
    static constexpr AvgFn a[] = {&avg_hp<W, acc_mode(int(I / 2)), int(I / 2 ? I & 1 : 0)>...};                \
  };                                                                                                            \
  template <int W, int Dx, size_t... I>                                                                         \
  constexpr const McFn* mc_of(std::index_sequence<I...>) {                                                      \
    return McTable<W, Dx, I...>::k;                                                                             \
  }                                                                                                             \
  template <int W, int Dx, size_t... I>                                                                         \
  constexpr const McBFn* mcb_of(std::index_sequence<I...>) {                                                    \
    return McBTable<W, Dx, I...>::k;                                                                            \
  }                                                                                                             \
  template <int W, size_t... I>                                                                                 \
  constexpr const CopyFn* copy_of(std::index_sequence<I...>) {                                                  \
    return CopyTable<W, I...>::k;                                                                               \
  }                                                                                                             \
  template <int W, size_t... I>                                                                                 \
  constexpr const AvgFn* avg_of(std::index_sequence<I...>) {                                                    \
    return CopyTable<W, I...>::a;                                                                               \
  }                                                                                                             \
  template <int W, int Dx = 1>                                                                                  \
  inline constexpr const McFn* kMc = mc_of<W, Dx>(std::make_index_sequence<8>());                               \
  template <int W, int Dx = 1>                                                                                  \
  inline constexpr const McBFn* kMcB = mcb_of<W, Dx>(std::make_index_sequence<32>());                           \
  template <int W>                                                                                              \
  inline constexpr const CopyFn* kCopy = copy_of<W>(std::make_index_sequence<8>());                             \
  template <int W>                                                                                              \
  inline constexpr const AvgFn* kAvg = avg_of<W>(std::make_index_sequence<8>());

namespace ref {

// dst = clip(prediction + residual): the prediction widened to 16 bits, the
// residual added with signed 16-bit saturation, the sum saturated to 0..255.
template <int W, int Mode, int Round, int Dx>
void mc(const uint8_t* ref, int32_t rs, const int16_t* res, int32_t ress, uint8_t* dst, int32_t ds, int h) {
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < W; ++x)
      row(dst, ds, y)[x] = clip8(sat16(ref_sample8<Mode, Round, Dx>(ref, rs, x, y) + row(res, ress, y)[x]));
}

// Two references, each at its own position with the shared rounding,
// averaged upwards, then the residual.
template <int W, int ModeF, int ModeB, int Round, int Dx>
void mc_b(const uint8_t* f, int32_t fs, const uint8_t* b, int32_t bs, const int16_t* res, int32_t ress, uint8_t* dst,
          int32_t ds, int h) {
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < W; ++x) {
      const int p = (ref_sample8<ModeF, Round, Dx>(f, fs, x, y) + ref_sample8<ModeB, Round, Dx>(b, bs, x, y) + 1) >> 1;
      row(dst, ds, y)[x] = clip8(sat16(p + row(res, ress, y)[x]));
    }
}

template <int W, int Mode, int Round>
void copy_hp(const uint8_t* src, int32_t ss, uint8_t* dst, int32_t ds, int h) {
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < W; ++x) row(dst, ds, y)[x] = static_cast<uint8_t>(ref_sample8<Mode, Round>(src, ss, x, y));
}

// dst = (other + prediction of src + 1) >> 1; dst may be other.
template <int W, int Mode, int Round>
void avg_hp(const uint8_t* src, int32_t ss, const uint8_t* other, int32_t os, uint8_t* dst, int32_t ds, int h) {
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < W; ++x)
      row(dst, ds, y)[x] = static_cast<uint8_t>((ref_sample8<Mode, Round>(src, ss, x, y) + row(other, os, y)[x] + 1) >> 1);
}

// pic = clip(pic + value) over an 8x8 block.
inline void add_const8x8(int16_t value, uint8_t* pic, int32_t ps) {
  for (int y = 0; y < 8; ++y)
    for (int x = 0; x < 8; ++x) row(pic, ps, y)[x] = clip8(row(pic, ps, y)[x] + value);
}

HUX_ME_MC_TABLES

}  // namespace ref
}  // namespace hux::me

#if defined(HUX_SSE2) && HUX_SSE2
#include "me/x86/mc_sse2.h"
#endif
