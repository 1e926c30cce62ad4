# Compiles the slot count of the web control's declarations to assembly and
# checks that it folded to zero: no method that we call is out of its slot.
#
#   cmake -DCXX=... -DSOURCE=wrong_slots.cpp -DINCLUDE=<source root> -P check_interface_slots.cmake
execute_process(COMMAND ${CXX} -std=c++20 -O2 -S -I${INCLUDE} ${SOURCE} -o -
  OUTPUT_VARIABLE assembly RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "${SOURCE} did not compile")
endif()
string(REGEX MATCH "qrl_wrong_slots:[^\n]*\n([^\n]*\n)*[ \t]*ret" body "${assembly}")
if(NOT body MATCHES "xorl[ \t]+%eax, %eax")
  message(FATAL_ERROR "some method of the web control sits in the wrong slot:\n${body}")
endif()
