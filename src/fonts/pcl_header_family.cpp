#include "fonts/pcl_header_family.h"

#include <atomic>

namespace hv {
namespace {

std::atomic<PclFamily> headerFamily{PclFamily::Format0};

}  // namespace

PclFamily PclHeaderFamily() {
  return headerFamily;
}

void SetPclHeaderFamily(PclFamily family) {
  headerFamily = family;
}

}  // namespace hv
