// The kernel checker. A family registers each kernel pair (reference, SIMD)
// with a function that draws one trial's inputs from the Trial and hands both
// kernels to compare(). The checker runs the two on the same inputs in
// exact-sized blocks (guard bytes around them, or a block ending or starting
// at an inaccessible page, so a stray read faults even without a sanitizer),
// at every alignment, with odd and negative steps where the kernel allows
// them, over seeded random and worst-case data, and requires equal results,
// equal memory and intact guards. The same registration drives the
// benchmarks (bench/bench_kernels.cpp): there compare() times one of the two.
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstring>
#include <limits>
#include <new>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

#include "common/cpu.h"

#if defined(__SANITIZE_ADDRESS__)
#define HUX_CHECK_ASAN 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define HUX_CHECK_ASAN 1
#endif
#endif

namespace hux::check {

// Keeps the processor feature flags (common/cpu.h) for its lifetime, or clears
// them so that the exports take their SSE2 kernels; restores them after.
class FeatureFlags {
 public:
  explicit FeatureFlags(bool keep) {
#if HUX_CPU_FLAGS
    if (!keep) hux_cpu_ssse3 = hux_cpu_sse41 = 0;
#else
    (void)keep;
#endif
  }
  ~FeatureFlags() {
#if HUX_CPU_FLAGS
    hux_cpu_ssse3 = ssse3_, hux_cpu_sse41 = sse41_;
#endif
  }
  FeatureFlags(const FeatureFlags&) = delete;
  FeatureFlags& operator=(const FeatureFlags&) = delete;

 private:
#if HUX_CPU_FLAGS
  unsigned char ssse3_ = hux_cpu_ssse3, sse41_ = hux_cpu_sse41;
#endif
};

using Rng = std::mt19937;

// Data of a trial: uniform random, all minimum, all maximum, alternating
// extremes, values close together (near matches, ties), and a mix of the
// extremes with the values next to them and zero.
enum Data { kRandom, kMin, kMax, kAlternate, kNear, kEdges, kDataKinds };

class Trial;
struct Kernel {
  const char* family;
  const char* name;
  void (*fn)(Trial&);
  int trials;
};
inline std::vector<Kernel>& kernels() {
  static std::vector<Kernel> k;
  return k;
}
struct Register {
  Register(const char* family, const char* name, void (*fn)(Trial&), int trials) {
    kernels().push_back({family, name, fn, trials});
  }
};
#define HUX_CHECK(family, name, trials)                                              \
  static void check_##name(::hux::check::Trial&);                                    \
  static const ::hux::check::Register reg_##name{#family, #name, check_##name, trials}; \
  static void check_##name(::hux::check::Trial& t)

// Runs a batch of calls `n` times over; given by the benchmark driver.
struct Timer {
  virtual void run(void (*body)(void*, int64_t), void* ctx) = 0;
};

// Where a block sits: on the heap between guard bytes, or against an
// inaccessible page after its last byte or before its first.
enum Place { kHeap, kPageEnd, kPageStart };

// Row steps a kernel accepts beyond the exact width.
enum Steps { kPadded = 0, kOdd = 1, kNegative = 2, kAny = 3, kExact = 4 };

template <class T>
struct Plane {
  T* p;  // row 0
  int32_t step;
};

class Trial {
 public:
  enum Mode { kCheck, kList, kBench };
  static constexpr size_t kGuard = 32;
  static constexpr uint8_t kPattern = 0xA5;

  Trial(Mode mode, uint32_t seed, int index) : rng(seed), mode_(mode), index_(index), data_(Data(index % kDataKinds)) {
    if (mode != kCheck) data_ = kRandom;
  }
  ~Trial() {
    for (Block& b : blocks_) b.free();
  }
  Trial(const Trial&) = delete;

  Rng rng;
  Data data() const { return data_; }
  int index() const { return index_; }
  int pick(int n) { return static_cast<int>(rng() % static_cast<uint32_t>(n)); }
  template <class T, size_t N>
  T pick(const T (&a)[N]) { return a[rng() % N]; }

  // Values in lo..hi by the trial's data kind.
  template <class T>
  void fill(T* p, size_t n, int64_t lo, int64_t hi) {
    std::uniform_int_distribution<int64_t> any(lo, hi);
    const int64_t mid = lo + (hi - lo) / 2, phase = rng() & 1;
    for (size_t i = 0; i < n; ++i) {
      int64_t v = any(rng);
      if (data_ == kMin) v = lo;
      if (data_ == kMax) v = hi;
      if (data_ == kAlternate) v = ((i + phase) & 1) ? hi : lo;
      if (data_ == kNear) v = std::min(hi, std::max(lo, mid + static_cast<int64_t>(rng() % 5) - 2));
      if (data_ == kEdges) {
        const int64_t e[6] = {lo, lo + 1, hi - 1, hi, 0, mid};
        v = std::min(hi, std::max(lo, e[rng() % 6]));
      }
      const T t = static_cast<T>(v);
      std::memcpy(reinterpret_cast<uint8_t*>(p) + i * sizeof(T), &t, sizeof(T));
    }
  }

