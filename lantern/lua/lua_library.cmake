# qrl_lua: the Lua 5.4 that lantern embeds.
#  - Native Linux: Debian's liblua5.4.
#  - Windows: Debian's own source package of Lua 5.4, which scripts/setup
#    fetches with `apt-get source` into QRL_LUA_SOURCE_DIR, built here as a
#    static library, so that lantern.exe runs the same Lua as the Linux
#    lantern. Nothing of Lua is kept in this repository.
#  - 32-bit Linux: no lantern; the tests drive the module through host/.
if(WIN32)
  set(QRL_LUA_SOURCE_DIR "${PROJECT_SOURCE_DIR}/build/third_party/lua5.4" CACHE PATH
      "Debian's Lua 5.4 source package, unpacked (scripts/setup fetches it)")
  if(NOT EXISTS "${QRL_LUA_SOURCE_DIR}/src/lapi.c")
    message(STATUS "No Lua source in ${QRL_LUA_SOURCE_DIR}: lantern.exe is not built (scripts/setup fetches it)")
    return()
  endif()
  file(GLOB lua_sources "${QRL_LUA_SOURCE_DIR}/src/*.c")
  # The interpreter and the compiler are programs of their own.
  list(REMOVE_ITEM lua_sources "${QRL_LUA_SOURCE_DIR}/src/lua.c" "${QRL_LUA_SOURCE_DIR}/src/luac.c")
  add_library(qrl_lua STATIC ${lua_sources})
  target_include_directories(qrl_lua SYSTEM PUBLIC "${QRL_LUA_SOURCE_DIR}/src")
  # As Debian builds it.
  target_compile_definitions(qrl_lua PUBLIC LUA_COMPAT_5_3)
  set_target_properties(qrl_lua PROPERTIES C_STANDARD 99)
elseif(CMAKE_SIZEOF_VOID_P EQUAL 8)
  find_package(PkgConfig)
  if(PkgConfig_FOUND)
    pkg_check_modules(LUA IMPORTED_TARGET lua5.4)
  endif()
  if(LUA_FOUND)
    add_library(qrl_lua INTERFACE)
    target_link_libraries(qrl_lua INTERFACE PkgConfig::LUA)
  endif()
endif()
