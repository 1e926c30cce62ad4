# qrl_add_wine_test(NAME PROGRAM [NEEDS_DISPLAY] [INPUT file] [ARGS args...]):
# a test that runs the Windows PROGRAM under this build's wine, in a new wine
# prefix of its own (RunInFreshWinePrefix.cmake). NEEDS_DISPLAY gives a
# program that makes windows a private X display (xvfb-run); INPUT is its
# standard input.
function(qrl_add_wine_test name program)
  cmake_parse_arguments(PARSE_ARGV 2 arg "NEEDS_DISPLAY" "INPUT" "ARGS")
  set(wine ${CMAKE_CROSSCOMPILING_EMULATOR})
  if(arg_NEEDS_DISPLAY)
    set(wine xvfb-run$<SEMICOLON>-a$<SEMICOLON>${wine})
  endif()
  add_test(NAME ${name}
    COMMAND ${CMAKE_COMMAND} -DWINE=${wine} -DPROGRAM=${program} "-DARGS=${arg_ARGS}"
            $<$<BOOL:${arg_INPUT}>:-DINPUT=${arg_INPUT}>
            -P ${PROJECT_SOURCE_DIR}/cmake/RunInFreshWinePrefix.cmake)
endfunction()
