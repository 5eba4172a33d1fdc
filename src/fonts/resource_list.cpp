#include "fonts/resource_list.h"

#include <utility>

#include "fonts/pcm_reader.h"
#include "support/fixed_text.h"

namespace hv {
namespace {

constexpr uint16_t MostUnlessTold = 32767;

}  // namespace

void ReleaseResources(HvFoundResource* list) {
  while (list != nullptr) {
    HvFoundResource* const next = list->next;
    if (list->kind == RESOURCE_FONT && list->details != nullptr) {
      ReleaseCartridge(static_cast<HvFontInfo*>(list->details)->cartridge);
    }
    ReleaseForCaller(list->details);
    ReleaseForCaller(list);
    list = next;
  }
}

ResourceList::ResourceList(uint16_t wanted) : most_(wanted == 0 ? MostUnlessTold : wanted) {}

HvFoundResource* ResourceList::Add(uint32_t kind, const std::string& path,
                                   CallerMemory<void> details) {
  auto* const entry = static_cast<HvFoundResource*>(AllocateForCaller(sizeof(HvFoundResource)));
  if (entry == nullptr) return nullptr;
  SetFixedText(entry->path, path);
  entry->details = details.release();
  entry->kind = kind;
  entry->next = head_;
  head_ = entry;
  ++count_;
  return entry;
}

HvFoundResource* ResourceList::Release() {
  count_ = 0;
  return std::exchange(head_, nullptr);
}

}  // namespace hv
