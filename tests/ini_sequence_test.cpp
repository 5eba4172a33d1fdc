// Long random sequences of reads and edits, the same on an INI file and on a plain model of it.

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
#include <tuple>
#include <vector>

#include "hvapi.h"
#include "support/ini_handle.h"
#include "support/ini_model.h"
#include "support/test_folder.h"

namespace {

using namespace hvtest;

constexpr int Steps = 2000;

class Sequence {
 public:
  Sequence(uint32_t seed, const std::string& lineEnd, uint32_t mode)
      : random_(seed), mode_(mode), path_(folder_.Add("sequence.ini", FirstBytes(lineEnd))) {
    Open();
  }

  void Step() {
    const uint32_t what = Below(20);
    if (what < 6) return Write(&HvIniWrite, false);
    if (what < 9) return Write(&HvIniWriteAll, true);
    if (what < 12) return Delete();
    if (what < 15) return Read();
    if (what < 19) return Read2();
    if (OneIn(3)) Reopen();
  }

  void ExpectSame() {
    ASSERT_NE(ini_, nullptr);
    ASSERT_EQ(LinesOf(*ini_), model_->Lines());
    ASSERT_EQ(+ini_->maxLineLength, model_->MaxLineLength());
    ASSERT_EQ((ini_->flags & INI_DIRTY) != 0, model_->IsDirty());
  }

  // Closes both files, compares the bytes and opens them again.
  void Reopen() {
    const std::string before = ReadFile(path_);
    ini_.reset();
    ASSERT_EQ(ReadFile(path_), model_->IsDirty() ? model_->Bytes() : before);
    Open();
  }

 private:
  uint32_t Below(uint32_t limit) { return static_cast<uint32_t>(random_() % limit); }
  bool OneIn(uint32_t limit) { return Below(limit) == 0; }
  std::string Pick(const std::vector<std::string>& texts) {
    return texts[Below(static_cast<uint32_t>(texts.size()))];
  }

  void Open() {
    model_.emplace(ReadFile(path_), mode_ == INI_OPEN_READ);
    ini_.reset(HvIniOpen2(path_.c_str(), mode_));
  }

  std::string FirstBytes(const std::string& lineEnd) {
    std::string bytes;
    for (int i = 0; i < 120; ++i) {
      const uint32_t what = Below(8);
      if (what == 0) {
        bytes += "[" + Section() + "]";
      } else if (what == 1) {
        bytes += Pick({"", "  ", "; a comment", ";x = y", "stray", " [s]"});
      } else {
        bytes += Key() + Pick({"", " ", "   "}) + "=" + Value() + Pick({"", "  "});
      }
      bytes += lineEnd;
    }
    return bytes;
  }

  std::string Section() {
    return Pick({"s", "S", "Two words", "TWO WORDS", "t", "", "[odd", "a=]"});
  }
  // Few enough to meet again, enough to make an index grow.
  std::string Key() {
    if (OneIn(3)) return Pick({"n", "N"}) + std::to_string(Below(90));
    if (OneIn(30)) return Pick({"[a", "k=k", std::string(1018, 'L')});
    return Pick({"a", "A", "b", "key", "Key", "", "stray", "; a comment"});
  }
  std::string Value() {
    if (OneIn(40)) return std::string(1000 + Below(30), 'v');
    return Pick({"", "1", "2", "one", "ONE", "x=y", " padded", "]", "[s]"});
  }
  MaybeText Maybe(const std::string& text, uint32_t nullOneIn) {
    return OneIn(nullOneIn) ? MaybeText() : text;
  }
  static const char* Argument(const MaybeText& text) { return text ? text->c_str() : nullptr; }

  void Write(decltype(&HvIniWrite) write, bool besideOthers) {
    const std::string section = Section();
    const std::string key = Key();
    const std::string value = Value();
    EXPECT_EQ(write(ini_.get(), section.c_str(), key.c_str(), value.c_str()) != 0,
              model_->Write(section, key, value, besideOthers));
  }

  void Delete() {
    const std::string section = Section();
    const MaybeText key = Maybe(Key(), 8);
    const MaybeText value = Maybe(Value(), 2);
    EXPECT_EQ(HvIniDelete(ini_.get(), section.c_str(), Argument(key), Argument(value)), 1U);
    model_->Delete(section, key, value);
  }

  void Read() {
    const MaybeText section = Maybe(Section(), 2);
    const MaybeText key = Maybe(Key(), 2);
    EXPECT_EQ(HvIniRead(ini_.get(), Argument(section), Argument(key)),
              model_->Read(section, key).value_or(""));
  }

  void Read2() {
    const std::string section = Section();
    const std::string key = Key();
    const MaybeText defaultValue = Maybe(Value(), 2);
    const std::size_t size = 1 + Below(6);
    const IniModel::Copy expected = model_->Read2(section, key, defaultValue, size);
    std::string buffer(8, '#');
    uint32_t count = 99;
    EXPECT_EQ(HvIniRead2(ini_.get(), section.c_str(), key.c_str(), Argument(defaultValue),
                         buffer.data(), static_cast<uint32_t>(size), &count),
              expected.code);
    EXPECT_EQ(count, expected.text.size());
    std::string expectedBuffer = expected.text;
    if (expected.code == HV_OK) expectedBuffer += '\0';
    expectedBuffer.resize(buffer.size(), '#');
    EXPECT_EQ(buffer, expectedBuffer);
  }

  TestFolder folder_;
  std::mt19937 random_;  // the same numbers on every system
  uint32_t mode_;
  std::string path_;
  std::optional<IniModel> model_;
  OpenIni ini_;
};

TEST(IniSequence, AgreesWithTheModel) {
  const std::tuple<uint32_t, const char*, uint32_t> cases[] = {
      {1, "\n", INI_OPEN_UPDATE}, {2, "\r\n", INI_OPEN_UPDATE}, {3, "\r\n", INI_OPEN_READ},
      {4, "\n", INI_OPEN_READ},   {5, "\r\n", INI_OPEN_APPEND}, {6, "\n", INI_OPEN_APPEND},
  };
  for (const auto& [seed, lineEnd, mode] : cases) {
    Sequence sequence(seed, lineEnd, mode);
    for (int step = 0; step < Steps && !testing::Test::HasFailure(); ++step) {
      SCOPED_TRACE("seed " + std::to_string(seed) + ", step " + std::to_string(step));
      sequence.Step();
      sequence.ExpectSame();
    }
    sequence.Reopen();
  }
}

}  // namespace
