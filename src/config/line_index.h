// Finds lines by their key, letter case not counted, without walking the list of lines.
//
// A hash table whose chains run through the lines themselves: looking up, adding and removing need
// no memory. Lines of equal key stand in their chain in the order of the file.
#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

#include "config/ini_line.h"

namespace hv {

class LineIndex {
 public:
  LineIndex() = default;
  LineIndex(const LineIndex&) = delete;
  LineIndex& operator=(const LineIndex&) = delete;

  // Empties the index and makes it ready for `count` lines. Without the memory for that all lines
  // share one chain, which is slower and nothing else.
  void Reset(std::size_t count);

  // Adds a line before all others of its key.
  void AddFirst(IniLine* line);

  // Adds a line before `successor`, a line of the same key, or behind all others when that is NULL.
  void AddBefore(IniLine* line, const IniLine* successor);

  // Removes a line that is in the index.
  void Remove(IniLine* line);

  // The first line of a key, and the next one of the same key; NULL when there is none.
  IniLine* First(std::string_view key) const;
  static IniLine* NextEqual(const IniLine* line);

  // Whether so many lines were added that a new Reset pays.
  bool IsCrowded() const { return count_ > 2 * chainCount_; }

 private:
  IniLine** ChainOf(uint32_t hash) const { return &chains_[hash & (chainCount_ - 1)]; }
  void Link(IniLine* line, IniLine** at);

  IniLine* onlyChain_ = nullptr;
  std::unique_ptr<IniLine*[]> manyChains_;
  IniLine** chains_ = &onlyChain_;
  std::size_t chainCount_ = 1;  // a power of two
  std::size_t count_ = 0;
};

}  // namespace hv
