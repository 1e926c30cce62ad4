# Every build option of the project, in one place.
option(QRL_BUILD_MODULE "Build the extender module and the reference host" ON)
option(QRL_BUILD_TESTS "Build the unit tests" ON)
option(QRL_BUILD_BENCH "Build the benchmarks" OFF)
option(QRL_SANITIZE "Build with AddressSanitizer and UBSan" OFF)
set(QRL_BROWSER "webkitgtk" CACHE STRING "Browser component: webkitgtk or none")
set_property(CACHE QRL_BROWSER PROPERTY STRINGS webkitgtk none)

# Warnings are errors on our own code only; imported targets keep their flags.
add_library(qrl_warnings INTERFACE)
target_compile_options(qrl_warnings INTERFACE -Wall -Wextra -Werror)

if(QRL_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
