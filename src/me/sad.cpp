// Block SAD exports: pointer checks, then the kernel for the block shape and
// half-sample position, inlined here (the byte SADs' integer positions, and
// on 64-bit their vertical and horizontal half-sample positions, are in
// assembly in x86/sad_asm.cpp where it is built). Steps, block sizes and
// selector ranges are never checked. The selector is divided by four without
// a mask, so values of 16 and above are outside the interface; they are
// masked here (and in the assembly) to one of the four positions.
#include "huxvc.h"
#include "me/sad_kernels.h"

namespace me = hux::me;
namespace k = hux::me::HUX_KERNELS;

namespace {

constexpr int half_pel(int32_t mcType) { return (mcType >> 2) & 3; }

// The half-sample kernels of the byte SADs, inlined into the out-of-line
// functions below (hux_me_sad*_half), which the integer path reaches by one
// jump so that it needs no stack frame.
template <int W, int H>
HUX_INLINE HuxResult sad_half(const uint8_t* src, int32_t srcStep, const uint8_t* ref, int32_t refStep,
                                     int32_t* sad, int hp) {
  if (hp == me::kVertical)
    *sad = k::sad<W, H, me::kVertical>(src, srcStep, ref, refStep);
  else if (hp == me::kHorizontal)
    *sad = k::sad<W, H, me::kHorizontal>(src, srcStep, ref, refStep);
  else
    *sad = k::sad<W, H, me::kDiagonal>(src, srcStep, ref, refStep);
  return huxOk;
}
// The same for the word SADs, out of line and reached by a tail call.
template <int W, int H>
[[gnu::noinline]] HuxResult sad16u_half(const uint16_t* src, int32_t srcStep, const uint16_t* ref, int32_t refStep,
                                        int32_t* sad, int hp) {
  if (hp == me::kVertical)
    *sad = k::sad16u<W, H, me::kVertical>(src, srcStep, ref, refStep);
  else if (hp == me::kHorizontal)
    *sad = k::sad16u<W, H, me::kHorizontal>(src, srcStep, ref, refStep);
  else
    *sad = k::sad16u<W, H, me::kDiagonal>(src, srcStep, ref, refStep);
  return huxOk;
}

// Shapes that take a selector and ignore it: integer position only.
template <int W, int H>
HuxResult sad8_integer(const uint8_t* src, int32_t srcStep, const uint8_t* ref, int32_t refStep, int32_t* sad) {
  if (__builtin_expect(!src || !ref || !sad, 0)) return huxErrNullPtr;
  *sad = k::sad<W, H, me::kInteger>(src, srcStep, ref, refStep);
  return huxOk;
}

template <int W, int H>
HuxResult sad16(const uint16_t* src, int32_t srcStep, const uint16_t* ref, int32_t refStep, int32_t* sad,
                int32_t mcType) {
  if (!src | !ref | !sad) return huxErrNullPtr;
  if (__builtin_expect((mcType & 12) != 0, 0)) return sad16u_half<W, H>(src, srcStep, ref, refStep, sad, half_pel(mcType));
  *sad = k::sad16u<W, H, me::kInteger>(src, srcStep, ref, refStep);
  return huxOk;
}

template <int B>
HuxResult sad_line(const uint8_t* src, int32_t srcStep, const uint8_t* ref, int32_t refStep, uint16_t* sads,
                   int32_t numCand, uint32_t* minIndex) {
  const int32_t m = numCand & ~7;
  if (m < 1) return huxErrSize;
  k::sad_line<B>(src, srcStep, ref, refStep, sads, m);
  if (minIndex) *minIndex = k::min_index(sads, m);
  return huxOk;
}

}  // namespace

extern "C" {

// Half-sample positions of the shapes that have them, with the exports'
// arguments: the integer path (here or in x86/sad_asm.cpp) jumps to these
// when the selector asks for a half-sample position.
#define HUX_SAD_HALF(W, H)                                                                               \
  [[gnu::visibility("hidden")]] HuxResult HUX_STDCALL hux_me_sad##W##x##H##_half(                        \
      const uint8_t* src, int32_t srcStep, const uint8_t* ref, int32_t refStep, int32_t* sad, int32_t mcType) { \
    return sad_half<W, H>(src, srcStep, ref, refStep, sad, half_pel(mcType));                            \
  }
HUX_SAD_HALF(16, 16)
HUX_SAD_HALF(16, 8)
HUX_SAD_HALF(8, 8)
#undef HUX_SAD_HALF

