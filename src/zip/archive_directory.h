// The central directory of an archive: where it is and what it lists.
#pragma once

#include <cstdint>
#include <string>

#include "zip/archive_file.h"
#include "zip/zip_records.h"

namespace hv {

// The outcome of an extraction, or of one member. Of several the highest counts.
enum ExtractStatus : uint8_t {
  ExtractOk = 0,
  ExtractWarning = 1,        // a member skipped or with a wrong CRC, an untidy directory
  ExtractBadArchive = 2,     // no archive, or bad data of a member
  ExtractSevereError = 3,    // a record is not where it should be
  ExtractCannotOpen = 9,     // the archive
  ExtractMultiDisk = 11,     // the archive is one of several
  ExtractCannotCreate = 40,  // an output file
  ExtractDiskFull = 50,
  ExtractUnexpectedEnd = 51,  // of the archive
};

// What the directory says of a member.
struct DirectoryMember {
  std::string name;  // as stored
  uint32_t versionNeeded = 0;
  uint32_t flags = 0;
  uint32_t method = 0;
  uint32_t time = 0;  // of DOS, as the date
  uint32_t date = 0;
  uint32_t crc = 0;
  uint32_t compressedSize = 0;
  uint32_t uncompressedSize = 0;
  int64_t localHeader = 0;  // position in the file
};

class ArchiveDirectory {
 public:
  explicit ArchiveDirectory(ArchiveFile& archive) : archive_(archive) {}

  // Finds and reads the end record, and finds the directory. Bytes before the archive, of a program
  // that unpacks it for example, are allowed for.
  ExtractStatus Locate();

  // Entries that have not been read.
  uint32_t EntriesLeft() const { return entriesLeft_; }

  // Reads the next entry. The archive may have been read elsewhere between two entries.
  ExtractStatus ReadEntry(DirectoryMember& member);

  // Whether the end record's signature stands right behind the entries.
  bool IsFollowedByEnd();

 private:
  bool FindEndRecord(uint8_t (&record)[EndOfDirectorySize], int64_t& position);

  ArchiveFile& archive_;
  int64_t next_ = 0;   // position of the next entry
  int64_t shift_ = 0;  // bytes before the archive
  uint32_t entriesLeft_ = 0;
};

}  // namespace hv
