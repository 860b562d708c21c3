// The luma interpolation export's most frequent calls in assembly for 64-bit
// (System V) x86: the full-sample 4x4, 8x8 and 16x16 blocks, and the vertical half sample
// (dx = 0, dy = 2) of 8x8 and 16x16 blocks. A plain copy of eight rows takes
// about two nanoseconds, the 8x8 half sample about six, so the compiler's
// checks, size decoding and the jumps to the kernel in front of them are a
// visible share. The export tests, in a few instructions, for exactly those
// calls (the fractions, the size, both pointers set) and runs them inline;
// every other call, a null pointer included, jumps with its arguments
// untouched to the C++ body (interp.cpp), which runs the checks in the
// interface's order. Only caller-saved registers are used. Elsewhere (32-bit,
// HUX_ASM 0) the export is that C++ body.
//
// The copy addresses the rows from the block's first row with one, two and
// three steps, each loaded and stored in turn. The half sample works in
// strips of 8 columns: source rows -2 .. h+2 are each loaded once, widened to
// words and kept in a window of six registers; an output row is
// (a - 5b + 20c + 16) >> 5 with a, b, c the sums of the outer, inner and
// middle tap pairs, formed as 20c - 5b + (a + 16) with the three terms
// independent; no term or partial sum leaves -2550..10726 (16-bit lanes are
// exact). Rows are packed with unsigned saturation, two rows a store pair. Rows -2 .. h+2 and the strip's 8 columns are all it reads.
#include "common/asm.h"

#if HUX_ASM && defined(__x86_64__)

