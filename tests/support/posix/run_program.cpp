#include "support/run_program.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/test_folder.h"

namespace hvtest {

ProgramRun RunProgram(const std::string& program, const std::vector<std::string>& arguments) {
  const TestFolder folder;
  const std::string output = folder.Add("output", "");
  const std::string errors = folder.Add("errors", "");
  posix_spawn_file_actions_t files;
  posix_spawn_file_actions_init(&files);
  posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, output.c_str(), O_WRONLY, 0);
  posix_spawn_file_actions_addopen(&files, STDERR_FILENO, errors.c_str(), O_WRONLY, 0);
  std::vector<char*> words = {const_cast<char*>(program.c_str())};
  for (const std::string& word : arguments) words.push_back(const_cast<char*>(word.c_str()));
  words.push_back(nullptr);

  ProgramRun run;
  pid_t child = 0;
  const int failed = posix_spawnp(&child, program.c_str(), &files, nullptr, words.data(), environ);
  posix_spawn_file_actions_destroy(&files);
  int status = 0;
  if (failed == 0 && waitpid(child, &status, 0) == child && WIFEXITED(status)) {
    run.status = WEXITSTATUS(status);
  }
  run.output = ReadFile(output);
  run.errors = ReadFile(errors);
  return run;
}

}  // namespace hvtest
