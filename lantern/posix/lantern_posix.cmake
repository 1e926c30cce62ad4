# lantern on Linux: the prompt edits lines with libedit; an installed lantern
# finds its module by a path relative to its own folder.
pkg_check_modules(LIBEDIT REQUIRED IMPORTED_TARGET libedit)
target_sources(lantern PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/line_reader_libedit.cpp
  ${CMAKE_CURRENT_LIST_DIR}/program_environment_posix.cpp)
target_link_libraries(lantern PRIVATE PkgConfig::LIBEDIT)
file(RELATIVE_PATH module_dir_from_bin /${CMAKE_INSTALL_BINDIR} /${QRL_INSTALL_MODULEDIR})
target_compile_definitions(lantern PRIVATE QRL_MODULE_DIR_FROM_BIN="${module_dir_from_bin}")

# Windows, the message loop and a private X server for scripts, in builds
# that have a live browser; the prompt keeps that loop running while it waits
# for a line. Builds without a browser have no loop to run.
if(QRL_BROWSER STREQUAL "webkitgtk")
  include(${CMAKE_CURRENT_LIST_DIR}/../gtk/lantern_gtk.cmake)
else()
  target_sources(lantern PRIVATE ${CMAKE_CURRENT_LIST_DIR}/input_wait_poll.cpp)
endif()
