// The tags of the PCL XL protocol, class 1.1: what each byte of a stream is, and the names of
// its operators. Published source: the PCL XL Feature Reference.
#pragma once

#include <array>
#include <cstdint>

namespace hv {

// What a byte is where an operator, a value or an attribute may begin. The values are those of the
// grid in tags.cpp.
enum class PclXlClass : char {
  Unknown = '.',
  Blank = '_',
  Escape = 'e',  // ends the stream: what follows is the printer's, not the job's
  Operator = 'o',
  Scalar = 's',     // one element
  Array = 'a',      // a length, itself a ubyte or uint16 with its tag, and so many elements
  Pair = 'p',       // two elements
  Box = 'b',        // four elements
  Attribute = 'A',  // the identifier of the value before it, in one byte
  Data = 'd',       // embedded data with their length in four bytes
  ShortData = 'D',  // the same with the length in one byte
  Refused = 'r',    // of the protocol, but not of the streams that are read here
};

PclXlClass PclXlClassOf(uint8_t tag);

// Tags that the readers know by name.
constexpr uint8_t PclXlBeginSession = 0x41;
constexpr uint8_t PclXlEndSession = 0x42;
constexpr uint8_t PclXlBeginPage = 0x43;
constexpr uint8_t PclXlEndPage = 0x44;
constexpr uint8_t PclXlBeginStream = 0x5B;
constexpr uint8_t PclXlExecStream = 0x5E;
constexpr uint8_t PclXlUbyte = 0xC0;
constexpr uint8_t PclXlUint16 = 0xC1;
constexpr uint8_t PclXlAttribute = 0xF8;
constexpr uint8_t PclXlData = 0xFA;
constexpr uint8_t PclXlShortData = 0xFB;

// Bytes of one element of the type of a scalar, array, pair or box: 1, 2 or 4.
constexpr unsigned PclXlElementSize(uint8_t tag) {
  constexpr uint8_t Sizes[8] = {1, 2, 4, 2, 4, 4, 0, 0};
  return Sizes[tag & 7];
}

// Elements of a scalar, pair or box.
constexpr unsigned PclXlElementCount(PclXlClass kind) {
  return kind == PclXlClass::Box ? 4 : kind == PclXlClass::Pair ? 2 : 1;
}

// Whether an operator, embedded data among them, may stand between pages, or on a page.
bool PclXlIsSessionOperator(uint8_t tag);
bool PclXlIsPageOperator(uint8_t tag);

// Where a value or an operator may begin on a page: the bytes of a scalar, pair or box, its tag among
// them; 1 for an operator that the page goes on behind, without data; 0 for every other byte.
extern const std::array<uint8_t, 256> PclXlPlainLengths;
constexpr unsigned PclXlMaxPlainLength = 1 + 4 * 4;

// The name of an operator ("BeginPage"), NULL for a byte that is none.
const char* PclXlOperatorName(uint8_t tag);

}  // namespace hv
