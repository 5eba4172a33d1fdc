#include "fonts/font_paths.h"

#include <algorithm>

#include "support/ascii.h"
#include "support/path_text.h"

namespace hv {
namespace {

constexpr std::size_t ExtensionLength = 3;

}  // namespace

std::string ReplaceExtension(std::string_view path, std::string_view extension) {
  const std::size_t dot = path.rfind('.');
  if (dot == std::string_view::npos || dot < FileNameStart(path)) {
    return std::string(path).append(extension);
  }
  const bool replacesDot = !extension.empty() && extension.front() == '.';
  return std::string(path.substr(0, replacesDot ? dot : dot + 1)).append(extension);
}

std::string_view FontBaseName(std::string_view path) {
  const std::size_t separator = path.find_last_of("\\/");
  const std::string_view name =
      separator == std::string_view::npos ? path : path.substr(separator + 1);
  const std::string_view base = name.substr(0, name.find('.'));
  return base.substr(FileNameStart(base));
}

std::string FontExtension(std::string_view path) {
  const std::size_t dot = path.rfind('.');
  if (dot == std::string_view::npos) return {};
  std::string extension(path.substr(dot + 1, ExtensionLength));
  std::transform(extension.begin(), extension.end(), extension.begin(), ToUpper);
  return extension;
}

}  // namespace hv
