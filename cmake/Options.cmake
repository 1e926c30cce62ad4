# Every build option of the project, in one place.
option(QRL_BUILD_MODULE "Build the extender module and the reference host" ON)
option(QRL_BUILD_TESTS "Build the unit tests" ON)
option(QRL_BUILD_BENCH "Build the benchmarks" OFF)
option(QRL_SANITIZE "Build with AddressSanitizer and UBSan" OFF)
option(QRL_BUILD_FUZZ "Build the libFuzzer targets (clang only; implies the sanitizers)" OFF)
set(QRL_BROWSER "webkitgtk" CACHE STRING "Browser component: webkitgtk or none")
set_property(CACHE QRL_BROWSER PROPERTY STRINGS webkitgtk none)

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
