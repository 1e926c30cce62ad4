// How a source file adds helpers to the `lantern` table of scripts.
//
// A file defines a LanternExtension and registers it with a namespace-scope
// LanternExtensionRegistration object; the file must be compiled into the
// lantern executable itself (not into a static library, whose unreferenced
// objects the linker would drop). For example:
//
//   namespace {
//   int Pump(lua_State* L) { ...; return 0; }
//   void Install(lua_State* L) {
//     static const luaL_Reg functions[] = {{"pump", Pump}, {nullptr, nullptr}};
//     luaL_setfuncs(L, functions, 0);
//   }
//   const qrl::LanternExtensionRegistration windows{{"windows", StartDisplay, Install, nullptr}};
//   }
//
// Order of a run: every startup hook (before the module is loaded, in no
// fixed order between files), the module loads, every install hook, the
// script, the Lua state closes, the host lets go of the module, every
// shutdown hook. The module stays mapped, and its own objects live until the
// process exits.
#pragma once

#include <lua.hpp>
#include <span>

namespace qrl {

class ModuleHost;

struct LanternExtension {
  const char* name;
  // Before the module is loaded, e.g. to provide a display. May be null.
  void (*startup)();
  // Adds fields to the `lantern` table, which is on top of the stack and must
  // stay there. May be null.
  void (*install)(lua_State* L);
  // At the end of the run, whether the script or the load failed or not.
  // May be null.
  void (*shutdown)();
};

class LanternExtensionRegistration {
 public:
  explicit LanternExtensionRegistration(const LanternExtension& extension);
};

std::span<const LanternExtension> LanternExtensions();

// The host that the running script's module calls go through.
ModuleHost& LanternHost(lua_State* L);

// While one lives, a named value that the module sets outside any module
// call (from a browser event in the message loop) goes to this thread: a
// helper that runs the message loop makes one around it, so that a script
// pumping from a coroutine gets the value there. End the scope before
// raising a Lua error: the error would jump over its destructor.
class ModuleEventScope {
 public:
  explicit ModuleEventScope(lua_State* L);
  ~ModuleEventScope();
  ModuleEventScope(const ModuleEventScope&) = delete;
  ModuleEventScope& operator=(const ModuleEventScope&) = delete;

 private:
  lua_State* L_;
  lua_State* outer_;
};

// A module call or a named-value callback that ran outside any module call
// (a browser event during a pump, say) may leave errors behind. A helper that
// lets such events run calls this afterwards: it raises the pending errors as
// one Lua error at the script's line, or returns when there are none.
void RaisePendingErrors(lua_State* L);

}  // namespace qrl
