// Motion compensation, copy and averaging exports: the pointers they use are
// checked, selectors are masked (never refused), steps are not checked. Each
// picks one kernel of its block width and passes the height. The half-sample
// copies and the averages, a few nanoseconds each, inline their kernels
// behind a switch; the MC functions call through the kernel tables.
#include "huxvc.h"
#include "me/mc_kernels.h"

namespace me = hux::me;
namespace k = hux::me::HUX_KERNELS;

namespace {

constexpr int mc_index(int32_t mcType, int32_t rc) { return ((mcType & 12) >> 1) + (rc & 1); }
constexpr int mcb_index(int32_t f, int32_t b, int32_t rc) { return ((f & 12) >> 1) + 2 * (b & 12) + (rc & 1); }
constexpr int hp_index(int32_t acc, int32_t rc) { return (rc & 1) + 2 * (acc & 3); }

template <int W, int H, int Dx = 1>
HuxResult mc(const uint8_t* ref, int32_t rs, const int16_t* res, int32_t ress, uint8_t* dst, int32_t ds,
             int32_t mcType, int32_t rc) {
  if (!ref | !res | !dst) return huxErrNullPtr;
  k::kMc<W, Dx>[mc_index(mcType, rc)](ref, rs, res, ress, dst, ds, H);
  return huxOk;
}

template <int W, int H, int Dx = 1>
HuxResult mc_b(const uint8_t* f, int32_t fs, int32_t mcTypeF, const uint8_t* b, int32_t bs, int32_t mcTypeB,
               const int16_t* res, int32_t ress, uint8_t* dst, int32_t ds, int32_t rc) {
  if (!f | !b | !res | !dst) return huxErrNullPtr;
  k::kMcB<W, Dx>[mcb_index(mcTypeF, mcTypeB, rc)](f, fs, b, bs, res, ress, dst, ds, H);
  return huxOk;
}

// The eight half-sample copies of one width, inlined.
template <int W, int H>
HUX_INLINE void copy_hp(const uint8_t* src, int32_t ss, uint8_t* dst, int32_t ds, int index) {
  // All eight values listed: the jump needs no range test.
  switch (index & 7) {
    case 0: return k::copy_hp<W, me::kInteger, 0>(src, ss, dst, ds, H);
    case 1: return k::copy_hp<W, me::kInteger, 0>(src, ss, dst, ds, H);
    case 2: return k::copy_hp<W, me::kHorizontal, 0>(src, ss, dst, ds, H);
    case 3: return k::copy_hp<W, me::kHorizontal, 1>(src, ss, dst, ds, H);
    case 4: return k::copy_hp<W, me::kVertical, 0>(src, ss, dst, ds, H);
    case 5: return k::copy_hp<W, me::kVertical, 1>(src, ss, dst, ds, H);
    case 6: return k::copy_hp<W, me::kDiagonal, 0>(src, ss, dst, ds, H);
    case 7: return k::copy_hp<W, me::kDiagonal, 1>(src, ss, dst, ds, H);
    default: __builtin_unreachable();
  }
}

template <int W, int H>
HuxResult copy_hp_export(const uint8_t* src, int32_t ss, uint8_t* dst, int32_t ds, int32_t acc, int32_t rc) {
  if (!src | !dst) return huxErrNullPtr;
  // The integer position, a plain copy, is taken before the jump table.
  if ((acc & 3) == 0) k::copy_hp<W, me::kInteger, 0>(src, ss, dst, ds, H);
  else copy_hp<W, H>(src, ss, dst, ds, hp_index(acc, rc));
  return huxOk;
}

template <int W, int H>
HuxResult interpolate_average(const uint8_t* src, int32_t ss, uint8_t* pic, int32_t ps, int32_t acc, int32_t rc) {
  if (!src | !pic) return huxErrNullPtr;
  k::kAvg<W>[hp_index(acc, rc)](src, ss, pic, ps, pic, ps, H);
  return huxOk;
}

}  // namespace

