#include "channel/job_framing.h"

#include <string>

namespace hv {
namespace {

// ESC [ K, the count of the bytes that follow as 16 bits, low byte first, and these bytes.
constexpr std::string_view ClassTwoLeadIn{"\x1B[K\x01\x00\x01", 6};
constexpr std::string_view EscKTargetDevice{"\x1B[K\x03\x00\x06\xC0\x31", 8};
constexpr std::string_view EscKTargetRam{"\x1B[K\x03\x00\x06\xC0\x32", 8};
constexpr std::string_view EscKFormat{"\x1B[K\x03\x00\x06\xC0\x50", 8};
constexpr std::string_view EscKPrintDirectory{"\x1B[K\x03\x00\x06\xC0\x46", 8};
constexpr std::string_view EscKPersonality{"\x1B[K\x03\x00\x06", 6};  // then personality, language

constexpr uint8_t DefaultPersonality = 0x31;
constexpr std::size_t PanelTextLength = 20;

struct EmulationCommands {
  const char* pjlLanguage;  // NULL: no language switch
  bool selectsPersonality;
  uint8_t escKLanguage;
  bool sendsPclCopies;  // with the personality select
};

// By JOB_EMULATION_... number. PCL XL is announced as PCL.
constexpr EmulationCommands EmulationTable[] = {
    {nullptr, false, 0x00, true},       // 0
    {nullptr, true, 0x00, false},       // 1
    {"PPDS", true, 0x01, false},        // 2
    {"POSTSCRIPT", true, 0x08, false},  // 3
    {"GL", true, 0x03, false},          // 4
    {"PCL", true, 0x02, true},          // 5
    {"PCL", true, 0x02, true},          // 6
};

const EmulationCommands* FindEmulation(const HvJobInfo& job) {
  const auto index = static_cast<uint32_t>(job.emulation);
  return index < std::size(EmulationTable) ? &EmulationTable[index] : nullptr;
}

bool HasFlag(const PrinterChannel* channel, uint32_t flag) {
  return (channel->job->flags & flag) != 0;
}

void SendPanelMessage(std::string_view text, PrinterChannel* channel) {
  std::string line = "@PJL RDYMSG DISPLAY = \"";
  line.append(text.substr(0, PanelTextLength)).append("\"\n");
  ChannelWriteText(line, channel);
}

void SendDownloadTarget(const char* device, PrinterChannel* channel) {
  ChannelWriteText(std::string("@PJL SET QDOWNLOADTARGET = ") + device + "\n", channel);
}

void SendPclCopies(PrinterChannel* channel) {
  const uint16_t copies = channel->job->copies;
  if (copies != 0) ChannelWriteText("\x1B&l" + std::to_string(copies) + "X", channel);
}

const char* TargetDeviceName(const PrinterChannel* channel) {
  const uint32_t device = channel->targetDevice;
  return device < std::size(TargetDeviceTable) ? TargetDeviceTable[device] : "";
}

}  // namespace

void PjlBeginJob(PrinterChannel* channel, bool withCopies) {
  const HvJobInfo& job = *channel->job;
  ChannelWriteText(Uel, channel);
  if (ChannelCloseIfFailed(channel)) return;
  if (job.jobName != nullptr) SendPanelMessage(job.jobName, channel);
  const EmulationCommands* emulation = FindEmulation(job);
  if (channel->status == 0 && emulation != nullptr && emulation->pjlLanguage != nullptr) {
    ChannelWriteText(std::string("@PJL ENTER LANGUAGE = ") + emulation->pjlLanguage + "\n",
                     channel);
  }
  if (ChannelCloseIfFailed(channel)) return;
  if (withCopies && job.copies != 0) {
    ChannelWriteText("@PJL SET COPIES = " + std::to_string(job.copies) + "\n", channel);
  }
}

void PjlEndJob(PrinterChannel* channel, bool withReset) {
  ChannelWriteText(Uel, channel);
  if (ChannelCloseIfFailed(channel)) return;
  SendPanelMessage("", channel);
  if (ChannelCloseIfFailed(channel)) return;
  if (withReset) ChannelWriteText("@PJL RESET\n", channel);
  if (ChannelCloseIfFailed(channel)) return;
  ChannelWriteText(Uel, channel);
}

void PjlStorageCommand(uint32_t operation, PrinterChannel* channel) {
  const bool pjl = HasFlag(channel, JOB_FLAG_PJL);
  const bool escK = HasFlag(channel, JOB_FLAG_ESC_K);
  if (operation == STORAGE_TARGET_DEVICE &&
      channel->job->printerClass == JOB_CLASS_DOWNLOAD_LEAD_IN) {
    ChannelWriteText(ClassTwoLeadIn, channel);
  }
  if (pjl) {
    ChannelWriteText(Uel, channel);
    if (ChannelCloseIfFailed(channel)) return;
  }
  if (channel->status != 0) return;
  switch (operation) {
    case STORAGE_TARGET_RAM:
      if (pjl) SendDownloadTarget(TargetDeviceTable[STORAGE_DEVICE_RAM], channel);
      if (escK) ChannelWriteText(EscKTargetRam, channel);
      break;
    case STORAGE_TARGET_DEVICE:
      if (pjl) SendDownloadTarget(TargetDeviceName(channel), channel);
      if (escK) ChannelWriteText(EscKTargetDevice, channel);
      break;
    case STORAGE_FORMAT:
      if (pjl) {
        ChannelWriteText(std::string("@PJL QFORMAT DEVICE = ") + TargetDeviceName(channel) + "\n",
                         channel);
      } else {
        ChannelWriteText(EscKFormat, channel);
      }
      break;
    case STORAGE_PRINT_DIRECTORY:
      ChannelWriteText(pjl ? "@PJL QPRINTDIRECTORY\n" : EscKPrintDirectory, channel);
      break;
    default:
      break;
  }
}

void SendPersonalitySelect(PrinterChannel* channel) {
  const HvJobInfo& job = *channel->job;
  const EmulationCommands* emulation = FindEmulation(job);
  if (channel->status != 0 || emulation == nullptr) return;
  if (emulation->selectsPersonality) {
    std::string sequence(EscKPersonality);
    sequence += static_cast<char>(job.personality == 0 ? DefaultPersonality : job.personality);
    sequence += static_cast<char>(emulation->escKLanguage);
    ChannelWriteText(sequence, channel);
  }
  if (emulation->sendsPclCopies) SendPclCopies(channel);
}

uint32_t BeginFramedJob(const char* destination, PrinterChannel* channel) {
  const uint32_t opened = ChannelOpen(destination, channel);
  if (opened != HV_OK) return opened;
  if (HasFlag(channel, JOB_FLAG_ESC_K)) SendPersonalitySelect(channel);
  if (ChannelCloseIfFailed(channel)) return channel->status;
  if (HasFlag(channel, JOB_FLAG_PJL)) PjlBeginJob(channel, false);
  return ChannelCloseIfFailed(channel) ? channel->status : uint32_t{HV_OK};
}

uint32_t EndFramedJob(PrinterChannel* channel) {
  if (ChannelCloseIfFailed(channel)) return channel->status;
  if (HasFlag(channel, JOB_FLAG_PJL)) PjlEndJob(channel, false);
  ChannelClose(channel);
  return channel->status;
}

uint32_t BeginDownload(const char* destination, PrinterChannel* channel) {
  const uint32_t begun = BeginFramedJob(destination, channel);
  if (begun != HV_OK) return begun;
  if (channel->targetDevice != STORAGE_DEVICE_RAM)
    PjlStorageCommand(STORAGE_TARGET_DEVICE, channel);
  return ChannelCloseIfFailed(channel) ? channel->status : uint32_t{HV_OK};
}

uint32_t EndDownload(PrinterChannel* channel) {
  if (channel->targetDevice != STORAGE_DEVICE_RAM) PjlStorageCommand(STORAGE_TARGET_RAM, channel);
  return EndFramedJob(channel);
}

uint32_t SendStorageJob(uint32_t operation, const char* destination, const HvJobInfo& job,
                        uint32_t device) {
  PrinterChannel channel;
  channel.job = &job;
  channel.fileMode = FileModeReplace;
  channel.targetDevice = device;
  const uint32_t opened = ChannelOpen(destination, &channel);
  if (opened != HV_OK) return opened;

  const bool pjl = HasFlag(&channel, JOB_FLAG_PJL);
  if (pjl) PjlBeginJob(&channel, false);
  if (ChannelCloseIfFailed(&channel)) return channel.status;
  PjlStorageCommand(operation, &channel);
  if (ChannelCloseIfFailed(&channel)) return channel.status;
  if (pjl) PjlEndJob(&channel, false);
  if (ChannelCloseIfFailed(&channel)) return channel.status;
  ChannelClose(&channel);
  return HV_OK;
}

}  // namespace hv
