// The tables of docs/formats are those that the readers and writers run by.

#include <gtest/gtest.h>

#include <span>
#include <string>
#include <utility>

#include "fontconv/pcl_font_stream.h"
#include "fonts/pfm_header.h"
#include "fonts/soft_font_descriptor.h"
#include "support/field_table.h"
#include "support/test_folder.h"
#include "zip/zip_records.h"

namespace {

using hv::PackedField;

// The rows of a field table as a page has them.
std::string RowsOf(std::span<const PackedField> table) {
  std::string rows;
  for (const PackedField& field : table) {
    rows.append("| ").append(std::to_string(field.offset));
    rows.append(" | ").append(std::to_string(field.width));
    rows.append(" | ").append(field.name);
    rows.append(field.sign == hv::Sign::Signed ? ", signed |\n" : " |\n");
  }
  return rows;
}

TEST(FormatPages, HaveTheTablesOfTheCode) {
  const std::pair<const char*, std::span<const PackedField>> cases[] = {
      {"pcl-soft-font", hv::SoftFontDescriptorTable},
      {"pcl-soft-font", hv::PclCharacterTable},
      {"pfm", hv::PfmHeaderTable},
      {"pfm", hv::PfmExtensionTable},
      {"pfm", hv::PfmMetricsTable},
      {"zip", hv::LocalHeader},
      {"zip", hv::DirectoryEntry},
      {"zip", hv::EndOfDirectory},
  };
  for (const auto& [page, table] : cases) {
    const std::string path = std::string(TEST_SOURCE_FOLDER "/docs/formats/") + page + ".md";
    EXPECT_NE(hvtest::ReadFile(path).find("\n" + RowsOf(table)), std::string::npos)
        << path << " lacks\n"
        << RowsOf(table);
  }
}

}  // namespace