  // An exact block of n elements filled with lo..hi.
  template <class T>
  T* buf(size_t n, int64_t lo, int64_t hi) {
    T* p = reinterpret_cast<T*>(alloc(n * sizeof(T), sizeof(T)));
    fill(p, n, lo, hi);
    return p;
  }
  template <class T>
  T* buf(size_t n) {
    return buf<T>(n, std::is_signed_v<T> ? INT64_C(-1) << (8 * sizeof(T) - 1) : 0,
                  static_cast<int64_t>(std::numeric_limits<T>::max()));
  }
  // A block holding exactly these values.
  template <class T>
  T* copy(const T* v, size_t n) {
    T* p = reinterpret_cast<T*>(alloc(n * sizeof(T), alignof(T)));
    std::memcpy(p, v, n * sizeof(T));
    return p;
  }

  // h rows of w elements at a step the trial chooses within `allowed`; the
  // block spans exactly the rows' bytes.
  template <class T>
  Plane<T> rows(int w, int h, int allowed, int64_t lo, int64_t hi) {
    const int32_t e = sizeof(T), wb = w * e;
    int32_t step = wb;
    if (mode_ == kCheck && !(allowed & kExact)) {
      const int k = pick(4);
      step = k == 0 ? wb : wb + e * (1 + pick(k == 3 ? 40 : 8));
      if ((allowed & kOdd) && pick(3) == 0) step |= 1;
      if ((allowed & kNegative) && pick(3) == 0) step = -step;
    }
    const size_t span = static_cast<size_t>(h - 1) * static_cast<size_t>(std::abs(step)) + static_cast<size_t>(wb);
    uint8_t* base = alloc(span, e);
    fill(reinterpret_cast<T*>(base), span / e, lo, hi);
    return {reinterpret_cast<T*>(base + (step < 0 ? static_cast<size_t>(h - 1) * static_cast<size_t>(-step) : 0)), step};
  }
  template <class T>
  Plane<T> rows(int w, int h, int allowed = kAny) {
    return rows<T>(w, h, allowed, 0, static_cast<int64_t>(std::numeric_limits<T>::max()));
  }

  // Runs both kernels on the blocks as they are now and compares what they
  // return and every block afterwards.
  template <class F, class... A>
  void compare(const std::string& label, F ref, std::type_identity_t<F> simd, A... args) {
    if (mode_ == kList) return labels_.push_back(label);
    if (mode_ == kBench) {
      if (label != target_) return;
      const F f = simd_ ? simd : ref;
      std::vector<std::pair<uint8_t*, std::vector<uint8_t>>> cells;
      if (stateful_)
        for (const Block& b : blocks_)
          if (b.size <= 8) cells.push_back({b.data, {b.data, b.data + b.size}});
      auto body = [&](int64_t n) {
        for (int64_t i = 0; i < n; ++i) {
          for (auto& [p, v] : cells) std::memcpy(p, v.data(), v.size());
          if constexpr (std::is_void_v<decltype(f(args...))>) {
            f(args...);
            asm volatile("" ::: "memory");
          } else {
            auto r = f(args...);
            asm volatile("" : : "g"(r) : "memory");
          }
        }
      };
      timer_->run([](void* c, int64_t n) { (*static_cast<decltype(body)*>(c))(n); }, &body);
      return;
    }
    const std::vector<uint8_t> before = snapshot();
    const int64_t r1 = call(ref, args...);
    const std::vector<uint8_t> after1 = snapshot();
    restore(before);
    const int64_t r2 = call(simd, args...);
    const std::vector<uint8_t> after2 = snapshot();
    ++compared_;
    if (r1 != r2) fail(label, "returns " + std::to_string(r1) + " (reference) and " + std::to_string(r2));
    for (size_t i = 0; i < after1.size(); ++i)
      if (after1[i] != after2[i]) {
        fail(label, "memory differs at byte " + std::to_string(i) + " of the blocks: " + std::to_string(after1[i]) +
                        " (reference) and " + std::to_string(after2[i]));
        break;
      }
    guards(label);
  }

  // The kernels move cursors or pointers held in cells of at most 8 bytes:
  // the benchmarks put those back before every call.
  void stateful() { stateful_ = true; }

