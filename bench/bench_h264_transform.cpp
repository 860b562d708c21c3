// H.264 dequantisation and inverse transforms: each reference kernel beside its
// SSE2 twin, then every export as a caller sees it, in ns per call. The kernels
// are data-independent in time, so in-place ones run on their own output.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <random>

#include "h264/transform_kernels.h"
#include "huxvc.h"

namespace {

namespace h = hux::h264;

struct Data {
  alignas(16) int16_t c16[64];
  alignas(16) int16_t work16[72];
  alignas(16) int16_t scale[72] = {};
  alignas(16) int32_t c32[64];
  alignas(16) int32_t work32[64];
  alignas(16) uint8_t pred[16 * 16];
  alignas(16) uint8_t dst[16 * 16];
  alignas(16) uint16_t pred16[16 * 16];
  alignas(16) uint16_t dst16[16 * 16];
  int16_t dc = 100;
  int32_t dc32 = 100;
  Data() {
    std::mt19937 rng(7);
    for (int i = 0; i < 64; ++i) {
      c16[i] = static_cast<int16_t>(static_cast<int>(rng() % 61) - 30);
      c32[i] = c16[i];
      scale[i] = static_cast<int16_t>(16 * (1 + rng() % 30));
    }
    for (int i = 0; i < 256; ++i) {
      pred[i] = static_cast<uint8_t>(rng());
      pred16[i] = static_cast<uint16_t>(rng() & 1023);
    }
  }
};
Data& D() {
  static Data d;
  return d;
}

#define HUX_BENCH_PAIR(name, body)                                   \
  template <int Sse>                                                 \
  void BM_##name(benchmark::State& state) {                          \
    Data& d = D();                                                   \
    for (auto _ : state) {                                           \
      if constexpr (Sse) {                                           \
        namespace k = h::sse2;                                       \
        body;                                                        \
      } else {                                                       \
        namespace k = h::ref;                                        \
        body;                                                        \
      }                                                              \
      benchmark::ClobberMemory();                                    \
    }                                                                \
  }                                                                  \
  BENCHMARK_TEMPLATE(BM_##name, 0)->Name("ref/" #name);              \
  BENCHMARK_TEMPLATE(BM_##name, 1)->Name("sse2/" #name);

#if defined(HUX_SSE2) && HUX_SSE2
HUX_BENCH_PAIR(dequant_transform_residual, k::dequant_transform_residual(d.work16, 8, nullptr, 1, 28))
HUX_BENCH_PAIR(dequant_transform_residual_add,
               k::dequant_transform_residual_add(d.pred, 16, d.c16, nullptr, d.dst, 16, 28, 1))
HUX_BENCH_PAIR(quant_inv_add_pred4x4, k::quant_inv_add_pred4x4(d.pred, 16, d.c16, nullptr, d.dst, 16, 28, 1, nullptr))
HUX_BENCH_PAIR(quant_inv_add_pred4x4_qp24_ones,
               k::quant_inv_add_pred4x4(d.pred, 16, d.c16, nullptr, d.dst, 16, 24, 1, d.scale))
HUX_BENCH_PAIR(quant_inv_add_pred4x4_hbd,
               k::quant_inv_add_pred4x4_hbd(d.pred16, 32, d.c32, nullptr, d.dst16, 32, 40, 1, 10, nullptr))
HUX_BENCH_PAIR(transform_residual4x4, k::transform_residual4x4(d.c16, d.work16))
HUX_BENCH_PAIR(transform_residual4x4_32, k::transform_residual4x4_32(d.c32, d.work32))
HUX_BENCH_PAIR(dequant_luma8x8_aligned, k::dequant_luma8x8(d.work16, 5, d.scale))
HUX_BENCH_PAIR(dequant_luma8x8_unaligned, k::dequant_luma8x8(d.work16 + 1, 5, d.scale + 1))
HUX_BENCH_PAIR(dequant_luma8x8_shift, k::dequant_luma8x8(d.work16, 7, d.scale))
HUX_BENCH_PAIR(idct8x8_add, k::idct8x8_add(d.pred, 16, d.c16, d.dst, 16))
HUX_BENCH_PAIR(idct8x8_add_hbd, k::idct8x8_add_hbd(d.pred16, 32, d.c32, d.dst16, 32, 1023))
HUX_BENCH_PAIR(luma_dc_dequant, k::luma_dc_dequant(d.work16, 28))
HUX_BENCH_PAIR(luma_dc_dequant_low_qp, k::luma_dc_dequant(d.work16, 4))
#endif

// Reference-only kernels.
#define HUX_BENCH_REF(name, body)                       \
  void BM_ref_##name(benchmark::State& state) {         \
    Data& d = D();                                      \
    for (auto _ : state) {                              \
      body;                                             \
      benchmark::ClobberMemory();                       \
    }                                                   \
  }                                                     \
  BENCHMARK(BM_ref_##name)->Name("ref/" #name);

HUX_BENCH_REF(dequant_transform_residual_sisp,
              h::ref::dequant_transform_residual_sisp(d.work16, d.c16, nullptr, 1, 28, 30, 0))
HUX_BENCH_REF(chroma_dc_dequant, h::ref::chroma_dc_dequant(d.work16, 28))
HUX_BENCH_REF(chroma_dc_dequant_sisp, h::ref::chroma_dc_dequant_sisp(d.work16, d.c16, 28, 30, 1))
HUX_BENCH_REF(quant_inv_luma_dc_16s, h::ref::quant_inv_luma_dc(d.work16, 28, nullptr))
HUX_BENCH_REF(quant_inv_luma_dc_32s, h::ref::quant_inv_luma_dc(d.work32, 60, nullptr))
HUX_BENCH_REF(quant_inv_chroma_dc2x2_16s, h::ref::quant_inv_chroma_dc2x2(d.work16, 28, nullptr))
HUX_BENCH_REF(quant_inv_chroma_dc2x2_32s, h::ref::quant_inv_chroma_dc2x2(d.work32, 60, nullptr))
HUX_BENCH_REF(quant_inv_chroma_dc2x4_16s, h::ref::quant_inv_chroma_dc2x4(d.work16, 28, nullptr))
HUX_BENCH_REF(quant_inv_chroma_dc2x4_32s, h::ref::quant_inv_chroma_dc2x4(d.work32, 60, nullptr))
HUX_BENCH_REF(dequant_luma8x8_32, h::ref::dequant_luma8x8_32(d.work32, 9, d.scale))

// Every export.
#define HUX_BENCH_EXPORT(name, call)                   \
  void BM_export_##name(benchmark::State& state) {     \
    Data& d = D();                                     \
    for (auto _ : state) {                             \
      benchmark::DoNotOptimize(call);                  \
      benchmark::ClobberMemory();                      \
    }                                                  \
  }                                                    \
  BENCHMARK(BM_export_##name)->Name("export/" #name);

HUX_BENCH_EXPORT(DequantTransformResidual, huxiDequantTransformResidual_H264_16s_C1I(d.work16, 8, nullptr, 1, 28))
HUX_BENCH_EXPORT(DequantTransformResidual_SISP,
                 huxiDequantTransformResidual_SISP_H264_16s_C1I(d.work16, d.c16, nullptr, 1, 28, 30, 0))
HUX_BENCH_EXPORT(DequantTransformResidualAndAdd,
                 huxiDequantTransformResidualAndAdd_H264_16s_C1I(d.pred, d.c16, nullptr, d.dst, 16, 16, 28, 1))
HUX_BENCH_EXPORT(TransformDequantLumaDC, huxiTransformDequantLumaDC_H264_16s_C1I(d.work16, 28))
HUX_BENCH_EXPORT(TransformDequantChromaDC, huxiTransformDequantChromaDC_H264_16s_C1I(d.work16, 28))
HUX_BENCH_EXPORT(TransformDequantChromaDC_SISP,
                 huxiTransformDequantChromaDC_SISP_H264_16s_C1I(d.work16, d.c16, 28, 30, 1))
HUX_BENCH_EXPORT(TransformQuantInvLumaDC4x4_16s, huxiTransformQuantInvLumaDC4x4_H264_16s_C1I(d.work16, 28, nullptr))
HUX_BENCH_EXPORT(TransformQuantInvLumaDC4x4_32s, huxiTransformQuantInvLumaDC4x4_H264_32s_C1I(d.work32, 60, nullptr))
HUX_BENCH_EXPORT(TransformQuantInvChromaDC2x2_16s,
                 huxiTransformQuantInvChromaDC2x2_H264_16s_C1I(d.work16, 28, nullptr))
HUX_BENCH_EXPORT(TransformQuantInvChromaDC2x2_32s,
                 huxiTransformQuantInvChromaDC2x2_H264_32s_C1I(d.work32, 60, nullptr))
HUX_BENCH_EXPORT(TransformQuantInvChromaDC2x4_16s,
                 huxiTransformQuantInvChromaDC2x4_H264_16s_C1I(d.work16, 28, nullptr))
HUX_BENCH_EXPORT(TransformQuantInvChromaDC2x4_32s,
                 huxiTransformQuantInvChromaDC2x4_H264_32s_C1I(d.work32, 60, nullptr))
HUX_BENCH_EXPORT(TransformQuantInvAddPred4x4_16s,
                 huxiTransformQuantInvAddPred4x4_H264_16s_C1IR(d.pred, 16, d.c16, nullptr, d.dst, 16, 24, 1, d.scale))
HUX_BENCH_EXPORT(TransformQuantInvAddPred4x4_32s,
                 huxiTransformQuantInvAddPred4x4_H264_32s_C1IR(d.pred16, 32, d.c32, nullptr, d.dst16, 32, 40, 1, 10,
                                                               nullptr))
HUX_BENCH_EXPORT(QuantLuma8x8Inv_16s, huxiQuantLuma8x8Inv_H264_16s_C1I(d.work16, 5, d.scale))
HUX_BENCH_EXPORT(QuantInvLuma8x8_32s, huxiQuantInvLuma8x8_H264_32s_C1I(d.work32, 9, d.scale))
HUX_BENCH_EXPORT(TransformLuma8x8InvAddPred, huxiTransformLuma8x8InvAddPred_H264_16s8u_C1R(d.pred, 16, d.c16, d.dst, 16))
HUX_BENCH_EXPORT(TransformInvAddPredLuma8x8_32s16u,
                 huxiTransformInvAddPredLuma8x8_H264_32s16u_C1R(d.pred16, 32, d.c32, d.dst16, 32, 10))
HUX_BENCH_EXPORT(TransformResidual4x4Inv_16s, huxiTransformResidual4x4Inv_H264_16s_C1(d.c16, d.work16))
HUX_BENCH_EXPORT(TransformResidual4x4Inv_32s, huxiTransformResidual4x4Inv_H264_32s_C1(d.c32, d.work32))

}  // namespace

BENCHMARK_MAIN();
