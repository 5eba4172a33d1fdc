#include "support/test_folder.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <random>

namespace hvtest {
namespace fs = std::filesystem;

std::string ReadFile(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file.is_open()) << path;
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void WriteFile(const fs::path& path, std::string_view bytes) {
  std::ofstream file(path, std::ios::binary);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  ASSERT_TRUE(file.flush()) << path;
}

TestFolder::TestFolder(const fs::path& parent) {
  std::random_device random;
  do {
    path_ = parent / ("hvtest" + std::to_string(random()));
  } while (!fs::create_directory(path_));
}

TestFolder::~TestFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

std::string TestFolder::Add(std::string_view name, std::string_view bytes) const {
  WriteFile(path_ / name, bytes);
  return *this / name;
}

std::vector<std::string> TestFolder::Names() const {
  std::vector<std::string> names;
  for (const fs::directory_entry& entry : fs::directory_iterator(path_)) {
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

ScopedCurrentFolder::ScopedCurrentFolder(const fs::path& folder) : before_(fs::current_path()) {
  fs::current_path(folder);
}

ScopedCurrentFolder::~ScopedCurrentFolder() {
  std::error_code ignored;
  fs::current_path(before_, ignored);
}

ScopedVariable::ScopedVariable(const std::string& name, const std::string& value) : name_(name) {
  const char* before = std::getenv(name.c_str());
  if (before != nullptr) before_ = before;
  SetVariable(name, value);
}

ScopedVariable::~ScopedVariable() {
  SetVariable(name_, before_);
}

}  // namespace hvtest
