// Allocation layer over the core library. Every family that keeps memory between
// calls (tables built by InitAlloc, scratch of a Create) goes through here, so
// a test or an application can stand its own core library in its place.
#pragma once

#include <cstdint>

#include "huxcore.h"

namespace hux {

// Null for a request below one byte, without reaching the core library.
inline void* alloc_bytes(int32_t len) { return len < 1 ? nullptr : huxMalloc(len); }

// Null for a count below one element; the byte length is checked for overflow.
inline int16_t* alloc_16s(int32_t count) {
  if (count < 1 || count > INT32_MAX / 2) return nullptr;
  return static_cast<int16_t*>(huxMalloc(count * 2));
}

inline void release(void* ptr) {
  if (ptr) huxFree(ptr);
}

}  // namespace hux
