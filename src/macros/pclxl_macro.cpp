#include "macros/pclxl_macro.h"

#include <array>
#include <memory>
#include <optional>
#include <string_view>

#include "channel/sending.h"
#include "macros/file_channel.h"
#include "macros/job_command_filter.h"
#include "macros/macro_analysis.h"
#include "macros/macro_stream.h"
#include "pclxl/stream_conversion.h"
#include "platform/files.h"
#include "support/ascii.h"
#include "support/fixed_text.h"
#include "support/path_text.h"

namespace hv {
namespace {

// Some drivers put a block of four bytes that begins with NUL before the job.
constexpr std::string_view LeadInStart("\0", 1);
constexpr uint64_t LeadInRest = 3;

// What a job of the one protocol class that is converted begins with, and what a conversion writes.
constexpr std::string_view StreamHeader = ") HP-PCL XL;1;1;\n";

constexpr ByteSet Starts{"\x1B@"};

// Copies the job without what surrounds it.
void CopyJob(MacroStream* stream) {
  if (StreamTake(stream, LeadInStart)) StreamSkip(stream, LeadInRest);
  for (int byte = StreamCopyRun(stream, Starts); byte >= 0; byte = StreamCopyRun(stream, Starts)) {
    const bool dropped = byte == Escape ? DropUel(stream) : DropPjlLine(stream);
    if (!dropped) StreamPutByte(stream, static_cast<uint8_t>(byte));
  }
}

uint32_t WriteInput(platform::Stream* source) {
  const std::unique_ptr<platform::Stream> file = platform::OpenStream(PclXlWorkFiles::Input, "wb");
  if (file == nullptr) return HV_CANNOT_OPEN;
  FileChannel channel(file.get(), JOB_EMULATION_PCLXL);
  MacroStream stream;
  StreamOpenReader(&stream, source);
  StreamOpenWriter(&stream, channel.Get());
  CopyJob(&stream);
  StreamCloseWriter(&stream);
  const bool closed = file->Close();
  if (source->HasError()) return HV_READ_FAILED;
  // A job that was cut off might convert all the same.
  return channel.Get()->status == 0 && closed ? HV_OK : HV_WRITE_FAILED;
}

// Removes the work files on every way out. Names as short as theirs take no memory.
class WorkFilesRemover {
 public:
  explicit WorkFilesRemover(const PclXlWorkFiles& files) : files_(files) {}
  WorkFilesRemover(const WorkFilesRemover&) = delete;
  WorkFilesRemover& operator=(const WorkFilesRemover&) = delete;
  ~WorkFilesRemover() { files_.Remove(); }

 private:
  const PclXlWorkFiles& files_;
};

uint32_t ConvertAndSend(const PclXlWorkFiles& files, platform::Stream* source,
                        PrinterChannel* channel, const std::string& streamName, bool execute) {
  const uint32_t written = WriteInput(source);
  if (written != HV_OK) return written;
  if (PclXlConvertStream(files, streamName.c_str(), execute ? 1 : 0) != 0) return HV_BAD_PCLXL;
  const std::unique_ptr<platform::Stream> converted =
      platform::OpenStream(PclXlWorkFiles::Output, "rb");
  if (converted == nullptr) return HV_CANNOT_OPEN;
  return ChannelSendStream(converted.get(), channel, SendEncoding::Raw);
}

// The name is an array of bytes, an attribute of the first operator "begin stream" of the job.
std::optional<std::string> FindPclXlStreamName(platform::Stream* source) {
  constexpr std::size_t FarthestOperator = 499;
  constexpr char BeginStream = '\x5B';
  constexpr char ByteArray = '\xC8';
  constexpr char ByteLength = '\xC0';
  constexpr std::size_t HeadSize = 3;       // array tag, tag of the length, length
  constexpr std::size_t AttributeSize = 2;  // attribute tag, identifier
  std::array<char, FarthestOperator> read;
  std::string_view start(read.data(), source->Read(read.data(), read.size()));
  const std::size_t end = start.find(BeginStream);
  if (end == std::string_view::npos) return std::nullopt;
  start = start.substr(0, end);
  const std::size_t array = start.rfind(ByteArray);
  if (array == std::string_view::npos) return std::nullopt;
  const std::string_view value = start.substr(array);
  if (value.size() < HeadSize || value[1] != ByteLength) return std::nullopt;
  const std::size_t length = static_cast<uint8_t>(value[2]);
  if (value.size() != HeadSize + length + AttributeSize) return std::nullopt;
  return std::string(value.substr(HeadSize, length));
}

}  // namespace

uint32_t SendPclXlMacro(platform::Stream* source, PrinterChannel* channel,
                        const std::string& streamName, bool execute) {
  const PclXlWorkFiles files;
  if (!source->Seek(0)) return HV_READ_FAILED;
  const WorkFilesRemover remover(files);
  return ConvertAndSend(files, source, channel, streamName, execute);
}

uint32_t ValidatePclXlMacro(platform::Stream* source, const HvJobInfo& job, HvMacroInfo* info) {
  if ((info->flags & MACRO_FLAG_FILTER) != 0) {
    const std::unique_ptr<platform::Stream> converted = platform::OpenScratchStream();
    if (converted == nullptr) return HV_CANNOT_OPEN;
    FileChannel channel(converted.get(), job.emulation);
    return SendPclXlMacro(source, channel.Get(),
                          std::string(FixedText(info->name, MostMacroNameBytes)), false);
  }
  std::array<char, StreamHeader.size()> header;
  if (source->Read(header.data(), header.size()) < header.size()) return HV_READ_FAILED;
  if (std::string_view(header.data(), header.size()) != StreamHeader) return HV_BAD_PCLXL;
  const std::optional<std::string> name = FindPclXlStreamName(source);
  // What could not be read on is not known to have no name.
  if (!name) return source->HasError() ? HV_READ_FAILED : HV_BAD_PCLXL;
  SetFixedText(info->name, *name);
  return HV_OK;
}

bool IsPclXlWorkFile(const char* path) {
  // A file that is looked at cannot be deleted on every system, so that nobody else may be at them.
  const PclXlWorkFiles held;
  const std::size_t nameStart = FileNameStart(path);
  const std::string folder(path, nameStart);
  // One that is not there yet has no more than its name.
  const bool isHere = folder.empty() || platform::NameSameFile(folder.c_str(), ".");
  for (const char* file : {PclXlWorkFiles::Input, PclXlWorkFiles::Page, PclXlWorkFiles::Output}) {
    const bool isNamed = isHere && EqualsIgnoreCase(path + nameStart, file);
    if (isNamed || platform::NameSameFile(path, file)) return true;
  }
  return false;
}

}  // namespace hv
