// A file that a command reads, which may be standard input.
#pragma once

#include <memory>
#include <string>

#include "command_line.h"
#include "system.h"

namespace hvtool {

// The name that stands for standard input.
inline constexpr const char* StandardInput = "-";

// What takes its name from its file, as a macro without --name, has this one from standard input.
inline constexpr const char* NameOfInput = "STDIN";

// An argument that names such a file; the description is completed.
CLI::Option* AddSourceArgument(CLI::App* command, const std::string& name, std::string* value,
                               const std::string& description);

// The file of a name for the exports, which take names and read more than once: standard input is
// first read to its end, into a temporary file.
class SourceFile {
 public:
  explicit SourceFile(const std::string& name);

  // HV_OK, or the code of a failure that has been reported.
  int Status() const { return status_; }
  bool IsInput() const { return spooled_ != nullptr; }
  // As the exports take it.
  const std::string& Path() const { return path_; }
  // As a person reads it.
  std::string Shown() const;

 private:
  void Spool();

  std::string path_;
  std::unique_ptr<TemporaryFile> spooled_;
  int status_ = 0;
};

}  // namespace hvtool
