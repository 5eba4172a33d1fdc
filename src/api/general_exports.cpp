// Exports of no family: library information, memory release, parts of a path.

#include <string_view>

#include "api/caller_memory.h"
#include "api/hvapi.h"
#include "api/library_information.h"
#include "support/ascii.h"
#include "support/path_text.h"

namespace {

char* CopyUpper(char* dest, std::string_view text) {
  // dest may be the path itself; the part moves towards its start.
  for (std::size_t i = 0; i < text.size(); ++i) dest[i] = hv::ToUpper(text[i]);
  dest[text.size()] = '\0';
  return dest;
}

// The constant empty text, in the type that the exports return it as.
char* EmptyText() {
  static constexpr char Empty[] = "";
  return const_cast<char*>(Empty);
}

}  // namespace

void HVAPI_CALL HvGenQueryApiInfo(HvApiInfo* record) {
  hv::FillLibraryInformation(record);
}

void HVAPI_CALL HvMemFree(void* block) {
  hv::ReleaseForCaller(block);
}

char* HVAPI_CALL HvStrCpyFile(char* dest, const char* path) {
  if (dest == nullptr) return EmptyText();
  return CopyUpper(dest, hv::FileNamePart(path == nullptr ? "" : path));
}

char* HVAPI_CALL HvStrCpyPath(char* dest, const char* path) {
  if (dest == nullptr) return EmptyText();
  const std::string_view text = path == nullptr ? "" : path;
  return CopyUpper(dest, text.substr(0, hv::FileNameStart(text)));
}
