// What the exports that send report when the system fails them, and jobs for any destination.
#pragma once

#include <initializer_list>
#include <vector>

#include "faults/scenario.h"
#include "hvapi.h"

namespace hvtest {

inline constexpr std::initializer_list<int64_t> SendingFailures = {
    HV_NOT_FOUND,    HV_CANNOT_OPEN,     HV_READ_FAILED,
    HV_WRITE_FAILED, HV_PRINTER_REFUSED, HV_CONNECTION_FAILED};

// Each way to send, to a file of the folder or a queue. `files` are there before.
std::vector<Scenario> SendingScenarios(const char* destination, const Files& files);
std::vector<Scenario> MacroSendingScenarios(const char* destination, const Files& files);
std::vector<Scenario> FontSendingScenarios(const char* destination, const Files& files);

}  // namespace hvtest
