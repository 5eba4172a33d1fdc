// A file of a name of its own that goes away with its owner, unless it took the place of another.
#pragma once

#include <string>
#include <utility>

#include "platform/files.h"

namespace hv::platform {

class TemporaryFile {
 public:
  // Owns what CreateTemporaryFile or CreateFileBeside returned.
  explicit TemporaryFile(std::string name) noexcept : name_(std::move(name)) {}
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile() { Discard(); }

  bool Exists() const { return !name_.empty(); }
  const std::string& Name() const { return name_; }

  // Whether it now is the file `path`; see ReplaceWith.
  bool Replace(const char* path) {
    if (ReplaceWith(name_.c_str(), path) != ErrorNone) return false;
    name_.clear();
    return true;
  }

  void Discard() noexcept {
    if (Exists()) DiscardFile(name_);
    name_.clear();
  }

 private:
  std::string name_;
};

}  // namespace hv::platform
