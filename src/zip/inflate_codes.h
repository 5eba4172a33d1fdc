// The alphabets of deflated data (RFC 1951, section 3.2.5) and the tables made of them.
#pragma once

#include <array>
#include <cstdint>

#include "zip/prefix_code.h"

namespace hv {

constexpr std::size_t LiteralLengthCount = 288;
constexpr std::size_t DistanceCodeCount = 32;
constexpr std::size_t CodeLengthCount = 19;
constexpr std::size_t EndOfBlock = 256;

constexpr unsigned LiteralLengthRootBits = 11;
constexpr unsigned DistanceRootBits = 9;
constexpr unsigned CodeLengthRootBits = 7;
constexpr unsigned MaxDeflateBits = 15;

struct InflateTables {
  std::array<uint32_t, PrefixTableSize(LiteralLengthCount, LiteralLengthRootBits, MaxDeflateBits)>
      literalLengths;
  std::array<uint32_t, PrefixTableSize(DistanceCodeCount, DistanceRootBits, MaxDeflateBits)>
      distances;
};

// Bases and extra bits in the order of the printed tables.
struct CodeRange {
  uint16_t base;
  uint8_t extraBits;
};

// Codes 257 to 285.
constexpr CodeRange LengthRanges[] = {
    {3, 0},  {4, 0},  {5, 0},  {6, 0},   {7, 0},   {8, 0},   {9, 0},   {10, 0},  {11, 1},  {13, 1},
    {15, 1}, {17, 1}, {19, 2}, {23, 2},  {27, 2},  {31, 2},  {35, 3},  {43, 3},  {51, 3},  {59, 3},
    {67, 4}, {83, 4}, {99, 4}, {115, 4}, {131, 5}, {163, 5}, {195, 5}, {227, 5}, {258, 0},
};

// Codes 0 to 29.
constexpr CodeRange DistanceRanges[] = {
    {1, 0},     {2, 0},     {3, 0},     {4, 0},      {5, 1},      {7, 1},
    {9, 2},     {13, 2},    {17, 3},    {25, 3},     {33, 4},     {49, 4},
    {65, 5},    {97, 5},    {129, 6},   {193, 6},    {257, 7},    {385, 7},
    {513, 8},   {769, 8},   {1025, 9},  {1537, 9},   {2049, 10},  {3073, 10},
    {4097, 11}, {6145, 11}, {8193, 12}, {12289, 12}, {16385, 13}, {24577, 13},
};

// The code lengths of the code length code come in this order.
constexpr uint8_t CodeLengthOrder[CodeLengthCount] = {16, 17, 18, 0, 8,  7, 9,  6, 10, 5,
                                                      11, 4,  12, 3, 13, 2, 14, 1, 15};

constexpr std::array<uint32_t, LiteralLengthCount> MakeLiteralLengthSymbols() {
  std::array<uint32_t, LiteralLengthCount> symbols = {};
  for (uint32_t i = 0; i < EndOfBlock; ++i) symbols[i] = PrefixSymbol(i) | PrefixLiteral;
  symbols[EndOfBlock] = PrefixEnd;
  std::size_t code = EndOfBlock + 1;
  for (const CodeRange& range : LengthRanges) {
    symbols[code++] = PrefixSymbol(range.base, range.extraBits);
  }
  while (code < symbols.size()) symbols[code++] = PrefixInvalid;
  return symbols;
}

constexpr std::array<uint32_t, DistanceCodeCount> MakeDistanceSymbols() {
  std::array<uint32_t, DistanceCodeCount> symbols = {};
  std::size_t code = 0;
  for (const CodeRange& range : DistanceRanges) {
    symbols[code++] = PrefixSymbol(range.base, range.extraBits);
  }
  while (code < symbols.size()) symbols[code++] = PrefixInvalid;
  return symbols;
}

constexpr std::array<uint32_t, CodeLengthCount> MakeCodeLengthSymbols() {
  std::array<uint32_t, CodeLengthCount> symbols = {};
  for (uint32_t i = 0; i < symbols.size(); ++i) symbols[i] = PrefixSymbol(i);
  return symbols;
}

constexpr std::array<uint32_t, LiteralLengthCount> LiteralLengthSymbols =
    MakeLiteralLengthSymbols();
constexpr std::array<uint32_t, DistanceCodeCount> DistanceSymbols = MakeDistanceSymbols();
constexpr std::array<uint32_t, CodeLengthCount> CodeLengthSymbols = MakeCodeLengthSymbols();

}  // namespace hv
