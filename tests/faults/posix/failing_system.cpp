#include "faults/posix/failing_system.h"

#include <dirent.h>
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <cstdarg>
#include <cstdlib>

namespace {

struct Plan {
  bool active = false;
  bool fromThenOn = false;
  bool failed = false;
  bool keptFile = false;
  std::size_t untilFailure = 0;
};
thread_local Plan plan;

// Whether the call that is made now fails, and with what.
bool Fails(int error) {
  if (!plan.active) return false;
  const bool fails = plan.untilFailure == 0 && (plan.fromThenOn || !plan.failed);
  if (plan.untilFailure > 0) --plan.untilFailure;
  if (!fails) return false;
  plan.failed = true;
  errno = error;
  return true;
}

// The same for a call that removes.
bool KeepsFile() {
  if (!Fails(EIO)) return false;
  plan.keptFile = true;
  return true;
}

mode_t ModeOf(int flags, va_list arguments) {
  return (flags & O_CREAT) != 0 ? static_cast<mode_t>(va_arg(arguments, int)) : 0;
}

}  // namespace

namespace hvtest {

FailingSystem::FailingSystem(std::size_t failing, bool fromThenOn) {
  plan = {true, fromThenOn, false, false, failing};
}
FailingSystem::~FailingSystem() {
  plan = {};
}
bool FailingSystem::Failed() const {
  return plan.failed;
}
bool FailingSystem::KeptFile() const {
  return plan.keptFile;
}

}  // namespace hvtest

// The names are the linker's.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" {

int __real_open(const char* path, int flags, ...);
int __wrap_open(const char* path, int flags, ...) {
  va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = ModeOf(flags, arguments);
  va_end(arguments);
  return Fails((flags & O_CREAT) != 0 ? EACCES : EMFILE) ? -1 : __real_open(path, flags, mode);
}

int __real_openat(int directory, const char* path, int flags, ...);
int __wrap_openat(int directory, const char* path, int flags, ...) {
  va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = ModeOf(flags, arguments);
  va_end(arguments);
  return Fails((flags & O_CREAT) != 0 ? EACCES : EMFILE)
             ? -1
             : __real_openat(directory, path, flags, mode);
}

int __real_close(int fd);
int __wrap_close(int fd) {
  const bool fails = Fails(EIO);
  const int result = __real_close(fd);
  if (fails) errno = EIO;
  return fails ? -1 : result;
}

ssize_t __real_read(int fd, void* buffer, size_t count);
ssize_t __wrap_read(int fd, void* buffer, size_t count) {
  return Fails(EIO) ? -1 : __real_read(fd, buffer, count);
}
ssize_t __real_write(int fd, const void* bytes, size_t count);
ssize_t __wrap_write(int fd, const void* bytes, size_t count) {
  return Fails(ENOSPC) ? -1 : __real_write(fd, bytes, count);
}
ssize_t __real_writev(int fd, const iovec* pieces, int count);
ssize_t __wrap_writev(int fd, const iovec* pieces, int count) {
  return Fails(ENOSPC) ? -1 : __real_writev(fd, pieces, count);
}
off_t __real_lseek(int fd, off_t offset, int whence);
off_t __wrap_lseek(int fd, off_t offset, int whence) {
  return Fails(EIO) ? -1 : __real_lseek(fd, offset, whence);
}
int __real_ftruncate(int fd, off_t size);
int __wrap_ftruncate(int fd, off_t size) {
  return Fails(EIO) ? -1 : __real_ftruncate(fd, size);
}
int __real_flock(int fd, int operation);
int __wrap_flock(int fd, int operation) {
  return Fails(EIO) ? -1 : __real_flock(fd, operation);
}
int __real_mkostemp(char* name, int flags);
int __wrap_mkostemp(char* name, int flags) {
  return Fails(EACCES) ? -1 : __real_mkostemp(name, flags);
}

