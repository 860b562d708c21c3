// huxvc-h264dec: an H.264 decoder built on the huxvc primitives.
//
// Reads an Annex B byte stream (CAVLC, progressive frames, 4:2:0, 8-bit: the constrained baseline, main and high
// profiles) and writes the decoded pictures in display order as raw planar YUV, or with --framemd5 one line per
// frame in the format of ffmpeg's framemd5 muxer. Everything the library offers goes through it: Exp-Golomb and
// CAVLC decoding, intra prediction and reconstruction, interpolation, weighted prediction and deblocking. This
// program holds the parsing, motion-vector prediction, picture management and boundary-strength decisions.
//
// What it does not support it refuses with a message and a non-zero exit: CABAC, field pictures and MBAFF,
// 4:2:2 and 4:4:4, bit depths above 8, slice groups (FMO) and arbitrary slice order, SP/SI slices, data
// partitioning, frame-number gaps.
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "huxvc.h"
#include "huxvc_tables.h"

namespace {

// ------------------------------------------------------------------------------------------------ errors
struct DecodeError {
  std::string what;
};
[[noreturn]] void fail(const char* fmt, ...) {
  char buf[512];
  va_list ap;
  va_start(ap, fmt);
  std::vsnprintf(buf, sizeof buf, fmt, ap);
  va_end(ap);
  throw DecodeError{buf};
}
[[noreturn]] void unsupported(const char* what) { fail("unsupported stream: %s", what); }
// A library call that must succeed on a conforming stream; its failure means the stream is not one.
inline void check(HuxResult st, const char* what) {
  if (st < 0) fail("%s failed: %s", what, huxStatusText(st));
}

// ------------------------------------------------------------------------------------------------ MD5
struct Md5 {
  uint32_t h[4] = {0x67452301, 0xefcdab89, 0x98badcfe, 0x10325476};
  uint8_t buf[64];
  uint64_t len = 0;
  static uint32_t rol(uint32_t x, int c) { return (x << c) | (x >> (32 - c)); }
  void block(const uint8_t* p) {
    static const uint32_t K[64] = {
        0xd76aa478, 0xe8c7b756, 0x242070db, 0xc1bdceee, 0xf57c0faf, 0x4787c62a, 0xa8304613, 0xfd469501,
        0x698098d8, 0x8b44f7af, 0xffff5bb1, 0x895cd7be, 0x6b901122, 0xfd987193, 0xa679438e, 0x49b40821,
        0xf61e2562, 0xc040b340, 0x265e5a51, 0xe9b6c7aa, 0xd62f105d, 0x02441453, 0xd8a1e681, 0xe7d3fbc8,
        0x21e1cde6, 0xc33707d6, 0xf4d50d87, 0x455a14ed, 0xa9e3e905, 0xfcefa3f8, 0x676f02d9, 0x8d2a4c8a,
        0xfffa3942, 0x8771f681, 0x6d9d6122, 0xfde5380c, 0xa4beea44, 0x4bdecfa9, 0xf6bb4b60, 0xbebfbc70,
        0x289b7ec6, 0xeaa127fa, 0xd4ef3085, 0x04881d05, 0xd9d4d039, 0xe6db99e5, 0x1fa27cf8, 0xc4ac5665,
        0xf4292244, 0x432aff97, 0xab9423a7, 0xfc93a039, 0x655b59c3, 0x8f0ccc92, 0xffeff47d, 0x85845dd1,
        0x6fa87e4f, 0xfe2ce6e0, 0xa3014314, 0x4e0811a1, 0xf7537e82, 0xbd3af235, 0x2ad7d2bb, 0xeb86d391};
    static const int R[16] = {7, 12, 17, 22, 5, 9, 14, 20, 4, 11, 16, 23, 6, 10, 15, 21};
    uint32_t m[16];
    for (int i = 0; i < 16; ++i) m[i] = p[4 * i] | p[4 * i + 1] << 8 | p[4 * i + 2] << 16 | uint32_t(p[4 * i + 3]) << 24;
    uint32_t a = h[0], b = h[1], c = h[2], d = h[3];
    for (int i = 0; i < 64; ++i) {
      uint32_t f;
      int g;
      if (i < 16) f = (b & c) | (~b & d), g = i;
      else if (i < 32) f = (d & b) | (~d & c), g = (5 * i + 1) & 15;
      else if (i < 48) f = b ^ c ^ d, g = (3 * i + 5) & 15;
      else f = c ^ (b | ~d), g = (7 * i) & 15;
      const uint32_t t = d;
      d = c;
      c = b;
      b = b + rol(a + f + K[i] + m[g], R[(i >> 4) * 4 + (i & 3)]);
      a = t;
    }
    h[0] += a, h[1] += b, h[2] += c, h[3] += d;
  }
  void update(const uint8_t* p, size_t n) {
    size_t used = len & 63;
    len += n;
    if (used) {
      const size_t take = std::min(n, 64 - used);
      std::memcpy(buf + used, p, take);
      p += take, n -= take, used += take;
      if (used < 64) return;
      block(buf);
    }
    for (; n >= 64; p += 64, n -= 64) block(p);
    std::memcpy(buf, p, n);
  }
  std::string hex() {
    const uint64_t bits = len * 8;
    uint8_t pad[72] = {0x80};
    const size_t padLen = ((len & 63) < 56 ? 56 : 120) - (len & 63);
    update(pad, padLen);
    for (int i = 0; i < 8; ++i) pad[i] = uint8_t(bits >> (8 * i));
    update(pad, 8);
    char s[33];
    for (int i = 0; i < 16; ++i) std::snprintf(s + 2 * i, 3, "%02x", (h[i >> 2] >> (8 * (i & 3))) & 0xff);
    return s;
  }
};

// ------------------------------------------------------------------------------------------------ bits
// A NAL unit's payload (emulation prevention removed) as the library's word-form cursor reads it: 32-bit words
// with the first byte in the most significant place. After the payload come words of one bits: a code's prefix
// of zeros ends there at the latest, and the padding is sized from the payload's longest zero run so that the
// longest code any reader can take from the payload stays inside the buffer.
struct Bits {
  std::vector<uint32_t> words;
  uint32_t* p = nullptr;
  int32_t off = 31;
  size_t endBit = 0;  // bits of payload up to and including the stop bit's predecessor
  size_t trailing = 0;  // position of the last 1 bit (the stop bit), or endBit when there is none

