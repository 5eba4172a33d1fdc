#include "show/pcl_commands.h"

#include <algorithm>
#include <iterator>

namespace hvtool {
namespace {

constexpr const char* Spacings = "0 fixed, 1 proportional";
constexpr const char* Styles =
    "0 upright, 1 italic, 4 condensed, 5 condensed italic, 8 compressed, 24 expanded, "
    "32 outline, 64 inline, 128 shadowed, 160 outline shadowed";
constexpr const char* Weights =
    "-7 ultra thin, -6 extra thin, -5 thin, -4 extra light, -3 light, -2 demi light, "
    "-1 semi light, 0 medium, 1 semi bold, 2 demi bold, 3 bold, 4 extra bold, 5 black, "
    "6 extra black, 7 ultra black";

// By group, then by letter.
constexpr PclCommand Commands[] = {
    {"%", 'A', "enter PCL", "0 cursor of PCL, 1 cursor of HP-GL/2"},
    {"%", 'B', "enter HP-GL/2", "0 pen where it was, 1 pen at the cursor of PCL"},
    {"%", 'X', "universal exit", ""},

    {"&a", 'C', "cursor across", "#columns"},
    {"&a", 'G', "side of the sheet", "0 next, 1 front, 2 back"},
    {"&a", 'H', "cursor across", "#decipoints"},
    {"&a", 'L', "left margin", "#columns"},
    {"&a", 'M', "right margin", "#columns"},
    {"&a", 'P', "print direction", "#degrees"},
    {"&a", 'R', "cursor down", "#rows"},
    {"&a", 'V', "cursor down", "#decipoints"},
    {"&b", 'M', "monochrome printing", "0 off, 1 on"},
    {"&b", 'W', "configuration of the printer", "#bytes", true},
    {"&d", 'D', "underline", "0 fixed, 3 floating"},
    {"&d", '@', "end of underline", nullptr},
    {"&f", 'F', "macro in a font identifier", ""},
    {"&f", 'S', "cursor stack", "0 push, 1 pop"},
    {"&f", 'X', "macro",
     "0 begin of definition, 1 end of definition, 2 execute, 3 call, 4 overlay, 5 no overlay, "
     "6 delete all, 7 delete all temporary, 8 delete, 9 make temporary, 10 make permanent"},
    {"&f", 'Y', "macro identifier", ""},
    {"&k", 'F', "flow control", "0 none, 1 on"},
    {"&k", 'G', "line termination",
     "0 CR and LF as they are, 1 CR adds LF, 2 LF and FF add CR, 3 all add"},
    {"&k", 'H', "width of a column", "#/120 inch"},
    {"&k", 'S', "pitch", "0 10 an inch, 2 16.66 an inch, 4 12 an inch"},
    {"&l", 'A', "page size",
     "1 executive, 2 letter, 3 legal, 6 ledger, 25 A5, 26 A4, 27 A3, 45 JIS B5, 46 JIS B4, "
     "71 postcard, 72 double postcard, 80 Monarch envelope, 81 Com-10 envelope, 90 DL envelope, "
     "91 C5 envelope, 100 B5 envelope, 101 custom"},
    {"&l", 'C', "height of a line", "#/48 inch"},
    {"&l", 'D', "lines an inch", ""},
    {"&l", 'E', "top margin", "#lines"},
    {"&l", 'F', "length of the text", "#lines"},
    {"&l", 'G', "output bin", "0 automatic, 1 upper, 2 lower"},
    {"&l", 'H', "paper source",
     "0 print the page, 1 main tray, 2 manual feed, 3 manual envelope feed, 4 second tray, "
     "5 third tray, 6 envelope feeder, 7 automatic, 8 first optional tray"},
    {"&l", 'L', "perforation skip", "0 off, 1 on"},
    {"&l", 'M', "paper type", "0 plain, 1 bond, 2 special, 3 glossy, 4 transparency"},
    {"&l", 'O', "orientation", "0 portrait, 1 landscape, 2 reverse portrait, 3 reverse landscape"},
    {"&l", 'P', "length of the page", "#lines"},
    {"&l", 'S', "sides", "0 simplex, 1 duplex, long edge, 2 duplex, short edge"},
    {"&l", 'T', "job separation", "0 off, 1 on"},
    {"&l", 'U', "left offset of the page", "#decipoints"},
    {"&l", 'X', "copies", ""},
    {"&l", 'Z', "top offset of the page", "#decipoints"},
    {"&n", 'W', "alphanumeric identifier", "#bytes", true},
    {"&p", 'C', "palette", ""},
    {"&p", 'I', "palette identifier", ""},
    {"&p", 'S', "select the palette", ""},
    {"&p", 'X', "text without control characters", "#bytes", true},
    {"&r", 'F', "flush pages", "0 whole pages, 1 all pages"},
    {"&s", 'C', "end-of-line wrap", "0 on, 1 off"},
    {"&t", 'P', "text parsing", "0 one byte, 1 one byte, 21 one or two bytes, 31 Shift-JIS"},
    {"&u", 'D', "units an inch", ""},

    {"(", '@', "default of the first font", ""},
    {"(", 'X', "first font by its identifier", ""},
    {"(f", 'W', "download of a symbol set", "#bytes", true},
    {"(s", 'B', "weight of the first font", Weights},
    {"(s", 'H', "pitch of the first font", "#an inch"},
    {"(s", 'P', "spacing of the first font", Spacings},
    {"(s", 'S', "style of the first font", Styles},
    {"(s", 'T', "typeface of the first font", ""},
    {"(s", 'V', "height of the first font", "#points"},
    {"(s", 'W', "download of a character", "#bytes", true},
    {")", '@', "default of the second font", ""},
    {")", 'X', "second font by its identifier", ""},
    {")s", 'B', "weight of the second font", Weights},
    {")s", 'H', "pitch of the second font", "#an inch"},
    {")s", 'P', "spacing of the second font", Spacings},
    {")s", 'S', "style of the second font", Styles},
    {")s", 'T', "typeface of the second font", ""},
    {")s", 'V', "height of the second font", "#points"},
    {")s", 'W', "download of a font descriptor", "#bytes", true},

    {"*b", 'B', "grey balance", "0 off, 1 on"},
    {"*b", 'L', "rows to skip", ""},
    {"*b", 'M', "compression of rows",
     "0 none, 1 run lengths, 2 TIFF, 3 delta rows, 5 adaptive, 9 replacement delta rows"},
    {"*b", 'S', "seed row", ""},
    {"*b", 'V', "plane of a row", "#bytes", true},
    {"*b", 'W', "row of dots", "#bytes", true},
    {"*b", 'X', "offset of rows", "#dots"},
    {"*b", 'Y', "rows left empty", ""},
    {"*c", 'A', "width of the rectangle", "#dots"},
    {"*c", 'B', "height of the rectangle", "#dots"},
    {"*c", 'D', "font identifier", ""},
    {"*c", 'E', "character code", ""},
    {"*c", 'F', "font",
     "0 delete all, 1 delete all temporary, 2 delete, 3 delete the character, 4 make temporary, "
     "5 make permanent, 6 copy"},
    {"*c", 'G', "pattern identifier", ""},
    {"*c", 'H', "width of the rectangle", "#decipoints"},
    {"*c", 'K', "width of the HP-GL/2 plot", "#inches"},
    {"*c", 'L', "height of the HP-GL/2 plot", "#inches"},
    {"*c", 'P', "fill the rectangle",
     "0 black, 1 white, 2 grey, 3 crosshatch, 4 pattern of the user, 5 current pattern"},
    {"*c", 'Q', "patterns",
     "0 delete all, 1 delete all temporary, 2 delete, 4 make temporary, "
     "5 make permanent"},
    {"*c", 'R', "symbol set identifier", ""},
    {"*c", 'S', "symbol sets",
     "0 delete all, 1 delete all temporary, 2 delete, 4 make temporary, "
     "5 make permanent"},
    {"*c", 'T', "anchor of the picture frame at the cursor", nullptr},
    {"*c", 'V', "height of the rectangle", "#decipoints"},
    {"*c", 'W', "download of a pattern", "#bytes", true},
    {"*c", 'X', "width of the picture frame", "#decipoints"},
    {"*c", 'Y', "height of the picture frame", "#decipoints"},
    {"*i", 'W', "viewing illuminant", "#bytes", true},
    {"*l", 'O', "raster operation", ""},
    {"*l", 'R', "pixel placement", "0 on the grid, 1 between the grid"},
    {"*l", 'W', "colour lookup tables", "#bytes", true},
    {"*m", 'W', "dither matrix", "#bytes", true},
    {"*o", 'D', "depletion", ""},
    {"*o", 'M', "print quality", "-1 draft, 0 normal, 1 presentation"},
    {"*o", 'W', "configuration of the driver", "#bytes", true},
    {"*p", 'P', "palette stack", "0 push, 1 pop"},
    {"*p", 'R', "pattern anchor", "0 turns with the page, 1 fixed"},
    {"*p", 'X', "cursor across", "#units"},
    {"*p", 'Y', "cursor down", "#units"},
    {"*r", 'A', "begin of a picture",
     "0 at the left, 1 at the cursor, 2 at the left, scaled, 3 at the cursor, scaled"},
    {"*r", 'B', "end of a picture", nullptr},
    {"*r", 'C', "end of a picture", nullptr},
    {"*r", 'F', "direction of rows", "0 along the page, 3 along the width of the paper"},
    {"*r", 'Q', "print quality", "0 by the panel, 1 draft, 2 high"},
    {"*r", 'S', "width of the picture", "#dots"},
    {"*r", 'T', "height of the picture", "#rows"},
    {"*r", 'U', "simple colours", "-4 KCMY, -3 CMY, 1 black, 3 RGB"},
    {"*s", 'I', "question: units of status", ""},
    {"*s", 'M', "question: free memory", ""},
    {"*s", 'T', "question: place of status", ""},
    {"*s", 'U', "question: unit of the place", ""},
    {"*s", 'X', "echo", ""},
    {"*t", 'H', "width of the picture on paper", "#decipoints"},
    {"*t", 'I', "gamma", ""},
    {"*t", 'J', "rendering", ""},
    {"*t", 'R', "dots an inch", ""},
    {"*t", 'V', "height of the picture on paper", "#decipoints"},
    {"*v", 'A', "first component of a colour", ""},
    {"*v", 'B', "second component of a colour", ""},
    {"*v", 'C', "third component of a colour", ""},
    {"*v", 'I', "palette entry for the colour", ""},
    {"*v", 'N', "white of pictures", "0 transparent, 1 opaque"},
    {"*v", 'O', "white of patterns", "0 transparent, 1 opaque"},
    {"*v", 'S', "foreground colour", ""},
    {"*v", 'T', "pattern", "0 black, 1 white, 2 grey, 3 crosshatch, 4 of the user"},
    {"*v", 'W', "configuration of picture data", "#bytes", true},
};

struct Escape {
  char c;
  const char* meaning;
};

constexpr Escape Escapes[] = {
    {'9', "margins at their defaults"}, {'=', "half a line down"},
    {'E', "reset the printer"},         {'M', "end of a demonstration file"},
    {'Y', "show control characters"},   {'Z', "show control characters no more"},
    {'z', "print a test page"},
};

// The word for a value in a list "0 portrait, 1 landscape"; a comma before anything but a number
// belongs to the word.
std::string_view WordFor(std::string_view list, std::string_view value) {
  const auto startsEntry = [&](std::size_t at) {
    return at == 0 || (at >= 2 && list.substr(at - 2, 2) == ", ");
  };
  for (std::size_t at = list.find(value); at != std::string_view::npos;
       at = list.find(value, at + 1)) {
    const std::size_t word = at + value.size() + 1;
    if (!startsEntry(at) || word > list.size() || list[word - 1] != ' ') continue;
    std::size_t end = word;
    do {
      end = std::min(list.find(", ", end + 1), list.size());
    } while (end + 2 < list.size() && list[end + 2] != '-' &&
             (list[end + 2] < '0' || list[end + 2] > '9'));
    return list.substr(word, end - word);
  }
  return {};
}

}  // namespace

const PclCommand* FindPclCommand(std::string_view group, char letter) {
  const auto* row = std::find_if(
      std::begin(Commands), std::end(Commands),
      [&](const PclCommand& each) { return each.group == group && each.letter == letter; });
  if (row != std::end(Commands)) return row;
  // A symbol set is named by any letter.
  static constexpr PclCommand First = {"(", 'U', "symbol set of the first font", ""};
  static constexpr PclCommand Second = {")", 'U', "symbol set of the second font", ""};
  return group == "(" ? &First : group == ")" ? &Second : nullptr;
}

std::string PclMeaning(const PclCommand& command, const std::string& value) {
  std::string meaning = command.meaning;
  if (command.values == nullptr) return meaning;
  const std::string_view values = command.values;
  const std::string number = value.empty() ? "0" : value[0] == '+' ? value.substr(1) : value;
  if (values.starts_with('#')) {
    const bool isPart = values.starts_with("#/");
    return meaning + ": " + (value.empty() ? number : value) + (isPart ? "" : " ") +
           std::string(values.substr(1));
  }
  const std::string_view word = WordFor(values, number);
  return meaning + ": " + (word.empty() ? number : std::string(word));
}

const char* PclEscapeMeaning(char c) {
  const auto* row = std::find_if(std::begin(Escapes), std::end(Escapes),
                                 [&](const Escape& each) { return each.c == c; });
  return row == std::end(Escapes) ? nullptr : row->meaning;
}

}  // namespace hvtool
