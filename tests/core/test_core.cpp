#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <thread>

#include "huxcore.h"

TEST(Core, MallocGivesAlignedWritableBlocksAndRejectsNonPositiveLengths) {
  for (int32_t len : {1, 3, 64, 1000, 1 << 20}) {
    auto* p = static_cast<uint8_t*>(huxMalloc(len));
    ASSERT_NE(p, nullptr) << len;
    EXPECT_EQ(reinterpret_cast<uintptr_t>(p) % 64, 0u) << len;
    std::memset(p, 0x5a, static_cast<size_t>(len));
    huxFree(p);
  }
  EXPECT_EQ(huxMalloc(0), nullptr);
  EXPECT_EQ(huxMalloc(-5), nullptr);
  huxFree(nullptr);
}

TEST(Core, ThreadCountFollowsTheHardwareAndACallerCap) {
  const int32_t hw = ownGetNumThreads();
  ASSERT_GE(hw, 1);
  const unsigned reported = std::thread::hardware_concurrency();
  if (reported) {
    EXPECT_EQ(hw, static_cast<int32_t>(reported));
  }
  huxSetNumThreads(1);
  EXPECT_EQ(ownGetNumThreads(), 1);
  huxSetNumThreads(hw + 10);  // a cap above the hardware does not raise the count
  EXPECT_EQ(ownGetNumThreads(), hw);
  huxSetNumThreads(0);
  EXPECT_EQ(ownGetNumThreads(), hw);
}

TEST(Core, CacheSizeIsPlausible) {
  const int32_t size = huxGetMaxCacheSizeB();
  EXPECT_GE(size, 0);
#if defined(__i386__) || defined(__x86_64__)
  // Any x86 processor of SSE2 level describes at least a 32 KiB data cache.
  EXPECT_GE(size, 32 * 1024);
#endif
}
