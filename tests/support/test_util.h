// Helpers shared by the test suites: seeded random data, buffers with guard
// zones to catch writes outside a block, and exact-sized heap blocks at any
// alignment with any row step, so the sanitizer build sees every stray read.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <cstdlib>
#include <cstring>
#include <new>
#include <random>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

namespace hux::test {

using Rng = std::mt19937;

template <class T>
inline void fill_random(Rng& rng, T* p, size_t n, int64_t lo, int64_t hi) {
  std::uniform_int_distribution<int64_t> d(lo, hi);
  for (size_t i = 0; i < n; ++i) p[i] = static_cast<T>(d(rng));
}
inline std::vector<uint8_t> random_bytes(Rng& rng, size_t n, int lo = 0, int hi = 255) {
  std::vector<uint8_t> v(n);
  fill_random(rng, v.data(), n, lo, hi);
  return v;
}

// A byte area with guard zones on both sides, 64-byte aligned at its start, so
// that `as<T>(offset)` gives a pointer of any wanted alignment. `intact()` says
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
    for (const uint8_t* p = store_.data(); p < store_.data() + store_.size(); ++p)
      if ((p < base_ || p >= base_ + size_) && *p != kPattern) return false;
    return true;
  }
  void fill(uint8_t v) { std::memset(base_, v, size_); }
  std::vector<uint8_t> snapshot() const { return {base_, base_ + size_}; }

 private:
  size_t size_;
  std::vector<uint8_t> store_;
  uint8_t* base_;
};

// A heap block of exactly `bytes` bytes starting `mis` bytes past a 64-byte
// boundary: any access outside it is an ASan report.
class Exact {
 public:
  Exact(size_t bytes, size_t mis) : size_(bytes + mis) {
    base_ = static_cast<uint8_t*>(::operator new(size_ ? size_ : 1, std::align_val_t{64}));
    data_ = base_ + mis;
    std::memset(base_, 0x5A, size_);
  }
  ~Exact() { ::operator delete(base_, std::align_val_t{64}); }
  Exact(Exact&& o) noexcept : size_(o.size_), base_(std::exchange(o.base_, nullptr)), data_(o.data_) {}
  Exact& operator=(Exact&&) = delete;
  uint8_t* data() { return data_; }
  size_t size() const { return static_cast<size_t>(base_ + size_ - data_); }
  std::vector<uint8_t> bytes() const { return {data_, base_ + size_}; }
  void copy_from(const Exact& o) { std::memcpy(data_, o.data_, size()); }  // same size
  Exact& randomize(Rng& rng, int lo = 0, int hi = 255) {
    fill_random(rng, data_, size(), lo, hi);
    return *this;
  }

 private:
  size_t size_;
  uint8_t* base_;
  uint8_t* data_;
};

// `h` rows of `wb` bytes at a byte step (odd or negative allowed) in an exact
// block: `first` is row 0, wherever the step puts it.
struct Rows {
  Rows(int h, int wb, int32_t step, size_t mis)
      : buf(static_cast<size_t>((h - 1) * std::abs(step) + wb), mis),
        first(buf.data() + (step < 0 ? (h - 1) * static_cast<ptrdiff_t>(-step) : 0)) {}
  Exact buf;
  uint8_t* first;
  template <class T>
  T* as() {
    return reinterpret_cast<T*>(first);
  }
};

// Calls f(args...) once for every pointer argument not listed in `unchecked`
// (argument positions from 0), with that argument null, and expects `status`
// each time; returns how many pointer arguments were tried.
namespace detail {
template <size_t I, class T>
T null_at(T v, size_t which) {
  if constexpr (std::is_pointer_v<T>) return I == which ? nullptr : v;
  return v;
}
template <class F, class Tuple, size_t... I>
auto call_nulled(F f, const Tuple& t, size_t which, std::index_sequence<I...>) {
  return f(null_at<I>(std::get<I>(t), which)...);
}
}  // namespace detail

template <class F, class... A>
int expect_null_checks(const char* name, int32_t status, std::initializer_list<size_t> unchecked, F f, A... args) {
  const auto t = std::make_tuple(args...);
  const bool is_ptr[] = {std::is_pointer_v<A>...};
  int tried = 0;
  for (size_t i = 0; i < sizeof...(A); ++i) {
    if (!is_ptr[i] || std::find(unchecked.begin(), unchecked.end(), i) != unchecked.end()) continue;
    EXPECT_EQ(detail::call_nulled(f, t, i, std::index_sequence_for<A...>{}), status) << name << ", argument " << i << " null";
    ++tried;
  }
  return tried;
}

}  // namespace hux::test
