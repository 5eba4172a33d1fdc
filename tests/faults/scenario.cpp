#include "faults/scenario.h"

#include <algorithm>
#include <cstdio>
#include <iterator>

namespace hvtest {

const Family Families[7] = {
    {"General", GeneralScenarios},
    {"Jobs", JobScenarios},
    {"Configuration", ConfigurationScenarios},
    {"Fonts", FontScenarios},
    {"Conversion", ConversionScenarios},
    {"Macros", MacroScenarios},
    {"RepliesAndArchives", ReplyAndArchiveScenarios},
};

const char* Run::Path(const char* name) {
  char* const path = paths_[nextPath_++ % std::size(paths_)];
  std::snprintf(path, sizeof paths_[0], "%s%s%s", folder_, *name == '\0' ? "" : "/", name);
  return path;
}

const char* Run::DrivePath(const char* name) {
  char* const path = paths_[nextPath_++ % std::size(paths_)];
  std::snprintf(path, sizeof paths_[0], "%s%s/%s", folder_[1] == ':' ? "" : "c:", folder_, name);
  return path;
}

bool Run::Expect(int64_t result, int64_t success, int64_t noMemory,
                 std::initializer_list<int64_t> others) {
  Note(result);
  if (result == success) return true;
  succeeded_ = false;
  const bool other =
      seam_ == Seam::System && std::find(others.begin(), others.end(), result) != others.end();
  if (result != noMemory && !other && *unexpected_ == '\0') {
    std::snprintf(unexpected_, sizeof unexpected_, "%lld behind \"%.30s\"",
                  static_cast<long long>(result), course_);
  }
  return false;
}

void Run::Note(int64_t number) {
  char text[24];
  std::snprintf(text, sizeof text, "%lld", static_cast<long long>(number));
  Note(text);
}

void Run::Note(const char* text) {
  length_ = std::min(length_, sizeof course_ - 1);
  length_ += static_cast<std::size_t>(
      std::snprintf(course_ + length_, sizeof course_ - length_, "%s ", text));
}

}  // namespace hvtest
