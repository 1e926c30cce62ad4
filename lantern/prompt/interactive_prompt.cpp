#include "lantern/prompt/interactive_prompt.h"

#include <cstdio>
#include <cstring>
#include <string>

#include "lantern/program_environment.h"
#include "lantern/prompt/line_reader.h"
#include "lantern/lua/value_listing.h"

namespace qrl {
namespace {

constexpr const char* FirstPrompt = "lantern> ";
constexpr const char* MorePrompt = "      >> ";
constexpr const char* ChunkName = "=stdin";

// A line is tried as an expression first, so that typing `wvurl()` shows
// what it gives, and as a statement when it is none.
int LoadLine(lua_State* L, const std::string& code) {
  const std::string asExpression = "return " + code + ";";
  if (luaL_loadbuffer(L, asExpression.data(), asExpression.size(), ChunkName) == LUA_OK)
    return LUA_OK;
  lua_pop(L, 1);
  return luaL_loadbuffer(L, code.data(), code.size(), ChunkName);
}

// Lua says "<eof>" at the end of a syntax error when the text stops in the
// middle of a statement: the statement goes on on the next line.
bool StopsMidStatement(lua_State* L, int status) {
  if (status != LUA_ERRSYNTAX) return false;
  std::size_t length = 0;
  const char* message = lua_tolstring(L, -1, &length);
  constexpr std::string_view mark = "<eof>";
  return length >= mark.size() && std::string_view(message, length).ends_with(mark);
}

// Reads a whole statement, over several lines where it needs them, and
// leaves it compiled on the stack, or its syntax error. False at the end of
// input.
bool ReadStatement(lua_State* L, LineReader& reader, int& status) {
  std::optional<std::string> line = reader.ReadLine(FirstPrompt);
  if (!line) return false;
  std::string code = std::move(*line);
  for (;;) {
    status = LoadLine(L, code);
    if (!StopsMidStatement(L, status)) return true;
    std::optional<std::string> more = reader.ReadLine(MorePrompt);
    if (!more) return true;  // the syntax error stands
    lua_pop(L, 1);
    code += '\n';
    code += *more;
  }
}

// Lists every value on the stack, tab-separated, on one line; runs
// protected, since a value's __tostring may raise an error.
int PrintResults(lua_State* L) {
  const int count = lua_gettop(L);
  std::string line;
  for (int i = 1; i <= count; ++i) {
    if (i > 1) line += '\t';
    line += ListValue(L, i);
  }
  line += '\n';
  std::fwrite(line.data(), 1, line.size(), stdout);
  return 0;
}

void ShowError(lua_State* L) {
  const char* message = lua_tostring(L, -1);
  std::fflush(stdout);
  std::fprintf(stderr, "lantern: %s\n", message ? message : "(an error object that is no text)");
  lua_pop(L, 1);
}

// What the module or a named value left behind while lantern waited.
void ShowPendingErrors(LuaSession& session) {
  ShowNewContractFaults(session);
  for (const std::string& error : session.pendingErrors)
    std::fprintf(stderr, "lantern: %s\n", error.c_str());
  session.pendingErrors.clear();
}

void RunStatement(lua_State* L) {
  const int base = lua_gettop(L) - 1;  // below the compiled chunk
  if (lua_pcall(L, 0, LUA_MULTRET, 0) != LUA_OK) {
    ShowError(L);
    return;
  }
  const int results = lua_gettop(L) - base;
  if (results > 0) {
    lua_pushcfunction(L, PrintResults);
    lua_insert(L, base + 1);
    if (lua_pcall(L, results, 0, 0) != LUA_OK) ShowError(L);
  }
  std::fflush(stdout);
}

}  // namespace

void RunPrompt(lua_State* L, LuaSession& session, const char* greeting) {
  LineReader reader(LineReader::DefaultHistoryFile());
  if (InputIsInteractive()) std::printf("%s", greeting);
  std::fflush(stdout);
  int status = LUA_OK;
  while (ReadStatement(L, reader, status)) {
    ShowPendingErrors(session);
    if (status == LUA_OK) {
      RunStatement(L);
    } else {
      ShowError(L);
    }
    ShowPendingErrors(session);
    lua_settop(L, 0);
  }
  ShowPendingErrors(session);
}

}  // namespace qrl
