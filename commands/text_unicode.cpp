#include "commands/unicode_text.h"

namespace qrl {

namespace {

constexpr char32_t Replacement = 0xFFFD;

bool IsContinuation(unsigned char byte) { return (byte & 0xC0) == 0x80; }

// Reads one code point at `pos` and moves past it. A malformed sequence
// (a stray continuation byte, a cut-off sequence, an overlong form, a
// surrogate or a value above U+10FFFF) yields U+FFFD and skips only its
// first byte, so the bytes after it are read again on their own.
char32_t NextCodePoint(std::string_view bytes, std::size_t& pos) {
  const unsigned char lead = static_cast<unsigned char>(bytes[pos]);
  ++pos;
  if (lead < 0x80) return lead;
  int length;
  char32_t point;
  char32_t smallest;
  if ((lead & 0xE0) == 0xC0) {
    length = 1, point = lead & 0x1F, smallest = 0x80;
  } else if ((lead & 0xF0) == 0xE0) {
    length = 2, point = lead & 0x0F, smallest = 0x800;
  } else if ((lead & 0xF8) == 0xF0) {
    length = 3, point = lead & 0x07, smallest = 0x10000;
  } else {
    return Replacement;
  }
  if (bytes.size() - pos < static_cast<std::size_t>(length)) return Replacement;
  for (int i = 0; i < length; ++i) {
    const unsigned char next = static_cast<unsigned char>(bytes[pos + i]);
    if (!IsContinuation(next)) return Replacement;
    point = (point << 6) | (next & 0x3F);
  }
  if (point < smallest || point > 0x10FFFF || (point >= 0xD800 && point <= 0xDFFF)) {
    return Replacement;
  }
  pos += length;
  return point;
}

void AppendUtf8(std::string& out, char32_t point) {
  if (point < 0x80) {
    out += static_cast<char>(point);
  } else if (point < 0x800) {
    out += static_cast<char>(0xC0 | (point >> 6));
    out += static_cast<char>(0x80 | (point & 0x3F));
  } else if (point < 0x10000) {
    out += static_cast<char>(0xE0 | (point >> 12));
    out += static_cast<char>(0x80 | ((point >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (point & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (point >> 18));
    out += static_cast<char>(0x80 | ((point >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((point >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (point & 0x3F));
  }
}

bool IsHighSurrogate(char16_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool IsLowSurrogate(char16_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

}  // namespace

std::u16string Utf8ToUtf16(std::string_view bytes) {
  std::u16string units;
  units.reserve(bytes.size());
  std::size_t pos = 0;
  while (pos < bytes.size()) {
    const char32_t point = NextCodePoint(bytes, pos);
    if (point < 0x10000) {
      units += static_cast<char16_t>(point);
    } else {
      units += static_cast<char16_t>(0xD800 + ((point - 0x10000) >> 10));
      units += static_cast<char16_t>(0xDC00 + ((point - 0x10000) & 0x3FF));
    }
  }
  return units;
}

std::string Utf16ToUtf8(std::u16string_view units) {
  std::string bytes;
  bytes.reserve(units.size());
  for (std::size_t i = 0; i < units.size(); ++i) {
    const char16_t unit = units[i];
    if (IsHighSurrogate(unit) && i + 1 < units.size() && IsLowSurrogate(units[i + 1])) {
      AppendUtf8(bytes, 0x10000 + ((char32_t(unit) - 0xD800) << 10) + (units[i + 1] - 0xDC00));
      ++i;
    } else if (IsHighSurrogate(unit) || IsLowSurrogate(unit)) {
      AppendUtf8(bytes, Replacement);
    } else {
      AppendUtf8(bytes, unit);
    }
  }
  return bytes;
}

}  // namespace qrl