int __real_unlink(const char* path);
int __wrap_unlink(const char* path) {
  return KeepsFile() ? -1 : __real_unlink(path);
}
int __real_unlinkat(int directory, const char* path, int flags);
int __wrap_unlinkat(int directory, const char* path, int flags) {
  return KeepsFile() ? -1 : __real_unlinkat(directory, path, flags);
}
int __real_rename(const char* from, const char* to);
int __wrap_rename(const char* from, const char* to) {
  return Fails(EIO) ? -1 : __real_rename(from, to);
}
int __real_renameat(int fromDirectory, const char* from, int toDirectory, const char* to);
int __wrap_renameat(int fromDirectory, const char* from, int toDirectory, const char* to) {
  return Fails(EIO) ? -1 : __real_renameat(fromDirectory, from, toDirectory, to);
}
int __real_mkdir(const char* path, mode_t mode);
int __wrap_mkdir(const char* path, mode_t mode) {
  return Fails(EACCES) ? -1 : __real_mkdir(path, mode);
}

DIR* __real_opendir(const char* path);
DIR* __wrap_opendir(const char* path) {
  return Fails(EMFILE) ? nullptr : __real_opendir(path);
}
DIR* __real_fdopendir(int fd);
DIR* __wrap_fdopendir(int fd) {
  return Fails(ENOMEM) ? nullptr : __real_fdopendir(fd);
}
dirent* __real_readdir(DIR* directory);
dirent* __wrap_readdir(DIR* directory) {
  return Fails(EIO) ? nullptr : __real_readdir(directory);
}

int __real_stat(const char* path, struct stat* status);
int __wrap_stat(const char* path, struct stat* status) {
  return Fails(EIO) ? -1 : __real_stat(path, status);
}
int __real_lstat(const char* path, struct stat* status);
int __wrap_lstat(const char* path, struct stat* status) {
  return Fails(EIO) ? -1 : __real_lstat(path, status);
}
int __real_fstat(int fd, struct stat* status);
int __wrap_fstat(int fd, struct stat* status) {
  return Fails(EIO) ? -1 : __real_fstat(fd, status);
}
int __real_fstatat(int directory, const char* path, struct stat* status, int flags);
int __wrap_fstatat(int directory, const char* path, struct stat* status, int flags) {
  return Fails(EIO) ? -1 : __real_fstatat(directory, path, status, flags);
}
int __real_faccessat(int directory, const char* path, int mode, int flags);
int __wrap_faccessat(int directory, const char* path, int mode, int flags) {
  return Fails(EACCES) ? -1 : __real_faccessat(directory, path, mode, flags);
}
int __real_futimens(int fd, const timespec* times);
int __wrap_futimens(int fd, const timespec* times) {
  return Fails(EIO) ? -1 : __real_futimens(fd, times);
}
int __real_utimensat(int directory, const char* path, const timespec* times, int flags);
int __wrap_utimensat(int directory, const char* path, const timespec* times, int flags) {
  return Fails(EIO) ? -1 : __real_utimensat(directory, path, times, flags);
}
char* __real_realpath(const char* path, char* resolved);
char* __wrap_realpath(const char* path, char* resolved) {
  return Fails(EIO) ? nullptr : __real_realpath(path, resolved);
}
ssize_t __real_getrandom(void* buffer, size_t count, unsigned flags);
ssize_t __wrap_getrandom(void* buffer, size_t count, unsigned flags) {
  return Fails(EIO) ? -1 : __real_getrandom(buffer, count, flags);
}

void* __real_dlopen(const char* path, int mode);
void* __wrap_dlopen(const char* path, int mode) {
  return Fails(EIO) ? nullptr : __real_dlopen(path, mode);
}
void* __real_dlsym(void* module, const char* name);
void* __wrap_dlsym(void* module, const char* name) {
  return Fails(EIO) ? nullptr : __real_dlsym(module, name);
}

}  // extern "C"
// NOLINTEND(bugprone-reserved-identifier)
