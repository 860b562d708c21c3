// CAVLC and Exp-Golomb decoding in blocks (codes) per second, on a stream of
// a realistic mix: mostly small counts of small levels, some dense blocks,
// a few escapes. The plain reader (reference) beside the buffered one, and the
// exports as a caller sees them.
#include <benchmark/benchmark.h>

#include <random>
#include <vector>

#include "support/h264_cavlc_writer.h"
#include "h264/cavlc_kernels.h"
#include "huxvc.h"

namespace {

using hux::test::CavlcShape;
constexpr int kBlocks = 4096;

const hux::test::CavlcTables& tables() { return hux::test::cavlc_tables(); }

struct Stream {
  std::vector<uint32_t> words;
  std::vector<int> nC;
  int coded = 0;
};

// Counts: 55% 0-2, 30% 3-7, 15% dense; levels mostly +-1..3.
Stream make_stream(CavlcShape shape, int n) {
  std::mt19937 rng(42);
  hux::test::CavlcEncoder enc;
  hux::test::WordBitWriter w;
  Stream s;
  for (int b = 0; b < kBlocks; ++b) {
    const int maxNum = n;
    const uint32_t r = rng() % 100;
    int total = r < 55 ? static_cast<int>(rng() % 3) : r < 85 ? 3 + static_cast<int>(rng() % 5) : maxNum - static_cast<int>(rng() % 4);
    if (total > maxNum) total = maxNum;
    if (total < 0) total = 0;
    int32_t c[16] = {};
    int order[16];
    for (int i = 0; i < maxNum; ++i) order[i] = i;
    for (int i = 0; i < total; ++i) {
      // Low frequencies are likelier to be coded.
      std::swap(order[i], order[i + static_cast<int>(rng() % (maxNum - i)) / (1 + static_cast<int>(rng() % 2))]);
      const uint32_t m = rng() % 100;
      const int32_t mag = m < 60 ? 1 : m < 90 ? 2 + static_cast<int32_t>(rng() % 3) : m < 99 ? 5 + static_cast<int32_t>(rng() % 40) : 200 + static_cast<int32_t>(rng() % 3000);
      c[order[i]] = (rng() & 1) ? -mag : mag;
    }
    const int nC = total < 2 ? static_cast<int>(rng() % 2) : total < 5 ? 2 + static_cast<int>(rng() % 2) : total < 9 ? 4 + static_cast<int>(rng() % 4) : 8 + static_cast<int>(rng() % 4);
    s.nC.push_back(nC);
    enc.encode(w, c, maxNum, shape, nC);
    s.coded += total > 0;
  }
  s.words = w.words(1, 0);
  return s;
}

const Stream& stream4x4() {
  static const Stream s = make_stream(CavlcShape::k4x4, 16);
  return s;
}
const Stream& stream420() {
  static const Stream s = make_stream(CavlcShape::kChroma420, 4);
  return s;
}
const Stream& stream422() {
  static const Stream s = make_stream(CavlcShape::kChroma422, 8);
  return s;
}

const uint32_t* token_for(int nC) {
  return nC >= 8 ? nullptr : tables().coeff_token_4x4()[nC < 2 ? 0 : nC < 4 ? 1 : 2];
}

template <class Out, bool kFast>
void BM_cavlc4x4_kernel(benchmark::State& st) {
  const Stream& s = stream4x4();
  std::vector<Out> out(static_cast<size_t>(s.coded) * 16);
  const auto& t = tables();
  for (auto _ : st) {
    uint32_t* p = const_cast<uint32_t*>(s.words.data());
    int32_t off = 31;
    Out* q = out.data();
    int16_t num;
    for (int b = 0; b < kBlocks; ++b) {
      if constexpr (kFast)
        hux::h264::fast::cavlc4x4<Out>(&p, &off, &num, &q, token_for(s.nC[b]), 16, t.total_zeros_4x4(),
                                       t.run_before(), huxH264Zigzag4x4);
      else
        hux::h264::ref::cavlc4x4<Out>(&p, &off, &num, &q, token_for(s.nC[b]), 16, t.total_zeros_4x4(),
                                      t.run_before(), huxH264Zigzag4x4);
    }
    benchmark::DoNotOptimize(q);
  }
  st.SetItemsProcessed(st.iterations() * kBlocks);
}

// The 4x4 exports of both output widths, checks and dispatch included.
template <class Out, auto Decode>
void BM_export_4x4(benchmark::State& st) {
  const Stream& s = stream4x4();
  std::vector<Out> out(static_cast<size_t>(s.coded) * 16);
  const auto& t = tables();
  for (auto _ : st) {
    uint32_t* p = const_cast<uint32_t*>(s.words.data());
    int32_t off = 31;
    Out* q = out.data();
    int16_t num;
    for (int b = 0; b < kBlocks; ++b)
      Decode(&p, &off, &num, &q, s.nC[b], 16, t.coeff_token_4x4(), t.total_zeros_4x4(), t.run_before(),
             huxH264Zigzag4x4);
    benchmark::DoNotOptimize(q);
  }
  st.SetItemsProcessed(st.iterations() * kBlocks);
}

template <int kN, class Out, int kImpl>  // 0 plain, 1 buffered, 2 export
void BM_chroma_dc(benchmark::State& st) {
  const Stream& s = kN == 4 ? stream420() : stream422();
  std::vector<Out> out(static_cast<size_t>(s.coded) * kN);
  const auto& t = tables();
  const uint32_t* tok = kN == 4 ? t.coeff_token_chroma420() : t.coeff_token_chroma422();
  const uint32_t* const* tz = kN == 4 ? t.total_zeros_chroma420() : t.total_zeros_chroma422();
  for (auto _ : st) {
    uint32_t* p = const_cast<uint32_t*>(s.words.data());
    int32_t off = 31;
    Out* q = out.data();
    int16_t num;
    for (int b = 0; b < kBlocks; ++b) {
      if constexpr (kImpl == 0) {
        hux::h264::ref::cavlc_chroma_dc<kN, Out>(&p, &off, &num, &q, tok, tz, t.run_before());
      } else if constexpr (kImpl == 1) {
        hux::h264::fast::cavlc_chroma_dc<kN, Out>(&p, &off, &num, &q, tok, tz, t.run_before());
      } else if constexpr (kN == 4 && sizeof(Out) == 2) {
        huxiDecodeCAVLCChromaDcCoeffs_H264_1u16s(&p, &off, &num, &q, tok, tz, t.run_before());
      } else if constexpr (kN == 4) {
        huxiDecodeCAVLCChromaDcCoeffs_H264_1u32s(&p, &off, &num, &q, tok, tz, t.run_before());
      } else if constexpr (sizeof(Out) == 2) {
        huxiDecodeCAVLCChroma422DcCoeffs_H264_1u16s(&p, &off, &num, &q, tok, tz, t.run_before());
      } else {
        huxiDecodeCAVLCChroma422DcCoeffs_H264_1u32s(&p, &off, &num, &q, tok, tz, t.run_before());
      }
    }
    benchmark::DoNotOptimize(q);
  }
  st.SetItemsProcessed(st.iterations() * kBlocks);
}

// Exp-Golomb codes as slice and macroblock headers use them: mostly short.
const std::vector<uint32_t>& golomb_stream() {
  static const std::vector<uint32_t> s = [] {
    std::mt19937 rng(7);
    hux::test::WordBitWriter w;
    for (int i = 0; i < kBlocks; ++i) {
      const uint32_t r = rng() % 100;
      hux::test::put_exp_golomb(w, r < 70 ? rng() % 4 : r < 95 ? rng() % 64 : rng() % 65536);
    }
    return w.words(1, 0);
  }();
  return s;
}

template <int kImpl>  // 0 plain, 1 buffered, 2 export
void BM_exp_golomb(benchmark::State& st) {
  const auto& s = golomb_stream();
  for (auto _ : st) {
    uint32_t* p = const_cast<uint32_t*>(s.data());
    int32_t off = 31;
    int32_t acc = 0;
    for (int i = 0; i < kBlocks; ++i) {
      if constexpr (kImpl == 0) {
        acc += hux::h264::ref::exp_golomb(&p, &off, false);
      } else if constexpr (kImpl == 1) {
        acc += hux::h264::fast::exp_golomb(&p, &off, false);
      } else {
        int32_t v;
        huxiDecodeExpGolombOne_H264_1u32s(&p, &off, &v, 0);
        acc += v;
      }
    }
    benchmark::DoNotOptimize(acc);
  }
  st.SetItemsProcessed(st.iterations() * kBlocks);
}

BENCHMARK(BM_cavlc4x4_kernel<int16_t, false>)->Name("cavlc4x4_16s/ref");
BENCHMARK(BM_cavlc4x4_kernel<int16_t, true>)->Name("cavlc4x4_16s/fast");
BENCHMARK(BM_export_4x4<int16_t, huxiDecodeCAVLCCoeffs_H264_1u16s>)->Name("cavlc4x4_16s/export");
BENCHMARK(BM_cavlc4x4_kernel<int32_t, false>)->Name("cavlc4x4_32s/ref");
BENCHMARK(BM_cavlc4x4_kernel<int32_t, true>)->Name("cavlc4x4_32s/fast");
BENCHMARK(BM_export_4x4<int32_t, huxiDecodeCAVLCCoeffs_H264_1u32s>)->Name("cavlc4x4_32s/export");
BENCHMARK(BM_chroma_dc<4, int16_t, 0>)->Name("chroma420_16s/ref");
BENCHMARK(BM_chroma_dc<4, int16_t, 1>)->Name("chroma420_16s/fast");
BENCHMARK(BM_chroma_dc<4, int16_t, 2>)->Name("chroma420_16s/export_quick");
BENCHMARK(BM_chroma_dc<4, int32_t, 2>)->Name("chroma420_32s/export");
BENCHMARK(BM_chroma_dc<8, int16_t, 0>)->Name("chroma422_16s/ref");
BENCHMARK(BM_chroma_dc<8, int16_t, 1>)->Name("chroma422_16s/fast");
BENCHMARK(BM_chroma_dc<8, int16_t, 2>)->Name("chroma422_16s/export");
BENCHMARK(BM_chroma_dc<8, int32_t, 2>)->Name("chroma422_32s/export");
BENCHMARK(BM_exp_golomb<0>)->Name("exp_golomb/ref");
BENCHMARK(BM_exp_golomb<1>)->Name("exp_golomb/fast");
BENCHMARK(BM_exp_golomb<2>)->Name("exp_golomb/export");

}  // namespace

BENCHMARK_MAIN();
