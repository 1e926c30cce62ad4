#include "browser/wide_text.h"

namespace qrl {
namespace {

constexpr char32_t Replacement = 0xFFFD;

void AppendCodePoint(std::string& out, char32_t c) {
  if (c < 0x80) {
    out += static_cast<char>(c);
  } else if (c < 0x800) {
    out += static_cast<char>(0xC0 | (c >> 6));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    out += static_cast<char>(0xE0 | (c >> 12));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (c >> 18));
    out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  }
}

void AppendUnit(std::u16string& out, char32_t c) {
  if (c < 0x10000) {
    out += static_cast<char16_t>(c);
  } else {
    c -= 0x10000;
    out += static_cast<char16_t>(0xD800 + (c >> 10));
    out += static_cast<char16_t>(0xDC00 + (c & 0x3FF));
  }
}

bool IsHighSurrogate(char32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool IsLowSurrogate(char32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

// Length of the sequence that `lead` starts, 0 for a byte that starts none.
std::size_t SequenceLength(unsigned char lead) {
  if (lead < 0x80) return 1;
  if (lead >= 0xC2 && lead <= 0xDF) return 2;
  if (lead >= 0xE0 && lead <= 0xEF) return 3;
  if (lead >= 0xF0 && lead <= 0xF4) return 4;
  return 0;
}

}  // namespace

std::string ToUtf8(std::u16string_view text) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char32_t unit = text[i];
    if (IsHighSurrogate(unit) && i + 1 < text.size() && IsLowSurrogate(text[i + 1])) {
      AppendCodePoint(out, 0x10000 + ((unit - 0xD800) << 10) + (text[i + 1] - 0xDC00));
      ++i;
    } else if (IsHighSurrogate(unit) || IsLowSurrogate(unit)) {
      AppendCodePoint(out, Replacement);
    } else {
      AppendCodePoint(out, unit);
    }
  }
  return out;
}

std::u16string FromUtf8(std::string_view text) {
  std::u16string out;
  out.reserve(text.size());
  std::size_t i = 0;
  while (i < text.size()) {
    const auto lead = static_cast<unsigned char>(text[i]);
    const std::size_t length = SequenceLength(lead);
    if (length == 1) {
      out += static_cast<char16_t>(lead);
      ++i;
      continue;
    }
    char32_t c = length == 0 ? 0 : lead & (0x7F >> length);
    std::size_t taken = 1;
    while (length != 0 && taken < length && i + taken < text.size() &&
           (static_cast<unsigned char>(text[i + taken]) & 0xC0) == 0x80) {
      c = (c << 6) | (static_cast<unsigned char>(text[i + taken]) & 0x3F);
      ++taken;
    }
    const bool overlong = (length == 3 && c < 0x800) || (length == 4 && c < 0x10000);
    const bool invalid = length == 0 || taken != length || overlong || c > 0x10FFFF ||
                         (c >= 0xD800 && c <= 0xDFFF);
    AppendUnit(out, invalid ? Replacement : c);
    i += taken;
  }
  return out;
}

}  // namespace qrl
