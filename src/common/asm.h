// Helpers for the assembly exports written with GNU as inside C++ files:
// function start and end macros for the ELF symbol table, with the indirect
// branch landing pad when the build asks for it.
#pragma once

#include "common/simd.h"

#if HUX_ASM

#if defined(__CET__)
#if defined(__x86_64__)
#define HUX_ENDBR "endbr64\n"
#else
#define HUX_ENDBR "endbr32\n"
#endif
#else
#define HUX_ENDBR ""
#endif

// Function start (aligned, global, typed for the ELF symbol table) and size.
#define HUX_FN_MACROS                                                             \
  ".macro HUX_FN name\n.p2align 4\n.globl \\name\n.type \\name, @function\n\\name:\n" \
  HUX_ENDBR ".endm\n.macro HUX_FN_END name\n.size \\name, .-\\name\n.endm\n"
#define HUX_FN_PURGE ".purgem HUX_FN\n.purgem HUX_FN_END\n"

#if defined(__x86_64__)
// Intel syntax: four rows of 8 bytes from rdi (steps rsi, r10 = 3 rsi) to rdx
// (steps rcx, r11 = 3 rcx), each row loaded and stored in turn, through rax.
#define HUX_COPY8X4_MACRO \
  ".macro HUX_COPY8x4\n"  \
  "mov rax, [rdi]\nmov [rdx], rax\n" \
  "mov rax, [rdi+rsi]\nmov [rdx+rcx], rax\n" \
  "mov rax, [rdi+rsi*2]\nmov [rdx+rcx*2], rax\n" \
  "mov rax, [rdi+r10]\nmov [rdx+r11], rax\n" \
  ".endm\n"
#endif

#endif  // HUX_ASM
