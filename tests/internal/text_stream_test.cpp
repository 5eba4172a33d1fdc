// Streams as the C runtime of Windows has them: modes, text rules, places in a file.

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "platform/stream.h"
#include "support/test_folder.h"

namespace {

using hv::platform::OpenStream;
using hv::platform::Stream;
using namespace hvtest;

std::string ReadAll(const std::unique_ptr<Stream>& stream) {
  std::string text;
  char piece[1000];
  while (const std::size_t got = stream->Read(piece, sizeof piece)) text.append(piece, got);
  return text;
}

std::string ReadLine(const std::unique_ptr<Stream>& stream) {
  char line[40] = "";
  EXPECT_TRUE(stream->ReadLine(line, sizeof line));
  return line;
}

class TextStream : public testing::Test {
 protected:
  // A file of these bytes, opened.
  std::unique_ptr<Stream> Open(const std::string& bytes, const char* mode) const {
    folder_.Add("f", bytes);
    return Open(mode);
  }
  std::unique_ptr<Stream> Open(const char* mode) const {
    auto stream = OpenStream(path_.c_str(), mode);
    EXPECT_NE(stream, nullptr) << mode;
    return stream;
  }

  const TestFolder folder_;
  const std::string path_ = folder_ / "f";
};

TEST_F(TextStream, ReadsLineEndsAndTheEndOfText) {
  const std::pair<std::string, std::string> cases[] = {
      {"", ""},
      {"a\r\n\r\nb\r\n", "a\n\nb\n"},
      {"a\rb\r\r\nc\n\rd", "a\rb\r\nc\n\rd"},
      {"a\r", "a\r"},
      {"a\n\x1A\nb\n", "a\n"},
      {"a\r\x1A\n", "a\r"},
      {std::string("a\0b\r\n\0", 6), std::string("a\0b\n\0", 5)},
  };
  for (const auto& [bytes, expected] : cases) {
    // At the borders of every buffer on the way, too.
    for (const std::size_t before : {0U, 4094U, 4095U, 4096U, 16382U, 16383U, 16384U}) {
      const std::string filler(before, 'x');
      const auto text = Open(filler + bytes, "r");
      EXPECT_EQ(ReadAll(text), filler + expected) << bytes << " behind " << before;
      EXPECT_TRUE(text->AtEnd()) << bytes;
      EXPECT_FALSE(text->HasError()) << bytes;
      EXPECT_EQ(text->ReadByte(), -1) << bytes;
      EXPECT_EQ(ReadAll(Open("rb")), filler + bytes);
    }
  }
}

TEST_F(TextStream, KnowsItsPlaceWhateverEndsTheLines) {
  for (const std::string end : {"\n", "\r\n"}) {
    std::string bytes;
    for (int i = 0; i < 3000; ++i) bytes += "line " + std::to_string(i) + end;
    const auto stream = Open(bytes, "r");
    std::vector<int64_t> places;
    for (int i = 0; i < 3000; ++i) {
      places.push_back(stream->Position());
      ASSERT_EQ(ReadLine(stream), "line " + std::to_string(i) + "\n");
    }
    EXPECT_EQ(places[2999], static_cast<int64_t>(bytes.rfind("line")));
    EXPECT_EQ(ReadAll(stream), "");
    ASSERT_TRUE(stream->Seek(places[1234]));
    EXPECT_FALSE(stream->AtEnd());
    EXPECT_EQ(ReadLine(stream), "line 1234\n");
  }
}

TEST_F(TextStream, WritesLineEnds) {
  const auto stream = Open("w");
  std::string expected;
  for (const std::string& text : {std::string("a\nb\r\nc"), std::string(20000, 'l') + "\n",
                                  std::string("\n\n"), std::string("\x1A\0", 2)}) {
    EXPECT_EQ(stream->Write(text.data(), text.size()), text.size());
    for (const char c : text) expected += c == '\n' ? "\r\n" : std::string(1, c);
    EXPECT_EQ(stream->Position(), static_cast<int64_t>(expected.size()));
  }
  EXPECT_TRUE(stream->Close());
  EXPECT_TRUE(stream->Close());
  EXPECT_EQ(ReadFile(path_), expected);
}

TEST_F(TextStream, OpensByItsMode) {
  const std::string cannot = "-";
  // makes: a file that is missing
  // reads: of "old\r\n" at once
  // leaves: after writing "N\n" behind that, or alone
  const std::tuple<const char*, bool, std::string, std::string> cases[] = {
      {"r", false, "old\n", cannot},
      {"rb", false, "old\r\n", cannot},
      {"r+", false, "old\n", "old\r\nN\r\n"},
      {"rb+", false, "old\r\n", "old\r\nN\n"},
      {"w", true, cannot, "N\r\n"},
      {"wb", true, cannot, "N\n"},
      {"w+", true, "", "N\r\n"},
      {"a", true, cannot, "old\r\nN\r\n"},
      {"ab", true, cannot, "old\r\nN\n"},
      {"a+", true, "old\n", "old\r\nN\r\n"},
  };
  for (const auto& [mode, makes, reads, leaves] : cases) {
    std::filesystem::remove(path_);
    EXPECT_EQ(OpenStream(path_.c_str(), mode) != nullptr, makes) << mode;
    EXPECT_EQ(std::filesystem::exists(path_), makes) << mode;

    auto stream = Open("old\r\n", mode);
    if (reads != cannot) {
      EXPECT_EQ(ReadAll(stream), reads) << mode;
      EXPECT_FALSE(stream->HasError()) << mode;
    } else {
      EXPECT_EQ(stream->ReadByte(), -1) << mode;
      EXPECT_TRUE(stream->HasError()) << mode;
      stream = Open(mode);
    }
    const bool written = stream->Write("N\n", 2) == 2 && stream->Flush();
    EXPECT_EQ(written, leaves != cannot) << mode;
    EXPECT_EQ(stream->HasError(), !written) << mode;
    stream.reset();
    EXPECT_EQ(ReadFile(path_), written ? leaves : "old\r\n") << mode;
  }
}

TEST_F(TextStream, IsNotOpenedForOtherModesNorForDirectories) {
  folder_.Add("f", "old");
  for (const char* mode : {"", "x", "rw", "rt", "r b", "+r", "R", "wx"}) {
    EXPECT_EQ(OpenStream(path_.c_str(), mode), nullptr) << mode;
  }
  for (const char* mode : {"r", "w", "a+"}) {
    EXPECT_EQ(OpenStream(folder_.Path().string().c_str(), mode), nullptr) << mode;
    EXPECT_EQ(OpenStream((folder_ / "none/f").c_str(), mode), nullptr) << mode;
    EXPECT_EQ(OpenStream("", mode), nullptr) << mode;
    EXPECT_EQ(OpenStream(nullptr, mode), nullptr) << mode;
  }
  EXPECT_EQ(ReadFile(path_), "old");
}

TEST_F(TextStream, TurnsFromReadingToWritingAndBack) {
  for (const bool text : {true, false}) {
    const auto stream = Open("abc\r\ndef\r\nghi", text ? "r+" : "rb+");
    EXPECT_EQ(ReadLine(stream), text ? "abc\n" : "abc\r\n");
    EXPECT_EQ(stream->Write("XY", 2), 2U);
    EXPECT_EQ(stream->ReadByte(), 'f');
    EXPECT_EQ(stream->Position(), 8);
    EXPECT_TRUE(stream->Seek(0));
    EXPECT_EQ(ReadAll(stream), text ? "abc\nXYf\nghi" : "abc\r\nXYf\r\nghi");
    EXPECT_TRUE(stream->Close());
    EXPECT_EQ(ReadFile(path_), "abc\r\nXYf\r\nghi");
  }
  // Where a lone carriage return was read.
  const auto stream = Open("a\rbc", "r+");
  EXPECT_EQ(stream->ReadByte(), 'a');
  EXPECT_EQ(stream->ReadByte(), '\r');
  EXPECT_EQ(stream->Position(), 2);
  EXPECT_EQ(stream->Write("X", 1), 1U);
  EXPECT_TRUE(stream->Close());
  EXPECT_EQ(ReadFile(path_), "a\rXc");
}

TEST_F(TextStream, LetsOthersReadAndWriteTheFile) {
  const auto writer = Open("wb");
  const auto appender = Open("ab");
  const auto reader = Open("rb");
  EXPECT_EQ(writer->Write("one", 3), 3U);
  EXPECT_TRUE(writer->Flush());
  EXPECT_EQ(appender->Write("two", 3), 3U);
  EXPECT_EQ(appender->Position(), 6);
  EXPECT_EQ(ReadAll(reader), "onetwo");
}

}  // namespace
