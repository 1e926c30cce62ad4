// ASCII-only lower-casing in both widths. No locale is consulted, so bytes
// and units outside A to Z (UTF-8 sequences included) pass through intact.
#include <algorithm>
#include <string>
#include <string_view>

#include "commands/text_utils.h"

namespace qrl {
namespace {

template <typename Char>
std::basic_string<Char> LowerAscii(std::basic_string_view<Char> text) {
  std::basic_string<Char> lowered(text);
  std::transform(lowered.begin(), lowered.end(), lowered.begin(), [](Char unit) {
    return unit >= Char('A') && unit <= Char('Z') ? static_cast<Char>(unit + ('a' - 'A')) : unit;
  });
  return lowered;
}

}  // namespace

std::string ToLower(std::string_view text) { return LowerAscii(text); }

std::u16string ToLower(std::u16string_view text) { return LowerAscii(text); }

}  // namespace qrl
