#include <cstdio>

#include "lantern/command_line.h"
#include "lantern/script_runner.h"

int main(int argc, char** argv) {
  try {
    const qrl::LanternOptions options =
        qrl::ParseCommandLine(std::span<const char* const>(argv, static_cast<std::size_t>(argc)));
    return qrl::RunLantern(options);
  } catch (const qrl::UsageError& error) {
    std::fprintf(stderr, "lantern: %s\n\n%s", error.what(), qrl::LanternUsage);
    return 2;
  }
}
