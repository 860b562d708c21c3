// The bit cursors under every entropy decoder: the word form against a model
// that reads one bit at a time, the byte form reader and writer round trip.
#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "common/bits.h"

namespace {

using hux::bits::ByteReader;
using hux::bits::ByteWriter;
using hux::bits::WordReader;

// Bit i of the stream (0 = first) in the word form: words are consumed from bit 31 down.
uint32_t word_bit(const std::vector<uint32_t>& w, size_t i) { return (w[i / 32] >> (31 - i % 32)) & 1u; }

TEST(WordReader, RandomFieldsAgainstBitModel) {
  std::mt19937 rng(11);
  std::vector<uint32_t> w(64);
  for (auto& x : w) x = rng();
  std::uniform_int_distribution<int> len(1, 32), back(0, 32), start(0, 31);
  for (int trial = 0; trial < 200; ++trial) {
    const int off0 = start(rng);
    WordReader r(w.data(), off0);
    size_t pos = static_cast<size_t>(31 - off0);  // stream index of the next bit
    while (pos + 64 < w.size() * 32) {
      const int n = len(rng);
      uint32_t model = 0;
      for (int i = 0; i < n; ++i) model = (model << 1) | word_bit(w, pos + static_cast<size_t>(i));
      ASSERT_EQ(r.peek(n), model);
      ASSERT_EQ(r.read(n), model);
      pos += static_cast<size_t>(n);
      const int g = std::min<int>(back(rng), n);  // give back part of what was read
      r.give_back(g);
      pos -= static_cast<size_t>(g);
      ASSERT_EQ(static_cast<size_t>(r.ptr() - w.data()), pos / 32);
      ASSERT_EQ(r.offset(), 31 - static_cast<int>(pos % 32));
    }
  }
}

TEST(WordReader, OffsetThirtyOneWithinWordDoesNotTouchNextWord) {
  // The reader must not look at the following word unless a field reaches it;
  // a one-word buffer under the sanitizer shows any stray read.
  std::vector<uint32_t> one{0xA5000000u};
  WordReader r(one.data(), 31);
  EXPECT_EQ(r.read(8), 0xA5u);
  EXPECT_EQ(r.read(24), 0u);
  EXPECT_EQ(r.ptr(), one.data() + 1);
  EXPECT_EQ(r.offset(), 31);
}

TEST(ByteWriter, KeepsEarlierBitsZeroesLaterOnesAndRoundTrips) {
  std::mt19937 rng(5);
  std::uniform_int_distribution<int> len(1, 32);
  for (int trial = 0; trial < 100; ++trial) {
    std::vector<uint8_t> buf(256, 0xFF);  // not pre-cleared on purpose
    std::vector<std::pair<uint32_t, int>> fields;
    const int off0 = static_cast<int>(rng() % 8);
    const uint8_t first = buf[0];
    ByteWriter w(buf.data(), off0);
    size_t bits = 0;
    while (bits < 1500) {
      const int n = len(rng);
      const uint32_t v = rng() & hux::bits::mask32(n);
      w.put(v, n);
      fields.emplace_back(v, n);
      bits += static_cast<size_t>(n);
      // Everything behind the last written bit up to the end of its byte is zero.
      if (w.offset()) {
        ASSERT_EQ(buf[static_cast<size_t>(w.ptr() - buf.data())] & (0xFF >> w.offset()), 0);
      }
    }
    EXPECT_EQ(static_cast<size_t>(w.ptr() - buf.data()) * 8 + static_cast<size_t>(w.offset()), bits + static_cast<size_t>(off0));
    if (off0) {
      EXPECT_EQ(buf[0] >> (8 - off0), first >> (8 - off0));
    }
    ByteReader r(buf.data(), off0);
    for (auto [v, n] : fields) ASSERT_EQ(r.read(n), v);
  }
}

}  // namespace
