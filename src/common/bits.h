// Bit-stream cursors shared by every entropy decoder and encoder.
//
// Word form: the stream is an array of native 32-bit words whose bits are
// consumed from bit 31 down, then from the next word. The offset is the index
// (from the least significant bit) of the next bit to read: 31 = the whole
// word unread, 0 = only its lowest bit left. Table-driven decoders look ahead
// a fixed number of bits and give back what the code did not use; a give-back
// may carry the cursor back over a word boundary that the look-ahead crossed.
//
// Byte form: bits are consumed from the most significant bit of each byte; the
// offset counts the bits of the current byte already consumed (0..7).
#pragma once

#include <cstdint>

namespace hux::bits {

constexpr uint32_t mask32(int n) { return n >= 32 ? 0xffffffffu : ((1u << n) - 1u); }

class WordReader {
 public:
  // offset must be 0..31; the exports check it (or, where the interface leaves
  // it unchecked, mask it) before building a reader.
  WordReader(const uint32_t* ptr, int32_t offset) : ptr_(ptr), offset_(offset) {}

  // The next n bits (1..32) without consuming them. The following word is read
  // only when the field actually extends into it.
  uint32_t peek(int n) const {
    const int avail = offset_ + 1;
    const uint32_t w0 = ptr_[0];
    if (n <= avail) return (w0 >> (avail - n)) & mask32(n);
    const int low = n - avail;  // 1..31 bits from the next word
    return ((w0 & mask32(avail)) << low) | (ptr_[1] >> (32 - low));
  }

  void skip(int n) {
    offset_ -= n;
    if (offset_ < 0) {
      offset_ += 32;
      ++ptr_;
    }
  }

  uint32_t read(int n) {
    const uint32_t v = peek(n);
    skip(n);
    return v;
  }

  // Returns n (0..32) bits to the stream, moving back a word when the offset
  // reaches 32 or more.
  void give_back(int n) {
    offset_ += n;
    if (offset_ >= 32) {
      offset_ -= 32;
      --ptr_;
    }
  }

  const uint32_t* ptr() const { return ptr_; }
  int32_t offset() const { return offset_; }

 private:
  const uint32_t* ptr_;
  int32_t offset_;
};

class ByteReader {
 public:
  // offset must be 0..7.
  ByteReader(const uint8_t* ptr, int32_t offset) : ptr_(ptr), offset_(offset) {}

  // The next n bits (1..32) without consuming them; reads only the bytes the
  // field covers.
  uint32_t peek(int n) const {
    const int total = offset_ + n;
    const int bytes = (total + 7) >> 3;
    uint64_t acc = 0;
    for (int i = 0; i < bytes; ++i) acc = (acc << 8) | ptr_[i];
    return static_cast<uint32_t>(acc >> (bytes * 8 - total)) & mask32(n);
  }

  void skip(int n) {
    offset_ += n;
    ptr_ += offset_ >> 3;
    offset_ &= 7;
  }

  uint32_t read(int n) {
    const uint32_t v = peek(n);
    skip(n);
    return v;
  }

  const uint8_t* ptr() const { return ptr_; }
  int32_t offset() const { return offset_; }

 private:
  const uint8_t* ptr_;
  int32_t offset_;
};

class ByteWriter {
 public:
  // offset must be 0..7.
  ByteWriter(uint8_t* ptr, int32_t offset) : ptr_(ptr), offset_(offset) {}

  // Appends the low n bits (1..32) of v. The bits of the current byte before
  // the offset are kept; every byte the field touches is stored whole, so the
  // bits behind the last one written are zero and no pre-cleared buffer is needed.
  void put(uint32_t v, int n) {
    const int total = offset_ + n;
    const int bytes = (total + 7) >> 3;
    const uint64_t keep = offset_ ? (ptr_[0] & (0xff00u >> offset_) & 0xffu) : 0u;
    const uint64_t acc = (keep << (bytes * 8 - 8)) | (static_cast<uint64_t>(v & mask32(n)) << (bytes * 8 - total));
    for (int i = 0; i < bytes; ++i) ptr_[i] = static_cast<uint8_t>(acc >> (8 * (bytes - 1 - i)));
    ptr_ += total >> 3;
    offset_ = total & 7;
  }

  uint8_t* ptr() const { return ptr_; }
  int32_t offset() const { return offset_; }

 private:
  uint8_t* ptr_;
  int32_t offset_;
};

}  // namespace hux::bits
