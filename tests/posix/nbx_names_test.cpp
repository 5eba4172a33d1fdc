// The names of computer and user in the document block of the communication library, where the
// system has none that fit.

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <unistd.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "hvapi.h"
#include "support/fake_nbx.h"
#include "support/jobs.h"
#include "support/posix/child.h"

namespace {

TEST(NbxNames, ThatCannotBeHadAreEmpty) {
  constexpr uid_t UnknownUser = 54321;
  const std::string user = hvtest::UserNameOfSystem();
  const struct {
    std::string host;
    bool knownUser;
    std::string block;
  } cases[] = {
      {"fifteen-letters", false, hvtest::DocumentBlock("fifteen-letters", "", "job")},
      {"host.with.domain.parts", true, hvtest::DocumentBlock("host", user, "job")},
      {"sixteen-letters-", true, hvtest::DocumentBlock("", user, "job")},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.host);
    hvtest::FakeNbx fake(TEST_BINARY_FOLDER);
    const hvtest::ChildResult result = hvtest::RunInChild([&] {
      HvJobInfo job = hvtest::Job(0, 0, "job");
      job.nbxAddress2 = 1;
      fake.LetOthersWrite();
      // Loaded while this user still may; the build folder is not everybody's to read.
      if (dlopen(std::getenv("HVAPI_NBXCHAN"), RTLD_NOW) == nullptr) return std::string("no fake");
      if (unshare(CLONE_NEWUTS) != 0 || sethostname(c.host.data(), c.host.size()) != 0 ||
          (!c.knownUser && setuid(UnknownUser) != 0)) {
        return std::string("not allowed");
      }
      return std::to_string(HvDatSendString("$", "x", &job, 0));
    });
    if (result.answer == "not allowed") GTEST_SKIP() << "names cannot be changed here";
    EXPECT_EQ(result.answer, "0");
    const std::vector<std::string> calls = fake.TakeCalls();
    ASSERT_EQ(calls.size(), 5U);
    EXPECT_EQ(calls[1], "NbxStartDoc 1 0 " + hvtest::ToHex(c.block));
  }
}

}  // namespace
