// Downloads of PostScript Type 1 fonts.

#include <algorithm>
#include <array>
#include <memory>
#include <string_view>

#include "api/file_operations.h"
#include "channel/sending.h"
#include "fonts/font_download.h"
#include "support/byte_order.h"

namespace hv {
namespace {

// Leaves the job's save level, so that the font outlives the job. A NUL ends it.
constexpr char Prologue[] =
    "%% BeginExitServer 0\n"
    "% Adobe Type 1 download\r\n"
    "\r\n"
    " serverdict begin   0   exitserver  \n"
    "%% EndExitServer\n";
static_assert(sizeof Prologue == 103);

constexpr std::string_view Trailer = "%!\x04";

// Segments of a PFB: this byte, a type, a length and the data. The last one is a type, 3, alone.
constexpr uint8_t SegmentMark = 0x80;
constexpr uint8_t TextSegment = 1;
constexpr uint8_t BinarySegment = 2;
constexpr std::size_t SegmentPiece = 1024;

constexpr std::size_t PpdsBlock = 2048;
// Of a block header, what its length counts besides the data.
constexpr uint32_t PpdsLengthBesidesData = 8;

// False when there is no more to send: the last segment, the end of the file, a file that breaks
// off, or a write that failed.
bool SendPfbSegment(platform::Stream* file, PrinterChannel* channel) {
  std::array<uint8_t, 4> length = {};
  const int mark = file->ReadByte();
  const int type = file->ReadByte();
  if (mark != SegmentMark || (type != TextSegment && type != BinarySegment)) return false;
  if (file->Read(length.data(), length.size()) != length.size()) return false;

  const auto piece = std::make_unique<uint8_t[]>(2 * SegmentPiece);
  uint32_t left = LoadLe32(length.data());
  while (left > 0) {
    const std::size_t wanted = std::min<std::size_t>(left, SegmentPiece);
    const std::size_t got = file->Read(piece.get(), wanted);
    std::size_t size = got;
    if (type == BinarySegment) {
      ExpandToHex(piece.get(), got);
      size *= 2;
    }
    if (size > 0) ChannelWrite(piece.get(), static_cast<uint32_t>(size), channel);
    if (got < wanted || channel->status != 0) return false;
    left -= static_cast<uint32_t>(got);
  }
  return true;
}

std::array<uint8_t, 12> PpdsBlockHeader(std::size_t dataSize, const HvJobInfo& job, bool last) {
  const auto length = static_cast<uint16_t>(dataSize + PpdsLengthBesidesData);
  std::array<uint8_t, 12> header = {0x1B, '=', 0, 0, 'A', 1, 1};
  StoreLe16(&header[2], length);
  StoreBe16(&header[7], static_cast<uint16_t>(job.fontValue18 - 256));
  StoreBe16(&header[9], job.fontValue1A);
  header[11] = last ? 1 : 2;
  return header;
}

}  // namespace

uint32_t DownloadType1(const char* fontPath, Type1Form form, PrinterChannel* channel) {
  const std::unique_ptr<platform::Stream> file = platform::OpenStream(fontPath, "rb");
  if (file == nullptr) return HV_CANNOT_OPEN;
  ChannelWrite(Prologue, sizeof Prologue, channel);
  if (channel->status != 0) return channel->status;
  if (form == Type1Form::Pfa) {
    const uint32_t sent = ChannelSendStream(file.get(), channel, SendEncoding::Raw);
    if (sent != HV_OK) return sent;
  } else {
    while (SendPfbSegment(file.get(), channel)) continue;
    if (channel->status != 0) return channel->status;
    if (file->HasError()) return HV_READ_FAILED;
  }
  ChannelWriteText(Trailer, channel);
  return channel->status;
}

uint32_t DownloadType1Ppds(const char* fontPath, PrinterChannel* channel) {
  const auto block = std::make_unique<uint8_t[]>(PpdsBlock);
  const std::unique_ptr<platform::Stream> file = platform::OpenStream(fontPath, "rb");
  if (file == nullptr) return HV_NOT_FOUND;
  uint32_t left = 0;
  if (!SizeOfOpenFile(fontPath, file.get(), &left)) return HV_READ_FAILED;
  if (!SendFontId(FontIdForm::PpdsType1, channel->job->identifier, channel)) return channel->status;
  while (left > 0) {
    const std::size_t got = file->Read(block.get(), std::min<std::size_t>(left, PpdsBlock));
    if (got == 0) return HV_READ_FAILED;
    left -= static_cast<uint32_t>(got);
    const std::array<uint8_t, 12> header = PpdsBlockHeader(got, *channel->job, left == 0);
    ChannelWrite(header.data(), header.size(), channel);
    if (channel->status != 0) return channel->status;
    ChannelWrite(block.get(), static_cast<uint32_t>(got), channel);
    if (channel->status != 0) return channel->status;
  }
  return HV_OK;
}

}  // namespace hv
