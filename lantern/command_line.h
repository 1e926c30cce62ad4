// What the lantern command line asks for.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

namespace qrl {

struct LanternOptions {
  enum class Mode {
    Script,  // run a script file ("-" reads it from standard input)
    Code,    // run the code given with -e
    List,         // print the module's vocabulary
    Interactive,  // only the prompt, no script before it
    Version,      // print lantern's version and the module's
    Help,
  };
  Mode mode = Mode::Help;
  std::string modulePath;  // empty: the module beside the lantern binary
  std::optional<std::uintptr_t> hostVersion;
  bool headless = false;  // run on a private X server even when there is a display
  std::string traceFile;  // where the module traces its calls and events; empty: no trace
  bool interactive = false;  // a prompt after the script (or alone, in Mode::Interactive)
  std::string script;  // the file, or the code of -e
  // The whole command line as the script sees it in arg: the word at
  // scriptIndex is arg[0] (the script's name, or "-e"), the words from
  // argsStart on are arg[1], arg[2], ..., and the words before scriptIndex
  // are arg[-1], arg[-2], ... back to the program's name.
  std::vector<std::string> words;
  std::size_t scriptIndex = 0;
  std::size_t argsStart = 0;
};

class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Throws UsageError for a command line that asks for nothing runnable.
LanternOptions ParseCommandLine(std::span<const char* const> argv);

extern const char* const LanternUsage;

}  // namespace qrl
