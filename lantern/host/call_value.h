// The values that cross a call as the host sees them: arguments going in, and
// results, array elements and map pairs coming back, decoded into plain C++
// objects that own their texts.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <variant>
#include <vector>

namespace qrl {

// One script argument: an integer, narrow text (bytes as they are) or wide
// text (UTF-16 units).
using Argument = std::variant<std::int32_t, std::string, std::u16string>;

struct MapPair;

struct Value {
  enum class Kind {
    Zeroed,    // the record's type was 0: nothing was made
    Integer,   // integer
    Text,      // text (narrow bytes)
    WideText,  // wide
    Array,     // elements
    Map,       // pairs, in the order they were stored
    Other,     // a type code this host does not know; see typeCode
  };

  Kind kind = Kind::Zeroed;
  std::uint32_t typeCode = 0;  // the record's type as the host found it
  std::int32_t integer = 0;
  std::string text;
  std::u16string wide;
  // An array keeps the length it was made with; a slot never stored stays a
  // Zeroed value, so a partly filled array shows where filling stopped.
  std::vector<Value> elements;
  std::vector<MapPair> pairs;

  static Value Integer(std::int32_t number);
  static Value Text(std::string bytes);
  static Value WideText(std::u16string units);
};

struct MapPair {
  Value key;
  Value value;
};

bool operator==(const Value& left, const Value& right);
bool operator==(const MapPair& left, const MapPair& right);

// A short readable form for test failure messages and the host's listings,
// e.g. 3, "abc", u"abc", [1, 2], {"a": "b"}, <zeroed>.
std::string Describe(const Value& value);
std::ostream& operator<<(std::ostream& out, const Value& value);

}  // namespace qrl
