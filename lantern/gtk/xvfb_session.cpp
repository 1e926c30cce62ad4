#include "lantern/gtk/xvfb_session.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace qrl {
namespace {

constexpr int StartTimeoutMs = 15000;

pid_t serverPid = 0;

bool HeadlessForced() {
  const char* headless = std::getenv("QRLANTERN_HEADLESS");
  return headless && std::string(headless) == "1";
}

bool HasDisplay() {
  const char* display = std::getenv("DISPLAY");
  return display && *display;
}

// Runs after everything that the module left behind at exit has been torn
// down: the handler is registered before the module is loaded, and exit
// handlers run in the reverse order.
void StopServer() {
  if (serverPid <= 0) return;
  ::kill(serverPid, SIGTERM);
  ::waitpid(serverPid, nullptr, 0);
  serverPid = 0;
}

[[noreturn]] void RunServer(int displayPipe) {
  // The server goes when lantern goes, however it ends.
  ::prctl(PR_SET_PDEATHSIG, SIGTERM);
  const int quiet = ::open("/dev/null", O_RDWR);
  if (quiet >= 0) {
    ::dup2(quiet, STDIN_FILENO);
    ::dup2(quiet, STDOUT_FILENO);
    ::dup2(quiet, STDERR_FILENO);
  }
  const std::string fd = std::to_string(displayPipe);
  ::execlp("Xvfb", "Xvfb", "-displayfd", fd.c_str(), "-screen", "0", "1280x1024x24",
           "-nolisten", "tcp", static_cast<char*>(nullptr));
  ::_exit(127);
}

// The server writes its display number, then a line break, once it accepts
// connections.
std::string ReadDisplayNumber(int displayPipe) {
  std::string number;
  pollfd wait{displayPipe, POLLIN, 0};
  while (::poll(&wait, 1, StartTimeoutMs) > 0) {
    char c = 0;
    if (::read(displayPipe, &c, 1) != 1 || c == '\n') break;
    number += c;
  }
  return number;
}

}  // namespace

void StartDisplayWhenNeeded() {
  if (HasDisplay() && !HeadlessForced()) return;
  int fds[2];
  if (::pipe(fds) != 0) return;
  const pid_t pid = ::fork();
  if (pid == 0) {
    ::close(fds[0]);
    RunServer(fds[1]);
  }
  ::close(fds[1]);
  if (pid < 0) {
    ::close(fds[0]);
    return;
  }
  serverPid = pid;
  std::atexit(StopServer);
  const std::string number = ReadDisplayNumber(fds[0]);
  ::close(fds[0]);
  if (number.empty()) {
    std::fputs("lantern: there is no display, and Xvfb could not be started\n", stderr);
    StopServer();
    return;
  }
  ::setenv("DISPLAY", (":" + number).c_str(), 1);
  // Nobody can press OK on a screen that nobody sees.
  ::setenv("QRLANTERN_NO_DIALOGS", "1", 0);
}

}  // namespace qrl
