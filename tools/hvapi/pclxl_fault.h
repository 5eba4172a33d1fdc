// Where a PCL XL job is not one that can be converted.
#pragma once

#include <string>

namespace hvtool {

// The first fault of a PCL XL job of one page in a file, as "ExecStream at byte 1234: ..."; empty
// when there is none or the file cannot be read. UEL and PJL lines before the job are passed over.
std::string PclXlFault(const std::string& path);

}  // namespace hvtool
