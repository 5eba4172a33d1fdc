// The use of a communication library that records its calls (see fake_nbx/fake_nbx.cpp).
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "support/test_folder.h"

namespace hvtest {

// Makes the communication library in a folder the one that is found, until the end of the scope.
// In a folder without it, none is found.
class ScopedNbxFolder {
 public:
  explicit ScopedNbxFolder(const std::string& folder);
  ScopedNbxFolder(const ScopedNbxFolder&) = delete;
  ScopedNbxFolder& operator=(const ScopedNbxFolder&) = delete;
  ~ScopedNbxFolder();

  // Whether the process holds the library loaded.
  bool IsLoaded() const;

 private:
  std::string before_;  // what the system needs to go back
};

// The names that the system gives the communication library; empty when they do not fit or are not
// known.
std::string ComputerNameOfSystem();
std::string UserNameOfSystem();

class FakeNbx {
 public:
  // `folder` is "fake_nbx" for the whole library, "fake_nbx_incomplete" for one that lacks a
  // function.
  explicit FakeNbx(const std::string& buildFolder, const std::string& folder = "fake_nbx");

  // The calls since the last question, each as its name and its arguments; bytes are in
  // hexadecimal.
  std::vector<std::string> TakeCalls();
  // Lets a program of another user record its calls, too.
  void LetOthersWrite() const;
  bool IsLoaded() const { return found_.IsLoaded(); }

 private:
  TestFolder log_;
  ScopedVariable logName_;
  ScopedNbxFolder found_;
};

// Upper-case hexadecimal digits, two a byte.
std::string ToHex(const std::string& bytes);

// What the library is given at the start of a document.
std::string DocumentBlock(const std::string& computer, const std::string& user,
                          const std::string& job);

}  // namespace hvtest
