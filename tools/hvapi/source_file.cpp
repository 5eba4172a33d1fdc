#include "source_file.h"

#include <fstream>
#include <iostream>
#include <vector>

#include "program.h"

namespace hvtool {

CLI::Option* AddSourceArgument(CLI::App* command, const std::string& name, std::string* value,
                               const std::string& description) {
  return AddArgument(command, name, value, description + ", or - for standard input");
}

SourceFile::SourceFile(const std::string& name) : path_(name) {
  if (name == StandardInput) Spool();
}

std::string SourceFile::Shown() const {
  return IsInput() ? "standard input" : Quoted(path_);
}

void SourceFile::Spool() {
  constexpr std::size_t Chunk = 65536;
  spooled_ = std::make_unique<TemporaryFile>();
  path_ = spooled_->Path();
  std::ofstream file(path_, std::ios::binary);
  if (path_.empty() || !file) {
    status_ = Fail(HV_CANNOT_OPEN, "cannot make a temporary file for standard input");
    return;
  }
  ReadInputAsBytes();
  std::vector<char> buffer(Chunk);
  while (std::cin && file) {
    std::cin.read(buffer.data(), static_cast<std::streamsize>(buffer.size()));
    file.write(buffer.data(), std::cin.gcount());
  }
  if (std::cin.bad()) {
    status_ = Fail(HV_READ_FAILED, "cannot read all of standard input");
  } else if (!file.flush()) {
    status_ = Fail(HV_WRITE_FAILED, "cannot keep all of standard input in a temporary file");
  }
}

}  // namespace hvtool
