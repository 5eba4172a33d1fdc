// The commands of each printer language that define, keep, switch and delete macros.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "api/hvapi.h"
#include "channel/printer_channel.h"

namespace hv {

// ---- PCL

// ESC & f # y 0 X, and with MACRO_FLAG_CALL_MACRO the call of another macro.
std::string PclBeginMacro(uint16_t identifier, const HvMacroInfo& info);
constexpr std::string_view PclEndMacro = "\x1B&f1X";
std::string PclMakeMacroPermanent(uint16_t identifier);

// ---- PPDS

// The count of a block is 16 bits wide and counts the three bytes behind it, too.
constexpr uint32_t LargestPpdsMacro = 0xFFFF - 3;
std::string PpdsBeginMacro(uint16_t identifier, uint32_t size);

// ---- PostScript

constexpr std::string_view NeutralizeShowpage = "userdict begin /showpage {} def end\n";
constexpr std::string_view RestoreShowpage = "\nuserdict /showpage undef ";
constexpr std::string_view Showpage = "\nshowpage ";

std::string PostScriptOverlayComment(const std::string& name);

// A procedure in the printer's memory.
std::string PostScriptBeginProcedure(const std::string& name);
constexpr std::string_view PostScriptEndProcedure = "\n} def\n";

// A file on a device; the byte 1 ends the loop that copies it.
std::string PostScriptBeginFile(uint32_t device, const std::string& name);
constexpr std::string_view PostScriptEndFile = "\x01\n";

// Around the file of a demonstration page.
std::string PostScriptBeginDemo();
constexpr std::string_view PostScriptEndDemo = "\nstatusdict begin setfilenameextend end ";

// ---- PCL XL and PJL

constexpr std::string_view PclXlEnterLanguage = "@PJL ENTER LANGUAGE = PCLXL\n";
std::string PclXlBeginStore(uint32_t device);
std::string PjlResourceDescription(uint32_t device, uint16_t identifier, const std::string& name);

// ---- Sending, to a channel whose job says language and identifier

// The channel's status.
uint32_t SendCommand(std::string_view command, PrinterChannel* channel);

// The command that switches a macro on or off. HV_OK whatever became of the write, and for
// PostScript and PCL XL, which have none; HV_BAD_ARGUMENT for a language without macros.
uint32_t SendMacroControl(PrinterChannel* channel, bool enable);

// The command that deletes a macro. HV_OK, also for PPDS and PostScript, which have none;
// HV_BAD_ARGUMENT for other languages.
uint32_t SendMacroDelete(PrinterChannel* channel);

}  // namespace hv
