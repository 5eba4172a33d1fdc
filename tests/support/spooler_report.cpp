#include "support/spooler_report.h"

#include <string_view>

namespace hvtest {
namespace {

constexpr int ChunkSize = 2048;

bool Skip(std::string_view* text, std::string_view expected) {
  if (text->substr(0, expected.size()) != expected) return false;
  text->remove_prefix(expected.size());
  return true;
}

// Takes a number from the start of text; -1 when there is none.
int TakeNumber(std::string_view* text) {
  int number = -1;
  while (!text->empty() && text->front() >= '0' && text->front() <= '9' && number < 100'000'000) {
    number = (number < 0 ? 0 : number * 10) + (text->front() - '0');
    text->remove_prefix(1);
  }
  return number;
}

}  // namespace

testing::AssertionResult IsSpoolerReport(const std::string& output, const std::string& shown,
                                         int lastError) {
  std::string_view rest = output;
  if (Skip(&rest, "\nWritePrinter FAILED! ") && TakeNumber(&rest) >= 0 &&
      Skip(&rest, " " + shown + " " + std::to_string(ChunkSize) + " ")) {
    const int written = TakeNumber(&rest);
    if (written >= 0 && written < ChunkSize &&
        rest == " \nGetLastError: " + std::to_string(lastError) + "\n") {
      return testing::AssertionSuccess();
    }
  }
  return testing::AssertionFailure() << "no report of error " << lastError << ":\n" << output;
}

}  // namespace hvtest
