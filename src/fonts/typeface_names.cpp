#include "fonts/typeface_names.h"

#include <iterator>

namespace hv {
namespace {

constexpr std::string_view TypefaceNames[] = {
    "M,LinePrinter",                // 0
    "M,Pica",                       // 1
    "M,Elite",                      // 2
    "M,Courier",                    // 3
    "W,Helv",                       // 4
    "R,Tms Rmn",                    // 5
    "M,Letter Gothic",              // 6
    "S,Script",                     // 7
    "M,Prestige Elite",             // 8
    "R,Caslon",                     // 9
    "M,Orator",                     // 10
    "M,Presentations",              // 11
    "W,Helv Condensed",             // 12
    "R,Serifa",                     // 13
    "W,Futura",                     // 14
    "R,Palatino",                   // 15
    "R,ITC Souvenir",               // 16
    "W,Optima",                     // 17
    "R,ITC Garamond",               // 18
    "D,Cooper Black",               // 19
    "S,Coronet",                    // 20
    "D,Broadway",                   // 21
    "R,Bodoni Condensed",           // 22
    "R,Century Schoolbook",         // 23
    "D,University Roman",           // 24
    "W,Helv Outline",               // 25
    "W,Futura Condensed",           // 26
    "R,ITC Korinna",                // 27
    "",                             // 28
    "D,Cloister Black",             // 29
    "R,ITC Galliard",               // 30
    "W,ITC Avant Garde",            // 31
    "S,Brush Script",               // 32
    "W,Blippo",                     // 33
    "D,Hobo",                       // 34
    "R,Windsor",                    // 35
    "W,Helv Compressed",            // 36
    "W,Helv Extra Comp",            // 37
    "W,Peignot",                    // 38
    "R,Baskerville",                // 39
    "R,ITC Garamond Cond",          // 40
    "W,News Gothic",                // 41
    "R,Goudy",                      // 42
    "S,ITC Zapf Chancery",          // 43
    "R,Clarendon",                  // 44
    "D,ITC Zapf Dingbats",          // 45
    "R,Bitstream Cooper",           // 46
    "R,ITC Bookman",                // 47
    "",                             // 48
    "",                             // 49
    "",                             // 50
    "W,Gill Sans",                  // 51
    "W,Univers",                    // 52
    "R,Bodoni",                     // 53
    "R,Rockwell",                   // 54
    "R,Melior",                     // 55
    "R,ITC Tiffany",                // 56
    "R,ITC Clearface",              // 57
    "D,Amelia",                     // 58
    "S,Park Avenue",                // 59
    "D,Handel Gothic",              // 60
    "D,Dom Casual",                 // 61
    "R,ITC Benguiat",               // 62
    "R,ITC Cheltenham",             // 63
    "R,Century Expanded",           // 64
    "W,Franklin Gothic",            // 65
    "W,Franklin Gothic Condensed",  // 66
    "W,Franklin Gothic Ex Cond",    // 67
    "R,Plantin",                    // 68
    "R,Trump Mediaeval",            // 69
    "D,Futura Black",               // 70
    "",                             // 71
    "",                             // 72
    "W,Uncial",                     // 73
    "",                             // 74
    "",                             // 75
    "",                             // 76
    "",                             // 77
    "R,ITC Lubalin Graph",          // 78
    "W,Eurostile",                  // 79
    "",                             // 80
    "",                             // 81
    "",                             // 82
    "",                             // 83
    "",                             // 84
    "W,Univers Cond",               // 85
    "",                             // 86
    "",                             // 87
    "",                             // 88
    "",                             // 89
    "",                             // 90
    "",                             // 91
    "",                             // 92
    "",                             // 93
    "",                             // 94
    "",                             // 95
    "",                             // 96
    "",                             // 97
    "",                             // 98
    "",                             // 99
    "",                             // 100
    "",                             // 101
    "",                             // 102
    "",                             // 103
    "",                             // 104
    "",                             // 105
    "",                             // 106
    "",                             // 107
    "",                             // 108
    "",                             // 109
    "",                             // 110
    "",                             // 111
    "",                             // 112
    "",                             // 113
    "",                             // 114
    "",                             // 115
    "",                             // 116
    "",                             // 117
    "",                             // 118
    "",                             // 119
    "",                             // 120
    "",                             // 121
    "",                             // 122
    "",                             // 123
    "",                             // 124
    "",                             // 125
    "",                             // 126
    "",                             // 127
    "",                             // 128
    "",                             // 129
    "",                             // 130
    "",                             // 131
    "",                             // 132
    "",                             // 133
    "",                             // 134
    "",                             // 135
    "R,Bitstream Charter",          // 136
    "R,Symbol A Prop Serif",        // 137
    "M,Symbol A Mono Sans Serif",   // 138
    "R,Bitstream Amerigo",          // 139
};
static_assert(std::size(TypefaceNames) == 140);

}  // namespace

std::string_view TypefaceName(uint32_t typeface) {
  return typeface < std::size(TypefaceNames) ? TypefaceNames[typeface] : std::string_view();
}

}  // namespace hv
