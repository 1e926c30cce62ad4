// The host's own helpers in the lantern table:
//   lantern.keys(map)        the keys of a map result, in the order stored
//   lantern.faults()         every breach of the host contract seen so far
//   lantern.moduleversion()  the module's version number and description
//   lantern.hostversion      the host version announced to the module
//   lantern.failservices{...} makes host services fail, for tests of the
//                            module's failure paths:
//       arrayservices = STATUS          every DllArrayServices call
//       arrhandler = {at = I, status = S}  DllArrHandler at element index I
//       mapcreate = STATUS              every map creation
//       mapstore = {at = N, status = S}    the N-th store (from 0) into a map
//     lantern.failservices() makes every service work again.
#include <lua.hpp>
#include <optional>

#include "lantern/lua/lua_extensions.h"
#include "lantern/host/module_host.h"

namespace qrl {

namespace {

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
  lua_Integer number = 0;
  {
    const ModuleHost::VersionInfo info = LanternHost(L).versionInfo();
    number = info.number;
    lua_pushlstring(L, info.description.data(), info.description.size());
  }
  lua_pushinteger(L, number);
  lua_insert(L, -2);
  return 2;
}

std::optional<HostWord> StatusField(lua_State* L, const char* name) {
  const int type = lua_getfield(L, 1, name);
  std::optional<HostWord> status;
  if (type != LUA_TNIL) status = static_cast<HostWord>(luaL_checkinteger(L, -1));
  lua_pop(L, 1);
  return status;
}

std::optional<ServiceFaults::AtIndex> AtIndexField(lua_State* L, const char* name) {
  if (lua_getfield(L, 1, name) == LUA_TNIL) {
    lua_pop(L, 1);
    return std::nullopt;
  }
  luaL_checktype(L, -1, LUA_TTABLE);
  lua_getfield(L, -1, "at");
  lua_getfield(L, -2, "status");
  const ServiceFaults::AtIndex fault{static_cast<HostWord>(luaL_checkinteger(L, -2)),
                                     static_cast<HostWord>(luaL_checkinteger(L, -1))};
  lua_pop(L, 3);
  return fault;
}

int FailServices(lua_State* L) {
  ServiceFaults faults;
  if (!lua_isnoneornil(L, 1)) {
    luaL_checktype(L, 1, LUA_TTABLE);
    faults.arrayServices = StatusField(L, "arrayservices");
    faults.arrHandler = AtIndexField(L, "arrhandler");
    faults.mapCreate = StatusField(L, "mapcreate");
    faults.mapStore = AtIndexField(L, "mapstore");
  }
  LanternHost(L).setFaults(faults);
  return 0;
}

void Install(lua_State* L) {
  static const luaL_Reg functions[] = {
      {"keys", Keys},
      {"faults", Faults},
      {"moduleversion", ModuleVersion},
      {"failservices", FailServices},
      {nullptr, nullptr}};
  luaL_setfuncs(L, functions, 0);
  lua_pushinteger(L, static_cast<lua_Integer>(LanternHost(L).hostVersion()));
  lua_setfield(L, -2, "hostversion");
}

const LanternExtensionRegistration hostHelpers{{"host", nullptr, Install, nullptr}};

}  // namespace

}  // namespace qrl
