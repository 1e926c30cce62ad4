# lantern's windows over GTK on X11, the GLib message loop, and its own Xvfb
# for runs without a display.
pkg_check_modules(LANTERN_GTK REQUIRED IMPORTED_TARGET gtk+-3.0)
target_sources(lantern PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/input_wait_glib.cpp
  ${CMAKE_CURRENT_LIST_DIR}/lua_windows_gtk.cpp
  ${CMAKE_CURRENT_LIST_DIR}/xvfb_session.cpp)
target_link_libraries(lantern PRIVATE PkgConfig::LANTERN_GTK)
