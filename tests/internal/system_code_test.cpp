// The support site's codes of operating systems: no machine is all of them.

#include <gtest/gtest.h>

#include "web/support_address.h"

TEST(SystemCode, DependsOnPlatformAndVersion) {
  const struct {
    hv::platform::OsVersion version;  // major, minor, platform
    uint32_t code;
  } cases[] = {
      {{3, 1, 0}, 1}, {{4, 10, 1}, 1}, {{6, 0, 1}, 1}, {{3, 51, 2}, 2}, {{4, 0, 2}, 2},
      {{5, 0, 2}, 3}, {{5, 1, 2}, 5},  {{6, 0, 2}, 3}, {{6, 2, 2}, 5},  {{5, 0, 3}, 2},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(hv::SystemCodeOf(c.version), c.code)
        << c.version.platform << ": " << c.version.major << "." << c.version.minor;
  }
}
