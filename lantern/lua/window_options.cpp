#include "lantern/lua/window_options.h"

#include <cstdio>

namespace qrl {
namespace {

constexpr int DefaultWidth = 1024;
constexpr int DefaultHeight = 768;

int IntegerField(lua_State* L, const char* name, int fallback) {
  lua_getfield(L, 1, name);
  const int value = lua_isnil(L, -1) ? fallback : static_cast<int>(luaL_checkinteger(L, -1));
  lua_pop(L, 1);
  return value;
}

}  // namespace

WindowOptions ReadWindowOptions(lua_State* L) {
  if (lua_isnoneornil(L, 1)) {
    lua_settop(L, 0);
    lua_newtable(L);
  }
  luaL_checktype(L, 1, LUA_TTABLE);
  WindowOptions options{IntegerField(L, "width", DefaultWidth), IntegerField(L, "height", DefaultHeight), {}};
  lua_getfield(L, 1, "title");
  options.title = lua_isnil(L, -1) ? std::string("lantern") : luaL_checkstring(L, -1);
  lua_pop(L, 1);
  if (options.width < 1 || options.height < 1)
    luaL_error(L, "lantern.window: width and height must be positive");
  return options;
}

std::string WaitProgressLine(lua_Integer id, const std::string& wanted, double seconds,
                             const std::string& current) {
  char waited[32];
  std::snprintf(waited, sizeof waited, "%.1f", seconds);
  return "\r\033[Kwaiting for \"" + wanted + "\" on window " + std::to_string(id) + ": " + waited +
         " s (now \"" + current + "\")";
}

}  // namespace qrl
