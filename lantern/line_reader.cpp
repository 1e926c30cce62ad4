#include "lantern/line_reader.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <utility>

// After <cstdio>: the header uses FILE without including it.
#include <editline/readline.h>

#include "lantern/input_wait.h"

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

LineReader::LineReader(std::string historyFile)
    : terminal_(isatty(InputFd) == 1), historyFile_(std::move(historyFile)) {
  if (!terminal_) return;
  using_history();
  stifle_history(HistoryLength);
  // A missing file is the usual first session.
  if (!historyFile_.empty()) read_history(historyFile_.c_str());
}

LineReader::~LineReader() {
  if (terminal_) rl_callback_handler_remove();
}

std::string LineReader::DefaultHistoryFile() {
  if (const char* chosen = std::getenv("LANTERN_HISTORY")) return chosen;
  const char* home = std::getenv("HOME");
  return home && *home ? std::string(home) + "/.lantern_history" : std::string();
}

std::optional<std::string> LineReader::ReadLine(const char* prompt) {
  return terminal_ ? ReadEditedLine(prompt) : ReadPlainLine();
}

std::optional<std::string> LineReader::ReadEditedLine(const char* prompt) {
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
    if (!historyFile_.empty()) write_history(historyFile_.c_str());
  }
  return std::move(Typed.text);
}

std::optional<std::string> LineReader::ReadPlainLine() {
  for (;;) {
    const std::size_t end = pending_.find('\n');
    if (end != std::string::npos) {
      std::string line = pending_.substr(0, end);
      pending_.erase(0, end + 1);
      return line;
    }
    if (endOfInput_) {
      if (pending_.empty()) return std::nullopt;
      return std::exchange(pending_, {});
    }
    WaitForInput(InputFd);
    char buffer[4096];
    const ssize_t count = read(InputFd, buffer, sizeof buffer);
    if (count > 0) {
      pending_.append(buffer, static_cast<std::size_t>(count));
    } else if (count == 0 || (errno != EINTR && errno != EAGAIN)) {
      endOfInput_ = true;
    }
  }
}

}  // namespace qrl
