// A buffered reader over the word-form cursor for the scalar entropy decoders.
//
// The unread bits sit left-aligned in a 64-bit buffer; a word is loaded only
// when a peek needs more bits than the buffer holds, so the reader touches
// exactly the words that a plain reader peeking the same fields would touch.
// Every operation gives the same bits and the same final cursor as
// bits::WordReader doing the same peeks and skips.
#pragma once

#include <cstdint>

namespace hux::bits {

inline int clz64(uint64_t v) {  // v != 0
#if defined(__GNUC__) || defined(__clang__)
  return __builtin_clzll(v);
#else
  int n = 0;
  while (!(v & (uint64_t{1} << 63))) {
    v <<= 1;
    ++n;
  }
  return n;
#endif
}

class WordBitBuffer {
 public:
  // The offset is masked to 0..31 (the decoders that do not check it still
  // must not shift out of range). Reads the current word, which holds at
  // least one unread bit.
  WordBitBuffer(const uint32_t* ptr, int32_t offset) : base_(ptr), next_(ptr + 1) {
    const int avail = (offset & 31) + 1;
    cnt_ = avail;
    buf_ = static_cast<uint64_t>(ptr[0] << (32 - avail)) << 32;
  }

  // The next n bits (1..32) without consuming them.
  uint32_t peek(int n) {
    if (cnt_ < n) {
      buf_ |= static_cast<uint64_t>(*next_++) << (32 - cnt_);
      cnt_ += 32;
    }
    return static_cast<uint32_t>(buf_ >> 32) >> (32 - n);
  }

  // Consumes n (0..32) bits that a peek has already made available.
  void skip(int n) {
    buf_ <<= n;
    cnt_ -= n;
  }

  // n = 0..32; reading nothing gives 0.
  uint32_t read(int n) {
    if (n == 0) return 0;
    const uint32_t v = peek(n);
    skip(n);
    return v;
  }

  // Counts the 0 bits before the next 1 and consumes them and the 1. Only
  // the words holding those bits are loaded.
  int zeros() {
    int z = 0;
    while (buf_ == 0) {
      z += cnt_;
      buf_ = static_cast<uint64_t>(*next_++) << 32;
      cnt_ = 32;
    }
    const int lz = clz64(buf_);
    skip(lz + 1);
    return z + lz;
  }

  // Bits consumed since construction, counted from bit 31 of the first word.
  int64_t position() const { return static_cast<int64_t>(next_ - base_) * 32 - cnt_; }

  // Writes the cursor back: word pointer and offset (31 = whole word unread).
  void store(uint32_t** pp, int32_t* off) const {
    const int64_t pos = position();
    *pp = const_cast<uint32_t*>(base_ + (pos >> 5));
    *off = 31 - static_cast<int32_t>(pos & 31);
  }

 private:
  const uint32_t* base_;
  const uint32_t* next_;
  uint64_t buf_;
  int cnt_;
};

}  // namespace hux::bits
