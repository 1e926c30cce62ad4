# Every build option of the project, in one place.
option(QRL_BUILD_MODULE "Build the extender module and the reference host" ON)
option(QRL_BUILD_TESTS "Build the unit tests" ON)
option(QRL_BUILD_BENCH "Build the benchmarks" OFF)
option(QRL_SANITIZE "Build with AddressSanitizer and UBSan" OFF)
option(QRL_BUILD_FUZZ "Build the libFuzzer targets (clang only; implies the sanitizers)" OFF)
if(WIN32)
  set(default_browser webview2)
else()
  set(default_browser webkitgtk)
endif()
set(QRL_BROWSER ${default_browser} CACHE STRING "Browser component: webkitgtk, webview2 or none")
set_property(CACHE QRL_BROWSER PROPERTY STRINGS webkitgtk webview2 none)

# Warnings are errors on our own code only; imported targets keep their flags.
add_library(qrl_warnings INTERFACE)
target_compile_options(qrl_warnings INTERFACE -Wall -Wextra -Werror)

if(QRL_SANITIZE OR QRL_BUILD_FUZZ)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()

# Coverage instrumentation for everything the fuzzers reach; the fuzz targets
# themselves link libFuzzer's main.
if(QRL_BUILD_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    message(FATAL_ERROR "QRL_BUILD_FUZZ needs clang++ (use the fuzz preset)")
  endif()
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# The Windows DLL and the test programs import only what every Windows has:
# the C++ runtime, libgcc and the threading library go inside them.
if(WIN32)
  add_link_options(-static)
  # GCC 12 at -O2 warns about std::string copies in its own headers that
  # cannot overlap (GCC bug 105329); the Release builds of the DLL meet it.
  target_compile_options(qrl_warnings INTERFACE -Wno-restrict)
endif()
