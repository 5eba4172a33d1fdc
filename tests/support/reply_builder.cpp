#include "support/reply_builder.h"

#include <algorithm>

namespace hvtest {
namespace {

constexpr char Filler = '\xA5';

std::string BigEndian(int64_t value, int width) {
  std::string bytes;
  for (int shift = 8 * (width - 1); shift >= 0; shift -= 8) {
    bytes += static_cast<char>(value >> shift);
  }
  return bytes;
}

std::string Fields(const ReplyLayout::Section& section,
                   const std::vector<std::pair<std::string, int64_t>>& values) {
  std::string bytes;
  for (const auto& [key, width] : section) {
    const auto value = std::find_if(values.begin(), values.end(),
                                    [&key = key](const auto& v) { return v.first == key; });
    bytes += value == values.end() ? std::string(static_cast<std::size_t>(width), Filler)
                                   : BigEndian(value->second, width);
  }
  return bytes;
}

std::string DataFields(const ReplyLayout::Section& section, const ReplyItem& item) {
  const auto length = item.length.value_or(static_cast<int64_t>(item.data.size()));
  std::string bytes;
  for (const auto& field : section) {
    bytes += field.first == "DA" ? item.data : Fields({field}, {{"LD", length}});
  }
  return bytes;
}

std::string SectionText(const ReplyLayout::Section& section) {
  std::string text;
  for (const auto& [key, width] : section) {
    text += (text.empty() ? "" : ",") + key + ":" + std::to_string(width);
  }
  return "{" + text + "}";
}

}  // namespace

std::string LayoutText(const ReplyLayout& layout) {
  return "P" + SectionText(layout.prefix) + "C" + SectionText(layout.container) + "D" +
         SectionText(layout.data);
}

std::string ReplyBody(const ReplyLayout& layout, const std::vector<ReplyItem>& items) {
  std::string bytes;
  for (const ReplyItem& item : items) {
    bytes += Fields(layout.prefix, {{"ID", item.identifier}, {"DT", item.type}});
    if (item.type == 0) {
      const std::string children = ReplyBody(layout, item.children);
      const auto count = static_cast<int64_t>(item.children.size());
      const auto length = static_cast<int64_t>(children.size());
      bytes += Fields(layout.container,
                      {{"NE", item.count.value_or(count)}, {"LD", item.length.value_or(length)}});
      bytes += children;
    } else if (item.type == 1 || item.type == 2) {
      bytes += DataFields(layout.data, item);
    }
  }
  return bytes;
}

std::string Reply(const std::string& layoutText, const std::string& body) {
  const std::string rest = "\x12\x34" + layoutText + body;
  return BigEndian(static_cast<int64_t>(rest.size()), 2) + rest;
}

std::string Reply(const std::vector<ReplyItem>& items, const ReplyLayout& layout) {
  return Reply(LayoutText(layout), ReplyBody(layout, items));
}

ReplyBlock::ReplyBlock(std::string bytes) {
  bytes.resize(std::max<std::size_t>(bytes.size(), 2));
  block_.assign(bytes.begin(), bytes.end());
  block_.resize(static_cast<std::size_t>(block_[0] << 8 | block_[1]) + 2, 1);
  block_.shrink_to_fit();
}

}  // namespace hvtest
