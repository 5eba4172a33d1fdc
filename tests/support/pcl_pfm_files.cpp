#include "support/pcl_pfm_files.h"

#include "support/font_files.h"

namespace hvtest {
namespace {

std::string Word(int value) {
  return Le16(static_cast<unsigned>(value) & 0xFFFF);
}

std::string Offset(std::size_t offset) {
  return Le32(static_cast<uint32_t>(offset));
}

std::string One(unsigned value) {
  return {static_cast<char>(value & 0xFF)};
}

}  // namespace

std::string PclDriverPfm::Bytes() const {
  const std::size_t faceAt = 117 + 2 * widths.size() + 30;
  const std::size_t deviceAt = faceAt + face.size() + 1;
  const std::size_t metricsAt = deviceAt + device.size() + 1;
  const std::size_t kerningAt = kerning.empty() ? 0 : metricsAt + 52;
  const std::size_t driverAt = metricsAt + 52 + (kerning.empty() ? 0 : 2 + 4 * kerning.size());
  const std::size_t descriptionAt = driverAt + 34;
  const std::size_t driverEnd = described ? descriptionAt + description.size() + 1 : driverAt + 22;
  const std::size_t selectionAt = selection.empty() ? 0 : driverEnd;
  const std::size_t size = driverEnd + (selection.empty() ? 0 : selection.size() + 1);

  std::string file = Word(0x100) + Offset(size);
  file += Field("Made by HvApiW32 from the metrics of its source font", 60);
  file += Le16(type) + Word(points) + Word(300) + Word(300);
  file += Word(ascent) + Word(internalLeading) + Word(externalLeading);
  file += One(italic ? 1 : 0) + One(0) + One(0) + Word(weight);
  file += One(static_cast<unsigned>(charSet)) + Word(pixelWidth) + Word(pixelHeight);
  file += One(static_cast<unsigned>(pitchAndFamily)) + Word(averageWidth) + Word(maximumWidth);
  file += One(first) + One(last) + One(127 - first) + One(32 - first) + Word(0);
  file += Offset(deviceAt) + Offset(faceAt) + Le32(0) + Le32(0);
  for (const int width : widths) file += Word(width);
  file += Word(30) + Offset(metricsAt) + Offset(leadsToTables && !widths.empty() ? 117 : 0);
  file += Le32(0) + Offset(kerningAt) + Le32(0) + Offset(driverAt) + Le32(0);
  file += face + '\0' + device + '\0' + Word(52);
  for (const int word : metrics) file += Word(word);
  file += Word(static_cast<int>(kerning.size())) + Word(0);
  if (!kerning.empty()) file += Word(static_cast<int>(kerning.size()));
  for (const Kerning& pair : kerning)
    file += One(pair.first) + One(pair.second) + Word(pair.amount);
  if (described) {
    file += Word(34) + Word(2) + Word(2) + Word(8) + Le32(0);
    file += Word(3) + Word(10) + Offset(descriptionAt) + Le16(symbolSet);
    file += Word(1) + Word(12) + Le32(memory) + Offset(selectionAt) + description + '\0';
  } else {
    file += Word(22) + Word(1) + Le32(memory) + Offset(selectionAt) + Le16(translation);
    file += Field("", 8);
  }
  return selection.empty() ? file : file + selection + '\0';
}

}  // namespace hvtest
