#include "zip/extraction.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <optional>
#include <string>
#include <vector>

#include "platform/files.h"
#include "platform/low_file_calls.h"
#include "zip/archive_directory.h"
#include "zip/decoders.h"
#include "zip/member_input.h"
#include "zip/member_pattern.h"
#include "zip/output_path.h"
#include "zip/output_window.h"

namespace hv {
namespace {

constexpr std::size_t BlockSize = 64;  // entries of the directory that are read at a time
constexpr uint32_t MaxVersionNeeded = 20;

enum Method : uint16_t {
  MethodStored = 0,
  MethodShrunk = 1,
  MethodReduced1 = 2,
  MethodReduced4 = 5,
  MethodImploded = 6,
  MethodDeflated = 8,
};

bool CanExtract(const DirectoryMember& member) {
  return member.versionNeeded <= MaxVersionNeeded && (member.flags & FlagEncrypted) == 0 &&
         (member.method <= MethodImploded || member.method == MethodDeflated);
}

bool Decode(const DirectoryMember& member, MemberInput& input, OutputWindow& window) {
  switch (member.method) {
    case MethodStored:
      return CopyStored(input, window);
    case MethodShrunk:
      return Unshrink(input, window);
    case MethodImploded:
      return Explode(input, window, (member.flags & FlagLargeWindow) != 0,
                     (member.flags & FlagLiteralTree) != 0);
    case MethodDeflated:
      return Inflate(input, window);
    default:
      return Unreduce(input, window, member.method - MethodReduced1 + 1);
  }
}

// The time of a member in the form of a directory entry of DOS: in two seconds from the low bits on
// 5 bits, minutes 6, hours 5; day 5, month 4, years from 1980 on 7. Nothing for a time that does
// not exist.
std::optional<std::tm> TimeOfDos(uint32_t date, uint32_t time) {
  std::tm fields = {};
  fields.tm_sec = static_cast<int>(2 * (time & 0x1F));
  fields.tm_min = static_cast<int>(time >> 5 & 0x3F);
  fields.tm_hour = static_cast<int>(time >> 11);
  fields.tm_mday = static_cast<int>(date & 0x1F);
  fields.tm_mon = static_cast<int>(date >> 5 & 0x0F) - 1;
  fields.tm_year = static_cast<int>(date >> 9) + 80;
  const std::chrono::year_month_day day{
      std::chrono::year(fields.tm_year + 1900),
      std::chrono::month(static_cast<unsigned>(fields.tm_mon + 1)),
      std::chrono::day(static_cast<unsigned>(fields.tm_mday))};
  if (!day.ok() || fields.tm_hour > 23 || fields.tm_min > 59 || fields.tm_sec > 59) {
    return std::nullopt;
  }
  return fields;
}

// An output file that is closed on every path.
class OutputFile {
 public:
  OutputFile(const char* path, int32_t spared) : handle_(platform::LowCreateBelow(path, spared)) {}
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;
  ~OutputFile() { Close(); }

  bool IsOpen() const { return handle_ != platform::LowNoHandle; }
  int32_t Handle() const { return handle_; }
  // False when the system reports that something written was lost.
  bool Close() {
    if (!IsOpen()) return true;
    const bool closed = platform::LowClose(handle_) == 0;
    handle_ = platform::LowNoHandle;
    return closed;
  }

 private:
  int32_t handle_;
};

// The fields of the local header that count; see ReadLocalHeader.
struct MemberSizes {
  uint32_t crc;
  uint32_t compressed;
  uint32_t uncompressed;
};

// The state of one call.
class Extraction {
 public:
  Extraction(const char* pattern, HvZipProgress progress) : progress_(progress) {
    if (*pattern != '\0') pattern_.emplace(pattern);
  }

  ExtractStatus Run(const char* path);

 private:
  ExtractStatus ReadBlock(ArchiveDirectory& directory);
  bool ExtractBlock();
  ExtractStatus ExtractMember(const DirectoryMember& member);
  ExtractStatus ReadLocalHeader(const DirectoryMember& member, MemberSizes& sizes);
  ExtractStatus ExtractFile(const DirectoryMember& member, const MemberSizes& sizes,
                            const std::string& path);
  bool MakeDirectories(const std::string& directory);
  void Report(const DirectoryMember& member);
  void Raise(ExtractStatus status) { status_ = std::max(status_, status); }

