// Fuzzer of the text utilities: each one runs on bytes taken from the input,
// under the sanitizers, and the JSON unescaper, whose \u escapes read four
// units as leniently as the C library reads a number, is compared with that
// number reader itself. A disagreement aborts, so libFuzzer keeps the input.
//
// Input layout: delimiter, keepEmpty, fieldCount, lengths of from/to, then
// from, to and the text.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "commands/text_utils.h"
#include "fuzz/fuzz_input.h"

namespace {

using qrl::TrimSide;

std::u16string UnescapeByIndex(std::u16string_view text) {
  std::u16string out;
  std::size_t i = 0;
  while (i < text.size()) {
    if (text[i] != u'\\' || i + 1 == text.size()) {
      out.push_back(text[i++]);
    } else if (text[i + 1] != u'u') {
      const char16_t next = text[i + 1];
      out.push_back(next == u'n' ? u'\n' : next == u'r' ? u'\r' : next == u't' ? u'\t' : next);
      i += 2;
    } else if (i + 6 > text.size()) {
      i += 1;
    } else {
      char digits[5] = {};
      for (std::size_t k = 0; k < 4; ++k) {
        digits[k] = text[i + 2 + k] > 0x7F ? '!' : static_cast<char>(text[i + 2 + k]);
      }
      out.push_back(static_cast<char16_t>(std::strtol(digits, nullptr, 16) & 0xFFFF));
      i += 6;
    }
  }
  return out;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 4) return 0;
  std::string_view text(reinterpret_cast<const char*>(data) + 4, size - 4);
  const std::string_view from = qrl::fuzz::TakeFront(text, data[3] & 7);
  const std::string_view to = qrl::fuzz::TakeFront(text, (data[3] >> 3) & 7);
  const auto wide = [](std::string_view bytes) { return std::u16string(bytes.begin(), bytes.end()); };

  qrl::ReplaceAll(text, from, to);
  qrl::ReplaceAll(wide(text), wide(from), wide(to));
  qrl::DecodeEntities(text);
  qrl::ToLower(text);
  qrl::ToLower(wide(text));
  qrl::SplitWords(text);
  qrl::SplitFields(static_cast<char>(data[0]), data[1] % 3, data[2] % 8 - 2, text);
  for (TrimSide side : {TrimSide::Left, TrimSide::Right, TrimSide::Both, TrimSide{'?'}}) qrl::TrimText(text, side);

  // The whole input as UTF-16 units, low byte first.
  std::u16string units;
  for (std::size_t i = 0; i + 1 < size; i += 2) units.push_back(static_cast<char16_t>(data[i] | data[i + 1] << 8));
  qrl::fuzz::Require(qrl::UnescapeJsonText(units) == UnescapeByIndex(units),
                     "UnescapeJsonText differs from the index-by-index reading");
  return 0;
}
