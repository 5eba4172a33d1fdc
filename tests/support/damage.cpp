#include "support/damage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>

#include "support/test_folder.h"
#include "support/zip_run.h"

namespace hvtest {
namespace {

// Behind so many bytes, one in a few is enough.
constexpr std::size_t Fine = 400;
constexpr std::size_t Coarse = 7;

std::size_t Next(std::size_t at) {
  return at + (at < Fine ? 1 : Coarse);
}

using Visit = std::function<void(const std::string& damaged, const std::string& what)>;

void ForEachDamage(const std::string& bytes, const NumberFields& numbers, const std::string& marks,
                   const Visit& visit) {
  for (std::size_t length = 0; length < bytes.size(); length = Next(length)) {
    visit(bytes.substr(0, length), "cut to " + std::to_string(length));
  }
  std::string damaged = bytes;
  for (std::size_t at = 0; at < bytes.size(); at = Next(at)) {
    const char old = bytes[at];
    const std::string changes = {'\0', '\xFF', static_cast<char>(old + 1),
                                 static_cast<char>(old - 1)};
    for (const char change : changes + marks) {
      if (change == old) continue;
      damaged[at] = change;
      visit(damaged, "byte " + std::to_string(at) + " is " + std::to_string(change & 0xFF));
    }
    damaged[at] = old;
  }
  for (const NumberField& field : numbers) {
    if (field.offset + field.width > bytes.size()) {
      ADD_FAILURE() << "no number at " << field.offset;
      return;
    }
    // All bits but the highest one, or that one alone, and all or none.
    for (const auto& [highest, rest] : {std::pair{0x7F, 0xFF}, {0x80, 0}, {0xFF, 0xFF}, {0, 0}}) {
      std::string value(field.width, static_cast<char>(rest));
      (field.highByteFirst ? value.front() : value.back()) = static_cast<char>(highest);
      damaged.replace(field.offset, field.width, value);
      visit(damaged, "number " + std::to_string(field.offset) + " from " + std::to_string(highest));
    }
    damaged = bytes;
  }
}

// Thousands of small files are made in memory where the system has a folder for that: a disk may be
// busy with other work.
std::filesystem::path MemoryFolder() {
  const std::filesystem::path folder = "/dev/shm";
  std::error_code ignored;
  return std::filesystem::is_directory(folder, ignored) ? folder
                                                        : std::filesystem::temp_directory_path();
}

}  // namespace

NumberFields operator+(NumberFields fields, const NumberFields& more) {
  fields.insert(fields.end(), more.begin(), more.end());
  return fields;
}

NumberFields Numbers(Order order, std::size_t at, std::initializer_list<std::size_t> widths) {
  NumberFields numbers;
  for (const std::size_t width : widths) {
    if (width == 2 || width == 4) numbers.push_back({at, width, order == Order::HighFirst});
    at += width;
  }
  return numbers;
}

NumberFields NumbersAnywhere(Order order, std::size_t from, std::size_t to, std::size_t width) {
  NumberFields numbers;
  for (; from + width <= to; ++from) numbers.push_back({from, width, order == Order::HighFirst});
  return numbers;
}

bool ExpectOneOf(int64_t code, std::initializer_list<int64_t> codes) {
  EXPECT_NE(std::find(codes.begin(), codes.end(), code), codes.end()) << code;
  return code == *codes.begin();
}

void Replace(const std::string& file, const std::string& bytes) {
  std::filesystem::remove(file);
  WriteFile(file, bytes);
}

void MeetDamage(const std::string& name, const std::string& bytes, const NumberFields& numbers,
                const DamagedReader& reader, const std::string& marks, const std::string& file,
                const std::map<std::string, std::string>& others) {
  SCOPED_TRACE(name);
  const TestFolder folder(MemoryFolder());
  const ScopedCurrentFolder current(folder.Path());
  for (const auto& [other, content] : others) {
    std::filesystem::create_directories((folder.Path() / other).parent_path());
    WriteFile(other, content);
  }
  const auto read = [&](const std::string& damaged) {
    if (!file.empty()) Replace(file, damaged);
    return reader(damaged);
  };
  EXPECT_TRUE(read(bytes)) << "undamaged";
  const std::vector<std::string> names = folder.Names();
  const std::size_t handles = OpenHandleCount();
  std::size_t number = 0;
  std::size_t met = 0;
  std::size_t readable = 0;
  ForEachDamage(bytes, numbers, marks, [&](const std::string& damaged, const std::string& what) {
    // The first failure tells enough.
    if (number++ % SweepStep() != 0 || testing::Test::HasFailure()) return;
    SCOPED_TRACE(what);
    ++met;
    if (read(damaged)) ++readable;
    EXPECT_EQ(folder.Names(), names);
  });
  EXPECT_EQ(OpenHandleCount(), handles);
  std::printf("[  damage  ] %-30s %5u read, %5u refused\n", name.c_str(),
              static_cast<unsigned>(readable), static_cast<unsigned>(met - readable));
}

}  // namespace hvtest
