// Block SAD kernels, reference against SSE2, and the exports as a caller sees
// them. Data sit in one cache-warm plane; the reference block is unaligned.
#include <benchmark/benchmark.h>

#include <random>
#include <vector>

#include "huxvc.h"
#include "me/sad_kernels.h"

namespace {

namespace me = hux::me;
constexpr int32_t kStep = 64;

struct Planes {
  std::vector<uint8_t> cur, ref;
  std::vector<uint16_t> cur16, ref16;
  Planes() : cur(kStep * 40), ref(kStep * 40), cur16(kStep * 40), ref16(kStep * 40) {
    std::mt19937 rng(1);
    for (auto& v : cur) v = static_cast<uint8_t>(rng());
    for (auto& v : ref) v = static_cast<uint8_t>(rng());
    for (auto& v : cur16) v = static_cast<uint16_t>(rng() & 1023);
    for (auto& v : ref16) v = static_cast<uint16_t>(rng() & 1023);
  }
  const uint8_t* c() const { return cur.data() + 16; }
  const uint8_t* r() const { return ref.data() + 19; }
  const uint16_t* c16() const { return cur16.data() + 16; }
  const uint16_t* r16() const { return ref16.data() + 3; }
};
const Planes& planes() {
  static const Planes p;
  return p;
}

template <int32_t (*F)(const uint8_t*, int32_t, const uint8_t*, int32_t)>
void BM_sad8(benchmark::State& st) {
  const auto& p = planes();
  for (auto _ : st) benchmark::DoNotOptimize(F(p.c(), kStep, p.r(), kStep));
}
template <int32_t (*F)(const uint16_t*, int32_t, const uint16_t*, int32_t)>
void BM_sad16(benchmark::State& st) {
  const auto& p = planes();
  for (auto _ : st) benchmark::DoNotOptimize(F(p.c16(), 2 * kStep, p.r16(), 2 * kStep));
}
template <class T, class O, void (*F)(const T*, int32_t, const T*, int32_t, O*)>
void BM_blocks(benchmark::State& st) {
  const auto& p = planes();
  O out[16];
  const T* c;
  const T* r;
  if constexpr (sizeof(T) == 1) c = p.c(), r = p.r();
  else c = p.c16(), r = p.r16();
  for (auto _ : st) {
    F(c, kStep * static_cast<int32_t>(sizeof(T)), r, kStep * static_cast<int32_t>(sizeof(T)), out);
    benchmark::DoNotOptimize(out);
  }
}
template <void (*F)(const uint8_t*, int32_t, const uint8_t*, int32_t, uint16_t*, int32_t)>
void BM_line(benchmark::State& st) {
  const auto& p = planes();
  uint16_t out[32];
  for (auto _ : st) {
    F(p.c(), kStep, p.r(), kStep, out, 32);
    benchmark::DoNotOptimize(out);
  }
  st.SetItemsProcessed(st.iterations() * 32);
}
template <class T, void (*F)(const T*, int32_t, int32_t*, int32_t*)>
void BM_frame_field(benchmark::State& st) {
  const auto& p = planes();
  int32_t a, b;
  const T* s;
  if constexpr (sizeof(T) == 1) s = p.c();
  else s = reinterpret_cast<const int16_t*>(p.c16());
  for (auto _ : st) {
    F(s, kStep * static_cast<int32_t>(sizeof(T)), &a, &b);
    benchmark::DoNotOptimize(a);
    benchmark::DoNotOptimize(b);
  }
}
template <int32_t (*F)(const uint8_t*, int32_t, const uint8_t*, int32_t, int16_t*, int32_t)>
void BM_subsad(benchmark::State& st) {
  const auto& p = planes();
  alignas(16) int16_t d[64];
  for (auto _ : st) {
    benchmark::DoNotOptimize(F(p.c(), kStep, p.r(), kStep, d, 16));
    benchmark::ClobberMemory();
  }
}

#define SAD8(W, H, M)                                                     \
  BENCHMARK(BM_sad8<me::ref::sad<W, H, M>>)->Name("ref/sad" #W "x" #H "/mode" #M); \
  BENCHMARK(BM_sad8<me::sse2::sad<W, H, M>>)->Name("sse2/sad" #W "x" #H "/mode" #M);
#define SAD16(W, H, M)                                                         \
  BENCHMARK(BM_sad16<me::ref::sad16u<W, H, M>>)->Name("ref/sad" #W "x" #H "_16u/mode" #M); \
  BENCHMARK(BM_sad16<me::sse2::sad16u<W, H, M>>)->Name("sse2/sad" #W "x" #H "_16u/mode" #M);

#if defined(HUX_SSE2) && HUX_SSE2
SAD8(16, 16, 0) SAD8(16, 16, 1) SAD8(16, 16, 2) SAD8(16, 16, 3)
SAD8(16, 8, 0) SAD8(16, 8, 1) SAD8(16, 8, 2) SAD8(16, 8, 3)
SAD8(8, 8, 0) SAD8(8, 8, 1) SAD8(8, 8, 2) SAD8(8, 8, 3)
SAD8(8, 16, 0) SAD8(8, 4, 0) SAD8(4, 8, 0) SAD8(4, 4, 0)
SAD16(16, 16, 0) SAD16(16, 16, 3) SAD16(8, 8, 0) SAD16(8, 8, 3) SAD16(4, 4, 0) SAD16(4, 4, 3)
BENCHMARK(BM_blocks<uint8_t, uint16_t, me::ref::sad_blocks<8>>)->Name("ref/blocks8x8");
BENCHMARK(BM_blocks<uint8_t, uint16_t, me::sse2::sad_blocks<8>>)->Name("sse2/blocks8x8");
BENCHMARK(BM_blocks<uint8_t, uint16_t, me::ref::sad_blocks<4>>)->Name("ref/blocks4x4");
BENCHMARK(BM_blocks<uint8_t, uint16_t, me::sse2::sad_blocks<4>>)->Name("sse2/blocks4x4");
BENCHMARK(BM_blocks<uint16_t, uint32_t, me::ref::sad_blocks16u<8>>)->Name("ref/blocks8x8_16u");
BENCHMARK(BM_blocks<uint16_t, uint32_t, me::sse2::sad_blocks16u<8>>)->Name("sse2/blocks8x8_16u");
BENCHMARK(BM_blocks<uint16_t, uint32_t, me::ref::sad_blocks16u<4>>)->Name("ref/blocks4x4_16u");
BENCHMARK(BM_blocks<uint16_t, uint32_t, me::sse2::sad_blocks16u<4>>)->Name("sse2/blocks4x4_16u");
BENCHMARK(BM_line<me::ref::sad_line<16>>)->Name("ref/line16x16_x32");
BENCHMARK(BM_line<me::sse2::sad_line<16>>)->Name("sse2/line16x16_x32");
BENCHMARK(BM_line<me::ref::sad_line<8>>)->Name("ref/line8x8_x32");
BENCHMARK(BM_line<me::sse2::sad_line<8>>)->Name("sse2/line8x8_x32");
BENCHMARK(BM_line<me::ref::sad_line<4>>)->Name("ref/line4x4_x32");
BENCHMARK(BM_line<me::sse2::sad_line<4>>)->Name("sse2/line4x4_x32");
BENCHMARK(BM_line<me::ref::sad_line<2>>)->Name("ref/line2x2_x32");
BENCHMARK(BM_line<me::sse2::sad_line<2>>)->Name("sse2/line2x2_x32");
BENCHMARK(BM_frame_field<uint8_t, me::ref::frame_field<uint8_t>>)->Name("ref/framefield_8u");
BENCHMARK(BM_frame_field<uint8_t, me::sse2::frame_field>)->Name("sse2/framefield_8u");
BENCHMARK(BM_frame_field<int16_t, me::ref::frame_field<int16_t>>)->Name("ref/framefield_16s");
BENCHMARK(BM_frame_field<int16_t, me::sse2::frame_field>)->Name("sse2/framefield_16s");
BENCHMARK(BM_subsad<me::ref::sub_sad8x8>)->Name("ref/subsad8x8");
BENCHMARK(BM_subsad<me::sse2::sub_sad8x8>)->Name("sse2/subsad8x8");
#endif

// The exports, checks and dispatch included.
void BM_export_sad16x16(benchmark::State& st) {
  const auto& p = planes();
  int32_t s;
  for (auto _ : st) {
    huxiSAD16x16_8u32s(p.c(), kStep, p.r(), kStep, &s, 0);
    benchmark::DoNotOptimize(s);
  }
}
BENCHMARK(BM_export_sad16x16)->Name("export/huxiSAD16x16_8u32s");
void BM_export_sad8x8(benchmark::State& st) {
  const auto& p = planes();
  int32_t s;
  for (auto _ : st) {
    huxiSAD8x8_8u32s_C1R(p.c(), kStep, p.r(), kStep, &s, 0);
    benchmark::DoNotOptimize(s);
  }
}
BENCHMARK(BM_export_sad8x8)->Name("export/huxiSAD8x8_8u32s_C1R");
void BM_export_xni(benchmark::State& st) {
  const auto& p = planes();
  uint16_t out[32];
  uint32_t idx;
  for (auto _ : st) {
    huxiSAD16x16xNI_8u16u_C1R(p.c(), kStep, p.r(), kStep, out, 32, &idx);
    benchmark::DoNotOptimize(idx);
  }
  st.SetItemsProcessed(st.iterations() * 32);
}
BENCHMARK(BM_export_xni)->Name("export/huxiSAD16x16xNI_8u16u_C1R/x32");

}  // namespace

BENCHMARK_MAIN();
