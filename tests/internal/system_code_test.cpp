// The support site's codes of operating systems: no machine is all of them.

#include <gtest/gtest.h>

#include <utility>

#include "web/support_address.h"

TEST(SystemCode, DependsOnPlatformAndVersion) {
  // version: major, minor, platform
  const std::pair<hv::platform::OsVersion, uint32_t> cases[] = {
      {{3, 1, 0}, 1}, {{4, 10, 1}, 1}, {{6, 0, 1}, 1}, {{3, 51, 2}, 2}, {{4, 0, 2}, 2},
      {{5, 0, 2}, 3}, {{5, 1, 2}, 5},  {{6, 0, 2}, 3}, {{6, 2, 2}, 5},  {{5, 0, 3}, 2},
  };
  for (const auto& [version, code] : cases) {
    EXPECT_EQ(hv::SystemCodeOf(version), code)
        << version.platform << ": " << version.major << "." << version.minor;
  }
}