#if !HUX_ASM
// Without the assembly exports: the same checks and dispatch in C++.
#define HUX_SAD8_EXPORT(name, W, H)                                                                          \
  HUX_API HuxResult HUX_STDCALL name(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef, int32_t refStep, \
                                     int32_t* pSAD, int32_t mcType) {                                        \
    if (!pSrc || !pRef || !pSAD) return huxErrNullPtr;                                                       \
    if (__builtin_expect((mcType & 12) != 0, 0))                                                             \
      return hux_me_sad##W##x##H##_half(pSrc, srcStep, pRef, refStep, pSAD, mcType);                         \
    *pSAD = k::sad<W, H, me::kInteger>(pSrc, srcStep, pRef, refStep);                                       \
    return huxOk;                                                                                            \
  }
HUX_SAD8_EXPORT(huxiSAD16x16_8u32s, 16, 16)
HUX_SAD8_EXPORT(huxiSAD16x8_8u32s_C1R, 16, 8)
HUX_SAD8_EXPORT(huxiSAD8x8_8u32s_C1R, 8, 8)
#undef HUX_SAD8_EXPORT
#endif
HUX_API HuxResult HUX_STDCALL huxiSAD8x16_8u32s_C1R(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef,
                                                    int32_t refStep, int32_t* pSAD, int32_t) {
  return sad8_integer<8, 16>(pSrc, srcStep, pRef, refStep, pSAD);
}
#if !HUX_ASM
HUX_API HuxResult HUX_STDCALL huxiSAD8x4_8u32s_C1R(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef,
                                                   int32_t refStep, int32_t* pSAD, int32_t) {
  return sad8_integer<8, 4>(pSrc, srcStep, pRef, refStep, pSAD);
}
#endif
HUX_API HuxResult HUX_STDCALL huxiSAD4x8_8u32s_C1R(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef,
                                                   int32_t refStep, int32_t* pSAD, int32_t) {
  return sad8_integer<4, 8>(pSrc, srcStep, pRef, refStep, pSAD);
}
#if !HUX_ASM
HUX_API HuxResult HUX_STDCALL huxiSAD4x4_8u32s(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef,
                                               int32_t refStep, int32_t* pSAD, int32_t) {
  return sad8_integer<4, 4>(pSrc, srcStep, pRef, refStep, pSAD);
}
#endif
HUX_API HuxResult HUX_STDCALL huxiSAD16x16_16u32s_C1R(const uint16_t* pSrc, int32_t srcStep, const uint16_t* pRef,
                                                      int32_t refStep, int32_t* pSAD, int32_t mcType) {
  return sad16<16, 16>(pSrc, srcStep, pRef, refStep, pSAD, mcType);
}
HUX_API HuxResult HUX_STDCALL huxiSAD8x8_16u32s_C1R(const uint16_t* pSrc, int32_t srcStep, const uint16_t* pRef,
                                                    int32_t refStep, int32_t* pSAD, int32_t mcType) {
  return sad16<8, 8>(pSrc, srcStep, pRef, refStep, pSAD, mcType);
}
HUX_API HuxResult HUX_STDCALL huxiSAD4x4_16u32s_C1R(const uint16_t* pSrc, int32_t srcStep, const uint16_t* pRef,
                                                    int32_t refStep, int32_t* pSAD, int32_t mcType) {
  return sad16<4, 4>(pSrc, srcStep, pRef, refStep, pSAD, mcType);
}

HUX_API HuxResult HUX_STDCALL huxiSAD16x16Blocks8x8_8u16u(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef,
                                                          int32_t refStep, uint16_t* pDstSAD, int32_t) {
  if (!pSrc || !pRef || !pDstSAD) return huxErrNullPtr;
  k::sad_blocks<8>(pSrc, srcStep, pRef, refStep, pDstSAD);
  return huxOk;
}
HUX_API HuxResult HUX_STDCALL huxiSAD16x16Blocks4x4_8u16u(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef,
                                                          int32_t refStep, uint16_t* pDstSAD, int32_t) {
  if (!pSrc || !pRef || !pDstSAD) return huxErrNullPtr;
  k::sad_blocks<4>(pSrc, srcStep, pRef, refStep, pDstSAD);
  return huxOk;
}
HUX_API HuxResult HUX_STDCALL huxiSAD16x16Blocks8x8_16u32u_C1R(const uint16_t* pSrc, int32_t srcStep,
                                                               const uint16_t* pRef, int32_t refStep,
                                                               uint32_t* pDstSAD, int32_t) {
  if (!pSrc || !pRef || !pDstSAD) return huxErrNullPtr;
  k::sad_blocks16u<8>(pSrc, srcStep, pRef, refStep, pDstSAD);
  return huxOk;
}
HUX_API HuxResult HUX_STDCALL huxiSAD16x16Blocks4x4_16u32u_C1R(const uint16_t* pSrc, int32_t srcStep,
                                                               const uint16_t* pRef, int32_t refStep,
                                                               uint32_t* pDstSAD, int32_t) {
  if (!pSrc || !pRef || !pDstSAD) return huxErrNullPtr;
  k::sad_blocks16u<4>(pSrc, srcStep, pRef, refStep, pDstSAD);
  return huxOk;
}

