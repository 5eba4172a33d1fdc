// Extraction of archives in folders of their own.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>

#include "hvapi.h"
#include "support/test_folder.h"

namespace hvtest {

// What is below a folder: names with "/" between their parts and what the files hold. A directory
// has a "/" at its end.
using Tree = std::map<std::string, std::string>;
Tree ReadTree(const std::filesystem::path& folder);
// Directories by their names, files with "=" and what they hold, blanks between them.
std::string Show(const Tree& tree);

struct ZipRun {
  uint32_t code = 0;
  Tree tree;
};

// Extracts an archive into an empty folder. Fails the test when the archive changed, or when
// anything came to be beside the folder.
ZipRun Explode(std::string_view archive, const char* pattern = nullptr,
               HvZipProgress progress = nullptr);

// The code and the tree.
std::string Show(const ZipRun& run);

// Every how many-th place a sweep tries, a byte or a call that fails: each one here, fewer where
// files are slow to open, as under an emulation.
std::size_t SweepStep();

}  // namespace hvtest
