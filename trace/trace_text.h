// The pieces that trace lines are made of: texts quoted and cut, result
// codes, durations. Only ever called when the trace is on.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "trace/trace.h"

namespace qrl {

// How much of a text a line shows, unless a call site says otherwise: enough
// to recognise an argument, little enough that a page of markup passed as
// one stays a line.
inline constexpr std::size_t TraceTextLimit = 80;
// Addresses are shown whole up to this, since their end is what differs.
inline constexpr std::size_t TraceAddressLimit = 2000;

// `text` in double quotes, with \" \\ \n \r \t and \xHH for the other control
// bytes. Beyond `limit` bytes it is cut, never inside a UTF-8 character, and
// its whole length follows: "<first bytes>"...(1234 bytes).
std::string TraceQuoted(std::string_view text, std::size_t limit = TraceTextLimit);
// A wide text as UTF-8, quoted and cut the same way (the length counts the
// UTF-8 bytes).
std::string TraceQuoted(std::u16string_view text, std::size_t limit = TraceTextLimit);

// A result code of the browser as 0x and eight hex digits.
std::string TraceCode(std::int32_t code);

// The time since it was made. When the trace is off it reads no clock.
class TraceStopwatch {
 public:
  TraceStopwatch() noexcept {
    if (TraceOn()) start_ = std::chrono::steady_clock::now();
  }
  // "0.123 ms"
  std::string Elapsed() const;

 private:
  std::chrono::steady_clock::time_point start_;
};

}  // namespace qrl
