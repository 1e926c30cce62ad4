// Small text functions shared by the document commands and the browser host.
// Narrow text is bytes; wide text is UTF-16 units.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace qrl {

enum class TrimSide : char { Left = 'L', Right = 'R', Both = 'B' };

// Seven character references, applied in this (byte) order by DecodeEntities.
extern const std::map<std::string, std::string> EntityTable;

std::u16string UnescapeJsonText(std::u16string_view text);
// The unit that a two-unit escape (a backslash and `escaped`, not u) stands for.
char16_t JsonEscapeUnit(char16_t escaped);
std::vector<std::string> SplitWords(std::string_view text);
std::vector<std::string> SplitFields(char delimiter, int keepEmpty, int fieldCount,
                                     std::string_view text);
std::string TrimText(std::string_view text, TrimSide side);
std::string ToLower(std::string_view text);
std::u16string ToLower(std::u16string_view text);
std::string DecodeEntities(std::string_view text);
std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to);
std::u16string ReplaceAll(std::u16string_view text, std::u16string_view from,
                          std::u16string_view to);

}  // namespace qrl
