#include "open_ini.h"

#include <fstream>
#include <utility>

#include "program.h"

namespace hvtool {
namespace {

bool HoldsNul(const std::string& file) {
  std::ifstream stream(file, std::ios::binary);
  std::string text;
  std::getline(stream, text, '\0');
  return stream.good();
}

}  // namespace

OpenIni::OpenIni(const std::string& file, uint32_t mode)
    : file_(file), handle_(HvIniOpen2(file.c_str(), mode)) {}

OpenIni::~OpenIni() {
  if (handle_ != nullptr) HvIniClose(handle_);
}

int OpenIni::ReportFailure() const {
  const bool exists = HvFilExists(file_.c_str()) != 0;
  return Outcome(exists ? HV_CANNOT_OPEN : HV_NOT_FOUND, "cannot open " + Quoted(file_));
}

int OpenIni::Close() {
  if (HvIniClose(std::exchange(handle_, nullptr)) != 0) return HV_OK;
  if (HoldsNul(file_)) {
    return Fail(HV_UNUSABLE_FILE, Quoted(file_) +
                                      " holds NUL bytes, as a file of 16-bit characters "
                                      "does, and is left as it is");
  }
  return Outcome(HV_WRITE_FAILED, "cannot write " + Quoted(file_));
}

}  // namespace hvtool
