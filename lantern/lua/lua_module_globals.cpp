#include "lantern/lua/lua_module_globals.h"

#include <cstdio>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "lantern/lua/lua_extensions.h"
#include "lantern/lua/lua_session.h"
#include "lantern/lua/lua_values.h"
#include "commands/unicode_text.h"

namespace qrl {

namespace {

std::string BadArgument(const VocabularyRow& row, int position, const std::string& why) {
  return "bad argument #" + std::to_string(position) + " to '" + row.name + "' (" + why + ")";
}

std::optional<std::string> ReadInteger(lua_State* L, const VocabularyRow& row, int position,
                                       std::vector<Argument>& args) {
  if (lua_type(L, position) != LUA_TNUMBER) {
    return BadArgument(row, position,
                       std::string("integer expected, got ") + luaL_typename(L, position));
  }
  int exact = 0;
  const lua_Integer number = lua_tointegerx(L, position, &exact);
  if (!exact) return BadArgument(row, position, "number has no integer representation");
  if (number < std::numeric_limits<std::int32_t>::min() ||
      number > std::numeric_limits<std::int32_t>::max()) {
    return BadArgument(row, position, "integer out of the 32-bit range");
  }
  args.emplace_back(static_cast<std::int32_t>(number));
  return std::nullopt;
}

// A text reaches the module up to its first zero byte, as every text of the
// boundary does; a wide one goes as the UTF-16 of the script's UTF-8.
std::optional<std::string> ReadText(lua_State* L, const VocabularyRow& row, int position,
                                    bool wide, std::vector<Argument>& args) {
  if (lua_type(L, position) != LUA_TSTRING) {
    return BadArgument(row, position,
                       std::string("string expected, got ") + luaL_typename(L, position));
  }
  std::size_t length = 0;
  const char* bytes = lua_tolstring(L, position, &length);
  if (wide) {
    args.emplace_back(Utf8ToUtf16(std::string_view(bytes, length)));
  } else {
    args.emplace_back(std::string(bytes, length));
  }
  return std::nullopt;
}

// Reads the Lua arguments as the row's type nibbles say.
//
// Trailing nils are no arguments: a script that wraps a function passes its
// own optional parameters on as they are, nil when its caller left them out.
std::optional<std::string> ReadArguments(lua_State* L, const VocabularyRow& row,
                                         std::vector<Argument>& args) {
  int given = lua_gettop(L);
  while (given > 0 && lua_isnil(L, given)) --given;
  if (given < static_cast<int>(row.requiredArgs()) || given > static_cast<int>(row.maxArgs())) {
    return row.name + " takes " + row.allowedCounts() + ", got " + std::to_string(given);
  }
  for (int position = 1; position <= given; ++position) {
    std::optional<std::string> problem;
    switch (row.argType(static_cast<unsigned>(position - 1))) {
      case ArgInteger:
        problem = ReadInteger(L, row, position, args);
        break;
      case ArgText:
        problem = ReadText(L, row, position, false, args);
        break;
      case ArgWideText:
        problem = ReadText(L, row, position, true, args);
        break;
      default:
        problem = "'" + row.name + "' declares an argument type this host cannot pass";
    }
    if (problem) return problem;
  }
  return std::nullopt;
}

// Runs one module call for the row in upvalue 1 and leaves its result on the
// stack. Returns a problem that refused the call, or nothing.
std::optional<std::string> CallModule(lua_State* L) {
  LuaSession& session = SessionOf(L);
  const auto rowIndex = static_cast<std::size_t>(lua_tointeger(L, lua_upvalueindex(1)));
  const VocabularyRow& row = session.host.vocabulary()[rowIndex];
  std::vector<Argument> args;
  if (auto problem = ReadArguments(L, row, args)) return problem;
  CallOutcome outcome;
  {
    const ModuleEventScope namedValuesGoHere(L);
    // The module writes to the same streams; what the script printed before
    // must come out before what the module prints.
    std::fflush(stdout);
    try {
      outcome = session.host.call(row, args);
    } catch (const std::exception& refused) {
      return std::string(refused.what());
    }
    std::fflush(stdout);
  }
  ShowNewContractFaults(session);
  for (std::string& error : outcome.errors) session.pendingErrors.push_back(std::move(error));
  PushValue(L, outcome.result);
  return std::nullopt;
}

int CallRow(lua_State* L) {
  bool refused = false;
  {
    const std::optional<std::string> problem = CallModule(L);
    if (problem) {
      refused = true;
      luaL_where(L, 1);
      lua_pushlstring(L, problem->data(), problem->size());
      lua_concat(L, 2);
    }
  }
  // Raised outside the block: a Lua error jumps over C++ frames without
  // running their destructors.
  if (refused) return lua_error(L);
  RaisePendingErrors(L);
  return 1;
}

}  // namespace

void InstallModuleGlobals(lua_State* L) {
  const std::vector<VocabularyRow>& rows = SessionOf(L).host.vocabulary();
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const VocabularyRow& row = rows[i];
    if (row.isFunction()) {
      lua_pushinteger(L, static_cast<lua_Integer>(i));
      lua_pushcclosure(L, CallRow, 1);
      lua_setglobal(L, row.name.c_str());
    } else if (row.isConstant()) {
      lua_pushinteger(L, row.constantValue());
      const std::string name = row.name.starts_with('@') ? row.name.substr(1) : row.name;
      lua_setglobal(L, name.c_str());
    }
  }
}

}  // namespace qrl
