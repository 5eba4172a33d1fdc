// A folder of a test's own, and files in it.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace hvtest {

// The bytes of a file; a missing file fails the test.
std::string ReadFile(const std::filesystem::path& path);
void WriteFile(const std::filesystem::path& path, std::string_view bytes);

// A folder that is removed, with all in it, at the end.
class TestFolder {
 public:
  explicit TestFolder(const std::filesystem::path& parent = std::filesystem::temp_directory_path());
  TestFolder(const TestFolder&) = delete;
  TestFolder& operator=(const TestFolder&) = delete;
  ~TestFolder();

  const std::filesystem::path& Path() const { return path_; }
  // The full name of an entry, as the exports take it.
  std::string operator/(std::string_view name) const { return (path_ / name).string(); }
  // Makes a file and returns its full name.
  std::string Add(std::string_view name, std::string_view bytes) const;
  // The names of the entries, sorted.
  std::vector<std::string> Names() const;

 private:
  std::filesystem::path path_;
};

// Makes a folder the current one until the end of the scope.
class ScopedCurrentFolder {
 public:
  explicit ScopedCurrentFolder(const std::filesystem::path& folder);
  ScopedCurrentFolder(const ScopedCurrentFolder&) = delete;
  ScopedCurrentFolder& operator=(const ScopedCurrentFolder&) = delete;
  ~ScopedCurrentFolder();

 private:
  std::filesystem::path before_;
};

// Sets an environment variable until the end of the scope; an empty value unsets it.
class ScopedVariable {
 public:
  ScopedVariable(const std::string& name, const std::string& value);
  ScopedVariable(const ScopedVariable&) = delete;
  ScopedVariable& operator=(const ScopedVariable&) = delete;
  ~ScopedVariable();

 private:
  std::string name_;
  std::string before_;
};

// Sets or, with an empty value, unsets an environment variable.
void SetVariable(const std::string& name, const std::string& value);

// The number of descriptors (on Windows: handles) that this process has open.
std::size_t OpenHandleCount();

}  // namespace hvtest
