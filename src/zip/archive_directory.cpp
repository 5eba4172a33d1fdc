#include "zip/archive_directory.h"

#include <algorithm>
#include <vector>

#include "support/byte_order.h"

namespace hv {

// The end record stands last but for its comment, whose length tells it from the same four bytes in
// a comment. Where none fits to the end of the file, as when a transfer has padded it, the last one
// counts.
bool ArchiveDirectory::FindEndRecord(uint8_t (&record)[EndOfDirectorySize], int64_t& position) {
  const int64_t tailSize =
      std::min<int64_t>(archive_.Size(), EndOfDirectorySize + MaxCommentLength);
  std::vector<uint8_t> tail(static_cast<std::size_t>(tailSize));
  if (!archive_.Seek(archive_.Size() - tailSize) || !archive_.Read(tail)) return false;
  bool found = false;
  for (std::size_t at = tail.size(); at-- > 0;) {
    const std::span<const uint8_t> here = std::span<const uint8_t>(tail).subspan(at);
    if (here.size() < EndOfDirectorySize || LoadLe32(here.data()) != EndOfDirectorySignature) {
      continue;
    }
    const bool fits =
        RecordField(here, EndOfDirectory[EndCommentLength]) == here.size() - EndOfDirectorySize;
    if (found && !fits) continue;
    std::copy_n(here.begin(), EndOfDirectorySize, record);
    position = archive_.Size() - static_cast<int64_t>(here.size());
    found = true;
    if (fits) break;
  }
  return found;
}

ExtractStatus ArchiveDirectory::Locate() {
  uint8_t record[EndOfDirectorySize];
  int64_t endPosition = 0;
  if (!FindEndRecord(record, endPosition)) return ExtractBadArchive;
  ExtractStatus status = ExtractOk;
  const uint32_t disk = RecordField(record, EndOfDirectory[EndDisk]);
  if (disk != 0) {
    if (disk != 1 || RecordField(record, EndOfDirectory[EndDirectoryDisk]) != 1) {
      return ExtractMultiDisk;
    }
    status = ExtractWarning;
  }
  entriesLeft_ = RecordField(record, EndOfDirectory[EndEntries]);

  // Where it ends right before the end record, else where its offset says.
  const int64_t offset = RecordField(record, EndOfDirectory[EndDirectoryOffset]);
  const int64_t size = RecordField(record, EndOfDirectory[EndDirectorySize]);
  const uint32_t signature = entriesLeft_ > 0 ? DirectoryEntrySignature : EndOfDirectorySignature;
  for (const int64_t start : {endPosition - size, offset}) {
    if (!archive_.HasSignatureAt(start, signature)) continue;
    next_ = start;
    shift_ = start - offset;
    return status;
  }
  return ExtractSevereError;
}

ExtractStatus ArchiveDirectory::ReadEntry(DirectoryMember& member) {
  if (!archive_.HasSignatureAt(next_, DirectoryEntrySignature)) return ExtractSevereError;
  uint8_t entry[DirectoryEntrySize];
  if (!archive_.Seek(next_) || !archive_.Read(entry)) return ExtractUnexpectedEnd;
  const auto field = [&](DirectoryEntryField f) { return RecordField(entry, DirectoryEntry[f]); };
  member.versionNeeded = field(EntryVersionNeeded) & 0xFF;
  member.flags = field(EntryFlags);
  member.method = field(EntryMethod);
  member.time = field(EntryTime);
  member.date = field(EntryDate);
  member.crc = field(EntryCrc);
  member.compressedSize = field(EntryCompressedSize);
  member.uncompressedSize = field(EntryUncompressedSize);
  member.localHeader = shift_ + field(EntryLocalOffset);

  member.name.resize(field(EntryNameLength));
  if (!archive_.Read({reinterpret_cast<uint8_t*>(member.name.data()), member.name.size()}) ||
      !archive_.Seek(archive_.Position() + field(EntryExtraLength) + field(EntryCommentLength))) {
    return ExtractUnexpectedEnd;
  }
  next_ = archive_.Position();
  --entriesLeft_;
  return ExtractOk;
}

bool ArchiveDirectory::IsFollowedByEnd() {
  return archive_.HasSignatureAt(next_, EndOfDirectorySignature);
}

}  // namespace hv
