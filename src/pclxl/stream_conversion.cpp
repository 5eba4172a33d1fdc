#include "pclxl/stream_conversion.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>
#include <string>
#include <string_view>

#include "pclxl/job_reader.h"
#include "platform/stream.h"
#include "support/byte_order.h"

namespace hv {
namespace {

using platform::Stream;

// Both the job's and the stream's own.
constexpr std::string_view Header = ") HP-PCL XL;1;1;\n";

// UnitsPerMeasure 600 x 600, Measure eInch, ErrorReport eBackChAndErrPage, BeginSession;
// SourceType eDefaultDataSource, DataOrg eBinaryLowByteFirst, OpenDataSource.
constexpr std::string_view SessionBegin{
    "\xD1\x58\x02\x58\x02\xF8\x89\xC0\x00\xF8\x86\xC0\x03\xF8\x8F\x41"
    "\xC0\x00\xF8\x88\xC0\x01\xF8\x82\x48",
    25};
// CommentData, Comment; StreamName, BeginStream; StreamDataLength, ReadStream.
constexpr std::string_view CommentEnd{"\xF8\x81\x47"};
constexpr std::string_view BeginStream{"\xF8\x8B\x5B"};
constexpr std::string_view ReadStream{"\xF8\x8C\x5C"};
constexpr std::string_view EndStream{"\x5D"};
// Orientation ePortraitOrientation, MediaSize eLetterPaper, MediaSource eAutoSelect, BeginPage.
constexpr std::string_view BeginPage{"\xC0\x00\xF8\x28\xC0\x00\xF8\x25\xC0\x01\xF8\x26\x43", 13};
// StreamName, ExecStream; PageCopies 1, EndPage.
constexpr std::string_view ExecStreamOnPage{"\xF8\x8B\x5E\xC1\x01\x00\xF8\x31\x44", 9};
// CloseDataSource, EndSession.
constexpr std::string_view SessionEnd{"\x49\x42"};

constexpr uint8_t Uint32Tag = 0xC2;
constexpr std::size_t CopySize = 16384;

// The page in its work file.
class PageFile final : public PclXlPage {
 public:
  bool Begin() override {
    file_ = platform::OpenStream(PclXlWorkFiles::Page, "wb");
    return file_ != nullptr;
  }
  bool Take(std::span<const uint8_t> bytes) override {
    return file_->Write(bytes.data(), bytes.size()) == bytes.size();
  }
  bool End(uint64_t length) override {
    length_ = length;
    return file_->Close();
  }

  // Of the operators, in bytes from the begin of the file.
  uint64_t Length() const { return length_; }

 private:
  std::unique_ptr<Stream> file_;
  uint64_t length_ = 0;
};

// A ubyte array of up to 255 bytes.
std::string ByteArray(std::string_view bytes) {
  std::string value("\xC8\xC0");
  value += static_cast<char>(bytes.size());
  return value += bytes;
}

std::string WithLength(uint8_t tag, uint32_t length) {
  std::string value(5, static_cast<char>(tag));
  uint8_t number[4];
  StoreLe32(number, length);
  std::memcpy(&value[1], number, sizeof number);
  return value;
}

// All of the converted job before the operators of the page.
std::string JobBegin(std::string_view settings, std::string_view streamName, uint32_t bodyLength) {
  std::string job(Header);
  job.append(SessionBegin);
  job.append(ByteArray(settings)).append(CommentEnd);
  job.append(ByteArray(streamName)).append(BeginStream);
  job.append(WithLength(Uint32Tag, bodyLength)).append(ReadStream);
  job.append(WithLength(PclXlData, bodyLength)).append(Header);
  return job;
}

std::string JobEnd(std::string_view streamName, bool execute) {
  std::string job(EndStream);
  if (execute) job.append(BeginPage).append(ByteArray(streamName)).append(ExecStreamOnPage);
  return job.append(SessionEnd);
}

bool WriteText(std::string_view text, Stream* file) {
  return file->Write(text.data(), text.size()) == text.size();
}

bool CopyPage(uint64_t length, Stream* to) {
  const std::unique_ptr<Stream> page = platform::OpenStream(PclXlWorkFiles::Page, "rb");
  if (page == nullptr) return false;
  const auto buffer = std::make_unique<uint8_t[]>(CopySize);
  while (length > 0) {
    const auto part = static_cast<std::size_t>(std::min<uint64_t>(length, CopySize));
    if (page->Read(buffer.get(), part) != part || to->Write(buffer.get(), part) != part) {
      return false;
    }
    length -= part;
  }
  return true;
}

PclXlResult Convert(std::string_view streamName, bool execute) {
  const std::unique_ptr<Stream> input = platform::OpenStream(PclXlWorkFiles::Input, "rb");
  const std::unique_ptr<Stream> output = platform::OpenStream(PclXlWorkFiles::Output, "wb");
  if (input == nullptr || output == nullptr) return PclXlWorkFile;

  PageFile page;
  PclXlJobReader reader(
      [&](uint8_t* buffer, std::size_t size) { return input->Read(buffer, size); }, &page);
  const PclXlResult read = reader.Read();
  if (read != PclXlOk) return read;
  if (!input->Close()) return PclXlWorkFile;

  // A page too long for the length of a stream cannot be one.
  constexpr uint64_t MaxPage = std::numeric_limits<uint32_t>::max() - Header.size();
  if (page.Length() > MaxPage) return PclXlTooLong;
  const auto bodyLength = static_cast<uint32_t>(page.Length() + Header.size());
  const std::span<const uint8_t> settings = reader.Settings();
  const std::string_view settingsText{reinterpret_cast<const char*>(settings.data()),
                                      settings.size()};
  const bool written = WriteText(JobBegin(settingsText, streamName, bodyLength), output.get()) &&
                       CopyPage(page.Length(), output.get()) &&
                       WriteText(JobEnd(streamName, execute), output.get());
  return output->Close() && written ? PclXlOk : PclXlWorkFile;
}

}  // namespace

uint32_t PclXlConvertStream(const PclXlWorkFiles& /*held*/, const char* streamName,
                            uint32_t executeFlag) {
  try {
    return Convert(streamName, executeFlag != 0);
  } catch (const std::bad_alloc&) {
    // The caller has work files to remove.
    return PclXlNoMemory;
  }
}

}  // namespace hv
