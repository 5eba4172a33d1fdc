// How converted files get to disk. All of a file is made in memory before its output is touched.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace hv {

using MetricsBytes = std::span<const uint8_t>;

// The notice in the copyright field of the files written here, at most 59 characters.
constexpr std::string_view CopyrightNotice = "Made by HvApiW32 from the metrics of its source font";
static_assert(CopyrightNotice.size() <= 59);

// Creates or empties a file and writes the bytes. HV_OK, HV_CANNOT_OPEN when it cannot be created,
// HV_SYSTEM_FAILURE when not all bytes get there: it is left as far as it was written.
uint32_t WriteConverted(const std::string& path, MetricsBytes bytes);

// The same for a text, in which line feeds are written as line ends of text files; HV_WRITE_FAILED
// when not all of it gets there.
uint32_t WriteConvertedText(const std::string& path, std::string_view text);

// Puts a file in the place of the one that is there in one step, so that a failure, of which
// nothing is said, leaves the old file. Where the directory does not allow that, the old one is
// written over.
void ReplaceFile(const std::string& path, MetricsBytes bytes);

}  // namespace hv