extern "C" {

#define HUX_MC(name, W, H, Dx)                                                                                    \
  HUX_API HuxResult HUX_STDCALL name(const uint8_t* pSrcRef, int32_t srcStep, const int16_t* pSrcYData,          \
                                     int32_t srcYDataStep, uint8_t* pDst, int32_t dstStep, int32_t mcType,       \
                                     int32_t roundControl) {                                                      \
    return mc<W, H, Dx>(pSrcRef, srcStep, pSrcYData, srcYDataStep, pDst, dstStep, mcType, roundControl);         \
  }
#define HUX_MCB(name, W, H, Dx)                                                                                    \
  HUX_API HuxResult HUX_STDCALL name(const uint8_t* pSrcRefF, int32_t srcStepF, int32_t mcTypeF,                  \
                                     const uint8_t* pSrcRefB, int32_t srcStepB, int32_t mcTypeB,                  \
                                     const int16_t* pSrcYData, int32_t srcYDataStep, uint8_t* pDst,              \
                                     int32_t dstStep, int32_t roundControl) {                                     \
    return mc_b<W, H, Dx>(pSrcRefF, srcStepF, mcTypeF, pSrcRefB, srcStepB, mcTypeB, pSrcYData, srcYDataStep,     \
                          pDst, dstStep, roundControl);                                                           \
  }

// Rows of interleaved chroma pairs (the UV functions and, by their
// definition, the 16x4 ones) take the horizontal neighbour two bytes on.
HUX_MC(huxiMC16x16_8u_C1, 16, 16, 1)
HUX_MC(huxiMC16x8_8u_C1, 16, 8, 1)
HUX_MC(huxiMC16x4_8u_C1, 16, 4, 2)
HUX_MC(huxiMC8x16_8u_C1, 8, 16, 1)
HUX_MC(huxiMC8x8_8u_C1, 8, 8, 1)
HUX_MC(huxiMC8x4_8u_C1, 8, 4, 1)
HUX_MC(huxiMC4x8_8u_C1, 4, 8, 1)
HUX_MC(huxiMC4x4_8u_C1, 4, 4, 1)
HUX_MC(huxiMC4x2_8u_C1, 4, 2, 1)
HUX_MC(huxiMC2x4_8u_C1, 2, 4, 1)
HUX_MC(huxiMC2x2_8u_C1, 2, 2, 1)
HUX_MC(huxiMC16x8UV_8u_C1, 16, 8, 2)
HUX_MCB(huxiMC16x16B_8u_C1, 16, 16, 1)
HUX_MCB(huxiMC16x8B_8u_C1, 16, 8, 1)
HUX_MCB(huxiMC16x4B_8u_C1, 16, 4, 2)
HUX_MCB(huxiMC8x16B_8u_C1, 8, 16, 1)
HUX_MCB(huxiMC8x8B_8u_C1, 8, 8, 1)
HUX_MCB(huxiMC8x4B_8u_C1, 8, 4, 1)
HUX_MCB(huxiMC4x8B_8u_C1, 4, 8, 1)
HUX_MCB(huxiMC4x4B_8u_C1, 4, 4, 1)
HUX_MCB(huxiMC4x2B_8u_C1, 4, 2, 1)
HUX_MCB(huxiMC2x4B_8u_C1, 2, 4, 1)
HUX_MCB(huxiMC2x2B_8u_C1, 2, 2, 1)
HUX_MCB(huxiMC16x8BUV_8u_C1, 16, 8, 2)

HUX_API HuxResult HUX_STDCALL huxiCopy16x16HP_8u_C1R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                                     int32_t dstStep, int32_t acc, int32_t roundControl) {
  return copy_hp_export<16, 16>(pSrc, srcStep, pDst, dstStep, acc, roundControl);
}
HUX_API HuxResult HUX_STDCALL huxiCopy16x8HP_8u_C1R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                                    int32_t dstStep, int32_t acc, int32_t roundControl) {
  return copy_hp_export<16, 8>(pSrc, srcStep, pDst, dstStep, acc, roundControl);
}
#if HUX_ASM && defined(__x86_64__)
// The half-sample positions, with the export's arguments: the assembly export
// (x86/mc_asm.cpp) copies the integer position itself and jumps here for the
// others.
[[gnu::visibility("hidden")]] HuxResult HUX_STDCALL hux_me_copy8x8_half(const uint8_t* pSrc, int32_t srcStep,
                                                                       uint8_t* pDst, int32_t dstStep, int32_t acc,
                                                                       int32_t roundControl) {
  return copy_hp_export<8, 8>(pSrc, srcStep, pDst, dstStep, acc, roundControl);
}
#else
HUX_API HuxResult HUX_STDCALL huxiCopy8x8HP_8u_C1R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                                   int32_t dstStep, int32_t acc, int32_t roundControl) {
  return copy_hp_export<8, 8>(pSrc, srcStep, pDst, dstStep, acc, roundControl);
}
#endif
HUX_API HuxResult HUX_STDCALL huxiCopy8x4HP_8u_C1R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                                   int32_t dstStep, int32_t acc, int32_t roundControl) {
  return copy_hp_export<8, 4>(pSrc, srcStep, pDst, dstStep, acc, roundControl);
}

HUX_API HuxResult HUX_STDCALL huxiCopy16x16_8u_C1R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                                   int32_t dstStep) {
  if (!pSrc | !pDst) return huxErrNullPtr;
  k::copy_hp<16, me::kInteger, 0>(pSrc, srcStep, pDst, dstStep, 16);
  return huxOk;
}
HUX_API HuxResult HUX_STDCALL huxiCopy8x8_8u_C1R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst,
                                                 int32_t dstStep) {
  if (!pSrc | !pDst) return huxErrNullPtr;
  k::copy_hp<8, me::kInteger, 0>(pSrc, srcStep, pDst, dstStep, 8);
  return huxOk;
}

