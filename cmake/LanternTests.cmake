# qrl_lantern_test(NAME [NEEDS_DISPLAY] [INPUT file] ARGS...): a test that
# runs lantern with ARGS, with the file as its standard input if given. A Windows build runs lantern.exe under wine, in a wine prefix of
# its own, and on a private X display (xvfb-run) when the script makes
# windows; a Windows build with no wine of its width only builds lantern.exe.
function(qrl_lantern_test name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "NEEDS_DISPLAY" "INPUT" "")
  if(CMAKE_CROSSCOMPILING AND NOT CMAKE_CROSSCOMPILING_EMULATOR)
    return()
  elseif(CMAKE_CROSSCOMPILING_EMULATOR)
    set(wine ${CMAKE_CROSSCOMPILING_EMULATOR})
    if(arg_NEEDS_DISPLAY)
      set(wine xvfb-run$<SEMICOLON>-a$<SEMICOLON>${wine})
    endif()
    add_test(NAME ${name}
      COMMAND ${CMAKE_COMMAND} -DWINE=${wine}
              -DPROGRAM=$<TARGET_FILE:lantern> "-DARGS=${arg_UNPARSED_ARGUMENTS}"
              $<$<BOOL:${arg_INPUT}>:-DINPUT=${arg_INPUT}>
              -P ${PROJECT_SOURCE_DIR}/cmake/RunInFreshWinePrefix.cmake)
  else()
    set(input_wrapper "")
    if(arg_INPUT)
      set(input_wrapper sh -c "exec \"$0\" \"$@\" <\"${arg_INPUT}\"")
    endif()
    add_test(NAME ${name} COMMAND ${input_wrapper} $<TARGET_FILE:lantern> ${arg_UNPARSED_ARGUMENTS})
  endif()
endfunction()
