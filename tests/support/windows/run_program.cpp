#include "support/run_program.h"

#include <windows.h>

#include "support/test_folder.h"

namespace hvtest {
namespace {

// A word as the C runtime takes a command line apart.
std::string QuotedWord(const std::string& word) {
  std::string quoted = "\"";
  std::size_t backslashes = 0;
  for (const char c : word) {
    if (c == '"') quoted.append(backslashes + 1, '\\');
    backslashes = c == '\\' ? backslashes + 1 : 0;
    quoted += c;
  }
  return quoted + std::string(backslashes, '\\') + "\"";
}

HANDLE OpenInheritable(const std::string& path, DWORD access) {
  SECURITY_ATTRIBUTES inheritable = {sizeof inheritable, nullptr, TRUE};
  return CreateFileA(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inheritable,
                     OPEN_ALWAYS, 0, nullptr);
}

std::string ReadText(const std::string& path) {
  std::string text = ReadFile(path);
  std::erase(text, '\r');
  return text;
}

}  // namespace

ProgramRun RunProgram(const std::string& program, const std::vector<std::string>& arguments) {
  const TestFolder folder;
  std::string line = QuotedWord(program);
  for (const std::string& word : arguments) line += " " + QuotedWord(word);

  STARTUPINFOA start = {};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdInput = OpenInheritable("NUL", GENERIC_READ);
  start.hStdOutput = OpenInheritable(folder / "output", GENERIC_WRITE);
  start.hStdError = OpenInheritable(folder / "errors", GENERIC_WRITE);
  PROCESS_INFORMATION process = {};
  const bool started = CreateProcessA(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr,
                                      nullptr, &start, &process) != FALSE;
  for (const HANDLE handle : {start.hStdInput, start.hStdOutput, start.hStdError}) {
    CloseHandle(handle);
  }
  ProgramRun run;
  if (started) {
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD status = 0;
    if (GetExitCodeProcess(process.hProcess, &status)) run.status = static_cast<int>(status);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
  }
  run.output = ReadText(folder / "output");
  run.errors = ReadText(folder / "errors");
  return run;
}

}  // namespace hvtest
