// Helpers shared by the test suites: seeded random data, buffers with guard
// zones to catch writes outside a block, and pointers at chosen alignments.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <random>
#include <vector>

namespace hux::test {

using Rng = std::mt19937;

inline std::vector<uint8_t> random_bytes(Rng& rng, size_t n, int lo = 0, int hi = 255) {
  std::uniform_int_distribution<int> d(lo, hi);
  std::vector<uint8_t> v(n);
  for (auto& x : v) x = static_cast<uint8_t>(d(rng));
  return v;
}

template <class T>
inline void fill_random(Rng& rng, T* p, size_t n, int64_t lo, int64_t hi) {
  std::uniform_int_distribution<int64_t> d(lo, hi);
  for (size_t i = 0; i < n; ++i) p[i] = static_cast<T>(d(rng));
}

// A byte area with guard zones on both sides, 64-byte aligned at its start, so
// that `at(offset)` gives a pointer of any wanted alignment. `intact()` says
// whether the guards still hold their pattern.
class Guarded {
 public:
  static constexpr size_t kGuard = 64;
  static constexpr uint8_t kPattern = 0xA5;

  explicit Guarded(size_t bytes) : size_(bytes), store_(bytes + 2 * kGuard + 64, kPattern) {
    const uintptr_t raw = reinterpret_cast<uintptr_t>(store_.data()) + kGuard;
    base_ = reinterpret_cast<uint8_t*>((raw + 63) & ~uintptr_t{63});
  }

  uint8_t* data() { return base_; }
  size_t size() const { return size_; }
  template <class T>
  T* as(size_t byte_offset = 0) {
    return reinterpret_cast<T*>(base_ + byte_offset);
  }

  bool intact() const {
    for (const uint8_t* p = store_.data(); p < base_; ++p)
      if (*p != kPattern) return false;
    for (const uint8_t* p = base_ + size_; p < store_.data() + store_.size(); ++p)
      if (*p != kPattern) return false;
    return true;
  }

  void fill(uint8_t v) { std::memset(base_, v, size_); }
  std::vector<uint8_t> snapshot() const { return {base_, base_ + size_}; }

 private:
  size_t size_;
  std::vector<uint8_t> store_;
  uint8_t* base_;
};

}  // namespace hux::test
