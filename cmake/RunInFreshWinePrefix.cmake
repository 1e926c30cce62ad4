# Runs a Windows test program under wine in a new, empty wine prefix that is
# removed afterwards, so that what it writes into the Windows folder or the
# profile never meets another test.
#
#   cmake -DWINE=wine -DPROGRAM=x.exe [-DARGS=a;b;...] [-DINPUT=file]
#         -P RunInFreshWinePrefix.cmake
#
# INPUT, when given, is the program's standard input.
#
# An argument that is an absolute Unix path is handed over as the Windows
# path of the same file (wine's drive Z: is the Unix root), so that a program
# that composes paths or command lines of its own gets ones that Windows
# understands.
cmake_minimum_required(VERSION 3.25)
set(windows_args "")
foreach(arg IN LISTS ARGS)
  if(arg MATCHES "^/")
    string(REPLACE "/" "\\" arg "Z:${arg}")
  endif()
  list(APPEND windows_args "${arg}")
endforeach()
string(RANDOM LENGTH 8 suffix)
set(prefix "$ENV{TMPDIR}")
if(prefix STREQUAL "")
  set(prefix /tmp)
endif()
set(prefix "${prefix}/qrl-wine-${suffix}")
set(ENV{WINEPREFIX} "${prefix}")
set(ENV{WINEDEBUG} "-all")
# Wine names its files on the Unix side in the locale's encoding: under the C
# locale a Windows path outside ASCII has no Unix name at all.
set(ENV{LC_ALL} "C.UTF-8")
# A program that crashes must end and fail, not wait in wine's debugger.
set(ENV{WINEDLLOVERRIDES} "winedbg.exe=d")
set(input_option "")
if(DEFINED INPUT)
  set(input_option INPUT_FILE "${INPUT}")
endif()
execute_process(COMMAND ${WINE} ${PROGRAM} ${windows_args} ${input_option}
                RESULT_VARIABLE status TIMEOUT 600)
# The prefix's server must be gone, not only told to go, before its folder
# goes: wine finds a prefix's server by the folder's inode, and the next test's
# new prefix may get this inode back at once and meet a dying server there.
execute_process(COMMAND wineserver -k)
execute_process(COMMAND wineserver -w)
file(REMOVE_RECURSE "${prefix}")
if(NOT status EQUAL 0)
  message(FATAL_ERROR "${PROGRAM} under wine: ${status}")
endif()