  void load(const std::vector<uint8_t>& rbsp) {
    // Longest zero run, in bits: runs longer than 14 bits need whole zero bytes, so only those are measured.
    const size_t size = rbsp.size();
    const uint8_t* d = rbsp.data();
    size_t longest = 14;
    for (const uint8_t* z = size ? static_cast<const uint8_t*>(std::memchr(d, 0, size)) : nullptr; z;) {
      const uint8_t* e = z;
      while (e < d + size && !*e) ++e;
      size_t run = static_cast<size_t>(e - z) * 8;
      if (z > d) run += static_cast<size_t>(__builtin_ctz(z[-1]));
      if (e < d + size) run += static_cast<size_t>(__builtin_clz(*e) - 24);
      longest = std::max(longest, run);
      z = e < d + size ? static_cast<const uint8_t*>(std::memchr(e, 0, static_cast<size_t>(d + size - e))) : nullptr;
    }
    if (longest > 48) fail("a run of %zu zero bits in a NAL unit (longer than any code of a CAVLC stream)", longest);
    const size_t n = (size + 3) / 4;
    words.assign(n + (2 * longest + 64) / 32 + 64, 0xFFFFFFFFu);
    for (size_t i = 0; i + 1 < n || (i < n && size % 4 == 0); ++i) {
      uint32_t w;
      std::memcpy(&w, d + 4 * i, 4);
      words[i] = __builtin_bswap32(w);
    }
    if (size % 4) {  // the last partial word, its missing bytes ones like the padding
      uint32_t w = 0;
      for (size_t j = 4 * (n - 1); j < 4 * n; ++j) w = w << 8 | (j < size ? d[j] : 0xFF);
      words[n - 1] = w;
    }
    p = words.data();
    off = 31;
    endBit = size * 8;
    trailing = endBit;
    for (size_t i = size; i-- > 0;)
      if (d[i]) {
        trailing = i * 8 + 7 - static_cast<size_t>(__builtin_ctz(d[i]));
        break;
      }
  }
  size_t pos() const { return static_cast<size_t>(p - words.data()) * 32 + static_cast<size_t>(31 - off); }
  void guard() const {
    if (pos() > endBit) fail("read past the end of a NAL unit");
  }
  uint32_t u(int n) {  // n <= 32
    if (!n) return 0;
    const uint64_t v = (uint64_t{p[0]} << 32 | p[1]) << (31 - off);
    off -= n;
    if (off < 0) off += 32, ++p;
    return static_cast<uint32_t>(v >> (64 - n));
  }
  bool flag() { return u(1) != 0; }
  uint32_t ue() {
    int32_t v;
    check(huxiDecodeExpGolombOne_H264_1u32s(&p, &off, &v, 0), "Exp-Golomb decoding");
    return static_cast<uint32_t>(v);
  }
  int32_t se() {
    int32_t v;
    check(huxiDecodeExpGolombOne_H264_1u32s(&p, &off, &v, 1), "Exp-Golomb decoding");
    return v;
  }
  uint32_t ueMax(uint32_t max, const char* what) {
    const uint32_t v = ue();
    if (v > max) fail("%s %u out of range (at most %u)", what, v, max);
    return v;
  }
  int32_t seRange(int32_t lo, int32_t hi, const char* what) {
    const int32_t v = se();
    if (v < lo || v > hi) fail("%s %d out of range (%d..%d)", what, v, lo, hi);
    return v;
  }
  bool moreRbsp() const { return pos() < trailing; }
  void align() {
    const int r = (31 - off) & 7;
    if (r) u(8 - r);
  }
};

// ------------------------------------------------------------------------------------------------ tables
const uint8_t kChromaQp[52] = {0,  1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14, 15, 16, 17,
                               18, 19, 20, 21, 22, 23, 24, 25, 26, 27, 28, 29, 29, 30, 31, 32, 32, 33,
                               34, 34, 35, 35, 36, 36, 37, 37, 37, 38, 38, 38, 39, 39, 39, 39};
const uint8_t kAlpha[52] = {0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,   0,   0,   0,   0,   0,   4,   4,
                            5,  6,  7,  8,  9,  10, 12, 13, 15, 17, 20,  22,  25,  28,  32,  36,  40,  45,
                            50, 56, 63, 71, 80, 90, 101, 113, 127, 144, 162, 182, 203, 226, 255, 255};
const uint8_t kBeta[52] = {0, 0, 0, 0, 0, 0, 0, 0,  0,  0,  0,  0,  0,  0,  0,  0,  2,  2,  2,  3,  3,  3,  3,  4,  4,  4,
                           6, 6, 7, 7, 8, 8, 9, 9, 10, 10, 11, 11, 12, 12, 13, 13, 14, 14, 15, 15, 16, 16, 17, 17, 18, 18};
const uint8_t kTc0[52][3] = {
    {0, 0, 0}, {0, 0, 0}, {0, 0, 0}, {0, 0, 0}, {0, 0, 0},    {0, 0, 0},    {0, 0, 0},    {0, 0, 0},    {0, 0, 0},
    {0, 0, 0}, {0, 0, 0}, {0, 0, 0}, {0, 0, 0}, {0, 0, 0},    {0, 0, 0},    {0, 0, 0},    {0, 0, 0},    {0, 0, 1},
    {0, 0, 1}, {0, 0, 1}, {0, 0, 1}, {0, 1, 1}, {0, 1, 1},    {1, 1, 1},    {1, 1, 1},    {1, 1, 1},    {1, 1, 1},
    {1, 1, 2}, {1, 1, 2}, {1, 1, 2}, {1, 1, 2}, {1, 2, 3},    {1, 2, 3},    {2, 2, 3},    {2, 2, 4},    {2, 3, 4},
    {2, 3, 4}, {3, 3, 5}, {3, 4, 6}, {3, 4, 6}, {4, 5, 7},    {4, 5, 8},    {4, 6, 9},    {5, 7, 10},   {6, 8, 11},
    {6, 8, 13}, {7, 10, 14}, {8, 11, 16}, {9, 12, 18}, {10, 13, 20}, {11, 15, 23}, {13, 17, 25}};
// The filter's thresholds for one side of an edge: alpha, beta and the tc0 of bS 1..3 looked up by bS (0 and 4 give 0).
struct EdgeParams {
  uint8_t alpha, beta, tc[5];
};

// coded_block_pattern by codeNum (4:2:0): intra 4x4/8x8 macroblocks, inter macroblocks.
const uint8_t kCbpIntra[48] = {47, 31, 15, 0,  23, 27, 29, 30, 7,  11, 13, 14, 39, 43, 45, 46,
                               16, 3,  5,  10, 12, 19, 21, 26, 28, 35, 37, 42, 44, 1,  2,  4,
                               8,  17, 18, 20, 24, 6,  9,  22, 25, 32, 33, 34, 36, 40, 38, 41};
const uint8_t kCbpInter[48] = {0,  16, 1,  2,  4,  8,  32, 3,  5,  10, 12, 15, 47, 7,  11, 13,
                               14, 6,  9,  31, 35, 37, 42, 44, 33, 34, 36, 40, 39, 43, 45, 46,
                               17, 18, 20, 24, 19, 21, 26, 28, 23, 27, 29, 30, 22, 25, 38, 41};
const uint8_t kDefault4x4[2][16] = {{6, 13, 13, 20, 20, 20, 28, 28, 28, 28, 32, 32, 32, 37, 37, 42},
                                    {10, 14, 14, 20, 20, 20, 24, 24, 24, 24, 27, 27, 27, 30, 30, 34}};
const uint8_t kDefault8x8[2][64] = {
    {6,  10, 10, 13, 11, 13, 16, 16, 16, 16, 18, 18, 18, 18, 18, 23, 23, 23, 23, 23, 23, 25,
     25, 25, 25, 25, 25, 25, 27, 27, 27, 27, 27, 27, 27, 27, 29, 29, 29, 29, 29, 29, 29, 31,
     31, 31, 31, 31, 31, 33, 33, 33, 33, 33, 36, 36, 36, 36, 38, 38, 38, 40, 40, 42},
    {9,  13, 13, 15, 13, 15, 17, 17, 17, 17, 19, 19, 19, 19, 19, 21, 21, 21, 21, 21, 21, 22,
     22, 22, 22, 22, 22, 22, 24, 24, 24, 24, 24, 24, 24, 24, 25, 25, 25, 25, 25, 25, 25, 27,
     27, 27, 27, 27, 27, 28, 28, 28, 28, 28, 30, 30, 30, 30, 32, 32, 32, 33, 33, 35}};
const int kNorm4[6][3] = {{10, 16, 13}, {11, 18, 14}, {13, 20, 16}, {14, 23, 18}, {16, 25, 20}, {18, 29, 23}};
const int kNorm8[6][6] = {{20, 18, 32, 19, 25, 24}, {22, 19, 35, 21, 28, 26}, {26, 23, 42, 24, 33, 31},
                          {28, 25, 45, 26, 35, 33}, {32, 28, 51, 30, 40, 38}, {36, 32, 58, 34, 46, 43}};

struct Scan8 {
  int zz[64];  // scan position to raster index of the 8x8 zig-zag
  Scan8() {
    int i = 0;
    for (int s = 0; s < 15; ++s)
      for (int k = 0; k < 8; ++k) {
        const int r = (s & 1) ? k : s - k;  // odd diagonals run down, even ones up
        const int c = s - r;
        if (r >= 0 && r < 8 && c >= 0 && c < 8) zz[i++] = r * 8 + c;
      }
  }
};
const Scan8 kScan8;

// ------------------------------------------------------------------------------------------------ parameter sets
#ifdef HUXVC_H264DEC_FUZZ
constexpr long kMaxMbs = 1620;  // the fuzz build keeps pictures small (1 MB of samples) so the DPB stays in memory
#else
constexpr long kMaxMbs = 139264;  // the largest frame of any level
#endif
// Scaling lists in raster order: 0..5 the 4x4 lists (intra Y Cb Cr, inter Y Cb Cr), 6..7 the 8x8 lists (intra, inter).
struct ScalingLists {
  uint8_t l4[6][16];
  uint8_t l8[2][64];
  bool flat = true;
  void setFlat() {
    std::memset(l4, 16, sizeof l4);
    std::memset(l8, 16, sizeof l8);
    flat = true;
  }
};

// Reads one scaling list (scan order in the stream) into raster order; false when the default one is asked for.
bool readScalingList(Bits& b, uint8_t* out, int size, const int* scan) {
  int last = 8, next = 8;
  for (int j = 0; j < size; ++j) {
    if (next) {
      const int delta = b.seRange(-128, 127, "delta_scale");
      next = (last + delta + 256) % 256;
      if (j == 0 && next == 0) return false;
    }
    out[scan[j]] = static_cast<uint8_t>(next ? next : last);
    last = out[scan[j]];
  }
  return true;
}

// The list syntax of a parameter set, kept as sent: per list 0 absent, 1 sent, 2 the default asked for.
struct RawLists {
  int state[8] = {};
  uint8_t l4[6][16];
  uint8_t l8[2][64];
};
void readScalingMatrix(Bits& b, RawLists& r, int count) {
  for (int i = 0; i < count; ++i) {
    if (!b.flag()) continue;
    const bool sent = i < 6 ? readScalingList(b, r.l4[i], 16, huxH264Zigzag4x4) : readScalingList(b, r.l8[i - 6], 64, kScan8.zz);
    r.state[i] = sent ? 1 : 2;
  }
}
// Resolves the lists: an absent list takes the fall-back list (the sequence's, or the default without one) for the
// first list of each kind, and the list before it otherwise.
ScalingLists resolveLists(const RawLists& r, const ScalingLists* fallback) {
  ScalingLists s;
  for (int i = 0; i < 8; ++i) {
    uint8_t* l = i < 6 ? s.l4[i] : s.l8[i - 6];
    const int n = i < 6 ? 16 : 64;
    const int* scan = i < 6 ? huxH264Zigzag4x4 : kScan8.zz;
    const uint8_t* def = i < 6 ? kDefault4x4[i / 3] : kDefault8x8[i - 6];
    const bool first = i == 0 || i == 3 || i >= 6;
    if (r.state[i] == 1) std::memcpy(l, i < 6 ? r.l4[i] : r.l8[i - 6], static_cast<size_t>(n));
    else if (r.state[i] == 0 && first && fallback) std::memcpy(l, i < 6 ? fallback->l4[i] : fallback->l8[i - 6], static_cast<size_t>(n));
    else if (r.state[i] == 0 && !first) std::memcpy(l, s.l4[i - 1], 16);
    else
      for (int k = 0; k < n; ++k) l[scan[k]] = def[k];
  }
  s.flat = true;
  for (int i = 0; i < 6; ++i)
    for (int k = 0; k < 16; ++k) s.flat &= s.l4[i][k] == 16;
  for (int i = 0; i < 2; ++i)
    for (int k = 0; k < 64; ++k) s.flat &= s.l8[i][k] == 16;
  return s;
}

struct Sps {
  bool valid = false;
  int profile = 0, level = 0, chromaFormat = 1;
  ScalingLists scaling;
  bool scalingPresent = false;
  int log2MaxFrameNum = 4, pocType = 0, log2MaxPocLsb = 4;
  bool deltaPicOrderAlwaysZero = false;
  int offsetForNonRef = 0, offsetTopToBottom = 0;
  std::vector<int> offsetForRefFrame;
  int maxNumRefFrames = 0;
  bool gapsAllowed = false;
  int mbWidth = 0, mbHeight = 0;
  bool direct8x8Inference = false;
  int cropLeft = 0, cropRight = 0, cropTop = 0, cropBottom = 0;
  int timeNum = 0, timeDen = 0;  // frame duration = timeNum / timeDen seconds, from the timing info
  int maxDecFrameBuffering = -1, numReorderFrames = -1;
};

struct Pps {
  bool valid = false;
  int spsId = 0;
  bool bottomFieldPicOrder = false;
  int numRefIdxActive[2] = {1, 1};
  bool weightedPred = false;
  int weightedBipred = 0;
  int picInitQp = 26;
  int chromaQpOffset[2] = {0, 0};
  bool deblockingControl = false, constrainedIntra = false, redundantPicCnt = false;
  bool transform8x8 = false;
  bool scalingPresent = false;
  RawLists picLists;  // resolved against the sequence when a slice activates the set
};

void skipHrd(Bits& b) {
  const uint32_t cnt = b.ueMax(31, "cpb_cnt_minus1") + 1;
  b.u(8);
  for (uint32_t i = 0; i < cnt; ++i) {
    b.ue();
    b.ue();
    b.u(1);
  }
  b.u(20);
}

void parseVui(Bits& b, Sps& s) {
  if (b.flag() && b.u(8) == 255) b.u(32);  // aspect ratio (extended SAR)
  if (b.flag()) b.u(1);                    // overscan
  if (b.flag()) {                          // video signal type
    b.u(4);
    if (b.flag()) b.u(24);
  }
  if (b.flag()) {  // chroma location
    b.ue();
    b.ue();
  }
  if (b.flag()) {  // timing
    const uint32_t units = b.u(32), scale = b.u(32);
    b.u(1);
    if (units && scale) s.timeNum = static_cast<int>(std::min<uint32_t>(units * 2u, 0x7fffffffu)), s.timeDen = static_cast<int>(std::min<uint32_t>(scale, 0x7fffffffu));
  }
  const bool nal = b.flag();
  if (nal) skipHrd(b);
  const bool vcl = b.flag();
  if (vcl) skipHrd(b);
  if (nal || vcl) b.u(1);
  b.u(1);          // pic_struct_present_flag
  if (b.flag()) {  // bitstream restriction
    b.u(1);
    b.ue();
    b.ue();
    b.ue();
    b.ue();
    s.numReorderFrames = static_cast<int>(b.ueMax(16, "max_num_reorder_frames"));
    s.maxDecFrameBuffering = static_cast<int>(b.ueMax(16, "max_dec_frame_buffering"));
  }
}

void parseSps(Bits& b, Sps* table) {
  Sps s;
  s.profile = static_cast<int>(b.u(8));
  b.u(8);
  s.level = static_cast<int>(b.u(8));
  const uint32_t id = b.ueMax(31, "seq_parameter_set_id");
  s.scaling.setFlat();
  const int p = s.profile;
  if (p == 100 || p == 110 || p == 122 || p == 244 || p == 44 || p == 83 || p == 86 || p == 118 || p == 128 ||
      p == 138 || p == 139 || p == 134 || p == 135) {
    s.chromaFormat = static_cast<int>(b.ueMax(3, "chroma_format_idc"));
    if (s.chromaFormat == 3) b.u(1);
    const uint32_t depthY = b.ue(), depthC = b.ue();
    if (depthY || depthC) unsupported("bit depth above 8");
    if (b.flag()) unsupported("lossless transform bypass");
    s.scalingPresent = b.flag();
    if (s.scalingPresent) {
      if (s.chromaFormat == 3) unsupported("4:4:4 chroma");
      RawLists r;
      readScalingMatrix(b, r, 8);
      s.scaling = resolveLists(r, nullptr);
    }
  }
  if (s.chromaFormat != 1) unsupported(s.chromaFormat == 0 ? "monochrome (4:0:0)" : "4:2:2 or 4:4:4 chroma");
  s.log2MaxFrameNum = static_cast<int>(b.ueMax(12, "log2_max_frame_num_minus4")) + 4;
  s.pocType = static_cast<int>(b.ueMax(2, "pic_order_cnt_type"));
  if (s.pocType == 0) {
    s.log2MaxPocLsb = static_cast<int>(b.ueMax(12, "log2_max_pic_order_cnt_lsb_minus4")) + 4;
  } else if (s.pocType == 1) {
    s.deltaPicOrderAlwaysZero = b.flag();
    s.offsetForNonRef = b.se();
    s.offsetTopToBottom = b.se();
    const uint32_t n = b.ueMax(255, "num_ref_frames_in_pic_order_cnt_cycle");
    for (uint32_t i = 0; i < n; ++i) s.offsetForRefFrame.push_back(b.se());
  }
  s.maxNumRefFrames = static_cast<int>(b.ueMax(16, "max_num_ref_frames"));
  s.gapsAllowed = b.flag();
  s.mbWidth = static_cast<int>(b.ueMax(1023, "pic_width_in_mbs_minus1")) + 1;
  s.mbHeight = static_cast<int>(b.ueMax(1023, "pic_height_in_map_units_minus1")) + 1;
  if (static_cast<long>(s.mbWidth) * s.mbHeight > kMaxMbs) fail("picture of %dx%d macroblocks is too large", s.mbWidth, s.mbHeight);
  if (!b.flag()) unsupported("interlaced coding (field pictures or MBAFF)");
  s.direct8x8Inference = b.flag();
  if (b.flag()) {
    s.cropLeft = static_cast<int>(b.ueMax(8192, "frame_crop_left_offset")) * 2;
    s.cropRight = static_cast<int>(b.ueMax(8192, "frame_crop_right_offset")) * 2;
    s.cropTop = static_cast<int>(b.ueMax(8192, "frame_crop_top_offset")) * 2;
    s.cropBottom = static_cast<int>(b.ueMax(8192, "frame_crop_bottom_offset")) * 2;
    if (s.cropLeft + s.cropRight >= s.mbWidth * 16 || s.cropTop + s.cropBottom >= s.mbHeight * 16)
      fail("frame cropping leaves no picture");
  }
  if (b.flag()) parseVui(b, s);
  b.guard();
  s.valid = true;
  table[id] = std::move(s);
}

void parsePps(Bits& b, Pps* table, const Sps* spsTable) {
  Pps s;
  const uint32_t id = b.ueMax(255, "pic_parameter_set_id");
  s.spsId = static_cast<int>(b.ueMax(31, "seq_parameter_set_id"));
  if (!spsTable[s.spsId].valid) fail("picture parameter set %u refers to a missing sequence parameter set", id);
  if (b.flag()) unsupported("CABAC entropy coding");
  s.bottomFieldPicOrder = b.flag();
  if (b.ue() != 0) unsupported("slice groups (FMO)");
  s.numRefIdxActive[0] = static_cast<int>(b.ueMax(31, "num_ref_idx_l0_default_active_minus1")) + 1;
  s.numRefIdxActive[1] = static_cast<int>(b.ueMax(31, "num_ref_idx_l1_default_active_minus1")) + 1;
  s.weightedPred = b.flag();
  s.weightedBipred = static_cast<int>(b.u(2));
  if (s.weightedBipred == 3) fail("weighted_bipred_idc 3");
  s.picInitQp = 26 + b.seRange(-26, 25, "pic_init_qp_minus26");
  b.se();
  s.chromaQpOffset[0] = s.chromaQpOffset[1] = b.seRange(-12, 12, "chroma_qp_index_offset");
  s.deblockingControl = b.flag();
  s.constrainedIntra = b.flag();
  s.redundantPicCnt = b.flag();
  if (b.moreRbsp()) {
    s.transform8x8 = b.flag();
    s.scalingPresent = b.flag();
    if (s.scalingPresent) readScalingMatrix(b, s.picLists, 6 + (s.transform8x8 ? 2 : 0));
    s.chromaQpOffset[1] = b.seRange(-12, 12, "second_chroma_qp_index_offset");
  }
  b.guard();
  s.valid = true;
  table[id] = std::move(s);
}

// ------------------------------------------------------------------------------------------------ pictures
struct Picture {
  int id = 0;
  int width = 0, height = 0;  // decoded size (whole macroblocks)
  std::vector<uint8_t> planes;
  uint8_t* y = nullptr;
  uint8_t* cb = nullptr;
  uint8_t* cr = nullptr;
  int poc = 0, frameNum = 0, frameNumWrap = 0, longTermIdx = -1;
  int cropLeft = 0, cropRight = 0, cropTop = 0, cropBottom = 0, timeNum = 0, timeDen = 0;  // from its sequence
  bool shortRef = false, longRef = false, needOutput = false;
  bool mmco5 = false;
  // Motion of every 4x4 block (raster order over the picture) for the co-located lookups of direct prediction.
  struct Motion {
    int16_t mv[2][2];  // per list: x, y
    int32_t refId[2];  // per list: id of the picture the reference index stood for (0: none)
    int8_t ref[2];     // per list: reference index, -1 when the list is unused
  };
  std::vector<Motion> mo;  // one entry per 4x4 block, both lists together (one cache line serves a lookup)
  std::vector<uint8_t> intra;  // per macroblock
  bool isRef() const { return shortRef || longRef; }
  void alloc(int mbW, int mbH) {
    width = mbW * 16, height = mbH * 16;
    const size_t ly = static_cast<size_t>(width) * height;
    // The vertical-edge deblocking calls read and rewrite the four columns left of a macroblock even when its left
    // edge is not filtered: for the picture's first sample row that is a few bytes before the plane.
    const size_t lead = 64;
    planes.assign(lead + ly * 3 / 2, 0);
    y = planes.data() + lead, cb = y + ly, cr = cb + ly / 4;
    const size_t nb = ly / 16;
    mo.assign(nb, Motion{{{0, 0}, {0, 0}}, {0, 0}, {-1, -1}});
    intra.assign(static_cast<size_t>(mbW) * mbH, 0);
  }
};

struct WeightEntry {
  int lw = 1, lo = 0, cw[2] = {1, 1}, co[2] = {0, 0};
  bool luma = false, chroma = false;
};

struct SliceHeader {
  int firstMb = 0, type = 0;  // 0 P, 1 B, 2 I
  int ppsId = 0, frameNum = 0, idrPicId = 0;
  bool idr = false;
  int nalRefIdc = 0;
  int pocLsb = 0, deltaPocBottom = 0, deltaPoc[2] = {0, 0};
  bool directSpatial = false;
  int numRefIdxActive[2] = {0, 0};
  struct Mod {
    int idc;
    uint32_t val;
  };
  std::vector<Mod> mods[2];
  int lumaLog2Wd = 0, chromaLog2Wd = 0;
  WeightEntry weights[2][32];
  bool noOutputOfPriorPics = false, longTermReference = false, adaptiveMarking = false;
  struct Mmco {
    int op;
    uint32_t a, b;
  };
  std::vector<Mmco> mmcos;
  int qp = 26;
  int disableDeblock = 0, alphaOffset = 0, betaOffset = 0;
};

// Per-macroblock state of the picture being decoded.
struct MbInfo {
  int slice = -1;  // slice number within the picture; -1 not yet decoded
  int qp = 0, qpc[2] = {0, 0};
  bool intra = false, skip = false, t8x8 = false, i4x4 = false;  // i4x4: Intra 4x4 or 8x8 (for mode prediction)
  bool uniform = false;  // one motion over the whole macroblock (no internal motion edges to test)
  uint8_t totalCoeff[16 + 8];  // luma 4x4 blocks in raster order (4x4 grid), then Cb 2x2, Cr 2x2
  uint16_t nonZero;            // for the boundary strengths: bit 4y + x, coded residual in the block (8x8 blocks whole)
  int8_t ipred[16];            // intra 4x4/8x8 modes, raster order of the 4x4 blocks
};

int median(int a, int b, int c) { return std::max(std::min(a, b), std::min(std::max(a, b), c)); }

// ------------------------------------------------------------------------------------------------ decoder
class Decoder {
 public:
  using Output = void (*)(void* ctx, const Picture& pic, const Sps& sps);
  Decoder(Output out, void* ctx) : out_(out), outCtx_(ctx) {
    check(huxH264BuildCavlcTables(tables_.get()), "building the CAVLC tables");
    for (int i = 0; i < 16; ++i) identity_[i] = i;
  }
  void decodeNal(const std::vector<uint8_t>& nal);
  void flush() {
    finishPicture();
    while (bump()) {
    }
  }
  int framesOut = 0;

