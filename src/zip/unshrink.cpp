#include <algorithm>
#include <array>
#include <memory>

#include "zip/bit_reader.h"
#include "zip/decoders.h"

namespace hv {
namespace {

constexpr unsigned MinCodeBits = 9;
constexpr unsigned MaxCodeBits = 13;
constexpr uint32_t ControlCode = 256;  // a second code says what to do
constexpr uint32_t IncreaseCodeSize = 1;
constexpr uint32_t PartialClear = 2;
constexpr uint32_t FirstEntry = 257;
constexpr uint32_t CodeCount = 1 << MaxCodeBits;

// The strings that codes stand for: each but the single bytes is the string of another code and one
// byte more.
class StringTable {
 public:
  StringTable() { parents_.fill(Unused); }

  // The string of a code into `text`, last byte first; its length, or 0 when the code has none. The
  // parent of an entry may have been cleared, and its number may have been given out again, even
  // to the entry itself.
  std::size_t Expand(uint32_t code, std::array<uint8_t, CodeCount>& text) const {
    std::size_t length = 0;
    while (code >= FirstEntry) {
      if (parents_[code] == Unused || length + 1 == text.size()) return 0;
      text[length++] = lastBytes_[code];
      code = parents_[code];
    }
    text[length++] = static_cast<uint8_t>(code);
    return length;
  }

  // The number that the next entry gets, the lowest that is free; CodeCount when the table is full.
  uint32_t NextFree() {
    while (free_ < CodeCount && parents_[free_] != Unused) ++free_;
    return free_;
  }

  // Adds the string of `parent` followed by a byte, unless the table is full.
  void Add(uint32_t parent, uint8_t lastByte) {
    const uint32_t code = NextFree();
    if (code == CodeCount) return;
    parents_[code] = static_cast<uint16_t>(parent);
    lastBytes_[code] = lastByte;
  }

  // Takes out every entry that is the parent of none.
  void ClearLeaves() {
    std::array<bool, CodeCount> isParent = {};
    for (uint32_t code = FirstEntry; code < CodeCount; ++code) {
      if (parents_[code] != Unused) isParent[parents_[code]] = true;
    }
    for (uint32_t code = FirstEntry; code < CodeCount; ++code) {
      if (!isParent[code]) parents_[code] = Unused;
    }
    free_ = FirstEntry;
  }

 private:
  static constexpr uint16_t Unused = 0xFFFF;

  std::array<uint16_t, CodeCount> parents_;
  std::array<uint8_t, CodeCount> lastBytes_ = {};
  uint32_t free_ = FirstEntry;
};

struct ShrinkState {
  StringTable table;
  std::array<uint8_t, CodeCount> text;  // of the current code, last byte first
};

}  // namespace

bool Unshrink(MemberInput& input, OutputWindow& window) {
  const auto state = std::make_unique<ShrinkState>();
  StringTable& table = state->table;
  std::array<uint8_t, CodeCount>& text = state->text;
  BitReader reader(input);
  unsigned codeBits = MinCodeBits;
  uint32_t previous = ControlCode;  // none yet
  while (window.Wants()) {
    const uint32_t code = reader.Take(codeBits);
    if (reader.Failed()) return false;
    if (code == ControlCode) {
      const uint32_t command = reader.Take(codeBits);
      if (command == IncreaseCodeSize && codeBits < MaxCodeBits) {
        ++codeBits;
      } else if (command == PartialClear) {
        table.ClearLeaves();
      } else {
        return false;
      }
      continue;
    }

    // The entry that this code itself completes is the previous string and its own first byte.
    const bool completesItself = previous != ControlCode && code == table.NextFree();
    const std::size_t length = table.Expand(completesItself ? previous : code, text);
    if (length == 0) return false;
    std::reverse(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(length));
    window.Append({text.data(), length});
    if (completesItself) window.Put(text[0]);
    if (previous != ControlCode) table.Add(previous, text[0]);
    previous = code;
  }
  return true;
}

}  // namespace hv
