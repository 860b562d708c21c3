// H.264 intra prediction through the exports: the check order and statuses by
// descriptor, and hand-computed predictions where a mode's rounding, its
// fall-backs or its substitutions decide the result.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

#include "huxvc.h"
#include "support/exports.h"
#include "support/known.h"

namespace {

using namespace hux::check;

// Without neighbours, DC reads nothing outside the block.
const Describe kExports({
    describe("huxiPredictIntra_4x4_H264_8u_C1IR", huxiPredictIntra_4x4_H264_8u_C1IR,
             {out(16), val(4, {{3, huxErrStep, 1}, {-4, huxErrStep, 1}}), val(2, {{9, huxErrOutOfRange, 2}, {-1, huxErrOutOfRange, 2}}), val(0)}),
    describe("huxiPredictIntra_16x16_H264_8u_C1IR", huxiPredictIntra_16x16_H264_8u_C1IR,
             {out(256), val(16, {{15, huxErrStep, 1}}),
              val(2, {{0, huxErrNoNeighbour, 2}, {1, huxErrNoNeighbour, 2}, {3, huxErrNoNeighbour, 2}, {4, huxErrOutOfRange, 2}}), val(64)}),
    describe("huxiPredictIntraChroma8x8_H264_8u_C1IR", huxiPredictIntraChroma8x8_H264_8u_C1IR,
             {out(64), val(8, {{7, huxErrStep, 1}}),
              val(0, {{1, huxErrNoNeighbour, 2}, {2, huxErrNoNeighbour, 2}, {3, huxErrNoNeighbour, 2}, {4, huxErrOutOfRange, 2}}), val(64)}),
});

// A picture of 24 x 17 with the block at (1, 1): row 0 holds the corner and
// the samples above, column 0 the samples to the left.
struct Pic {
  uint8_t s[17][24];
  Pic(std::initializer_list<int> above, std::initializer_list<int> left, int corner) {
    std::memset(s, 0xEE, sizeof s);
    s[0][0] = static_cast<uint8_t>(corner);
    int i = 1;
    for (int v : above) s[0][i++] = static_cast<uint8_t>(v);
    i = 1;
    for (int v : left) s[i++][0] = static_cast<uint8_t>(v);
  }
  uint8_t* blk() { return &s[1][1]; }
  Vals row(int y, int n) { return V(&s[1 + y][1], static_cast<size_t>(n)); }
};
template <class F>
Vals run(Pic p, F f, uint32_t mode, uint32_t avail, std::initializer_list<int> rows, int n) {
  Vals out{f(p.blk(), 24, mode, avail)};
  for (int y : rows) out = cat({out, p.row(y, n)});
  return out;
}
Vals p4(Pic p, uint32_t m, uint32_t a, std::initializer_list<int> rows = {0, 1, 2, 3}) { return run(p, huxiPredictIntra_4x4_H264_8u_C1IR, m, a, rows, 4); }
Vals p16(Pic p, uint32_t m, uint32_t a, std::initializer_list<int> rows) { return run(p, huxiPredictIntra_16x16_H264_8u_C1IR, m, a, rows, 16); }
Vals p8(Pic p, uint32_t m, uint32_t a, std::initializer_list<int> rows) { return run(p, huxiPredictIntraChroma8x8_H264_8u_C1IR, m, a, rows, 8); }

const Pic kRamp({10, 20, 30, 40, 50, 60, 70, 80}, {11, 13, 17, 19}, 5);
const Pic kFlat({}, {}, 0);
// 16x16 plane: above 2x (x 0..15), left and corner 0, so H = 800, V = 0:
// b = (4000 + 32) >> 6 = 63, a = 480; sample (496 + 63 (x - 7)) >> 5.
const Pic kPlane16({0, 2, 4, 6, 8, 10, 12, 14, 16, 18, 20, 22, 24, 26, 28, 30}, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}, 0);
// 16x16 DC: 15 ones above and zeros left: (15 + 16) >> 5 = 0; one more gives 1.
const Pic kDc15({1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 0}, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}, 0);
const Pic kChroma({10, 10, 10, 10, 30, 30, 30, 30}, {50, 50, 50, 50, 90, 90, 90, 91}, 0);

