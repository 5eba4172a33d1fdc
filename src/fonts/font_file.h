// A font file that is being described, and what its readers share.
//
// Each reader is a function `uint32_t Describe...(const FontFile& file, HvFontInfo* info)` that
// fills the record for its kind and returns the result of the call. The file size and the
// standard-encoding flag are set before it runs.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "api/hvapi.h"
#include "fonts/directory_walk.h"
#include "platform/stream.h"

namespace hv {

struct FontFile {
  const char* path;
  std::string_view baseName;
  uint32_t companionMode;                 // FONT_COMPANIONS_...
  const FolderListing* folder = nullptr;  // of the file's directory, where it has been listed
};

// A companion is named in a field of this size.
using CompanionField = char[260];

// The path of the companion with that extension; empty when it would not fit its field, so that it
// counts as missing.
std::string CompanionPath(const FontFile& file, std::string_view extension);

// Whether the companion is there.
bool CompanionExists(const FontFile& file, std::string_view extension);

// Puts the path into the field, whether or not the companion is there.
void NameCompanion(const FontFile& file, std::string_view extension, CompanionField& field);

// Puts the path into the field when the companion is there; false when it is not.
bool FindCompanion(const FontFile& file, std::string_view extension, CompanionField& field);

// The printer memory that a downloaded font is reckoned to take: the file and its bookkeeping.
uint32_t MemoryOfDownload(uint32_t fileSize);

// fileSize x numerator / denominator, truncated; the largest number when it is larger still.
uint32_t ScaledSize(uint32_t fileSize, uint32_t numerator, uint32_t denominator);

// Up to `limit` bytes from where the stream stands.
std::vector<uint8_t> ReadBytes(platform::Stream* stream, std::size_t limit);

// The text at an offset of the bytes, up to a NUL or to their end; empty beyond it.
std::string_view TextAt(const std::vector<uint8_t>& bytes, std::size_t offset);

}  // namespace hv
