// Builds printer replies from trees of items, for any layout.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace hvtest {

// An item and what its fields say; count and length are those of the content unless set.
struct ReplyItem {
  int64_t identifier;
  int type;
  std::vector<ReplyItem> children = {};
  std::string data = {};
  std::optional<int64_t> count = {};
  std::optional<int64_t> length = {};
};

inline ReplyItem Container(int64_t identifier, std::vector<ReplyItem> children) {
  return {identifier, 0, std::move(children)};
}
// The integer's bytes, as they stand in the reply.
inline ReplyItem Integer(int64_t identifier, std::string bytes) {
  return {identifier, 1, {}, std::move(bytes)};
}
inline ReplyItem Text(int64_t identifier, std::string text) {
  return {identifier, 2, {}, std::move(text)};
}
inline ReplyItem Other(int64_t identifier, int type) {
  return {identifier, type};
}
inline ReplyItem WithCount(ReplyItem item, int64_t count) {
  item.count = count;
  return item;
}
inline ReplyItem WithLength(ReplyItem item, int64_t length) {
  item.length = length;
  return item;
}

// Keys and widths of the three sections. Fields that mean nothing to an item hold 0xA5.
struct ReplyLayout {
  using Section = std::vector<std::pair<std::string, int>>;
  Section prefix = {{"ID", 1}, {"DT", 1}};
  Section container = {{"NE", 2}, {"LD", 2}};
  Section data = {{"LD", 1}, {"DA", 0}};
};

std::string LayoutText(const ReplyLayout& layout);
std::string ReplyBody(const ReplyLayout& layout, const std::vector<ReplyItem>& items);

// Length word, format word, layout, body.
std::string Reply(const std::string& layoutText, const std::string& body);
std::string Reply(const std::vector<ReplyItem>& items, const ReplyLayout& layout = {});

// A reply in a block of its own that ends with its last byte. When the length word does not say the
// size of `bytes`, they are cut or filled up to it.
class ReplyBlock {
 public:
  explicit ReplyBlock(std::string bytes);
  const void* Address() const { return block_.data(); }
  std::size_t Size() const { return block_.size(); }

 private:
  std::vector<uint8_t> block_;
};

}  // namespace hvtest
