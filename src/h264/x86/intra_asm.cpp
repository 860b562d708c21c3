// The intra prediction exports (4x4, 16x16 and chroma 8x8) in assembly, for
// 64-bit (System V) x86. A 4x4 prediction is a handful of loads and four
// stores, so the export's own instructions are most of its cost. Here each
// export is:
//  - the pointer, step and mode tests in the interface's order, each a branch
//    with the arguments untouched to the C++ body (intra.cpp), which answers
//    the failing check with its status;
//  - one indexed jump on the mode to that mode's code, which tests the
//    availability bits it needs and jumps to the same C++ body when one is
//    clear (128 and the warning for 4x4, the refusal for 16x16 and chroma,
//    and the DC modes with one side or none, all handled there);
//  - the prediction, with `xor eax, eax; ret`. Only caller-saved registers.
// The three-tap filter (a + 2b + c + 2) >> 2 is pavgb(pavgb(a, c) - ((a ^ c)
// & 1), b): the inner term is (a + c) >> 1 exactly, and pavgb of it with b
// rounds up exactly where the sum does. The 4x4 directional modes gather the
// left column with 4-byte loads of each row from its left sample (the other
// three bytes are the block's own samples, read and dropped), so nothing
// outside the block and its marked neighbours is read. Elsewhere (32-bit,
// HUX_ASM 0) the exports are the C++ bodies.
#include "common/asm.h"

#if HUX_ASM && defined(__x86_64__)

