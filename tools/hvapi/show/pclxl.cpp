// PCL XL: operators with their attributes, and the data that they read.

#include <algorithm>
#include <array>
#include <bit>
#include <cstdio>

#include "pclxl/tags.h"
#include "show/explainer.h"
#include "show/pclxl_names.h"

namespace hvtool {
namespace {

using hv::PclXlClass;

// Longer lists of elements are cut in the explanation.
constexpr std::size_t MaxElements = 8;
constexpr std::size_t MaxText = 40;

bool IsPrintable(int c) {
  return c >= 0x20 && c < 0x7F;
}

// One element, low byte first.
std::string ElementText(uint8_t tag, uint32_t bits) {
  switch (tag & 7) {
    case 3:
      return std::to_string(static_cast<int16_t>(bits));
    case 4:
      return std::to_string(static_cast<int32_t>(bits));
    case 5: {
      std::array<char, 32> text = {};
      std::snprintf(text.data(), text.size(), "%g",
                    static_cast<double>(std::bit_cast<float>(bits)));
      return text.data();
    }
    default:
      return std::to_string(bits);
  }
}

}  // namespace

void Explainer::ExplainPclXl() {
  if (ExplainPclXlHeader()) return;
  const int tag = reader_.Peek();
  if (tag == hv::PclXlData || tag == hv::PclXlShortData) {
    return ExplainPclXlData(tag == hv::PclXlShortData);
  }
  ExplainPclXlOperator();
}

// The first line of a job, or of a stream inside one.
bool Explainer::ExplainPclXlHeader() {
  if (!reader_.Matches(") HP-PCL XL;") && !reader_.Matches(") PCL XL;")) return false;
  reader_.TakeLine();
  reader_.Emit("header of PCL XL, low byte first", true);
  return true;
}

// The values up to an operator, and that. Values without an operator, and bytes that are none, are
// pieces of their own.
void Explainer::ExplainPclXlOperator() {
  std::string attributes;
  std::string value;
  const auto emitValues = [&] {
    const bool blank = attributes.empty() && value.empty();
    reader_.Emit(blank ? "blank" : "values without an operator:" + attributes + " " + value);
  };
  for (;;) {
    const int byte = reader_.Peek();
    if (byte < 0) return emitValues();
    const auto tag = static_cast<uint8_t>(byte);
    switch (hv::PclXlClassOf(tag)) {
      case PclXlClass::Blank:
        reader_.Take();
        break;
      case PclXlClass::Scalar:
      case PclXlClass::Pair:
      case PclXlClass::Box:
        value.clear();
        if (!TakePclXlValue(tag, &value)) return reader_.Emit("a value that is cut off");
        break;
      case PclXlClass::Array:
        value.clear();
        if (!TakePclXlArray(tag, &value)) return reader_.Emit("an array that cannot be read");
        break;
      case PclXlClass::Attribute: {
        const auto id = static_cast<uint8_t>(std::max(reader_.Peek(1), 0));
        if (reader_.Take(2) < 2) return reader_.Emit("an attribute that is cut off");
        // So many that a line can hold them.
        constexpr std::size_t MaxLine = 2000;
        if (attributes.size() < MaxLine) {
          attributes += (attributes.empty() ? " " : ", ") + PclXlAttributeText(id) + " " +
                        PclXlValueText(id, value);
        }
        value.clear();
        break;
      }
      case PclXlClass::Operator:
        reader_.Take();
        lastOperator_ = hv::PclXlOperatorName(tag);
        return reader_.Emit(lastOperator_ + (attributes.empty() ? "" : ":" + attributes));
      case PclXlClass::Data:
      case PclXlClass::ShortData:
        return emitValues();
      case PclXlClass::Escape:
      case PclXlClass::Unknown:
      case PclXlClass::Refused:
        emitValues();
        reader_.Take();
        return reader_.Emit("unknown");
    }
  }
}

// False when the stream ends first.
bool Explainer::TakePclXlValue(uint8_t tag, std::string* text) {
  const unsigned size = hv::PclXlElementSize(tag);
  const unsigned count = hv::PclXlElementCount(hv::PclXlClassOf(tag));
  if (reader_.Peek(std::size_t{size} * count) < 0) {
    reader_.Take(1 + std::size_t{size} * count);
    return false;
  }
  reader_.Take();
  for (unsigned i = 0; i < count; ++i) {
    if (i > 0) *text += ' ';
    *text += ElementText(tag, reader_.PeekNumber(0, size));
    reader_.Take(size);
  }
  return true;
}

// Printable bytes are shown as a text.
bool Explainer::TakePclXlArray(uint8_t tag, std::string* text) {
  const int lengthTag = reader_.Peek(1);
  const unsigned lengthSize = lengthTag == hv::PclXlUbyte    ? 1
                              : lengthTag == hv::PclXlUint16 ? 2
                                                             : 0;
  if (lengthSize == 0 || reader_.Peek(1 + lengthSize) < 0) {
    reader_.Take(2 + lengthSize);
    return false;
  }
  const std::size_t length = reader_.PeekNumber(2, lengthSize);
  reader_.Take(2 + lengthSize);
  const unsigned size = hv::PclXlElementSize(tag);
  bool isText = size == 1 && length > 0;
  for (std::size_t i = 0; isText && i < std::min(length, MaxText); ++i) {
    isText = IsPrintable(reader_.Peek(i));
  }
  std::size_t shown = 0;
  if (isText) {
    *text += '"';
    for (; shown < std::min(length, MaxText); ++shown) {
      *text += static_cast<char>(reader_.Peek(shown));
    }
    *text += '"';
  } else {
    for (; shown < std::min(length, MaxElements); ++shown) {
      if (reader_.Peek((shown + 1) * size - 1) < 0) break;
      *text += (shown > 0 ? " " : "") + ElementText(tag, reader_.PeekNumber(shown * size, size));
    }
  }
  if (shown < length) *text += " .. (" + std::to_string(length) + ")";
  const uint64_t bytes = uint64_t{length} * size;
  return reader_.Take(bytes) == bytes;
}

// The data of a stream are explained themselves when they begin as one.
void Explainer::ExplainPclXlData(bool isShort) {
  const unsigned lengthSize = isShort ? 1 : 4;
  if (reader_.Peek(lengthSize) < 0) {
    reader_.Take(1 + lengthSize);
    return reader_.Emit("a length of data that is cut off");
  }
  const uint64_t length = reader_.PeekNumber(1, lengthSize);
  reader_.Take(1 + lengthSize);
  const std::string what = std::to_string(length) + " bytes of data" +
                           (lastOperator_.empty() ? "" : " for " + lastOperator_);
  if (lastOperator_ == "ReadStream" && reader_.Matches(") HP-PCL XL;")) {
    return reader_.Emit(what + ":");
  }
  const uint64_t taken = reader_.Take(length);
  reader_.Emit(what + (taken < length ? ", cut off" : ""));
}

}  // namespace hvtool
