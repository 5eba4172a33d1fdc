// Searches while memory runs out: fonts give a part of the list, macros and demonstration files all
// of it or nothing; the leak check of the sanitizer sees what is lost.

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "faults/failing_memory.h"
#include "hvapi.h"
#include "support/font_files.h"
#include "support/test_folder.h"

namespace {

using hvtest::FailingMemory;
using hvtest::TestFolder;

using Search = std::function<HvFoundResource*(uint16_t* count)>;

void SearchWithEveryFailure(uint16_t whole, bool keepsPart, const Search& search) {
  for (const bool fromThenOn : {false, true}) {
    bool failed = true;
    std::size_t failing = 0;
    for (; failed; ++failing) {
      uint16_t count = 0;
      HvFoundResource* list = nullptr;
      {
        const FailingMemory memory(failing, fromThenOn);
        list = search(&count);
        failed = memory.Failed();
      }
      uint16_t entries = 0;
      for (const HvFoundResource* entry = list; entry != nullptr; entry = entry->next) ++entries;
      HvFonFindFree(list);
      EXPECT_EQ(entries, count) << failing;
      if (!failed) {
        EXPECT_EQ(count, whole);
      } else if (keepsPart) {
        EXPECT_LE(count, whole) << failing;
      } else {
        EXPECT_EQ(count, 0) << failing;
      }
    }
    EXPECT_GT(failing, 8U);
  }
}

TEST(SearchWithoutMemory, EndsWithWhatItHas) {
  const TestFolder folder;
  hvtest::PclDescriptor descriptor;
  folder.Add("a.bit", hvtest::PclFont(descriptor, {}));
  folder.Add("b.pcm", hvtest::PcmFile("Cartridge", {hvtest::PfmFile().Bytes()}));
  folder.Add("c.mac", "\x1B&f7y0Xtext\x1B&f1X");
  folder.Add("d.mac", "\x1B&f8y0Xtext\x1B&f1X");
  folder.Add("GLUE.TXT", "[Cartridge]\n{ " + (folder / "a.bit").substr(0, 90) + "\n");
  const std::string path = folder.Path().string();
  SearchWithEveryFailure(2, true, [&](uint16_t* count) {
    return HvFonFind(path.c_str(), count, FONT_KIND_ANY, FONT_CLASSES_ALL, 0, 1);
  });
  SearchWithEveryFailure(2, false, [&](uint16_t* count) {
    return HvMacFind(path.c_str(), count, JOB_EMULATION_PCL, 0, 0);
  });
  SearchWithEveryFailure(5, false,
                         [&](uint16_t* count) { return HvDemFind(path.c_str(), count, 0, 0); });
}

}  // namespace