  // Failures of this trial, each with the label and the trial's data kind.
  std::vector<std::string> failures;
  int compared() const { return compared_; }
  const std::vector<std::string>& labels() const { return labels_; }
  void bench(const std::string& target, bool simd, Timer* timer) {
    target_ = target, simd_ = simd, timer_ = timer;
  }
  void fail(const std::string& label, const std::string& what) {
    failures.push_back(label + ": " + what + " (data kind " + std::to_string(data_) + ")");
  }

 private:
  struct Block {
    uint8_t* map = nullptr;
    size_t mapLen = 0;
    uint8_t *data = nullptr, *lo = nullptr, *hi = nullptr;  // [lo, hi) is compared
    size_t size = 0;
    bool heap = false;
    void free() {
      if (heap) ::operator delete(map, std::align_val_t{64});
      else if (map) munmap(map, mapLen);
    }
  };

  uint8_t* alloc(size_t size, size_t elem) {
    Block b;
    b.size = size;
    // Trials cycle through the placements, and heap blocks through the
    // alignments, so every kernel sees all of them.
    const Place place = mode_ != kCheck ? kHeap : Place(index_ / kDataKinds % 4 == 3 ? kPageStart
                                                        : index_ / kDataKinds % 4 == 2 ? kPageEnd : kHeap);
    // Half the blocks aligned, so that aligned paths meet every alignment of
    // the other blocks; the rest at a random element boundary.
    const size_t mis = mode_ == kBench || pick(2) ? 0 : elem * static_cast<size_t>(pick(static_cast<int>(16 / elem)));
    if (place == kHeap) {
#ifdef HUX_CHECK_ASAN
      const size_t g = 0;  // the sanitizer watches the block's own bounds
#else
      const size_t g = kGuard;
#endif
      b.heap = true;
      b.mapLen = size + 2 * g + 16;
      b.map = static_cast<uint8_t*>(::operator new(b.mapLen, std::align_val_t{64}));
      b.lo = b.map + (g ? 0 : mis);
      b.data = b.map + g + mis;
      b.hi = g ? b.map + b.mapLen : b.data + size;
    } else {
      const size_t page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
      const size_t pages = (size + kGuard + page - 1) / page;
      b.mapLen = (pages + 1) * page;
      b.map = static_cast<uint8_t*>(mmap(nullptr, b.mapLen, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
      if (b.map == MAP_FAILED) throw std::bad_alloc();
      if (place == kPageEnd) {
        mprotect(b.map + pages * page, page, PROT_NONE);
        b.data = b.map + pages * page - size;
        b.lo = b.data - kGuard;
        b.hi = b.data + size;
      } else {
        mprotect(b.map, page, PROT_NONE);
        b.data = b.lo = b.map + page;
        b.hi = b.data + size + kGuard;
      }
    }
    std::memset(b.lo, kPattern, static_cast<size_t>(b.hi - b.lo));
    blocks_.push_back(b);
    return b.data;
  }

  std::vector<uint8_t> snapshot() const {
    std::vector<uint8_t> s;
    for (const Block& b : blocks_) s.insert(s.end(), b.lo, b.hi);
    return s;
  }
  void restore(const std::vector<uint8_t>& s) {
    const uint8_t* p = s.data();
    for (const Block& b : blocks_) {
      std::memcpy(b.lo, p, static_cast<size_t>(b.hi - b.lo));
      p += b.hi - b.lo;
    }
  }
  void guards(const std::string& label) {
    for (size_t i = 0; i < blocks_.size(); ++i) {
      const Block& b = blocks_[i];
      for (const uint8_t* p = b.lo; p < b.hi; ++p)
        if ((p < b.data || p >= b.data + b.size) && *p != kPattern) {
          fail(label, "wrote outside block " + std::to_string(i) + " at " + std::to_string(p - b.data));
          return;
        }
    }
  }
  template <class F, class... A>
  static int64_t call(F f, A... args) {
    if constexpr (std::is_void_v<decltype(f(args...))>) {
      f(args...);
      return 0;
    } else {
      return static_cast<int64_t>(f(args...));
    }
  }

  Mode mode_;
  int index_;
  Data data_;
  int compared_ = 0;
  std::vector<Block> blocks_;
  std::vector<std::string> labels_;
  std::string target_;
  bool simd_ = false, stateful_ = false;
  Timer* timer_ = nullptr;
};

// The seed of trial i of a kernel: stable across builds and platforms.
inline uint32_t seed_of(const char* name, int i) {
  uint32_t h = 2166136261u;
  for (const char* c = name; *c; ++c) h = (h ^ static_cast<uint8_t>(*c)) * 16777619u;
  return h ^ static_cast<uint32_t>(i) * 0x9E3779B9u;
}

}  // namespace hux::check
