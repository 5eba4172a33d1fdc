#include "zip/decoders.h"

namespace hv {

bool CopyStored(MemberInput& input, OutputWindow& window) {
  do {
    const std::span<const uint8_t> bytes = input.Unread();
    window.Append(bytes);
    input.Take(bytes.size());
  } while (!window.Stopped() && input.More());
  return !input.ArchiveEnded();
}

}  // namespace hv
