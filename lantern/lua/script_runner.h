// One run of lantern, from the parsed command line to the exit status.
#pragma once

#include "lantern/command_line.h"

namespace qrl {

// Returns 0 when everything ran, 1 on any error (the error is on stderr).
int RunLantern(const LanternOptions& options);

}  // namespace qrl
