// What support addresses are made of: the two base addresses, topic words, and the numbers that the
// support site has for printer models, languages and systems.
#pragma once

#include <cstdint>

namespace hv {

constexpr const char* PlainBaseAddress = "https://support.example.com/NA";
constexpr const char* DispatchBaseAddress = "https://support.example.com/MD/?";

struct SupportTopic {
  const char* pathWord;      // of the plain form
  const char* dispatchWord;  // of the dispatch form
};

// By topic number, from 1.
constexpr SupportTopic SupportTopics[] = {
    {"drivers", "drivers"},            // 1
    {"firmware", "firmware"},          // 2
    {"homepage", "homepage"},          // 3
    {"fleetdesk", "fleetdesk"},        // 4
    {"registration", "registration"},  // 5
    {"supplies", "supplies"},          // 6
    {"techsupport", "support"},        // 7
    {"publications", "publications"},  // 8
};

// Printer numbers of model numbers. Models that are not listed have none.
struct ModelPrinter {
  int32_t model;
  int32_t printer;
};
constexpr ModelPrinter ModelPrinters[] = {
    {0, 8},  {1, 7},   {3, 4},   {4, 9},   {5, 6},   {6, 3},   {7, 5},   {8, 4},   {10, 1},
    {17, 2}, {18, 11}, {19, 11}, {20, 20}, {21, 21}, {22, 22}, {23, 23}, {24, 24}, {25, 1},
};
// From this model on the printer number is the model number.
constexpr int32_t FirstPlainModel = 26;

// Language codes of primary languages, the low 10 bits of a Windows language identifier.
struct LanguageCode {
  uint16_t primary;
  uint32_t code;
};
constexpr LanguageCode LanguageCodes[] = {
    {6, 5},    // Danish
    {7, 2},    // German
    {10, 4},   // Spanish
    {11, 9},   // Finnish
    {12, 1},   // French
    {16, 3},   // Italian
    {17, 12},  // Japanese
    {19, 7},   // Dutch
    {20, 6},   // Norwegian
    {21, 20},  // Polish
    {22, 21},  // Portuguese
    {25, 22},  // Russian
    {29, 8},   // Swedish
};
constexpr uint32_t OtherLanguageCode = 0;

// Chinese depends on the sublanguage.
constexpr uint16_t PrimaryChinese = 4;
constexpr uint16_t SublanguageSimplified = 2;
constexpr uint32_t SimplifiedChineseCode = 13;
constexpr uint32_t OtherChineseCode = 14;

// Codes of operating systems.
constexpr uint32_t SystemCode95 = 1;
constexpr uint32_t SystemCodeNt4 = 2;
constexpr uint32_t SystemCode2000 = 3;
constexpr uint32_t SystemCodeXp = 5;

}  // namespace hv
