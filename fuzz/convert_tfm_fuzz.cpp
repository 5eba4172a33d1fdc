// Tagged font metrics as metrics of the Windows PCL 5 driver. The first 64 bytes are the header of
// the soft font beside them.

#include <algorithm>
#include <string>

#include "support/font_conversion.h"
#include "support/font_file.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  constexpr std::size_t HeaderSize = 64;
  const std::size_t head = std::min(size, HeaderSize);
  const std::string font = "\x1B)s64W" + std::string(data, data + head);
  const std::string source =
      hvfuzz::WriteInput("convert.sfs", reinterpret_cast<const uint8_t*>(font.data()), font.size());
  const std::string metrics = hvfuzz::WriteInput("convert.tfm", data + head, size - head);
  for (const char* const symbolSet : {"8U", "0N"}) {
    hvfuzz::ConvertTagged(source, metrics, symbolSet, data, size);
  }
  return 0;
}
