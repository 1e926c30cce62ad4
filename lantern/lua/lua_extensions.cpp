#include "lantern/lua/lua_extensions.h"

#include <cstdio>
#include <string>
#include <vector>

#include "lantern/lua/lua_session.h"

namespace qrl {

namespace {

std::vector<LanternExtension>& Registry() {
  static std::vector<LanternExtension> extensions;
  return extensions;
}

// The address of this object is the session's key in the Lua registry.
const char SessionKey = 0;

}  // namespace

LanternExtensionRegistration::LanternExtensionRegistration(const LanternExtension& extension) {
  Registry().push_back(extension);
}

std::span<const LanternExtension> LanternExtensions() { return Registry(); }

void AttachSession(lua_State* L, LuaSession& session) {
  lua_pushlightuserdata(L, &session);
  lua_rawsetp(L, LUA_REGISTRYINDEX, &SessionKey);
}

LuaSession& SessionOf(lua_State* L) {
  lua_rawgetp(L, LUA_REGISTRYINDEX, &SessionKey);
  auto* session = static_cast<LuaSession*>(lua_touserdata(L, -1));
  lua_pop(L, 1);
  return *session;
}

ModuleHost& LanternHost(lua_State* L) { return SessionOf(L).host; }

ModuleEventScope::ModuleEventScope(lua_State* L) : L_(L), outer_(SessionOf(L).callingThread) {
  SessionOf(L).callingThread = L;
}

ModuleEventScope::~ModuleEventScope() { SessionOf(L_).callingThread = outer_; }

void ShowNewContractFaults(LuaSession& session) {
  const std::vector<std::string>& faults = session.host.contractFaults();
  for (; session.faultsShown < faults.size(); ++session.faultsShown) {
    std::fflush(stdout);
    std::fprintf(stderr, "lantern: warning: the module broke the host contract: %s\n",
                 faults[session.faultsShown].c_str());
  }
}

void RaisePendingErrors(lua_State* L) {
  {
    LuaSession& session = SessionOf(L);
    if (session.pendingErrors.empty()) return;
    std::string message;
    for (const std::string& error : session.pendingErrors) {
      if (!message.empty()) message += "; ";
      message += error;
    }
    session.pendingErrors.clear();
    luaL_where(L, 1);
    lua_pushlstring(L, message.data(), message.size());
    lua_concat(L, 2);
  }
  // Raised only here, once every C++ object above is gone: a Lua error jumps
  // over the frames in between without running their destructors.
  lua_error(L);
}

}  // namespace qrl
