// Difference, SATD, SSD and activity exports: pointer checks, then the
// kernel for the block shape and position. Steps, sizes and selectors are
// never refused; selectors are masked to their positions, except where a
// metric takes only the four exact values and leaves its result untouched
// for any other (SqrDiff16x16, VarMeanDiff).
#include <type_traits>

#include "huxvc.h"
#include "me/metrics_kernels.h"

namespace me = hux::me;
namespace k = hux::me::HUX_KERNELS;

namespace {

constexpr int position(int32_t mcType) { return (mcType >> 2) & 3; }
constexpr bool exact_position(int32_t mcType) { return (mcType & ~12) == 0; }

template <int W, int H>
HuxResult satd(const uint8_t* cur, int32_t cs, const uint8_t* ref, int32_t rs, int32_t* out) {
  if (!cur | !ref | !out) return huxErrNullPtr;
  *out = k::satd<W, H>(cur, cs, ref, rs);
  return huxOk;
}

// Runs f with the position as a compile-time constant.
template <class F>
HUX_INLINE int32_t by_position(int pos, F f) {
  switch (pos) {
    case 0: return f(std::integral_constant<int, me::kInteger>());
    case 1: return f(std::integral_constant<int, me::kVertical>());
    case 2: return f(std::integral_constant<int, me::kHorizontal>());
    default: return f(std::integral_constant<int, me::kDiagonal>());
  }
}

// The half-sample positions stay out of line, so that the integer one, the
// one a mode decision calls most, compiles without a stack frame.
template <int W, int H>
[[gnu::noinline]] HuxResult ssd_half(const uint8_t* cur, int32_t cs, const uint8_t* ref, int32_t rs, int32_t* out,
                                     int pos) {
  *out = by_position(pos, [&](auto m) { return k::ssd<W, H, decltype(m)::value>(cur, cs, ref, rs); });
  return huxOk;
}
template <int W, int H>
HuxResult ssd(const uint8_t* cur, int32_t cs, const uint8_t* ref, int32_t rs, int32_t* out, int32_t mcType) {
  if (!cur | !ref | !out) return huxErrNullPtr;
  if (__builtin_expect((mcType & 12) != 0, 0)) return ssd_half<W, H>(cur, cs, ref, rs, out, position(mcType));
  *out = k::ssd<W, H, me::kInteger>(cur, cs, ref, rs);
  return huxOk;
}

template <int H>
HuxResult var_mean_diff(const uint8_t* cur, int32_t cs, const uint8_t* ref, int32_t rs, int32_t* var, int32_t* mean,
                        int32_t mcType) {
  if (!cur | !ref | !var | !mean) return huxErrNullPtr;
  if (!exact_position(mcType)) return huxOk;
  by_position(position(mcType), [&](auto m) {
    k::var_mean_diff<H, decltype(m)::value>(cur, cs, ref, rs, var, mean);
    return 0;
  });
  return huxOk;
}

template <int N>
HuxResult mean_abs_dev(const uint8_t* src, int32_t step, int32_t* out) {
  if (!src | !out) return huxErrNullPtr;
  *out = k::mean_abs_dev<N>(src, step);
  return huxOk;
}

template <int W, int H, class T>
HuxResult sub(const T* cur, int32_t cs, const T* ref, int32_t rs, int16_t* diff, int32_t ds) {
  if (!cur | !ref | !diff) return huxErrNullPtr;
  k::sub<W, H, T>(cur, cs, ref, rs, diff, ds);
  return huxOk;
}

// The predictor output is optional.
template <int W, int H>
HuxResult get_diff(const uint8_t* cur, int32_t cs, const uint8_t* ref, int32_t rs, int16_t* diff, int32_t ds,
                   int16_t* pred, int32_t ps, int32_t mcType, int32_t rc) {
  if (!cur | !ref | !diff) return huxErrNullPtr;
  k::kGetDiff<W>[4 * position(mcType) + 2 * (rc & 1) + (pred != nullptr)](cur, cs, ref, rs, diff, ds, pred, ps, H);
  return huxOk;
}

template <int W, int H>
HuxResult get_diff_b(const uint8_t* cur, int32_t cs, const uint8_t* f, int32_t fs, int32_t mcTypeF, const uint8_t* b,
                     int32_t bs, int32_t mcTypeB, int16_t* diff, int32_t ds, int32_t rc) {
  if (!cur | !f | !b | !diff) return huxErrNullPtr;
  k::kGetDiffB<W>[2 * position(mcTypeF) + 8 * position(mcTypeB) + (rc & 1)](cur, cs, f, fs, b, bs, diff, ds, H);
  return huxOk;
}

// The difference output is optional.
template <int N, class T, class S>
HuxResult sums_diff(const T* cur, int32_t cs, const T* pred, int32_t ps, S* sums, int16_t* diff) {
  if (!cur | !pred | !sums) return huxErrNullPtr;
  k::sums_diff<N, T, S>(cur, cs, pred, ps, sums, diff);
  return huxOk;
}

}  // namespace