HUX_API HuxResult HUX_STDCALL huxiSAD16x16xN_8u16u_C1R(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef,
                                                       int32_t refStep, uint16_t* pDstSAD, int32_t numCand) {
  if (!pSrc || !pRef || !pDstSAD) return huxErrNullPtr;
  return sad_line<16>(pSrc, srcStep, pRef, refStep, pDstSAD, numCand, nullptr);
}
HUX_API HuxResult HUX_STDCALL huxiSAD16x16xNI_8u16u_C1R(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef,
                                                        int32_t refStep, uint16_t* pDstSAD, int32_t numCand,
                                                        uint32_t* pMinIndex) {
  if (!pSrc || !pRef || !pDstSAD || !pMinIndex) return huxErrNullPtr;
  return sad_line<16>(pSrc, srcStep, pRef, refStep, pDstSAD, numCand, pMinIndex);
}
HUX_API HuxResult HUX_STDCALL huxiSAD8x8xN_8u16u_C1R(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef,
                                                     int32_t refStep, uint16_t* pDstSAD, int32_t numCand) {
  if (!pSrc || !pRef || !pDstSAD) return huxErrNullPtr;
  return sad_line<8>(pSrc, srcStep, pRef, refStep, pDstSAD, numCand, nullptr);
}
HUX_API HuxResult HUX_STDCALL huxiSAD8x8xNI_8u16u_C1R(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef,
                                                      int32_t refStep, uint16_t* pDstSAD, int32_t numCand,
                                                      uint32_t* pMinIndex) {
  if (!pSrc || !pRef || !pDstSAD || !pMinIndex) return huxErrNullPtr;
  return sad_line<8>(pSrc, srcStep, pRef, refStep, pDstSAD, numCand, pMinIndex);
}
HUX_API HuxResult HUX_STDCALL huxiSAD4x4xN_8u16u_C1R(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef,
                                                     int32_t refStep, uint16_t* pDstSAD, int32_t numCand) {
  if (!pSrc || !pRef || !pDstSAD) return huxErrNullPtr;
  return sad_line<4>(pSrc, srcStep, pRef, refStep, pDstSAD, numCand, nullptr);
}
HUX_API HuxResult HUX_STDCALL huxiSAD4x4xNI_8u16u_C1R(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef,
                                                      int32_t refStep, uint16_t* pDstSAD, int32_t numCand,
                                                      uint32_t* pMinIndex) {
  if (!pSrc || !pRef || !pDstSAD || !pMinIndex) return huxErrNullPtr;
  return sad_line<4>(pSrc, srcStep, pRef, refStep, pDstSAD, numCand, pMinIndex);
}
HUX_API HuxResult HUX_STDCALL huxiSAD2x2xN_8u16u_C1R(const uint8_t* pSrc, int32_t srcStep, const uint8_t* pRef,
                                                     int32_t refStep, uint16_t* pDstSAD, int32_t numCand) {
  if (!pSrc || !pRef || !pDstSAD) return huxErrNullPtr;
  return sad_line<2>(pSrc, srcStep, pRef, refStep, pDstSAD, numCand, nullptr);
}

HUX_API HuxResult HUX_STDCALL huxiFrameFieldSAD16x16_8u32s_C1R(const uint8_t* pSrc, int32_t srcStep,
                                                               int32_t* pFrameSAD, int32_t* pFieldSAD) {
  if (!pSrc || !pFrameSAD || !pFieldSAD) return huxErrNullPtr;
  k::frame_field(pSrc, srcStep, pFrameSAD, pFieldSAD);
  return huxOk;
}
HUX_API HuxResult HUX_STDCALL huxiFrameFieldSAD16x16_16s32s_C1R(const int16_t* pSrc, int32_t srcStep,
                                                                int32_t* pFrameSAD, int32_t* pFieldSAD) {
  if (!pSrc || !pFrameSAD || !pFieldSAD) return huxErrNullPtr;
  k::frame_field(pSrc, srcStep, pFrameSAD, pFieldSAD);
  return huxOk;
}

// The SAD pointer is not among the checked arguments; a null one only means
// the caller wants the difference block alone, so the SAD is then not stored.
HUX_API HuxResult HUX_STDCALL huxiSubSAD8x8_8u16s_C1R(const uint8_t* pSrcCur, int32_t srcCurStep,
                                                      const uint8_t* pSrcRef, int32_t srcRefStep, int16_t* pDstDiff,
                                                      int32_t dstDiffStep, int32_t* pSAD) {
  if (!pSrcCur || !pSrcRef || !pDstDiff) return huxErrNullPtr;
  const int32_t sad = k::sub_sad8x8(pSrcCur, srcCurStep, pSrcRef, srcRefStep, pDstDiff, dstDiffStep);
  if (pSAD) *pSAD = sad;
  return huxOk;
}

}  // extern "C"
