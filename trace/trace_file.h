// Where the trace goes, as the system opens and writes it: the file that
// QRLANTERN_TRACE names, appended to, or standard error for "-". Each system
// has its own (trace_file_linux.cpp, trace_file_windows.cpp).
#pragma once

#include <cstdint>
#include <string_view>

namespace qrl {

class TraceFile {
 public:
  // Opens what the variable names. Unset or empty, the file stays closed
  // without a word; a file that can't be opened gives one line on standard
  // error and stays closed.
  TraceFile() noexcept;
  ~TraceFile();
  TraceFile(const TraceFile&) = delete;
  TraceFile& operator=(const TraceFile&) = delete;

  bool IsOpen() const noexcept { return handle_ != Closed; }
  // Appends the bytes at the end of the file, as one write where the system
  // allows it, so that a line never mixes with another process's.
  void Write(std::string_view bytes) noexcept;

 private:
  static constexpr std::intptr_t Closed = -1;
  std::intptr_t handle_ = Closed;  // the system's handle or descriptor
  bool owned_ = false;             // standard error is not ours to close
};

}  // namespace qrl
