# qrl_lantern_test(NAME [NEEDS_DISPLAY] ARGS...): a test that runs lantern
# with ARGS. A Windows build runs lantern.exe under wine, in a wine prefix of
# its own, and on a private X display (xvfb-run) when the script makes
# windows; a Windows build with no wine of its width only builds lantern.exe.
function(qrl_lantern_test name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "NEEDS_DISPLAY" "" "")
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
              -P ${PROJECT_SOURCE_DIR}/cmake/RunInFreshWinePrefix.cmake)
  else()
    add_test(NAME ${name} COMMAND $<TARGET_FILE:lantern> ${arg_UNPARSED_ARGUMENTS})
  endif()
endfunction()
