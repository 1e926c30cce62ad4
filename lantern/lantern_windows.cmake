# Windows, the message loop and a private X server for lantern scripts, in
# builds that have a live browser; the prompt keeps that loop running while it
# waits for a line. Builds without a browser have no loop to run.
if(QRL_BROWSER STREQUAL "webkitgtk")
  pkg_check_modules(LANTERN_GTK REQUIRED IMPORTED_TARGET gtk+-3.0)
  target_sources(lantern PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/input_wait_glib.cpp
    ${CMAKE_CURRENT_LIST_DIR}/lua_windows.cpp
    ${CMAKE_CURRENT_LIST_DIR}/xvfb_session.cpp)
  target_link_libraries(lantern PRIVATE PkgConfig::LANTERN_GTK)
else()
  target_sources(lantern PRIVATE ${CMAKE_CURRENT_LIST_DIR}/input_wait_poll.cpp)
endif()
