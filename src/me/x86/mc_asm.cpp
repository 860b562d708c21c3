// The 8x8 half-sample copy export's integer and vertical positions in assembly, for 64-bit
// (System V) x86. A plain copy of eight rows takes a couple of nanoseconds,
// so what a compiler puts around it (rows chained through one stepped
// pointer, callee-saved registers) is a visible share. Here the export is:
//  - one test and branch per pointer, both to one out-of-line return of
//    huxErrNullPtr, in the interface's order (nothing read, nothing written);
//  - the vertical and horizontal half-sample positions (acc & 3 = 2, 1) are
//    here too, both roundings (pavgb rounds up; rounding down subtracts the
//    low bit of a ^ b, or averages the complements); the diagonal one jumps,
//    the steps sign-extended and the other arguments untouched, to the C++
//    body (mc.cpp);
//  - the rows, addressed from the block's first row with one, two and
//    three steps, each loaded and stored in turn (so a destination that
//    overlaps the source row by row sees what the reference kernel gives).
// Only caller-saved registers are used. Elsewhere (32-bit, HUX_ASM 0) the
// same export is C++ in mc.cpp.
#include "common/asm.h"

#if HUX_ASM && defined(__x86_64__)

// rdi = pSrc, esi = srcStep, rdx = pDst, ecx = dstStep, r8d = acc, r9d = roundControl.
asm(".intel_syntax noprefix\n" HUX_FN_MACROS R"(
.text

# Vertical half-sample row: a holds source row y, b receives row y + 1 from
# [src]; row y of the destination is their average, rounded up (kind 0) or
# down (kind 1: the rounded-up average less the low bit of a ^ b, with xmm10
# holding bytes of 1).
.macro HUX_V8ROW kind, a, b, src, dst
  movq \b, [\src]
  .if \kind
  movdqa xmm9, \a
  pxor xmm9, \b
  pand xmm9, xmm10
  .endif
  pavgb \a, \b
  .if \kind
  psubb \a, xmm9
  .endif
  movq [\dst], \a
.endm
# Horizontal half-sample row: the average of the source row at [\src] and
# the same row one byte on, to [\dst]; rounded up (kind 0) or down (kind 1:
# the rounded-up average of the complements, complemented; xmm10 holds bytes
# of 255).
.macro HUX_H8ROW kind, src, dst
  movq xmm0, [\src]
  movq xmm1, [\src+1]
  .if \kind
  pxor xmm0, xmm10
  pxor xmm1, xmm10
  .endif
  pavgb xmm0, xmm1
  .if \kind
  pxor xmm0, xmm10
  .endif
  movq [\dst], xmm0
.endm
.macro HUX_H8 kind
  HUX_H8ROW \kind, rdi, rdx
  HUX_H8ROW \kind, rdi+rsi, rdx+rcx
  HUX_H8ROW \kind, rdi+rsi*2, rdx+rcx*2
  HUX_H8ROW \kind, rdi+r10, rdx+r11
  lea rdi, [rdi+rsi*4]
  lea rdx, [rdx+rcx*4]
  HUX_H8ROW \kind, rdi, rdx
  HUX_H8ROW \kind, rdi+rsi, rdx+rcx
  HUX_H8ROW \kind, rdi+rsi*2, rdx+rcx*2
  HUX_H8ROW \kind, rdi+r10, rdx+r11
  xor eax, eax
  ret
.endm
# Four rows of 8 bytes from rdi (steps rsi, r10 = 3 rsi) to rdx (steps rcx,
# r11 = 3 rcx), each loaded and stored in turn through a vector register
# (measured faster here than through an integer one).
.macro HUX_XCOPY8x4
  movq xmm0, [rdi]
  movq [rdx], xmm0
  movq xmm1, [rdi+rsi]
  movq [rdx+rcx], xmm1
  movq xmm2, [rdi+rsi*2]
  movq [rdx+rcx*2], xmm2
  movq xmm3, [rdi+r10]
  movq [rdx+r11], xmm3
.endm
.macro HUX_V8 kind
  movq xmm0, [rdi]
  HUX_V8ROW \kind, xmm0, xmm1, rdi+rsi, rdx
  HUX_V8ROW \kind, xmm1, xmm0, rdi+rsi*2, rdx+rcx
  HUX_V8ROW \kind, xmm0, xmm1, rdi+r10, rdx+rcx*2
  HUX_V8ROW \kind, xmm1, xmm0, rdi+rsi*4, rdx+r11
  lea rdi, [rdi+rsi*4]
  lea rdx, [rdx+rcx*4]
  HUX_V8ROW \kind, xmm0, xmm1, rdi+rsi, rdx
  HUX_V8ROW \kind, xmm1, xmm0, rdi+rsi*2, rdx+rcx
  HUX_V8ROW \kind, xmm0, xmm1, rdi+r10, rdx+rcx*2
  HUX_V8ROW \kind, xmm1, xmm0, rdi+rsi*4, rdx+r11
  xor eax, eax
  ret
.endm

  HUX_FN huxiCopy8x8HP_8u_C1R
  test rdi, rdi
  jz 9f
  test rdx, rdx
  jz 9f
  movsxd rsi, esi
  movsxd rcx, ecx
  lea r10, [rsi+rsi*2]
  lea r11, [rcx+rcx*2]
  test r8b, 3
  jnz 5f
  HUX_XCOPY8x4
  lea rdi, [rdi+rsi*4]
  lea rdx, [rdx+rcx*4]
  HUX_XCOPY8x4
  xor eax, eax
  ret
5:
  mov eax, r8d
  and eax, 3
  cmp eax, 1
  je 7f
  cmp eax, 2
  jne hux_me_copy8x8_half
  test r9b, 1
  jnz 6f
  HUX_V8 0
6:
  mov eax, 0x01010101
  movd xmm10, eax
  pshufd xmm10, xmm10, 0
  HUX_V8 1
7:
  test r9b, 1
  jnz 8f
  HUX_H8 0
8:
  pcmpeqb xmm10, xmm10
  HUX_H8 1
9:
  mov eax, -8
  ret
  HUX_FN_END huxiCopy8x8HP_8u_C1R

.purgem HUX_V8ROW
.purgem HUX_V8
.purgem HUX_XCOPY8x4
.purgem HUX_H8ROW
.purgem HUX_H8
.att_syntax prefix
)" HUX_FN_PURGE);

#endif
