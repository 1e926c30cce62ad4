#include "lantern/host/call_value.h"

#include <cstdio>
#include <ostream>

namespace qrl {

Value Value::Integer(std::int32_t number) {
  Value value;
  value.kind = Kind::Integer;
  value.typeCode = 1;
  value.integer = number;
  return value;
}

Value Value::Text(std::string bytes) {
  Value value;
  value.kind = Kind::Text;
  value.typeCode = 2;
  value.text = std::move(bytes);
  return value;
}

Value Value::WideText(std::u16string units) {
  Value value;
  value.kind = Kind::WideText;
  value.typeCode = 0x80;
  value.wide = std::move(units);
  return value;
}

// The host's own type codes of arrays and maps are not compared: two values
// are equal when they hold the same thing.
bool operator==(const Value& left, const Value& right) {
  if (left.kind != right.kind) return false;
  switch (left.kind) {
    case Value::Kind::Zeroed:
      return true;
    case Value::Kind::Integer:
      return left.integer == right.integer;
    case Value::Kind::Text:
      return left.text == right.text;
    case Value::Kind::WideText:
      return left.wide == right.wide;
    case Value::Kind::Array:
      return left.elements == right.elements;
    case Value::Kind::Map:
      return left.pairs == right.pairs;
    case Value::Kind::Other:
      return left.typeCode == right.typeCode;
  }
  return false;
}

bool operator==(const MapPair& left, const MapPair& right) {
  return left.key == right.key && left.value == right.value;
}

namespace {

void AppendQuoted(std::string& out, std::string_view bytes) {
  out += '"';
  for (unsigned char byte : bytes) {
    if (byte == '"' || byte == '\\') {
      out += '\\';
      out += static_cast<char>(byte);
    } else if (byte < 0x20 || byte >= 0x7F) {
      char escaped[8];
      std::snprintf(escaped, sizeof escaped, "\\x%02X", byte);
      out += escaped;
    } else {
      out += static_cast<char>(byte);
    }
  }
  out += '"';
}

void AppendWide(std::string& out, const std::u16string& units) {
  out += "u\"";
  for (char16_t unit : units) {
    if (unit >= 0x20 && unit < 0x7F && unit != u'"' && unit != u'\\') {
      out += static_cast<char>(unit);
    } else {
      char escaped[12];
      std::snprintf(escaped, sizeof escaped, "\\u%04X", static_cast<unsigned>(unit));
      out += escaped;
    }
  }
  out += '"';
}

void AppendValue(std::string& out, const Value& value);

void AppendElements(std::string& out, const std::vector<Value>& elements) {
  out += '[';
  for (std::size_t i = 0; i < elements.size(); ++i) {
    if (i > 0) out += ", ";
    AppendValue(out, elements[i]);
  }
  out += ']';
}

void AppendPairs(std::string& out, const std::vector<MapPair>& pairs) {
  out += '{';
  for (std::size_t i = 0; i < pairs.size(); ++i) {
    if (i > 0) out += ", ";
    AppendValue(out, pairs[i].key);
    out += ": ";
    AppendValue(out, pairs[i].value);
  }
  out += '}';
}

// Arrays and maps nest only as deep as a module stored records of this host
// into each other, which no command does; the recursion stays shallow.
void AppendValue(std::string& out, const Value& value) {
  switch (value.kind) {
    case Value::Kind::Zeroed:
      out += "<zeroed>";
      return;
    case Value::Kind::Integer:
      out += std::to_string(value.integer);
      return;
    case Value::Kind::Text:
      AppendQuoted(out, value.text);
      return;
    case Value::Kind::WideText:
      AppendWide(out, value.wide);
      return;
    case Value::Kind::Array:
      AppendElements(out, value.elements);
      return;
    case Value::Kind::Map:
      AppendPairs(out, value.pairs);
      return;
    case Value::Kind::Other:
      out += "<type " + std::to_string(value.typeCode) + ">";
      return;
  }
}

}  // namespace

std::string Describe(const Value& value) {
  std::string out;
  AppendValue(out, value);
  return out;
}

std::ostream& operator<<(std::ostream& out, const Value& value) { return out << Describe(value); }

}  // namespace qrl
