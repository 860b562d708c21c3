// Compile-time kernel selection. Each family puts its portable kernels in
// namespace ref and its SSE2 kernels in namespace sse2; HUX_KERNELS names the set
// this build's exports use. Tests reach both sets directly and compare them.
#pragma once

#if defined(HUX_SSE2) && HUX_SSE2
#include <emmintrin.h>
#define HUX_KERNELS sse2
#else
#define HUX_KERNELS ref
#endif

// Hand-written x86 assembly (GNU as, ELF targets) for the exports where the
// compiler's code around a short kernel costs a visible share: set when the
// SSE2 kernels are built with GCC or Clang for 32- or 64-bit x86 and not
// turned off with HUX_NO_ASM (then the intrinsics kernels serve instead).
#if defined(HUX_SSE2) && HUX_SSE2 && (defined(__GNUC__) || defined(__clang__)) && defined(__ELF__) && \
    (defined(__i386__) || (defined(__x86_64__) && !defined(__ILP32__))) && !defined(HUX_NO_ASM)
#define HUX_ASM 1
#else
#define HUX_ASM 0
#endif

#include <cstdint>
#include <cstring>
#include <type_traits>

// Kernels small enough that a call would cost a noticeable share of their
// time are forced inline into the exports.
#if defined(__GNUC__) || defined(__clang__)
#define HUX_INLINE inline __attribute__((always_inline))
#else
#define HUX_INLINE inline
#endif

namespace hux {

// Unaligned scalar loads and stores without aliasing trouble.
template <class T>
inline T load(const void* p) {
  T v;
  std::memcpy(&v, p, sizeof v);
  return v;
}
template <class T>
inline void store(void* p, T v) {
  std::memcpy(p, &v, sizeof v);
}

// Address of row y of a block with a byte step (negative steps walk upwards).
template <class T>
inline T* row(T* base, int32_t step, int y) {
  using Byte = std::conditional_t<std::is_const_v<T>, const uint8_t, uint8_t>;
  return reinterpret_cast<T*>(reinterpret_cast<Byte*>(base) + static_cast<intptr_t>(step) * y);
}

inline bool aligned16(const void* p) { return (reinterpret_cast<uintptr_t>(p) & 15u) == 0; }
inline bool aligned16(const void* p, int32_t step) { return ((reinterpret_cast<uintptr_t>(p) | static_cast<uint32_t>(step)) & 15u) == 0; }

}  // namespace hux
