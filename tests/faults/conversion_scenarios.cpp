// Font conversions of every type.

#include <cstdio>

#include "faults/scenario.h"
#include "hvapi.h"
#include "support/font_files.h"
#include "support/metrics_files.h"
#include "support/tagged_files.h"

namespace hvtest {
namespace {

std::function<void(Run&)> Convert(const char* source, int32_t type) {
  return [=](Run& run) {
    HvFontInfo info = {};
    std::snprintf(info.companionPath1, sizeof info.companionPath1, "%s", run.Path("font.tfm"));
    std::snprintf(info.symbolSet, sizeof info.symbolSet, "8U");
    const int32_t writeFailed =
        type == FONT_CONVERT_PFM_TO_AFM ? HV_WRITE_FAILED : HV_SYSTEM_FAILURE;
    run.Expect(
        HvFonConvert(run.Path(source), run.Path("out.x"), &info, FONT_COMPANIONS_METRICS, type),
        HV_OK, HV_NO_MEMORY, {HV_NOT_FOUND, HV_CANNOT_OPEN, HV_UNUSABLE_FILE, writeFailed});
  };
}

}  // namespace

std::vector<Scenario> ConversionScenarios() {
  FontMetrics metrics;
  metrics.face = "Sample Text";
  metrics.fontName = "Sample-Text";
  metrics.widths.assign(224, 600);
  metrics.kerning = {{'A', 'V', -20}};
  // What tells most stands behind the first buffer of a stream.
  const std::string filler(20000, 'x');
  TaggedFontFile tagged = SampleTaggedFont();
  tagged.entries.front().text = filler;
  const Files files = {{"font.afm", "Comment " + filler + "\n" + AfmFile("Sample-Roman")},
                       {"font.inf", "MSMenuName (Sample)\nVPStyle (N)\n"},
                       {"font.pfm", PostScriptPfm(metrics)},
                       {"font.dlf", DlfFont().Bytes()},
                       {"font.sfp", PclFont({}, {}) + filler + PclFont({}, SampleCharacters())},
                       {"font.tfm", TaggedFile("II", {tagged})},
                       {"out.x", "before"}};
  const struct {
    const char* name;
    const char* source;
    int32_t type;
  } conversions[] = {
      {"AFM to PFM", "font.afm", FONT_CONVERT_AFM_TO_PFM},
      {"AFM to PFM and PSM", "font.afm", FONT_CONVERT_AFM_TO_PFM_PSM},
      {"PFM to AFM", "font.pfm", FONT_CONVERT_PFM_TO_AFM},
      {"DLF to PBM", "font.dlf", FONT_CONVERT_DLF_TO_PBM},
      {"PCL to PFM", "font.sfp", FONT_CONVERT_PCL_TO_PFM},
      {"TFM to PFM", "font.sfp", FONT_CONVERT_TFM_TO_PFM},
      {"TFM to PFM by header", "font.sfp", FONT_CONVERT_TFM_TO_PFM_BY_HEADER},
      {"PCL to PFM, described", "font.sfp", FONT_CONVERT_PCL_TO_PFM_DESCRIBED},
  };
  std::vector<Scenario> scenarios;
  for (const auto& c : conversions) {
    // Two types say nothing of an output that cannot be written, and leave the old one; those of the
    // others stay as far as they are.
    const bool silent = c.type <= FONT_CONVERT_AFM_TO_PFM_PSM;
    const std::vector<std::string> partial(silent ? 0 : 1, "out.x");
    scenarios.push_back(
        {c.name, "HvFonConvert", files, Convert(c.source, c.type), partial, silent});
  }
  return scenarios;
}

}  // namespace hvtest
