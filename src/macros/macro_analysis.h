// Reads a file as a macro of a printer language, in the forms that macros are written in:
//
//   PPDS        begins with ESC [ l
//   PCL         a macro definition, ESC & f # y 0 X ... ESC & f 1 X
//   PostScript  a procedure stored in the printer's memory, or a file on one of its devices; with
//               MACRO_FLAG_PS_OVERLAY a page, whose name stands in a comment
#pragma once

#include <cstdint>
#include <string>

#include "api/hvapi.h"
#include "macros/macro_stream.h"
#include "platform/stream.h"

namespace hv {

// What a macro says of itself; what it does not say stays as it is.
struct MacroFindings {
  bool isDemo = false;
  uint32_t target = 0;  // STORAGE_DEVICE_...
  std::string name;
  uint16_t identifier = 0;
};

constexpr std::size_t MostMacroNameBytes = 23;

// The preamble of a demonstration page, without its line feed.
constexpr std::string_view DemoPreamble =
    "statusdict begin currentfilenameextend false setfilenameextend end";
// What a stored procedure begins with, up to its name.
constexpr std::string_view StoredProcedureStart = "serverdict begin 0 exitserver /";
// What a stored file begins with, up to the name of the device.
constexpr std::string_view StoredFileStart = "/writefile (%";
// The comment of an overlay, up to its name.
constexpr std::string_view OverlayComment = "%%Quintar Overlay: ";

// Results are those of HvMacValidate; the two records are written on success only
// (MACRO_FLAG_FILTER apart). PCL XL sources are not for this function.
uint32_t AnalyzeMacroSource(platform::Stream* source, HvJobInfo* job, HvMacroInfo* info);

// The forms of one language, read from where the stream stands. HV_OK or HV_WRONG_LANGUAGE.
uint32_t AnalyzePostScriptMacro(MacroStream* stream, MacroFindings* findings);
uint32_t AnalyzePostScriptOverlay(MacroStream* stream, MacroFindings* findings);
// `size` is that of the source in bytes.
uint32_t AnalyzePclMacro(MacroStream* stream, int64_t size, MacroFindings* findings);

// The mask that a filter is to use. A mask of the caller's own also switches the filter on, which
// the record then shows.
uint32_t ChooseFilterMask(HvMacroInfo* info);

}  // namespace hv
