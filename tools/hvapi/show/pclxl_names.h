// The names of PCL XL attributes and of their values. Published source: the PCL
// XL Feature Reference.
#pragma once

#include <cstdint>
#include <string>

namespace hvtool {

// "MediaSize", or "attribute 200" for an unknown one.
std::string PclXlAttributeText(uint8_t attribute);

// The name of a value of an attribute that numbers names ("eA4Paper"), else the number.
std::string PclXlValueText(uint8_t attribute, const std::string& number);

}  // namespace hvtool
