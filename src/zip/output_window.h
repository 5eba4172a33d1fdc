// Where decoders write: the last 32,768 bytes of the member, which matches reach back into, on
// their way to the file.
//
// The window and the 2,048 bytes of a piece of output lie in one ring. So a match at the longest
// distance still finds its bytes when copying runs over the end of another one. A full ring goes to
// the file in pieces of 2,048 bytes; of a member that yields more than it declared the rest does
// not.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace hv {

class OutputWindow {
 public:
  static constexpr std::size_t WindowSize = 32768;
  static constexpr std::size_t PieceSize = 2048;
  static constexpr std::size_t RingSize = WindowSize + PieceSize;
  // What a loop with the ring in its hands may write behind its end before it calls MoveTo.
  static constexpr std::size_t Margin = 512;

  OutputWindow();

  // Starts a member of `limit` bytes: the window is zeroes, the bytes go to the file of `handle`.
  void Begin(int32_t handle, uint64_t limit);

  void Put(uint8_t byte) {
    ring_[at_++] = byte;
    if (at_ == RingSize) Wrap();
  }
  void Append(std::span<const uint8_t> bytes);
  // Repeats `length` bytes from `distance` back; 1 <= distance <= WindowSize. What lies before the
  // member is zeroes.
  void Copy(std::size_t distance, std::size_t length);

  // Whether there is a use for more: less than the limit has come and nothing has failed.
  bool Wants() const { return !Stopped() && Total() < limit_; }
  // Whether nothing more will be written.
  bool Stopped() const { return writeFailed_ || overflowed_; }
  bool WriteFailed() const { return writeFailed_; }
  // Whether more came than the limit.
  bool Overflowed() const { return overflowed_; }
  uint64_t Total() const { return flushed_ + at_; }

  // Writes what is still in the ring.
  void Finish();
  // Of the bytes that were written.
  uint32_t Crc() const { return crc_; }

  // The ring for a loop that writes into it itself, from At() on and up to Margin bytes behind
  // RingSize, and then says with MoveTo how far it came.
  uint8_t* Ring() { return ring_.get(); }
  std::size_t At() const { return at_; }
  void MoveTo(std::size_t at);

 private:
  void Wrap();
  void Write(std::span<const uint8_t> bytes);

  std::unique_ptr<uint8_t[]> ring_;
  std::size_t at_ = 0;    // bytes of the ring that are not written yet
  uint64_t flushed_ = 0;  // bytes that left the ring, written or beyond the limit
  uint64_t limit_ = 0;
  int32_t handle_ = 0;
  uint32_t crc_ = 0;
  bool writeFailed_ = false;
  bool overflowed_ = false;
};

}  // namespace hv
