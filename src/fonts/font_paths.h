// The paths of font files as text: base name, kind by extension, names of companion files. No file
// is looked at.
#pragma once

#include <string>
#include <string_view>

namespace hv {

// The path with the text behind the last dot of its file name replaced. With an extension that
// begins with a dot, the old dot goes too. A file name without a dot gets the extension appended as
// it stands.
std::string ReplaceExtension(std::string_view path, std::string_view extension);

// The file name up to its first dot.
std::string_view FontBaseName(std::string_view path);

// The text behind the last dot of the whole path, in upper case, at most three characters of it;
// empty when there is none.
std::string FontExtension(std::string_view path);

}  // namespace hv
