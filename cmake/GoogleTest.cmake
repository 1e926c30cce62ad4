# Debian ships GoogleTest compiled for 64-bit only; a 32-bit build compiles it
# from the sources that the googletest package installs.
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
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