  ArchiveFile archive_;
  OutputWindow window_;
  std::optional<MemberPattern> pattern_;
  HvZipProgress progress_;
  std::vector<DirectoryMember> block_;  // the members to extract of a block of entries
  uint64_t compressedTotal_ = 0;        // of the entries read so far
  std::string madeDirectory_;           // the last one
  ExtractStatus status_ = ExtractOk;
};

ExtractStatus Extraction::Run(const char* path) {
  if (!archive_.Open(path)) return ExtractCannotOpen;
  ArchiveDirectory directory(archive_);
  status_ = directory.Locate();
  if (status_ > ExtractWarning) return status_;
  while (directory.EntriesLeft() > 0) {
    const ExtractStatus read = ReadBlock(directory);
    // The entries before one that cannot be read are still good.
    if (!ExtractBlock()) return status_;
    Raise(read);
    if (read != ExtractOk) return status_;
  }
  if (!directory.IsFollowedByEnd()) Raise(ExtractWarning);
  return status_;
}

ExtractStatus Extraction::ReadBlock(ArchiveDirectory& directory) {
  block_.clear();
  for (std::size_t i = 0; i < BlockSize && directory.EntriesLeft() > 0; ++i) {
    DirectoryMember member;
    const ExtractStatus status = directory.ReadEntry(member);
    if (status != ExtractOk) return status;
    compressedTotal_ += member.compressedSize;
    if (pattern_ && !pattern_->Matches(member.name)) continue;
    if (CanExtract(member)) {
      block_.push_back(std::move(member));
    } else {
      Raise(ExtractWarning);
    }
  }
  return ExtractOk;
}

// False when the run ends with this block.
bool Extraction::ExtractBlock() {
  for (const DirectoryMember& member : block_) {
    const ExtractStatus status = ExtractMember(member);
    Raise(status);
    if (status == ExtractDiskFull) return false;
    if (progress_ == nullptr) continue;
    if (status != ExtractOk) return false;
    Report(member);
  }
  return true;
}

ExtractStatus Extraction::ExtractMember(const DirectoryMember& member) {
  MemberSizes sizes;
  const ExtractStatus status = ReadLocalHeader(member, sizes);
  if (status != ExtractOk) return status;
  // The pattern was matched with the directory's name, so that is the one to extract by.
  const OutputPath path = MapOutputPath(member.name);
  if (!path.isUsable || !MakeDirectories(path.directory)) return ExtractCannotCreate;
  if (path.isDirectory) return ExtractOk;
  if (path.file.empty()) return ExtractCannotCreate;
  return ExtractFile(member, sizes, path.file);
}

// Takes the CRC and the sizes of the local header, or those of the directory where they follow the
// data, and goes to the data.
ExtractStatus Extraction::ReadLocalHeader(const DirectoryMember& member, MemberSizes& sizes) {
  if (!archive_.HasSignatureAt(member.localHeader, LocalHeaderSignature)) {
    return ExtractSevereError;
  }
  uint8_t header[LocalHeaderSize];
  if (!archive_.Seek(member.localHeader) || !archive_.Read(header)) return ExtractUnexpectedEnd;
  const auto field = [&](LocalHeaderField f) { return RecordField(header, LocalHeader[f]); };
  if (((field(LocalFlags) | member.flags) & FlagDataDescriptor) != 0) {
    sizes = {member.crc, member.compressedSize, member.uncompressedSize};
  } else {
    sizes = {field(LocalCrc), field(LocalCompressedSize), field(LocalUncompressedSize)};
  }
  const int64_t data = archive_.Position() + field(LocalNameLength) + field(LocalExtraLength);
  return archive_.Seek(data) ? ExtractOk : ExtractUnexpectedEnd;
}

bool Extraction::MakeDirectories(const std::string& directory) {
  if (directory == madeDirectory_) return true;
  if (!platform::MakeDirectoriesBelow(directory)) return false;
  madeDirectory_ = directory;
  return true;
}

ExtractStatus Extraction::ExtractFile(const DirectoryMember& member, const MemberSizes& sizes,
                                      const std::string& path) {
  OutputFile file(path.c_str(), archive_.Handle());
  if (!file.IsOpen()) return ExtractCannotCreate;
  window_.Begin(file.Handle(), sizes.uncompressed);
  MemberInput input(archive_, sizes.compressed);
  const bool decoded = Decode(member, input, window_);
  window_.Finish();
  if (!file.Close() || window_.WriteFailed()) return ExtractDiskFull;
  if (window_.Overflowed()) return ExtractBadArchive;
  if (!decoded) return input.ArchiveEnded() ? ExtractUnexpectedEnd : ExtractBadArchive;
  if (const std::optional<std::tm> time = TimeOfDos(member.date, member.time)) {
    platform::SetFileTime(path.c_str(), *time);
  }
  return window_.Crc() == sizes.crc ? ExtractOk : ExtractWarning;
}

void Extraction::Report(const DirectoryMember& member) {
  uint64_t percent = 0;
  if (compressedTotal_ > 0) {
    percent = (200 * uint64_t{member.compressedSize} + compressedTotal_) / (2 * compressedTotal_);
  }
  progress_(member.name.c_str(), member.compressedSize, static_cast<uint16_t>(percent));
}

uint32_t ResultOf(ExtractStatus status) {
  switch (status) {
    case ExtractOk:
    case ExtractWarning:
      return HV_OK;
    case ExtractBadArchive:
    case ExtractSevereError:
      return HV_UNUSABLE_FILE;
    case ExtractCannotOpen:
      return HV_CANNOT_OPEN;
    case ExtractMultiDisk:
      return HV_NOT_FOUND;
    case ExtractCannotCreate:
      return HV_SHARING_VIOLATION;
    case ExtractDiskFull:
      return HV_DISK_FULL;
    case ExtractUnexpectedEnd:
      return HV_ARCHIVE_ENDED;
  }
  return HV_SYSTEM_FAILURE;
}

}  // namespace

uint32_t ExplodeArchive(const char* archive, const char* pattern, HvZipProgress progress) {
  std::string path = archive;
  if (platform::KindOf(path.c_str()) != platform::FileKind::File) {
    path += ".zip";
    if (platform::KindOf(path.c_str()) != platform::FileKind::File) return HV_NOT_FOUND;
  }
  return ResultOf(Extraction(pattern, progress).Run(path.c_str()));
}

}  // namespace hv
