#include "platform/processor_crc32.h"

#if defined(__x86_64__) || defined(__i386__)

#include <immintrin.h>

namespace hv::platform {
namespace {

// Powers of x modulo the polynomial, reflected: "Fast CRC Computation for Generic Polynomials Using
// PCLMULQDQ Instruction", Intel, 2009.
struct Constants {
  uint64_t low;
  uint64_t high;
};
constexpr Constants FoldBy64Bytes = {0x154442BD4, 0x1C6E41596};
constexpr Constants FoldBy16Bytes = {0x1751997D0, 0x0CCAA009E};
constexpr Constants FoldTo8Bytes = {0x163CD6124, 0};
constexpr Constants PolynomialAndInverse = {0x1DB710641, 0x1F7011641};

constexpr std::size_t Lane = 16;
constexpr std::size_t Step = 4 * Lane;

[[gnu::target("pclmul,sse4.1")]] inline __m128i Load(const void* from) {
  return _mm_loadu_si128(static_cast<const __m128i*>(from));
}

// Moves a lane ahead by the distance of the constants, onto another one.
[[gnu::target("pclmul,sse4.1")]] inline __m128i Fold(__m128i lane, __m128i constants,
                                                     __m128i onto) {
  const __m128i low = _mm_clmulepi64_si128(lane, constants, 0x00);
  const __m128i high = _mm_clmulepi64_si128(lane, constants, 0x11);
  return _mm_xor_si128(_mm_xor_si128(low, high), onto);
}

// Callers on 32-bit Windows align the stack to 4 bytes only.
[[gnu::target("pclmul,sse4.1"), gnu::force_align_arg_pointer]] uint32_t FoldLanes(
    const uint8_t* bytes, std::size_t size, uint32_t remainder) {
  __m128i first = _mm_xor_si128(Load(bytes), _mm_cvtsi32_si128(static_cast<int>(remainder)));
  __m128i second = Load(bytes + Lane);
  __m128i third = Load(bytes + 2 * Lane);
  __m128i fourth = Load(bytes + 3 * Lane);
  const __m128i far = Load(&FoldBy64Bytes);
  std::size_t at = Step;
  for (; size - at >= Step; at += Step) {
    first = Fold(first, far, Load(bytes + at));
    second = Fold(second, far, Load(bytes + at + Lane));
    third = Fold(third, far, Load(bytes + at + 2 * Lane));
    fourth = Fold(fourth, far, Load(bytes + at + 3 * Lane));
  }
  const __m128i near = Load(&FoldBy16Bytes);
  __m128i lane = Fold(Fold(Fold(first, near, second), near, third), near, fourth);
  for (; at < size; at += Lane) lane = Fold(lane, near, Load(bytes + at));

  // From 16 bytes to 8, from 8 to 4, and the remainder of those.
  const __m128i lowWords = _mm_setr_epi32(-1, 0, -1, 0);
  lane = _mm_xor_si128(_mm_srli_si128(lane, 8), _mm_clmulepi64_si128(lane, near, 0x10));
  lane = _mm_xor_si128(_mm_srli_si128(lane, 4), _mm_clmulepi64_si128(_mm_and_si128(lane, lowWords),
                                                                     Load(&FoldTo8Bytes), 0x00));
  const __m128i barrett = Load(&PolynomialAndInverse);
  const __m128i quotient = _mm_clmulepi64_si128(_mm_and_si128(lane, lowWords), barrett, 0x10);
  lane =
      _mm_xor_si128(lane, _mm_clmulepi64_si128(_mm_and_si128(quotient, lowWords), barrett, 0x00));
  return static_cast<uint32_t>(_mm_extract_epi32(lane, 1));
}

}  // namespace

std::size_t FoldIntoCrc32(std::span<const uint8_t> bytes, uint32_t* remainder) {
  if (bytes.size() < Step) return 0;
  if (!__builtin_cpu_supports("pclmul") || !__builtin_cpu_supports("sse4.1")) return 0;
  const std::size_t size = bytes.size() - bytes.size() % Lane;
  *remainder = FoldLanes(bytes.data(), size, *remainder);
  return size;
}

}  // namespace hv::platform

#else

namespace hv::platform {

std::size_t FoldIntoCrc32(std::span<const uint8_t>, uint32_t*) {
  return 0;
}

}  // namespace hv::platform

#endif
