#include <cstdio>
#include <string>
#include <vector>

#include "lantern/command_line.h"
#include "lantern/lua/script_runner.h"
#include "lantern/program_environment.h"

int main(int argc, char** argv) {
  try {
    const std::vector<std::string> arguments = qrl::ProgramArguments(argc, argv);
    std::vector<const char*> words;
    words.reserve(arguments.size());
    for (const std::string& argument : arguments) words.push_back(argument.c_str());
    const qrl::LanternOptions options = qrl::ParseCommandLine(words);
    // Read where the display is chosen, before anything is loaded.
    if (options.headless) qrl::SetEnvironment("QRLANTERN_HEADLESS", "1");
    // The module reads it as it loads.
    if (!options.traceFile.empty()) qrl::SetEnvironment("QRLANTERN_TRACE", options.traceFile);
    return qrl::RunLantern(options);
  } catch (const qrl::UsageError& error) {
    std::fprintf(stderr, "lantern: %s\n\n%s", error.what(), qrl::LanternUsage);
    return 2;
  }
}
