// A new file beside another one whose place it is to take, so that a failure on the way leaves the
// other as it was. It is gone with this object unless it took that place.
#pragma once

#include <string>

#include "platform/files.h"
#include "platform/system_error.h"

namespace hv {

class FileBeside {
 public:
  explicit FileBeside(const char* path) : name_(platform::CreateFileBeside(path)) {}
  FileBeside(const FileBeside&) = delete;
  FileBeside& operator=(const FileBeside&) = delete;
  ~FileBeside() {
    if (Exists()) platform::RemoveCreated(name_);
  }

  // False where none can be made: in a directory that takes no new file, beside a device.
  bool Exists() const { return !name_.empty(); }
  const char* Name() const { return name_.c_str(); }

  // Puts it, complete and closed, in the place of `path`. False when it stays where it is.
  bool Replace(const char* path) {
    if (platform::ReplaceWith(Name(), path) != platform::ErrorNone) return false;
    name_.clear();
    return true;
  }

 private:
  std::string name_;
};

}  // namespace hv
