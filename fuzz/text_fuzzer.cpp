// Differential fuzzer of the text utilities: every function runs on bytes
// taken from the input and is compared with a slow, literal rendering of its
// rules (in-place replacement, a stream line reader, the C library's number
// reader). Any disagreement aborts, so libFuzzer keeps the input.
//
// Input layout: delimiter, keepEmpty, fieldCount, lengths of from/to, then
// from, to and the text.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "commands/text_utils.h"

namespace {

using qrl::TrimSide;

void Require(bool holds, const char* what) {
  if (!holds) {
    std::fprintf(stderr, "text fuzzer: %s\n", what);
    std::abort();
  }
}

// Naive replacement is quadratic; above this size only the fast form runs.
constexpr std::size_t kReferenceLimit = 2048;

template <typename Text>
Text ReplaceInPlace(Text text, const Text& from, const Text& to) {
  for (std::size_t at = text.find(from); at != Text::npos; at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
  return text;
}

std::u16string Widen(std::string_view bytes) {
  std::u16string wide;
  for (unsigned char byte : bytes) wide.push_back(byte);
  return wide;
}

std::u16string UnitsOf(std::string_view bytes) {
  std::u16string units;
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    units.push_back(static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) |
                                          static_cast<unsigned char>(bytes[i + 1]) << 8));
  }
  return units;
}

char16_t StrtolUnit(std::u16string_view four) {
  char digits[5] = {};
  for (std::size_t i = 0; i < 4; ++i) digits[i] = four[i] > 0x7F ? '!' : static_cast<char>(four[i]);
  return static_cast<char16_t>(std::strtol(digits, nullptr, 16) & 0xFFFF);
}

std::u16string UnescapeByIndex(std::u16string_view text) {
  std::u16string out;
  std::size_t i = 0;
  while (i < text.size()) {
    if (text[i] != u'\\' || i + 1 == text.size()) {
      out.push_back(text[i++]);
      continue;
    }
    const char16_t next = text[i + 1];
    if (next == u'u') {
      if (i + 6 <= text.size()) {
        out.push_back(StrtolUnit(text.substr(i + 2, 4)));
        i += 6;
      } else {
        i += 1;
      }
      continue;
    }
    out.push_back(next == u'n' ? u'\n' : next == u'r' ? u'\r' : next == u't' ? u'\t' : next);
    i += 2;
  }
  return out;
}

bool IsTrimmed(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

std::string TrimByErasing(std::string text, TrimSide side) {
  if (text.empty() || text == " ") return "";
  if (side == TrimSide::Left || side == TrimSide::Both) {
    while (text.size() > 1 && IsTrimmed(text[0])) text.erase(0, 1);
  }
  if (side == TrimSide::Right || side == TrimSide::Both) {
    while (text.size() > 1 && IsTrimmed(text.back())) text.pop_back();
  }
  return text;
}

std::vector<std::string> SplitByStream(char delimiter, int keepEmpty, int fieldCount,
                                       std::string text) {
  if (!text.empty() && text.back() == delimiter) text.push_back(' ');
  std::istringstream stream(text);
  std::vector<std::string> fields;
  for (std::string piece; std::getline(stream, piece, delimiter);) {
    if (keepEmpty != 1 && piece.empty()) continue;
    fields.push_back(qrl::TrimText(piece, TrimSide::Both));
  }
  if (fieldCount > 0) fields.resize(static_cast<std::size_t>(fieldCount));
  return fields;
}

std::vector<std::string> SplitByScanning(std::string_view text) {
  std::vector<std::string> words;
  std::string word;
  for (char c : text) {
    if (c != ' ') {
      word.push_back(c);
    } else if (!word.empty()) {
      words.push_back(word);
      word.clear();
    }
  }
  if (!word.empty()) words.push_back(word);
  return words;
}

void CheckReplacement(std::string_view text, std::string_view from, std::string_view to) {
  const std::string replaced = qrl::ReplaceAll(text, from, to);
  const std::u16string wideReplaced = qrl::ReplaceAll(Widen(text), Widen(from), Widen(to));
  Require(wideReplaced == Widen(replaced), "wide and narrow ReplaceAll differ");
  if (from.empty()) {
    Require(replaced == text, "ReplaceAll with an empty from changed the text");
  } else if (text.size() <= kReferenceLimit) {
    Require(replaced == ReplaceInPlace(std::string(text), std::string(from), std::string(to)),
            "ReplaceAll differs from in-place replacement");
  }
}

void CheckEntities(std::string_view text) {
  if (text.size() > kReferenceLimit) return;
  std::string expected(text);
  for (const auto& [reference, character] : qrl::EntityTable) {
    expected = ReplaceInPlace(expected, reference, character);
  }
  Require(qrl::DecodeEntities(text) == expected, "DecodeEntities differs from row-by-row replacement");
}

void CheckCase(std::string_view text) {
  const std::string lowered = qrl::ToLower(text);
  const std::u16string wideLowered = qrl::ToLower(Widen(text));
  Require(wideLowered == Widen(lowered), "wide and narrow ToLower differ");
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    Require(lowered[i] == (c >= 'A' && c <= 'Z' ? c + 32 : c), "ToLower changed a wrong byte");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  if (input.size() < 4) return 0;
  const char delimiter = input[0];
  const int keepEmpty = static_cast<unsigned char>(input[1]) % 3;
  const int fieldCount = static_cast<unsigned char>(input[2]) % 8 - 2;
  const std::size_t fromLength = static_cast<unsigned char>(input[3]) & 7;
  const std::size_t toLength = (static_cast<unsigned char>(input[3]) >> 3) & 7;
  std::string_view rest = input.substr(4);
  const std::string_view from = rest.substr(0, fromLength);
  rest.remove_prefix(from.size());
  const std::string_view to = rest.substr(0, toLength);
  rest.remove_prefix(to.size());
  const std::string_view text = rest;

  CheckReplacement(text, from, to);
  CheckEntities(text);
  CheckCase(text);
  Require(qrl::SplitWords(text) == SplitByScanning(text), "SplitWords differs from scanning");
  Require(qrl::SplitFields(delimiter, keepEmpty, fieldCount, text) ==
              SplitByStream(delimiter, keepEmpty, fieldCount, std::string(text)),
          "SplitFields differs from the stream line reader");
  for (TrimSide side : {TrimSide::Left, TrimSide::Right, TrimSide::Both, TrimSide{'?'}}) {
    Require(qrl::TrimText(text, side) == TrimByErasing(std::string(text), side),
            "TrimText differs from erasing byte by byte");
  }
  const std::u16string units = UnitsOf(input);
  Require(qrl::UnescapeJsonText(units) == UnescapeByIndex(units),
          "UnescapeJsonText differs from the index-by-index reading");
  return 0;
}
