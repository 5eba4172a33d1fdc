// Jobs through the communication library: the calls that it sees, in order, and what its results
// do.

#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "hvapi.h"
#include "support/fake_nbx.h"
#include "support/jobs.h"
#include "support/test_folder.h"

namespace {

using namespace hvtest;
using Calls = std::vector<std::string>;

constexpr uint32_t Pjl = JOB_FLAG_PJL;
constexpr uint32_t EscK = JOB_FLAG_ESC_K;
constexpr const char* Unused = "destinations are not looked at";

HvJobInfo LibraryJob(uint32_t flags, int32_t emulation = 0, const char* name = nullptr,
                     uint16_t copies = 0) {
  HvJobInfo job = Job(flags, emulation, name, copies);
  job.nbxAddress1 = 0xFFFF;
  job.nbxAddress2 = 0x8001;
  return job;
}

std::string StartDocCall(const std::string& jobName) {
  return "NbxStartDoc 32769 0 " +
         ToHex(DocumentBlock(ComputerNameOfSystem(), UserNameOfSystem(), jobName));
}

std::string WriteCall(const std::string& bytes) {
  return "NbxWrite 65535 32769 0 " + std::to_string(bytes.size()) + " 1 " + ToHex(bytes);
}

const Calls Opening = {"NbxOpen 65535 32769 0"};
const Calls Closing = {"NbxEndDoc 32769 0", "NbxClose 65535 32769"};

Calls operator+(Calls calls, const Calls& more) {
  calls.insert(calls.end(), more.begin(), more.end());
  return calls;
}

// The calls of a whole job that writes these pieces.
Calls JobCalls(const std::string& jobName, const std::vector<std::string>& pieces) {
  Calls calls = Opening + Calls{StartDocCall(jobName)};
  for (const std::string& piece : pieces) calls.push_back(WriteCall(piece));
  return calls + Closing;
}

class NbxJobs : public testing::Test {
 protected:
  void TearDown() override {
    EXPECT_FALSE(fake_.IsLoaded());
    EXPECT_EQ(OpenHandleCount(), handles_);
  }

