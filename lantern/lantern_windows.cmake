# Windows, the message loop and a private X server for lantern scripts, in
# builds that have a live browser.
if(QRL_BROWSER STREQUAL "webkitgtk")
  pkg_check_modules(LANTERN_GTK REQUIRED IMPORTED_TARGET gtk+-3.0)
  target_sources(lantern PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/lua_windows.cpp
    ${CMAKE_CURRENT_LIST_DIR}/xvfb_session.cpp)
  target_link_libraries(lantern PRIVATE PkgConfig::LANTERN_GTK)
endif()
