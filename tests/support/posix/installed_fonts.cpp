#include "support/posix/installed_fonts.h"

#include <filesystem>
#include <set>

namespace hvtest {
namespace {

namespace fs = std::filesystem;

// Where the packages fonts-urw-base35, xfonts-scalable, t1-cyrillic, lmodern, tex-gyre and groff
// put their fonts.
constexpr const char* FontFolders[] = {"/usr/share/fonts/type1", "/usr/share/fonts/X11/Type1",
                                       "/usr/share/texmf/fonts", "/usr/share/groff"};

}  // namespace

std::vector<std::string> InstalledFonts(const std::string& extension) {
  std::set<std::string> fonts;
  for (const char* const folder : FontFolders) {
    std::error_code missing;
    for (const auto& entry : fs::recursive_directory_iterator(folder, missing)) {
      if (entry.path().extension() == extension && entry.is_regular_file()) {
        fonts.insert(fs::canonical(entry.path()).string());
      }
    }
  }
  return {fonts.begin(), fonts.end()};
}

}  // namespace hvtest
