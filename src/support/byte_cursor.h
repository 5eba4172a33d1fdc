// A cursor over bytes that nobody has checked yet: font files, printer replies, archive headers.
//
//   family                     past the end                     moves      says so by
//   Has, Remaining, AtEnd      -                                no         result
//   PeekU8                     0                                no         -  (ask Has)
//   ReadU8 .. ReadBe32         0, cursor goes to the end        yes        Failed()
//   ReadBytes                  empty, cursor goes to the end    yes        Failed()
//   Skip, Seek                 cursor goes to the end           yes        result and Failed()
//
// Failed() stays true once it is: a row of reads needs one test at its end.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "support/byte_order.h"

namespace hv {

class ByteCursor {
 public:
  explicit ByteCursor(std::span<const uint8_t> bytes) : bytes_(bytes) {}

  std::size_t Position() const { return position_; }
  std::size_t Remaining() const { return bytes_.size() - position_; }
  bool Has(std::size_t count) const { return count <= Remaining(); }
  bool AtEnd() const { return position_ == bytes_.size(); }
  bool Failed() const { return failed_; }

  uint8_t PeekU8(std::size_t ahead = 0) const {
    return ahead < Remaining() ? bytes_[position_ + ahead] : uint8_t{0};
  }

  uint8_t ReadU8() {
    const uint8_t* p = Take(1);
    return p == nullptr ? uint8_t{0} : *p;
  }
  uint16_t ReadLe16() {
    const uint8_t* p = Take(2);
    return p == nullptr ? uint16_t{0} : LoadLe16(p);
  }
  uint16_t ReadBe16() {
    const uint8_t* p = Take(2);
    return p == nullptr ? uint16_t{0} : LoadBe16(p);
  }
  uint32_t ReadLe32() {
    const uint8_t* p = Take(4);
    return p == nullptr ? 0 : LoadLe32(p);
  }
  uint32_t ReadBe32() {
    const uint8_t* p = Take(4);
    return p == nullptr ? 0 : LoadBe32(p);
  }

  std::span<const uint8_t> ReadBytes(std::size_t count) {
    const uint8_t* p = Take(count);
    return p == nullptr ? std::span<const uint8_t>{} : std::span<const uint8_t>{p, count};
  }

  bool Skip(std::size_t count) { return Take(count) != nullptr; }

  bool Seek(std::size_t position) {
    if (position <= bytes_.size()) {
      position_ = position;
      return true;
    }
    Fail();
    return false;
  }

 private:
  const uint8_t* Take(std::size_t count) {
    if (!Has(count)) {
      Fail();
      return nullptr;
    }
    const std::size_t at = position_;
    position_ += count;
    // An empty span may have no address; any will do for no bytes.
    static constexpr uint8_t Nothing = 0;
    return count == 0 ? &Nothing : &bytes_[at];
  }

  void Fail() {
    position_ = bytes_.size();
    failed_ = true;
  }

  std::span<const uint8_t> bytes_;
  std::size_t position_ = 0;
  bool failed_ = false;
};

}  // namespace hv
