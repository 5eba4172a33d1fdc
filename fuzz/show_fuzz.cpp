// Any bytes explained as a printer stream: the pieces cover every byte, each once and in order.

#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

#include "show/explainer.h"

namespace {

void Explain(const std::string& bytes, bool eachRow) {
  std::istringstream stream(bytes);
  uint64_t end = 0;
  hvtool::Explainer(
      &stream,
      [&](const hvtool::Piece& piece) {
        const std::size_t shown = piece.bytes.size();
        if (piece.offset != end || piece.length == 0 || piece.meaning.empty() ||
            shown > piece.length || bytes.compare(piece.offset, shown, piece.bytes) != 0) {
          std::abort();
        }
        end += piece.length;
      },
      eachRow)
      .Run();
  if (end != bytes.size()) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  Explain(bytes, false);
  Explain(bytes, true);
  return 0;
}
