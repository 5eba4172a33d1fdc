#include "macros/print_file.h"

#include "api/file_operations.h"
#include "macros/system_extension.h"
#include "support/ascii.h"
#include "support/fixed_text.h"
#include "support/path_text.h"

namespace hv {

uint32_t CheckPrintFile(const char* path) {
  if (!FileExists(path)) return HV_NOT_FOUND;
  return HasSystemExtension(path) ? HV_UNUSABLE_FILE : HV_OK;
}

std::string StoredName(const char (&name)[NameFieldSize], const char* source) {
  constexpr std::size_t MostBytes = NameFieldSize - 1;
  std::string stored(FixedText(name, MostBytes));
  if (!stored.empty()) return stored;
  stored = FileNamePart(source).substr(0, MostBytes);
  for (char& c : stored) c = ToUpper(c);
  return stored;
}

}  // namespace hv
