// The host's own helpers in the lantern table:
//   lantern.keys(map)        the keys of a map result, in the order stored
//   lantern.faults()         every breach of the host contract seen so far
//   lantern.moduleversion()  the module's version number and description
//   lantern.hostversion      the host version announced to the module
#include <lua.hpp>

#include "lantern/lua_extensions.h"
#include "lantern/lua_session.h"

namespace qrl {

namespace {

// The Query code that asks for the version and description, and the room a
// host gives for the description.
constexpr HostWord VersionQuery = 1;
constexpr std::size_t DescriptionRoom = 260;

int Keys(lua_State* L) {
  luaL_checktype(L, 1, LUA_TTABLE);
  if (!lua_getmetatable(L, 1) || lua_getfield(L, -1, "__keys") != LUA_TTABLE) {
    return luaL_argerror(L, 1, "not a map result");
  }
  const lua_Integer count = luaL_len(L, -1);
  lua_createtable(L, static_cast<int>(count), 0);
  for (lua_Integer i = 1; i <= count; ++i) {
    lua_rawgeti(L, -2, i);
    lua_rawseti(L, -2, i);
  }
  return 1;
}

int Faults(lua_State* L) {
  const std::vector<std::string>& faults = LanternHost(L).contractFaults();
  lua_createtable(L, static_cast<int>(faults.size()), 0);
  lua_Integer index = 0;
  for (const std::string& fault : faults) {
    lua_pushlstring(L, fault.data(), fault.size());
    lua_rawseti(L, -2, ++index);
  }
  return 1;
}

int ModuleVersion(lua_State* L) {
  char description[DescriptionRoom] = {};
  const HostWord version =
      LanternHost(L).query(VersionQuery, description, static_cast<HostWord>(sizeof description));
  description[sizeof description - 1] = '\0';
  lua_pushinteger(L, version);
  lua_pushstring(L, description);
  return 2;
}

void Install(lua_State* L) {
  static const luaL_Reg functions[] = {
      {"keys", Keys}, {"faults", Faults}, {"moduleversion", ModuleVersion}, {nullptr, nullptr}};
  luaL_setfuncs(L, functions, 0);
  lua_pushinteger(L, static_cast<lua_Integer>(LanternHost(L).hostVersion()));
  lua_setfield(L, -2, "hostversion");
}

const LanternExtensionRegistration hostHelpers{{"host", nullptr, Install, nullptr}};

}  // namespace

}  // namespace qrl
