// Environment variables, read at each call and not at all where the program runs with raised
// privileges.
#pragma once

#include <string>

namespace hv::platform {

// The value of a variable; the empty text when it is unset.
std::string Environment(const char* name);

// The seconds that HVAPI_TIMEOUT gives for one connect or one ending of a document, 30 when it is
// unset or no whole number from 1 to 86400.
int TimeoutSeconds();

// The folder of the spool directories: HVAPI_SPOOL, else hvapi/spool in XDG_STATE_HOME, else in
// ~/.local/state. Empty when there is no way to tell.
std::string SpoolFolder();

}  // namespace hv::platform