const Known kCases[] = {
    {"V4x4Missing", [] { return p4(kFlat, 0, 0, {0, 3}); }, cat({{11}, all(8, 128)})},
    {"DC4x4Nothing", [] { return p4(kFlat, 2, 0, {0}); }, cat({{0}, all(4, 128)})},
    // (100 + 60 + 4) >> 3 = 20; above only (100 + 2) >> 2 = 25; left only (60 + 2) >> 2 = 15.
    {"DC4x4Both", [] { return p4(kRamp, 2, 3, {0}); }, cat({{0}, all(4, 20)})},
    {"DC4x4Above", [] { return p4(kRamp, 2, 1, {0}); }, cat({{0}, all(4, 25)})},
    {"DC4x4Left", [] { return p4(kRamp, 2, 2, {0}); }, cat({{0}, all(4, 15)})},
    // Above-right absent: 40 four times; the last sample (40 + 3 x 40 + 2) >> 2.
    {"DiagDownLeftNoAboveRight", [] { return p4(kRamp, 3, 1); }, {0, 20, 30, 38, 40, 30, 38, 40, 40, 38, 40, 40, 40, 40, 40, 40, 40}},
    {"DiagDownLeft", [] { return p4(kRamp, 3, 65, {3}); }, {0, 50, 60, 70, 78}},
    {"DiagDownRight", [] { return p4(kRamp, 4, 35); }, {0, 8, 11, 20, 30, 10, 8, 11, 20, 14, 10, 8, 11, 17, 14, 10, 8}},
    {"VerticalRight", [] { return p4(kRamp, 5, 35); }, {0, 8, 15, 25, 35, 8, 11, 20, 30, 10, 8, 15, 25, 14, 8, 11, 20}},
    {"HorizontalDown", [] { return p4(kRamp, 6, 35); }, {0, 8, 8, 11, 20, 12, 10, 8, 8, 15, 14, 12, 10, 18, 17, 15, 14}},
    {"VerticalLeft", [] { return p4(kRamp, 7, 65); }, {0, 15, 25, 35, 45, 20, 30, 40, 50, 25, 35, 45, 55, 30, 40, 50, 60}},
    {"HorizontalUp", [] { return p4(kRamp, 8, 2); }, {0, 12, 14, 15, 17, 15, 17, 18, 19, 18, 19, 19, 19, 19, 19, 19, 19}},
    // Missing corner and left: 128 each, with the warning: (128 + 256 + 10 + 2) >> 2 = 99.
    {"DiagDownRightMissing", [] { return p4(kRamp, 4, 1, {0}); }, {11, 99, 42, 20, 30}},
    {"DiagDownLeftMissing", [] { return p4(kFlat, 3, 0, {0}); }, cat({{11}, all(4, 128)})},
    {"HorizontalUpMissing", [] { return p4(kRamp, 8, 1, {3}); }, {11, 128, 128, 128, 128}},
    {"Plane16", [] { return p16(kPlane16, 3, 35, {0, 15}); },
     cat({{0}, {1, 3, 5, 7, 9, 11, 13, 15, 17, 19, 21, 23, 25, 27, 29, 31}, {1, 3, 5, 7, 9, 11, 13, 15, 17, 19, 21, 23, 25, 27, 29, 31}})},
    {"DC16Rounding", [] { return p16(kDc15, 2, 3, {0}); }, cat({{0}, all(16, 0)})},
    {"DC16Above", [] { return p16(kDc15, 2, 1, {0}); }, cat({{0}, all(16, 1)})},
    {"Plane16NoCorner", [] { return p16(kPlane16, 3, 3, {}); }, {huxErrNoNeighbour}},
    // Refusals with every neighbour present: nothing written (the block stays 0xEE).
    {"Mode9AllNeighbours", [] { return p4(kRamp, 9, 99, {0}); }, cat({{huxErrOutOfRange}, all(4, 0xEE)})},
    {"Step15AllNeighbours16", [] {
       Pic p = kPlane16;
       return cat({{huxiPredictIntra_16x16_H264_8u_C1IR(p.blk(), 15, 0, 35)}, p.row(0, 16)});
     }, cat({{huxErrStep}, all(16, 0xEE)})},
    // Quarters: (40 + 200 + 4) >> 3 = 30, top-right above only 30, bottom-left left only (361 + 2) >> 2 = 90,
    // bottom-right (120 + 361 + 4) >> 3 = 60.
    {"ChromaDC", [] { return p8(kChroma, 0, 3, {0, 7}); }, cat({{0}, all(4, 30), all(4, 30), all(4, 90), all(4, 60)})},
    {"ChromaDCAboveOnly", [] { return p8(kChroma, 0, 1, {0, 7}); }, cat({{0}, all(4, 10), all(4, 30), all(4, 10), all(4, 30)})},
    {"ChromaDCLeftOnly", [] { return p8(kChroma, 0, 2, {0, 7}); }, cat({{0}, all(4, 50), all(4, 50), all(4, 90), all(4, 90)})},
    {"ChromaVerticalIsMode2", [] { return p8(kChroma, 2, 1, {5}); }, cat({{0}, all(4, 10), all(4, 30)})},
};
HUX_KNOWN(IntraKnown, kCases);

}  // namespace
