#include "trace/trace.h"

#include <chrono>
#include <cstdio>
#include <ctime>
#include <mutex>

#include "trace/trace_file.h"

namespace qrl {

bool TraceEnabled = false;

namespace {

using Clock = std::chrono::steady_clock;

// The trace of this load of the module: the moment the stamps count from,
// the lock that keeps each line whole, and the file. It opens while the
// module loads and closes when it unloads; the flag goes off first, so that
// nothing writes into a file that is going.
class ModuleTrace {
 public:
  ModuleTrace() {
    TraceEnabled = file_.IsOpen();
    Trace("trace", StartDetail);
  }
  ~ModuleTrace() { TraceEnabled = false; }
  ModuleTrace(const ModuleTrace&) = delete;
  ModuleTrace& operator=(const ModuleTrace&) = delete;

  // The stamp is taken under the lock, so that the stamps of a file only
  // ever grow, whichever thread writes.
  void Write(std::string_view event, std::string_view detail) {
    const std::lock_guard<std::mutex> hold(lock_);
    const std::chrono::duration<double, std::milli> sinceLoad = Clock::now() - loaded_;
    char stamp[32];
    std::snprintf(stamp, sizeof stamp, "%.3f ", sinceLoad.count());
    std::string line(stamp);
    line.append(event);
    if (!detail.empty()) line.append(" ").append(detail);
    line.push_back('\n');
    file_.Write(line);
  }

 private:
  // A file that several runs append to shows where each one began, and when.
  static std::string StartDetail() {
    const std::time_t now = std::time(nullptr);
    char when[32] = "";
    if (const std::tm* local = std::localtime(&now))
      std::strftime(when, sizeof when, "%Y-%m-%d %H:%M:%S", local);
    return std::string("start ") + when;
  }

  const Clock::time_point loaded_ = Clock::now();
  std::mutex lock_;
  TraceFile file_;
};

ModuleTrace TheModuleTrace;

}  // namespace

void WriteTraceLine(std::string_view event, std::string_view detail) noexcept {
  try {
    TheModuleTrace.Write(event, detail);
  } catch (...) {
    // No memory for the line, or a lock that failed: the line is lost.
  }
}

}  // namespace qrl
