// Classes of bytes that the parser and the attribute reader test for. White
// space is exactly space, CR, LF and TAB; no other byte counts.
#pragma once

#include <array>
#include <string_view>

namespace qrl {

constexpr bool IsLineBreakOrTab(char byte) { return byte == '\r' || byte == '\n' || byte == '\t'; }
constexpr bool IsWhiteSpace(char byte) { return byte == ' ' || IsLineBreakOrTab(byte); }

// A 256-entry membership table, for loops that skip ordinary bytes quickly.
struct ByteTable {
  std::array<bool, 256> set{};
  constexpr bool operator[](char byte) const { return set[static_cast<unsigned char>(byte)]; }
};

constexpr ByteTable MakeByteTable(std::string_view members) {
  ByteTable table;
  for (char byte : members) table.set[static_cast<unsigned char>(byte)] = true;
  return table;
}

}  // namespace qrl
