#include <unistd.h>

#include <climits>
#include <cstdlib>

#include "lantern/program_environment.h"

namespace qrl {

// POSIX hands arguments over as bytes, and the terminal takes UTF-8 as it is.
std::vector<std::string> ProgramArguments(int argc, char** argv) {
  return std::vector<std::string>(argv, argv + argc);
}

std::string ExecutableFolder() {
  char path[PATH_MAX];
  const ssize_t length = readlink("/proc/self/exe", path, sizeof path - 1);
  if (length <= 0) return "";
  const std::string executable(path, static_cast<std::size_t>(length));
  return executable.substr(0, executable.rfind('/') + 1);
}

void SetEnvironment(const char* name, const std::string& value) { ::setenv(name, value.c_str(), 1); }

bool InputIsInteractive() { return isatty(STDIN_FILENO) == 1; }

}  // namespace qrl
