#include "soft_font_glyphs.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string_view>
#include <utility>

namespace hvtool {
namespace {

constexpr char Escape = 0x1B;
// Larger characters than any printer takes are not drawn.
constexpr unsigned LargestSide = 2048;
// Codes of bitmap fonts have one byte.
constexpr unsigned CodeCount = 256;

constexpr unsigned BitmapFormat = 4;
constexpr unsigned PlainClass = 1;
constexpr unsigned RunLengthClass = 2;
constexpr std::size_t HeaderSize = 2;  // format and continuation, before the descriptor

unsigned Byte(std::string_view bytes, std::size_t at) {
  return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0;
}
unsigned Word(std::string_view bytes, std::size_t at) {
  return Byte(bytes, at) << 8 | Byte(bytes, at + 1);
}
int SignedWord(std::string_view bytes, std::size_t at) {
  return static_cast<int16_t>(Word(bytes, at));
}

// One row after another, each filled up to whole bytes.
void FillPlain(std::string_view data, Glyph* glyph) {
  const std::size_t rowBytes = (glyph->width + 7) / 8;
  for (unsigned y = 0; y < glyph->height; ++y) {
    for (unsigned x = 0; x < glyph->width; ++x) {
      const unsigned bits = Byte(data, y * rowBytes + x / 8);
      glyph->dots[std::size_t{y} * glyph->width + x] = (bits >> (7 - x % 8) & 1) != 0;
    }
  }
}

// Each row is the number of its repetitions, then lengths of white and black runs in turn.
void FillRuns(std::string_view data, Glyph* glyph) {
  std::size_t at = 0;
  for (unsigned y = 0; y < glyph->height && at < data.size();) {
    unsigned copies = Byte(data, at++) + 1;
    std::vector<bool> row;
    for (bool ink = false; row.size() < glyph->width && at < data.size(); ink = !ink) {
      row.insert(row.end(), Byte(data, at++), ink);
    }
    row.resize(glyph->width);
    for (; copies > 0 && y < glyph->height; --copies, ++y) {
      std::copy(row.begin(), row.end(),
                glyph->dots.begin() + static_cast<std::ptrdiff_t>(std::size_t{y} * glyph->width));
    }
  }
}

class GlyphReader {
 public:
  explicit GlyphReader(std::string_view bytes) : bytes_(bytes) {}

  std::vector<Glyph> Read() {
    while (at_ < bytes_.size()) {
      if (bytes_[at_++] == Escape) ReadSequence();
    }
    FinishGlyph();
    return std::move(glyphs_);
  }

 private:
  // A sequence is "*c" or the like and values, each with a letter; small letters say that more of
  // them follow.
  void ReadSequence() {
    const std::string_view group = bytes_.substr(at_, 2);
    if (group.size() < 2 || group[0] < '!' || group[0] > '/') return;
    at_ += 2;
    while (at_ < bytes_.size()) {
      const std::size_t valueAt = at_;
      while (at_ < bytes_.size() && (bytes_[at_] < '@' || bytes_[at_] > '~')) ++at_;
      if (at_ == bytes_.size()) return;
      const char letter = bytes_[at_++];
      const unsigned value = Value(bytes_.substr(valueAt, at_ - 1 - valueAt));
      const bool more = letter >= 'a';
      Take(group, static_cast<char>(more ? letter - 'a' + 'A' : letter), value);
      if (!more) return;
    }
  }

  static unsigned Value(std::string_view digits) {
    unsigned value = 0;
    for (const char c : digits) {
      if (c >= '0' && c <= '9' && value < 1000000)
        value = value * 10 + static_cast<unsigned>(c - '0');
    }
    return value;
  }

  void Take(std::string_view group, char letter, unsigned value) {
    if (group == "*c" && letter == 'E') code_ = value < CodeCount ? value : 0;
    // Data behind any W is no text, whatever it is for.
    if (letter != 'W') return;
    const std::string_view data = bytes_.substr(std::min(at_, bytes_.size()), value);
    at_ += data.size();
    if (group == "(s") TakeCharacter(data);
  }

  void TakeCharacter(std::string_view data) {
    if (Byte(data, 0) != BitmapFormat) return;
    const bool continues = Byte(data, 1) != 0;
    if (continues) {
      raster_.append(data.substr(std::min(HeaderSize, data.size())));
      return;
    }
    FinishGlyph();
    descriptor_ = data.substr(0, HeaderSize + Byte(data, 2));
    raster_ = data.substr(descriptor_.size());
    glyphCode_ = code_;
  }

  // A large character comes in several downloads, so it is complete when another one begins.
  void FinishGlyph() {
    const std::string_view descriptor = std::exchange(descriptor_, {});
    Glyph glyph;
    glyph.code = glyphCode_;
    glyph.leftOffset = SignedWord(descriptor, 6);
    glyph.topOffset = SignedWord(descriptor, 8);
    glyph.width = Word(descriptor, 10);
    glyph.height = Word(descriptor, 12);
    if (glyph.width == 0 || glyph.height == 0 ||
        std::max(glyph.width, glyph.height) > LargestSide) {
      return;
    }
    glyph.dots.resize(std::size_t{glyph.width} * glyph.height);
    const unsigned rasterClass = Byte(descriptor, 3);
    if (rasterClass == PlainClass) FillPlain(raster_, &glyph);
    if (rasterClass == RunLengthClass) FillRuns(raster_, &glyph);
    const auto same = std::find_if(glyphs_.begin(), glyphs_.end(),
                                   [&](const Glyph& g) { return g.code == glyph.code; });
    if (same != glyphs_.end()) {
      *same = std::move(glyph);
    } else {
      glyphs_.push_back(std::move(glyph));
    }
  }

  std::string_view bytes_;
  std::size_t at_ = 0;
  unsigned code_ = 0;
  std::string_view descriptor_;
  std::string raster_;
  unsigned glyphCode_ = 0;
  std::vector<Glyph> glyphs_;
};

}  // namespace

std::optional<std::vector<Glyph>> ReadGlyphs(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(file), {}};
  if (!file.is_open() || file.bad()) return std::nullopt;
  return GlyphReader(bytes).Read();
}

}  // namespace hvtool
