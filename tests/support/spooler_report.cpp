#include "support/spooler_report.h"

#include <cstdio>
#include <cstdlib>

namespace hvtest {

testing::AssertionResult IsSpoolerReport(const std::string& output, const std::string& shown,
                                         int lastError) {
  constexpr int ChunkSize = 2048;
  const std::size_t secondLine = output.find(" \nGetLastError: ");
  const std::size_t lastNumber = output.rfind(' ', secondLine - 1);
  int handle = -1;
  int written = ChunkSize;
  std::sscanf(output.c_str(), "\nWritePrinter FAILED! %d", &handle);
  if (lastNumber < secondLine) written = std::atoi(&output[lastNumber + 1]);
  const std::string expected = "\nWritePrinter FAILED! " + std::to_string(handle) + " " + shown +
                               " " + std::to_string(ChunkSize) + " " + std::to_string(written) +
                               " \nGetLastError: " + std::to_string(lastError) + "\n";
  if (output == expected && handle >= 0 && written < ChunkSize) return testing::AssertionSuccess();
  return testing::AssertionFailure() << "no report of error " << lastError << ":\n" << output;
}

}  // namespace hvtest
