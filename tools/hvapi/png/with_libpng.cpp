#include <png.h>

#include <filesystem>
#include <fstream>
#include <vector>

#include "png_file.h"

namespace hvtool {
namespace {

// The bytes of the file; empty, with the reason, when the library cannot make them.
std::vector<char> Encode(const Picture& picture, std::string* failure) {
  png_image image = {};
  image.version = PNG_IMAGE_VERSION;
  image.width = picture.width;
  image.height = picture.height;
  image.format = PNG_FORMAT_GRAY;
  png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(image);
  std::vector<char> bytes(size);
  if (png_image_write_to_memory(&image, bytes.data(), &size, 0, picture.pixels.data(), 0,
                                nullptr) == 0) {
    *failure = image.message;
    size = 0;
  }
  bytes.resize(size);
  return bytes;
}

bool WriteBytes(const std::filesystem::path& path, const std::vector<char>& bytes) {
  std::ofstream file(path, std::ios::binary);
  return file.write(bytes.data(), static_cast<std::streamsize>(bytes.size())).flush().good();
}

}  // namespace

std::string WritePng(const std::string& path, const Picture& picture) {
  std::string failure;
  const std::vector<char> bytes = Encode(picture, &failure);
  if (!failure.empty()) return failure;
  // A picture that was there is replaced by a complete one only.
  std::error_code error;
  const std::filesystem::path target(path);
  if (std::filesystem::exists(target, error) && !std::filesystem::is_regular_file(target, error)) {
    return WriteBytes(target, bytes) ? "" : "the file cannot be written";
  }
  const std::filesystem::path beside(path + ".part");
  if (!WriteBytes(beside, bytes)) {
    std::filesystem::remove(beside, error);
    return "the file cannot be written";
  }
  std::filesystem::rename(beside, target, error);
  return error ? error.message() : "";
}

}  // namespace hvtool
