#include "lantern/command_line.h"

#include <charconv>
#include <string_view>

namespace qrl {

const char* const LanternUsage =
    "usage: lantern [--module PATH] [--host-version N] [--headless] [--trace FILE] [-i]\n"
    "               SCRIPT.lua [ARGS...]\n"
    "       lantern [--module PATH] [--host-version N] [--headless] [--trace FILE] [-i]\n"
    "               -e CODE [ARGS...]\n"
    "       lantern [--module PATH] [--host-version N] [--headless] [--trace FILE] -i\n"
    "       lantern [--module PATH] [--host-version N] --list\n"
    "       lantern [--module PATH] --version\n"
    "       lantern --help\n"
    "\n"
    "Runs a Lua 5.4 script with the extender module loaded. Every function of\n"
    "the module is a global under its announced name (wvparse, ...), every\n"
    "constant a global under its name without the \"@\" (wv2version, ...).\n"
    "\n"
    "  --module PATH       the module to load (default: qrlantern.so beside lantern,\n"
    "                      or in ../lib/qrlantern/ from it once installed)\n"
    "  --host-version N    the host version announced to the module (default 1011)\n"
    "  --headless          run windows on a private Xvfb display even when there is one\n"
    "  --trace FILE        the module appends a line per call and browser event to FILE\n"
    "                      (\"-\": standard error); sets QRLANTERN_TRACE for the run\n"
    "  -e CODE             run CODE instead of a script file\n"
    "  -i                  a prompt (after the script, if one is given); Ctrl-D ends it\n"
    "  --list              print the module's functions and constants\n"
    "  --version           print the versions of lantern and of the module\n"
    "  --help              print this text\n"
    "  SCRIPT.lua          the script; \"-\" reads it from standard input\n"
    "  ARGS                the script's arguments, in the global table arg\n";

namespace {

std::uintptr_t ParseHostVersion(std::string_view text) {
  std::uintptr_t version = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), version);
  if (text.empty() || error != std::errc() || end != text.data() + text.size()) {
    throw UsageError("--host-version needs a non-negative number, not '" + std::string(text) +
                     "'");
  }
  return version;
}

}  // namespace

LanternOptions ParseCommandLine(std::span<const char* const> argv) {
  LanternOptions options;
  options.words.assign(argv.begin(), argv.end());
  const std::size_t count = options.words.size();
  auto valueOf = [&](std::size_t& i) -> const std::string& {
    if (i + 1 >= count) throw UsageError(options.words[i] + " needs a value");
    return options.words[++i];
  };
  for (std::size_t i = 1; i < count; ++i) {
    const std::string& word = options.words[i];
    if (word == "--module") {
      options.modulePath = valueOf(i);
    } else if (word == "--host-version") {
      options.hostVersion = ParseHostVersion(valueOf(i));
    } else if (word == "--headless") {
      options.headless = true;
    } else if (word == "--trace") {
      options.traceFile = valueOf(i);
    } else if (word == "--help" || word == "-h") {
      options.mode = LanternOptions::Mode::Help;
      return options;
    } else if (word == "--list") {
      options.mode = LanternOptions::Mode::List;
    } else if (word == "--version") {
      options.mode = LanternOptions::Mode::Version;
      return options;
    } else if (word == "-i") {
      options.interactive = true;
    } else if (word == "-e") {
      options.mode = LanternOptions::Mode::Code;
      options.scriptIndex = i;
      options.script = valueOf(i);
      options.argsStart = i + 1;
      return options;
    } else if (word == "--") {
      if (i + 1 >= count) throw UsageError("no script after --");
      options.mode = LanternOptions::Mode::Script;
      options.script = options.words[i + 1];
      options.scriptIndex = i + 1;
      options.argsStart = i + 2;
      return options;
    } else if (word.size() > 1 && word[0] == '-') {
      throw UsageError("unknown option " + word);
    } else {
      options.mode = LanternOptions::Mode::Script;
      options.script = word;
      options.scriptIndex = i;
      options.argsStart = i + 1;
      return options;
    }
  }
  if (options.mode == LanternOptions::Mode::List) return options;
  if (!options.interactive) throw UsageError("no script given");
  // The prompt alone: arg[0] is lantern itself, as for a stand-alone Lua
  // interpreter started without a script.
  options.mode = LanternOptions::Mode::Interactive;
  options.scriptIndex = 0;
  options.argsStart = count;
  return options;
}

}  // namespace qrl
