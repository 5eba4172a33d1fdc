// What becomes of a file that is rewritten or copied over when the disk is full.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "hvapi.h"
#include "support/posix/file_size_limit.h"
#include "support/test_folder.h"

namespace {

using namespace hvtest;

constexpr rlim_t Room = 4096;

uint32_t HVAPI_CALL KeepLine(char* /*line*/, uintptr_t /*argument*/) {
  return 0;
}

TEST(FilesOnAFullDisk, LeavesAFileThatIsRewrittenOrReplacedAsItWas) {
  // The text grows by the CR of each line; it fits one buffer of a stream, or takes several.
  for (const std::size_t lines : {Room / 2 - 10, rlim_t{100000}}) {
    const TestFolder folder;
    const TestFolder temporary;
    const ScopedVariable tmp("TMP", temporary.Path().string());
    std::string text;
    for (std::size_t i = 0; i < lines; ++i) text += "x\n";
    const std::string path = folder.Add("text", text);
    const std::string large = folder.Add("large", std::string(2 * Room, 'x'));
    const std::size_t handles = OpenHandleCount();
    {
      const FileSizeLimit full(Room);
      EXPECT_EQ(HvFilModify(path.c_str(), 0, KeepLine), HV_WRITE_FAILED) << lines;
      EXPECT_EQ(HvFilCopy(large.c_str(), path.c_str()), HV_DISK_FULL);
    }
    EXPECT_EQ(OpenHandleCount(), handles);
    EXPECT_EQ(ReadFile(path), text);
    EXPECT_EQ(temporary.Names(), std::vector<std::string>{});
    EXPECT_EQ(folder.Names(), (std::vector<std::string>{"large", "text"}));
  }
}

}  // namespace
