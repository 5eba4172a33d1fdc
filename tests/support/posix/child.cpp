#include "support/posix/child.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <thread>

// Of the leak sanitizer, where it is part of the program. Children end without its look around.
extern "C" int __lsan_do_recoverable_leak_check() __attribute__((weak));

namespace hvtest {
namespace {

constexpr unsigned LongestRun = 60;  // in seconds

std::string ReadAll(int fd) {
  std::string text;
  char buffer[4096];
  lseek(fd, 0, SEEK_SET);
  for (ssize_t got = 0; (got = read(fd, buffer, sizeof buffer)) > 0;) {
    text.append(buffer, static_cast<std::size_t>(got));
  }
  return text;
}

[[noreturn]] void BeChild(const std::function<std::string()>& work, int answer, int output) {
  alarm(LongestRun);
  dup2(output, STDOUT_FILENO);
  std::string text;
  std::thread([&] { text = work(); }).join();
  const bool written = write(answer, text.data(), text.size()) == static_cast<ssize_t>(text.size());
  const bool leaks =
      __lsan_do_recoverable_leak_check != nullptr && __lsan_do_recoverable_leak_check() != 0;
  _exit(written && !leaks ? 0 : 1);
}

}  // namespace

ChildResult RunInChild(const std::function<std::string()>& work) {
  ChildResult result;
  std::fflush(stdout);
  const int answer = memfd_create("answer", MFD_CLOEXEC);
  const int output = memfd_create("output", MFD_CLOEXEC);
  const pid_t child = fork();
  if (child == 0) BeChild(work, answer, output);
  int status = 0;
  while (child > 0 && waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  result.finished = child > 0 && WIFEXITED(status) && WEXITSTATUS(status) == 0;
  result.answer = ReadAll(answer);
  result.output = ReadAll(output);
  close(answer);
  close(output);
  return result;
}

}  // namespace hvtest
