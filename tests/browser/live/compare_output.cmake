# Runs a lantern script and compares its standard output with a file, byte
# for byte. Arguments: LANTERN, SCRIPT, EXPECTED.
execute_process(
  COMMAND ${LANTERN} --headless ${SCRIPT}
  OUTPUT_VARIABLE output
  ERROR_VARIABLE errors
  RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "lantern ended with ${status}:\n${errors}")
endif()
file(READ ${EXPECTED} expected)
if(NOT output STREQUAL expected)
  file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/actual_output.txt "${output}")
  message(FATAL_ERROR "standard output differs from ${EXPECTED}:\n${output}")
endif()
