// The families of commands, one file each. A function adds its commands to the program.
#pragma once

#include "command_line.h"

namespace hvtool {

void AddReplyCommands(CLI::App* program);
void AddSendCommands(CLI::App* program);
void AddShowCommands(CLI::App* program);
void AddFileCommands(CLI::App* program);
void AddQueueCommands(CLI::App* program);
void AddFontCommands(CLI::App* program);
void AddMacroCommands(CLI::App* program);
void AddDemoCommands(CLI::App* program);
void AddFindCommands(CLI::App* program);
void AddFontConvertCommand(CLI::App* group);  // of the font commands
void AddIniCommands(CLI::App* program);
void AddRecordCommands(CLI::App* program);
void AddPanelCommands(CLI::App* program);
void AddSetupCommands(CLI::App* program);
void AddListingCommands(CLI::App* program);
void AddUnzipCommands(CLI::App* program);
void AddUrlCommands(CLI::App* program);
void AddInfoCommands(CLI::App* program);
void AddDoctorCommands(CLI::App* program);
void AddShellCommands(CLI::App* program);

}  // namespace hvtool
