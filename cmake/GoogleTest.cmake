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

# One ctest per test case where starting a process is cheap; under wine,
# where every start costs a second or more, one ctest per test program, in a
# wine prefix of its own.
function(qrl_discover_tests target)
  if(CMAKE_CROSSCOMPILING_EMULATOR)
    add_test(NAME ${target}
      COMMAND ${CMAKE_COMMAND} -DWINE=${CMAKE_CROSSCOMPILING_EMULATOR}
              -DPROGRAM=$<TARGET_FILE:${target}>
              -P ${PROJECT_SOURCE_DIR}/cmake/RunInFreshWinePrefix.cmake)
  else()
    gtest_discover_tests(${target} ${ARGN})
  endif()
endfunction()
