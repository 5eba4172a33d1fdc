#include "pclxl/work_files.h"

#include "platform/files.h"

namespace hv {
namespace {

std::mutex workFilesMutex;

}  // namespace

PclXlWorkFiles::PclXlWorkFiles() : lock_(workFilesMutex) {}

void PclXlWorkFiles::Remove() const {
  for (const char* name : {Input, Output, Page}) platform::RemoveFile(name);
}

}  // namespace hv
