// Any bytes as the data of one member, by each method: the first byte chooses it, the next two are
// the declared size in units of 8 bytes. What is written never exceeds that size.

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

#include "support/font_file.h"
#include "zip/archive_file.h"
#include "zip/decoders.h"
#include "zip/member_input.h"
#include "zip/output_window.h"

namespace {

constexpr std::size_t HeadSize = 3;

void Decode(uint8_t choice, hv::MemberInput& input, hv::OutputWindow& window) {
  switch (choice % 11) {
    case 0:
      hv::CopyStored(input, window);
      break;
    case 1:
      hv::Unshrink(input, window);
      break;
    case 2:
    case 3:
    case 4:
    case 5:
      hv::Unreduce(input, window, choice % 11 - 1U);
      break;
    case 10:
      hv::Inflate(input, window);
      break;
    default:
      hv::Explode(input, window, ((choice % 11 - 6) & 1) != 0, ((choice % 11 - 6) & 2) != 0);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  if (size < HeadSize) return 0;
  const std::string path = hvfuzz::WriteInput("member", data + HeadSize, size - HeadSize);
  const uint64_t declared = 8U * (data[1] + 256U * data[2]);
  const std::string output = hvfuzz::WorkFolder() + "/output";
  const int file = open(output.c_str(), O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
  hv::ArchiveFile archive;
  if (file < 0 || !archive.Open(path.c_str())) std::abort();
  hv::MemberInput input(archive, static_cast<uint32_t>(size - HeadSize));
  hv::OutputWindow window;
  window.Begin(file, declared);
  Decode(data[0], input, window);
  window.Finish();
  const off_t written = lseek(file, 0, SEEK_END);
  close(file);
  if (window.WriteFailed() || written < 0 || static_cast<uint64_t>(written) > declared)
    std::abort();
  return 0;
}
