#include "support/pcl_pfm_files.h"

#include "support/font_files.h"

namespace hvtest {
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

  std::string file = Words(0x100) + Offset(size);
  file += Field("Made by HvApiW32 from the metrics of its source font", 60);
  file += Words(type, points, 300, 300, ascent, internalLeading, externalLeading);
  file += Octets(italic ? 1 : 0, 0, 0) + Words(weight) + Octets(charSet);
  file += Words(pixelWidth, pixelHeight) + Octets(pitchAndFamily);
  file += Words(averageWidth, maximumWidth) + Octets(first, last, 127 - first, 32 - first);
  file += Words(0) + Offset(deviceAt) + Offset(faceAt) + Offset(0) + Offset(0);
  for (const int width : widths) file += Words(width);
  file += Words(30) + Offset(metricsAt) + Offset(leadsToTables && !widths.empty() ? 117 : 0);
  file += Offset(0) + Offset(kerningAt) + Offset(0) + Offset(driverAt) + Offset(0);
  file += face + '\0' + device + '\0' + Words(52);
  for (const int word : metrics) file += Words(word);
  file += Words(kerning.size(), 0);
  if (!kerning.empty()) file += Words(kerning.size());
  for (const Kerning& pair : kerning) {
    file += Octets(pair.first, pair.second) + Words(pair.amount);
  }
  if (described) {
    file += Words(34, 2, 2, 8, 0, 0, 3, 10) + Offset(descriptionAt) + Words(symbolSet, 1, 12);
    file += Offset(memory) + Offset(selectionAt) + description + '\0';
  } else {
    file += Words(22, 1) + Offset(memory) + Offset(selectionAt) + Words(translation, 0, 0, 0, 0);
  }
  return selection.empty() ? file : file + selection + '\0';
}

}  // namespace hvtest
