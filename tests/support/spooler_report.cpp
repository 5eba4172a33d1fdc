#include "support/spooler_report.h"

namespace hvtest {
namespace {

constexpr int ChunkSize = 2048;

bool IsNumber(const std::string& text) {
  return !text.empty() && text.size() < 10 &&
         text.find_first_not_of("0123456789") == std::string::npos;
}

}  // namespace

testing::AssertionResult IsSpoolerReport(const std::string& output, const std::string& shown,
                                         int lastError) {
  const std::string begin = "\nWritePrinter FAILED! ";
  const std::string middle = " " + shown + " " + std::to_string(ChunkSize) + " ";
  const std::string end = " \nGetLastError: " + std::to_string(lastError) + "\n";
  const std::size_t at = output.find(middle, begin.size());
  if (output.starts_with(begin) && output.ends_with(end) && at != std::string::npos) {
    const std::size_t behind = at + middle.size();
    const std::string written = output.substr(behind, output.size() - end.size() - behind);
    if (IsNumber(output.substr(begin.size(), at - begin.size())) && IsNumber(written) &&
        std::stoi(written) < ChunkSize) {
      return testing::AssertionSuccess();
    }
  }
  return testing::AssertionFailure() << "no report of error " << lastError << ":\n" << output;
}

}  // namespace hvtest
