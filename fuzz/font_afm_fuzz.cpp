// Font metrics and the INF beside them: the record that both are read into. A line "%%INF" parts
// the two.

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string_view>

#include "fontconv/afm_reader.h"
#include "platform/stream.h"
#include "support/font_file.h"

namespace {

void CheckRecord(const hv::FontMetricsRecord& record) {
  if (record.kernPairCount > hv::MostKernPairs) std::abort();
  if (record.firstChar != 32 || record.lastChar != 255) std::abort();
  const auto end = record.kernPairs.begin() + static_cast<std::ptrdiff_t>(record.kernPairCount);
  const auto byKey = [](const hv::KernPair& a, const hv::KernPair& b) { return a.Key() < b.Key(); };
  if (!std::is_sorted(record.kernPairs.begin(), end, byKey)) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  constexpr std::string_view Divider = "%%INF\n";
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const std::size_t divider = std::min(text.find(Divider), size);
  const std::size_t behind = std::min(divider + Divider.size(), size);
  const std::string inf = hvfuzz::WriteInput("font.inf", data + behind, size - behind);
  hvfuzz::WriteInput("font.pfb", data, 0);
  hvfuzz::DescribeFont("afm", data, divider);

  const std::string afm = hvfuzz::WorkFolder() + "/font.afm";
  for (const hv::WidthRule rule : {hv::WidthRule::Plain, hv::WidthRule::Weighted}) {
    const auto record = std::make_unique<hv::FontMetricsRecord>();
    const uint32_t read =
        hv::ReadAfmAndInf(hv::platform::OpenStream(afm.c_str(), "rb").get(),
                          hv::platform::OpenStream(inf.c_str(), "rb").get(), record.get(), rule);
    if (read == 0) CheckRecord(*record);
  }
  return 0;
}
