// The luma interpolation export's most frequent call, the full-sample 8x8
// block, in assembly for 64-bit (System V) x86: a plain copy of eight rows
// takes about two nanoseconds, so the compiler's checks, size decoding and
// jump in front of it are a visible share. The export tests, in a few
// instructions, for exactly that call (dx = dy = 0, an 8x8 size, both
// pointers set) and copies the rows (addressed from the block's first row with
// one, two and three steps, each loaded and stored in turn); every other call,
// a null pointer included, jumps with its arguments untouched to the C++ body
// (interp.cpp), which runs the checks in the interface's order. Only
// caller-saved registers are used. Elsewhere (32-bit, HUX_ASM 0) the export
// is that C++ body.
#include "common/asm.h"

#if HUX_ASM && defined(__x86_64__)

// rdi = pSrc, esi = srcStep, rdx = pDst, ecx = dstStep, r8d = dx, r9d = dy,
// [rsp+8] = roi (width in the low half, height in the high half).
asm(".intel_syntax noprefix\n" HUX_FN_MACROS HUX_COPY8X4_MACRO R"(
.text
  HUX_FN huxiInterpolateLuma_H264_8u_C1R
  mov eax, r8d
  or eax, r9d
  jnz hux_h264_luma_body
  mov rax, 0x0000000800000008
  cmp [rsp+8], rax
  jne hux_h264_luma_body
  test rdi, rdi
  jz hux_h264_luma_body
  test rdx, rdx
  jz hux_h264_luma_body
  movsxd rsi, esi
  movsxd rcx, ecx
  lea r10, [rsi+rsi*2]
  lea r11, [rcx+rcx*2]
  HUX_COPY8x4
  lea rdi, [rdi+rsi*4]
  lea rdx, [rdx+rcx*4]
  HUX_COPY8x4
  xor eax, eax
  ret
  HUX_FN_END huxiInterpolateLuma_H264_8u_C1R

.purgem HUX_COPY8x4
.att_syntax prefix
)" HUX_FN_PURGE);

#endif
