// The VLC table walk on tables of one bit per level (16 levels for the longest
// coeff_token code): every code of every CAVLC table decodes to its value and
// length through both readers; a table whose link loops ends as an invalid code.
#include <gtest/gtest.h>

#include <vector>

#include "h264/cavlc_kernels.h"
#include "support/h264_cavlc_writer.h"

namespace {

namespace h = hux::h264;

// One code from bit `off` of s[0]: the bits consumed, negative for an invalid code.
template <class Reader>
int64_t walk(const uint32_t* table, const std::vector<uint32_t>& s, int off, uint32_t mask, uint32_t& v) {
  Reader r(s.data(), off);
  const bool ok = h::detail::decode_vlc(r, table, mask, v);
  uint32_t* p;
  int32_t o;
  r.store(&p, &o);
  return (ok ? 1 : -1) * ((p - s.data()) * 32 + 31 - o);
}

void decode_each(const std::vector<HuxVlcCode>& codes, uint32_t mask) {
  const std::vector<uint32_t> t = hux::test::vlc_table(codes, 1, 1);
  for (const HuxVlcCode& c : codes)
    for (int off : {31, 4, 0}) {  // codes inside a word and across one
      hux::test::WordBitWriter w(off, 0x5A5A5A5Au);
      w.put(c.bits, c.len);
      const std::vector<uint32_t> s = w.words(2, 0xA5A5A5A5u);
      uint32_t v1 = ~0u, v2 = ~0u;
      EXPECT_EQ(walk<h::PlainReader>(t.data(), s, off, mask, v1), 31 - off + c.len);
      EXPECT_EQ(walk<hux::bits::WordBitBuffer>(t.data(), s, off, mask, v2), 31 - off + c.len);
      EXPECT_TRUE(v1 == c.value && v2 == c.value) << c.len << " bits at " << off;
    }
}

TEST(VlcWalk, OneBitPerLevelTables) {
  using hux::test::value_codes;
  for (int k = 0; k < 5; ++k) decode_each(hux::test::token_codes(k), 0xffffu);
  for (size_t i = 1; i < 16; ++i) decode_each(value_codes(huxH264TotalZerosCodes4x4, i), 0xffffffu);
  for (size_t i = 1; i < 4; ++i) decode_each(value_codes(huxH264TotalZerosCodes420, i), 0xffffffu);
  for (size_t i = 1; i < 8; ++i) decode_each(value_codes(huxH264TotalZerosCodes422, i), 0xffffffu);
  for (size_t i = 1; i < 8; ++i) decode_each(value_codes(huxH264RunBeforeCodes, i), 0xffffffu);
}

// Both entries link back to their own table: the walk stops behind 32 examined
// bits; through the export, the cursor, count and block pointer stay as they were.
TEST(VlcWalk, LinkLoopEndsAsInvalidCode) {
  const uint32_t loop[3] = {1, 0x80u, 0x80u}, *tables[3] = {loop, loop, loop};
  std::vector<uint32_t> s = {0x12345678u, 0x9abcdef0u, 0xffffffffu, 0xffffffffu};
  uint32_t v;
  EXPECT_EQ(walk<h::PlainReader>(loop, s, 7, 0xffffu, v), -(24 + 32));
  EXPECT_EQ(walk<hux::bits::WordBitBuffer>(loop, s, 7, 0xffffu, v), -(24 + 32));
  uint32_t* p = s.data();
  int32_t off = 7;
  int16_t num = -1, blk[16], *q = blk;
  EXPECT_EQ(huxiDecodeCAVLCCoeffs_H264_1u16s(&p, &off, &num, &q, 0, 16, tables, tables, tables, huxH264Zigzag4x4),
            huxErrVLCCode);
  EXPECT_TRUE(p == s.data() && off == 7 && num == -1 && q == blk);
}

}  // namespace
