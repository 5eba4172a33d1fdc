// The export of font conversion.

#include "api/arguments.h"
#include "api/guard.h"
#include "api/hvapi.h"
#include "fontconv/font_convert.h"

int32_t HVAPI_CALL HvFonConvert(const char* source, const char* destination,
                                const HvFontInfo* fontInfo, uint32_t pathSelector, int32_t type) {
  return hv::Guarded(int32_t{HV_NO_MEMORY}, [&] {
    if (!hv::IsPathArgument(source)) return int32_t{HV_BAD_ARGUMENT};
    if (destination != nullptr && !hv::IsPathArgument(destination)) return int32_t{HV_BAD_ARGUMENT};
    return static_cast<int32_t>(hv::ConvertFont(source, destination, fontInfo, pathSelector, type));
  });
}
