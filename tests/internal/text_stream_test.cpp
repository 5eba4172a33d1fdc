// Streams as the C runtime of Windows has them: modes, text rules, places in a file.

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "platform/stream.h"
#include "support/test_folder.h"

namespace {

using hv::platform::OpenStream;
using hv::platform::Stream;
using hvtest::ReadFile;
using hvtest::TestFolder;

std::string ReadAll(Stream* stream) {
  std::string text;
  char piece[1000];
  while (const std::size_t got = stream->Read(piece, sizeof piece)) text.append(piece, got);
  return text;
}

std::vector<std::string> ReadLines(Stream* stream, std::size_t size) {
  std::vector<std::string> lines;
  std::vector<char> line(size);
  while (stream->ReadLine(line.data(), size)) lines.emplace_back(line.data());
  return lines;
}

TEST(TextStream, ReadsLineEndsAndTheEndOfText) {
  const struct {
    const char* what;
    std::string bytes;
    std::string text;
  } cases[] = {
      {"empty", "", ""},
      {"line feeds alone", "a\n\nb\n", "a\n\nb\n"},
      {"CR LF", "a\r\n\r\nb\r\n", "a\n\nb\n"},
      {"CR elsewhere", "a\rb\r\r\nc\n\rd", "a\rb\r\nc\n\rd"},
      {"CR at the end", "a\r", "a\r"},
      {"0x1A", std::string("a\n\x1A") + "b\n", "a\n"},
      {"0x1A first", "\x1A", ""},
      {"CR before 0x1A", "a\r\x1A\n", "a\r"},
      {"zero bytes", std::string("a\0b\r\n\0", 6), std::string("a\0b\n\0", 5)},
  };
  for (const auto& c : cases) {
    // At the borders of every buffer on the way, too.
    for (const std::size_t before : {0U, 4094U, 4095U, 4096U, 16382U, 16383U, 16384U}) {
      const TestFolder folder;
      const std::string filler(before, 'x');
      const std::string path = folder.Add("f", filler + c.bytes);
      const auto text = OpenStream(path.c_str(), "r");
      ASSERT_NE(text, nullptr);
      EXPECT_EQ(ReadAll(text.get()), filler + c.text) << c.what << " behind " << before;
      EXPECT_TRUE(text->AtEnd()) << c.what;
      EXPECT_FALSE(text->HasError()) << c.what;
      EXPECT_EQ(text->ReadByte(), -1) << c.what;
      const auto binary = OpenStream(path.c_str(), "rb");
      ASSERT_NE(binary, nullptr);
      EXPECT_EQ(ReadAll(binary.get()), filler + c.bytes) << c.what;
    }
  }
}

TEST(TextStream, ReadsLinesInPieces) {
  const TestFolder folder;
  const std::string path = folder.Add("f", "ab\r\ncdefgh\r\n\nlast");
  const auto stream = OpenStream(path.c_str(), "r");
  ASSERT_NE(stream, nullptr);
  EXPECT_EQ(ReadLines(stream.get(), 5),
            (std::vector<std::string>{"ab\n", "cdef", "gh\n", "\n", "last"}));
  EXPECT_TRUE(stream->AtEnd());
  char untouched[] = "untouched";
  EXPECT_FALSE(stream->ReadLine(untouched, sizeof untouched));
  EXPECT_STREQ(untouched, "untouched");
}

TEST(TextStream, KnowsItsPlaceWhateverEndsTheLines) {
  for (const std::string end : {"\n", "\r\n"}) {
    const TestFolder folder;
    std::string bytes;
    for (int i = 0; i < 3000; ++i) bytes += "line " + std::to_string(i) + end;
    const std::string path = folder.Add("f", bytes);
    const auto stream = OpenStream(path.c_str(), "r");
    ASSERT_NE(stream, nullptr);
    char line[40];
    std::vector<int64_t> places;
    for (int i = 0; i < 3000; ++i) {
      places.push_back(stream->Position());
      ASSERT_TRUE(stream->ReadLine(line, sizeof line));
    }
    EXPECT_EQ(places[2999], static_cast<int64_t>(bytes.rfind("line")));
    EXPECT_EQ(ReadAll(stream.get()), "");
    ASSERT_TRUE(stream->Seek(places[1234]));
    EXPECT_FALSE(stream->AtEnd());
    ASSERT_TRUE(stream->ReadLine(line, sizeof line));
    EXPECT_STREQ(line, "line 1234\n");
  }
}

TEST(TextStream, WritesLineEnds) {
  const TestFolder folder;
  const std::string path = folder / "f";
  const std::string longLine(20000, 'l');
  const auto stream = OpenStream(path.c_str(), "w");
  ASSERT_NE(stream, nullptr);
  std::string expected;
  for (const std::string& text :
       {std::string("a\nb\r\nc"), longLine + "\n", std::string("\n\n"), std::string("\x1A\0", 2)}) {
    EXPECT_EQ(stream->Write(text.data(), text.size()), text.size());
    for (const char c : text) expected += c == '\n' ? "\r\n" : std::string(1, c);
    EXPECT_EQ(stream->Position(), static_cast<int64_t>(expected.size()));
  }
  EXPECT_TRUE(stream->Close());
  EXPECT_TRUE(stream->Close());
  EXPECT_EQ(ReadFile(path), expected);
}

TEST(Stream, OpensByItsMode) {
  const struct {
    const char* mode;
    bool makes;          // a file that is missing
    const char* reads;   // of "old\r\n" at once, "-" when it cannot
    const char* leaves;  // after writing "N\n" behind that, or alone; "-" when it cannot
  } cases[] = {
      {"r", false, "old\n", "-"},
      {"rb", false, "old\r\n", "-"},
      {"r+", false, "old\n", "old\r\nN\r\n"},
      {"rb+", false, "old\r\n", "old\r\nN\n"},
      {"r+b", false, "old\r\n", "old\r\nN\n"},
      {"w", true, "-", "N\r\n"},
      {"wb", true, "-", "N\n"},
      {"w+", true, "", "N\r\n"},
      {"wb+", true, "", "N\n"},
      {"a", true, "-", "old\r\nN\r\n"},
      {"ab", true, "-", "old\r\nN\n"},
      {"a+", true, "old\n", "old\r\nN\r\n"},
  };
  for (const auto& c : cases) {
    const TestFolder folder;
    EXPECT_EQ(OpenStream((folder / "new").c_str(), c.mode) != nullptr, c.makes) << c.mode;
    EXPECT_EQ(std::filesystem::exists(folder / "new"), c.makes) << c.mode;

    const std::string path = folder.Add("f", "old\r\n");
    auto stream = OpenStream(path.c_str(), c.mode);
    ASSERT_NE(stream, nullptr) << c.mode;
    if (c.reads != std::string("-")) {
      EXPECT_EQ(ReadAll(stream.get()), c.reads) << c.mode;
      EXPECT_FALSE(stream->HasError()) << c.mode;
    } else {
      EXPECT_EQ(stream->ReadByte(), -1) << c.mode;
      EXPECT_TRUE(stream->HasError()) << c.mode;
      stream = OpenStream(path.c_str(), c.mode);
      ASSERT_NE(stream, nullptr) << c.mode;
    }
    const bool written = stream->Write("N\n", 2) == 2 && stream->Flush();
    EXPECT_EQ(written, c.leaves != std::string("-")) << c.mode;
    EXPECT_EQ(stream->HasError(), !written) << c.mode;
    stream.reset();
    EXPECT_EQ(ReadFile(path), written ? c.leaves : "old\r\n") << c.mode;
  }
}

TEST(Stream, IsNotOpenedForOtherModesNorForDirectories) {
  const TestFolder folder;
  const std::string path = folder.Add("f", "old");
  for (const char* mode : {"", "x", "rw", "rt", "r b", "+r", "R", "wx"}) {
    EXPECT_EQ(OpenStream(path.c_str(), mode), nullptr) << mode;
  }
  for (const char* mode : {"r", "w", "a+"}) {
    EXPECT_EQ(OpenStream(folder.Path().string().c_str(), mode), nullptr) << mode;
    EXPECT_EQ(OpenStream((folder / "none/f").c_str(), mode), nullptr) << mode;
    EXPECT_EQ(OpenStream("", mode), nullptr) << mode;
    EXPECT_EQ(OpenStream(nullptr, mode), nullptr) << mode;
  }
  EXPECT_EQ(ReadFile(path), "old");
}

TEST(Stream, TurnsFromReadingToWritingAndBack) {
  for (const bool text : {true, false}) {
    const TestFolder folder;
    const std::string path = folder.Add("f", "abc\r\ndef\r\nghi");
    const auto stream = OpenStream(path.c_str(), text ? "r+" : "rb+");
    ASSERT_NE(stream, nullptr);
    char line[40];
    ASSERT_TRUE(stream->ReadLine(line, sizeof line));
    EXPECT_STREQ(line, text ? "abc\n" : "abc\r\n");
    EXPECT_EQ(stream->Write("XY", 2), 2U);
    EXPECT_EQ(stream->ReadByte(), 'f');
    EXPECT_EQ(stream->Position(), 8);
    EXPECT_TRUE(stream->Seek(0));
    EXPECT_EQ(ReadAll(stream.get()), text ? "abc\nXYf\nghi" : "abc\r\nXYf\r\nghi");
    EXPECT_TRUE(stream->Close());
    EXPECT_EQ(ReadFile(path), "abc\r\nXYf\r\nghi");
  }
}

TEST(TextStream, WritesWhereALoneCarriageReturnWasRead) {
  const TestFolder folder;
  const std::string path = folder.Add("f", "a\rbc");
  const auto stream = OpenStream(path.c_str(), "r+");
  ASSERT_NE(stream, nullptr);
  EXPECT_EQ(stream->ReadByte(), 'a');
  EXPECT_EQ(stream->ReadByte(), '\r');
  EXPECT_EQ(stream->Position(), 2);
  EXPECT_EQ(stream->Write("X", 1), 1U);
  EXPECT_TRUE(stream->Close());
  EXPECT_EQ(ReadFile(path), "a\rXc");
}

TEST(TextStream, LeavesAnEndOfTextInAFileThatIsOnlyOpened) {
  for (const char* mode : {"r", "r+", "a+"}) {
    const TestFolder folder;
    const std::string path = folder.Add("f", "text\r\n\x1A");
    const auto stream = OpenStream(path.c_str(), mode);
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(ReadAll(stream.get()), "text\n");
    EXPECT_TRUE(stream->Close());
    EXPECT_EQ(ReadFile(path), "text\r\n\x1A") << mode;
  }
}

TEST(Stream, LetsOthersReadAndWriteTheFile) {
  const TestFolder folder;
  const std::string path = folder / "f";
  const auto writer = OpenStream(path.c_str(), "wb");
  const auto appender = OpenStream(path.c_str(), "ab");
  const auto reader = OpenStream(path.c_str(), "rb");
  ASSERT_NE(writer, nullptr);
  ASSERT_NE(appender, nullptr);
  ASSERT_NE(reader, nullptr);
  EXPECT_EQ(writer->Write("one", 3), 3U);
  EXPECT_TRUE(writer->Flush());
  EXPECT_EQ(appender->Write("two", 3), 3U);
  EXPECT_EQ(appender->Position(), 6);
  EXPECT_EQ(ReadAll(reader.get()), "onetwo");
}

}  // namespace