 private:
  // -------------------------------------------------------------- state
  Output out_;
  void* outCtx_;
  std::unique_ptr<HuxH264CavlcTables> tables_ = std::make_unique<HuxH264CavlcTables>();
  int32_t identity_[16];
  Sps sps_[32];
  Pps pps_[256];
  Bits bits_;
  std::vector<uint8_t> rbsp_;
  const Sps* sps = nullptr;
  const Pps* pps = nullptr;
  SliceHeader sh;
  std::vector<std::unique_ptr<Picture>> dpb_;
  std::unique_ptr<Picture> cur_;
  std::vector<std::unique_ptr<Picture>> pool_;  // pictures no longer needed, reused to spare allocations
  void release() {  // moves every picture that is neither a reference nor waiting for output to the pool
    for (auto& p : dpb_)
      if (!p->isRef() && !p->needOutput) pool_.push_back(std::move(p));
    dpb_.erase(std::remove(dpb_.begin(), dpb_.end(), nullptr), dpb_.end());
  }
  int nextId_ = 1;
  int dpbSize_ = 16;
  int activeSpsId_ = -1;
  // picture order and frame numbering state
  int prevPocMsb_ = 0, prevPocLsb_ = 0, prevFrameNumOffset_ = 0, prevFrameNum_ = 0, prevRefFrameNum_ = 0;
  bool prevHadMmco5_ = false;
  int frameNumOffset_ = 0, maxLongTermIdx_ = -1;
  bool havePrevRef_ = false;
  int pocMsbPending_ = 0, pocTop_ = 0, pocBottom_ = 0;
  int qp_ = 26;  // the running luma QP of the slice
  // the picture being decoded
  std::vector<MbInfo> mbs_;
  struct SliceParams {
    int disable, alpha, beta, chromaOffset[2];
  };
  std::vector<SliceParams> slices_;
  int sliceNum_ = -1, mbsDecoded_ = 0, lastMb_ = -1;
  int mbW = 0, mbH = 0;
  Picture* ref_[2][33] = {};
  int refCount_[2] = {0, 0};
  int implicitW_[32][32];
  ScalingLists lists_;
  int16_t ls4_[6][6][16];
  int16_t ls8_[2][6][64];
  std::vector<int16_t> coeffs_ = std::vector<int16_t>(16 * 27 + 64 * 4 + 64);
  uint8_t tmp_[2][16 * 16 + 64];
  uint8_t tmpC_[2][2][8 * 8 + 32];

  // -------------------------------------------------------------- headers and pictures
  void parseSlice(int nalType, int nalRefIdc);
  void activate(const Pps& p);
  void startPicture();
  void finishPicture();
  void computePoc();
  void markReferences();
  void storePicture();
  bool bump();
  void buildLists();
  void modifyList(int l);
  void computeImplicitWeights();
  // -------------------------------------------------------------- slice data
  void decodeSliceData();
  void decodeMb(int addr, bool skipped);
  // -------------------------------------------------------------- deblocking
  void deblockRows(int end);  // filters the macroblock rows before end not yet filtered
  int rowsFiltered_ = 0;
  void deblockMb(int addr);
  // The thresholds of every averaged QP for the filter offsets they were built for.
  EdgeParams edgeTable_[52];
  int edgeOffsets_[2] = {1000, 1000};

