// The integer-position block SAD exports (16x16, 16x8, 8x8, 8x4, 4x4) in
// assembly, for 64-bit (System V) and 32-bit (arguments on the stack, callee
// pops) x86. At one to five nanoseconds a call, what the compiler puts around
// the kernel (flag registers for the pointer tests, callee-saved registers,
// a spilled accumulator, recomputed row offsets) is a visible share, so each
// export here is its kernel plus the pointer tests and the selector test:
//  - one test and branch per pointer, all to one out-of-line return of
//    huxErrNullPtr, in the interface's order (any null pointer: nothing read,
//    nothing written);
//  - a selector with a half-sample position ((mcType >> 2) & 3 not 0): on
//    64-bit the vertical and horizontal positions of 16x16, 16x8 and 8x8 are
//    computed here too (pavgb of the two reference rows or columns, which is
//    the rounded-up average exactly); the diagonal position, and every half
//    position on 32-bit, jumps with the arguments untouched to the C++ body;
//  - the 16-wide kernels fold the current rows into psadbw as memory operands
//    when the current block and its step are 16-byte aligned, and load them
//    otherwise; 8- and 4-wide rows are packed two to a register (8-byte and
//    4-byte loads: nothing outside the block is read).
// Only caller-saved registers are used on 64-bit; on 32-bit one register is
// saved for the 16-wide blocks. The intrinsics kernels in sad_sse2.h compute
// the same sums and serve where this file is not built (HUX_ASM is 0).
#include "common/asm.h"

#if HUX_ASM

#if defined(__x86_64__)

