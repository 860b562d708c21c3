// The integer-position 8x8 SSD export in assembly, for 64-bit (System V)
// x86. The sum takes about three nanoseconds, so what a compiler puts around
// it (flag registers for the pointer tests, a two-turn loop with one
// accumulator chain, the selector's position decoded in front) is a visible
// share. Here the export is:
//  - one test and branch per pointer, all to one out-of-line return of
//    huxErrNullPtr (any null pointer: nothing read, nothing written);
//  - a selector with a half-sample position ((mcType >> 2) & 3 not 0) jumps
//    with the arguments untouched to the C++ body (metrics.cpp);
//  - the rows, widened to words, subtracted and squared in pairs with
//    pmaddwd (each pair sum at most 2 x 255^2), the eight rows' dword sums
//    added as a tree, then across the lanes (at most 64 x 255^2 < 2^31).
// Only caller-saved registers are used; 8 bytes are read per row and only the
// result is written. Elsewhere (32-bit, HUX_ASM 0) the export is the C++ body.
#include "common/asm.h"

#if HUX_ASM && defined(__x86_64__)

// rdi = cur, esi = curStep, rdx = ref, ecx = refStep, r8 = pDstSSD, r9d = mcType.
asm(".intel_syntax noprefix\n" HUX_FN_MACROS R"(
.text

# Squared differences of one row pair: cur at [rdi+\c], ref at [rdx+\r], as
# four dword sums in \a (xmm15 = 0, \t a scratch register).
.macro HUX_SSD8ROW a, t, c, r
  movq \a, [rdi+\c]
  movq \t, [rdx+\r]
  punpcklbw \a, xmm15
  punpcklbw \t, xmm15
  psubw \a, \t
  pmaddwd \a, \a
.endm

  HUX_FN huxiSSD8x8_8u32s_C1R
  test rdi, rdi
  jz 9f
  test rdx, rdx
  jz 9f
  test r8, r8
  jz 9f
  test r9b, 12
  jnz hux_me_ssd8x8_body
  movsxd rsi, esi
  movsxd rcx, ecx
  lea r10, [rsi+rsi*2]
  lea r11, [rcx+rcx*2]
  pxor xmm15, xmm15
  HUX_SSD8ROW xmm0, xmm8, 0, 0
  HUX_SSD8ROW xmm1, xmm9, rsi, rcx
  HUX_SSD8ROW xmm2, xmm10, rsi*2, rcx*2
  HUX_SSD8ROW xmm3, xmm11, r10, r11
  lea rdi, [rdi+rsi*4]
  lea rdx, [rdx+rcx*4]
  HUX_SSD8ROW xmm4, xmm12, 0, 0
  HUX_SSD8ROW xmm5, xmm13, rsi, rcx
  HUX_SSD8ROW xmm6, xmm14, rsi*2, rcx*2
  HUX_SSD8ROW xmm7, xmm8, r10, r11
  paddd xmm0, xmm1
  paddd xmm2, xmm3
  paddd xmm4, xmm5
  paddd xmm6, xmm7
  paddd xmm0, xmm2
  paddd xmm4, xmm6
  paddd xmm0, xmm4
  pshufd xmm1, xmm0, 0x4e
  paddd xmm0, xmm1
  pshufd xmm1, xmm0, 0xb1
  paddd xmm0, xmm1
  movd [r8], xmm0
  xor eax, eax
  ret
9:
  mov eax, -8
  ret
  HUX_FN_END huxiSSD8x8_8u32s_C1R

.purgem HUX_SSD8ROW
.att_syntax prefix
)" HUX_FN_PURGE);

#endif
