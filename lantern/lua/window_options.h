// What lantern.window and lantern.wait mean to a script, the same on every
// system; each system's window helpers (gtk/, windows/) act on it.
#pragma once

#include <lua.hpp>
#include <string>

namespace qrl {

struct WindowOptions {
  int width;
  int height;
  std::string title;
};

// lantern.window's argument: a table of width, height and title, each
// optional, or none at all. Raises a Lua error for values a window can't take.
WindowOptions ReadWindowOptions(lua_State* L);

// The line that lantern.wait redraws on a terminal while it waits.
std::string WaitProgressLine(lua_Integer id, const std::string& wanted, double seconds,
                             const std::string& current);

}  // namespace qrl
