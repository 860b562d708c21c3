// H.264 dequantisation tables, all derived at compile time from the six rows of
// normalisation values v(m, class) (m = QP mod 6) and the class of each 4x4
// position. Nothing here is written by hand beyond those 18 numbers.
#pragma once

#include <array>
#include <cstdint>

namespace hux::h264 {

// v(m, class): class 0 = both row and column even, 1 = both odd, 2 = mixed.
inline constexpr int32_t kNormAdjust[6][3] = {
    {10, 16, 13}, {11, 18, 14}, {13, 20, 16}, {14, 23, 18}, {16, 25, 20}, {18, 29, 23},
};

// Largest QP any export indexes with (32-bit 4x4 forms, 14-bit samples).
inline constexpr int kQpMax = 87;
inline constexpr int kQpTableSize = kQpMax + 1;
// Largest QP of the 8-bit luma exports.
inline constexpr int kQpMax8 = 51;

constexpr int class4x4(int pos) {
  const int r = pos >> 2, c = pos & 3;
  return ((r | c) & 1) == 0 ? 0 : ((r & c) & 1) ? 1 : 2;
}

// QP / 6 and QP mod 6 by lookup, over every QP an export accepts (and the
// chroma 4:2:2 DC's QP + 3).
inline constexpr auto kQpDiv6 = [] {
  std::array<uint8_t, kQpTableSize> t{};
  for (int q = 0; q < kQpTableSize; ++q) t[q] = static_cast<uint8_t>(q / 6);
  return t;
}();
inline constexpr auto kQpMod6 = [] {
  std::array<uint8_t, kQpTableSize> t{};
  for (int q = 0; q < kQpTableSize; ++q) t[q] = static_cast<uint8_t>(q % 6);
  return t;
}();

// v(QP mod 6, class) << (QP / 6), by QP and class.
inline constexpr auto kDequantByClass = [] {
  std::array<std::array<int32_t, 3>, kQpMax8 + 1> t{};
  for (int q = 0; q <= kQpMax8; ++q)
    for (int c = 0; c < 3; ++c) t[q][c] = kNormAdjust[q % 6][c] << (q / 6);
  return t;
}();

// The same by QP and 4x4 raster position, in 16 bits (largest entry 29 << 8).
inline constexpr auto kDequantByPos = [] {
  std::array<std::array<int16_t, 16>, kQpMax8 + 1> t{};
  for (int q = 0; q <= kQpMax8; ++q)
    for (int i = 0; i < 16; ++i) t[q][i] = static_cast<int16_t>(kNormAdjust[q % 6][class4x4(i)] << (q / 6));
  return t;
}();

// LevelScale4x4 for a flat weighting matrix: 16 x v(m, class of position).
inline constexpr auto kFlatLevelScale = [] {
  std::array<std::array<int16_t, 16>, 6> t{};
  for (int m = 0; m < 6; ++m)
    for (int i = 0; i < 16; ++i) t[m][i] = static_cast<int16_t>(16 * kNormAdjust[m][class4x4(i)]);
  return t;
}();

// Intra 16x16 luma DC scale: the flat-matrix DC scaling with its 1/64 folded
// in as far as the shift allows (v for QP below 12, v << (QP/6 - 2) above).
inline constexpr auto kLumaDcScale = [] {
  std::array<int32_t, kQpMax8 + 1> t{};
  for (int q = 0; q <= kQpMax8; ++q) t[q] = q < 12 ? kNormAdjust[q % 6][0] : kNormAdjust[q % 6][0] << (q / 6 - 2);
  return t;
}();

// Squared norms of the 4x4 core transform's basis pairs, by position.
inline constexpr auto kTransformNorm = [] {
  std::array<int32_t, 16> t{};
  constexpr int32_t by_class[3] = {16, 25, 20};
  for (int i = 0; i < 16; ++i) t[i] = by_class[class4x4(i)];
  return t;
}();

// Forward quantisation multipliers: v x MF x norm is 2^21 to within rounding,
// so MF = round(2^21 / (v x norm)).
inline constexpr auto kQuantMF = [] {
  std::array<std::array<int32_t, 16>, 6> t{};
  for (int m = 0; m < 6; ++m)
    for (int i = 0; i < 16; ++i) {
      const int32_t den = kNormAdjust[m][class4x4(i)] * kTransformNorm[i];
      t[m][i] = ((int32_t{1} << 21) + den / 2) / den;
    }
  return t;
}();

static_assert(kQuantMF[0][0] == 13107 && kQuantMF[0][5] == 5243 && kQuantMF[0][1] == 8066);
static_assert(kQuantMF[1][0] == 11916 && kQuantMF[1][5] == 4660 && kQuantMF[1][1] == 7490);
static_assert(kQuantMF[2][0] == 10082 && kQuantMF[2][5] == 4194 && kQuantMF[2][1] == 6554);
static_assert(kQuantMF[3][0] == 9362 && kQuantMF[3][5] == 3647 && kQuantMF[3][1] == 5825);
static_assert(kQuantMF[4][0] == 8192 && kQuantMF[4][5] == 3355 && kQuantMF[4][1] == 5243);
static_assert(kQuantMF[5][0] == 7282 && kQuantMF[5][5] == 2893 && kQuantMF[5][1] == 4559);
static_assert(kDequantByPos[51][5] == 23 << 8 && kLumaDcScale[51] == 14 << 6 && kLumaDcScale[11] == 18);

}  // namespace hux::h264
