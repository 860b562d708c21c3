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
//
// The 8-bit 8x8 Hadamard export likewise: three pointer tests, then the whole
// transform straight-line in the sixteen xmm registers (differences in words,
// three stages between rows, a word transpose, two stages between columns,
// the last stage folded into a maximum) with no register spilled, and the
// lanes widened and doubled by one pmaddwd. Arguments: rdi = cur, esi =
// curStep, rdx = ref, ecx = refStep, r8 = pDst.
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

# Each pair of lanes doubled and added: the total of the 8x8 sums below.
.section .rodata
.p2align 4
hux_me_twos16:
  .fill 8, 2, 2
.text

  HUX_FN huxiSAT8x8D_8u32s_C1R
  test rdi, rdi
  jz 9f
  test rdx, rdx
  jz 9f
  test r8, r8
  jz 9f
  movsxd rsi, esi
  movsxd rcx, ecx
  lea r10, [rsi+rsi*2]
  lea r11, [rcx+rcx*2]
  pxor xmm15, xmm15
# The eight difference rows in words, xmm0-xmm7 (cur minus ref).
movq xmm0, [rdi]
  movq xmm8, [rdx]
  punpcklbw xmm0, xmm15
  punpcklbw xmm8, xmm15
  psubw xmm0, xmm8
  movq xmm1, [rdi+rsi]
  movq xmm9, [rdx+rcx]
  punpcklbw xmm1, xmm15
  punpcklbw xmm9, xmm15
  psubw xmm1, xmm9
  movq xmm2, [rdi+rsi*2]
  movq xmm10, [rdx+rcx*2]
  punpcklbw xmm2, xmm15
  punpcklbw xmm10, xmm15
  psubw xmm2, xmm10
  movq xmm3, [rdi+r10]
  movq xmm11, [rdx+r11]
  punpcklbw xmm3, xmm15
  punpcklbw xmm11, xmm15
  psubw xmm3, xmm11
  lea rdi, [rdi+rsi*4]
  lea rdx, [rdx+rcx*4]
  movq xmm4, [rdi]
  movq xmm12, [rdx]
  punpcklbw xmm4, xmm15
  punpcklbw xmm12, xmm15
  psubw xmm4, xmm12
  movq xmm5, [rdi+rsi]
  movq xmm13, [rdx+rcx]
  punpcklbw xmm5, xmm15
  punpcklbw xmm13, xmm15
  psubw xmm5, xmm13
  movq xmm6, [rdi+rsi*2]
  movq xmm14, [rdx+rcx*2]
  punpcklbw xmm6, xmm15
  punpcklbw xmm14, xmm15
  psubw xmm6, xmm14
  movq xmm7, [rdi+r10]
  movq xmm8, [rdx+r11]
  punpcklbw xmm7, xmm15
  punpcklbw xmm8, xmm15
  psubw xmm7, xmm8
# Three butterfly stages between rows (each value a sum of at most eight
# differences: below 2^11), registers renamed as temporaries free up.
  movdqa xmm9, xmm0
  paddw xmm0, xmm1
  psubw xmm9, xmm1
  movdqa xmm10, xmm2
  paddw xmm2, xmm3
  psubw xmm10, xmm3
  movdqa xmm11, xmm4
  paddw xmm4, xmm5
  psubw xmm11, xmm5
  movdqa xmm12, xmm6
  paddw xmm6, xmm7
  psubw xmm12, xmm7
  movdqa xmm13, xmm0
  paddw xmm0, xmm2
  psubw xmm13, xmm2
  movdqa xmm14, xmm9
  paddw xmm9, xmm10
  psubw xmm14, xmm10
  movdqa xmm8, xmm4
  paddw xmm4, xmm6
  psubw xmm8, xmm6
  movdqa xmm1, xmm11
  paddw xmm11, xmm12
  psubw xmm1, xmm12
  movdqa xmm3, xmm0
  paddw xmm0, xmm4
  psubw xmm3, xmm4
  movdqa xmm5, xmm9
  paddw xmm9, xmm11
  psubw xmm5, xmm11
  movdqa xmm7, xmm13
  paddw xmm13, xmm8
  psubw xmm7, xmm8
  movdqa xmm2, xmm14
  paddw xmm14, xmm1
  psubw xmm2, xmm1
