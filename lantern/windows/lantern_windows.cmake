# lantern.exe: Win32 windows and the thread's message loop, the prompt on the
# Windows console, and the module beside the program (the release zip keeps
# both in one folder). Windows needs no display of its own for headless runs.
target_sources(lantern PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/line_reader_console.cpp
  ${CMAKE_CURRENT_LIST_DIR}/lua_windows_win32.cpp
  ${CMAKE_CURRENT_LIST_DIR}/message_loop.cpp
  ${CMAKE_CURRENT_LIST_DIR}/program_environment_windows.cpp)
target_link_libraries(lantern PRIVATE qrl_text ole32 user32)
target_compile_definitions(lantern PRIVATE QRL_MODULE_DIR_FROM_BIN=".")
