#include <cstdio>
#include <cstdlib>

#include "lantern/command_line.h"
#include "lantern/script_runner.h"

int main(int argc, char** argv) {
  try {
    const qrl::LanternOptions options =
        qrl::ParseCommandLine(std::span<const char* const>(argv, static_cast<std::size_t>(argc)));
    // Read where the display is chosen, before anything is loaded.
    if (options.headless) ::setenv("QRLANTERN_HEADLESS", "1", 1);
    // The module reads it as it loads.
    if (!options.traceFile.empty()) ::setenv("QRLANTERN_TRACE", options.traceFile.c_str(), 1);
    return qrl::RunLantern(options);
  } catch (const qrl::UsageError& error) {
    std::fprintf(stderr, "lantern: %s\n\n%s", error.what(), qrl::LanternUsage);
    return 2;
  }
}
