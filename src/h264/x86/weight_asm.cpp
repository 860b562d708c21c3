// The 8-bit weighted exports' common calls in assembly, for 64-bit (System V)
// x86: one prediction in place at 8x8, and (described here) the explicit
// two-prediction form at 8x8 and 16x16. Its eleven arguments, five of them on
// the stack, and the parameter tests cost the compiler callee-saved registers
// and spills, and the size dispatch a chain of calls, around a kernel of a
// few nanoseconds. Here the export tests, in order of cheapness, for the
// common call: a square 8x8 or 16x16 size, both steps at least the width, all
// three pointers set, logWD at most 6, weights, their sum and the rounded
// mean offset o = (o1 + o2 + 1) >> 1 within -128..127. Then every weighted
// sum of two samples lies within -255 * 128..255 * 128, and the folded form of
// weight_sse2.h is exact: y = (x1 * w1 + x2 * w2 + c) >> (logWD + 1),
// c = (2o + 1) << logWD, with a saturating add and the pack clamping to
// 0..255. The sum is formed one of two ways, chosen per call by
// hux_cpu_ssse3 (common/cpu.h): with SSSE3, the two rows' bytes interleaved
// and multiplied by the byte pair (w1, w2) in one pmaddubsw, whose saturation
// the bound above never reaches; otherwise both rows widened to words and
// multiplied apart. Rows go top to bottom, each read before it is written, so
// a destination equal to a source with the same step works. Every other call
// jumps with its arguments untouched to the C++ body (weight.cpp), which runs
// the checks in the interface's order. Only caller-saved registers are used.
// Elsewhere (32-bit, HUX_ASM 0) the export is that C++ body.
#include "common/asm.h"
#include "common/cpu.h"

#if HUX_ASM && defined(__x86_64__)

