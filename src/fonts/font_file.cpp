#include "fonts/font_file.h"

#include <algorithm>
#include <limits>

#include "api/file_operations.h"
#include "fonts/font_paths.h"
#include "support/fixed_text.h"

namespace hv {
namespace {

constexpr uint64_t DownloadOverhead = 320;

uint32_t Saturated(uint64_t value) {
  constexpr uint64_t Largest = std::numeric_limits<uint32_t>::max();
  return static_cast<uint32_t>(std::min(value, Largest));
}

}  // namespace

std::string CompanionPath(const FontFile& file, std::string_view extension) {
  std::string path = ReplaceExtension(file.path, extension);
  if (path.size() >= sizeof(CompanionField)) path.clear();
  return path;
}

bool CompanionExists(const FontFile& file, std::string_view extension) {
  const std::string path = CompanionPath(file, extension);
  if (path.empty()) return false;
  return file.folder != nullptr ? file.folder->HasFileOf(path) : FileExists(path.c_str());
}

void NameCompanion(const FontFile& file, std::string_view extension, CompanionField& field) {
  SetFixedText(field, CompanionPath(file, extension));
}

bool FindCompanion(const FontFile& file, std::string_view extension, CompanionField& field) {
  if (!CompanionExists(file, extension)) return false;
  NameCompanion(file, extension, field);
  return true;
}

uint32_t MemoryOfDownload(uint32_t fileSize) {
  return Saturated(fileSize + DownloadOverhead);
}

uint32_t ScaledSize(uint32_t fileSize, uint32_t numerator, uint32_t denominator) {
  return Saturated(uint64_t{fileSize} * numerator / denominator);
}

std::vector<uint8_t> ReadBytes(platform::Stream* stream, std::size_t limit) {
  std::vector<uint8_t> bytes(limit);
  bytes.resize(stream->Read(bytes.data(), limit));
  return bytes;
}

std::string_view TextAt(const std::vector<uint8_t>& bytes, std::size_t offset) {
  if (offset >= bytes.size()) return {};
  return FixedText(reinterpret_cast<const char*>(&bytes[offset]), bytes.size() - offset);
}

}  // namespace hv
