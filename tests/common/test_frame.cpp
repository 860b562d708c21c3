// The library frame: the allocation layer over a stand-in core library, and
// (on 32-bit x86) the callee-pops convention of every export.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include "common/alloc.h"
#include "huxvc.h"

// A stand-in core library: this definition takes the place of the shared
// core library's, as an application's own would, and counts what reaches it.
namespace {
int g_malloc_calls = 0;
int32_t g_last_len = 0;
}  // namespace

extern "C" void* HUX_STDCALL huxMalloc(int32_t len) {
  ++g_malloc_calls;
  g_last_len = len;
  return len < 1 ? nullptr : std::malloc(static_cast<size_t>(len));
}
extern "C" void HUX_STDCALL huxFree(void* p) { std::free(p); }

namespace {

TEST(Alloc, NonPositiveRequestsNeverReachTheCoreLibrary) {
  g_malloc_calls = 0;
  EXPECT_EQ(hux::alloc_bytes(0), nullptr);
  EXPECT_EQ(hux::alloc_bytes(-1), nullptr);
  EXPECT_EQ(hux::alloc_16s(0), nullptr);
  EXPECT_EQ(hux::alloc_16s(-7), nullptr);
  EXPECT_EQ(hux::alloc_16s(INT32_MAX / 2 + 1), nullptr);  // the byte length would overflow
  EXPECT_EQ(g_malloc_calls, 0);
}

TEST(Alloc, RequestsGoThroughTheCoreLibrary) {
  g_malloc_calls = 0;
  void* a = hux::alloc_bytes(10);
  EXPECT_EQ(g_last_len, 10);
  int16_t* b = hux::alloc_16s(21);
  EXPECT_EQ(g_last_len, 42);
  EXPECT_EQ(g_malloc_calls, 2);
  ASSERT_NE(a, nullptr);
  ASSERT_NE(b, nullptr);
  hux::release(a);
  hux::release(b);
}

#if defined(__i386__)
// Pushes `n` zero words (the stack aligned to 16 bytes at the call, as the ABI
// expects), calls fn, and returns how many bytes the callee left on the stack.
int32_t bytes_left_after_call(void* fn, int32_t n, int32_t* status) {
  int32_t count = n;
  int32_t ret;
  __asm__ volatile(
      "movl %%esp, %%esi\n\t"
      "andl $-16, %%esp\n\t"
      "leal (,%%ecx,4), %%eax\n\t"
      "negl %%eax\n\t"
      "andl $15, %%eax\n\t"
      "subl %%eax, %%esp\n\t"
      "movl %%esp, %%edi\n\t"  // where the arguments end
      "testl %%ecx, %%ecx\n\t"
      "jz 2f\n\t"
      "1:\n\t"
      "pushl $0\n\t"
      "decl %%ecx\n\t"
      "jnz 1b\n\t"
      "2:\n\t"
      "call *%%ebx\n\t"
      "movl %%edi, %%ecx\n\t"
      "subl %%esp, %%ecx\n\t"
      "movl %%esi, %%esp\n\t"
      : "=a"(ret), "+c"(count)
      : "b"(fn)
      : "esi", "edi", "edx", "memory", "cc");
  *status = ret;
  return count;
}

template <class R, class... A>
constexpr int32_t argument_words(R(HUX_STDCALL*)(A...)) {
  return static_cast<int32_t>((0 + ... + ((sizeof(A) + 3) / 4)));
}

// Entry points without a body refuse every call with -2, null arguments included.
bool entry_only(const char* name) { return std::string(name).find("Chroma422VerEdgeMBAFF") != std::string::npos; }

TEST(CallingConvention, EveryExportRemovesItsOwnArguments) {
  int checked = 0;
#define HUX_EXPORT(name)                                                                            \
  {                                                                                                 \
    int32_t status = 0;                                                                             \
    const int32_t words = argument_words(&name);                                                    \
    EXPECT_EQ(bytes_left_after_call(reinterpret_cast<void*>(&name), words, &status), 0) << #name;   \
    if (words > 0) { EXPECT_EQ(status, entry_only(#name) ? huxErrNotSupported : huxErrNullPtr) << #name; } \
    ++checked;                                                                                      \
  }
#include "hux_exports.inc"
#undef HUX_EXPORT
  EXPECT_GE(checked, 25);  // the version query and the block SADs at least
}
#else
TEST(CallingConvention, EveryExportRemovesItsOwnArguments) { GTEST_SKIP() << "callee-pops applies to 32-bit x86 only"; }
#endif

}  // namespace
