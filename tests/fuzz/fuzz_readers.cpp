// Fuzz targets for the stream readers (HUX_FUZZ_READER: 0 CAVLC 4x4, 1 and 2
// chroma DC 2x2 and 2x4, 3 Exp-Golomb; both widths each): every export against
// its plain-reader kernel in status, count, block, block pointer and cursor.
// Input: width, nC, maxNumCoeff, table layout, nulls, offset; for tables made
// from the input 4 widths, 96 entry bytes, a scan; then the stream.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <vector>

#include "h264/cavlc_kernels.h"
#include "huxvc.h"
#include "support/h264_cavlc_writer.h"

namespace ref = hux::h264::ref;
using hux::test::value_codes;
using hux::test::vlc_table;

// The standard code lists in one table layout (widths of the first level and
// of the sub-tables).
struct Layout {
  std::vector<uint32_t> tok[5], tz[3][16], rb[8];
  Layout(int first, int sub) {
    for (int k = 0; k < 5; ++k) tok[k] = vlc_table(hux::test::token_codes(k), first, sub);
    for (size_t i = 1; i < 16; ++i) tz[0][i] = vlc_table(value_codes(huxH264TotalZerosCodes4x4, i), first, sub);
    for (size_t i = 1; i < 4; ++i) tz[1][i] = vlc_table(value_codes(huxH264TotalZerosCodes420, i), first, sub);
    for (size_t i = 1; i < 8; ++i) tz[2][i] = vlc_table(value_codes(huxH264TotalZerosCodes422, i), first, sub);
    for (size_t i = 1; i < 8; ++i) rb[i] = vlc_table(value_codes(huxH264RunBeforeCodes, i), first, sub);
  }
};

#define CHECK(c) ((c) ? (void)0 : (std::fprintf(stderr, "export and reference differ: %s\n", #c), std::abort()))

