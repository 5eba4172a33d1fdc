// An INI file that a command has open.
#pragma once

#include <cstdint>
#include <string>

#include "hvapi.h"

namespace hvtool {

class OpenIni {
 public:
  // mode: INI_OPEN_...
  OpenIni(const std::string& file, uint32_t mode);
  OpenIni(const OpenIni&) = delete;
  OpenIni& operator=(const OpenIni&) = delete;
  ~OpenIni();  // closes; a failure of that goes unnoticed

  // NULL when the file could not be opened, which ReportFailure then explains.
  HvIniHandle* Handle() const { return handle_; }
  int ReportFailure() const;

  // Closes the file, which writes it back when it was changed, and reports a failure of that.
  int Close();

 private:
  std::string file_;
  HvIniHandle* handle_;
};

}  // namespace hvtool
