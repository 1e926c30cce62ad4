// What the Lua side of lantern keeps for one run, reachable from any
// lua_State of the run.
#pragma once

#include <lua.hpp>
#include <string>
#include <vector>

#include "lantern/host/module_host.h"

namespace qrl {

struct LuaSession {
  ModuleHost& host;
  // Errors met while the module had control (its reports, a failing
  // named-value callback), raised when control is back in the script.
  std::vector<std::string> pendingErrors;
  // The thread whose call into the module (or whose message loop) is
  // running, so that a named value lands in the right coroutine's stack.
  lua_State* callingThread = nullptr;
  // How many of the host's contract faults have been shown as warnings.
  std::size_t faultsShown = 0;
};

void AttachSession(lua_State* L, LuaSession& session);
LuaSession& SessionOf(lua_State* L);

// Writes the host's new contract faults to standard error as warnings.
void ShowNewContractFaults(LuaSession& session);

}  // namespace qrl
