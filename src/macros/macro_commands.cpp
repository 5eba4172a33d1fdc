#include "macros/macro_commands.h"

#include "macros/macro_analysis.h"

namespace hv {
namespace {

constexpr const char* PclMacroExtension = ".p5macro";

// ESC & f, the identifier and what is to become of it.
std::string PclMacroControl(uint16_t identifier, const char* operation) {
  return "\x1B&f" + std::to_string(identifier) + "y" + operation;
}

std::string PpdsIdentifier(uint16_t identifier) {
  return {static_cast<char>(identifier >> 8), static_cast<char>(identifier)};
}

}  // namespace

std::string PclBeginMacro(uint16_t identifier, const HvMacroInfo& info) {
  std::string command = PclMacroControl(identifier, "0X");
  if ((info.flags & MACRO_FLAG_CALL_MACRO) != 0) {
    command += PclMacroControl(info.callMacroId, "3x") + std::to_string(identifier) + "Y";
  }
  return command;
}

std::string PclMakeMacroPermanent(uint16_t identifier) {
  return PclMacroControl(identifier, "10X");
}

std::string PpdsBeginMacro(uint16_t identifier, uint32_t size) {
  const uint32_t count = size + 3;
  std::string command = "\x1B[l";
  command += static_cast<char>(count);
  command += static_cast<char>(count >> 8);
  command += '\x01';
  return command += PpdsIdentifier(identifier);
}

std::string PostScriptOverlayComment(const std::string& name) {
  return std::string(OverlayComment) + name + "\n";
}

std::string PostScriptBeginProcedure(const std::string& name) {
  return std::string(StoredProcedureStart) + name + " {\n";
}

std::string PostScriptBeginFile(uint32_t device, const std::string& name) {
  return std::string(StoredFileStart) + TargetDeviceTable[device] + "%" + name +
         ") (w) file def\n"
         "{ currentfile read\n"
         "not { exit } if dup 1 eq { pop exit } if\n"
         "writefile exch write } loop\n";
}

std::string PostScriptBeginDemo() {
  return std::string(DemoPreamble) + "\n";
}

std::string PclXlBeginStore(uint32_t device) {
  return std::string("@PJL SET QDOWNLOADTARGET = ") + TargetDeviceTable[device] + "\n" +
         std::string(PclXlEnterLanguage);
}

std::string PjlResourceDescription(uint32_t device, uint16_t identifier, const std::string& name) {
  return std::string("@PJL DEFAULT QRESOURCE:\"") + TargetDeviceTable[device] + ":" +
         std::to_string(identifier) + PclMacroExtension + "\" QDESCRIPTION = \"" + name + "\"\n";
}

uint32_t SendCommand(std::string_view command, PrinterChannel* channel) {
  ChannelWriteText(command, channel);
  return channel->status;
}

uint32_t SendMacroControl(PrinterChannel* channel, bool enable) {
  constexpr std::string_view PpdsEnable{"\x1B[l\x03\x00\x05", 6};  // then the identifier
  constexpr std::string_view PpdsDisable{"\x1B[l\x01\x00\x06", 6};
  const uint16_t identifier = channel->job->identifier;
  switch (channel->job->emulation) {
    case JOB_EMULATION_PPDS:
      if (enable) {
        ChannelWriteText(std::string(PpdsEnable) + PpdsIdentifier(identifier), channel);
      } else {
        ChannelWriteText(PpdsDisable, channel);
      }
      return HV_OK;
    case JOB_EMULATION_PCL:
      ChannelWriteText(PclMacroControl(identifier, enable ? "4X" : "5X"), channel);
      return HV_OK;
    case JOB_EMULATION_POSTSCRIPT:
    case JOB_EMULATION_PCLXL:
      return HV_OK;
    default:
      return HV_BAD_ARGUMENT;
  }
}

uint32_t SendMacroDelete(PrinterChannel* channel) {
  switch (channel->job->emulation) {
    case JOB_EMULATION_PCL:
      ChannelWriteText(PclMacroControl(channel->job->identifier, "8X"), channel);
      return HV_OK;
    case JOB_EMULATION_PPDS:
    case JOB_EMULATION_POSTSCRIPT:
      return HV_OK;
    default:
      return HV_BAD_ARGUMENT;
  }
}

}  // namespace hv
