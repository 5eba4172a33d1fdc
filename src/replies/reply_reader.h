// The reader of self-describing printer replies.
//
// A reply says in a short text how wide the fields of its body are, and the body is a tree of
// items:
//
//   u16   length of what follows, big-endian like every number of a reply
//   u16   format word, not interpreted
//   text  three sections, "P{...}C{...}D{...}": the fields that every item begins with, those that
//         follow in a container, those that follow in an integer or a text. A section is a list
//         such as "ID:1,DT:1": keys and the widths of their fields in bytes.
//   body  items
//
// The reader goes over the caller's bytes without copying them and never beyond the end that their
// length word gives. What would lead out of the reply (a width, a length, a negative one) ends the
// reading: Failed() is true from then on, AtEnd() too, and every read gives zeroes.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "support/byte_cursor.h"

namespace hv {

// Fields of a layout, in the order in which their names are compared.
enum class ReplyKey : uint8_t {
  Identifier,
  DataType,
  ElementCount,
  Se,
  Length,
  Data,
  Td,
  Dl,
  Tl,
  Vn,
  Bf,
  Dd,
  Unknown
};

struct ReplyField {
  ReplyKey key;
  int32_t width;  // in bytes, not negative
};

// Data types. An item of any other one is nothing but its prefix.
enum ReplyType : int32_t { ReplyContainer = 0, ReplyInteger = 1, ReplyText = 2 };

struct ReplyPrefix {
  int32_t identifier = 0;
  int32_t type = ReplyContainer;
};

// What an integer or a text holds; nothing for other items.
struct ReplyValue {
  int32_t integer = 0;                   // 0 unless the item is an integer
  std::optional<std::string_view> text;  // the bytes as they are, of integers too
};

class ReplyReader {
 public:
  // `reply` begins with the length word, and as many bytes as that says follow it.
  explicit ReplyReader(const uint8_t* reply);

  bool AtEnd() const { return cursor_.AtEnd(); }
  bool Failed() const { return cursor_.Failed(); }
  std::size_t Position() const { return cursor_.Position(); }

  // How many items what remains has room for at most.
  std::size_t MostItems() const;

  ReplyPrefix ReadPrefix();

  // After the prefix of a container whose children are to be read: how many there are.
  int32_t ReadElementCount();

  // After the prefix of an item: the whole rest of it. A container is passed over by its length.
  ReplyValue ReadValue(int32_t type);

 private:
  using Section = std::vector<ReplyField>;
  struct ContainerHeader {
    int32_t elementCount = 0;
    int32_t length = 0;
  };

  bool ReadSection(Section* section);
  ContainerHeader ReadContainerHeader();
  std::span<const uint8_t> Take(int32_t width);
  int32_t TakeNumber(int32_t width);
  void Stop();

  ByteCursor cursor_;
  std::size_t fieldsLeft_;
  std::size_t prefixSize_ = 0;
  Section prefix_;
  Section container_;
  Section data_;
};

}  // namespace hv
