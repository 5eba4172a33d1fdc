#include "config/line_index.h"

#include <bit>
#include <new>

#include "support/ascii.h"

namespace hv {
namespace {

// FNV-1a over the lower-case letters.
uint32_t HashOf(std::string_view key) {
  uint32_t hash = 2166136261U;
  for (const char c : key) hash = (hash ^ static_cast<uint8_t>(ToLower(c))) * 16777619U;
  return hash;
}

IniLine* FirstEqual(IniLine* line, uint32_t hash, std::string_view key) {
  while (line != nullptr && (line->hash != hash || !EqualsIgnoreCase(KeyOf(*line), key))) {
    line = line->nextInChain;
  }
  return line;
}

}  // namespace

void LineIndex::Reset(std::size_t count) {
  chainCount_ = std::bit_ceil(count);
  manyChains_.reset(chainCount_ > 1 ? new (std::nothrow) IniLine*[chainCount_]() : nullptr);
  if (manyChains_ == nullptr) chainCount_ = 1;
  onlyChain_ = nullptr;
  chains_ = manyChains_ == nullptr ? &onlyChain_ : manyChains_.get();
  count_ = 0;
}

void LineIndex::Link(IniLine* line, IniLine** at) {
  line->nextInChain = *at;
  *at = line;
  ++count_;
}

void LineIndex::AddFirst(IniLine* line) {
  line->hash = HashOf(KeyOf(*line));
  Link(line, ChainOf(line->hash));
}

void LineIndex::AddBefore(IniLine* line, const IniLine* successor) {
  line->hash = HashOf(KeyOf(*line));
  IniLine** at = ChainOf(line->hash);
  while (*at != successor) at = &(*at)->nextInChain;
  Link(line, at);
}

void LineIndex::Remove(IniLine* line) {
  IniLine** at = ChainOf(line->hash);
  while (*at != line) at = &(*at)->nextInChain;
  *at = line->nextInChain;
  --count_;
}

IniLine* LineIndex::First(std::string_view key) const {
  const uint32_t hash = HashOf(key);
  return FirstEqual(*ChainOf(hash), hash, key);
}

IniLine* LineIndex::NextEqual(const IniLine* line) {
  return FirstEqual(line->nextInChain, line->hash, KeyOf(*line));
}

}  // namespace hv
