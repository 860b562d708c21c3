// H.264 intra prediction exports: pointer, step and mode checks, then the
// kernel of the mode from a table (a tail call), which answers a missing
// neighbour itself (128 and a warning for 4x4, a refusal before any write for
// 16x16 and chroma).
#include <utility>

#include "common/asm.h"
#include "h264/intra_kernels.h"
#include "huxvc.h"

namespace k = hux::h264::HUX_KERNELS;

namespace {
// The kernels take the export's arguments as they arrive (the mode unused), so
// the dispatch is one indexed jump with nothing moved.
using Pred = int32_t (*)(uint8_t*, int32_t, uint32_t, uint32_t);
template <uint32_t M>
[[gnu::noinline]] int32_t p4(uint8_t* p, int32_t s, uint32_t, uint32_t a) { return k::pred4x4_mode<M>(p, s, a); }
template <uint32_t M>
[[gnu::noinline]] int32_t p16(uint8_t* p, int32_t s, uint32_t, uint32_t a) { return k::pred16x16_mode<M>(p, s, a); }
template <uint32_t M>
[[gnu::noinline]] int32_t p8(uint8_t* p, int32_t s, uint32_t, uint32_t a) { return k::pred_chroma8x8_mode<M>(p, s, a); }
constexpr Pred k4x4[9] = {p4<0>, p4<1>, p4<2>, p4<3>, p4<4>, p4<5>, p4<6>, p4<7>, p4<8>};
constexpr Pred k16x16[4] = {p16<0>, p16<1>, p16<2>, p16<3>};
constexpr Pred kChroma[4] = {p8<0>, p8<1>, p8<2>, p8<3>};

}  // namespace

extern "C" {

#if HUX_ASM && defined(__x86_64__)
// The checks and kernels of the 4x4 export (x86/intra_asm.cpp), with its
// arguments: it predicts the modes whose neighbours are all present itself and
// jumps here for every failing check and every missing neighbour.
[[gnu::visibility("hidden")]] HuxResult HUX_STDCALL hux_h264_intra4_body(uint8_t* pSrcDst, int32_t srcDstStep,
                                                                        uint32_t mode, uint32_t availability) {
#else
HUX_API HuxResult HUX_STDCALL huxiPredictIntra_4x4_H264_8u_C1IR(uint8_t* pSrcDst, int32_t srcDstStep, uint32_t mode,
                                                               uint32_t availability) {
#endif
  if (!pSrcDst) return huxErrNullPtr;
  if (srcDstStep < 4) return huxErrStep;
  if (mode > 8) return huxErrOutOfRange;
  return k4x4[mode](pSrcDst, srcDstStep, mode, availability);
}

// The mode is dispatched first: a missing neighbour of a valid mode is -117.
#if HUX_ASM && defined(__x86_64__)
// The checks and kernels of the 16x16 and chroma exports (x86/intra_asm.cpp),
// with their arguments, as the 4x4 one.
[[gnu::visibility("hidden")]] HuxResult HUX_STDCALL hux_h264_intra16_body(uint8_t* pSrcDst, int32_t srcDstStep,
                                                                         uint32_t mode, uint32_t availability) {
#else
HUX_API HuxResult HUX_STDCALL huxiPredictIntra_16x16_H264_8u_C1IR(uint8_t* pSrcDst, int32_t srcDstStep, uint32_t mode,
                                                                 uint32_t availability) {
#endif
  if (!pSrcDst) return huxErrNullPtr;
  if (srcDstStep < 16) return huxErrStep;
  if (mode > 3) return huxErrOutOfRange;
  return k16x16[mode](pSrcDst, srcDstStep, mode, availability);
}

#if HUX_ASM && defined(__x86_64__)
[[gnu::visibility("hidden")]] HuxResult HUX_STDCALL hux_h264_intra8_body(uint8_t* pSrcDst, int32_t srcDstStep,
                                                                        uint32_t mode, uint32_t availability) {
#else
HUX_API HuxResult HUX_STDCALL huxiPredictIntraChroma8x8_H264_8u_C1IR(uint8_t* pSrcDst, int32_t srcDstStep,
                                                                    uint32_t mode, uint32_t availability) {
#endif
  if (!pSrcDst) return huxErrNullPtr;
  if (srcDstStep < 8) return huxErrStep;
  if (mode > 3) return huxErrOutOfRange;
  return kChroma[mode](pSrcDst, srcDstStep, mode, availability);
}

}  // extern "C"
