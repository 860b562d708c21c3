// Every kernel pair the checker knows, timed: the reference beside the SSE2
// kernel, nanoseconds per call, on the registrations' own inputs (seeded
// random data, heap blocks, exact row widths). Named ref/<kernel>/<case> and
// sse2/<kernel>/<case>, which scripts/bench_table.py pairs.
#include <benchmark/benchmark.h>

#include "support/check.h"

namespace {

using namespace hux::check;

struct BatchTimer : Timer {
  explicit BatchTimer(benchmark::State& s) : state(s) {}
  void run(void (*body)(void*, int64_t), void* ctx) override {
    while (state.KeepRunningBatch(64)) body(ctx, 64);
  }
  benchmark::State& state;
};

}  // namespace

int main(int argc, char** argv) {
  for (const Kernel& k : kernels()) {
    Trial list(Trial::kList, 1, 0);
    k.fn(list);
    for (const std::string& label : list.labels())
      for (const bool simd : {false, true})
        benchmark::RegisterBenchmark((std::string(simd ? "sse2/" : "ref/") + k.name + "/" + label).c_str(),
                                     [k, label, simd](benchmark::State& s) {
                                       BatchTimer timer(s);
                                       Trial t(Trial::kBench, 1, 0);
                                       t.bench(label, simd, &timer);
                                       k.fn(t);
                                     });
  }
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
}
