// The help of each command, laid out as a manual page.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace hvtool {

// The DESCRIPTION of the program itself.
extern const char* const ProgramManual;

class ManualFormatter final : public CLI::FormatterBase {
 public:
  std::string make_help(const CLI::App* app, std::string name,
                        CLI::AppFormatMode mode) const override;
};

}  // namespace hvtool