extern "C" {

#define HUX_SATD(W, H)                                                                                             \
  HUX_API HuxResult HUX_STDCALL huxiSATD##W##x##H##_8u32s_C1R(const uint8_t* pSrcCur, int32_t srcCurStep,         \
                                                              const uint8_t* pSrcRef, int32_t srcRefStep,         \
                                                              int32_t* pSATD) {                                   \
    return satd<W, H>(pSrcCur, srcCurStep, pSrcRef, srcRefStep, pSATD);                                            \
  }
HUX_SATD(16, 16)
HUX_SATD(16, 8)
HUX_SATD(8, 16)
HUX_SATD(8, 8)
HUX_SATD(8, 4)
HUX_SATD(4, 8)
HUX_SATD(4, 4)

#if !(HUX_ASM && defined(__x86_64__))
// The 64-bit assembly export is in x86/metrics_asm.cpp.
HUX_API HuxResult HUX_STDCALL huxiSAT8x8D_8u32s_C1R(const uint8_t* pSrcCur, int32_t srcCurStep, const uint8_t* pSrcRef,
                                                    int32_t srcRefStep, int32_t* pDst) {
  if (!pSrcCur | !pSrcRef | !pDst) return huxErrNullPtr;
  *pDst = k::sat8x8d(pSrcCur, srcCurStep, pSrcRef, srcRefStep);
  return huxOk;
}
#endif
// The one function of the family with element steps: doubled to bytes.
HUX_API HuxResult HUX_STDCALL huxiSAT8x8D_16u32s_C1R(const uint16_t* pSrcCur, int32_t srcCurStep,
                                                     const uint16_t* pSrcRef, int32_t srcRefStep, int32_t* pDst) {
  if (!pSrcCur | !pSrcRef | !pDst) return huxErrNullPtr;
  const auto bytes = [](int32_t s) { return static_cast<int32_t>(static_cast<uint32_t>(s) * 2u); };
  *pDst = k::sat8x8d(pSrcCur, bytes(srcCurStep), pSrcRef, bytes(srcRefStep));
  return huxOk;
}

