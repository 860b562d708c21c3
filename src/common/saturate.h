// Wrapping and saturating helpers for the widths the kernels fix.
#pragma once

#include <cstdint>

namespace hux {

constexpr int16_t wrap16(int32_t v) { return static_cast<int16_t>(static_cast<uint16_t>(static_cast<uint32_t>(v))); }
constexpr int16_t sat16(int32_t v) { return static_cast<int16_t>(v < -32768 ? -32768 : (v > 32767 ? 32767 : v)); }
constexpr uint16_t satu16(int32_t v) { return static_cast<uint16_t>(v < 0 ? 0 : (v > 65535 ? 65535 : v)); }
constexpr uint8_t clip8(int32_t v) { return static_cast<uint8_t>(v < 0 ? 0 : (v > 255 ? 255 : v)); }
constexpr int32_t clip(int32_t v, int32_t lo, int32_t hi) { return v < lo ? lo : (v > hi ? hi : v); }

}  // namespace hux
