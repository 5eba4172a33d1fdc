// Queues that are directories of the spool folder.
//
// A document grows in a hidden file, so that a reader of the queue sees finished ones only. Numbers
// are given out while the directory is locked, one above the highest that lies there, so that no
// number comes twice while a later one is there, whatever processes and threads write.

#include <dirent.h>
#include <errno.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>

#include "platform/posix/descriptor.h"
#include "platform/posix/environment.h"
#include "platform/posix/error_numbers.h"
#include "platform/posix/names.h"
#include "platform/posix/spool_queues.h"
#include "platform/system_facts.h"
#include "support/ascii.h"

namespace hv::platform {
namespace {

constexpr mode_t DocumentMode = 0666;
constexpr std::size_t FewestDigits = 6;
constexpr std::size_t MostDigits = 18;
constexpr uint64_t LastNumber = 999'999'999'999'999'999;
constexpr std::string_view DocumentEnding = ".prn";
constexpr std::string_view TicketEnding = ".job";

// A file of a directory that is removed again unless it was given its final name.
class PendingFile {
 public:
  bool Create(int directory, std::string name) {
    directory_ = directory;
    name_ = std::move(name);
    file_ = Descriptor(
        openat(directory, name_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, DocumentMode));
    return file_.IsOpen();
  }

  PendingFile() = default;
  PendingFile(const PendingFile&) = delete;
  PendingFile& operator=(const PendingFile&) = delete;
  ~PendingFile() { Discard(); }

  std::size_t Write(const void* bytes, std::size_t count) {
    return WriteFully(file_.Get(), bytes, count);
  }
  bool Write(std::string_view text) { return Write(text.data(), text.size()) == text.size(); }

  // Closes the file and gives it its name; false, with the file gone, when that fails.
  bool Publish(const std::string& finalName) {
    if (file_.Close() && renameat(directory_, name_.c_str(), directory_, finalName.c_str()) == 0) {
      name_.clear();
      return true;
    }
    const int reason = errno;
    Discard();
    errno = reason;
    return false;
  }

  void Discard() {
    file_.Close();
    if (!name_.empty()) unlinkat(directory_, name_.c_str(), 0);
    name_.clear();
  }

 private:
  int directory_ = -1;
  std::string name_;
  Descriptor file_;
};

// The number of a document or ticket by its file name, 0 for other files.
uint64_t NumberOf(std::string_view name) {
  const std::size_t dot = name.find('.');
  if (dot == std::string_view::npos || dot < FewestDigits || dot > MostDigits) return 0;
  const std::string_view ending = name.substr(dot);
  if (ending != DocumentEnding && ending != TicketEnding) return 0;
  uint64_t number = 0;
  for (const char c : name.substr(0, dot)) {
    if (!IsDigit(c)) return 0;
    number = number * 10 + static_cast<uint64_t>(c - '0');
  }
  return number;
}

// The highest number in a directory; false when it cannot be read.
bool HighestNumber(int directory, uint64_t* highest) {
  const int again = openat(directory, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (again < 0) return false;
  DIR* open = fdopendir(again);
  if (open == nullptr) {
    close(again);
    return false;
  }
  *highest = 0;
  errno = 0;
  while (const dirent* entry = readdir(open)) {
    *highest = std::max(*highest, NumberOf(entry->d_name));
  }
  // A list cut short would give out the number of a document that is there.
  const int reason = errno;
  closedir(open);
  errno = reason;
  return reason == 0;
}

// A value of a ticket line: control characters would end the line early.
std::string LineText(std::string_view text) {
  std::string line(text);
  for (char& c : line) {
    if (static_cast<unsigned char>(c) < ' ') c = ' ';
  }
  return line;
}

std::string TimeText() {
  timespec now = {};
  clock_gettime(CLOCK_REALTIME, &now);
  tm fields = {};
  gmtime_r(&now.tv_sec, &fields);
  std::array<char, 32> text;
  strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%SZ", &fields);
  return text.data();
}

class SpoolDirectory final : public SpoolPrinter {
 public:
  explicit SpoolDirectory(Descriptor directory) : directory_(std::move(directory)) {}

  bool StartDocument(const char* documentName) override {
    // The address of this object tells threads apart, the rest processes and calls.
    timespec now = {};
    clock_gettime(CLOCK_MONOTONIC, &now);
    std::array<char, 80> stem;
    std::snprintf(stem.data(), stem.size(), ".%ld-%llx-%llx%09ld", static_cast<long>(getpid()),
                  static_cast<unsigned long long>(reinterpret_cast<uintptr_t>(this)),
                  static_cast<unsigned long long>(now.tv_sec), now.tv_nsec);
    std::array<char, 256> user;
    const bool hasUser = UserName(user.data(), user.size());
    const std::string ticket = "name=" + LineText(documentName) +
                               "\nuser=" + LineText(hasUser ? user.data() : "") +
                               "\ntime=" + TimeText() + "\n";
    // Most of the ticket is written now: a full disk is better met before the document.
    if (!document_.Create(directory_.Get(), stem.data() + std::string(DocumentEnding)) ||
        !ticket_.Create(directory_.Get(), stem.data() + std::string(TicketEnding)) ||
        !ticket_.Write(ticket)) {
      Fail();
      return false;
    }
    return true;
  }

  void Write(const void* bytes, uint32_t length, uint32_t* written) override {
    *written = static_cast<uint32_t>(document_.Write(bytes, length));
    if (*written != length) error_ = ErrorOfErrno(errno);
    size_ += *written;
  }

  bool EndDocument() override {
    if (Finish()) return true;
    Fail();
    return false;
  }

  uint32_t LastError() const override { return error_; }
  int32_t HandleValue() const override { return directory_.Get(); }

 private:
  bool Finish() {
    if (!ticket_.Write("bytes=" + std::to_string(size_) + "\n")) return false;
    // Closing the directory's descriptor gives up the lock.
    const Descriptor lock(openat(directory_.Get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!lock.IsOpen()) return false;
    while (flock(lock.Get(), LOCK_EX) != 0) {
      if (errno != EINTR) return false;
    }
    uint64_t highest = 0;
    if (!HighestNumber(directory_.Get(), &highest)) return false;
    if (highest == LastNumber) {
      errno = ENOSPC;
      return false;
    }
    std::string number = std::to_string(highest + 1);
    number.insert(0, FewestDigits - std::min(FewestDigits, number.size()), '0');
    const std::string ticketName = number + std::string(TicketEnding);
    // The ticket first: where a document is, its ticket is too.
    if (!ticket_.Publish(ticketName)) return false;
    if (document_.Publish(number + std::string(DocumentEnding))) return true;
    const int reason = errno;
    unlinkat(directory_.Get(), ticketName.c_str(), 0);
    errno = reason;
    return false;
  }

  void Fail() {
    error_ = ErrorOfErrno(errno);
    document_.Discard();
    ticket_.Discard();
  }

  Descriptor directory_;
  PendingFile document_;
  PendingFile ticket_;
  uint64_t size_ = 0;
  uint32_t error_ = ErrorNone;
};

}  // namespace

std::unique_ptr<SpoolPrinter> OpenSpoolDirectory(const char* destination) {
  if (!IsPlainName(destination)) return nullptr;
  const std::string folder = SpoolFolder();
  if (folder.empty()) return nullptr;
  Descriptor directory(
      open((folder + "/" + destination).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!directory.IsOpen()) return nullptr;
  return std::make_unique<SpoolDirectory>(std::move(directory));
}

}  // namespace hv::platform
