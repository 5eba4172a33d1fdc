// The report of a failed spooler write, the one text that the library prints.
#pragma once

#include <gtest/gtest.h>

#include <string>

namespace hvtest {

// Whether output is exactly the two lines that report a short write of a chunk of 2048 bytes of
// which this text is shown. The handle may be any number, the count of bytes written any lower one.
testing::AssertionResult IsSpoolerReport(const std::string& output, const std::string& shown,
                                         int lastError);

}  // namespace hvtest
