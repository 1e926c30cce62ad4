// lantern -i as a person at a terminal sees it: lantern runs on a
// pseudo-terminal, the test types lines and reads what comes back.
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

class TerminalSession {
 public:
  // Starts lantern with these arguments on a new pseudo-terminal, with a
  // history file of its own.
  explicit TerminalSession(std::vector<std::string> args)
      : history(std::filesystem::temp_directory_path() /
                ("lantern-history-" + std::to_string(getpid()) + "-" +
                 ::testing::UnitTest::GetInstance()->current_test_info()->name())) {
    std::filesystem::remove(history);
    args.insert(args.begin(), QRL_LANTERN);
    pid_ = forkpty(&terminal_, nullptr, nullptr, nullptr);
    if (pid_ == 0) {
      setenv("LANTERN_HISTORY", history.c_str(), 1);
      setenv("QRLANTERN_NO_DIALOGS", "1", 1);
      setenv("TERM", "xterm", 1);
      std::vector<char*> argv;
      for (std::string& arg : args) argv.push_back(arg.data());
      argv.push_back(nullptr);
      execv(argv[0], argv.data());
      _exit(127);
    }
  }
  ~TerminalSession() {
    if (pid_ > 0) {
      kill(pid_, SIGKILL);
      waitpid(pid_, nullptr, 0);
    }
    if (terminal_ >= 0) close(terminal_);
    std::filesystem::remove(history);
  }

  void Type(const std::string& keys) {
    ASSERT_EQ(write(terminal_, keys.data(), keys.size()), static_cast<ssize_t>(keys.size()));
  }

  // Reads the screen until `text` shows up after what earlier waits
  // consumed; the screen so far is in the failure message.
  ::testing::AssertionResult WaitFor(const std::string& text, Clock::duration limit = 20s) {
    const Clock::time_point end = Clock::now() + limit;
    std::size_t found = 0;
    while ((found = screen_.find(text, consumed_)) == std::string::npos) {
      const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now());
      pollfd entry{terminal_, POLLIN, 0};
      char buffer[4096];
      const ssize_t count = left.count() > 0 && poll(&entry, 1, static_cast<int>(left.count())) > 0
                                ? read(terminal_, buffer, sizeof buffer)
                                : 0;
      if (count <= 0)  // nothing within the time, or lantern has gone
        return ::testing::AssertionFailure()
               << "no \"" << text << "\" on the screen:\n" << screen_.substr(consumed_);
      screen_.append(buffer, static_cast<std::size_t>(count));
    }
    consumed_ = found + text.size();
    return ::testing::AssertionSuccess();
  }

  // Waits for lantern to end, reading what it still writes (a byte that
  // never comes); its exit status.
  int ExitStatus() {
    int status = 0;
    while (waitpid(pid_, &status, WNOHANG) != pid_) WaitFor("\x01", 50ms);
    pid_ = -1;  // reaped: nothing left to kill
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  }

  const std::filesystem::path history;

 private:
  pid_t pid_ = -1;
  int terminal_ = -1;
  std::string screen_;
  std::size_t consumed_ = 0;
};

TEST(Prompt, ListsResultsKeepsGoingAfterErrorsAndEndsOnCtrlD) {
  TerminalSession lantern({"-i"});
  ASSERT_TRUE(lantern.WaitFor("Ctrl-D ends"));
  ASSERT_TRUE(lantern.WaitFor("lantern> "));
  const struct {
    std::string typed;
    std::string shown;
  } lines[] = {
      {R"(wvparse('<p id="a" class="x y x" title="caf&eacute;">Hi</p>'))", "\r\n0\r\n"},
      // Texts are quoted, so that a text "-1" cannot pass for the integer.
      {"wvgetinnertext(wvgetelementbyid(0, 'a')), wvgetinnertext(-1)", "\"Hi\"\t-1"},
      {"wvgetclasses(1)", R"({"x", "y", "x"})"},
      {"wvgetattributes(1)", R"({class = "x y x", id = "a", title = "caf&eacute;"})"},
      // An error names its line and the prompt carries on.
      {"error('boom')", "lantern: stdin:1: boom"},
      {"for i = 1, 2 do\r", "      >> "},  // the statement goes on
      {"io.write(i * 7, ' ') end", "7 14 "},
      {"x = 6 * 7; return x", "\r\n42\r\n"},
  };
  for (const auto& line : lines) {
    const bool continued = line.typed.ends_with('\r');
    lantern.Type(continued ? line.typed : line.typed + "\r");
    EXPECT_TRUE(lantern.WaitFor(line.shown)) << line.typed;
    if (!continued) {
      ASSERT_TRUE(lantern.WaitFor("lantern> ")) << line.typed;
    }
  }
  // The arrow up brings the last line back.
  lantern.Type("\x1b[A\r");
  EXPECT_TRUE(lantern.WaitFor("\r\n42\r\n"));
  ASSERT_TRUE(lantern.WaitFor("lantern> "));
  lantern.Type("\x04");
  EXPECT_EQ(lantern.ExitStatus(), 0);

  std::ifstream history(lantern.history);
  const std::string kept{std::istreambuf_iterator<char>(history), {}};
  EXPECT_NE(kept.find("wvgetclasses(1)"), std::string::npos) << kept;
}

// The prompt follows a script in the state it left, and keeps the message
// loop running while it waits: the page loads with nobody typing.
TEST(Prompt, KeepsTheBrowserGoingWhileItWaitsForALine) {
  if (!QRL_LIVE_BROWSER) GTEST_SKIP() << "this build has no browser";
  TerminalSession lantern({"--headless", "-i", "-e",
                           "window = lantern.window{width = 640, height = 480}\n"
                           "wvcreate(window, 'file://" QRL_PAGE "', window)"});
  ASSERT_TRUE(lantern.WaitFor("lantern> "));
  bool loaded = false;
  for (int attempt = 0; attempt < 60 && !loaded; ++attempt) {
    std::this_thread::sleep_for(500ms);
    lantern.Type("lantern.text(window)\r");
    ASSERT_TRUE(lantern.WaitFor("\r\n\""));
    loaded = lantern.WaitFor("NavComplete\"\r\n", 1s);
    ASSERT_TRUE(lantern.WaitFor("lantern> "));
  }
  ASSERT_TRUE(loaded) << "the page never arrived while the prompt waited";
  lantern.Type("wvgetinnertext(wvgetelementbyid(0, 'title'))\r");
  EXPECT_TRUE(lantern.WaitFor("\"Lantern Harbour\""));
  // Typed ahead of the prompt, Ctrl-D would reach the terminal while it is
  // not in line-editing mode, and be lost there, as in any shell.
  ASSERT_TRUE(lantern.WaitFor("lantern> "));
  lantern.Type("\x04");
  EXPECT_EQ(lantern.ExitStatus(), 0);
}

}  // namespace
