#include "fontconv/output_file.h"

#include <memory>

#include "api/hvapi.h"
#include "platform/stream.h"
#include "platform/temporary_file.h"

namespace hv {
namespace {

// The result of the first failure: no stream, or bytes that did not get to the disk.
uint32_t WriteAll(const std::string& path, const char* mode, const void* bytes, std::size_t count,
                  uint32_t onFailure) {
  const std::unique_ptr<platform::Stream> stream = platform::OpenStream(path.c_str(), mode);
  if (stream == nullptr) return HV_CANNOT_OPEN;
  const bool written = stream->Write(bytes, count) == count;
  return stream->Close() && written ? uint32_t{HV_OK} : onFailure;
}

}  // namespace

uint32_t WriteConverted(const std::string& path, MetricsBytes bytes) {
  return WriteAll(path, "wb", bytes.data(), bytes.size(), HV_SYSTEM_FAILURE);
}

uint32_t WriteConvertedText(const std::string& path, std::string_view text) {
  return WriteAll(path, "w", text.data(), text.size(), HV_WRITE_FAILED);
}

void ReplaceFile(const std::string& path, MetricsBytes bytes) {
  platform::TemporaryFile beside(platform::CreateFileBeside(path.c_str()));
  if (beside.Exists()) {
    // On a full disk the old file would be lost as well.
    if (WriteConverted(beside.Name(), bytes) != HV_OK || beside.Replace(path.c_str())) return;
    beside.Discard();
  }
  // A device, a file in a directory that takes no new one, or one that another program has open.
  WriteConverted(path, bytes);
}

}  // namespace hv