// One export against its reference. The reference first runs on the padded
// stream to find where the block ends; then both run on a copy that ends one
// word behind that (as far as a look-ahead may reach), so reading further is
// reported. Where a check fails (`expectRef` false) the export must return
// `early` and write nothing.
template <class Out, class Export, class Ref>
static void cross(const std::vector<uint32_t>& padded, int32_t off, int n, Export exp, Ref ref, bool expectRef, HuxResult early) {
  std::vector<Out> be(n, Out(0x5A5A)), br = be;
  uint32_t* pr = const_cast<uint32_t*>(padded.data());
  int32_t oe = off, orr = off;
  int16_t ne = -99, nr = -99;
  Out *qe = be.data(), *qr = br.data();
  if (expectRef) ref(&pr, &orr, &nr, &qr);
  const std::vector<uint32_t> s(padded.begin(), padded.begin() + (expectRef ? pr - padded.data() + 2 : padded.size()));
  br = be, pr = const_cast<uint32_t*>(s.data()), orr = off, nr = -99, qr = br.data();
  uint32_t* pe = pr;
  const HuxResult st = exp(&pe, &oe, &ne, &qe);
  if (!expectRef) return CHECK(st == early && pe == pr && oe == off && ne == -99 && qe == be.data() && be == br);
  CHECK(st == ref(&pr, &orr, &nr, &qr));
  CHECK(pe == pr && oe == orr && ne == nr && be == br && qe - be.data() == qr - br.data());
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const Layout* layouts[3] = {new Layout(8, 8), new Layout(1, 1), new Layout(4, 2)};
  const uint8_t *p = data, *end = data + size;
  auto byte = [&] { return p < end ? *p++ : uint8_t{0}; };
  const int which = 2 * HUX_FUZZ_READER + byte() % 2, nC = static_cast<int8_t>(byte());
  const uint8_t maxByte = byte(), variant = byte() % 4, nulls = byte();
  const int32_t off = static_cast<int8_t>(byte());  // above 31 or negative now and then
  const int maxNum = maxByte < 192 ? 16 : maxByte < 250 ? 15 : maxByte;

  // Tables made from the input: four sub-tables of 1 to 3 bits whose links
  // lead to one of them (loops included), with any values and give-backs.
  std::vector<uint32_t> pool;
  int32_t scan[16];
  const uint32_t *tok[3], *tz[16] = {}, *rb[16] = {}, *dc[2];
  if (variant == 3) {
    size_t start[4], at = 0;
    for (size_t& s0 : start) {
      const uint32_t width = 1 + byte() % 3;
      s0 = at, pool.resize(at += 1 + (size_t{1} << width)), pool[s0] = width;
    }
    for (size_t k = 0; k < 4; ++k)
      for (size_t v = 0; v < (size_t{1} << pool[start[k]]); ++v) {
        uint32_t e = byte() | uint32_t{byte()} << 8 | uint32_t{byte()} << 16;
        if (e & 0x80u) e = static_cast<uint32_t>(start[(e >> 8) & 3]) << 8 | 0x80u;
        else if ((e & 0x7fu) == 0x7fu) e = 0xF0F1u << 8;  // the invalid code, for the random driver
        pool[start[k] + 1 + v] = e;
      }
    for (int32_t& v : scan) v = static_cast<int8_t>(byte());
    tok[0] = tok[1] = tok[2] = dc[0] = dc[1] = pool.data();
    for (int i = 1; i < 16; ++i) tz[i] = rb[i] = pool.data();
  } else {
    const Layout& l = *layouts[variant];
    const int kind = which < 2 ? 0 : which < 4 ? 1 : 2;
    for (int i = 0; i < 16; ++i) {
      if (i < 3) tok[i] = l.tok[i].data();
      if (i) tz[i] = l.tz[kind][i].empty() ? nullptr : l.tz[kind][i].data(), rb[i] = l.rb[i < 7 ? i : 7].data();
      scan[i] = (nulls & 1 ? huxH264FieldScan4x4 : huxH264Zigzag4x4)[i];
    }
    dc[0] = l.tok[3].data(), dc[1] = l.tok[4].data();
  }
  tz[nulls & 0x80 ? nulls & 15 : 0] = rb[nulls & 0x40 ? (nulls >> 2) & 15 : 0] = nullptr;  // entry 0 is never used

  // The stream: the rest of the input, then as many words of 1 bits as the
  // data has words, and 32 more. The cursor has no end: a level or Exp-Golomb
  // prefix runs to the next 1 bit and an escape or Exp-Golomb suffix may be as
  // long as its prefix, so a block reaches at most twice the data's length plus
  // its codes within the padding (coeff_token, 16 levels of at most 13 bits,
  // total_zeros and 15 run_before codes of at most 32 bits): under 1024 bits.
  const size_t bytes = static_cast<size_t>(end - p);
  std::vector<uint32_t> s(2 * ((bytes + 3) / 4) + 32, 0xffffffffu);
  for (size_t i = 0; i < bytes; ++i)  // the first of four bytes on top
    s[i / 4] = (s[i / 4] & ~(0xff000000u >> 8 * (i & 3))) | uint32_t{p[i]} << (24 - 8 * (i & 3));

  const uint32_t* t = nC >= 8 ? nullptr : tok[nC < 2 ? 0 : nC < 4 ? 1 : 2];
  const bool ok4x4 = (maxNum == 15 || maxNum == 16) && nC >= 0;
  // The 16-bit 2x2 export decodes the codes "1" and "01" itself, as the standard's tables do.
  const bool asTables = (variant < 3 && !(nulls & 0xc0)) || hux::bits::WordReader(s.data(), off & 31).peek(2) == 0;
#define X4(Out, f)                                                                                    \
  cross<Out>(s, off, 16, [&](auto... a) { return f(a..., nC, maxNum, tok, tz, rb, scan); },             \
             [&](auto... a) { return ref::cavlc4x4<Out>(a..., t, maxNum, tz, rb, scan); }, ok4x4, huxErrOutOfRange)
#define XDC(Out, N, f)                                                                                \
  cross<Out>(s, off, N, [&](auto... a) { return f(a..., dc[N / 8], tz, rb); },                        \
             [&](auto... a) { return ref::cavlc_chroma_dc<N, Out>(a..., dc[N / 8], tz, rb); }, true, huxOk)
  switch (which) {
    case 0: X4(int16_t, huxiDecodeCAVLCCoeffs_H264_1u16s); break;
    case 1: X4(int32_t, huxiDecodeCAVLCCoeffs_H264_1u32s); break;
    case 2: if (asTables) XDC(int16_t, 4, huxiDecodeCAVLCChromaDcCoeffs_H264_1u16s); break;
    case 3: XDC(int32_t, 4, huxiDecodeCAVLCChromaDcCoeffs_H264_1u32s); break;
    case 4: XDC(int16_t, 8, huxiDecodeCAVLCChroma422DcCoeffs_H264_1u16s); break;
    case 5: XDC(int32_t, 8, huxiDecodeCAVLCChroma422DcCoeffs_H264_1u32s); break;
    default:  // Exp-Golomb: the value goes to a one-entry block
      cross<int32_t>(s, off, 1, [&](uint32_t** b, int32_t* o, int16_t*, int32_t** q) {
          int16_t v = 0x5A5A;  // as the block was filled
          if (which == 7) return huxiDecodeExpGolombOne_H264_1u32s(b, o, *q, nC & 1);
          const HuxResult r = huxiDecodeExpGolombOne_H264_1u16s(b, o, &v, nC & 1 ? 0x80 : 0);
          return **q = v, r;
        }, [&](uint32_t** b, int32_t* o, int16_t*, int32_t** q) {
          const int32_t v = ref::exp_golomb(b, o, nC & 1);
          return **q = which == 7 ? v : static_cast<int16_t>(v), huxOk;
        }, static_cast<uint32_t>(off) <= 31, huxErrBadArg);
  }
  return 0;
}

#ifdef HUX_FUZZ_DRIVER
// Without libFuzzer: inputs of 0 to 599 random bytes (some with many zero
// bytes, for long prefixes and escapes) from a fixed seed, for the given seconds.
int main(int argc, char** argv) {
  const double seconds = argc > 1 ? std::atof(argv[1]) : 10;
  std::mt19937 rng(argc > 2 ? static_cast<unsigned>(std::atol(argv[2])) : 1u);
  const auto t0 = std::chrono::steady_clock::now();
  long runs = 0;
  for (std::vector<uint8_t> buf; std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count() < seconds; ++runs) {
    const uint32_t zeros = rng() % 4;
    buf.resize(rng() % 600);
    for (uint8_t& b : buf) b = rng() % 4 < zeros ? 0 : static_cast<uint8_t>(rng());
    LLVMFuzzerTestOneInput(buf.data(), buf.size());
  }
  std::printf("%s: %ld inputs in %.0f s, no difference\n", argv[0], runs, seconds);
}
#endif