  // helpers over the current picture's macroblocks
  bool available(int addr) const { return addr >= 0 && addr < mbW * mbH && mbs_[static_cast<size_t>(addr)].slice == sliceNum_; }
  friend struct MbDecoder;
};

void Decoder::activate(const Pps& p) {
  const Sps& s = sps_[p.spsId];
  if (!s.valid) fail("slice refers to a missing sequence parameter set");
  if (activeSpsId_ != p.spsId || s.mbWidth != mbW || s.mbHeight != mbH) {
    // A new sequence: every picture before it is output first.
    if (activeSpsId_ >= 0 && !sh.idr) fail("sequence parameter set changed outside an IDR picture");
    flush();
    dpb_.clear();
    pool_.clear();
    activeSpsId_ = p.spsId;
    mbW = s.mbWidth, mbH = s.mbHeight;
    static const struct {
      int level;
      int mbs;
    } kDpbMbs[] = {{9, 396},     {10, 396},    {11, 900},    {12, 2376},   {13, 2376},   {20, 2376},
                   {21, 4752},   {22, 8100},   {30, 8100},   {31, 18000},  {32, 20480},  {40, 32768},
                   {41, 32768},  {42, 34816},  {50, 110400}, {51, 184320}, {52, 184320}, {60, 696320},
                   {61, 696320}, {62, 696320}};
    int maxMbs = 696320;
    for (const auto& e : kDpbMbs)
      if (e.level == s.level) maxMbs = e.mbs;
    dpbSize_ = std::clamp(maxMbs / (mbW * mbH), 1, 16);
    if (s.maxDecFrameBuffering >= 0) dpbSize_ = std::max(1, s.maxDecFrameBuffering);
    dpbSize_ = std::max(dpbSize_, s.maxNumRefFrames);
  }
  sps = &s;
  pps = &p;
  lists_ = p.scalingPresent ? resolveLists(p.picLists, s.scalingPresent ? &s.scaling : nullptr) : s.scaling;
  if (!s.scalingPresent && !p.scalingPresent) lists_.setFlat();
  for (int l = 0; l < 6; ++l)
    for (int m = 0; m < 6; ++m)
      for (int k = 0; k < 16; ++k) {
        const int cls = ((k >> 2) & 1) && (k & 1) ? 1 : (((k >> 2) | k) & 1) ? 2 : 0;
        ls4_[l][m][k] = static_cast<int16_t>(lists_.l4[l][k] * kNorm4[m][cls]);
      }
  for (int l = 0; l < 2; ++l)
    for (int m = 0; m < 6; ++m)
      for (int k = 0; k < 64; ++k) {
        const int i = k >> 3, j = k & 7;
        int cls;
        if (i % 4 == 0 && j % 4 == 0) cls = 0;
        else if (i % 2 == 1 && j % 2 == 1) cls = 1;
        else if (i % 4 == 2 && j % 4 == 2) cls = 2;
        else if ((i % 4 == 0 && j % 2 == 1) || (i % 2 == 1 && j % 4 == 0)) cls = 3;
        else if ((i % 4 == 0 && j % 4 == 2) || (i % 4 == 2 && j % 4 == 0)) cls = 4;
        else cls = 5;
        ls8_[l][m][k] = static_cast<int16_t>(lists_.l8[l][k] * kNorm8[m][cls]);
      }
}

void Decoder::decodeNal(const std::vector<uint8_t>& nal) {
  if (nal.empty()) return;
  if (nal[0] & 0x80) fail("forbidden_zero_bit set in a NAL unit header");
  const int type = nal[0] & 31, refIdc = nal[0] >> 5;
  if (type == 2 || type == 3 || type == 4) unsupported("data partitioning");
  if (type == 20 || type == 14 || type == 15) return;  // scalable/multiview extensions: the base view only
  if (type != 1 && type != 5 && type != 7 && type != 8 && type != 11) {
    if (type == 9 || type == 10) finishPicture();
    return;  // SEI, access unit delimiters, filler and the rest carry nothing this decoder uses
  }
  if (type == 11) {
    finishPicture();
    return;
  }
  // Emulation prevention: each 00 00 03 loses its 03 (a zero pair counts only from behind the last one dropped).
  std::vector<uint8_t>& rbsp = rbsp_;
  rbsp.clear();
  const uint8_t* q = nal.data() + 1;
  const uint8_t* end = nal.data() + nal.size();
  size_t pairFrom = 0;
  while (q < end) {
    const uint8_t* t = static_cast<const uint8_t*>(std::memchr(q, 3, static_cast<size_t>(end - q)));
    if (!t) t = end;
    rbsp.insert(rbsp.end(), q, t);
    if (t == end) break;
    const size_t r = rbsp.size();
    if (r >= pairFrom + 2 && !rbsp[r - 1] && !rbsp[r - 2]) pairFrom = r;
    else rbsp.push_back(3);
    q = t + 1;
  }
  bits_.load(rbsp);
  if (type == 7) {
    parseSps(bits_, sps_);
  } else if (type == 8) {
    parsePps(bits_, pps_, sps_);
  } else {
    parseSlice(type, refIdc);
  }
}

void Decoder::parseSlice(int nalType, int nalRefIdc) {
  Bits& b = bits_;
  SliceHeader h;
  h.idr = nalType == 5;
  h.nalRefIdc = nalRefIdc;
  h.firstMb = static_cast<int>(b.ueMax(139263, "first_mb_in_slice"));
  const uint32_t st = b.ueMax(9, "slice_type");
  static const int kType[5] = {0, 1, 2, -1, -1};
  h.type = kType[st % 5];
  if (h.type < 0) unsupported("SP and SI slices");
  if (h.idr && h.type != 2) fail("an IDR picture with a P or B slice");
  h.ppsId = static_cast<int>(b.ueMax(255, "pic_parameter_set_id"));
  const Pps& p = pps_[h.ppsId];
  if (!p.valid) fail("slice refers to a missing picture parameter set %d", h.ppsId);
  const Sps& s = sps_[p.spsId];
  if (!s.valid) fail("slice refers to a missing sequence parameter set");
  h.frameNum = static_cast<int>(b.u(s.log2MaxFrameNum));
  if (h.idr) h.idrPicId = static_cast<int>(b.ue());
  if (s.pocType == 0) {
    h.pocLsb = static_cast<int>(b.u(s.log2MaxPocLsb));
    if (p.bottomFieldPicOrder) h.deltaPocBottom = b.se();
  } else if (s.pocType == 1 && !s.deltaPicOrderAlwaysZero) {
    h.deltaPoc[0] = b.se();
    if (p.bottomFieldPicOrder) h.deltaPoc[1] = b.se();
  }
  if (p.redundantPicCnt && b.ue() != 0) return;  // redundant pictures are dropped (the primary is decoded)
  if (h.type == 1) h.directSpatial = b.flag();
  if (h.type != 2) {
    h.numRefIdxActive[0] = p.numRefIdxActive[0];
    h.numRefIdxActive[1] = h.type == 1 ? p.numRefIdxActive[1] : 0;
    if (b.flag()) {
      h.numRefIdxActive[0] = static_cast<int>(b.ueMax(31, "num_ref_idx_l0_active_minus1")) + 1;
      if (h.type == 1) h.numRefIdxActive[1] = static_cast<int>(b.ueMax(31, "num_ref_idx_l1_active_minus1")) + 1;
    }
    if (h.numRefIdxActive[0] > 32 || h.numRefIdxActive[1] > 32) fail("too many active references");
    for (int l = 0; l < (h.type == 1 ? 2 : 1); ++l)
      if (b.flag()) {
        for (;;) {
          const int idc = static_cast<int>(b.ueMax(3, "modification_of_pic_nums_idc"));
          if (idc == 3) break;
          if (h.mods[l].size() > 32) fail("too many reference list modifications");
          h.mods[l].push_back({idc, b.ue()});
        }
      }
  }
  if ((p.weightedPred && h.type == 0) || (p.weightedBipred == 1 && h.type == 1)) {
    h.lumaLog2Wd = static_cast<int>(b.ueMax(7, "luma_log2_weight_denom"));
    h.chromaLog2Wd = static_cast<int>(b.ueMax(7, "chroma_log2_weight_denom"));
    for (int l = 0; l < (h.type == 1 ? 2 : 1); ++l)
      for (int i = 0; i < h.numRefIdxActive[l]; ++i) {
        WeightEntry& w = h.weights[l][i];
        w.lw = 1 << h.lumaLog2Wd;
        w.cw[0] = w.cw[1] = 1 << h.chromaLog2Wd;
        if ((w.luma = b.flag())) {
          w.lw = b.seRange(-128, 127, "luma_weight");
          w.lo = b.seRange(-128, 127, "luma_offset");
        }
        if ((w.chroma = b.flag()))
          for (int c = 0; c < 2; ++c) {
            w.cw[c] = b.seRange(-128, 127, "chroma_weight");
            w.co[c] = b.seRange(-128, 127, "chroma_offset");
          }
      }
  }
  if (nalRefIdc) {
    if (h.idr) {
      h.noOutputOfPriorPics = b.flag();
      h.longTermReference = b.flag();
    } else if ((h.adaptiveMarking = b.flag())) {
      for (;;) {
        const int op = static_cast<int>(b.ueMax(6, "memory_management_control_operation"));
        if (!op) break;
        if (h.mmcos.size() > 66) fail("too many memory management operations");
        SliceHeader::Mmco m{op, 0, 0};
        if (op == 1 || op == 3) m.a = b.ue();
        if (op == 2) m.a = b.ue();
        if (op == 3 || op == 6) m.b = b.ue();
        if (op == 4) m.a = b.ue();
        h.mmcos.push_back(m);
      }
    }
  }
  h.qp = p.picInitQp + b.seRange(-26 - 25, 25 + 26, "slice_qp_delta");
  if (h.qp < 0 || h.qp > 51) fail("slice QP %d out of range", h.qp);
  if (p.deblockingControl) {
    h.disableDeblock = static_cast<int>(b.ueMax(2, "disable_deblocking_filter_idc"));
    if (h.disableDeblock != 1) {
      h.alphaOffset = 2 * b.seRange(-6, 6, "slice_alpha_c0_offset_div2");
      h.betaOffset = 2 * b.seRange(-6, 6, "slice_beta_offset_div2");
    }
  }
  b.guard();

  // A new picture starts with macroblock 0; slices of one picture follow in increasing address order.
  if (h.firstMb == 0) {
    finishPicture();
    sh = h;
    activate(p);
    startPicture();
  } else {
    if (!cur_) fail("a slice without the start of its picture");
    if (h.firstMb <= lastMb_ || h.firstMb >= mbW * mbH) unsupported("arbitrary slice order");
    if (h.frameNum != sh.frameNum || h.idr != sh.idr || h.pocLsb != sh.pocLsb || (h.nalRefIdc != 0) != (sh.nalRefIdc != 0))
      fail("a slice of a different picture before the current one is complete");
    sh = h;
    const int spsBefore = activeSpsId_;
    activate(p);
    if (activeSpsId_ != spsBefore) fail("parameter sets changed inside a picture");
  }
  ++sliceNum_;
  slices_.push_back({sh.disableDeblock, sh.alphaOffset, sh.betaOffset, {p.chromaQpOffset[0], p.chromaQpOffset[1]}});
  if (sh.type != 2) buildLists();
  if (sh.type == 1 && p.weightedBipred == 2) computeImplicitWeights();
  decodeSliceData();
}

void Decoder::startPicture() {
  const Sps& s = *sps;
  // Frame numbers: gaps are refused, not concealed.
  if (sh.idr) {
    prevRefFrameNum_ = 0;
  } else {
    if (!havePrevRef_) fail("the stream does not start with an IDR picture");
    const int maxFn = 1 << s.log2MaxFrameNum;
    if (sh.frameNum != prevRefFrameNum_ && sh.frameNum != (prevRefFrameNum_ + 1) % maxFn)
      unsupported("gaps in frame_num");
  }
  if (!pool_.empty()) {
    cur_ = std::move(pool_.back());
    pool_.pop_back();
  } else {
    cur_ = std::make_unique<Picture>();
  }
  cur_->id = nextId_++;
  cur_->shortRef = cur_->longRef = cur_->needOutput = cur_->mmco5 = false;
  cur_->longTermIdx = -1;
  if (cur_->width != mbW * 16 || cur_->height != mbH * 16) cur_->alloc(mbW, mbH);
  cur_->frameNum = sh.frameNum;
  // The output geometry travels with the picture: a later sequence set may reuse the id before it is output.
  cur_->cropLeft = s.cropLeft, cur_->cropRight = s.cropRight, cur_->cropTop = s.cropTop, cur_->cropBottom = s.cropBottom;
  cur_->timeNum = s.timeNum, cur_->timeDen = s.timeDen;
  computePoc();
  mbs_.assign(static_cast<size_t>(mbW) * mbH, MbInfo{});
  slices_.clear();
  sliceNum_ = -1;
  mbsDecoded_ = 0;
  lastMb_ = -1;
  rowsFiltered_ = 0;
}

void Decoder::computePoc() {
  const Sps& s = *sps;
  const int maxFn = 1 << s.log2MaxFrameNum;
  if (sh.idr) {
    prevFrameNumOffset_ = 0;
  } else if (prevHadMmco5_) {
    prevFrameNumOffset_ = 0;
  }
  frameNumOffset_ = sh.idr ? 0 : prevFrameNum_ > sh.frameNum ? prevFrameNumOffset_ + maxFn : prevFrameNumOffset_;
  int top = 0, bottom = 0;
  if (s.pocType == 0) {
    if (sh.idr) prevPocMsb_ = prevPocLsb_ = 0;
    const int maxLsb = 1 << s.log2MaxPocLsb;
    int msb;
    if (sh.pocLsb < prevPocLsb_ && prevPocLsb_ - sh.pocLsb >= maxLsb / 2) msb = prevPocMsb_ + maxLsb;
    else if (sh.pocLsb > prevPocLsb_ && sh.pocLsb - prevPocLsb_ > maxLsb / 2) msb = prevPocMsb_ - maxLsb;
    else msb = prevPocMsb_;
    top = msb + sh.pocLsb;
    bottom = top + sh.deltaPocBottom;
    if (sh.nalRefIdc) cur_->longTermIdx = -1, pocMsbPending_ = msb;
  } else if (s.pocType == 1) {
    const int n = static_cast<int>(s.offsetForRefFrame.size());
    int abs = n ? frameNumOffset_ + sh.frameNum : 0;
    if (!sh.nalRefIdc && abs > 0) --abs;
    long expected = 0;
    if (abs > 0) {
      long perCycle = 0;
      for (int o : s.offsetForRefFrame) perCycle += o;
      const int cycles = (abs - 1) / n, in = (abs - 1) % n;
      expected = static_cast<long>(cycles) * perCycle;
      for (int i = 0; i <= in; ++i) expected += s.offsetForRefFrame[static_cast<size_t>(i)];
    }
    if (!sh.nalRefIdc) expected += s.offsetForNonRef;
    top = static_cast<int>(expected + sh.deltaPoc[0]);
    bottom = top + s.offsetTopToBottom + sh.deltaPoc[1];
  } else {
    const int t = sh.idr ? 0 : 2 * (frameNumOffset_ + sh.frameNum) - (sh.nalRefIdc ? 0 : 1);
    top = bottom = t;
  }
  cur_->poc = std::min(top, bottom);
  pocTop_ = top;
  pocBottom_ = bottom;
}

void Decoder::finishPicture() {
  if (!cur_) return;
  if (mbsDecoded_ != mbW * mbH) fail("picture %d is incomplete (%d of %d macroblocks)", cur_->id, mbsDecoded_, mbW * mbH);
  deblockRows(mbH);
  const Sps& s = *sps;
  if (sh.nalRefIdc) markReferences();
  // Picture order and frame numbering state for the next picture.
  if (cur_->mmco5) {
    const int temp = std::min(pocTop_, pocBottom_);
    pocTop_ -= temp;
    cur_->poc = 0;
    cur_->frameNum = 0;
  }
  if (sh.nalRefIdc) {
    if (s.pocType == 0) {
      prevPocMsb_ = cur_->mmco5 ? 0 : pocMsbPending_;
      prevPocLsb_ = cur_->mmco5 ? pocTop_ : sh.pocLsb;
    }
    prevRefFrameNum_ = cur_->frameNum;
    havePrevRef_ = true;
  }
  prevFrameNumOffset_ = frameNumOffset_;
  prevFrameNum_ = cur_->frameNum;
  prevHadMmco5_ = cur_->mmco5;
  storePicture();
}

void Decoder::markReferences() {
  const int maxFn = 1 << sps->log2MaxFrameNum;
  Picture& c = *cur_;
  for (auto& p : dpb_) p->frameNumWrap = p->frameNum > c.frameNum ? p->frameNum - maxFn : p->frameNum;
  if (sh.idr) {
    for (auto& p : dpb_) p->shortRef = p->longRef = false;
    if (sh.longTermReference) c.longRef = true, c.longTermIdx = 0, maxLongTermIdx_ = 0;
    else c.shortRef = true, maxLongTermIdx_ = -1;
    return;
  }
  auto findShort = [&](int picNum) -> Picture* {
    for (auto& p : dpb_)
      if (p->shortRef && p->frameNumWrap == picNum) return p.get();
    return nullptr;
  };
  if (sh.adaptiveMarking) {
    for (const auto& m : sh.mmcos) {
      const int picNumX = c.frameNum - static_cast<int>(m.a + 1);
      switch (m.op) {
        case 1:
          if (Picture* p = findShort(picNumX)) p->shortRef = false;
          break;
        case 2:
          for (auto& p : dpb_)
            if (p->longRef && p->longTermIdx == static_cast<int>(m.a)) p->longRef = false;
          break;
        case 3: {
          Picture* p = findShort(picNumX);
          for (auto& q : dpb_)
            if (q->longRef && q->longTermIdx == static_cast<int>(m.b) && q.get() != p) q->longRef = false;
          if (static_cast<int>(m.b) > maxLongTermIdx_) fail("long-term frame index above the maximum");
          if (p) p->shortRef = false, p->longRef = true, p->longTermIdx = static_cast<int>(m.b);
          break;
        }
        case 4:
          maxLongTermIdx_ = static_cast<int>(m.a) - 1;
          for (auto& p : dpb_)
            if (p->longRef && p->longTermIdx > maxLongTermIdx_) p->longRef = false;
          break;
        case 5:
          for (auto& p : dpb_) p->shortRef = p->longRef = false;
          maxLongTermIdx_ = -1;
          c.mmco5 = true;
          break;
        case 6:
          for (auto& p : dpb_)
            if (p->longRef && p->longTermIdx == static_cast<int>(m.b)) p->longRef = false;
          if (static_cast<int>(m.b) > maxLongTermIdx_) fail("long-term frame index above the maximum");
          c.longRef = true, c.longTermIdx = static_cast<int>(m.b);
          break;
        default:
          break;
      }
    }
  } else {
    int numShort = 0, numLong = 0;
    for (auto& p : dpb_) numShort += p->shortRef, numLong += p->longRef;
    if (numShort + numLong >= std::max(sps->maxNumRefFrames, 1) && numShort > 0) {
      Picture* oldest = nullptr;
      for (auto& p : dpb_)
        if (p->shortRef && (!oldest || p->frameNumWrap < oldest->frameNumWrap)) oldest = p.get();
      oldest->shortRef = false;
    }
  }
  if (!c.longRef) c.shortRef = true;
  int refs = 0;
  for (auto& p : dpb_) refs += p->isRef();
  if (refs + 1 > std::max(sps->maxNumRefFrames, 1)) fail("more reference frames than the sequence allows");
}

void Decoder::storePicture() {
  std::unique_ptr<Picture> c = std::move(cur_);
  c->needOutput = true;
  if (sh.idr || c->mmco5) {
    if (sh.idr && sh.noOutputOfPriorPics) {
      dpb_.clear();
    } else {
      while (bump()) {
      }
    }
    for (auto& p : dpb_) pool_.push_back(std::move(p));
    dpb_.clear();
  }
  release();
  while (static_cast<int>(dpb_.size()) >= dpbSize_) {
    if (!c->isRef()) {
      bool lowest = true;
      for (auto& p : dpb_)
        if (p->needOutput && p->poc < c->poc) lowest = false;
      if (lowest) {
        out_(outCtx_, *c, *sps);
        ++framesOut;
        pool_.push_back(std::move(c));
        return;
      }
    }
    if (!bump()) fail("the decoded picture buffer is full of reference pictures");
  }
  dpb_.push_back(std::move(c));
}

bool Decoder::bump() {
  Picture* best = nullptr;
  for (auto& p : dpb_)
    if (p->needOutput && (!best || p->poc < best->poc)) best = p.get();
  if (!best) return false;
  out_(outCtx_, *best, *sps);
  ++framesOut;
  best->needOutput = false;
  release();
  return true;
}

void Decoder::buildLists() {
  const int maxFn = 1 << sps->log2MaxFrameNum;
  std::vector<Picture*> shorts, longs;
  for (auto& p : dpb_) {
    p->frameNumWrap = p->frameNum > sh.frameNum ? p->frameNum - maxFn : p->frameNum;
    if (p->shortRef) shorts.push_back(p.get());
    if (p->longRef) longs.push_back(p.get());
  }
  std::sort(longs.begin(), longs.end(), [](Picture* a, Picture* b) { return a->longTermIdx < b->longTermIdx; });
  std::vector<Picture*> init[2];
  const int poc = cur_->poc;
  if (sh.type == 0) {
    std::sort(shorts.begin(), shorts.end(), [](Picture* a, Picture* b) { return a->frameNumWrap > b->frameNumWrap; });
    init[0] = shorts;
    init[0].insert(init[0].end(), longs.begin(), longs.end());
  } else {
    std::vector<Picture*> before, after;
    for (Picture* p : shorts) (p->poc < poc ? before : after).push_back(p);
    std::sort(before.begin(), before.end(), [](Picture* a, Picture* b) { return a->poc > b->poc; });
    std::sort(after.begin(), after.end(), [](Picture* a, Picture* b) { return a->poc < b->poc; });
    init[0] = before;
    init[0].insert(init[0].end(), after.begin(), after.end());
    init[0].insert(init[0].end(), longs.begin(), longs.end());
    init[1] = after;
    init[1].insert(init[1].end(), before.begin(), before.end());
    init[1].insert(init[1].end(), longs.begin(), longs.end());
    if (init[1].size() > 1 && init[1] == init[0]) std::swap(init[1][0], init[1][1]);
  }
  for (int l = 0; l < 2; ++l) {
    refCount_[l] = sh.numRefIdxActive[l];
    for (int i = 0; i < 33; ++i) ref_[l][i] = i < static_cast<int>(init[l].size()) && i < refCount_[l] ? init[l][static_cast<size_t>(i)] : nullptr;
    if (l == 0 || sh.type == 1) modifyList(l);
  }
}

void Decoder::modifyList(int l) {
  const int maxFn = 1 << sps->log2MaxFrameNum;
  const int currPicNum = sh.frameNum;
  int pred = currPicNum, idx = 0;
  const int n = refCount_[l];
  for (const auto& m : sh.mods[l]) {
    if (idx >= n) fail("more reference list modifications than entries");
    Picture* pic = nullptr;
    if (m.idc < 2) {
      if (m.val >= static_cast<uint32_t>(maxFn)) fail("abs_diff_pic_num_minus1 out of range");
      const int d = static_cast<int>(m.val) + 1;
      int noWrap = m.idc == 0 ? pred - d : pred + d;
      if (noWrap < 0) noWrap += maxFn;
      if (noWrap >= maxFn) noWrap -= maxFn;
      pred = noWrap;
      const int picNum = noWrap > currPicNum ? noWrap - maxFn : noWrap;
      for (auto& p : dpb_)
        if (p->shortRef && p->frameNumWrap == picNum) pic = p.get();
    } else {
      for (auto& p : dpb_)
        if (p->longRef && p->longTermIdx == static_cast<int>(m.val)) pic = p.get();
    }
    if (!pic) fail("reference list modification names a picture that is not a reference");
    for (int c = n; c > idx; --c) ref_[l][c] = ref_[l][c - 1];
    ref_[l][idx++] = pic;
    int k = idx;
    for (int c = idx; c <= n; ++c)
      if (ref_[l][c] != pic) ref_[l][k++] = ref_[l][c];
    for (; k <= n; ++k) ref_[l][k] = nullptr;
  }
  ref_[l][n] = nullptr;
}

void Decoder::computeImplicitWeights() {
  const int poc = cur_->poc;
  for (int i = 0; i < refCount_[0]; ++i)
    for (int j = 0; j < refCount_[1]; ++j) {
      const Picture* p0 = ref_[0][i];
      const Picture* p1 = ref_[1][j];
      int w1 = 32;
      if (p0 && p1 && !p0->longRef && !p1->longRef && p1->poc != p0->poc) {
        const int tb = std::clamp(poc - p0->poc, -128, 127), td = std::clamp(p1->poc - p0->poc, -128, 127);
        const int tx = (16384 + std::abs(td / 2)) / td;
        const int dsf = std::clamp((tb * tx + 32) >> 6, -1024, 1023);
        if ((dsf >> 2) >= -64 && (dsf >> 2) <= 128) w1 = dsf >> 2;
      }
      implicitW_[i][j] = w1;
    }
}

// ------------------------------------------------------------------------------------------------ macroblocks
// Luma 4x4 block index (the standard's order: 8x8 quadrants, then 4x4 blocks inside) to its column and row.
inline int blkX(int n) { return (n & 1) | ((n >> 1) & 2); }
inline int blkY(int n) { return ((n >> 1) & 1) | ((n >> 2) & 2); }

struct Neighbour {
  bool avail;
  int ref;
  int mx, my;
};

// Everything about one macroblock while it is parsed and reconstructed.
struct MbDecoder {
  Decoder& d;
  Bits& b;
  Picture& pic;
  int addr, mbX, mbY, bw;  // bw: 4x4 blocks per picture row
  MbInfo& m;
  int nA, nB, nC, nD;  // neighbouring macroblock addresses, -1 when unavailable
  uint16_t done = 0;   // 4x4 blocks whose motion is already derived (for the above-right neighbour)
  uint32_t cbpBits = 0;
  int16_t* coef;  // the next free entry of the packed coefficient buffer