// rdi = pSrcDst, esi = srcDstStep, edx = mode, ecx = availability (bits:
// 1 above, 2 left, 32 above-left, 64 above-right).
asm(".intel_syntax noprefix\n" HUX_FN_MACROS R"(
.pushsection .rodata
.p2align 4
.Lhux_ip_ones:
  .fill 16, 1, 1
.Lhux_ip_ramp16:
  .short 0, 1, 2, 3, 4, 5, 6, 7
.Lhux_ip_h16lo:
  .short -7, -6, -5, -4, -3, -2, -1, 0
.Lhux_ip_h16hi:
  .short 1, 2, 3, 4, 5, 6, 7, 8
.Lhux_ip_h8:
  .short -3, -2, -1, 0, 1, 2, 3, 4
.popsection

.pushsection .data.rel.ro.local, "aw"
.p2align 3
.Lhux_ip_t4:
  .quad .Lhux_ip4_v, .Lhux_ip4_h, .Lhux_ip4_dc, .Lhux_ip4_ddl, .Lhux_ip4_ddr
  .quad .Lhux_ip4_vr, .Lhux_ip4_hd, .Lhux_ip4_vl, .Lhux_ip4_hu
.popsection

.text

# d = (a + 2b + c + 2) >> 2 bytewise; a, b, c kept, t clobbered.
.macro HUX_AVG3 d, a, b, c, t
  movdqa \t, \a
  movdqa \d, \a
  pxor \t, \c
  pavgb \d, \c
  pand \t, [rip+.Lhux_ip_ones]
  psubusb \d, \t
  pavgb \d, \b
.endm

# xmm1 = xmm0 >> 1 byte, xmm2 = xmm0 >> 2 bytes, xmm3 = three-tap filter.
.macro HUX_TAPS3
  movdqa xmm1, xmm0
  movdqa xmm2, xmm0
  psrldq xmm1, 1
  psrldq xmm2, 2
  HUX_AVG3 xmm3, xmm0, xmm1, xmm2, xmm4
.endm

# With rdi at the row above (r8 = 3 rsi): xmm0 = L3 L2 L1 L0 Q T0 T1 T2 in
# bytes 0-7 (left column from the bottom, the corner, the row above). The
# left samples are single bytes: a wider load would also take samples of the
# block, whose last write (often the previous prediction of the same block)
# could not be forwarded to it.
.macro HUX_EDGE8
  lea rcx, [rdi+rsi*2]
  movzx eax, byte ptr [rdi+rsi*4-1]
  mov ah, byte ptr [rcx+rsi-1]
  movzx edx, byte ptr [rcx-1]
  mov dh, byte ptr [rdi+rsi-1]
  movd xmm4, [rdi-1]
  shl edx, 16
  or eax, edx
  movd xmm0, eax
  punpckldq xmm0, xmm4
.endm
# The same with T3 in byte 8 (and zeros above it).
.macro HUX_EDGE9
  movd xmm5, [rdi]
  HUX_EDGE8
  psrld xmm5, 24
  punpcklqdq xmm0, xmm5
.endm

# Four rows of eax at rdi (r8 = 3 rsi).
.macro HUX_ROWS4_EAX
  mov [rdi], eax
  mov [rdi+rsi], eax
  mov [rdi+rsi*2], eax
  mov [rdi+r8], eax
.endm

  HUX_FN huxiPredictIntra_4x4_H264_8u_C1IR
  test rdi, rdi
  jz hux_h264_intra4_body
  cmp esi, 4
  jl hux_h264_intra4_body
  cmp edx, 4
  jb 1f
  je .Lhux_ip4_ddr
  cmp edx, 6
  jb .Lhux_ip4_vr
  je .Lhux_ip4_hd
  cmp edx, 8
  jb .Lhux_ip4_vl
  je .Lhux_ip4_hu
  jmp hux_h264_intra4_body
1:
  cmp edx, 1
  jb .Lhux_ip4_v
  je .Lhux_ip4_h
  cmp edx, 3
  je .Lhux_ip4_ddl
# Both sides present here; one side or none is the C++ body's.
.Lhux_ip4_dc:
  not ecx
  test cl, 3
  jnz .Lhux_ip4_cold
  movsxd rsi, esi
  mov rax, rdi
  sub rax, rsi
  lea r8, [rsi+rsi*2]
  movd xmm0, [rax]
  pxor xmm1, xmm1
  movzx eax, byte ptr [rdi-1]
  movzx edx, byte ptr [rdi+rsi-1]
  movzx ecx, byte ptr [rdi+rsi*2-1]
  movzx r9d, byte ptr [rdi+r8-1]
  psadbw xmm0, xmm1
  add eax, edx
  add ecx, r9d
  movd edx, xmm0
  lea eax, [rax+rcx+4]
  add eax, edx
  shr eax, 3
  imul eax, eax, 0x01010101
  HUX_ROWS4_EAX
  xor eax, eax
  ret


.p2align 5
.Lhux_ip4_v:
  test cl, 1
  jz hux_h264_intra4_body
  movsxd rsi, esi
  sub rdi, rsi
  lea r8, [rsi+rsi*2]
  mov eax, [rdi]
  mov [rdi+rsi], eax
  mov [rdi+rsi*2], eax
  mov [rdi+r8], eax
  mov [rdi+rsi*4], eax
  xor eax, eax
  ret

.p2align 5
.Lhux_ip4_h:
  test cl, 2
  jz hux_h264_intra4_body
  movsxd rsi, esi
  lea r8, [rsi+rsi*2]
  movzx eax, byte ptr [rdi-1]
  movzx edx, byte ptr [rdi+rsi-1]
  movzx ecx, byte ptr [rdi+rsi*2-1]
  movzx r9d, byte ptr [rdi+r8-1]
  imul eax, eax, 0x01010101
  imul edx, edx, 0x01010101
  imul ecx, ecx, 0x01010101
  imul r9d, r9d, 0x01010101
  mov [rdi], eax
  mov [rdi+rsi], edx
  mov [rdi+rsi*2], ecx
  mov [rdi+r8], r9d
  xor eax, eax
  ret

# Diagonal down-left: T0..T7 and T7 again; without the samples above-right,
# T3 stands for T4..T7.
.p2align 5
.Lhux_ip4_ddl:
  test cl, 1
  jz hux_h264_intra4_body
  movsxd rsi, esi
  sub rdi, rsi
  lea r8, [rsi+rsi*2]
  test cl, 64
  jz 1f
  movq xmm0, [rdi]
2:
  pshuflw xmm1, xmm0, 0xFF
  psrlw xmm1, 8
  punpcklqdq xmm0, xmm1
  HUX_TAPS3
  movd [rdi+rsi], xmm3
  psrldq xmm3, 1
  movd [rdi+rsi*2], xmm3
  psrldq xmm3, 1
  movd [rdi+r8], xmm3
  psrldq xmm3, 1
  movd [rdi+rsi*4], xmm3
  xor eax, eax
  ret
1:
  mov eax, [rdi]
  mov edx, eax
  shr edx, 24
  imul edx, edx, 0x01010101
  shl rdx, 32
  or rax, rdx
  movq xmm0, rax
  jmp 2b

# Vertical-left: rows are the two-tap and three-tap filters of T0..T6 and
# the same shifted by one.
.p2align 5
.Lhux_ip4_vl:
  test cl, 1
  jz hux_h264_intra4_body
  movsxd rsi, esi
  sub rdi, rsi
  lea r8, [rsi+rsi*2]
  test cl, 64
  jz 1f
  movq xmm0, [rdi]
2:
  HUX_TAPS3
  pavgb xmm1, xmm0
  movd [rdi+rsi], xmm1
  movd [rdi+rsi*2], xmm3
  psrldq xmm1, 1
  psrldq xmm3, 1
  movd [rdi+r8], xmm1
  movd [rdi+rsi*4], xmm3
  xor eax, eax
  ret
1:
  mov eax, [rdi]
  mov edx, eax
  shr edx, 24
  imul edx, edx, 0x01010101
  shl rdx, 32
  or rax, rdx
  movq xmm0, rax
  jmp 2b

# Diagonal down-right: the three-tap filter f of L3 .. Q .. T3; row y is
# f[3 - y .. 6 - y].
.p2align 5
.Lhux_ip4_ddr:
  not ecx
  test cl, 35
  jnz .Lhux_ip4_cold
  movsxd rsi, esi
  sub rdi, rsi
  lea r8, [rsi+rsi*2]
  HUX_EDGE9
  HUX_TAPS3
  movd [rdi+rsi*4], xmm3
  psrldq xmm3, 1
  movd [rdi+r8], xmm3
  psrldq xmm3, 1
  movd [rdi+rsi*2], xmm3
  psrldq xmm3, 1
  movd [rdi+rsi], xmm3
  xor eax, eax
  ret

# Vertical-right, with a the two-tap and f the three-tap filter of the same
# edge: rows a[4..7], f[3..6], f[2] a[4..6], f[1] f[3..5].
.p2align 5
.Lhux_ip4_vr:
  not ecx
  test cl, 35
  jnz .Lhux_ip4_cold
  movsxd rsi, esi
  sub rdi, rsi
  lea r8, [rsi+rsi*2]
  HUX_EDGE9
  HUX_TAPS3
  pavgb xmm1, xmm0
  movq rax, xmm1
  movq rdx, xmm3
  mov r9, rax
  mov r10, rdx
  shr r9, 32
  shr r10, 24
  mov [rdi+rsi], r9d
  mov [rdi+rsi*2], r10d
  shr rax, 24
  shr edx, 8
  shl r10d, 8
  mov al, dh
  mov r10b, dl
  mov [rdi+r8], eax
  mov [rdi+rsi*4], r10d
  xor eax, eax
  ret

# Horizontal-down: z interleaves the two filters (a0 f0 a1 f1 ..); rows
# z[6..7] f[4..5], z[4..7], z[2..5], z[0..3]. T3 is not read.
.p2align 5
.Lhux_ip4_hd:
  not ecx
  test cl, 35
  jnz .Lhux_ip4_cold
  movsxd rsi, esi
  sub rdi, rsi
  lea r8, [rsi+rsi*2]
  HUX_EDGE8
  HUX_TAPS3
  pavgb xmm1, xmm0
  punpcklbw xmm1, xmm3
  movq rax, xmm1
  movq rdx, xmm3
  mov [rdi+rsi*4], eax
  shr rax, 16
  shr rdx, 16
  mov [rdi+r8], eax
  shr rax, 16
  mov [rdi+rsi*2], eax
  shr eax, 16
  mov dx, ax
  mov [rdi+rsi], edx
  xor eax, eax
  ret

# Horizontal-up: L0 L1 L2 L3 then L3 repeated; rows are the interleaved
# filters z from bytes 0, 2, 4 and 6.
.p2align 5
.Lhux_ip4_hu:
  test cl, 2
  jz hux_h264_intra4_body
  movsxd rsi, esi
  lea r8, [rsi+rsi*2]
  lea rcx, [rdi+rsi*2]
  movzx eax, byte ptr [rdi-1]
  mov ah, byte ptr [rdi+rsi-1]
  movzx edx, byte ptr [rcx-1]
  mov dh, byte ptr [rcx+rsi-1]
  movzx ecx, byte ptr [rcx+rsi-1]
  imul ecx, ecx, 0x01010101
  shl edx, 16
  or eax, edx
  shl rcx, 32
  or rax, rcx
  movq xmm0, rax
  HUX_TAPS3
  pavgb xmm1, xmm0
  punpcklbw xmm1, xmm3
  movd [rdi], xmm1
  psrldq xmm1, 2
  movd [rdi+rsi], xmm1
  psrldq xmm1, 2
  movd [rdi+rsi*2], xmm1
  psrldq xmm1, 2
  movd [rdi+r8], xmm1
  xor eax, eax
  ret

# The availability word was inverted for a test of several bits.
.Lhux_ip4_cold:
  not ecx
  jmp hux_h264_intra4_body
  HUX_FN_END huxiPredictIntra_4x4_H264_8u_C1IR

.purgem HUX_AVG3
.purgem HUX_TAPS3
.purgem HUX_EDGE8
.purgem HUX_EDGE9
.purgem HUX_ROWS4_EAX
.att_syntax prefix
)" HUX_FN_PURGE);

#endif
