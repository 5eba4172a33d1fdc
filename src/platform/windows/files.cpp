#include "platform/files.h"

#include <algorithm>
#include <cstdio>
#include <memory>

#include "platform/temporary_file.h"
#include "platform/windows/windows_calls.h"
#include "support/ascii.h"
#include "support/path_text.h"

namespace hv::platform {
namespace {

constexpr DWORD ShareReadWrite = FILE_SHARE_READ | FILE_SHARE_WRITE;
constexpr DWORD ShareAll = ShareReadWrite | FILE_SHARE_DELETE;
constexpr DWORD CopyBufferSize = 65536;
constexpr int UniqueNameTries = 100;

// ErrorNone when a call succeeded, else why it did not.
uint32_t ErrorUnless(bool succeeded) {
  if (succeeded) return ErrorNone;
  return GetLastError();
}

DWORD AttributesOf(const char* path) {
  if (path != nullptr && *path != '\0') return GetFileAttributesA(path);
  SetLastError(ERROR_PATH_NOT_FOUND);
  return INVALID_FILE_ATTRIBUTES;
}

// Opens what is there, a directory too.
HANDLE OpenExisting(const char* path, DWORD access, DWORD share) {
  return CreateFileA(path, access, share, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS,
                     nullptr);
}

// The name of what path leads to, with links followed where it exists.
std::string FinalName(const char* path) {
  constexpr std::string_view Verbatim = "\\\\?\\";
  constexpr std::string_view VerbatimNetwork = "\\\\?\\UNC\\";
  const DWORD attributes = AttributesOf(path);
  const bool isLink =
      attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
  if (!isLink) return path;
  const FileHandle file(OpenExisting(path, 0, ShareAll));
  char name[MAX_PATH + 1];
  const DWORD length =
      file.IsOpen() ? GetFinalPathNameByHandleA(file.Get(), name, sizeof name, 0) : 0;
  if (length == 0 || length >= sizeof name) return path;
  const std::string final = name;
  if (final.starts_with(VerbatimNetwork)) return "\\\\" + final.substr(VerbatimNetwork.size());
  return final.starts_with(Verbatim) ? final.substr(Verbatim.size()) : final;
}

// Creates an empty file whose name begins with `stem` and which was not there before; the empty
// text when it cannot be made.
std::string CreateUnique(const std::string& stem) {
  for (int i = 0; i < UniqueNameTries; ++i) {
    // Two processes that read the same clock differ in their numbers, and a name is taken once.
    LARGE_INTEGER ticks;
    QueryPerformanceCounter(&ticks);
    char suffix[32];
    std::snprintf(suffix, sizeof suffix, "%08lx%08lx", GetCurrentProcessId() ^ ticks.LowPart << 4,
                  GetCurrentThreadId() ^ static_cast<DWORD>(ticks.QuadPart >> 8));
    std::string name = stem + suffix;
    const FileHandle file(CreateFileA(name.c_str(), GENERIC_WRITE, ShareReadWrite, nullptr,
                                      CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (file.IsOpen()) return name;
    if (GetLastError() != ERROR_FILE_EXISTS) break;
  }
  return {};
}

// A file to fill beside `name`, which has links followed.
std::string CreateUniqueBeside(const std::string& name) {
  return CreateUnique(name.substr(0, FileNameStart(name)) + "hv");
}

enum class TargetKind : uint8_t { Missing, DiskFile, Device };

// What a file to be written is, or why it may not be written.
uint32_t ProbeTarget(const char* path, TargetKind* kind) {
  const FileHandle file(
      CreateFileA(path, GENERIC_WRITE, ShareReadWrite, nullptr, OPEN_EXISTING, 0, nullptr));
  if (!file.IsOpen()) {
    *kind = TargetKind::Missing;
    return ErrorUnless(GetLastError() == ERROR_FILE_NOT_FOUND);
  }
  *kind = GetFileType(file.Get()) == FILE_TYPE_DISK ? TargetKind::DiskFile : TargetKind::Device;
  return ErrorNone;
}

// CopyFileA, with nothing left of a target that was not there before.
uint32_t CopyToNewFile(const char* source, const char* target) {
  if (CopyFileA(source, target, FALSE) != 0) return ErrorNone;
  const DWORD error = GetLastError();
  SetFileAttributesA(target, FILE_ATTRIBUTE_NORMAL);
  DeleteFileA(target);
  return error;
}

bool Resize(const FileHandle& file, int64_t size) {
  LARGE_INTEGER place;
  place.QuadPart = size;
  return SetFilePointerEx(file.Get(), place, nullptr, FILE_BEGIN) != 0 &&
         SetEndOfFile(file.Get()) != 0;
}

uint32_t CopyBytes(const FileHandle& from, const FileHandle& to) {
  const std::unique_ptr<char[]> buffer(new char[CopyBufferSize]);
  SetFilePointer(to.Get(), 0, nullptr, FILE_BEGIN);
  for (;;) {
    DWORD got = 0;
    DWORD written = 0;
    if (ReadFile(from.Get(), buffer.get(), CopyBufferSize, &got, nullptr) == 0) {
      return GetLastError();
    }
    if (got == 0) return ErrorNone;
    if (WriteFile(to.Get(), buffer.get(), got, &written, nullptr) == 0) return GetLastError();
    if (written < got) return ErrorDiskFull;
  }
}

// Gives `to` the bytes and the time of `from`. Room is made first: once it is there, nothing of the
// old bytes is lost for want of it.
uint32_t OverwriteInPlace(const char* from, const char* to) {
  const FileHandle source(OpenExisting(from, GENERIC_READ, ShareReadWrite));
  const FileHandle target(OpenExisting(to, GENERIC_WRITE, ShareReadWrite));
  LARGE_INTEGER size;
  LARGE_INTEGER oldSize;
  FILETIME changed;
  if (!source.IsOpen() || !target.IsOpen() || GetFileSizeEx(source.Get(), &size) == 0 ||
      GetFileSizeEx(target.Get(), &oldSize) == 0 ||
      GetFileTime(source.Get(), nullptr, nullptr, &changed) == 0) {
    return GetLastError();
  }
  if (!Resize(target, std::max(size.QuadPart, oldSize.QuadPart))) {
    const DWORD error = GetLastError();
    Resize(target, oldSize.QuadPart);
    return error;
  }
  const uint32_t error = CopyBytes(source, target);
  if (error != ErrorNone) return error;
  const bool finished =
      Resize(target, size.QuadPart) && ::SetFileTime(target.Get(), nullptr, nullptr, &changed) != 0;
  return ErrorUnless(finished);
}

uint32_t CopyOverFile(const char* source, const std::string& target) {
  // The system's own copy spares hidden files as it spares those that are read-only.
  if ((AttributesOf(target.c_str()) & FILE_ATTRIBUTE_HIDDEN) != 0) return ErrorAccessDenied;
  const TemporaryFile temporary(CreateUniqueBeside(target));
  const std::string& beside = temporary.Name();
  if (beside.empty()) return GetLastError();
  uint32_t error = CopyToNewFile(source, beside.c_str());
  if (error != ErrorNone) return error;
  const DWORD attributes = AttributesOf(beside.c_str());
  error = ReplaceWith(beside.c_str(), target.c_str());
  if (error == ErrorNone) {
    SetFileAttributesA(target.c_str(), attributes);
    return error;
  }
  // Somebody has the target open and lets others write it, but not take its place.
  if (error == ErrorAccessDenied || error == ErrorSharingViolation) {
    error = OverwriteInPlace(beside.c_str(), target.c_str());
  }
  return error;
}

// Gives `from` the access rights and attributes of the file it is to replace. Few may give a file
// rights of others, so that a failure of this is none of the whole.
void TakeOverRights(const char* from, const char* to, DWORD attributes) {
  DWORD size = 0;
  GetFileSecurityA(to, DACL_SECURITY_INFORMATION, nullptr, 0, &size);
  if (size > 0) {
    const std::unique_ptr<char[]> descriptor(new char[size]);
    if (GetFileSecurityA(to, DACL_SECURITY_INFORMATION, descriptor.get(), size, &size) != 0) {
      SetFileSecurityA(from, DACL_SECURITY_INFORMATION, descriptor.get());
    }
  }
  SetFileAttributesA(from, attributes);
}

// Whether a name stands for a device whatever its extension, as "nul.txt" does.
bool IsDeviceName(std::string_view name) {
  std::string_view base = name.substr(0, name.find('.'));
  base = base.substr(0, base.find_last_not_of(' ') + 1);
  for (const std::string_view device : {"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$"}) {
    if (EqualsIgnoreCase(base, device)) return true;
  }
  const std::string_view port = base.substr(0, 3);
  return base.size() == 4 && base[3] >= '1' && base[3] <= '9' &&
         (EqualsIgnoreCase(port, "COM") || EqualsIgnoreCase(port, "LPT"));
}

}  // namespace

FileKind KindOf(const char* path) {
  const DWORD attributes = AttributesOf(path);
  if (attributes == INVALID_FILE_ATTRIBUTES) return FileKind::None;
  return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? FileKind::Directory : FileKind::File;
}

bool NameSameFile(const char* a, const char* b) {
  if (KindOf(a) == FileKind::None || KindOf(b) == FileKind::None) return false;
  const FileHandle first(OpenExisting(a, 0, ShareAll));
  const FileHandle second(OpenExisting(b, 0, ShareAll));
  return IsSameFile(first.Get(), second.Get());
}

uint32_t CopyWholeFile(const char* source, const char* target) {
  const DWORD attributes = AttributesOf(source);
  if (attributes == INVALID_FILE_ATTRIBUTES) return GetLastError();
  if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return ErrorAccessDenied;
  if (NameSameFile(source, target)) return ErrorNone;

  TargetKind kind;
  const uint32_t error = ProbeTarget(target, &kind);
  if (error != ErrorNone) return error;
  switch (kind) {
    case TargetKind::DiskFile:
      return CopyOverFile(source, FinalName(target));
    case TargetKind::Missing:
      return CopyToNewFile(source, target);
    case TargetKind::Device:
      // A device holds nothing that could be lost.
      break;
  }
  return ErrorUnless(CopyFileA(source, target, FALSE) != 0);
}

uint32_t RemoveFile(const char* path) {
  return ErrorUnless(DeleteFileA(path) != 0);
}

uint32_t ReplaceWith(const char* from, const char* to) {
  const std::string target = FinalName(to);
  const DWORD attributes = AttributesOf(target.c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES) TakeOverRights(from, target.c_str(), attributes);
  return ErrorUnless(MoveFileExA(from, target.c_str(), MOVEFILE_REPLACE_EXISTING) != 0);
}

uint32_t MakeDirectory(const char* path) {
  return ErrorUnless(CreateDirectoryA(path, nullptr) != 0);
}

std::string CreateTemporaryFile(const char* prefix) {
  char folder[MAX_PATH];
  const DWORD length = GetEnvironmentVariableA("TMP", folder, sizeof folder);
  if (length > 0 && length < sizeof folder) {
    std::string name = CreateUnique(std::string(folder) + "\\" + prefix);
    if (!name.empty()) return name;
  }
  return CreateUnique(std::string("\\") + prefix);
}

std::string CreateFileBeside(const char* path) {
  const std::string target = FinalName(path);
  TargetKind kind;
  if (ProbeTarget(target.c_str(), &kind) != ErrorNone || kind == TargetKind::Device) return {};
  return CreateUniqueBeside(target);
}

void DiscardFile(const std::string& name) noexcept {
  // A file that took over the attributes of another may be read-only.
  SetFileAttributesA(name.c_str(), FILE_ATTRIBUTE_NORMAL);
  DeleteFileA(name.c_str());
}

bool MakeDirectoriesBelow(const std::string& path) {
  constexpr DWORD DirectoryOrLink = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;
  for (std::size_t end = 0; end < path.size();) {
    end = std::min(path.find('/', end + 1), path.size());
    const std::string directory = path.substr(0, end);
    if (CreateDirectoryA(directory.c_str(), nullptr) != 0) continue;
    const DWORD attributes = AttributesOf(directory.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) return false;
    if ((attributes & DirectoryOrLink) != FILE_ATTRIBUTE_DIRECTORY) return false;
  }
  return true;
}

bool IsUsableName(std::string_view name) {
  constexpr std::string_view Reserved = "<>:\"|?*";
  const auto isReserved = [&](char c) {
    return static_cast<unsigned char>(c) < ' ' || Reserved.find(c) != std::string_view::npos;
  };
  // Dots and blanks at the end would be dropped.
  return !name.empty() && name.back() != '.' && name.back() != ' ' &&
         std::none_of(name.begin(), name.end(), isReserved) && !IsDeviceName(name);
}

bool SetFileTime(const char* path, const std::tm& time) {
  constexpr int64_t TicksPerSecond = 10'000'000;
  constexpr int64_t SecondsFrom1601To1970 = 11'644'473'600;
  std::tm fields = time;
  const int64_t ticks = (_mkgmtime64(&fields) + SecondsFrom1601To1970) * TicksPerSecond;
  const FILETIME moment = {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
  const FileHandle file(OpenExisting(path, FILE_WRITE_ATTRIBUTES, ShareAll));
  return file.IsOpen() && ::SetFileTime(file.Get(), nullptr, &moment, &moment) != 0;
}

}  // namespace hv::platform
