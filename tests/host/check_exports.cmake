# Lists the defined dynamic symbols of MODULE and fails unless they are
# exactly the two entry points.
execute_process(COMMAND nm -D --defined-only ${MODULE}
  OUTPUT_VARIABLE listing RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "nm failed on ${MODULE}")
endif()
string(REGEX MATCHALL "[^\n]+" lines "${listing}")
set(names "")
foreach(line IN LISTS lines)
  string(REGEX REPLACE "^.* " "" name "${line}")
  list(APPEND names "${name}")
endforeach()
list(SORT names)
if(NOT names STREQUAL "QORExtender2;QORExtenderQuery")
  message(FATAL_ERROR "exported: ${names}")
endif()