  MbDecoder(Decoder& dec, int a)
      : d(dec), b(dec.bits_), pic(*dec.cur_), addr(a), mbX(a % dec.mbW), mbY(a / dec.mbW), bw(dec.mbW * 4),
        m(dec.mbs_[static_cast<size_t>(a)]) {
    nA = mbX > 0 && d.available(a - 1) ? a - 1 : -1;
    nB = mbY > 0 && d.available(a - d.mbW) ? a - d.mbW : -1;
    nC = mbY > 0 && mbX + 1 < d.mbW && d.available(a - d.mbW + 1) ? a - d.mbW + 1 : -1;
    nD = mbY > 0 && mbX > 0 && d.available(a - d.mbW - 1) ? a - d.mbW - 1 : -1;
    coef = d.coeffs_.data();
  }
  size_t blk(int x, int y) const { return static_cast<size_t>((mbY * 4 + y) * bw + mbX * 4 + x); }

  // ------------------------------------------------------------ motion vector prediction
  Neighbour nb(int l, int x, int y) const {
    int mb;
    if (y < 0) mb = x < 0 ? nD : x < 4 ? nB : nC;
    else if (x < 0) mb = nA;
    else if (x >= 4 || !(done >> (y * 4 + x) & 1)) return {false, -1, 0, 0};
    else mb = addr;
    if (mb < 0) return {false, -1, 0, 0};
    const size_t i = static_cast<size_t>((mbY * 4 + y) * bw + mbX * 4 + x);  // the neighbour's block, by position
    return {true, pic.mo[i].ref[l], pic.mo[i].mv[l][0], pic.mo[i].mv[l][1]};
  }
  // shape: 0 generic, 1 16x8, 2 8x16 (partition index from the position)
  void predictMv(int l, int ref, int x, int y, int w, int shape, int& px, int& py) const {
    const Neighbour a = nb(l, x - 1, y), bb = nb(l, x, y - 1);
    Neighbour c = nb(l, x + w, y - 1);
    if (!c.avail) c = nb(l, x - 1, y - 1);
    if (shape == 1) {
      if (y == 0 && bb.ref == ref) return void((px = bb.mx, py = bb.my));
      if (y != 0 && a.ref == ref) return void((px = a.mx, py = a.my));
    } else if (shape == 2) {
      if (x == 0 && a.ref == ref) return void((px = a.mx, py = a.my));
      if (x != 0 && c.ref == ref) return void((px = c.mx, py = c.my));
    }
    if (!bb.avail && !c.avail && a.avail) return void((px = a.mx, py = a.my));
    const int match = (a.ref == ref) + (bb.ref == ref) + (c.ref == ref);
    if (match == 1) {
      const Neighbour& n = a.ref == ref ? a : bb.ref == ref ? bb : c;
      px = n.mx, py = n.my;
      return;
    }
    px = median(a.mx, bb.mx, c.mx);
    py = median(a.my, bb.my, c.my);
  }
  void setMotion(int l, int x, int y, int w, int h, int ref, int mx, int my) {
    const Picture* r = ref >= 0 ? d.ref_[l][ref] : nullptr;
    const int32_t id = r ? r->id : 0;
    Picture::Motion* row = &pic.mo[blk(x, y)];
    for (int j = 0; j < h; ++j, row += bw)
      for (int i = 0; i < w; ++i) {
        Picture::Motion& o = row[i];
        o.ref[l] = static_cast<int8_t>(ref);
        o.mv[l][0] = static_cast<int16_t>(mx);
        o.mv[l][1] = static_cast<int16_t>(my);
        o.refId[l] = id;
      }
  }
  // Both lists' motion over a square of n x n blocks.
  void setMotionBoth(int x, int y, int n, const Picture::Motion& rec) {
    Picture::Motion* row = &pic.mo[blk(x, y)];
    for (int j = 0; j < n; ++j, row += bw)
      for (int i = 0; i < n; ++i) row[i] = rec;
  }
  void markDone(int x, int y, int w, int h) {
    for (int j = y; j < y + h; ++j)
      for (int i = x; i < x + w; ++i) done = static_cast<uint16_t>(done | 1u << (j * 4 + i));
  }
  int readRef(int l) {
    const int n = d.sh.numRefIdxActive[l];
    if (n <= 1) return 0;
    if (n == 2) return b.flag() ? 0 : 1;
    return static_cast<int>(b.ueMax(static_cast<uint32_t>(n - 1), "ref_idx"));
  }
  void checkRef(int l, int ref) const {
    if (ref < 0 || ref >= d.refCount_[l] || !d.ref_[l][ref]) fail("a reference index names no reference picture");
  }

  // ------------------------------------------------------------ direct prediction
  struct Col {
    int ref;  // -1: intra or unused
    int mx, my;
    int refId;
  };
  Col colocated(int x, int y) const {
    const Picture* c = d.ref_[1][0];
    if (d.sps->direct8x8Inference) x = (x >> 1) * 3, y = (y >> 1) * 3;
    if (c->intra[static_cast<size_t>(addr)]) return {-1, 0, 0, 0};
    const size_t k = blk(x, y);
    const int l = c->mo[k].ref[0] >= 0 ? 0 : 1;
    return {c->mo[k].ref[l], c->mo[k].mv[l][0], c->mo[k].mv[l][1], c->mo[k].refId[l]};
  }
  // Direct motion of the 8x8 block q (0..3), or of all four with q = -1; sets both lists.
  bool spatialReady = false;
  int sRef[2];
  int sMv[2][2];
  void directSpatialSetup() {
    if (spatialReady) return;
    spatialReady = true;
    for (int l = 0; l < 2; ++l) {
      const Neighbour a = nb(l, -1, 0), bb = nb(l, 0, -1);
      Neighbour c = nb(l, 4, -1);
      if (!c.avail) c = nb(l, -1, -1);
      auto minPos = [](int u, int v) { return u >= 0 && v >= 0 ? std::min(u, v) : std::max(u, v); };
      sRef[l] = minPos(a.ref, minPos(bb.ref, c.ref));
    }
    if (sRef[0] < 0 && sRef[1] < 0) {
      sRef[0] = sRef[1] = 0;
      sMv[0][0] = sMv[0][1] = sMv[1][0] = sMv[1][1] = 0;
      zeroBoth = true;
      return;
    }
    for (int l = 0; l < 2; ++l) {
      sMv[l][0] = sMv[l][1] = 0;
      if (sRef[l] >= 0) predictMv(l, sRef[l], 0, 0, 4, 0, sMv[l][0], sMv[l][1]);
    }
  }
  bool zeroBoth = false;
  bool pcm = false;
  void direct(int q) {
    const int x0 = q < 0 ? 0 : (q & 1) * 2, y0 = q < 0 ? 0 : (q >> 1) * 2, n = q < 0 ? 4 : 2;
    // With 8x8 inference the four 4x4 blocks of an 8x8 block share the co-located corner: one derivation each.
    const int step = d.sps->direct8x8Inference ? 2 : 1;
    if (d.sh.directSpatial) {
      directSpatialSetup();
      // The predicted motion, and the same with the vectors of reference 0 zeroed for a still co-located block.
      Picture::Motion moving{}, still{};
      for (int l = 0; l < 2; ++l) {
        const bool used = sRef[l] >= 0;
        if (used) checkRef(l, sRef[l]);
        moving.ref[l] = static_cast<int8_t>(sRef[l]);
        moving.refId[l] = used ? d.ref_[l][sRef[l]]->id : 0;
        moving.mv[l][0] = static_cast<int16_t>(used ? sMv[l][0] : 0);
        moving.mv[l][1] = static_cast<int16_t>(used ? sMv[l][1] : 0);
      }
      still = moving;
      for (int l = 0; l < 2; ++l)
        if (sRef[l] == 0) still.mv[l][0] = still.mv[l][1] = 0;
      const bool colTest = !zeroBoth && d.ref_[1][0]->shortRef;
      for (int y = y0; y < y0 + n; y += step)
        for (int x = x0; x < x0 + n; x += step) {
          bool isStill = false;
          if (colTest) {
            const Col c = colocated(x, y);
            isStill = c.ref == 0 && c.mx >= -1 && c.mx <= 1 && c.my >= -1 && c.my <= 1;
          }
          setMotionBoth(x, y, step, isStill ? still : moving);
        }
      return;
    }
    for (int y = y0; y < y0 + n; y += step)
      for (int x = x0; x < x0 + n; x += step) {
        const Col c = colocated(x, y);
        int ref0 = 0;
        if (c.ref >= 0) {
          ref0 = -1;
          for (int i = 0; i < d.refCount_[0]; ++i)
            if (d.ref_[0][i] && d.ref_[0][i]->id == c.refId) {
              ref0 = i;
              break;
            }
          if (ref0 < 0) fail("temporal direct: the co-located block's reference is not in list 0");
        }
        checkRef(0, ref0);
        const Picture* p0 = d.ref_[0][ref0];
        const Picture* p1 = d.ref_[1][0];
        int m0x, m0y, m1x, m1y;
        const int td = std::clamp(p1->poc - p0->poc, -128, 127);
        if (p0->longRef || td == 0) {
          m0x = c.mx, m0y = c.my, m1x = m1y = 0;
        } else {
          const int tb = std::clamp(pic.poc - p0->poc, -128, 127);
          const int tx = (16384 + std::abs(td / 2)) / td;
          const int dsf = std::clamp((tb * tx + 32) >> 6, -1024, 1023);
          m0x = (dsf * c.mx + 128) >> 8, m0y = (dsf * c.my + 128) >> 8;
          m1x = m0x - c.mx, m1y = m0y - c.my;
        }
        setMotion(0, x, y, step, step, ref0, m0x, m0y);
        setMotion(1, x, y, step, step, 0, m1x, m1y);
      }
  }

  // ------------------------------------------------------------ motion compensation
  bool uniform() const {
    // With 8x8 inference each 8x8 block has one motion, so its first block speaks for it.
    const int step = d.sps->direct8x8Inference ? 2 : 1;
    const Picture::Motion& a = pic.mo[blk(0, 0)];
    for (int y = 0; y < 4; y += step)
      for (int x = 0; x < 4; x += step) {
        const Picture::Motion& o = pic.mo[blk(x, y)];
        if (std::memcmp(a.mv, o.mv, sizeof a.mv) || a.ref[0] != o.ref[0] || a.ref[1] != o.ref[1]) return false;
      }
    return true;
  }
  void predict(int x, int y, int w, int h);  // pixels inside the macroblock; motion read from the arrays
  void predictDirect(int q) {
    const int x0 = q < 0 ? 0 : (q & 1) * 2, y0 = q < 0 ? 0 : (q >> 1) * 2, n = q < 0 ? 4 : 2;
    if (q < 0 && m.uniform) return predict(0, 0, 16, 16);  // one motion over the macroblock: one prediction
    if (d.sps->direct8x8Inference) {  // with inference every 8x8 block has one motion
      for (int y = y0; y < y0 + n; y += 2)
        for (int x = x0; x < x0 + n; x += 2) predict(x * 4, y * 4, 8, 8);
      return;
    }
    for (int y = y0; y < y0 + n; ++y)
      for (int x = x0; x < x0 + n; ++x) predict(x * 4, y * 4, 4, 4);
  }

  // ------------------------------------------------------------ residual
  int lumaNc(int x, int y) const {
    int left = -1, top = -1;
    if (x > 0) left = m.totalCoeff[y * 4 + x - 1];
    else if (nA >= 0) left = d.mbs_[static_cast<size_t>(nA)].totalCoeff[y * 4 + 3];
    if (y > 0) top = m.totalCoeff[(y - 1) * 4 + x];
    else if (nB >= 0) top = d.mbs_[static_cast<size_t>(nB)].totalCoeff[12 + x];
    if (left >= 0 && top >= 0) return (left + top + 1) >> 1;
    return left >= 0 ? left : top >= 0 ? top : 0;
  }
  int chromaNc(int c, int x, int y) const {
    const int base = 16 + c * 4;
    int left = -1, top = -1;
    if (x > 0) left = m.totalCoeff[base + y * 2];
    else if (nA >= 0) left = d.mbs_[static_cast<size_t>(nA)].totalCoeff[base + y * 2 + 1];
    if (y > 0) top = m.totalCoeff[base + x];
    else if (nB >= 0) top = d.mbs_[static_cast<size_t>(nB)].totalCoeff[base + 2 + x];
    if (left >= 0 && top >= 0) return (left + top + 1) >> 1;
    return left >= 0 ? left : top >= 0 ? top : 0;
  }
  int block4x4(int nc, int maxNum, const int32_t* scan, int16_t** dst) {
    int16_t num = 0;
    const HuxResult st = huxiDecodeCAVLCCoeffs_H264_1u16s(&b.p, &b.off, &num, dst, nc, static_cast<int16_t>(maxNum), d.tables_->coeffToken4x4,
                                                          d.tables_->totalZeros4x4, d.tables_->runBefore, scan);
    if (st < 0) fail("macroblock %d: invalid residual (%s)", addr, huxStatusText(st));
    b.guard();
    if (num > maxNum) fail("macroblock %d: more coefficients than the block holds", addr);
    return num;
  }
  void residual(bool i16, int cbpL, int cbpC, bool t8);

