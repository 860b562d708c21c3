// H.264 dequantisation and inverse-transform kernels for the checker and the
// benchmarks. Coefficients cover the full 16-bit (or 32-bit) range, so the
// trials reach every wrap and saturation of the passes.
#include "h264/transform_kernels.h"
#include "support/check.h"

#if defined(HUX_SSE2) && HUX_SSE2
namespace {

namespace ref = hux::h264::ref;
namespace sse2 = hux::h264::sse2;
using hux::check::Trial;
using hux::check::kAny;

// Null half the time, else one value.
template <class T>
const T* maybe(Trial& t) {
  return t.pick(2) ? nullptr : t.buf<T>(1);
}
// A caller's LevelScale table, or none: realistic values (16 x 1..255) or any.
const int16_t* scale(Trial& t, int n) {
  const int k = t.pick(3);
  return k == 0 ? nullptr : k == 1 ? t.buf<int16_t>(static_cast<size_t>(n), 1, 255) : t.buf<int16_t>(static_cast<size_t>(n));
}

HUX_CHECK(h264, residual4x4, 512) {
  const int32_t qp = t.pick(52), ac = t.pick(3) ? 1 : 0;
  // The export needs at least 8 bytes between rows; odd steps are allowed.
  const auto b = t.rows<int16_t>(4, 4, hux::check::kOdd);
  t.compare("in place", &ref::dequant_transform_residual, &sse2::dequant_transform_residual, b.p, b.step,
            maybe<int16_t>(t), ac * t.pick(3), qp);
  const auto p = t.rows<uint8_t>(4, 4), d = t.rows<uint8_t>(4, 4);
  t.compare("add", &ref::dequant_transform_residual_add, &sse2::dequant_transform_residual_add, p.p, p.step,
            t.buf<int16_t>(16), maybe<int16_t>(t), d.p, d.step, qp, ac);
  t.compare("levelscale add", &ref::quant_inv_add_pred4x4, &sse2::quant_inv_add_pred4x4, p.p, p.step,
            t.buf<int16_t>(16), maybe<int16_t>(t), d.p, d.step, qp, ac, scale(t, 16));
  const int32_t bd = 9 + t.pick(6);
  const auto p16 = t.rows<uint16_t>(4, 4, kAny, 0, (1 << bd) - 1), d16 = t.rows<uint16_t>(4, 4);
  t.compare("levelscale add 16u", &ref::quant_inv_add_pred4x4_hbd, &sse2::quant_inv_add_pred4x4_hbd, p16.p, p16.step,
            t.buf<int32_t>(16), maybe<int32_t>(t), d16.p, d16.step, t.pick(88), ac, bd, scale(t, 16));
  t.compare("bare 16s", &ref::transform_residual4x4, &sse2::transform_residual4x4, t.buf<int16_t>(16), t.buf<int16_t>(16));
  t.compare("bare 32s", &ref::transform_residual4x4_32, &sse2::transform_residual4x4_32, t.buf<int32_t>(16),
            t.buf<int32_t>(16));
}

// The 8x8 dequantiser has an aligned path for an aligned block and table: the
// trials pair every alignment of the one with every alignment of the other.
HUX_CHECK(h264, dequant8x8, 512) {
  t.compare("16s", &ref::dequant_luma8x8, &sse2::dequant_luma8x8, t.buf<int16_t>(64), t.pick(9), t.buf<int16_t>(64));
}

HUX_CHECK(h264, inverse8x8, 512) {
  const auto p = t.rows<uint8_t>(8, 8), d = t.rows<uint8_t>(8, 8);
  t.compare("add", &ref::idct8x8_add, &sse2::idct8x8_add, p.p, p.step, t.buf<int16_t>(64), d.p, d.step);
  // Any depth up to 16; predictions within the depth or beyond it.
  const int32_t maxv = hux::h264::sample_max(1 + t.pick(16));
  const auto p16 = t.rows<uint16_t>(8, 8, kAny, 0, t.pick(2) ? maxv : 65535), d16 = t.rows<uint16_t>(8, 8);
  t.compare("add 16u", &ref::idct8x8_add_hbd, &sse2::idct8x8_add_hbd, p16.p, p16.step, t.buf<int32_t>(64), d16.p,
            d16.step, maxv);
}

HUX_CHECK(h264, luma_dc, 512) {
  t.compare("hadamard", &ref::luma_dc_dequant, &sse2::luma_dc_dequant, t.buf<int16_t>(16), t.pick(52));
}

}  // namespace
#endif