# Transpose: words, double words, quad words; then registers hold columns.
  movdqa xmm10, xmm0
  punpcklwd xmm0, xmm9
  punpckhwd xmm10, xmm9
  movdqa xmm6, xmm13
  punpcklwd xmm13, xmm14
  punpckhwd xmm6, xmm14
  movdqa xmm12, xmm3
  punpcklwd xmm3, xmm5
  punpckhwd xmm12, xmm5
  movdqa xmm4, xmm7
  punpcklwd xmm7, xmm2
  punpckhwd xmm4, xmm2
  movdqa xmm11, xmm0
  punpckldq xmm0, xmm13
  punpckhdq xmm11, xmm13
  movdqa xmm8, xmm10
  punpckldq xmm10, xmm6
  punpckhdq xmm8, xmm6
  movdqa xmm1, xmm3
  punpckldq xmm3, xmm7
  punpckhdq xmm1, xmm7
  movdqa xmm9, xmm12
  punpckldq xmm12, xmm4
  punpckhdq xmm9, xmm4
  movdqa xmm14, xmm0
  punpcklqdq xmm0, xmm3
  punpckhqdq xmm14, xmm3
  movdqa xmm5, xmm11
  punpcklqdq xmm11, xmm1
  punpckhqdq xmm5, xmm1
  movdqa xmm2, xmm10
  punpcklqdq xmm10, xmm12
  punpckhqdq xmm2, xmm12
  movdqa xmm13, xmm8
  punpcklqdq xmm8, xmm9
  punpckhqdq xmm13, xmm9
# Two butterfly stages between columns.
  movdqa xmm6, xmm0
  paddw xmm0, xmm14
  psubw xmm6, xmm14
  movdqa xmm7, xmm11
  paddw xmm11, xmm5
  psubw xmm7, xmm5
  movdqa xmm4, xmm10
  paddw xmm10, xmm2
  psubw xmm4, xmm2
  movdqa xmm3, xmm8
  paddw xmm8, xmm13
  psubw xmm3, xmm13
  movdqa xmm1, xmm0
  paddw xmm0, xmm11
  psubw xmm1, xmm11
  movdqa xmm12, xmm6
  paddw xmm6, xmm7
  psubw xmm12, xmm7
  movdqa xmm9, xmm10
  paddw xmm10, xmm8
  psubw xmm9, xmm8
  movdqa xmm14, xmm4
  paddw xmm4, xmm3
  psubw xmm14, xmm3
# The last stage between columns j and j + 4 is not formed:
# |a + b| + |a - b| = 2 max(|a|, |b|), and max(|a|, |b|) is
# max(max(a, b), -min(a, b)). Each magnitude is at most 32 x 255, so the
# four lanes of a column add below 2^15 and pmaddwd by 2 widens them exactly.
  movdqa xmm5, xmm0
  pmaxsw xmm0, xmm10
  pminsw xmm5, xmm10
  pxor xmm2, xmm2
  psubw xmm2, xmm5
  pmaxsw xmm0, xmm2
  movdqa xmm13, xmm6
  pmaxsw xmm6, xmm4
  pminsw xmm13, xmm4
  pxor xmm11, xmm11
  psubw xmm11, xmm13
  pmaxsw xmm6, xmm11
  movdqa xmm7, xmm1
  pmaxsw xmm1, xmm9
  pminsw xmm7, xmm9
  pxor xmm8, xmm8
  psubw xmm8, xmm7
  pmaxsw xmm1, xmm8
  movdqa xmm3, xmm12
  pmaxsw xmm12, xmm14
  pminsw xmm3, xmm14
  pxor xmm10, xmm10
  psubw xmm10, xmm3
  pmaxsw xmm12, xmm10
  paddw xmm0, xmm6
  paddw xmm1, xmm12
  paddw xmm0, xmm1
  pmaddwd xmm0, [rip+hux_me_twos16]
  pshufd xmm2, xmm0, 0x4e
  paddd xmm0, xmm2
  pshufd xmm2, xmm0, 0xb1
  paddd xmm0, xmm2
  movd [r8], xmm0
  xor eax, eax
  ret
9:
  mov eax, -8
  ret
  HUX_FN_END huxiSAT8x8D_8u32s_C1R

.purgem HUX_SSD8ROW
.att_syntax prefix
)" HUX_FN_PURGE);

#endif
