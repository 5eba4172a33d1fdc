#include "macros/system_extension.h"

#include <algorithm>

#include "support/ascii.h"

namespace hv {
namespace {

constexpr std::string_view SystemExtensions[] = {"BAT", "CMD", "COM", "DLL", "DRV",
                                                 "EXE", "HLP", "INI", "SYS"};

}  // namespace

bool HasSystemExtension(std::string_view path) {
  const std::size_t dot = path.rfind('.');
  if (dot == std::string_view::npos) return false;
  const std::string_view extension = path.substr(dot + 1, 3);
  return std::any_of(std::begin(SystemExtensions), std::end(SystemExtensions),
                     [&](std::string_view name) { return EqualsIgnoreCase(extension, name); });
}

}  // namespace hv
