/**
 * @file huxcore.h
 * @brief huxcore: the core library under huxvc (memory, thread count, cache size).
 *
 * Every service of huxvc that touches the process comes from here, so an application can link its
 * own core library in place of libhuxcore as long as it meets the contracts below.
 */
#ifndef HUXCORE_H
#define HUXCORE_H

#include <stdint.h>

#ifndef HUX_STDCALL
/** The calling convention of every export: on 32-bit x86 the callee removes its arguments from the
 *  stack (stdcall); elsewhere the platform's default. */
#  if defined(_M_IX86)
#    define HUX_STDCALL __stdcall
#  elif defined(__i386__)
#    define HUX_STDCALL __attribute__((stdcall))
#  else
#    define HUX_STDCALL
#  endif
#endif

#ifndef HUXCORE_API
/** Marks a huxcore export (default symbol visibility); define it before including to override. */
#  if defined(__GNUC__) || defined(__clang__)
#    define HUXCORE_API __attribute__((visibility("default")))
#  else
#    define HUXCORE_API
#  endif
#endif

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @defgroup core Core library (huxcore.h)
 * @brief Memory, thread count and cache size: the services huxvc takes from libhuxcore.
 *
 * All five are safe to call from any thread. huxvc's current exports call none of them; later
 * families allocate their tables and state through huxMalloc() and huxFree() only, and size their
 * parallel work by ownGetNumThreads().
 * @{
 */

/**
 * @brief Allocates at least len bytes aligned to 64 bytes.
 *
 * The block is rounded up to a multiple of 64 bytes and not cleared. Release it with huxFree().
 * @param len bytes wanted, 1 or more
 * @return the block, or null when len is below 1 or memory is short
 */
HUXCORE_API void* HUX_STDCALL huxMalloc(int32_t len);
/**
 * @brief Releases a block from huxMalloc().
 * @param ptr a pointer huxMalloc() returned, or null (ignored)
 */
HUXCORE_API void HUX_STDCALL huxFree(void* ptr);
/**
 * @brief Threads allowed for parallel regions.
 * @return the hardware thread count, or the lower cap set by huxSetNumThreads(); at least 1
 */
HUXCORE_API int32_t HUX_STDCALL ownGetNumThreads(void);
/**
 * @brief Caps the thread count that ownGetNumThreads() reports (process-wide).
 * @param maxThreads the cap; a value below 1 removes it. A cap above the hardware count has no effect.
 */
HUXCORE_API void HUX_STDCALL huxSetNumThreads(int32_t maxThreads);
/**
 * @brief Size in bytes of the largest processor cache (data or unified), read from the processor.
 * @return the size in bytes (at most 2^31 - 1), or 0 when unknown (no cache description, not x86)
 */
HUXCORE_API int32_t HUX_STDCALL huxGetMaxCacheSizeB(void);

/** @} */

#ifdef __cplusplus
}
#endif

#endif /* HUXCORE_H */
