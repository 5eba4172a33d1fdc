// Any bytes as a macro source, filtered in each language, beside the model of the tests; the source
// arrives in pieces of a few bytes or as a whole. The first two bytes choose the mask.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "macros/file_channel.h"
#include "macros/job_command_filter.h"
#include "support/job_filter_model.h"

namespace {

class MemoryStream final : public hv::platform::Stream {
 public:
  MemoryStream(std::string bytes, std::size_t piece) : bytes_(std::move(bytes)), piece_(piece) {}

  std::size_t Read(void* buffer, std::size_t count) override {
    const std::size_t got = std::min({count, piece_, bytes_.size() - at_});
    std::memcpy(buffer, bytes_.data() + at_, got);
    at_ += got;
    return got;
  }
  int ReadByte() override { return -1; }
  std::size_t Write(const void* bytes, std::size_t count) override {
    bytes_.append(static_cast<const char*>(bytes), count);
    return count;
  }
  bool Flush() override { return true; }
  int64_t Position() override { return static_cast<int64_t>(at_); }
  bool Seek(int64_t position) override {
    at_ = static_cast<std::size_t>(position);
    return true;
  }
  bool AtEnd() const override { return at_ == bytes_.size(); }
  bool HasError() const override { return false; }
  bool Close() override { return true; }

  const std::string& Content() const { return bytes_; }

 private:
  std::string bytes_;
  std::size_t piece_;
  std::size_t at_ = 0;
};

void Check(int32_t emulation, const std::string& source, uint32_t mask,
           const std::string& expected) {
  for (const std::size_t piece : {std::size_t{1}, std::size_t{5}, source.size() + 1}) {
    MemoryStream from(source, piece);
    MemoryStream to("", 0);
    hv::FileChannel channel(&to, emulation);
    if (hv::FilterJobCommands(&from, channel.Get(), mask, "%%text\n") != HV_OK) std::abort();
    if (to.Content() != expected) std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  const uint32_t mask = data[0] | uint32_t{data[1]} << 8;
  const std::string source(reinterpret_cast<const char*>(data) + 2, size - 2);
  Check(JOB_EMULATION_PCL, source, mask, hvtest::FilterPclModel(source, mask));
  Check(JOB_EMULATION_POSTSCRIPT, source, mask, hvtest::FilterPostScriptModel(source, "%%text\n"));
  Check(JOB_EMULATION_PPDS, source, mask, source);
  return 0;
}