#if HUX_ASM && defined(__x86_64__)
// The checks and kernels of the 8x8 SSD export, with its arguments: the
// assembly export (x86/metrics_asm.cpp) sums the integer position itself and
// jumps here for the half-sample ones.
[[gnu::visibility("hidden")]] HuxResult HUX_STDCALL hux_me_ssd8x8_body(const uint8_t* pSrcCur, int32_t srcCurStep,
                                                                      const uint8_t* pSrcRef, int32_t srcRefStep,
                                                                      int32_t* pDstSSD, int32_t mcType) {
#else
HUX_API HuxResult HUX_STDCALL huxiSSD8x8_8u32s_C1R(const uint8_t* pSrcCur, int32_t srcCurStep, const uint8_t* pSrcRef,
                                                   int32_t srcRefStep, int32_t* pDstSSD, int32_t mcType) {
#endif
  return ssd<8, 8>(pSrcCur, srcCurStep, pSrcRef, srcRefStep, pDstSSD, mcType);
}
HUX_API HuxResult HUX_STDCALL huxiSSD4x4_8u32s_C1R(const uint8_t* pSrcCur, int32_t srcCurStep, const uint8_t* pSrcRef,
                                                   int32_t srcRefStep, int32_t* pDstSSD, int32_t mcType) {
  return ssd<4, 4>(pSrcCur, srcCurStep, pSrcRef, srcRefStep, pDstSSD, mcType);
}
HUX_API HuxResult HUX_STDCALL huxiSqrDiff16x16_8u32s(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef,
                                                     int32_t refStep, int32_t mcType, int32_t* pSqrDiff) {
  if (!pSrc | !pRef | !pSqrDiff) return huxErrNullPtr;
  if (!exact_position(mcType)) return huxOk;
  return ssd<16, 16>(pSrc, srcStep, pRef, refStep, pSqrDiff, mcType);
}
HUX_API HuxResult HUX_STDCALL huxiSqrDiff16x16B_8u32s(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRefF,
                                                      int32_t refStepF, int32_t mcTypeF, const uint8_t* pRefB,
                                                      int32_t refStepB, int32_t mcTypeB, int32_t* pSqrDiff) {
  if (!pSrc | !pRefF | !pRefB | !pSqrDiff) return huxErrNullPtr;
  *pSqrDiff = by_position(position(mcTypeF), [&](auto f) {
    return by_position(position(mcTypeB), [&](auto b) {
      return k::sqr_diff_b<decltype(f)::value, decltype(b)::value>(pSrc, srcStep, pRefF, refStepF, pRefB, refStepB);
    });
  });
  return huxOk;
}

HUX_API HuxResult HUX_STDCALL huxiVarMeanDiff16x16_8u32s_C1R(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef,
                                                             int32_t refStep, int32_t* pVar, int32_t* pMean,
                                                             int32_t mcType) {
  return var_mean_diff<16>(pSrc, srcStep, pRef, refStep, pVar, pMean, mcType);
}
HUX_API HuxResult HUX_STDCALL huxiVarMeanDiff16x8_8u32s_C1R(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef,
                                                            int32_t refStep, int32_t* pVar, int32_t* pMean,
                                                            int32_t mcType) {
  return var_mean_diff<8>(pSrc, srcStep, pRef, refStep, pVar, pMean, mcType);
}

HUX_API HuxResult HUX_STDCALL huxiVariance16x16_8u32s(const uint8_t* pSrc, int32_t srcStep, int32_t* pVar) {
  if (!pSrc | !pVar) return huxErrNullPtr;
  *pVar = static_cast<int32_t>(k::variance16x16(pSrc, srcStep));
  return huxOk;
}
HUX_API HuxResult HUX_STDCALL huxiVarSum8x8_8u32s_C1R(const uint8_t* pSrc, int32_t srcStep, int32_t* pVar,
                                                      int32_t* pSum) {
  if (!pSrc | !pVar | !pSum) return huxErrNullPtr;
  k::var_sum8x8(pSrc, srcStep, pVar, pSum);
  return huxOk;
}
HUX_API HuxResult HUX_STDCALL huxiVarSum8x8_16s32s_C1R(const int16_t* pSrc, int32_t srcStep, int32_t* pVar,
                                                       int32_t* pSum) {
  if (!pSrc | !pVar | !pSum) return huxErrNullPtr;
  k::var_sum8x8(pSrc, srcStep, pVar, pSum);
  return huxOk;
}
HUX_API HuxResult HUX_STDCALL huxiMeanAbsDev16x16_8u32s_C1R(const uint8_t* pSrc, int32_t srcStep, int32_t* pDst) {
  return mean_abs_dev<16>(pSrc, srcStep, pDst);
}
HUX_API HuxResult HUX_STDCALL huxiMeanAbsDev8x8_8u32s_C1R(const uint8_t* pSrc, int32_t srcStep, int32_t* pDst) {
  return mean_abs_dev<8>(pSrc, srcStep, pDst);
}
HUX_API HuxResult HUX_STDCALL huxiCountZeros8x8_16s_C1(const int16_t* pSrc, int32_t* pCount) {
  if (!pSrc | !pCount) return huxErrNullPtr;
  *pCount = k::count_zeros(pSrc);
  return huxOk;
}
HUX_API HuxResult HUX_STDCALL huxiEdgesDetect16x16_8u_C1R(const uint8_t* pSrc, int32_t srcStep,
                                                          uint8_t edgePelDifference, uint8_t edgePelCount,
                                                          uint8_t* pRes) {
  if (!pSrc | !pRes) return huxErrNullPtr;
  *pRes = k::edges(pSrc, srcStep, edgePelDifference, edgePelCount);
  return huxOk;
}
HUX_API HuxResult HUX_STDCALL huxiEdgesDetect16x16_16u_C1R(const uint16_t* pSrc, int32_t srcStep,
                                                           uint16_t edgePelDifference, uint16_t edgePelCount,
                                                           uint8_t* pRes) {
  if (!pSrc | !pRes) return huxErrNullPtr;
  *pRes = k::edges(pSrc, srcStep, edgePelDifference, edgePelCount);
  return huxOk;
}

#define HUX_SUB(W, H, T, types)                                                                                  \
  HUX_API HuxResult HUX_STDCALL huxiSub##W##x##H##_##types##_C1R(const T* pSrcCur, int32_t srcCurStep,           \
                                                                 const T* pSrcRef, int32_t srcRefStep,           \
                                                                 int16_t* pDstDiff, int32_t dstDiffStep) {       \
    return sub<W, H, T>(pSrcCur, srcCurStep, pSrcRef, srcRefStep, pDstDiff, dstDiffStep);                        \
  }
