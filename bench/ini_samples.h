// The INI files that are measured.
#pragma once

#include <filesystem>
#include <fstream>
#include <string>

namespace hvbench {

constexpr int LongFileLines = 100000;
constexpr int LinesPerSection = 50;
constexpr int LargeSectionKeys = 10000;

inline std::string KeyName(int number) {
  return "PrinterVariable" + std::to_string(number);
}

inline std::string TemporaryPath(const char* name) {
  return (std::filesystem::temp_directory_path() / name).string();
}

// A file that is there as long as the program runs.
class SampleFile {
 public:
  SampleFile(const char* name, int lines, int linesPerSection) : path_(TemporaryPath(name)) {
    std::ofstream file(path_, std::ios::binary);
    for (int i = 0; i < lines; ++i) {
      if (i % linesPerSection == 0) file << "[Section" << i / linesPerSection << "]\r\n";
      file << KeyName(i) << "=the value of number " << i << "\r\n";
    }
  }
  SampleFile(const SampleFile&) = delete;
  SampleFile& operator=(const SampleFile&) = delete;
  ~SampleFile() { std::filesystem::remove(path_); }
  const char* Path() const { return path_.c_str(); }

 private:
  std::string path_;
};

inline const SampleFile& LongFile() {
  static const SampleFile file("hvapi_bench_long.ini", LongFileLines, LinesPerSection);
  return file;
}

inline const SampleFile& LargeSection() {
  static const SampleFile file("hvapi_bench_section.ini", LargeSectionKeys, LargeSectionKeys);
  return file;
}

// Different keys of the large section, far from each other.
class KeyRow {
 public:
  std::string Next() {
    at_ = (at_ + 7919) % LargeSectionKeys;
    return KeyName(at_);
  }

 private:
  int at_ = 0;
};

}  // namespace hvbench
