// hvapi font convert

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "families.h"
#include "program.h"

namespace hvtool {
namespace {

struct ConvertOptions {
  std::string source;
  std::string destination;
  int type = 0;
  std::string metrics;
  std::string symbolSet;
};

bool IsTagged(int type) {
  return type == FONT_CONVERT_TFM_TO_PFM || type == FONT_CONVERT_TFM_TO_PFM_BY_HEADER;
}

// The text behind the last dot of the file name replaced, as the library names its outputs.
std::string WithExtension(const std::string& path, const char* extension) {
  const std::size_t name = path.find_last_of("\\/:");
  const std::size_t dot = path.rfind('.');
  const bool hasDot = dot != std::string::npos && (name == std::string::npos || dot > name);
  return (hasDot ? path.substr(0, dot + 1) : path) + extension;
}

bool EndsWith(const std::string& text, const std::string& end) {
  return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

// What the conversion of an AFM should have written: the library says nothing of a file that it
// could not make.
std::vector<std::string> OutputsOfAfm(const ConvertOptions& options) {
  const std::string& destination = options.destination;
  if (options.type == FONT_CONVERT_AFM_TO_PFM_PSM) {
    return {WithExtension(destination, "PFM"), WithExtension(destination, "PSM")};
  }
  if (options.type != FONT_CONVERT_AFM_TO_PFM) return {};
  if (destination.empty()) return {WithExtension(options.source, "PFM")};
  if (destination.find('.') != std::string::npos) return {destination};
  std::vector<char> name(options.source.size() + 1);
  HvStrCpyFile(name.data(), options.source.c_str());
  return {destination + (EndsWith(destination, "\\") ? "" : "\\") +
          WithExtension(name.data(), "PFM")};
}

bool SetField(char* field, std::size_t size, const std::string& text) {
  if (text.size() >= size) return false;
  std::memcpy(field, text.c_str(), text.size() + 1);
  return true;
}

int ConvertFile(const ConvertOptions& options) {
  const std::string what = "cannot convert " + Quoted(options.source);
  // Describing a soft font also tells the library the layout of its characters.
  HvFontInfo info = {};
  const bool readsFont =
      options.type == FONT_CONVERT_PCL_TO_PFM || options.type == FONT_CONVERT_PCL_TO_PFM_DESCRIBED;
  if (readsFont || IsTagged(options.type)) {
    HvFonQueryInfo(options.source.c_str(), &info, FONT_COMPANIONS_NONE, 1);
  }
  if (IsTagged(options.type)) {
    const std::string metrics =
        options.metrics.empty() ? WithExtension(options.source, "TFM") : options.metrics;
    if (!SetField(info.companionPath1, sizeof info.companionPath1, metrics)) {
      return Outcome(HV_BAD_ARGUMENT, "cannot read " + Quoted(metrics));
    }
    if (HvFilExists(metrics.c_str()) == 0) {
      return Outcome(HV_NOT_FOUND, "cannot read the metrics " + Quoted(metrics));
    }
    if (!options.symbolSet.empty() &&
        !SetField(info.symbolSet, sizeof info.symbolSet, options.symbolSet)) {
      return Outcome(HV_BAD_ARGUMENT, "there is no symbol set " + Quoted(options.symbolSet));
    }
  }
  if (options.type == FONT_CONVERT_AFM_TO_PFM_PSM && options.destination.empty()) {
    return Fail(HV_BAD_ARGUMENT, what + ": two files are made, and DEST must name them");
  }
  const int32_t code = HvFonConvert(options.source.c_str(), options.destination.c_str(), &info,
                                    FONT_COMPANIONS_METRICS, options.type);
  const bool fromAfm =
      options.type == FONT_CONVERT_AFM_TO_PFM || options.type == FONT_CONVERT_AFM_TO_PFM_PSM;
  if (code == HV_NOT_FOUND && fromAfm && HvFilExists(options.source.c_str()) != 0) {
    const std::string inf = WithExtension(options.source, "INF");
    return Fail(code, what + ": there is no " + Quoted(inf) + " beside it");
  }
  if (code != HV_OK) return Outcome(static_cast<uint32_t>(code), what);
  for (const std::string& output : OutputsOfAfm(options)) {
    if (HvFilExists(output.c_str()) == 0) {
      return Outcome(HV_WRITE_FAILED, "cannot write " + Quoted(output));
    }
  }
  return HV_OK;
}

}  // namespace

void AddFontConvertCommand(CLI::App* group) {
  const auto options = std::make_shared<ConvertOptions>();
  CLI::App* command = AddCommand(
      group, "convert", "convert font metrics for Windows drivers",
      "Makes the metrics file of a Windows printer driver from a font or from its metrics:\n"
      "\n"
      "    afm-pfm            an AFM, with its INF beside it, for the PostScript driver\n"
      "    afm-pfm-psm        the same and a PSM; DEST names both\n"
      "    pfm-afm            back from a PFM to an AFM\n"
      "    dlf-pbm            a DLF font\n"
      "    pcl-pfm            a PCL bitmap font\n"
      "    pcl-pfm-described  the same, with a description of the font\n"
      "    tfm-pfm            the tagged metrics of a scalable PCL font\n"
      "    tfm-pfm-header     the same, selected as the header of the soft font SOURCE says\n"
      "\n"
      "Without DEST the output is SOURCE with the extension of its kind in upper case. For afm-pfm "
      "a DEST without any dot is a directory. The last two read the file given with --metrics, "
      "else SOURCE with the extension TFM.\n"
      "\n"
      "    hvapi font convert times.afm --type afm-pfm\n"
      "    hvapi font convert tms12.sfp tms12.pfm --type pcl-pfm\n"
      "    hvapi font convert univers.sfs --type tfm-pfm-header --metrics un.tfm");
  AddArgument(command, "SOURCE", &options->source, "The font or its metrics");
  MakeOptional(AddArgument(command, "DEST", &options->destination, "The file to write"));
  Require(AddChoice(command, "--type", &options->type, "TYPE",
                    {{"afm-pfm", FONT_CONVERT_AFM_TO_PFM},
                     {"afm-pfm-psm", FONT_CONVERT_AFM_TO_PFM_PSM},
                     {"pfm-afm", FONT_CONVERT_PFM_TO_AFM},
                     {"dlf-pbm", FONT_CONVERT_DLF_TO_PBM},
                     {"pcl-pfm", FONT_CONVERT_PCL_TO_PFM},
                     {"pcl-pfm-described", FONT_CONVERT_PCL_TO_PFM_DESCRIBED},
                     {"tfm-pfm", FONT_CONVERT_TFM_TO_PFM},
                     {"tfm-pfm-header", FONT_CONVERT_TFM_TO_PFM_BY_HEADER}},
                    "What to make of what"));
  AddOption(command, "--metrics", &options->metrics, "TFM", "Tagged metrics, for tfm-pfm...");
  AddOption(command, "--symbol-set", &options->symbolSet, "SET",
            "Symbol set to take of the tagged metrics, for tfm-pfm; 8U for example");
  OnRun(command, [options] { return ConvertFile(*options); });
}

}  // namespace hvtool
