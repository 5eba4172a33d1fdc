#include "fontconv/pfm_glyph_names.h"

#include <iterator>

namespace hv {
namespace {

constexpr std::string_view PfmGlyphNameTable[] = {
    // 0
    "W00",
    "W01",
    "W02",
    "W03",
    "macron",
    "breve",
    "dotaccent",
    "W07",
    // 8
    "ring",
    "W09",
    "W0a",
    "W0b",
    "W0c",
    "W0d",
    "W0e",
    "W0f",
    // 16
    "hungarumlaut",
    "ogonek",
    "caron",
    "W13",
    "W14",
    "W15",
    "W16",
    "W17",
    // 24
    "W18",
    "W19",
    "W1a",
    "W1b",
    "W1c",
    "W1d",
    "W1e",
    "W1f",
    // 32
    "space",
    "exclam",
    "quotedbl",
    "numbersign",
    "dollar",
    "percent",
    "ampersand",
    "quotesingle",
    // 40
    "parenleft",
    "parenright",
    "asterisk",
    "plus",
    "comma",
    "hyphen",
    "period",
    "slash",
    // 48
    "zero",
    "one",
    "two",
    "three",
    "four",
    "five",
    "six",
    "seven",
    // 56
    "eight",
    "nine",
    "colon",
    "semicolon",
    "less",
    "equal",
    "greater",
    "question",
    // 64
    "at",
    "A",
    "B",
    "C",
    "D",
    "E",
    "F",
    "G",
    // 72
    "H",
    "I",
    "J",
    "K",
    "L",
    "M",
    "N",
    "O",
    // 80
    "P",
    "Q",
    "R",
    "S",
    "T",
    "U",
    "V",
    "W",
    // 88
    "X",
    "Y",
    "Z",
    "bracketleft",
    "backslash",
    "bracketright",
    "asciicircum",
    "underscore",
    // 96
    "grave",
    "a",
    "b",
    "c",
    "d",
    "e",
    "f",
    "g",
    // 104
    "h",
    "i",
    "j",
    "k",
    "l",
    "m",
    "n",
    "o",
    // 112
    "p",
    "q",
    "r",
    "s",
    "t",
    "u",
    "v",
    "w",
    // 120
    "x",
    "y",
    "z",
    "braceleft",
    "bar",
    "braceright",
    "asciitilde",
    "W7f",
    // 128
    "W80",
    "W81",
    "quotesinglbase",
    "W83",
    "quotedblbase",
    "ellipsis",
    "dagger",
    "daggerdbl",
    // 136
    "asciicircum",
    "perthousand",
    "Scaron",
    "guilsinglleft",
    "OE",
    "W8d",
    "W8e",
    "W8f",
    // 144
    "W90",
    "quoteleft",
    "quoteright",
    "quotedblleft",
    "quotedblright",
    "bullet1",
    "endash",
    "emdash",
    // 152
    "asciitilde",
    "trademark",
    "scaron",
    "guilsinglright",
    "oe",
    "W9d",
    "W9e",
    "Ydieresis",
    // 160
    "reqspace",
    "exclamdown",
    "cent",
    "sterling",
    "currency",
    "yen",
    "brokenbar",
    "section",
    // 168
    "dieresis",
    "copyright",
    "ordfeminine",
    "guillemotleft",
    "logicalnot",
    "syllable",
    "registered",
    "overbar",
    // 176
    "degree",
    "plusminus",
    "twosuperior",
    "threesuperior",
    "acute",
    "mu",
    "paragraph",
    "periodcentered",
    // 184
    "cedilla",
    "onesuperior",
    "ordmasculine",
    "guillemotright",
    "onequarter",
    "onehalf",
    "threequarters",
    "questiondown",
    // 192
    "Agrave",
    "Aacute",
    "Acircumflex",
    "Atilde",
    "Adieresis",
    "Aring",
    "AE",
    "Ccedilla",
    // 200
    "Egrave",
    "Eacute",
    "Ecircumflex",
    "Edieresis",
    "Igrave",
    "Iacute",
    "Icircumflex",
    "Idieresis",
    // 208
    "Eth",
    "Ntilde",
    "Ograve",
    "Oacute",
    "Ocircumflex",
    "Otilde",
    "Odieresis",
    "multiply",
    // 216
    "Oslash",
    "Ugrave",
    "Uacute",
    "Ucircumflex",
    "Udieresis",
    "Yacute",
    "Thorn",
    "germandbls",
    // 224
    "agrave",
    "aacute",
    "acircumflex",
    "atilde",
    "adieresis",
    "aring",
    "ae",
    "ccedilla",
    // 232
    "egrave",
    "eacute",
    "ecircumflex",
    "edieresis",
    "igrave",
    "iacute",
    "icircumflex",
    "idieresis",
    // 240
    "eth",
    "ntilde",
    "ograve",
    "oacute",
    "ocircumflex",
    "otilde",
    "odieresis",
    "divide",
    // 248
    "oslash",
    "ugrave",
    "uacute",
    "ucircumflex",
    "udieresis",
    "yacute",
    "thorn",
    "ydieresis",
};
static_assert(std::size(PfmGlyphNameTable) == 256);

constexpr uint8_t StandardCodeMap[] = {
    0,   0,   0,   0,   197, 198, 199, 0,   202, 0,   205, 206, 207, 0,   0,   0,    // 0
    0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,    // 16
    32,  33,  34,  35,  36,  37,  38,  169, 40,  41,  42,  43,  44,  45,  46,  47,   // 32
    48,  49,  50,  51,  52,  53,  54,  55,  56,  57,  58,  59,  60,  61,  62,  63,   // 48
    64,  65,  66,  67,  68,  69,  70,  71,  72,  73,  74,  75,  76,  77,  78,  79,   // 64
    80,  81,  82,  83,  84,  85,  86,  87,  88,  89,  90,  91,  92,  93,  94,  95,   // 80
    193, 97,  98,  99,  100, 101, 102, 103, 104, 105, 106, 107, 108, 109, 110, 111,  // 96
    112, 113, 114, 115, 116, 117, 118, 119, 120, 121, 122, 123, 124, 125, 126, 127,  // 112
    0,   0,   184, 0,   185, 188, 178, 179, 94,  189, 0,   172, 234, 0,   0,   0,    // 128
    0,   96,  0,   170, 186, 0,   177, 208, 126, 0,   0,   173, 250, 0,   0,   0,    // 144
    0,   161, 162, 163, 168, 165, 0,   167, 200, 0,   227, 171, 0,   0,   0,   0,    // 160
    0,   0,   0,   0,   194, 0,   182, 180, 203, 0,   235, 187, 0,   0,   0,   191,  // 176
    0,   0,   0,   0,   0,   0,   225, 0,   0,   0,   0,   0,   0,   0,   0,   0,    // 192
    0,   0,   0,   0,   0,   0,   0,   0,   233, 0,   0,   0,   0,   0,   0,   251,  // 208
    0,   0,   0,   0,   0,   0,   241, 0,   0,   0,   0,   0,   0,   0,   0,   0,    // 224
    0,   0,   0,   0,   0,   0,   0,   0,   249, 0,   0,   0,   0,   0,   0,   0,    // 240
};
static_assert(std::size(StandardCodeMap) == 256);

// 0 as well for the codes that have a standard code.
constexpr uint8_t KeepFlagTable[] = {
    0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,  // 0
    0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,  // 16
    0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,  // 32
    0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,  // 48
    0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,  // 64
    0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,  // 80
    0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,  // 96
    0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,  // 112
    0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 2, 0, 0, 0, 0, 0,  // 128
    0, 0, 3, 0, 0, 2, 0, 0, 0, 2, 2, 0, 0, 0, 0, 2,  // 144
    1, 0, 0, 0, 0, 0, 1, 0, 0, 1, 0, 0, 1, 1, 1, 1,  // 160
    1, 1, 1, 1, 0, 1, 0, 0, 0, 1, 0, 0, 1, 1, 1, 0,  // 176
    1, 1, 1, 1, 1, 1, 0, 1, 1, 1, 1, 1, 1, 1, 1, 1,  // 192
    1, 1, 1, 1, 1, 1, 1, 1, 0, 1, 1, 1, 1, 1, 1, 0,  // 208
    1, 1, 1, 1, 1, 1, 0, 1, 1, 1, 1, 1, 1, 1, 1, 1,  // 224
    1, 1, 1, 1, 1, 1, 1, 1, 0, 1, 1, 1, 1, 1, 1, 1,  // 240
};
static_assert(std::size(KeepFlagTable) == 256);

}  // namespace

std::string_view PfmGlyphName(uint8_t code) {
  return PfmGlyphNameTable[code];
}

uint8_t StandardCodeOf(uint8_t code) {
  return StandardCodeMap[code];
}

bool IsKeptInAfm(uint8_t code, bool hasReferenceWidth) {
  constexpr uint8_t KeptAtReferenceWidth = 1;
  const uint8_t flags = KeepFlagTable[code];
  return hasReferenceWidth ? (flags & KeptAtReferenceWidth) != 0 : flags != 0;
}

}  // namespace hv
