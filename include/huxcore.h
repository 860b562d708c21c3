/* huxcore: the core library under huxvc. Every service that touches the process
 * (memory, thread count, cache size) comes from here, so an application can link
 * its own core library in its place as long as it meets these contracts. */
#ifndef HUXCORE_H
#define HUXCORE_H

#include <stdint.h>

#ifndef HUX_STDCALL
#  if defined(_M_IX86)
#    define HUX_STDCALL __stdcall
#  elif defined(__i386__)
#    define HUX_STDCALL __attribute__((stdcall))
#  else
#    define HUX_STDCALL
#  endif
#endif

#ifndef HUXCORE_API
#  if defined(__GNUC__) || defined(__clang__)
#    define HUXCORE_API __attribute__((visibility("default")))
#  else
#    define HUXCORE_API
#  endif
#endif

#ifdef __cplusplus
extern "C" {
#endif

/** Allocates at least len bytes aligned to 64 bytes; null when len < 1 or memory is short. */
HUXCORE_API void* HUX_STDCALL huxMalloc(int32_t len);
/** Releases a block from huxMalloc; null is ignored. */
HUXCORE_API void HUX_STDCALL huxFree(void* ptr);
/** Threads allowed for parallel regions: the hardware thread count, or the lower limit set below (at least 1). */
HUXCORE_API int32_t HUX_STDCALL ownGetNumThreads(void);
/** Caps the thread count ownGetNumThreads reports; a value below 1 removes the cap. */
HUXCORE_API void HUX_STDCALL huxSetNumThreads(int32_t maxThreads);
/** Size in bytes of the largest processor cache, read from the processor; 0 when unknown. */
HUXCORE_API int32_t HUX_STDCALL huxGetMaxCacheSizeB(void);

#ifdef __cplusplus
}
#endif

#endif /* HUXCORE_H */
