// The intra prediction exports (4x4, 16x16 and chroma 8x8) in assembly, for
// 64-bit (System V) x86. A 4x4 prediction is a handful of loads and four
// stores, so the export's own instructions are most of its cost. Here each
// export is:
//  - the pointer and step tests in the interface's order, each a branch with
//    the arguments untouched to the C++ body (intra.cpp), which answers the
//    failing check with its status;
//  - compares on the mode that reach every mode's code with one or two taken
//    branches (an indirect jump whose target changes from call to call costs
//    more than the compares); a mode out of range goes to the C++ body, so
//    the mode check keeps its place after the step check;
//  - the mode's code: it tests the availability bits it needs and jumps to
//    the same C++ body when one is clear (128 and the warning for 4x4, the
//    refusal for 16x16 and chroma, and the DC modes with one side or none,
//    all handled there), then predicts and returns with `xor eax, eax; ret`.
//    Only caller-saved registers are used.
// The three-tap filter (a + 2b + c + 2) >> 2 is pavgb(pavgb(a, c) - ((a ^ c)
// & 1), b): the inner term is (a + c) >> 1 exactly, and pavgb of it with b
// rounds up exactly where the sum does. Neighbours are read only when their
// bit is set, and the left column a byte at a time, so nothing outside the
// block and its marked neighbours is read. Elsewhere (32-bit, HUX_ASM 0) the
// exports are the C++ bodies.
#include "common/asm.h"

#if HUX_ASM && defined(__x86_64__)

