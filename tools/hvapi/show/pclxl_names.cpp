#include "show/pclxl_names.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <string_view>

namespace hvtool {
namespace {

struct Attribute {
  uint8_t id;
  const char* name;
  // Names of the values from 0 on, parted by blanks; "-" stands for none.
  std::string_view values = {};
};

// By identifier.
constexpr Attribute Attributes[] = {
    {2, "PaletteDepth", "e1Bit e4Bit e8Bit"},
    {3, "ColorSpace", "- eGray eRGB - - - eSRGB"},
    {4, "NullBrush"},
    {5, "NullPen"},
    {6, "PaletteData"},
    {8, "PatternSelectID"},
    {9, "GrayLevel"},
    {11, "RGBColor"},
    {12, "PatternOrigin"},
    {13, "NewDestinationSize"},
    {14, "PrimaryArray"},
    {15, "PrimaryDepth"},
    {33, "DeviceMatrix", "eNoDeviceMatrix eThreshold"},
    {34, "DitherMatrixDataType", "eUByte eSByte eUInt16 eSInt16"},
    {35, "DitherOrigin"},
    {36, "MediaDestination", "eDefaultDestination eFaceDownBin eFaceUpBin eJobOffsetBin"},
    {37, "MediaSize",
     "eLetterPaper eLegalPaper eA4Paper eExecPaper eLedgerPaper eA3Paper eCOM10Envelope "
     "eMonarchEnvelope eC5Envelope eDLEnvelope eJB4Paper eJB5Paper eB5Envelope eB5Paper "
     "eJPostcard eJDoublePostcard eA5Paper eA6Paper eJB6Paper"},
    {38, "MediaSource",
     "eDefaultSource eAutoSelect eManualFeed eMultiPurposeTray eUpperCassette eLowerCassette "
     "eEnvelopeTray eThirdCassette"},
    {39, "MediaType"},
    {40, "Orientation",
     "ePortraitOrientation eLandscapeOrientation eReversePortrait eReverseLandscape"},
    {41, "PageAngle"},
    {42, "PageOrigin"},
    {43, "PageScale"},
    {44, "ROP3"},
    {45, "TxMode", "eOpaque eTransparent"},
    {47, "CustomMediaSize"},
    {48, "CustomMediaSizeUnits", "eInch eMillimeter eTenthsOfAMillimeter"},
    {49, "PageCopies"},
    {50, "DitherMatrixSize"},
    {51, "DitherMatrixDepth", "e1Bit e4Bit e8Bit"},
    {52, "SimplexPageMode", "eSimplexFrontSide"},
    {53, "DuplexPageMode", "eDuplexHorizontalBinding eDuplexVerticalBinding"},
    {54, "DuplexPageSide", "eFrontMediaSide eBackMediaSide"},
    {65, "ArcDirection", "eClockWise eCounterClockWise"},
    {66, "BoundingBox"},
    {67, "DashOffset"},
    {68, "EllipseDimension"},
    {69, "EndPoint"},
    {70, "FillMode", "eNonZeroWinding eEvenOdd"},
    {71, "LineCapStyle", "eButtCap eRoundCap eSquareCap eTriangleCap"},
    {72, "LineJoinStyle", "eMiterJoin eRoundJoin eBevelJoin eNoJoin"},
    {73, "MiterLength"},
    {74, "LineDashStyle"},
    {75, "PenWidth"},
    {76, "Point"},
    {77, "NumberOfPoints"},
    {78, "SolidLine"},
    {79, "StartPoint"},
    {80, "PointType", "eUByte eSByte eUInt16 eSInt16"},
    {81, "ControlPoint1"},
    {82, "ControlPoint2"},
    {83, "ClipRegion", "eInterior eExterior"},
    {84, "ClipMode", "eNonZeroWinding eEvenOdd"},
    {98, "ColorDepth", "e1Bit e4Bit e8Bit"},
    {99, "BlockHeight"},
    {100, "ColorMapping", "eDirectPixel eIndexedPixel"},
    {101, "CompressMode", "eNoCompression eRLECompression eJPEGCompression eDeltaRowCompression"},
    {102, "DestinationBox"},
    {103, "DestinationSize"},
    {104, "PatternPersistence", "eTempPattern ePagePattern eSessionPattern"},
    {105, "PatternDefineID"},
    {107, "SourceHeight"},
    {108, "SourceWidth"},
    {109, "StartLine"},
    {110, "PadBytesMultiple"},
    {111, "BlockByteLength"},
    {115, "NumberOfScanLines"},
    {120, "ColorTreatment"},
    {129, "CommentData"},
    {130, "DataOrg", "eBinaryHighByteFirst eBinaryLowByteFirst"},
    {134, "Measure", "eInch eMillimeter eTenthsOfAMillimeter"},
    {136, "SourceType", "eDefaultDataSource"},
    {137, "UnitsPerMeasure"},
    {139, "StreamName"},
    {140, "StreamDataLength"},
    {143, "ErrorReport", "eNoReporting eBackChannel eErrorPage eBackChAndErrPage"},
    {161, "CharAngle"},
    {162, "CharCode"},
    {163, "CharDataSize"},
    {164, "CharScale"},
    {165, "CharShear"},
    {166, "CharSize"},
    {167, "FontHeaderLength"},
    {168, "FontName"},
    {169, "FontFormat"},
    {170, "SymbolSet"},
    {171, "TextData"},
    {172, "CharSubModeArray"},
    {173, "WritingMode", "eHorizontal eVertical"},
    {175, "XSpacingData"},
    {176, "YSpacingData"},
    {177, "CharBoldValue"},
};

const Attribute* Find(uint8_t attribute) {
  const auto* row =
      std::lower_bound(std::begin(Attributes), std::end(Attributes), attribute,
                       [](const Attribute& each, uint8_t wanted) { return each.id < wanted; });
  return row != std::end(Attributes) && row->id == attribute ? row : nullptr;
}

}  // namespace

std::string PclXlAttributeText(uint8_t attribute) {
  const Attribute* const row = Find(attribute);
  return row == nullptr ? "attribute " + std::to_string(attribute) : row->name;
}

std::string PclXlValueText(uint8_t attribute, const std::string& number) {
  const Attribute* const row = Find(attribute);
  if (row == nullptr || row->values.empty() || number.empty() ||
      number.find_first_not_of("0123456789") != std::string::npos || number.size() > 2) {
    return number;
  }
  std::string_view names = row->values;
  for (int i = std::stoi(number); i > 0; --i) {
    const std::size_t blank = names.find(' ');
    if (blank == std::string_view::npos) return number;
    names.remove_prefix(blank + 1);
  }
  const std::string_view name = names.substr(0, names.find(' '));
  return name == "-" ? number : std::string(name);
}

}  // namespace hvtool
