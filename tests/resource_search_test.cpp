// Searches for fonts, macros and demonstration files: what is listed, in which order, with what.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "hvapi.h"
#include "support/font_files.h"
#include "support/test_folder.h"

namespace {

namespace fs = std::filesystem;
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

// The current folder of a test, with two folders in it.
struct SearchedFolder : hvtest::TestFolder {
  SearchedFolder() { fs::create_directories(Path() / "dir/sub"); }
  const hvtest::ScopedCurrentFolder here{Path()};
};

// What a test is told of an entry.
using Teller = std::function<std::string(const HvFoundResource& entry)>;

std::string Path(const HvFoundResource& entry) {
  return entry.path;
}
const HvFontInfo& Font(const HvFoundResource& entry) {
  return *static_cast<const HvFontInfo*>(entry.details);
}

// What is told of the entries of a list from its head on; releases it and checks its count.
Names Told(HvFoundResource* list, uint16_t count, uint32_t kind, const Teller& tell) {
  Names told;
  for (const HvFoundResource* entry = list; entry != nullptr; entry = entry->next) {
    told.push_back(tell(*entry));
    std::string path = entry->path;
    std::replace(path.begin(), path.end(), '\\', '/');
    EXPECT_EQ(+entry->size, fs::file_size(path));
    EXPECT_EQ(+entry->kind, kind);
    EXPECT_EQ(entry->nameOffset, kind == RESOURCE_FONT ? 0 : path.rfind('/') + 1);
  }
  EXPECT_EQ(told.size(), count);
  HvFonFindFree(list);
  return told;
}

struct Query {
  std::string directory = {};
  uint32_t kind = FONT_KIND_ANY;
  uint32_t classes = FONT_CLASSES_ALL;
  uint32_t companions = 0;
  uint32_t recurse = 0;
  uint16_t most = 0;
};
Names FindFonts(Query query, const Teller& tell = Path) {
  HvFoundResource* const list = HvFonFind(query.directory.c_str(), &query.most, query.kind,
                                          query.classes, query.companions, query.recurse);
  return Told(list, query.most, RESOURCE_FONT, tell);
}

// The first letters of the fonts in "dir", in the order in which they were found.
std::string Letters(uint32_t kind, uint32_t classes = FONT_CLASSES_ALL) {
  std::string letters;
  for (const std::string& path :
       FindFonts({.directory = "dir", .kind = kind, .classes = classes})) {
    letters.insert(0, 1, path[4]);
  }
  return letters;
}

TEST(FontFind, ListsTheKindsAndClassesThatAreAskedFor) {
  const SearchedFolder folder;
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
  for (const auto& [name, bytes] : files) folder.Add(std::string("dir/") + name, bytes);
  std::string byKind;
  for (uint32_t kind = 1; kind <= 28; ++kind) {
    const std::string letters = Letters(kind);
    if (!letters.empty()) byKind += std::to_string(kind) + ":" + letters + " ";
  }
  EXPECT_EQ(byKind,
            "2:abb 6:d 8:m 9:l 10:lmnopq 11:n 12:no 14:lo 16:lmopq 17:o 18:p 20:q 21:j 22:i 23:e "
            "25:fg 26:abbdefghijlmnopq 27:fhlmopq 28:h ");
  std::string byClass;
  for (uint32_t fontClass = 1; fontClass <= 6; ++fontClass) {
    byClass += std::to_string(fontClass) + ":" + Letters(FONT_KIND_ANY, fontClass) + " ";
  }
  EXPECT_EQ(byClass, "1: 2:efghi 3:abdlmnopq 4:b 5:abbdefghijlmnopq 6:abbdefghijlmnopq ");
}

TEST(FontFind, DescribesWhatItLists) {
  const SearchedFolder folder;
  folder.Add("f.bit", Bitmap("Courier"));
  folder.Add("h.pcm", hvtest::PcmFile("Cartridge", {Pfm("One", "x")}));
  const auto tell = [](const HvFoundResource& entry) {
    const HvFontInfo& font = Font(entry);
    const HvFontCartridge* const cartridge = font.cartridge;
    if (cartridge != nullptr) return std::string(cartridge->title) + " " + cartridge->faces->name;
    HvFontInfo alone;
    EXPECT_EQ(HvFonQueryInfo(entry.path, &alone, 0, 1), HV_OK);
    EXPECT_EQ(std::memcmp(&font, &alone, sizeof font), 0);
    return std::string(font.symbolSet);
  };
  EXPECT_EQ(FindFonts({}, tell), (Names{"Cartridge One", "8U"}));
  HvFonFindFree(nullptr);
}

TEST(FontFind, ListsTheFirstOfOneNameUpToTheCount) {
  const SearchedFolder folder;
  fs::create_directory(".hidden");
  folder.Add("a.bit", Bitmap("One"));
  folder.Add("dir/x.bit", Bitmap("Two"));
  folder.Add("dir/y.bit", Bitmap("One"));
  folder.Add("e.bit", Bitmap("Two"));
  folder.Add("f.bit", Bitmap("Three"));
  folder.Add("G.bit", Bitmap("one"));
  folder.Add(".hidden/f.bit", Bitmap("Four"));
  EXPECT_EQ(FindFonts({}), (Names{".\\G.bit", ".\\f.bit", ".\\e.bit", ".\\a.bit"}));
  EXPECT_EQ(FindFonts({.recurse = 1}),
            (Names{".\\G.bit", ".\\f.bit", ".\\dir\\x.bit", ".\\a.bit"}));
  EXPECT_EQ(FindFonts({.recurse = 1, .most = 2}), (Names{".\\dir\\x.bit", ".\\a.bit"}));
  EXPECT_EQ(FindFonts({.most = 3}), (Names{".\\f.bit", ".\\e.bit", ".\\a.bit"}));
  EXPECT_EQ(FindFonts({.directory = "dir/"}), (Names{"dir/y.bit", "dir/x.bit"}));
}

TEST(FontFind, NeedsTheMetricsThatTheModeAsksFor) {
  // The companions of the font; none for one that is left out.
  const auto expect = [](const Names& beside, uint32_t mode, const Names& companions) {
    const SearchedFolder folder;
    folder.Add("TR123.PCL", Bound("Tims"));
    for (const std::string& name : beside) folder.Add(name, "");
    const auto tell = [](const HvFoundResource& entry) {
      return std::string(Font(entry).companionPath1) + "|" + Font(entry).companionPath2;
    };
    EXPECT_EQ(FindFonts({.kind = 17, .classes = 3, .companions = mode}, tell), companions) << mode;
  };
  const std::string tfm = "TR10000S.TFM";
  const std::string pfm = "TR123.PFM";
  const Names withTfm = {".\\TR10000S.TFM|.\\TR10000S.TFM"};
  const Names withPfm = {"|.\\TR123.PFM"};
  expect({}, 0, {"|"});
  expect({}, FONT_COMPANIONS_METRICS, {});
  expect({}, FONT_COMPANIONS_WINDOWS, {});
  expect({}, FONT_COMPANIONS_OPTIONAL, {"|"});
  expect({"tr10000s.tfm"}, FONT_COMPANIONS_METRICS, withTfm);
  expect({"tr123.pfm"}, FONT_COMPANIONS_WINDOWS, withPfm);
  expect({pfm}, FONT_COMPANIONS_METRICS, {});
  expect({pfm}, FONT_COMPANIONS_OPTIONAL, {"|"});
  expect({pfm, tfm}, FONT_COMPANIONS_WINDOWS, withTfm);
}

TEST(FontFind, LeavesPostScriptMetricsToOthers) {
  const SearchedFolder folder;
  folder.Add("dir/a.pfm", Pfm("A", "PostScript"));
  folder.Add("dir/b.pfm", Pfm("B", "Postscript"));
  folder.Add("dir/c.pfm", Pfm("C", "POSTSCRIPT"));
  folder.Add("dir/d.pfm", Pfm("D", "PCL"));
  folder.Add("dir/d.sfs", "");
  folder.Add("dir/e.pfm", Pfm("E", "PCL"));
  // The device name lies outside the file.
  folder.Add("dir/f.pfm", Pfm("F", "PostScript").replace(101, 4, hvtest::Le32(0xFFFFFFF0)));
  EXPECT_EQ(Letters(FONT_KIND_PCL_WINDOWS), "cef");
  EXPECT_EQ(Letters(FONT_TYPE_PFM), "abcdef");
}

TEST(FontFind, RefusesWrongArguments) {
  const SearchedFolder folder;
  folder.Add("dir/a.bit", Bitmap("One"));
  const std::string tooLong(261, 'x');
  const auto expect = [](const char* directory, uint32_t kind, uint32_t classes) {
    uint16_t count = 5;
    EXPECT_EQ(HvFonFind(directory, &count, kind, classes, 0, 0), nullptr);
    EXPECT_EQ(count, 0);
  };
  expect(nullptr, 26, 6);
  expect(tooLong.c_str(), 26, 6);
  expect("missing", 26, 6);
  for (const uint32_t kind : {0U, 32U + 9}) expect("dir", kind, 6);
  for (const uint32_t classes : {0U, 7U}) expect("dir", 26, classes);
  EXPECT_EQ(HvFonFind("dir", nullptr, 26, 6, 0, 0), nullptr);
  uint16_t count = 0;
  for (const uint32_t language : {0U, 7U}) {
    EXPECT_EQ(HvMacFind("dir", &count, language, 0, 0), nullptr);
  }
  EXPECT_EQ(HvMacFind(nullptr, &count, 5, 0, 0), nullptr);
  EXPECT_EQ(HvDemFind(nullptr, &count, 0, 0), nullptr);
}

TEST(FontFind, PassesOverPathsThatItsRecordCannotHold) {
  const SearchedFolder folder;
  const std::size_t room = 259 - folder.Path().string().size() - 1;
  if (room > 250) return;
  const std::string fits = std::string(room - 4, 'a') + ".bit";
  folder.Add(fits, Bitmap("Fits"));
  folder.Add("b" + fits, Bitmap("One too many"));
  const std::string path = folder.Path().string();
  EXPECT_EQ(FindFonts({.directory = path}), Names{path + "\\" + fits});
}

TEST(FontIndex, GivesFontsAndWhatItSaysOfThem) {
  const SearchedFolder folder;
  folder.Add("bound.sfs", Bound("Bound"));
  folder.Add("bou0000S.TFM", "");
  folder.Add("m.tfm", "");
  folder.Add("bitmap.sfp", Bitmap("Bitmap"));
  const auto expect = [&](const char* what, const std::string& index, const Names& found) {
    folder.Add("dir/glue.txt", index);
    const auto tell = [](const HvFoundResource& entry) {
      const HvFontInfo& font = Font(entry);
      EXPECT_STREQ(font.companionPath1, font.companionPath2);
      return std::string(entry.path) + " " + font.symbolSet + " " +
             std::to_string(font.memoryNeeded) + " " + font.companionPath1;
    };
    EXPECT_EQ(FindFonts({.directory = "dir", .kind = FONT_KIND_PCL}, tell), found) << what;
  };
  const std::string start = "[PCL fonts]\n{O}\nFONT\n";
  const std::string file = "/font file = bound.sfs\n";
  const std::string plain = "bound.sfs 8U 0 ";
  const std::string bitmap = "bitmap.sfp 8U " + std::to_string(Bitmap("Bitmap").size() + 320) + " ";
  expect("everything",
         "[PCL fonts]\n{O}\nFONT = Name of it\r\n/symset = 10U\r\n/weight = bold\r\n"
         "/tfm = m.tfm\r\n/font file = bound.sfs\r\n/resource = font 4711\r\n",
         {"bound.sfs 10U 4711 m.tfm"});
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
  expect("the first of two",
         start + "/tfm = m.tfm\n/tfm = x\n" + file + "/font file = none\n/resource = a 7\n" +
             "/resource = a 8\n",
         {"bound.sfs 8U 7 m.tfm"});
  expect("comments and blanks",
         "; [PCL fonts]\n\n  [PCL fonts] of a disk\n \t{O} outline\n  FONT\n;/tfm = none\n"
         "  /tfm = m.tfm ; metrics\n/font file =   bound.sfs  }\n/symset = 8Uxyz rest\n",
         {"bound.sfs 8Ux 0 m.tfm"});
  expect("a memory of two words", start + file + "/resource = 12\n", {plain});
  expect("a memory of four words", start + file + "/resource = a 12 b\n", {plain});
  expect("a memory beyond the field", start + file + "/resource = a 99999999999\n",
         {"bound.sfs 8U 4294967295 "});
  expect("a line beyond 99 characters",
         start + "/font file = " + std::string(80, ' ') + "bound.sfs\n", {});
  expect("a cartridge comes first",
         start + file + "[Cartridge]\n{ bitmap.sfp Some name\n/class = O\n}\n", {plain, bitmap});
  expect("no word in the cartridge, and another section",
         "[Cartridge]\n{\n{ }\n[Other]\n{ bitmap.sfp Name\n", {});
  expect("no line end", start + "/font file = bound.sfs", {plain});
}

TEST(FontIndex, IsReadForItsOwnFolderAndSomeKindsOnly) {
  const SearchedFolder folder;
  folder.Add("one.bit", Bitmap("One"));
  folder.Add("dir/two.bit", Bitmap("Two"));
  folder.Add("dir/same.bit", Bitmap("One"));
  folder.Add("dir/sub/GLUE.TXT", "[Cartridge]\n{ three.bit\n");
  folder.Add("three.bit", Bitmap("Three"));
  folder.Add("dir/GLUE.TXT", "[Cartridge]\n{ one.bit\n");
  const auto find = [](uint32_t kind, uint16_t most = 0) {
    return FindFonts({.directory = "dir", .kind = kind, .recurse = 1, .most = most});
  };
  for (const uint32_t kind : {10U, 14U, 16U, 26U, 27U}) {
    EXPECT_EQ(find(kind), (Names{"dir\\two.bit", "one.bit"})) << kind;
  }
  EXPECT_EQ(find(10, 1), Names{"one.bit"});
  EXPECT_EQ(find(9), (Names{"dir\\two.bit", "dir\\same.bit"}));
}

Names reports;

void HVAPI_CALL Report(const HvFontInfo* info, uint32_t percent) {
  reports.push_back((info == nullptr ? "-" : std::string(info->name).substr(0, 3)) + " " +
                    std::to_string(percent));
}

TEST(FontFind, ReportsEachFileAndEachFont) {
  const SearchedFolder folder;
  folder.Add("a.bit", Bitmap("One"));
  folder.Add("dir/x.txt", "");
  folder.Add("e.bit", Bitmap("One"));
  folder.Add("f.bit", Bitmap("Two"));
  folder.Add(".g", "");
  const auto find = [](uint32_t recurse) {
    reports.clear();
    uint16_t count = 0;
    HvFonFindFree(HvFonFind2("", &count, 26, 6, 0, recurse, Report));
    EXPECT_EQ(count, 2);
    return reports;
  };
  EXPECT_EQ(find(1), (Names{"- 25", "One 25", "- 50", "- 75", "- 100", "Two 100"}));
  EXPECT_EQ(find(0), (Names{"- 33", "One 33", "- 66", "- 100", "Two 100"}));
}

TEST(MacroFind, ListsTheMacrosOfALanguage) {
  const SearchedFolder folder;
  const std::string macro = "\x1B&f7y0Xtext\x1B&f1X";
  folder.Add("a.mac", macro);
  folder.Add("b.txt", "no macro");
  folder.Add("c.exe", macro);
  folder.Add("d.ps", "serverdict begin 0 exitserver /form {showpage} def\n");
  folder.Add("dir/e.mac", "\x1B&f9y0X\x1B&f1X");
  folder.Add("f.ppds", "\x1B[l\x05");
  folder.Add("g.xl", ") HP-PCL XL;1;1;\n\xC8\xC0\x04Logo\xF8\x8B[");
  const auto find = [](uint32_t language, uint32_t recurse, uint16_t most = 0) {
    HvFoundResource* const list = HvMacFind("", &most, language, 0, recurse);
    return Told(list, most, RESOURCE_MACRO, [](const HvFoundResource& entry) {
      const auto& info = *static_cast<const HvMacroInfo*>(entry.details);
      return std::string(entry.path) + " " + std::to_string(info.macroId) + " " +
             std::to_string(info.flags);
    });
  };
  EXPECT_EQ(find(JOB_EMULATION_PCL, 0), Names{".\\a.mac 7 26"});
  EXPECT_EQ(find(JOB_EMULATION_PCL, 1), (Names{".\\dir\\e.mac 9 26", ".\\a.mac 7 26"}));
  EXPECT_EQ(find(JOB_EMULATION_PCL, 1, 1), Names{".\\a.mac 7 26"});
  EXPECT_EQ(find(JOB_EMULATION_PPDS, 0), Names{".\\f.ppds 0 26"});
  EXPECT_EQ(find(JOB_EMULATION_PCLXL, 0), Names{".\\g.xl 0 0"});
}

TEST(DemoFind, ListsAllButProgramsAndSystemFiles) {
  const SearchedFolder folder;
  for (const char* const name : {"A.TXT", "B.EXE", "D.PS", "e", "f.ini", "g.dllx", "dir/h.ps"}) {
    folder.Add(name, "some bytes");
  }
  const auto find = [](uint32_t recurse, uint16_t most) {
    HvFoundResource* const list = HvDemFind(".", &most, 77, recurse);
    return Told(list, most, RESOURCE_DEMO, [](const HvFoundResource& entry) {
      EXPECT_EQ(+entry.details, nullptr);
      return entry.path;
    });
  };
  EXPECT_EQ(find(0, 0), (Names{".\\e", ".\\D.PS", ".\\A.TXT"}));
  EXPECT_EQ(find(1, 0), (Names{".\\e", ".\\dir\\h.ps", ".\\D.PS", ".\\A.TXT"}));
  EXPECT_EQ(find(1, 2), (Names{".\\D.PS", ".\\A.TXT"}));
}

}  // namespace
