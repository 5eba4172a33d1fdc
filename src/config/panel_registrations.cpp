#include "config/panel_registrations.h"

#include <array>
#include <cstdio>
#include <mutex>

#include "api/arguments.h"
#include "config/ini_entries.h"
#include "config/ini_file.h"

namespace hv {
namespace {

// A number whose file could not be opened has no handle; the next registration tries again.
struct Registration {
  uint32_t configNumber;  // 0 for a free entry
  uint32_t references;
  HvIniHandle* handle;
};

std::mutex registrationMutex;
std::array<Registration, 5> registrations;

Registration* FindNumber(uint32_t configNumber) {
  for (Registration& entry : registrations) {
    if (entry.configNumber == configNumber) return &entry;
  }
  return nullptr;
}

HvIniHandle* OpenPanelFile(uint16_t configNumber, const char* directory) {
  std::string path = directory == nullptr ? "" : directory;
  if (!path.empty() && path.back() != '\\') path += '\\';
  std::array<char, PanelFileNameSize> name;
  FormatPanelFileName(configNumber, name.data());
  path += name.data();
  return IsPathArgument(path.c_str()) ? IniOpen(path.c_str(), INI_OPEN_READ) : nullptr;
}

}  // namespace

void FormatPanelFileName(uint16_t configNumber, char* buffer) {
  const uint32_t number = static_cast<uint32_t>(int32_t{static_cast<int16_t>(configNumber)});
  std::snprintf(buffer, PanelFileNameSize, "opc%03u.cfg", number);
}

HvIniHandle* RegisterPanelFile(uint16_t configNumber, const char* directory) {
  const std::lock_guard lock(registrationMutex);
  Registration* entry = FindNumber(configNumber);
  if (entry == nullptr) entry = FindNumber(0);
  if (entry == nullptr) return nullptr;
  if (entry->handle == nullptr) {
    *entry = {configNumber, 0, nullptr};
    entry->handle = OpenPanelFile(configNumber, directory);
    if (entry->handle == nullptr) return nullptr;
  }
  ++entry->references;
  return entry->handle;
}

bool UnregisterPanelFile(HvIniHandle* handle) {
  const std::lock_guard lock(registrationMutex);
  for (Registration& entry : registrations) {
    if (handle == nullptr || entry.handle != handle) continue;
    if (--entry.references > 0) return true;
    entry = {};
    return IniClose(handle);
  }
  return false;
}

std::string_view ReadPanelEntry(HvIniHandle* file, const std::string& section,
                                const std::string& key, std::span<char> buffer) {
  if (file == nullptr) return {};
  // Who registered the same number has the same handle, and reading fills its indexes.
  const std::lock_guard lock(registrationMutex);
  uint32_t count = 0;
  IniRead2(file, section.c_str(), key.c_str(), "", buffer.data(),
           static_cast<uint32_t>(buffer.size()), &count);
  return {buffer.data(), count};
}

}  // namespace hv
