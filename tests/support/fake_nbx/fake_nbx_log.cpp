#include "support/fake_nbx/fake_nbx_log.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace fakenbx {

const char* Variable(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

void Log(const char* name, std::initializer_list<uint32_t> numbers, const void* bytes,
         std::size_t count) {
  std::FILE* file = std::fopen(Variable("FAKE_NBX_LOG"), "ab");
  if (file == nullptr) return;
  std::fputs(name, file);
  for (const uint32_t number : numbers) {
    std::fprintf(file, " %lu", static_cast<unsigned long>(number));
  }
  if (bytes != nullptr) std::fputc(' ', file);
  for (std::size_t i = 0; i < count; ++i) {
    std::fprintf(file, "%02X", static_cast<const unsigned char*>(bytes)[i]);
  }
  std::fputc('\n', file);
  std::fclose(file);
}

uint32_t ResultOf(const char* name) {
  constexpr uint32_t Failure = 5;
  const std::size_t length = std::strlen(name);
  for (const char* word = Variable("FAKE_NBX_FAIL"); *word != '\0';) {
    const std::size_t wordLength = std::strcspn(word, " ");
    if (wordLength == length && std::memcmp(word, name, length) == 0) return Failure;
    word += wordLength + std::strspn(word + wordLength, " ");
  }
  return 0;
}

}  // namespace fakenbx
