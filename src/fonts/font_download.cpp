#include "fonts/font_download.h"

#include "channel/job_framing.h"
#include "fonts/font_information.h"

namespace hv {
namespace {

uint32_t SendPayload(const char* fontPath, const HvFontInfo& info, PrinterChannel* channel) {
  switch (info.fontType) {
    case FONT_TYPE_TYPE1:
      if (channel->job->emulation == JOB_EMULATION_PPDS) {
        return DownloadType1Ppds(fontPath, channel);
      }
      return DownloadType1(fontPath,
                           (info.flags & FONT_FLAG_BINARY) != 0 ? Type1Form::Pfb : Type1Form::Pfa,
                           channel);
    case FONT_TYPE_DLF:
      return DownloadPclFont(fontPath, FontIdForm::Ppds, channel);
    case FONT_TYPE_PCL_RESOLUTION:
    case FONT_TYPE_PCL_BITMAP:
    case FONT_TYPE_PCL_EXTENDED:
      return DownloadPclFont(fontPath, FontIdForm::Pcl, channel);
    case FONT_TYPE_PCL_BOUND:
    case FONT_TYPE_PCL_UNBOUND:
    case FONT_TYPE_PCL_TRUETYPE:
      return DownloadPclScalable(fontPath, channel);
    default:
      return HV_UNUSABLE_FILE;
  }
}

}  // namespace

uint32_t DownloadFont(const char* fontPath, const char* destination, const HvJobInfo& job,
                      uint32_t targetDevice) {
  HvFontInfo info = {};
  const uint32_t described = QueryFontInformation(fontPath, &info, job.fontQueryArg, false);
  // A font prints without its companions.
  if (described != HV_OK && described != HV_NOT_SUPPORTED) return described;
  if (info.fontClass != FONT_CLASS_DOWNLOADABLE && info.fontClass != FONT_CLASS_TRUETYPE) {
    return HV_BAD_ARGUMENT;
  }

  PrinterChannel channel;
  channel.job = &job;
  channel.source = fontPath;
  channel.fileMode = FileModeAppend;
  channel.targetDevice = targetDevice;
  const uint32_t begun = BeginDownload(destination, &channel);
  if (begun != HV_OK) return begun;
  const uint32_t sent = SendPayload(fontPath, info, &channel);
  if (ChannelCloseIfFailed(&channel)) return channel.status;
  const uint32_t ended = EndDownload(&channel);
  return ended == HV_OK ? sent : ended;
}

}  // namespace hv
