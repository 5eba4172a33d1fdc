#include "support/pclxl_walker.h"

#include <gtest/gtest.h>

namespace hvtest {
namespace {

class Walker {
 public:
  explicit Walker(std::string_view stream) : stream_(stream) {}

  std::vector<PclXlOperator> Walk() {
    at_ = stream_.find('\n') + 1;
    if (at_ == 0 || stream_.substr(0, 2) != ") ") {
      ADD_FAILURE() << "no header of a PCL XL stream";
      return {};
    }
    std::vector<PclXlOperator> operators;
    PclXlOperator next = {at_, 0, 0, {}, {}};
    std::string value;
    while (good_ && at_ < stream_.size()) {
      const int tag = Byte();
      if (tag == 0 || (tag >= 9 && tag <= 13) || tag == ' ') continue;
      if (tag == 0xF8) {
        next.values[Byte()] = value;
      } else if (tag == 0xFA || tag == 0xFB) {
        const std::size_t length = Number(tag == 0xFA ? 4 : 1);
        if (operators.empty()) Fail("data without an operator");
        if (!good_) break;
        operators.back().data += Bytes(length);
        operators.back().end = next.offset = at_;
      } else if (tag >= 0xC0) {
        value = Value(tag);
      } else if (tag >= 0x41 && tag <= 0xB9) {
        next.tag = tag;
        next.end = at_;
        operators.push_back(next);
        next = {at_, 0, 0, {}, {}};
        if (tag == 0x42) break;
      } else {
        Fail("a byte that begins nothing");
      }
    }
    return operators;
  }

 private:
  std::string Value(int tag) {
    static const int sizes[] = {1, 2, 4, 2, 4, 4};
    const int type = tag % 8;
    if (type > 5) Fail("an unknown type");
    if (!good_) return {};
    const auto size = static_cast<std::size_t>(sizes[type]);
    switch (tag / 8) {
      case 0xC0 / 8:
        return Bytes(size);
      case 0xC8 / 8: {
        const int lengthTag = Byte();
        if (lengthTag != 0xC0 && lengthTag != 0xC1) Fail("a length of another type");
        return Bytes(size * Number(lengthTag == 0xC0 ? 1 : 2));
      }
      case 0xD0 / 8:
        return Bytes(2 * size);
      case 0xE0 / 8:
        return Bytes(4 * size);
      default:
        Fail("an unknown value");
        return {};
    }
  }

  std::string Bytes(std::size_t count) {
    if (count > stream_.size() - at_) {
      Fail("an early end");
      return {};
    }
    at_ += count;
    return std::string(stream_.substr(at_ - count, count));
  }

  int Byte() {
    const std::string byte = Bytes(1);
    return byte.empty() ? -1 : static_cast<unsigned char>(byte[0]);
  }

  std::size_t Number(int bytes) {
    std::size_t number = 0;
    for (int i = 0; i < bytes && good_; ++i) {
      number += static_cast<std::size_t>(Byte() & 0xFF) << 8 * i;
    }
    return number;
  }

  void Fail(const char* what) {
    if (good_) ADD_FAILURE() << what << " at offset " << at_;
    good_ = false;
  }

  std::string_view stream_;
  std::size_t at_ = 0;
  bool good_ = true;
};

}  // namespace

std::vector<PclXlOperator> WalkPclXl(std::string_view stream) {
  return Walker(stream).Walk();
}

std::string PclXlStreamBody(const std::vector<PclXlOperator>& operators) {
  std::string body;
  for (const PclXlOperator& each : operators) {
    if (each.tag == 0x5C) body += each.data;
  }
  return body;
}

}  // namespace hvtest