// rdi = pSrc1, rsi = pSrc2, rdx = pDst, ecx = srcStep, r8d = dstStep,
// r9d = logWD; on the stack: [rsp+8] weight1, [rsp+16] offset1,
// [rsp+24] weight2, [rsp+32] offset2, [rsp+40] roi.
asm(".intel_syntax noprefix\n" HUX_FN_MACROS R"(
.text

# SSE2: xmm4 = w1, xmm5 = w2, xmm6 = c (words), xmm7 = 0, xmm3 = shift.
# Two rows of 8: sources at [rdi+\a], [rdi+\b] and [rsi+...], the
# destination at [rdx+\c], [rdx+\d].
.macro HUX_BI8x2 a, b, c, d
  movq xmm0, [rdi+\a]
  movq xmm2, [rsi+\a]
  movq xmm1, [rdi+\b]
  punpcklbw xmm0, xmm7
  punpcklbw xmm2, xmm7
  punpcklbw xmm1, xmm7
  pmullw xmm0, xmm4
  pmullw xmm2, xmm5
  pmullw xmm1, xmm4
  paddw xmm0, xmm2
  movq xmm2, [rsi+\b]
  punpcklbw xmm2, xmm7
  pmullw xmm2, xmm5
  paddw xmm1, xmm2
  paddsw xmm0, xmm6
  paddsw xmm1, xmm6
  psraw xmm0, xmm3
  psraw xmm1, xmm3
  packuswb xmm0, xmm1
  movq [rdx+\c], xmm0
  movhps [rdx+\d], xmm0
.endm

# SSSE3: xmm4 = the bytes w1, w2 repeated, xmm6 = c, xmm3 = shift; the same
# two rows of 8.
.macro HUX_BI8x2_SSSE3 a, b, c, d
  movq xmm0, [rdi+\a]
  movq xmm1, [rsi+\a]
  movq xmm2, [rdi+\b]
  movq xmm7, [rsi+\b]
  punpcklbw xmm0, xmm1
  punpcklbw xmm2, xmm7
  pmaddubsw xmm0, xmm4
  pmaddubsw xmm2, xmm4
  paddsw xmm0, xmm6
  paddsw xmm2, xmm6
  psraw xmm0, xmm3
  psraw xmm2, xmm3
  packuswb xmm0, xmm2
  movq [rdx+\c], xmm0
  movhps [rdx+\d], xmm0
.endm

# SSE2: xmm4 = w1, xmm5 = w2, xmm6 = c, xmm7 = shift, xmm8 = 0. One row of
# 16: sources at [rdi+\a] and [rsi+\a], destination at [rdx+\c].
.macro HUX_BI16 a, c
  movdqu xmm0, [rdi+\a]
  movdqu xmm2, [rsi+\a]
  movdqa xmm1, xmm0
  movdqa xmm3, xmm2
  punpcklbw xmm0, xmm8
  punpckhbw xmm1, xmm8
  punpcklbw xmm2, xmm8
  punpckhbw xmm3, xmm8
  pmullw xmm0, xmm4
  pmullw xmm1, xmm4
  pmullw xmm2, xmm5
  pmullw xmm3, xmm5
  paddw xmm0, xmm2
  paddw xmm1, xmm3
  paddsw xmm0, xmm6
  paddsw xmm1, xmm6
  psraw xmm0, xmm7
  psraw xmm1, xmm7
  packuswb xmm0, xmm1
  movdqu [rdx+\c], xmm0
.endm

# SSSE3: xmm4 = the bytes w1, w2 repeated, xmm6 = c, xmm7 = shift; the same
# row of 16.
.macro HUX_BI16_SSSE3 a, c
  movdqu xmm0, [rdi+\a]
  movdqu xmm2, [rsi+\a]
  movdqa xmm1, xmm0
  punpcklbw xmm0, xmm2
  punpckhbw xmm1, xmm2
  pmaddubsw xmm0, xmm4
  pmaddubsw xmm1, xmm4
  paddsw xmm0, xmm6
  paddsw xmm1, xmm6
  psraw xmm0, xmm7
  psraw xmm1, xmm7
  packuswb xmm0, xmm1
  movdqu [rdx+\c], xmm0
.endm

# Eight rows of 8 through the two-row macro \k (rcx = 3 rax, r9 = 3 r8), and
# sixteen rows of 16 through the one-row macro \k (r11 = 3 rax, ecx = 4);
# both return 0.
.macro HUX_BI8_ROWS k
  \k 0, rax, 0, r8
  \k rax*2, rcx, r8*2, r9
  lea rdi, [rdi+rax*4]
  lea rsi, [rsi+rax*4]
  lea rdx, [rdx+r8*4]
  \k 0, rax, 0, r8
  \k rax*2, rcx, r8*2, r9
  xor eax, eax
  ret
.endm
.macro HUX_BI16_ROWS k
2:
  \k 0, 0
  \k rax, r8
  \k rax*2, r8*2
  \k r11, r9
  lea rdi, [rdi+rax*4]
  lea rsi, [rsi+rax*4]
  lea rdx, [rdx+r8*4]
  dec ecx
  jnz 2b
  xor eax, eax
  ret
.endm

# The size-independent tests of the 16x16 path, then xmm6 = c (words),
# xmm7 = shift and the weights in the low words of xmm4 and xmm5; rax and r8
# are the steps sign-extended, r11 = 3 rax and r9 = 3 r8. The weights and
# their sum are tested together: each plus 128 is within 0..255 exactly when
# their bitwise or is. With r10 = o1 + o2 + 1 (64 bits), the offset
# o = r10 >> 1 is within -128..127 exactly when 2o + 1 = r10 | 1 is within
# -255..255; c is (2o + 1) << logWD, shifted with cl while rcx is free.
.macro HUX_BI_SETUP
  test rdi, rdi
  jz hux_h264_bi_body
  test rsi, rsi
  jz hux_h264_bi_body
  test rdx, rdx
  jz hux_h264_bi_body
  cmp r9d, 6
  ja hux_h264_bi_body
  mov eax, [rsp+8]
  mov r10d, [rsp+24]
  lea r11d, [rax+r10+128]
  add eax, 128
  add r10d, 128
  or eax, r10d
  or eax, r11d
  cmp eax, 255
  ja hux_h264_bi_body
  movsxd r10, dword ptr [rsp+16]
  movsxd r11, dword ptr [rsp+32]
  lea r10, [r10+r11+1]
  or r10, 1
  lea r11, [r10+255]
  cmp r11, 510
  ja hux_h264_bi_body
  movd xmm4, dword ptr [rsp+8]
  movd xmm5, dword ptr [rsp+24]
  movsxd rax, ecx
  mov ecx, r9d
  shl r10d, cl
  inc ecx
  movd xmm6, r10d
  movd xmm7, ecx
  pshuflw xmm6, xmm6, 0
  punpcklqdq xmm6, xmm6
  movsxd r8, r8d
  lea r11, [rax+rax*2]
  lea r9, [r8+r8*2]
.endm

# The 8x8 path is the one the entry is laid out for: short branches back to
# a cold jump placed just before the entry, xmm3 = shift. The tests as in
# HUX_BI_SETUP, in the same order; the weights' written with and: w - 128 is
# within -256..-1 exactly when bits 8-31 are all set, so for w1, w2 and
# w1 + w2 at once when they are in their and. SSSE3 falls through; the SSE2
# rows follow the 16x16 path.
  .p2align 6
  .skip 59, 0xcc
9:
  jmp hux_h264_bi_body
  .p2align 6
  HUX_FN huxiBiDirWeightBlock_H264_8u_P2P1R
  mov r10, 0x0000000800000008
  cmp [rsp+40], r10
  jne 1f
  cmp ecx, 8
  jl 9b
  cmp r8d, 8
  jl 9b
  test rdi, rdi
  jz 9b
  test rsi, rsi
  jz 9b
  test rdx, rdx
  jz 9b
  cmp r9d, 6
  ja 9b
  mov eax, [rsp+8]
  mov r10d, [rsp+24]
  lea r11d, [rax+r10-128]
  add eax, -128
  add r10d, -128
  and eax, r10d
  and eax, r11d
  cmp eax, -256
  jb 9b
  movsxd r10, dword ptr [rsp+16]
  movsxd r11, dword ptr [rsp+32]
  lea r10, [r10+r11+1]
  or r10, 1
  lea r11, [r10+255]
  cmp r11, 510
  ja 9b
  movd xmm4, dword ptr [rsp+8]
  movd xmm5, dword ptr [rsp+24]
  movsxd rax, ecx
  mov ecx, r9d
  shl r10d, cl
  inc ecx
  movd xmm6, r10d
  movd xmm3, ecx
  pshuflw xmm6, xmm6, 0
  punpcklqdq xmm6, xmm6
  movsxd r8, r8d
  lea rcx, [rax+rax*2]
  lea r9, [r8+r8*2]
  cmp byte ptr [rip+hux_cpu_ssse3], 0
  je 4f
  punpcklbw xmm4, xmm5
  pshuflw xmm4, xmm4, 0
  punpcklqdq xmm4, xmm4
  HUX_BI8_ROWS HUX_BI8x2_SSSE3
1:
  add r10, r10
  cmp [rsp+40], r10
  jne hux_h264_bi_body
  cmp ecx, 16
  jl hux_h264_bi_body
  cmp r8d, 16
  jl hux_h264_bi_body
  HUX_BI_SETUP
  mov ecx, 4
  cmp byte ptr [rip+hux_cpu_ssse3], 0
  je 3f
  punpcklbw xmm4, xmm5
  pshuflw xmm4, xmm4, 0
  punpcklqdq xmm4, xmm4
  HUX_BI16_ROWS HUX_BI16_SSSE3
3:
  pshuflw xmm4, xmm4, 0
  pshuflw xmm5, xmm5, 0
  punpcklqdq xmm4, xmm4
  punpcklqdq xmm5, xmm5
  pxor xmm8, xmm8
  HUX_BI16_ROWS HUX_BI16
4:
  pshuflw xmm4, xmm4, 0
  pshuflw xmm5, xmm5, 0
  punpcklqdq xmm4, xmm4
  punpcklqdq xmm5, xmm5
  pxor xmm7, xmm7
  HUX_BI8_ROWS HUX_BI8x2
  HUX_FN_END huxiBiDirWeightBlock_H264_8u_P2P1R

# One prediction in place, 8x8: esi = srcDstStep, edx = logWD, ecx = weight,
# r8d = offset, r9 = roi. Common case: weight and offset within -128..127,
# logWD at most 7, step at least 8; then y = (x * w + c) >> logWD with
# c = ((2o + 1) << logWD) >> 1 and a saturating add is exact. The hot path is
# kept short (short branches to one cold jump, no 64-bit immediates, only
# xmm0-xmm7) and starts a cache line: its length is what a call pays for.
# The roi is 8x8 exactly when roi - 8 is 8 << 32, that is rotated right by
# 35 is 1; a weight or offset is within -128..127 when its low byte
# sign-extended equals it. Rows go in groups of four, rax = 3 rsi; with
# SSE4.1 (hux_cpu_sse41) each row is loaded and widened in one pmovzxbw,
# otherwise unpacked against xmm5 = 0.
.macro HUX_UNI8x4 sse41
.if \sse41
  pmovzxbw xmm0, qword ptr [rdi]
  pmovzxbw xmm1, qword ptr [rdi+rsi]
  pmovzxbw xmm2, qword ptr [rdi+rsi*2]
  pmovzxbw xmm3, qword ptr [rdi+rax]
.else
  movq xmm0, [rdi]
  movq xmm1, [rdi+rsi]
  movq xmm2, [rdi+rsi*2]
  movq xmm3, [rdi+rax]
  punpcklbw xmm0, xmm5
  punpcklbw xmm1, xmm5
  punpcklbw xmm2, xmm5
  punpcklbw xmm3, xmm5
.endif
  pmullw xmm0, xmm4
  pmullw xmm1, xmm4
  pmullw xmm2, xmm4
  pmullw xmm3, xmm4
  paddsw xmm0, xmm6
  paddsw xmm1, xmm6
  paddsw xmm2, xmm6
  paddsw xmm3, xmm6
  psraw xmm0, xmm7
  psraw xmm1, xmm7
  psraw xmm2, xmm7
  psraw xmm3, xmm7
  packuswb xmm0, xmm1
  packuswb xmm2, xmm3
  movq [rdi], xmm0
  movhps [rdi+rsi], xmm0
  movq [rdi+rsi*2], xmm2
  movhps [rdi+rax], xmm2
.endm

# The cold jump sits just before the entry, in reach of short branches.
  .p2align 6
  .skip 59, 0xcc
9:
  jmp hux_h264_uni_body
  .p2align 6
  HUX_FN huxiUniDirWeightBlock_H264_8u_C1R
  lea rax, [r9-8]
  ror rax, 35
  dec rax
  jnz 9b
  test rdi, rdi
  jz 9b
  cmp esi, 8
  jl 9b
  cmp edx, 7
  ja 9b
  movsx eax, cl
  cmp eax, ecx
  jne 9b
  movsx eax, r8b
  cmp eax, r8d
  jne 9b
  movd xmm4, ecx
  mov ecx, edx
  lea eax, [r8+r8+1]
  shl eax, cl
  sar eax, 1
  movd xmm6, eax
  movd xmm7, edx
  pshuflw xmm4, xmm4, 0
  pshuflw xmm6, xmm6, 0
  punpcklqdq xmm4, xmm4
  punpcklqdq xmm6, xmm6
  movsxd rsi, esi
  lea rax, [rsi+rsi*2]
  cmp byte ptr [rip+hux_cpu_sse41], 0
  je 4f
  HUX_UNI8x4 1
  lea rdi, [rdi+rsi*4]
  HUX_UNI8x4 1
  xor eax, eax
  ret
4:
  pxor xmm5, xmm5
  HUX_UNI8x4 0
  lea rdi, [rdi+rsi*4]
  HUX_UNI8x4 0
  xor eax, eax
  ret
  HUX_FN_END huxiUniDirWeightBlock_H264_8u_C1R

.purgem HUX_BI8x2
.purgem HUX_BI8x2_SSSE3
.purgem HUX_BI16_SSSE3
.purgem HUX_BI16
.purgem HUX_BI_SETUP
.purgem HUX_BI8_ROWS
.purgem HUX_BI16_ROWS
.purgem HUX_UNI8x4
.att_syntax prefix
)" HUX_FN_PURGE);

#endif