// rdi = pSrc, esi = srcStep, rdx = pDst, ecx = dstStep, r8d = dx, r9d = dy,
// [rsp+8] = roi (width in the low half, height in the high half).
asm(".intel_syntax noprefix\n" HUX_FN_MACROS HUX_COPY8X4_MACRO R"(
.text

# Source row at [rdi+\off], 8 samples widened to words in \r (xmm15 = 0).
.macro HUX_VLD r, off
  movq \r, [rdi+\off]
  punpcklbw \r, xmm15
.endm

# Output row into \o from the window rows \r0 .. \r5 (source rows y-2 .. y+3):
# 20 (r2 + r3) - 5 (r1 + r4) + (r0 + 16 + r5), shifted right by 5; the three
# terms are independent, which keeps the row's chain short.
.macro HUX_V6 o, r0, r1, r2, r3, r4, r5
  movdqa \o, \r2
  paddw \o, \r3
  movdqa xmm6, \r1
  paddw xmm6, \r4
  movdqa xmm7, \r0
  paddw xmm7, xmm14
  pmullw \o, xmm12
  pmullw xmm6, xmm13
  paddw xmm7, \r5
  psubw \o, xmm6
  paddw \o, xmm7
  psraw \o, 5
.endm

# Four rows of 16 samples from rdi (steps rsi, r10 = 3 rsi) to rdx (steps
# rcx, r11 = 3 rcx), all four loaded before they are stored.
.macro HUX_COPY16x4
  movdqu xmm0, [rdi]
  movdqu xmm1, [rdi+rsi]
  movdqu xmm2, [rdi+rsi*2]
  movdqu xmm3, [rdi+r10]
  movdqu [rdx], xmm0
  movdqu [rdx+rcx], xmm1
  movdqu [rdx+rcx*2], xmm2
  movdqu [rdx+r11], xmm3
.endm
# Output rows xmm8 and xmm9 to [rdx+\a] and [rdx+\b].
.macro HUX_VST a, b
  packuswb xmm8, xmm9
  movq [rdx+\a], xmm8
  movhps [rdx+\b], xmm8
.endm

# rsi, rcx: steps sign-extended; rdi: source row -2; r10, r11: 3 steps;
# xmm12, xmm13, xmm14: words of 20, 5 and 16; xmm15 = 0.
.macro HUX_V_SETUP
  movsxd rsi, esi
  movsxd rcx, ecx
  sub rdi, rsi
  sub rdi, rsi
  lea r10, [rsi+rsi*2]
  lea r11, [rcx+rcx*2]
  pxor xmm15, xmm15
  movdqa xmm12, [rip+.Lhux_v_k20]
  movdqa xmm13, [rip+.Lhux_v_k5]
  movdqa xmm14, [rip+.Lhux_v_k16]
.endm

  HUX_FN huxiInterpolateLuma_H264_8u_C1R
  mov eax, r8d
  or eax, r9d
  jnz 1f
  test rdi, rdi
  jz hux_h264_luma_body
  test rdx, rdx
  jz hux_h264_luma_body
  movsxd rsi, esi
  movsxd rcx, ecx
  lea r10, [rsi+rsi*2]
  lea r11, [rcx+rcx*2]
  mov rax, 0x0000000800000008
  cmp [rsp+8], rax
  jne 4f
  HUX_COPY8x4
  lea rdi, [rdi+rsi*4]
  lea rdx, [rdx+rcx*4]
  HUX_COPY8x4
  xor eax, eax
  ret
# The full-sample 16x16 and 4x4 blocks.
4:
  add rax, rax
  cmp [rsp+8], rax
  jne 5f
  HUX_COPY16x4
  lea rdi, [rdi+rsi*4]
  lea rdx, [rdx+rcx*4]
  HUX_COPY16x4
  lea rdi, [rdi+rsi*4]
  lea rdx, [rdx+rcx*4]
  HUX_COPY16x4
  lea rdi, [rdi+rsi*4]
  lea rdx, [rdx+rcx*4]
  HUX_COPY16x4
  xor eax, eax
  ret
5:
  shr rax, 2
  cmp [rsp+8], rax
  jne hux_h264_luma_body
  mov eax, [rdi]
  mov [rdx], eax
  mov eax, [rdi+rsi]
  mov [rdx+rcx], eax
  mov eax, [rdi+rsi*2]
  mov [rdx+rcx*2], eax
  mov eax, [rdi+r10]
  mov [rdx+r11], eax
  xor eax, eax
  ret

# The vertical half sample, 8x8 and 16x16.
1:
  test r8d, r8d
  jnz hux_h264_luma_body
  cmp r9d, 2
  jne hux_h264_luma_body
  test rdi, rdi
  jz hux_h264_luma_body
  test rdx, rdx
  jz hux_h264_luma_body
  mov rax, 0x0000000800000008
  cmp [rsp+8], rax
  jne 2f
  HUX_V_SETUP
  HUX_VLD xmm0, 0
  HUX_VLD xmm1, rsi
  HUX_VLD xmm2, rsi*2
  HUX_VLD xmm3, r10
  lea rdi, [rdi+rsi*4]
  HUX_VLD xmm4, 0
  HUX_VLD xmm5, rsi
  HUX_V6 xmm8, xmm0, xmm1, xmm2, xmm3, xmm4, xmm5
  HUX_VLD xmm0, rsi*2
  HUX_V6 xmm9, xmm1, xmm2, xmm3, xmm4, xmm5, xmm0
  HUX_VLD xmm1, r10
  HUX_VST 0, rcx
  HUX_V6 xmm8, xmm2, xmm3, xmm4, xmm5, xmm0, xmm1
  lea rdi, [rdi+rsi*4]
  HUX_VLD xmm2, 0
  HUX_V6 xmm9, xmm3, xmm4, xmm5, xmm0, xmm1, xmm2
  HUX_VLD xmm3, rsi
  HUX_VST rcx*2, r11
  HUX_V6 xmm8, xmm4, xmm5, xmm0, xmm1, xmm2, xmm3
  HUX_VLD xmm4, rsi*2
  HUX_V6 xmm9, xmm5, xmm0, xmm1, xmm2, xmm3, xmm4
  HUX_VLD xmm5, r10
  lea rdx, [rdx+rcx*4]
  HUX_VST 0, rcx
  HUX_V6 xmm8, xmm0, xmm1, xmm2, xmm3, xmm4, xmm5
  lea rdi, [rdi+rsi*4]
  HUX_VLD xmm0, 0
  HUX_V6 xmm9, xmm1, xmm2, xmm3, xmm4, xmm5, xmm0
  HUX_VST rcx*2, r11
  xor eax, eax
  ret
2:
  add rax, rax
  cmp [rsp+8], rax
  jne hux_h264_luma_body
  HUX_V_SETUP
  mov r8, rdi
  mov r9, rdx
  mov eax, 2
3:
  HUX_VLD xmm0, 0
  HUX_VLD xmm1, rsi
  HUX_VLD xmm2, rsi*2
  HUX_VLD xmm3, r10
  lea rdi, [rdi+rsi*4]
  HUX_VLD xmm4, 0
  HUX_VLD xmm5, rsi
  HUX_V6 xmm8, xmm0, xmm1, xmm2, xmm3, xmm4, xmm5
  HUX_VLD xmm0, rsi*2
  HUX_V6 xmm9, xmm1, xmm2, xmm3, xmm4, xmm5, xmm0
  HUX_VLD xmm1, r10
  HUX_VST 0, rcx
  HUX_V6 xmm8, xmm2, xmm3, xmm4, xmm5, xmm0, xmm1
  lea rdi, [rdi+rsi*4]
  HUX_VLD xmm2, 0
  HUX_V6 xmm9, xmm3, xmm4, xmm5, xmm0, xmm1, xmm2
  HUX_VLD xmm3, rsi
  HUX_VST rcx*2, r11
  HUX_V6 xmm8, xmm4, xmm5, xmm0, xmm1, xmm2, xmm3
  HUX_VLD xmm4, rsi*2
  HUX_V6 xmm9, xmm5, xmm0, xmm1, xmm2, xmm3, xmm4
  HUX_VLD xmm5, r10
  lea rdx, [rdx+rcx*4]
  HUX_VST 0, rcx
  HUX_V6 xmm8, xmm0, xmm1, xmm2, xmm3, xmm4, xmm5
  lea rdi, [rdi+rsi*4]
  HUX_VLD xmm0, 0
  HUX_V6 xmm9, xmm1, xmm2, xmm3, xmm4, xmm5, xmm0
  HUX_VLD xmm1, rsi
  HUX_VST rcx*2, r11
  HUX_V6 xmm8, xmm2, xmm3, xmm4, xmm5, xmm0, xmm1
  HUX_VLD xmm2, rsi*2
  HUX_V6 xmm9, xmm3, xmm4, xmm5, xmm0, xmm1, xmm2
  HUX_VLD xmm3, r10
  lea rdx, [rdx+rcx*4]
  HUX_VST 0, rcx
  HUX_V6 xmm8, xmm4, xmm5, xmm0, xmm1, xmm2, xmm3
  lea rdi, [rdi+rsi*4]
  HUX_VLD xmm4, 0
  HUX_V6 xmm9, xmm5, xmm0, xmm1, xmm2, xmm3, xmm4
  HUX_VLD xmm5, rsi
  HUX_VST rcx*2, r11
  HUX_V6 xmm8, xmm0, xmm1, xmm2, xmm3, xmm4, xmm5
  HUX_VLD xmm0, rsi*2
  HUX_V6 xmm9, xmm1, xmm2, xmm3, xmm4, xmm5, xmm0
  HUX_VLD xmm1, r10
  lea rdx, [rdx+rcx*4]
  HUX_VST 0, rcx
  HUX_V6 xmm8, xmm2, xmm3, xmm4, xmm5, xmm0, xmm1
  lea rdi, [rdi+rsi*4]
  HUX_VLD xmm2, 0
  HUX_V6 xmm9, xmm3, xmm4, xmm5, xmm0, xmm1, xmm2
  HUX_VST rcx*2, r11
  add r8, 8
  add r9, 8
  mov rdi, r8
  mov rdx, r9
  dec eax
  jnz 3b
  ret
  HUX_FN_END huxiInterpolateLuma_H264_8u_C1R

.section .rodata
.p2align 4
.Lhux_v_k20:
  .short 20, 20, 20, 20, 20, 20, 20, 20
.Lhux_v_k5:
  .short 5, 5, 5, 5, 5, 5, 5, 5
.Lhux_v_k16:
  .short 16, 16, 16, 16, 16, 16, 16, 16
.text

.purgem HUX_COPY8x4
.purgem HUX_VLD
.purgem HUX_V6
.purgem HUX_VST
.purgem HUX_V_SETUP
.att_syntax prefix
)" HUX_FN_PURGE);

#endif