// rdi = pSrcDst, esi = srcDstStep, edx = mode, ecx = availability (bits:
// 1 above, 2 left, 32 above-left, 64 above-right).
asm(".intel_syntax noprefix\n" HUX_FN_MACROS R"(
.pushsection .rodata
.p2align 4
.Lhux_ip_ones:
  .fill 16, 1, 1
.Lhux_ip_h16lo:
  .short -7, -6, -5, -4, -3, -2, -1, 0
.Lhux_ip_h16hi:
  .short 1, 2, 3, 4, 5, 6, 7, 8
.Lhux_ip_h8:
  .short -3, -2, -1, 0, 1, 2, 3, 4
.Lhux_ip_b6:
  .quad 0x00ff000000000000, 0
.Lhux_ip_lo8:
  .quad 0x00ff00ff00ff00ff
.Lhux_ip_wp:
  .quad 0x0001000300050007, 0x0002000400060008
.Lhux_ip_wn:
  .quad 0x0008000600040002, 0x0007000500030001

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

# The same with a clobbered (a ^ c).
.macro HUX_AVG3X d, a, b, c
  movdqa \d, \a
  pxor \a, \c
  pavgb \d, \c
  pand \a, [rip+.Lhux_ip_ones]
  psubusb \d, \a
  pavgb \d, \b
.endm

# xmm1 = xmm0 >> 1 byte, xmm2 = xmm0 >> 2 bytes, xmm3 = three-tap filter
# (xmm0 kept, or clobbered by HUX_TAPS3X).
.macro HUX_TAPS3
  movdqa xmm1, xmm0
  movdqa xmm2, xmm0
  psrldq xmm1, 1
  psrldq xmm2, 2
  HUX_AVG3 xmm3, xmm0, xmm1, xmm2, xmm4
.endm
.macro HUX_TAPS3X
  movdqa xmm1, xmm0
  movdqa xmm2, xmm0
  psrldq xmm1, 1
  psrldq xmm2, 2
  HUX_AVG3X xmm3, xmm0, xmm1, xmm2
.endm

# With rdi at the row above (rcx = 3 rsi): xmm0 = L3 L2 L1 L0 Q T0 T1 T2 in
# bytes 0-7 (left column from the bottom, the corner, the row above). The
# left samples are single bytes: a wider load would also take samples of the
# block, whose last write (often the previous prediction of the same block)
# could not be forwarded to it.
.macro HUX_EDGE8
  movzx eax, byte ptr [rdi+rsi*4-1]
  mov ah, byte ptr [rdi+rcx-1]
  movzx edx, byte ptr [rdi+rsi*2-1]
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

# The 4x4 code is laid out for instruction fetch, which costs about a cycle
# per 32 bytes a call runs through: the checks and the jumps to DC, vertical-
# left, diagonal down-left and the other higher modes fill the first 32 bytes
# (two of them short: DC's code sits in front of the export, down-left's after
# horizontal, which falls through); vertical follows, the remaining modes after
# one more compare chain. Each mode's code starts a 32- or 64-byte block and is
# kept short (no REX prefixes where a legacy register serves, short jumps to
# stubs of the C++ body). The skip puts the export on a 32-byte boundary with
# DC's code and the stub right in front of it.
# A failing check, a mode out of range: the C++ body, from a stub right in
# front of the export so that the jumps to it are short.
.p2align 5
.skip 30, 0xcc
# Both sides present here; one side or none is the C++ body's.
.Lhux_ip4_dc:
  not ecx
  test cl, 3
  jnz 8f
  movsxd rsi, esi
  mov rax, rdi
  sub rax, rsi
  lea rcx, [rdi+rsi*2]
  movd xmm0, [rax]
  pxor xmm1, xmm1
  psadbw xmm0, xmm1
  movzx eax, byte ptr [rdi-1]
  movzx edx, byte ptr [rdi+rsi-1]
  add eax, edx
  movzx edx, byte ptr [rcx-1]
  add eax, edx
  movzx edx, byte ptr [rcx+rsi-1]
  add eax, edx
  movd edx, xmm0
  lea eax, [rax+rdx+4]
  shr eax, 3
  imul eax, eax, 0x01010101
  mov [rdi], eax
  mov [rdi+rsi], eax
  mov [rcx], eax
  mov [rcx+rsi], eax
  xor eax, eax
  ret

8:
  not ecx
  jmp hux_h264_intra4_body
.Lhux_ip4_cold:
  jmp hux_h264_intra4_body
  HUX_FN huxiPredictIntra_4x4_H264_8u_C1IR
  test rdi, rdi
  jz .Lhux_ip4_cold
  cmp esi, 4
  jl .Lhux_ip4_cold
  cmp edx, 2
  je .Lhux_ip4_dc
  cmp edx, 7
  je .Lhux_ip4_vl
  cmp edx, 3
  je .Lhux_ip4_ddl
  ja .Lhux_ip4_high
  test edx, edx
  jz .Lhux_ip4_v
# Horizontal: each row is its left sample times 0x01010101.
.Lhux_ip4_h:
  test cl, 2
  jz 9f
  movsxd rsi, esi
  lea rcx, [rdi+rsi*2]
  mov edx, 0x01010101
  movzx eax, byte ptr [rdi-1]
  imul eax, edx
  mov [rdi], eax
  movzx eax, byte ptr [rdi+rsi-1]
  imul eax, edx
  mov [rdi+rsi], eax
  movzx eax, byte ptr [rcx-1]
  imul eax, edx
  mov [rcx], eax
  movzx eax, byte ptr [rcx+rsi-1]
  imul eax, edx
  mov [rcx+rsi], eax
  xor eax, eax
  ret

9:
  jmp hux_h264_intra4_body


# Diagonal down-left: T0..T7 and T7 again (without the samples above-right,
# the C++ body). The three-tap filter works on 64-bit lanes: b and c are the
# row shifted by one and two bytes, c's byte 6 (T8, which is not read) taken
# from b's.
.p2align 5
.Lhux_ip4_ddl:
  not ecx
  test cl, 65
  jnz 8f
  movsxd rsi, esi
  sub rdi, rsi
  movq xmm0, [rdi]
  movdqa xmm1, xmm0
  movdqa xmm2, xmm0
  psrlq xmm1, 8
  psrlq xmm2, 16
  movdqa xmm3, xmm1
  pand xmm3, [rip+.Lhux_ip_b6]
  por xmm2, xmm3
  HUX_AVG3X xmm3, xmm0, xmm1, xmm2
  lea rcx, [rdi+rsi*2]
  movd [rdi+rsi], xmm3
  psrlq xmm3, 8
  movd [rcx], xmm3
  psrlq xmm3, 8
  movd [rcx+rsi], xmm3
  psrlq xmm3, 8
  movd [rcx+rsi*2], xmm3
  xor eax, eax
  ret
8:
  not ecx
  jmp hux_h264_intra4_body

.p2align 5
.Lhux_ip4_high:
  cmp edx, 5
  je .Lhux_ip4_vr
  cmp edx, 8
  je .Lhux_ip4_hu
  ja .Lhux_ip4_cold
  cmp edx, 4
  je .Lhux_ip4_ddr
  jmp .Lhux_ip4_hd
# Horizontal-down: z interleaves the two filters (a0 f0 a1 f1 ..); rows
# z[6] f[3..5] (z[7] is f[3]), z[4..7], z[2..5], z[0..3]. T3 is not read.
.p2align 6
.Lhux_ip4_hd:
  not ecx
  test cl, 35
  jnz 8f
  movsxd rsi, esi
  sub rdi, rsi
  lea rcx, [rsi+rsi*2]
  HUX_EDGE8
  HUX_TAPS3
  pavgb xmm1, xmm0
  punpcklbw xmm1, xmm3
  movq rax, xmm1
  movq rdx, xmm3
  mov [rdi+rsi*4], eax
  shr rax, 16
  shr rdx, 16
  mov [rdi+rcx], eax
  shr rax, 16
  mov [rdi+rsi*2], eax
  shr eax, 16
  mov dl, al
  mov [rdi+rsi], edx
  xor eax, eax
  ret

8:
  not ecx
  jmp hux_h264_intra4_body
.p2align 5
.Lhux_ip4_v:
  test cl, 1
  jz 9f
  movsxd rsi, esi
  sub rdi, rsi
  mov eax, [rdi]
  lea rcx, [rdi+rsi*2]
  mov [rdi+rsi], eax
  mov [rcx], eax
  mov [rcx+rsi], eax
  mov [rcx+rsi*2], eax
  xor eax, eax
  ret
9:
  jmp hux_h264_intra4_body

# Vertical-left: rows are the two-tap and three-tap filters of T0..T6 and
# the same shifted by one.
.p2align 6
.Lhux_ip4_vl:
  test cl, 1
  jz 9f
  movsxd rsi, esi
  sub rdi, rsi
  test cl, 64
  jz 1f
  movq xmm0, [rdi]
2:
  HUX_TAPS3
  pavgb xmm1, xmm0
  lea rcx, [rsi+rsi*2]
  movd [rdi+rsi], xmm1
  movd [rdi+rsi*2], xmm3
  psrldq xmm1, 1
  psrldq xmm3, 1
  movd [rdi+rcx], xmm1
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

9:
  jmp hux_h264_intra4_body
# Diagonal down-right: the three-tap filter f of L3 .. Q .. T3; row y is
# f[3 - y .. 6 - y].
.p2align 6
.Lhux_ip4_ddr:
  not ecx
  test cl, 35
  jnz 8f
  movsxd rsi, esi
  sub rdi, rsi
  lea rcx, [rsi+rsi*2]
  HUX_EDGE9
  HUX_TAPS3X
  movd [rdi+rsi*4], xmm3
  psrldq xmm3, 1
  movd [rdi+rcx], xmm3
  psrldq xmm3, 1
  movd [rdi+rsi*2], xmm3
  psrldq xmm3, 1
  movd [rdi+rsi], xmm3
  xor eax, eax
  ret

8:
  not ecx
  jmp hux_h264_intra4_body
# Vertical-right, with a the two-tap and f the three-tap filter of the same
# edge: rows a[4..7], f[3..6], f[2] a[4..6], f[1] f[3..5].
.p2align 6
.Lhux_ip4_vr:
  not ecx
  test cl, 35
  jnz 8f
  movsxd rsi, esi
  sub rdi, rsi
  lea rcx, [rsi+rsi*2]
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
  mov [rdi+rcx], eax
  mov [rdi+rsi*4], r10d
  xor eax, eax
  ret

8:
  not ecx
  jmp hux_h264_intra4_body
# Horizontal-up: L0 L1 L2 L3 then L3 repeated; rows are the interleaved
# filters z from bytes 0, 2, 4 and 6.
.p2align 6
.Lhux_ip4_hu:
  test cl, 2
  jz 9f
  movsxd rsi, esi
  lea rcx, [rdi+rsi*2]
  movzx eax, byte ptr [rdi-1]
  mov ah, byte ptr [rdi+rsi-1]
  movzx edx, byte ptr [rcx-1]
  mov dh, byte ptr [rcx+rsi-1]
  shl edx, 16
  or eax, edx
  movzx edx, byte ptr [rcx+rsi-1]
  imul edx, edx, 0x01010101
  shl rdx, 32
  or rax, rdx
  movq xmm0, rax
  HUX_TAPS3
  pavgb xmm1, xmm0
  punpcklbw xmm1, xmm3
  movd [rdi], xmm1
  psrldq xmm1, 2
  movd [rdi+rsi], xmm1
  psrldq xmm1, 2
  movd [rcx], xmm1
  psrldq xmm1, 2
  movd [rcx+rsi], xmm1
  xor eax, eax
  ret
9:
  jmp hux_h264_intra4_body

  HUX_FN_END huxiPredictIntra_4x4_H264_8u_C1IR


# 16x16 and chroma: rows 0-3 at rdi, 4-7 at r9, 8-11 at r10, 12-15 at r11,
# each base plus 0, rsi, 2 rsi and r8 = 3 rsi.
.macro HUX_BASES16
  movsxd rsi, esi
  lea r8, [rsi+rsi*2]
  lea r9, [rdi+rsi*4]
  lea r10, [rdi+rsi*8]
  lea r11, [r9+rsi*8]
.endm
.macro HUX_STORE4 base, x, ins=movdqu
  \ins [\base], \x
  \ins [\base+rsi], \x
  \ins [\base+rsi*2], \x
  \ins [\base+r8], \x
.endm
# Sample left of row rsi-multiple m at base into a 32-bit register.
.macro HUX_L reg, base, off
  movzx \reg, byte ptr [\base\off-1]
.endm

.p2align 6
  HUX_FN huxiPredictIntra_16x16_H264_8u_C1IR
  test rdi, rdi
  jz hux_h264_intra16_body
  cmp esi, 16
  jl hux_h264_intra16_body
  cmp edx, 1
  jb .Lhux_ip16_v
  je .Lhux_ip16_h
  cmp edx, 3
  jb .Lhux_ip16_dc
  jne hux_h264_intra16_body

# Plane: H and V are the weighted differences of the row above and the column
# to the left about their middle, with the corner Q as sample -1 of both,
# summed in scalar registers (V as one chain of differences, H as below): the
# vector units are still busy with the rows of a previous call. b = (5 H +
# 32) >> 6, c likewise of V, a = 16 (L15 + T15). Row 0 is a + 16 - 7 c +
# b (x - 7), each row adds c, and a sample is its row value >> 5 saturated by
# packuswb. Every partial sum stays within 16 bits.
.macro HUX_PN p, n, t, pa, na, k
  movzx \t, byte ptr \pa
  .if \k == 1
  mov \p, \t
  .elseif \k == 2 || \k == 4 || \k == 8
  lea \p, [\p+\t*\k]
  .elseif \k == 3 || \k == 5
  lea \t, [\t+\t*(\k-1)]
  add \p, \t
  .elseif \k == 6
  lea \t, [\t+\t*2]
  lea \p, [\p+\t*2]
  .else
  imul \t, \t, 7
  add \p, \t
  .endif
  movzx \t, byte ptr \na
  .if \k == 1
  mov \n, \t
  .elseif \k == 2 || \k == 4 || \k == 8
  lea \n, [\n+\t*\k]
  .elseif \k == 3 || \k == 5
  lea \t, [\t+\t*(\k-1)]
  add \n, \t
  .elseif \k == 6
  lea \t, [\t+\t*2]
  lea \n, [\n+\t*2]
  .else
  imul \t, \t, 7
  add \n, \t
  .endif
.endm
# The same for one difference (positive minus negative) into acc.
.macro HUX_PD acc, t, u, pa, na, k
  movzx \t, byte ptr \pa
  movzx \u, byte ptr \na
  sub \t, \u
  .if \k == 1
  mov \acc, \t
  .elseif \k == 2 || \k == 4
  lea \acc, [\acc+\t*\k]
  .elseif \k == 3 || \k == 5
  lea \t, [\t+\t*(\k-1)]
  add \acc, \t
  .elseif \k == 6
  lea \t, [\t+\t*2]
  lea \acc, [\acc+\t*2]
  .else
  imul \t, \t, 7
  add \acc, \t
  .endif
.endm
.Lhux_ip16_p:
  not ecx
  test cl, 35
  jnz .Lhux_ip16_cold
  HUX_BASES16
  # V without the corner: the differences about the middle, weighted
  HUX_PD eax, ecx, edx, [r10-1], [r9+rsi*2-1], 1
  HUX_PD eax, ecx, edx, [r10+rsi-1], [r9+rsi-1], 2
  HUX_PD eax, ecx, edx, [r10+rsi*2-1], [r9-1], 3
  HUX_PD eax, ecx, edx, [r10+r8-1], [rdi+r8-1], 4
  HUX_PD eax, ecx, edx, [r11-1], [rdi+rsi*2-1], 5
  HUX_PD eax, ecx, edx, [r11+rsi-1], [rdi+rsi-1], 6
  HUX_PD eax, ecx, edx, [r11+rsi*2-1], [rdi-1], 7
  movzx edx, byte ptr [r11+r8-1]   # L15
  lea eax, [rax+rdx*8]
  mov r10, rdi
  sub r10, rsi                     # the row above
  movzx r11d, byte ptr [r10+15]
  lea r9d, [rdx+r11+1]
  shl r9d, 4                       # a + 16
  # H: the weighted sums of T8..T15 and of Q T0..T6, each a qword split
  # into its even and odd bytes as four 16-bit lanes; a multiply by the
  # weights in reverse lane order leaves the lanes' weighted sum in the top
  # lane (no lane below reaches 16 bits, so nothing carries into it).
  mov rcx, [r10+8]
  mov rdx, rcx
  shr rdx, 8
  and rcx, [rip+.Lhux_ip_lo8]
  and rdx, [rip+.Lhux_ip_lo8]
  imul rcx, [rip+.Lhux_ip_wp]
  imul rdx, [rip+.Lhux_ip_wp+8]
  add rcx, rdx
  mov rdx, [r10-1]
  mov r11, rdx
  shr r11, 8
  and rdx, [rip+.Lhux_ip_lo8]
  and r11, [rip+.Lhux_ip_lo8]
  imul rdx, [rip+.Lhux_ip_wn]
  imul r11, [rip+.Lhux_ip_wn+8]
  add rdx, r11
  shr rcx, 48
  shr rdx, 48
  sub ecx, edx                     # H
  movzx r11d, byte ptr [r10-1]     # Q
  shl r11d, 3
  sub eax, r11d                    # V
  lea ecx, [rcx+rcx*4+32]
  sar ecx, 6                       # b
  lea eax, [rax+rax*4+32]
  sar eax, 6                       # c
  lea edx, [rax*8]
  sub edx, eax
  sub r9d, edx                     # a + 16 - 7 c
  movd xmm4, r9d
  movd xmm1, ecx
  movd xmm2, eax
  lea r9, [rdi+rsi*4]
  lea r10, [rdi+rsi*8]
  lea r11, [r9+rsi*8]
  pshuflw xmm4, xmm4, 0
  pshuflw xmm1, xmm1, 0
  pshuflw xmm2, xmm2, 0
  punpcklqdq xmm4, xmm4
  punpcklqdq xmm1, xmm1            # b
  punpcklqdq xmm2, xmm2            # c
  movdqa xmm0, xmm1
  pmullw xmm0, [rip+.Lhux_ip_h16lo]
  pmullw xmm1, [rip+.Lhux_ip_h16hi]
  paddw xmm0, xmm4                 # row 0, x 0..7
  paddw xmm1, xmm4                 # row 0, x 8..15
.macro HUX_PLANE16 row
  movdqa xmm3, xmm0
  movdqa xmm4, xmm1
  psraw xmm3, 5
  psraw xmm4, 5
  packuswb xmm3, xmm4
  movdqu \row, xmm3
  paddw xmm0, xmm2
  paddw xmm1, xmm2
.endm
.irp base, rdi, r9, r10, r11
  HUX_PLANE16 [\base]
  HUX_PLANE16 [\base+rsi]
  HUX_PLANE16 [\base+rsi*2]
  HUX_PLANE16 [\base+r8]
.endr
  xor eax, eax
  ret

.p2align 6
.Lhux_ip16_v:
  test cl, 1
  jz hux_h264_intra16_body
  HUX_BASES16
  mov rax, rdi
  sub rax, rsi
  movdqu xmm0, [rax]
  HUX_STORE4 rdi, xmm0
  HUX_STORE4 r9, xmm0
  HUX_STORE4 r10, xmm0
  HUX_STORE4 r11, xmm0
  xor eax, eax
  ret

.p2align 6
.Lhux_ip16_h:
  test cl, 2
  jz hux_h264_intra16_body
  HUX_BASES16
.macro HUX_H16 row
  movzx eax, byte ptr [\row-1]
  imul eax, eax, 0x01010101
  movd xmm0, eax
  pshufd xmm0, xmm0, 0
  movdqu [\row], xmm0
.endm
.irp base, rdi, r9, r10, r11
  HUX_H16 \base
  HUX_H16 \base+rsi
  HUX_H16 \base+rsi*2
  HUX_H16 \base+r8
.endr
  xor eax, eax
  ret

# DC with both sides (one side or none: the C++ body): psadbw sums the row
# above, the left column is summed in two chains.
.p2align 6
.Lhux_ip16_dc:
  not ecx
  test cl, 3
  jnz .Lhux_ip16_cold
  HUX_BASES16
  mov rax, rdi
  sub rax, rsi
  movdqu xmm0, [rax]
  pxor xmm1, xmm1
  psadbw xmm0, xmm1
  HUX_L eax, rdi,
  HUX_L ecx, rdi, +rsi
  HUX_L edx, rdi, +rsi*2
  add eax, edx
  HUX_L edx, rdi, +r8
  add ecx, edx
.irp base, r9, r10, r11
  HUX_L edx, \base,
  add eax, edx
  HUX_L edx, \base, +rsi
  add ecx, edx
  HUX_L edx, \base, +rsi*2
  add eax, edx
  HUX_L edx, \base, +r8
  add ecx, edx
.endr
  lea eax, [rax+rcx+16]
  movd xmm2, eax
  pshufd xmm1, xmm0, 2
  paddd xmm0, xmm2
  paddd xmm0, xmm1
  psrld xmm0, 5
  punpcklbw xmm0, xmm0
  pshuflw xmm0, xmm0, 0
  punpcklqdq xmm0, xmm0
  HUX_STORE4 rdi, xmm0
  HUX_STORE4 r9, xmm0
  HUX_STORE4 r10, xmm0
  HUX_STORE4 r11, xmm0
  xor eax, eax
  ret

.Lhux_ip16_cold:
  not ecx
  jmp hux_h264_intra16_body
  HUX_FN_END huxiPredictIntra_16x16_H264_8u_C1IR

# Chroma 8x8: 0 DC, 1 horizontal, 2 vertical, 3 plane. Rows 0-3 at rdi,
# 4-7 at r9 (plus 0, rsi, 2 rsi, r8).
.macro HUX_BASES8
  movsxd rsi, esi
  lea r8, [rsi+rsi*2]
  lea r9, [rdi+rsi*4]
.endm

.p2align 6
  HUX_FN huxiPredictIntraChroma8x8_H264_8u_C1IR
  test rdi, rdi
  jz hux_h264_intra8_body
  cmp esi, 8
  jl hux_h264_intra8_body
  cmp edx, 1
  jb .Lhux_ip8_dc
  je .Lhux_ip8_h
  cmp edx, 3
  je .Lhux_ip8_p
  ja hux_h264_intra8_body
.Lhux_ip8_v:
  test cl, 1
  jz hux_h264_intra8_body
  HUX_BASES8
  mov rax, rdi
  sub rax, rsi
  mov rax, [rax]
  HUX_STORE4 rdi, rax, mov
  HUX_STORE4 r9, rax, mov
  xor eax, eax
  ret

.p2align 6
# Plane: H and V as for 16x16 over four samples each side (scalar chains);
# b = (17 H + 16) >> 5, c likewise, a = 16 (L7 + T7); row 0 is
# a + 16 - 3 c + b (x - 3). Two rows to a register.
.Lhux_ip8_p:
  not ecx
  test cl, 35
  jnz .Lhux_ip8_cold
  HUX_BASES8
  HUX_PN eax, ecx, edx, [r9-1], [rdi+rsi*2-1], 1
  HUX_PN eax, ecx, edx, [r9+rsi-1], [rdi+rsi-1], 2
  HUX_PN eax, ecx, edx, [r9+rsi*2-1], [rdi-1], 3
  movzx edx, byte ptr [r9+r8-1]    # L7
  lea eax, [rax+rdx*4]
  sub eax, ecx                     # V + 4 Q
  mov r10, rdi
  sub r10, rsi                     # the row above
  HUX_PN ecx, edx, r11d, [r10+4], [r10+2], 1
  HUX_PN ecx, edx, r11d, [r10+5], [r10+1], 2
  HUX_PN ecx, edx, r11d, [r10+6], [r10], 3
  movzx r11d, byte ptr [r10+7]
  lea ecx, [rcx+r11*4]
  movzx r11d, byte ptr [r10-1]     # Q
  shl r11d, 2
  add edx, r11d
  sub eax, r11d                    # V
  sub ecx, edx                     # H
  mov edx, ecx
  shl edx, 4
  lea ecx, [rcx+rdx+16]
  sar ecx, 5                       # b
  mov edx, eax
  shl edx, 4
  lea eax, [rax+rdx+16]
  sar eax, 5                       # c
  movzx edx, byte ptr [r9+r8-1]
  movzx r11d, byte ptr [r10+7]
  lea edx, [rdx+r11+1]
  shl edx, 4
  lea r11d, [rax+rax*2]
  sub edx, r11d                    # a + 16 - 3 c
  movd xmm0, edx
  movd xmm1, ecx
  movd xmm2, eax
  pshuflw xmm0, xmm0, 0
  pshuflw xmm1, xmm1, 0
  pshuflw xmm2, xmm2, 0
  punpcklqdq xmm0, xmm0
  punpcklqdq xmm1, xmm1
  punpcklqdq xmm2, xmm2
  pmullw xmm1, [rip+.Lhux_ip_h8]
  paddw xmm0, xmm1                 # row 0
  movdqa xmm1, xmm0
  paddw xmm1, xmm2                 # row 1
  paddw xmm2, xmm2                 # 2 c
.macro HUX_PLANE8 r0, r1
  movdqa xmm3, xmm0
  movdqa xmm4, xmm1
  psraw xmm3, 5
  psraw xmm4, 5
  packuswb xmm3, xmm4
  movq \r0, xmm3
  movhps \r1, xmm3
  paddw xmm0, xmm2
  paddw xmm1, xmm2
.endm
  HUX_PLANE8 [rdi], [rdi+rsi]
  HUX_PLANE8 [rdi+rsi*2], [rdi+r8]
  HUX_PLANE8 [r9], [r9+rsi]
  movdqa xmm3, xmm0
  movdqa xmm4, xmm1
  psraw xmm3, 5
  psraw xmm4, 5
  packuswb xmm3, xmm4
  movq [r9+rsi*2], xmm3
  movhps [r9+r8], xmm3
  xor eax, eax
  ret

.p2align 6
.Lhux_ip8_h:
  test cl, 2
  jz hux_h264_intra8_body
  HUX_BASES8
  mov rcx, 0x0101010101010101
.macro HUX_H8 row
  movzx eax, byte ptr [\row-1]
  imul rax, rcx
  mov [\row], rax
.endm
.irp base, rdi, r9
  HUX_H8 \base
  HUX_H8 \base+rsi
  HUX_H8 \base+rsi*2
  HUX_H8 \base+r8
.endr
  xor eax, eax
  ret

# DC with both sides: quarters (t0 + l0 + 4) >> 3, (t1 + 2) >> 2 above;
# (l1 + 2) >> 2, (t1 + l1 + 4) >> 3 below; t the halves of the row above
# (one psadbw), l of the column to the left. Each pair of quarter values
# is spread over a row by one 64-bit multiply.
.p2align 6
.Lhux_ip8_dc:
  not ecx
  test cl, 3
  jnz .Lhux_ip8_cold
  HUX_BASES8
  mov rax, rdi
  sub rax, rsi
  movq xmm0, [rax]
  pxor xmm1, xmm1
  punpckldq xmm0, xmm1
  psadbw xmm0, xmm1
  HUX_L eax, rdi,
  HUX_L ecx, rdi, +rsi
  HUX_L edx, rdi, +rsi*2
  HUX_L r10d, rdi, +r8
  add eax, ecx
  add edx, r10d
  add eax, edx                     # l0
  HUX_L ecx, r9,
  HUX_L edx, r9, +rsi
  HUX_L r10d, r9, +rsi*2
  HUX_L r11d, r9, +r8
  add ecx, edx
  add r10d, r11d
  add ecx, r10d                    # l1
  movd edx, xmm0                   # t0
  pextrw r10d, xmm0, 4             # t1
  lea eax, [rax+rdx+4]
  shr eax, 3
  lea edx, [r10+2]
  shr edx, 2
  shl rdx, 32
  or rax, rdx
  imul rax, rax, 0x01010101        # rows 0-3
  lea edx, [rcx+2]
  shr edx, 2
  lea ecx, [rcx+r10+4]
  shr ecx, 3
  shl rcx, 32
  or rdx, rcx
  imul rdx, rdx, 0x01010101        # rows 4-7
  HUX_STORE4 rdi, rax, mov
  HUX_STORE4 r9, rdx, mov
  xor eax, eax
  ret

.Lhux_ip8_cold:
  not ecx
  jmp hux_h264_intra8_body
  HUX_FN_END huxiPredictIntraChroma8x8_H264_8u_C1IR

.purgem HUX_BASES16
.purgem HUX_PN
.purgem HUX_PD
.purgem HUX_BASES8
.purgem HUX_STORE4
.purgem HUX_L
.purgem HUX_PLANE16
.purgem HUX_PLANE8
.purgem HUX_H16
.purgem HUX_H8
.purgem HUX_AVG3
.purgem HUX_TAPS3
.purgem HUX_TAPS3X
.purgem HUX_AVG3X
.purgem HUX_EDGE8
.purgem HUX_EDGE9
.att_syntax prefix
)" HUX_FN_PURGE);

#endif
