#include "lantern/prompt/line_reader.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <utility>

// After <cstdio>: the header uses FILE without including it.
#include <editline/readline.h>

#include "lantern/posix/input_wait.h"

namespace qrl {
namespace {

constexpr int InputFd = STDIN_FILENO;
constexpr int HistoryLength = 1000;

// The line that libedit hands to its callback; a callback has no user data.
struct TypedLine {
  bool done = false;
  std::optional<std::string> text;
};
TypedLine Typed;

void TakeTypedLine(char* line) {
  Typed.done = true;
  if (line == nullptr) {
    Typed.text.reset();
    return;
  }
  Typed.text = line;
  std::free(line);
}

// A terminal that has gone away stays "readable" for ever while libedit
// reads nothing from it, so a hang-up without data is the end of input.
bool HungUpWithoutData(int fd) {
  pollfd entry{fd, POLLIN, 0};
  if (poll(&entry, 1, 0) <= 0) return false;
  return (entry.revents & POLLIN) == 0 && (entry.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0;
}

}  // namespace

struct LineReader::State {
  State(bool terminal, std::string historyFile)
      : terminal(terminal), historyFile(std::move(historyFile)) {}

  std::optional<std::string> ReadEditedLine(const char* prompt);
  std::optional<std::string> ReadPlainLine();

  bool terminal;
  std::string historyFile;
  std::string pending;  // bytes of a pipe read beyond the line handed out
  bool endOfInput = false;
};

LineReader::LineReader(std::string historyFile)
    : state_(std::make_unique<State>(isatty(InputFd) == 1, std::move(historyFile))) {
  if (!state_->terminal) return;
  using_history();
  stifle_history(HistoryLength);
  // A missing file is the usual first session.
  if (!state_->historyFile.empty()) read_history(state_->historyFile.c_str());
}

LineReader::~LineReader() {
  if (state_->terminal) rl_callback_handler_remove();
}

// $LANTERN_HISTORY when it is set (an empty value keeps none), otherwise
// ~/.lantern_history.
std::string LineReader::DefaultHistoryFile() {
  if (const char* chosen = std::getenv("LANTERN_HISTORY")) return chosen;
  const char* home = std::getenv("HOME");
  return home && *home ? std::string(home) + "/.lantern_history" : std::string();
}

std::optional<std::string> LineReader::ReadLine(const char* prompt) {
  return state_->terminal ? state_->ReadEditedLine(prompt) : state_->ReadPlainLine();
}

std::optional<std::string> LineReader::State::ReadEditedLine(const char* prompt) {
  Typed = {};
  rl_callback_handler_install(prompt, TakeTypedLine);
  while (!Typed.done) {
    WaitForInput(InputFd);
    if (HungUpWithoutData(InputFd)) break;
    rl_callback_read_char();
  }
  rl_callback_handler_remove();
  if (!Typed.text) {
    // Ctrl-D leaves the cursor behind the prompt.
    std::fputs("\n", stdout);
    std::fflush(stdout);
    return std::nullopt;
  }
  if (!Typed.text->empty()) {
    add_history(Typed.text->c_str());
    // Written at every line, so a session that is killed keeps its history.
    if (!historyFile.empty()) write_history(historyFile.c_str());
  }
  return std::move(Typed.text);
}

std::optional<std::string> LineReader::State::ReadPlainLine() {
  for (;;) {
    const std::size_t end = pending.find('\n');
    if (end != std::string::npos) {
      std::string line = pending.substr(0, end);
      pending.erase(0, end + 1);
      return line;
    }
    if (endOfInput) {
      if (pending.empty()) return std::nullopt;
      return std::exchange(pending, {});
    }
    WaitForInput(InputFd);
    char buffer[4096];
    const ssize_t count = read(InputFd, buffer, sizeof buffer);
    if (count > 0) {
      pending.append(buffer, static_cast<std::size_t>(count));
    } else if (count == 0 || (errno != EINTR && errno != EAGAIN)) {
      endOfInput = true;
    }
  }
}

}  // namespace qrl
