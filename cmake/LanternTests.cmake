# Windows builds test a live browser with lantern.exe and the module beside
# the autopilot web control (tests/windows/webview2/autopilot).
set(QRL_AUTOPILOT_DIR ${CMAKE_BINARY_DIR}/autopilot)
set(QRL_AUTOPILOT_LANTERN ${QRL_AUTOPILOT_DIR}/lantern.exe)

# qrl_lantern_test(NAME [NEEDS_DISPLAY] [INPUT file] [PROGRAM lantern] ARGS...):
# a test that runs lantern (or a copy of it) with ARGS, with the file as its
# standard input if given. A Windows build runs lantern.exe under wine, in a wine prefix of
# its own, and on a private X display (xvfb-run) when the script makes
# windows; a Windows build with no wine of its width only builds lantern.exe.
function(qrl_lantern_test name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "NEEDS_DISPLAY" "INPUT;PROGRAM" "")
  if(NOT arg_PROGRAM)
    set(arg_PROGRAM $<TARGET_FILE:lantern>)
  endif()
  if(CMAKE_CROSSCOMPILING AND NOT CMAKE_CROSSCOMPILING_EMULATOR)
    return()
  elseif(CMAKE_CROSSCOMPILING_EMULATOR)
    set(wine ${CMAKE_CROSSCOMPILING_EMULATOR})
    if(arg_NEEDS_DISPLAY)
      set(wine xvfb-run$<SEMICOLON>-a$<SEMICOLON>${wine})
    endif()
    add_test(NAME ${name}
      COMMAND ${CMAKE_COMMAND} -DWINE=${wine}
              -DPROGRAM=${arg_PROGRAM} "-DARGS=${arg_UNPARSED_ARGUMENTS}"
              $<$<BOOL:${arg_INPUT}>:-DINPUT=${arg_INPUT}>
              -P ${PROJECT_SOURCE_DIR}/cmake/RunInFreshWinePrefix.cmake)
  else()
    set(input_wrapper "")
    if(arg_INPUT)
      set(input_wrapper sh -c "exec \"$0\" \"$@\" <\"${arg_INPUT}\"")
    endif()
    add_test(NAME ${name} COMMAND ${input_wrapper} ${arg_PROGRAM} ${arg_UNPARSED_ARGUMENTS})
  endif()
endfunction()
