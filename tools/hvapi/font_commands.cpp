// hvapi font info, download, show

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "contact_sheet.h"
#include "families.h"
#include "font_kinds.h"
#include "job_options.h"
#include "png_file.h"
#include "program.h"
#include "soft_font_glyphs.h"

namespace hvtool {
namespace {

// A description and what it holds; the cartridge is given back.
struct FontDescription {
  uint32_t code;
  HvFontInfo info;
  std::vector<std::string> faces;
};

FontDescription DescribeFont(const std::string& path, int companions) {
  FontDescription font = {};
  font.code = HvFonQueryInfo(path.c_str(), &font.info, static_cast<uint32_t>(companions), 1);
  HvFontCartridge* const cartridge = font.info.cartridge;
  if (cartridge == nullptr) return font;
  while (HvFontFace* const face = cartridge->faces) {
    font.faces.emplace_back(face->name);
    cartridge->faces = face->next;
    HvMemFree(face->name);
    HvMemFree(face);
  }
  HvMemFree(cartridge->title);
  HvMemFree(cartridge);
  font.info.cartridge = nullptr;
  return font;
}

// What is known of a font, one member a line of the description; what does not apply is left out.
Json Members(const std::string& path, const FontDescription& font) {
  const HvFontInfo& info = font.info;
  Json members = {{"file", path}, {"kind", FontKindText(info)}, {"name", info.name}};
  const auto addText = [&](const char* name, const char* text) {
    if (*text != '\0') members[name] = text;
  };
  addText("description", info.description);
  addText("symbol set", info.symbolSet);
  if (info.yResolution != 0) {
    members["resolution"] =
        std::to_string(info.xResolution) + " x " + std::to_string(info.yResolution);
  }
  // Soft fonts alone tell their spacing, Type 1 fonts their encoding.
  const bool downloadable = info.fontClass == FONT_CLASS_DOWNLOADABLE;
  if (downloadable && info.fontType == FONT_TYPE_TYPE1) {
    members["standard encoding"] = (info.flags & FONT_FLAG_STANDARD_ENCODING) != 0;
  } else if (downloadable && info.fontType != FONT_TYPE_DLF) {
    members["proportional"] = (info.flags & FONT_FLAG_PROPORTIONAL) != 0;
  }
  members["size"] = info.fileSize;
  if (info.memoryNeeded != 0) members["memory"] = info.memoryNeeded;
  addText("companion 1", info.companionPath1);
  addText("companion 2", info.companionPath2);
  if (info.fontType == FONT_TYPE_PCM) members["faces"] = font.faces;
  return members;
}

void AddInfo(CLI::App* parent) {
  struct Options {
    std::vector<std::string> files;
    int companions = FONT_COMPANIONS_NONE;
    bool json = false;
  };
  const auto options = std::make_shared<Options>();
  CLI::App* command = AddCommand(
      parent, "info", "describe font and font-metrics files",
      "Prints what each file is: its kind, name, symbol set, size and the memory that it takes in "
      "a printer. A file is known by its extension (afm, pfa, pfb, dlf, fmf, pfm, psm, pbm, pcm, "
      "tfm, fot, ttf); any other is read as a PCL soft font.\n"
      "\n"
      "--companions also looks for the files that belong to it: \"metrics\" for the AFM of a Type "
      "1 font or the FMF of a DLF font, \"windows\" for the PFM, or the INF and AFM, of a Type 1 "
      "font, \"optional\" for the same where they are.\n"
      "\n"
      "    hvapi font info --companions optional *.pfb");
  AddArgument(command, "FILE...", &options->files, "The files");
  AddCompanionsOption(command, &options->companions);
  AddJsonOption(command, &options->json);
  OnRun(command, [options] {
    constexpr std::size_t Column = 19;
    int status = HV_OK;
    Json all = Json::array();
    for (const std::string& file : options->files) {
      const FontDescription font = DescribeFont(file, options->companions);
      const int code = Outcome(font.code, "cannot describe " + Quoted(file));
      if (status == HV_OK) status = code;
      // A font whose companion is missing is described all the same.
      if (font.code != HV_OK && font.code != HV_NOT_SUPPORTED) continue;
      Json members = Members(file, font);
      if (!options->json) {
        if (!all.empty()) PrintLine("");
        PrintMembers(members, Column);
      }
      all.push_back(std::move(members));
    }
    if (options->json) PrintJson(all);
    return status;
  });
}

void AddDownload(CLI::App* parent) {
  struct Options {
    std::string file;
    int target = STORAGE_DEVICE_RAM;
    JobOptions job;
  };
  const auto options = std::make_shared<Options>();
  options->job.emulation = JOB_EMULATION_PCL;
  CLI::App* command = AddCommand(
      parent, "download", "download a font to a printer",
      "Sends a PCL soft font, a Type 1 font (PFA or PFB) or a DLF font, which stays in the printer "
      "under the number given with --id. With the language pclxl a PCL font gets a name made up of "
      "its name, size, style and symbol set.\n"
      "\n"
      "    hvapi font download tms12.sfp --to lp1 --pjl --id 5 --target flash1\n"
      "    hvapi font download times.pfb --to lp1 --language postscript");
  AddArgument(command, "FILE", &options->file, "The font");
  AddJobOptions(command, &options->job);
  AddIdentifierOption(command, &options->job);
  AddDeviceOption(command, "--target", &options->target, "Where the printer keeps the font");
  AddPersonalityOption(command, &options->job);
  AddClassOption(command, &options->job);
  OnRun(command, [options] {
    const JobOptions& job = options->job;
    const HvJobInfo record = job.Record();
    const uint32_t code = HvFonDownload(options->file.c_str(), job.destination.c_str(), &record,
                                        static_cast<uint32_t>(options->target));
    return Outcome(code,
                   "cannot download " + Quoted(options->file) + " to " + Quoted(job.destination));
  });
}

int ShowFont(const std::string& file, const std::string& png) {
  const FontDescription font = DescribeFont(file, FONT_COMPANIONS_NONE);
  if (font.code != HV_OK) return Outcome(font.code, "cannot show " + Quoted(file));
  const std::optional<std::vector<Glyph>> glyphs = ReadGlyphs(file);
  if (!glyphs) return Outcome(HV_CANNOT_OPEN, "cannot show " + Quoted(file));
  if (glyphs->empty()) {
    return Fail(HV_UNUSABLE_FILE, "cannot show " + Quoted(file) + ": it holds no bitmaps");
  }
  if (png.empty()) {
    PrintLine(font.info.name);
    Print(SheetAsText(*glyphs));
    return HV_OK;
  }
  const std::optional<Picture> sheet = DrawSheet(*glyphs);
  if (!sheet) {
    return Fail(HV_UNUSABLE_FILE, "cannot show " + Quoted(file) + ": its characters are too large");
  }
  const std::string failure = WritePng(png, *sheet);
  return failure.empty() ? HV_OK
                         : Fail(HV_WRITE_FAILED, "cannot write " + Quoted(png) + ": " + failure);
}

void AddShow(CLI::App* parent) {
  struct Options {
    std::string file;
    std::string png;
  };
  const auto options = std::make_shared<Options>();
  CLI::App* command =
      AddCommand(parent, "show", "draw the characters of a PCL bitmap font",
                 "Draws every character that the font downloads, in the terminal with block "
                 "characters or, with --png, as a picture in which a row holds 16 codes.\n"
                 "\n"
                 "    hvapi font show tms12.sfp\n"
                 "    hvapi font show tms12.sfp --png tms12.png");
  AddArgument(command, "FILE", &options->file, "The font");
  AddOption(command, "--png", &options->png, "OUT", "Write a PNG picture");
  OnRun(command, [options] { return ShowFont(options->file, options->png); });
}

}  // namespace

void AddFontCommands(CLI::App* program) {
  CLI::App* group = AddCommandGroup(program, "font", "describe, download, convert and show fonts",
                                    "Commands on fonts and font metrics.");
  AddInfo(group);
  AddDownload(group);
  AddFontConvertCommand(group);
  AddShow(group);
}

}  // namespace hvtool
