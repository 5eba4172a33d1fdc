// The compressed data of one member: as many bytes of the archive as its header declares.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

#include "zip/archive_file.h"

namespace hv {

class MemberInput {
 public:
  // The data begin at the position of the archive.
  MemberInput(ArchiveFile& archive, uint32_t size) : archive_(archive), left_(size) {}

  // The bytes at hand. More() is to be asked when they do not suffice.
  std::span<const uint8_t> Unread() const {
    const std::span<const uint8_t> buffered = archive_.Unread();
    return buffered.first(std::min<std::size_t>(buffered.size(), left_));
  }
  void Take(std::size_t count) {
    archive_.Take(count);
    left_ -= static_cast<uint32_t>(count);
  }
  // Puts more behind the unread bytes. False at the end of the member or of the archive.
  bool More() {
    if (Unread().size() == left_) return false;
    archiveEnded_ = !archive_.More();
    return !archiveEnded_;
  }

  // Whether the archive ended before the member did.
  bool ArchiveEnded() const { return archiveEnded_; }

 private:
  ArchiveFile& archive_;
  uint32_t left_;
  bool archiveEnded_ = false;
};

}  // namespace hv
