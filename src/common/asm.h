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

#endif  // HUX_ASM
