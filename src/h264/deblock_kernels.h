// H.264 deblocking kernels. The reference versions in namespace ref are the
// plain statement of the loop filter, one sample line at a time, for every
// macroblock form (luma, 4:2:0 and 4:2:2 chroma, MBAFF left edges) and both
// sample widths; the SSE2 versions of the 8-bit luma and 4:2:0 chroma forms
// must agree with them bit for bit on every input.
//
// One call filters every edge of one direction of one macroblock plane, from
// the outer edge inwards, so each edge sees what the previous one wrote.
// Samples left of (above) the macroblock are the p side of its outer edge.
//
// Thresholds are used as given (alpha, beta and tc0 are already scaled for
// the bit depth by the caller). bS 0 leaves a segment alone, bS 4 exactly
// selects the strong filter, every other value the normal one; an edge whose
// four bS bytes are all zero is passed over whole.
#pragma once

#include <cstdint>
#include <cstdlib>

#include "common/saturate.h"
#include "common/simd.h"

namespace hux::h264 {

// Where an edge's bS, tc0 and thresholds come from, by macroblock form.
struct DeblockShape {
  int edges;      // edges in the call, 4 samples apart
  int length;     // samples along an edge
  int segShift;   // sample i along an edge belongs to segment i >> segShift
  int bsStride;   // bS bytes from one edge to the next
  bool abByEdge;  // alpha/beta entry k (else 0 for the outer edge, 1 inside)
  bool luma;      // luma filter (p1/q1 and the strong 3-tap sides)
  bool firstStrong;  // the strong decision of all samples from the edge's first bS byte
};
inline constexpr DeblockShape kLuma{4, 16, 2, 4, false, true, false};
inline constexpr DeblockShape kChroma420{2, 8, 1, 8, true, false, false};
inline constexpr DeblockShape kChroma422Hor{4, 8, 1, 4, false, false, true};
inline constexpr DeblockShape kChroma422Ver{2, 16, 2, 8, true, false, false};
inline constexpr DeblockShape kLumaMbaff{1, 8, 1, 4, false, true, false};
inline constexpr DeblockShape kChromaMbaff{1, 4, 0, 4, false, false, false};

// Largest sample of a bit depth; depths outside 0..16 act as the nearer end.
constexpr int32_t deblock_max(int32_t bitDepth) {
  return bitDepth <= 0 ? 0 : bitDepth >= 16 ? 65535 : (1 << bitDepth) - 1;
}

namespace ref {

// One sample line across an edge: q points at q0, `across` is the element
// distance from one sample to the next across the edge (p0 at q[-across]).
template <class T>
inline void filter_line(T* q, intptr_t across, bool luma, int32_t alpha, int32_t beta, int32_t bs, bool strong,
                        int32_t tc0, int32_t maxv) {
  if (bs == 0) return;
  auto at = [&](int k) -> T& { return q[k * across]; };
  const int32_t p0 = at(-1), p1 = at(-2), q0 = at(0), q1 = at(1);
  if (std::abs(p0 - q0) >= alpha || std::abs(p1 - p0) >= beta || std::abs(q1 - q0) >= beta) return;
  if (!luma) {
    if (strong) {
      at(-1) = static_cast<T>((2 * p1 + p0 + q1 + 2) >> 2);
      at(0) = static_cast<T>((2 * q1 + q0 + p1 + 2) >> 2);
    } else {
      const int32_t tc = tc0 + 1;
      const int32_t d = clip(((q0 - p0) * 4 + (p1 - q1) + 4) >> 3, -tc, tc);
      at(-1) = static_cast<T>(clip(p0 + d, 0, maxv));
      at(0) = static_cast<T>(clip(q0 - d, 0, maxv));
    }
    return;
  }
  const int32_t p2 = at(-3), q2 = at(2);
  const bool ap = std::abs(p2 - p0) < beta, aq = std::abs(q2 - q0) < beta;
  if (strong) {
    const bool near = std::abs(p0 - q0) < (alpha >> 2) + 2;
    if (ap && near) {
      const int32_t p3 = at(-4);
      at(-1) = static_cast<T>((p2 + 2 * p1 + 2 * p0 + 2 * q0 + q1 + 4) >> 3);
      at(-2) = static_cast<T>((p2 + p1 + p0 + q0 + 2) >> 2);
      at(-3) = static_cast<T>((2 * p3 + 3 * p2 + p1 + p0 + q0 + 4) >> 3);
    } else {
      at(-1) = static_cast<T>((2 * p1 + p0 + q1 + 2) >> 2);
    }
    if (aq && near) {
      const int32_t q3 = at(3);
      at(0) = static_cast<T>((p1 + 2 * p0 + 2 * q0 + 2 * q1 + q2 + 4) >> 3);
      at(1) = static_cast<T>((p0 + q0 + q1 + q2 + 2) >> 2);
      at(2) = static_cast<T>((2 * q3 + 3 * q2 + q1 + q0 + p0 + 4) >> 3);
    } else {
      at(0) = static_cast<T>((2 * q1 + q0 + p1 + 2) >> 2);
    }
    return;
  }
  const int32_t tc = tc0 + ap + aq;
  const int32_t d = clip(((q0 - p0) * 4 + (p1 - q1) + 4) >> 3, -tc, tc);
  at(-1) = static_cast<T>(clip(p0 + d, 0, maxv));
  at(0) = static_cast<T>(clip(q0 - d, 0, maxv));
  const int32_t avg = (p0 + q0 + 1) >> 1;
  if (ap) at(-2) = static_cast<T>(p1 + clip((p2 + avg - 2 * p1) >> 1, -tc0, tc0));
  if (aq) at(1) = static_cast<T>(q1 + clip((q2 + avg - 2 * q1) >> 1, -tc0, tc0));
}

// Every edge of one direction of a macroblock plane. `step` is the row step
// in elements; vertical edges are filtered across columns.
template <class T>
inline void filter_edges(const DeblockShape& s, bool vertical, T* p, intptr_t step, const T* alpha, const T* beta,
                         const T* tc0, const uint8_t* bs, int32_t maxv) {
  const intptr_t across = vertical ? 1 : step, along = vertical ? step : 1;
  for (int k = 0; k < s.edges; ++k) {
    const uint8_t* eb = bs + s.bsStride * k;
    if (load<uint32_t>(eb) == 0) continue;
    const int e = s.abByEdge ? k : k > 0;
    const bool first4 = eb[0] == 4;
    T* q = p + 4 * k * across;
    for (int i = 0; i < s.length; ++i) {
      const int seg = i >> s.segShift;
      filter_line(q + i * along, across, s.luma, alpha[e], beta[e], eb[seg], s.firstStrong ? first4 : eb[seg] == 4,
                  tc0[4 * k + seg], maxv);
    }
  }
}

// The 8-bit forms by name (the SSE2 set mirrors the first four).
#define HUX_DEBLOCK_8U(name, shape, vertical)                                                          \
  inline void name(uint8_t* p, int32_t step, const uint8_t* alpha, const uint8_t* beta, const uint8_t* tc0, \
                   const uint8_t* bs) {                                                                 \
    filter_edges<uint8_t>(shape, vertical, p, step, alpha, beta, tc0, bs, 255);                        \
  }
HUX_DEBLOCK_8U(luma_ver, kLuma, true)
HUX_DEBLOCK_8U(luma_hor, kLuma, false)
HUX_DEBLOCK_8U(chroma_ver, kChroma420, true)
HUX_DEBLOCK_8U(chroma_hor, kChroma420, false)
HUX_DEBLOCK_8U(chroma422_ver, kChroma422Ver, true)
HUX_DEBLOCK_8U(chroma422_hor, kChroma422Hor, false)
HUX_DEBLOCK_8U(luma_ver_mbaff, kLumaMbaff, true)
HUX_DEBLOCK_8U(chroma_ver_mbaff, kChromaMbaff, true)
#undef HUX_DEBLOCK_8U

}  // namespace ref
}  // namespace hux::h264

#if defined(HUX_SSE2) && HUX_SSE2
#include "h264/x86/deblock_sse2.h"
#endif
