// What a dispatch address tells of a POSIX system.

#include <gtest/gtest.h>

#include <utility>

#include <array>

#include "hvapi.h"
#include "support/test_folder.h"

namespace {

TEST(WebLocale, TellsTheUsersLanguage) {
  const std::pair<const char*, const char*> cases[] = {
      {"en_US.UTF-8",
       "https://support.example.com/MD/?func=drivers&lang=2&prtr=B012034&ctry=00000409&os=5"},
      {"zh_CN",
       "https://support.example.com/MD/?func=drivers&lang=2&prtr=B012034&ctry=00000804&os=5"},
  };
  for (const auto& [name, address] : cases) {
    const hvtest::ScopedVariable locale("LC_ALL", name);
    std::array<char, 100> buffer;
    EXPECT_EQ(HvWebGetCGIURL(12, 34, 1, 0x0407, buffer.data(), buffer.size(), 0), 0U);
    EXPECT_STREQ(buffer.data(), address);
  }
}

}  // namespace
