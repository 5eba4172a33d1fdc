// The list of what a search has found, in memory for the caller.
#pragma once

#include <cstdint>
#include <string>

#include "api/caller_memory.h"
#include "api/hvapi.h"

namespace hv {

// Releases the entries from list on, with their details. NULL does nothing.
void ReleaseResources(HvFoundResource* list);

class ResourceList {
 public:
  // `wanted` is the most entries, 0 for 32767.
  explicit ResourceList(uint16_t wanted);
  ResourceList(const ResourceList&) = delete;
  ResourceList& operator=(const ResourceList&) = delete;
  ~ResourceList() { ReleaseResources(head_); }

  bool IsFull() const { return count_ >= most_; }
  uint16_t Count() const { return count_; }

  // Puts an entry before the others and takes the details over, an HvFontInfo, an HvMacroInfo or
  // NULL. NULL when there is no memory. The path fits its field.
  HvFoundResource* Add(uint32_t kind, const std::string& path, CallerMemory<void> details);

  // Gives the list to the caller.
  HvFoundResource* Release();

 private:
  HvFoundResource* head_ = nullptr;
  uint16_t count_ = 0;
  uint16_t most_;
};

}  // namespace hv
