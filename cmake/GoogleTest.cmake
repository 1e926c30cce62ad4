# Debian ships GoogleTest compiled for 64-bit Linux only; a 32-bit or a
# Windows build compiles it from the sources that the googletest package
# installs.
if(CMAKE_SIZEOF_VOID_P EQUAL 4 OR CMAKE_CROSSCOMPILING)
  set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
  set(BUILD_GMOCK ON CACHE BOOL "" FORCE)
  add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/_googletest EXCLUDE_FROM_ALL SYSTEM)
  # Recent sources name their targets GTest:: themselves; older ones don't.
  if(NOT TARGET GTest::gtest)
    add_library(GTest::gtest ALIAS gtest)
    add_library(GTest::gtest_main ALIAS gtest_main)
    add_library(GTest::gmock ALIAS gmock)
  endif()
else()
  find_package(GTest REQUIRED)
endif()
include(GoogleTest)
include(${CMAKE_CURRENT_LIST_DIR}/WineTests.cmake)

# One ctest per test case where starting a process is cheap; under wine,
# where every start costs a second or more, one ctest per test program, in a
# wine prefix of its own. NEEDS_DISPLAY gives a program that makes windows
# under wine a private X display (xvfb-run).
# A cross-built program with no wine to run it is only built.
function(qrl_discover_tests target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "NEEDS_DISPLAY" "" "")
  if(CMAKE_CROSSCOMPILING AND NOT CMAKE_CROSSCOMPILING_EMULATOR)
    return()
  elseif(CMAKE_CROSSCOMPILING_EMULATOR)
    set(display "")
    if(arg_NEEDS_DISPLAY)
      set(display NEEDS_DISPLAY)
    endif()
    qrl_add_wine_test(${target} $<TARGET_FILE:${target}> ${display})
  else()
    gtest_discover_tests(${target} ${arg_UNPARSED_ARGUMENTS})
  endif()
endfunction()
