# Cross-building the Windows DLL with Debian's mingw-w64 (i686). The posix
# flavour of the compiler is the one whose C++ runtime has std::mutex; the
# runtime is linked statically (see cmake/Windows.cmake). Test programs run
# under the 32-bit wine of scripts/wine32 (the system's, or one in a private
# Debian root) where this machine can run 32-bit programs at all.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(CMAKE_C_COMPILER i686-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER i686-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER i686-w64-mingw32-windres)
set(CMAKE_FIND_ROOT_PATH /usr/i686-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

execute_process(COMMAND ${CMAKE_CURRENT_LIST_DIR}/../scripts/wine32 --works
                RESULT_VARIABLE wine32_status OUTPUT_VARIABLE wine32_reason
                OUTPUT_STRIP_TRAILING_WHITESPACE)
if(wine32_status EQUAL 0)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../scripts/wine32)
elseif(NOT QRL_WINE32_REPORTED)
  # Toolchain files are read again for every check; say it once.
  set(QRL_WINE32_REPORTED ON CACHE INTERNAL "")
  message(WARNING "32-bit Windows programs can't run here (${wine32_reason}); "
                  "the 32-bit DLL is built and inspected, and its tests are not run")
endif()