// rdi = src, esi = srcStep, rdx = ref, ecx = refStep, r8 = pSAD, r9d = mcType.
asm(HUX_FN_MACROS R"(
.intel_syntax noprefix
.text

.macro HUX_CHECKS half, null
  test rdi, rdi
  jz \null
  test rdx, rdx
  jz \null
  test r8, r8
  jz \null
  .ifnb \half
  test r9b, 12
  jnz \half
  .endif
  movsxd rsi, esi
  movsxd rcx, ecx
.endm

# Four rows of 16 samples into a, b, c, d; cur at rdi (steps rsi, r10 = 3 rsi),
# ref at rdx (rcx, r11). Aligned: the current rows are memory operands.
.macro HUX_SAD16x4A a, b, c, d
  movdqu \a, [rdx]
  movdqu \b, [rdx+rcx]
  movdqu \c, [rdx+rcx*2]
  movdqu \d, [rdx+r11]
  psadbw \a, [rdi]
  psadbw \b, [rdi+rsi]
  psadbw \c, [rdi+rsi*2]
  psadbw \d, [rdi+r10]
.endm
.macro HUX_SAD16x4U a, b, c, d
  movdqu \a, [rdx]
  movdqu \b, [rdx+rcx]
  movdqu \c, [rdx+rcx*2]
  movdqu \d, [rdx+r11]
  movdqu xmm8, [rdi]
  movdqu xmm9, [rdi+rsi]
  movdqu xmm10, [rdi+rsi*2]
  movdqu xmm11, [rdi+r10]
  psadbw \a, xmm8
  psadbw \b, xmm9
  psadbw \c, xmm10
  psadbw \d, xmm11
.endm

# Sum of xmm0..xmm3 (two 64-bit lanes each) stored to [r8]; returns huxOk.
.macro HUX_SUM4_STORE
  paddd xmm0, xmm1
  paddd xmm2, xmm3
  paddd xmm0, xmm2
  pshufd xmm1, xmm0, 0xEE
  paddd xmm0, xmm1
  movd [r8], xmm0
  xor eax, eax
  ret
.endm

.macro HUX_SAD16 h, kind
  HUX_SAD16x4\kind xmm0, xmm1, xmm2, xmm3
  .rept \h / 4 - 1
  lea rdi, [rdi+rsi*4]
  lea rdx, [rdx+rcx*4]
  HUX_SAD16x4\kind xmm4, xmm5, xmm6, xmm7
  paddd xmm0, xmm4
  paddd xmm1, xmm5
  paddd xmm2, xmm6
  paddd xmm3, xmm7
  .endr
  HUX_SUM4_STORE
.endm

# Vertical half-sample position, four rows: c holds reference row y on entry,
# r1..r4 receive rows y+1..y+4 (r4 is row y of the next four); each row pair is
# averaged in place, the next register being read before it is overwritten.
.macro HUX_SAD16V4 kind, c, r1, r2, r3, r4
  movdqu \r1, [rdx+rcx]
  movdqu \r2, [rdx+rcx*2]
  movdqu \r3, [rdx+r11]
  movdqu \r4, [rdx+rcx*4]
  pavgb \c, \r1
  pavgb \r1, \r2
  pavgb \r2, \r3
  pavgb \r3, \r4
  HUX_CUR4\kind \c, \r1, \r2, \r3
.endm
# Horizontal half-sample position, four rows into xmm2..xmm5.
.macro HUX_SAD16H4 kind
  movdqu xmm2, [rdx]
  movdqu xmm6, [rdx+1]
  movdqu xmm3, [rdx+rcx]
  movdqu xmm7, [rdx+rcx+1]
  movdqu xmm4, [rdx+rcx*2]
  movdqu xmm8, [rdx+rcx*2+1]
  movdqu xmm5, [rdx+r11]
  movdqu xmm9, [rdx+r11+1]
  pavgb xmm2, xmm6
  pavgb xmm3, xmm7
  pavgb xmm4, xmm8
  pavgb xmm5, xmm9
  HUX_CUR4\kind xmm2, xmm3, xmm4, xmm5
.endm
# psadbw of four predicted rows against the current rows at rdi, then the
# sums added to xmm0 (rows 0, 2) and xmm1 (rows 1, 3).
.macro HUX_CUR4A a, b, c, d
  psadbw \a, [rdi]
  psadbw \b, [rdi+rsi]
  psadbw \c, [rdi+rsi*2]
  psadbw \d, [rdi+r10]
  HUX_ACC4 \a, \b, \c, \d
.endm
.macro HUX_CUR4U a, b, c, d
  movdqu xmm10, [rdi]
  movdqu xmm11, [rdi+rsi]
  movdqu xmm12, [rdi+rsi*2]
  movdqu xmm13, [rdi+r10]
  psadbw \a, xmm10
  psadbw \b, xmm11
  psadbw \c, xmm12
  psadbw \d, xmm13
  HUX_ACC4 \a, \b, \c, \d
.endm
.macro HUX_ACC4 a, b, c, d
  paddd xmm0, \a
  paddd xmm1, \b
  paddd xmm0, \c
  paddd xmm1, \d
  lea rdi, [rdi+rsi*4]
  lea rdx, [rdx+rcx*4]
.endm
.macro HUX_SUM2_STORE
  paddd xmm0, xmm1
  pshufd xmm1, xmm0, 0xEE
  paddd xmm0, xmm1
  movd [r8], xmm0
  xor eax, eax
  ret
.endm
.macro HUX_SAD16V h, kind
  pxor xmm0, xmm0
  pxor xmm1, xmm1
  movdqu xmm2, [rdx]
  HUX_SAD16V4 \kind, xmm2, xmm3, xmm4, xmm5, xmm6
  HUX_SAD16V4 \kind, xmm6, xmm2, xmm3, xmm4, xmm5
  .if \h == 16
  HUX_SAD16V4 \kind, xmm5, xmm6, xmm2, xmm3, xmm4
  HUX_SAD16V4 \kind, xmm4, xmm5, xmm6, xmm2, xmm3
  .endif
  HUX_SUM2_STORE
.endm
.macro HUX_SAD16H h, kind
  pxor xmm0, xmm0
  pxor xmm1, xmm1
  .rept \h / 4
  HUX_SAD16H4 \kind
  .endr
  HUX_SUM2_STORE
.endm
# rsi, rcx sign-extended; r10, r11 = three steps; branch to the aligned or
# unaligned form of a kernel macro.
.macro HUX_SAD16_BODY kernel, h
  lea r10, [rsi+rsi*2]
  lea r11, [rcx+rcx*2]
  test dil, 15
  jnz 1f
  test sil, 15
  jnz 1f
  \kernel \h, A
1:
  \kernel \h, U
.endm

# The integer position falls through; the vertical (mcType 4) and horizontal
# (8) half-sample positions are here too, the diagonal one (12) is the C++ body.
.macro HUX_SAD16_EXPORT name, h, half
  HUX_FN \name
  HUX_CHECKS 5f, 9f
  HUX_SAD16_BODY HUX_SAD16, \h
5:
  test r9b, 4
  jz 6f
  test r9b, 8
  jnz \half
  movsxd rsi, esi
  movsxd rcx, ecx
  HUX_SAD16_BODY HUX_SAD16V, \h
6:
  movsxd rsi, esi
  movsxd rcx, ecx
  HUX_SAD16_BODY HUX_SAD16H, \h
9:
  mov eax, -8
  ret
  HUX_FN_END \name
.endm

# Two rows of 8 samples in one register: a = cur rows (rdi, rdi + s1),
# b = ref rows (rdx, rdx + r1); a = their two row sums.
.macro HUX_SAD8x2 a, b, c0, c1, r0, r1
  movq \a, [\c0]
  movhps \a, [\c1]
  movq \b, [\r0]
  movhps \b, [\r1]
  psadbw \a, \b
.endm

# 8-wide half-sample positions, four rows (two registers of two rows):
# cur rows at rdi, prediction rows from rdx; sums into xmm0, xmm1.
.macro HUX_SAD8V4
  movq xmm2, [rdx]
  movq xmm4, [rdx+rcx]
  movq xmm3, [rdx+rcx*2]
  movq xmm5, [rdx+r11]
  movq xmm6, [rdx+rcx*4]
  pavgb xmm2, xmm4
  pavgb xmm4, xmm3
  pavgb xmm3, xmm5
  pavgb xmm5, xmm6
  punpcklqdq xmm2, xmm4
  punpcklqdq xmm3, xmm5
  HUX_SAD8P4
.endm
.macro HUX_SAD8H4
  movq xmm2, [rdx]
  movhps xmm2, [rdx+rcx]
  movq xmm4, [rdx+1]
  movhps xmm4, [rdx+rcx+1]
  movq xmm3, [rdx+rcx*2]
  movhps xmm3, [rdx+r11]
  movq xmm5, [rdx+rcx*2+1]
  movhps xmm5, [rdx+r11+1]
  pavgb xmm2, xmm4
  pavgb xmm3, xmm5
  HUX_SAD8P4
.endm
.macro HUX_SAD8P4
  movq xmm6, [rdi]
  movq xmm8, [rdi+rsi]
  movq xmm7, [rdi+rsi*2]
  movq xmm9, [rdi+r10]
  punpcklqdq xmm6, xmm8
  punpcklqdq xmm7, xmm9
  psadbw xmm2, xmm6
  psadbw xmm3, xmm7
  paddd xmm0, xmm2
  paddd xmm1, xmm3
.endm
.macro HUX_SAD8HALF h, kind
  lea r10, [rsi+rsi*2]
  lea r11, [rcx+rcx*2]
  pxor xmm0, xmm0
  pxor xmm1, xmm1
  HUX_SAD8\kind\()4
  .if \h == 8
  lea rdi, [rdi+rsi*4]
  lea rdx, [rdx+rcx*4]
  HUX_SAD8\kind\()4
  .endif
  HUX_SUM2_STORE
.endm

# The integer position falls through; on 64-bit the vertical and horizontal
# half-sample positions are here too, the diagonal one is the C++ body.
.macro HUX_SAD8_EXPORT name, h, half
  HUX_FN \name
  .ifnb \half
  HUX_CHECKS 5f, 9f
  .else
  HUX_CHECKS , 9f
  .endif
  lea r10, [rsi+rsi*2]
  lea r11, [rcx+rcx*2]
  HUX_SAD8x2 xmm0, xmm4, rdi, rdi+rsi, rdx, rdx+rcx
  HUX_SAD8x2 xmm2, xmm5, rdi+rsi*2, rdi+r10, rdx+rcx*2, rdx+r11
  .if \h == 8
  lea rdi, [rdi+rsi*4]
  lea rdx, [rdx+rcx*4]
  HUX_SAD8x2 xmm1, xmm4, rdi, rdi+rsi, rdx, rdx+rcx
  HUX_SAD8x2 xmm3, xmm5, rdi+rsi*2, rdi+r10, rdx+rcx*2, rdx+r11
  paddd xmm0, xmm1
  paddd xmm2, xmm3
  .endif
  paddd xmm0, xmm2
  pshufd xmm1, xmm0, 0xEE
  paddd xmm0, xmm1
  movd [r8], xmm0
  xor eax, eax
  ret
  .ifnb \half
5:
  test r9b, 4
  jz 6f
  test r9b, 8
  jnz \half
  movsxd rsi, esi
  movsxd rcx, ecx
  HUX_SAD8HALF \h, V
6:
  movsxd rsi, esi
  movsxd rcx, ecx
  HUX_SAD8HALF \h, H
  .endif
9:
  mov eax, -8
  ret
  HUX_FN_END \name
.endm

HUX_SAD16_EXPORT huxiSAD16x16_8u32s, 16, hux_me_sad16x16_half
HUX_SAD16_EXPORT huxiSAD16x8_8u32s_C1R, 8, hux_me_sad16x8_half
HUX_SAD8_EXPORT huxiSAD8x8_8u32s_C1R, 8, hux_me_sad8x8_half
HUX_SAD8_EXPORT huxiSAD8x4_8u32s_C1R, 4

# 4x4: rows 0-1 and 2-3 of each block packed into the low eight bytes, so the
# psadbw sums need no fold.
  HUX_FN huxiSAD4x4_8u32s
  HUX_CHECKS , 9f
  movd xmm0, [rdi]
  movd xmm1, [rdi+rsi]
  movd xmm4, [rdx]
  movd xmm5, [rdx+rcx]
  lea rdi, [rdi+rsi*2]
  lea rdx, [rdx+rcx*2]
  movd xmm2, [rdi]
  movd xmm3, [rdi+rsi]
  movd xmm6, [rdx]
  movd xmm7, [rdx+rcx]
  punpckldq xmm0, xmm1
  punpckldq xmm4, xmm5
  punpckldq xmm2, xmm3
  punpckldq xmm6, xmm7
  psadbw xmm0, xmm4
  psadbw xmm2, xmm6
  paddd xmm0, xmm2
  movd [r8], xmm0
  xor eax, eax
  ret
9:
  mov eax, -8
  ret
  HUX_FN_END huxiSAD4x4_8u32s

.purgem HUX_CHECKS
.purgem HUX_SAD16x4A
.purgem HUX_SAD16x4U
.purgem HUX_SUM4_STORE
.purgem HUX_SAD16
.purgem HUX_SAD16_EXPORT
.purgem HUX_SAD8x2
.purgem HUX_SAD16V4
.purgem HUX_SAD16H4
.purgem HUX_CUR4A
.purgem HUX_CUR4U
.purgem HUX_ACC4
.purgem HUX_SUM2_STORE
.purgem HUX_SAD16V
.purgem HUX_SAD16H
.purgem HUX_SAD16_BODY
.purgem HUX_SAD8V4
.purgem HUX_SAD8H4
.purgem HUX_SAD8P4
.purgem HUX_SAD8HALF
.purgem HUX_SAD8_EXPORT
.att_syntax prefix
)" HUX_FN_PURGE);

