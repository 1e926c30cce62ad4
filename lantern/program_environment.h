// What lantern needs from the system it runs on, outside the module's own
// loading: its arguments as UTF-8, its own folder, the environment that the
// module reads as it loads, and whether a person is typing at the prompt.
#pragma once

#include <string>
#include <vector>

namespace qrl {

// The program's arguments as UTF-8 texts, argv[0] first. Also readies the
// console for UTF-8 output where the system has one that needs it.
std::vector<std::string> ProgramArguments(int argc, char** argv);

// The folder of the running program, with its trailing separator, or an
// empty text when the system does not say.
std::string ExecutableFolder();

// Sets a variable of the process's environment, replacing any value.
void SetEnvironment(const char* name, const std::string& value);

// True when standard input is a terminal or console, not a pipe or file.
bool InputIsInteractive();

}  // namespace qrl
