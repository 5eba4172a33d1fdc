// Damaged forms of what the library reads, and how a reader meets them.
#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <map>
#include <string>
#include <vector>

namespace hvtest {

// A number of 2 or 4 bytes and where it stands.
struct NumberField {
  std::size_t offset;
  std::size_t width;
  bool highByteFirst;
};
using NumberFields = std::vector<NumberField>;

NumberFields operator+(NumberFields fields, const NumberFields& more);

// The numbers of a record at an offset, by the table of its format.
template <typename Row, std::size_t Count>
NumberFields NumbersOf(const Row (&table)[Count], std::size_t at) {
  NumberFields numbers;
  for (const Row& row : table) {
    const bool isNumber = row.width == 2 || row.width == 4;
    const bool highByteFirst = row.order == decltype(row.order)::Big;
    if (isNumber) numbers.push_back({at + row.offset, row.width, highByteFirst});
  }
  return numbers;
}

// The numbers of a record of which all fields have these widths, in their order.
enum class Order { LowFirst, HighFirst };
NumberFields Numbers(Order order, std::size_t at, std::initializer_list<std::size_t> widths);

// A number at each place of a form that says itself where its numbers stand.
NumberFields NumbersAnywhere(Order order, std::size_t from, std::size_t to, std::size_t width);

// Reads damaged bytes and looks at the result. Tells whether they were read, not refused.
using DamagedReader = std::function<bool(const std::string& damaged)>;

// Has the bytes of a format read as they are, cut at each length, with each byte set to 00, FF, one
// more, one less and the marks (bytes that mean something to the format), and with each number at
// its limits; of long ones a part of the cuts and bytes. They are put into the file for the reader,
// if there is one; the others lie beside it. The current folder is one that holds these files
// alone, and holds no others afterwards. Prints how many damaged forms were met.
void MeetDamage(const std::string& name, const std::string& bytes, const NumberFields& numbers,
                const DamagedReader& reader, const std::string& marks = "",
                const std::string& file = "",
                const std::map<std::string, std::string>& others = {});

// Fails the test unless the code is one of these. Tells whether it is the first one.
bool ExpectOneOf(int64_t code, std::initializer_list<int64_t> codes);

// Puts a new file in the place of the one before. Emptying that one would make some file systems
// write it out at once.
void Replace(const std::string& file, const std::string& bytes);

}  // namespace hvtest
