#include "lantern/lua/script_runner.h"

#include <cstdio>
#include <filesystem>
#include <memory>

#include "lantern/prompt/interactive_prompt.h"
#include "lantern/lua/lua_extensions.h"
#include "lantern/lua/lua_module_globals.h"
#include "lantern/lua/lua_session.h"
#include "lantern/lua/lua_values.h"
#include "lantern/host/module_host.h"
#include "lantern/program_environment.h"
#include "lantern/vocabulary_listing.h"

namespace qrl {

namespace {

constexpr const char* ModuleFileName = QRL_MODULE_FILE_NAME;

bool FileExists(const std::string& path) {
  std::error_code error;
  return std::filesystem::exists(path, error);
}

// The module beside the running lantern binary, as in a build tree, or where
// an installation puts it relative to lantern, wherever it was started from.
// When neither is there, the path beside lantern is the one an error names.
std::string DefaultModulePath() {
  const std::string folder = ExecutableFolder();
  if (folder.empty()) return ModuleFileName;
  const std::string beside = folder + ModuleFileName;
  const std::string installed =
      std::filesystem::path(folder + QRL_MODULE_DIR_FROM_BIN "/" + ModuleFileName)
          .lexically_normal()
          .string();
  return !FileExists(beside) && FileExists(installed) ? installed : beside;
}

// Every extension's startup hook when made, every shutdown hook when gone,
// so that a failing load or script still shuts down what was started.
class ExtensionLifetime {
 public:
  ExtensionLifetime() {
    for (const LanternExtension& extension : LanternExtensions()) {
      if (extension.startup) extension.startup();
    }
  }
  ~ExtensionLifetime() {
    for (const LanternExtension& extension : LanternExtensions()) {
      if (extension.shutdown) extension.shutdown();
    }
  }
  ExtensionLifetime(const ExtensionLifetime&) = delete;
  ExtensionLifetime& operator=(const ExtensionLifetime&) = delete;
};

struct LuaStateCloser {
  void operator()(lua_State* L) const { lua_close(L); }
};
using LuaStatePtr = std::unique_ptr<lua_State, LuaStateCloser>;

void PrintVocabulary(ModuleHost& host, const std::string& path) {
  const ModuleHost::VersionInfo version = host.versionInfo();
  std::printf("module: %s\nversion: %ld\ndescription: %s\n\n%s", path.c_str(),
              static_cast<long>(version.number), version.description.c_str(),
              FormatVocabulary(host.vocabulary()).c_str());
}

struct NamedValueRequest {
  const std::string* name;
  const Value* value;
};

// Sets the global to the value, or calls it with the value when it is a
// function. Runs protected: a failure must not jump out through the module.
int ApplyNamedValue(lua_State* L) {
  const auto* request = static_cast<const NamedValueRequest*>(lua_touserdata(L, 1));
  if (lua_getglobal(L, request->name->c_str()) == LUA_TFUNCTION) {
    PushValue(L, *request->value);
    lua_call(L, 1, 0);
  } else {
    PushValue(L, *request->value);
    lua_setglobal(L, request->name->c_str());
  }
  return 0;
}

void ConnectNamedValues(LuaSession& session, lua_State* mainThread) {
  session.host.setNamedValueHook([&session, mainThread](const std::string& name,
                                                        const Value& value) {
    lua_State* L = session.callingThread ? session.callingThread : mainThread;
    NamedValueRequest request{&name, &value};
    if (!lua_checkstack(L, 4)) {
      session.pendingErrors.push_back("no stack room for the named value '" + name + "'");
      return;
    }
    lua_pushcfunction(L, ApplyNamedValue);
    lua_pushlightuserdata(L, &request);
    if (lua_pcall(L, 1, 0, 0) != LUA_OK) {
      const char* text = lua_tostring(L, -1);
      session.pendingErrors.push_back("in the named value '" + name +
                                      "': " + (text ? text : "an error without text"));
      lua_pop(L, 1);
    }
  });
}

void InstallLanternTable(lua_State* L) {
  lua_newtable(L);
  for (const LanternExtension& extension : LanternExtensions()) {
    if (extension.install) extension.install(L);
  }
  lua_setglobal(L, "lantern");
}

void SetArgTable(lua_State* L, const LanternOptions& options) {
  const auto& words = options.words;
  lua_createtable(L, static_cast<int>(words.size()), static_cast<int>(options.scriptIndex) + 1);
  for (std::size_t i = 0; i <= options.scriptIndex && i < words.size(); ++i) {
    lua_pushstring(L, words[i].c_str());
    lua_rawseti(L, -2, static_cast<lua_Integer>(i) - static_cast<lua_Integer>(options.scriptIndex));
  }
  for (std::size_t i = options.argsStart; i < words.size(); ++i) {
    lua_pushstring(L, words[i].c_str());
    lua_rawseti(L, -2, static_cast<lua_Integer>(i - options.argsStart + 1));
  }
  lua_setglobal(L, "arg");
}

int MessageHandler(lua_State* L) {
  const char* message = lua_tostring(L, 1);
  if (message == nullptr) {
    if (luaL_callmeta(L, 1, "__tostring") && lua_type(L, -1) == LUA_TSTRING) {
      message = lua_tostring(L, -1);
    } else {
      message = lua_pushfstring(L, "(error object is a %s value)", luaL_typename(L, 1));
    }
  }
  luaL_traceback(L, L, message, 1);
  return 1;
}

int LoadChunk(lua_State* L, const LanternOptions& options) {
  if (options.mode == LanternOptions::Mode::Code) {
    return luaL_loadbuffer(L, options.script.data(), options.script.size(), "=(command line)");
  }
  return luaL_loadfile(L, options.script == "-" ? nullptr : options.script.c_str());
}

// Runs the chunk with the script's arguments as its "...", as a stand-alone
// Lua interpreter does.
int RunChunk(lua_State* L, const LanternOptions& options) {
  int status = LoadChunk(L, options);
  if (status == LUA_OK) {
    int count = 0;
    for (std::size_t i = options.argsStart; i < options.words.size(); ++i, ++count) {
      lua_pushstring(L, options.words[i].c_str());
    }
    const int base = lua_gettop(L) - count;
    lua_pushcfunction(L, MessageHandler);
    lua_insert(L, base);
    status = lua_pcall(L, count, 0, base);
    lua_remove(L, base);
  }
  if (status == LUA_OK) return 0;
  std::fflush(stdout);
  const char* message = lua_tostring(L, -1);
  std::fprintf(stderr, "lantern: %s\n", message ? message : "an error without text");
  lua_pop(L, 1);
  return 1;
}

// lantern's own version, and the answer of the module it would load to the
// host's version question. Needs no display: nothing but the load runs.
int PrintVersions(const std::string& modulePath) {
  std::printf("lantern %s\n", QRL_LANTERN_VERSION);
  try {
    const ModuleHost::VersionInfo version = ModuleHost::Load(modulePath)->versionInfo();
    std::printf("module %s: version %ld, %s\n", modulePath.c_str(),
                static_cast<long>(version.number), version.description.c_str());
    return 0;
  } catch (const std::exception& error) {
    std::fflush(stdout);
    std::fprintf(stderr, "lantern: %s\n", error.what());
    return 1;
  }
}

int RunScript(ModuleHost& host, const LanternOptions& options, const std::string& modulePath) {
  LuaStatePtr state(luaL_newstate());
  if (!state) {
    std::fprintf(stderr, "lantern: cannot create a Lua state\n");
    return 1;
  }
  lua_State* L = state.get();
  luaL_openlibs(L);
  LuaSession session{host, {}, nullptr, 0};
  AttachSession(L, session);
  ConnectNamedValues(session, L);
  InstallModuleGlobals(L);
  InstallLanternTable(L);
  SetArgTable(L, options);
  int status = options.mode == LanternOptions::Mode::Interactive ? 0 : RunChunk(L, options);
  ShowNewContractFaults(session);
  // The prompt opens after a failed script too: its state is there to be
  // looked at. The exit status stays the script's.
  if (options.interactive) {
    const std::string greeting = "lantern " QRL_LANTERN_VERSION " with the module " + modulePath +
                                 "; Ctrl-D ends\n";
    RunPrompt(L, session, greeting.c_str());
  }
  // Errors that arrived while no module call was running, after the last one.
  for (const std::string& error : session.pendingErrors) {
    std::fprintf(stderr, "lantern: %s\n", error.c_str());
    status = 1;
  }
  state.reset();
  host.setNamedValueHook(nullptr);
  return status;
}

}  // namespace

int RunLantern(const LanternOptions& options) {
  if (options.mode == LanternOptions::Mode::Help) {
    std::fputs(LanternUsage, stdout);
    return 0;
  }
  const std::string modulePath =
      options.modulePath.empty() ? DefaultModulePath() : options.modulePath;
  if (options.mode == LanternOptions::Mode::Version) return PrintVersions(modulePath);
  // Lines come out as they are printed, so that the script's output and what
  // the module writes to the error stream keep their order in a log.
  std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
  ExtensionLifetime extensions;
  std::unique_ptr<ModuleHost> host;
  try {
    host = ModuleHost::Load(modulePath);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "lantern: %s\n", error.what());
    return 1;
  }
  if (options.hostVersion) host->setHostVersion(*options.hostVersion);
  // A script may call the module millions of times; the log is for tests.
  host->setServiceLogging(false);
  if (options.mode == LanternOptions::Mode::List) {
    PrintVocabulary(*host, modulePath);
    return 0;
  }
  const int status = RunScript(*host, options, modulePath);
  std::fflush(stdout);
  return status;
}

}  // namespace qrl