  void decode(bool skipped);
  void decodeIntra(int type);
  void decodeInter(int type, bool skipped);
  int readQpDelta();
  uint8_t edgeType() const {
    auto ok = [&](int n) { return n >= 0 && (!d.pps->constrainedIntra || d.mbs_[static_cast<size_t>(n)].intra); };
    return static_cast<uint8_t>((ok(nA) ? 0 : 1) | (ok(nB) ? 0 : 4) | (ok(nC) ? 0 : 8) | (ok(nD) ? 0 : 16));
  }
};

int MbDecoder::readQpDelta() {
  const int delta = b.seRange(-26, 25, "mb_qp_delta");
  d.qp_ = (d.qp_ + delta + 52) % 52;
  return d.qp_;
}

void MbDecoder::residual(bool i16, int cbpL, int cbpC, bool t8) {
  std::memset(m.totalCoeff, 0, sizeof m.totalCoeff);
  const HuxH264CavlcTables& t = *d.tables_;
  if (i16) {
    int16_t* before = coef;
    block4x4(lumaNc(0, 0), 16, huxH264Zigzag4x4, &coef);
    if (coef != before) cbpBits |= 1;
  }
  for (int q = 0; q < 4; ++q) {
    if (!(cbpL >> q & 1)) continue;
    if (t8) {
      int16_t sub[4][16];
      int16_t* subs[4];
      int16_t* out = coef;
      bool any = false;
      for (int k = 0; k < 4; ++k) {
        const int n = q * 4 + k, x = blkX(n), y = blkY(n);
        subs[k] = sub[k];
        int16_t* p = sub[k];
        const int num = block4x4(lumaNc(x, y), 16, d.identity_, &p);
        m.totalCoeff[y * 4 + x] = static_cast<uint8_t>(num);
        if (p == sub[k]) subs[k] = nullptr;
        else any = true, cbpBits |= 1u << (1 + n);
      }
      if (any) {
        std::memset(out, 0, 64 * sizeof(int16_t));
        for (int k = 0; k < 4; ++k)
          if (subs[k])
            for (int i = 0; i < 16; ++i) out[kScan8.zz[4 * i + k]] = subs[k][i];
        coef = out + 64;
      }
    } else {
      for (int k = 0; k < 4; ++k) {
        const int n = q * 4 + k, x = blkX(n), y = blkY(n);
        int16_t* before = coef;
        const int num = block4x4(lumaNc(x, y), i16 ? 15 : 16, huxH264Zigzag4x4, &coef);
        m.totalCoeff[y * 4 + x] = static_cast<uint8_t>(num);
        if (coef != before) cbpBits |= 1u << (1 + n);
      }
    }
  }
  if (cbpC) {
    for (int c = 0; c < 2; ++c) {
      int16_t num = 0;
      int16_t* before = coef;
      const HuxResult st = huxiDecodeCAVLCChromaDcCoeffs_H264_1u16s(&b.p, &b.off, &num, &coef, t.coeffTokenChroma420, t.totalZerosChroma420, t.runBefore);
      if (st < 0) fail("macroblock %d: invalid chroma DC residual (%s)", addr, huxStatusText(st));
      b.guard();
      if (coef != before) cbpBits |= 1u << (17 + c);
    }
  }
  if (cbpC & 2) {
    for (int c = 0; c < 2; ++c)
      for (int k = 0; k < 4; ++k) {
        const int x = k & 1, y = k >> 1;
        int16_t* before = coef;
        const int num = block4x4(chromaNc(c, x, y), 15, huxH264Zigzag4x4, &coef);
        m.totalCoeff[16 + c * 4 + k] = static_cast<uint8_t>(num);
        if (coef != before) cbpBits |= 1u << (19 + c * 4 + k);
      }
  }
  // Non-zero flags for the boundary strengths: an 8x8-transformed block counts as a whole.
  m.nonZero = 0;
  for (int i = 0; i < 16; ++i) m.nonZero = static_cast<uint16_t>(m.nonZero | (m.totalCoeff[i] != 0) << i);
  if (t8)
    for (int q = 0; q < 4; ++q) {
      const uint16_t quad = static_cast<uint16_t>(0x33u << ((q & 1) * 2 + (q >> 1) * 8));
      if (m.nonZero & quad) m.nonZero |= quad;
    }
}

void MbDecoder::decode(bool skipped) {
  m.slice = d.sliceNum_;
  m.qp = d.qp_;
  std::memset(m.totalCoeff, 0, sizeof m.totalCoeff);
  m.nonZero = 0;
  std::memset(m.ipred, -1, sizeof m.ipred);
  pic.intra[static_cast<size_t>(addr)] = 0;
  if (skipped) {
    m.skip = true;
    decodeInter(d.sh.type == 0 ? -1 : 0, true);
  } else {
    const uint32_t t = b.ueMax(d.sh.type == 2 ? 25 : d.sh.type == 0 ? 30 : 48, "mb_type");
    if (d.sh.type == 2) decodeIntra(static_cast<int>(t));
    else if (d.sh.type == 0 && t >= 5) decodeIntra(static_cast<int>(t) - 5);
    else if (d.sh.type == 1 && t >= 23) decodeIntra(static_cast<int>(t) - 23);
    else decodeInter(static_cast<int>(t), false);
  }
  m.qp = pcm ? 0 : d.qp_;  // an I_PCM macroblock is filtered as if its QP were 0
  const int qp = m.qp;
  for (int c = 0; c < 2; ++c) m.qpc[c] = kChromaQp[std::clamp(qp + d.pps->chromaQpOffset[c], 0, 51)];
}

void MbDecoder::decodeIntra(int type) {
  m.intra = true;
  pic.intra[static_cast<size_t>(addr)] = 1;
  for (int l = 0; l < 2; ++l) setMotion(l, 0, 0, 4, 4, -1, 0, 0);
  const int W = pic.width;
  uint8_t* y = pic.y + static_cast<size_t>(mbY) * 16 * W + mbX * 16;
  uint8_t* cb = pic.cb + static_cast<size_t>(mbY) * 8 * (W / 2) + mbX * 8;
  uint8_t* cr = pic.cr + static_cast<size_t>(mbY) * 8 * (W / 2) + mbX * 8;
  if (type == 25) {  // I_PCM: samples as they stand
    pcm = true;
    b.align();
    if (b.pos() + 384 * 8 > b.endBit) fail("macroblock %d: I_PCM samples past the end of the slice", addr);
    for (int j = 0; j < 16; ++j)
      for (int i = 0; i < 16; ++i) y[j * W + i] = static_cast<uint8_t>(b.u(8));
    for (uint8_t* p : {cb, cr})
      for (int j = 0; j < 8; ++j)
        for (int i = 0; i < 8; ++i) p[j * (W / 2) + i] = static_cast<uint8_t>(b.u(8));
    b.guard();
    std::memset(m.totalCoeff, 16, sizeof m.totalCoeff);
    m.nonZero = 0xFFFF;
    return;
  }
  const uint8_t edge = edgeType();
  bool t8 = false;
  int modes[16];
  int i16mode = 0, cbpL, cbpC;
  if (type == 0) {
    m.i4x4 = true;
    if (d.pps->transform8x8) t8 = b.flag();
    // Predicted mode: the smaller of the left and upper blocks' modes; DC when either is missing or not 4x4/8x8.
    auto neighbourMode = [&](int bx, int by) -> int {
      int mb = addr;
      if (bx < 0) mb = nA, bx = 3;
      else if (by < 0) mb = nB, by = 3;
      if (mb < 0) return -1;
      const MbInfo& n = d.mbs_[static_cast<size_t>(mb)];
      if (mb != addr && d.pps->constrainedIntra && !n.intra) return -1;
      if (mb != addr && !n.i4x4) return 2;
      return n.ipred[by * 4 + bx];
    };
    const int count = t8 ? 4 : 16;
    for (int k = 0; k < count; ++k) {
      const int n = t8 ? k * 4 : k, x = blkX(n), yy = blkY(n);
      const int a = neighbourMode(x - 1, yy), bb = neighbourMode(x, yy - 1);
      const int pred = a < 0 || bb < 0 ? 2 : std::min(a, bb);
      int mode = pred;
      if (!b.flag()) {
        const int rem = static_cast<int>(b.u(3));
        mode = rem < pred ? rem : rem + 1;
      }
      modes[k] = mode;
      const int size = t8 ? 2 : 1;
      for (int j = 0; j < size; ++j)
        for (int i = 0; i < size; ++i) m.ipred[(yy + j) * 4 + x + i] = static_cast<int8_t>(mode);
    }
  } else {
    i16mode = (type - 1) % 4;
  }
  const int chromaMode = static_cast<int>(b.ueMax(3, "intra_chroma_pred_mode"));
  if (type == 0) {
    const int cbp = kCbpIntra[b.ueMax(47, "coded_block_pattern")];
    cbpL = cbp & 15, cbpC = cbp >> 4;
  } else {
    cbpC = ((type - 1) / 4) % 3;
    cbpL = type >= 13 ? 15 : 0;
  }
  m.t8x8 = t8;
  int qp = d.qp_;
  if (cbpL || cbpC || type != 0) {
    qp = readQpDelta();
    residual(type != 0, cbpL, cbpC, t8);
  }
  // Reconstruction through the library.
  int16_t* rd = d.coeffs_.data();
  const int qpc[2] = {kChromaQp[std::clamp(qp + d.pps->chromaQpOffset[0], 0, 51)], kChromaQp[std::clamp(qp + d.pps->chromaQpOffset[1], 0, 51)]};
  const bool flat = d.lists_.flat;
  if (type == 0 && !t8) {
    uint32_t um[16];
    for (int k = 0; k < 16; ++k) um[k] = static_cast<uint32_t>(modes[k]);
    check(flat ? huxiReconstructLumaIntraMB_H264_16s8u_C1R(&rd, y, W, um, cbpBits, qp, edge)
               : huxiReconstructLumaIntra4x4MB_H264_16s8u_C1R(&rd, y, W, um, cbpBits, qp, edge, d.ls4_[0][qp % 6], 0),
          "intra 4x4 reconstruction");
  } else if (type == 0) {
    int32_t m8[4] = {modes[0], modes[1], modes[2], modes[3]};
    check(huxiReconstructLumaIntra8x8MB_H264_16s8u_C1R(&rd, y, W, m8, cbpBits, qp, edge, d.ls8_[0][qp % 6], 0), "intra 8x8 reconstruction");
  } else if (flat) {
    check(huxiReconstructLumaIntra16x16MB_H264_16s8u_C1R(&rd, y, W, static_cast<uint32_t>(i16mode), cbpBits, qp, edge),
          "intra 16x16 reconstruction");
  } else {
    // Scaling matrices: the 16x16 prediction, the DC transform and each block through the block-level exports.
    const uint32_t avail = (edge & 1 ? 0u : 2u) | (edge & 4 ? 0u : 1u) | (edge & 16 ? 0u : 32u);
    check(huxiPredictIntra_16x16_H264_8u_C1IR(y, W, static_cast<uint32_t>(i16mode), avail), "intra 16x16 prediction");
    int16_t dc[16] = {};
    if (cbpBits & 1) {
      std::memcpy(dc, rd, sizeof dc);
      rd += 16;
      check(huxiTransformQuantInvLumaDC4x4_H264_16s_C1I(dc, qp, d.ls4_[0][qp % 6]), "luma DC transform");
    }
    for (int n = 0; n < 16; ++n) {
      const int x = blkX(n), yy = blkY(n);
      int16_t zero[16] = {};
      int16_t* c = zero;
      const bool coded = cbpBits >> (1 + n) & 1;
      if (coded) c = rd, rd += 16;
      uint8_t* p = y + yy * 4 * W + x * 4;
      check(huxiTransformQuantInvAddPred4x4_H264_16s_C1IR(p, W, c, &dc[yy * 4 + x], p, W, qp, coded, d.ls4_[0][qp % 6]), "intra 16x16 block");
    }
  }
  if (flat && qpc[0] == qpc[1])
    check(huxiReconstructChromaIntraMB_H264_16s8u_P2R(&rd, cb, cr, W / 2, static_cast<uint32_t>(chromaMode), cbpBits, qpc[0], edge),
          "intra chroma reconstruction");
  else
    check(huxiReconstructChromaIntra4x4MB_H264_16s8u_P2R(&rd, cb, cr, W / 2, static_cast<uint32_t>(chromaMode), cbpBits, qpc[0], qpc[1], edge,
                                                         d.ls4_[1][qpc[0] % 6], d.ls4_[2][qpc[1] % 6], 0),
          "intra chroma reconstruction");
}

// B macroblock partitions: prediction lists of partition 0 and 1 (1 L0, 2 L1, 3 both) and the shape (1 16x8, 2 8x16).
const uint8_t kBParts[22][3] = {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}, {1, 1, 1}, {1, 1, 2}, {2, 2, 1}, {2, 2, 2},
                                {1, 2, 1}, {1, 2, 2}, {2, 1, 1}, {2, 1, 2}, {1, 3, 1}, {1, 3, 2}, {2, 3, 1}, {2, 3, 2},
                                {3, 1, 1}, {3, 1, 2}, {3, 2, 1}, {3, 2, 2}, {3, 3, 1}, {3, 3, 2}};
// B sub-macroblock types: lists and partition shape (0 8x8, 1 8x4, 2 4x8, 3 4x4); type 0 is direct.
const uint8_t kBSub[13][2] = {{0, 0}, {1, 0}, {2, 0}, {3, 0}, {1, 1}, {1, 2}, {2, 1}, {2, 2}, {3, 1}, {3, 2}, {1, 3}, {2, 3}, {3, 3}};

