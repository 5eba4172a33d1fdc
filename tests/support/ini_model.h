// An INI file as a plain list of lines that every operation walks from its start: the reference
// that the real one is held to.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace hvtest {

// An argument that may be NULL.
using MaybeText = std::optional<std::string>;

class IniModel {
 public:
  // bytes: those of the file.
  IniModel(const std::string& bytes, bool dropsComments);

  // Nothing stands for the empty text that means "not found".
  MaybeText Read(const MaybeText& section, const MaybeText& key);

  struct Copy {
    uint32_t code;
    std::string text;  // what was copied, without its NUL
  };
  Copy Read2(const std::string& section, const std::string& key, const MaybeText& defaultValue,
             std::size_t size) const;

  // Sets the first value of a key, or adds one beside others unless it is there.
  bool Write(const std::string& section, const std::string& key, const std::string& value,
             bool besideOthers);
  void Delete(const std::string& section, const MaybeText& key, const MaybeText& value);

  // What a close writes.
  std::string Bytes() const;

  bool IsDirty() const { return dirty_; }
  std::size_t MaxLineLength() const { return maxLineLength_; }
  const std::vector<std::string>& Lines() const { return lines_; }

 private:
  std::optional<std::size_t> FindHeader(const std::string& section) const;
  void Insert(std::size_t at, const std::string& line);
  void Remove(std::size_t at);
  std::size_t FirstBlockEnd(std::size_t header) const;

  std::vector<std::string> lines_;
  std::optional<std::size_t> cursor_;
  std::size_t maxLineLength_ = 0;
  bool dirty_ = false;
};

}  // namespace hvtest
