#include "fonts/resource_search.h"

#include <limits>
#include <utility>

#include "fonts/directory_walk.h"
#include "macros/macro_validation.h"
#include "macros/system_extension.h"

namespace hv {
namespace {

// False when there is no memory.
bool AddFile(uint32_t kind, const FoundFile& file, CallerMemory<void> details, ResourceList* list) {
  HvFoundResource* const added = list->Add(kind, file.path, std::move(details));
  if (added == nullptr) return false;
  // The field holds no more than a byte; an offset cut to it would name another place.
  if (file.nameOffset <= std::numeric_limits<uint8_t>::max()) {
    added->nameOffset = static_cast<uint8_t>(file.nameOffset);
  }
  added->size = file.size;
  return true;
}

}  // namespace

bool FindMacros(const std::string& directory, uint32_t language, uint32_t jobParameter,
                bool recurse, ResourceList* list) {
  bool memory = true;
  WalkFiles(directory, recurse, [&](const FoundFile& file) {
    HvMacroInfo info = {};
    if (language != JOB_EMULATION_PCLXL)
      info.flags = MACRO_FLAG_FILTER_MASK | MACRO_FLAG_PS_OVERLAY;
    HvJobInfo job = {};
    job.emulation = language;
    job.fontQueryArg = jobParameter;
    const uint32_t validated = ValidateMacro(file.path.c_str(), &job, &info);
    memory = validated != HV_NO_MEMORY;
    if (validated != HV_OK) return memory;
    CallerMemory<void> details(AllocateForCaller(sizeof(HvMacroInfo)));
    memory = details != nullptr;
    if (!memory) return false;
    *static_cast<HvMacroInfo*>(details.get()) = info;
    memory = AddFile(RESOURCE_MACRO, file, std::move(details), list);
    return memory && !list->IsFull();
  });
  return memory;
}

bool FindDemos(const std::string& directory, bool recurse, ResourceList* list) {
  bool memory = true;
  WalkFiles(directory, recurse, [&](const FoundFile& file) {
    if (HasSystemExtension(file.path)) return true;
    memory = AddFile(RESOURCE_DEMO, file, nullptr, list);
    return memory && !list->IsFull();
  });
  return memory;
}

}  // namespace hv
