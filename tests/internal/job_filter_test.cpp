// The filter of macro sources beside a model that has the whole source before it: each command at
// every place around the edges of the buffers, sources that arrive in small pieces, and random
// mixtures.

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "macros/file_channel.h"
#include "macros/job_command_filter.h"
#include "support/job_filter_model.h"
#include "support/jobs.h"
#include "support/memory_stream.h"

namespace {

using namespace hvtest;

constexpr const char* Comment = "%%a comment\n";

std::string Model(int32_t emulation, const std::string& source, uint32_t mask) {
  if (emulation == JOB_EMULATION_POSTSCRIPT) return FilterPostScriptModel(source, Comment);
  return emulation == JOB_EMULATION_PCL ? FilterPclModel(source, mask) : source;
}

// The filter and the model give the same, however many bytes the source gives at a time.
void ExpectAsModel(int32_t emulation, const std::string& source, uint32_t mask = 0xFFF,
                   std::size_t piece = std::string::npos) {
  MemoryStream from(source, piece);
  MemoryStream to;
  hv::FileChannel channel(&to, emulation);
  ASSERT_EQ(hv::FilterJobCommands(&from, channel.Get(), mask, Comment), HV_OK);
  ASSERT_EQ(to.Content(), Model(emulation, source, mask))
      << "language " << emulation << ", mask " << mask << ": " << testing::PrintToString(source);
}

constexpr int32_t Filtered[] = {JOB_EMULATION_POSTSCRIPT, JOB_EMULATION_PCL};

const std::string Commands[] = {
    "\x1B%-12345X",
    "\x1B%-12345Y",
    "@PJL SET COPIES = 2\r\n",
    "@PJX\n",
    EscKLanguage(2),
    "\x1B[L12",
    "\033E",
    "\x0C",
    "\x04",
    "%!PS-Adobe-3.0\n",
    "%%Page\n",
    "\x1B&l1o2a5H",
    "\x1B&l2a1x3C",
    "\x1B&l1g2l3S\x1B&a1G\x1B&l66p1f2H",
    "\x1B&l1T\x1B&l2T",
    "\x1B&f0X\x1B&f3X",
    "\x1B&r1F",
    "\x1B&b3M",
    "\x1B&p5X@PJL\n",
    "\x1B*b3m2v4Wabc\033E\x0C",
    "\x1B*c0F\x1B*c5F",
    "\x1B(s4W\x1B\x1B@P",
    "\x1B(f3Wabc",
    "\x1B)s2Wab",
    "\x1B)f2W",
    "\x1B&n5W12345",
    "\x1B&n0Wab",
    "\x1B&s1C",
    "\x1B%0BPU;\x0C@PJL\n\x1B%1B\x1B%-12345X\x1B%0A\x0C",
    "\x1B%1234567890123456B\033E",
    "\x1B\x1B&l123456789012345678O",
    "\x1B&l-1o+2a 1T",
};

TEST(JobFilter, FindsEachCommandAtEveryPlaceAroundTheBufferEdges) {
  for (const std::string& command : Commands) {
    // Every place at which an edge lies in the command, for the first and the second edge.
    for (const std::size_t edge : {std::size_t{1024}, std::size_t{2048}}) {
      for (std::size_t before = edge - command.size() - 2; before <= edge + 2; ++before) {
        for (const int32_t emulation : Filtered) {
          ExpectAsModel(emulation, std::string(before, 'x') + command + "tail");
        }
      }
    }
  }
}

TEST(JobFilter, TakesASourceThatArrivesInSmallPieces) {
  std::string source;
  for (const std::string& command : Commands) source += "text " + command + " ";
  for (const int32_t emulation : {2, 3, 4, 5, 6}) {
    for (std::size_t piece = 1; piece <= 7; ++piece) ExpectAsModel(emulation, source, 0xFFF, piece);
  }
}

TEST(JobFilter, WritesWhatACutOffSequenceHas) {
  for (const std::string& command : Commands) {
    for (std::size_t length = 0; length <= command.size(); ++length) {
      for (const int32_t emulation : Filtered) {
        ExpectAsModel(emulation, "a" + command.substr(0, length));
      }
    }
  }
}

TEST(JobFilter, AgreesWithTheModelOnMixtures) {
  std::minstd_rand random(20);
  const auto pick = [&](std::size_t count) { return random() % count; };
  for (int round = 0; round < 1500; ++round) {
    std::string source;
    for (std::size_t parts = pick(20); parts > 0; --parts) {
      std::string part = Commands[pick(std::size(Commands))];
      // Whole, cut off, or with one byte of another command.
      if (pick(3) == 0) part.resize(pick(part.size() + 1));
      if (pick(3) == 0 && !part.empty()) part[pick(part.size())] = "\x1B@%&lE0W_a"[pick(10)];
      source += part;
    }
    const uint32_t mask = static_cast<uint32_t>(pick(0x1000));
    for (const int32_t emulation : Filtered) ExpectAsModel(emulation, source, mask);
  }
}

TEST(JobFilter, WritesPiecesOf1024Bytes) {
  MemoryStream from(std::string(2500, 'x') + "\033E" + std::string(572, 'y'));
  MemoryStream to;
  hv::FileChannel channel(&to, JOB_EMULATION_PCL);
  EXPECT_EQ(hv::FilterJobCommands(&from, channel.Get(), DEFAULT_FILTER_MASK, {}), HV_OK);
  // The last piece is written also when it is empty.
  EXPECT_EQ(to.Pieces(), (std::vector<std::size_t>{1024, 1024, 1024, 0}));
}

}  // namespace
