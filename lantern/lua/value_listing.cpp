#include "lantern/lua/value_listing.h"

#include <cstdio>
#include <string_view>

namespace qrl {
namespace {

// Past these, a listing says how much it left out: a page's worth of handles
// would bury the prompt.
constexpr lua_Integer MaxRowsShown = 100;
// Tables inside tables come only from the script itself; a cycle or a deep
// nest stops here.
constexpr int MaxDepth = 4;

void AppendQuoted(std::string& out, std::string_view text) {
  out += '"';
  for (const char c : text) {
    switch (c) {
      case '"': out += "\\\""; break;
      case '\\': out += "\\\\"; break;
      case '\n': out += "\\n"; break;
      case '\r': out += "\\r"; break;
      case '\t': out += "\\t"; break;
      default:
        // UTF-8 stays readable; only control bytes are escaped.
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7f) {
          char escaped[8];
          std::snprintf(escaped, sizeof escaped, "\\%d", static_cast<unsigned char>(c));
          out += escaped;
        } else {
          out += c;
        }
    }
  }
  out += '"';
}

bool IsName(std::string_view text) {
  if (text.empty() || (text[0] >= '0' && text[0] <= '9')) return false;
  for (const char c : text) {
    const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    if (!letter && c != '_' && !(c >= '0' && c <= '9')) return false;
  }
  return true;
}

void AppendValue(lua_State* L, int index, int depth, std::string& out);

void AppendKey(lua_State* L, int index, std::string& out) {
  std::size_t length = 0;
  if (lua_type(L, index) == LUA_TSTRING) {
    const char* text = lua_tolstring(L, index, &length);
    if (IsName({text, length})) {
      out.append(text, length);
      return;
    }
  }
  out += '[';
  AppendValue(L, index, MaxDepth, out);
  out += ']';
}

void AppendOmitted(std::string& out, lua_Integer omitted) {
  if (omitted > 0) out += ", ... (" + std::to_string(omitted) + " more)";
}

// A sequence: the rows from 1 to its length.
void AppendArray(lua_State* L, int table, lua_Integer length, int depth, std::string& out) {
  out += '{';
  for (lua_Integer i = 1; i <= length && i <= MaxRowsShown; ++i) {
    if (i > 1) out += ", ";
    lua_rawgeti(L, table, i);
    AppendValue(L, -1, depth + 1, out);
    lua_pop(L, 1);
  }
  AppendOmitted(out, length - MaxRowsShown);
  out += '}';
}

// A map result keeps its keys in stored order in its metatable's __keys.
bool AppendStoredMap(lua_State* L, int table, int depth, std::string& out) {
  if (!lua_getmetatable(L, table)) return false;
  if (lua_getfield(L, -1, "__keys") != LUA_TTABLE) {
    lua_pop(L, 2);
    return false;
  }
  const lua_Integer count = static_cast<lua_Integer>(lua_rawlen(L, -1));
  out += '{';
  for (lua_Integer i = 1; i <= count && i <= MaxRowsShown; ++i) {
    if (i > 1) out += ", ";
    lua_rawgeti(L, -1, i);
    AppendKey(L, -1, out);
    out += " = ";
    lua_rawget(L, table);
    AppendValue(L, -1, depth + 1, out);
    lua_pop(L, 1);
  }
  AppendOmitted(out, count - MaxRowsShown);
  out += '}';
  lua_pop(L, 2);
  return true;
}

void AppendTable(lua_State* L, int table, int depth, std::string& out) {
  if (depth >= MaxDepth) {
    out += "{...}";
    return;
  }
  if (AppendStoredMap(L, table, depth, out)) return;
  const lua_Integer length = static_cast<lua_Integer>(lua_rawlen(L, table));
  lua_Integer entries = 0;
  lua_pushnil(L);
  while (lua_next(L, table)) {
    ++entries;
    lua_pop(L, 1);
  }
  if (entries == length) {
    AppendArray(L, table, length, depth, out);
    return;
  }
  // Any other table, in Lua's own order.
  out += '{';
  lua_Integer shown = 0;
  lua_pushnil(L);
  while (lua_next(L, table)) {
    if (shown == MaxRowsShown) {
      lua_pop(L, 2);
      break;
    }
    if (shown++ > 0) out += ", ";
    AppendKey(L, -2, out);
    out += " = ";
    AppendValue(L, -1, depth + 1, out);
    lua_pop(L, 1);
  }
  AppendOmitted(out, entries - shown);
  out += '}';
}

void AppendValue(lua_State* L, int index, int depth, std::string& out) {
  index = lua_absindex(L, index);
  if (!lua_checkstack(L, 4)) {
    out += "...";
    return;
  }
  switch (lua_type(L, index)) {
    case LUA_TSTRING: {
      std::size_t length = 0;
      const char* text = lua_tolstring(L, index, &length);
      AppendQuoted(out, {text, length});
      return;
    }
    case LUA_TTABLE:
      AppendTable(L, index, depth, out);
      return;
    default: {
      std::size_t length = 0;
      const char* text = luaL_tolstring(L, index, &length);
      out.append(text, length);
      lua_pop(L, 1);
    }
  }
}

}  // namespace

std::string ListValue(lua_State* L, int index) {
  std::string out;
  AppendValue(L, index, 0, out);
  return out;
}

}  // namespace qrl
