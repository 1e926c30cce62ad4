// The trace lines of the host's calls: one per call through Dispatch (the
// function with its arguments as its row declares them, what it delivered,
// what it reported to the host, how long it took), and one per Query.
//
// A call's line is written when the call returns, so whatever happened
// during it (a progress text, a nested call) stands just before it. What a
// call delivers or reports is noted on the innermost call being traced.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "host/host_contract.h"
#include "trace/trace_text.h"

namespace qrl {

class CallTrace {
 public:
  // From the row: `argTypes` holds one ArgType nibble per position,
  // position 1 lowest, and `declaredArgs` is the most that it takes.
  CallTrace(const char* name, std::uint64_t argTypes, unsigned declaredArgs,
            const HostValue* args, HostWord argCount) noexcept;
  // Writes the line; the enclosing call, if any, is the innermost again.
  ~CallTrace();
  CallTrace(const CallTrace&) = delete;
  CallTrace& operator=(const CallTrace&) = delete;

  // Called only when the trace is on; without a call being traced they do
  // nothing.
  static void NoteDelivery(const HostValue* result) noexcept;
  // An array or map of `count` rows was made for the result.
  static void NoteContainer(const char* kind, std::size_t count) noexcept;
  static void NoteReport(const char* text) noexcept;

 private:
  std::string call_;                // "wvGetAttribute(3, \"href\")"
  std::string result_ = "nothing";  // until something is delivered
  std::string reports_;             // " reported=\"...\"" for each report
  const char* container_ = nullptr;
  std::size_t containerRows_ = 0;
  TraceStopwatch stopwatch_;
  CallTrace* enclosing_ = nullptr;
};

// The line of a Dispatch code that is not a function: the vocabulary codes
// (-1, -2 with the described record, -3) and rows without a handler.
void TraceOtherCode(std::int16_t code, HostWord index, const CommandInfo* info,
                    HostWord answer) noexcept;
// The line of a Query; with code 1 the description handed back in `buffer`.
void TraceQuery(std::int16_t code, const void* buffer, HostWord size, HostWord answer) noexcept;

}  // namespace qrl
