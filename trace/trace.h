// The trace: one line per event, for script authors who cannot attach a
// debugger to their host. It is on when the environment variable
// QRLANTERN_TRACE names a file as the module loads ("-" is standard error);
// lines are appended to it, each written and flushed whole as it happens:
//
//   <ms since load> <event> <detail>
//
// (the events and their details are listed in the README, "Tracing").
//
// Local rules: a call site tests TraceOn() before it does any work for a
// line, so that an untraced module pays one read of a flag. Nothing here
// throws or changes what the module does; a line that can't be made is
// dropped. Lines may come from any thread, and each is written under a lock.
#pragma once

#include <string>
#include <string_view>

namespace qrl {

// Set once while the module loads, when the trace file opened; cleared at
// unload. Read it through TraceOn().
extern bool TraceEnabled;

inline bool TraceOn() noexcept { return TraceEnabled; }

// Writes "<ms> <event> <detail>\n" in one piece and flushes it.
void WriteTraceLine(std::string_view event, std::string_view detail) noexcept;

// Writes a line of `event` whose detail `makeDetail` returns; it is called
// only when the trace is on.
template <class MakeDetail>
void Trace(std::string_view event, MakeDetail&& makeDetail) noexcept {
  if (!TraceOn()) return;
  try {
    WriteTraceLine(event, makeDetail());
  } catch (...) {
    // Out of memory while formatting: the line is lost, nothing else.
  }
}

// The text that `makeDetail` returns, for a line that is written later (an
// answer that comes back out of the message loop); empty when the trace is
// off or the text can't be made.
template <class MakeDetail>
std::string TraceDetail(MakeDetail&& makeDetail) noexcept {
  if (!TraceOn()) return {};
  try {
    return makeDetail();
  } catch (...) {
    return {};
  }
}

}  // namespace qrl
