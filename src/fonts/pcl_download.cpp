// Downloads of PCL soft fonts and DLF fonts.

#include <algorithm>
#include <memory>
#include <string>

#include "channel/sending.h"
#include "fonts/font_download.h"
#include "fonts/pcl_font_name.h"
#include "fonts/soft_font_descriptor.h"

namespace hv {
namespace {

constexpr uint16_t FirstLongPpdsId = 100;

void SendMakePermanent(PrinterChannel* channel) {
  ChannelWriteText("\x1B*c5F", channel);
}

std::string PpdsFontId(uint16_t fontId) {
  constexpr std::string_view Short{"\x1B=\x03\x00\x31\x08", 6};
  constexpr std::string_view Long{"\x1B=\x04\x00\x31\x0E", 6};
  std::string command(fontId < FirstLongPpdsId ? Short : Long);
  if (fontId >= FirstLongPpdsId) command += static_cast<char>(fontId >> 8);
  return command += static_cast<char>(fontId);
}

std::string PpdsType1FontId(uint16_t fontId) {
  std::string command("\x1B=\x04\x00\x41\x0E", 6);
  command += static_cast<char>(fontId >> 8);
  return command += static_cast<char>(fontId);
}

bool NeedsMadeUpName(const PrinterChannel* channel) {
  return channel->job->emulation == JOB_EMULATION_PCLXL;
}

// The font under a name made up from its descriptor. `notOpened` is the result for a file that
// cannot be opened.
uint32_t DownloadWithName(const char* fontPath, FontIdForm form, uint32_t notOpened,
                          PrinterChannel* channel) {
  const std::unique_ptr<platform::Stream> file = platform::OpenStream(fontPath, "rb");
  if (file == nullptr) return notOpened;
  const std::string command = PclReadFontCommand(file.get());
  SoftFontDescriptor descriptor = {};
  if (command.empty() || file->Read(descriptor.data(), descriptor.size()) != descriptor.size()) {
    return HV_CANNOT_OPEN;
  }
  const std::string name = PclMakeFontName(descriptor);
  std::copy(name.begin(), name.end(), descriptor.begin() + DescriptorNameOffset);

  if (!SendFontId(form, channel->job->identifier, channel)) return channel->status;
  ChannelWriteText(command, channel);
  if (channel->status != 0) return channel->status;
  ChannelWrite(descriptor.data(), SoftFontDescriptorSize, channel);
  if (channel->status != 0) return channel->status;
  return ChannelSendStream(file.get(), channel, SendEncoding::Raw);
}

// The font as the file is.
uint32_t DownloadAsIs(const char* fontPath, FontIdForm form, uint32_t notOpened,
                      PrinterChannel* channel) {
  const std::unique_ptr<platform::Stream> file = platform::OpenStream(fontPath, "rb");
  if (file == nullptr) return notOpened;
  if (!SendFontId(form, channel->job->identifier, channel)) return channel->status;
  return ChannelSendStream(file.get(), channel, SendEncoding::Raw);
}

uint32_t Download(const char* fontPath, FontIdForm form, uint32_t notOpened,
                  PrinterChannel* channel) {
  const uint32_t sent = NeedsMadeUpName(channel)
                            ? DownloadWithName(fontPath, form, notOpened, channel)
                            : DownloadAsIs(fontPath, form, notOpened, channel);
  // A font of which a part is missing is not to stay.
  if (sent != HV_OK) return sent;
  if (form != FontIdForm::Ppds) SendMakePermanent(channel);
  return channel->status;
}

}  // namespace

bool SendFontId(FontIdForm form, uint16_t fontId, PrinterChannel* channel) {
  switch (form) {
    case FontIdForm::Ppds:
      ChannelWriteText(PpdsFontId(fontId), channel);
      break;
    case FontIdForm::PpdsType1:
      ChannelWriteText(PpdsType1FontId(fontId), channel);
      break;
    case FontIdForm::Pcl:
      ChannelWriteText("\x1B*c" + std::to_string(fontId) + "D", channel);
      break;
    case FontIdForm::PclInPieces:
      for (const std::string& piece :
           {std::string("\x1B*c"), std::to_string(fontId), std::string("D")}) {
        if (channel->status == 0) ChannelWriteText(piece, channel);
      }
      break;
  }
  return channel->status == 0;
}

uint32_t DownloadPclFont(const char* fontPath, FontIdForm form, PrinterChannel* channel) {
  return Download(fontPath, form, HV_NOT_FOUND, channel);
}

uint32_t DownloadPclScalable(const char* fontPath, PrinterChannel* channel) {
  return Download(fontPath, FontIdForm::PclInPieces, HV_CANNOT_OPEN, channel);
}

}  // namespace hv