HUX_SUB(16, 16, uint8_t, 8u16s)
HUX_SUB(8, 8, uint8_t, 8u16s)
HUX_SUB(4, 4, uint8_t, 8u16s)
HUX_SUB(8, 8, uint16_t, 16u16s)
HUX_SUB(4, 4, uint16_t, 16u16s)

#define HUX_GETDIFF(W, H)                                                                                        \
  HUX_API HuxResult HUX_STDCALL huxiGetDiff##W##x##H##_8u16s_C1(                                                 \
      const uint8_t* pSrcCur, int32_t srcCurStep, const uint8_t* pSrcRef, int32_t srcRefStep, int16_t* pDstDiff, \
      int32_t dstDiffStep, int16_t* pDstPredictor, int32_t dstPredictorStep, int32_t mcType,                     \
      int32_t roundControl) {                                                                                    \
    return get_diff<W, H>(pSrcCur, srcCurStep, pSrcRef, srcRefStep, pDstDiff, dstDiffStep, pDstPredictor,        \
                          dstPredictorStep, mcType, roundControl);                                               \
  }                                                                                                              \
  HUX_API HuxResult HUX_STDCALL huxiGetDiff##W##x##H##B_8u16s_C1(                                                \
      const uint8_t* pSrcCur, int32_t srcCurStep, const uint8_t* pSrcRefF, int32_t srcRefStepF, int32_t mcTypeF, \
      const uint8_t* pSrcRefB, int32_t srcRefStepB, int32_t mcTypeB, int16_t* pDstDiff, int32_t dstDiffStep,     \
      int32_t roundControl) {                                                                                    \
    return get_diff_b<W, H>(pSrcCur, srcCurStep, pSrcRefF, srcRefStepF, mcTypeF, pSrcRefB, srcRefStepB, mcTypeB, \
                            pDstDiff, dstDiffStep, roundControl);                                                \
  }
HUX_GETDIFF(16, 16)
HUX_GETDIFF(16, 8)
HUX_GETDIFF(8, 16)
HUX_GETDIFF(8, 8)
HUX_GETDIFF(8, 4)

// The 4x4 member takes the selectors and the predictor and ignores them: the
// integer-position difference alone.
HUX_API HuxResult HUX_STDCALL huxiGetDiff4x4_8u16s_C1(const uint8_t* pSrcCur, int32_t srcCurStep,
                                                      const uint8_t* pSrcRef, int32_t srcRefStep, int16_t* pDstDiff,
                                                      int32_t dstDiffStep, int16_t*, int32_t, int32_t, int32_t) {
  return sub<4, 4, uint8_t>(pSrcCur, srcCurStep, pSrcRef, srcRefStep, pDstDiff, dstDiffStep);
}

HUX_API HuxResult HUX_STDCALL huxiSumsDiff16x16Blocks4x4_8u16s_C1(const uint8_t* pSrc, int32_t srcStep,
                                                                  const uint8_t* pPred, int32_t predStep,
                                                                  int16_t* pSums, int16_t* pDiff) {
  return sums_diff<16>(pSrc, srcStep, pPred, predStep, pSums, pDiff);
}
HUX_API HuxResult HUX_STDCALL huxiSumsDiff8x8Blocks4x4_8u16s_C1(const uint8_t* pSrc, int32_t srcStep,
                                                                const uint8_t* pPred, int32_t predStep,
                                                                int16_t* pSums, int16_t* pDiff) {
  return sums_diff<8>(pSrc, srcStep, pPred, predStep, pSums, pDiff);
}
HUX_API HuxResult HUX_STDCALL huxiSumsDiff16x16Blocks4x4_16u32s_C1R(const uint16_t* pSrc, int32_t srcStep,
                                                                    const uint16_t* pPred, int32_t predStep,
                                                                    int32_t* pSums, int16_t* pDiff) {
  return sums_diff<16>(pSrc, srcStep, pPred, predStep, pSums, pDiff);
}
HUX_API HuxResult HUX_STDCALL huxiSumsDiff8x8Blocks4x4_16u32s_C1R(const uint16_t* pSrc, int32_t srcStep,
                                                                  const uint16_t* pPred, int32_t predStep,
                                                                  int32_t* pSums, int16_t* pDiff) {
  return sums_diff<8>(pSrc, srcStep, pPred, predStep, pSums, pDiff);
}

}  // extern "C"
