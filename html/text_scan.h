// Scans over runs of text, sixteen bytes at a time where the processor
// allows it: the search for the end of a text run, and for the line breaks
// and tabs that a text run drops.
#pragma once

#include <cstdint>

namespace qrl {

struct TextRunEnd {
  std::uint32_t end;    // position of the next "<", or the end of the input
  bool hasLineBreakOrTab;  // whether a CR, LF or TAB stands before it
};

// `input[length]` must be readable; nothing beyond it is read.
TextRunEnd FindTextRunEnd(const char* input, std::uint32_t position, std::uint32_t length);

// The index of the first CR, LF or TAB in `text`, or `size`.
std::uint32_t FindLineBreakOrTab(const char* text, std::uint32_t size);

}  // namespace qrl