void MbDecoder::decodeInter(int type, bool skipped) {
  m.intra = false;
  const bool isB = d.sh.type == 1;
  if (isB && !d.ref_[1][0]) fail("a B slice without a list 1 reference");
  bool t8 = false;
  int cbpL = 0, cbpC = 0;
  bool direct16 = false;
  bool allowT8 = true;  // the 8x8 transform is allowed by the partitioning
  if (!isB && type == -1) {  // P_Skip
    checkRef(0, 0);
    const Neighbour a = nb(0, -1, 0), bb = nb(0, 0, -1);
    int px = 0, py = 0;
    if (a.avail && bb.avail && !(a.ref == 0 && a.mx == 0 && a.my == 0) && !(bb.ref == 0 && bb.mx == 0 && bb.my == 0))
      predictMv(0, 0, 0, 0, 4, 0, px, py);
    setMotion(0, 0, 0, 4, 4, 0, px, py);
    setMotion(1, 0, 0, 4, 4, -1, 0, 0);
    m.uniform = true;
    predict(0, 0, 16, 16);
  } else if (isB && type == 0) {  // B_Skip, B_Direct_16x16
    direct(-1);
    direct16 = true;
    allowT8 = d.sps->direct8x8Inference;
    m.uniform = uniform();
    predictDirect(-1);
  } else if ((!isB && type == 3) || (!isB && type == 4) || (isB && type == 22)) {  // 8x8 partitions
    int sub[4], lists[4], shape[4];
    for (int q = 0; q < 4; ++q) {
      sub[q] = static_cast<int>(b.ueMax(isB ? 12 : 3, "sub_mb_type"));
      if (isB) lists[q] = kBSub[sub[q]][0], shape[q] = kBSub[sub[q]][1];
      else lists[q] = 1, shape[q] = sub[q];
      if (shape[q] != 0) allowT8 = false;
      if (isB && sub[q] == 0 && !d.sps->direct8x8Inference) allowT8 = false;
    }
    int ref[2][4] = {{-1, -1, -1, -1}, {-1, -1, -1, -1}};
    for (int l = 0; l < 2; ++l)
      for (int q = 0; q < 4; ++q)
        if (lists[q] >> l & 1) {
          ref[l][q] = (!isB && type == 4) ? 0 : readRef(l);
          checkRef(l, ref[l][q]);
        }
    for (int q = 0; q < 4; ++q)
      if (isB && sub[q] == 0) direct(q);
    for (int l = 0; l < 2; ++l) {
      done = 0;
      for (int q = 0; q < 4; ++q) {
        const int x0 = (q & 1) * 2, y0 = (q >> 1) * 2;
        if (!(lists[q] >> l & 1)) {
          if (!(isB && sub[q] == 0)) setMotion(l, x0, y0, 2, 2, -1, 0, 0);
          markDone(x0, y0, 2, 2);
          continue;
        }
        const int w = shape[q] & 2 ? 1 : 2, h = shape[q] & 1 ? 1 : 2;
        for (int j = 0; j < 2; j += h)
          for (int i = 0; i < 2; i += w) {
            int px, py;
            predictMv(l, ref[l][q], x0 + i, y0 + j, w, 0, px, py);
            const int mx = px + b.seRange(-16384, 16383, "mvd"), my = py + b.seRange(-16384, 16383, "mvd");
            if (mx < -8192 || mx > 8191 || my < -8192 || my > 8191) fail("motion vector out of range");
            setMotion(l, x0 + i, y0 + j, w, h, ref[l][q], mx, my);
            markDone(x0 + i, y0 + j, w, h);
          }
      }
    }
    for (int q = 0; q < 4; ++q) {
      const int x0 = (q & 1) * 2, y0 = (q >> 1) * 2;
      if (isB && sub[q] == 0) {
        predictDirect(q);
        continue;
      }
      const int w = shape[q] & 2 ? 1 : 2, h = shape[q] & 1 ? 1 : 2;
      for (int j = 0; j < 2; j += h)
        for (int i = 0; i < 2; i += w) predict((x0 + i) * 4, (y0 + j) * 4, w * 4, h * 4);
    }
  } else {  // 16x16, 16x8, 8x16
    int lists[2], shape, parts;
    if (!isB) {
      lists[0] = lists[1] = 1;
      shape = type;  // 0 16x16, 1 16x8, 2 8x16
    } else {
      lists[0] = kBParts[type][0], lists[1] = kBParts[type][1], shape = kBParts[type][2];
    }
    parts = shape ? 2 : 1;
    m.uniform = parts == 1;
    int ref[2][2] = {{-1, -1}, {-1, -1}};
    for (int l = 0; l < 2; ++l)
      for (int p = 0; p < parts; ++p)
        if (lists[p] >> l & 1) {
          ref[l][p] = readRef(l);
          checkRef(l, ref[l][p]);
        }
    for (int l = 0; l < 2; ++l) {
      done = 0;
      for (int p = 0; p < parts; ++p) {
        const int x = shape == 2 ? p * 2 : 0, y = shape == 1 ? p * 2 : 0;
        const int w = shape == 2 ? 2 : 4, h = shape == 1 ? 2 : 4;
        if (lists[p] >> l & 1) {
          int px, py;
          predictMv(l, ref[l][p], x, y, w, shape, px, py);
          const int mx = px + b.seRange(-16384, 16383, "mvd"), my = py + b.seRange(-16384, 16383, "mvd");
            if (mx < -8192 || mx > 8191 || my < -8192 || my > 8191) fail("motion vector out of range");
          setMotion(l, x, y, w, h, ref[l][p], mx, my);
        } else {
          setMotion(l, x, y, w, h, -1, 0, 0);
        }
        markDone(x, y, w, h);
      }
    }
    for (int p = 0; p < parts; ++p) {
      const int x = shape == 2 ? p * 8 : 0, y = shape == 1 ? p * 8 : 0;
      predict(x, y, shape == 2 ? 8 : 16, shape == 1 ? 8 : 16);
    }
  }
  if (skipped) {
    m.t8x8 = false;
    return;
  }
  const int cbp = kCbpInter[b.ueMax(47, "coded_block_pattern")];
  cbpL = cbp & 15, cbpC = cbp >> 4;
  if (cbpL && d.pps->transform8x8 && allowT8) t8 = b.flag();
  (void)direct16;
  m.t8x8 = t8;
  if (!cbpL && !cbpC) return;
  const int qp = readQpDelta();
  residual(false, cbpL, cbpC, t8);
  const int W = pic.width;
  uint8_t* y = pic.y + static_cast<size_t>(mbY) * 16 * W + mbX * 16;
  uint8_t* cb = pic.cb + static_cast<size_t>(mbY) * 8 * (W / 2) + mbX * 8;
  uint8_t* cr = pic.cr + static_cast<size_t>(mbY) * 8 * (W / 2) + mbX * 8;
  int16_t* rd = d.coeffs_.data();
  if (t8) check(huxiReconstructLumaInter8x8MB_H264_16s8u_C1R(&rd, y, W, cbpBits, qp, d.ls8_[1][qp % 6], 0), "inter 8x8 reconstruction");
  else if (d.lists_.flat) check(huxiReconstructLumaInterMB_H264_16s8u_C1R(&rd, y, W, cbpBits, qp), "inter reconstruction");
  else check(huxiReconstructLumaInter4x4MB_H264_16s8u_C1R(&rd, y, W, cbpBits, qp, d.ls4_[3][qp % 6], 0), "inter reconstruction");
  const int qpc0 = kChromaQp[std::clamp(qp + d.pps->chromaQpOffset[0], 0, 51)], qpc1 = kChromaQp[std::clamp(qp + d.pps->chromaQpOffset[1], 0, 51)];
  if (d.lists_.flat && qpc0 == qpc1) check(huxiReconstructChromaInterMB_H264_16s8u_P2R(&rd, cb, cr, W / 2, cbpBits, qpc0), "inter chroma reconstruction");
  else
    check(huxiReconstructChromaInter4x4MB_H264_16s8u_P2R(&rd, cb, cr, W / 2, cbpBits, qpc0, qpc1, d.ls4_[4][qpc0 % 6], d.ls4_[5][qpc1 % 6], 0),
          "inter chroma reconstruction");
}

namespace {
// Asks the cache for the reference samples the macroblock four to the right will read if it moves like this one:
// a cache line of six luma rows and three rows of each chroma plane per macroblock, so that four macroblocks in
// turn cover the 16 + 5 rows of a luma block and the 8 + 1 of a chroma block. The rows of a new macroblock row
// are far apart in memory, too many streams for the processor's own prefetcher.
void prefetchReference(const Picture& r, int mbX, int mbY, int mx, int my) {
#if defined(__GNUC__)
  const int W = r.width, H = r.height, phase = mbX & 3;
  const int x = std::clamp(mbX * 16 + (mx >> 2) + 64, 0, W - 1);
  const int y0 = mbY * 16 + (my >> 2) - 2 + phase * 6;
  for (int i = 0; i < 6; ++i) __builtin_prefetch(r.y + static_cast<size_t>(std::clamp(y0 + i, 0, H - 1)) * W + x);
  const int xc = x / 2, yc0 = (mbY * 16 + (my >> 2)) / 2 + phase * 3;
  for (int i = 0; i < 3; ++i) {
    const size_t off = static_cast<size_t>(std::clamp(yc0 + i, 0, H / 2 - 1)) * (W / 2) + xc;
    __builtin_prefetch(r.cb + off);
    __builtin_prefetch(r.cr + off);
  }
#else
  (void)r, (void)mbX, (void)mbY, (void)mx, (void)my;
#endif
}
}  // namespace

void MbDecoder::predict(int x, int y, int w, int h) {
  const size_t k = blk(x / 4, y / 4);
  const int r0 = pic.mo[k].ref[0], r1 = pic.mo[k].ref[1];
  const int W = pic.width, H = pic.height;
  const int px = mbX * 16 + x, py = mbY * 16 + y;
  if (x == 0 && y == 0) {  // once per macroblock: the rows a later macroblock writes, and those it reads
#if defined(__GNUC__)
    if (const int nx = px + 64; nx < W)
      for (int i = 0; i < 4; ++i) __builtin_prefetch(pic.y + static_cast<size_t>(py + (mbX & 3) * 4 + i) * W + nx, 1);
#endif
    for (int l = 0; l < 2; ++l)
      if (const int r = l ? r1 : r0; r >= 0) prefetchReference(*d.ref_[l][r], mbX, mbY, pic.mo[k].mv[l][0], pic.mo[k].mv[l][1]);
  }
  uint8_t* dy = pic.y + static_cast<size_t>(py) * W + px;
  uint8_t* dc[2] = {pic.cb + static_cast<size_t>(py / 2) * (W / 2) + px / 2, pic.cr + static_cast<size_t>(py / 2) * (W / 2) + px / 2};
  const int mode = d.sh.type == 0 ? (d.pps->weightedPred ? 1 : 0) : d.pps->weightedBipred;  // 1 explicit, 2 implicit
  const bool bi = r0 >= 0 && r1 >= 0;
  const int refs[2] = {r0, r1};
  for (int l = 0; l < 2; ++l) {
    if (refs[l] < 0) continue;
    const Picture* r = d.ref_[l][refs[l]];
    const int mx = pic.mo[k].mv[l][0], my = pic.mo[k].mv[l][1];
    const bool direct = !bi;  // single prediction goes straight to the picture
    HuxInterpolationBlock ib{};
    ib.pSrc[0] = r->y;
    ib.srcStep = W;
    ib.pDst[0] = direct ? dy : d.tmp_[l];
    ib.dstStep = direct ? W : 16;
    ib.frameWidth = W, ib.frameHeight = H;
    ib.blockWidth = w, ib.blockHeight = h;
    ib.blockX = px, ib.blockY = py;
    ib.mvX = mx, ib.mvY = my;
    check(huxiInterpolateLumaBlock_H264_8u_P1R(&ib), "luma interpolation");
    ib.pSrc[0] = r->cb, ib.pSrc[1] = r->cr;
    ib.srcStep = W / 2;
    ib.pDst[0] = direct ? dc[0] : d.tmpC_[l][0];
    ib.pDst[1] = direct ? dc[1] : d.tmpC_[l][1];
    ib.dstStep = direct ? W / 2 : 8;
    ib.frameWidth = W / 2, ib.frameHeight = H / 2;
    ib.blockWidth = w / 2, ib.blockHeight = h / 2;
    ib.blockX = px / 2, ib.blockY = py / 2;
    check(huxiInterpolateChromaBlock_H264_8u_P2R(&ib), "chroma interpolation");
  }
  const HuxSize roi{w, h}, roiC{w / 2, h / 2};
  if (!bi) {
    if (mode != 1) return;
    const int l = r0 >= 0 ? 0 : 1;
    const WeightEntry& we = d.sh.weights[l][refs[l]];
    if (we.luma) check(huxiUniDirWeightBlock_H264_8u_C1R(dy, W, static_cast<uint32_t>(d.sh.lumaLog2Wd), we.lw, we.lo, roi), "weighting");
    if (we.chroma)
      for (int c = 0; c < 2; ++c)
        check(huxiUniDirWeightBlock_H264_8u_C1R(dc[c], W / 2, static_cast<uint32_t>(d.sh.chromaLog2Wd), we.cw[c], we.co[c], roiC), "weighting");
    return;
  }
  if (mode == 1) {
    const WeightEntry& a = d.sh.weights[0][r0];
    const WeightEntry& bb = d.sh.weights[1][r1];
    check(huxiBiDirWeightBlock_H264_8u_P3P1R(d.tmp_[0], d.tmp_[1], dy, 16, 16, W, static_cast<uint32_t>(d.sh.lumaLog2Wd), a.lw, a.lo, bb.lw, bb.lo, roi),
          "weighting");
    for (int c = 0; c < 2; ++c)
      check(huxiBiDirWeightBlock_H264_8u_P3P1R(d.tmpC_[0][c], d.tmpC_[1][c], dc[c], 8, 8, W / 2, static_cast<uint32_t>(d.sh.chromaLog2Wd), a.cw[c], a.co[c],
                                               bb.cw[c], bb.co[c], roiC),
            "weighting");
    return;
  }
  const int w1 = mode == 2 ? d.implicitW_[r0][r1] : 32;
  if (w1 != 32) {
    check(huxiBiDirWeightBlockImplicit_H264_8u_P3P1R(d.tmp_[0], d.tmp_[1], dy, 16, 16, W, 64 - w1, w1, roi), "weighting");
    for (int c = 0; c < 2; ++c)
      check(huxiBiDirWeightBlockImplicit_H264_8u_P3P1R(d.tmpC_[0][c], d.tmpC_[1][c], dc[c], 8, 8, W / 2, 64 - w1, w1, roiC), "weighting");
    return;
  }
  check(huxiInterpolateBlock_H264_8u_P3P1R(d.tmp_[0], d.tmp_[1], dy, w, h, 16, 16, W), "averaging");
  for (int c = 0; c < 2; ++c) check(huxiInterpolateBlock_H264_8u_P3P1R(d.tmpC_[0][c], d.tmpC_[1][c], dc[c], w / 2, h / 2, 8, 8, W / 2), "averaging");
}

void Decoder::decodeSliceData() {
  Bits& b = bits_;
  const int total = mbW * mbH;
  int addr = sh.firstMb;
  qp_ = sh.qp;
  bool more = true;
  while (more) {
    if (sh.type != 2) {
      const uint32_t run = b.ue();
      if (run > static_cast<uint32_t>(total - addr)) fail("mb_skip_run past the end of the picture");
      for (uint32_t i = 0; i < run; ++i) decodeMb(addr++, true);
      if (run) more = b.moreRbsp();
    }
    if (more) {
      if (addr >= total) fail("slice data past the end of the picture");
      decodeMb(addr++, false);
      more = b.moreRbsp();
    }
    b.guard();
  }
}

void Decoder::decodeMb(int addr, bool skipped) {
  if (mbs_[static_cast<size_t>(addr)].slice >= 0) fail("macroblock %d decoded twice", addr);
  if (sh.type == 1 && ref_[1][0] && addr + 1 < mbW * mbH) {
    // The co-located motion of the next macroblock is cold (another picture's): ask for it early.
    const Picture& col = *ref_[1][0];
    const int nx = (addr + 1) % mbW, ny = (addr + 1) / mbW, bw = mbW * 4;
    for (int r : {0, 3}) {
      const char* p = reinterpret_cast<const char*>(&col.mo[static_cast<size_t>((ny * 4 + r) * bw + nx * 4)]);
      __builtin_prefetch(p);
      __builtin_prefetch(p + 64);
    }
  }
  MbDecoder mb(*this, addr);
  mb.decode(skipped);
  ++mbsDecoded_;
  lastMb_ = addr;
  // Macroblocks arrive in raster order, so a completed row r lets row r - 1 be filtered while its data is warm:
  // row r's intra prediction has read row r - 1's unfiltered samples, and nothing later reads them.
  // (Only when no macroblock before it is missing; an incomplete picture is refused when it ends.)
  if (addr % mbW == mbW - 1 && addr / mbW >= 1 && mbsDecoded_ == addr + 1) deblockRows(addr / mbW);
}

// ------------------------------------------------------------------------------------------------ deblocking
namespace {
// Boundary strength of the edge between 4x4 blocks p and q (indices into the picture's 4x4 grid).
int motionStrength(const Picture& pic, size_t p, size_t q) {
  const int p0 = pic.mo[p].refId[0], p1 = pic.mo[p].refId[1], q0 = pic.mo[q].refId[0], q1 = pic.mo[q].refId[1];
  if (p0 == q0 && p1 == q1 && (!p0 || std::memcmp(pic.mo[p].mv[0], pic.mo[q].mv[0], 4) == 0) &&
      (!p1 || std::memcmp(pic.mo[p].mv[1], pic.mo[q].mv[1], 4) == 0))
    return 0;  // the same motion on both sides (the common case inside a partition)
  const int np = (p0 != 0) + (p1 != 0), nq = (q0 != 0) + (q1 != 0);
  if (np != nq) return 1;
  auto far = [&](int lp, int lq) {
    return std::abs(pic.mo[p].mv[lp][0] - pic.mo[q].mv[lq][0]) >= 4 || std::abs(pic.mo[p].mv[lp][1] - pic.mo[q].mv[lq][1]) >= 4;
  };
  if (np == 1) {
    const int lp = p0 ? 0 : 1, lq = q0 ? 0 : 1;
    if ((p0 ? p0 : p1) != (q0 ? q0 : q1)) return 1;
    return far(lp, lq);
  }
  if (!((p0 == q0 && p1 == q1) || (p0 == q1 && p1 == q0))) return 1;
  if (p0 != p1) {
    if (p0 == q0) return far(0, 0) || far(1, 1);
    return far(0, 1) || far(1, 0);
  }
  return (far(0, 0) || far(1, 1)) && (far(0, 1) || far(1, 0));
}
}  // namespace

