// The trace file on Linux, opened with O_APPEND: every line lands at the end
// of the file in one write, also when several processes trace into it.
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "trace/trace_file.h"

namespace qrl {

TraceFile::TraceFile() noexcept {
  const char* name = std::getenv("QRLANTERN_TRACE");
  if (!name || !*name) return;
  if (std::string_view(name) == "-") {
    handle_ = STDERR_FILENO;
    return;
  }
  const int descriptor = open(name, O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0644);
  if (descriptor < 0) {
    const int error = errno;
    std::fprintf(stderr, "qrlantern: cannot open the trace file %s: %s; going on without a trace\n",
                 name, std::strerror(error));
    return;
  }
  handle_ = descriptor;
  owned_ = true;
}

TraceFile::~TraceFile() {
  if (owned_) close(static_cast<int>(handle_));
}

// The write is not buffered here, so a line is in the file (or on the
// terminal) as soon as this returns, whatever happens to the process next.
void TraceFile::Write(std::string_view bytes) noexcept {
  if (!IsOpen()) return;
  while (!bytes.empty()) {
    const ssize_t written = write(static_cast<int>(handle_), bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
}

}  // namespace qrl
