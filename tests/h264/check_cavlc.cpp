// CAVLC and Exp-Golomb decoders for the checker and the benchmarks: the
// plain reader (the reference) against the buffered one the exports use, on
// valid blocks from the test encoder and on random streams, from every start
// offset. Streams end in words of 1 bits, so that a level or Exp-Golomb prefix
// stops there; the scan table is a block of its own, so a stray index faults.
#include <algorithm>
#include <vector>

#include "h264/cavlc_kernels.h"
#include "support/check.h"
#include "support/h264_cavlc_writer.h"

namespace {

namespace h = hux::h264;
using hux::check::Trial;
using hux::test::CavlcShape;

template <class T>
T* cell(Trial& t, T v) {
  return t.copy(&v, 1);
}

// One block of `shape` (valid, or random bits) behind a random start offset,
// and the cursor, count and block cells the decoders take.
template <class Out>
struct Setup {
  uint32_t** bs;
  int32_t* off;
  int16_t* num;
  Out** blk;
  Setup(Trial& t, CavlcShape shape, int maxNum, int nC) {
    t.stateful();
    const int off0 = t.pick(32);
    hux::test::WordBitWriter w(off0, t.rng());
    if (t.pick(2)) {
      int32_t c[16] = {};
      const int density = 1 + t.pick(4), big = t.pick({2, 20, 3000, 32768});
      for (int i = 0; i < maxNum; ++i)
        if (t.pick(4) < density) c[i] = (t.pick(2) ? 1 : -1) * (t.pick(3) ? 1 : 1 + t.pick(big));
      hux::test::cavlc_encoder().encode(w, c, maxNum, shape, nC);
    } else {
      uint32_t junk[4];
      t.fill(junk, 4, 0, UINT32_MAX);
      for (uint32_t j : junk) w.put(j, 32);
    }
    std::vector<uint32_t> words = w.words(24, 0xffffffffu);
    bs = cell(t, t.copy(words.data(), words.size()));
    // Offsets beyond a word are not checked: the decoders use their low five bits.
    off = cell(t, int32_t{off0 + (t.pick(8) ? 0 : 32 * (t.pick(4) - 2))});
    num = cell(t, int16_t{-1});
    blk = cell(t, t.buf<Out>(16));
  }
};

// Now and then total_zeros and run_before tables that are well formed but
// wrong (one bit, any values) and a scan of any values: the decoders trust
// them, yet must keep every write inside the block.
struct Wild {
  uint32_t table[3];
  const uint32_t* list[16];
  explicit Wild(Trial& t) : table{1, static_cast<uint32_t>(t.rng() & 0xff) << 8, static_cast<uint32_t>(t.rng() & 0xff) << 8} { std::fill_n(list, 16, table); }
};
const uint32_t* const* pick(Trial& t, const Wild& w, const uint32_t* const* standard) {
  return t.pick(8) ? standard : w.list;
}

template <class Out>
void block4x4(Trial& t, const char* label) {
  const auto& tb = hux::test::cavlc_tables();
  const int maxNum = t.pick(2) ? 16 : 15, nC = t.pick(12);
  Setup<Out> s(t, CavlcShape::k4x4, maxNum, nC);
  int32_t wildScan[16];
  t.fill(wildScan, 16, -1000, 1000);
  const int32_t* scan = t.copy(t.pick(8) == 0 ? wildScan : t.pick(2) ? huxH264Zigzag4x4 : huxH264FieldScan4x4, 16);
  const uint32_t* token = nC >= 8 ? nullptr : tb.coeff_token_4x4()[nC < 2 ? 0 : nC < 4 ? 1 : 2];
  const Wild w(t);
  t.compare(label, &h::ref::cavlc4x4<Out>, &h::fast::cavlc4x4<Out>, s.bs, s.off, s.num, s.blk, token, maxNum,
            pick(t, w, tb.total_zeros_4x4()), pick(t, w, tb.run_before()), scan);
}
HUX_CHECK(h264, cavlc4x4, 2048) {
  block4x4<int16_t>(t, "16s");
  block4x4<int32_t>(t, "32s");
}

template <int N, class Out>
void chroma_dc(Trial& t, const char* label) {
  const auto& tb = hux::test::cavlc_tables();
  Setup<Out> s(t, N == 4 ? CavlcShape::kChroma420 : CavlcShape::kChroma422, N, 0);
  const Wild w(t);
  const auto* tz = pick(t, w, N == 4 ? tb.total_zeros_chroma420() : tb.total_zeros_chroma422());
  const auto* rb = pick(t, w, tb.run_before());
  const uint32_t* token = N == 4 ? tb.coeff_token_chroma420() : tb.coeff_token_chroma422();
  t.compare(label, &h::ref::cavlc_chroma_dc<N, Out>, &h::fast::cavlc_chroma_dc<N, Out>, s.bs, s.off, s.num, s.blk,
            token, tz, rb);
  // The quick path knows the standard's total_zeros codes of one coefficient.
  if constexpr (N == 4 && sizeof(Out) == 2)
    t.compare("2x2 16s quick", &h::ref::cavlc_chroma_dc<4, int16_t>, &h::fast::cavlc_chroma_dc420_quick, s.bs, s.off,
              s.num, s.blk, token, tb.total_zeros_chroma420(), rb);
}
HUX_CHECK(h264, cavlc_chroma_dc, 2048) {
  chroma_dc<4, int16_t>(t, "2x2 16s");
  chroma_dc<4, int32_t>(t, "2x2 32s");
  chroma_dc<8, int16_t>(t, "2x4 16s");
  chroma_dc<8, int32_t>(t, "2x4 32s");
}

// A run of Exp-Golomb codes that ends exactly with its last word (the rest of
// that word is codes "1"), decoded to the end: a reader that loads a word
// before it needs it reads past the block.
template <int32_t (*Decode)(uint32_t**, int32_t*, bool)>
int64_t decode_all(uint32_t** bs, int32_t* off, int32_t n, bool isSigned) {
  uint64_t h = 0;
  for (int32_t i = 0; i < n; ++i) h = h * 31 + static_cast<uint32_t>(Decode(bs, off, isSigned));
  return static_cast<int64_t>(h);
}
HUX_CHECK(h264, exp_golomb, 1024) {
  t.stateful();
  const int off0 = t.pick(32);
  hux::test::WordBitWriter w(off0, t.rng());
  int32_t n = 0;
  for (; n < 40; ++n) {
    uint32_t v;
    t.fill(&v, 1, 0, UINT32_MAX >> 1);
    hux::test::put_exp_golomb(w, v >> t.pick(32));
  }
  for (; w.bits() % 32; ++n) w.put_bit(1);
  const std::vector<uint32_t> words = w.words(0);
  t.compare("40 codes", &decode_all<h::ref::exp_golomb>, &decode_all<h::fast::exp_golomb>,
            cell(t, t.copy(words.data(), words.size())), cell(t, int32_t{off0}), n, t.pick(2) == 1);
}

}  // namespace
