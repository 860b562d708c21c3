// Processor feature flags (cpu.h).
#include "common/cpu.h"

#if HUX_CPU_FLAGS
#include <cpuid.h>

unsigned char hux_cpu_ssse3 = 0;
unsigned char hux_cpu_sse41 = 0;

namespace {

// Runs while the library loads, before any caller can reach an export.
[[gnu::constructor]] void hux_detect_cpu() {
  unsigned a = 0, b = 0, c = 0, d = 0;
  if (!__get_cpuid(1, &a, &b, &c, &d)) return;
  hux_cpu_ssse3 = (c >> 9) & 1u;
  hux_cpu_sse41 = (c >> 19) & 1u;
}

}  // namespace
#endif
