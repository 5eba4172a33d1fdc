#include "macros/demo_download.h"

#include <memory>
#include <string>
#include <string_view>

#include "api/file_operations.h"
#include "channel/job_framing.h"
#include "channel/sending.h"
#include "macros/macro_commands.h"
#include "macros/print_file.h"
#include "support/byte_order.h"

namespace hv {
namespace {

// The file is read in hexadecimal from the job itself, which ">" ends.
constexpr std::string_view PostScriptEnd = ">\nstatusdict begin setfilenameextend end\n";
constexpr std::string_view PjlEndData = "@PJL END DATA\n";
constexpr std::string_view PjlCloseDemoFile = "\x1BM@PJL QCLOSEDEMOFILE\n";

constexpr std::size_t EscDNameSize = 12;

struct Demo {
  platform::Stream* file;
  uint32_t size;  // in bytes
  const HvDemoInfo& info;
  std::string name;
  std::string_view device;
  PrinterChannel* channel;

  std::string FileName() const { return std::string(name).append(DemoExtension); }
  // DEVICE and FILENAME of a command on the stored file.
  std::string PjlFile() const {
    return std::string("DEVICE=").append(device) + " FILENAME=\"" + FileName() + "\"";
  }
};

// After a failed write nothing more is sent: what follows it would make a broken file a whole one.
void SendUnlessFailed(std::string_view text, PrinterChannel* channel) {
  if (channel->status == 0) ChannelWriteText(text, channel);
}

uint32_t SendFileUnlessFailed(const Demo& demo, SendEncoding encoding) {
  if (demo.channel->status != 0) return demo.channel->status;
  return ChannelSendStream(demo.file, demo.channel, encoding);
}

void EndStoring(PrinterChannel* channel) {
  if (channel->status == 0) PjlStorageCommand(STORAGE_TARGET_RAM, channel);
}

// A program that copies the job's data to a file of the device.
uint32_t SendAsPostScript(const Demo& demo) {
  std::string program = PostScriptBeginDemo();
  program.append("/wf (%").append(demo.device).append("%").append(demo.FileName());
  program.append(
      ") (w) file def\n"
      "/rf currentfile (ASCIIHexDecode) filter def\n"
      "{ rf read\n"
      "not { exit } if\n"
      "wf exch write } loop\n");
  SendUnlessFailed(program, demo.channel);
  const uint32_t sent = SendFileUnlessFailed(demo, SendEncoding::Hex);
  SendUnlessFailed(PostScriptEnd, demo.channel);
  return sent;
}

uint32_t SendAsPjlFile(const Demo& demo) {
  PrinterChannel* const channel = demo.channel;
  const std::string file = demo.PjlFile();
  PjlStorageCommand(STORAGE_TARGET_DEVICE, channel);
  SendUnlessFailed(Uel, channel);
  SendUnlessFailed("@PJL QOPENFILE " + file + " ACCESS=WO\n", channel);
  SendUnlessFailed("@PJL QWRITEFILE " + file + " START=0 \n", channel);
  const uint32_t sent = SendFileUnlessFailed(demo, SendEncoding::Raw);
  SendUnlessFailed(PjlEndData, channel);
  SendUnlessFailed("@PJL QCLOSEFILE " + file + "\n", channel);
  EndStoring(channel);
  return sent;
}

// ESC [ D, a zero byte, identifier, flag, header byte, the name in 12 bytes and the size.
uint32_t SendBehindEscD(const Demo& demo) {
  std::string header("\x1B[D\0", 4);
  header += static_cast<char>(demo.channel->job->identifier);
  header += static_cast<char>(demo.info.flags & DEMO_FLAG_ESC_D);
  header += static_cast<char>(demo.info.headerByte);
  std::string name = demo.name;
  name.resize(EscDNameSize, '\0');
  uint8_t size[4];
  StoreBe32(size, demo.size);
  header.append(name).append(reinterpret_cast<const char*>(size), sizeof size);
  SendUnlessFailed(header, demo.channel);
  return SendFileUnlessFailed(demo, SendEncoding::Raw);
}

uint32_t SendAsDemoFile(const Demo& demo) {
  PrinterChannel* const channel = demo.channel;
  PjlStorageCommand(STORAGE_TARGET_DEVICE, channel);
  SendUnlessFailed(Uel, channel);
  SendUnlessFailed("@PJL QOPENDEMOFILE NAME=\"" + demo.name + "\"\n", channel);
  const uint32_t sent = SendFileUnlessFailed(demo, SendEncoding::Raw);
  SendUnlessFailed(PjlCloseDemoFile, channel);
  EndStoring(channel);
  return sent;
}

uint32_t SendByMethod(const Demo& demo) {
  switch (demo.info.method) {
    case DEMO_METHOD_POSTSCRIPT:
      return SendAsPostScript(demo);
    case DEMO_METHOD_PJL_FILE:
      return SendAsPjlFile(demo);
    case DEMO_METHOD_ESC_D:
      return SendBehindEscD(demo);
    case DEMO_METHOD_PJL_DEMO_FILE:
      return SendAsDemoFile(demo);
    default:
      return HV_OK;
  }
}

}  // namespace

uint32_t DownloadDemo(const char* source, const char* destination, HvJobInfo* job,
                      const HvDemoInfo& info) {
  const uint32_t checked = CheckPrintFile(source);
  if (checked != HV_OK) return checked;
  const std::unique_ptr<platform::Stream> file = platform::OpenStream(source, "rb");
  if (file == nullptr) return HV_CANNOT_OPEN;
  uint32_t size = 0;
  if (!SizeOfOpenFile(source, file.get(), &size)) return HV_READ_FAILED;

  HvJobInfo framed = *job;
  if (info.method == DEMO_METHOD_POSTSCRIPT) {
    framed.emulation = JOB_EMULATION_POSTSCRIPT;
  } else if (info.method != DEMO_METHOD_NOTHING) {
    framed.emulation = JOB_EMULATION_PCL;
  }
  PrinterChannel channel;
  channel.job = &framed;
  channel.source = source;
  channel.fileMode = FileModeReplace;
  channel.targetDevice = info.target;
  const uint32_t begun = BeginFramedJob(destination, &channel);
  // A job that did not begin keeps its language.
  if (begun == HV_OK || channel.status != 0) job->emulation = framed.emulation;
  if (begun != HV_OK) return begun;

  const Demo demo = {
      file.get(), size, info, StoredName(info.name, source), TargetDeviceTable[info.target],
      &channel};
  const uint32_t sent = SendByMethod(demo);
  if (ChannelCloseIfFailed(&channel)) return channel.status;
  const uint32_t ended = EndFramedJob(&channel);
  return sent == HV_OK ? ended : sent;
}

}  // namespace hv