void Decoder::deblockRows(int end) {
  for (; rowsFiltered_ < end; ++rowsFiltered_)
    for (int x = 0; x < mbW; ++x) deblockMb(rowsFiltered_ * mbW + x);
}

namespace {
// The bS bytes of an edge's four segments from its coded-residual bits and the motion test's answer (0 or 1) for
// the segments without residual.
constexpr auto kEdgeBs = [] {
  std::array<std::array<std::array<uint8_t, 4>, 16>, 2> t{};
  for (int v = 0; v < 2; ++v)
    for (int c = 0; c < 16; ++c)
      for (int s = 0; s < 4; ++s) t[v][c][s] = static_cast<uint8_t>(c >> s & 1 ? 2 : v);
  return t;
}();
// Bit 4y + x to bit 4x + y: the coded blocks of a column as the bits of a row.
unsigned transpose4x4(unsigned x) {
  unsigned t = (x ^ (x >> 3)) & 0x0A0Au;
  x ^= t ^ (t << 3);
  t = (x ^ (x >> 6)) & 0x00CCu;
  return x ^ t ^ (t << 6);
}
}  // namespace

void Decoder::deblockMb(int addr) {
  const MbInfo& m = mbs_[static_cast<size_t>(addr)];
  const SliceParams& sp = slices_[static_cast<size_t>(m.slice)];
  if (sp.disable == 1) return;
  if (sp.alpha != edgeOffsets_[0] || sp.beta != edgeOffsets_[1]) {
    for (int qp = 0; qp < 52; ++qp) {
      const int a = std::clamp(qp + sp.alpha, 0, 51);
      edgeTable_[qp] = {kAlpha[a], kBeta[std::clamp(qp + sp.beta, 0, 51)], {0, kTc0[a][0], kTc0[a][1], kTc0[a][2], 0}};
    }
    edgeOffsets_[0] = sp.alpha, edgeOffsets_[1] = sp.beta;
  }
  Picture& pic = *cur_;
  const int mbX = addr % mbW, mbY = addr / mbW, bw = mbW * 4, W = pic.width;
  const bool left = mbX > 0 && (sp.disable != 2 || mbs_[static_cast<size_t>(addr - 1)].slice == m.slice);
  const bool top = mbY > 0 && (sp.disable != 2 || mbs_[static_cast<size_t>(addr - mbW)].slice == m.slice);
  // The internal edges' thresholds (luma, Cb, Cr) serve both directions; the outer edge's depend on the neighbour.
  const EdgeParams* inner[3] = {&edgeTable_[m.qp], &edgeTable_[m.qpc[0]], &edgeTable_[m.qpc[1]]};
  for (int dir = 0; dir < 2; ++dir) {  // 0 vertical edges, 1 horizontal edges
    const bool outer = dir == 0 ? left : top;
    const int nAddr = dir == 0 ? addr - 1 : addr - mbW;
    uint8_t bs[16];
    const MbInfo* pmb = outer ? &mbs_[static_cast<size_t>(nAddr)] : nullptr;
    const int pmx = dir == 0 ? mbX - 1 : mbX, pmy = dir == 0 ? mbY : mbY - 1;
    const unsigned mz = dir ? m.nonZero : transpose4x4(m.nonZero);
    const unsigned pz = !pmb ? 0 : dir ? pmb->nonZero : transpose4x4(pmb->nonZero);
    for (int e = 0; e < 4; ++e) {
      uint8_t* out = bs + 4 * e;
      if (e == 0 ? !outer : (m.t8x8 && (e & 1))) {
        std::memset(out, 0, 4);
        continue;
      }
      const MbInfo& pm = e == 0 ? *pmb : m;
      if (m.intra || pm.intra) {
        std::memset(out, e == 0 ? 4 : 3, 4);
        continue;
      }
      // Coded residual on either side, one bit per segment: the four blocks of column (vertical edges) or row.
      const unsigned coded = ((mz >> 4 * e) | ((e == 0 ? pz : mz) >> 4 * (e == 0 ? 3 : e - 1))) & 15u;
      auto strengthAt = [&](int sgm) {
        const int qx = dir == 0 ? e : sgm, qy = dir == 0 ? sgm : e;
        const int px = dir == 0 ? (e == 0 ? 3 : qx - 1) : qx, py = dir == 0 ? qy : (e == 0 ? 3 : qy - 1);
        const int bx = e == 0 ? pmx : mbX, by = e == 0 ? pmy : mbY;
        const size_t p = static_cast<size_t>((by * 4 + py) * bw + bx * 4 + px), q = static_cast<size_t>((mbY * 4 + qy) * bw + mbX * 4 + qx);
        return static_cast<uint8_t>(motionStrength(pic, p, q));
      };
      if (m.uniform && (e > 0 || pm.uniform)) {
        // One motion on each side: inside the macroblock there is no motion edge; across two such macroblocks
        // the motion test has one answer for the whole edge.
        std::memcpy(out, kEdgeBs[coded == 15 || e > 0 ? 0 : strengthAt(0)][coded].data(), 4);
        continue;
      }
      for (int sgm = 0; sgm < 4; ++sgm) out[sgm] = coded >> sgm & 1 ? 2 : strengthAt(sgm);
    }
    uint64_t half[2];
    std::memcpy(half, bs, sizeof half);
    if (!(half[0] | half[1])) continue;
    const MbInfo& pm = outer ? *pmb : m;
    // Luma.
    {
      const EdgeParams& o = edgeTable_[(pm.qp + m.qp + 1) >> 1];
      const uint8_t alpha[2] = {o.alpha, inner[0]->alpha}, beta[2] = {o.beta, inner[0]->beta};
      uint8_t tc[16];
      for (int i = 0; i < 4; ++i) tc[i] = o.tc[bs[i]];
      for (int i = 4; i < 16; ++i) tc[i] = inner[0]->tc[bs[i]];
      uint8_t* y = pic.y + static_cast<size_t>(mbY) * 16 * W + mbX * 16;
      check(dir == 0 ? huxiFilterDeblockingLuma_VerEdge_H264_8u_C1IR(y, W, alpha, beta, tc, bs)
                     : huxiFilterDeblockingLuma_HorEdge_H264_8u_C1IR(y, W, alpha, beta, tc, bs),
            "luma deblocking");
    }
    // Chroma: edges 0 and 2 of the luma pattern.
    for (int c = 0; c < 2; ++c) {
      const EdgeParams& o = edgeTable_[(pm.qpc[c] + m.qpc[c] + 1) >> 1];
      const EdgeParams& in = *inner[1 + c];
      const uint8_t alpha[2] = {o.alpha, in.alpha}, beta[2] = {o.beta, in.beta};
      uint8_t tc[8];
      for (int s = 0; s < 4; ++s) tc[s] = o.tc[bs[s]], tc[4 + s] = in.tc[bs[8 + s]];
      uint8_t* p = (c ? pic.cr : pic.cb) + static_cast<size_t>(mbY) * 8 * (W / 2) + mbX * 8;
      check(dir == 0 ? huxiFilterDeblockingChroma_VerEdge_H264_8u_C1IR(p, W / 2, alpha, beta, tc, bs)
                     : huxiFilterDeblockingChroma_HorEdge_H264_8u_C1IR(p, W / 2, alpha, beta, tc, bs),
            "chroma deblocking");
    }
  }
}

// ------------------------------------------------------------------------------------------------ output
struct Sink {
  FILE* f = nullptr;
  bool md5 = false;
  bool headerDone = false;
  int64_t n = 0;
};

void writePicture(void* ctx, const Picture& pic, const Sps&) {
  Sink& o = *static_cast<Sink*>(ctx);
  const Picture& s = pic;
  const int w = pic.width - s.cropLeft - s.cropRight, h = pic.height - s.cropTop - s.cropBottom;
  Md5 m;
  // The cropped planes, row by row (whole planes at once when nothing is cropped at the sides).
  auto emit = [&](const uint8_t* plane, int stride, int x0, int y0, int cw, int ch) {
    const uint8_t* p = plane + static_cast<size_t>(y0) * stride + x0;
    const bool whole = cw == stride;
    for (int y = 0; y < ch; y += whole ? ch : 1, p += static_cast<size_t>(stride) * (whole ? ch : 1)) {
      const size_t n = static_cast<size_t>(cw) * (whole ? ch : 1);
      if (o.md5) m.update(p, n);
      else std::fwrite(p, 1, n, o.f);
    }
  };
  emit(pic.y, pic.width, s.cropLeft, s.cropTop, w, h);
  emit(pic.cb, pic.width / 2, s.cropLeft / 2, s.cropTop / 2, w / 2, h / 2);
  emit(pic.cr, pic.width / 2, s.cropLeft / 2, s.cropTop / 2, w / 2, h / 2);
  if (o.md5) {
    if (!o.headerDone) {
      o.headerDone = true;
      const int num = s.timeNum ? s.timeNum : 1, den = s.timeDen ? s.timeDen : 25;
      std::fprintf(o.f,
                   "#format: frame checksums\n#version: 2\n#hash: MD5\n#tb 0: %d/%d\n#media_type 0: video\n#codec_id 0: rawvideo\n"
                   "#dimensions 0: %dx%d\n#sar 0: 0/1\n#stream#, dts,        pts, duration,     size, hash\n",
                   num, den, w, h);
    }
    const size_t size = static_cast<size_t>(w) * h * 3 / 2;
    std::fprintf(o.f, "0, %10lld, %10lld, %8d, %8zu, %s\n", static_cast<long long>(o.n), static_cast<long long>(o.n), 1, size, m.hex().c_str());
  }
  ++o.n;
}

// Splits an Annex B byte stream into NAL units (start codes 00 00 01; a zero byte before them and trailing zeros
// are dropped) and decodes them; false when the stream is refused, with a message on standard error unless name is
// null.
bool decodeStream(const uint8_t* data, size_t n, Decoder& dec, const char* name) {
  try {
    size_t i = 0, start = SIZE_MAX;
    std::vector<uint8_t> nal;
    auto emit = [&](size_t from, size_t to) {
      while (to > from && data[to - 1] == 0) --to;
      if (to > from) {
        nal.assign(data + from, data + to);
        dec.decodeNal(nal);
      }
    };
    while (i + 2 < n) {
      // A start code ends in a 1 byte after two zero bytes: look for the ones.
      const uint8_t* one = static_cast<const uint8_t*>(std::memchr(data + i + 2, 1, n - i - 2));
      if (!one) break;
      const size_t at = static_cast<size_t>(one - data) - 2;
      if (data[at] == 0 && data[at + 1] == 0) {
        if (start != SIZE_MAX) emit(start, at);
        start = at + 3;
      }
      i = at + 1;
    }
    if (start == SIZE_MAX) throw DecodeError{"no start code: not an Annex B byte stream"};
    emit(start, n);
    dec.flush();
    return true;
  } catch (const DecodeError& e) {
    if (name) std::fprintf(stderr, "huxvc-h264dec: %s: %s\n", name, e.what.c_str());
  } catch (const std::bad_alloc&) {
    if (name) std::fprintf(stderr, "huxvc-h264dec: %s: out of memory\n", name);
  }
  return false;
}

#ifdef HUXVC_H264DEC_FUZZ
void discard(void*, const Picture&, const Sps&) {}
#endif

}  // namespace

#ifdef HUXVC_H264DEC_FUZZ
// Fuzz target: the whole decoder on one input (libFuzzer with clang).
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Decoder dec(discard, nullptr);
  decodeStream(data, size, dec, nullptr);
  return 0;
}
#ifdef HUXVC_H264DEC_FUZZ_DRIVER
// Without libFuzzer: seeded random mutations (byte flips, truncation, spliced zero runs) of the seed streams named
// on the command line, for the given number of seconds.   fuzz_h264dec SECONDS SEED.264...
int main(int argc, char** argv) {
  if (argc < 3) return 2;
  const double secs = std::atof(argv[1]);
  std::vector<std::vector<uint8_t>> seeds;
  for (int i = 2; i < argc; ++i) {
    FILE* f = std::fopen(argv[i], "rb");
    if (!f) continue;
    std::vector<uint8_t> d;
    int c;
    while ((c = std::fgetc(f)) != EOF) d.push_back(static_cast<uint8_t>(c));
    std::fclose(f);
    if (!d.empty()) seeds.push_back(std::move(d));
  }
  if (seeds.empty()) return 2;
  uint64_t x = 0x9E3779B97F4A7C15u;
  auto rnd = [&](uint64_t n) {
    x ^= x << 13, x ^= x >> 7, x ^= x << 17;
    return n ? x % n : 0;
  };
  const auto t0 = std::chrono::steady_clock::now();
  long runs = 0;
  while (std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count() < secs) {
    std::vector<uint8_t> d = seeds[rnd(seeds.size())];
    const int edits = 1 + static_cast<int>(rnd(8));
    for (int e = 0; e < edits && !d.empty(); ++e) {
      const size_t at = rnd(d.size());
      switch (rnd(4)) {
        case 0: d[at] = static_cast<uint8_t>(rnd(256)); break;
        case 1: d[at] ^= static_cast<uint8_t>(1u << rnd(8)); break;
        case 2: d.resize(at + 1); break;
        default: d.insert(d.begin() + static_cast<std::ptrdiff_t>(at), rnd(64), 0); break;
      }
    }
    LLVMFuzzerTestOneInput(d.data(), d.size());
    ++runs;
  }
  std::printf("fuzz_h264dec: %ld inputs in %.0f s, no failure\n", runs, secs);
  return 0;
}
#endif
#else
int main(int argc, char** argv) {
  bool md5 = false;
  const char* in = nullptr;
  const char* outName = nullptr;
  for (int i = 1; i < argc; ++i) {
    if (!std::strcmp(argv[i], "--framemd5")) md5 = true;
    else if (!in) in = argv[i];
    else if (!outName) outName = argv[i];
    else in = nullptr, i = argc;
  }
  if (!in) {
    std::fprintf(stderr, "usage: huxvc-h264dec [--framemd5] INPUT.264 [OUTPUT]\n");
    return 2;
  }
  FILE* f = std::fopen(in, "rb");
  if (!f) {
    std::fprintf(stderr, "huxvc-h264dec: cannot open %s\n", in);
    return 1;
  }
  std::vector<uint8_t> data;
  {
    uint8_t buf[1 << 16];
    size_t n;
    while ((n = std::fread(buf, 1, sizeof buf, f)) > 0) data.insert(data.end(), buf, buf + n);
    std::fclose(f);
  }
  Sink sink;
  sink.md5 = md5;
  sink.f = outName ? std::fopen(outName, "wb") : stdout;
  if (!sink.f) {
    std::fprintf(stderr, "huxvc-h264dec: cannot create %s\n", outName);
    return 1;
  }
  const auto t0 = std::chrono::steady_clock::now();
  Decoder dec(writePicture, &sink);
  const bool ok = decodeStream(data.data(), data.size(), dec, in);
  const double secs = std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
  if (sink.f != stdout) std::fclose(sink.f);
  else std::fflush(stdout);
  std::fprintf(stderr, "huxvc-h264dec: %d frames in %.3f s (%.1f fps)\n", dec.framesOut, secs, secs > 0 ? dec.framesOut / secs : 0.0);
  return ok ? 0 : 1;
}
#endif
