// The compressed data of a member as bits, the lowest of each byte first.
//
//   function   behind the last bit
//   Refill     adds nothing
//   Peek       the missing bits are 0
//   Drop       Failed() becomes true
//   Take       0, and Failed() becomes true
#pragma once

#include <cstdint>

#include "support/byte_order.h"
#include "zip/member_input.h"

namespace hv {

// Bits read ahead. Above the first `count` ones there may be more of the same input.
struct BitBuffer {
  uint64_t bits = 0;
  unsigned count = 0;

  // Adds 7 or 8 bytes' worth: afterwards there are 56 bits and more. Reads 8 bytes at `in` and
  // returns how many of them have been used up.
  unsigned Refill(const uint8_t* in) {
    bits |= LoadLe64(in) << count;
    const unsigned used = (63 - count) >> 3;
    count |= 56;
    return used;
  }
  void Drop(unsigned n) {
    bits >>= n;
    count -= n;
  }
};

class BitReader {
 public:
  explicit BitReader(MemberInput& input) : input_(input) {}

  // Puts at least 56 bits, or all that are left, into the buffer.
  void Refill() {
    if (input_.Unread().size() < sizeof(uint64_t)) input_.More();
    const std::span<const uint8_t> unread = input_.Unread();
    if (unread.size() >= sizeof(uint64_t)) {
      input_.Take(buffer_.Refill(unread.data()));
      return;
    }
    std::size_t used = 0;
    while (buffer_.count < 56 && used < unread.size()) {
      buffer_.bits |= static_cast<uint64_t>(unread[used++]) << buffer_.count;
      buffer_.count += 8;
    }
    input_.Take(used);
  }

  // The next bits, as many as were refilled.
  uint64_t Peek() const { return buffer_.bits; }

  void Drop(unsigned count) {
    if (count > buffer_.count) {
      failed_ = true;
      count = buffer_.count;
    }
    buffer_.Drop(count);
  }

  // The next `count` bits, at most 32, as a number.
  uint32_t Take(unsigned count) {
    if (buffer_.count < count) Refill();
    const uint64_t value = buffer_.bits & ((uint64_t{1} << count) - 1);
    Drop(count);
    return failed_ ? 0 : static_cast<uint32_t>(value);
  }

  // Leaves the rest of the byte that has been begun.
  void AlignToByte() { Drop(buffer_.count % 8); }
  // Whether the next byte is still to come from the input. Only at a byte's border.
  bool IsEmpty() const { return buffer_.count == 0; }
  // Forgets what was read ahead beyond the count.
  void Clear() { buffer_ = BitBuffer(); }

  bool Failed() const { return failed_; }

  // For a loop that keeps the buffer in registers.
  BitBuffer& Buffer() { return buffer_; }
  MemberInput& Input() { return input_; }

 private:
  MemberInput& input_;
  BitBuffer buffer_;
  bool failed_ = false;
};

}  // namespace hv
