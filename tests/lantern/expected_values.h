// Results as a test expects them, built the way the host library decodes
// them.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "lantern/host/call_value.h"

namespace qrl::testing {

inline Value Array(std::vector<Value> elements = {}) {
  Value value;
  value.kind = Value::Kind::Array;
  value.elements = std::move(elements);
  return value;
}

inline Value Map(std::vector<MapPair> pairs = {}) {
  Value value;
  value.kind = Value::Kind::Map;
  value.pairs = std::move(pairs);
  return value;
}

inline Value IntArray(std::initializer_list<std::int32_t> items) {
  Value value = Array();
  for (const std::int32_t item : items) value.elements.push_back(Value::Integer(item));
  return value;
}

inline Value TextArray(std::initializer_list<std::string> items) {
  Value value = Array();
  for (const std::string& item : items) value.elements.push_back(Value::Text(item));
  return value;
}

inline Value TextMap(std::initializer_list<std::pair<const char*, const char*>> pairs) {
  Value value = Map();
  for (const auto& [key, text] : pairs)
    value.pairs.push_back({Value::Text(key), Value::Text(text)});
  return value;
}

}  // namespace qrl::testing
