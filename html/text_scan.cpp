#include "html/text_scan.h"

#include <cstring>

#include "html/byte_classes.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace qrl {

namespace {

#if defined(__SSE2__)
constexpr std::uint32_t kChunk = 16;

int LineBreakOrTabMask(__m128i bytes) {
  const __m128i found = _mm_or_si128(_mm_or_si128(_mm_cmpeq_epi8(bytes, _mm_set1_epi8('\r')),
                                                  _mm_cmpeq_epi8(bytes, _mm_set1_epi8('\n'))),
                                     _mm_cmpeq_epi8(bytes, _mm_set1_epi8('\t')));
  return _mm_movemask_epi8(found);
}

__m128i LoadChunk(const char* at) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(at)); }
#endif

}  // namespace

TextRunEnd FindTextRunEnd(const char* input, std::uint32_t position, std::uint32_t length) {
  bool breaks = false;
#if defined(__SSE2__)
  for (; position + kChunk <= length; position += kChunk) {
    const __m128i bytes = LoadChunk(input + position);
    const int tags = _mm_movemask_epi8(_mm_cmpeq_epi8(bytes, _mm_set1_epi8('<')));
    const int lineBreaks = LineBreakOrTabMask(bytes);
    if (tags != 0) {
      const int first = __builtin_ctz(static_cast<unsigned>(tags));
      return {position + static_cast<std::uint32_t>(first),
              breaks || (lineBreaks & ((1 << first) - 1)) != 0};
    }
    breaks = breaks || lineBreaks != 0;
  }
#endif
  for (; position < length && input[position] != '<'; ++position) breaks = breaks || IsLineBreakOrTab(input[position]);
  return {position, breaks};
}

std::uint32_t FindLineBreakOrTab(const char* text, std::uint32_t size) {
  std::uint32_t at = 0;
#if defined(__SSE2__)
  for (; at + kChunk <= size; at += kChunk) {
    const int lineBreaks = LineBreakOrTabMask(LoadChunk(text + at));
    if (lineBreaks != 0) return at + static_cast<std::uint32_t>(__builtin_ctz(static_cast<unsigned>(lineBreaks)));
  }
#endif
  while (at < size && !IsLineBreakOrTab(text[at])) ++at;
  return at;
}

}  // namespace qrl
