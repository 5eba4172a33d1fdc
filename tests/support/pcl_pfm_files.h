// Builds the metrics files of the Windows PCL drivers, field by field from their printed layouts.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "support/metrics_files.h"

namespace hvtest {

// What such a file says of a font, in the order of the file. The defaults are those of a font of
// which nothing is known but that it is there.
struct PclDriverPfm {
  std::string device = "PCL / HP LaserJet";
  unsigned type = 0x80;
  int points = 0;
  int ascent = 0;
  int internalLeading = 0;
  int externalLeading = 0;
  bool italic = false;
  int weight = 400;
  int charSet = 0;
  int pixelWidth = 0;
  int pixelHeight = 0;
  int pitchAndFamily = 0;
  int averageWidth = 0;
  int maximumWidth = 0;
  unsigned first = 32;
  unsigned last = 0;
  std::vector<int> widths = {};  // the width table, with the one behind the last; may be empty
  std::string face = {};
  std::vector<int> metrics = {};      // words 1 to 23 of the extended text metrics
  bool leadsToTables = false;         // whether the extension names the tables
  std::vector<Kerning> kerning = {};  // written when it does
  uint32_t memory = 63;
  unsigned translation = 1;
  unsigned symbolSet = 277;
  bool described = false;
  std::string description = {};
  std::string selection = {};  // empty: the file has none

  std::string Bytes() const;
};

}  // namespace hvtest
