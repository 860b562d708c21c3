// The core library: memory, thread count and cache size for huxvc.
#include "huxcore.h"

#include <atomic>
#include <cstdlib>
#include <thread>

#if defined(__i386__) || defined(__x86_64__)
#include <cpuid.h>
#endif

namespace {
std::atomic<int32_t> g_thread_cap{0};  // 0: no cap

int32_t hardware_threads() {
  const unsigned n = std::thread::hardware_concurrency();
  return n == 0 ? 1 : static_cast<int32_t>(n > 0x7fffffffu ? 0x7fffffffu : n);
}

#if defined(__i386__) || defined(__x86_64__)
// Deterministic cache parameters (leaf 4 on Intel, 0x8000001D on AMD): every
// sub-leaf describes one cache; size = ways * partitions * line size * sets.
int64_t largest_cache_from_leaf(unsigned leaf) {
  int64_t best = 0;
  for (unsigned sub = 0; sub < 16; ++sub) {
    unsigned a, b, c, d;
    __cpuid_count(leaf, sub, a, b, c, d);
    const unsigned type = a & 0x1f;
    if (type == 0) break;
    if (type == 2) continue;  // instruction cache
    const int64_t ways = ((b >> 22) & 0x3ff) + 1;
    const int64_t parts = ((b >> 12) & 0x3ff) + 1;
    const int64_t line = (b & 0xfff) + 1;
    const int64_t sets = static_cast<int64_t>(c) + 1;
    const int64_t size = ways * parts * line * sets;
    if (size > best) best = size;
  }
  return best;
}
#endif
}  // namespace

extern "C" {

HUXCORE_API void* HUX_STDCALL huxMalloc(int32_t len) {
  if (len < 1) return nullptr;
  const std::size_t rounded = (static_cast<std::size_t>(len) + 63u) & ~static_cast<std::size_t>(63u);
  return std::aligned_alloc(64, rounded);
}

HUXCORE_API void HUX_STDCALL huxFree(void* ptr) { std::free(ptr); }

HUXCORE_API int32_t HUX_STDCALL ownGetNumThreads(void) {
  const int32_t hw = hardware_threads();
  const int32_t cap = g_thread_cap.load(std::memory_order_relaxed);
  return (cap > 0 && cap < hw) ? cap : hw;
}

HUXCORE_API void HUX_STDCALL huxSetNumThreads(int32_t maxThreads) {
  g_thread_cap.store(maxThreads > 0 ? maxThreads : 0, std::memory_order_relaxed);
}

HUXCORE_API int32_t HUX_STDCALL huxGetMaxCacheSizeB(void) {
#if defined(__i386__) || defined(__x86_64__)
  unsigned a, b, c, d;
  if (!__get_cpuid(0, &a, &b, &c, &d)) return 0;
  const unsigned max_leaf = a;
  const bool amd = b == 0x68747541u;  // "Auth"
  int64_t size = 0;
  if (amd) {
    if (__get_cpuid(0x80000000u, &a, &b, &c, &d) && a >= 0x8000001Du) size = largest_cache_from_leaf(0x8000001Du);
  } else if (max_leaf >= 4) {
    size = largest_cache_from_leaf(4);
  }
  // Processors without the deterministic cache leaves still give their L2
  // (and, on AMD, L3) sizes in the extended leaf 0x80000006.
  if (size == 0 && __get_cpuid(0x80000000u, &a, &b, &c, &d) && a >= 0x80000006u &&
      __get_cpuid(0x80000006u, &a, &b, &c, &d)) {
    const int64_t l2 = static_cast<int64_t>(c >> 16) * 1024;
    const int64_t l3 = amd ? static_cast<int64_t>(d >> 18) * 512 * 1024 : 0;
    size = l2 > l3 ? l2 : l3;
  }
  if (size > 0x7fffffff) size = 0x7fffffff;
  return static_cast<int32_t>(size);
#else
  return 0;
#endif
}

}  // extern "C"
