// Printer streams explained, for tests that are built of the explainer's own objects.
#pragma once

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "show/explainer.h"

namespace hvtest {

// The pieces as "length meaning". That they do not cover the bytes, each once and in order, fails
// the test.
inline std::vector<std::string> Explained(const std::string& bytes, bool eachRow = false) {
  std::istringstream stream(bytes);
  std::vector<std::string> lines;
  std::size_t end = 0;
  const auto take = [&](const hvtool::Piece& piece) {
    EXPECT_EQ(piece.offset, end);
    EXPECT_NE(piece.length, 0U);
    EXPECT_FALSE(piece.meaning.empty());
    EXPECT_LE(piece.bytes.size(), piece.length);
    EXPECT_EQ(bytes.compare(end, piece.bytes.size(), piece.bytes), 0);
    end += static_cast<std::size_t>(piece.length);
    lines.push_back(std::to_string(piece.length) + " " + piece.meaning);
  };
  hvtool::Explainer(&stream, take, eachRow).Run();
  EXPECT_EQ(end, bytes.size());
  return lines;
}

}  // namespace hvtest
