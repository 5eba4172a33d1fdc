#include "pclxl/tags.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace hv {
namespace {

// clang-format off
constexpr char ClassGrid[] =
    // 0123456789ABCDEF
    "_........_____.."  // 0
    "...........e...."  // 1
    "_......rrr......"  // 2
    "................"  // 3
    ".oooo..ooooo...o"  // 4
    "oooooo.....oooo."  // 5
    "oooooooooooooooo"  // 6
    "oooooooooooooo.o"  // 7
    "oo..ooo........."  // 8
    ".o.o.ooooo.o.ooo"  // 9
    "oooo....ooo....."  // A
    "ooooooo.oo......"  // B
    "ssssss..aaaaaa.."  // C
    "pppppp..rrrrrr.."  // D
    "bbbbbb..rrrrrr.."  // E
    "........ArdD....";  // F
// clang-format on

// Where a stream may hold an operator.
enum class Level : uint8_t {
  Neither,  // at its begin alone
  Session,  // between pages
  Page,
  Both,
};

struct OperatorRow {
  uint8_t tag;
  Level level;
  const char* name;
};

// By tag.
constexpr OperatorRow Operators[] = {
    {0x41, Level::Neither, "BeginSession"},
    {0x42, Level::Session, "EndSession"},
    {0x43, Level::Session, "BeginPage"},
    {0x44, Level::Page, "EndPage"},
    {0x47, Level::Both, "Comment"},
    {0x48, Level::Both, "OpenDataSource"},
    {0x49, Level::Both, "CloseDataSource"},
    {0x4A, Level::Both, "EchoComment"},
    {0x4B, Level::Both, "Query"},
    {0x4F, Level::Both, "BeginFontHeader"},
    {0x50, Level::Both, "ReadFontHeader"},
    {0x51, Level::Both, "EndFontHeader"},
    {0x52, Level::Both, "BeginChar"},
    {0x53, Level::Both, "ReadChar"},
    {0x54, Level::Both, "EndChar"},
    {0x55, Level::Both, "RemoveFont"},
    {0x5B, Level::Both, "BeginStream"},
    {0x5C, Level::Both, "ReadStream"},
    {0x5D, Level::Both, "EndStream"},
    {0x5E, Level::Both, "ExecStream"},
    {0x60, Level::Page, "PopGS"},
    {0x61, Level::Page, "PushGS"},
    {0x62, Level::Page, "SetClipReplace"},
    {0x63, Level::Page, "SetBrushSource"},
    {0x64, Level::Page, "SetCharAngle"},
    {0x65, Level::Page, "SetCharScale"},
    {0x66, Level::Page, "SetCharShear"},
    {0x67, Level::Page, "SetClipIntersect"},
    {0x68, Level::Page, "SetClipRectangle"},
    {0x69, Level::Page, "SetClipToPage"},
    {0x6A, Level::Page, "SetColorSpace"},
    {0x6B, Level::Page, "SetCursor"},
    {0x6C, Level::Page, "SetCursorRel"},
    {0x6D, Level::Page, "SetHalftoneMethod"},
    {0x6E, Level::Page, "SetFillMode"},
    {0x6F, Level::Page, "SetFont"},
    {0x70, Level::Page, "SetLineDash"},
    {0x71, Level::Page, "SetLineCap"},
    {0x72, Level::Page, "SetLineJoin"},
    {0x73, Level::Page, "SetMiterLimit"},
    {0x74, Level::Page, "SetPageDefaultCTM"},
    {0x75, Level::Page, "SetPageOrigin"},
    {0x76, Level::Page, "SetPageRotation"},
    {0x77, Level::Page, "SetPageScale"},
    {0x78, Level::Page, "SetPaintTxMode"},
    {0x79, Level::Page, "SetPenSource"},
    {0x7A, Level::Page, "SetPenWidth"},
    {0x7B, Level::Page, "SetROP"},
    {0x7C, Level::Page, "SetSourceTxMode"},
    {0x7D, Level::Page, "SetCharBoldValue"},
    {0x7F, Level::Page, "SetClipMode"},
    {0x80, Level::Page, "SetPathToClip"},
    {0x81, Level::Page, "SetCharSubMode"},
    {0x84, Level::Page, "CloseSubPath"},
    {0x85, Level::Page, "NewPath"},
    {0x86, Level::Page, "PaintPath"},
    {0x91, Level::Page, "ArcPath"},
    {0x93, Level::Page, "BezierPath"},
    {0x95, Level::Page, "BezierRelPath"},
    {0x96, Level::Page, "Chord"},
    {0x97, Level::Page, "ChordPath"},
    {0x98, Level::Page, "Ellipse"},
    {0x99, Level::Page, "EllipsePath"},
    {0x9B, Level::Page, "LinePath"},
    {0x9D, Level::Page, "LineRelPath"},
    {0x9E, Level::Page, "Pie"},
    {0x9F, Level::Page, "PiePath"},
    {0xA0, Level::Page, "Rectangle"},
    {0xA1, Level::Page, "RectanglePath"},
    {0xA2, Level::Page, "RoundRectangle"},
    {0xA3, Level::Page, "RoundRectanglePath"},
    {0xA8, Level::Page, "Text"},
    {0xA9, Level::Page, "TextPath"},
    {0xAA, Level::Page, "SystemText"},
    {0xB0, Level::Page, "BeginImage"},
    {0xB1, Level::Page, "ReadImage"},
    {0xB2, Level::Page, "EndImage"},
    {0xB3, Level::Page, "BeginRastPattern"},
    {0xB4, Level::Page, "ReadRastPattern"},
    {0xB5, Level::Page, "EndRastPattern"},
    {0xB6, Level::Page, "BeginScan"},
    {0xB8, Level::Page, "EndScan"},
    {0xB9, Level::Page, "ScanLineRel"},
};

constexpr auto Levels = [] {
  std::array<Level, 256> levels = {};
  for (const OperatorRow& row : Operators) levels[row.tag] = row.level;
  levels[PclXlData] = levels[PclXlShortData] = Level::Both;
  return levels;
}();

static_assert(sizeof ClassGrid == 256 + 1);
static_assert(std::is_sorted(std::begin(Operators), std::end(Operators),
                             [](const OperatorRow& a, const OperatorRow& b) {
                               return a.tag < b.tag;
                             }));

constexpr auto PlainLengths = [] {
  std::array<uint8_t, 256> lengths = {};
  for (unsigned byte = 0; byte < lengths.size(); ++byte) {
    const auto tag = static_cast<uint8_t>(byte);
    const auto kind = static_cast<PclXlClass>(ClassGrid[tag]);
    const bool stream = tag >= PclXlBeginStream && tag <= PclXlExecStream;
    const bool pageLevel = Levels[tag] == Level::Page || Levels[tag] == Level::Both;
    if (kind == PclXlClass::Scalar || kind == PclXlClass::Pair || kind == PclXlClass::Box) {
      lengths[tag] = static_cast<uint8_t>(1 + PclXlElementSize(tag) * PclXlElementCount(kind));
    } else if (kind == PclXlClass::Operator && pageLevel && !stream && tag != PclXlEndPage) {
      lengths[tag] = 1;
    }
  }
  return lengths;
}();

}  // namespace

const std::array<uint8_t, 256> PclXlPlainLengths = PlainLengths;

PclXlClass PclXlClassOf(uint8_t tag) {
  return static_cast<PclXlClass>(ClassGrid[tag]);
}

bool PclXlIsSessionOperator(uint8_t tag) {
  return Levels[tag] == Level::Session || Levels[tag] == Level::Both;
}

bool PclXlIsPageOperator(uint8_t tag) {
  return Levels[tag] == Level::Page || Levels[tag] == Level::Both;
}

const char* PclXlOperatorName(uint8_t tag) {
  const auto* row = std::lower_bound(
      std::begin(Operators), std::end(Operators), tag,
      [](const OperatorRow& operatorRow, uint8_t wanted) { return operatorRow.tag < wanted; });
  return row != std::end(Operators) && row->tag == tag ? row->name : nullptr;
}

}  // namespace hv
