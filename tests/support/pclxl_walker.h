// PCL XL streams taken apart by rules of the tests' own.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace hvtest {

struct PclXlOperator {
  std::size_t offset;  // of its first value
  std::size_t end;     // behind its data
  int tag;
  std::map<int, std::string> values;  // by attribute: the bytes of the value, without its tags
  std::string data;                   // embedded data that follow the operator
};

// The operators behind the header of a stream, up to its end or EndSession. A stream that is not in
// order fails the test, and gives the operators up to there.
std::vector<PclXlOperator> WalkPclXl(std::string_view stream);

// The stream that a converted job defines, header included, as its data blocks hold it.
std::string PclXlStreamBody(const std::vector<PclXlOperator>& operators);

}  // namespace hvtest
