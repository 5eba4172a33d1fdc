#include "platform/files.h"

#include <errno.h>
#include <fcntl.h>
#include <stdlib.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <memory>

#include "platform/posix/broken_pipe.h"
#include "platform/posix/descriptor.h"
#include "platform/posix/environment.h"
#include "platform/posix/error_numbers.h"
#include "platform/posix/names.h"
#include "support/path_text.h"

namespace hv::platform {
namespace {

constexpr std::size_t CopyBufferSize = 65536;
using CopyBuffer = std::unique_ptr<char[]>;
constexpr mode_t NewFileMode = 0666;
constexpr mode_t PrivateFileMode = 0600;
constexpr mode_t NewDirectoryMode = 0777;
constexpr mode_t PermissionBits = 0777;
constexpr int UniqueNameTries = 100;

SystemError LastError() {
  return ErrorOfErrno(errno);
}

// The system's name of what path leads to, with links followed where it exists.
std::string FinalName(const char* path) {
  std::string name = SystemName(path);
  const std::unique_ptr<char, void (*)(void*)> real(realpath(name.c_str(), nullptr), free);
  return real == nullptr ? name : std::string(real.get());
}

// Creates a file whose name begins with `stem` and which was not there before.
Descriptor CreateUnique(const std::string& stem, mode_t mode, std::string* name) {
  for (int i = 0; i < UniqueNameTries; ++i) {
    uint64_t number = 0;
    if (getrandom(&number, sizeof number, 0) != static_cast<ssize_t>(sizeof number)) break;
    char suffix[17];
    std::snprintf(suffix, sizeof suffix, "%016llx", static_cast<unsigned long long>(number));
    *name = stem + suffix;
    Descriptor file(open(name->c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
    if (file.IsOpen() || errno != EEXIST) return file;
  }
  return Descriptor();
}

// A file to fill beside `name`, a name of this system with links followed.
Descriptor CreateUniqueBeside(const std::string& name, std::string* besideName) {
  return CreateUnique(name.substr(0, FileNameStart(name)) + ".hv", NewFileMode, besideName);
}

SystemError CopyBytes(int from, int to, const CopyBuffer& buffer) {
  for (;;) {
    const ssize_t got = ReadOnce(from, buffer.get(), CopyBufferSize);
    if (got < 0) return ErrorReadFault;
    if (got == 0) return ErrorNone;
    if (WriteFully(to, buffer.get(), static_cast<std::size_t>(got)) !=
        static_cast<std::size_t>(got)) {
      return LastError();
    }
  }
}

// Fills `file`, just created as `name`, from the source; removes it again when that fails.
SystemError FillNewFile(const Descriptor& source, const struct stat& sourceStatus, Descriptor file,
                        const std::string& name, const CopyBuffer& buffer) {
  SystemError error = CopyBytes(source.Get(), file.Get(), buffer);
  const timespec times[2] = {sourceStatus.st_atim, sourceStatus.st_mtim};
  if (error == ErrorNone && futimens(file.Get(), times) != 0) error = LastError();
  if (!file.Close() && error == ErrorNone) error = LastError();
  if (error != ErrorNone) unlink(name.c_str());
  return error;
}

// Gives `from` the rights of the file it is to replace. The owner can be given by few only, so that
// a failure of this is none of the whole.
void TakeOverRights(const std::string& from, const struct stat& rights) {
  if (chown(from.c_str(), rights.st_uid, rights.st_gid) != 0) errno = 0;
  if (chmod(from.c_str(), rights.st_mode & PermissionBits) != 0) errno = 0;
}

SystemError RenameOver(const std::string& from, const std::string& to) {
  struct stat old;
  if (stat(to.c_str(), &old) == 0) {
    TakeOverRights(from, old);
  } else if (errno != ENOENT) {
    return LastError();
  }
  return rename(from.c_str(), to.c_str()) == 0 ? ErrorNone : LastError();
}

SystemError CopyOverFile(const Descriptor& source, const struct stat& sourceStatus,
                         const std::string& target, const CopyBuffer& buffer) {
  if (faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0) return LastError();
  std::string besideName;
  Descriptor beside = CreateUniqueBeside(target, &besideName);
  if (!beside.IsOpen()) return LastError();
  SystemError error = FillNewFile(source, sourceStatus, std::move(beside), besideName, buffer);
  if (error != ErrorNone) return error;
  error = RenameOver(besideName, target);
  if (error != ErrorNone) unlink(besideName.c_str());
  return error;
}

}  // namespace

FileKind KindOf(const char* path) {
  struct stat status;
  // Where the disk does not answer, a name counts as taken: a backup must not overwrite another.
  if (stat(SystemName(path).c_str(), &status) != 0) {
    return errno == EIO ? FileKind::File : FileKind::None;
  }
  return S_ISDIR(status.st_mode) ? FileKind::Directory : FileKind::File;
}

bool NameSameFile(const char* a, const char* b) {
  struct stat first;
  struct stat second;
  return stat(SystemName(a).c_str(), &first) == 0 && stat(SystemName(b).c_str(), &second) == 0 &&
         first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

uint32_t CopyWholeFile(const char* source, const char* target) {
  // Before there is a file that a lack of memory would leave behind.
  const CopyBuffer buffer(new char[CopyBufferSize]);
  const Descriptor from(open(SystemName(source).c_str(), O_RDONLY | O_CLOEXEC));
  struct stat fromStatus;
  if (!from.IsOpen() || fstat(from.Get(), &fromStatus) != 0) return LastError();
  if (S_ISDIR(fromStatus.st_mode)) return ErrorAccessDenied;

  const std::string name = FinalName(target);
  struct stat toStatus;
  if (stat(name.c_str(), &toStatus) == 0) {
    if (S_ISDIR(toStatus.st_mode)) return ErrorAccessDenied;
    if (toStatus.st_dev == fromStatus.st_dev && toStatus.st_ino == fromStatus.st_ino) {
      return ErrorNone;
    }
    if (S_ISREG(toStatus.st_mode)) return CopyOverFile(from, fromStatus, name, buffer);
    // A device or a pipe holds nothing that could be lost.
    Descriptor to(open(name.c_str(), O_WRONLY | O_CLOEXEC));
    if (!to.IsOpen()) return LastError();
    const BrokenPipeBlock noSignal;
    const SystemError error = CopyBytes(from.Get(), to.Get(), buffer);
    return to.Close() || error != ErrorNone ? error : LastError();
  }

  const mode_t mode = fromStatus.st_mode & (S_IRWXU | S_IRWXG | S_IRWXO);
  Descriptor to(open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
  if (!to.IsOpen()) return LastError();
  return FillNewFile(from, fromStatus, std::move(to), name, buffer);
}

uint32_t RemoveFile(const char* path) {
  return unlink(SystemName(path).c_str()) == 0 ? ErrorNone : LastError();
}

uint32_t ReplaceWith(const char* from, const char* to) {
  return RenameOver(SystemName(from), FinalName(to));
}

uint32_t MakeDirectory(const char* path) {
  return mkdir(SystemName(path).c_str(), NewDirectoryMode) == 0 ? ErrorNone : LastError();
}

std::string CreateTemporaryFile(const char* prefix) {
  std::string name;
  if (const std::string folder = SystemName(Environment("TMP").c_str()); !folder.empty()) {
    if (CreateUnique(folder + "/" + prefix, PrivateFileMode, &name).IsOpen()) return name;
  }
  if (CreateUnique(std::string("/") + prefix, PrivateFileMode, &name).IsOpen()) return name;
  return {};
}

std::string CreateFileBeside(const char* path) {
  const std::string target = FinalName(path);
  struct stat status;
  if (stat(target.c_str(), &status) == 0) {
    if (!S_ISREG(status.st_mode)) return {};
    if (faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0) return {};
  }
  std::string name;
  if (!CreateUniqueBeside(target, &name).IsOpen()) name.clear();
  return name;
}

void DiscardFile(const std::string& name) noexcept {
  unlink(name.c_str());
}

bool MakeDirectoriesBelow(const std::string& path) {
  for (std::size_t end = 0; end < path.size();) {
    end = std::min(path.find('/', end + 1), path.size());
    const std::string directory = path.substr(0, end);
    if (mkdir(directory.c_str(), NewDirectoryMode) == 0) continue;
    struct stat status;
    if (lstat(directory.c_str(), &status) != 0 || !S_ISDIR(status.st_mode)) return false;
  }
  return true;
}

bool IsUsableName(std::string_view) {
  return true;
}

bool SetFileTime(const char* path, const std::tm& time) {
  std::tm fields = time;
  const timespec moment = {timegm(&fields), 0};
  const timespec times[2] = {moment, moment};
  return utimensat(AT_FDCWD, SystemName(path).c_str(), times, 0) == 0;
}

}  // namespace hv::platform