HUX_API HuxResult HUX_STDCALL huxiAdd8x8HP_16s8u_C1RS(const int16_t* pSrc1, int32_t src1Step, const uint8_t* pSrc2,
                                                      int32_t src2Step, uint8_t* pDst, int32_t dstStep, int32_t acc,
                                                      int32_t roundControl) {
  if (!pSrc1 | !pSrc2 | !pDst) return huxErrNullPtr;
  // The one-reference MC kernel at the position acc names.
  k::kMc<8>[2 * me::acc_mode(acc & 3) + (roundControl & 1)](pSrc2, src2Step, pSrc1, src1Step, pDst, dstStep, 8);
  return huxOk;
}
HUX_API HuxResult HUX_STDCALL huxiAdd8x8_16s8u_C1IRS(const int16_t* pSrc, int32_t srcStep, uint8_t* pSrcDst,
                                                     int32_t srcDstStep) {
  if (!pSrc | !pSrcDst) return huxErrNullPtr;
  k::mc<8, me::kInteger, 0, 1>(pSrcDst, srcDstStep, pSrc, srcStep, pSrcDst, srcDstStep, 8);
  return huxOk;
}
HUX_API HuxResult HUX_STDCALL huxiAddC8x8_16s8u_C1IR(int16_t value, uint8_t* pSrcDst, int32_t srcDstStep) {
  if (!pSrcDst) return huxErrNullPtr;
  k::add_const8x8(value, pSrcDst, srcDstStep);
  return huxOk;
}

HUX_API HuxResult HUX_STDCALL huxiAverage16x16_8u_C1R(const uint8_t* pSrc1, int32_t src1Step, const uint8_t* pSrc2,
                                                      int32_t src2Step, uint8_t* pDst, int32_t dstStep) {
  if (!pSrc1 | !pSrc2 | !pDst) return huxErrNullPtr;
  k::avg_hp<16, me::kInteger, 0>(pSrc1, src1Step, pSrc2, src2Step, pDst, dstStep, 16);
  return huxOk;
}
HUX_API HuxResult HUX_STDCALL huxiAverage8x8_8u_C1R(const uint8_t* pSrc1, int32_t src1Step, const uint8_t* pSrc2,
                                                    int32_t src2Step, uint8_t* pDst, int32_t dstStep) {
  if (!pSrc1 | !pSrc2 | !pDst) return huxErrNullPtr;
  k::avg_hp<8, me::kInteger, 0>(pSrc1, src1Step, pSrc2, src2Step, pDst, dstStep, 8);
  return huxOk;
}
HUX_API HuxResult HUX_STDCALL huxiAverage16x16_8u_C1IR(const uint8_t* pSrc, int32_t srcStep, uint8_t* pSrcDst,
                                                       int32_t srcDstStep) {
  if (!pSrc | !pSrcDst) return huxErrNullPtr;
  k::avg_hp<16, me::kInteger, 0>(pSrc, srcStep, pSrcDst, srcDstStep, pSrcDst, srcDstStep, 16);
  return huxOk;
}
HUX_API HuxResult HUX_STDCALL huxiAverage8x8_8u_C1IR(const uint8_t* pSrc, int32_t srcStep, uint8_t* pSrcDst,
                                                     int32_t srcDstStep) {
  if (!pSrc | !pSrcDst) return huxErrNullPtr;
  k::avg_hp<8, me::kInteger, 0>(pSrc, srcStep, pSrcDst, srcDstStep, pSrcDst, srcDstStep, 8);
  return huxOk;
}

HUX_API HuxResult HUX_STDCALL huxiInterpolateAverage16x16_8u_C1IR(const uint8_t* pSrc, int32_t srcStep,
                                                                  uint8_t* pSrcDst, int32_t srcDstStep, int32_t acc,
                                                                  int32_t roundControl) {
  return interpolate_average<16, 16>(pSrc, srcStep, pSrcDst, srcDstStep, acc, roundControl);
}
HUX_API HuxResult HUX_STDCALL huxiInterpolateAverage16x8_8u_C1IR(const uint8_t* pSrc, int32_t srcStep,
                                                                 uint8_t* pSrcDst, int32_t srcDstStep, int32_t acc,
                                                                 int32_t roundControl) {
  return interpolate_average<16, 8>(pSrc, srcStep, pSrcDst, srcDstStep, acc, roundControl);
}
HUX_API HuxResult HUX_STDCALL huxiInterpolateAverage8x8_8u_C1IR(const uint8_t* pSrc, int32_t srcStep,
                                                                uint8_t* pSrcDst, int32_t srcDstStep, int32_t acc,
                                                                int32_t roundControl) {
  return interpolate_average<8, 8>(pSrc, srcStep, pSrcDst, srcDstStep, acc, roundControl);
}
HUX_API HuxResult HUX_STDCALL huxiInterpolateAverage8x4_8u_C1IR(const uint8_t* pSrc, int32_t srcStep,
                                                                uint8_t* pSrcDst, int32_t srcDstStep, int32_t acc,
                                                                int32_t roundControl) {
  return interpolate_average<8, 4>(pSrc, srcStep, pSrcDst, srcDstStep, acc, roundControl);
}

}  // extern "C"