#else  // 32-bit

// Arguments at [esp + 4] src, [+8] srcStep, [+12] ref, [+16] refStep,
// [+20] pSAD, [+24] mcType; the callee pops 24 bytes.
asm(HUX_FN_MACROS R"(
.intel_syntax noprefix
.text

# Pointer tests (eax = src, edx = ref), then the selector; o = extra stack offset.
.macro HUX_CHECKS half, null
  mov eax, [esp+4]
  test eax, eax
  jz \null
  mov edx, [esp+12]
  test edx, edx
  jz \null
  cmp dword ptr [esp+20], 0
  je \null
  .ifnb \half
  test byte ptr [esp+24], 12
  jnz \half
  .endif
.endm

# Two rows of 16 samples into a, b: cur at eax (step ecx), ref at edx (esi).
.macro HUX_SAD16x2A a, b
  movdqu \a, [edx]
  movdqu \b, [edx+esi]
  psadbw \a, [eax]
  psadbw \b, [eax+ecx]
.endm
.macro HUX_SAD16x2U a, b
  movdqu \a, [edx]
  movdqu \b, [edx+esi]
  movdqu xmm6, [eax]
  movdqu xmm7, [eax+ecx]
  psadbw \a, xmm6
  psadbw \b, xmm7
.endm

.macro HUX_SAD16 h, kind
  HUX_SAD16x2\kind xmm0, xmm1
  lea eax, [eax+ecx*2]
  lea edx, [edx+esi*2]
  HUX_SAD16x2\kind xmm2, xmm3
  .rept \h / 4 - 1
  lea eax, [eax+ecx*2]
  lea edx, [edx+esi*2]
  HUX_SAD16x2\kind xmm4, xmm5
  paddd xmm0, xmm4
  paddd xmm1, xmm5
  lea eax, [eax+ecx*2]
  lea edx, [edx+esi*2]
  HUX_SAD16x2\kind xmm4, xmm5
  paddd xmm2, xmm4
  paddd xmm3, xmm5
  .endr
  paddd xmm0, xmm1
  paddd xmm2, xmm3
  paddd xmm0, xmm2
  pshufd xmm1, xmm0, 0xEE
  paddd xmm0, xmm1
  mov eax, [esp+24]
  movd [eax], xmm0
  pop esi
  xor eax, eax
  ret 24
.endm

.macro HUX_SAD16_EXPORT name, h, half
  HUX_FN \name
  HUX_CHECKS \half, 9f
  push esi
  mov ecx, [esp+12]
  mov esi, [esp+20]
  test al, 15
  jnz 1f
  test cl, 15
  jnz 1f
  HUX_SAD16 \h, A
1:
  HUX_SAD16 \h, U
9:
  mov eax, -8
  ret 24
  HUX_FN_END \name
.endm

# 8-wide: the current rows are loaded first (step in ecx), then the step is
# replaced by the reference step, so no register needs saving.
.macro HUX_SAD8_EXPORT name, h, half
  HUX_FN \name
  HUX_CHECKS \half, 9f
  mov ecx, [esp+8]
  movq xmm0, [eax]
  movhps xmm0, [eax+ecx]
  lea eax, [eax+ecx*2]
  movq xmm1, [eax]
  movhps xmm1, [eax+ecx]
  .if \h == 8
  lea eax, [eax+ecx*2]
  movq xmm2, [eax]
  movhps xmm2, [eax+ecx]
  lea eax, [eax+ecx*2]
  movq xmm3, [eax]
  movhps xmm3, [eax+ecx]
  .endif
  mov ecx, [esp+16]
  movq xmm4, [edx]
  movhps xmm4, [edx+ecx]
  lea edx, [edx+ecx*2]
  movq xmm5, [edx]
  movhps xmm5, [edx+ecx]
  psadbw xmm0, xmm4
  psadbw xmm1, xmm5
  .if \h == 8
  lea edx, [edx+ecx*2]
  movq xmm4, [edx]
  movhps xmm4, [edx+ecx]
  lea edx, [edx+ecx*2]
  movq xmm5, [edx]
  movhps xmm5, [edx+ecx]
  psadbw xmm2, xmm4
  psadbw xmm3, xmm5
  paddd xmm0, xmm2
  paddd xmm1, xmm3
  .endif
  paddd xmm0, xmm1
  pshufd xmm1, xmm0, 0xEE
  paddd xmm0, xmm1
  mov eax, [esp+20]
  movd [eax], xmm0
  xor eax, eax
  ret 24
9:
  mov eax, -8
  ret 24
  HUX_FN_END \name
.endm

HUX_SAD16_EXPORT huxiSAD16x16_8u32s, 16, hux_me_sad16x16_half
HUX_SAD16_EXPORT huxiSAD16x8_8u32s_C1R, 8, hux_me_sad16x8_half
HUX_SAD8_EXPORT huxiSAD8x8_8u32s_C1R, 8, hux_me_sad8x8_half
HUX_SAD8_EXPORT huxiSAD8x4_8u32s_C1R, 4

  HUX_FN huxiSAD4x4_8u32s
  HUX_CHECKS , 9f
  mov ecx, [esp+8]
  movd xmm0, [eax]
  movd xmm1, [eax+ecx]
  lea eax, [eax+ecx*2]
  movd xmm2, [eax]
  movd xmm3, [eax+ecx]
  mov ecx, [esp+16]
  movd xmm4, [edx]
  movd xmm5, [edx+ecx]
  lea edx, [edx+ecx*2]
  movd xmm6, [edx]
  movd xmm7, [edx+ecx]
  punpckldq xmm0, xmm1
  punpckldq xmm4, xmm5
  punpckldq xmm2, xmm3
  punpckldq xmm6, xmm7
  psadbw xmm0, xmm4
  psadbw xmm2, xmm6
  paddd xmm0, xmm2
  mov eax, [esp+20]
  movd [eax], xmm0
  xor eax, eax
  ret 24
9:
  mov eax, -8
  ret 24
  HUX_FN_END huxiSAD4x4_8u32s

.purgem HUX_CHECKS
.purgem HUX_SAD16x2A
.purgem HUX_SAD16x2U
.purgem HUX_SAD16
.purgem HUX_SAD16_EXPORT
.purgem HUX_SAD8_EXPORT
.att_syntax prefix
)" HUX_FN_PURGE);

#endif
#endif  // HUX_ASM