  FakeNbx fake_{TEST_BINARY_FOLDER};
  TestFolder folder_;
  std::size_t handles_ = OpenHandleCount();
};

TEST_F(NbxJobs, GoOutInPiecesInOneDocument) {
  std::string payload;
  for (int i = 0; i < 5000; ++i) payload += static_cast<char>(i % 251);
  const std::string source = folder_.Add("source", payload);
  const HvJobInfo job = LibraryJob(Pjl, 5, "Weekly report", 3);
  EXPECT_EQ(HvDatSendFile(source.c_str(), Unused, &job, 1), HV_OK);
  EXPECT_EQ(fake_.TakeCalls(),
            JobCalls("Weekly report",
                     {Uel, PjlPanel("Weekly report"), PjlLanguage("PCL"), "@PJL SET COPIES = 3\n",
                      payload.substr(0, 2048), payload.substr(2048, 2048), payload.substr(4096),
                      Uel, PjlPanel(""), "@PJL RESET\n", Uel}));
  // Without a name, and with nothing to send.
  const HvJobInfo unnamed = LibraryJob(0);
  EXPECT_EQ(HvDatSendString("00FF", Unused, &unnamed, 0), HV_OK);
  EXPECT_EQ(fake_.TakeCalls(), JobCalls("Pallado Job", {Bytes("\x00\xFF")}));
  const HvJobInfo empty = LibraryJob(0, 5, "");
  EXPECT_EQ(HvGenResource(STORAGE_TARGET_RAM, Unused, &empty, 1), HV_OK);
  EXPECT_EQ(fake_.TakeCalls(), JobCalls("", {}));
}

TEST_F(NbxJobs, TheResultOfTheLibraryDecides) {
  const HvJobInfo job = LibraryJob(0, 0, "n");
  const Calls start = Opening + Calls{StartDocCall("n")};
  const Calls write = {WriteCall("abc")};
  const std::tuple<const char*, const char*, uint32_t, Calls> cases[] = {
      {"NbxOpen", "", HV_CONNECTION_FAILED, Opening},
      {"NbxStartDoc", "", HV_CONNECTION_FAILED, start + Calls{Closing[1]}},
      {"NbxWrite", "3", HV_PRINTER_REFUSED, start + write + Closing},
      {"", "1", HV_OK, start + write + Closing},
      {"NbxEndDoc NbxClose", "", HV_OK, start + write + Closing},
  };
  for (const auto& [failing, taken, result, calls] : cases) {
    SCOPED_TRACE(std::string(failing) + " taking " + taken);
    const ScopedVariable fail("FAKE_NBX_FAIL", failing);
    const ScopedVariable take("FAKE_NBX_TAKE", taken);
    EXPECT_EQ(HvDatSendString("$abc", Unused, &job, 0), result);
    EXPECT_EQ(fake_.TakeCalls(), calls);
    EXPECT_FALSE(fake_.IsLoaded());
  }
}

// Each write of each kind of job fails once. Nothing is sent then but where two sequences belong
// together, and the document is ended and the connection closed once.
TEST_F(NbxJobs, StopAtTheFirstFailedWrite) {
  using Send = std::function<uint32_t()>;
  const ScopedCurrentFolder here(folder_.Path());
  folder_.Add("source", std::string(3000, 'x'));
  const auto file = [](uint32_t flags, int32_t emulation) -> Send {
    const HvJobInfo job = LibraryJob(flags, emulation, "n", 2);
    return [=] { return HvDatSendFile("source", Unused, &job, 0); };
  };
  const Send text = [] {
    const HvJobInfo job = LibraryJob(Pjl | EscK, 3, "n", 2);
    return HvDatSendString("$abc", Unused, &job, 0);
  };
  const Send storage = [] {
    HvJobInfo job = LibraryJob(Pjl | EscK, 5, "n");
    job.printerClass = JOB_CLASS_DOWNLOAD_LEAD_IN;
    return HvGenResource(STORAGE_TARGET_DEVICE, Unused, &job, STORAGE_DEVICE_FLASH1);
  };
  const auto demo = [](int32_t method) -> Send {
    return [=] {
      HvJobInfo job = LibraryJob(Pjl);
      const HvDemoInfo info = {0, method, "Logo", 0, STORAGE_DEVICE_FLASH1};
      return HvDemDownload("source", Unused, &job, &info);
    };
  };
  const struct {
    const char* label;
    Send send;
    std::size_t writes;
    std::set<std::size_t> followed;    // writes after which one more goes out
    std::set<std::size_t> unreported;  // those whose failure does not show in the result
  } cases[] = {
      {"PJL", file(Pjl, 5), 10, {}, {}},
      {"ESC [ K", file(EscK, 5), 5, {1}, {5}},
      {"both", file(Pjl | EscK, 3), 8, {}, {8}},
      {"neither", file(0, 3), 4, {}, {}},
      {"string", text, 7, {}, {}},
      {"storage", storage, 10, {4, 6}, {}},
      {"demonstration by PostScript", demo(1), 10, {}, {}},
      {"demonstration by PJL", demo(2), 16, {}, {}},
      {"demonstration by ESC [ D", demo(3), 8, {}, {}},
      {"demonstration file of PJL", demo(4), 14, {}, {}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.send(), HV_OK);
    const Calls whole = fake_.TakeCalls();
    ASSERT_EQ(whole.size(), c.writes + 4) << c.label;
    for (std::size_t failing = 1; failing <= c.writes; ++failing) {
      SCOPED_TRACE(c.label + (", write " + std::to_string(failing)));
      const ScopedVariable fail("FAKE_NBX_FAIL_WRITE", std::to_string(failing));
      EXPECT_EQ(c.send(), c.unreported.count(failing) == 1 ? HV_OK : HV_PRINTER_REFUSED);
      const std::size_t sent = 2 + failing + c.followed.count(failing);
      EXPECT_EQ(fake_.TakeCalls(),
                Calls(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(sent)) + Closing);
    }
  }
}

TEST_F(NbxJobs, NetworkTypesAreTakenInTheirOrder) {
  const std::pair<const char*, uint32_t> cases[] = {
      {"0x826", 2048}, {"0x26", 32}, {"0x06", 4}, {"0x02", 2}, {"0xFFFFF7D9", 0}};
  // The result of the question is not looked at.
  for (const char* failing : {"", "NbxGetPrtInfo"}) {
    const ScopedVariable fail("FAKE_NBX_FAIL", failing);
    for (const auto& [word, type] : cases) {
      const ScopedVariable flags("FAKE_NBX_FLAGS", word);
      EXPECT_EQ(HvNetGetType(0xFEDCBA98), type) << word;
      EXPECT_EQ(fake_.TakeCalls(), Calls{"NbxGetPrtInfo 4275878552 0"});
    }
  }
}

TEST(NbxLibrary, MissingOrIncompleteIsNoConnection) {
  const TestFolder folder;
  const std::string source = folder.Add("source", "bytes");
  const HvJobInfo job = LibraryJob(Pjl, 5, "n");
  const std::size_t handles = OpenHandleCount();
  const auto expectFailure = [&] {
    EXPECT_EQ(HvDatSendFile(source.c_str(), Unused, &job, 0), HV_CONNECTION_FAILED);
    EXPECT_EQ(HvDatSendString("$abc", Unused, &job, 0), HV_CONNECTION_FAILED);
    EXPECT_EQ(HvGenResource(1, Unused, &job, 1), HV_CONNECTION_FAILED);
    EXPECT_EQ(HvNetGetType(1), 0U);
  };
  {
    const ScopedNbxFolder nothing(folder.Path().string());
    expectFailure();
  }
  const ScopedVariable flags("FAKE_NBX_FLAGS", "0x02");
  FakeNbx incomplete(TEST_BINARY_FOLDER, "fake_nbx_incomplete");
  expectFailure();
  EXPECT_EQ(incomplete.TakeCalls(), Calls{});
  EXPECT_FALSE(incomplete.IsLoaded());
  EXPECT_EQ(OpenHandleCount(), handles);
}

}  // namespace
