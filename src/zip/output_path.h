// Where a member goes: its stored name as a path below the current directory.
#pragma once

#include <string>
#include <string_view>

namespace hv {

struct OutputPath {
  std::string directory;  // "./a/b"; "." for the current directory
  std::string file;       // "./a/b/c"; empty when the name names no file
  // Whether the member is a directory: its stored name ends with a separator.
  bool isDirectory = false;
  // Whether the system takes the names.
  bool isUsable = true;
};

// "/" and "\" both separate. ":" becomes "_"; ";" ends the name; text from "<" to ">" and from "["
// to "]" is dropped, and so are control characters; behind a byte 0x16 a character stands for
// itself, though a separator still separates. Of what results the parts that would lead out of the
// current directory are dropped: leading separators and "..".
OutputPath MapOutputPath(std::string_view storedName);

}  // namespace hv
