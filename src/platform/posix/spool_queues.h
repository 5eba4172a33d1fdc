// The kinds of print queue on POSIX systems, one opener each. An opener gives NULL when the
// destination is no queue of its kind.
#pragma once

#include <memory>

#include "platform/spooler.h"

namespace hv::platform {

// An address "socket://host[:port]", an IPv6 address in brackets, port 9100 by default. Nothing is
// sent before a document starts.
std::unique_ptr<SpoolPrinter> OpenSocketQueue(const char* destination);

// A directory of that name in the spool folder. A finished document is NNNNNN.prn with its bytes
// and NNNNNN.job with lines that describe it.
std::unique_ptr<SpoolPrinter> OpenSpoolDirectory(const char* destination);

// A queue of that name which CUPS knows and which takes jobs.
std::unique_ptr<SpoolPrinter> OpenCupsQueue(const char* destination);

}  // namespace hv::platform
