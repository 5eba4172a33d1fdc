// hvapi url

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "families.h"
#include "open_ini.h"
#include "program.h"

namespace hvtool {
namespace {

constexpr const char* UrlManual =
    "Prints an address of the support site. Without --dispatch it is made of the topic, the "
    "language and the printer of the model; --ini names a file that puts other texts in their "
    "places, by its sections AREA_PREFIX, AREA, LANGUAGE and PRINTER. With --dispatch it is a "
    "question for the site's dispatch script, which also tells the user's language and the system. "
    "Nothing is sent to the network.\n"
    "\n"
    "    hvapi url drivers --model 0 --language 3\n"
    "    hvapi url drivers --dispatch --printer 12 34 --language 0x407";

// Four parts of a file's lines, and more than a dispatch address needs.
using AddressBuffer = std::array<char, 8192>;

struct Options {
  int topic = 0;
  int32_t model = WEB_NO_MODEL;
  uint32_t language = 0;
  std::optional<std::string> ini;
  bool dispatch = false;
  std::vector<uint32_t> printer;
  bool json = false;
};

int ReportFailure(uint32_t code, const Options& options) {
  switch (code) {
    case HV_BAD_ARGUMENT:
      return Fail(HV_BAD_ARGUMENT, "the language must be 0 to 22");
    case HV_UNKNOWN_MODEL:
      return Fail(HV_UNKNOWN_MODEL, "there is no model " + std::to_string(options.model));
    default:
      return Outcome(code, "cannot build the address");
  }
}

int PrintAddress(uint32_t code, const AddressBuffer& address, const Options& options) {
  if (code != HV_OK) return ReportFailure(code, options);
  if (options.json) {
    PrintJson({{"url", address.data()}});
  } else {
    PrintLine(address.data());
  }
  return HV_OK;
}

int RunPath(const Options& options) {
  std::optional<OpenIni> ini;
  if (options.ini) {
    ini.emplace(*options.ini, INI_OPEN_READ);
    if (ini->Handle() == nullptr) return ini->ReportFailure();
  }
  AddressBuffer address;
  const uint32_t code = HvWebGetURL(
      options.model, static_cast<uint32_t>(options.topic), options.language, address.data(),
      static_cast<uint32_t>(address.size()), ini ? ini->Handle() : nullptr);
  return PrintAddress(code, address, options);
}

int RunDispatch(const Options& options) {
  AddressBuffer address;
  const uint32_t code = HvWebGetCGIURL(options.printer.at(0), options.printer.at(1),
                                       static_cast<uint32_t>(options.topic), options.language,
                                       address.data(), static_cast<uint32_t>(address.size()), 0);
  return PrintAddress(code, address, options);
}

}  // namespace

void AddUrlCommands(CLI::App* program) {
  const auto options = std::make_shared<Options>();
  CLI::App* command = AddCommand(program, "url", "print an address of the support site", UrlManual);
  Require(AddChoice(command, "TOPIC", &options->topic, "",
                    {{"drivers", WEB_TOPIC_DRIVERS},
                     {"firmware", WEB_TOPIC_FIRMWARE},
                     {"homepage", WEB_TOPIC_HOMEPAGE},
                     {"fleetdesk", WEB_TOPIC_FLEETDESK},
                     {"registration", WEB_TOPIC_REGISTRATION},
                     {"supplies", WEB_TOPIC_SUPPLIES},
                     {"techsupport", WEB_TOPIC_TECHSUPPORT},
                     {"publications", WEB_TOPIC_PUBLICATIONS}},
                    "What the address is about, one of"));
  CLI::Option* model = AddOption(command, "--model", &options->model, "N",
                                 "Model number; without one the address names no printer");
  AddOption(command, "--language", &options->language, "N",
            "Language, 0 to 22; with --dispatch a Windows language identifier");
  CLI::Option* ini = AddOption(command, "--ini", &options->ini, "FILE",
                               "File that redirects parts of the address");
  CLI::Option* dispatch =
      AddFlag(command, "--dispatch", &options->dispatch, "Ask the dispatch script");
  CLI::Option* printer = AddOption(command, "--printer", &options->printer, "A B",
                                   "The two numbers of the printer, for --dispatch");
  Expect(printer, 2);
  Exclude(dispatch, model);
  Exclude(dispatch, ini);
  NeedEachOther(dispatch, printer);
  AddJsonOption(command, &options->json);
  OnRun(command,
        [options] { return options->dispatch ? RunDispatch(*options) : RunPath(*options); });
}

}  // namespace hvtool
