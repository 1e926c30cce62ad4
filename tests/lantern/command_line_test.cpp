#include "lantern/command_line.h"

#include <gtest/gtest.h>

#include <vector>

namespace qrl {
namespace {

LanternOptions Parse(std::vector<const char*> words) {
  words.insert(words.begin(), "lantern");
  return ParseCommandLine(words);
}

// The script's view of the command line: arg[0] and the words after it.
std::vector<std::string> ScriptArgs(const LanternOptions& options) {
  std::vector<std::string> args{options.words[options.scriptIndex]};
  args.insert(args.end(), options.words.begin() + static_cast<long>(options.argsStart),
              options.words.end());
  return args;
}

TEST(CommandLine, SplitsHostOptionsFromTheScriptAndItsArguments) {
  using Mode = LanternOptions::Mode;
  const struct {
    std::vector<const char*> words;
    Mode mode;
    std::string script;
    std::vector<std::string> args;
  } cases[] = {
      // Host options before the script, and only there.
      {{"--module", "m.so", "a.lua", "--module", "x"}, Mode::Script, "a.lua",
       {"a.lua", "--module", "x"}},
      {{"--", "-odd.lua", "x"}, Mode::Script, "-odd.lua", {"-odd.lua", "x"}},
  };
  for (const auto& c : cases) {
    const LanternOptions options = Parse(c.words);
    EXPECT_EQ(options.mode, c.mode) << c.script;
    EXPECT_EQ(options.script, c.script);
    EXPECT_EQ(ScriptArgs(options), c.args) << c.script;
  }
}

TEST(CommandLine, RefusesWhatItCannotRun) {
  const std::vector<std::vector<const char*>> refused = {
      {}, {"--module"}, {"--module", "m.so"}, {"--host-version", "abc", "a.lua"},
      {"--host-version", "-5", "a.lua"}, {"--frobnicate", "a.lua"}, {"-e"}, {"--"},
  };
  for (const auto& words : refused)
    EXPECT_THROW(Parse(words), UsageError) << (words.empty() ? "(nothing)" : words[0]);
}

}  // namespace
}  // namespace qrl
