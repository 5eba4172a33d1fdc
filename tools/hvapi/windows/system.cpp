#include "system.h"

#include <io.h>
#include <stdio.h>
#include <windows.h>
#include <winspool.h>

namespace hvtool {

const char* const SystemSpoolerName = "Windows";

bool ErrorsGoToTerminal() {
  return _isatty(_fileno(stderr)) != 0;
}

std::filesystem::path SpoolFolder() {
  return {};
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
