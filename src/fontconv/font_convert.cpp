#include "fontconv/font_convert.h"

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>

#include "api/file_operations.h"
#include "fontconv/afm_reader.h"
#include "fontconv/afm_writer.h"
#include "fontconv/dlf_converter.h"
#include "fontconv/pcl_pfm_writer.h"
#include "fontconv/pfm_writer.h"
#include "fontconv/tagged_pfm_writer.h"
#include "fonts/font_paths.h"
#include "platform/stream.h"
#include "support/ascii.h"
#include "support/path_text.h"

namespace hv {
namespace {

// The output of a conversion when its caller names none, else as named.
std::string OutputName(std::string_view source, std::string_view destination,
                       std::string_view extension) {
  return destination.empty() ? ReplaceExtension(source, extension) : std::string(destination);
}

// A destination without any "." is a directory, in which the file has the name of the source in
// upper case.
std::string PfmName(std::string_view source, std::string_view destination) {
  if (destination.empty() || destination.find('.') != std::string_view::npos) {
    return OutputName(source, destination, "PFM");
  }
  std::string name(FileNamePart(source));
  std::transform(name.begin(), name.end(), name.begin(), ToUpper);
  std::string path(destination);
  if (path.back() != '\\') path += '\\';
  return path + ReplaceExtension(name, "PFM");
}

bool IsTooLong(const std::string& path) {
  return path.size() > HV_MAX_PATH;
}

// Reads the AFM and the INF beside it.
uint32_t ReadSource(const char* source, FontMetricsRecord* record) {
  const std::string infPath = ReplaceExtension(source, "INF");
  if (IsTooLong(infPath) || !FileExists(infPath.c_str())) return HV_NOT_FOUND;
  const std::unique_ptr<platform::Stream> afm = platform::OpenStream(source, "rb");
  if (afm == nullptr) return HV_CANNOT_OPEN;
  const std::unique_ptr<platform::Stream> inf = platform::OpenStream(infPath.c_str(), "rb");
  if (inf == nullptr) return HV_CANNOT_OPEN;
  return ReadAfmAndInf(afm.get(), inf.get(), record, WidthRule::Plain);
}

uint32_t ConvertAfm(const char* source, const std::string& pfm) {
  if (IsTooLong(pfm)) return HV_BAD_ARGUMENT;
  const auto record = std::make_unique<FontMetricsRecord>();
  const uint32_t read = ReadSource(source, record.get());
  if (read == HV_OK) WriteMetricsFile(*record, pfm, MetricsVariant::PostScriptPfm);
  return read;
}

uint32_t ConvertAfmToBoth(const char* source, std::string_view destination) {
  const std::string pfm = ReplaceExtension(destination, "PFM");
  const std::string psm = ReplaceExtension(destination, "PSM");
  if (destination.empty() || IsTooLong(pfm)) return HV_BAD_ARGUMENT;
  const auto record = std::make_unique<FontMetricsRecord>();
  const uint32_t read = ReadSource(source, record.get());
  if (read != HV_OK) return read;
  WriteMetricsFile(*record, pfm, MetricsVariant::PostScriptPfm);
  RecomputeAverageWidth(record.get(), WidthRule::Weighted);
  WriteMetricsFile(*record, psm, MetricsVariant::LaserPrinterPsm);
  return HV_OK;
}

// Of the output of a conversion that takes its name from the source; empty for an unknown type.
std::string_view DefaultExtension(int32_t type) {
  switch (type) {
    case FONT_CONVERT_PFM_TO_AFM:
      return "AFM";
    case FONT_CONVERT_DLF_TO_PBM:
      return "PBM";
    case FONT_CONVERT_PCL_TO_PFM:
    case FONT_CONVERT_PCL_TO_PFM_DESCRIBED:
    case FONT_CONVERT_TFM_TO_PFM:
    case FONT_CONVERT_TFM_TO_PFM_BY_HEADER:
      return "PFM";
    default:
      return {};
  }
}

// The conversions that write the one file they are given.
uint32_t ConvertTo(const std::string& output, const char* source, const HvFontInfo* fontInfo,
                   uint32_t pathSelector, int32_t type) {
  if (IsTooLong(output)) return HV_BAD_ARGUMENT;
  switch (type) {
    case FONT_CONVERT_PFM_TO_AFM:
      return WriteAfmFromPfm(source, output);
    case FONT_CONVERT_DLF_TO_PBM:
      return ConvertDlf(source, output);
    case FONT_CONVERT_PCL_TO_PFM:
    case FONT_CONVERT_PCL_TO_PFM_DESCRIBED:
      return ConvertPclFont(source, output, type == FONT_CONVERT_PCL_TO_PFM_DESCRIBED);
    default:
      return ConvertTaggedMetrics(source, output, fontInfo, pathSelector,
                                  type == FONT_CONVERT_TFM_TO_PFM_BY_HEADER);
  }
}

}  // namespace

uint32_t ConvertFont(const char* source, const char* destination, const HvFontInfo* fontInfo,
                     uint32_t pathSelector, int32_t type) {
  const std::string_view target = destination == nullptr ? "" : destination;
  if (!FileExists(source)) return HV_NOT_FOUND;
  switch (type) {
    case FONT_CONVERT_AFM_TO_PFM:
      return ConvertAfm(source, PfmName(source, target));
    case FONT_CONVERT_AFM_TO_PFM_PSM:
      return ConvertAfmToBoth(source, target);
    default:
      break;
  }
  const std::string_view extension = DefaultExtension(type);
  if (extension.empty()) return HV_BAD_ARGUMENT;
  return ConvertTo(OutputName(source, target, extension), source, fontInfo, pathSelector, type);
}

}  // namespace hv
