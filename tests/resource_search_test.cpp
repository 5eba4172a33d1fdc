// Searches for fonts, macros and demonstration files: what is listed, in which order, with what.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "hvapi.h"
#include "support/font_files.h"
#include "support/test_folder.h"

namespace {

namespace fs = std::filesystem;
using hvtest::TestFolder;
using Names = std::vector<std::string>;

std::string PclFont(unsigned format, unsigned size, const std::string& name) {
  return hvtest::PclFont({.size = size, .format = format, .name = hvtest::Field(name, 16, ' ')},
                         {});
}
std::string Bitmap(const std::string& name) {
  return PclFont(0, 64, name);
}
std::string Bound(const std::string& name) {
  return PclFont(10, 80, name);
}

std::string Pfm(const std::string& face, const std::string& device) {
  return hvtest::PfmFile{.face = face, .device = device}.Bytes();
}

// What stands behind the searched folder and its separator.
std::string Below(const TestFolder& folder, const HvFoundResource& entry) {
  std::string path = entry.path;
  const std::string start = folder.Path().string() + "\\";
  EXPECT_EQ(path.rfind(start, 0), 0U) << path;
  return path.substr(start.size());
}

// The paths of a list from its head on; releases it and checks its count.
Names Paths(const TestFolder& folder, HvFoundResource* list, uint16_t count,
            const std::function<void(const HvFoundResource&)>& look = {}) {
  Names paths;
  for (const HvFoundResource* entry = list; entry != nullptr; entry = entry->next) {
    paths.push_back(Below(folder, *entry));
    std::string name = paths.back();
    std::replace(name.begin(), name.end(), '\\', '/');
    EXPECT_EQ(+entry->size, fs::file_size(folder / name));
    if (look) look(*entry);
  }
  EXPECT_EQ(paths.size(), count);
  HvFonFindFree(list);
  return paths;
}

Names FindFonts(const TestFolder& folder, uint32_t kind, uint32_t classes = FONT_CLASSES_ALL,
                uint32_t companions = 0, uint32_t recurse = 0, uint16_t most = 0) {
  uint16_t count = most;
  HvFoundResource* const list =
      HvFonFind(folder.Path().string().c_str(), &count, kind, classes, companions, recurse);
  return Paths(folder, list, count, [](const HvFoundResource& entry) {
    EXPECT_EQ(+entry.kind, RESOURCE_FONT);
    EXPECT_EQ(+entry.nameOffset, 0);
    EXPECT_NE(+entry.details, nullptr);
  });
}

// One file of each kind.
void AddEveryKind(const TestFolder& folder) {
  const std::pair<const char*, std::string> files[] = {
      {"a.pfa", hvtest::Type1Head("Times-Roman", "StandardEncoding")},
      {"b.pfb", hvtest::PfbFile({{1, hvtest::Type1Head("Tims", "StandardEncoding")}})},
      {"b.afm", hvtest::AfmFile("Tim-Afm")},  // needs b.pfb
      {"c.afm", hvtest::AfmFile("Alone")},
      {"d.dlf", hvtest::DlfFont().Bytes()},
      {"e.fmf", hvtest::FmfFile("Metrics")},
      {"f.pfm", Pfm("Face F", "PCL5")},
      {"g.psm", Pfm("Face G", "PostScript")},
      {"h.pcm", hvtest::PcmFile("Cartridge", {Pfm("One", "x")})},
      {"i.tfm", ""},
      {"j.ttf", ""},
      {"k.fot", ""},
      {"l.bit", Bitmap("Bitmap")},
      {"m.res", PclFont(20, 68, "Resolution")},
      {"n.ext", PclFont(5, 72, "Extended")},
      {"o.bnd", Bound("Bound")},
      {"p.unb", PclFont(11, 88, "Unbound")},
      {"q.ptt", PclFont(15, 72, "TrueType")},
      {"r.txt", Bitmap("Text")},
      {"s", Bitmap("No extension")},
      {"t.xyz", "no font"},
      {".u.bit", Bitmap("Hidden")},
  };
  for (const auto& [name, bytes] : files) folder.Add(name, bytes);
}

// The first letters of names, in the order in which they were found.
std::string Letters(Names names) {
  std::reverse(names.begin(), names.end());
  std::string letters;
  for (const std::string& name : names) letters += name[0];
  return letters;
}

TEST(FontFind, ListsTheKindsAndClassesThatAreAskedFor) {
  const TestFolder folder;
  AddEveryKind(folder);
  std::string byKind;
  for (uint32_t kind = 1; kind <= 28; ++kind) {
    const std::string letters = Letters(FindFonts(folder, kind));
    if (!letters.empty()) byKind += std::to_string(kind) + ":" + letters + " ";
  }
  EXPECT_EQ(byKind,
            "2:abb 6:d 8:m 9:l 10:lmnopq 11:n 12:no 14:lo 16:lmopq 17:o 18:p 20:q 21:j 22:i 23:e "
            "25:fg 26:abbdefghijlmnopq 27:fhlmopq 28:h ");
  std::string byClass;
  for (uint32_t fontClass = 1; fontClass <= 6; ++fontClass) {
    byClass += std::to_string(fontClass) + ":" +
               Letters(FindFonts(folder, FONT_KIND_ANY, fontClass)) + " ";
  }
  EXPECT_EQ(byClass, "1: 2:efghi 3:abdlmnopq 4:b 5:abbdefghijlmnopq 6:abbdefghijlmnopq ");
}

TEST(FontFind, DescribesWhatItLists) {
  const TestFolder folder;
  const std::string path = folder.Add("f.bit", Bitmap("Courier"));
  folder.Add("h.pcm", hvtest::PcmFile("Cartridge", {Pfm("One", "x")}));
  uint16_t count = 0;
  HvFoundResource* const list =
      HvFonFind(folder.Path().string().c_str(), &count, FONT_KIND_ANY, FONT_CLASSES_ALL, 0, 0);
  ASSERT_EQ(count, 2);
  const auto& cartridge = *static_cast<const HvFontInfo*>(list->details);
  EXPECT_STREQ(cartridge.cartridge->title, "Cartridge");
  EXPECT_STREQ(cartridge.cartridge->faces->name, "One");
  const auto& font = *static_cast<const HvFontInfo*>(list->next->details);
  HvFontInfo alone;
  ASSERT_EQ(HvFonQueryInfo(path.c_str(), &alone, 0, 1), HV_OK);
  EXPECT_EQ(std::string(reinterpret_cast<const char*>(&font), sizeof font),
            std::string(reinterpret_cast<const char*>(&alone), sizeof alone));
  HvFonFindFree(list);
  HvFonFindFree(nullptr);
}

TEST(FontFind, ListsTheFirstOfOneNameUpToTheCount) {
  const TestFolder folder;
  fs::create_directory(folder.Path() / "B");
  fs::create_directory(folder.Path() / ".hidden");
  folder.Add("a.bit", Bitmap("One"));
  folder.Add("B/x.bit", Bitmap("Two"));
  folder.Add("B/y.bit", Bitmap("One"));
  folder.Add("c.bit", Bitmap("Two"));
  folder.Add("d.bit", Bitmap("Three"));
  folder.Add("E.bit", Bitmap("one"));
  folder.Add(".hidden/f.bit", Bitmap("Four"));
  EXPECT_EQ(FindFonts(folder, 9), (Names{"E.bit", "d.bit", "c.bit", "a.bit"}));
  EXPECT_EQ(FindFonts(folder, 9, 6, 0, 1), (Names{"E.bit", "d.bit", "B\\x.bit", "a.bit"}));
  EXPECT_EQ(FindFonts(folder, 9, 6, 0, 1, 2), (Names{"B\\x.bit", "a.bit"}));
  EXPECT_EQ(FindFonts(folder, 9, 6, 0, 0, 3), (Names{"d.bit", "c.bit", "a.bit"}));
}

TEST(FontFind, NeedsTheMetricsThatTheModeAsksFor) {
  const auto expect = [](const Names& beside, uint32_t mode, const std::string& metrics,
                         const std::string& windows) {
    const TestFolder folder;
    folder.Add("TR123.PCL", Bound("Tims"));
    for (const std::string& name : beside) folder.Add(name, "");
    uint16_t count = 0;
    HvFoundResource* const list = HvFonFind(folder.Path().string().c_str(), &count, 17, 3, mode, 0);
    ASSERT_EQ(count, metrics == "-" ? 0 : 1) << mode;
    if (count == 0) return;
    const auto& info = *static_cast<const HvFontInfo*>(list->details);
    const std::string start = folder.Path().string() + "\\";
    EXPECT_EQ(info.companionPath1, metrics.empty() ? "" : start + metrics) << mode;
    EXPECT_EQ(info.companionPath2, windows.empty() ? "" : start + windows) << mode;
    HvFonFindFree(list);
  };
  // Companions 1 and 2; "-" for a font that is left out.
  const std::string tfm = "TR10000S.TFM";
  const std::string pfm = "TR123.PFM";
  expect({}, 0, "", "");
  expect({}, FONT_COMPANIONS_METRICS, "-", "");
  expect({}, FONT_COMPANIONS_WINDOWS, "-", "");
  expect({}, FONT_COMPANIONS_OPTIONAL, "", "");
  expect({"tr10000s.tfm"}, FONT_COMPANIONS_METRICS, tfm, tfm);
  expect({tfm}, 0, tfm, tfm);
  expect({"tr123.pfm"}, FONT_COMPANIONS_WINDOWS, "", pfm);
  expect({pfm}, FONT_COMPANIONS_METRICS, "-", "");
  expect({pfm}, FONT_COMPANIONS_OPTIONAL, "", "");
  expect({pfm, tfm}, FONT_COMPANIONS_WINDOWS, tfm, tfm);
}

TEST(FontFind, LeavesPostScriptMetricsToOthers) {
  const TestFolder folder;
  folder.Add("a.pfm", Pfm("A", "PostScript"));
  folder.Add("b.pfm", Pfm("B", "Postscript"));
  folder.Add("c.pfm", Pfm("C", "POSTSCRIPT"));
  folder.Add("d.pfm", Pfm("D", "PCL"));
  folder.Add("d.sfs", "");
  folder.Add("e.pfm", Pfm("E", "PCL"));
  EXPECT_EQ(Letters(FindFonts(folder, FONT_KIND_PCL_WINDOWS)), "ce");
  EXPECT_EQ(Letters(FindFonts(folder, FONT_TYPE_PFM)), "abcde");
}

TEST(FontFind, RefusesWrongArguments) {
  const TestFolder folder;
  folder.Add("a.bit", Bitmap("One"));
  const std::string path = folder.Path().string();
  const std::string tooLong(261, 'x');
  const struct {
    const char* directory;
    uint32_t kind;
    uint32_t classes;
  } cases[] = {
      {nullptr, 26, 6},      {tooLong.c_str(), 26, 6}, {path.c_str(), 0, 6},
      {path.c_str(), 29, 6}, {path.c_str(), 26, 0},    {path.c_str(), 26, 7},
  };
  for (const auto& c : cases) {
    uint16_t count = 5;
    EXPECT_EQ(HvFonFind(c.directory, &count, c.kind, c.classes, 0, 0), nullptr);
    EXPECT_EQ(count, 0);
  }
  EXPECT_EQ(HvFonFind(path.c_str(), nullptr, 26, 6, 0, 0), nullptr);
  uint16_t count = 0;
  EXPECT_EQ(HvFonFind((folder / "missing").c_str(), &count, 26, 6, 0, 0), nullptr);
  for (const uint32_t language : {0U, 7U}) {
    EXPECT_EQ(HvMacFind(path.c_str(), &count, language, 0, 0), nullptr);
  }
  EXPECT_EQ(HvMacFind(nullptr, &count, 5, 0, 0), nullptr);
  EXPECT_EQ(HvDemFind(nullptr, &count, 0, 0), nullptr);
  EXPECT_EQ(HvDemFind(path.c_str(), nullptr, 0, 0), nullptr);
}

TEST(FontFind, TakesTheEmptyTextForTheCurrentFolder) {
  const TestFolder folder;
  folder.Add("a.bit", Bitmap("One"));
  const hvtest::ScopedCurrentFolder inside(folder.Path());
  uint16_t count = 0;
  HvFoundResource* const list = HvFonFind("", &count, 26, 6, 0, 0);
  ASSERT_EQ(count, 1);
  EXPECT_STREQ(list->path, ".\\a.bit");
  HvFonFindFree(list);
}

TEST(FontFind, PassesOverPathsThatItsRecordCannotHold) {
  const TestFolder folder;
  const std::size_t room = 259 - folder.Path().string().size() - 1;
  if (room > 250) return;
  const std::string fits = std::string(room - 4, 'a') + ".bit";
  folder.Add(fits, Bitmap("Fits"));
  folder.Add("b" + fits, Bitmap("One too many"));
  EXPECT_EQ(FindFonts(folder, 9), Names{fits});
}

// ---- Index

struct Indexed {
  std::string path;
  std::string symbolSet;
  uint32_t memory;
  std::string metrics;
  bool operator==(const Indexed&) const = default;
};

void PrintTo(const Indexed& found, std::ostream* out) {
  *out << found.path << " " << found.symbolSet << " " << found.memory << " " << found.metrics;
}

// What a search finds whose directory holds nothing but the index.
std::vector<Indexed> FindByIndex(const TestFolder& folder, const std::string& index) {
  fs::create_directories(folder.Path() / "dir");
  const hvtest::ScopedCurrentFolder inside(folder.Path());
  hvtest::WriteFile("dir/glue.txt", index);
  uint16_t count = 0;
  HvFoundResource* const list = HvFonFind("dir", &count, FONT_KIND_PCL, 6, 0, 0);
  std::vector<Indexed> found;
  for (const HvFoundResource* entry = list; entry != nullptr; entry = entry->next) {
    const auto& info = *static_cast<const HvFontInfo*>(entry->details);
    found.push_back({entry->path, info.symbolSet, info.memoryNeeded, info.companionPath1});
    EXPECT_STREQ(info.companionPath1, info.companionPath2);
  }
  HvFonFindFree(list);
  std::reverse(found.begin(), found.end());
  return found;
}

TEST(FontIndex, GivesFontsAndWhatItSaysOfThem) {
  const TestFolder folder;
  const std::string bound = Bound("Bound");
  folder.Add("bound", bound);
  folder.Add("bound.sfs", bound);
  folder.Add("bou0000S.TFM", "");
  folder.Add("m.tfm", "");
  const uint32_t memory = static_cast<uint32_t>(Bitmap("Bitmap").size()) + 320;
  folder.Add("bitmap.sfp", Bitmap("Bitmap"));
  const auto expect = [&](const char* what, const std::string& index,
                          const std::vector<Indexed>& found) {
    EXPECT_EQ(FindByIndex(folder, index), found) << what;
  };
  const std::string start = "[PCL fonts]\n{O}\nFONT\n";
  const std::string file = "/font file = bound.sfs\n";
  const Indexed plain = {"bound.sfs", "8U", 0, ""};
  const Indexed bitmap = {"bitmap.sfp", "8U", memory, ""};
  expect("everything",
         "[PCL fonts]\n{O}\nFONT = Name of it\r\n/symset = 10U\r\n/weight = bold\r\n"
         "/tfm = m.tfm\r\n/font file = bound.sfs\r\n/resource = font 4711\r\n",
         {{"bound.sfs", "10U", 4711, "m.tfm"}});
  expect("nothing but the file", start + file, {plain});
  expect("a TFM that is missing", start + file + "/tfm = none.tfm\n", {plain});
  expect("a bitmap font keeps its own",
         start + "/font file = bitmap.sfp\n/symset = 9U\n/resource = a 5\n", {bitmap});
  expect("no list before the fonts", "[PCL fonts]\nFONT\n" + file, {});
  expect("another list before it",
         "[PCL fonts]\n{S}\nFONT\n/font file = bitmap.sfp\n{O}\nFONT\n" + file, {plain});
  expect("another list behind it", start + file + "{S}\nFONT\n/font file = bitmap.sfp\n", {plain});
  expect("the list lies in another section", "[PCL fonts]\n[Other]\n{O}\nFONT\n" + file, {});
  expect("an attribute behind another F", start + "FILE\n" + file, {});
  expect("attributes of the next section", start + file + "[X]\n/tfm = m.tfm\n", {plain});
  expect("the first of two", start + "/tfm = m.tfm\n/tfm = x\n" + file + "/font file = none\n",
         {{"bound.sfs", "8U", 0, "m.tfm"}});
  expect("comments and blanks",
         "; [PCL fonts]\n\n  [PCL fonts] of a disk\n \t{O} outline\n  FONT\n;/tfm = none\n"
         "  /tfm = m.tfm ; metrics\n/font file =   bound.sfs  }\n/symset = 8Uxyz rest\n",
         {{"bound.sfs", "8Ux", 0, "m.tfm"}});
  expect("a memory of two words", start + file + "/resource = 12\n", {plain});
  expect("a memory of four words", start + file + "/resource = a 12 b\n", {plain});
  expect("a memory beyond the field", start + file + "/resource = a 99999999999\n",
         {{"bound.sfs", "8U", 0xFFFFFFFF, ""}});
  expect("a line beyond 99 characters",
         start + "/font file = " + std::string(80, ' ') + "bound.sfs\n", {});
  expect("a cartridge comes first",
         start + file + "[Cartridge]\n{ bitmap.sfp Some name\n/class = O\n}\n", {bitmap, plain});
  expect("no word in the cartridge", "[Cartridge]\n{\n{ }\n", {});
  expect("no line end", start + "/font file = bound.sfs", {plain});
  expect("no index", "\x1B)s64W", {});
  expect("nothing", "", {});
}

TEST(FontIndex, IsReadForItsOwnFolderAndSomeKindsOnly) {
  const TestFolder folder;
  fs::create_directories(folder.Path() / "dir/sub");
  const hvtest::ScopedCurrentFolder inside(folder.Path());
  hvtest::WriteFile("one.bit", Bitmap("One"));
  hvtest::WriteFile("dir/two.bit", Bitmap("Two"));
  hvtest::WriteFile("dir/same.bit", Bitmap("One"));
  hvtest::WriteFile("dir/sub/GLUE.TXT", "[Cartridge]\n{ three.bit\n");
  hvtest::WriteFile("three.bit", Bitmap("Three"));
  hvtest::WriteFile("dir/GLUE.TXT", "[Cartridge]\n{ one.bit\n");
  const auto find = [](uint32_t kind, uint16_t most) {
    HvFoundResource* const list = HvFonFind("dir", &most, kind, 6, 0, 1);
    Names paths;
    for (const auto* entry = list; entry != nullptr; entry = entry->next) {
      paths.emplace_back(entry->path);
    }
    HvFonFindFree(list);
    return paths;
  };
  for (const uint32_t kind : {10U, 14U, 16U, 26U, 27U}) {
    EXPECT_EQ(find(kind, 0), (Names{"dir\\two.bit", "one.bit"})) << kind;
  }
  EXPECT_EQ(find(10, 1), Names{"one.bit"});
  EXPECT_EQ(find(9, 0), (Names{"dir\\two.bit", "dir\\same.bit"}));
}

// ---- Progress

std::vector<std::string> reports;

void HVAPI_CALL Report(const HvFontInfo* info, uint32_t percent) {
  reports.push_back((info == nullptr ? "-" : std::string(info->name).substr(0, 3)) + " " +
                    std::to_string(percent));
}

TEST(FontFind, ReportsEachFileAndEachFont) {
  const TestFolder folder;
  fs::create_directory(folder.Path() / "b");
  folder.Add("a.bit", Bitmap("One"));
  folder.Add("b/x.txt", "");
  folder.Add("c.bit", Bitmap("One"));
  folder.Add("d.bit", Bitmap("Two"));
  folder.Add(".e", "");
  const std::string path = folder.Path().string();
  const auto find = [&](uint32_t recurse) {
    reports.clear();
    uint16_t count = 0;
    HvFonFindFree(HvFonFind2(path.c_str(), &count, 26, 6, 0, recurse, Report));
    EXPECT_EQ(count, 2);
    return reports;
  };
  EXPECT_EQ(find(1), (Names{"- 25", "One 25", "- 50", "- 75", "- 100", "Two 100"}));
  EXPECT_EQ(find(0), (Names{"- 33", "One 33", "- 66", "- 100", "Two 100"}));
}

// ---- Macros and demonstration files

TEST(MacroFind, ListsTheMacrosOfALanguage) {
  const TestFolder folder;
  fs::create_directory(folder.Path() / "sub");
  const std::string macro = "\x1B&f7y0Xtext\x1B&f1X";
  folder.Add("a.mac", macro);
  folder.Add("b.txt", "no macro");
  folder.Add("c.exe", macro);
  folder.Add("d.ps", "serverdict begin 0 exitserver /form {showpage} def\n");
  folder.Add("sub/e.mac", "\x1B&f9y0X\x1B&f1X");
  folder.Add("f.ppds", "\x1B[l\x05");
  const auto find = [&](uint32_t language, uint32_t recurse) {
    uint16_t count = 0;
    HvFoundResource* const list =
        HvMacFind(folder.Path().string().c_str(), &count, language, 0, recurse);
    return Paths(folder, list, count, [](const HvFoundResource& entry) {
      EXPECT_EQ(+entry.kind, RESOURCE_MACRO);
      ASSERT_NE(+entry.details, nullptr);
      EXPECT_EQ(entry.path[entry.nameOffset - 1], '\\');
      const auto& info = *static_cast<const HvMacroInfo*>(entry.details);
      const std::string name = entry.path + entry.nameOffset;
      EXPECT_EQ(+info.macroId, name == "a.mac" ? 7 : name == "e.mac" ? 9 : 0) << name;
    });
  };
  EXPECT_EQ(find(JOB_EMULATION_PCL, 0), Names{"a.mac"});
  EXPECT_EQ(find(JOB_EMULATION_PCL, 1), (Names{"sub\\e.mac", "a.mac"}));
  EXPECT_EQ(find(JOB_EMULATION_PPDS, 0), Names{"f.ppds"});
  EXPECT_EQ(find(JOB_EMULATION_GL, 0), Names());
  EXPECT_EQ(find(JOB_EMULATION_PCLXL, 0), Names());
}

TEST(DemoFind, ListsAllButProgramsAndSystemFiles) {
  const TestFolder folder;
  fs::create_directory(folder.Path() / "sub");
  for (const char* const name : {"A.TXT", "B.EXE", "D.PS", "e", "f.ini", "g.dllx", "sub/h.ps"}) {
    folder.Add(name, "some bytes");
  }
  const auto find = [&](uint32_t recurse, uint16_t most) {
    HvFoundResource* const list = HvDemFind(folder.Path().string().c_str(), &most, 77, recurse);
    return Paths(folder, list, most, [](const HvFoundResource& entry) {
      EXPECT_EQ(+entry.kind, RESOURCE_DEMO);
      EXPECT_EQ(+entry.details, nullptr);
      EXPECT_EQ(entry.path[entry.nameOffset - 1], '\\');
    });
  };
  EXPECT_EQ(find(0, 0), (Names{"e", "D.PS", "A.TXT"}));
  EXPECT_EQ(find(1, 0), (Names{"sub\\h.ps", "e", "D.PS", "A.TXT"}));
  EXPECT_EQ(find(1, 2), (Names{"D.PS", "A.TXT"}));
}

}  // namespace
