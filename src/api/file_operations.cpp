#include "api/file_operations.h"

#include <array>
#include <cstdio>
#include <limits>
#include <memory>
#include <string>

#include "api/low_file.h"
#include "platform/files.h"
#include "platform/stream.h"
#include "platform/temporary_file.h"
#include "support/ascii.h"
#include "support/fixed_text.h"
#include "support/path_text.h"

namespace hv {
namespace {

constexpr std::size_t NameBufferSize = 260;
constexpr int LastBackupNumber = 998;
constexpr std::size_t LineBufferSize = 2048;
constexpr uint32_t ReadMode = 4;  // of LowFileOpen

uint32_t CodeOfSystemError(uint32_t error) {
  switch (error) {
    case platform::ErrorNone:
      return HV_OK;
    case platform::ErrorFileNotFound:
    case platform::ErrorPathNotFound:
      return HV_NOT_FOUND;
    case platform::ErrorAccessDenied:
      return HV_ACCESS_DENIED;
    case platform::ErrorNotDosDisk:
      return HV_NOT_A_VOLUME;
    case platform::ErrorSharingViolation:
    case platform::ErrorSharingBufferExceeded:
      return HV_SHARING_VIOLATION;
    case platform::ErrorInvalidParameter:
      return HV_BAD_ARGUMENT;
    case platform::ErrorDriveLocked:
    case platform::ErrorMountPointUnusable:
      return HV_DRIVE_LOCKED;
    case platform::ErrorDiskFull:
      return HV_DISK_FULL;
    case platform::ErrorFilenameExceedsRange:
    case platform::ErrorDirectory:
      return HV_UNUSABLE_FILE;
    default:
      return HV_SYSTEM_FAILURE;
  }
}

// Closes an open file also where memory runs out before it was closed.
struct LowFileCloser {
  void operator()(LowFileRecord* record) const {
    if (record->handle != platform::LowNoHandle) LowFileClose(record);
  }
};

uint32_t RewriteLines(platform::Stream* source, platform::Stream* target, uintptr_t argument,
                      HvLineCallback lineCallback) {
  const auto line = std::make_unique<char[]>(LineBufferSize);
  while (source->ReadLine(line.get(), LineBufferSize) > 0) {
    lineCallback(line.get(), argument);
    const std::string_view text = FixedText(line.get(), LineBufferSize);
    if (target->Write(text.data(), text.size()) != text.size()) return HV_WRITE_FAILED;
  }
  // A text that could not be read to its end must not replace the whole one.
  if (source->HasError()) return HV_READ_FAILED;
  return target->Flush() ? HV_OK : HV_WRITE_FAILED;
}

// Where the directories to make begin in a full path, 0 when the path has no such place.
std::size_t FirstComponent(const std::string& path, bool hasDrive) {
  constexpr std::size_t DriveRoot = 3;    // "c:\"
  constexpr std::size_t ServerStart = 3;  // the server's name is not empty
  if (hasDrive) return DriveRoot;
  const std::size_t serverEnd = path.find('\\', ServerStart);
  return serverEnd == std::string::npos ? 0 : serverEnd + 1;
}

bool HasDriveLetter(const PathParts& parts) {
  return !parts.drive.empty() && IsLetter(parts.drive[0]);
}

}  // namespace

bool FileExists(const char* path) {
  return platform::KindOf(path) != platform::FileKind::None;
}

uint32_t FileSize(const char* path) {
  constexpr uint64_t Largest = std::numeric_limits<uint32_t>::max();
  for (const platform::DirectoryEntry& entry : platform::ListDirectory(path)) {
    // A size cut to 32 bits could pass for that of a small file.
    if (!entry.isDirectory) return static_cast<uint32_t>(std::min(entry.size, Largest));
  }
  return 0;
}

bool SizeOfOpenFile(const char* path, platform::Stream* file, uint32_t* size) {
  *size = FileSize(path);
  return *size > 0 || (file->ReadByte() < 0 && !file->HasError() && file->Seek(0));
}

uint32_t CopyFileMapped(const char* source, const char* target) {
  return CodeOfSystemError(platform::CopyWholeFile(source, target));
}

uint32_t BackUpFile(const char* source, char* backupName) {
  if (!FileExists(source)) return HV_UNUSABLE_FILE;
  const PathParts parts = SplitPath(source);
  std::string stem(parts.drive);
  stem.append(parts.directory).append(parts.base);
  for (int number = 1; number <= LastBackupNumber; ++number) {
    std::array<char, 8> extension;
    std::snprintf(extension.data(), extension.size(), ".%03d", number);
    const std::string name = stem + extension.data();
    if (name.size() >= NameBufferSize) return HV_BAD_ARGUMENT;
    SetFixedText(backupName, NameBufferSize, name);
    if (!FileExists(backupName)) return CopyFileMapped(source, backupName);
  }
  return HV_LIMIT_REACHED;
}

uint32_t ModifyFile(const char* path, uintptr_t argument, HvLineCallback lineCallback) {
  const platform::TemporaryFile temporary(platform::CreateTemporaryFile("tmpfil"));
  if (!temporary.Exists()) return HV_CONNECTION_FAILED;
  const std::unique_ptr<platform::Stream> source = platform::OpenStream(path, "r");
  if (source == nullptr) return HV_CANNOT_OPEN;
  const std::unique_ptr<platform::Stream> target =
      platform::OpenStream(temporary.Name().c_str(), "w");
  if (target == nullptr) return HV_CANNOT_OPEN;

  const uint32_t code = RewriteLines(source.get(), target.get(), argument, lineCallback);
  const bool sourceClosed = source->Close();
  const bool targetClosed = target->Close();
  if (code != HV_OK) return code;
  if (!sourceClosed || !targetClosed) return HV_CANNOT_CLOSE;
  return CopyFileMapped(temporary.Name().c_str(), path);
}

uint32_t ChecksumFile(const char* path, int32_t openHandle, uint16_t skipWord, uint16_t* sum) {
  LowFileRecord record;
  const bool openHere = path != nullptr && *path != '\0';
  if (openHere) {
    record.openMode = ReadMode;
    LowFileOpen(path, &record);
    if (record.error != LowFileOk) return record.error;
  } else {
    if (openHandle == 0) return HV_BAD_ARGUMENT;
    record.handle = openHandle;
  }
  const std::unique_ptr<LowFileRecord, LowFileCloser> closer(openHere ? &record : nullptr);
  *sum = FileWordChecksum(skipWord, &record);
  if (openHere) LowFileClose(&record);
  return record.error;
}

uint32_t MakePath(const char* path, char* created) {
  const PathParts parts = SplitPath(path);
  const bool hasDrive = HasDriveLetter(parts);
  if (!hasDrive && !StartsWith(path, "\\\\")) return HV_CONNECTION_FAILED;
  if (parts.base.empty()) return HV_CONNECTION_FAILED;

  std::string full(parts.drive);
  if (parts.directory.empty() || !IsSeparator(parts.directory[0])) full += '\\';
  full.append(parts.directory).append(parts.base).append(parts.extension);
  if (full.size() >= NameBufferSize) return HV_CONNECTION_FAILED;
  std::size_t at = FirstComponent(full, hasDrive);
  if (at == 0) return HV_CONNECTION_FAILED;

  std::string current = full.substr(0, at);
  std::string made;
  while (at < full.size()) {
    if (IsSeparator(full[at])) {
      ++at;
      continue;
    }
    const std::size_t end = std::min(full.find_first_of("\\/", at), full.size());
    const std::string component = full.substr(at, end - at);
    at = end;
    current += component;
    const platform::FileKind kind = platform::KindOf(current.c_str());
    if (kind == platform::FileKind::File) return HV_CONNECTION_FAILED;
    if (kind == platform::FileKind::None) {
      if (platform::MakeDirectory(current.c_str()) != platform::ErrorNone) {
        return HV_CONNECTION_FAILED;
      }
      made.append("\\").append(component);
      if (created != nullptr) SetFixedText(created, NameBufferSize, made);
    }
    current += '\\';
  }
  return HV_OK;
}

}  // namespace hv
