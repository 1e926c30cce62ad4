// Undoes the escapes of a JSON string value, unit by unit. It is deliberately
// not a JSON parser: only backslashes are looked at, the surrounding quotes
// stay, and malformed escapes degrade to plain text instead of failing.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "commands/text_utils.h"

namespace qrl {
namespace {

constexpr char16_t kBackslash = u'\\';
constexpr std::size_t kUnicodeEscapeLength = 6;  // backslash, u, four units

bool IsLeadingSpace(char16_t unit) { return unit == u' ' || (unit >= u'\t' && unit <= u'\r'); }

int HexDigitValue(char16_t unit) {
  if (unit >= u'0' && unit <= u'9') return unit - u'0';
  if (unit >= u'a' && unit <= u'f') return unit - u'a' + 10;
  if (unit >= u'A' && unit <= u'F') return unit - u'A' + 10;
  return -1;
}

// Reads the four units of a \u escape the lenient way a C library reads a
// base-16 number: optional leading white space, a sign, a 0x prefix (taken
// only when a digit follows it), then digits up to the first non-digit. No
// digit at all reads as 0. White space and digits are the ASCII ones only.
char16_t ReadEscapedUnit(std::u16string_view digits) {
  std::size_t at = 0;
  while (at < digits.size() && IsLeadingSpace(digits[at])) ++at;
  bool negative = false;
  if (at < digits.size() && (digits[at] == u'+' || digits[at] == u'-')) {
    negative = digits[at] == u'-';
    ++at;
  }
  if (at + 2 < digits.size() && digits[at] == u'0' && (digits[at + 1] | 0x20) == u'x' &&
      HexDigitValue(digits[at + 2]) >= 0) {
    at += 2;
  }
  std::int32_t value = 0;
  for (; at < digits.size() && HexDigitValue(digits[at]) >= 0; ++at) {
    value = value * 16 + HexDigitValue(digits[at]);
  }
  if (negative) value = -value;
  return static_cast<char16_t>(static_cast<std::uint32_t>(value) & 0xFFFF);
}

}  // namespace

char16_t JsonEscapeUnit(char16_t unit) {
  switch (unit) {
    case u'n': return u'\n';
    case u'r': return u'\r';
    case u't': return u'\t';
    // A quote, a backslash and every unknown escape (\/, \b, \f, ...) stand
    // for the unit itself.
    default: return unit;
  }
}

std::u16string UnescapeJsonText(std::u16string_view text) {
  std::u16string result;
  // Every escape is at least as long as what it stands for.
  result.reserve(text.size());
  std::size_t i = 0;
  while (i < text.size()) {
    const std::size_t backslash = text.find(kBackslash, i);
    // A backslash that is the very last unit is kept as it is.
    if (backslash == std::u16string_view::npos || backslash + 1 == text.size()) {
      result.append(text.substr(i));
      break;
    }
    result.append(text.substr(i, backslash - i));
    const char16_t escaped = text[backslash + 1];
    if (escaped != u'u') {
      result.push_back(JsonEscapeUnit(escaped));
      i = backslash + 2;
    } else if (backslash + kUnicodeEscapeLength <= text.size()) {
      result.push_back(ReadEscapedUnit(text.substr(backslash + 2, 4)));
      i = backslash + kUnicodeEscapeLength;
    } else {
      // Too short for \uXXXX: drop the backslash, the rest is plain text.
      i = backslash + 1;
    }
  }
  return result;
}

}  // namespace qrl
