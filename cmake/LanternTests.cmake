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
    set(options "")
    if(arg_NEEDS_DISPLAY)
      list(APPEND options NEEDS_DISPLAY)
    endif()
    if(arg_INPUT)
      list(APPEND options INPUT ${arg_INPUT})
    endif()
    qrl_add_wine_test(${name} ${arg_PROGRAM} ${options} ARGS ${arg_UNPARSED_ARGUMENTS})
  else()
    set(input_wrapper "")
    if(arg_INPUT)
      set(input_wrapper sh -c "exec \"$0\" \"$@\" <\"${arg_INPUT}\"")
    endif()
    add_test(NAME ${name} COMMAND ${input_wrapper} ${arg_PROGRAM} ${arg_UNPARSED_ARGUMENTS})
  endif()
endfunction()
