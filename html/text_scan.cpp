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

#if defined(__SSE2__)
// Closes each gap in `bytes` that a dropped byte leaves by moving the bytes
// above it down by one, then stores all sixteen bytes at `out` and returns how
// many of them count. The whole chunk belongs to the run and `out` never
// stands above it, so the bytes past the count may be written too.
std::uint32_t StoreWithoutDropped(__m128i bytes, int dropped, char* out) {
  const __m128i indexes = _mm_setr_epi8(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15);
  std::uint32_t count = 16;
  while (dropped != 0) {
    const int gap = __builtin_ctz(static_cast<unsigned>(dropped));
    const __m128i below = _mm_cmplt_epi8(indexes, _mm_set1_epi8(static_cast<char>(gap)));
    bytes = _mm_or_si128(_mm_and_si128(below, bytes), _mm_andnot_si128(below, _mm_srli_si128(bytes, 1)));
    dropped = (dropped >> (gap + 1)) << gap;
    --count;
  }
  _mm_storeu_si128(reinterpret_cast<__m128i*>(out), bytes);
  return count;
}
#endif

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
      kept += StoreWithoutDropped(bytes, _mm_movemask_epi8(dropped), copy + kept);
      continue;
    }
    const int tagAt = __builtin_ctz(static_cast<unsigned>(tags));
    const std::uint32_t stop = position + static_cast<std::uint32_t>(tagAt);
    // The usual end of a run: nothing dropped so far, so it already stands in place.
    if (kept == position && (_mm_movemask_epi8(dropped) & ((1 << tagAt) - 1)) == 0) return {stop, stop};
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
