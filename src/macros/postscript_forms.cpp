// The forms of PostScript macros.

#include <algorithm>
#include <array>
#include <optional>

#include "channel/printer_channel.h"
#include "macros/macro_analysis.h"
#include "support/ascii.h"

namespace hv {
namespace {

constexpr std::string_view NameEnds{" \0\t\n\r\f", 6};

// The text up to one of the bytes `ends`, of which only so much is kept as a name holds. Nothing
// when the source ends first, unless the end of the source ends a name, too.
std::optional<std::string> ReadName(MacroStream* stream, std::string_view ends,
                                    bool orEndOfSource) {
  std::string name;
  for (;;) {
    const int byte = StreamGetByte(stream);
    if (byte < 0 && !orEndOfSource) return std::nullopt;
    const char c = static_cast<char>(byte);
    if (byte < 0 || ends.find(c) != std::string_view::npos) return name;
    if (name.size() < MostMacroNameBytes) name += c;
  }
}

// The STORAGE_DEVICE_... of that name, 0 for an unknown one.
uint32_t DeviceNamed(std::string_view name) {
  for (uint32_t device = STORAGE_DEVICE_RAM; device <= STORAGE_DEVICE_DISK2; ++device) {
    if (name == TargetDeviceTable[device]) return device;
  }
  return 0;
}

}  // namespace

uint32_t AnalyzePostScriptMacro(MacroStream* stream, MacroFindings* findings) {
  if (StreamTake(stream, StoredProcedureStart)) {
    findings->name = *ReadName(stream, NameEnds, true);
    findings->target = STORAGE_DEVICE_RAM;
    return HV_OK;
  }
  if (StreamTake(stream, DemoPreamble)) {
    findings->isDemo = true;
    StreamSkipLine(stream);
  }
  if (!StreamTake(stream, StoredFileStart)) return HV_WRONG_LANGUAGE;
  const std::optional<std::string> device = ReadName(stream, "%", false);
  if (!device) return HV_WRONG_LANGUAGE;
  const uint32_t target = DeviceNamed(*device);
  const std::optional<std::string> name = ReadName(stream, ")", false);
  if (target == 0 || !name) return HV_WRONG_LANGUAGE;
  findings->target = target;
  findings->name = *name;
  return HV_OK;
}

uint32_t AnalyzePostScriptOverlay(MacroStream* stream, MacroFindings* findings) {
  constexpr std::string_view Header = "%!PS";
  std::array<char, 80> line;
  const auto readLine = [&] {
    return std::string_view(line.data(), StreamReadLine(stream, line.data(), line.size()));
  };
  std::string_view text = readLine();
  if (text.size() <= Header.size() || !StartsWith(text, Header)) return HV_WRONG_LANGUAGE;
  while (!text.empty()) {
    text = readLine();
    if (text.size() > OverlayComment.size() && StartsWith(text, OverlayComment)) {
      const std::string_view rest = text.substr(OverlayComment.size());
      findings->name = rest.substr(0, std::min(rest.find('\n'), MostMacroNameBytes));
      break;
    }
  }
  // An overlay without a name is one.
  return HV_OK;
}

}  // namespace hv
