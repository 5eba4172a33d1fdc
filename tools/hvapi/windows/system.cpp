#include "system.h"

#include <fcntl.h>
#include <io.h>
#include <stdio.h>
#include <windows.h>
#include <winspool.h>

#include <memory>
#include <type_traits>

namespace hvtool {
namespace {

std::string PathOf(HMODULE module) {
  char path[MAX_PATH];
  const DWORD length = GetModuleFileNameA(module, path, sizeof path);
  return {path, length};
}

}  // namespace

const char* const SystemSpoolerName = "Windows";

bool ErrorsGoToTerminal() {
  return _isatty(_fileno(stderr)) != 0;
}

std::filesystem::path SpoolFolder() {
  return {};
}

void ReadInputAsBytes() {
  _setmode(_fileno(stdin), _O_BINARY);
}

TemporaryFile::TemporaryFile() {
  char folder[MAX_PATH + 1];
  char name[MAX_PATH];
  const DWORD length = GetTempPathA(sizeof folder, folder);
  if (length == 0 || length >= sizeof folder) return;
  if (GetTempFileNameA(folder, "hva", 0, name) != 0) path_ = name;
}

TemporaryFile::~TemporaryFile() {
  if (!path_.empty()) DeleteFileA(path_.c_str());
}

std::string LibraryPath() {
  return PathOf(GetModuleHandleA("HvApiW32.dll"));
}

// The spooler is a part of Windows.
Service FindSpooler() {
  return {"the spooler of Windows", "", true};
}

Service FindCommunicationLibrary() {
  constexpr const char* Name = "NBXCHAN.DLL";
  const std::unique_ptr<std::remove_pointer_t<HMODULE>, decltype(&FreeLibrary)> library(
      LoadLibraryA(Name), FreeLibrary);
  if (library == nullptr) return {Name, "not installed", false};
  for (const char* function : CommunicationFunctions) {
    if (GetProcAddress(library.get(), function) == nullptr) {
      return {Name, std::string("has no function ") + function, true};
    }
  }
  return {PathOf(library.get()), "", true};
}

std::vector<std::string> SystemQueues() {
  constexpr DWORD Flags = PRINTER_ENUM_LOCAL | PRINTER_ENUM_CONNECTIONS;
  std::vector<std::string> names;
  DWORD size = 0;
  DWORD count = 0;
  EnumPrintersA(Flags, nullptr, 4, nullptr, 0, &size, &count);
  std::vector<BYTE> block(size);
  if (size == 0 || !EnumPrintersA(Flags, nullptr, 4, block.data(), size, &size, &count)) {
    return names;
  }
  const auto* printers = reinterpret_cast<const PRINTER_INFO_4A*>(block.data());
  for (DWORD i = 0; i < count; ++i) names.emplace_back(printers[i].pPrinterName);
  return names;
}

}  // namespace hvtool
