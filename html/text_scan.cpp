#include "html/text_scan.h"

#include "html/byte_classes.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace qrl {

namespace {

// Bytewise, for the few bytes around a dropped one and for short runs.
// Nothing is written until a byte has been dropped.
void ScanBytes(const char* input, char* copy, std::uint32_t& position, std::uint32_t stop, std::uint32_t& kept) {
  for (; position < stop; ++position) {
    const char byte = input[position];
    if (IsLineBreakOrTab(byte)) continue;
    if (kept != position) copy[kept] = byte;
    ++kept;
  }
}

}  // namespace

TextRun ScanTextRun(const char* input, char* copy, std::uint32_t position, std::uint32_t length) {
  std::uint32_t kept = position;
#if defined(__SSE2__)
  // Whole chunks without a "<" or a dropped byte move as they are (and only
  // once a byte has been dropped, since before that they are in place).
  constexpr std::uint32_t kChunk = 16;
  for (; position + kChunk <= length; position += kChunk) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(input + position));
    const int tags = _mm_movemask_epi8(_mm_cmpeq_epi8(bytes, _mm_set1_epi8('<')));
    const __m128i dropped = _mm_or_si128(_mm_or_si128(_mm_cmpeq_epi8(bytes, _mm_set1_epi8('\r')),
                                                      _mm_cmpeq_epi8(bytes, _mm_set1_epi8('\n'))),
                                         _mm_cmpeq_epi8(bytes, _mm_set1_epi8('\t')));
    if ((tags | _mm_movemask_epi8(dropped)) == 0) {
      if (kept != position) _mm_storeu_si128(reinterpret_cast<__m128i*>(copy + kept), bytes);
      kept += kChunk;
      continue;
    }
    if (tags == 0) {
      // All sixteen bytes belong to the run, so each may be written at once
      // and kept or not by the next one.
      for (std::uint32_t i = 0; i < kChunk; ++i) {
        const char byte = input[position + i];
        copy[kept] = byte;
        kept += IsLineBreakOrTab(byte) ? 0 : 1;
      }
      continue;
    }
    const std::uint32_t stop = position + static_cast<std::uint32_t>(__builtin_ctz(static_cast<unsigned>(tags)));
    ScanBytes(input, copy, position, stop, kept);
    return {position, kept};
  }
#endif
  std::uint32_t stop = position;
  while (stop < length && input[stop] != '<') ++stop;
  ScanBytes(input, copy, position, stop, kept);
  return {position, kept};
}

}  // namespace qrl
