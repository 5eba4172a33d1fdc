// Any bytes as an operator-panel file, asked for each list with buffers of several sizes, of which no
// byte behind the end may be written.

#include <cstdint>
#include <cstdlib>
#include <vector>

#include "hvapi.h"
#include "support/font_file.h"
#include "support/run_memory.h"

namespace {

constexpr int32_t Controls[] = {0x1A2, 1, 16, -1};

void Check(bool condition) {
  if (!condition) std::abort();
}

// A list whose rows take so many bytes: with a buffer, at most those that fit are told of.
template <typename Ask>
void CheckList(std::size_t row, const Ask& ask) {
  for (const uint32_t size : {0U, 1U, 6U, 40U}) {
    std::vector<uint8_t> buffer(size);
    const int32_t result = ask(size == 0 ? nullptr : buffer.data(), size);
    Check(size == 0 || result <= static_cast<int32_t>(size / row));
  }
}

void AskAll(HvIniHandle* panel) {
  for (const int32_t control : Controls) {
    int32_t limits[3] = {};
    HvOpcGetSpinControlLimits(panel, control, &limits[0], &limits[1], &limits[2]);
    const int32_t length = HvOpcGetMaxEditLength(panel, control);
    Check(length >= INT16_MIN && length <= INT16_MAX);
    for (const uint32_t list : {0U, 2U}) {
      CheckList(sizeof(uint16_t), [&](void* buffer, uint32_t size) {
        return HvOpcGetTextListing(panel, control, list, static_cast<uint16_t*>(buffer), size);
      });
    }
  }
  for (const uint32_t page : {1U, 2U}) {
    CheckList(sizeof(HvPageDefault), [&](void* buffer, uint32_t size) {
      return HvOpcGetPageDefaults(panel, page, static_cast<HvPageDefault*>(buffer), size);
    });
    CheckList(2, [&](void* buffer, uint32_t size) {
      return HvOpcGetPageOmVars(panel, page, static_cast<uint8_t*>(buffer), size);
    });
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  hvfuzz::WriteInput("opc031.cfg", data, size);
  HvIniHandle* panel = nullptr;
  const bool hadMemory = hvfuzz::HadMemory(
      data, size, [&] { panel = HvOpcRegisterCfg(31, hvfuzz::WorkFolder().c_str()); });
  Check(panel != nullptr || !hadMemory || size == 0);
  if (panel == nullptr) return 0;
  AskAll(panel);
  {
    const hvfuzz::RunMemory memory(data, size);
    HvOpcGetTextListing(panel, Controls[0], 0, nullptr, 0);
    HvOpcGetPageDefaults(panel, 1, nullptr, 0);
    HvOpcGetPageOmVars(panel, 1, nullptr, 0);
  }
  Check(HvOpcUnregisterCfg(panel) == 1);
  return 0;
}
