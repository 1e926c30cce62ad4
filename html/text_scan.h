// The scan of a run of text between tags, sixteen bytes at a time where the
// processor allows it: it finds the run's end and drops its CR, LF and TAB
// bytes in the same pass.
#pragma once

#include <cstdint>

namespace qrl {

struct TextRun {
  std::uint32_t end;      // position of the "<" behind the run, or the end of the input
  std::uint32_t keptEnd;  // the kept bytes stand in `copy` from the run's start up to here
};

// Reads `input` from `position` up to the next "<" and writes the run without
// its CR, LF and TAB bytes to `copy` at the same position, where it can only
// shrink. `input[length]` must be readable; nothing beyond it is read.
TextRun ScanTextRun(const char* input, char* copy, std::uint32_t position, std::uint32_t length);

}  // namespace qrl
