// Small complete uses of the exports, to be run while a service fails them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <map>
#include <string>
#include <vector>

namespace hvtest {

// What runs out in a sweep.
enum class Seam { Memory, System };

// The course of one run: it knows the folder that the scenario works in and takes down what the
// exports gave. It allocates nothing, so that only the library meets the failures.
class Run {
 public:
  Run(const std::string& folder, Seam seam) : folder_(folder.c_str()), seam_(seam) {}

  // The full name of an entry of the folder; valid until some further names were asked for. The
  // empty name is the folder.
  const char* Path(const char* name);
  // The same as a path that begins with a drive.
  const char* DrivePath(const char* name);

  // Takes down a result. It must be `success`, `noMemory` or, where the system fails, one of
  // `others`. Tells whether it is `success`.
  bool Expect(int64_t result, int64_t success, int64_t noMemory,
              std::initializer_list<int64_t> others = {});
  // Takes down a number or a text that an export gave.
  void Note(int64_t number);
  void Note(const char* text);

  bool Succeeded() const { return succeeded_; }
  // The first result that was none of those expected; empty when there was none.
  const char* Unexpected() const { return unexpected_; }
  const char* Course() const { return course_; }

 private:
  const char* folder_;
  Seam seam_;
  bool succeeded_ = true;
  char unexpected_[64] = "";
  char course_[4096] = "";
  std::size_t length_ = 0;
  char paths_[8][512] = {};
  std::size_t nextPath_ = 0;
};

using Files = std::map<std::string, std::string>;

struct Scenario {
  const char* name;
  const char* exports;  // that it uses, with blanks between them
  Files files;          // in the folder before; a name that ends with "/" is a directory
  std::function<void(Run&)> use;
  // The files that a failure may leave in part.
  std::vector<std::string> partial = {};
  // Whether success may be told, by the contract, although something is missing.
  bool maySkip = false;
};

// The scenarios of the families; all together they use every export.
std::vector<Scenario> GeneralScenarios();
std::vector<Scenario> JobScenarios();
std::vector<Scenario> ConfigurationScenarios();
std::vector<Scenario> FontScenarios();
std::vector<Scenario> ConversionScenarios();
std::vector<Scenario> MacroScenarios();
std::vector<Scenario> ReplyAndArchiveScenarios();

struct Family {
  const char* name;
  std::vector<Scenario> (*scenarios)();
};
extern const Family Families[7];

}  // namespace hvtest
