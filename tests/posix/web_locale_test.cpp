// What a dispatch address tells of a POSIX system.

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "support/run_program.h"
#include "support/test_folder.h"

namespace {

TEST(WebLocale, TellsTheUsersLanguage) {
  const std::pair<const char*, const char*> cases[] = {{"en_US.UTF-8", "0409"}, {"zh_CN", "0804"}};
  for (const auto& [name, country] : cases) {
    const hvtest::ScopedVariable locale("LC_ALL", name);
    EXPECT_EQ(hvtest::RunProgram(
                  TEST_BINARY_FOLDER "/hvapi",
                  {"url", "drivers", "--dispatch", "--printer", "12", "34", "--language", "0x407"})
                  .output,
              "https://support.example.com/MD/?func=drivers&lang=2&prtr=B012034&ctry=0000" +
                  std::string(country) + "&os=5\n");
  }
}

}  // namespace
