#include "support/fake_nbx.h"

#include <cstdio>
#include <filesystem>
#include <sstream>

namespace hvtest {

FakeNbx::FakeNbx(const std::string& buildFolder, const std::string& folder)
    : logName_("FAKE_NBX_LOG", log_ / "calls"), found_(buildFolder + "/tests/" + folder) {}

std::vector<std::string> FakeNbx::TakeCalls() {
  std::vector<std::string> calls;
  const std::string name = log_ / "calls";
  if (!std::filesystem::exists(name)) return calls;
  std::istringstream lines(ReadFile(name));
  for (std::string line; std::getline(lines, line);) calls.push_back(line);
  std::filesystem::remove(name);
  return calls;
}

void FakeNbx::LetOthersWrite() const {
  std::filesystem::permissions(log_.Path(), std::filesystem::perms::all);
}

std::string ToHex(const std::string& bytes) {
  std::string text;
  for (const char byte : bytes) {
    char digits[3];
    std::snprintf(digits, sizeof digits, "%02X", static_cast<unsigned char>(byte));
    text += digits;
  }
  return text;
}

std::string DocumentBlock(const std::string& computer, const std::string& user,
                          const std::string& job) {
  const auto word = [](std::size_t value) {
    std::string bytes;
    for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(value >> shift & 0xFF);
    return bytes;
  };
  const std::string nul(1, '\0');
  return word(31 + computer.size() + user.size() + job.size()) + word(20) +
         word(21 + computer.size()) + word(22 + computer.size() + user.size()) +
         word(30 + computer.size() + user.size()) + computer + nul + user + nul + "Pallado" + nul +
         job + nul;
}

}  // namespace hvtest
