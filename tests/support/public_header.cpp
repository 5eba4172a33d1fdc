#include "support/public_header.h"

#include <regex>

#include "support/test_folder.h"

namespace hvtest {
namespace fs = std::filesystem;

std::set<std::string> DeclaredFunctions(const std::string& sourceFolder) {
  const std::regex declaration("HVAPI_EXPORT[^;(]*HVAPI_CALL\\s+(Hv\\w+)\\(");
  std::set<std::string> names;
  for (const fs::directory_entry& entry : fs::directory_iterator(sourceFolder + "/src/api/hvapi")) {
    const std::string header = ReadFile(entry.path());
    for (std::sregex_iterator at(header.begin(), header.end(), declaration), end; at != end; ++at) {
      names.insert((*at)[1]);
    }
  }
  return names;
}

}  // namespace hvtest
