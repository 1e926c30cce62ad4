#include <poll.h>

#include <cerrno>

#include "lantern/posix/input_wait.h"

namespace qrl {

// A build without a browser has no message loop to keep running.
void WaitForInput(int fd) {
  pollfd entry{fd, POLLIN, 0};
  while (poll(&entry, 1, -1) < 0 && errno == EINTR) {
  }
}

}  // namespace qrl
